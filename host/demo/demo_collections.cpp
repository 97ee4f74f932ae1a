// The notes of the demo installation, venue by venue in date order, so that
// every reading of a board follows the one before it.
#include "host/demo/demo_collections.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <vector>

namespace lorvane::demo {

using namespace Qt::StringLiterals;

namespace {

constexpr double PercPreu = 13.0;
constexpr double PercAams = 0.7;
constexpr double PercRete = 0.5;
constexpr double PercLocale = 50.0;

// The columns of a head that differ between causali; the rest are fixed.
struct Head {
    QDate day;
    const Venue* venue = nullptr;  // null for the company's own notes
    QString company;
    const char* causale = "";
    QString description;
    Value chiuso = Value::yesNo(true);
    Value utileLocale = Value::money(0), utileNoleggiatore = Value::money(0);
    Value versato = Value::money(0), furtoLocale = Value::money(0),
          furtoNoleggiatore = Value::money(0);
    Value introdotto = Value::money(0), uscite = Value::money(0), preu = Value::money(0);
    Value aams = Value::money(0), rete = Value::money(0), daDividere = Value::money(0);
    Value varPrestito = Value::money(0), riscosso = Value::money(0), rimanenza = Value::money(0);
    Value arrotondamenti = Value::money(0), acconto = Value::money(0);
    Value variazioneHopper = Value::money(0), daRiscuotere = Value::money(0);
    Value quotaNol = Value::money(0), refillLocale = Value::money(0);
    Value refillNoleggiatore = Value::money(0), tasse = Value::money(0);
};

// One machine line of a note; counters in euro.
struct Reading {
    const Board* board = nullptr;
    QDate day;
    Cents in = 0, out = 0, preu = 0, aams = 0, rete = 0, noleggiatore = 0, locale = 0;
    qint64 oldIn = 0, oldOut = 0;
    QDate oldDay;
    Cents refill = 0, refillVenue = 0, variation = 0;
    const Cents* oldLevels = nullptr;  // hopper notes only
    bool collection = false;
};

class NoteWriter {
  public:
    explicit NoteWriter(Database& db)
        : heads_(
              db, "NoteTeste",
              "DataRegistrazione, CodLocale, CodEsattore, CodCausale, Descrizione, CodAgente, "
              "PercAgente, CodiceAzienda, Chiuso, Fatturato, Bloccato, idData, IdOperatore, "
              "TipologiaIncasso, GestioneDenaro, IncassoGettoni, IncassoTasse, UtileLocale, "
              "UtileNoleggiatore, VersatoALocale, FurtoLocale, FurtoNoleggiatore, AmmancoLocale, "
              "AmmancoNoleggiatore, StileIncasso, TotIntrodotto, TotUscite, TotPreu, TotAAMS, "
              "TotRETE, TotDaDividere, VarDebito, VarPrestito, Riscosso, Rimanenza, "
              "Arrotondamenti, Acconto, AnticipoLocale, AttesaFatture, NumeroTerminale, "
              "VariazioneHopper, DaRiscuotere, DaRiscuotereTeorica, QuotaNolTeorica, RefillLocale, "
              "RefillNoleggiatore, TotTasse, Variazioni, Teorico"),
          lines_(db, "NoteRighe",
                 "IdTesta, Data, Descrizione, Dare, Avere, CodConto, codLocale, idData, "
                 "idOperatore, Riga"),
          readings_(
              db, "NoteIncassi",
              "IdTesta, CodArticolo, LinkScheda, CodLocale, DataIncasso, TipoIncasso, ParzialeIn, "
              "ParzialeOut, ContatoreIN, ContatoreOut, LivelloH1, LivelloH2, Livelloh3, TipoH1, "
              "TipoH2, TipoH3, PercPreu, PercAAMS, PercRete, TipoRete, Descrizione, Preu, AAms, "
              "Rete, IncassoNs, IncassoVs, RefillLocale, RefillGestore, Forzato, IdOperatore, "
              "idData, Fatturato, Cassetto, TipoCalcolo, PercLocale, PercNoleggiatore, "
              "NumGiorniIncasso, VecchioContatoreIN, VecchioContatoreOut, DataVecchioContatore, "
              "Riga, CatApparecchio, CodConcessionario, VariazioneHopper, UltimaLettura, "
              "MoltiplicatoreIN, MoltiplicatoreOUT, Chiuso, CodiceAzienda, Contratto, HopperOLD1, "
              "HopperOLD2, HopperOLD3, Progressivo, TotaleTasse") {}

