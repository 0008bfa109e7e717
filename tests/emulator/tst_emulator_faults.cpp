#include "fpaxlibrary.h"

#include <QElapsedTimer>
#include <QTest>

#include <stdexcept>

class TestEmulatorFaults : public QObject
{
    Q_OBJECT

private slots:
    void namedOperationFails();
    void ruleOverridesCodeAndTexts();
    void ruleWithoutDetailsIsAFailureWithACode();
    void statusWithoutACode();
    void successThatDidNothing();
    void onlyTheNamedCallFails();
    void everyCallFailsWithoutANumber();
    void countLimitsARule();
    void countFromAGivenCall();
    void starFailsTheCallOfThatNumber_data();
    void starFailsTheCallOfThatNumber();
    void starLeavesTheDiagnosticGettersAlone();
    void starWithGettersCountsThem();
    void diagnosticGetterCanBeNamed();
    void failedGetterKeepsTheCode();
    void failedOperationChangesNothing();
    void laterRulesReplaceEarlierOnes();
    void emptyListEndsTheFaults();
    void refusedListKeepsTheOldRules();
    void firstRuleThatStrikesWins();
    void answerIsReplaced_data();
    void answerIsReplaced();
    void lateAnswerIsWhole();
    void delayIsWaitedFor();
    void latencyIsOfTheDeviceOnly();
    void exceptionOfTheLibraryArrives();
    void exceptionOfAnotherTypeArrives();
    void countCountsEveryOperationButTheDiagnosticOnes();
};

void TestEmulatorFaults::namedOperationFails()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QVERIFY(fpax.setFaults({QJsonObject{{"operation", "enterMode"}, {"code", -77}}}));
    QCOMPARE(driver->readStatus(), 0);
    QVERIFY(enter(driver, 4) < 0);
    QCOMPARE(codeOf(driver), -77);
    QVERIFY(!textOf(driver, &IFpax::getResultDescription).isEmpty());
    QCOMPARE(driver->resetMode(), 0);
    QCOMPARE(codeOf(driver), 0);
}

void TestEmulatorFaults::ruleOverridesCodeAndTexts()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "readStatus"},
                                {"status", -9},
                                {"code", -6},
                                {"description", "Провод оборван %1"},
                                {"badParam", 4},
                                {"badParamText", "длина провода"}}});
    QCOMPARE(driver->readStatus(), -9);
    QCOMPARE(codeOf(driver), -6);
    QCOMPARE(textOf(driver, &IFpax::getResultDescription), "Провод оборван %1");
    QCOMPARE(numberOf(driver, &IFpax::getBadParam), 4);
    QCOMPARE(textOf(driver, &IFpax::getBadParamDescription), "длина провода");
}

void TestEmulatorFaults::ruleWithoutDetailsIsAFailureWithACode()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "readStatus"}}});
    QVERIFY(driver->readStatus() < 0);
    QVERIFY(codeOf(driver) < 0);
}

void TestEmulatorFaults::statusWithoutACode()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "readStatus"}, {"status", -1}, {"code", 0}}});
    QCOMPARE(driver->readStatus(), -1);
    QCOMPARE(codeOf(driver), 0);
}

void TestEmulatorFaults::successThatDidNothing()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "enterMode"}, {"status", 0}}});
    QCOMPARE(enter(driver, 4), 0);
    QCOMPARE(codeOf(driver), 0);
    QCOMPARE(fpax.state().value("mode").toInt(), 0);
}

void TestEmulatorFaults::onlyTheNamedCallFails()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "readStatus"}, {"call", 3}}});
    QList<bool> good;
    for (int i = 0; i < 5; ++i)
        good.append(driver->readStatus() == 0);
    QCOMPARE(good, (QList<bool>{true, true, false, true, true}));
}

void TestEmulatorFaults::everyCallFailsWithoutANumber()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "readStatus"}, {"call", 0}}});
    for (int i = 0; i < 5; ++i)
        QVERIFY(driver->readStatus() < 0);
}

void TestEmulatorFaults::countLimitsARule()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "readStatus"}, {"count", 2}}});
    QVERIFY(driver->readStatus() < 0);
    QVERIFY(driver->readStatus() < 0);
    QCOMPARE(driver->readStatus(), 0);
}

