#include "device/emulatedsession.h"
#include "support/drivercalls.h"
#include "support/jsontext.h"

#include <QTest>

#include <functional>

namespace {

/// One operation of the session on a device in a state that lets it succeed.
struct Operation
{
    std::function<void(EmulatedSession&)> prepare;
    std::function<int(EmulatedSession&)> run;
    int good;
    int failed;
};

void nothing(EmulatedSession&) {}

void connectWithAnOpenShift(EmulatedSession& s)
{
    s.device.set({{"shiftOpen", true}});
    s.session.driverIface->setDeviceEnabled(1);
}

Operation settingsFor(const char* text)
{
    return {nothing,
            [text](EmulatedSession& s) {
                return s.session.setIOSettings(jsonOf(text), LUM::Fpax::Model::Tavr22F, "/");
            },
            0, 255};
}

Operation operationNamed(const QByteArray& name)
{
    if (name == "setIOSettings com")
        return settingsFor(R"({"port": "com", "com": {"number": 7, "baudrate": 9600}})");
    if (name == "setIOSettings usb")
        return settingsFor(R"({"port": "usb", "usb": {"vid": "7A31", "pid": "5"}})");
    if (name == "setIOSettings usb path")
        return settingsFor(R"({"port": "usb", "usb": {"path": "x"}})");
    if (name == "setIOSettings tcpip")
        return settingsFor(R"({"port": "tcpip", "tcpip": {"host": "10.0.0.7", "port": 5555}})");
    if (name == "getStatus")
        return {nothing, [](EmulatedSession& s) { return s.session.getStatus(); }, 1, 0};
    if (name == "enterModeProgram")
        return {connectWithAnOpenShift, [](EmulatedSession& s) { return s.session.enterModeProgram(); }, 0,
                255};
    if (name == "releasePort")
        return {connectWithAnOpenShift, [](EmulatedSession& s) { return s.session.releasePort(); }, 0, 255};
    if (name == "closeSession")
        return {connectWithAnOpenShift, [](EmulatedSession& s) { return s.session.closeSession(); }, 0, 255};
    qFatal("no operation %s", name.constData());
    return {};
}

/// True if the device refuses a later call once it has not really done this one.
bool isNeededLater(const QByteArray& operation, const QString& call)
{
    if (operation == "getStatus")
        return call == u"setDeviceEnabled(1)" || call == u"setUnitType(145)" || call == u"setMode(4)";
    if (operation == "enterModeProgram")
        return call == u"setMode(4)";
    return operation == "closeSession" && call != u"makeReport()";
}

QStringList withoutDiagnosis(QStringList calls)
{
    calls.removeIf(isDiagnosis);
    return calls;
}

} // namespace

/// Every driver call of every operation fails once, in every way.
class TestSessionFaults : public QObject
{
    Q_OBJECT

private slots:
    void eachCallFails_data();
    void eachCallFails();
    void eachCallOfTheStatusLeavesItsTraces();
    void portIsTakenOverOnlyIfItIsTold();
};

void TestSessionFaults::eachCallFails_data()
{
    QTest::addColumn<QByteArray>("operation");
    QTest::addColumn<int>("calls");
    const auto row = [](const char* name, int calls) { QTest::newRow(name) << QByteArray(name) << calls; };
    row("setIOSettings com", 6);
    row("setIOSettings usb", 7);
    row("setIOSettings usb path", 5);
    row("setIOSettings tcpip", 7);
    row("getStatus", 25);
    row("enterModeProgram", 2);
    row("releasePort", 1);
    row("closeSession", 4);
}

