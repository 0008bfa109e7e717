#include "workflows/connectionbench.h"

#include <QLabel>
#include <QTest>

namespace {

const QString kRefused = QStringLiteral("Ошибка при задании настроек обмена (ret=255)");

/// How far a start gets.
enum class Reached {
    Names,    ///< to the end, but without the name or the version of the driver
    Nothing,  ///< the driver has not taken the settings
    Settings, ///< the driver is set up, the port stays closed
    Port,     ///< the port is open, the device has not told what it is
    Device,   ///< the device is known, but not in programming mode
    Mode,     ///< to the end
};

bool isException(Failure failure)
{
    return failure == Failure::Standard || failure == Failure::Foreign;
}

/// How far a program gets whose `call` fails.
Reached reachedWith(const QString& call, Failure failure)
{
    const QString operation = operationOf(call);
    if (operation == u"getDriverName" || operation == u"getDriverVersion")
        return Reached::Names;
    // No other failure of a getter shows, and none without a code does.
    if (failure != Failure::Coded && !isException(failure))
        return Reached::Mode;
    if (operation.startsWith(u"get") && failure == Failure::Coded)
        return Reached::Mode;
    if (operation == u"setSingleSetting" || operation == u"applySingleSettings")
        return Reached::Nothing;
    if (operation == u"setDeviceEnabled")
        return Reached::Settings;
    return operation == u"setMode" || operation == u"enterMode" ? Reached::Device : Reached::Port;
}

/// The first flag of the session that is not as `reached` wants it; empty if all are.
QString stateDifference(Reached reached)
{
    const bool isAnswering = reached == Reached::Mode || reached == Reached::Names;
    const bool isConnected = isAnswering || reached == Reached::Device;
    const bool isOpen = isConnected || reached == Reached::Port;
    if (KRD9IO.portOpen != isOpen)
        return QStringLiteral("portOpen");
    if (KRD9IO.connected != isConnected)
        return QStringLiteral("connected");
    return KRD9IO.modeProgram != isAnswering ? QStringLiteral("modeProgram") : QString();
}

QStringList linesOf(Reached reached)
{
    if (reached == Reached::Nothing)
        return {kRefused};
    return reached == Reached::Mode || reached == Reached::Names ? goodDeviceLines() : noConnectionLines();
}

} // namespace

/// Each driver call of a start and of the connection commands fails once, in every way.
class TestConnectionFaults : public QObject
{
    Q_OBJECT

private slots:
    void eachCallOfAStart_data() { addFailureRows(); }
    void eachCallOfAStart();
    void eachCallAfterTheDialog_data() { addFailureRows(); }
    void eachCallAfterTheDialog();
    void eachCallOfTheRelease_data() { addFailureRows(); }
    void eachCallOfTheRelease();
    void deviceThatPretends();
};

void TestConnectionFaults::eachCallOfAStart()
{
    QFETCH(const Failure, failure);
    QStringList good;
    {
        ConnectionBench b;
        b.writeUsualSettings();
        b.start();
        good = b.device.takeCalls();
    }
    QCOMPARE(good.size(), 33);
    const auto fields = manyFields(3);

    for (int k = 1; k <= good.size(); ++k) {
        const QString call = good.at(k - 1);
        ConnectionBench b;
        b.writeUsualSettings();
        b.device.failCall(k, failure);
        b.start();
        b.device.dropFaults();

        // A setting that was not stored without a word makes no difference; a port that was not opened does, and a
        // unit or a mode that was not set.
        Reached reached = reachedWith(call, failure);
        if (failure == Failure::Codeless) {
            if (call == u"setDeviceEnabled(1)" || call == u"setUnitType(145)")
                reached = Reached::Port;
            else if (call == u"setMode(4)")
                reached = Reached::Device;
        }
        QVERIFY2(stateDifference(reached).isEmpty(), qPrintable(call + ": " + stateDifference(reached)));
        const QStringList log = b.log();
        QCOMPARE(log.value(1), driverLines().value(1));
        if (reached == Reached::Names)
            QVERIFY(log.first().startsWith("Драйвер успешно загружен: \""));
        else
            QCOMPARE(log.first(), driverLines().first());
        QCOMPARE(log.mid(2), linesOf(reached));
        QCOMPARE(b.robot.takeTexts(), reached == Reached::Nothing ? QStringList{kRefused} : QStringList());

        showWindow(*b.window);
        b.openFields(fields);
        QCOMPARE(b.harm(fields), QStringList());
        QCOMPARE(b.robot.takeTexts(), QStringList());
    }
}

