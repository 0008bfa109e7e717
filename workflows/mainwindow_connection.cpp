#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "app/csettings.h"
#include "device/clkrd9io.h"
#include "device/guarded.h"
#include "device/jsonfile.h"
#include "device/regularfile.h"
#include "device/utiljson.h"

#include <QGraphicsOpacityEffect>
#include <QTextStream>
#include <QTimer>

namespace {

constexpr int kStartTickMs = 100;
constexpr int kStatusTickMs = 200;

constexpr int kDriverError = clKRD9IO::kDriverError;
constexpr LUM::Fpax::Model kStartModel = LUM::Fpax::Model::Tavr22F;

/// What the device says instead of its description if the port could not be opened.
const char* const kConnectionError = QT_TRANSLATE_NOOP("MainWindow", "Ошибка подключения");

QString settingsPath()
{
    return Settings.pathApp + "/" + "settings.json";
}

bool writeDefaultSettings(const QString& path)
{
    QFile file(path);
    if (!openRegularFile(file, QIODevice::WriteOnly))
        return false;
    QTextStream stream(&file);
    stream << UtilJson::SetSettingsJson();
    stream.flush();
    file.close();
    return true;
}

} // namespace

void MainWindow::loadDriver()
{
    QString strOut;
    const int result = KRD9IO.initDriver(Settings.pathApp + "/" + "fpax", Settings.pathApp, strOut);
    if (result == clKRD9IO::kDone) {
        lblStatusIcon->setPixmap(QPixmap(QStringLiteral(":/images/ok2424r.png")));
        const QString driver = QStringLiteral("\"%1\" v%2").arg(KRD9IO.driverName, KRD9IO.driverVersion);
        LogAddDbg(tr("Драйвер успешно загружен: %1").arg(driver));
        lblStatusDriver->setText(QStringLiteral(" %1 ").arg(KRD9IO.driverVersion));
        return;
    }
    lblStatusIcon->setPixmap(QPixmap(QStringLiteral(":/images/err2424r.png")));
    lblStatusDriver->setText(tr("Драйвер НЕ загружен!"));
    LogAddDbg(tr("%1 ret=%2 strOut=%3").arg(lblStatusDriver->text(), QString::number(result), strOut));
}

bool MainWindow::CheckOrSetConnection(bool applySettings)
{
    if (!KRD9IO.driverLoaded) {
        if (!applySettings)
            msgBoxWarnOK(tr("Драйвер не загружен! Обмен невозможен."));
        return false;
    }
    if (applySettings && !applyPortSettings())
        return false;

    if (guarded(0, [] { return KRD9IO.getStatus(); }) != 1) {
        logNoConnection();
        if (!applySettings)
            msgBoxWarnOK(connectionFailure());
        return false;
    }
    LogAddDbg(tr("==== Полученные данные ===="));
    LogAddDbg(QStringLiteral("\"%1\" v%2").arg(KRD9IO.driverName, KRD9IO.driverVersion));
    LogAddDbg(KRD9IO.deviceText);
    LogAddDbg(tr("Прошивка:\t\t%1").arg(KRD9IO.firmwareText));
    LogAddDbg(tr("Версия шаблонов:\t%1").arg(KRD9IO.templatesText));
    LogAddDbg(tr("Состояние сессии:\t%1 \tЧек: %2 Fiscal: %3")
                  .arg(KRD9IO.sessionState)
                  .arg(KRD9IO.checkState)
                  .arg(KRD9IO.fiscalState));
    return true;
}

bool MainWindow::applyPortSettings()
{
    const QString path = settingsPath();
    LogAddDbg(tr("Чтение Json [%1]...").arg(path));
    const int read = JsonFileReadAndParse(path, ioSettings);
    if (read != JsonFile::Read) {
        LogAddDbg(tr("Ошибка в настройках (чтение settings.json ret=%1)").arg(read));
        LogAddDbg(tr("Пробуем создать новые..."));
        if (!writeDefaultSettings(path)) {
            LogAddDbg(tr("Не удалось содать новый файл с настройками!"));
            msgBoxWarnOK(tr("Ошибка в настройках (создание settings.json)"));
            return false;
        }
        if (JsonFileReadAndParse(path, ioSettings) != JsonFile::Read) {
            const QString failure = tr("Ошибка в настройках (переоткрытие settings.json)");
            msgBoxWarnOK(failure);
            LogAddDbg(failure);
            return false;
        }
    }
    const int result = guarded(kDriverError, [this] {
        return KRD9IO.setIOSettings(ioSettings, kStartModel, Settings.pathApp + "/");
    });
    if (result != clKRD9IO::kDone) {
        const QString failure = tr("Ошибка при задании настроек обмена (ret=%1)").arg(result);
        msgBoxWarnOK(failure);
        LogAddDbg(failure);
        return false;
    }
    return true;
}

