#include "device/receiptbench.h"

#include <QTest>

namespace {

constexpr ReceiptOrder kEverything{.number = 1};
constexpr int kNoExchange = -6;
constexpr int kNoReceipt = -16;
constexpr int kShiftIsTooOld = -3822;

} // namespace

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
    QTest::newRow("shift is too old") << kShiftIsTooOld;
}

void TestReceiptCodes::eachCallIsRefused()
{
    QFETCH(const int, code);
    constexpr int between = 40;
    const QString harm = harmOfFaults(kEverything, {.code = code}, between);
    QVERIFY2(harm.isEmpty(), qPrintable(harm));
}

QTEST_MAIN(TestReceiptCodes)

#include "tst_receipt_codes.moc"
