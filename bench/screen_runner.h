// A report screen driven as "lorvane run" drives it, on an installation's
// reference host, for the benchmarks: the actions, the preparation timed
// alone, the whole PDF run timed, and what the user saw.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include "host/cli_run.h"

namespace lorvane::screens {
class FilterScreen;
}

namespace lorvane::bench {

class ScreenRunner {
  public:
    explicit ScreenRunner(const QString& installation);
    ~ScreenRunner();
    ScreenRunner(const ScreenRunner&) = delete;
    ScreenRunner& operator=(const ScreenRunner&) = delete;

    // A fresh screen of `code`, the first layout of the standard list chosen.
    void open(const QString& code);
    // One action on the screen; a refused action ends the benchmark.
    void act(host::ScreenAction::Kind kind, const QString& control, const QString& value = {});
    // The venues ticked in the tree.
    QStringList tickedVenues() const;

    // Seconds of PreparaStampa alone; a failure is kept in `failure`.
    double prepare();
    // Seconds of a click on CmdPdf: the preparation, the layout, the PDF.
    double runPdf();

    // What the user saw during the last run: the messages and the files opened.
    QStringList messages, files;
    QString failure;
    qint16 rows = 0;

  private:
    screens::FilterScreen* screen_ = nullptr;
};

// The command line of a screen benchmark: [--venues N] [--repeat R] [--check].
struct ScreenBenchOptions {
    int venues = 500;
    int repeat = 3;
    bool check = false;
};
ScreenBenchOptions readOptions(const QStringList& arguments);

// Writes a demo installation of `venues` venues and `months` months of notes
// ending on `lastDay` into `folder`, saying so with the seconds it took;
// gives `folder`.
QString writeInstallation(const QString& folder, int venues, int months, const QDate& lastDay);

// Sets up a screen benchmark in `folder`: the work folder below it, today
// fixed at `today`.
void useBenchFolder(const QString& folder, const QDate& today);

// True when the last run wrote a PDF and showed nothing else.
bool pdfWritten(const ScreenRunner& runner);

// "ok" or "MISSED", for a target's line.
inline const char* verdict(bool ok) { return ok ? "ok" : "MISSED"; }

}  // namespace lorvane::bench