    CollectionCounts counts;

    qint64 head(const Head& h) {
        const Venue* v = h.venue;
        const bool takings = QByteArrayView(h.causale) == "INC6";
        head_ = heads_.insert(
            {Value::date(h.day), v ? Value(v->code) : Value(), v ? Value(v->collector) : Value(),
             h.causale, h.description, v ? Value(v->agent) : Value(),
             v ? Value(v->agentPercent) : Value(), h.company, h.chiuso, Value::yesNo(false),
             Value::yesNo(false), Value::date(h.day, 18), 1, takings ? Value(6) : Value(), 1,
             Value::yesNo(false), Value::yesNo(false)},
            {h.utileLocale, h.utileNoleggiatore, h.versato, h.furtoLocale, h.furtoNoleggiatore,
             Value::money(0), Value::money(0), 1, h.introdotto, h.uscite, h.preu, h.aams, h.rete,
             h.daDividere, Value::money(0), h.varPrestito, h.riscosso},
            {h.rimanenza, h.arrotondamenti, h.acconto, Value::money(0), Value::yesNo(false),
             v ? Value(v->terminal) : Value(), h.variazioneHopper, h.daRiscuotere, h.daRiscuotere,
             h.quotaNol, h.refillLocale, h.refillNoleggiatore, h.tasse, Value::money(0),
             h.riscosso});
        venue_ = v ? v->code : QString();
        day_ = h.day;
        line_ = 0;
        reading_ = 0;
        ++counts.notes;
        return head_;
    }

    // Two lines of the current note: `amount` in Dare of `debit` and in Avere
    // of `credit`; nothing for a zero amount, the sides swapped for a negative.
    void post(const QString& debit, const QString& credit, Cents amount, const QString& text) {
        if (amount == 0) return;
        if (amount < 0) return post(credit, debit, -amount, text);
        line(debit, amount, 0, text);
        line(credit, 0, amount, text);
    }

    void reading(const Reading& r, const QString& company) {
        const Board& b = *r.board;
        const qint64 in = b.counterIn;
        const qint64 out = b.counterOut;
        const bool hopper = r.oldLevels != nullptr;
        const int number = ++reading_;
        readings_.insert(
            {head_, b.codArticolo, b.id, venue_, Value::date(r.day), r.collection ? 6 : 0,
             Value::money(100 * (in - r.oldIn)), Value::money(100 * (out - r.oldOut)), in, out,
             Value::money(b.level[0]), Value::money(b.level[1]), Value::money(b.level[2]),
             Value::money(100)},
            {Value::money(200), Value::money(b.changeMachine ? 50 : 0),
             r.collection ? Value(PercPreu) : Value(), r.collection ? Value(PercAams) : Value(),
             r.collection ? Value(PercRete) : Value(), 1, b.nomeGioco, Value::money(r.preu),
             Value::money(r.aams), Value::money(r.rete), Value::money(r.noleggiatore),
             Value::money(r.locale), Value::money(r.refillVenue), Value::money(r.refill)},
            {Value::yesNo(false), 1, Value::date(r.day, 18), Value::yesNo(false),
             Value::money(r.in - r.out), "Utile", PercLocale, 100.0 - PercLocale,
             int(r.oldDay.daysTo(r.day)), r.oldIn, r.oldOut, Value::date(r.oldDay), number,
             b.catApparecchio},
            {b.concessionario, Value::money(r.variation), Value::yesNo(false), 1.0, 1.0,
             Value::yesNo(false), company, b.contratto,
             hopper ? Value::money(r.oldLevels[0]) : Value(),
             hopper ? Value::money(r.oldLevels[1]) : Value(),
             hopper ? Value::money(r.oldLevels[2]) : Value(), number,
             Value::money(r.preu + r.aams + r.rete)});
        ++counts.readings;
    }

  private:
    void line(const QString& account, Cents dare, Cents avere, const QString& text) {
        lines_.insert({head_, Value::date(day_), text, Value::money(dare), Value::money(avere),
                       account, venue_.isEmpty() ? Value() : Value(venue_), Value::date(day_, 18),
                       1, ++line_});
        ++counts.lines;
    }

