// Reports end to end, as a user scripts them: "lorvane run" on a demo
// installation exports them, and readers nobody here wrote find in the files
// the totals that a plain SQL sum gives.
#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "host/demo/demo_data.h"
#include "host/demo/demo_document_cases.h"
#include "reports/documents/importo_in_lettere.h"
#include "support/process.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
using testing::ProcessResult;
using testing::runProgram;

class ReportRun : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        scratch = new QTemporaryDir;
        demo::DemoOptions options;
        options.venues = 20;
        options.months = 4;
        options.seed = 7;
        options.lastDay = QDate(2025, 4, 30);
        demo::writeDemoInstallation(installation(), options);
    }
    static void TearDownTestSuite() { delete scratch; }
    static QString installation() { return scratch->filePath(u"demo"_s); }

    ProcessResult lorvane(const QStringList& args) {
        return runProgram(QString::fromUtf8(LORVANE_PROGRAM), args, {},
                          {u"LORVANE_TEMP1="_s + scratch->filePath(u"temp1"_s),
                           u"LORVANE_REGISTRY="_s + scratch->filePath(u"components.ini"_s)});
    }

    // The file a run opened (its "FILE" line), empty when none.
    static QString openedFile(const ProcessResult& run) {
        return QRegularExpression(u"^FILE (.+)$"_s, QRegularExpression::MultilineOption)
            .match(run.out)
            .captured(1);
    }
    // The text of a PDF as pdftotext lays it out.
    static QString pdfText(const QString& pdf) {
        return runProgram(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s}).out;
    }

    // Exports the balance of the first four months of 2025 with `button`;
    // gives the path of the file opened.
    QString exportBalance(const QString& button) {
        const ProcessResult run =
            lorvane({u"run"_s, u"StampaBilancio"_s, u"--percorso"_s, installation(), u"--today"_s,
                     u"30/04/2025"_s, u"set"_s, u"txtDallaData=01/01/2025"_s, u"set"_s,
                     u"txtAllaData=30/04/2025"_s, u"set"_s, u"chkContiPatrimoniali=1"_s, u"set"_s,
                     u"chkContiEconomici=1"_s, u"pick"_s, u"List1=0"_s, u"click"_s, button});
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        const QRegularExpressionMatch file =
            QRegularExpression(u"^FILE (.+)$"_s, QRegularExpression::MultilineOption)
                .match(run.out);
        EXPECT_TRUE(file.hasMatch()) << run.out.toStdString();
        EXPECT_FALSE(run.out.contains(u"MSG "_s)) << run.out.toStdString();
        return file.captured(1);
    }

    // Debit and credit of every accounting line of the period, in cents,
    // summed by the program's SQL tool.
    std::pair<qint64, qint64> linesOfThePeriod() {
        const ProcessResult sum =
            lorvane({u"sql"_s, installation() + u"/Lorvane.db"_s,
                     u"SELECT Round(Sum(Dare) * 100, 0), Round(Sum(Avere) * 100, 0) FROM NoteRighe "
                     u"WHERE Data >= #01/01/2025# AND Data <= #04/30/2025#"_s});
        const QStringList cells = sum.out.trimmed().section(u'\n', -1).remove(u'"').split(u',');
        return {cells.value(0).toLongLong(), cells.value(1).toLongLong()};
    }

    static inline QTemporaryDir* scratch = nullptr;
};

// "1.234.567,89" as cents.
qint64 cents(QString amount) { return amount.remove(u'.').remove(u',').toLongLong(); }

// A file where the export folder should be: the PDF cannot be written, the
// user reads why, no file is opened, and a batch script sees status 3.
TEST_F(ReportRun, AnExportThatFailsEndsTheRunWithItsOwnStatus) {
    QDir exportFolder(installation() + u"/export"_s);
    ASSERT_TRUE(exportFolder.mkpath(u"."_s));
    const bool hadPdfFolder = exportFolder.exists(u"pdf"_s);
    if (hadPdfFolder) {
        ASSERT_TRUE(exportFolder.rename(u"pdf"_s, u"pdf.da-parte"_s));
    }
    QFile blocker(exportFolder.filePath(u"pdf"_s));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    const ProcessResult run =
        lorvane({u"run"_s, u"StampaBilancio"_s, u"--percorso"_s, installation(), u"--today"_s,
                 u"30/04/2025"_s, u"set"_s, u"chkContiEconomici=1"_s, u"pick"_s, u"List1=0"_s,
                 u"click"_s, u"CmdPdf"_s});
    blocker.remove();
    if (hadPdfFolder) exportFolder.rename(u"pdf.da-parte"_s, u"pdf"_s);
    EXPECT_EQ(run.exitCode, 3) << run.out.toStdString() << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(
        QRegularExpression(u"^MSG .*Impossibile scrivere il file '.*StampaBilancio\\d+\\.pdf': "
                           u"'.*pdf' è un file, non una cartella\\.$"_s,
                           QRegularExpression::MultilineOption)))
        << run.out.toStdString();
    EXPECT_FALSE(run.out.contains(u"FILE "_s)) << run.out.toStdString();
}

