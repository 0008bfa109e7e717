#include "fpaxsteps.h"

#include <QSet>
#include <QTest>

class TestEmulatorModes : public QObject
{
    Q_OBJECT

private slots:
    void portOpensAndCloses();
    void portOfADeviceThatIsNotThereIsUnavailable();
    void portTakesZeroAndOneOnly();
    void deviceOperationsNeedAnOpenPort();
    void lostLinkIsCodeMinusSix();
    void lostLinkComesBack();
    void modesAreEntered_data();
    void modesAreEntered();
    void unknownModeIsABadParameter_data();
    void unknownModeIsABadParameter();
    void setModeAloneEntersNothing();
    void openReceiptRefusesOtherModes();
    void openReceiptLetsRegistrationIn();
    void resetModeLeavesTheMode();
    void firstReceiptOpensTheShift();
    void receiptWantsRegistrationMode();
    void secondReceiptIsRefused();
    void unknownReceiptTypeIsABadParameter();
    void shiftThatLastedTooLongRefusesAReceipt();
    void recoveryClosesTheShiftAndOpensTheReceipt();
    void receiptCloses();
    void receiptIsAnnulled();
    void receiptIsAnnulledWithoutAMode();
    void annulmentWithoutAReceiptIsTold_data();
    void annulmentWithoutAReceiptIsTold();
    void stepsOfAReceiptWantOne();
    void reportClosesTheShift();
    void reportWantsItsMode();
    void reportOfAClosedShiftIsRefused();
    void unknownReportIsABadParameter();
    void failuresHaveTheirOwnTexts();
};

void TestEmulatorModes::portOpensAndCloses()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    QCOMPARE(driver->setDeviceEnabled(1), 0);
    QCOMPARE(driver->setDeviceEnabled(1), 0);
    QCOMPARE(driver->setDeviceEnabled(0), 0);
    QCOMPARE(driver->setDeviceEnabled(0), 0);
    QCOMPARE(codeOf(driver), 0);
}

void TestEmulatorModes::portOfADeviceThatIsNotThereIsUnavailable()
{
    FpaxLibrary fpax;
    fpax.set({{"connected", false}});
    IFpax* driver = fpax.create();
    QVERIFY(driver->setDeviceEnabled(1) < 0);
    QCOMPARE(codeOf(driver), -1);
    QCOMPARE(textOf(driver, &IFpax::getResultDescription), "Порт недоступен");
    QCOMPARE(driver->setDeviceEnabled(0), 0);
}

void TestEmulatorModes::portTakesZeroAndOneOnly()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    QVERIFY(driver->setDeviceEnabled(2) < 0);
    QCOMPARE(codeOf(driver), -11);
    QVERIFY(numberOf(driver, &IFpax::getBadParam) != 0);
}

void TestEmulatorModes::deviceOperationsNeedAnOpenPort()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    using Operation = int (IFpax::*)();
    for (const Operation operation :
         {&IFpax::readStatus, &IFpax::enterMode, &IFpax::resetMode, &IFpax::makePayment, &IFpax::openCheck,
          &IFpax::closeCheck, &IFpax::cancelCheck, &IFpax::registerPosition, &IFpax::makeReport,
          &IFpax::applyRounding, &IFpax::writeTableField, &IFpax::readTableField, &IFpax::execCommandBuffer,
          &IFpax::makePaymentVariant, &IFpax::writeTag, &IFpax::readUnitVersion}) {
        driver->setMode(4);
        QVERIFY((driver->*operation)() < 0);
        QCOMPARE(codeOf(driver), -2);
        QVERIFY(!textOf(driver, &IFpax::getResultDescription).isEmpty());
    }
    QCOMPARE(driver->applySingleSettings(), 0);
}

void TestEmulatorModes::lostLinkIsCodeMinusSix()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.set({{"connected", false}});
    QVERIFY(driver->readStatus() < 0);
    QCOMPARE(codeOf(driver), -6);
    QVERIFY(enter(driver, 4) < 0);
    QCOMPARE(codeOf(driver), -6);
    QVERIFY(driver->execCommandBuffer() < 0);
    QCOMPARE(codeOf(driver), -6);
}

void TestEmulatorModes::lostLinkComesBack()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.set({{"connected", false}});
    QVERIFY(driver->readStatus() < 0);
    fpax.set({{"connected", true}});
    QCOMPARE(driver->readStatus(), 0);
}

void TestEmulatorModes::modesAreEntered_data()
{
    QTest::addColumn<int>("mode");
    for (const int mode : {1, 3, 4})
        QTest::addRow("%d", mode) << mode;
}

void TestEmulatorModes::modesAreEntered()
{
    QFETCH(int, mode);
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(enter(driver, mode), 0);
    QCOMPARE(fpax.state().value("mode").toInt(), mode);
}

