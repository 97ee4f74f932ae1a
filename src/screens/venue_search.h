// The venue search: the statement built from the criteria typed, from the
// forms a screen writes its criteria in, and the tree node of each venue found.
#pragma once

#include <QString>

#include "db/recordset.h"
#include "screens/frame_criteria.h"

namespace lorvane::screens {

class KeyedTree;

// How a screen writes its venue search. Each criterion has a form for a filter
// that has text already and one for an empty filter, then the value, then a
// closing text.
struct SearchForms {
    struct Form {
        const char* whenText;
        const char* whenEmpty;
        const char* closing;
    };
    const char* head;
    const char* notSuspended;  // the filter's start when chkSospesi is off
    Form nome;                 // TxtNomeLocale
    Form localita;             // txtLocalita
    Form agente;               // ComboAgente
    Form provincia;            // txtProvincia
    Form concessionario;       // cmbConcessionario
    Form zona;                 // CmbZona
    // The period's clause, after its " AND " or " WHERE "; none when null.
    QString (*periodo)(const FrameCriteria& criteria);
    // CmbAzienda, before the period, on the screens that search by company.
    Form azienda{nullptr, nullptr, nullptr};
};

// The forms of the reference screen: venues with a collection in the period.
const SearchForms& referenceSearchForms();

// The head and the filter of the criteria set, each in its form, then the period.
QString sqlRicercaLocali(const FrameCriteria& criteria, const SearchForms& forms);

// The text of a venue's node: Insegna and Citta, each cut or padded to 20
// characters, joined by " - ".
QString venueNodeText(const QString& insegna, const QString& citta);

// Adds the venue of the recordset's current row under the root, ticked, with
// key "A" + CodLocale. Throws when the venue is already in the tree.
void addVenueNode(KeyedTree& tree, db::Recordset& venue);

}  // namespace lorvane::screens