TEST_F(ReportRun, ThePdfTotalsAreTheLinesOfThePeriod) {
    const auto [dare, avere] = linesOfThePeriod();
    ASSERT_GT(dare, 0);
    EXPECT_EQ(dare, avere) << "every note balances";

    const QString pdf = exportBalance(u"CmdPdf"_s);
    EXPECT_TRUE(pdf.endsWith(u".pdf"_s) && pdf.contains(u"/export/pdf/StampaBilancio"_s))
        << pdf.toStdString();
    const QString text = pdfText(pdf);
    EXPECT_TRUE(text.contains(u"Dal 01/01/2025 Al 30/04/2025 - Conti Patrimoniali ed Economici"_s));
    const QRegularExpressionMatch total =
        QRegularExpression(
            u"Totale generale\\s+([\\d.]+,\\d\\d)\\s+([\\d.]+,\\d\\d)\\s+(-?[\\d.]+,\\d\\d)"_s)
            .match(text);
    ASSERT_TRUE(total.hasMatch()) << text.right(600).toStdString();
    EXPECT_EQ(cents(total.captured(1)), dare);
    EXPECT_EQ(cents(total.captured(2)), avere);
    EXPECT_EQ(cents(total.captured(3)), 0);
}

TEST_F(ReportRun, TheWorkbookHoldsTheSameFiguresAsNumbers) {
    const auto [dare, avere] = linesOfThePeriod();
    const QString xls = exportBalance(u"CmdExportExcel"_s);
    EXPECT_TRUE(xls.contains(u"/export/Xls/StampaBilancio"_s)) << xls.toStdString();
    // The numbers of the row that reads "Totale generale".
    const char* grandTotal =
        "import sys, xlrd\n"
        "s = xlrd.open_workbook(sys.argv[1]).sheet_by_index(0)\n"
        "for r in range(s.nrows):\n"
        "    if 'Totale generale' in [str(v) for v in s.row_values(r)]:\n"
        "        print(' '.join('%d' % round(c.value * 100) for c in s.row(r)\n"
        "                       if c.ctype == xlrd.XL_CELL_NUMBER))\n";
    const QString figures =
        runProgram(u"/usr/bin/python3"_s, {u"-c"_s, QString::fromUtf8(grandTotal), xls})
            .out.trimmed();
    EXPECT_EQ(figures, u"%1 %2 0"_s.arg(dare).arg(avere));
}

// The takings of every venue over the period: the PDF's grand total of
// TotIntrodotto is the program's SQL sum over the same notes.
TEST_F(ReportRun, TheTakingsGrandTotalIsTheSumOfTheNotes) {
    const ProcessResult run =
        lorvane({u"run"_s, u"StampaIntrodotto"_s, u"--percorso"_s, installation(), u"--today"_s,
                 u"30/04/2025"_s, u"set"_s, u"txtDallaData=01/02/2025"_s, u"set"_s,
                 u"txtAllaData=31/03/2025"_s, u"pick"_s, u"List1=0"_s, u"click"_s, u"CmdPdf"_s});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_FALSE(run.out.contains(u"MSG "_s)) << run.out.toStdString();
    const QString pdf = openedFile(run);
    const QString text = pdfText(pdf);
    const QRegularExpressionMatch total =
        QRegularExpression(u"Totale generale\\s+([\\d.]+,\\d\\d)"_s).match(text);
    ASSERT_TRUE(total.hasMatch()) << text.right(600).toStdString();

    const ProcessResult sum = lorvane(
        {u"sql"_s, installation() + u"/Lorvane.db"_s,
         u"SELECT Round(Sum(TotIntrodotto) * 100, 0) FROM NoteTeste WHERE CodCausale = 'INC6' "
         u"AND DataRegistrazione >= #02/01/2025# AND DataRegistrazione <= #03/31/2025# AND "
         u"id IN (SELECT IdTesta FROM NoteIncassi) AND CodLocale IN (SELECT CodLocale FROM "
         u"AnagraficaLocali WHERE Sospeso = 0)"_s});
    const qint64 expected = sum.out.trimmed().section(u'\n', -1).remove(u'"').toLongLong();
    EXPECT_GT(expected, 0);
    EXPECT_EQ(cents(total.captured(1)), expected);
}