void TestEmulatorFaults::countFromAGivenCall()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "readStatus"}, {"call", 2}, {"count", 2}}});
    QList<bool> good;
    for (int i = 0; i < 5; ++i)
        good.append(driver->readStatus() == 0);
    QCOMPARE(good, (QList<bool>{true, false, false, true, true}));
}

void TestEmulatorFaults::starFailsTheCallOfThatNumber_data()
{
    QTest::addColumn<int>("call");
    for (int call = 1; call <= 5; ++call)
        QTest::addRow("%d", call) << call;
}

void TestEmulatorFaults::starFailsTheCallOfThatNumber()
{
    QFETCH(int, call);
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    driver->setMode(4);
    fpax.setFaults({QJsonObject{{"operation", "*"}, {"call", call}, {"code", -6}}});
    int number = 0;
    QList<int> failed;
    const auto note = [&](int status) {
        ++number;
        if (status < 0)
            failed.append(number);
    };
    note(driver->readStatus());
    note(driver->setMode(4));
    codeOf(driver);
    note(driver->enterMode());
    wchar_t buffer[80];
    note(driver->getSerialNumber(buffer, 80));
    textOf(driver, &IFpax::getResultDescription);
    note(driver->resetMode());
    QCOMPARE(failed, QList<int>{call});
    QCOMPARE(fpax.count(), 5);
}

void TestEmulatorFaults::starLeavesTheDiagnosticGettersAlone()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "*"}, {"code", -321}}});
    QVERIFY(driver->readStatus() < 0);
    QCOMPARE(codeOf(driver), -321);
    QVERIFY(!textOf(driver, &IFpax::getResultDescription).isEmpty());
    QCOMPARE(numberOf(driver, &IFpax::getBadParam), 0);
}

void TestEmulatorFaults::starWithGettersCountsThem()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "*"}, {"call", 2}, {"withGetters", true}}});
    int code = 5;
    QCOMPARE(driver->readStatus(), 0);
    QVERIFY(driver->getResultCode(&code) < 0);
    QCOMPARE(code, 5);
    QCOMPARE(driver->readStatus(), 0);
}

void TestEmulatorFaults::diagnosticGetterCanBeNamed()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "getResultDescription"}}});
    wchar_t buffer[10];
    QVERIFY(driver->getResultDescription(buffer, 10) < 0);
}

void TestEmulatorFaults::failedGetterKeepsTheCode()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "getSerialNumber"}}});
    QCOMPARE(driver->readStatus(), 0);
    wchar_t buffer[10] = L"#";
    QVERIFY(driver->getSerialNumber(buffer, 10) < 0);
    QCOMPARE(buffer[0], L'#');
    QCOMPARE(codeOf(driver), 0);
    fpax.setFaults({QJsonObject{{"operation", "getSerialNumber"}, {"code", -44}}});
    QVERIFY(driver->getSerialNumber(buffer, 10) < 0);
    QCOMPARE(codeOf(driver), -44);
}

void TestEmulatorFaults::failedOperationChangesNothing()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(enter(driver, 1), 0);
    driver->setCheckType(1);
    const QJsonObject before = fpax.state();
    fpax.setFaults({QJsonObject{{"operation", "openCheck"}}, QJsonObject{{"operation", "setMode"}}});
    QVERIFY(driver->openCheck() < 0);
    QVERIFY(driver->setMode(3) < 0);
    QCOMPARE(driver->enterMode(), 0);
    QCOMPARE(fpax.state(), before);
}

void TestEmulatorFaults::laterRulesReplaceEarlierOnes()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "readStatus"}}});
    fpax.setFaults({QJsonObject{{"operation", "resetMode"}}});
    QCOMPARE(driver->readStatus(), 0);
    QVERIFY(driver->resetMode() < 0);
}

void TestEmulatorFaults::emptyListEndsTheFaults()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "*"}}});
    QVERIFY(driver->readStatus() < 0);
    QVERIFY(fpax.setFaults({}));
    QCOMPARE(driver->readStatus(), 0);
}

