// The frame every report screen is built on: the common controls, laid out as
// the screen's profile says, and the routines that all screens share — the
// opening, the reset, the keys, the close timer and the order of a run from an
// output button. A screen adds its own preparation and what else is its own.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>

#include "db/recordset.h"
#include "entry/module_values.h"
#include "screens/frame_criteria.h"
#include "screens/screen_profile.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;
class QTabWidget;
class QTimer;

namespace lorvane::output {
struct ExportKind;
}

namespace lorvane::screens {

class CheckList;
class DatePicker;
class KeyedTree;

// The mouse pointers a screen shows, numbered as the legacy runtime does.
namespace MousePointer {
inline constexpr int Default = 0;
inline constexpr int Hourglass = 11;
}  // namespace MousePointer

class FilterScreen : public QWidget {
    Q_OBJECT

  public:
    explicit FilterScreen(ScreenProfile profile);

    // Runs Form_Load: a screen is usable only after it. A failure passes to
    // the caller, which then owns a screen it should delete.
    void load();

    const ScreenProfile& profile() const { return profile_; }
    // The report title of the screen.
    const QString& Titolo() const { return profile_.titolo; }
    int mousePointer() const { return mousePointer_; }

    // Every 3 seconds: when the host asks, stop the timer and close.
    Q_INVOKABLE void Timer1_Timer();

    // The reset of "Azzera Filtro".
    void CaricaAlbero();
    // True when at least one causale is ticked; else the user is told.
    bool ControllaCausali();
    // The ticks of ListCausali into the host's setting of the screen.
    void SalvaCausali();
    // The frame's controls as they stand now.
    FrameCriteria criteri() const;
    // The template `percorso` copied into the work folder and opened, with
    // the work folder spelt as this screen spells it.
    void ApriTemporaneo(const QString& percorso);

  protected:
    // The outputs, for the checks that differ between them.
    enum class Output { Preview, Pdf, Word, Excel };

    // The screen's own check before a run (after the layout's). The frame's
    // checks the causali when the profile says so.
    virtual bool ControlloProprio(Output output);

  public:
    // The work database filled for the layout chosen: the template copied and
    // opened, the preparation, the causali saved. Gives the number of rows.
    // Public so that a benchmark can time the preparation alone.
    virtual qint16 PreparaStampa();

  protected:
    // The report's own data, into the open work database; gives the number of rows.
    virtual qint16 PreparaDati();
    // Fills the tree from the criteria typed (the venue search).
    virtual void CmdRicerca_Click();
    // The statement of the venue search: the profile's forms over the criteria.
    virtual QString sqlRicerca() const;
    // Adds to the tree the venues picked in the suite's search grid.
    virtual void CmdElenco_Click();
    // Rebuilds AnagraficaLocali_Tmp of the main database and the work table
    // AnagraficaLocali from "Tutti i locali" or the ticks of the tree; gives
    // the work table, opened again.
    virtual db::RecordsetPtr PreparaLocali();
    // What a screen's Form_Load does beyond the frame's, at its end.
    virtual void Form_Load_Proprio() {}
    // What a screen's Form_Load reads between its lists and its causali.
    virtual void Form_Load_DopoElenchi() {}

    void setMousePointer(int pointer);
    // The host of the module.
    entry::HostApplication& host() const;

    // The controls; null where the screen has none.
    QTabWidget* Tab1 = nullptr;
    QTabWidget* Pers = nullptr;
    QListWidget* List1 = nullptr;
    QListWidget* List2 = nullptr;
    QGroupBox* Frame1 = nullptr;
    QGroupBox* Frame2 = nullptr;
    QComboBox* CmbAzienda = nullptr;
    DatePicker* txtDallaData = nullptr;
    DatePicker* txtAllaData = nullptr;
    QComboBox* CmbConcessionario2 = nullptr;
    QComboBox* CmbNumTerminale = nullptr;
    QLineEdit* TxtNomeLocale = nullptr;
    QLineEdit* txtLocalita = nullptr;
    QLineEdit* txtProvincia = nullptr;
    QComboBox* ComboAgente = nullptr;
    QComboBox* cmbConcessionario = nullptr;
    QComboBox* CmbZona = nullptr;
    QCheckBox* chkSospesi = nullptr;
    QCheckBox* ChkTutti = nullptr;
    QPushButton* CmdRicerca = nullptr;
    QPushButton* CmdElenco = nullptr;
    KeyedTree* Tree = nullptr;
    CheckList* ListCausali = nullptr;
    QPushButton* CmdStampa = nullptr;
    QPushButton* CmdPdf = nullptr;
    QPushButton* CmdXls = nullptr;
    QPushButton* CmdExportExcel = nullptr;
    QPushButton* CmdAzzera = nullptr;
    QPushButton* CmdChiudi = nullptr;
    QProgressBar* Bar1 = nullptr;
    QTimer* Timer1 = nullptr;

    bool eventFilter(QObject* watched, QEvent* event) override;
    // A screen closed while one of its click routines runs (they let window
    // events through) is only hidden: it is deleted when the routine returns.
    void closeEvent(QCloseEvent* event) override;

  private:
    // Building the window (filter_screen_layout.cpp).
    void buildControls();
    QWidget* buildCriteriaBox(QWidget* parent);
    QWidget* buildVenuePanel(QWidget* parent);
    QWidget* buildCausaliPage(QWidget* parent);
    QWidget* buildExtra(const ExtraControl& extra, QWidget* parent);
    QWidget* buildButtonRow();
    void wireControls();

    // The frame's routines (filter_screen.cpp).
    void Form_Load();
    void centreOnScreen();
    void fillLists();
    void fillCausali();
    void setOpeningState();
    void applyValue(const ExtraControl& extra, const ExtraControl::Value& value);
    void addTreeRoot();
    void ChkTutti_Click();
    // Runs `handler` on each click; a failure none of its own handlers took is shown.
    void onClick(QPushButton* button, std::function<void()> handler);

    // The venues of a run (venue_selection.cpp).
    void copyTickedVenue(const QString& code, bool sospesi, db::Recordset* workTable,
                         db::Recordset& selection);

    // The order of a run (output_run.cpp).
    void CmdStampa_Click();
    void CmdEsporta_Click(Output output, const output::ExportKind& kind);
    bool reportChosen();

    ScreenProfile profile_;
    int mousePointer_ = MousePointer::Default;
    // Click routines running now (one may run inside another's events).
    int runningClicks_ = 0;
    bool deleteWhenIdle_ = false;
    entry::LiveObject live_;
};

// The date a DateRule gives today; an invalid date for Missing and Unchanged.
QDate dateOf(DateRule rule);

// A row count as the 16-bit number of a run. Throws RuntimeError "Overflow"
// beyond 32767.
qint16 contoRighe(qint64 rows);

}  // namespace lorvane::screens
