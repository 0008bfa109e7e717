#include "device/receiptbench.h"
#include "device/receiptcalls.h"

#include <QTest>

/// Each driver call of the whole command is refused once with each of the result codes that mean something to one of
/// its steps.
class TestReceiptCodes : public QObject
{
    Q_OBJECT

private slots:
    void eachCallIsRefused_data();
    void eachCallIsRefused();
};

void TestReceiptCodes::eachCallIsRefused_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("no exchange") << kNoExchange;
    QTest::newRow("no receipt") << kNoReceipt;
    QTest::newRow("wrong mode") << kWrongMode;
    QTest::newRow("shift is too old") << kShiftMustBeClosed;
}

void TestReceiptCodes::eachCallIsRefused()
{
    QFETCH(const int, code);
    const QString harm = harmOfFaults(kEverything, {.code = code}, kSeldom);
    QVERIFY2(harm.isEmpty(), qPrintable(harm));
}

QTEST_MAIN(TestReceiptCodes)

#include "tst_receipt_codes.moc"
