#pragma once

#include "tests/support/windowprobe.h"

#include <QObject>
#include <QString>
#include <QTemporaryDir>

/// The window of the program in a folder of its own, in memory where the system has such a place. There is no
/// driver, and the message boxes are closed as soon as they show.
class FuzzWindow : public QObject
{
public:
    /// The only one; it lives as long as the process.
    static FuzzWindow& instance();

    /// Clears what the last input has left behind: log, box count, template and free lines. Temporary files are kept.
    void reset();

    WindowProbe& probe() { return m_probe; }
    /// Boxes since the last reset().
    int boxCount() const { return m_boxCount; }

    QString filePath(const QString& name) const { return m_folder.filePath(name); }
    /// Puts the file `name` into the folder of the program.
    void putFile(const QString& name, const QByteArray& bytes) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    FuzzWindow();
    MainWindow& makeWindow();

    QTemporaryDir m_folder;
    MainWindow& m_window;
    WindowProbe m_probe;
    int m_boxCount = 0;
};
