// A client-side recordset: every row is read when it opens, so RecordCount is
// exact at once; Filter gives a view of the rows; a recordset on one table is
// written back row by row (AddNew or an assignment, then Update).
#pragma once

#include <QHash>
#include <QString>
#include <array>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "db/connection.h"
#include "db/field_type.h"
#include "db/filter.h"
#include "db/row_store.h"
#include "db/variant.h"

namespace lorvane::db {

class Recordset;

class Field {
  public:
    const QString& Name() const { return name_; }
    // The legacy type code (DataType).
    int Type() const { return type_.code; }
    // Characters of a text field, 0 when unbounded.
    int DefinedSize() const { return type_.definedSize; }
    // The value in the current row, or as assigned since AddNew or the last Update.
    Variant Value() const;
    // Assigns in the current row (or the row being added), converted to the
    // field's type. Throws RuntimeError if the value does not fit or the
    // recordset cannot be written.
    void SetValue(const Variant& value);
    Field& operator=(const Variant& value) {
        SetValue(value);
        return *this;
    }

  private:
    friend class Recordset;
    Field(Recordset* owner, int index, QString name, FieldType type)
        : owner_(owner), index_(index), name_(std::move(name)), type_(type) {}

    Recordset* owner_;
    int index_;
    QString name_;
    FieldType type_;
    QString originColumn_;       // the table column it writes, empty for an expression
    bool typedByValue_ = false;  // no declared type: typed by its first value
};

// What a recordset is opened on, as the legacy command object carries it.
struct Command {
    static constexpr int TypeText = 1;  // adCmdText
    Connection* ActiveConnection = nullptr;
    QString CommandText;
    int CommandType = TypeText;
};

class Recordset {
  public:
    static constexpr int StateClosed = 0;
    static constexpr int StateOpen = 1;
    // UpdateBatch's AffectEnum
    static constexpr int AffectCurrent = 1;
    static constexpr int AffectGroup = 2;
    static constexpr int AffectAll = 3;
    static constexpr int AffectAllChapters = 4;
    // EditMode
    static constexpr int EditNone = 0;
    static constexpr int EditInProgress = 1;
    static constexpr int EditAdd = 2;

    Recordset();
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // Runs one reading statement of the Access dialect on `connection` and
    // reads all its rows; positions on the first. Anything but a SELECT, or a
    // SELECT that would write, is refused before it runs. A SELECT on one
    // table (no join, grouping, DISTINCT or UNION) can be written back.
    void Open(const QString& accessSql, Connection& connection);
    void Open(const Command& command);
    // Commits what was written. Refused while an edit is pending.
    void Close();
    int State() const { return open_ ? StateOpen : StateClosed; }
    bool IsOpen() const { return open_; }
    // The statement it was opened on.
    const QString& Source() const { return source_; }

    // The rows in the current view (all, or those the Filter lets through).
    int RecordCount() const;
    bool Bof() const;
    bool Eof() const;
    // Throws RuntimeError on a recordset without rows, as there is no first.
    void MoveFirst();
    void MoveNext();
    // 1-based position in the current view; -1 at BOF/EOF or with no rows.
    int AbsolutePosition() const;
    void SetAbsolutePosition(int position);

    int FieldCount() const;
    // By position, or by name without regard to case. An unknown field throws
    // "Impossibile trovare l'elemento nell'insieme corrispondente al nome o al numero richiesto."
    Field& Fields(int index);
    Field& Fields(const QString& name);
    Field& operator[](int index) { return Fields(index); }
    Field& operator[](const QString& name) { return Fields(name); }
    // nullptr for an unknown name.
    Field* FindField(const QString& name);

    // Sets the criterion ("" for all rows) and moves to the first row of the
    // new view. A lone "field = value" is found through a hash index.
    void SetFilter(const QString& criteria);
    const QString& Filter() const { return filterText_; }

    bool IsUpdatable() const { return !table_.isEmpty(); }
    int EditMode() const { return editMode_; }
    void AddNew();
    // Writes the pending row at once. With nothing pending it does nothing.
    void Update();
    void CancelUpdate();
    // Writes the pending row and commits everything written so far.
    void UpdateBatch(int affect = AffectAll);

  private:
    friend class Field;
    struct HashIndex {
        QHash<QString, std::vector<int>> rows;
    };

    void requireOpen() const;
    void requireUpdatable() const;
    int viewCount() const;
    int currentRow() const;  // store row of the current position; throws at BOF/EOF
    Variant cell(int row, int column) const;
    Variant fieldValue(int column) const;
    void assign(int column, const Variant& value);
    void appendCell(RowStore::Writer& writer, sqlite3_value* value, int column);
    void readRows(sqlite3_stmt* statement, bool withRowId);
    int counterFieldOf(sqlite3_stmt* statement, int rowIdColumn) const;
    HashIndex& indexFor(int column);
    void insertPending();
    void updatePending();
    void bindCell(sqlite3_stmt* statement, int index, int row, int column);
    void readBack(int row, const std::vector<int>& unassigned);
    void storeRow(const std::vector<Variant>& values, int row);
    void attachNewRow(int row);
    void resetState();

    bool open_ = false;
    QString source_;
    std::shared_ptr<Session> session_;
    QString table_;  // the table written back, empty when read-only
    std::vector<Field> fields_;
    QHash<QString, int> fieldByName_;       // case-folded name -> first field of that name
    QHash<QString, int> fieldByExactName_;  // names as the statement gave them, a quicker first try
    // Copy loops look up the same name strings row after row: the field last
    // found for a string buffer, checked against the name before use.
    struct RecentLookup {
        const QChar* name = nullptr;
        int field = -1;
    };
    mutable std::array<RecentLookup, 128> recentLookups_{};
    std::unique_ptr<RowStore> store_;
    std::vector<qint64> rowIds_;

    QString filterText_;
    bool filtered_ = false;
    std::vector<int> view_;
    int position_ = 0;
    std::unordered_map<int, HashIndex> indexes_;

    int editMode_ = EditNone;
    std::vector<std::optional<Variant>> pending_;
    // The INSERT of the last added row, which fields it wrote, and the SELECT
    // that reads back the others: a copy adds every row with the same fields.
    std::vector<bool> insertedFields_;
    struct {
        std::vector<bool> assignedFields;
        std::vector<int> assigned, unassigned;
    } insertScratch_;
    QString insertSql_;
    // Empty when the file fills none of the fields the row left out, or none
    // but the counter (given back from the row id).
    QString readBackSql_;
    // The field that reads the table's counter (its INTEGER PRIMARY KEY, the
    // row id under its own name), -1 when none; an added row that leaves it
    // out takes the row id the INSERT gave, without reading the row back.
    int counterField_ = -1;
    bool counterFromRowId_ = false;

    mutable int viewedRow_ = -1;
    mutable RowStore::RowView rowView_;
};

}  // namespace lorvane::db
