// The statements and heading texts of the notes reports: the takings on the
// quittance slips, the advances and refills of the venues, and the PREU
// difference over past collections. Built from plain criteria, with no widget
// in sight.
#pragma once

#include <QDate>
#include <QString>

#include "db/variant.h"
#include "screens/venue_search.h"

namespace lorvane::reports {

struct NoteCriteri {
    QDate dallaData;      // txtDallaData
    QDate allaData;       // txtAllaData
    QString azienda;      // "" when no company is chosen
    QString causale;      // CausaleNote of the advances screen: "ACC" or "REF"
    bool periodo = true;  // optPeriodo: the notes of the period, not the open ones
};

// Takings on slips: how the screen writes its venue search, and the rows of
// the slips of document type 1 whose own date (aData) falls in the period.
const screens::SearchForms& distintaSearchForms();
QString sqlRigheDistinta(const NoteCriteri& criteri);

// Advances and refills: "ACC" for the report code "Acconti" (any case),
// "REF" for any other.
QString causaleNote(const QString& codiceStampa);
// The venue search: venues with a note of the causale in the period, or an
// open one; the criteria after it in their AND forms.
QString sqlRicercaAcconti(const screens::FrameCriteria& frame, const QString& causale,
                          bool periodo);
// "Tutti i locali": the venues with a note of the causale, not suspended
// unless `sospesi`, of the company when one is chosen.
QString sqlLocaliAcconti(const QString& causale, bool sospesi, const QString& azienda);
// The notes of the causale, of the period or open.
QString sqlNoteAcconti(const NoteCriteri& criteri);
// The machine lines of those notes; with the open notes, only the open lines.
QString sqlIncassiAcconti(const NoteCriteri& criteri);
// The notes of the work file without a machine line.
QString sqlNoteSenzaRighe();
// The sums of the lines of note `id` on the account TabAssociazioneConti.CassaAcconti.
QString sqlSommaCassaAcconti(const QString& id);
// The advance's amount stored in the main database, `importo` as it reads.
QString sqlAggiornaAcconto(const QString& importo, const QString& id);
// "Parametri di ricerca: " and the period or the open notes, the company, the
// venue filter. The word for the open notes follows the report code.
QString parametriAcconti(const NoteCriteri& criteri, const QString& codiceStampa,
                         bool filtroLocali);

// PREU difference: the venue search (venues with a collection note in the
// period, of the company when chosen), the collection notes of the period and
// their lines calculated on the profit or at a venue percentage of 25 at least.
const screens::SearchForms& preuSearchForms();
QString sqlNotePreu(const NoteCriteri& criteri);
QString sqlIncassiPreu(const NoteCriteri& criteri);
// True when `testo` passes the runtime's numeric test (Italian settings).
bool preuValido(const QString& testo);
// `richiesto` minus `nuovo`, each with "." read as ",", in exact decimals.
// Throws RuntimeError "Tipo non corrispondente" for a text that is no decimal.
db::Decimal differenzaPreu(const QString& richiesto, const QString& nuovo);

}  // namespace lorvane::reports
