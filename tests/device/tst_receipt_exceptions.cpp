#include "device/receiptbench.h"

#include <QTest>

/// Each driver call of the test receipt lets an exception of the driver's own out once.
class TestReceiptExceptions : public QObject
{
    Q_OBJECT

private slots:
    void eachCallThrows_data();
    void eachCallThrows();
};

void TestReceiptExceptions::eachCallThrows_data()
{
    QTest::addColumn<Failure>("failure");
    QTest::addColumn<bool>("isShiftOld");
    QTest::newRow("standard") << Failure::Standard << false;
    QTest::newRow("number") << Failure::Foreign << false;
    QTest::newRow("with a closing report") << Failure::Standard << true;
}

void TestReceiptExceptions::eachCallThrows()
{
    QFETCH(const Failure, failure);
    QFETCH(const bool, isShiftOld);
    const QString harm =
        harmOfFaults(isShiftOld ? kReceiptOnAnOldShift : kEverything, {.failure = failure}, kSeldom);
    QVERIFY2(harm.isEmpty(), qPrintable(harm));
}

QTEST_MAIN(TestReceiptExceptions)

#include "tst_receipt_exceptions.moc"