// Each venue's receipt, one a page, shows in words the sum of the venue's
// share that a plain SQL statement gives: a venue of the round and the
// venue whose sum is negative.
TEST_F(ReportRun, TheReceiptShowsTheVenuesShareInWords) {
    const ProcessResult run =
        lorvane({u"run"_s, u"SommeConsegnate"_s, u"--percorso"_s, installation(), u"--today"_s,
                 u"30/04/2025"_s, u"pick"_s, u"List1=0"_s, u"click"_s, u"CmdPdf"_s});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_FALSE(run.out.contains(u"MSG "_s)) << run.out.toStdString();
    const QString pdf = openedFile(run);
    const QStringList pages = pdfText(pdf).split(u'\f', Qt::SkipEmptyParts);
    const QString collected =
        lorvane({u"sql"_s, installation() + u"/Lorvane.db"_s,
                 u"SELECT Min(CodLocale) FROM NoteTeste WHERE CodCausale = 'INC6' AND "
                 u"DataRegistrazione >= #04/01/2025# AND DataRegistrazione <= #04/30/2025#"_s})
            .out.trimmed()
            .section(u'\n', -1)
            .remove(u'"');
    for (const QString& venue : {collected, QString::fromLatin1(demo::DocumentCaseVenue)}) {
        const ProcessResult sum = lorvane(
            {u"sql"_s, installation() + u"/Lorvane.db"_s,
             u"SELECT Sum(UtileLocale) FROM NoteTeste WHERE CodLocale = '"_s + venue +
                 u"' AND CodCausale IN ('INC6', 'INC') AND DataRegistrazione >= #04/01/2025# AND "
                 u"DataRegistrazione <= #04/30/2025#"_s});
        double amount =
            sum.out.trimmed().section(u'\n', -1).remove(u'"').replace(u',', u'.').toDouble();
        EXPECT_NE(amount, 0) << sum.out.toStdString() << sum.err.toStdString();
        const QString words = reports::ModSommeConsegnate::ImportoInLettere(amount, u"/"_s);
        const QStringList found =
            pages.filter(QRegularExpression(u"Codice\\s+"_s + venue + u"\\b"_s));
        ASSERT_EQ(found.size(), 1) << venue.toStdString();
        EXPECT_TRUE(found.first().contains(words)) << words.toStdString() << "\n"
                                                   << found.first().toStdString();
        EXPECT_EQ(found.first().count(u"RICEVUTA DI CONSEGNA SOMME AL LOCALE"_s), 1);
    }
}

// The figure of a machine report's grand total row that a plain SQL statement
// on the main database gives too.
struct MachineRow {
    const char* code;
    QStringList actions;
    const char* total;  // the pattern of the figure on the grand total row of the PDF
    QString sql;        // the same figure, to two decimals
};

class MachineReportRun : public ReportRun, public ::testing::WithParamInterface<MachineRow> {};

// The levels of the last note of causale `causale` of every board of a venue
// not suspended, summed.
QString lastNotes(const QString& causale, const QString& extra = {}) {
    return u"SELECT Round(Sum(Nz(ni.LivelloH1, 0) + Nz(ni.LivelloH2, 0) + Nz(ni.Livelloh3, 0)), "
           u"2) FROM NoteIncassi ni INNER JOIN NoteTeste nt ON nt.id = ni.IdTesta WHERE "
           u"nt.CodCausale = '%1' AND ni.DataIncasso = (SELECT Max(n2.DataIncasso) FROM "
           u"NoteIncassi n2 INNER JOIN NoteTeste t2 ON t2.id = n2.IdTesta WHERE t2.CodCausale = "
           u"'%1' AND n2.LinkScheda = ni.LinkScheda) AND ni.LinkScheda IN (SELECT id FROM "
           u"MagSchede WHERE CodLocale IN (SELECT CodLocale FROM AnagraficaLocali WHERE Sospeso "
           u"= 0))%2"_s.arg(causale, extra);
}

