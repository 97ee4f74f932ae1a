#include "platform/shell.h"

#include <QDateTime>
#include <QDesktopServices>
#include <QUrl>
#include <random>

namespace lorvane::platform {

namespace {

std::function<void(const QString&)>& opener() {
    static std::function<void(const QString&)> current;
    return current;
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

void ShellOpen(const QString& path) {
    if (opener()) {
        opener()(path);
    } else {
        QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    }
}

void setShellOpener(std::function<void(const QString&)> replacement) {
    opener() = std::move(replacement);
}

void Randomize() { generator().seed(quint64(QDateTime::currentMSecsSinceEpoch())); }

double Rnd() {
    if (randomSource()) return randomSource()();
    return std::uniform_real_distribution<double>(0.0, 1.0)(generator());
}

void setRandomSource(std::function<double()> source) { randomSource() = std::move(source); }

}  // namespace lorvane::platform
