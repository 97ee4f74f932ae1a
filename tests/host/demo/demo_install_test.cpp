// The demo installation, read back with the plain SQLite API: its notes add
// up, its readings follow each other, and the same options give the same data.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>
#include <memory>

#include "host/demo/cli_demo_install.h"
#include "host/demo/demo_data.h"
#include "platform/runtime_error.h"

namespace lorvane::demo {
namespace {

using namespace Qt::StringLiterals;

DemoOptions smallOptions(quint64 seed = 7) {
    DemoOptions options;
    options.venues = 40;
    options.months = 3;
    options.seed = seed;
    options.lastDay = QDate(2025, 3, 31);
    return options;
}

struct Closer {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
};
using Db = std::unique_ptr<sqlite3, Closer>;

Db openDb(const QString& path) {
    sqlite3* db = nullptr;
    EXPECT_EQ(sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr),
              SQLITE_OK);
    return Db(db);
}

// Every row of `sql` as text, one line a row; "" stands for an error.
QString dump(sqlite3* db, const char* sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &statement, nullptr) != SQLITE_OK) {
        ADD_FAILURE() << sql << ": " << sqlite3_errmsg(db);
        return {};
    }
    QString text;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            const auto* value = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
            text += (value ? QString::fromUtf8(value) : u"<null>"_s) + u'|';
        }
        text += u'\n';
    }
    sqlite3_finalize(statement);
    return text;
}

qint64 scalar(sqlite3* db, const char* sql) {
    return dump(db, sql).trimmed().chopped(1).toLongLong();
}

QByteArray fileHash(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
}

class DemoInstallTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        dir_ = new QTemporaryDir;
        folder_ = new QString(dir_->filePath(u"demo"_s));
        writeDemoInstallation(*folder_, smallOptions());
    }
    static void TearDownTestSuite() {
        delete folder_;
        delete dir_;
    }
    static Db main() { return openDb(*folder_ + u"/Lorvane.db"_s); }

    static QTemporaryDir* dir_;
    static QString* folder_;
};

QTemporaryDir* DemoInstallTest::dir_ = nullptr;
QString* DemoInstallTest::folder_ = nullptr;

