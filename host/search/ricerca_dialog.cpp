#include "host/search/ricerca_dialog.h"

#include <QAction>
#include <QCollator>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QSortFilterProxyModel>
#include <QStatusBar>
#include <QStyle>
#include <QTableView>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>

#include "db/recordset.h"
#include "platform/runtime_error.h"

namespace lorvane::host {

using namespace Qt::StringLiterals;

namespace {

// Numbers and dates sort by value: a code column holding 9 and 10 must not
// put 10 first, nor 01/02/2024 after 31/01/2023.
QVariant sortKey(const db::Variant& value) {
    switch (value.type()) {
        case db::VarType::Empty:
        case db::VarType::Null:
            return {};
        case db::VarType::Integer:
        case db::VarType::Long:
        case db::VarType::Double:
        case db::VarType::Currency:
        case db::VarType::Decimal:
            return value.toDouble();
        case db::VarType::Boolean:
            return value.toBool() ? 1 : 0;
        case db::VarType::Date:
            return qlonglong(value.get<db::DateTime>()->seconds());
        case db::VarType::String:
            break;
    }
    return value.text();
}

// Texts sort as an Italian reader expects: case and accents do not push a
// word after "Z". Numbers, dates and Nulls keep the standard comparison.
class RicercaProxy : public QSortFilterProxyModel {
  public:
    explicit RicercaProxy(QObject* parent) : QSortFilterProxyModel(parent) {
        collator_.setCaseSensitivity(Qt::CaseInsensitive);
        collator_.setNumericMode(true);
    }

  protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override {
        const QVariant a = left.data(sortRole());
        const QVariant b = right.data(sortRole());
        if (a.typeId() == QMetaType::QString && b.typeId() == QMetaType::QString) {
            return collator_.compare(a.toString(), b.toString()) < 0;
        }
        return QSortFilterProxyModel::lessThan(left, right);
    }

  private:
    QCollator collator_{QLocale(QLocale::Italian, QLocale::Italy)};
};

}  // namespace

RicercaModel::RicercaModel(db::Recordset& recordset, QObject* parent)
    : QAbstractTableModel(parent) {
    const int columns = recordset.FieldCount();
    for (int column = 0; column < columns; ++column)
        names_ << recordset.Fields(column).Name();
    if (recordset.RecordCount() == 0) return;
    texts_.reserve(recordset.RecordCount());
    sortKeys_.reserve(recordset.RecordCount());
    for (recordset.MoveFirst(); !recordset.Eof(); recordset.MoveNext()) {
        QStringList texts;
        std::vector<QVariant> keys;
        keys.reserve(columns);
        for (int column = 0; column < columns; ++column) {
            const db::Variant value = recordset.Fields(column).Value();
            texts << value.text();
            keys.push_back(sortKey(value));
        }
        texts_.push_back(std::move(texts));
        sortKeys_.push_back(std::move(keys));
    }
    recordset.MoveFirst();
}

int RicercaModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(texts_.size());
}

int RicercaModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(names_.size());
}

QVariant RicercaModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::DisplayRole) return texts_[index.row()][index.column()];
    if (role == SortRole) return sortKeys_[index.row()][index.column()];
    return {};
}

QVariant RicercaModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Horizontal) return names_.value(section);
    return section + 1;
}

int RicercaModel::columnOf(const QString& name) const {
    for (int column = 0; column < names_.size(); ++column) {
        if (names_[column].compare(name, Qt::CaseInsensitive) == 0) return column;
    }
    return -1;
}

