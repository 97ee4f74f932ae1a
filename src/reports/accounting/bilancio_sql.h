// The statements and the title of the trial balance, built from its criteria.
#pragma once

#include <QDate>
#include <QString>

namespace lorvane::reports {

struct BilancioCriteri {
    QString azienda;  // "" when no company is chosen
    QDate dallaData;
    QDate allaData;
    bool contiPatrimoniali = false;  // TipoConto 0
    bool contiEconomici = false;     // TipoConto 1
};

// The kinds of account between brackets: "( TipoConto=0 OR TipoConto=1)",
// and "()" when neither is chosen.
QString criterioConti(const BilancioCriteri& criteri);

// The chart of the chosen kinds, with Mastro from the first two characters.
QString sqlPianoConti(const BilancioCriteri& criteri);

// Debit and credit of each account of the chosen kinds in the period, joined
// to the chart in the WHERE. The conditional is written iif(c ; a ; b ;).
QString sqlMovimenti(const BilancioCriteri& criteri);

// On the work file: a zero row, Mastro "03", for each account of the chart's
// copy that has no row in Saldi.
QString sqlContiSenzaMovimento();

// "Dal 01/01/2026 Al 31/12/2026 - Conti Patrimoniali ed Economici - Per l'azienda X".
QString titoloBilancio(const BilancioCriteri& criteri);

}  // namespace lorvane::reports