TEST_P(MachineReportRun, TheGrandTotalIsThatOfTheMainDatabaseInPdfAndWorkbook) {
    const MachineRow& row = GetParam();
    QStringList pdfArgs{u"run"_s,        QString::fromLatin1(row.code),
                        u"--percorso"_s, installation(),
                        u"--today"_s,    u"30/04/2025"_s};
    pdfArgs << row.actions << u"pick"_s << u"List1=0"_s << u"click"_s;
    QStringList xlsArgs = pdfArgs;
    const auto exported = [&](QStringList args, const char* button) {
        const ProcessResult run = lorvane(args << QString::fromLatin1(button));
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        EXPECT_FALSE(run.out.contains(u"MSG "_s)) << run.out.toStdString();
        return openedFile(run);
    };
    const QString text = pdfText(exported(pdfArgs, "CmdPdf"));
    const QRegularExpressionMatch total =
        QRegularExpression(u"Totale generale"_s + QString::fromLatin1(row.total)).match(text);
    ASSERT_TRUE(total.hasMatch()) << text.right(600).toStdString();

    const ProcessResult sum = lorvane({u"sql"_s, installation() + u"/Lorvane.db"_s, row.sql});
    // Both as "1234.50".
    const QString expected = QString::number(
        sum.out.trimmed().section(u'\n', -1).remove(u'"').replace(u',', u'.').toDouble(), 'f', 2);
    EXPECT_NE(expected, u"0.00"_s) << sum.out.toStdString() << sum.err.toStdString();
    EXPECT_EQ(total.captured(1).remove(u'.').replace(u',', u'.'), expected);

    // The last number of the workbook's grand total row.
    const char* lastFigure =
        "import sys, xlrd\n"
        "s = xlrd.open_workbook(sys.argv[1]).sheet_by_index(0)\n"
        "for r in range(s.nrows):\n"
        "    if 'Totale generale' in [str(v) for v in s.row_values(r)]:\n"
        "        print('%.2f' % [c.value for c in s.row(r) if c.ctype == "
        "xlrd.XL_CELL_NUMBER][-1])\n";
    const QString figure =
        runProgram(u"/usr/bin/python3"_s,
                   {u"-c"_s, QString::fromUtf8(lastFigure), exported(xlsArgs, "CmdExportExcel")})
            .out.trimmed();
    EXPECT_EQ(figure, expected);
}

INSTANTIATE_TEST_SUITE_P(
    Machines, MachineReportRun,
    ::testing::Values(
        MachineRow{"PercPagamentoG",
                   {u"set"_s, u"txtDallaData=01/04/2025"_s},
                   "\\s+[\\d.]+,\\d\\d\\s+[\\d.]+,\\d\\d\\s+(\\d+,\\d\\d)",
                   u"SELECT Round(100 * Sum(CnTotOut * MoltiplicatoreOut) / Sum(CnTotIN * "
                   "MoltiplicatoreIN), 2) FROM MagSchede WHERE Obsoleto = 0 AND Venduto = 0 AND "
                   "Dismesso = 0 AND TipologiaIncasso = 6 AND UltimoIncasso >= #04/01/2025# AND "
                   "UltimoIncasso <= #04/30/2025# AND CodLocale IS NOT NULL"_s},
        MachineRow{"PercPagamentoP",
                   {u"set"_s, u"txtDallaData=01/02/2025"_s, u"set"_s, u"txtAllaData=31/03/2025"_s},
                   "\\s+[\\d.]+\\s+[\\d.]+,\\d\\d\\s+[\\d.]+,\\d\\d\\s+(\\d+,\\d\\d)",
                   u"SELECT Round(100 * Sum(ni.ParzialeOut) / Sum(ni.ParzialeIn), 2) FROM "
                   "NoteIncassi ni INNER JOIN NoteTeste nt ON nt.id = ni.IdTesta WHERE "
                   "ni.DataIncasso >= #02/01/2025# AND ni.DataIncasso <= #03/31/2025# AND "
                   "nt.CodCausale = 'INC6'"_s},
        MachineRow{
            "SaldiHopper", {}, "(?:\\s+[\\d.]+,\\d\\d){3}\\s+([\\d.]+,\\d\\d)", lastNotes(u"CH"_s)},
        MachineRow{"SaldiCambiamonete",
                   {u"set"_s, u"txtData=15/04/2025"_s},
                   "(?:\\s+[\\d.]+,\\d\\d){3}\\s+([\\d.]+,\\d\\d)",
                   lastNotes(u"CAM"_s, u" AND ni.DataIncasso <= #04/15/2025#"_s)}),
    [](const ::testing::TestParamInfo<MachineRow>& info) { return std::string(info.param.code); });

// The ledger cards for one venue and one account, and for one account alone:
// the closing balance printed is the sum of debit less credit of every line
// of the account up to the last day, whatever lies before the period.
struct CardRow {
    const char* code;
    // The actions that choose the account `account` (and the venue `venue`)
    // at position `index` of its list.
    QStringList (*choose)(const QString& venue, const QString& index);
    const char* account;  // SQL giving the account's code
};

