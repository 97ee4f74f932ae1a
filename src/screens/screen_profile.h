// What sets one filter screen apart from the others, stated as data: its
// title, its dates on opening and after "Azzera Filtro", which controls it has
// and how a run behaves on it. The frame (filter_screen) reads nothing else.
#pragma once

#include <QString>
#include <vector>

namespace lorvane::screens {

// A date picker's value on opening or on reset. Missing: the screen has no
// such picker. Unchanged: the reset leaves it as it is.
enum class DateRule { Missing, Today, FirstOfYear, FirstOfMonth, Unchanged };

// What the reset does to the tree.
enum class TreeReset { EmptiedWithRoot, Emptied, Untouched };

// What the tree of a screen holds, and so the texts of the root and of ChkTutti.
enum class TreeHolds { Nothing, Venues, Boards, Cabinets };

// A combo filled by RiempiCombo, and the column it takes.
struct ComboFill {
    const char* combo;
    const char* column;
};

// A list of Form_Load: the statement opened through the host and the combos
// filled from it (none: opened and not used).
struct ComboList {
    const char* statement;
    std::vector<ComboFill> fills;
};

// The causali of a screen: the statement that lists them, the host setting
// that keeps the ticks of the last run, the ticks taken when it is empty.
struct CausaliList {
    const char* statement;
    const char* section;
    const char* defaultTicks;
    bool tickedWhenAdded;     // every row ticked as it is added
    bool defaultGivenToHost;  // the default goes to LeggiSettaggio, not after it
};

// What opening and reset give a control: nothing done, a text or a state
// ("1", "0", "13.4"), a combo's first or last row, no selection, or a date
// by a DateRule.
struct ControlValue {
    enum Rule { Keep, Text, FirstRow, LastRow, Cleared, Date };
    Rule rule = Keep;
    QString text;
    DateRule date = DateRule::Missing;
};

// A control a screen has beyond the frame's own.
struct ExtraControl {
    enum Kind { CheckBox, Option, ComboBox, HiddenComboBox, TextBox, DatePicker, Button };
    // Where it stands: the criteria box of the first page, the screen's second
    // box (Frame2), the venue page, or under the causali.
    enum Place { Criteria, SecondBox, VenuePage, CausaliPage };
    using Value = ControlValue;

    ExtraControl(Kind kind, const char* name, QString caption = {}, Place place = Criteria,
                 Value onOpen = {}, Value onReset = {})
        : kind(kind),
          name(name),
          caption(std::move(caption)),
          place(place),
          onOpen(std::move(onOpen)),
          onReset(std::move(onReset)) {}

    Kind kind;
    const char* name;
    QString caption;  // the label of a combo, text box or picker; the text of the others
    Place place;
    Value onOpen;
    Value onReset;
    // A text box that narrows the venue search: Enter runs it, ChkTutti empties it.
    bool searchField = false;
    // A combo whose selection the Delete key clears.
    bool deleteClears = false;
};

inline ExtraControl::Value keep() { return {}; }
inline ExtraControl::Value text(const QString& value) {
    return {ExtraControl::Value::Text, value, DateRule::Missing};
}
inline ExtraControl::Value cleared() {
    return {ExtraControl::Value::Cleared, {}, DateRule::Missing};
}
inline ExtraControl::Value dateBy(DateRule rule) { return {ExtraControl::Value::Date, {}, rule}; }

struct SearchForms;
struct FrameCriteria;

// How PreparaLocali copies the venues of a run into AnagraficaLocali_Tmp.
struct VenueCopy {
    // How a ticked venue of the tree goes in. Twice: into the work table, then
    // twice into AnagraficaLocali_Tmp. Once: once into each, when found.
    // OnceWithBar: once into each through CopiaRecordset moving Bar1.
    // SelectionOnly: once into AnagraficaLocali_Tmp when found; no work table.
    enum class Tree { Twice, Once, OnceWithBar, SelectionOnly };
    bool barWhenAll = true;  // with "Tutti i locali", the copy moves Bar1
    Tree fromTree = Tree::Twice;
    // "Tutti i locali" as this statement rather than every venue; its venues
    // are copied only when it finds some.
    QString (*allStatement)(const FrameCriteria&) = nullptr;
    // Each ticked venue's statement also takes the company chosen.
    bool companyOnTree = false;
    // The venue columns of both copies; null: the suite's 56 names.
    const char* columns = nullptr;
};

struct ScreenProfile {
    QString titolo;
    // The report code the screen makes the module's own on opening, if any.
    const char* codiceStampa = nullptr;
    DateRule dallaOnOpen = DateRule::FirstOfYear;
    DateRule allaOnOpen = DateRule::Today;
    DateRule dallaOnReset = DateRule::Today;
    DateRule allaOnReset = DateRule::Today;

    TreeHolds tree = TreeHolds::Venues;
    TreeReset treeOnReset = TreeReset::Emptied;
    // Form_Load ends with the reset (which may empty the tree just rooted).
    bool loadCallsReset = false;
    // ChkTutti switched on leaves the tree as it is.
    bool chkTuttiKeepsTree = false;

    // Controls of the frame that only some screens have.
    bool tabs = true;              // Tab1; without it Pers and the criteria stand alone
    bool venueCriteria = true;     // the criteria of the venue page, and chkSospesi
    bool company = true;           // CmbAzienda
    bool concessionario2 = false;  // CmbConcessionario2
    bool numeroTerminale = false;  // CmbNumTerminale
    QString frame1Caption = QStringLiteral("Criteri");
    QString frame2Caption;  // the second box, when the screen has one
    std::vector<ComboList> lists;
    const CausaliList* causali = nullptr;
    const SearchForms* searchForms = nullptr;  // null: the reference screen's
    // The search may find a venue twice: the repeats are passed over.
    bool searchSkipsRepeats = false;
    VenueCopy venueCopy;
    std::vector<ExtraControl> extras;
    // The work tables PreparaStampa empties before PreparaDati, in order.
    std::vector<const char*> emptiedBeforeRun;

    // How a run behaves: the causali checked before it, the hourglass while
    // it runs, "Nessun dato da stampare" on a count of 0, and the pointer put
    // back when an output fails.
    bool controllaCausali = false;
    bool hourglass = true;
    bool countTest = true;
    bool pointerBackOnError = false;

    // The work folder as the screen spells it where it copies the template
    // and in its connection text; the case of the drive letter differs
    // between screens and reaches the connection text.
    QString workFolderCopy = QStringLiteral("c:\\temp1\\");
    QString workFolderConnection = QStringLiteral("c:\\temp1\\");
};

// The four lists that nearly every screen opens.
std::vector<ComboList> standardLists();

// A screen with the title `titolo` and the frame's plan otherwise, opening the four lists.
ScreenProfile standardProfile(const QString& titolo);

}  // namespace lorvane::screens
