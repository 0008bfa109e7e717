#include "recordtools.h"

#include <QTest>

#include <limits>

using recordtools::differences;
using recordtools::Item;

// The format "new, 26+str": a record carries its own number, its mask and its description.

namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

/// Twenty-six columns of record 12: numbers that are all different, fillers of letters.
QStringList columns()
{
    QStringList all = recordtools::countedColumns(50, 26);
    all[0] = "1";
    all[1] = "12ab";
    all[2] = "11";
    all[12] = "---";
    all[23] = "00";
    all[24] = "0";
    all[25] = "Свой: текст";
    return all;
}

QString lineWith(const QMap<int, QString>& texts = {}, QChar separator = ';')
{
    QStringList all = columns();
    for (auto it = texts.cbegin(); it != texts.cend(); ++it)
        all[it.key()] = it.value();
    return all.join(separator);
}

/// What columns() stand for.
Item record()
{
    Item item;
    item.FA_NEED = true;
    item.BL_MASK = 0x12ab;
    item.Type = 11;
    item.Block = 53;
    item.Font = 54;
    item.X2X = 55;
    item.X2Y = 56;
    item.PoleFlags = 57;
    item.LineGap = 58;
    item.Line = 59;
    item.X = 60;
    item.Size = 61;
    item.DropIfZero = 63;
    item.PressRight = 64;
    item.Expand = 65;
    item.CutToWidth = 66;
    item.MaskMode = 67;
    item.FractFormat = 68;
    item.Brightness = 69;
    item.AlignInPole = 70;
    item.AlignOnTape = 71;
    item.TailChar = 72;
    item.Desc = "Свой: текст";
    item.DescView = "С.: текст";
    return item;
}

const QMap<int, Item> kRecord12{{12, record()}};

QMap<int, Item> read(const QStringList& lines)
{
    BD_T20Items bd = recordtools::emptyStore();
    bd.LoadFromListV04(lines);
    return bd.items;
}

} // namespace

class TestReadingMask : public QObject
{
    Q_OBJECT

private slots:
    void noLinesGiveOne();
    void everyFieldComesFromItsColumn();
    void oneColumnChangesOneField_data();
    void oneColumnChangesOneField();
    void fillersAreNotUsed();
    void columnIsTakenAsANumber_data() { recordtools::addNumberRows(); }
    void columnIsTakenAsANumber();
    void lineNeeds39Characters();
    void lineNeeds26Columns_data();
    void lineNeeds26Columns();
    void commaSeparatesIfSemicolonsDoNot();
    void firstColumnDecides_data();
    void firstColumnDecides();
    void commentsAreSkipped();
    void maskIsHexadecimal_data();
    void maskIsHexadecimal();
    void keyIsTypePlusOne_data();
    void keyIsTypePlusOne();
    void recordsComeInAnyOrder();
    void laterLineOfTheSameTypeReplaces();
    void descriptionIsTakenAsItStands_data();
    void descriptionIsTakenAsItStands();
    void descriptionIsCutAtTheSeparator();
    void carriageReturnStaysInTheDescription();
    void mandatoryFieldsAreThoseOfTheFile();
    void recordsAreReplacedKeyByKey();
    void linesWithoutARecordChangeNothing();
};

void TestReadingMask::noLinesGiveOne()
{
    BD_T20Items bd;
    bd.items[12] = recordtools::markedItem(12);
    QCOMPARE(bd.LoadFromListV04({}), 1);
    QCOMPARE(differences(bd.items, {{12, recordtools::markedItem(12)}}), QStringList());
    QCOMPARE(bd.LoadFromListV04({""}), 0);
    QCOMPARE(bd.LoadFromListV04({lineWith()}), 0);
}

void TestReadingMask::everyFieldComesFromItsColumn()
{
    QCOMPARE(differences(read({lineWith()}), kRecord12), QStringList());
}

