#include "screens/filter_screen.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTabWidget>
#include <QTimer>
#include <limits>

#include "output/catalogue.h"
#include "output/export.h"
#include "platform/clock.h"
#include "platform/message_box.h"
#include "platform/runtime_error.h"
#include "screens/controls.h"
#include "workdb/copy_routines.h"

namespace lorvane::screens {

using namespace Qt::StringLiterals;

namespace {

// The six combos of the frame that Delete clears, by name; extras say so themselves.
constexpr const char* deleteClearsCombos[] = {"CmbAzienda", "cmbConcessionario",
                                              "CmbConcessionario2", "CmbZona", "ComboAgente"};

// The combos the reset clears, in its order.
constexpr const char* resetCombos[] = {"CmbZona",     "cmbConcessionario", "CmbConcessionario2",
                                       "ComboAgente", "CmbAzienda",        "CmbNumTerminale"};

// The order in which Form_Load fills the combos from the lists it opened.
constexpr const char* fillOrder[] = {"cmbConcessionario", "CmbConcessionario2", "CmbZona",
                                     "ComboAgente",       "CmbAzienda",         "CmbNumTerminale"};

QString rootTextOf(TreeHolds holds) {
    switch (holds) {
        case TreeHolds::Boards:
            return u"Tutte le Schede"_s;
        case TreeHolds::Cabinets:
            return u"Tutti i Mobili"_s;
        default:
            return u"Tutti i Locali"_s;
    }
}

// The code of a causale row: its text up to the first " -".
QString causaleCode(const QString& rowText) {
    const qsizetype dash = rowText.indexOf(u" -"_s);
    return dash < 0 ? rowText : rowText.left(dash);
}

bool isText(const QString& text, const char* name) { return text == QLatin1String(name); }

}  // namespace

qint16 contoRighe(qint64 rows) {
    if (rows > std::numeric_limits<qint16>::max()) throw RuntimeError(u"Overflow"_s);
    return qint16(rows);
}

QDate dateOf(DateRule rule) {
    const QDate today = platform::Today();
    switch (rule) {
        case DateRule::Today:
            return today;
        case DateRule::FirstOfYear:
            return QDate(today.year(), 1, 1);
        case DateRule::FirstOfMonth:
            return QDate(today.year(), today.month(), 1);
        default:
            return {};
    }
}

FilterScreen::FilterScreen(ScreenProfile profile) : profile_(std::move(profile)) {
    setAttribute(Qt::WA_DeleteOnClose);
    buildControls();
    wireControls();
}

entry::HostApplication& FilterScreen::host() const { return impostato(entry::moduleValues().host); }

// The legacy runtime kept a form alive while its code ran, whatever closed
// it: a click routine counts itself running, and the last one to return
// deletes a screen closed meanwhile.
void FilterScreen::onClick(QPushButton* button, std::function<void()> handler) {
    if (!button) return;
    connect(button, &QPushButton::clicked, this, [this, handler = std::move(handler)] {
        ++runningClicks_;
        try {
            handler();
        } catch (const RuntimeError& error) {
            platform::ErrorBox(error.message(), platform::MsgBoxStyle::Critical);
        }
        if (--runningClicks_ == 0 && deleteWhenIdle_) deleteLater();
    });
}

void FilterScreen::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    if (event->isAccepted() && runningClicks_ > 0 && testAttribute(Qt::WA_DeleteOnClose)) {
        setAttribute(Qt::WA_DeleteOnClose, false);
        deleteWhenIdle_ = true;
    }
}

void FilterScreen::wireControls() {
    onClick(CmdStampa, [this] { CmdStampa_Click(); });
    onClick(CmdPdf, [this] { CmdEsporta_Click(Output::Pdf, output::PdfExport); });
    onClick(CmdXls, [this] { CmdEsporta_Click(Output::Word, output::WordExport); });
    onClick(CmdExportExcel, [this] { CmdEsporta_Click(Output::Excel, output::ExcelExport); });
    onClick(CmdAzzera, [this] { CaricaAlbero(); });
    onClick(CmdChiudi, [this] { close(); });
    onClick(CmdRicerca, [this] { CmdRicerca_Click(); });
    onClick(CmdElenco, [this] { CmdElenco_Click(); });
    connect(Timer1, &QTimer::timeout, this, &FilterScreen::Timer1_Timer);
    if (ChkTutti) connect(ChkTutti, &QCheckBox::toggled, this, [this] { ChkTutti_Click(); });
    for (QComboBox* combo : findChildren<QComboBox*>())
        combo->installEventFilter(this);
    for (QLineEdit* box : findChildren<QLineEdit*>())
        box->installEventFilter(this);
}

