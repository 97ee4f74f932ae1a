// The master data of the demo installation: who runs the machines, where they
// stand, the chart of accounts and the store of boards and cabinets.
#include "host/demo/demo_registry.h"

#include <algorithm>

namespace lorvane::demo {

using namespace Qt::StringLiterals;

namespace {

struct Town {
    const char* name;
    const char* province;
    const char* cap;
    int zone;  // index into kZones
};

const Town kTowns[] = {
    {"Milano", "MI", "20121", 0},
    {"Sesto San Giovanni", "MI", "20099", 1},
    {"Legnano", "MI", "20025", 1},
    {"Rho", "MI", "20017", 1},
    {"Monza", "MB", "20900", 1},
    {"Bergamo", "BG", "24121", 2},
    {"Treviglio", "BG", "24047", 2},
    {"Brescia", "BS", "25121", 2},
    {"Desenzano del Garda", "BS", "25015", 2},
    {"Como", "CO", "22100", 1},
    {"Cantù", "CO", "22063", 1},
    {"Varese", "VA", "21100", 1},
    {"Busto Arsizio", "VA", "21052", 1},
    {"Lecco", "LC", "23900", 2},
    {"Pavia", "PV", "27100", 1},
    {"Vigevano", "PV", "27029", 1},
    {"Cremona", "CR", "26100", 2},
    {"Crema", "CR", "26013", 2},
    {"Lodi", "LO", "26900", 1},
    {"Mantova", "MN", "46100", 4},
    {"Torino", "TO", "10121", 3},
    {"Novara", "NO", "28100", 3},
    {"Alessandria", "AL", "15121", 3},
    {"Asti", "AT", "14100", 3},
    {"Cuneo", "CN", "12100", 3},
    {"Genova", "GE", "16121", 3},
    {"Savona", "SV", "17100", 3},
    {"Verona", "VR", "37121", 4},
    {"Vicenza", "VI", "36100", 4},
    {"Padova", "PD", "35121", 4},
    {"Treviso", "TV", "31100", 4},
    {"Venezia", "VE", "30121", 4},
    {"Trento", "TN", "38121", 4},
    {"Bologna", "BO", "40121", 5},
    {"Modena", "MO", "41121", 5},
    {"Parma", "PR", "43121", 5},
    {"Reggio Emilia", "RE", "42121", 5},
    {"Piacenza", "PC", "29121", 5},
    {"Ferrara", "FE", "44121", 5},
    {"Rimini", "RN", "47921", 5},
    {"Firenze", "FI", "50121", 5},
    {"Pisa", "PI", "56121", 5},
};

const char* const kZones[][2] = {
    {"Z01", "Milano città"},       {"Z02", "Lombardia ovest"}, {"Z03", "Lombardia est"},
    {"Z04", "Piemonte e Liguria"}, {"Z05", "Triveneto"},       {"Z06", "Emilia e Toscana"},
};

const char* const kStreets[] = {
    "Via Roma",
    "Via Garibaldi",
    "Corso Italia",
    "Via Mazzini",
    "Via Dante",
    "Piazza della Repubblica",
    "Via Cavour",
    "Viale Europa",
    "Via Matteotti",
    "Via XX Settembre",
    "Via Verdi",
    "Via Marconi",
    "Via Manzoni",
    "Corso Vittorio Emanuele II",
    "Via Gramsci",
    "Via San Francesco",
    "Via Leonardo da Vinci",
    "Piazza Duomo",
    "Viale della Stazione",
    "Via dei Mille",
};

const char* const kSignKinds[] = {"Bar",         "Caffè",    "Tabaccheria", "Bar Tabacchi",
                                  "Pasticceria", "Osteria",  "Circolo",     "Pizzeria",
                                  "Sala Giochi", "Snack Bar"};
const char* const kSignNames[] = {
    "Centrale",     "Sport",     "Stazione", "Roma",    "Italia",     "del Corso", "Aurora",
    "Stella",       "Jolly",     "Moderno",  "Da Gino", "Al Portico", "Lux",       "Bellavista",
    "La Piazzetta", "Smeraldo",  "Diana",    "Sirena",  "Olimpia",    "Rialto",    "Primavera",
    "La Perla",     "Excelsior", "Mokambo",  "Alpino",  "Il Faro",    "Garibaldi", "Da Mario",
};

const char* const kMaleNames[] = {"Giuseppe",  "Marco",    "Luca",    "Antonio",
                                  "Francesco", "Paolo",    "Stefano", "Andrea",
                                  "Roberto",   "Giovanni", "Massimo", "Davide"};
const char* const kFemaleNames[] = {"Maria", "Anna", "Giulia", "Francesca", "Laura",
                                    "Elena", "Sara", "Chiara", "Paola",     "Silvia"};
const char* const kSurnames[] = {
    "Rossi",    "Russo", "Ferrari",  "Esposito", "Bianchi",  "Romano",  "Colombo", "Ricci",
    "Marino",   "Greco", "Bruno",    "Gallo",    "Conti",    "De Luca", "Mancini", "Costa",
    "Giordano", "Rizzo", "Lombardi", "Moretti",  "Barbieri", "Fontana", "Santoro", "Mariani",
};

const char* const kGames[] = {
    "Frutti d'Oro", "Tesoro del Nilo", "Lucky Seven",    "Corsa all'Oro", "Magia di Venezia",
    "Diamanti Blu", "Re della Savana", "Fortuna Romana", "Vulcano Rosso", "Jolly Poker"};

struct Concessionaire {
    const char* code;
    const char* name;
    const char* town;
    const char* province;
    const char* cap;
};

const Concessionaire kConcessionaires[] = {
    {"LUDICA", "Ludica Nord Concessioni S.p.A.", "Milano", "MI", "20124"},
    {"AZZURRA", "Azzurra Gaming S.p.A.", "Roma", "RM", "00144"},
    {"ORIONE", "Orione Rete Giochi S.r.l.", "Torino", "TO", "10128"},
    {"VEGA", "Vega Intrattenimento S.p.A.", "Bologna", "BO", "40127"},
};

QString digits(Random& random, int count) {
    QString text;
    for (int i = 0; i < count; ++i)
        text += QChar(u'0' + random.below(10));
    return text;
}

QString taxCode(Random& random, const QString& surname, const QString& name) {
    const QString letters = (surname.left(3) + name.left(3)).toUpper().leftJustified(6, u'X');
    return letters + digits(random, 2) + QChar(u'A' + random.below(12)) + digits(random, 2) +
           QChar(u'F' + random.below(8)) + digits(random, 3) + QChar(u'A' + random.below(26));
}

QString phone(Random& random, const char* prefix) {
    return QString::fromLatin1(prefix) + digits(random, 7);
}

void writeCompanies(Database& db, Random& random, Registry& registry) {
    struct Company {
        const char* code;
        const char* name;
        const char* street;
        const char* number;
        int town;
    };
    const Company companies[] = {
        {"AZ01", "Nordovest Automatici S.r.l.", "Via Lorenteggio", "152", 0},
        {"AZ02", "Adriatica Intrattenimento S.r.l.", "Via Emilia Levante", "38", 33},
        {"AZ03", "Lario Games S.n.c.", "Via Milano", "7", 9},
    };
    TableWriter writer(
        db, "AnagraficaAziende",
        "CodiceAzienda, RagioneSociale, Ragione2, PIVA, CodFisc, Indirizzo, NumeroCivico, Cap, "
        "Citta, Prov, Tel, Fax, SedeOperativaProvincia, SedeOperativaIndirizzo, "
        "SedeOperativaNcivico, SedeOperativaCap, SedeOperativaLocalita, PercentualeDitta, "
        "NomeLegale, CognomeLegale, DataNascitaLegale, LuogoNascitaLegale, ProvNascitaLegale, "
        "CodFiscLegale, IndirizzoLegale, NumCivicoLegale, ComuneLegale, ProvinciaLegale, "
        "CapLegale, email, Import");
    for (const Company& c : companies) {
        const Town& town = kTowns[c.town];
        const QString name = QString::fromLatin1(random.pick(kMaleNames));
        const QString surname = QString::fromLatin1(random.pick(kSurnames));
        const QString vat = digits(random, 11);
        writer.insert(
            {c.code, QString::fromUtf8(c.name), "Gestione apparecchi da intrattenimento", vat, vat,
             c.street, c.number, town.cap, QString::fromUtf8(town.name), town.province,
             phone(random, "02 "), phone(random, "02 "), town.province, c.street, c.number,
             town.cap},
            {QString::fromUtf8(town.name), 100.0, name, surname,
             Value::date(
                 QDate(1960 + random.below(20), 1 + random.below(12), 1 + random.below(28))),
             QString::fromUtf8(town.name), town.province, taxCode(random, surname, name),
             QString::fromLatin1(random.pick(kStreets)), QString::number(random.between(1, 120)),
             QString::fromUtf8(town.name), town.province, town.cap,
             u"amministrazione@%1.it"_s.arg(QString::fromLatin1(c.code).toLower()),
             Value::yesNo(false)});
        registry.companies << QString::fromLatin1(c.code);
        if (registry.firstCompanyName.isEmpty())
            registry.firstCompanyName = QString::fromUtf8(c.name);
    }
}

// Writes one operator and gives back the code.
struct PersonWriter {
    TableWriter writer;
    Random& random;
    QDate since;

