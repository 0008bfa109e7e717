#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

// A test program that ends a run of itself on purpose.

/// How a run has ended, and what it has written.
struct Ended
{
    QProcess::ExitStatus status;
    int code;
    QStringList lines;
    QString errors;
};

/// Runs this program with `arguments` in a process of its own, and waits for its end.
inline Ended runMyself(const QStringList& arguments)
{
    constexpr int longestMs = 120000;
    const QTemporaryDir dir; // what a process that ends at once leaves behind
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), dir.path());
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(dir.path());
    process.start(QCoreApplication::applicationFilePath(), arguments);
    if (!process.waitForFinished(longestMs))
        qFatal("%s", qPrintable(process.errorString()));
    QStringList lines = QString::fromUtf8(process.readAllStandardOutput()).split(u'\n');
    lines.removeLast(); // behind the last end of line
    return {process.exitStatus(), process.exitCode(), lines,
            QString::fromUtf8(process.readAllStandardError())};
}

/// `errors` if a sanitizer speaks there of a memory fault or of undefined behaviour, else nothing.
inline QString sanitizerReport(const QString& errors)
{
    for (const char* const mark : {"Sanitizer", "runtime error"})
        if (errors.contains(QLatin1String(mark)))
            return errors;
    return {};
}
