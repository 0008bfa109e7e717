#include "device/emulatedsession.h"

#include <QTest>

/// The short operations: modes, port and shift.
class TestSessionOperations : public QObject
{
    Q_OBJECT

private slots:
    void programmingModeIsEntered();
    void programmingModeIsRefused();
    void portIsReleased();
    void portIsNotReleased_data();
    void portIsNotReleased();
    void shiftIsClosed();
    void shiftIsNotClosed();
    void operationsThatDoNothing();
    void pulseAppends();
};

void TestSessionOperations::programmingModeIsEntered()
{
    EmulatedSession s;
    s.session.driverIface->setDeviceEnabled(1);
    s.device.takeCalls();
    QCOMPARE(s.session.enterModeProgram(), 0);
    QVERIFY(s.session.modeProgram);
    QCOMPARE(s.device.takeCalls(), QStringList({"setMode(4)", "enterMode()"}));
    QCOMPARE(s.device.state().value("mode").toInt(), 4);
}

void TestSessionOperations::programmingModeIsRefused()
{
    EmulatedSession s;
    QCOMPARE(s.session.getStatus(), 1);
    s.device.set({{"receiptState", 1}});
    QCOMPARE(s.session.enterModeProgram(), 255);
    QVERIFY(!s.session.modeProgram);
    QVERIFY(s.session.connected);
}

void TestSessionOperations::portIsReleased()
{
    EmulatedSession s;
    QCOMPARE(s.session.getStatus(), 1);
    s.device.takeCalls();
    const QString device = s.session.deviceText;

    QCOMPARE(s.session.releasePort(), 0);

    QCOMPARE(s.device.takeCalls(), QStringList("setDeviceEnabled(0)"));
    QVERIFY(s.session.portOpen);
    QVERIFY(s.session.connected);
    QVERIFY(s.session.modeProgram);
    QCOMPARE(s.session.deviceText, device);
    // It is closed indeed.
    QVERIFY(s.session.driverIface->readStatus() < 0);
}

void TestSessionOperations::portIsNotReleased_data()
{
    QTest::addColumn<Failure>("failure");
    QTest::addColumn<int>("result");
    QTest::newRow("code") << Failure::Coded << 255;
    QTest::newRow("no code") << Failure::Codeless << 0;
    QTest::newRow("standard exception") << Failure::Standard << 255;
    QTest::newRow("any exception") << Failure::Foreign << 255;
}

void TestSessionOperations::portIsNotReleased()
{
    QFETCH(const Failure, failure);
    QFETCH(const int, result);
    EmulatedSession s;
    QCOMPARE(s.session.getStatus(), 1);
    s.device.fail("setDeviceEnabled", failure);
    QCOMPARE(s.session.releasePort(), result);
    // It is open indeed.
    s.device.dropFaults();
    QVERIFY(s.session.driverIface->readStatus() >= 0);
    QVERIFY(s.session.portOpen);
}

void TestSessionOperations::shiftIsClosed()
{
    EmulatedSession s;
    s.device.set({{"shiftOpen", true}});
    QCOMPARE(s.session.getStatus(), 1);
    s.device.takeCalls();

    QCOMPARE(s.session.closeSession(), 0);

    QCOMPARE(s.device.takeCalls(),
             QStringList({"setMode(3)", "enterMode()", "setReportType(1)", "makeReport()"}));
    QVERIFY(!s.device.state().value("shiftOpen").toBool());
    QCOMPARE(s.device.state().value("mode").toInt(), 3);
}

void TestSessionOperations::shiftIsNotClosed()
{
    EmulatedSession s;
    QCOMPARE(s.session.getStatus(), 1);
    // There is none to close.
    QCOMPARE(s.session.closeSession(), 255);
    s.device.set({{"shiftOpen", true}, {"receiptState", 1}});
    QCOMPARE(s.session.closeSession(), 255);
    QVERIFY(s.device.state().value("shiftOpen").toBool());
}

void TestSessionOperations::operationsThatDoNothing()
{
    EmulatedSession s;
    QCOMPARE(s.session.enterModeBlocking(), 0);
    QCOMPARE(s.session.test(), 0);
    QCOMPARE(s.device.takeCalls(), QStringList());
}

void TestSessionOperations::pulseAppends()
{
    EmulatedSession s;
    QStringList log{"раньше"};
    s.session.pulse(log, "шаг %1");
    s.session.pulse(log, "");
    QCOMPARE(log, QStringList({"раньше", "шаг %1", ""}));
    QCOMPARE(s.device.takeCalls(), QStringList());
}

QTEST_GUILESS_MAIN(TestSessionOperations)

#include "tst_session_operations.moc"