void TestEmulatorModes::unknownModeIsABadParameter_data()
{
    QTest::addColumn<int>("mode");
    for (const int mode : {0, 2, 5, -1, 1000})
        QTest::addRow("%d", mode) << mode;
}

void TestEmulatorModes::unknownModeIsABadParameter()
{
    QFETCH(int, mode);
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(enter(driver, 4), 0);
    QVERIFY(enter(driver, mode) < 0);
    QCOMPARE(codeOf(driver), -11);
    QVERIFY(numberOf(driver, &IFpax::getBadParam) != 0);
    QVERIFY(textOf(driver, &IFpax::getBadParamDescription).contains(QString::number(mode)));
    QCOMPARE(fpax.state().value("mode").toInt(), 4);
}

void TestEmulatorModes::setModeAloneEntersNothing()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(driver->setMode(4), 0);
    QCOMPARE(fpax.state().value("mode").toInt(), 0);
}

void TestEmulatorModes::openReceiptRefusesOtherModes()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(openReceipt(driver), 0);
    for (const int mode : {3, 4}) {
        QVERIFY(enter(driver, mode) < 0);
        QCOMPARE(codeOf(driver), -3803);
        QCOMPARE(fpax.state().value("mode").toInt(), 1);
    }
}

void TestEmulatorModes::openReceiptLetsRegistrationIn()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.set({{"receiptState", 1}});
    QCOMPARE(enter(driver, 1), 0);
}

void TestEmulatorModes::resetModeLeavesTheMode()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(enter(driver, 4), 0);
    QCOMPARE(driver->resetMode(), 0);
    QCOMPARE(fpax.state().value("mode").toInt(), 0);
    QCOMPARE(driver->resetMode(), 0);
}

void TestEmulatorModes::firstReceiptOpensTheShift()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(driver->readStatus(), 0);
    QCOMPARE(numberOf(driver, &IFpax::getSessionOpened), 0);
    QCOMPARE(openReceipt(driver), 0);
    QCOMPARE(driver->readStatus(), 0);
    QVERIFY(numberOf(driver, &IFpax::getSessionOpened) != 0);
    QVERIFY(numberOf(driver, &IFpax::getCheckState) != 0);
}

void TestEmulatorModes::receiptWantsRegistrationMode()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    driver->setCheckType(1);
    for (const int mode : {3, 4}) {
        QCOMPARE(enter(driver, mode), 0);
        QVERIFY(driver->openCheck() < 0);
        QCOMPARE(codeOf(driver), -3801);
    }
    QCOMPARE(driver->resetMode(), 0);
    QVERIFY(driver->openCheck() < 0);
    QCOMPARE(codeOf(driver), -3801);
    QCOMPARE(fpax.state().value("shiftOpen"), QJsonValue(false));
}

void TestEmulatorModes::secondReceiptIsRefused()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(openReceipt(driver), 0);
    QVERIFY(driver->openCheck() < 0);
    QCOMPARE(codeOf(driver), -3803);
    QCOMPARE(fpax.state().value("receiptState").toInt(), 1);
}

void TestEmulatorModes::unknownReceiptTypeIsABadParameter()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(enter(driver, 1), 0);
    driver->setCheckType(0);
    QVERIFY(driver->openCheck() < 0);
    QCOMPARE(codeOf(driver), -11);
    QVERIFY(numberOf(driver, &IFpax::getBadParam) != 0);
}

void TestEmulatorModes::shiftThatLastedTooLongRefusesAReceipt()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.set({{"shiftOpen", true}, {"shiftExpired", true}});
    QVERIFY(openReceipt(driver) < 0);
    QCOMPARE(codeOf(driver), -3822);
    QCOMPARE(fpax.state().value("receiptState").toInt(), 0);
}

void TestEmulatorModes::recoveryClosesTheShiftAndOpensTheReceipt()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.set({{"shiftOpen", true}, {"shiftExpired", true}});
    QVERIFY(openReceipt(driver) < 0);
    QCOMPARE(enter(driver, 3), 0);
    driver->setReportType(1);
    QCOMPARE(driver->makeReport(), 0);
    QCOMPARE(openReceipt(driver), 0);
    QCOMPARE(fpax.state().value("shiftOpen"), QJsonValue(true));
    QCOMPARE(fpax.state().value("shiftExpired"), QJsonValue(false));
}

void TestEmulatorModes::receiptCloses()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(openReceipt(driver), 0);
    QCOMPARE(driver->closeCheck(), 0);
    const QJsonObject state = fpax.state();
    QCOMPARE(state.value("receiptState").toInt(), 0);
    QCOMPARE(state.value("shiftOpen"), QJsonValue(true));
    QCOMPARE(state.value("mode").toInt(), 1);
    QCOMPARE(state.value("counters").toObject().value("receipts").toInt(), 1);
    QVERIFY(driver->closeCheck() < 0);
    QCOMPARE(codeOf(driver), -16);
}

