#include "db/recordset.h"

#include <sqlite3.h>

#include <cmath>

#include "db/session.h"
#include "platform/runtime_error.h"

namespace lorvane::db {

using namespace Qt::StringLiterals;

namespace {

QString quoteName(QString name) {
    name.replace(u'"', u"\"\""_s);
    return u'"' + name + u'"';
}

// True when a row inserted into `table` without the columns `omitted` can
// hold anything but Null in them: a default, a key (the rowid's alias takes
// a number), a generated column, or a trigger that may write the row. Then
// the row is read back after its INSERT; otherwise the Nulls it was given are
// what the file holds.
bool filledByTheDatabase(sqlite3* db, const QString& table, const QStringList& omitted) {
    const auto rowsOf = [db](const QString& sql, auto&& onRow) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &statement, nullptr) !=
            SQLITE_OK) {
            sqlite3_finalize(statement);
            return false;
        }
        while (sqlite3_step(statement) == SQLITE_ROW)
            onRow(statement);
        sqlite3_finalize(statement);
        return true;
    };
    bool filled = false;
    const bool read = rowsOf(
        u"SELECT 1 FROM sqlite_master WHERE type = 'trigger' AND tbl_name = '%1' "
        u"COLLATE NOCASE"_s.arg(QString(table).replace(u'\'', u"''"_s)),
        [&](sqlite3_stmt*) { filled = true; });
    if (!read || filled) return true;
    int columns = 0;
    rowsOf(u"PRAGMA table_xinfo("_s + quoteName(table) + u')', [&](sqlite3_stmt* row) {
        ++columns;
        const QString name =
            QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(row, 1)));
        const bool keyDefaultOrGenerated = sqlite3_column_type(row, 4) != SQLITE_NULL ||
                                           sqlite3_column_int(row, 5) != 0 ||
                                           sqlite3_column_int(row, 6) != 0;
        if (keyDefaultOrGenerated && omitted.contains(name, Qt::CaseInsensitive)) filled = true;
    });
    return filled || columns == 0;
}

RuntimeError noCurrentRecord() {
    return RuntimeError(
        u"Il valore di BOF o EOF è True oppure il record corrente è stato eliminato. "
        u"L'operazione richiesta richiede un record corrente."_s);
}

RuntimeError unknownField(const QString& name) {
    return RuntimeError(
        u"Impossibile trovare l'elemento nell'insieme corrispondente al nome o al numero "
        u"richiesto. (campo '%1')"_s.arg(name));
}

}  // namespace

// --- Field --------------------------------------------------------------------

Variant Field::Value() const { return owner_->fieldValue(index_); }

void Field::SetValue(const Variant& value) { owner_->assign(index_, value); }

// --- opening and reading --------------------------------------------------------

Recordset::Recordset() = default;

Recordset::~Recordset() {
    try {
        CancelUpdate();
        if (session_) session_->commitWrites();
    } catch (const RuntimeError&) {
        // nothing more can be done for a recordset that goes away
    }
}

void Recordset::Open(const Command& command) {
    if (!command.ActiveConnection)
        throw RuntimeError(u"Il comando non ha una connessione attiva."_s);
    Open(command.CommandText, *command.ActiveConnection);
}

