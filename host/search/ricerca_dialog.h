// The search window of LorvaneRicerca.Ricerca: a sortable, filterable grid
// over the rows of a recordset, from which the user picks one or more rows.
#pragma once

#include <QAbstractTableModel>
#include <QDialog>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QStatusBar;
class QTableView;
class QToolBar;

namespace lorvane::db {
class Recordset;
}

namespace lorvane::host {

// The rows of a recordset, copied once: the grid never moves the recordset
// while the user browses.
class RicercaModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    // The value a column sorts by: numbers and dates by value, text as text.
    static constexpr int SortRole = Qt::UserRole;

    // Reads every row of the recordset's current view, then leaves the
    // recordset on its first row.
    explicit RicercaModel(db::Recordset& recordset, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    // The column named `name` without regard to case, -1 when there is none.
    int columnOf(const QString& name) const;
    const QString& text(int row, int column) const { return texts_[row][column]; }

  private:
    QStringList names_;
    std::vector<QStringList> texts_;
    std::vector<std::vector<QVariant>> sortKeys_;
};

class RicercaDialog : public QDialog {
    Q_OBJECT
  public:
    struct Options {
        QString caption;
        QString campoRicerca;
        bool multipla = true;
        bool statusBar = true;
        bool toolbar = true;
        bool filterBar = true;
        bool maximised = false;
    };

    // Throws RuntimeError when the recordset has no field named
    // `options.campoRicerca`, before any window exists.
    RicercaDialog(db::Recordset& recordset, const Options& options, QWidget* parent = nullptr);

    // The CampoRicerca value of every selected row in the order the grid shows
    // them, each followed by "|"; "" when no row is selected.
    QString risposta() const;

    QTableView* grid() const { return grid_; }
    QLineEdit* filterText() const { return filterText_; }
    // Item 0 searches every column; item n the grid's column n - 1.
    QComboBox* filterColumn() const { return filterColumn_; }
    QLabel* statusText() const { return statusText_; }
    QStatusBar* statusBar() const { return statusBar_; }
    QToolBar* toolBar() const { return toolBar_; }
    QWidget* filterBar() const { return filterBar_; }
    QPushButton* selezionaButton() const { return seleziona_; }
    QPushButton* annullaButton() const { return annulla_; }

    // Wide enough for every column and tall enough for the rows (up to 25),
    // within the screen: the window's size when it is not maximised, and the
    // size it keeps where maximising is not possible.
    QSize sizeHint() const override;

  private:
    void applyFilter();
    void updateState();
    std::vector<int> selectedProxyRows() const;

    RicercaModel* model_;
    QSortFilterProxyModel* proxy_;
    int campo_;
    QTableView* grid_;
    QToolBar* toolBar_;
    QWidget* filterBar_;
    QLineEdit* filterText_;
    QComboBox* filterColumn_;
    QStatusBar* statusBar_;
    QLabel* statusText_;
    QPushButton* seleziona_;
    QPushButton* annulla_;
};

}  // namespace lorvane::host
