#include "fpaxsteps.h"

#include <QDir>
#include <QTest>

class TestEmulatorPaper : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void receiptPrintsTextAndPicture();
    void receiptHoldsItsData();
    void printsAreNumbered();
    void annulledReceiptSaysSo();
    void closingReportIsPrinted();
    void activeTemplateDecides();
    void writtenTemplateShowsOnPaper();
    void freeLinesArePrinted();
    void roundingIsPrinted_data();
    void roundingIsPrinted();
    void reversedPaymentsArePrinted();
    void addressesOfTheReceiptArePrinted();
    void attributeThatIsNotToBePrintedIsNot();
    void pictureIsAsWideAsTheTape_data();
    void pictureIsAsWideAsTheTape();
    void noFolderLosesThePaperOnly();
    void emptyTemplatePrintsAnEmptySheet();

private:
    void sellBread();
    QString all(const QString& kind) const { return m_folder->text(kind).join('\n'); }

    std::unique_ptr<FpaxLibrary> m_fpax;
    std::unique_ptr<PaperFolder> m_folder;
    IFpax* m_driver = nullptr;
};

void TestEmulatorPaper::init()
{
    m_fpax = std::make_unique<FpaxLibrary>();
    m_folder = std::make_unique<PaperFolder>(*m_fpax);
    m_driver = connected(*m_fpax);
}

void TestEmulatorPaper::cleanup()
{
    m_fpax.reset();
    m_folder.reset();
}