void Recordset::Open(const QString& accessSql, Connection& connection) {
    if (open_) Close();
    resetState();
    session_ = connection.session();
    source_ = accessSql;
    const TranslatedSql translated = session_->translate(accessSql);
    if (translated.kind != StatementKind::Select) {
        throw RuntimeError(u"Un recordset si apre solo su un'istruzione di lettura (SELECT): "_s +
                           accessSql);
    }

    sqlite3_stmt* statement = nullptr;
    bool withRowId = !translated.updatableTable.isEmpty();
    if (withRowId) {
        try {
            statement = session_->prepare(translated.sqlWithRowId, accessSql);
        } catch (const RuntimeError&) {
            withRowId = false;  // a view has no row id: read-only, read as written
        }
    }
    if (!statement) statement = session_->prepare(translated.sql, accessSql);
    if (!sqlite3_stmt_readonly(statement)) {
        throw RuntimeError(u"L'istruzione non è di sola lettura: "_s + accessSql);
    }

    const int columns = sqlite3_column_count(statement) - (withRowId ? 1 : 0);
    fields_.reserve(size_t(columns));
    for (int i = 0; i < columns; ++i) {
        const QString name = QString::fromUtf8(sqlite3_column_name(statement, i));
        Field field(this, i, name, fieldTypeFromDeclaration(sqlite3_column_decltype(statement, i)));
        field.typedByValue_ = field.type_.code == DataType::Empty;
        const char* table = sqlite3_column_table_name(statement, i);
        const char* origin = sqlite3_column_origin_name(statement, i);
        if (withRowId && table && origin &&
            QString::fromUtf8(table).compare(translated.updatableTable, Qt::CaseInsensitive) == 0) {
            field.originColumn_ = QString::fromUtf8(origin);
        }
        fields_.push_back(std::move(field));
    }
    for (int i = columns - 1; i >= 0; --i) {  // the first of equal names wins
        fieldByName_.insert(fields_[size_t(i)].name_.toCaseFolded(), i);
        fieldByExactName_.insert(fields_[size_t(i)].name_, i);
    }
    // A view reads its columns from other tables: none of them is writable.
    const bool writable = std::any_of(fields_.begin(), fields_.end(), [](const Field& field) {
        return !field.originColumn_.isEmpty();
    });
    if (withRowId && writable) table_ = translated.updatableTable;
    if (!table_.isEmpty()) counterField_ = counterFieldOf(statement, columns);

    store_ = std::make_unique<RowStore>(columns);
    readRows(statement, withRowId);
    pending_.assign(size_t(columns), std::nullopt);
    open_ = true;
}

// The field that writes the table's counter: the row id read last takes the
// name of the column it stands for when the table has one (an INTEGER
// PRIMARY KEY), and "rowid" when it has none.
int Recordset::counterFieldOf(sqlite3_stmt* statement, int rowIdColumn) const {
    const char* origin = sqlite3_column_origin_name(statement, rowIdColumn);
    if (!origin) return -1;
    const QString column = QString::fromUtf8(origin);
    for (int i = 0; i < int(fields_.size()); ++i) {
        const Field& field = fields_[size_t(i)];
        if (field.type_.code == DataType::Integer &&
            field.originColumn_.compare(column, Qt::CaseInsensitive) == 0 &&
            column.compare(u"rowid"_s, Qt::CaseInsensitive) != 0) {
            return i;
        }
    }
    return -1;
}

void Recordset::readRows(sqlite3_stmt* statement, bool withRowId) {
    const int rowIdColumn = int(fields_.size());  // after the fields, when asked for
    int rc;
    while ((rc = sqlite3_step(statement)) == SQLITE_ROW) {
        RowStore::Writer& writer = store_->writer();
        for (int i = 0; i < int(fields_.size()); ++i) {
            appendCell(writer, sqlite3_column_value(statement, i), i);
        }
        store_->append(writer);
        if (withRowId) rowIds_.push_back(sqlite3_column_int64(statement, rowIdColumn));
    }
    if (rc != SQLITE_DONE) {
        const QString message = QString::fromUtf8(sqlite3_errmsg(session_->handle()));
        sqlite3_reset(statement);
        throw RuntimeError(u"Errore del database: %1 nell'istruzione: %2"_s.arg(message, source_));
    }
    sqlite3_reset(statement);
}

