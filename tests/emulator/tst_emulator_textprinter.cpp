#include "fpaxsteps.h"

#include <QDir>
#include <QTest>

/// The emulator in a program without windows and fonts.
class TestEmulatorTextPrinter : public QObject
{
    Q_OBJECT

private slots:
    void receiptIsPrintedAsTextAlone();
    void propertiesCannotBeShown();
};

void TestEmulatorTextPrinter::receiptIsPrintedAsTextAlone()
{
    FpaxLibrary fpax;
    const PaperFolder folder(fpax);
    IFpax* driver = connected(fpax);
    QCOMPARE(openReceipt(driver), 0);
    QCOMPARE(sell(driver, "Хлеб бородинский", 30.5), 0);
    QCOMPARE(pay(driver, 0, 50), 0);
    QCOMPARE(driver->closeCheck(), 0);
    QCOMPARE(QDir(folder.path() + "/fpax_paper").entryList(QDir::Files), QStringList{"0001-receipt.txt"});
    QCOMPARE(folder.text("receipt").filter("Хлеб бородинский").size(), 1);
    QCOMPARE(folder.text("receipt").filter("19.50").size(), 1);
}

void TestEmulatorTextPrinter::propertiesCannotBeShown()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    const QJsonObject before = fpax.state();
    QVERIFY(driver->ShowProperties() < 0);
    QVERIFY(codeOf(driver) < 0);
    QVERIFY(!textOf(driver, &IFpax::getResultDescription).isEmpty());
    QCOMPARE(fpax.state(), before);
}

QTEST_GUILESS_MAIN(TestEmulatorTextPrinter)
#include "tst_emulator_textprinter.moc"