RicercaDialog::RicercaDialog(db::Recordset& recordset, const Options& options, QWidget* parent)
    : QDialog(parent), model_(new RicercaModel(recordset, this)) {
    campo_ = model_->columnOf(options.campoRicerca);
    if (campo_ < 0) {
        throw RuntimeError(
            u"Ricerca: il campo '%1' non esiste nell'elenco."_s.arg(options.campoRicerca));
    }

    setWindowTitle(options.caption.isEmpty() ? u"Ricerca"_s : options.caption);
    setSizeGripEnabled(true);

    proxy_ = new RicercaProxy(this);
    proxy_->setSourceModel(model_);
    proxy_->setSortRole(RicercaModel::SortRole);
    proxy_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    proxy_->setFilterKeyColumn(-1);

    grid_ = new QTableView(this);
    grid_->setObjectName(u"Griglia"_s);
    grid_->setModel(proxy_);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setSelectionMode(options.multipla ? QAbstractItemView::ExtendedSelection
                                             : QAbstractItemView::SingleSelection);
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->setAlternatingRowColors(true);
    grid_->verticalHeader()->hide();
    // The rows keep the recordset's order until the user clicks a header.
    grid_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    grid_->setSortingEnabled(true);
    grid_->resizeColumnsToContents();

    toolBar_ = new QToolBar(this);
    toolBar_->setObjectName(u"BarraStrumenti"_s);
    QAction* tutti = toolBar_->addAction(u"Seleziona tutti"_s, grid_, &QTableView::selectAll);
    tutti->setEnabled(options.multipla);
    toolBar_->addAction(u"Deseleziona tutti"_s, grid_, &QTableView::clearSelection);
    QAction* azzera = toolBar_->addAction(u"Azzera filtro"_s);

    filterBar_ = new QWidget(this);
    filterBar_->setObjectName(u"BarraFiltro"_s);
    filterText_ = new QLineEdit(filterBar_);
    filterText_->setObjectName(u"TxtFiltro"_s);
    filterText_->setPlaceholderText(u"Testo da cercare"_s);
    filterText_->setClearButtonEnabled(true);
    filterColumn_ = new QComboBox(filterBar_);
    filterColumn_->setObjectName(u"CmbColonna"_s);
    filterColumn_->addItem(u"Tutte le colonne"_s);
    for (int column = 0; column < model_->columnCount(); ++column) {
        filterColumn_->addItem(model_->headerData(column, Qt::Horizontal).toString());
    }
    auto* filterLayout = new QHBoxLayout(filterBar_);
    filterLayout->setContentsMargins(0, 0, 0, 0);
    filterLayout->addWidget(new QLabel(u"Filtro:"_s, filterBar_));
    filterLayout->addWidget(filterText_, 1);
    filterLayout->addWidget(new QLabel(u"in"_s, filterBar_));
    filterLayout->addWidget(filterColumn_);

    seleziona_ = new QPushButton(u"Seleziona"_s, this);
    seleziona_->setObjectName(u"CmdSeleziona"_s);
    seleziona_->setDefault(true);
    annulla_ = new QPushButton(u"Annulla"_s, this);
    annulla_->setObjectName(u"CmdAnnulla"_s);
    annulla_->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(seleziona_);
    buttons->addWidget(annulla_);

    statusBar_ = new QStatusBar(this);
    statusBar_->setObjectName(u"BarraStato"_s);
    statusBar_->setSizeGripEnabled(false);
    statusText_ = new QLabel(statusBar_);
    statusBar_->addWidget(statusText_, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(toolBar_);
    layout->addWidget(filterBar_);
    layout->addWidget(grid_, 1);
    layout->addLayout(buttons);
    layout->addWidget(statusBar_);

    toolBar_->setVisible(options.toolbar);
    filterBar_->setVisible(options.filterBar);
    statusBar_->setVisible(options.statusBar);

    connect(filterText_, &QLineEdit::textChanged, this, &RicercaDialog::applyFilter);
    connect(filterColumn_, &QComboBox::currentIndexChanged, this, &RicercaDialog::applyFilter);
    connect(azzera, &QAction::triggered, filterText_, &QLineEdit::clear);
    connect(seleziona_, &QPushButton::clicked, this, &QDialog::accept);
    connect(annulla_, &QPushButton::clicked, this, &QDialog::reject);
    connect(grid_, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& index) {
        if (!index.isValid()) return;
        grid_->selectionModel()->select(index,
                                        QItemSelectionModel::Select | QItemSelectionModel::Rows);
        accept();
    });
    connect(grid_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &RicercaDialog::updateState);

    resize(sizeHint());
    if (options.maximised) setWindowState(windowState() | Qt::WindowMaximized);
    grid_->setFocus();
    updateState();
}

QSize RicercaDialog::sizeHint() const {
    constexpr int mostRowsShown = 25;
    const QSize laidOut = QDialog::sizeHint();
    int columns = 0;
    for (int column = 0; column < grid_->model()->columnCount(); ++column)
        columns += grid_->columnWidth(column);
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const QMargins margins = layout()->contentsMargins();
    const int gridWidth = columns + 2 * grid_->frameWidth() + scrollBar;
    const int rows = std::min(grid_->model()->rowCount(), mostRowsShown);
    const int gridHeight = rows * grid_->verticalHeader()->defaultSectionSize() +
                           grid_->horizontalHeader()->sizeHint().height() +
                           2 * grid_->frameWidth() + scrollBar;
    QSize wanted(std::max(laidOut.width(), gridWidth + margins.left() + margins.right()),
                 laidOut.height() - grid_->sizeHint().height() + std::max(gridHeight, 120));
    wanted.setHeight(std::max(wanted.height(), laidOut.height()));
    if (const QScreen* shownOn = screen()) {
        const QSize area = shownOn->availableGeometry().size();
        wanted = wanted.boundedTo(QSize(area.width() * 9 / 10, area.height() * 9 / 10));
    }
    return wanted;
}

void RicercaDialog::applyFilter() {
    proxy_->setFilterKeyColumn(filterColumn_->currentIndex() - 1);
    proxy_->setFilterFixedString(filterText_->text());
    // Rows the filter hides leave the selection without a selectionChanged.
    updateState();
}

std::vector<int> RicercaDialog::selectedProxyRows() const {
    std::vector<int> rows;
    for (const QModelIndex& index : grid_->selectionModel()->selectedRows()) {
        rows.push_back(index.row());
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void RicercaDialog::updateState() {
    const auto selected = qsizetype(selectedProxyRows().size());
    statusText_->setText(u"%1 di %2 record · %3 %4"_s.arg(proxy_->rowCount())
                             .arg(model_->rowCount())
                             .arg(selected)
                             .arg(selected == 1 ? u"selezionato"_s : u"selezionati"_s));
    seleziona_->setEnabled(selected > 0);
}

QString RicercaDialog::risposta() const {
    QString answer;
    for (const int row : selectedProxyRows()) {
        const int source = proxy_->mapToSource(proxy_->index(row, 0)).row();
        answer += model_->text(source, campo_) + u'|';
    }
    return answer;
}

}  // namespace lorvane::host