void MainWindow::logNoConnection()
{
    LogAddDbg(tr("==== No connection ===="));
    LogAddDbg(tr("Driver:\t%1 \t%2").arg(QString::number(KRD9IO.driverLoaded ? 1 : 0), KRD9IO.deviceText));
    LogAddDbg(tr("Port:  \t%1").arg(KRD9IO.portOpen ? 1 : 0));
    LogAddDbg(tr("Connect:\t%1").arg(KRD9IO.connected ? 1 : 0));
    LogAddDbg(tr("ModePrgrm:\t%1").arg(KRD9IO.modeProgram ? 1 : 0));
    LogAddDbg(tr("Сессия:\t%1 \tЧек: %2").arg(KRD9IO.sessionState).arg(KRD9IO.checkState));
}

QString MainWindow::connectionFailure() const
{
    if (!KRD9IO.portOpen)
        return tr("Порт обмена недоступен!");
    if (!KRD9IO.connected)
        return tr("Не удалось установить обмен данными с устройством.");
    if (KRD9IO.modeProgram)
        return tr("Связь не установлена, причина неизвестна.");
    if (KRD9IO.checkState == 0)
        return tr("Не удалось войти в режим обмена (программирования).");
    return tr("Обмен невозможен - открыт чек.");
}

void MainWindow::keepChangedPort()
{
    constexpr int changed = -1;
    if (ioSettings.empty())
        return;
    if (guarded(kDriverError, [this] { return KRD9IO.getIOSettings(ioSettings); }) == changed)
        JsonFile::write(settingsPath(), ioSettings);
}

QString MainWindow::deviceStatusText() const
{
    const QString& device = KRD9IO.deviceText;
    if (device.isEmpty() || device.contains(tr(kConnectionError)))
        return device;
    return device + tr(" с/н:%1").arg(KRD9IO.serialText) + tr(" Лента: %1 симв.").arg(KRD9IO.lineChars) +
           tr(" Смена: ") + (KRD9IO.sessionState != 0 ? tr("открыта") : tr("закрыта")) + tr(" Чек: ") +
           (KRD9IO.checkState != 0 ? tr("открыт ") : tr("закрыт "));
}

void MainWindow::on_actionIOSettings_triggered()
{
    if (!KRD9IO.driverLoaded) {
        msgBoxWarnOK(tr("Драйвер не загружен! Обмен невозможен."));
        return;
    }
    const int result = guarded(-1, [] { return KRD9IO.driverIface->ShowProperties(); });
    LogAddDbg(tr("ShowProperties() ret=%1").arg(result));
    if (result >= 0)
        CheckOrSetConnection(false);
    else
        msgBoxWarnOK(tr("Ошибка при вызове диалога настроек!\nВозможно не хватает библиотек dll."));
}

void MainWindow::on_actionFreePort_triggered()
{
    if (KRD9IO.releasePort() == clKRD9IO::kDone)
        msgBoxTextOK(tr("Порт освобожден."));
    else
        msgBoxTextOK(tr("<FONT COLOR=red>При попытке освобождения порта возникла ошибка.</FONT>"));
}

void MainWindow::timerTickSlow()
{
    if (closing)
        return;
    if (startCountdown > 0) {
        --startCountdown;
        if (startCountdown <= 8) {
            if (auto* const fade = qobject_cast<QGraphicsOpacityEffect*>(ui->lblLogo->graphicsEffect()))
                fade->setOpacity((8 - startCountdown) * 0.125);
        }
        QTimer::singleShot(kStartTickMs, this, SLOT(timerTickSlow()));
        if (startCountdown == 0)
            QTimer::singleShot(selectionTickMs, this, SLOT(timerTick()));
        return;
    }
    ui->btnFreeStrEditor->setEnabled(!freeStrings.isEmpty());
    ui->actionFreeStrEditor->setEnabled(!freeStrings.isEmpty());
    ui->actionUpLoad->setEnabled(!freeStrings.isEmpty() || maket.getShablonLoaded());
    ui->actionFreePort->setEnabled(KRD9IO.driverLoaded);
    if (KRD9IO.driverLoaded)
        lblStatusDevice->setText(deviceStatusText());
    QTimer::singleShot(kStatusTickMs, this, SLOT(timerTickSlow()));
}