void FilterScreen::load() { Form_Load(); }

void FilterScreen::Form_Load() {
    centreOnScreen();
    setWindowTitle(u"..:: "_s + Titolo() + u" ::.."_s);
    if (profile_.codiceStampa)
        entry::moduleValues().codiceStampa = QString::fromUtf8(profile_.codiceStampa);
    output::CaricaElencoStampe(List1, List2);
    if (Tab1) Tab1->setCurrentIndex(0);
    fillLists();
    Form_Load_DopoElenchi();
    fillCausali();
    setOpeningState();
    if (profile_.loadCallsReset) CaricaAlbero();
    Form_Load_Proprio();
    Timer1->start();
}

void FilterScreen::centreOnScreen() {
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->geometry();
        move(area.x() + (area.width() - width()) / 2, area.y() + (area.height() - height()) / 2);
    }
}

// All the lists are opened first, then the combos filled: the frame's own in
// its order, then those of the screen's own in the order of their lists.
void FilterScreen::fillLists() {
    std::vector<db::RecordsetPtr> opened;
    for (const ComboList& list : profile_.lists)
        opened.push_back(host().OpenRecordset(QString::fromUtf8(list.statement)));
    const auto fill = [&](const ComboFill& each, size_t list) {
        if (auto* combo = findChild<QComboBox*>(QLatin1String(each.combo)))
            workdb::RiempiCombo(*opened[list], QString::fromUtf8(each.column), combo);
    };
    for (const char* name : fillOrder) {
        for (size_t list = 0; list < profile_.lists.size(); ++list)
            for (const ComboFill& each : profile_.lists[list].fills)
                if (qstrcmp(each.combo, name) == 0) fill(each, list);
    }
    const auto inFillOrder = [](const char* name) {
        return std::any_of(std::begin(fillOrder), std::end(fillOrder),
                           [name](const char* frame) { return qstrcmp(frame, name) == 0; });
    };
    for (size_t list = 0; list < profile_.lists.size(); ++list)
        for (const ComboFill& each : profile_.lists[list].fills)
            if (!inFillOrder(each.combo)) fill(each, list);
}

void FilterScreen::fillCausali() {
    const CausaliList* causali = profile_.causali;
    if (!causali || !ListCausali) return;
    db::RecordsetPtr rows = host().OpenRecordset(QString::fromUtf8(causali->statement));
    if (rows->RecordCount() > 0) {
        ListCausali->clear();
        for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext()) {
            ListCausali->addRow(rows->Fields(u"CodiceCausale"_s).Value().toString() + u" - "_s +
                                    rows->Fields(u"Descrizione"_s).Value().toString(),
                                causali->tickedWhenAdded);
        }
    }
    if (!causali->section) return;
    const QString fallback = QString::fromUtf8(causali->defaultTicks);
    QString saved = host().LeggiSettaggio(QString::fromUtf8(causali->section), u"Causali"_s,
                                          causali->defaultGivenToHost ? fallback : QString());
    if (saved.isEmpty()) saved = fallback;
    // Ticks are only ever added here: a row already ticked stays so.
    if (ListCausali->count() <= 1) return;
    for (int row = 0; row < ListCausali->count(); ++row) {
        const QString code = causaleCode(ListCausali->item(row)->text());
        if (saved.contains(u'\'' + code + u'\'', Qt::CaseInsensitive))
            ListCausali->setTicked(row, true);
    }
}

void FilterScreen::setOpeningState() {
    if (txtDallaData) txtDallaData->setDate(dateOf(profile_.dallaOnOpen));
    if (txtAllaData) txtAllaData->setDate(dateOf(profile_.allaOnOpen));
    if (Tree) addTreeRoot();
    for (const ExtraControl& extra : profile_.extras)
        applyValue(extra, extra.onOpen);
}

