#include "workflows/connectionbench.h"

#include "device/utiljson.h"

#include <QLabel>
#include <QTest>

namespace {

const QString kRefused = QStringLiteral("Ошибка при задании настроек обмена (ret=255)");
const QString kNoPort = QStringLiteral("Порт обмена недоступен!");
const QString kNoExchange = QStringLiteral("Не удалось установить обмен данными с устройством.");
const QString kNoMode = QStringLiteral("Не удалось войти в режим обмена (программирования).");
const QString kNoDialog =
    QStringLiteral("Ошибка при вызове диалога настроек!\nВозможно не хватает библиотек dll.");

/// How far a program gets whose `call` fails.
enum class Reached { Names, Nothing, Settings, Port, Device, Mode };

bool isException(Failure failure)
{
    return failure == Failure::Standard || failure == Failure::Foreign;
}

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

/// All the program's knowledge of the connection is that of `reached`.
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

void addFailures()
{
    QTest::addColumn<Failure>("failure");
    QTest::newRow("code") << Failure::Coded;
    QTest::newRow("no code") << Failure::Codeless;
    QTest::newRow("standard exception") << Failure::Standard;
    QTest::newRow("any exception") << Failure::Foreign;
}

} // namespace

/// Each driver call of a start and of the connection commands fails once, in every way.
class TestConnectionFaults : public QObject
{
    Q_OBJECT

private slots:
    void eachCallOfAStart_data();
    void eachCallOfAStart();
    void eachCallAfterTheDialog_data() { addFailures(); }
    void eachCallAfterTheDialog();
    void eachCallOfTheRelease_data() { addFailures(); }
    void eachCallOfTheRelease();
    void deviceThatPretends();
};

void TestConnectionFaults::eachCallOfAStart_data()
{
    QTest::addColumn<Failure>("failure");
    QTest::newRow("code") << Failure::Coded;
    QTest::newRow("no code") << Failure::Codeless;
    QTest::newRow("any exception") << Failure::Foreign;
}

void TestConnectionFaults::eachCallOfAStart()
{
    QFETCH(const Failure, failure);
    QStringList good;
    {
        ConnectionBench b;
        b.writeSettings(UtilJson::SetSettingsJson().toUtf8());
        b.start();
        good = b.device.takeCalls();
    }
    QCOMPARE(good.size(), 33);
    const auto fields = manyFields(3);

    for (int k = 1; k <= good.size(); ++k) {
        const QString call = good.at(k - 1);
        ConnectionBench b;
        b.writeSettings(UtilJson::SetSettingsJson().toUtf8());
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
    ConnectionBench b;
    b.writeSettings(UtilJson::SetSettingsJson().toUtf8());
    b.start();
    b.showAndWait();
    const auto fields = manyFields(4);
    b.openFields(fields);
    LogWatch watch(*b.window);
    b.device.takeCalls();
    chooseInMenu(*b.window, "actionIOSettings");
    const QStringList good = b.device.takeCalls();
    QCOMPARE(good.size(), 26);
    QCOMPARE(watch.takeNew(), QStringList("ShowProperties() ret=0") + goodDeviceLines());

    for (int k = 1; k <= good.size(); ++k) {
        const QString call = good.at(k - 1);
        b.device.failCall(k, failure);
        chooseInMenu(*b.window, "actionIOSettings");
        b.device.dropFaults();

        const QStringList texts = b.robot.takeTexts();
        const QStringList log = watch.takeNew();
        if (k == 1) {
            QCOMPARE(texts, QStringList{kNoDialog});
            QCOMPARE(log, QStringList("ShowProperties() ret=-1"));
        } else {
            const Reached reached = reachedWith(call, failure);
            QVERIFY2(stateDifference(reached).isEmpty(), qPrintable(call + ": " + stateDifference(reached)));
            const QMap<Reached, QString> messages{
                {Reached::Settings, kNoPort}, {Reached::Port, kNoExchange}, {Reached::Device, kNoMode}};
            QCOMPARE(texts, messages.contains(reached) ? QStringList{messages[reached]} : QStringList());
            QCOMPARE(log, QStringList("ShowProperties() ret=0") + linesOf(reached));
        }
        QCOMPARE(b.harm(fields), QStringList());
        QTRY_VERIFY(b.statusCell(2)->text().startsWith(KRD9IO.deviceText));
    }
    chooseInMenu(*b.window, "actionIOSettings");
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QVERIFY(KRD9IO.modeProgram);
    // The template can be saved as it was opened.
    saveTemplateAs(*b.window, b.robot, b.dir.path("saved.csv"));
    QCOMPARE(bytesOf(b.dir.path("saved.csv")), maskFile(fields));
}

void TestConnectionFaults::eachCallOfTheRelease()
{
    QFETCH(const Failure, failure);
    ConnectionBench b;
    b.writeSettings(UtilJson::SetSettingsJson().toUtf8());
    b.start();
    b.showAndWait();
    const auto fields = manyFields(4);
    b.openFields(fields);
    b.device.takeCalls();
    chooseInMenu(*b.window, "actionFreePort");
    QCOMPARE(b.device.takeCalls().size(), 1);
    QCOMPARE(b.robot.takeTexts(), QStringList("Порт освобожден."));

    b.device.failCall(1, failure);
    chooseInMenu(*b.window, "actionFreePort");
    QCOMPARE(b.robot.takeTexts().join(u' ').contains("возникла ошибка"), failure != Failure::Codeless);
    b.device.dropFaults();
    chooseInMenu(*b.window, "actionFreePort");
    QCOMPARE(b.robot.takeTexts(), QStringList("Порт освобожден."));
    QCOMPARE(b.harm(fields), QStringList());
}

void TestConnectionFaults::deviceThatPretends()
{
    ConnectionBench b;
    b.writeSettings(UtilJson::SetSettingsJson().toUtf8());
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