TEST_F(DemoInstallTest, WritesTheFiveFilesAndNothingBeside) {
    for (const char* file :
         {"Lorvane.db", "Stampe.db", "pers/StampePers.db", "Preferenze.db", "Lorvane.ini",
          "Report/Bilancio.mdb", "Report/Bilancio.lrl", "pers/BilancioPers.lrl"}) {
        EXPECT_TRUE(QFile::exists(*folder_ + u'/' + QString::fromLatin1(file))) << file;
    }
    EXPECT_EQ(QDir(dir_->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{u"demo"_s});

    QSettings settings(*folder_ + u"/Lorvane.ini"_s, QSettings::IniFormat);
    EXPECT_EQ(
        settings.value(u"Ditta/Nome"_s).toString() + u"|\n"_s,
        dump(main().get(), "SELECT RagioneSociale FROM AnagraficaAziende ORDER BY id LIMIT 1"));
    EXPECT_EQ(settings.value(u"Utente/Nome"_s).toString(), u"admin"_s);
    EXPECT_FALSE(settings.value(u"Opzioni/Personalizzazione"_s, true).toBool());

    Db preferences = openDb(*folder_ + u"/Preferenze.db"_s);
    EXPECT_EQ(scalar(preferences.get(),
                     "SELECT COUNT(*) FROM viste WHERE Modulo='AnagLocali' AND Predefinita=-1"),
              1);
    // Each catalogue lists the trial balance, and every file it names stands where it says.
    for (const char* catalogue : {"/Stampe.db", "/pers/StampePers.db"}) {
        Db menu = openDb(*folder_ + QString::fromLatin1(catalogue));
        EXPECT_EQ(
            scalar(menu.get(), "SELECT COUNT(*) FROM stampe WHERE codiceStampa='StampaBilancio'"),
            1);
        const QString files = dump(menu.get(), "SELECT NomeReport, nomeTemporaneo FROM stampe");
        for (const QString& cell : files.split(u'|', Qt::SkipEmptyParts)) {
            const QString file = cell.trimmed();  // the next row's first cell follows a newline
            if (file.isEmpty()) continue;
            EXPECT_TRUE(QFile::exists(*folder_ + u'/' + QString(file).replace(u'\\', u'/')))
                << file.toStdString();
        }
    }
}

TEST_F(DemoInstallTest, CollectionTotalsAddUp) {
    Db db = main();
    EXPECT_GT(scalar(db.get(), "SELECT COUNT(*) FROM NoteTeste WHERE CodCausale='INC6'"), 300);
    EXPECT_EQ(
        scalar(db.get(),
               "SELECT COUNT(*) FROM NoteTeste nt LEFT JOIN (SELECT IdTesta, SUM(ParzialeIn) i,"
               " SUM(ParzialeOut) o, SUM(Preu) p, SUM(AAms) a, SUM(Rete) r FROM NoteIncassi"
               " GROUP BY IdTesta) s ON s.IdTesta=nt.id WHERE nt.CodCausale='INC6' AND ("
               " s.IdTesta IS NULL OR ABS(TotIntrodotto-s.i)>0.005 OR ABS(TotUscite-s.o)>0.005"
               " OR ABS(TotPreu-s.p)>0.005 OR ABS(TotAAMS-s.a)>0.005 OR ABS(TotRETE-s.r)>0.005"
               " OR ABS(TotDaDividere-(TotIntrodotto-TotUscite-TotPreu-TotAAMS-TotRETE))>0.005"
               " OR ABS(UtileLocale-TotDaDividere/2.0)>0.00501"
               " OR ABS(UtileNoleggiatore-(TotDaDividere-UtileLocale))>0.005"
               " OR ABS(VersatoALocale-UtileLocale)>0.005"
               " OR ABS(Riscosso-(TotIntrodotto-TotUscite))>0.005)"),
        0);
    // Each machine's taxes are those of its own takings.
    EXPECT_EQ(
        scalar(db.get(),
               "SELECT COUNT(*) FROM NoteIncassi WHERE PercPreu IS NOT NULL AND ("
               " ABS(Preu-ParzialeIn*PercPreu/100)>0.00501 OR ABS(AAms-ParzialeIn*PercAAMS/100)"
               ">0.00501 OR ABS(IncassoNs+IncassoVs-(ParzialeIn-ParzialeOut-Preu-AAms-Rete))"
               ">0.005 OR ParzialeOut>=ParzialeIn)"),
        0);
    EXPECT_GT(scalar(db.get(),
                     "SELECT COUNT(*) FROM NoteTeste WHERE CodCausale='INC6' AND "
                     "Arrotondamenti IS NULL"),
              0);
}

TEST_F(DemoInstallTest, EveryNoteBalancesOnAccountsOfTheChart) {
    Db db = main();
    EXPECT_GT(scalar(db.get(), "SELECT COUNT(*) FROM NoteRighe"), 1000);
    EXPECT_EQ(scalar(db.get(),
                     "SELECT COUNT(*) FROM (SELECT IdTesta FROM NoteRighe GROUP BY IdTesta"
                     " HAVING ABS(SUM(Dare)-SUM(Avere))>0.005)"),
              0);
    EXPECT_EQ(scalar(db.get(),
                     "SELECT COUNT(*) FROM NoteRighe WHERE CodConto NOT IN"
                     " (SELECT CodiceConto FROM AnagraficaPianoConti)"),
              0);
    EXPECT_EQ(scalar(db.get(),
                     "SELECT COUNT(*) FROM NoteTeste WHERE CodCausale IN"
                     " ('INC6','PRE','ACC','REF','INC','FUR')"
                     " AND id NOT IN (SELECT IdTesta FROM NoteRighe)"),
              0);
}

TEST_F(DemoInstallTest, ReadingsOfABoardFollowEachOther) {
    Db db = main();
    sqlite3_stmt* statement = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(db.get(),
                                 "SELECT ni.LinkScheda, ni.DataIncasso, ni.ContatoreIN,"
                                 " ni.ContatoreOut, ni.VecchioContatoreIN, ni.VecchioContatoreOut,"
                                 " ni.DataVecchioContatore, ROUND(ni.ParzialeIn*100),"
                                 " ROUND(ni.ParzialeOut*100), nt.CodCausale FROM NoteIncassi ni"
                                 " JOIN NoteTeste nt ON nt.id=ni.IdTesta"
                                 " WHERE ni.LinkScheda IS NOT NULL"
                                 " ORDER BY ni.LinkScheda, ni.DataIncasso, ni.id",
                                 -1, &statement, nullptr),
              SQLITE_OK);
    qint64 board = -1, in = 0, out = 0;
    QString day;
    int rows = 0, failures = 0;
    while (sqlite3_step(statement) == SQLITE_ROW && failures < 5) {
        auto integer = [&](int i) { return sqlite3_column_int64(statement, i); };
        auto text = [&](int i) {
            return QString::fromUtf8(
                reinterpret_cast<const char*>(sqlite3_column_text(statement, i)));
        };
        const bool collection = text(9) == u"INC6"_s;
        const bool sameBoard = integer(0) == board;
        const bool ok = integer(7) == 100 * (integer(2) - integer(4)) &&
                        integer(8) == 100 * (integer(3) - integer(5)) &&
                        (!collection || (integer(2) > integer(4) && integer(3) >= integer(5))) &&
                        (!sameBoard || (integer(4) == in && integer(5) == out && text(6) == day));
        if (!ok) {
            ++failures;
            ADD_FAILURE() << "board " << integer(0) << " at " << text(1).toStdString();
        }
        board = integer(0);
        in = integer(2);
        out = integer(3);
        day = text(1);
        ++rows;
    }
    sqlite3_finalize(statement);
    EXPECT_GT(rows, 500);

    // The board's own state is that of its last collection.
    EXPECT_EQ(scalar(db.get(),
                     "SELECT COUNT(*) FROM MagSchede ms JOIN NoteIncassi ni ON ni.LinkScheda=ms.id"
                     " AND ni.UltimaLettura=-1 WHERE ms.UltimoIncasso<>ni.DataIncasso"
                     " OR ms.CnTotIN<>ni.ContatoreIN OR ms.CnTotOut<>ni.ContatoreOut"),
              0);
}