    TableWriter heads_, lines_, readings_;
    qint64 head_ = 0;
    QString venue_;
    QDate day_;
    int line_ = 0;
    int reading_ = 0;
};

// What one board took over a month or a quarter, for quittances and deeds.
struct BoardPeriod {
    const Board* board = nullptr;
    qint64 oldIn = 0, oldOut = 0, in = 0, out = 0;
    QDate from, to;
    Cents sumIn = 0, sumOut = 0, preu = 0, aams = 0, rete = 0, locale = 0, noleggiatore = 0;
};
using Period = std::map<qint64, BoardPeriod>;  // by board id

void add(Period& period, const Reading& r) {
    BoardPeriod& p = period[r.board->id];
    if (!p.board) {
        p.board = r.board;
        p.oldIn = r.oldIn;
        p.oldOut = r.oldOut;
        p.from = r.oldDay;
    }
    p.in = r.board->counterIn;
    p.out = r.board->counterOut;
    p.to = r.day;
    p.sumIn += r.in;
    p.sumOut += r.out;
    p.preu += r.preu;
    p.aams += r.aams;
    p.rete += r.rete;
    p.locale += r.locale;
    p.noleggiatore += r.noleggiatore;
}

const char* const kMonths[] = {"Gennaio",   "Febbraio", "Marzo",    "Aprile",
                               "Maggio",    "Giugno",   "Luglio",   "Agosto",
                               "Settembre", "Ottobre",  "Novembre", "Dicembre"};

class Collector {
  public:
    Collector(Database& db, Random& random, const QDate& firstDay, const QDate& lastDay)
        : notes_(db),
          random_(random),
          firstDay_(firstDay),
          lastDay_(lastDay),
          quittances_(db, "QuietanzaTesta",
                      "aams, Aggio, Bollo, Codice, CodiceAzienda, CodLocale, CodConcessionario, "
                      "DaData, Data, email, GeneratoRid, idData, IdOperatore, ImportoBollo, "
                      "NumeroDoc, PercRecuperoDepositoCauzionale, PercRecuperoFondoCassa, Periodo, "
                      "preu, RecuperoDepositoCauzionale, RecuperoFondoCassa, rete, Saldo, SommaIN, "
                      "SommaOUT, spese, Stato, TipoCalcolo, TipoDocumento, TotaleDocumento"),
          quittanceRows_(db, "QuietanzaRighe",
                         "AAMS, aData, AWP, CodiceAzienda, CodLocale, ContatoreIN, ContatoreOUT, "
                         "DaData, gg, IdData, IdOperatore, idTesta, Intervento, LetturaPrecedente, "
                         "LinkScheda, NomeAwp, OldIN, OldOut, ParteLocale, Percentuale, Preu, "
                         "RETE, Riga, TipoCalcolo, UltimaLettura, ForfIN, ForfOUT"),
          deeds_(db, "DocTeste",
                 "DataDoc, TipoDoc, NumDoc, DataReg, TipoIntestazione, CodIntestazione, "
                 "TipoSpettabile, CodSpettabile, CodAgente, TotIncassoLordo, TotPremi, TotPREU, "
                 "TotDaRipartire, Totrete, TotAAMS, TotDoc, Emesso, Stampato, Chiuso, Annotazioni, "
                 "CodiceAzienda, idData, idOperatore"),
          deedRows_(db, "DocRighe",
                    "NumDoc, IdDoc, NrRiga, TipoRiga, Descrizione, Qta, Preu, AAms, Rete, "
                    "Introdotto, Uscire, TipoRete, percRete, PercAAms, PercPreu, aggioLocale, "
                    "Noleggiatore, PercLocale, PercNoleggiatore, Rimanente, idOperatore, idData, "
                    "CodiceAzienda, CodAAMS, NomeApparecchio") {}

    CollectionCounts counts() const { return notes_.counts; }

    void venue(Venue& v) {
        if (!v.active || v.boards.empty()) return;
        QDate day = firstDay_;
        while (day.dayOfWeek() != v.weekday)
            day = day.addDays(1);
        for (Board& b : v.boards)
            b.lastReading = day.addDays(-7);
        Period month, quarter;
        QDate monthStart(day.year(), day.month(), 1);
        bool monthOpen = true;
        Cents loan = 0;
        for (; day <= lastDay_; day = day.addDays(7)) {
            if (day.month() != monthStart.month()) {
                close(v, month, quarter, monthStart);
                monthStart = QDate(day.year(), day.month(), 1);
                monthOpen = true;
            }
            if (random_.chance(0.03)) continue;  // closed that week
            collect(v, day, month, quarter);
            if (monthOpen) {
                hoppers(v, day);
                changeMachines(v, day);
                monthOpen = false;
            }
            if (random_.chance(0.04)) refill(v, day);
            if (random_.chance(0.025)) loanNote(v, day, loan);
            if (random_.chance(0.03)) advance(v, day);
            if (random_.chance(0.015)) sundry(v, day);
            if (random_.chance(0.005)) theft(v, day);
        }
        close(v, month, quarter, monthStart);
    }

