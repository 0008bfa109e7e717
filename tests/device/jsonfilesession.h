#pragma once

#include "support/session.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

/// A window and one of its JSON files, which is not there at first.
struct JsonFileSession : Session
{
    explicit JsonFileSession(const QString& name)
        : file(dir.path(name))
    {
    }

    /// No file, and nothing new in boxes and log.
    void clear()
    {
        QFile::remove(file);
        robot.takeTexts();
        log.takeNew();
    }

    void writeFile(const QByteArray& bytes) const { dir.write(QFileInfo(file).fileName(), bytes); }
    /// What the file holds, with a tab for each step that it is indented.
    QString indentedFile() const { return QString::fromUtf8(bytesOf(file)).replace("   ", "\t"); }
    /// Puts a folder in the file's place, which can be neither read nor written.
    bool blockFile() const { return QDir().mkdir(file); }
    bool unblockFile() const { return QDir().rmdir(file); }

    /// The text of the only box since the last look, if it was a warning; else all of them.
    QString takeWarning()
    {
        const auto boxes = robot.takeBoxes();
        QStringList texts;
        for (const auto& box : boxes)
            texts.append((box.icon == QMessageBox::Warning ? "" : "no warning: ") + box.text);
        return texts.isEmpty() ? QStringLiteral("no box") : texts.join(u'|');
    }

    const QString file;
};
