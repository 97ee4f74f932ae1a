// Building a screen's window from its profile: which controls it has, their
// names, captions and places. Sizes are in pixels.
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "screens/controls.h"
#include "screens/filter_screen.h"

namespace lorvane::screens {

using namespace Qt::StringLiterals;

namespace {

template <typename Control>
Control* named(Control* control, const char* name) {
    control->setObjectName(QLatin1String(name));
    return control;
}

QComboBox* dropDownList(QWidget* parent, const char* name) {
    auto* combo = named(new QComboBox(parent), name);
    combo->setMinimumContentsLength(12);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return combo;
}

QString chkTuttiCaption(TreeHolds holds) {
    switch (holds) {
        case TreeHolds::Boards:
            return u"Tutte le schede"_s;
        case TreeHolds::Cabinets:
            return u"Tutti i Mobili"_s;
        default:
            return u"Tutti i locali"_s;
    }
}

}  // namespace

void FilterScreen::buildControls() {
    auto* layout = new QVBoxLayout(this);
    const bool venuePage =
        profile_.tabs && profile_.venueCriteria && profile_.tree != TreeHolds::Nothing;

    Pers = named(new QTabWidget(), "Pers");
    List1 = named(new QListWidget(Pers), "List1");
    List2 = named(new QListWidget(Pers), "List2");
    Pers->addTab(List1, u"Stampe Base"_s);
    Pers->addTab(List2, u"Personalizzate"_s);
    Pers->setMinimumWidth(280);

    auto* firstPage = new QWidget();
    auto* firstRow = new QHBoxLayout(firstPage);
    firstRow->addWidget(Pers, 3);
    auto* criteriaColumn = new QVBoxLayout();
    criteriaColumn->addWidget(buildCriteriaBox(firstPage));
    if (!profile_.frame2Caption.isEmpty()) {
        Frame2 = named(new QGroupBox(profile_.frame2Caption, firstPage), "Frame2");
        auto* second = new QVBoxLayout(Frame2);
        for (const ExtraControl& extra : profile_.extras)
            if (extra.place == ExtraControl::SecondBox)
                second->addWidget(buildExtra(extra, Frame2));
        criteriaColumn->addWidget(Frame2);
    }
    criteriaColumn->addStretch(1);
    firstRow->addLayout(criteriaColumn, 2);
    if (profile_.tree != TreeHolds::Nothing && !venuePage)
        firstRow->addWidget(buildVenuePanel(firstPage), 3);

    if (profile_.tabs) {
        Tab1 = named(new QTabWidget(this), "Tab1");
        Tab1->addTab(firstPage, u"Parametri per &stampa"_s);
        if (venuePage) Tab1->addTab(buildVenuePanel(Tab1), u"Elenco &Clienti"_s);
        if (profile_.causali) Tab1->addTab(buildCausaliPage(Tab1), u"Causali"_s);
        layout->addWidget(Tab1, 1);
    } else {
        firstPage->setParent(this);
        layout->addWidget(firstPage, 1);
    }

    Bar1 = named(new QProgressBar(this), "Bar1");
    Bar1->setRange(0, 100);
    Bar1->setValue(0);
    Bar1->setTextVisible(false);
    layout->addWidget(Bar1);
    layout->addWidget(buildButtonRow());

    Timer1 = named(new QTimer(this), "Timer1");
    Timer1->setInterval(3000);
    resize(profile_.tabs ? 860 : 720, profile_.tabs ? 540 : 380);
}

QWidget* FilterScreen::buildCriteriaBox(QWidget* parent) {
    Frame1 = named(new QGroupBox(profile_.frame1Caption, parent), "Frame1");
    auto* form = new QFormLayout(Frame1);
    if (profile_.company) {
        CmbAzienda = dropDownList(Frame1, "CmbAzienda");
        form->addRow(u"Azienda"_s, CmbAzienda);
    }
    if (profile_.dallaOnOpen != DateRule::Missing) {
        txtDallaData = named(new DatePicker(Frame1), "txtDallaData");
        form->addRow(named(new QLabel(u"Dalla Data"_s, Frame1), "lblDallaData"), txtDallaData);
    }
    if (profile_.allaOnOpen != DateRule::Missing) {
        txtAllaData = named(new DatePicker(Frame1), "txtAllaData");
        form->addRow(named(new QLabel(u"Alla Data"_s, Frame1), "lblAllaData"), txtAllaData);
    }
    if (profile_.concessionario2) {
        CmbConcessionario2 = dropDownList(Frame1, "CmbConcessionario2");
        form->addRow(u"Concessionario"_s, CmbConcessionario2);
    }
    if (profile_.numeroTerminale) {
        CmbNumTerminale = dropDownList(Frame1, "CmbNumTerminale");
        CmbNumTerminale->setEditable(true);
        form->addRow(u"Numero Terminale"_s, CmbNumTerminale);
    }
    for (const ExtraControl& extra : profile_.extras) {
        if (extra.place != ExtraControl::Criteria) continue;
        QWidget* control = buildExtra(extra, Frame1);
        const bool labelled = extra.kind == ExtraControl::ComboBox ||
                              extra.kind == ExtraControl::TextBox ||
                              extra.kind == ExtraControl::DatePicker;
        if (labelled) {
            form->addRow(extra.caption, control);
        } else {
            form->addRow(control);
        }
    }
    return Frame1;
}

QWidget* FilterScreen::buildVenuePanel(QWidget* parent) {
    auto* panel = new QWidget(parent);
    auto* row = new QHBoxLayout(panel);
    auto* criteria = new QFormLayout();
    if (profile_.venueCriteria) {
        TxtNomeLocale = named(new QLineEdit(panel), "TxtNomeLocale");
        txtLocalita = named(new QLineEdit(panel), "txtLocalita");
        txtProvincia = named(new QLineEdit(panel), "txtProvincia");
        ComboAgente = dropDownList(panel, "ComboAgente");
        cmbConcessionario = dropDownList(panel, "cmbConcessionario");
        CmbZona = dropDownList(panel, "CmbZona");
        criteria->addRow(u"Nome Locale"_s, TxtNomeLocale);
        criteria->addRow(u"Località"_s, txtLocalita);
        criteria->addRow(u"Provincia"_s, txtProvincia);
        criteria->addRow(u"Agente"_s, ComboAgente);
        criteria->addRow(u"Concessionario"_s, cmbConcessionario);
        criteria->addRow(u"Zona"_s, CmbZona);
    }
    for (const ExtraControl& extra : profile_.extras) {
        if (extra.place != ExtraControl::VenuePage) continue;
        QWidget* control = buildExtra(extra, panel);
        if (extra.kind == ExtraControl::ComboBox || extra.kind == ExtraControl::TextBox) {
            criteria->addRow(extra.caption, control);
        } else {
            criteria->addRow(control);
        }
    }
    if (profile_.venueCriteria) {
        chkSospesi = named(new QCheckBox(u"Visualizza anche sospesi"_s, panel), "chkSospesi");
        criteria->addRow(chkSospesi);
    }
    ChkTutti = named(new QCheckBox(chkTuttiCaption(profile_.tree), panel), "ChkTutti");
    ChkTutti->setChecked(true);
    criteria->addRow(ChkTutti);
    CmdRicerca = named(new QPushButton(u"&Ricerca"_s, panel), "CmdRicerca");
    CmdElenco = named(new QPushButton(u"&Browse"_s, panel), "CmdElenco");
    CmdElenco->setToolTip(u"Seleziona i locali tramite griglia"_s);
    auto* searchButtons = new QHBoxLayout();
    searchButtons->addWidget(CmdRicerca);
    searchButtons->addWidget(CmdElenco);
    criteria->addRow(searchButtons);
    row->addLayout(criteria, 2);

    auto* treeColumn = new QVBoxLayout();
    Tree = named(new KeyedTree(panel), "Tree");
    auto* treeLabel = new QLabel(
        profile_.tree == TreeHolds::Venues ? u"Elenco Locali"_s : u"Elenco Apparecchi"_s, panel);
    treeLabel->setBuddy(Tree);
    treeColumn->addWidget(treeLabel);
    treeColumn->addWidget(Tree, 1);
    row->addLayout(treeColumn, 3);
    return panel;
}

QWidget* FilterScreen::buildCausaliPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* column = new QVBoxLayout(page);
    ListCausali = named(new CheckList(page), "ListCausali");
    column->addWidget(ListCausali, 1);
    auto* buttons = new QHBoxLayout();
    for (const ExtraControl& extra : profile_.extras)
        if (extra.place == ExtraControl::CausaliPage) buttons->addWidget(buildExtra(extra, page));
    buttons->addStretch(1);
    column->addLayout(buttons);
    return page;
}