void TestEmulatorFaults::refusedListKeepsTheOldRules()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "readStatus"}}});
    QVERIFY(!fpax.setFaults({QJsonObject{{"operation", "resetMode"}}, QJsonObject{{"call", 1}}}));
    QVERIFY(driver->readStatus() < 0);
    QCOMPARE(driver->resetMode(), 0);
}

void TestEmulatorFaults::firstRuleThatStrikesWins()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "readStatus"}, {"call", 2}, {"code", -1001}},
                    QJsonObject{{"operation", "*"}, {"code", -1002}}});
    QVERIFY(driver->readStatus() < 0);
    QCOMPARE(codeOf(driver), -1002);
    QVERIFY(driver->readStatus() < 0);
    QCOMPARE(codeOf(driver), -1001);
}

void TestEmulatorFaults::answerIsReplaced_data()
{
    QTest::addColumn<QString>("answer");
    QTest::newRow("text") << "51 00 01";
    QTest::newRow("blank behind") << "0A FF ";
    QTest::newRow("no digits") << "ZZ";
}

void TestEmulatorFaults::answerIsReplaced()
{
    QFETCH(QString, answer);
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "getAnswerBuffer"}, {"answer", answer}}});
    QCOMPARE(textOf(driver, &IFpax::getAnswerBuffer), answer);
}

void TestEmulatorFaults::lateAnswerIsWhole()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(enter(driver, 4), 0);
    driver->setCommandBuffer(L"51 00 14 01 01 00 00 00");
    QCOMPARE(driver->execCommandBuffer(), 0);
    const QString answer = textOf(driver, &IFpax::getAnswerBuffer);
    QVERIFY(answer.startsWith("51 00"));
    QVERIFY(fpax.setFaults({QJsonObject{{"operation", "getAnswerBuffer"}, {"delayMs", 5}}}));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(textOf(driver, &IFpax::getAnswerBuffer), answer);
    QVERIFY(timer.elapsed() >= 5);
}

void TestEmulatorFaults::delayIsWaitedFor()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "readStatus"}, {"delayMs", 30}}});
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(driver->readStatus(), 0);
    QVERIFY(timer.elapsed() >= 30);
}

void TestEmulatorFaults::latencyIsOfTheDeviceOnly()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.set({{"latencyMs", 200}});
    fpax.control({{"cmd", "trace"}, {"on", true}});
    QCOMPARE(driver->readStatus(), 0);
    driver->setMode(4);
    QCOMPARE(driver->enterMode(), 0);
    codeOf(driver);
    const QJsonArray calls = fpax.control({{"cmd", "calls"}}).toArray();
    QStringList slow;
    for (const QJsonValue& call : calls)
        if (call["end"].toInteger() - call["begin"].toInteger() >= 200'000'000)
            slow.append(call["op"].toString());
    QVERIFY(slow.contains("readStatus"));
    QVERIFY(slow.contains("enterMode"));
    QVERIFY(!slow.contains("setMode"));
    QVERIFY(!slow.contains("getResultCode"));
}

void TestEmulatorFaults::exceptionOfTheLibraryArrives()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "readStatus"}, {"throw", "std"}, {"count", 1}}});
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, driver->readStatus());
    QCOMPARE(driver->readStatus(), 0);
}

void TestEmulatorFaults::exceptionOfAnotherTypeArrives()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({QJsonObject{{"operation", "enterMode"}, {"throw", "other"}}});
    bool isStandard = true;
    try {
        enter(driver, 4);
        QFAIL("nothing was thrown");
    } catch (const std::exception&) {
    } catch (...) {
        isStandard = false;
    }
    QVERIFY(!isStandard);
    QCOMPARE(fpax.state().value("mode").toInt(), 0);
}

void TestEmulatorFaults::countCountsEveryOperationButTheDiagnosticOnes()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.setFaults({});
    QCOMPARE(fpax.count(), 0);
    driver->readStatus();
    driver->setMode(4);
    numberOf(driver, &IFpax::getFiscal);
    settingOf(driver, "Port");
    QCOMPARE(fpax.count(), 4);
    codeOf(driver);
    numberOf(driver, &IFpax::getBadParam);
    QCOMPARE(fpax.count(), 4);
}

QTEST_MAIN(TestEmulatorFaults)
#include "tst_emulator_faults.moc"