TEST_F(DemoInstallTest, DatesAreTextAndFlagsAreYesNo) {
    const std::pair<const char*, const char*> dates[] = {
        {"NoteTeste", "DataRegistrazione"}, {"NoteRighe", "Data"},
        {"NoteIncassi", "DataIncasso"},     {"NoteIncassi", "DataVecchioContatore"},
        {"MagSchede", "UltimoIncasso"},     {"QuietanzaTesta", "DaData"},
        {"QuietanzaRighe", "aData"},        {"DocTeste", "DataDoc"},
        {"AnagraficaLocali", "DataSosp"},   {"MagProdottoFinito", "DataAssemblaggio"},
    };
    const std::pair<const char*, const char*> flags[] = {
        {"NoteTeste", "Chiuso"},          {"MagSchede", "Obsoleto"},
        {"MagSchede", "Venduto"},         {"MagSchede", "Dismesso"},
        {"AnagraficaLocali", "Sospeso"},  {"AnagraficaCausali", "Cassa"},
        {"NoteIncassi", "UltimaLettura"}, {"ZPers", "RegistroCorrispettivi"},
    };
    Db db = main();
    for (const auto& [table, column] : dates) {
        const QByteArray sql =
            u"SELECT COUNT(*) FROM %1 WHERE %2 IS NOT NULL AND (typeof(%2)<>'text'"
            u" OR length(%2)<>19 OR %2 NOT GLOB '[12][0-9][0-9][0-9]-[01][0-9]-"
            u"[0-3][0-9] [0-2][0-9]:[0-5][0-9]:[0-5][0-9]')"_s
                .arg(QString::fromLatin1(table), QString::fromLatin1(column))
                .toUtf8();
        EXPECT_EQ(scalar(db.get(), sql.constData()), 0) << table << "." << column;
    }
    for (const auto& [table, column] : flags) {
        const QByteArray sql = u"SELECT COUNT(*) FROM %1 WHERE %2 NOT IN (-1, 0)"_s
                                   .arg(QString::fromLatin1(table), QString::fromLatin1(column))
                                   .toUtf8();
        EXPECT_EQ(scalar(db.get(), sql.constData()), 0) << table << "." << column;
    }
}