void TestEmulatorPaper::sellBread()
{
    QCOMPARE(openReceipt(m_driver), 0);
    QCOMPARE(sell(m_driver, "Хлеб бородинский", 30.5, 2), 0);
    QCOMPARE(pay(m_driver, 0, 50), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
}

void TestEmulatorPaper::receiptPrintsTextAndPicture()
{
    sellBread();
    QCOMPARE(m_folder->names(), QStringList{"0001-receipt"});
    QVERIFY(m_folder->text("receipt").size() > 10);
    const QImage picture = m_folder->picture("receipt");
    QCOMPARE(picture.width(), 576);
    int dark = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            dark += qGray(picture.pixel(x, y)) < 128 ? 1 : 0;
    QVERIFY(dark > 1000);
    QVERIFY(dark < picture.width() * picture.height() / 2);
}

void TestEmulatorPaper::receiptHoldsItsData()
{
    sellBread();
    const QString paper = all("receipt");
    QVERIFY(paper.contains("Хлеб бородинский"));
    QVERIFY(paper.contains("30.50"));
    QVERIFY(paper.contains("СДАЧА"));
    QVERIFY(paper.contains("19.50"));
    QVERIFY(paper.contains("50.00"));
    // 10 of 110 parts of 30.50.
    QVERIFY(paper.contains("2.77"));
    QVERIFY(paper.contains(m_fpax->state().value("serial").toString()));
    QVERIFY(!paper.contains("АННУЛИРОВАН"));
}

void TestEmulatorPaper::printsAreNumbered()
{
    sellBread();
    sellBread();
    QCOMPARE(openReceipt(m_driver), 0);
    QCOMPARE(m_driver->cancelCheck(), 0);
    QCOMPARE(m_folder->names(), (QStringList{"0001-receipt", "0002-receipt", "0003-annulled"}));
}

void TestEmulatorPaper::annulledReceiptSaysSo()
{
    QCOMPARE(openReceipt(m_driver), 0);
    QCOMPARE(sell(m_driver, "Хлеб", 30), 0);
    QCOMPARE(m_driver->cancelCheck(), 0);
    QString letters = all("annulled");
    QVERIFY(letters.contains("Хлеб"));
    // Double width leaves a cell between the letters.
    QVERIFY(letters.remove(' ').contains("ЧЕКАННУЛИРОВАН"));
    QVERIFY(!letters.contains("СДАЧА"));
}

void TestEmulatorPaper::closingReportIsPrinted()
{
    sellBread();
    QCOMPARE(enter(m_driver, 3), 0);
    m_driver->setReportType(1);
    QCOMPARE(m_driver->makeReport(), 0);
    const QString report = all("report");
    QVERIFY(report.contains("СМЕНЫ"));
    QVERIFY(report.contains("=30.50"));
    QVERIFY(!m_folder->picture("report").isNull());
}

void TestEmulatorPaper::activeTemplateDecides()
{
    m_fpax->set({{"activeTemplate", 2}, {"lineLength", 48}});
    sellBread();
    // The date stands at the right end of a line of the narrow template.
    const QStringList narrow = m_folder->text("receipt").filter("ДАТА");
    QCOMPARE(narrow.size(), 1);
    QCOMPARE(narrow.first().size(), 32);

    m_fpax->set({{"activeTemplate", 1}});
    QCOMPARE(openReceipt(m_driver), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
    const QStringList wide = m_folder->text("0002").filter("ДАТА");
    QCOMPARE(wide.size(), 1);
    QCOMPARE(wide.first().size(), 48);
}

void TestEmulatorPaper::writtenTemplateShowsOnPaper()
{
    // All fields off the paper but the name of a position, at cell 7 of line 2 in block 1.
    QCOMPARE(enter(m_driver, 4), 0);
    for (int row = 0; row < 160; ++row)
        exchange(m_driver, writeCommand(1, row, 9, {0}));
    exchange(m_driver, writeCommand(1, 11, 1, {1, 1, 0, 0, 0, 0, 2, 7, 20, 0, 0, 0, 1, 0, 0, 8, 1, 1, 32}));
    QCOMPARE(codeOf(m_driver), 0);
    sellBread();
    QCOMPARE(m_folder->text("receipt"), (QStringList{"", "       Хлеб бородинский"}));
    QCOMPARE(m_folder->picture("receipt").height(), 15 + 24);
}

void TestEmulatorPaper::freeLinesArePrinted()
{
    m_fpax->set({{"table21", QJsonArray{"Первая свободная", "Вторая свободная"}}});
    sellBread();
    QVERIFY(all("receipt").contains("Первая свободная"));
    QVERIFY(all("receipt").contains("Вторая свободная"));
}

void TestEmulatorPaper::roundingIsPrinted_data()
{
    QTest::addColumn<double>("rounding");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("none") << 0.0 << QStringList();
    QTest::newRow("kopecks") << 0.55 << QStringList{"ОКРУГЛЕНИЕ = 0.55"};
}

void TestEmulatorPaper::roundingIsPrinted()
{
    QFETCH(double, rounding);
    QFETCH(QStringList, lines);
    QCOMPARE(openReceipt(m_driver), 0);
    QCOMPARE(sell(m_driver, "Хлеб", 30.55), 0);
    m_driver->setRoundTarget(0);
    m_driver->setRoundMode(0);
    m_driver->setSumm(rounding);
    QCOMPARE(m_driver->applyRounding(), 0);
    QCOMPARE(pay(m_driver, 0, 31), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
    QStringList found;
    for (const QString& line : m_folder->text("receipt").filter("ОКРУГЛЕНИЕ"))
        found.append(line.simplified());
    QCOMPARE(found, lines);
    const QStringList change = m_folder->text("receipt").filter("СДАЧА");
    QCOMPARE(change.size(), 1);
    QVERIFY(change.first().endsWith(QString::number(31 - 30.55 + rounding, 'f', 2)));
}

void TestEmulatorPaper::reversedPaymentsArePrinted()
{
    QCOMPARE(openReceipt(m_driver), 0);
    QCOMPARE(sell(m_driver, "Хлеб", 30), 0);
    QCOMPARE(pay(m_driver, 1, 12.34), 0);
    QCOMPARE(m_driver->makePaymentVariant(), 0);
    QCOMPARE(pay(m_driver, 0, 30), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
    QVERIFY(all("receipt").contains("СТОРНО"));
    QVERIFY(all("receipt").contains("12.34"));
}

void TestEmulatorPaper::addressesOfTheReceiptArePrinted()
{
    QCOMPARE(openReceipt(m_driver), 0);
    m_driver->setTagType(5);
    m_driver->setTagPrint(1);
    m_driver->setTagNumber(1117);
    m_driver->setTagValue(L"shop@example.org");
    QCOMPARE(m_driver->writeTag(), 0);
    m_driver->setTagNumber(1008);
    m_driver->setTagValue(L"buyer@example.org");
    QCOMPARE(m_driver->writeTag(), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
    QVERIFY(all("receipt").contains("shop@example.org"));
    QVERIFY(all("receipt").contains("buyer@example.org"));
}

void TestEmulatorPaper::attributeThatIsNotToBePrintedIsNot()
{
    QCOMPARE(openReceipt(m_driver), 0);
    m_driver->setTagType(5);
    m_driver->setTagPrint(0);
    m_driver->setTagNumber(1008);
    m_driver->setTagValue(L"buyer@example.org");
    QCOMPARE(m_driver->writeTag(), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
    QVERIFY(!m_folder->text("receipt").isEmpty());
    QVERIFY(!all("receipt").contains("buyer@example.org"));
}

void TestEmulatorPaper::pictureIsAsWideAsTheTape_data()
{
    QTest::addColumn<int>("characters");
    QTest::addColumn<int>("dots");
    QTest::newRow("44 mm") << 32 << 384;
    QTest::newRow("57 mm") << 36 << 432;
    QTest::newRow("80 mm") << 48 << 576;
}

void TestEmulatorPaper::pictureIsAsWideAsTheTape()
{
    QFETCH(int, characters);
    QFETCH(int, dots);
    m_fpax->set({{"lineLength", characters}});
    sellBread();
    QCOMPARE(m_folder->picture("receipt").width(), dots);
}

void TestEmulatorPaper::noFolderLosesThePaperOnly()
{
    QFile file(m_folder->path() + "/fpax_paper");
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    sellBread();
    QVERIFY(m_folder->names().isEmpty());
    QCOMPARE(m_fpax->state().value("counters").toObject().value("receipts").toInt(), 1);
}

void TestEmulatorPaper::emptyTemplatePrintsAnEmptySheet()
{
    m_fpax->set({{"table20", QJsonObject{}}});
    sellBread();
    QCOMPARE(m_folder->names(), QStringList{"0001-receipt"});
    QVERIFY(m_folder->text("receipt").isEmpty());
    QVERIFY(!m_folder->picture("receipt").isNull());
}

QTEST_MAIN(TestEmulatorPaper)
#include "tst_emulator_paper.moc"
