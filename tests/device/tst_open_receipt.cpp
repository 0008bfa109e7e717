#include "device/emulatedsession.h"

#include <QTest>

/// What the session keeps of a receipt that stands open on the device.
class TestOpenReceipt : public QObject
{
    Q_OBJECT

private slots:
    void refusedPortKeepsTheStateOfTheReceipt();
    void nextAnswerReplacesIt();
};

void TestOpenReceipt::refusedPortKeepsTheStateOfTheReceipt()
{
    EmulatedSession s;
    s.device.set({{"receiptState", 1}, {"mode", 1}});
    QCOMPARE(s.session.getStatus(), 0);
    QVERIFY(s.session.portOpen);
    QVERIFY(s.session.connected);
    const int receipt = s.session.checkState;
    QVERIFY(receipt != 0);

    s.device.set({{"connected", false}});
    QCOMPARE(s.session.getStatus(), 0);
    QVERIFY(!s.session.portOpen);
    QVERIFY(!s.session.connected);
    QCOMPARE(s.session.checkState, receipt);
}

void TestOpenReceipt::nextAnswerReplacesIt()
{
    EmulatedSession s;
    s.device.set({{"receiptState", 1}, {"mode", 1}});
    QCOMPARE(s.session.getStatus(), 0);
    QVERIFY(s.session.checkState != 0);
    s.device.set({{"receiptState", 0}, {"mode", 0}});
    QCOMPARE(s.session.getStatus(), 1);
    QCOMPARE(s.session.checkState, 0);
}

QTEST_MAIN(TestOpenReceipt)

#include "tst_open_receipt.moc"
