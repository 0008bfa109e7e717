#include "fpaxsteps.h"

#include <QMap>
#include <QSet>
#include <QTest>
#include <QTextCodec>

class TestEmulatorReadCommand : public QObject
{
    Q_OBJECT

private slots:
    void headByteByByte();
    void headsNameEveryRow();
    void namesAreInCodePage1251();
    void masksHaveEveryLength();
    void masksAllowTheBlockOfAPlacedField();
    void parameterAnswerByteByByte();
    void parametersComeInGroups_data();
    void parametersComeInGroups();
    void everyParameterHasItsWidth();
    void tableEndsBehindItsLastRow();
    void badReadsAreRefused_data();
    void badReadsAreRefused();
    void refusedReadDoesNotEndTheLink();
    void readingWantsProgrammingMode();
    void commandTextMayLackBlanks();
    void answerTextHasNoTrailingBlank();
    void rowsOfTheStateAnswer();
    void answerCanBeSpoiled();
    void valuesPassValidation();
};

namespace {

int at(const QByteArray& bytes, qsizetype index)
{
    return static_cast<unsigned char>(bytes.at(index));
}

int wordAt(const QByteArray& bytes, qsizetype index)
{
    return at(bytes, index) + 256 * at(bytes, index + 1);
}

QByteArray rest(const QByteArray& head)
{
    return head.mid(25 + at(head, 19));
}

QByteArray name(const QByteArray& head)
{
    return head.mid(21, at(head, 19));
}

} // namespace

void TestEmulatorReadCommand::headByteByByte()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    const QByteArray head = exchange(driver, "5100140102000000");
    QCOMPARE(codeOf(driver), 0);
    QVERIFY(head.size() > 25);
    QCOMPARE(head.left(6).toHex(), "510000000100");
    QCOMPARE(wordAt(head, 6), head.size() - 8);
    QCOMPARE(head.mid(8, 2).toHex(), "0000");
    QCOMPARE(wordAt(head, 10), head.size() - 12);
    QCOMPARE(head.mid(12, 4).toHex(), "03000100");
    QCOMPARE(at(head, 16), 19);
    QCOMPARE(head.mid(17, 2).toHex(), "0400");
    QCOMPARE(at(head, 20), 0);
    QCOMPARE(at(head, 19), QString("Свободная строка 1").size());
    const qsizetype mask = 21 + at(head, 19);
    QCOMPARE(head.mid(mask, 2).toHex(), "0500");
    QCOMPARE(wordAt(head, mask + 2), head.size() - mask - 4);
}

void TestEmulatorReadCommand::headsNameEveryRow()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    QTextCodec* codec = QTextCodec::codecForName("Windows-1251");
    QSet<QString> names;
    for (int row = 1; row <= 160; ++row) {
        const QByteArray head = exchange(driver, readCommand(1, row, 0, 0));
        QCOMPARE(codeOf(driver), 0);
        names.insert(codec->toUnicode(name(head)));
    }
    QCOMPARE(names.size(), 160);
    QVERIFY(names.contains("Шапка: заголовок"));
    QVERIFY(names.contains("Оплата: Обшая: сумма"));
    QVERIFY(names.contains("Строка: \"ЧЕК АННУЛИРОВАН\""));
    QVERIFY(names.contains("Пользовательский тег 5_5"));
}

void TestEmulatorReadCommand::namesAreInCodePage1251()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    const QByteArray head = exchange(driver, readCommand(1, 1, 0, 0));
    QCOMPARE(name(head).toHex(), "d8e0efeae03a20e7e0e3eeebeee2eeea");
}

void TestEmulatorReadCommand::masksHaveEveryLength()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    QMap<int, QList<int>> rows;
    for (const int subTable : {1, 2})
        for (int row = 1; row <= 160; ++row)
            rows[static_cast<int>(rest(exchange(driver, readCommand(subTable, row, 0, 0))).size())].append(
                row);
    QCOMPARE(rows.keys(), (QList<int>{0, 1, 2, 3, 4}));
    // Four bytes mean a mandatory field.
    for (const int row : {12, 16, 19, 33, 70, 75, 78, 81, 82, 85, 126, 129, 134})
        QVERIFY2(rows[4].contains(row), qPrintable(QString::number(row)));
    for (const int row : {1, 11, 13, 32, 71, 74, 79, 84, 127, 128, 135, 160})
        QVERIFY2(!rows[4].contains(row), qPrintable(QString::number(row)));
}

void TestEmulatorReadCommand::masksAllowTheBlockOfAPlacedField()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    int placed = 0;
    for (const int subTable : {1, 2})
        for (int row = 1; row <= 160; ++row) {
            const QByteArray mask = rest(exchange(driver, readCommand(subTable, row, 0, 0)));
            const QList<int> values = readRow(driver, subTable, row);
            if (values[8] == 0)
                continue;
            ++placed;
            const int bits = at(mask, 0) | (mask.size() > 1 ? at(mask, 1) << 8 : 0);
            QVERIFY2((bits >> values[0] & 1) == 1, qPrintable(QString::number(row)));
        }
    QVERIFY(placed > 200);
}