void TestEmulatorModes::receiptIsAnnulled()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(openReceipt(driver), 0);
    QCOMPARE(driver->cancelCheck(), 0);
    QCOMPARE(fpax.state().value("receiptState").toInt(), 0);
    const QJsonObject counters = fpax.state().value("counters").toObject();
    QCOMPARE(counters.value("annulled").toInt(), 1);
    QCOMPARE(counters.value("receipts").toInt(), 0);
}

void TestEmulatorModes::receiptIsAnnulledWithoutAMode()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.set({{"receiptState", 1}, {"mode", 0}});
    QCOMPARE(driver->cancelCheck(), 0);
    QCOMPARE(enter(driver, 4), 0);
}

void TestEmulatorModes::annulmentWithoutAReceiptIsTold_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("code");
    QTest::newRow("no mode") << 0 << -16;
    QTest::newRow("registration") << 1 << -16;
    QTest::newRow("reports") << 3 << -3801;
    QTest::newRow("programming") << 4 << -3801;
}

void TestEmulatorModes::annulmentWithoutAReceiptIsTold()
{
    QFETCH(int, mode);
    QFETCH(int, code);
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.set({{"mode", mode}});
    QVERIFY(driver->cancelCheck() < 0);
    QCOMPARE(codeOf(driver), code);
}

void TestEmulatorModes::stepsOfAReceiptWantOne()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    using Operation = int (IFpax::*)();
    for (const Operation step : {&IFpax::registerPosition, &IFpax::makePayment, &IFpax::makePaymentVariant,
                                 &IFpax::applyRounding, &IFpax::writeTag, &IFpax::closeCheck}) {
        QCOMPARE(enter(driver, 1), 0);
        QVERIFY((driver->*step)() < 0);
        QCOMPARE(codeOf(driver), -16);
        QCOMPARE(enter(driver, 4), 0);
        QVERIFY((driver->*step)() < 0);
        QCOMPARE(codeOf(driver), -3801);
    }
}

void TestEmulatorModes::reportClosesTheShift()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.set({{"shiftOpen", true}});
    QCOMPARE(enter(driver, 3), 0);
    driver->setReportType(1);
    QCOMPARE(driver->makeReport(), 0);
    QCOMPARE(driver->readStatus(), 0);
    QCOMPARE(numberOf(driver, &IFpax::getSessionOpened), 0);
}

void TestEmulatorModes::reportWantsItsMode()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.set({{"shiftOpen", true}});
    driver->setReportType(1);
    for (const int mode : {1, 4}) {
        QCOMPARE(enter(driver, mode), 0);
        QVERIFY(driver->makeReport() < 0);
        QCOMPARE(codeOf(driver), -3801);
    }
    QCOMPARE(fpax.state().value("shiftOpen"), QJsonValue(true));
}

void TestEmulatorModes::reportOfAClosedShiftIsRefused()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(enter(driver, 3), 0);
    driver->setReportType(1);
    QVERIFY(driver->makeReport() < 0);
    QCOMPARE(codeOf(driver), -3806);
}

void TestEmulatorModes::unknownReportIsABadParameter()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.set({{"shiftOpen", true}});
    QCOMPARE(enter(driver, 3), 0);
    driver->setReportType(77);
    QVERIFY(driver->makeReport() < 0);
    QCOMPARE(codeOf(driver), -11);
    QVERIFY(numberOf(driver, &IFpax::getBadParam) != 0);
    QCOMPARE(fpax.state().value("shiftOpen"), QJsonValue(true));
}

void TestEmulatorModes::failuresHaveTheirOwnTexts()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QSet<QString> texts;
    QCOMPARE(enter(driver, 1), 0);
    QVERIFY(driver->cancelCheck() < 0);
    texts.insert(textOf(driver, &IFpax::getResultDescription));
    QCOMPARE(enter(driver, 4), 0);
    QVERIFY(driver->cancelCheck() < 0);
    texts.insert(textOf(driver, &IFpax::getResultDescription));
    fpax.set({{"shiftOpen", true}, {"shiftExpired", true}});
    QVERIFY(openReceipt(driver) < 0);
    texts.insert(textOf(driver, &IFpax::getResultDescription));
    fpax.set({{"connected", false}});
    QVERIFY(driver->readStatus() < 0);
    texts.insert(textOf(driver, &IFpax::getResultDescription));
    QCOMPARE(texts.size(), 4);
    QVERIFY(!texts.contains(QString()));
}

QTEST_MAIN(TestEmulatorModes)
#include "tst_emulator_modes.moc"
