#include "device/receiptbench.h"

#include <QTest>

/// Each driver call of the whole command is refused once with a result code that says nothing: template, receipt, shift
/// and port. After each of them the command works again.
class TestReceiptRefusals : public QObject
{
    Q_OBJECT

private slots:
    void eachCallIsRefused();
};

void TestReceiptRefusals::eachCallIsRefused()
{
    const QString harm = harmOfFaults(kEverything, {}, 1);
    QVERIFY2(harm.isEmpty(), qPrintable(harm));
}

QTEST_MAIN(TestReceiptRefusals)

#include "tst_receipt_refusals.moc"
