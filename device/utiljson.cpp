#include "device/utiljson.h"

#include <QObject>

QString UtilJson::strQQ(const QString& text)
{
    return u'"' + text + u'"';
}

QString UtilJson::SetSettingsJson()
{
    QString out = QObject::tr("{\n");
    out += QObject::tr("\t") + strQQ("protocol") + QObject::tr(": 3,\n");
    out += QObject::tr("\t") + strQQ("port") + QObject::tr(": ") + strQQ("com") + QObject::tr(",\n");
    out += QObject::tr("\t") + strQQ("com") + QObject::tr(": {\n");
    out += QObject::tr("\t\t") + strQQ("number") + QObject::tr(": 5,\n");
    out += QObject::tr("\t\t") + strQQ("baudrate") + QObject::tr(": 115200\n");
    out += QObject::tr("\t},\n");
    out += QObject::tr("\t") + strQQ("usb") + QObject::tr(": {\n");
    out += QObject::tr("\t\t") + strQQ("vid") + QObject::tr(" : ") + strQQ("7A31") + QObject::tr(",\n");
    out += QObject::tr("\t\t") + strQQ("pid") + QObject::tr(" : ") + strQQ("0005") + QObject::tr("\n");
    out += QObject::tr("\t},\n");
    out += QObject::tr("\t") + strQQ("tcpip") + QObject::tr(": {\n");
    out +=
        QObject::tr("\t\t") + strQQ("host") + QObject::tr(": ") + strQQ("192.168.0.100") + QObject::tr(",\n");
    out += QObject::tr("\t\t") + strQQ("port") + QObject::tr(": 5555\n");
    out += QObject::tr("\t}\n");
    out += QObject::tr("}\n");
    return out;
}
