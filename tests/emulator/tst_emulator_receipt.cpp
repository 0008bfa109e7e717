#include "fpaxsteps.h"

#include <QTest>

#include <limits>

class TestEmulatorReceipt : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void positionsAddUp();
    void positionWithoutASumIsPriceTimesQuantity();
    void sumGoesWithOnePosition();
    void badPositionsAreRefused_data();
    void badPositionsAreRefused();
    void longestNameHasAThousandCharacters();
    void receiptWantsToBePaid();
    void cashMayExceedTheTotal();
    void cardMayNotExceedTheTotal();
    void paymentIsTakenBack();
    void paymentThatWasNotMadeIsNotTakenBack();
    void badPaymentsAreRefused_data();
    void badPaymentsAreRefused();
    void positionAfterAPaymentIsRefused();
    void roundingLowersTheTotal();
    void badRoundingsAreRefused_data();
    void badRoundingsAreRefused();
    void roundingAfterAPaymentIsRefused();
    void attributesAreKept();
    void badAttributesAreRefused_data();
    void badAttributesAreRefused();
    void newReceiptIsEmpty();
    void testReceiptGoesThrough();
    void openReceiptSurvives();
    void receiptsAreCounted();
    void nextShiftStartsAtNothing();

private:
    double total();

    std::unique_ptr<FpaxLibrary> m_fpax;
    IFpax* m_driver = nullptr;
};

void TestEmulatorReceipt::init()
{
    m_fpax = std::make_unique<FpaxLibrary>();
    m_driver = connected(*m_fpax);
    QCOMPARE(openReceipt(m_driver), 0);
}

void TestEmulatorReceipt::cleanup()
{
    m_fpax.reset();
}

double TestEmulatorReceipt::total()
{
    double sum = -1;
    return m_driver->readStatus() == 0 && m_driver->getSumm(&sum) >= 0 ? sum : -1;
}

void TestEmulatorReceipt::positionsAddUp()
{
    QCOMPARE(total(), 0.0);
    QCOMPARE(sell(m_driver, "Хлеб", 30.5), 0);
    QCOMPARE(total(), 30.5);
    QCOMPARE(sell(m_driver, "Соль", 0.01), 0);
    QCOMPARE(total(), 30.51);
}

void TestEmulatorReceipt::positionWithoutASumIsPriceTimesQuantity()
{
    m_driver->setPositionName(L"Сыр");
    m_driver->setPrice(400);
    m_driver->setQuantity(0.345);
    QCOMPARE(m_driver->registerPosition(), 0);
    QCOMPARE(total(), 138.0);
}

void TestEmulatorReceipt::sumGoesWithOnePosition()
{
    m_driver->setPositionSum(7);
    QCOMPARE(sell(m_driver, "Со скидкой", 10), 0);
    QCOMPARE(total(), 7.0);
    QCOMPARE(sell(m_driver, "Без скидки", 10), 0);
    QCOMPARE(total(), 17.0);
}

void TestEmulatorReceipt::badPositionsAreRefused_data()
{
    QTest::addColumn<double>("price");
    QTest::addColumn<double>("quantity");
    QTest::addColumn<double>("sum");
    QTest::addColumn<int>("group");
    QTest::addColumn<int>("tax");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("negative price") << -1.0 << 1.0 << 1.0 << 1 << 1;
    QTest::newRow("price that is no number") << nan << 1.0 << 1.0 << 1 << 1;
    QTest::newRow("huge price") << 1e300 << 1.0 << 1.0 << 1 << 1;
    QTest::newRow("no quantity") << 1.0 << 0.0 << 1.0 << 1 << 1;
    QTest::newRow("negative quantity") << 1.0 << -2.0 << 1.0 << 1 << 1;
    QTest::newRow("endless quantity") << 1.0 << infinity << 1.0 << 1 << 1;
    QTest::newRow("negative sum") << 1.0 << 1.0 << -1.0 << 1 << 1;
    QTest::newRow("endless sum") << 1.0 << 1.0 << infinity << 1 << 1;
    QTest::newRow("group") << 1.0 << 1.0 << 1.0 << 17 << 1;
    QTest::newRow("negative group") << 1.0 << 1.0 << 1.0 << -1 << 1;
    QTest::newRow("tax") << 1.0 << 1.0 << 1.0 << 1 << 7;
}

