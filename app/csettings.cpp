#include "app/csettings.h"

#include <QCoreApplication>

cSettings Settings; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): one by design

cSettings::cSettings()
    : confMasks{QStringLiteral("*.con")}
    , styleGood(QStringLiteral("color: green;"))
    , styleBad(QStringLiteral("color: red;"))
{
}

void cSettings::InitPaths()
{
    pathApp = QCoreApplication::applicationDirPath();
    pathLogs = pathApp + "/" + "logs";
    pathDatas = pathApp + "/" + "datas";
}
