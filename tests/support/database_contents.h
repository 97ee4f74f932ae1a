// What a run may not change in a database: every row of every table, as text.
#pragma once

#include <QString>
#include <QStringList>

#include "db/database_fixture.h"

namespace lorvane::testing {

// Every row of every table of the database at `path` in rowid order, but the
// venue selection (AnagraficaLocali_Tmp) and the columns named "Table.Column"
// in `leftOut`.
inline QString databaseContents(const QString& path, const QStringList& leftOut = {}) {
    const auto query = [&](const QString& sql) {
        return db::testing::DatabaseFile::queryFile(path, sql.toUtf8().constData());
    };
    QString rows;
    const QStringList tables =
        query(QStringLiteral("SELECT group_concat(name, ';') FROM (SELECT name FROM "
                             "sqlite_master WHERE type = 'table' AND name NOT LIKE "
                             "'sqlite%' AND name <> 'AnagraficaLocali_Tmp' ORDER "
                             "BY name)"))
            .split(u';');
    for (const QString& table : tables) {
        QStringList columns;
        for (const QString& column :
             query(QStringLiteral("SELECT group_concat(name, ';') FROM pragma_table_info('%1')")
                       .arg(table))
                 .split(u';')) {
            if (!leftOut.contains(table + u'.' + column))
                columns << QStringLiteral("quote(\"%1\")").arg(column);
        }
        rows += table + u':' +
                query(QStringLiteral("SELECT group_concat(%1, ';') FROM (SELECT * FROM \"%2\" "
                                     "ORDER BY rowid)")
                          .arg(columns.join(QStringLiteral(" || '|' || ")), table)) +
                u'\n';
    }
    return rows;
}

}  // namespace lorvane::testing
