// The statements and the heading row of the takings report, built from its criteria.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

namespace lorvane::reports {

struct IntrodottoCriteri {
    QDate dallaData;
    QDate allaData;
    QString azienda;          // "" when no company is chosen
    QString numeroTerminale;  // "" unless an item of CmbNumTerminale is chosen
    QString concessionario2;  // "" unless an item of CmbConcessionario2 is chosen
};

// " WHERE nt.DataRegistrazione>=#…# AND …": the collection notes (causale
// 'INC6') of the period, then the terminal, the company of the readings and
// their concessionaire when chosen.
QString condizioneComune(const IntrodottoCriteri& criteri);

// The notes, their lines and their readings of the chosen venues, each DISTINCT.
QString sqlNote(const IntrodottoCriteri& criteri);
QString sqlRighe(const IntrodottoCriteri& criteri);
QString sqlLetture(const IntrodottoCriteri& criteri);
// Every company, or the one chosen.
QString sqlAziende(const IntrodottoCriteri& criteri);
// The boards whose ids are listed, joined by ", ".
QString sqlSchede(const QString& ids);

// The heading row: " Dal 01/01/2026 al 31/03/2026", the two dates, and the
// concessionaire of the first page ("" when none is chosen: left unset).
struct IntrodottoParametri {
    QString parametri;
    QString descr1;
    QString descr2;
    QString descr3;
};
IntrodottoParametri parametriIntrodotto(const IntrodottoCriteri& criteri);

}  // namespace lorvane::reports