    PersonWriter(Database& db, Random& r, const QDate& day)
        : writer(db, "AnagraficaOperatori",
                 "codiceOperatore, TXTPassword, Mansione, nome, cognome, descrizione, Indirizzo, "
                 "numeroCivico, Citta, Cap, Provincia, CodFiscale, Tel, Cel, Email, Terminale, "
                 "NumeroTerminale, TipoTerminale, Livello, Percentuale, AbilitazioneUtente, "
                 "VistaCompleta, CodiceAzienda, idData, Sesso, NatoIl, ComuneN, ProvN"),
          random(r),
          since(day) {}

    void write(const QString& code, const char* role, const QString& terminal, double percent,
               const QString& company) {
        const bool female = random.chance(0.3);
        const QString name =
            QString::fromLatin1(female ? random.pick(kFemaleNames) : random.pick(kMaleNames));
        const QString surname = QString::fromLatin1(random.pick(kSurnames));
        const Town& town = random.pick(kTowns);
        const Town& birth = random.pick(kTowns);
        writer.insert(
            {code, Value(), role, name, surname, surname + u' ' + name,
             QString::fromLatin1(random.pick(kStreets)), QString::number(random.between(1, 150)),
             QString::fromUtf8(town.name), town.cap, town.province, taxCode(random, surname, name),
             phone(random, "0"), phone(random, "33")},
            {u"%1.%2@posta.it"_s.arg(name.toLower(), surname.toLower().remove(u' ')),
             Value::yesNo(!terminal.isEmpty()), terminal.isEmpty() ? Value() : terminal,
             terminal.isEmpty() ? Value() : Value("PALMARE"), 1, percent, Value::yesNo(true),
             Value::yesNo(false), company, Value::date(since), female ? "F" : "M",
             Value::date(
                 QDate(1955 + random.below(45), 1 + random.below(12), 1 + random.below(28))),
             QString::fromUtf8(birth.name), birth.province});
    }
};

void writeChart(Database& db, const QDate& since, const std::vector<Venue>& venues) {
    TableWriter writer(
        db, "AnagraficaPianoConti",
        "CodiceConto, Descrizione, Sistema, TipoConto, LivelloConto, idData, idOperatore, Mastro");
    // Code, description, TipoConto: 0 balance sheet, 1 income statement.
    struct Account {
        const char* code;
        const char* description;
        int type;
    };
    const Account accounts[] = {
        {"01", "Cassa e banche", 0},
        {"01.001", "Cassa", 0},
        {"01.002", "Banca c/c", 0},
        {"01.003", "Cassa acconti", 0},
        {"02", "Crediti diversi", 0},
        {"02.001", "Prestiti a locali", 0},
        {"02.002", "Fondo hopper apparecchi", 0},
        {"03", "Clienti", 0},
        {"04", "Debiti tributari e verso concessionari", 0},
        {"04.001", "Erario c/PREU", 0},
        {"04.002", "Debiti per canone AAMS", 0},
        {"04.003", "Debiti verso concessionari per rete", 0},
        {"05", "Ricavi", 1},
        {"05.001", "Ricavi da apparecchi AWP", 1},
        {"05.002", "Ricavi diversi", 1},
        {"05.003", "Arrotondamenti attivi", 1},
        {"06", "Costi", 1},
        {"06.001", "Quote esercenti", 1},
        {"06.002", "PREU", 1},
        {"06.003", "Canone AAMS", 1},
        {"06.004", "Costi di rete", 1},
        {"06.005", "Perdite per furti", 1},
        {"06.006", "Spese di gestione", 1},
        {"07", "Patrimonio netto", 0},
        {"07.001", "Capitale sociale", 0},
    };
    auto write = [&](const QString& code, const QString& description, bool system, int type) {
        writer.insert({code, description, Value::yesNo(system), type, code.contains(u'.') ? 2 : 1,
                       Value::date(since), 1, code.left(2)});
    };
    for (const Account& a : accounts) {
        write(QString::fromLatin1(a.code), QString::fromUtf8(a.description), true, a.type);
        if (QByteArrayView(a.code) == "03") {
            for (const Venue& venue : venues)
                write(venue.account, venue.insegna, false, 0);
        }
    }
}

void writeSettings(Database& db, const QDate& since) {
    TableWriter zones(db, "AnagraficaZone", "CodiceZona, Descrizione, idData, IdOperatore");
    for (const auto& zone : kZones)
        zones.insert({zone[0], QString::fromUtf8(zone[1]), Value::date(since), 1});

    TableWriter concessionaires(
        db, "AnagraficaConcessionari",
        "codiceConcessionario, mail, descrizione, Telefono, Contatto, TipoCostoRete, Fissogg, "
        "Soglia, Percentuale, Ncivico, Provincia, CAP, Localita, Indirizzo, Piva, idData, Sistema");
    int n = 0;
    for (const Concessionaire& c : kConcessionaires) {
        concessionaires.insert({c.code, u"awp@%1.it"_s.arg(QString::fromLatin1(c.code).toLower()),
                                c.name, u"06 55%1"_s.arg(1000 + 37 * n, 5, 10, QLatin1Char('0')),
                                "Ufficio rapporti con i gestori", 1, Value::money(0),
                                Value::money(0), 0.5, QString::number(10 + 7 * n), c.province,
                                c.cap, c.town, "Via dei Concessionari",
                                u"0%1"_s.arg(4711230 + 91 * n, 10, 10, QLatin1Char('0')),
                                Value::date(since), Value::yesNo(false)});
        ++n;
    }

    // Code, description, Introdotto, Cassa, RegistroCorrispettivi.
    struct Causale {
        const char* code;
        const char* description;
        bool takings, cash, register_;
    };
    const Causale causali[] = {
        {"INC6", "Incasso apparecchi AWP", true, true, true},
        {"INC", "Incasso vario", false, true, true},
        {"FUR", "Furto presso il locale", false, true, true},
        {"PRE", "Prestito al locale", false, true, false},
        {"ACC", "Acconto al locale", false, true, false},
        {"REF", "Refill hopper", false, true, false},
        {"CH", "Controllo hopper", false, false, false},
        {"CAM", "Lettura cambiamonete", false, false, false},
        {"VER", "Versamento in banca", false, true, false},
        {"SPE", "Spese di gestione", false, true, false},
        {"GIR", "Giroconto", false, false, false},
    };
    TableWriter causaliWriter(db, "AnagraficaCausali",
                              "CodiceCausale, Descrizione, Introdotto, Cassa, "
                              "RegistroCorrispettivi, idData, IdOperatore");
    for (const Causale& c : causali) {
        causaliWriter.insert({c.code, c.description, Value::yesNo(c.takings), Value::yesNo(c.cash),
                              Value::yesNo(c.register_), Value::date(since), 1});
    }

    TableWriter links(
        db, "TabAssociazioneConti",
        "CassaAcconti, PrestitiALocale, ContoCassa, ContoBanca, ContoPreu, ContoAAMS, ContoRete, "
        "RicaviAWP, RicaviComma7, Arrotondamenti, PerditeFurti, SpeseGestione");
    links.insert({account::CassaAcconti, account::Prestiti, account::Cassa, account::Banca,
                  account::ErarioPreu, account::DebitiAams, account::DebitiRete, account::RicaviAwp,
                  account::RicaviDiversi, account::Arrotondamenti, account::Furti, account::Spese});

    TableWriter contracts(db, "TipoContratto",
                          "Contratto, Descrizione, PercentualeComodato, idData, IdOperatore");
    contracts.insert({"NOL", "Noleggio", 0.0, Value::date(since), 1});
    contracts.insert({"COM", "Comodato d'uso", 10.0, Value::date(since), 1});
    contracts.insert({"SOC", "Società con l'esercente", 0.0, Value::date(since), 1});

    TableWriter options(db, "ZPers", "RegistroCorrispettivi, GestioneComodato, CopieQuietanza");
    options.insert({Value::yesNo(true), Value::yesNo(true), 2});

    TableWriter users(db, "operatori",
                      "Utente, Password, Nome, Cognome, Livello, Amministratore, Attivo, "
                      "CodiceOperatore, idData");
    users.insert({"admin", "admin", "Amministratore", "", 9, Value::yesNo(true), Value::yesNo(true),
                  Value(), Value::date(since)});
    users.insert({"mrossi", "mrossi", "Mario", "Rossi", 5, Value::yesNo(false), Value::yesNo(true),
                  "ES01", Value::date(since)});
    users.insert({"lbianchi", "lbianchi", "Laura", "Bianchi", 3, Value::yesNo(false),
                  Value::yesNo(true), "AG01", Value::date(since)});

    TableWriter articles(db, "MagAnagArticoli",
                         "CodArticolo, Descrizione, tipoArticolo, CatApparecchio, CatStatistica, "
                         "CatMarca, UnMis, PrezzoAcquisto, idData");
    int game = 0;
    for (const char* name : kGames) {
        articles.insert({u"SCH%1"_s.arg(++game, 2, 10, QLatin1Char('0')),
                         u"Scheda AWP %1"_s.arg(QString::fromUtf8(name)), 1, "AWP", "SCHEDE",
                         game % 2 ? "Novamatic" : "Elettrogiochi", "PZ",
                         Value::money(180000 + 5000 * game), Value::date(since)});
    }
    articles.insert({"SCHCAM", "Scheda cambiamonete", 1, "CAMBIAMONETE", "SCHEDE", "Cambiotec",
                     "PZ", Value::money(90000), Value::date(since)});
    articles.insert({"MOBSLIM", "Mobile slim 22 pollici", 2, Value(), "MOBILI", "Elettrogiochi",
                     "PZ", Value::money(65000), Value::date(since)});
    articles.insert({"MOBUP", "Mobile upright 27 pollici", 2, Value(), "MOBILI", "Novamatic", "PZ",
                     Value::money(82000), Value::date(since)});
    articles.insert({"MOBCAM", "Mobile cambiamonete", 2, Value(), "MOBILI", "Cambiotec", "PZ",
                     Value::money(40000), Value::date(since)});
    articles.insert({"PFAWP", "Apparecchio AWP assemblato", 4, "AWP", "PRODOTTI", Value(), "PZ",
                     Value(), Value::date(since)});
    articles.insert({"PFCAM", "Cambiamonete assemblato", 4, "CAMBIAMONETE", "PRODOTTI", Value(),
                     "PZ", Value(), Value::date(since)});
}

struct VenuePlan {
    const Town* town;
    int zone;
    QString owner;
    QString kind;
    bool sospesoNull;
};

// One venue's place, company and people; the boards come later.
Venue planVenue(Random& random, int index, int width, VenuePlan& plan, const QString& lastOwner,
                int& owners) {
    Venue venue;
    plan.town = &random.pick(kTowns);
    plan.zone = plan.town->zone;
    plan.kind = QString::fromUtf8(random.pick(kSignKinds));
    venue.code = u"L%1"_s.arg(index, std::max(4, width), 10, QLatin1Char('0'));
    venue.account = u"03.%1"_s.arg(index, std::max(3, width), 10, QLatin1Char('0'));
    venue.insegna = plan.kind + u' ' + QString::fromUtf8(random.pick(kSignNames));
    venue.company =
        plan.zone == 5 ? u"AZ02"_s : (plan.zone == 1 && random.chance(0.4) ? u"AZ03"_s : u"AZ01"_s);
    venue.collector = u"ES%1"_s.arg(plan.zone + 1, 2, 10, QLatin1Char('0'));
    venue.terminal = u"T%1"_s.arg(plan.zone + 1, 2, 10, QLatin1Char('0'));
    const int agent = random.below(4);
    venue.agent = u"AG%1"_s.arg(agent + 1, 2, 10, QLatin1Char('0'));
    venue.agentPercent = agent < 2 ? 2.0 : 1.5;
    venue.weekday = 1 + random.below(6);
    const double state = random.unit();
    venue.active = state >= 0.05;
    plan.sospesoNull = venue.active && state < 0.08;
    const int floats[] = {0, 0, 5000, 10000, 15000, 20000};
    venue.rimanenza = random.pick(floats);
    if (lastOwner.isEmpty() || !random.chance(0.1)) {
        plan.owner = u"TI%1"_s.arg(++owners, 4, 10, QLatin1Char('0'));
    } else {
        plan.owner = lastOwner;
    }
    return venue;
}

Board planBoard(Random& random, const QString& concessionaire, bool changeMachine, int serial) {
    Board board;
    board.changeMachine = changeMachine;
    board.concessionario = concessionaire;
    board.codiceAams = u"AAMS%1"_s.arg(10000000 + serial * 100 + random.below(100));
    if (changeMachine) {
        board.codArticolo = u"SCHCAM"_s;
        board.catApparecchio = u"CAMBIAMONETE"_s;
        board.nomeGioco = u"Cambiamonete"_s;
        board.contratto = u"NOL"_s;
        board.weeklyTakings = random.between(400, 1500);
        board.payout = 1.0;
        board.counterIn = random.between(5000, 120000);
        board.counterOut = board.counterIn;
        board.level[0] = 100 * random.between(200, 600);
        board.level[1] = 100 * random.between(200, 600);
        board.level[2] = 100 * random.between(50, 200);
    } else {
        const int game = random.below(int(std::size(kGames)));
        board.codArticolo = u"SCH%1"_s.arg(game + 1, 2, 10, QLatin1Char('0'));
        board.catApparecchio = u"AWP"_s;
        board.nomeGioco = QString::fromUtf8(kGames[game]);
        const double contract = random.unit();
        board.contratto = contract < 0.7 ? u"NOL"_s : contract < 0.9 ? u"COM"_s : u"SOC"_s;
        board.weeklyTakings = random.between(300, 2500);
        board.payout = 0.64 + 0.07 * random.unit();
        board.counterIn = random.between(20000, 600000);
        board.counterOut = qint64(double(board.counterIn) * board.payout);
        board.level[0] = 100 * random.between(150, 400);
        board.level[1] = 100 * random.between(100, 300);
    }
    return board;
}

// Boards, cabinets and finished products of the venues, then those of the store.
void writeStock(Database& db, Random& random, const QDate& since, Registry& registry) {
    TableWriter boards(
        db, "MagSchede",
        "CodArticolo, NomeGioco, CodiceInterno, CodiceAAMS, StatoNullaosta, DataNullaosta, "
        "Nullaosta, CodiceABarre, TipoMonetaGettoni, ValoreGettone, TipologiaIncasso, "
        "NumeroContatori, NumeroHopper, CodiceModello, CodiceProduttore, SerialeScheda, "
        "StatoApparecchio, Obsoleto, Venduto, Dismesso, DataDismissione, idData, IdOperatore, "
        "CodLocale, CodMagazzino, CodiceAzienda, MoltiplicatoreIN, MoltiplicatoreOut, "
        "CodConcessionario, DistintaBase, Omologa, import, IsiPagata, CnTotIN, CnTotOut, "
        "AttualeH1, AttualeH2, AttualeH3, Acconto, Contratto, AllarmeSoglia, AllarmeSogliaVal, "
        "Leasing, NumeroScheda");
    TableWriter cabinets(db, "MagMobili",
                         "CodArticolo, NomeMobile, CodiceInterno, CodiceABarre, Peso, "
                         "DimensioniLung, DimensioniAlt, DimensioniProf, NumeroPostazioni, "
                         "TipoMonitor, idData, IdOperatore, codLocale, codMagazzino, NumeroHopper, "
                         "TipoHopper, Obsoleto, Venduto, Dismesso, CodiceAzienda, DistintaBase, "
                         "import, TipoH1, TipoH2, TipoH3, NumH1, NumH2, NumH3, NumeroMobile");
    TableWriter products(db, "MagProdottoFinito",
                         "CodArticolo, Descrizione, Matricola, CodLocale, CodMagazzino, "
                         "LinkMobile, DataAssemblaggio, CodiceAzienda, idData, IdOperatore");
    TableWriter parts(
        db, "MagProdottoDistinta",
        "IdProdottoFinito, linkScheda, linkMobile, CodArticolo, Quantita, idData, IdOperatore");
    int serial = 0;
    // Flags: 0 placed or ready, 1 obsolete, 2 sold, 3 disposed of.
    auto write = [&](Board& board, const QString& venue, const QString& company, int state) {
        ++serial;
        const bool legacy = state == 0 && random.chance(0.05);
        auto flag = [&](int which) {
            return legacy && which == 1 ? Value() : Value::yesNo(state == which);
        };
        const double barcode = random.unit();
        const Value code = barcode < 0.03   ? Value()
                           : barcode < 0.06 ? Value("")
                                            : Value(u"80%1"_s.arg(digits(random, 11)));
        const QDate installed = since.addDays(-random.between(60, 900));
        const bool cam = board.changeMachine;
        board.id = boards.insert(
            {board.codArticolo, board.nomeGioco, u"S%1"_s.arg(serial, 5, 10, QLatin1Char('0')),
             board.codiceAams, 1, Value::date(installed), u"NO%1"_s.arg(digits(random, 8)), code, 1,
             Value::money(100), cam ? 0 : 6, 2, cam ? 3 : 2,
             u"MOD%1"_s.arg(board.codArticolo.right(2)), cam ? "Cambiotec" : "Novamatic"},
            {digits(random, 10), state == 0 ? 1 : 0, flag(1), flag(2), flag(3),
             state == 3 ? Value::date(since.addDays(-random.between(10, 200))) : Value(),
             Value::date(installed), 1, venue.isEmpty() ? Value() : Value(venue),
             venue.isEmpty() ? Value("MAG1") : Value(), company, 1.0, 1.0, board.concessionario,
             Value::yesNo(true)},
            {u"OM%1"_s.arg(digits(random, 6)), Value::yesNo(false), Value::yesNo(true),
             board.counterIn, board.counterOut, Value::money(board.level[0]),
             Value::money(board.level[1]), Value::money(board.level[2]), Value::money(0),
             board.contratto, Value::yesNo(false), Value::money(0), Value::yesNo(false),
             QString::number(serial)});
        const bool upright = !cam && random.chance(0.4);
        const char* cabinetArticle = cam ? "MOBCAM" : upright ? "MOBUP" : "MOBSLIM";
        const qint64 cabinet = cabinets.insert(
            {cabinetArticle,
             cam       ? "Cambiamonete da parete"
             : upright ? "Upright 27"
                       : "Slim 22",
             u"M%1"_s.arg(serial, 5, 10, QLatin1Char('0')),
             random.chance(0.04) ? Value() : Value(u"81%1"_s.arg(digits(random, 11))),
             cam ? 45.0 : 85.0, 60.0, cam ? 90.0 : 180.0, 55.0, 1, cam ? Value() : Value("LCD"),
             Value::date(installed), 1, venue.isEmpty() ? Value() : Value(venue),
             venue.isEmpty() ? Value("MAG1") : Value(), cam ? 3 : 2},
            {"Hopper a disco", flag(1), flag(2), flag(3), company, Value::yesNo(false),
             Value::yesNo(false), Value::money(100), Value::money(200),
             cam ? Value::money(50) : Value::money(0), 1, 1, cam ? 1 : 0, QString::number(serial)});
        if (!venue.isEmpty()) {
            const qint64 product = products.insert(
                {cam ? "PFCAM" : "PFAWP",
                 u"%1 %2"_s.arg(cam ? u"Cambiamonete"_s : u"AWP"_s, board.nomeGioco),
                 u"MT%1"_s.arg(serial, 6, 10, QLatin1Char('0')), venue, Value(), cabinet,
                 Value::date(installed), company, Value::date(installed), 1});
            parts.insert(
                {product, board.id, cabinet, board.codArticolo, 1.0, Value::date(installed), 1});
        }
    };
    for (Venue& venue : registry.venues) {
        if (!venue.active) continue;
        // Most venues are bars with a few machines, some are tobacconists with
        // a row of them, and one in ten is a gaming hall.
        const double kind = random.unit();
        const int count = kind < 0.6   ? random.between(3, 6)
                          : kind < 0.9 ? random.between(6, 10)
                                       : random.between(12, 20);
        const QString main = QString::fromLatin1(random.pick(kConcessionaires).code);
        for (int i = 0; i < count; ++i) {
            const QString concessionaire =
                random.chance(0.15) ? QString::fromLatin1(random.pick(kConcessionaires).code)
                                    : main;
            venue.boards.push_back(planBoard(random, concessionaire, false, serial + 1));
            write(venue.boards.back(), venue.code, venue.company, 0);
        }
        if (random.chance(0.2)) {
            venue.boards.push_back(planBoard(random, main, true, serial + 1));
            write(venue.boards.back(), venue.code, venue.company, 0);
        }
    }
    for (int i = 0; i < 20; ++i) {
        Board board = planBoard(random, QString::fromLatin1(random.pick(kConcessionaires).code),
                                false, serial + 1);
        write(board, QString(), registry.companies.value(i % registry.companies.size()),
              i < 8 ? 0 : 1 + (i - 8) % 3);
    }
}

}  // namespace

Registry writeRegistry(Database& db, Random& random, int venueCount, const QDate& firstDay) {
    Registry registry;
    const QDate since = firstDay.addDays(-400);
    writeCompanies(db, random, registry);

    const int width = int(QString::number(venueCount).size());
    std::vector<VenuePlan> plans(venueCount);
    int owners = 0;
    for (int i = 0; i < venueCount; ++i) {
        const QString lastOwner = i ? plans[i - 1].owner : QString();
        registry.venues.push_back(planVenue(random, i + 1, width, plans[i], lastOwner, owners));
    }

    PersonWriter people(db, random, since);
    for (int i = 1; i <= 6; ++i) {
        people.write(u"ES%1"_s.arg(i, 2, 10, QLatin1Char('0')), "Esattore",
                     u"T%1"_s.arg(i, 2, 10, QLatin1Char('0')), 0, i == 6 ? u"AZ02"_s : u"AZ01"_s);
    }
    for (int i = 1; i <= 4; ++i)
        people.write(u"AG%1"_s.arg(i, 2, 10, QLatin1Char('0')), "Agente", QString(),
                     i <= 2 ? 2.0 : 1.5, u"AZ01"_s);
    for (int i = 1; i <= owners; ++i)
        people.write(u"TI%1"_s.arg(i, 4, 10, QLatin1Char('0')), "Titolare", QString(), 0,
                     QString());

    writeChart(db, since, registry.venues);
    writeSettings(db, since);

    TableWriter venues(
        db, "AnagraficaLocali",
        "CodLocale, CatLocale, TipoLocale, Insegna, Soprannome, CAP, Indirizzo, Localita, Citta, "
        "Provincia, NumCivico, Iva, CodFisc, tel, cell, email, CodZona, tipologiaIncasso, "
        "incassoGettoni, IncassoTasse, GestioneDenaro, codTitolare, codEsattore, codAgente, "
        "dataAcquisizione, IdOperatore, idData, Sospeso, DataSosp, Descr, Rimanenza, "
        "CodiceAzienda, esTipoDitta, esDitta, esPiva, esCodf, esSedeVia, esSedeNr, esSedeCap, "
        "esSedeComune, esSedeProvincia, CodAttivita, CodMonopolio, CodiceConto, TipoVia");
    TableWriter codes(
        db, "AnagraficaLocaliCaratteristiche",
        "CodLocale, CodCogetech, CodLottomatica, CodGamenet, CodAtlantis, CodGMatica");
    for (int i = 0; i < venueCount; ++i) {
        const Venue& venue = registry.venues[i];
        const VenuePlan& plan = plans[i];
        const QString street = QString::fromLatin1(random.pick(kStreets));
        const QString number = QString::number(random.between(1, 180));
        const QString vat = digits(random, 11);
        const QString town = QString::fromUtf8(plan.town->name);
        const bool tobacco = plan.kind.contains(u"Tabacc"_s);
        const QDate acquired = since.addDays(-random.between(0, 2000));
        venues.insert(
            {venue.code, tobacco ? "TABACCHI" : "BAR", plan.kind, venue.insegna,
             venue.insegna.section(u' ', -1) + u' ' + town, plan.town->cap, street, town, town,
             plan.town->province, number, vat, vat, phone(random, "0"), phone(random, "34")},
            {u"%1@locali.it"_s.arg(venue.code.toLower()), kZones[plan.zone][0], 6,
             Value::yesNo(false), Value::yesNo(false), 1, plan.owner, venue.collector, venue.agent,
             Value::date(acquired), 1, Value::date(acquired),
             plan.sospesoNull ? Value() : Value::yesNo(!venue.active),
             venue.active ? Value() : Value::date(firstDay.addDays(-random.between(1, 90))),
             venue.active ? Value() : Value("Locale chiuso per ristrutturazione")},
            {Value::money(venue.rimanenza), venue.company,
             random.chance(0.7) ? "Ditta individuale" : "S.n.c.", venue.insegna, vat, vat, street,
             number, plan.town->cap, town, plan.town->province, "56.30.00",
             tobacco ? Value(u"TB%1"_s.arg(digits(random, 5))) : Value(), venue.account,
             street.section(u' ', 0, 0)});
        auto code = [&](const char* prefix) {
            return random.chance(0.4) ? Value()
                                      : Value(QString::fromLatin1(prefix) + digits(random, 6));
        };
        codes.insert({venue.code, code("CG"), code("LT"), code("GN"), code("AT"), code("GM")});
    }
    writeStock(db, random, since, registry);
    return registry;
}

void writeBoardState(Database& db, const Registry& registry) {
    Statement update(db,
                     u"UPDATE MagSchede SET UltimoIncasso=?, CnTotIN=?, CnTotOut=?, "
                     u"AttualeH1=?, AttualeH2=?, AttualeH3=? WHERE id=?"_s);
    for (const Venue& venue : registry.venues) {
        for (const Board& board : venue.boards) {
            update.run({Value::date(board.lastReading), board.counterIn, board.counterOut,
                        Value::money(board.level[0]), Value::money(board.level[1]),
                        Value::money(board.level[2]), board.id});
        }
    }
}

}  // namespace lorvane::demo