    // The company's own notes: the monthly bank deposit and running costs.
    void companyNotes(const QStringList& companies) {
        for (QDate month(firstDay_.year(), firstDay_.month(), 1); month <= lastDay_;
             month = month.addMonths(1)) {
            const QDate day = std::min(month.addMonths(1).addDays(-1), lastDay_);
            for (const QString& company : companies) {
                Head h = plainHead(day, nullptr, company, "VER", u"Versamento in banca"_s);
                const Cents deposit = 100 * 1000 * random_.between(10, 60);
                notes_.head(h);
                notes_.post(account::Banca, account::Cassa, deposit, h.description);
                h = plainHead(day, nullptr, company, "SPE", u"Spese di gestione del mese"_s);
                notes_.head(h);
                notes_.post(account::Spese, account::Banca, 100 * random_.between(1500, 4000),
                            h.description);
            }
        }
    }

  private:
    Value chiuso(const QDate& day) const { return Value::yesNo(day <= lastDay_.addDays(-7)); }

    Head plainHead(const QDate& day, const Venue* v, const QString& company, const char* causale,
                   const QString& description) const {
        Head h;
        h.day = day;
        h.venue = v;
        h.company = company;
        h.causale = causale;
        h.description = description;
        h.chiuso = chiuso(day);
        return h;
    }

    void collect(Venue& v, const QDate& day, Period& month, Period& quarter) {
        Head h = plainHead(day, &v, v.company, "INC6", u"Incasso apparecchi"_s);
        std::vector<Reading> readings;
        Cents in = 0, out = 0, preu = 0, aams = 0, rete = 0;
        for (Board& b : v.boards) {
            if (b.changeMachine) continue;
            Reading r;
            r.board = &b;
            r.day = day;
            r.collection = true;
            r.oldIn = b.counterIn;
            r.oldOut = b.counterOut;
            r.oldDay = b.lastReading;
            const double weeks = b.lastReading.daysTo(day) / 7.0;
            const qint64 euroIn = std::max<qint64>(
                1, std::llround(b.weeklyTakings * weeks * (0.6 + 0.8 * random_.unit())));
            const qint64 euroOut =
                std::llround(double(euroIn) * b.payout * (0.92 + 0.16 * random_.unit()));
            r.in = 100 * euroIn;
            r.out = 100 * euroOut;
            r.preu = percentOf(r.in, PercPreu);
            r.aams = percentOf(r.in, PercAams);
            r.rete = percentOf(r.in, PercRete);
            const Cents share = r.in - r.out - r.preu - r.aams - r.rete;
            r.locale = percentOf(share, PercLocale);
            r.noleggiatore = share - r.locale;
            b.counterIn += euroIn;
            b.counterOut += euroOut;
            b.lastReading = day;
            for (int k = 0; k < 2; ++k) {
                b.level[k] =
                    std::clamp<Cents>(b.level[k] + 100 * random_.between(-40, 40), 5000, 50000);
            }
            in += r.in;
            out += r.out;
            preu += r.preu;
            aams += r.aams;
            rete += r.rete;
            add(month, r);
            add(quarter, r);
            readings.push_back(r);
        }
        const Cents toDivide = in - out - preu - aams - rete;
        const Cents locale = percentOf(toDivide, PercLocale);
        const double rounding = random_.unit();
        const Cents roundingCents = rounding < 0.1 ? random_.between(1, 99) : 0;
        h.introdotto = Value::money(in);
        h.uscite = Value::money(out);
        h.preu = Value::money(preu);
        h.aams = Value::money(aams);
        h.rete = Value::money(rete);
        h.tasse = Value::money(preu + aams + rete);
        h.daDividere = Value::money(toDivide);
        h.utileLocale = Value::money(locale);
        h.utileNoleggiatore = Value::money(toDivide - locale);
        h.quotaNol = h.utileNoleggiatore;
        h.versato = Value::money(locale);
        h.riscosso = Value::money(in - out);
        h.daRiscuotere = Value::money(in - out - locale);
        h.rimanenza = Value::money(v.rimanenza);
        h.arrotondamenti =
            rounding < 0.2 && rounding >= 0.1 ? Value() : Value::money(roundingCents);
        notes_.head(h);
        for (const Reading& r : readings)
            notes_.reading(r, v.company);
        notes_.post(account::Cassa, account::RicaviAwp, in - out, u"Incasso apparecchi"_s);
        notes_.post(account::CostoPreu, account::ErarioPreu, preu, u"PREU"_s);
        notes_.post(account::CostoAams, account::DebitiAams, aams, u"Canone AAMS"_s);
        notes_.post(account::CostoRete, account::DebitiRete, rete, u"Quota rete"_s);
        notes_.post(account::QuotaLocali, v.account, locale, u"Quota esercente"_s);
        notes_.post(v.account, account::Cassa, locale, u"Versato al locale"_s);
        notes_.post(account::Cassa, account::Arrotondamenti, roundingCents, u"Arrotondamento"_s);
    }

