// The master data of the demo installation: companies, people, the chart of
// accounts, and the venues with their machines, kept in memory for the notes.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <vector>

#include "host/demo/demo_generator.h"

namespace lorvane::demo {

// The accounts of the chart that the notes post to.
namespace account {
inline constexpr char Cassa[] = "01.001";
inline constexpr char Banca[] = "01.002";
inline constexpr char CassaAcconti[] = "01.003";
inline constexpr char Prestiti[] = "02.001";
inline constexpr char FondoHopper[] = "02.002";
inline constexpr char ErarioPreu[] = "04.001";
inline constexpr char DebitiAams[] = "04.002";
inline constexpr char DebitiRete[] = "04.003";
inline constexpr char RicaviAwp[] = "05.001";
inline constexpr char RicaviDiversi[] = "05.002";
inline constexpr char Arrotondamenti[] = "05.003";
inline constexpr char QuotaLocali[] = "06.001";
inline constexpr char CostoPreu[] = "06.002";
inline constexpr char CostoAams[] = "06.003";
inline constexpr char CostoRete[] = "06.004";
inline constexpr char Furti[] = "06.005";
inline constexpr char Spese[] = "06.006";
}  // namespace account

// A machine board and, while the notes are written, its running state.
struct Board {
    qint64 id = 0;
    QString codArticolo;
    QString catApparecchio;
    QString nomeGioco;
    QString codiceAams;
    QString concessionario;
    QString contratto;
    bool changeMachine = false;
    qint64 counterIn = 0;  // euro, as the machine counts them
    qint64 counterOut = 0;
    Cents level[3] = {0, 0, 0};  // coins in the three hoppers
    QDate lastReading;
    double payout = 0.68;   // share of the money put in that the machine pays out
    int weeklyTakings = 0;  // euro, the mean of a week
};

struct Venue {
    QString code;
    QString insegna;
    QString account;  // the customer account "03.nnn"
    QString collector;
    QString terminal;  // the collector's hand-held terminal
    QString agent;
    double agentPercent = 0;
    QString company;
    int weekday = 1;  // Qt::DayOfWeek of the weekly collection
    bool active = true;
    Cents rimanenza = 0;  // change left at the venue
    std::vector<Board> boards;
};

struct Registry {
    QString firstCompanyName;
    QStringList companies;
    std::vector<Venue> venues;
};

// Writes the master data into `db`, inside the caller's transaction, and
// gives back what the notes need. Boards are written with their state before
// `firstDay`; writeBoardState() brings them up to date afterwards.
Registry writeRegistry(Database& db, Random& random, int venueCount, const QDate& firstDay);

// Writes each board's last reading date, counters and hopper levels.
void writeBoardState(Database& db, const Registry& registry);

}  // namespace lorvane::demo
