#include "fpaxsteps.h"

#include <QFile>
#include <QTest>

/// What the device remembers after its library has been unloaded and loaded again.
class TestEmulatorRestart : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void openReceiptIsTheSame();
    void openReceiptGoesOn();
    void openReceiptIsPrintedWhole();
    void receiptOfWrongTypesIsTakenAsFarAsItGoes();
    void templateStaysActive_data();
    void templateStaysActive();
    void firstObjectTakesTheFiles();
    void firstCommandWinsOverTheFileOfRules();

private:
    void restart();
    /// A receipt over 100 roubles; 60 of them are paid by card, and 40 were taken back.
    void beginReceipt();
    void write(const QString& name, const QByteArray& content) const;

    std::unique_ptr<FpaxLibrary> m_fpax;
    std::unique_ptr<PaperFolder> m_folder;
    IFpax* m_driver = nullptr;
};

namespace {

int writeTag(IFpax* driver, int number, const wchar_t* text, int print)
{
    driver->setTagType(5);
    driver->setTagNumber(number);
    driver->setTagValue(text);
    driver->setTagPrint(print);
    return driver->writeTag();
}

} // namespace

void TestEmulatorRestart::init()
{
    m_fpax = std::make_unique<FpaxLibrary>();
    m_folder = std::make_unique<PaperFolder>(*m_fpax);
    m_driver = connected(*m_fpax);
}

void TestEmulatorRestart::cleanup()
{
    m_fpax.reset();
    m_folder.reset();
}

void TestEmulatorRestart::restart()
{
    QVERIFY(m_fpax->library().unload());
    m_fpax = std::make_unique<FpaxLibrary>(FpaxLibrary::Start::Files);
    m_driver = connected(*m_fpax);
}

void TestEmulatorRestart::beginReceipt()
{
    QCOMPARE(openReceipt(m_driver), 0);
    m_driver->setPositionGroup(3);
    QCOMPARE(sell(m_driver, "Сыр", 100.55, 2), 0);
    QCOMPARE(writeTag(m_driver, 1008, L"buyer@example.org", 1), 0);
    QCOMPARE(writeTag(m_driver, 1117, L"shop@example.org", 0), 0);
    m_driver->setRoundTarget(0);
    m_driver->setRoundMode(0);
    m_driver->setSumm(0.55);
    QCOMPARE(m_driver->applyRounding(), 0);
    QCOMPARE(pay(m_driver, 3, 40), 0);
    QCOMPARE(m_driver->makePaymentVariant(), 0);
    QCOMPARE(pay(m_driver, 1, 60), 0);
}

