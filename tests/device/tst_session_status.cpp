#include "device/emulatedsession.h"

#include "support/drivercalls.h"
#include "support/recordingdriver.h"
#include "support/takedriver.h"

#include <QTest>

namespace {

const QStringList kVersionCalls{"getUnitVersionMajor(4096)", "getUnitVersionMinor(4096)",
                                "getUnitVersionBuild(4096)"};

/// Everything up to the version of the firmware unit.
QStringList callsToTheFirmware()
{
    return QStringList{"setDeviceEnabled(1)", "readStatus()", "getDeviceDescription(4096)",
                       "getSerialNumber(4096)"} +
           kVersionCalls +
           QStringList{"getModelId()",    "getCharLineLength()", "getFiscal()",      "getSessionOpened()",
                       "getCheckState()", "setUnitType(145)",    "readUnitVersion()"} +
           kVersionCalls + QStringList{"getUnitVersionBuild(4096)"};
}

const QStringList kTemplateCalls = QStringList{"setUnitType(160)", "readUnitVersion()"} + kVersionCalls;
const QStringList kModeCalls{"setMode(4)", "enterMode()"};

/// A device on which every field has a value of its own.
const QJsonObject kDevice{{"model", 67},          {"modelName", "Тавр 11Ф"}, {"serial", "0011"},
                          {"firmwareMajor", 3},   {"firmwareMinor", 4},      {"firmwareBuild", 3129},
                          {"templateMajor", "7"}, {"templateMinor", "8"},    {"templateBuild", "9"},
                          {"fiscal", true},       {"shiftOpen", true},       {"lineLength", 32}};

} // namespace

/// The session knows no device, whatever it keeps of the states.
#define VERIFY_NOTHING_KNOWN(session)                                                                        \
    do {                                                                                                     \
        QVERIFY(!(session).connected);                                                                       \
        QVERIFY(!(session).modeProgram);                                                                     \
        QCOMPARE((session).modelId, 0);                                                                      \
        QCOMPARE((session).serialText, QString());                                                           \
        QCOMPARE((session).firmwareText, QString());                                                         \
        QCOMPARE((session).infoText, QString());                                                             \
        QCOMPARE((session).templatesText, QString("-"));                                                     \
        QCOMPARE((session).getDeviceModel(), QString());                                                     \
    } while (false)

/// What the session knows of the device.
class TestSessionStatus : public QObject
{
    Q_OBJECT

private slots:
    void newSessionKnowsNothing();
    void statusReadsEverything();
    void templateUnitDependsOnTheBuild_data();
    void templateUnitDependsOnTheBuild();
    void buildIsANumber_data();
    void buildIsANumber();
    void infoKeepsTheVersionOfTheStatus();
    void numbersThatTheDriverDoesNotFillAreZero();
    void openReceiptStopsAtTheMode();
    void refusedPortKeepsTheReason();
    void reasonNamesTheBadParameter();
    void silentDeviceLeavesThePortOpen();
    void refusedPortForgetsTheDeviceButNotItsStates();
    void statusWithoutADriverForgetsTheDevice();
    void statusCanBeAskedAgain();
    void modelIsTheTextBeforeTheFirstSemicolon_data();
    void modelIsTheTextBeforeTheFirstSemicolon();
    void modelNeedsAnInfoText();
    void sessionWithoutADriver();
};

void TestSessionStatus::newSessionKnowsNothing()
{
    const clKRD9IO session;
    QVERIFY(!session.driverIface);
    QVERIFY(session.library.isNull());
    QVERIFY(session.fpaxWrapper.isNull());
    QVERIFY(!session.driverLoaded);
    QVERIFY(!session.portOpen);
    QVERIFY(!session.connected);
    QVERIFY(!session.modeProgram);
    for (const int number :
         {session.sessionState, session.checkState, session.modelId, session.lineChars, session.fiscalState})
        QCOMPARE(number, 0);
    for (const auto& text :
         {session.driverName, session.driverVersion, session.deviceText, session.serialText,
          session.firmwareText, session.infoText, session.templatesText})
        QCOMPARE(text, QString());
    QVERIFY(session.tlvTable.isNull());
}

