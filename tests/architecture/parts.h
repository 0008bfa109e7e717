#pragma once

#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

/// A part of the program: files that know the same.
struct Part
{
    QString name;
    QRegularExpression files;
    /// The CMake target that compiles them.
    QString target;
    /// The parts whose headers they may include besides their own.
    QStringList knows;
    /// The Qt modules whose headers they may include and whose libraries the target may link.
    QStringList qtModules;
    bool usesJsonCpp = false;
};

/// Every part of the program, the lower ones first.
const QList<Part>& parts();

/// The part that the file belongs to: the first whose pattern fits. Null if there is none.
const Part* partOf(const QString& path);
