#include "device/receiptbench.h"

#include <QTest>

namespace {

constexpr ReceiptOrder kEverything{.number = 1};
constexpr ReceiptOrder kOnAnOldShift{
    .number = 2, .isUpLoad = false, .isSessionClose = false, .isPortRelease = false, .isShiftTooOld = true};

} // namespace

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
    using Kind = ReceiptFault::Kind;
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<bool>("isShiftOld");
    QTest::newRow("standard") << Kind::Standard << false;
    QTest::newRow("number") << Kind::Number << false;
    QTest::newRow("with a closing report") << Kind::Standard << true;
}

void TestReceiptExceptions::eachCallThrows()
{
    QFETCH(const ReceiptFault::Kind, kind);
    QFETCH(const bool, isShiftOld);
    constexpr int between = 40;
    const QString harm = harmOfFaults(isShiftOld ? kOnAnOldShift : kEverything, {.kind = kind}, between);
    QVERIFY2(harm.isEmpty(), qPrintable(harm));
}

QTEST_MAIN(TestReceiptExceptions)

#include "tst_receipt_exceptions.moc"