// Stores one value in the field's type, straight from SQLite where the
// storage already is that type.
void Recordset::appendCell(RowStore::Writer& writer, sqlite3_value* value, int column) {
    Field& field = fields_[size_t(column)];
    FieldType& type = field.type_;
    const int storage = sqlite3_value_type(value);
    if (storage == SQLITE_NULL) {
        writer.addNull();
        return;
    }
    if (field.typedByValue_) {
        // An expression takes the type of its first value; whole numbers
        // followed by a fraction widen to Double rather than lose it.
        if (type.code == DataType::Empty) type = fieldTypeFromValue(value);
        if (type.code == DataType::Integer && storage == SQLITE_FLOAT) type.code = DataType::Double;
    }
    switch (type.code) {
        case DataType::VarWChar:
        case DataType::LongVarWChar:
            if (storage == SQLITE_TEXT) {
                writer.addUtf8(reinterpret_cast<const char*>(sqlite3_value_text(value)),
                               sqlite3_value_bytes(value));
                return;
            }
            break;
        case DataType::Integer:
            if (storage == SQLITE_INTEGER) {
                const qint64 number = sqlite3_value_int64(value);
                if (number >= INT32_MIN && number <= INT32_MAX) {
                    writer.addLong(qint32(number));
                    return;
                }
            }
            break;
        case DataType::Double:
        case DataType::Single:
            if (storage != SQLITE_TEXT) {
                writer.addDouble(sqlite3_value_double(value));
                return;
            }
            break;
        case DataType::Boolean:
            if (storage == SQLITE_INTEGER) {
                writer.addBool(sqlite3_value_int64(value) != 0);
                return;
            }
            break;
        case DataType::Currency:
            if (storage != SQLITE_TEXT) {
                const double number = sqlite3_value_double(value);
                if (std::abs(number) < 9.0e14) {
                    writer.addCurrency(Currency{std::llround(number * Currency::Scale)});
                    return;
                }
            }
            break;
        case DataType::Date:
            if (storage == SQLITE_TEXT) {
                const auto seconds =
                    parseIsoSeconds(reinterpret_cast<const char*>(sqlite3_value_text(value)),
                                    sqlite3_value_bytes(value));
                if (seconds) {
                    writer.addDate(*seconds);
                    return;
                }
            }
            break;
        default:
            break;
    }
    writer.addVariant(variantFromSqlite(value, type.code));
}

void Recordset::resetState() {
    source_.clear();
    session_.reset();
    table_.clear();
    fields_.clear();
    fieldByName_.clear();
    fieldByExactName_.clear();
    recentLookups_.fill({});
    insertedFields_.clear();
    insertSql_.clear();
    readBackSql_.clear();
    counterField_ = -1;
    counterFromRowId_ = false;
    store_.reset();
    rowIds_.clear();
    filterText_.clear();
    filtered_ = false;
    view_.clear();
    position_ = 0;
    indexes_.clear();
    editMode_ = EditNone;
    pending_.clear();
    viewedRow_ = -1;
}

void Recordset::Close() {
    requireOpen();
    if (editMode_ != EditNone) {
        throw RuntimeError(
            u"Operazione non consentita: c'è una modifica in corso (usare Update o CancelUpdate)."_s);
    }
    if (session_) session_->commitWrites();
    resetState();
    open_ = false;
}

void Recordset::requireOpen() const {
    if (!open_) throw RuntimeError(u"Operazione non consentita se l'oggetto è chiuso."_s);
}

void Recordset::requireUpdatable() const {
    requireOpen();
    if (table_.isEmpty()) {
        throw RuntimeError(
            u"Il recordset non è aggiornabile: l'istruzione non legge una sola tabella "
            u"(join, raggruppamento, DISTINCT o UNION): "_s +
            source_);
    }
}

// --- position -------------------------------------------------------------------

int Recordset::viewCount() const { return filtered_ ? int(view_.size()) : store_->rowCount(); }

int Recordset::RecordCount() const {
    requireOpen();
    return viewCount();
}

bool Recordset::Bof() const {
    requireOpen();
    return viewCount() == 0 || position_ < 0;
}

bool Recordset::Eof() const {
    requireOpen();
    return viewCount() == 0 || position_ >= viewCount();
}

void Recordset::MoveFirst() {
    requireOpen();
    Update();
    if (RecordCount() == 0) throw noCurrentRecord();
    position_ = 0;
}

void Recordset::MoveNext() {
    requireOpen();
    if (Eof()) throw noCurrentRecord();
    Update();
    ++position_;
}

int Recordset::AbsolutePosition() const {
    requireOpen();
    if (Bof() || Eof()) return -1;
    return position_ + 1;
}

void Recordset::SetAbsolutePosition(int position) {
    requireOpen();
    if (position < 1 || position > viewCount()) throw noCurrentRecord();
    Update();
    position_ = position - 1;
}