void TestSessionFaults::eachCallFails()
{
    QFETCH(const QByteArray, operation);
    QFETCH(const int, calls);
    const Operation op = operationNamed(operation);

    QStringList good;
    {
        EmulatedSession s;
        op.prepare(s);
        s.device.takeCalls();
        QCOMPARE(op.run(s), op.good);
        good = s.device.takeCalls();
    }
    QCOMPARE(good.size(), calls);

    for (const Failure failure :
         {Failure::Coded, Failure::Codeless, Failure::Pretended, Failure::Standard, Failure::Foreign}) {
        for (int k = 1; k <= calls; ++k) {
            EmulatedSession s;
            op.prepare(s);
            s.device.takeCalls();
            s.device.failCall(k, failure);
            const QString where = QStringLiteral("call %1, %2, failure %3")
                                      .arg(k)
                                      .arg(good.at(k - 1))
                                      .arg(static_cast<int>(failure));
            const bool isException = failure == Failure::Standard || failure == Failure::Foreign;
            // Getters of the driver never fail visibly.
            const bool fails = failure == Failure::Coded && !isGetter(good.at(k - 1));
            const bool failsLater = !fails && !isException && isNeededLater(operation, good.at(k - 1));
            try {
                const int result = op.run(s);
                const bool isCaught = isException && operation == "releasePort";
                QVERIFY2(!isException || isCaught, qPrintable(where));
                QVERIFY2(result == (fails || failsLater || isCaught ? op.failed : op.good),
                         qPrintable(where));
            } catch (const Exception&) {
                QVERIFY2(false, qPrintable("Exception: " + where));
            } catch (...) {
                QVERIFY2(isException && operation != "releasePort", qPrintable(where));
            }
            const QStringList made = withoutDiagnosis(s.device.takeCalls());
            if (failsLater) {
                QVERIFY2(made.size() > k, qPrintable(where));
                QCOMPARE(made, good.first(made.size()));
            } else if (fails || isException) {
                QCOMPARE(made, good.first(k));
            } else if (operation != "getStatus") { // which leaves out the templates of an unknown build
                QCOMPARE(made, good);
            }

            // The session goes on as if nothing had been.
            s.device.dropFaults();
            QVERIFY2(s.session.getStatus() == 1, qPrintable(where));
            QVERIFY2(s.session.connected && s.session.modeProgram, qPrintable(where));
            QCOMPARE(s.session.serialText, s.device.state().value("serial").toString());
        }
    }
}

void TestSessionFaults::eachCallOfTheStatusLeavesItsTraces()
{
    EmulatedSession first;
    QCOMPARE(first.session.getStatus(), 1);
    const QStringList good = first.device.takeCalls();
    const qsizetype described = good.indexOf("getDeviceDescription(4096)");
    const qsizetype firmware = good.indexOf("setUnitType(145)");
    const qsizetype templates = good.indexOf("setUnitType(160)");
    const qsizetype mode = good.indexOf("setMode(4)");
    QVERIFY(described > 0 && described < firmware && firmware < templates && templates < mode);

    for (qsizetype k = 0; k < good.size(); ++k) {
        if (isGetter(good.at(k)))
            continue;
        EmulatedSession s;
        s.device.failCall(static_cast<int>(k) + 1, Failure::Coded);
        QCOMPARE(s.session.getStatus(), 0);
        QCOMPARE(s.session.portOpen, k > 0);
        QCOMPARE(s.session.connected, k >= mode);
        QVERIFY(!s.session.modeProgram);
        if (k == 0)
            QCOMPARE(s.session.deviceText, QString("Ошибка подключения: [-1000] ") + kFailureText);
        else
            QCOMPARE(s.session.deviceText, k > described ? first.session.deviceText : QString());
        QCOMPARE(s.session.serialText, k > described ? first.session.serialText : QString());
        QCOMPARE(s.session.infoText, k >= firmware ? first.session.infoText : QString());
        QCOMPARE(s.session.firmwareText, k >= firmware ? first.session.firmwareText : QString());
        QCOMPARE(s.session.modelId, k >= firmware ? first.session.modelId : 0);
        QCOMPARE(s.session.templatesText, k >= mode ? first.session.templatesText : QString("-"));
    }
}

void TestSessionFaults::portIsTakenOverOnlyIfItIsTold()
{
    for (const Failure failure :
         {Failure::Coded, Failure::Codeless, Failure::Pretended, Failure::Standard, Failure::Foreign}) {
        for (int k = 1; k <= 2; ++k) {
            EmulatedSession s;
            s.session.driverIface->setSingleSetting(L"Port", L"8");
            s.device.failCall(k, failure);
            Json::Value settings = jsonOf(R"({"com": {"number": 5}})");
            const bool isException = failure == Failure::Standard || failure == Failure::Foreign;
            int result = 255;
            try {
                result = s.session.getIOSettings(settings);
                QVERIFY(!isException);
            } catch (...) {
                QVERIFY(isException);
            }
            // The protocol is asked for and does not count.
            const bool isPortKnown = k == 1 && !isException;
            if (!isException)
                QCOMPARE(result, isPortKnown ? -1 : 0);
            QCOMPARE(settings["com"]["number"].asInt(), isPortKnown ? 8 : 5);
        }
    }
}

QTEST_GUILESS_MAIN(TestSessionFaults)

#include "tst_session_faults.moc"