void TestReadingMask::oneColumnChangesOneField_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("field");
    const QStringList fields{"Block",       "Font",       "X2X",         "X2Y",         "PoleFlags",
                             "LineGap",     "Line",       "X",           "Size",        "",
                             "DropIfZero",  "PressRight", "Expand",      "CutToWidth",  "MaskMode",
                             "FractFormat", "Brightness", "AlignInPole", "AlignOnTape", "TailChar"};
    for (int column = 3; column <= 22; ++column) {
        if (column != 12)
            QTest::addRow("column %d", column) << column << fields.at(column - 3);
    }
}

void TestReadingMask::oneColumnChangesOneField()
{
    QFETCH(const int, column);
    QFETCH(const QString, field);
    QCOMPARE(differences(read({lineWith({{column, "-777"}})}), kRecord12),
             QStringList{"12: " + field + "=-777"});
}

void TestReadingMask::fillersAreNotUsed()
{
    for (const int column : {12, 23, 24}) {
        for (const QString text : {"", "777", "абв", "-", "99999999999"})
            QCOMPARE(differences(read({lineWith({{column, text}})}), kRecord12), QStringList());
    }
}

void TestReadingMask::columnIsTakenAsANumber()
{
    QFETCH(const QString, text);
    QFETCH(const int, value);
    for (const int column : {3, 22}) {
        Item expected = record();
        (column == 3 ? expected.Block : expected.TailChar) = value;
        QCOMPARE(differences(read({lineWith({{column, text}})}), {{12, expected}}), QStringList());
    }
}

void TestReadingMask::lineNeeds39Characters()
{
    const QString line38 = "1;ffff;1;1;1;1;1;" + QString(18, ';') + "ЖЖЖ";
    QCOMPARE(line38.size(), 38);
    QCOMPARE(line38.count(';'), 25);
    QVERIFY(read({line38}).isEmpty());
    const auto items = read({line38 + 'Z'});
    QCOMPARE(items.keys(), QList<int>{2});
    QCOMPARE(items[2].Desc, "ЖЖЖZ");
}

void TestReadingMask::lineNeeds26Columns_data()
{
    QTest::addColumn<int>("count");
    for (int count = 20; count <= 32; ++count)
        QTest::addRow("%d columns", count) << count;
    QTest::newRow("1000 columns") << 1000;
}

void TestReadingMask::lineNeeds26Columns()
{
    QFETCH(const int, count);
    QStringList all = columns();
    while (all.size() > count)
        all.removeLast();
    while (all.size() < count)
        all.append("не в счёт");
    for (const char separator : {';', ','})
        QCOMPARE(differences(read({all.join(separator)}), count < 26 ? QMap<int, Item>() : kRecord12),
                 QStringList());
}

void TestReadingMask::commaSeparatesIfSemicolonsDoNot()
{
    QCOMPARE(differences(read({lineWith({}, ',')}), kRecord12), QStringList());
    // Too few semicolons are part of the text.
    QCOMPARE(read({lineWith({{25, "Свой: а;б"}}, ',')}).value(12).Desc, "Свой: а;б");
    QCOMPARE(differences(read({lineWith({{12, QString(24, ';')}}, ',')}), kRecord12), QStringList());
    // Enough semicolons win over any number of commas.
    QCOMPARE(differences(read({lineWith({{12, QString(50, ',')}})}), kRecord12), QStringList());
}

void TestReadingMask::firstColumnDecides_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<bool>("need");
    for (const char* text : {"1", "01", "001", " 1", "1 ", "+1"})
        QTest::addRow("\"%s\"", text) << QString(text) << true << true;
    QTest::addRow("\"0\"") << QString("0") << true << false;
    for (const char* text : {"00", "2", "-1", "10", "abc", "", " 0", "0 ", "+0", "-0", "0x1", "1.0",
                             "4294967297", "FA_NEED", "true"})
        QTest::addRow("\"%s\"", text) << QString(text) << false << false;
}

