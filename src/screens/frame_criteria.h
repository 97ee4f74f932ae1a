// The criteria of the frame's controls as they stand at the moment of a run:
// a plain value from which the SQL of a report is built, with no widget in sight.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

namespace lorvane::screens {

// A text is "" when its control is empty or has no selection.
struct FrameCriteria {
    QString azienda;  // CmbAzienda
    QDate dallaData;  // txtDallaData
    QDate allaData;   // txtAllaData
    QString concessionario2;
    QString numeroTerminale;
    QString nomeLocale;  // TxtNomeLocale, txtLocalita, txtProvincia as typed
    QString localita;
    QString provincia;
    QString agente;  // ComboAgente, cmbConcessionario, CmbZona
    QString concessionario;
    QString zona;
    bool sospesi = false;  // chkSospesi: suspended venues too
    bool tutti = true;     // ChkTutti: every venue, the tree unread
    QStringList causali;   // the codes ticked in ListCausali, in list order
};

// A date as the statements write it between "#": "mm/dd/yyyy".
inline QString sqlDate(const QDate& date) { return date.toString(QStringLiteral("MM/dd/yyyy")); }

// A date as its picker shows it: "dd/mm/yyyy".
inline QString shownDate(const QDate& date) { return date.toString(QStringLiteral("dd/MM/yyyy")); }

}  // namespace lorvane::screens
