#include "device/receiptbench.h"

#include <QTest>

namespace {

/// On a shift that has to be closed first, with none of the steps around the receipt.
constexpr ReceiptOrder kReceiptAlone{
    .number = 2, .isUpLoad = false, .isSessionClose = false, .isPortRelease = false, .isShiftTooOld = true};

constexpr int kShiftIsTooOld = -3822;

} // namespace

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
    const QString harm = b.harmOfGoodReceipt(kReceiptAlone);
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
    using Kind = ReceiptFault::Kind;
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("between");
    constexpr int seldom = 40;
    QTest::newRow("any code") << Kind::Code << kFailureCode << 1;
    QTest::newRow("shift is too old") << Kind::Code << kShiftIsTooOld << seldom;
    QTest::newRow("no code") << Kind::NoCode << 0 << seldom;
}

void TestReceiptRecovery::eachCallFails()
{
    QFETCH(const ReceiptFault::Kind, kind);
    QFETCH(const int, code);
    QFETCH(const int, between);
    const QString harm = harmOfFaults(kReceiptAlone, {kind, code}, between);
    QVERIFY2(harm.isEmpty(), qPrintable(harm));
}

QTEST_MAIN(TestReceiptRecovery)

#include "tst_receipt_recovery.moc"