void TestSessionStatus::statusReadsEverything()
{
    EmulatedSession s;
    s.device.set(kDevice);

    QCOMPARE(s.session.getStatus(), 1);

    QCOMPARE(s.device.takeCalls(), callsToTheFirmware() + kTemplateCalls + kModeCalls);
    QVERIFY(s.session.portOpen);
    QVERIFY(s.session.connected);
    QVERIFY(s.session.modeProgram);
    QCOMPARE(s.session.deviceText, QString("Тавр 11Ф;эмулятор кассы;лента 32 симв."));
    QCOMPARE(s.session.serialText, QString("0011"));
    QCOMPARE(s.session.firmwareText, QString("3.4.3129"));
    QCOMPARE(
        s.session.infoText,
        QString("Устройство: Тавр 11Ф;эмулятор кассы;лента 32 симв.;Серийный номер: 0011;Версия: 3.4.3129"));
    QCOMPARE(s.session.templatesText, QString("7.8.9"));
    QCOMPARE(s.session.modelId, 67);
    QCOMPARE(s.session.lineChars, 32);
    QVERIFY(s.session.fiscalState != 0);
    QVERIFY(s.session.sessionState != 0);
    QCOMPARE(s.session.checkState, 0);
    QCOMPARE(s.session.getDeviceModel(), QString("Тавр 11Ф"));
    QCOMPARE(s.device.state().value("mode").toInt(), 4);
}

void TestSessionStatus::templateUnitDependsOnTheBuild_data()
{
    QTest::addColumn<int>("build");
    QTest::addColumn<bool>("isAsked");
    QTest::newRow("first of all") << 0 << false;
    QTest::newRow("last without templates") << 3128 << false;
    QTest::newRow("first with templates") << 3129 << true;
    QTest::newRow("later") << 99999 << true;
}

void TestSessionStatus::templateUnitDependsOnTheBuild()
{
    QFETCH(const int, build);
    QFETCH(const bool, isAsked);
    EmulatedSession s;
    s.device.set(kDevice);
    s.device.set({{"firmwareBuild", build}});

    QCOMPARE(s.session.getStatus(), 1);

    QCOMPARE(s.session.firmwareText, QString("3.4.%1").arg(build));
    QCOMPARE(s.session.templatesText, isAsked ? QString("7.8.9") : QString("-"));
    QCOMPARE(s.device.takeCalls(),
             callsToTheFirmware() + (isAsked ? kTemplateCalls : QStringList()) + kModeCalls);
}

void TestSessionStatus::buildIsANumber_data()
{
    QTest::addColumn<QString>("build");
    QTest::addColumn<bool>("isAsked");
    QTest::newRow("empty") << "" << false;
    QTest::newRow("word") << "сборка" << false;
    QTest::newRow("with a letter") << "3412a" << false;
    QTest::newRow("hexadecimal") << "0xFFFF" << false;
    QTest::newRow("negative") << "-3412" << false;
    QTest::newRow("too large") << "4294967296" << false;
    QTest::newRow("largest") << "4294967295" << true;
    QTest::newRow("leading zeros") << "0003129" << true;
}

void TestSessionStatus::buildIsANumber()
{
    QFETCH(const QString, build);
    QFETCH(const bool, isAsked);
    RecordingDriver driver;
    driver.setText("getUnitVersionBuild", build);
    clKRD9IO session;
    takeDriver(session, driver);

    QCOMPARE(session.getStatus(), 1);

    QCOMPARE(driver.callsOf("setUnitType"), isAsked ? QStringList({"setUnitType(145)", "setUnitType(160)"})
                                                    : QStringList("setUnitType(145)"));
    QCOMPARE(session.templatesText, isAsked ? ".." + build : QString("-"));
    QCOMPARE(session.firmwareText, ".." + build);
}

