#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "app/csettings.h"
#include "device/devicecodes.h"
#include "device/guarded.h"
#include "device/krdlibrary.h"
#include "device/qlumfpax.h"

#include <QLibrary>
#include <QScopeGuard>

using LUM::Fpax::IFpax;

namespace {

QString driverPath()
{
    return Settings.pathApp + "/" + "fpax";
}

} // namespace

void MainWindow::checkDriver()
{
    KRDLibrary<IFpax> library(driverPath(), QStringLiteral("Fpax"));
    if (!library.load()) {
        logDriverNotLoaded(library.errorString());
        return;
    }
    LogAddDbg(tr("Драйвер загружен!"));
    IFpax* driver = library.CoCreateInstance(LUM::Fpax::kInterfaceVersion);
    checkDriverObject(
        driver, [&library, &driver] { library.CoReleaseInstance(&driver); },
        [](QLumFpax&) { msgBoxWarnOK(tr("In mode program now")); });
}

void MainWindow::on_btnDbgLoadFile_clicked()
{
    constexpr int hexadecimal = 16;
    const QString digits = QStringLiteral("021F");
    const int parts =
        digits.left(2).toInt(nullptr, hexadecimal) * 256 + digits.mid(2).toInt(nullptr, hexadecimal);
    LogAddDbg(tr("test 1 bb=%1").arg(parts));
    LogAddDbg(tr("test 2 bb=%1").arg(digits.toInt(nullptr, hexadecimal)));
    Json::Value rows(Json::arrayValue);
    bd.SaveAsJsonV01(rows, 1);

    QLibrary library(driverPath());
    const auto unload = qScopeGuard([&library, isLoadedElsewhere = library.isLoaded()] {
        if (!isLoadedElsewhere)
            library.unload();
    });
    // NOLINTBEGIN(cppcoreguidelines-pro-type-reinterpret-cast): a library tells of its functions no type
    const auto create = reinterpret_cast<LUM::Fpax::CreateFunction*>(library.resolve("CreateFpaxInterface"));
    const auto release =
        reinterpret_cast<LUM::Fpax::ReleaseFunction*>(library.resolve("ReleaseFpaxInterface"));
    // NOLINTEND(cppcoreguidelines-pro-type-reinterpret-cast)
    if (!create || !release) {
        logDriverNotLoaded(library.errorString());
        return;
    }
    LogAddDbg(tr("Драйвер загружен!"));
    auto* driver = guarded<IFpax*>(nullptr, [create] { return create(LUM::Fpax::kInterfaceVersion); });
    const auto writeTemplate = [this, &rows](QLumFpax& fpax) {
        msgBoxWarnOK(tr("test"));
        LogAddDbg(tr("Вход в режим программирования..."));
        fpax.setInt(&IFpax::setMode, DeviceCode::kModeProgramming);
        fpax.execMethod(&IFpax::enterMode);
        QStringList lines;
        DvcIOWriteTLV20(fpax, rows, lines);
        LogAddDbg(tr("====LOGGER"));
        for (const auto& line : lines)
            LogAddDbg(line);
        LogAddDbg(tr("====LOGGER END"));
    };
    checkDriverObject(
        driver, [release, &driver] { guarded([release, &driver] { release(&driver); }); }, writeTemplate);
}

void MainWindow::logDriverNotLoaded(const QString& reason)
{
    LogAddDbg(tr("Не удалось загрузить драйвер ККТ [%1]").arg(reason));
    LogAddDbg(tr("Путь к файлу драйвера [%1]").arg(driverPath()));
}

void MainWindow::checkDriverObject(IFpax* driver, const std::function<void()>& release,
                                   const std::function<void(QLumFpax&)>& whenConnected)
{
    if (!driver) {
        LogAddDbg(tr("Не удалось создать объект драйвера!"));
        return;
    }
    LogAddDbg(tr("Объект драйвера создан!"));
    try {
        QLumFpax fpax(driver);
        logDriverSettings(fpax);
        changeDriverSettings(fpax);
        LogAddDbg(tr("Подключение к устройству..."));
        fpax.setInt(&IFpax::setDeviceEnabled, 1);
        whenConnected(fpax);
        LogAddDbg(tr("Сброс режима..."));
        fpax.execMethod(&IFpax::resetMode);
        LogAddDbg(tr("Отключение..."));
        fpax.setInt(&IFpax::setDeviceEnabled, 0);
        msgBoxWarnOK(tr("Check port avail"));
    } catch (...) {
        LogAddDbg(tr("ERR: Ошибка при работе..."));
        release();
        return;
    }
    release();
    LogAddDbg(tr("Объект драйвера разрушен!"));
}

void MainWindow::logDriverSettings(QLumFpax& fpax)
{
    for (const auto& port : fpax.getMapping("Port").split(u';')) {
        if (port.contains(u"COM") && port.contains(u' '))
            LogAddDbg(port);
    }
    LogAddDbg(tr("in drv protocol: %1 %2").arg(fpax.getSetting("Protocol"), fpax.getMapping("Protocol")));
    LogAddDbg(tr("in drv port: %1 %2").arg(fpax.getMapping("ExistedSerial"), fpax.getSetting("Port")));
    LogAddDbg(tr("in drv bods: %1 %2").arg(fpax.getSetting("BaudRate"), fpax.getMapping("BaudRate")));
    LogAddDbg(tr("in drv IP: %1/%2").arg(fpax.getSetting("IPPort"), fpax.getSetting("IPAddress")));
    LogAddDbg(tr("in drv devName: %1/%2").arg(fpax.getSetting("DeviceName"), fpax.getMapping("DeviceName")));
}

void MainWindow::changeDriverSettings(QLumFpax& fpax)
{
    LogAddDbg(tr("Задаем настройки драйверу"));
    fpax.setSetting("Port", 8);
    fpax.setSetting("Protocol", 0);
    fpax.setSetting("BaudRate", 115200);
    fpax.setSetting("Model", static_cast<int>(LUM::Fpax::Model::Tavr22F));
    fpax.execMethod(&IFpax::applySingleSettings);
    LogAddDbg(tr("После настройки"));
    LogAddDbg(tr("in drv port: %1").arg(fpax.getSetting("Port")));
    LogAddDbg(tr("in drv protocol: %1").arg(fpax.getSetting("Protocol")));
    LogAddDbg(tr("in drv bods: %1").arg(fpax.getSetting("BaudRate")));
}