void TestEmulatorRestart::write(const QString& name, const QByteArray& content) const
{
    QFile file(m_folder->path() + '/' + name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

void TestEmulatorRestart::openReceiptIsTheSame()
{
    beginReceipt();
    const QJsonObject before = m_fpax->state();
    const QJsonArray payments{QJsonObject{{"type", 3}, {"sum", 4000}, {"reversed", false}},
                              QJsonObject{{"type", 3}, {"sum", 4000}, {"reversed", true}},
                              QJsonObject{{"type", 1}, {"sum", 6000}, {"reversed", false}}};
    const QJsonArray attributes{
        QJsonObject{{"number", 1008}, {"text", "buyer@example.org"}, {"printed", true}},
        QJsonObject{{"number", 1117}, {"text", "shop@example.org"}, {"printed", false}}};
    restart();
    QCOMPARE(m_fpax->state(), before);
    const QJsonObject receipt = m_fpax->state()["receipt"].toObject();
    QCOMPARE(receipt["positions"].toArray().size(), 1);
    QCOMPARE(receipt["payments"].toArray(), payments);
    QCOMPARE(receipt["attributes"].toArray(), attributes);
    QCOMPARE(receipt["rounding"].toInt(), 55);
}

void TestEmulatorRestart::openReceiptGoesOn()
{
    beginReceipt();
    restart();
    QVERIFY(sell(m_driver, "Соль", 1) < 0);
    QCOMPARE(codeOf(m_driver), -3851);
    QVERIFY(pay(m_driver, 2, 40.01) < 0);
    QCOMPARE(codeOf(m_driver), -3852);
    m_driver->setPaymentType(3);
    m_driver->setSumm(0.01);
    QVERIFY(m_driver->makePaymentVariant() < 0);
    QCOMPARE(codeOf(m_driver), -3853);
    QVERIFY(m_driver->closeCheck() < 0);
    QCOMPARE(codeOf(m_driver), -3850);
    QCOMPARE(pay(m_driver, 2, 40), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
    QCOMPARE(m_fpax->state()["counters"].toObject()["shiftTotal"].toInt(), 10000);
}

void TestEmulatorRestart::openReceiptIsPrintedWhole()
{
    beginReceipt();
    restart();
    QCOMPARE(pay(m_driver, 0, 50), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
    QStringList lines;
    for (const QString& line : m_folder->text("receipt"))
        lines.append(line.simplified());
    for (const char* line : {"ПОДЫТОГ = 100.55", "ОКРУГЛЕНИЕ = 0.55", "ЭЛЕКТРОННЫМИ = 60.00",
                             "НАЛИЧНЫМИ = 50.00", "СДАЧА = 10.00", "СТОРНО ОПЛАТЫ ЭЛ3 = 40.00"})
        QVERIFY2(lines.contains(line), line);
    QCOMPARE(lines.filter("Сыр").size(), 1);
    QCOMPARE(lines.filter("buyer@example.org").size(), 1);
    QCOMPARE(lines.filter("shop@example.org").size(), 0);
}

void TestEmulatorRestart::receiptOfWrongTypesIsTakenAsFarAsItGoes()
{
    QVERIFY(m_fpax->library().unload());
    write("fpax_state.json", R"({"mode": 1, "receiptState": 1, "receipt": {
        "payments": [5, "x", {}, {"type": -1, "sum": -5, "reversed": 1}, {"type": 2, "sum": 7, "reversed": true}],
        "attributes": [null, {"number": "1008", "text": 5, "printed": "yes"}, {"number": 7, "text": "t"}],
        "positions": {}, "rounding": "55"}})");
    m_fpax = std::make_unique<FpaxLibrary>(FpaxLibrary::Start::Files);
    const QJsonObject receipt = m_fpax->state()["receipt"].toObject();
    const QJsonObject nothing{{"type", 0}, {"sum", 0}, {"reversed", false}};
    QCOMPARE(receipt["payments"].toArray(),
             (QJsonArray{nothing, nothing, QJsonObject{{"type", 2}, {"sum", 7}, {"reversed", true}}}));
    QCOMPARE(receipt["attributes"].toArray(),
             (QJsonArray{QJsonObject{{"number", 0}, {"text", ""}, {"printed", false}},
                         QJsonObject{{"number", 7}, {"text", "t"}, {"printed", false}}}));
    QCOMPARE(receipt["positions"].toArray(), QJsonArray());
    QCOMPARE(receipt["rounding"].toInt(-1), 0);
    QCOMPARE(connected(*m_fpax)->cancelCheck(), 0);
}

void TestEmulatorRestart::templateStaysActive_data()
{
    QTest::addColumn<int>("number");
    for (const int number : {1, 63, 64, 200, 255})
        QTest::addRow("%d", number) << number;
}

void TestEmulatorRestart::templateStaysActive()
{
    QFETCH(int, number);
    // One field, the first free line.
    const QJsonObject rows{{"params", QJsonArray{"", "00010000000001001000000000000001010120"}}};
    m_fpax->set({{"table20", QJsonObject{{QString::number(number), rows}}},
                 {"table21", QJsonArray{"Печать шаблона"}}});
    QCOMPARE(enter(m_driver, 4), 0);
    const QString hex = QString("%1").arg(number, 2, 16, QChar('0')).toUpper();
    address(m_driver, 2, 1, 111, 2);
    QCOMPARE(m_driver->setCaption(hex.toStdWString().c_str()), 0);
    QCOMPARE(m_driver->writeTableField(), 0);
    restart();
    QCOMPARE(m_fpax->state()["activeTemplate"].toInt(), number);
    address(m_driver, 2, 1, 111, 2);
    QCOMPARE(m_driver->readTableField(), 0);
    QCOMPARE(textOf(m_driver, &IFpax::getCaption), hex);
    QCOMPARE(openReceipt(m_driver), 0);
    QCOMPARE(m_driver->closeCheck(), 0);
    QCOMPARE(m_folder->text("receipt"), QStringList{"Печать шаблона"});
}

void TestEmulatorRestart::firstObjectTakesTheFiles()
{
    QVERIFY(m_fpax->library().unload());
    write("fpax_state.json", R"({"serial": "of the file"})");
    write("fpax_faults.json", R"([{"operation": "resetMode", "code": -5}])");
    m_fpax = std::make_unique<FpaxLibrary>(FpaxLibrary::Start::Files);
    m_driver = connected(*m_fpax);
    QCOMPARE(m_driver->readStatus(), 0);
    QCOMPARE(textOf(m_driver, &IFpax::getSerialNumber), "of the file");
    QVERIFY(m_driver->resetMode() < 0);
    QCOMPARE(codeOf(m_driver), -5);
}

void TestEmulatorRestart::firstCommandWinsOverTheFileOfRules()
{
    QVERIFY(m_fpax->library().unload());
    write("fpax_state.json", R"({"serial": "of the file"})");
    write("fpax_faults.json", R"([{"operation": "readStatus", "code": -5}])");
    m_fpax = std::make_unique<FpaxLibrary>(FpaxLibrary::Start::Files);
    QVERIFY(m_fpax->setFaults({QJsonObject{{"operation", "resetMode"}}}));
    m_driver = connected(*m_fpax);
    QCOMPARE(m_driver->readStatus(), 0);
    QVERIFY(m_driver->resetMode() < 0);
    QCOMPARE(m_fpax->state()["serial"].toString(), "of the file");
}

QTEST_MAIN(TestEmulatorRestart)
#include "tst_emulator_restart.moc"