class LedgerCardRun : public ReportRun, public ::testing::WithParamInterface<CardRow> {
  protected:
    QString scalar(const QString& sql) {
        return lorvane({u"sql"_s, installation() + u"/Lorvane.db"_s, sql})
            .out.trimmed()
            .section(u'\n', -1)
            .remove(u'"');
    }
};

TEST_P(LedgerCardRun, TheClosingBalanceIsThatOfEveryLineUpToTheEnd) {
    const CardRow& row = GetParam();
    const QString venue =
        scalar(u"SELECT Min(CodLocale) FROM AnagraficaLocali WHERE Sospeso = 0"_s);
    const QString account = scalar(QString::fromLatin1(row.account).arg(venue));
    ASSERT_FALSE(account.isEmpty());
    // The venue's account among the customer accounts, any account in the chart.
    const QString index =
        scalar(QLatin1String(row.code) == QLatin1String("StampaSchedaLocale")
                   ? u"SELECT Count(*) FROM AnagraficaPianoConti WHERE CodiceConto LIKE '03.%' AND "
                     u"LivelloConto = 2 AND id < (SELECT id FROM AnagraficaPianoConti WHERE "
                     u"CodiceConto = '"_s +
                         account + u"')"_s
                   : u"SELECT Count(*) FROM AnagraficaPianoConti WHERE CodiceConto < '"_s +
                         account + u"'"_s);
    QStringList args{u"run"_s,        QString::fromLatin1(row.code),
                     u"--percorso"_s, installation(),
                     u"--today"_s,    u"30/04/2025"_s,
                     u"set"_s,        u"txtDallaData=01/03/2025"_s,
                     u"set"_s,        u"txtAllaData=31/03/2025"_s};
    args << row.choose(venue, index) << u"pick"_s << u"List1=0"_s << u"click"_s << u"CmdPdf"_s;
    const ProcessResult run = lorvane(args);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_FALSE(run.out.contains(u"MSG "_s)) << run.out.toStdString();
    const QString pdf = openedFile(run);
    const QString text = pdfText(pdf);
    const QRegularExpressionMatch closing =
        QRegularExpression(u"Saldo finale\\s+(-?[\\d.]+,\\d\\d)"_s).match(text);
    ASSERT_TRUE(closing.hasMatch()) << text.toStdString();
    EXPECT_EQ(text.count(u"Saldo finale"_s), 1) << text.toStdString();
    EXPECT_TRUE(text.contains(u"Saldo precedente"_s));

    const QString sum = scalar(
        u"SELECT Round(Sum(Dare) - Sum(Avere), 2) FROM NoteRighe WHERE "
        u"CodConto = '"_s +
        account + u"' AND Data <= #03/31/2025#"_s);
    const QString expected = QString::number(QString(sum).replace(u',', u'.').toDouble(), 'f', 2);
    EXPECT_EQ(closing.captured(1).remove(u'.').replace(u',', u'.'), expected);
    // Some of it lies before the period.
    EXPECT_NE(scalar(u"SELECT Count(*) FROM NoteRighe WHERE CodConto = '"_s + account +
                     u"' AND Data < #03/01/2025#"_s),
              u"0"_s);
}

INSTANTIATE_TEST_SUITE_P(
    Cards, LedgerCardRun,
    ::testing::Values(CardRow{"StampaSchedaLocale",
                              [](const QString& venue, const QString& index) {
                                  return QStringList{u"click"_s,  u"CmdRicerca"_s,
                                                     u"untick"_s, u"Tree=A"_s,
                                                     u"tick"_s,   u"Tree=A"_s + venue,
                                                     u"pick"_s,   u"cmbCausale="_s + index};
                              },
                              "SELECT CodiceConto FROM AnagraficaLocali WHERE CodLocale = '%1'"},
                      CardRow{"StampaSchedaContab",
                              [](const QString&, const QString& index) {
                                  return QStringList{u"pick"_s, u"cmbCodContoDa="_s + index,
                                                     u"pick"_s, u"cmbCodContoA="_s + index};
                              },
                              "SELECT CodiceConto FROM AnagraficaPianoConti WHERE CodiceConto = "
                              "'01.001' AND '%1' <> ''"}),
    [](const ::testing::TestParamInfo<CardRow>& info) { return std::string(info.param.code); });

// The figure of a notes report's grand total row that a plain SQL statement on
// the main database gives too, from January to April.
struct NotesRow {
    const char* code;
    QStringList actions;
    const char* total;  // the pattern of the figure on the grand total row of the PDF
    QString sql;        // the same figure, to two decimals
};

