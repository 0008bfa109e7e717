#include "app/csettings.h"

#include <QCoreApplication>

cSettings Settings;

cSettings::cSettings()
    : confMasks{QStringLiteral("*.con")}
    , styleGood(QStringLiteral("color: green;"))
    , styleBad(QStringLiteral("color: red;"))
    , paramA(2)
    , paramB(3)
{
}

void cSettings::InitPaths()
{
    pathApp = QCoreApplication::applicationDirPath();
    pathLogs = pathApp + "/" + "logs";
    pathDatas = pathApp + "/" + "datas";
}