void TestSessionStatus::infoKeepsTheVersionOfTheStatus()
{
    RecordingDriver driver;
    driver.setText("getDeviceDescription", "Касса %1;%2");
    driver.setText("getSerialNumber", "%3 <b>");
    driver.setText("getUnitVersionMajor", "1");
    driver.setText("getUnitVersionMinor", "%1");
    driver.setText("getUnitVersionBuild", "4000");
    driver.onCall("readUnitVersion", [&] {
        driver.setText("getUnitVersionMajor",
                       driver.lastNumber("setUnitType") == 145 ? "прошивка" : "шаблоны");
    });
    clKRD9IO session;
    takeDriver(session, driver);

    QCOMPARE(session.getStatus(), 1);

    QCOMPARE(session.infoText, QString("Устройство: Касса %1;%2;Серийный номер: %3 <b>;Версия: 1.%1.4000"));
    QCOMPARE(session.firmwareText, QString("прошивка.%1.4000"));
    QCOMPARE(session.templatesText, QString("шаблоны.%1.4000"));
}

void TestSessionStatus::numbersThatTheDriverDoesNotFillAreZero()
{
    RecordingDriver driver;
    const QStringList getters{"getModelId", "getCharLineLength", "getFiscal", "getSessionOpened",
                              "getCheckState"};
    for (const auto& getter : getters) {
        driver.setNumber(getter, 7);
        driver.answer(getter, {-1, -5}); // no failure, and the number counts
    }
    clKRD9IO session;
    takeDriver(session, driver);
    QCOMPARE(session.getStatus(), 1);
    QCOMPARE(QList<int>({session.modelId, session.lineChars, session.fiscalState, session.sessionState,
                         session.checkState}),
             QList<int>({7, 7, 7, 7, 7}));

    RecordingDriver silent;
    takeDriver(session, silent);
    QCOMPARE(session.getStatus(), 1);
    QCOMPARE(QList<int>({session.modelId, session.lineChars, session.fiscalState, session.sessionState,
                         session.checkState}),
             QList<int>({0, 0, 0, 0, 0}));
}

void TestSessionStatus::openReceiptStopsAtTheMode()
{
    EmulatedSession s;
    s.device.set(kDevice);
    s.device.set({{"receiptState", 1}, {"mode", 1}});

    QCOMPARE(s.session.getStatus(), 0);

    QVERIFY(s.session.portOpen);
    QVERIFY(s.session.connected);
    QVERIFY(!s.session.modeProgram);
    QVERIFY(s.session.checkState != 0);
    QCOMPARE(s.session.templatesText, QString("7.8.9"));
    QCOMPARE(s.session.getDeviceModel(), QString("Тавр 11Ф"));
    QCOMPARE(s.device.state().value("mode").toInt(), 1);
    QCOMPARE(s.device.state().value("receiptState").toInt(), 1);
}

void TestSessionStatus::refusedPortKeepsTheReason()
{
    EmulatedSession s;
    s.device.fail("setDeviceEnabled", Failure::Coded);

    QCOMPARE(s.session.getStatus(), 0);

    QVERIFY(!s.session.portOpen);
    QCOMPARE(s.session.deviceText, QString("Ошибка подключения: [-1000] ") + kFailureText);
    VERIFY_NOTHING_KNOWN(s.session);
    QCOMPARE(s.device.takeCalls(), QStringList("setDeviceEnabled(1)") + kDiagnosis);
}

void TestSessionStatus::reasonNamesTheBadParameter()
{
    EmulatedSession s;
    s.device.setFaults({QJsonObject{{"operation", "setDeviceEnabled"},
                                    {"code", -11},
                                    {"description", "Неверно %2"},
                                    {"badParam", 4},
                                    {"badParamText", "скорость %1"}}});
    QCOMPARE(s.session.getStatus(), 0);
    QCOMPARE(s.session.deviceText, QString("Ошибка подключения: [-11] Неверно %2 (скорость %1)"));
}

void TestSessionStatus::silentDeviceLeavesThePortOpen()
{
    EmulatedSession s;
    s.device.fail("readStatus", Failure::Coded);

    QCOMPARE(s.session.getStatus(), 0);

    QVERIFY(s.session.portOpen);
    QCOMPARE(s.session.deviceText, QString());
    VERIFY_NOTHING_KNOWN(s.session);
    QCOMPARE(s.device.takeCalls(), QStringList({"setDeviceEnabled(1)", "readStatus()"}) + kDiagnosis);
}