class NotesReportRun : public ReportRun, public ::testing::WithParamInterface<NotesRow> {
  protected:
    // The text of the PDF that `actions` on the screen of `code` export, and
    // the messages the user saw.
    QString exportedText(const QString& code, const QStringList& actions, QString* shown) {
        QStringList args{u"run"_s,       code,         u"--percorso"_s,
                         installation(), u"--today"_s, u"30/04/2025"_s};
        const ProcessResult run =
            lorvane(args << actions << u"pick"_s << u"List1=0"_s << u"click"_s << u"CmdPdf"_s);
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        QStringList messages;
        for (const QString& line : run.out.split(u'\n'))
            if (line.startsWith(u"MSG "_s)) messages << line;
        *shown = messages.join(u'\n');
        const QString pdf = openedFile(run);
        return pdfText(pdf);
    }
    // The figure the SQL tool gives, as "1234.50".
    QString sqlFigure(const QString& sql) {
        const ProcessResult sum = lorvane({u"sql"_s, installation() + u"/Lorvane.db"_s, sql});
        EXPECT_EQ(sum.exitCode, 0) << sum.err.toStdString();
        return QString::number(
            sum.out.trimmed().section(u'\n', -1).remove(u'"').replace(u',', u'.').toDouble(), 'f',
            2);
    }
    static QString figure(const QString& text, const QString& pattern) {
        const QRegularExpressionMatch total =
            QRegularExpression(u"Totale generale"_s + pattern).match(text);
        EXPECT_TRUE(total.hasMatch()) << text.right(600).toStdString();
        return total.captured(1).remove(u'.').replace(u',', u'.');
    }
};

TEST_P(NotesReportRun, TheGrandTotalIsThatOfTheMainDatabase) {
    const NotesRow& row = GetParam();
    QString shown;
    const QString text = exportedText(QString::fromLatin1(row.code), row.actions, &shown);
    EXPECT_TRUE(shown.isEmpty()) << shown.toStdString();
    const QString expected = sqlFigure(row.sql);
    EXPECT_NE(expected, u"0.00"_s);
    EXPECT_EQ(figure(text, QString::fromLatin1(row.total)), expected);
}

// The venues a run with "Tutti i locali" takes.
constexpr char inUse[] = "(SELECT CodLocale FROM AnagraficaLocali WHERE Sospeso = 0)";

INSTANTIATE_TEST_SUITE_P(
    Notes, NotesReportRun,
    ::testing::Values(
        NotesRow{"IntrodottoDistinta",
                 {u"set"_s, u"txtDallaData=01/01/2025"_s},
                 "(?:\\s+[\\d.]+,\\d\\d){4}\\s+([\\d.]+,\\d\\d)",
                 u"SELECT Round(Sum(qr.ParteLocale), 2) FROM QuietanzaRighe qr INNER JOIN "
                 u"QuietanzaTesta qt ON qt.id = qr.idTesta WHERE qt.TipoDocumento = 1 AND "
                 u"qr.aData >= #01/01/2025# AND qr.aData <= #04/30/2025# AND qt.CodLocale IN "_s +
                     QLatin1String(inUse)},
        NotesRow{"Refill",
                 {u"set"_s, u"optPeriodo=1"_s, u"set"_s, u"txtDallaData=01/01/2025"_s},
                 "(?:\\s+[\\d.]+,\\d\\d){2}\\s+([\\d.]+,\\d\\d)",
                 u"SELECT Round(Sum(Nz(ni.RefillLocale, 0) + Nz(ni.RefillGestore, 0)), 2) FROM "
                 u"NoteIncassi ni INNER JOIN NoteTeste nt ON nt.id = ni.IdTesta WHERE "
                 u"nt.CodCausale = 'REF' AND nt.DataRegistrazione >= #01/01/2025# AND "
                 u"nt.DataRegistrazione <= #04/30/2025# AND nt.CodLocale IN "_s +
                     QLatin1String(inUse)},
        NotesRow{"DifferenzaPreu",
                 {u"set"_s, u"txtPreuRich=13,4"_s, u"set"_s, u"txtPreuNew=12.6"_s},
                 "(?:\\s+-?[\\d.]+,\\d\\d){3}\\s+(-?[\\d.]+,\\d\\d)",
                 u"SELECT Round(Sum(ni.ParzialeIn) * 0.8 / 100, 2) FROM NoteIncassi ni WHERE "
                 u"ni.IdTesta IN (SELECT id FROM NoteTeste WHERE DataRegistrazione >= "
                 u"#01/01/2025# AND DataRegistrazione <= #04/30/2025# AND CodLocale IN "_s +
                     QLatin1String(inUse) +
                     u") AND (ni.TipoCalcolo = 'Utile' OR (ni.TipoCalcolo IS NOT NULL AND "
                     u"ni.PercLocale >= 25))"_s}),
    [](const ::testing::TestParamInfo<NotesRow>& info) { return std::string(info.param.code); });

