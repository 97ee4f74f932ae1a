// The statements of the label screens, boards and cabinets: the search of the
// tree, the rows of a run and the text of a node. Built from plain criteria,
// with no widget in sight.
#pragma once

#include <QString>

namespace lorvane::reports {

struct EtichetteCriteri {
    QString codice;            // txtAAMS on the board screen, txtNomeMobile on the cabinet one
    QString codiceInterno;     // txtCodInt
    bool senzaCodice = false;  // chkCodiceABarre: rows without a bar code too
};

// A text with each "'" doubled, to stand between quotes in a statement.
QString apiciRaddoppiati(const QString& text);

// Boards, found through the finished product they are mounted in, with its
// venue and article; rows without a bar code (Null) only with senzaCodice.
// The grid opens this one.
QString sqlElencoSchede(bool senzaCodice);
// The same, narrowed by the AAMS code and the internal code typed.
QString sqlRicercaSchede(const EtichetteCriteri& criteri);
// Every board in use, mounted or not ("Tutte le schede"), and their categories.
QString sqlTutteLeSchede(bool senzaCodice);
QString sqlCategorieTutte();
// One ticked board by its id, and its category.
QString sqlScheda(const QString& id);
QString sqlCategoriaScheda(const QString& id);

// Cabinets with their venue, obsolete, sold and dismissed ones too.
QString sqlElencoMobili(bool senzaCodice);
// The same, narrowed by part of the name and the whole internal code.
QString sqlRicercaMobili(const EtichetteCriteri& criteri);
// Every cabinet in use ("Tutti i Mobili"), and one ticked cabinet by its id.
QString sqlTuttiIMobili(bool senzaCodice);
QString sqlMobile(const QString& id);

// A column of a node: the text padded with blanks and cut to `width` characters.
QString colonnaNodo(const QString& text, int width);
// The text of a board's node: name (25), AAMS code (12), internal code (10).
QString testoNodoScheda(const QString& nome, const QString& aams, const QString& interno);
// The text of a cabinet's node: name (25), internal code (10).
QString testoNodoMobile(const QString& nome, const QString& interno);

}  // namespace lorvane::reports
