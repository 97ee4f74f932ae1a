#include "platform/shell.h"

#include <QDateTime>
#include <QDesktopServices>
#include <QMimeDatabase>
#include <QProcess>
#include <QUrl>
#include <random>

namespace lorvane::platform {

namespace {

std::function<bool(const QString&)>& opener() {
    static std::function<bool(const QString&)> current;
    return current;
}

// A desktop "opens" a file of a type it has no program for without a word:
// its MIME database is asked first, where it has one.
bool openWithDesktop(const QString& path) {
    QProcess query;
    query.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"),
                                             QMimeDatabase().mimeTypeForFile(path).name()});
    if (query.waitForStarted(2000)) {
        if (!query.waitForFinished(5000)) query.kill();
        if (query.readAllStandardOutput().trimmed().isEmpty()) return false;
    }
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

std::function<double()>& randomSource() {
    static std::function<double()> current;
    return current;
}

std::mt19937_64& generator() {
    static std::mt19937_64 engine(0);
    return engine;
}

}  // namespace

bool ShellOpen(const QString& path) { return opener() ? opener()(path) : openWithDesktop(path); }

void setShellOpener(std::function<bool(const QString&)> replacement) {
    opener() = std::move(replacement);
}

void Randomize() { generator().seed(quint64(QDateTime::currentMSecsSinceEpoch())); }

double Rnd() {
    if (randomSource()) return randomSource()();
    return std::uniform_real_distribution<double>(0.0, 1.0)(generator());
}

void setRandomSource(std::function<double()> source) { randomSource() = std::move(source); }

}  // namespace lorvane::platform
