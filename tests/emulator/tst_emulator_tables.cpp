#include "fpaxsteps.h"

#include <QTest>

class TestEmulatorTables : public QObject
{
    Q_OBJECT

private slots:
    void freeLinesAreReadUntilRefused();
    void freeLineIsWrittenAndReadBack_data();
    void freeLineIsWrittenAndReadBack();
    void freeLineAsHexadecimalIsInCodePage866();
    void characterOutsideTheCodePageIsReplaced();
    void longFreeLineIsRefused();
    void captionStaysWhenARowIsRefused();
    void tableWithoutRowsRefusesTheFirst();
    void templateIsSwitched_data();
    void templateIsSwitched();
    void badTemplateSwitchesAreRefused_data();
    void badTemplateSwitchesAreRefused();
    void unknownAddressesAreRefused_data();
    void unknownAddressesAreRefused();
    void tablesWantProgrammingMode();
    void tablesSurvive();
};

namespace {

QString readField(IFpax* driver, int table, int row, int field, int type)
{
    address(driver, table, row, field, type);
    return driver->readTableField() == 0 ? textOf(driver, &IFpax::getCaption) : QString("refused");
}

int writeField(IFpax* driver, int table, int row, int field, int type, const QString& text)
{
    driver->setCaption(text.toStdWString().c_str());
    address(driver, table, row, field, type);
    return driver->writeTableField();
}

} // namespace

void TestEmulatorTables::freeLinesAreReadUntilRefused()
{
    FpaxLibrary fpax;
    fpax.set({{"table21", QJsonArray{"первая", "", "третья"}}});
    IFpax* driver = programming(fpax);
    QStringList lines;
    address(driver, 21, 1, 1, 1);
    for (int row = 1; row < 100; ++row) {
        driver->setRowNumber(row);
        if (driver->readTableField() < 0)
            break;
        lines.append(textOf(driver, &IFpax::getCaption));
    }
    QCOMPARE(lines, (QStringList{"первая", "", "третья"}));
    QCOMPARE(codeOf(driver), -3841);
}

void TestEmulatorTables::freeLineIsWrittenAndReadBack_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("letters") << "Приходите ещё, №1!";
    QTest::newRow("empty") << "";
    QTest::newRow("blanks") << "  x  ";
    QTest::newRow("frame") << "╔══╗";
    QTest::newRow("placeholder") << "%1 %2";
    QTest::newRow("80 characters") << QString(80, QChar(0x0416));
}

void TestEmulatorTables::freeLineIsWrittenAndReadBack()
{
    QFETCH(QString, text);
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    QCOMPARE(writeField(driver, 21, 2, 1, 1, text), 0);
    QCOMPARE(readField(driver, 21, 2, 1, 1), text);
    QCOMPARE(fpax.state().value("table21").toArray().at(1).toString(), text);
}

void TestEmulatorTables::freeLineAsHexadecimalIsInCodePage866()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    QCOMPARE(writeField(driver, 21, 1, 1, 2, "8FE0A8"), 0);
    QCOMPARE(readField(driver, 21, 1, 1, 1), "При");
    QCOMPARE(readField(driver, 21, 1, 1, 2), "8FE0A8");
    for (const char* bad : {"8FE", "привет"}) {
        QVERIFY(writeField(driver, 21, 1, 1, 2, bad) < 0);
        QCOMPARE(codeOf(driver), -11);
    }
    QCOMPARE(readField(driver, 21, 1, 1, 1), "При");
}

void TestEmulatorTables::characterOutsideTheCodePageIsReplaced()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    QCOMPARE(writeField(driver, 21, 1, 1, 1, "a€b"), 0);
    const QString text = readField(driver, 21, 1, 1, 1);
    QCOMPARE(text.size(), 3);
    QVERIFY(text.startsWith('a') && text.endsWith('b'));
    QVERIFY(!text.contains("€"));
}

void TestEmulatorTables::longFreeLineIsRefused()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    QCOMPARE(writeField(driver, 21, 1, 1, 1, "old"), 0);
    QVERIFY(writeField(driver, 21, 1, 1, 1, QString(81, 'x')) < 0);
    QCOMPARE(codeOf(driver), -11);
    QVERIFY(numberOf(driver, &IFpax::getBadParam) != 0);
    QCOMPARE(readField(driver, 21, 1, 1, 1), "old");
}

void TestEmulatorTables::captionStaysWhenARowIsRefused()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    driver->setCaption(L"mine");
    address(driver, 21, 1000, 1, 1);
    QVERIFY(driver->readTableField() < 0);
    QCOMPARE(textOf(driver, &IFpax::getCaption), "mine");
}

