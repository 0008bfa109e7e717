#pragma once

#include <QString>
#include <QStringList>

/// Where the program's files lie, and a few constants.
class cSettings
{
public:
    cSettings();

    /// Fills the paths; needs the application object.
    void InitPaths();

    QString pathApp; ///< directory of the program: all its files are this path, "/" and a name
    QString pathLogs;
    QString pathDatas;
    QStringList confMasks;
    QString styleGood;
    QString styleBad;
    int paramA = 2;
    int paramB = 3;
};

/// The one instance; made before `main`, destroyed after it.
extern cSettings Settings; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): one by design
