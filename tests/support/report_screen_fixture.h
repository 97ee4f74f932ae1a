// A report screen of the demo installation driven as a user would: opened on
// its first layout, venues ticked, combos chosen, a button clicked, and the
// statements the run sent to the host.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>

#include "db/database_fixture.h"
#include "screens/controls.h"
#include "support/screen_fixture.h"

namespace lorvane::testing {

class ReportScreenTest : public ScreenTest {
  protected:
    screens::FilterScreen* screen = nullptr;

    // The screen of `code` with the first layout of its list chosen.
    screens::FilterScreen* openScreen(const char* code) {
        screen = open(QString::fromLatin1(code));
        control<QListWidget>(screen, "List1")->setCurrentRow(0);
        return screen;
    }

  public:
    // The tree holds `venues`, ticked, and "Tutti i locali" is off.
    void tick(const QStringList& venues) {
        auto* tree = control<screens::KeyedTree>(screen, "Tree");
        tree->clearNodes();
        const QString root = QLatin1String(screens::KeyedTree::RootKey);
        tree->addNode(QString(), root, QStringLiteral("Tutti i Locali"),
                      screens::KeyedTree::RootImage);
        for (const QString& venue : venues)
            tree->setTicked(tree->addNode(root, root + venue, venue, screens::KeyedTree::NodeImage),
                            true);
        control<QCheckBox>(screen, "ChkTutti")->setChecked(false);
    }
    // The tree holds `venue` alone (none when empty).
    void tickOnly(const QString& venue) {
        tick(venue.isEmpty() ? QStringList{} : QStringList{venue});
    }
    void choose(const char* combo, const QString& text) {
        auto* box = control<QComboBox>(screen, combo);
        box->setCurrentIndex(box->findText(text));
        ASSERT_GE(box->currentIndex(), 0) << text.toStdString();
    }
    void chooseCompany(const QString& company) { choose("CmbAzienda", company); }

  protected:
    // The statements sent to the host since the last look.
    QStringList statements() {
        QStringList sent;
        for (const QString& call : takeCalls())
            if (call.startsWith(QStringLiteral("OpenRecordset(")) ||
                call.startsWith(QStringLiteral("Execute(")))
                sent << call;
        return sent;
    }
    // The statements the click on `button` sent to the host.
    QStringList run(const char* button = "CmdPdf") {
        takeCalls();
        control<QPushButton>(screen, button)->click();
        return statements();
    }

  public:
    // `sql` on the work file `file`.
    QString work(const char* file, const QString& sql) const {
        return db::testing::DatabaseFile::queryFile(ScreenTest::work.filePath(QLatin1String(file)),
                                                    sql.toUtf8().constData());
    }
    // `sql` on the demo main database, or on `database`.
    static QString mainQuery(const QString& sql, const QString& database = {}) {
        return db::testing::DatabaseFile::queryFile(
            database.isEmpty() ? folder() + QStringLiteral("/Lorvane.db") : database,
            sql.toUtf8().constData());
    }
};

}  // namespace lorvane::testing