    // A hopper check of every machine: new levels, the old ones beside them.
    void hoppers(Venue& v, const QDate& day) {
        Head h = plainHead(day, &v, v.company, "CH", u"Controllo hopper"_s);
        std::vector<std::array<Cents, 3>> old;
        std::vector<Reading> readings;
        Cents variation = 0;
        for (Board& b : v.boards) {
            if (b.changeMachine) continue;
            old.push_back({b.level[0], b.level[1], b.level[2]});
            Reading r = standing(b, day);
            for (int k = 0; k < 2; ++k) {
                b.level[k] =
                    std::clamp<Cents>(b.level[k] + 100 * random_.between(-60, 60), 5000, 50000);
                r.variation += b.level[k] - old.back()[k];
            }
            variation += r.variation;
            readings.push_back(r);
        }
        h.variazioneHopper = Value::money(variation);
        notes_.head(h);
        for (std::size_t i = 0; i < readings.size(); ++i) {
            readings[i].oldLevels = old[i].data();
            notes_.reading(readings[i], v.company);
        }
    }

    // The monthly reading of the change machines: what went in came out in coins.
    void changeMachines(Venue& v, const QDate& day) {
        bool any = false;
        for (Board& b : v.boards) {
            if (!b.changeMachine) continue;
            if (!any) notes_.head(plainHead(day, &v, v.company, "CAM", u"Lettura cambiamonete"_s));
            any = true;
            Reading r = standing(b, day);
            const qint64 euro = std::llround(b.weeklyTakings * (b.lastReading.daysTo(day) / 7.0) *
                                             (0.7 + 0.6 * random_.unit()));
            const std::array<Cents, 3> old{b.level[0], b.level[1], b.level[2]};
            b.counterIn += euro;
            b.counterOut += euro;
            b.lastReading = day;
            for (int k = 0; k < 3; ++k) {
                b.level[k] = 100 * random_.between(k == 2 ? 50 : 200, k == 2 ? 200 : 600);
                r.variation += b.level[k] - old[k];
            }
            r.oldLevels = old.data();
            notes_.reading(r, v.company);
        }
    }

    // A line of a note that reads a board without collecting: counters as they stand.
    static Reading standing(const Board& b, const QDate& day) {
        Reading r;
        r.board = &b;
        r.day = day;
        r.oldIn = b.counterIn;
        r.oldOut = b.counterOut;
        r.oldDay = b.lastReading;
        return r;
    }

    void refill(Venue& v, const QDate& day) {
        std::vector<Board*> machines;
        for (Board& b : v.boards) {
            if (!b.changeMachine) machines.push_back(&b);
        }
        Board& b = *machines[random_.below(int(machines.size()))];
        const Cents amount = 10000 * random_.between(1, 3);
        const bool byVenue = random_.chance(0.2);
        Head h = plainHead(day, &v, v.company, "REF", u"Refill hopper"_s);
        (byVenue ? h.refillLocale : h.refillNoleggiatore) = Value::money(amount);
        notes_.head(h);
        Reading r = standing(b, day);
        b.level[0] += amount;
        (byVenue ? r.refillVenue : r.refill) = amount;
        r.variation = amount;
        notes_.reading(r, v.company);
        notes_.post(account::FondoHopper, byVenue ? v.account : QString::fromLatin1(account::Cassa),
                    amount, h.description);
    }

