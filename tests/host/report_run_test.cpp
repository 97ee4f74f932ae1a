// Reports end to end, as a user scripts them: "lorvane run" on a demo
// installation exports them, and readers nobody here wrote find in the files
// the totals that a plain SQL sum gives.
#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "host/demo/demo_data.h"
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
    const QString text = runProgram(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s}).out;
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
    const QString pdf = QRegularExpression(u"^FILE (.+)$"_s, QRegularExpression::MultilineOption)
                            .match(run.out)
                            .captured(1);
    const QString text = runProgram(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s}).out;
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
        return QRegularExpression(u"^FILE (.+)$"_s, QRegularExpression::MultilineOption)
            .match(run.out)
            .captured(1);
    };
    const QString text =
        runProgram(u"pdftotext"_s, {u"-layout"_s, exported(pdfArgs, "CmdPdf"), u"-"_s}).out;
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

// The cash report and the registers: a figure of the PDF's total row is the
// program's SQL sum over the notes of the period with the causali ticked by
// default; a register prints one line for every day of the months covered.
struct NotesRow {
    const char* code;
    const char* total;  // the total row, its figures before the one compared, that figure
    const char* column;
    const char* causali;
    int days;  // lines of days; 0 for the cash report
};

class NotesReportRun : public ReportRun, public ::testing::WithParamInterface<NotesRow> {};

TEST_P(NotesReportRun, TheTotalIsTheSumOfTheNotes) {
    const NotesRow& row = GetParam();
    const ProcessResult run =
        lorvane({u"run"_s, QString::fromLatin1(row.code), u"--percorso"_s, installation(),
                 u"--today"_s, u"30/04/2025"_s, u"set"_s, u"txtDallaData=10/02/2025"_s, u"set"_s,
                 u"txtAllaData=20/03/2025"_s, u"pick"_s, u"List1=0"_s, u"click"_s, u"CmdPdf"_s});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_FALSE(run.out.contains(u"MSG "_s)) << run.out.toStdString();
    const QString pdf = QRegularExpression(u"^FILE (.+)$"_s, QRegularExpression::MultilineOption)
                            .match(run.out)
                            .captured(1);
    const QString text = runProgram(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s}).out;
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
    Notes, NotesReportRun,
    ::testing::Values(
        NotesRow{"StampaCassa", "Totale generale\\s+-?[\\d.]+,\\d\\d\\s+(-?[\\d.]+,\\d\\d)",
                 "Riscosso", "'INC6','INC'", 0},
        NotesRow{"StampaRegistro", "Totale del periodo\\s+([\\d.]+,\\d\\d)", "TotIntrodotto",
                 "'INC6','INC','FUR'", 28 + 31},
        NotesRow{
            "StampaRegistro2",
            "Totale del periodo\\s+[\\d.]+,\\d\\d\\s+[\\d.]+,\\d\\d\\s+[\\d.]+,\\d\\d\\s+([\\d.]+,"
            "\\d\\d)",
            "TotPreu", "'INC6','INC','FUR'", 28 + 31}),
    [](const ::testing::TestParamInfo<NotesRow>& info) { return std::string(info.param.code); });

}  // namespace
}  // namespace lorvane