void FilterScreen::addTreeRoot() {
    Tree->addNode(QString(), QLatin1String(KeyedTree::RootKey), rootTextOf(profile_.tree),
                  KeyedTree::RootImage);
}

void FilterScreen::applyValue(const ExtraControl& extra, const ExtraControl::Value& value) {
    QWidget* control = findChild<QWidget*>(QLatin1String(extra.name));
    if (!control || value.rule == ExtraControl::Value::Keep) return;
    if (auto* box = qobject_cast<QLineEdit*>(control)) {
        box->setText(value.text);
    } else if (auto* check = qobject_cast<QCheckBox*>(control)) {
        check->setChecked(value.text == u"1"_s);
    } else if (auto* option = qobject_cast<QRadioButton*>(control)) {
        option->setChecked(value.text == u"1"_s);
    } else if (auto* picker = qobject_cast<QDateEdit*>(control)) {
        picker->setDate(dateOf(value.date));
    } else if (auto* combo = qobject_cast<QComboBox*>(control)) {
        switch (value.rule) {
            case ExtraControl::Value::FirstRow:
                combo->setCurrentIndex(combo->count() ? 0 : -1);
                break;
            case ExtraControl::Value::LastRow:
                combo->setCurrentIndex(combo->count() - 1);
                break;
            default:
                combo->setCurrentIndex(-1);
        }
    }
}

void FilterScreen::CaricaAlbero() {
    if (txtDallaData && profile_.dallaOnReset != DateRule::Unchanged)
        txtDallaData->setDate(dateOf(profile_.dallaOnReset));
    if (txtAllaData && profile_.allaOnReset != DateRule::Unchanged)
        txtAllaData->setDate(dateOf(profile_.allaOnReset));
    for (QLineEdit* box : {TxtNomeLocale, txtLocalita, txtProvincia})
        if (box) box->clear();
    if (chkSospesi) chkSospesi->setChecked(false);
    if (ChkTutti) ChkTutti->setChecked(true);
    for (const char* name : resetCombos)
        if (auto* combo = findChild<QComboBox*>(QLatin1String(name))) combo->setCurrentIndex(-1);
    for (const ExtraControl& extra : profile_.extras)
        applyValue(extra, extra.onReset);
    // The tree last: "Tutti i locali" switched on empties it on most screens,
    // and a root added before would go with it.
    if (Tree) {
        switch (profile_.treeOnReset) {
            case TreeReset::EmptiedWithRoot:
                Tree->clearNodes();
                addTreeRoot();
                break;
            case TreeReset::Emptied:
                Tree->clearNodes();
                break;
            case TreeReset::Untouched:
                break;
        }
    }
}

void FilterScreen::ChkTutti_Click() {
    if (!ChkTutti->isChecked()) return;
    for (QLineEdit* box : {TxtNomeLocale, txtLocalita, txtProvincia})
        if (box) box->clear();
    for (const ExtraControl& extra : profile_.extras)
        if (extra.searchField) findChild<QLineEdit*>(QLatin1String(extra.name))->clear();
    for (QComboBox* combo : {ComboAgente, cmbConcessionario, CmbZona})
        if (combo) combo->setCurrentIndex(-1);
    if (Tree && !profile_.chkTuttiKeepsTree) Tree->clearNodes();
}