void TestEmulatorTables::tableWithoutRowsRefusesTheFirst()
{
    FpaxLibrary fpax;
    fpax.set({{"table21", QJsonArray{}}});
    IFpax* driver = programming(fpax);
    QCOMPARE(readField(driver, 21, 1, 1, 1), "refused");
    QVERIFY(writeField(driver, 21, 1, 1, 1, "x") < 0);
}

void TestEmulatorTables::templateIsSwitched_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    for (const int field : {111, 19})
        for (const int number : {0, 1, 2})
            QTest::addRow("field %d, template %d", field, number)
                << field << QString("0%1").arg(number) << number;
}

void TestEmulatorTables::templateIsSwitched()
{
    QFETCH(int, field);
    QFETCH(QString, text);
    QFETCH(int, number);
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    QCOMPARE(writeField(driver, 2, 1, field, 2, text), 0);
    QCOMPARE(fpax.state().value("activeTemplate").toInt(-1), number);
    QCOMPARE(readField(driver, 2, 1, field, 2), text);
}

void TestEmulatorTables::badTemplateSwitchesAreRefused_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::newRow("no such template") << 2 << "03";
    QTest::newRow("far away") << 2 << "FF";
    QTest::newRow("two bytes") << 2 << "0102";
    QTest::newRow("one digit") << 2 << "1";
    QTest::newRow("empty") << 2 << "";
    QTest::newRow("no digits") << 2 << "ZZ";
    QTest::newRow("as text") << 1 << "01";
}

void TestEmulatorTables::badTemplateSwitchesAreRefused()
{
    QFETCH(int, type);
    QFETCH(QString, text);
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    QCOMPARE(writeField(driver, 2, 1, 111, 2, "02"), 0);
    QVERIFY(writeField(driver, 2, 1, 111, type, text) < 0);
    QCOMPARE(codeOf(driver), -11);
    QVERIFY(numberOf(driver, &IFpax::getBadParam) != 0);
    QCOMPARE(fpax.state().value("activeTemplate").toInt(), 2);
}

void TestEmulatorTables::unknownAddressesAreRefused_data()
{
    QTest::addColumn<int>("table");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("field");
    QTest::addColumn<int>("code");
    QTest::newRow("table 0") << 0 << 1 << 1 << -3840;
    QTest::newRow("table 20") << 20 << 1 << 1 << -3840;
    QTest::newRow("table 99") << 99 << 1 << 1 << -3840;
    QTest::newRow("row 0") << 21 << 0 << 1 << -3841;
    QTest::newRow("row behind the last") << 21 << 9 << 1 << -3841;
    QTest::newRow("negative row") << 21 << -1 << 1 << -3841;
    QTest::newRow("field 0") << 21 << 1 << 0 << -3842;
    QTest::newRow("field 2") << 21 << 1 << 2 << -3842;
    QTest::newRow("row 2 of table 2") << 2 << 2 << 111 << -3841;
    QTest::newRow("other field of table 2") << 2 << 1 << 110 << -3842;
}

void TestEmulatorTables::unknownAddressesAreRefused()
{
    QFETCH(int, table);
    QFETCH(int, row);
    QFETCH(int, field);
    QFETCH(int, code);
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    const QJsonObject before = fpax.state();
    for (const int type : {1, 2}) {
        QCOMPARE(readField(driver, table, row, field, type), "refused");
        QCOMPARE(codeOf(driver), code);
        QVERIFY(writeField(driver, table, row, field, type, "01") < 0);
        QCOMPARE(codeOf(driver), code);
    }
    QCOMPARE(fpax.state(), before);
}

void TestEmulatorTables::tablesWantProgrammingMode()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(enter(driver, 1), 0);
    QCOMPARE(readField(driver, 21, 1, 1, 1), "refused");
    QCOMPARE(codeOf(driver), -3801);
    QVERIFY(writeField(driver, 2, 1, 111, 2, "02") < 0);
    QCOMPARE(codeOf(driver), -3801);
}

void TestEmulatorTables::tablesSurvive()
{
    FpaxLibrary fpax;
    PaperFolder folder(fpax);
    IFpax* driver = programming(fpax);
    QCOMPARE(writeField(driver, 21, 3, 1, 1, "Держится"), 0);
    QCOMPARE(writeField(driver, 2, 1, 111, 2, "02"), 0);
    fpax.reset();
    fpax.control({{"cmd", "reload"}});
    QCOMPARE(enter(driver, 4), 0);
    QCOMPARE(readField(driver, 21, 3, 1, 1), "Держится");
    QCOMPARE(readField(driver, 2, 1, 111, 2), "02");
}

QTEST_MAIN(TestEmulatorTables)
#include "tst_emulator_tables.moc"
