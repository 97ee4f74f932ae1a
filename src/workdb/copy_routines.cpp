#include "workdb/copy_routines.h"

#include <QComboBox>
#include <QProgressBar>
#include <utility>
#include <vector>

#include "platform/error_handling.h"
#include "platform/windows.h"
#include "workdb/work_database.h"

namespace lorvane::workdb {

using namespace Qt::StringLiterals;
using platform::showErrorAndGoOn;

db::RecordsetPtr ApriTabellaTemporanea(const QString& comando) {
    db::Command command;
    command.ActiveConnection = &ConnessioneTemporanea();
    command.CommandText = comando;
    command.CommandType = db::Command::TypeText;
    auto recordset = std::make_shared<db::Recordset>();
    recordset->Open(command);
    return recordset;
}

namespace {

// Passes in a row on which the source failed to move before the copy gives up.
constexpr int MaxPassesInPlace = 2;

db::Field& fieldOf(db::Recordset& recordset, const db::Variant& campo) {
    if (campo.isNumber()) return recordset.Fields(int(campo.toLong()));
    return recordset.Fields(campo.text());
}

// The columns of a copy, found by name once per statement the recordsets
// stand on: a lookup of every name in both recordsets on every row is much of
// a copy's time. A name that either recordset lacks stays a lookup by name,
// so that it fails on every row as it should.
class CopyColumns {
  public:
    explicit CopyColumns(const QString& colonne) : names_(colonne.split(u',')) {}

    void resolve(db::Recordset& origine, db::Recordset& destinazione) {
        const std::pair<const void*, const void*> key{origine.Source().constData(),
                                                      destinazione.Source().constData()};
        if (resolved_ && key == key_ && origine.IsOpen() && destinazione.IsOpen()) return;
        resolved_ = origine.IsOpen() && destinazione.IsOpen();
        key_ = key;
        positions_.assign(size_t(names_.size()), {-1, -1});
        if (!resolved_) return;
        for (qsizetype i = 0; i < names_.size(); ++i) {
            const db::Field* target = destinazione.FindField(names_[i]);
            const db::Field* source = origine.FindField(names_[i]);
            if (target && source)
                positions_[size_t(i)] = {indexOf(destinazione, *target), indexOf(origine, *source)};
        }
    }

    qsizetype size() const { return names_.size(); }
    db::Field& target(db::Recordset& destinazione, qsizetype i) const {
        const int at = positions_[size_t(i)].first;
        return at >= 0 ? destinazione.Fields(at) : destinazione.Fields(names_[i]);
    }
    db::Field& source(db::Recordset& origine, qsizetype i) const {
        const int at = positions_[size_t(i)].second;
        return at >= 0 ? origine.Fields(at) : origine.Fields(names_[i]);
    }

  private:
    static int indexOf(db::Recordset& recordset, const db::Field& field) {
        for (int i = 0; i < recordset.FieldCount(); ++i)
            if (&recordset.Fields(i) == &field) return i;
        return -1;
    }

    QStringList names_;
    std::vector<std::pair<int, int>> positions_;  // destination, source; -1: by name
    std::pair<const void*, const void*> key_{nullptr, nullptr};
    bool resolved_ = false;
};

void addRow(CopyColumns& columns, db::Recordset& origine, db::Recordset& destinazione) {
    showErrorAndGoOn([&] { destinazione.AddNew(); });
    columns.resolve(origine, destinazione);
    for (qsizetype i = 0; i < columns.size(); ++i) {
        showErrorAndGoOn([&] {
            db::Field& target = columns.target(destinazione, i);
            const db::Variant value = columns.source(origine, i).Value();
            if (target.Type() == db::DataType::Boolean && value.isNull()) {
                target = db::Variant(0);
            } else {
                target = value;
            }
        });
    }
    showErrorAndGoOn([&] { destinazione.Update(); });
}

}  // namespace

void CopiaRecordset(QProgressBar* barra, const QString& colonne, db::Recordset& origine,
                    db::Recordset& destinazione, const db::Variant& controllo,
                    const db::Variant& chiave) {
    CopyColumns names(colonne);
    showErrorAndGoOn([&] { destinazione.UpdateBatch(db::Recordset::AffectAll); });

    int count = 0;
    showErrorAndGoOn([&] { count = origine.RecordCount(); });
    if (count >= 1) {
        int oldMaximum = 0, oldValue = 0;
        if (barra) {
            oldMaximum = barra->maximum();
            oldValue = barra->value();
            barra->setMaximum(count);
            barra->setValue(0);
        }
        const bool checkKey = db::sameText(controllo, db::Variant(1));
        // Each statement of the loop stands alone under the handler, which goes
        // on with the next one: a loop test or a count test that fails goes on
        // into the body (the statement after it), and a filter that fails leaves
        // the one in force, against which the count is tested.
        int passesInPlace = 0;
        int passes = 0, stepsNotShown = 0, shownPercent = 0;
        for (;;) {
            bool atEnd = false;
            showErrorAndGoOn([&] { atEnd = origine.Eof(); });
            if (atEnd) break;
            if (checkKey) {
                showErrorAndGoOn([&] {
                    destinazione.SetFilter(chiave.text() + u'=' +
                                           origine.Fields(chiave.text()).Value().text());
                });
                bool absent = true;
                showErrorAndGoOn([&] { absent = destinazione.RecordCount() == 0; });
                if (absent) addRow(names, origine, destinazione);
            } else {
                addRow(names, origine, destinazione);
            }
            const bool moved = showErrorAndGoOn([&] { origine.MoveNext(); });
            // The bar moves when the percentage it shows changes, and at the
            // last row: setting it on every row redraws its text every time.
            ++passes;
            ++stepsNotShown;
            const int percent = int(qint64(passes) * 100 / count);
            if (barra && (percent != shownPercent || passes == count)) {
                barra->setValue(barra->value() + stepsNotShown);
                stepsNotShown = 0;
                shownPercent = percent;
            }
            platform::letEventsThrough();
            // Guard: a source that can no longer move (closed while events ran)
            // would keep this order going for ever, a message on every pass.
            // One pass in place is let go, as the events may set it right.
            passesInPlace = moved ? 0 : passesInPlace + 1;
            if (passesInPlace >= MaxPassesInPlace) break;
        }
        if (barra) {
            barra->setMaximum(oldMaximum);
            barra->setValue(oldValue);
        }
    }
    showErrorAndGoOn([&] { destinazione.UpdateBatch(db::Recordset::AffectAllChapters); });
}

void CopiaTabella(const QString& colonne, db::Recordset& origine, db::Recordset& destinazione,
                  const db::Variant& controllo, const db::Variant& chiave) {
    CopiaRecordset(nullptr, colonne, origine, destinazione, controllo, chiave);
}

void RiempiCombo(db::Recordset& origine, const db::Variant& campo, QComboBox* combo) {
    if (origine.RecordCount() <= 0) return;
    origine.MoveFirst();
    combo->clear();
    for (; !origine.Eof(); origine.MoveNext())
        combo->addItem(fieldOf(origine, campo).Value().toString());
    combo->setCurrentIndex(-1);  // a list filled anew has nothing chosen
}

}  // namespace lorvane::workdb