void TestReadingMask::firstColumnDecides()
{
    QFETCH(const QString, text);
    QFETCH(const bool, accepted);
    QFETCH(const bool, need);
    QMap<int, Item> expected;
    if (accepted) {
        expected[12] = record();
        expected[12].FA_NEED = need;
    }
    QCOMPARE(differences(read({lineWith({{0, text}})}), expected), QStringList());
}

void TestReadingMask::commentsAreSkipped()
{
    QCOMPARE(differences(read({'#' + lineWith(), "#1;" + lineWith(), lineWith()}), kRecord12), QStringList());
    QVERIFY(read({'#' + lineWith()}).isEmpty());
    QCOMPARE(read({lineWith({{25, "#Свой"}})}).value(12).Desc, "#Свой");
}

void TestReadingMask::maskIsHexadecimal_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint32>("mask");
    const auto row = [](const char* text, quint32 mask) {
        QTest::addRow("\"%s\"", text) << QString(text) << mask;
    };
    row("0", 0);
    row("0000", 0);
    row("1", 1);
    row("10", 0x10);
    row("00ff", 0xff);
    row("03ff", 0x3ff);
    row("fff", 0xfff);
    row("ffff", 0xffff);
    row("FFFF", 0xffff);
    row("aBcD", 0xabcd);
    row("1ffff", 0x1ffff);
    row("7fffffff", 0x7fffffff);
    row("80000000", 0x80000000);
    row("ffffffff", 0xffffffff);
    row("00000000ffffffff", 0xffffffff);
    row(" 3ff ", 0x3ff);
    row("100000000", 0xfff);
    row("ffffffffffffffffffff", 0xfff);
    row("", 0xfff);
    row(" ", 0xfff);
    row("g", 0xfff);
    row("fffg", 0xfff);
    row("маска", 0xfff);
    row("-1", 0xfff);
    row("f f", 0xfff);
    row("1.0", 0xfff);
}

void TestReadingMask::maskIsHexadecimal()
{
    QFETCH(const QString, text);
    QFETCH(const quint32, mask);
    Item expected = record();
    expected.BL_MASK = mask;
    QCOMPARE(differences(read({lineWith({{1, text}})}), {{12, expected}}), QStringList());
}

void TestReadingMask::keyIsTypePlusOne_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("key");
    const auto row = [](const char* text, int type, int key) {
        QTest::addRow("\"%s\"", text) << QString(text) << type << key;
    };
    row("0", 0, 1);
    row("000", 0, 1);
    row("011", 11, 12);
    row("159", 159, 160);
    row("160", 160, 161);
    row("1000000", 1000000, 1000001);
    row("-1", -1, 0);
    row("00-1", 0, 1); // so a Type of -1 is written, and it is no number
    row("-2", -2, -1);
    row("", 0, 1);
    row("тип", 0, 1);
    row("0x10", 0, 1);
    row("2147483646", kHighest - 1, kHighest);
    row("2147483647", kHighest, kLowest);
    row("-2147483648", kLowest, kLowest + 1);
    row("2147483648", 0, 1);
}

void TestReadingMask::keyIsTypePlusOne()
{
    QFETCH(const QString, text);
    QFETCH(const int, type);
    QFETCH(const int, key);
    Item expected = record();
    expected.Type = type;
    QCOMPARE(differences(read({lineWith({{2, text}})}), {{key, expected}}), QStringList());
}

void TestReadingMask::recordsComeInAnyOrder()
{
    QStringList lines;
    for (const int type : {5, 0, 159, 3, 4})
        lines.append(lineWith({{2, QString::number(type)}, {25, QString("Поле %1").arg(type)}}));
    const auto items = read(lines);
    QCOMPARE(items.keys(), (QList<int>{1, 4, 5, 6, 160}));
    for (auto it = items.cbegin(); it != items.cend(); ++it) {
        QCOMPARE(it->Type, it.key() - 1);
        QCOMPARE(it->Desc, QString("Поле %1").arg(it.key() - 1));
    }
}

