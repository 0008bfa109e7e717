#include "app/csettings.h"
#include "app/mainwindow.h"
#include "bench/startreport.h"
#include "device/clkrd9io.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibrary>

#include <optional>

namespace {

/// The driver's library, loaded before the window does it, with its trace switched on.
class TracedDriver
{
public:
    explicit TracedDriver(const QString& fileName)
        : m_library(fileName)
    {
        m_library.setLoadHints(QLibrary::ResolveAllSymbolsHint);
        if (!m_library.load())
            qFatal("%s", qPrintable(m_library.errorString()));
        control(R"({"cmd": "trace", "on": true})");
    }

    QJsonArray calls() { return QJsonDocument::fromJson(control(R"({"cmd": "calls"})")).array(); }

private:
    const char* control(const char* command)
    {
        using ControlFunction = const char*(const char*);
        const auto function = reinterpret_cast<ControlFunction*>(m_library.resolve("FpaxEmulatorControl"));
        if (!function)
            qFatal("the driver is no emulator");
        return function(command);
    }

    QLibrary m_library;
};

/// What the driver was asked stands between the form and the rest of the window.
void markCalls(StartReport& report, const QJsonArray& calls)
{
    report.mark("form", calls.first()["begin"].toInteger());
    report.mark("connection", calls.last()["end"].toInteger());
}

} // namespace

/// The program itself until its window is painted. The first argument is the folder that it takes for its own, a
/// second one, "steps", makes it tell more.
int main(int argc, char** argv)
{
    StartReport report;
    report.mark("main");
    QApplication app(argc, argv);
    report.mark("application");
    Settings.InitPaths();
    Settings.pathApp = QCoreApplication::arguments().value(1);
    QCoreApplication::setOrganizationName(QObject::tr("Компания ТАВР"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("shablonist.local"));
    QCoreApplication::setApplicationName(QObject::tr("Шаблонист"));

    std::optional<TracedDriver> driver;
    if (QCoreApplication::arguments().value(2) == u"steps") {
        driver.emplace(Settings.pathApp + QStringLiteral("/fpax"));
        report.mark("driver library");
    }

    MainWindow window;
    window.setWindowTitle(QCoreApplication::applicationName() +
                          QStringLiteral(" %1.%2.%3.%4").arg(1).arg(0).arg(0).arg(3898));
    if (!KRD9IO.connected)
        qFatal("no connection with the emulator: %s", qPrintable(KRD9IO.deviceText));
    if (driver)
        markCalls(report, driver->calls());
    report.mark("window made");
    window.show();
    report.mark("shown");
    const FirstPaint firstPaint(window, [&report] {
        report.mark("painted");
        report.finish();
    });
    return QApplication::exec();
}