void TestEmulatorReadCommand::parameterAnswerByteByByte()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    exchange(driver, writeCommand(2, 4, 7, {9, 17, 200}));
    QCOMPARE(codeOf(driver), 0);
    const QByteArray answer = exchange(driver, "5100140205000709");
    QCOMPARE(codeOf(driver), 0);
    QCOMPARE(answer.mid(1).toHex(), "00"
                                    "0709"
                                    "0400"
                                    "2a00"
                                    "07000a0001000100080200010009"
                                    "08000a0001000100080200010011"
                                    "09000a00010001000802000100c8");
}

void TestEmulatorReadCommand::parametersComeInGroups_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QList<int>>("ends");
    QTest::newRow("6") << 6 << QList<int>{6, 12, 18, 19};
    QTest::newRow("1") << 1 << QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19};
    QTest::newRow("7") << 7 << QList<int>{7, 14, 19};
    QTest::newRow("19") << 19 << QList<int>{19};
}

void TestEmulatorReadCommand::parametersComeInGroups()
{
    QFETCH(int, size);
    QFETCH(QList<int>, ends);
    FpaxLibrary fpax;
    fpax.set({{"parameterGroup", size}});
    IFpax* driver = programming(fpax);
    int first = 1;
    for (const int end : ends) {
        const QByteArray answer = exchange(driver, readCommand(1, 12, first, 19));
        QCOMPARE(codeOf(driver), 0);
        QCOMPARE(at(answer, 2), first);
        QCOMPARE(at(answer, 3), end);
        QCOMPARE(wordAt(answer, 6), 14 * (end - first + 1));
        QCOMPARE(answer.size(), 8 + 14 * (end - first + 1));
        first = end + 1;
    }
    QCOMPARE(first, 20);
}

void TestEmulatorReadCommand::everyParameterHasItsWidth()
{
    const QList<int> widths{8, 4, 1, 1, 2, 8, 8, 8, 8, 1, 1, 1, 1, 2, 2, 4, 2, 2, 8};
    FpaxLibrary fpax;
    fpax.set({{"parameterGroup", 19}});
    const QByteArray answer = exchange(programming(fpax), readCommand(1, 1, 1, 19));
    for (int param = 1; param <= 19; ++param) {
        const QByteArray entry = answer.mid(8 + 14 * (param - 1), 14);
        QCOMPARE(at(entry, 0), param);
        QCOMPARE(entry.mid(1, 7).toHex(), "000a0001000100");
        QCOMPARE(at(entry, 8), widths[param - 1]);
        QCOMPARE(entry.mid(9, 4).toHex(), "02000100");
    }
}

void TestEmulatorReadCommand::tableEndsBehindItsLastRow()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    exchange(driver, readCommand(1, 160, 0, 0));
    QCOMPARE(codeOf(driver), 0);
    const QByteArray answer = exchange(driver, readCommand(1, 161, 0, 0));
    QCOMPARE(codeOf(driver), -3841);
    QCOMPARE(answer.size(), 2);
}

void TestEmulatorReadCommand::badReadsAreRefused_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<int>("code");
    QTest::newRow("empty") << QByteArray() << -3843;
    QTest::newRow("other command") << QByteArray::fromHex("5200140101000000") << -3830;
    QTest::newRow("other action") << QByteArray::fromHex("5102140101000000") << -3830;
    QTest::newRow("other table") << QByteArray::fromHex("5100150101000000") << -3840;
    QTest::newRow("sub-table 0") << readCommand(0, 1, 0, 0) << -3840;
    QTest::newRow("sub-table 3") << readCommand(3, 1, 0, 0) << -3840;
    QTest::newRow("row 0") << readCommand(1, 0, 0, 0) << -3841;
    QTest::newRow("row 257") << readCommand(1, 257, 0, 0) << -3841;
    QTest::newRow("last row of the addressing") << readCommand(1, 0xFFFF, 0, 0) << -3841;
    QTest::newRow("one to none") << readCommand(1, 1, 1, 0) << -3842;
    QTest::newRow("backwards") << readCommand(1, 1, 5, 4) << -3842;
    QTest::newRow("beyond the parameters") << readCommand(1, 1, 19, 20) << -3842;
    QTest::newRow("short") << QByteArray::fromHex("51001401010000") << -3843;
    QTest::newRow("very short") << QByteArray::fromHex("51") << -3843;
    QTest::newRow("long") << QByteArray::fromHex("510014010100000000") << -3843;
}

void TestEmulatorReadCommand::badReadsAreRefused()
{
    QFETCH(QByteArray, command);
    QFETCH(int, code);
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    const QByteArray answer = exchange(driver, command);
    QCOMPARE(codeOf(driver), code);
    QCOMPARE(answer.size(), 2);
    QVERIFY(answer.at(1) != '\0');
}

