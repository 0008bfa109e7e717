#include "device/utiljson.h"
#include "support/filelimit.h"
#include "workflows/connectionbench.h"

#include <QTest>

namespace {

const QString kNotReopened = QStringLiteral("Ошибка в настройках (переоткрытие settings.json)");

QByteArray newSettings()
{
    return UtilJson::SetSettingsJson().toUtf8();
}

QString readFailure(int result)
{
    return QStringLiteral("Ошибка в настройках (чтение settings.json ret=%1)").arg(result);
}

/// The user chooses another port in the driver's dialog.
void changePort()
{
    KRD9IO.driverIface->setSingleSetting(L"Port", L"8");
}

} // namespace

/// settings.json: what of it outlives the program, and what the program never takes up.
class TestSettingsFile : public QObject
{
    Q_OBJECT

private slots:
    void commentsOutliveAChangedPort();
    void mistakeIsToldWithItsPlace();
    void repairedFileIsNotOverwrittenAtTheEnd();
    void hugeFileIsReplaced();
};

void TestSettingsFile::commentsOutliveAChangedPort()
{
    ConnectionBench b;
    b.writeSettings("// порт\n{\"port\": \"com\", /* и ещё */ \"com\": {\"number\": 5, \"baudrate\": 9600}}");
    b.start();
    QCOMPARE(b.log(), driverLines() + goodDeviceLines());
    changePort();
    b.stop();
    const QString written = QString::fromUtf8(b.settingsFile());
    QVERIFY2(written.trimmed().startsWith("// порт\n"), qPrintable(written));
    QVERIFY2(written.contains("/* и ещё */"), qPrintable(written));
    QVERIFY2(written.contains("\"number\" : 8"), qPrintable(written));
    QVERIFY2(!written.contains("\"number\" : 5"), qPrintable(written));
    QVERIFY2(written.contains("\"baudrate\" : 9600"), qPrintable(written));

    // And the next start reads it.
    b.device.takeCalls();
    b.start();
    QVERIFY(b.device.takeCalls().contains(R"(setSingleSetting("Port", "8"))"));
    QCOMPARE(b.log(), driverLines() + goodDeviceLines());
}

void TestSettingsFile::mistakeIsToldWithItsPlace()
{
    ConnectionBench b;
    b.writeSettings("{\n \"port\": \"com\",\n port: 5}");
    b.start();
    QCOMPARE(b.log(), driverLines() +
                          QStringList({"Ошибка при разборе json [* Line 3, Column 2",
                                       "  Missing '}' or object member name", "]", readFailure(12),
                                       "Пробуем создать новые..."}) +
                          goodDeviceLines());
    QCOMPARE(b.settingsFile(), newSettings());
}

void TestSettingsFile::repairedFileIsNotOverwrittenAtTheEnd()
{
#ifdef Q_OS_UNIX
    const QByteArray cut = newSettings().chopped(2);
    ConnectionBench b;
    b.writeSettings(cut);
    {
        // The new settings are cut in the same way.
        const FileLimit limit(cut.size());
        b.start();
    }
    QCOMPARE(b.robot.takeTexts(), QStringList{kNotReopened});
    QCOMPARE(b.log().filter("Ошибка при разборе json [").size(), 2);
    QCOMPARE(b.settingsFile(), cut);

    const QByteArray repaired = R"({"port": "com", "com": {"number": 7, "baudrate": 9600}})";
    b.writeSettings(repaired);
    changePort();
    b.stop();
    QCOMPARE(b.settingsFile(), repaired);
#else
    QSKIP("no limit for the length of files here");
#endif
}

void TestSettingsFile::hugeFileIsReplaced()
{
    ConnectionBench b;
    // Taken, it would set the port 7.
    b.writeSettings(R"({"port": "com", "com": {"number": 7, "baudrate": 9600}})");
    QVERIFY(QFile::resize(b.settingsPath(), 64 * 1024 * 1024 + 1));
    b.start();
    QCOMPARE(b.log(),
             driverLines() +
                 QStringList({QString("Не удалось открыть файл с настройками [%1]").arg(b.settingsPath()),
                              readFailure(11), "Пробуем создать новые..."}) +
                 goodDeviceLines());
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QCOMPARE(b.settingsFile(), newSettings());
    QVERIFY(b.device.takeCalls().contains(R"(setSingleSetting("Port", "5"))"));
}

QTEST_MAIN(TestSettingsFile)

#include "tst_settings_file.moc"