int Recordset::currentRow() const {
    if (Bof() || Eof()) throw noCurrentRecord();
    return filtered_ ? view_[size_t(position_)] : position_;
}

// --- fields ---------------------------------------------------------------------

int Recordset::FieldCount() const {
    requireOpen();
    return int(fields_.size());
}

Field& Recordset::Fields(int index) {
    requireOpen();
    if (index < 0 || index >= int(fields_.size())) throw unknownField(QString::number(index));
    return fields_[size_t(index)];
}

Field* Recordset::FindField(const QString& name) {
    requireOpen();
    RecentLookup& recent =
        recentLookups_[(quintptr(name.constData()) >> 4) % recentLookups_.size()];
    if (recent.name == name.constData() && fields_[size_t(recent.field)].name_ == name) {
        return &fields_[size_t(recent.field)];
    }
    int index = -1;
    if (const auto exact = fieldByExactName_.constFind(name);
        exact != fieldByExactName_.constEnd()) {
        index = *exact;
    } else if (const auto found = fieldByName_.constFind(name.toCaseFolded());
               found != fieldByName_.constEnd()) {
        index = *found;
    }
    if (index < 0) return nullptr;
    if (fields_[size_t(index)].name_ == name) recent = {name.constData(), index};
    return &fields_[size_t(index)];
}

Field& Recordset::Fields(const QString& name) {
    Field* field = FindField(name);
    if (!field) throw unknownField(name);
    return *field;
}

Variant Recordset::cell(int row, int column) const {
    if (viewedRow_ != row) {
        store_->view(row, &rowView_);
        viewedRow_ = row;
    }
    return rowView_.cell(column);
}

Variant Recordset::fieldValue(int column) const {
    requireOpen();
    if (const auto& pending = pending_[size_t(column)]; pending) return *pending;
    if (editMode_ == EditAdd) return Variant::null();
    return cell(currentRow(), column);
}

void Recordset::assign(int column, const Variant& value) {
    requireUpdatable();
    const Field& field = fields_[size_t(column)];
    if (field.originColumn_.isEmpty()) {
        throw RuntimeError(
            u"Il campo '%1' non si può aggiornare: non è un campo della tabella %2."_s.arg(
                field.name_, table_));
    }
    if (editMode_ == EditNone) {
        currentRow();  // an edit needs a current row
        editMode_ = EditInProgress;
    }
    pending_[size_t(column)] = convertForField(value, field.type_, field.name_);
}

// --- filter ---------------------------------------------------------------------

Recordset::HashIndex& Recordset::indexFor(int column) {
    auto found = indexes_.find(column);
    if (found != indexes_.end()) return found->second;
    HashIndex& index = indexes_[column];
    for (int row = 0; row < store_->rowCount(); ++row) {
        const QString key = equalityKey(cell(row, column));
        if (!key.isEmpty()) index.rows[key].push_back(row);
    }
    return index;
}

void Recordset::SetFilter(const QString& criteria) {
    requireOpen();
    Update();
    if (criteria.trimmed().isEmpty()) {
        filterText_ = criteria;
        filtered_ = false;
        view_.clear();
        position_ = 0;
        return;
    }
    const RecordFilter filter = RecordFilter::parse(criteria, [this](const QString& name) {
        std::optional<RecordFilter::Field> found;
        if (const Field* field = FindField(name))
            found = RecordFilter::Field{field->index_, field->type_};
        return found;
    });
    int row = 0;
    const RecordFilter::ValueOf valueOf = [this, &row](int column) { return cell(row, column); };
    std::vector<int> matching;
    if (const auto equality = filter.singleEquality()) {
        const HashIndex& index = indexFor(equality->first);
        const auto found = index.rows.constFind(equalityKey(equality->second));
        if (found != index.rows.constEnd()) {
            for (const int candidate : *found) {
                row = candidate;
                if (filter.matches(valueOf)) matching.push_back(candidate);
            }
        }
    } else {
        for (row = 0; row < store_->rowCount(); ++row) {
            if (filter.matches(valueOf)) matching.push_back(row);
        }
    }
    filterText_ = criteria;
    filtered_ = true;
    view_ = std::move(matching);
    position_ = 0;
}