QWidget* FilterScreen::buildExtra(const ExtraControl& extra, QWidget* parent) {
    switch (extra.kind) {
        case ExtraControl::CheckBox:
            return named(new QCheckBox(extra.caption, parent), extra.name);
        case ExtraControl::Option:
            return named(new QRadioButton(extra.caption, parent), extra.name);
        case ExtraControl::ComboBox:
            return dropDownList(parent, extra.name);
        case ExtraControl::HiddenComboBox: {
            QComboBox* combo = dropDownList(parent, extra.name);
            combo->setVisible(false);
            return combo;
        }
        case ExtraControl::TextBox:
            return named(new QLineEdit(parent), extra.name);
        case ExtraControl::DatePicker:
            return named(new DatePicker(parent), extra.name);
        case ExtraControl::Button:
            return named(new QPushButton(extra.caption, parent), extra.name);
    }
    return nullptr;
}

QWidget* FilterScreen::buildButtonRow() {
    auto* row = new QWidget(this);
    auto* buttons = new QHBoxLayout(row);
    buttons->setContentsMargins(0, 0, 0, 0);
    const auto button = [row](const QString& caption, const char* name, const QString& tip) {
        auto* made = named(new QPushButton(caption, row), name);
        made->setToolTip(tip);
        made->setMinimumWidth(92);
        return made;
    };
    CmdStampa = button(u"&Stampa"_s, "CmdStampa", u"Anteprima di stampa"_s);
    CmdPdf = button(u"&PDF"_s, "CmdPdf", u"Esporta in un documento PDF"_s);
    CmdXls = button(u"&Word"_s, "CmdXls", u"Esporta in un documento Word"_s);
    CmdExportExcel = button(u"&Excel"_s, "CmdExportExcel", u"Esporta in un foglio Excel"_s);
    CmdAzzera = button(u"&Azzera Filtro"_s, "CmdAzzera", u"Riporta i filtri ai valori iniziali"_s);
    CmdChiudi = button(u"&Chiudi"_s, "CmdChiudi", u"Chiude la finestra"_s);
    for (QPushButton* each : {CmdStampa, CmdPdf, CmdXls, CmdExportExcel})
        buttons->addWidget(each);
    buttons->addStretch(1);
    buttons->addWidget(CmdAzzera);
    buttons->addWidget(CmdChiudi);
    return row;
}

}  // namespace lorvane::screens