// The first run of the open advances stores the missing amounts and shows
// each statement; the second shows nothing, and its balance still to recover
// is the main database's.
TEST_F(NotesReportRun, TheAdvancesAreRepairedOnceAndTheirOpenBalanceIsTheMainDatabases) {
    QString shown;
    exportedText(u"Acconti"_s, {}, &shown);
    EXPECT_TRUE(shown.contains(u"] UPDATE NoteTeste SET Acconto="_s)) << shown.toStdString();
    EXPECT_FALSE(shown.contains(u"critical"_s)) << shown.toStdString();
    const QString text = exportedText(u"Acconti"_s, {}, &shown);
    EXPECT_TRUE(shown.isEmpty()) << shown.toStdString();
    const QString open =
        u"nt.CodCausale = 'ACC' AND (nt.Chiuso = 0 OR nt.Chiuso IS NULL) AND nt.CodLocale IN "_s +
        QLatin1String(inUse);
    const QString expected = sqlFigure(
        u"SELECT Round((SELECT Sum(ni.Acconti) FROM NoteIncassi ni INNER JOIN NoteTeste nt ON "
        u"nt.id = ni.IdTesta WHERE "_s +
        open +
        u" AND (ni.Chiuso = 0 OR ni.Chiuso IS NULL)) + (SELECT Sum(Nz(nt.Acconto, 0)) FROM "
        u"NoteTeste nt WHERE "_s +
        open +
        u" AND nt.id NOT IN (SELECT IdTesta FROM NoteIncassi WHERE Chiuso = 0 OR Chiuso IS "
        u"NULL)), 2)"_s);
    EXPECT_NE(expected, u"0.00"_s);
    EXPECT_EQ(figure(text, u"\\s+[\\d.]+,\\d\\d\\s+([\\d.]+,\\d\\d)"_s), expected);
}

// Label sheets printed to PDF, rasterised at 300 dpi by pdftoppm and read by
// zbarimg: every label's bar code is the stored code of its row, and every
// row with a code has its label ("Tutte le schede", "Tutti i Mobili").
struct LabelRow {
    const char* code;
    int layout;       // the row of List1
    bool checkDigit;  // the layout adds the Code 39 check character
    QString sql;      // the codes the labels carry
};

class LabelReportRun : public ReportRun, public ::testing::WithParamInterface<LabelRow> {};

// The Code 39 check character: the sum of the characters' values, modulo 43.
QString withCheck(const QString& code) {
    static const QString alphabet = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%"_s;
    int sum = 0;
    for (QChar c : code)
        sum += int(alphabet.indexOf(c));
    return code + alphabet[sum % 43];
}

TEST_P(LabelReportRun, EveryBarCodeDecodesToItsRowsCode) {
    const LabelRow& row = GetParam();
    const ProcessResult run = lorvane({u"run"_s, QString::fromLatin1(row.code), u"--percorso"_s,
                                       installation(), u"--today"_s, u"30/04/2025"_s, u"pick"_s,
                                       u"List1=%1"_s.arg(row.layout), u"click"_s, u"CmdPdf"_s});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_FALSE(run.out.contains(u"MSG "_s)) << run.out.toStdString();
    const QString pdf = openedFile(run);
    ASSERT_FALSE(pdf.isEmpty()) << run.out.toStdString();
    QTemporaryDir pages;
    ASSERT_EQ(runProgram(u"pdftoppm"_s, {u"-r"_s, u"300"_s, u"-gray"_s, u"-png"_s, pdf,
                                         pages.filePath(u"pagina"_s)})
                  .exitCode,
              0);
    QStringList decoded;
    for (const QString& png : QDir(pages.path()).entryList({u"*.png"_s}, QDir::Files))
        decoded += runProgram(u"zbarimg"_s, {u"--quiet"_s, u"--raw"_s, pages.filePath(png)})
                       .out.split(u'\n', Qt::SkipEmptyParts);
    decoded.sort();

    const ProcessResult codes = lorvane({u"sql"_s, installation() + u"/Lorvane.db"_s, row.sql});
    QStringList expected;
    for (const QString& line : codes.out.trimmed().split(u'\n').mid(1)) {
        const QString code = QString(line).remove(u'"');
        expected << (row.checkDigit ? withCheck(code) : code);
    }
    expected.sort();
    EXPECT_GT(expected.size(), 30);
    EXPECT_EQ(decoded, expected);
}