void TestEmulatorReadCommand::refusedReadDoesNotEndTheLink()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    exchange(driver, readCommand(1, 999, 0, 0));
    QVERIFY(codeOf(driver) < 0);
    QVERIFY(exchange(driver, readCommand(1, 1, 0, 0)).size() > 25);
    QCOMPARE(codeOf(driver), 0);
}

void TestEmulatorReadCommand::readingWantsProgrammingMode()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    for (const int mode : {1, 3}) {
        QCOMPARE(enter(driver, mode), 0);
        QVERIFY(exchange(driver, readCommand(1, 1, 0, 0)).isEmpty());
        QCOMPARE(codeOf(driver), -3801);
    }
}

void TestEmulatorReadCommand::commandTextMayLackBlanks()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    driver->setCommandBuffer(L"5100140101000106");
    QCOMPARE(driver->execCommandBuffer(), 0);
    driver->setCommandBuffer(L"51 00 14 01 01 00 01 06 ");
    QCOMPARE(driver->execCommandBuffer(), 0);
    for (const wchar_t* bad : {L"51 00 14 01 01 00 01 0", L"51 0x", L"команда"}) {
        driver->setCommandBuffer(bad);
        QVERIFY(driver->execCommandBuffer() < 0);
        QCOMPARE(codeOf(driver), -3843);
    }
}

void TestEmulatorReadCommand::answerTextHasNoTrailingBlank()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    exchange(driver, readCommand(1, 1, 1, 2));
    const QString text = textOf(driver, &IFpax::getAnswerBuffer);
    QVERIFY(text.startsWith("51 00 01 02 00 00 1C 00 01 00 "));
    QVERIFY(!text.endsWith(' '));
    QCOMPARE(text, text.toUpper());
    QCOMPARE(text.split(' ').size(), 8 + 28);
}

void TestEmulatorReadCommand::rowsOfTheStateAnswer()
{
    FpaxLibrary fpax;
    const QJsonObject table{{"params", QJsonArray{"0102", "", "00000000000000000000000000000000000020"}},
                            {"names", QJsonArray{"Ёлка", "", "x"}},
                            {"masks", QJsonArray{"FF0300FF", "", "02"}}};
    fpax.set({{"table20", QJsonObject{{"7", table}}}});
    IFpax* driver = programming(fpax);
    const QByteArray first = exchange(driver, readCommand(7, 1, 0, 0));
    QCOMPARE(at(first, 16), 2);
    QCOMPARE(name(first).toHex(), "a8ebeae0");
    QCOMPARE(rest(first).toHex(), "ff0300ff");
    const QByteArray second = exchange(driver, readCommand(7, 2, 0, 0));
    QCOMPARE(at(second, 16), 0);
    QVERIFY(name(second).isEmpty());
    QVERIFY(rest(second).isEmpty());
    exchange(driver, readCommand(7, 2, 1, 0));
    QVERIFY(codeOf(driver) < 0);
    QCOMPARE(readRow(driver, 7, 3).last(), 0x20);
    exchange(driver, readCommand(7, 4, 0, 0));
    QVERIFY(codeOf(driver) < 0);
    exchange(driver, readCommand(1, 1, 0, 0));
    QVERIFY(codeOf(driver) < 0);
}

void TestEmulatorReadCommand::answerCanBeSpoiled()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    const QByteArray good = exchange(driver, readCommand(1, 1, 0, 0));
    fpax.setFaults({QJsonObject{{"operation", "getAnswerBuffer"}, {"answer", "short"}, {"count", 1}}});
    const QByteArray cut = exchange(driver, readCommand(1, 1, 0, 0));
    QVERIFY(cut.size() <= 8);
    QVERIFY(good.startsWith(cut));
    fpax.setFaults({QJsonObject{{"operation", "getAnswerBuffer"}, {"answer", "garbled"}}});
    const QByteArray garbled = exchange(driver, readCommand(1, 1, 0, 0));
    QCOMPARE(garbled.size(), good.size());
    for (qsizetype i = 0; i < good.size(); ++i)
        QVERIFY(garbled[i] != good[i]);
    fpax.setFaults({QJsonObject{{"operation", "getAnswerBuffer"}, {"answer", "empty"}}});
    QCOMPARE(exchange(driver, readCommand(1, 1, 0, 0)), QByteArray());
    QCOMPARE(codeOf(driver), 0);
    fpax.setFaults({});
    QCOMPARE(exchange(driver, readCommand(1, 1, 0, 0)), good);
}

void TestEmulatorReadCommand::valuesPassValidation()
{
    const QList<int> highest{9, 7, 1, 1, 3, 255, 255, 255, 255, 1, 1, 1, 1, 3, 3, 15, 3, 3, 255};
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    for (const int subTable : {1, 2})
        for (int row = 1; row <= 160; ++row) {
            const QList<int> values = readRow(driver, subTable, row);
            QCOMPARE(values.size(), 19);
            for (int i = 0; i < 19; ++i)
                QVERIFY(values[i] <= highest[i]);
            QVERIFY(values[6] >= 1);
        }
}

QTEST_MAIN(TestEmulatorReadCommand)
#include "tst_emulator_readcommand.moc"
