#include "device/receiptbench.h"
#include "device/receiptcalls.h"

#include <QTest>

/// Each driver call fails once of a receipt with a closing report in the middle.
class TestReceiptRecovery : public QObject
{
    Q_OBJECT

private slots:
    void reportIsPrintedBeforeTheReceipt();
    void eachCallFails_data();
    void eachCallFails();
};

void TestReceiptRecovery::reportIsPrintedBeforeTheReceipt()
{
    EmulatedReceipt b;
    const auto before = b.device.state()["counters"].toObject();
    const QString harm = b.harmOfGoodReceipt(kReceiptOnAnOldShift);
    QVERIFY2(harm.isEmpty(), qPrintable(harm));
    const auto after = b.device.state()["counters"].toObject();
    // The report and the receipt of the shift that follows it.
    QCOMPARE(after["documents"].toInt(), before["documents"].toInt() + 2);
    QCOMPARE(after["shiftReceipts"].toInt(), 1);
    QCOMPARE(after["receipts"].toInt(), before["receipts"].toInt() + 1);
    QCOMPARE(after["annulled"].toInt(), before["annulled"].toInt());
    const QStringList report{"Вход в режим отчетов с гашением...", "Печать Z-отчета...",
                             "Вход в режим регистрации...", "Открытие чека..."};
    const auto start = b.course.log.indexOf(report.first());
    QVERIFY(start > 0);
    QCOMPARE(b.log().mid(start - 2, 6), report.mid(2) + report);
    QCOMPARE(b.log().at(start + 4), QString("Запись адреса отправителя..."));
}

void TestReceiptRecovery::eachCallFails_data()
{
    QTest::addColumn<Failure>("failure");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("between");
    QTest::newRow("any code") << Failure::Coded << kFailureCode << 1;
    QTest::newRow("shift is too old") << Failure::Coded << kShiftMustBeClosed << kSeldom;
    QTest::newRow("no code") << Failure::Codeless << 0 << kSeldom;
}

void TestReceiptRecovery::eachCallFails()
{
    QFETCH(const Failure, failure);
    QFETCH(const int, code);
    QFETCH(const int, between);
    const QString harm = harmOfFaults(kReceiptOnAnOldShift, {failure, code}, between);
    QVERIFY2(harm.isEmpty(), qPrintable(harm));
}

QTEST_MAIN(TestReceiptRecovery)

#include "tst_receipt_recovery.moc"