void TestEmulatorReceipt::badPositionsAreRefused()
{
    QFETCH(double, price);
    QFETCH(double, quantity);
    QFETCH(double, sum);
    QFETCH(int, group);
    QFETCH(int, tax);
    m_driver->setPositionName(L"Товар");
    m_driver->setPrice(price);
    m_driver->setQuantity(quantity);
    m_driver->setPositionSum(sum);
    m_driver->setPositionGroup(group);
    m_driver->setPositionTax(tax);
    QVERIFY(m_driver->registerPosition() < 0);
    QCOMPARE(codeOf(m_driver), -11);
    QVERIFY(numberOf(m_driver, &IFpax::getBadParam) != 0);
    QVERIFY(!textOf(m_driver, &IFpax::getBadParamDescription).isEmpty());
    QCOMPARE(total(), 0.0);
}

void TestEmulatorReceipt::longestNameHasAThousandCharacters()
{
    QVERIFY(sell(m_driver, QString(1001, 'x'), 1) < 0);
    QCOMPARE(codeOf(m_driver), -11);
    QVERIFY(numberOf(m_driver, &IFpax::getBadParam) != 0);
    QVERIFY(textOf(m_driver, &IFpax::getBadParamDescription).contains("1000"));
    QCOMPARE(total(), 0.0);
    QCOMPARE(sell(m_driver, QString(1000, 'x'), 1), 0);
    QCOMPARE(total(), 1.0);
}