// --- writing --------------------------------------------------------------------

void Recordset::AddNew() {
    requireUpdatable();
    Update();
    editMode_ = EditAdd;
}

void Recordset::CancelUpdate() {
    editMode_ = EditNone;
    std::fill(pending_.begin(), pending_.end(), std::nullopt);
}

void Recordset::Update() {
    requireOpen();
    if (editMode_ == EditNone) return;
    try {
        if (editMode_ == EditAdd) {
            insertPending();
        } else {
            updatePending();
        }
    } catch (...) {
        CancelUpdate();
        throw;
    }
    CancelUpdate();
}

void Recordset::UpdateBatch(int affect) {
    requireOpen();
    if (affect < AffectCurrent || affect > AffectAllChapters) {
        throw RuntimeError(u"Argomento non valido per UpdateBatch: %1"_s.arg(affect));
    }
    Update();
    if (session_ && session_->isOpen()) session_->commitWrites();
}

void Recordset::insertPending() {
    std::vector<bool> assignedFields(fields_.size());
    std::vector<int> assigned, unassigned;
    for (int i = 0; i < int(fields_.size()); ++i) {
        if (pending_[size_t(i)]) {
            assignedFields[size_t(i)] = true;
            assigned.push_back(i);
        } else {
            unassigned.push_back(i);
        }
    }
    if (assignedFields != insertedFields_ || insertSql_.isEmpty()) {
        QStringList columns;
        for (const int i : assigned)
            columns << quoteName(fields_[size_t(i)].originColumn_);
        insertSql_ = u"INSERT INTO "_s + quoteName(table_);
        if (columns.isEmpty()) {
            insertSql_ += u" DEFAULT VALUES"_s;
        } else {
            insertSql_ += u" ("_s + columns.join(u',') + u") VALUES (?"_s +
                          u",?"_s.repeated(columns.size() - 1) + u')';
        }
        // The counter left out is the row id the INSERT gives; only the
        // other columns the file may fill call for reading the row back.
        QStringList others, omitted, omittedBesidesCounter;
        for (const int i : unassigned) {
            const QString& column = fields_[size_t(i)].originColumn_;
            others << (column.isEmpty() ? u"NULL"_s : quoteName(column));
            if (column.isEmpty()) continue;
            omitted << column;
            if (i != counterField_) omittedBesidesCounter << column;
        }
        const bool readsBack = !omitted.isEmpty() && filledByTheDatabase(session_->handle(), table_,
                                                                         omittedBesidesCounter);
        readBackSql_ = readsBack ? u"SELECT "_s + others.join(u',') + u" FROM "_s +
                                       quoteName(table_) + u" WHERE rowid=?"_s
                                 : QString();
        counterFromRowId_ =
            !readsBack && counterField_ >= 0 && !assignedFields[size_t(counterField_)];
        insertedFields_ = std::move(assignedFields);
    }
    // The row is encoded once: the bytes that are kept are the bytes bound.
    // A counter the row id gives is written as the id the table will most
    // likely give, the last one plus one, and written again only when the
    // database gave another.
    const std::optional<qint64> likelyId =
        counterFromRowId_ && !rowIds_.empty() ? std::optional(rowIds_.back() + 1) : std::nullopt;
    RowStore::Writer& writer = store_->writer();
    for (int i = 0; i < int(pending_.size()); ++i) {
        if (const std::optional<Variant>& value = pending_[size_t(i)]; value) {
            writer.addVariant(*value);
        } else if (i == counterField_ && likelyId) {
            writer.addVariant(Variant::fromInt64(*likelyId));
        } else {
            writer.addNull();
        }
    }
    const int row = store_->append(writer);
    session_->beginWrites();
    sqlite3_stmt* insert = session_->prepare(insertSql_, source_);
    for (int i = 0; i < int(assigned.size()); ++i)
        bindCell(insert, i + 1, row, assigned[size_t(i)]);
    try {
        session_->run(insert, source_);
    } catch (...) {
        store_->removeLast();
        viewedRow_ = -1;
        throw;
    }
    const qint64 rowId = sqlite3_last_insert_rowid(session_->handle());
    rowIds_.push_back(rowId);
    if (!readBackSql_.isEmpty()) {
        readBack(row, unassigned);
    } else if (counterFromRowId_ && rowId != likelyId) {
        store_->replaceCell(row, counterField_, Variant::fromInt64(rowId));
        viewedRow_ = -1;
    }
    attachNewRow(row);
}