// What the reports select on must be there to be selected.
TEST_F(DemoInstallTest, HoldsWhatTheReportsSelect) {
    struct Case {
        const char* what;
        const char* sql;
        qint64 minimum;
        qint64 maximum;
    };
    const Case cases[] = {
        {"causali named in the code",
         "SELECT COUNT(*) FROM AnagraficaCausali WHERE CodiceCausale IN"
         " ('INC6','INC','FUR','PRE','ACC','REF','CH','CAM')",
         8, 8},
        {"register causali",
         "SELECT COUNT(*) FROM AnagraficaCausali WHERE RegistroCorrispettivi<>0 AND CodiceCausale "
         "IN"
         " ('INC6','INC','FUR')",
         3, 3},
        {"customer accounts",
         "SELECT COUNT(*) FROM AnagraficaPianoConti WHERE CodiceConto LIKE"
         " '03.%' AND LivelloConto=2 AND TipoConto=0 AND Mastro='03'",
         43, 43},  // one per venue, the three suspended venues of the ledger cases too
        {"venues without their account",
         "SELECT COUNT(*) FROM AnagraficaLocali WHERE CodiceConto"
         " NOT IN (SELECT CodiceConto FROM AnagraficaPianoConti)",
         0, 0},
        {"linked accounts missing",
         "SELECT COUNT(*) FROM TabAssociazioneConti WHERE CassaAcconti NOT IN"
         " (SELECT CodiceConto FROM AnagraficaPianoConti) OR PrestitiALocale"
         " NOT IN (SELECT CodiceConto FROM AnagraficaPianoConti)",
         0, 0},
        {"venues whose people are unknown",
         "SELECT COUNT(*) FROM AnagraficaLocali al WHERE NOT EXISTS (SELECT 1 FROM "
         "AnagraficaOperatori"
         " WHERE codiceOperatore=al.codTitolare AND Mansione='Titolare') OR NOT EXISTS (SELECT 1 "
         "FROM"
         " AnagraficaOperatori WHERE codiceOperatore=al.codEsattore AND Mansione='Esattore')",
         0, 0},
        {"boards of the payout report",
         "SELECT COUNT(*) FROM MagSchede WHERE Obsoleto=0 AND Venduto=0"
         " AND Dismesso=0 AND TipologiaIncasso=6",
         40, 500},
        {"boards out of use in a venue",
         "SELECT COUNT(*) FROM MagSchede WHERE CodLocale IS NOT NULL AND"
         " (Obsoleto=-1 OR Venduto=-1 OR Dismesso=-1)",
         0, 0},
        {"boards in the store: 20 of the round, 6 of the label cases",
         "SELECT COUNT(*) FROM MagSchede WHERE CodLocale IS NULL AND"
         " CodMagazzino='MAG1'",
         26, 26},
        {"placed boards without product",
         "SELECT COUNT(*) FROM MagSchede WHERE CodLocale IS NOT NULL"
         " AND id NOT IN (SELECT linkScheda FROM MagProdottoDistinta)",
         0, 0},
        {"loans waiting for their variation",
         "SELECT COUNT(*) FROM (NoteTeste nt INNER JOIN NoteRighe nr ON nr.idtesta=nt.id) INNER "
         "JOIN"
         " TabAssociazioneConti tac ON tac.PrestitiALocale=nr.CodConto WHERE CodCausale='PRE' AND"
         " (nt.VarPrestito=0 OR nt.VarPrestito IS NULL)",
         1, 1000},
        {"hopper readings",
         "SELECT COUNT(*) FROM NoteIncassi ni JOIN NoteTeste nt ON nt.id=ni.IdTesta"
         " WHERE nt.CodCausale='CH' AND ni.HopperOLD1 IS NOT NULL",
         40, 1000},
        {"change-machine readings",
         "SELECT COUNT(*) FROM NoteIncassi ni JOIN NoteTeste nt ON"
         " nt.id=ni.IdTesta WHERE nt.CodCausale='CAM'",
         1, 1000},
        {"open advances",
         "SELECT COUNT(*) FROM NoteTeste WHERE CodCausale='ACC' AND (Chiuso=0 OR"
         " Chiuso IS NULL)",
         1, 1000},
        {"collections of the last week left open",
         "SELECT COUNT(*) FROM NoteTeste WHERE CodCausale='INC6' AND ((DataRegistrazione>="
         "'2025-03-25' AND Chiuso<>0) OR (DataRegistrazione<'2025-03-25' AND Chiuso<>-1))",
         0, 0},
        {"deed lines without company",
         "SELECT COUNT(*) FROM DocTeste dt INNER JOIN DocRighe dr ON dr.IdDoc=dt.id WHERE "
         "dt.TipoDoc=8"
         " AND dr.CodiceAzienda IS NULL AND dt.CodSpettabile IS NOT NULL",
         1, 1000},
        {"quittances whose sums differ from their lines",
         "SELECT COUNT(*) FROM QuietanzaTesta qt WHERE ABS(SommaIN -"
         " (SELECT SUM(ContatoreIN-OldIN) FROM QuietanzaRighe WHERE idTesta=qt.id))>0.005",
         0, 0},
        {"credit notes beside the slips",
         "SELECT COUNT(*) FROM QuietanzaTesta WHERE TipoDocumento<>1", 1, 1000},
        {"slip rows read before their slip's period",
         "SELECT COUNT(*) FROM QuietanzaRighe qr, QuietanzaTesta qt WHERE qr.idTesta=qt.id AND"
         " qr.aData<qt.DaData",
         1, 1000},
        {"quittance slips of January",
         "SELECT COUNT(*) FROM QuietanzaRighe qr, QuietanzaTesta qt"
         " WHERE qr.idTesta=qt.id AND qt.TipoDocumento=1 AND"
         " qr.aData>='2025-01-01' AND qr.aData<'2025-02-01'",
         40, 500},
    };
    Db db = main();
    for (const Case& c : cases) {
        const qint64 count = scalar(db.get(), c.sql);
        EXPECT_GE(count, c.minimum) << c.what;
        EXPECT_LE(count, c.maximum) << c.what;
    }
}