    // A loan to the venue, or a repayment of what it owes.
    void loanNote(Venue& v, const QDate& day, Cents& balance) {
        const bool repayment = balance > 0 && random_.chance(0.4);
        const Cents change = repayment ? -std::min<Cents>(balance, 10000 * random_.between(1, 10))
                                       : 10000 * random_.between(5, 30);
        balance += change;
        Head h = plainHead(day, &v, v.company, "PRE",
                           repayment ? u"Rientro prestito"_s : u"Prestito al locale"_s);
        // Older notes may still wait for the cash report to fill the variation.
        const double state = random_.unit();
        h.varPrestito = state < 0.1    ? Value()
                        : state < 0.35 ? Value::money(0)
                                       : Value::money(change);
        notes_.head(h);
        notes_.post(account::Prestiti, account::Cassa, change, h.description);
    }

    void advance(Venue& v, const QDate& day) {
        const Cents amount = 1000 * random_.between(5, 50);
        Head h = plainHead(day, &v, v.company, "ACC", u"Acconto al locale"_s);
        const bool open = day > lastDay_.addDays(-60);
        h.chiuso =
            open ? (random_.chance(0.3) ? Value() : Value::yesNo(false)) : Value::yesNo(true);
        const double state = random_.unit();
        h.acconto = state < 0.1 ? Value() : state < 0.35 ? Value::money(0) : Value::money(amount);
        notes_.head(h);
        notes_.post(v.account, account::CassaAcconti, amount, h.description);
    }

    void sundry(Venue& v, const QDate& day) {
        const Cents amount = 100 * random_.between(20, 200);
        Head h = plainHead(
            day, &v, v.company, "INC",
            random_.chance(0.5) ? u"Vendita ricambi"_s : u"Rimborso intervento tecnico"_s);
        h.riscosso = Value::money(amount);
        notes_.head(h);
        notes_.post(account::Cassa, account::RicaviDiversi, amount, h.description);
    }

    void theft(Venue& v, const QDate& day) {
        const Cents amount = 100 * random_.between(100, 1500);
        const Cents venueShare = percentOf(amount, PercLocale);
        Head h = plainHead(day, &v, v.company, "FUR", u"Furto cassetto apparecchio"_s);
        h.furtoLocale = Value::money(venueShare);
        h.furtoNoleggiatore = Value::money(amount - venueShare);
        notes_.head(h);
        notes_.post(account::Furti, account::Cassa, amount - venueShare, h.description);
        notes_.post(v.account, account::Cassa, venueShare, h.description);
    }

    // At the end of a month: its quittances, and at the end of a quarter the
    // deed; a period that ends after the last day gets neither.
    void close(const Venue& v, Period& month, Period& quarter, const QDate& monthStart) {
        const QDate monthEnd = monthStart.addMonths(1).addDays(-1);
        if (monthEnd <= lastDay_ && !month.empty()) quittances(v, month, monthStart, monthEnd);
        month.clear();
        if (monthStart.month() % 3 == 0 || monthEnd >= lastDay_) {
            if (monthEnd <= lastDay_ && !quarter.empty()) deed(v, quarter, monthEnd);
            quarter.clear();
        }
    }