void TestConnectionFaults::eachCallAfterTheDialog()
{
    QFETCH(const Failure, failure);
    RunningBench b;
    b.choose("actionIOSettings");
    const QStringList good = b.device.takeCalls();
    QCOMPARE(good.size(), 26);
    QCOMPARE(b.watch->takeNew(), QStringList("ShowProperties() ret=0") + goodDeviceLines());

    for (int k = 1; k <= good.size(); ++k) {
        const QString call = good.at(k - 1);
        b.device.failCall(k, failure);
        b.choose("actionIOSettings");
        b.device.dropFaults();

        const QStringList texts = b.robot.takeTexts();
        const QStringList log = b.watch->takeNew();
        if (k == 1) {
            QCOMPARE(texts, QStringList(kNoDialogText));
            QCOMPARE(log, QStringList("ShowProperties() ret=-1"));
        } else {
            const Reached reached = reachedWith(call, failure);
            QVERIFY2(stateDifference(reached).isEmpty(), qPrintable(call + ": " + stateDifference(reached)));
            const QMap<Reached, QString> messages{{Reached::Settings, kNoPortText},
                                                  {Reached::Port, kNoExchangeText},
                                                  {Reached::Device, kNoModeText}};
            QCOMPARE(texts, messages.contains(reached) ? QStringList{messages[reached]} : QStringList());
            QCOMPARE(log, QStringList("ShowProperties() ret=0") + linesOf(reached));
        }
        QCOMPARE(b.harm(b.fields), QStringList());
        QTRY_VERIFY(b.statusCell(2)->text().startsWith(KRD9IO.deviceText));
    }
    b.choose("actionIOSettings");
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QVERIFY(KRD9IO.modeProgram);
    // The template can be saved as it was opened.
    saveTemplateAs(*b.window, b.robot, b.dir.path("saved.csv"));
    QCOMPARE(bytesOf(b.dir.path("saved.csv")), maskFile(b.fields));
}

void TestConnectionFaults::eachCallOfTheRelease()
{
    QFETCH(const Failure, failure);
    RunningBench b;
    b.choose("actionFreePort");
    QCOMPARE(b.device.takeCalls().size(), 1);
    QCOMPARE(b.robot.takeTexts(), QStringList("Порт освобожден."));

    b.device.failCall(1, failure);
    b.choose("actionFreePort");
    QCOMPARE(b.robot.takeTexts().join(u' ').contains("возникла ошибка"), failure != Failure::Codeless);
    b.device.dropFaults();
    b.choose("actionFreePort");
    QCOMPARE(b.robot.takeTexts(), QStringList("Порт освобожден."));
    QCOMPARE(b.harm(b.fields), QStringList());
}

void TestConnectionFaults::deviceThatPretends()
{
    ConnectionBench b;
    b.writeUsualSettings();
    // All is well, says the driver, and does nothing of it.
    b.device.setFaults({QJsonObject{{"operation", "*"}, {"status", 0}, {"withGetters", true}}});
    b.start();
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QCOMPARE(b.log().first(), QString("Драйвер успешно загружен: \"\" v"));
    QCOMPARE(b.log().mid(2), QStringList({"==== Полученные данные ====", "\"\" v", "", "Прошивка:\t\t..",
                                          "Версия шаблонов:\t-", "Состояние сессии:\t0 \tЧек: 0 Fiscal: 0"}));
    b.showAndWait();
    QCOMPARE(b.statusCell(1)->text(), QString("  "));
    QCOMPARE(b.statusCell(2)->text(), QString());
}

QTEST_MAIN(TestConnectionFaults)

#include "tst_connection_faults.moc"