// Binds a cell of a stored row: a text straight from the row's UTF-8 bytes,
// which stay where they are for as long as the recordset lives.
void Recordset::bindCell(sqlite3_stmt* statement, int index, int row, int column) {
    if (viewedRow_ != row) {
        store_->view(row, &rowView_);
        viewedRow_ = row;
    }
    const char* text = nullptr;
    int bytes = 0;
    if (rowView_.utf8(column, &text, &bytes)) {
        sqlite3_bind_text(statement, index, text, bytes, SQLITE_STATIC);
    } else {
        bindVariant(statement, index, rowView_.cell(column));
    }
}

// Reads back the fields an added row did not give: the database filled in
// their defaults and the counter.
void Recordset::readBack(int row, const std::vector<int>& unassigned) {
    std::vector<Variant> values(fields_.size());
    for (int i = 0; i < int(fields_.size()); ++i) {
        if (pending_[size_t(i)]) values[size_t(i)] = *pending_[size_t(i)];
    }
    sqlite3_stmt* select = session_->prepare(readBackSql_, source_);
    sqlite3_bind_int64(select, 1, rowIds_[size_t(row)]);
    const bool found = sqlite3_step(select) == SQLITE_ROW;
    for (int k = 0; k < int(unassigned.size()); ++k) {
        const int i = unassigned[size_t(k)];
        values[size_t(i)] = found ? variantFromSqlite(sqlite3_column_value(select, k),
                                                      fields_[size_t(i)].type_.code)
                                  : Variant::null();
    }
    sqlite3_reset(select);
    storeRow(values, row);
}

void Recordset::updatePending() {
    const int row = currentRow();
    QStringList assignments;
    std::vector<int> assigned;
    for (int i = 0; i < int(fields_.size()); ++i) {
        if (pending_[size_t(i)]) {
            assignments << quoteName(fields_[size_t(i)].originColumn_) + u"=?"_s;
            assigned.push_back(i);
        }
    }
    const QString sql = u"UPDATE "_s + quoteName(table_) + u" SET "_s + assignments.join(u',') +
                        u" WHERE rowid=?"_s;
    session_->beginWrites();
    sqlite3_stmt* update = session_->prepare(sql, source_);
    for (int i = 0; i < int(assigned.size()); ++i) {
        bindVariant(update, i + 1, *pending_[size_t(assigned[size_t(i)])]);
    }
    sqlite3_bind_int64(update, int(assigned.size()) + 1, rowIds_[size_t(row)]);
    session_->run(update, source_);

    std::vector<Variant> values(fields_.size());
    for (int i = 0; i < int(fields_.size()); ++i) {
        values[size_t(i)] = pending_[size_t(i)] ? *pending_[size_t(i)] : cell(row, i);
    }
    for (const int column : assigned)
        indexes_.erase(column);
    storeRow(values, row);
}

// Keeps a written row: a new one joins the current view and becomes current.
// Keeps the values of a written row in place of row `row`.
void Recordset::storeRow(const std::vector<Variant>& values, int row) {
    RowStore::Writer& writer = store_->writer();
    for (const Variant& value : values)
        writer.addVariant(value);
    store_->replace(row, writer);
    viewedRow_ = -1;
}

// A new row joins the lookups and the current view, and becomes current.
void Recordset::attachNewRow(int row) {
    for (auto& [column, index] : indexes_) {
        const QString key = equalityKey(cell(row, column));
        if (!key.isEmpty()) index.rows[key].push_back(row);
    }
    if (filtered_) view_.push_back(row);
    position_ = viewCount() - 1;
}

}  // namespace lorvane::db