void TestSessionStatus::refusedPortForgetsTheDeviceButNotItsStates()
{
    EmulatedSession s;
    s.device.set(kDevice);
    QCOMPARE(s.session.getStatus(), 1);
    const int fiscal = s.session.fiscalState;
    const int shift = s.session.sessionState;
    s.device.set({{"connected", false}});

    QCOMPARE(s.session.getStatus(), 0);

    QVERIFY(!s.session.portOpen);
    VERIFY_NOTHING_KNOWN(s.session);
    QVERIFY(s.session.deviceText.startsWith("Ошибка подключения: [-"));
    QCOMPARE(s.session.lineChars, 32);
    QCOMPARE(s.session.fiscalState, fiscal);
    QCOMPARE(s.session.sessionState, shift);
}

void TestSessionStatus::statusWithoutADriverForgetsTheDevice()
{
    EmulatedSession s;
    s.device.set(kDevice);
    QCOMPARE(s.session.getStatus(), 1);
    s.device.takeCalls();
    s.session.driverLoaded = false;

    QCOMPARE(s.session.getStatus(), 0);

    QVERIFY(!s.session.portOpen);
    QCOMPARE(s.session.deviceText, QString());
    VERIFY_NOTHING_KNOWN(s.session);
    QCOMPARE(s.device.takeCalls(), QStringList());
}

void TestSessionStatus::statusCanBeAskedAgain()
{
    EmulatedSession s;
    s.device.set({{"connected", false}});
    QCOMPARE(s.session.getStatus(), 0);
    s.device.set({{"connected", true}, {"serial", "1"}});
    QCOMPARE(s.session.getStatus(), 1);
    QCOMPARE(s.session.serialText, QString("1"));
    s.device.set({{"serial", "2"}});
    QCOMPARE(s.session.getStatus(), 1);
    QCOMPARE(s.session.serialText, QString("2"));
}

void TestSessionStatus::modelIsTheTextBeforeTheFirstSemicolon_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("model");
    QTest::newRow("two parts") << "Тавр 22Ф;лента"
                               << "Тавр 22Ф";
    QTest::newRow("three parts") << "А;Б;В"
                                 << "А";
    QTest::newRow("blanks stay") << " А ;Б"
                                 << " А ";
    QTest::newRow("semicolon last") << "Тавр;"
                                    << "Тавр";
    QTest::newRow("semicolon first") << ";Тавр;Б"
                                     << "";
    QTest::newRow("semicolon alone") << ";"
                                     << "";
    QTest::newRow("no semicolon") << "Тавр 22Ф"
                                  << "";
    QTest::newRow("empty") << ""
                           << "";
}

void TestSessionStatus::modelIsTheTextBeforeTheFirstSemicolon()
{
    QFETCH(const QString, description);
    QFETCH(const QString, model);
    RecordingDriver driver;
    driver.setText("getDeviceDescription", description);
    clKRD9IO session;
    takeDriver(session, driver);
    QCOMPARE(session.getStatus(), 1);
    QCOMPARE(session.getDeviceModel(), model);
}

void TestSessionStatus::modelNeedsAnInfoText()
{
    clKRD9IO session;
    session.deviceText = "Тавр 22Ф;лента";
    QCOMPARE(session.getDeviceModel(), QString());
    session.infoText = "что угодно";
    QCOMPARE(session.getDeviceModel(), QString("Тавр 22Ф"));
}

void TestSessionStatus::sessionWithoutADriver()
{
    clKRD9IO session;
    session.modeProgram = true;
    QCOMPARE(session.enterModeProgram(), 255);
    QVERIFY(!session.modeProgram);
    QCOMPARE(session.getStatus(), 0);
    QVERIFY(!session.portOpen);
    QCOMPARE(session.deviceText, QString());
    VERIFY_NOTHING_KNOWN(session);
    QCOMPARE(session.enterModeBlocking(), 0);
    QCOMPARE(session.test(), 0);
    QCOMPARE(session.releasePort(), 255);
    QCOMPARE(session.closeSession(), 255);
}

QTEST_GUILESS_MAIN(TestSessionStatus)

#include "tst_session_status.moc"