TEST_F(DemoInstallTest, SameOptionsSameDataAnotherSeedOther) {
    QTemporaryDir dir;
    writeDemoInstallation(dir.filePath(u"again"_s), smallOptions());
    writeDemoInstallation(dir.filePath(u"other"_s), smallOptions(8));
    EXPECT_EQ(fileHash(dir.filePath(u"again/Lorvane.db"_s)), fileHash(*folder_ + u"/Lorvane.db"_s));

    const char* const tables[] = {"SELECT * FROM NoteTeste ORDER BY id",
                                  "SELECT * FROM NoteIncassi ORDER BY id",
                                  "SELECT * FROM AnagraficaLocali ORDER BY id"};
    Db first = main();
    Db again = openDb(dir.filePath(u"again/Lorvane.db"_s));
    Db other = openDb(dir.filePath(u"other/Lorvane.db"_s));
    for (const char* sql : tables) {
        const QString expected = dump(first.get(), sql);
        EXPECT_FALSE(expected.isEmpty()) << sql;
        EXPECT_EQ(dump(again.get(), sql), expected) << sql;
        EXPECT_NE(dump(other.get(), sql), expected) << sql;
    }
}

TEST_F(DemoInstallTest, RefusesAnExistingInstallationAndLeavesItAlone) {
    const QByteArray before = fileHash(*folder_ + u"/Lorvane.db"_s);
    const QByteArray settings = fileHash(*folder_ + u"/Lorvane.ini"_s);
    EXPECT_THROW(writeDemoInstallation(*folder_, smallOptions(9)), RuntimeError);
    EXPECT_EQ(fileHash(*folder_ + u"/Lorvane.db"_s), before);
    EXPECT_EQ(fileHash(*folder_ + u"/Lorvane.ini"_s), settings);

    // One file of an installation is enough to refuse it.
    QTemporaryDir dir;
    QFile stray(dir.filePath(u"Preferenze.db"_s));
    ASSERT_TRUE(stray.open(QIODevice::WriteOnly));
    stray.close();
    EXPECT_THROW(writeDemoInstallation(dir.path(), smallOptions()), RuntimeError);
    EXPECT_FALSE(QFile::exists(dir.filePath(u"Lorvane.db"_s)));
}

