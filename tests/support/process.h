// Runs a program as a user would, without a display, and gives what it said.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace lorvane::testing {

struct ProcessResult {
    int exitCode = -1;
    QString out;
    QString err;
};

inline ProcessResult runProgram(const QString& program, const QStringList& args,
                                const QByteArray& input = {},
                                const QStringList& extraEnvironment = {}) {
    QProcess process;
    // The tools must work on a machine without a display.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    for (const QString& entry : extraEnvironment) {
        environment.insert(entry.section(u'=', 0, 0), entry.section(u'=', 1));
    }
    process.setProcessEnvironment(environment);
    process.start(program, args);
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(120000);
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

// What a reader nobody here wrote (pdftotext, unrtf...) prints for a file.
inline QString readerOutput(const QString& program, const QStringList& args) {
    return runProgram(program, args).out;
}

}  // namespace lorvane::testing