bool FilterScreen::eventFilter(QObject* watched, QEvent* event) {
    const QString name = watched->objectName();
    if (event->type() == QEvent::KeyRelease &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
        bool clears = std::any_of(std::begin(deleteClearsCombos), std::end(deleteClearsCombos),
                                  [&](const char* combo) { return isText(name, combo); });
        for (const ExtraControl& extra : profile_.extras)
            clears = clears || (extra.deleteClears && isText(name, extra.name));
        if (auto* combo = qobject_cast<QComboBox*>(watched); combo && clears)
            combo->setCurrentIndex(-1);
    }
    if (event->type() == QEvent::KeyPress && CmdRicerca) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        bool searches =
            watched == TxtNomeLocale || watched == txtLocalita || watched == txtProvincia;
        for (const ExtraControl& extra : profile_.extras)
            searches = searches || (extra.searchField && isText(name, extra.name));
        if (searches && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
            CmdRicerca->setFocus();
            CmdRicerca->click();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FilterScreen::Timer1_Timer() {
    if (host().ChiudiFinestre()) {
        Timer1->stop();
        close();
    }
}

bool FilterScreen::ControllaCausali() {
    if (ListCausali && ListCausali->tickedCount() > 0) return true;
    platform::MsgBox(u"Selezionare almeno una causale dall'elenco"_s,
                     platform::MsgBoxStyle::Information, u"Causale non selezionata"_s);
    return false;
}

void FilterScreen::SalvaCausali() {
    if (!ListCausali || !profile_.causali || !profile_.causali->section) return;
    QStringList ticked;
    for (int row = 0; row < ListCausali->count(); ++row)
        if (ListCausali->isTicked(row))
            ticked << u'\'' + causaleCode(ListCausali->item(row)->text()) + u'\'';
    QString value = ticked.join(u", "_s);
    host().SalvaSettaggio(QString::fromUtf8(profile_.causali->section), u"Causali"_s, value);
}

FrameCriteria FilterScreen::criteri() const {
    const auto textOf = [](const QLineEdit* box) { return box ? box->text() : QString(); };
    const auto chosen = [](const QComboBox* combo) {
        return combo && combo->currentIndex() >= 0 ? combo->currentText() : QString();
    };
    FrameCriteria criteria;
    criteria.azienda = chosen(CmbAzienda);
    if (txtDallaData) criteria.dallaData = txtDallaData->date();
    if (txtAllaData) criteria.allaData = txtAllaData->date();
    criteria.concessionario2 = chosen(CmbConcessionario2);
    // A terminal number typed but not picked from the list is no criterion.
    if (CmbNumTerminale && CmbNumTerminale->currentIndex() >= 0 &&
        CmbNumTerminale->currentText() ==
            CmbNumTerminale->itemText(CmbNumTerminale->currentIndex()))
        criteria.numeroTerminale = CmbNumTerminale->currentText();
    criteria.nomeLocale = textOf(TxtNomeLocale);
    criteria.localita = textOf(txtLocalita);
    criteria.provincia = textOf(txtProvincia);
    criteria.agente = ComboAgente ? ComboAgente->currentText() : QString();
    criteria.concessionario = chosen(cmbConcessionario);
    criteria.zona = chosen(CmbZona);
    criteria.sospesi = chkSospesi && chkSospesi->isChecked();
    criteria.tutti = !ChkTutti || ChkTutti->isChecked();
    if (ListCausali) {
        for (int row = 0; row < ListCausali->count(); ++row)
            if (ListCausali->isTicked(row))
                criteria.causali << causaleCode(ListCausali->item(row)->text());
    }
    return criteria;
}

void FilterScreen::setMousePointer(int pointer) {
    mousePointer_ = pointer;
    if (pointer == MousePointer::Hourglass) {
        setCursor(Qt::WaitCursor);
    } else {
        unsetCursor();
    }
}

qint16 FilterScreen::PreparaDati() {
    throw RuntimeError(
        u"La preparazione dei dati di \"%1\" non è ancora disponibile in questa versione."_s.arg(
            Titolo()));
}

}  // namespace lorvane::screens

namespace lorvane::screens {

std::vector<ComboList> standardLists() {
    return {
        {"SELECT * FROM AnagraficaAziende", {{"CmbAzienda", "CodiceAzienda"}}},
        {"SELECT * FROM AnagraficaOperatori WHERE Mansione ='Agente'",
         {{"ComboAgente", "CodiceOperatore"}}},
        {"SELECT * FROM AnagraficaZone", {{"CmbZona", "CodiceZona"}}},
        {"SELECT * FROM AnagraficaConcessionari",
         {{"cmbConcessionario", "CodiceConcessionario"},
          {"CmbConcessionario2", "CodiceConcessionario"}}},
    };
}

ScreenProfile standardProfile(const QString& titolo) {
    ScreenProfile profile;
    profile.titolo = titolo;
    profile.lists = standardLists();
    return profile;
}

}  // namespace lorvane::screens
