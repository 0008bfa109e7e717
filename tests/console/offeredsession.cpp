#include "console/offeredsession.h"

#include "console/ioinfolines.h"

#include <QFile>
#include <QFileInfo>

QString LibrarySession::libraryFile() const
{
    return dir.path(QFileInfo(QStringLiteral(OFFERED_DRIVER)).fileName().replace("offered_driver", "fpax"));
}

OfferedSession::OfferedSession(bool isOffered)
{
    const QString file = libraryFile();
    if (!QFile::copy(QStringLiteral(OFFERED_DRIVER), file))
        qFatal("no driver library");
    library.setFileName(file);
    using OfferFunction = void (*)(LUM::Fpax::IFpax*);
    const auto offer = reinterpret_cast<OfferFunction>(library.resolve("OfferDriver"));
    offer(isOffered ? &driver : nullptr);
    driver.mappings = {{"Port", "COM1 первый;COM2;USB второй;COM3 третий;порт COM4 %1"},
                       {"Protocol", "протоколы %1"},
                       {"ExistedSerial", "1;3;4"},
                       {"BaudRate", "скорости"},
                       {"DeviceName", "имена"},
                       {"IPPort", "не то"}};
    driver.settings = {{"Protocol", "3"},         {"Port", "5 %2"},          {"BaudRate", "9600"},
                       {"IPPort", "5555"},        {"IPAddress", "10.0.0.2"}, {"DeviceName", "касса"},
                       {"ExistedSerial", "не то"}};
}

int OfferedSession::releases()
{
    using CountFunction = int (*)();
    return reinterpret_cast<CountFunction>(library.resolve("ReleaseCount"))();
}

void OfferedSession::throwOnRelease(Thrown thrown)
{
    using OrderFunction = void (*)(int);
    reinterpret_cast<OrderFunction>(library.resolve("ThrowOnRelease"))(static_cast<int>(thrown));
}

QStringList offeredLines()
{
    return {kLoaded,
            kCreated,
            "COM1 первый",
            "COM3 третий",
            "порт COM4 %1",
            "in drv protocol: 3 протоколы %1",
            "in drv port: 1;3;4 5 %2",
            "in drv bods: 9600 скорости",
            "in drv IP: 5555/10.0.0.2",
            "in drv devName: касса/имена"};
}
