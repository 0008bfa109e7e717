#include "device/clkrd9io.h"

#include "device/devicecodes.h"

#include <QCoreApplication>

using LUM::Fpax::IFpax;

clKRD9IO KRD9IO; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): one by design

namespace {

constexpr int kFirmwareUnit = 145;
constexpr int kTemplateUnit = 160;
constexpr unsigned kLastBuildWithoutTemplates = 3128;

} // namespace

int clKRD9IO::initDriver(const QString& driverPath, const QString& /*appPath*/, QString& strOut)
{
    constexpr int notLoaded = 1;
    constexpr int notUsable = 2;

    driverLoaded = false;
    driverName.clear();
    driverVersion.clear();
    // Nothing may point into a former library once it is unloaded.
    fpaxWrapper.reset();
    driverIface = nullptr;
    library.reset();
    library.reset(new KRDLibrary<IFpax>(driverPath, QStringLiteral("Fpax")));
    if (!library->load()) {
        strOut = tr("Ошибка загрузки библиотеки %1\n%2").arg(library->fileName(), library->errorString());
        return notLoaded;
    }
    driverIface = library->CoCreateInstance(LUM::Fpax::kInterfaceVersion);
    if (!driverIface) {
        strOut = tr("\"%1\" не совместим с данной версией драйвера").arg(QCoreApplication::applicationName());
        return notUsable;
    }
    fpaxWrapper.reset(new QLumFpax(driverIface));
    driverLoaded = true;
    try {
        driverName = fpaxWrapper->getBuff(&IFpax::getDriverName);
        driverVersion = fpaxWrapper->getBuff(&IFpax::getDriverVersion);
    } catch (...) { // it stays without a name
    }
    return kDone;
}

/// The wrapper; throws DeviceNotFoundException if no driver was loaded.
QLumFpax& clKRD9IO::fpax()
{
    if (!fpaxWrapper)
        throw DeviceNotFoundException();
    return *fpaxWrapper;
}

int clKRD9IO::getStatus()
{
    portOpen = false;
    connected = false;
    modelId = 0;
    deviceText.clear();
    infoText.clear();
    firmwareText.clear();
    serialText.clear();
    templatesText = QStringLiteral("-");
    modeProgram = false;
    if (!driverLoaded)
        return 0;

    try {
        fpax().setInt(&IFpax::setDeviceEnabled, 1);
    } catch (const Exception& error) {
        deviceText = tr("Ошибка подключения: %1").arg(error.whatQString());
        return 0;
    }
    portOpen = true;

    try {
        readDevice();
        connected = true;
        enterDeviceMode(DeviceCode::kModeProgramming);
    } catch (const Exception&) {
        return 0;
    }
    modeProgram = true;
    return 1;
}

/// Fills the fields about the device. Throws Exception where the driver fails; the fields then keep what they have
/// got so far.
void clKRD9IO::readDevice()
{
    fpax().execMethod(&IFpax::readStatus);
    deviceText = fpax().getBuff(&IFpax::getDeviceDescription);
    serialText = fpax().getBuff(&IFpax::getSerialNumber);
    firmwareText = unitVersion();
    infoText = tr("Устройство: %1;Серийный номер: %2;Версия: %3").arg(deviceText, serialText, firmwareText);

    modelId = fpax().getInt(&IFpax::getModelId);
    lineChars = fpax().getInt(&IFpax::getCharLineLength);
    fiscalState = fpax().getInt(&IFpax::getFiscal);
    sessionState = fpax().getInt(&IFpax::getSessionOpened);
    checkState = fpax().getInt(&IFpax::getCheckState);

    fpax().setInt(&IFpax::setUnitType, kFirmwareUnit);
    fpax().execMethod(&IFpax::readUnitVersion);
    firmwareText = unitVersion();

    const unsigned build = fpax().getBuff(&IFpax::getUnitVersionBuild).toUInt();
    templatesText = QStringLiteral("-");
    if (build > kLastBuildWithoutTemplates) {
        fpax().setInt(&IFpax::setUnitType, kTemplateUnit);
        fpax().execMethod(&IFpax::readUnitVersion);
        templatesText = unitVersion();
    }
}

/// The version of the unit that was read last.
QString clKRD9IO::unitVersion()
{
    const QString major = fpax().getBuff(&IFpax::getUnitVersionMajor);
    const QString minor = fpax().getBuff(&IFpax::getUnitVersionMinor);
    const QString build = fpax().getBuff(&IFpax::getUnitVersionBuild);
    return QStringLiteral("%1.%2.%3").arg(major, minor, build);
}

QString clKRD9IO::getDeviceModel() const
{
    if (infoText.isEmpty())
        return {};
    const qsizetype end = deviceText.indexOf(u';');
    return end > 0 ? deviceText.left(end) : QString();
}

/// Throws Exception if the device refuses the mode.
void clKRD9IO::enterDeviceMode(int mode)
{
    fpax().setInt(&IFpax::setMode, mode);
    fpax().execMethod(&IFpax::enterMode);
}

int clKRD9IO::enterModeProgram()
{
    try {
        enterDeviceMode(DeviceCode::kModeProgramming);
    } catch (const Exception&) {
        modeProgram = false;
        return kDriverError;
    }
    modeProgram = true;
    return kDone;
}

int clKRD9IO::enterModeBlocking()
{
    return kDone;
}

int clKRD9IO::test()
{
    return kDone;
}

int clKRD9IO::releasePort()
{
    try {
        fpax().setInt(&IFpax::setDeviceEnabled, 0);
    } catch (...) {
        return kDriverError;
    }
    return kDone;
}

int clKRD9IO::closeSession()
{
    try {
        enterDeviceMode(DeviceCode::kModeReports);
        fpax().setInt(&IFpax::setReportType, DeviceCode::kClosingReport);
        fpax().execMethod(&IFpax::makeReport);
    } catch (const Exception&) {
        return kDriverError;
    }
    return kDone;
}

void clKRD9IO::pulse(QStringList& log, const QString& text)
{
    log.append(text);
}