void TestEmulatorReceipt::receiptWantsToBePaid()
{
    QCOMPARE(sell(m_driver, "Хлеб", 30), 0);
    QVERIFY(m_driver->closeCheck() < 0);
    QCOMPARE(codeOf(m_driver), -3850);
    QCOMPARE(pay(m_driver, 0, 29.99), 0);
    QVERIFY(m_driver->closeCheck() < 0);
    QCOMPARE(codeOf(m_driver), -3850);
    QCOMPARE(pay(m_driver, 0, 0.01), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
}

void TestEmulatorReceipt::cashMayExceedTheTotal()
{
    QCOMPARE(sell(m_driver, "Хлеб", 30), 0);
    QCOMPARE(pay(m_driver, 0, 100), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
    QCOMPARE(m_fpax->state().value("counters").toObject().value("shiftTotal").toInt(), 3000);
}

void TestEmulatorReceipt::cardMayNotExceedTheTotal()
{
    QCOMPARE(sell(m_driver, "Хлеб", 30), 0);
    for (const int type : {1, 2, 3}) {
        QVERIFY(pay(m_driver, type, 30.01) < 0);
        QCOMPARE(codeOf(m_driver), -3852);
    }
    QCOMPARE(pay(m_driver, 1, 20), 0);
    QVERIFY(pay(m_driver, 2, 10.01) < 0);
    QCOMPARE(codeOf(m_driver), -3852);
    QCOMPARE(pay(m_driver, 2, 10), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
}

void TestEmulatorReceipt::paymentIsTakenBack()
{
    QCOMPARE(sell(m_driver, "Хлеб", 30), 0);
    QCOMPARE(pay(m_driver, 1, 30), 0);
    m_driver->setPaymentType(1);
    m_driver->setSumm(30);
    QCOMPARE(m_driver->makePaymentVariant(), 0);
    QVERIFY(m_driver->closeCheck() < 0);
    QCOMPARE(pay(m_driver, 0, 30), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
}

void TestEmulatorReceipt::paymentThatWasNotMadeIsNotTakenBack()
{
    QCOMPARE(sell(m_driver, "Хлеб", 30), 0);
    QCOMPARE(pay(m_driver, 1, 10), 0);
    m_driver->setPaymentType(2);
    m_driver->setSumm(10);
    QVERIFY(m_driver->makePaymentVariant() < 0);
    QCOMPARE(codeOf(m_driver), -3853);
    m_driver->setPaymentType(1);
    m_driver->setSumm(10.01);
    QVERIFY(m_driver->makePaymentVariant() < 0);
    QCOMPARE(codeOf(m_driver), -3853);
}

void TestEmulatorReceipt::badPaymentsAreRefused_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<double>("sum");
    QTest::newRow("unknown type") << 4 << 1.0;
    QTest::newRow("negative type") << -1 << 1.0;
    QTest::newRow("nothing") << 0 << 0.0;
    QTest::newRow("negative sum") << 0 << -5.0;
    QTest::newRow("endless sum") << 0 << std::numeric_limits<double>::infinity();
}

void TestEmulatorReceipt::badPaymentsAreRefused()
{
    QFETCH(int, type);
    QFETCH(double, sum);
    QCOMPARE(sell(m_driver, "Хлеб", 30), 0);
    QVERIFY(pay(m_driver, type, sum) < 0);
    QCOMPARE(codeOf(m_driver), -11);
    QVERIFY(numberOf(m_driver, &IFpax::getBadParam) != 0);
    QVERIFY(m_driver->makePaymentVariant() < 0);
    QCOMPARE(codeOf(m_driver), -11);
    QVERIFY(numberOf(m_driver, &IFpax::getBadParam) != 0);
}

void TestEmulatorReceipt::positionAfterAPaymentIsRefused()
{
    QCOMPARE(sell(m_driver, "Хлеб", 30), 0);
    QCOMPARE(pay(m_driver, 0, 1), 0);
    QVERIFY(sell(m_driver, "Соль", 1) < 0);
    QCOMPARE(codeOf(m_driver), -3851);
    QCOMPARE(total(), 30.0);
}

void TestEmulatorReceipt::roundingLowersTheTotal()
{
    QCOMPARE(sell(m_driver, "Хлеб", 30.55), 0);
    m_driver->setRoundTarget(0);
    m_driver->setRoundMode(0);
    m_driver->setSumm(0.55);
    QCOMPARE(m_driver->applyRounding(), 0);
    QCOMPARE(total(), 30.0);
    m_driver->setSumm(0);
    QCOMPARE(m_driver->applyRounding(), 0);
    QCOMPARE(total(), 30.55);
}

void TestEmulatorReceipt::badRoundingsAreRefused_data()
{
    QTest::addColumn<int>("target");
    QTest::addColumn<int>("mode");
    QTest::addColumn<double>("sum");
    QTest::newRow("target") << 1 << 0 << 0.1;
    QTest::newRow("mode") << 0 << 5 << 0.1;
    QTest::newRow("a rouble") << 0 << 0 << 1.0;
    QTest::newRow("negative") << 0 << 0 << -0.1;
    QTest::newRow("more than the receipt") << 0 << 0 << 0.6;
}

void TestEmulatorReceipt::badRoundingsAreRefused()
{
    QFETCH(int, target);
    QFETCH(int, mode);
    QFETCH(double, sum);
    QCOMPARE(sell(m_driver, "Спички", 0.5), 0);
    m_driver->setRoundTarget(target);
    m_driver->setRoundMode(mode);
    m_driver->setSumm(sum);
    QVERIFY(m_driver->applyRounding() < 0);
    QCOMPARE(codeOf(m_driver), -11);
    QVERIFY(numberOf(m_driver, &IFpax::getBadParam) != 0);
    QCOMPARE(total(), 0.5);
}

void TestEmulatorReceipt::roundingAfterAPaymentIsRefused()
{
    QCOMPARE(sell(m_driver, "Хлеб", 30.55), 0);
    QCOMPARE(pay(m_driver, 0, 1), 0);
    m_driver->setRoundTarget(0);
    m_driver->setRoundMode(0);
    m_driver->setSumm(0.55);
    QVERIFY(m_driver->applyRounding() < 0);
    QCOMPARE(codeOf(m_driver), -3851);
    QCOMPARE(total(), 30.55);
}

void TestEmulatorReceipt::attributesAreKept()
{
    m_driver->setTagNumber(1117);
    m_driver->setTagType(5);
    m_driver->setTagValue(L"sender@example.org");
    m_driver->setTagPrint(1);
    QCOMPARE(m_driver->writeTag(), 0);
    const QJsonObject written =
        m_fpax->state()["receipt"].toObject()["attributes"].toArray().at(0).toObject();
    QCOMPARE(written["number"].toInt(), 1117);
    QCOMPARE(written["text"].toString(), "sender@example.org");
    QCOMPARE(written["printed"], QJsonValue(true));
}

void TestEmulatorReceipt::badAttributesAreRefused_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::newRow("number") << 0 << 5 << "x";
    QTest::newRow("type") << 1117 << 4 << "x";
    QTest::newRow("no text") << 1117 << 5 << "";
    QTest::newRow("long text") << 1117 << 5 << QString(1001, 'x');
}

void TestEmulatorReceipt::badAttributesAreRefused()
{
    QFETCH(int, number);
    QFETCH(int, type);
    QFETCH(QString, text);
    m_driver->setTagNumber(number);
    m_driver->setTagType(type);
    m_driver->setTagValue(text.toStdWString().c_str());
    m_driver->setTagPrint(1);
    QVERIFY(m_driver->writeTag() < 0);
    QCOMPARE(codeOf(m_driver), -11);
    QVERIFY(numberOf(m_driver, &IFpax::getBadParam) != 0);
}

void TestEmulatorReceipt::newReceiptIsEmpty()
{
    QCOMPARE(sell(m_driver, "Хлеб", 30), 0);
    QCOMPARE(m_driver->cancelCheck(), 0);
    QCOMPARE(total(), 0.0);
    QCOMPARE(openReceipt(m_driver), 0);
    QCOMPARE(total(), 0.0);
    QCOMPARE(m_driver->closeCheck(), 0);
}

void TestEmulatorReceipt::testReceiptGoesThrough()
{
    const QList<double> prices{0.5, 1, 2, 4, 8, 16};
    const QList<double> sums{0.5, 1, 2, 5, 7, 17};
    const QList<int> attributes{2, 1, 2, 3, 4, 5};
    for (int i = 0; i < prices.size(); ++i) {
        m_driver->setPositionName(QString("Позиция %1").arg(i).toStdWString().c_str());
        m_driver->setQuantity(1.0);
        m_driver->setPrice(prices[i]);
        m_driver->setPositionSum(sums[i]);
        m_driver->setPositionGroup(attributes[i]);
        m_driver->setPositionTax(attributes[i]);
        QCOMPARE(m_driver->registerPosition(), 0);
    }
    const double sum = total();
    QCOMPARE(sum, 32.5);
    m_driver->setRoundTarget(0);
    m_driver->setRoundMode(0);
    m_driver->setSumm(0.0);
    QCOMPARE(m_driver->applyRounding(), 0);

    QCOMPARE(pay(m_driver, 1, sum * 0.25), 0);
    m_driver->setPaymentType(1);
    m_driver->setSumm(sum * 0.25);
    QCOMPARE(m_driver->makePaymentVariant(), 0);
    QCOMPARE(pay(m_driver, 1, sum * 0.25), 0);
    QCOMPARE(pay(m_driver, 2, sum * 0.25), 0);
    QCOMPARE(pay(m_driver, 3, sum * 0.25), 0);
    QCOMPARE(pay(m_driver, 0, sum), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
    QCOMPARE(m_fpax->state().value("mode").toInt(), 1);
    QCOMPARE(m_fpax->state().value("shiftOpen"), QJsonValue(true));
}

void TestEmulatorReceipt::openReceiptSurvives()
{
    m_fpax->reset();
    PaperFolder folder(*m_fpax);
    QCOMPARE(openReceipt(m_driver), 0);
    QCOMPARE(sell(m_driver, "Хлеб", 30), 0);
    m_fpax->reset();
    m_fpax->control({{"cmd", "reload"}});
    QCOMPARE(total(), 30.0);
    QCOMPARE(pay(m_driver, 0, 30), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
}

void TestEmulatorReceipt::receiptsAreCounted()
{
    QCOMPARE(sell(m_driver, "Хлеб", 30), 0);
    QCOMPARE(pay(m_driver, 0, 30), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
    QCOMPARE(openReceipt(m_driver), 0);
    QCOMPARE(m_driver->cancelCheck(), 0);
    QJsonObject counters = m_fpax->state().value("counters").toObject();
    QCOMPARE(counters.value("shifts").toInt(), 1);
    QCOMPARE(counters.value("shiftReceipts").toInt(), 1);
    QCOMPARE(counters.value("annulled").toInt(), 1);
    QCOMPARE(counters.value("grandTotal").toInt(), 3000);
    QCOMPARE(counters.value("documents").toInt(), 2);
}

void TestEmulatorReceipt::nextShiftStartsAtNothing()
{
    QCOMPARE(sell(m_driver, "Хлеб", 30), 0);
    QCOMPARE(pay(m_driver, 0, 30), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
    QCOMPARE(enter(m_driver, 3), 0);
    m_driver->setReportType(1);
    QCOMPARE(m_driver->makeReport(), 0);
    QCOMPARE(openReceipt(m_driver), 0);
    const QJsonObject counters = m_fpax->state().value("counters").toObject();
    QCOMPARE(counters.value("shifts").toInt(), 2);
    QCOMPARE(counters.value("shiftReceipts").toInt(-1), 0);
    QCOMPARE(counters.value("shiftTotal").toInt(-1), 0);
    QCOMPARE(counters.value("grandTotal").toInt(), 3000);
}

QTEST_MAIN(TestEmulatorReceipt)
#include "tst_emulator_receipt.moc"