void TestReadingMask::laterLineOfTheSameTypeReplaces()
{
    const QStringList lines{lineWith({{0, "0"}, {1, "1"}, {3, "9"}, {22, "8"}, {25, "Прежнее"}}),
                            lineWith({{2, "3"}, {25, "Другое"}}), lineWith()};
    Item other = record();
    other.Type = 3;
    other.Desc = other.DescView = "Другое";
    QCOMPARE(differences(read(lines), {{4, other}, {12, record()}}), QStringList());
    QCOMPARE(read({lineWith(), lineWith({{2, "011"}, {25, ""}})}).value(12).Desc, QString(""));
}

void TestReadingMask::descriptionIsTakenAsItStands_data()
{
    QTest::addColumn<QString>("desc");
    QTest::addColumn<QString>("view");
    const auto row = [](const QString& desc, const QString& view) {
        QTest::addRow("\"%s\"", qPrintable(desc)) << desc << view;
    };
    row("", "");
    row("а", "а");
    row("абв", "абв");
    row(":", ":.:");
    row("а:", "а.:");
    row("абв:", "а.:");
    row("  ", "  ");
    row("Без класса", "Без класса");
    row("ЗН: надпись", "З.: надпись");
    row("Оплата: Обшая: сумма", "О.: Обшая: сумма");
    row(" Свой: %1 \"текст\" ", " .: %1 \"текст\" ");
}

void TestReadingMask::descriptionIsTakenAsItStands()
{
    QFETCH(const QString, desc);
    QFETCH(const QString, view);
    Item expected = record();
    expected.Desc = desc;
    expected.DescView = view;
    QCOMPARE(differences(read({lineWith({{25, desc}})}), {{12, expected}}), QStringList());
}

void TestReadingMask::descriptionIsCutAtTheSeparator()
{
    QCOMPARE(read({lineWith({{25, "Свой: а;б"}})}).value(12).Desc, "Свой: а");
    QCOMPARE(read({lineWith({{25, "Свой: а,б"}})}).value(12).Desc, "Свой: а,б");
    QCOMPARE(read({lineWith({{25, "Свой: а,б"}}, ',')}).value(12).Desc, "Свой: а");
    QCOMPARE(read({lineWith({{25, ";Свой"}})}).value(12).Desc, QString(""));
}

void TestReadingMask::carriageReturnStaysInTheDescription()
{
    QCOMPARE(read({lineWith() + '\r'}).value(12).Desc, "Свой: текст\r");
    QCOMPARE(read({lineWith() + '\r'}).value(12).DescView, "С.: текст\r");
    QCOMPARE(read({lineWith({{25, ""}}) + '\r'}).value(12).Desc, "\r");
    QCOMPARE(read({lineWith() + ";\r"}).value(12).Desc, "Свой: текст");
}

void TestReadingMask::mandatoryFieldsAreThoseOfTheFile()
{
    // Key 12 is mandatory by rule, key 1 is not: the file has the last word.
    const auto items = read({lineWith({{0, "0"}}), lineWith({{2, "0"}})});
    QCOMPARE(items[12].FA_NEED, false);
    QCOMPARE(items[1].FA_NEED, true);
}

void TestReadingMask::recordsAreReplacedKeyByKey()
{
    BD_T20Items bd;
    QMap<int, Item> expected;
    for (const int key : {0, 1, 11, 12, 13, 99})
        bd.items[key] = expected[key] = recordtools::markedItem(key);
    bd.LoadFromListV04({lineWith()});
    expected[12] = record();
    QCOMPARE(differences(bd.items, expected), QStringList());
}

void TestReadingMask::linesWithoutARecordChangeNothing()
{
    BD_T20Items bd;
    bd.items[12] = recordtools::markedItem(12);
    QCOMPARE(bd.LoadFromListV04({"", '#' + lineWith(), lineWith({{0, "2"}}), "1;2;3", QString(60, ';')}), 0);
    QCOMPARE(differences(bd.items, {{12, recordtools::markedItem(12)}}), QStringList());
}

QTEST_GUILESS_MAIN(TestReadingMask)
#include "tst_reading_mask.moc"
