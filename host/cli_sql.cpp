#include "host/cli_sql.h"

#include "db/access_sql.h"
#include "db/connection.h"
#include "db/recordset.h"
#include "platform/runtime_error.h"

namespace lorvane::host {

using namespace Qt::StringLiterals;

namespace {

QString csvField(const QString& text) {
    if (!text.contains(u',') && !text.contains(u'"') && !text.contains(u'\n') &&
        !text.contains(u'\r')) {
        return text;
    }
    return u'"' + QString(text).replace(u'"', u"\"\""_s) + u'"';
}

void printRecordset(db::Recordset& recordset, QTextStream& out) {
    QStringList header;
    for (int i = 0; i < recordset.FieldCount(); ++i) {
        const db::Field& field = recordset.Fields(i);
        header << csvField(field.Name() + u':' + QString::number(field.Type()));
    }
    out << header.join(u',') << '\n';
    for (; !recordset.Eof(); recordset.MoveNext()) {
        QStringList row;
        for (int i = 0; i < recordset.FieldCount(); ++i)
            row << csvField(recordset.Fields(i).Value().text());
        out << row.join(u',') << '\n';
    }
}

}  // namespace

int runSqlCommand(const QStringList& args, QTextStream& out, QTextStream& err) {
    if (args.size() != 2) {
        err << "uso: lorvane sql DATABASE \"ISTRUZIONE\"\n";
        return 2;
    }
    const QString& file = args[0];
    const QString& statement = args[1];
    try {
        db::Connection connection;
        connection.Open(u"Driver={Microsoft Access Driver (*.mdb)};Dbq="_s + file +
                        u";Uid=Admin;Pwd=;"_s);
        if (db::translateAccessSql(statement).kind == db::StatementKind::Select) {
            db::RecordsetPtr recordset = connection.OpenRecordset(statement);
            printRecordset(*recordset, out);
            recordset->Close();
        } else {
            out << connection.Execute(statement) << '\n';
        }
        connection.Close();
    } catch (const RuntimeError& error) {
        out.flush();
        err << error.message() << '\n';
        return 2;
    }
    return 0;
}

}  // namespace lorvane::host
