// A small SQLite file in a temporary folder, built and read with the plain
// SQLite API so that the data layer is checked by code it does not share.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QString>
#include <QTemporaryDir>

#include "db/connection.h"
#include "db/recordset.h"

namespace lorvane::db::testing {

class DatabaseFile {
  public:
    // Creates the file and runs `script` (SQLite's own dialect) on it.
    explicit DatabaseFile(const char* script = "") {
        path_ = dir_.filePath(QStringLiteral("test.db"));
        sqlite3* db = nullptr;
        EXPECT_EQ(sqlite3_open(path_.toUtf8().constData(), &db), SQLITE_OK);
        char* error = nullptr;
        if (sqlite3_exec(db, script, nullptr, nullptr, &error) != SQLITE_OK) {
            ADD_FAILURE() << "fixture script: " << error;
            sqlite3_free(error);
        }
        sqlite3_close(db);
    }

    const QString& path() const { return path_; }
    QString connectionText() const {
        return QStringLiteral("Driver={Microsoft Access Driver (*.mdb)};Dbq=") + path_ +
               QStringLiteral(";Uid=Admin;Pwd=;");
    }
    QString folder() const { return dir_.path(); }

    // The rows of `sql`, read with the plain SQLite API: columns joined by
    // "|", rows by ";", Null as "NULL".
    QString query(const char* sql) const { return queryFile(path_, sql); }

    // The same on any SQLite file.
    static QString queryFile(const QString& path, const char* sql) {
        sqlite3* db = nullptr;
        sqlite3_open(path.toUtf8().constData(), &db);
        sqlite3_stmt* statement = nullptr;
        QString result;
        if (sqlite3_prepare_v2(db, sql, -1, &statement, nullptr) != SQLITE_OK) {
            result = QStringLiteral("error: ") + QString::fromUtf8(sqlite3_errmsg(db));
        } else {
            QStringList rows;
            while (sqlite3_step(statement) == SQLITE_ROW) {
                QStringList cells;
                for (int i = 0; i < sqlite3_column_count(statement); ++i) {
                    const auto* text = sqlite3_column_text(statement, i);
                    cells << (text ? QString::fromUtf8(reinterpret_cast<const char*>(text))
                                   : QStringLiteral("NULL"));
                }
                rows << cells.join(u'|');
            }
            result = rows.join(u';');
        }
        sqlite3_finalize(statement);
        sqlite3_close(db);
        return result;
    }

  private:
    QTemporaryDir dir_;
    QString path_;
};

// The text of every row of a recordset from its current position: fields
// joined by "|" in their display form (Null as "NULL"), rows by ";".
inline QString recordsetText(Recordset& recordset) {
    QStringList rows;
    for (; !recordset.Eof(); recordset.MoveNext()) {
        QStringList cells;
        for (int i = 0; i < recordset.FieldCount(); ++i) {
            const Variant value = recordset.Fields(i).Value();
            cells << (value.isNull() ? QStringLiteral("NULL") : value.text());
        }
        rows << cells.join(u'|');
    }
    return rows.join(u';');
}

}  // namespace lorvane::db::testing