    void quittances(const Venue& v, const Period& month, const QDate& from, const QDate& to) {
        std::map<QString, std::vector<const BoardPeriod*>> byConcessionaire;
        for (const auto& entry : month)
            byConcessionaire[entry.second.board->concessionario].push_back(&entry.second);
        for (const auto& [concessionaire, boards] : byConcessionaire) {
            BoardPeriod sum;
            for (const BoardPeriod* p : boards) {
                sum.sumIn += p->sumIn;
                sum.sumOut += p->sumOut;
                sum.preu += p->preu;
                sum.aams += p->aams;
                sum.rete += p->rete;
                sum.locale += p->locale;
                sum.noleggiatore += p->noleggiatore;
            }
            const int number = ++quittanceNumber_;
            const bool stamp =
                sum.locale > 7747;  // above 77.47 euro the receipt takes a revenue stamp
            const qint64 head = quittances_.insert(
                {Value::money(sum.aams), Value::money(sum.locale), Value::yesNo(stamp),
                 u"Q%1/%2"_s.arg(to.year()).arg(number, 6, 10, QLatin1Char('0')), v.company, v.code,
                 concessionaire, Value::date(from), Value::date(to), Value::yesNo(false),
                 Value::yesNo(false), Value::date(to, 18), 1, Value::money(stamp ? 200 : 0),
                 number},
                {0.0, 0.0,
                 u"%1 %2"_s.arg(QString::fromLatin1(kMonths[from.month() - 1])).arg(from.year()),
                 Value::money(sum.preu), Value::money(0), Value::money(0), Value::money(sum.rete),
                 Value::money(sum.noleggiatore), Value::money(sum.sumIn), Value::money(sum.sumOut),
                 Value::money(0), 1, "Utile", 1, Value::money(sum.locale)});
            int row = 0;
            for (const BoardPeriod* p : boards) {
                quittanceRows_.insert(
                    {Value::money(p->aams), Value::date(p->to), p->board->codiceAams, v.company,
                     v.code, p->in, p->out, Value::date(p->from), int(p->from.daysTo(p->to)),
                     Value::date(to, 18), 1, head, Value::yesNo(false), Value::date(p->from)},
                    {p->board->id, p->board->nomeGioco, p->oldIn, p->oldOut,
                     Value::money(p->locale), PercLocale, Value::money(p->preu),
                     Value::money(p->rete), ++row, "Utile", Value::date(p->to), Value::money(0),
                     Value::money(0)});
            }
        }
    }

    // The deed of quittance of a quarter; the company is left off a third of
    // the lines, as older documents have it.
    void deed(const Venue& v, const Period& quarter, const QDate& day) {
        BoardPeriod sum;
        for (const auto& entry : quarter) {
            sum.sumIn += entry.second.sumIn;
            sum.sumOut += entry.second.sumOut;
            sum.preu += entry.second.preu;
            sum.aams += entry.second.aams;
            sum.rete += entry.second.rete;
            sum.locale += entry.second.locale;
        }
        const int number = ++deedNumber_;
        const Cents toDivide = sum.sumIn - sum.sumOut - sum.preu - sum.aams - sum.rete;
        const qint64 doc = deeds_.insert(
            {Value::date(day), 8, number, Value::date(day), 1, v.code, 2, v.company, v.agent,
             Value::money(sum.sumIn), Value::money(sum.sumOut), Value::money(sum.preu)},
            {Value::money(toDivide), Value::money(sum.rete), Value::money(sum.aams),
             Value::money(sum.locale), Value::yesNo(true), Value::yesNo(false), Value::yesNo(true),
             u"Atto di quietanza %1"_s.arg(v.insegna), v.company, Value::date(day, 18), 1});
        int row = 0;
        for (const auto& [id, p] : quarter) {
            deedRows_.insert(
                {number, doc, ++row, 1, u"Apparecchio %1"_s.arg(p.board->nomeGioco), 1.0,
                 Value::money(p.preu), Value::money(p.aams), Value::money(p.rete),
                 Value::money(p.sumIn), Value::money(p.sumOut), 1, PercRete},
                {PercAams, PercPreu, Value::money(p.locale), Value::money(p.noleggiatore),
                 PercLocale, 100.0 - PercLocale, Value::money(p.locale + p.noleggiatore), 1,
                 Value::date(day, 18), random_.chance(1.0 / 3) ? Value() : Value(v.company),
                 p.board->codiceAams, p.board->nomeGioco});
        }
    }

    NoteWriter notes_;
    Random& random_;
    QDate firstDay_, lastDay_;
    TableWriter quittances_, quittanceRows_, deeds_, deedRows_;
    int quittanceNumber_ = 0;
    int deedNumber_ = 0;
};

}  // namespace

CollectionCounts writeCollections(Database& db, Random& random, Registry& registry,
                                  const QDate& firstDay, const QDate& lastDay) {
    Collector collector(db, random, firstDay, lastDay);
    for (Venue& venue : registry.venues)
        collector.venue(venue);
    collector.companyNotes(registry.companies);
    // The last collection of each board is the reading the machine now stands at.
    db.exec(
        "UPDATE NoteIncassi SET UltimaLettura=-1 WHERE id IN (SELECT MAX(ni.id) FROM "
        "NoteIncassi ni INNER JOIN NoteTeste nt ON nt.id=ni.IdTesta WHERE "
        "nt.CodCausale='INC6' GROUP BY ni.LinkScheda)");
    return collector.counts();
}

}  // namespace lorvane::demo