TEST(DemoInstallCommand, RefusesBadArgumentsWithExitTwo) {
    QTemporaryDir dir;
    const QString folder = dir.filePath(u"cli"_s);
    const QStringList cases[] = {
        {},
        {folder, u"--venues"_s},
        {folder, u"--venues"_s, u"0"_s},
        {folder, u"--months"_s, u"tre"_s},
        {folder, u"--seed"_s, u"-1"_s},
        {folder, u"--today"_s, u"31/02/2025"_s},
        {folder, u"--today"_s, u"2025-03-15"_s},
        {folder, u"--colori"_s},
        {folder, dir.filePath(u"altra"_s)},
    };
    for (const QStringList& args : cases) {
        QString outText, errText;
        QTextStream out(&outText), err(&errText);
        EXPECT_EQ(runDemoInstallCommand(args, out, err), 2) << args.join(u' ').toStdString();
        EXPECT_FALSE(errText.trimmed().isEmpty()) << args.join(u' ').toStdString();
        EXPECT_TRUE(outText.isEmpty());
    }
    EXPECT_FALSE(QFile::exists(folder));
}

TEST(DemoInstallCommand, InstallsAndSummarises) {
    QTemporaryDir dir;
    const QString folder = dir.filePath(u"cli"_s);
    QString outText, errText;
    QTextStream out(&outText), err(&errText);
    ASSERT_EQ(runDemoInstallCommand({folder, u"--venues"_s, u"5"_s, u"--months"_s, u"1"_s,
                                     u"--today"_s, u"15/03/2025"_s},
                                    out, err),
              0)
        << errText.toStdString();
    EXPECT_TRUE(outText.contains(u"5 locali"_s)) << outText.toStdString();
    Db db = openDb(folder + u"/Lorvane.db"_s);
    EXPECT_TRUE(
        outText.contains(u"%1 note"_s.arg(scalar(db.get(), "SELECT COUNT(*) FROM NoteTeste"))))
        << outText.toStdString();
    EXPECT_EQ(
        scalar(db.get(), "SELECT MAX(DataRegistrazione)<='2025-03-15 00:00:00' FROM NoteTeste"), 1);

    QString again;
    QTextStream againOut(&again);
    EXPECT_EQ(runDemoInstallCommand({folder}, againOut, err), 2);
}

}  // namespace
}  // namespace lorvane::demo