const QString boardsWithCode =
    u"SELECT CodiceABarre FROM MagSchede WHERE (Obsoleto = 0 OR Obsoleto IS NULL) AND (Venduto "
    u"= 0 OR Venduto IS NULL) AND (Dismesso = 0 OR Dismesso IS NULL) AND CodiceABarre <> ''"_s;
const QString cabinetsWithCode =
    u"SELECT CodiceABarre FROM MagMobili WHERE (Obsoleto = 0 OR Obsoleto IS NULL) AND (Venduto "
    u"= 0 OR Venduto IS NULL) AND (Dismesso = 0 OR Dismesso IS NULL) AND CodiceABarre <> ''"_s;

INSTANTIATE_TEST_SUITE_P(Labels, LabelReportRun,
                         ::testing::Values(LabelRow{"StampaEtichette", 0, false, boardsWithCode},
                                           LabelRow{"StampaEtichette", 1, true, boardsWithCode},
                                           LabelRow{"StampaEtichetteMob", 0, false,
                                                    cabinetsWithCode}));

// The cash report and the registers: a figure of the PDF's total row is the
// program's SQL sum over the notes of the period with the causali ticked by
// default; a register prints one line for every day of the months covered.
struct CashRow {
    const char* code;
    const char* total;  // the total row, its figures before the one compared, that figure
    const char* column;
    const char* causali;
    int days;  // lines of days; 0 for the cash report
};

class CashReportRun : public ReportRun, public ::testing::WithParamInterface<CashRow> {};

TEST_P(CashReportRun, TheTotalIsTheSumOfTheNotes) {
    const CashRow& row = GetParam();
    const ProcessResult run =
        lorvane({u"run"_s, QString::fromLatin1(row.code), u"--percorso"_s, installation(),
                 u"--today"_s, u"30/04/2025"_s, u"set"_s, u"txtDallaData=10/02/2025"_s, u"set"_s,
                 u"txtAllaData=20/03/2025"_s, u"pick"_s, u"List1=0"_s, u"click"_s, u"CmdPdf"_s});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_FALSE(run.out.contains(u"MSG "_s)) << run.out.toStdString();
    const QString pdf = openedFile(run);
    const QString text = pdfText(pdf);
    const QRegularExpressionMatch total =
        QRegularExpression(QString::fromLatin1(row.total)).match(text);
    ASSERT_TRUE(total.hasMatch()) << text.right(800).toStdString();

    const ProcessResult sum =
        lorvane({u"sql"_s, installation() + u"/Lorvane.db"_s,
                 u"SELECT Round(Sum(%1) * 100, 0) FROM NoteTeste WHERE CodCausale IN (%2) AND "
                 u"DataRegistrazione >= #02/10/2025# AND DataRegistrazione <= #03/20/2025#"_s.arg(
                     QLatin1String(row.column), QLatin1String(row.causali))});
    const qint64 expected = sum.out.trimmed().section(u'\n', -1).remove(u'"').toLongLong();
    EXPECT_GT(expected, 0) << sum.err.toStdString();
    EXPECT_EQ(cents(total.captured(1)), expected);

    const qsizetype days = text.count(
        QRegularExpression(u"^\\d\\d/\\d\\d/\\d{4}\\s"_s, QRegularExpression::MultilineOption));
    EXPECT_EQ(days, row.days);
}

INSTANTIATE_TEST_SUITE_P(
    Cash, CashReportRun,
    ::testing::Values(
        CashRow{"StampaCassa", "Totale generale\\s+-?[\\d.]+,\\d\\d\\s+(-?[\\d.]+,\\d\\d)",
                "Riscosso", "'INC6','INC'", 0},
        CashRow{"StampaRegistro", "Totale del periodo\\s+([\\d.]+,\\d\\d)", "TotIntrodotto",
                "'INC6','INC','FUR'", 28 + 31},
        CashRow{
            "StampaRegistro2",
            "Totale del periodo\\s+[\\d.]+,\\d\\d\\s+[\\d.]+,\\d\\d\\s+[\\d.]+,\\d\\d\\s+([\\d.]+,"
            "\\d\\d)",
            "TotPreu", "'INC6','INC','FUR'", 28 + 31}),
    [](const ::testing::TestParamInfo<CashRow>& info) { return std::string(info.param.code); });

}  // namespace
}  // namespace lorvane
