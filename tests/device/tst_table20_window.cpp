#include "device/recordssession.h"

#include <QTest>

#include <memory>

using T20Item = BD_T20Items::T20Item;

/// Records of the template table become the fields of the window.
class TestTable20Window : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void paramStandsAtItsPlace_data();
    void paramStandsAtItsPlace();
    void everyParamGoesToItsMember();
    void rowHasTwoBytes_data();
    void rowHasTwoBytes();
    void minusInTheRowIsNoDigit_data();
    void minusInTheRowIsNoDigit();

    void listWithoutHeadsTakesTheCatalogue();
    void wholeCatalogueComesButForTheLastName();
    void flagsGoByTheCountOfFields();

    void unknownGroupsAreLogged();
    void fieldWithoutItsFirstGroupIsReported();
    void missingGroupsLeaveNoNumbers();
    void otherSubTablesAreSkipped();
    void elementsThatAreNoRecordsAreSkipped();
    void laterFieldOfARowReplacesTheEarlier();
    void listReplacesTheTemplate();
    void templateComesBackAsItWent();

private:
    std::unique_ptr<RecordsSession> m_session;
};

void TestTable20Window::initTestCase()
{
    m_session = std::make_unique<RecordsSession>();
}

void TestTable20Window::cleanupTestCase()
{
    m_session.reset();
}

void TestTable20Window::init()
{
    m_session->clear();
}

void TestTable20Window::paramStandsAtItsPlace_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("at");
    QTest::newRow("1") << 1 << 38;
    QTest::newRow("2") << 2 << 66;
    QTest::newRow("3") << 3 << 94;
    QTest::newRow("4") << 4 << 122;
    QTest::newRow("5") << 5 << 150;
    QTest::newRow("6") << 6 << 178;
}

void TestTable20Window::paramStandsAtItsPlace()
{
    QFETCH(const int, index);
    QFETCH(const int, at);
    QString v(180, u'7');
    const auto value = [&v, index, at](const QString& digits) {
        return WindowProbe::parseParam(index, v.replace(at, 2, digits));
    };
    QCOMPARE(value("1F"), 31);
    QCOMPARE(value("00"), 0);
    QCOMPARE(value("FF"), 255);
    QCOMPARE(value("e2"), 226);
    QCOMPARE(value("xy"), 0);
    QCOMPARE(value("0x"), 0);
    QCOMPARE(value("-1"), 0);
    QCOMPARE(WindowProbe::parseParam(index, v.left(at)), 0);
    QCOMPARE(WindowProbe::parseParam(index, QString()), 0);
}

void TestTable20Window::everyParamGoesToItsMember()
{
    m_session->load({record(4, 1, 6,
                            "010605005400"
                            "01000A00010001000802000100A1"
                            "02000A00010001000402000100A2"
                            "03000A00010001000102000100A3"
                            "04000A00010001000102000100A4"
                            "05000A00010001000202000100A5"
                            "06000A00010001000802000100A6"),
                     record(4, 7, 12,
                            "070C05005400"
                            "07000A00010001000802000100A7"
                            "08000A00010001000802000100A8"
                            "09000A00010001000802000100A9"
                            "0A000A00010001000102000100AA"
                            "0B000A00010001000102000100AB"
                            "0C000A00010001000102000100AC"),
                     record(4, 13, 18,
                            "0D1205005400"
                            "0D000A00010001000102000100AD"
                            "0E000A00010001000202000100AE"
                            "0F000A00010001000202000100AF"
                            "10000A00010001000402000100B0"
                            "11000A00010001000202000100B1"
                            "12000A00010001000202000100B2"),
                     record(4, 19, 19,
                            "131305000E00"
                            "13000A00010001000802000100B3")},
                    4);
    QCOMPARE(m_session->items().keys(), QList<int>{6});
    const T20Item item = m_session->items().value(6);
    QCOMPARE(item.Block, 0xa1);
    QCOMPARE(item.Font, 0xa2);
    QCOMPARE(item.X2X, 0xa3);
    QCOMPARE(item.X2Y, 0xa4);
    QCOMPARE(item.PoleFlags, 0xa5);
    QCOMPARE(item.LineGap, 0xa6);
    QCOMPARE(item.Line, 0xa7);
    QCOMPARE(item.X, 0xa8);
    QCOMPARE(item.Size, 0xa9);
    QCOMPARE(item.DropIfZero, 0xaa);
    QCOMPARE(item.PressRight, 0xab);
    QCOMPARE(item.Expand, 0xac);
    QCOMPARE(item.CutToWidth, 0xad);
    QCOMPARE(item.MaskMode, 0xae);
    QCOMPARE(item.FractFormat, 0xaf);
    QCOMPARE(item.Brightness, 0xb0);
    QCOMPARE(item.AlignInPole, 0xb1);
    QCOMPARE(item.AlignOnTape, 0xb2);
    QCOMPARE(item.TailChar, 0xb3);
    QCOMPARE(item.Type, 5);
    QCOMPARE(item.Desc, "Свободная строка 5");
    QCOMPARE(item.DescView, "Свободная строка 5");
    QCOMPARE(item.FA_NEED, false);
    QCOMPARE(item.BL_MASK, 0xffffffffU);
    QCOMPARE(m_session->log.takeNew(), QStringList());
    QCOMPARE(m_session->robot.takeTexts(), QStringList());
}

void TestTable20Window::rowHasTwoBytes_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("view");
    QTest::newRow("0") << 0 << "Шапка: заголовок"
                       << "Ш.: заголовок";
    QTest::newRow("94") << 94 << "ЗН: надпись"
                        << "ЗН: надпись";
    QTest::newRow("159") << 159 << "Картинка"
                         << "Картинка";
    QTest::newRow("160") << 160 << "unknow"
                         << "unknow";
    QTest::newRow("255") << 255 << "unknow"
                         << "unknow";
    QTest::newRow("256") << 256 << "unknow"
                         << "unknow";
    QTest::newRow("65535") << 65535 << "unknow"
                           << "unknow";
}

void TestTable20Window::rowHasTwoBytes()
{
    QFETCH(const int, row);
    m_session->load(field(row));
    QCOMPARE(m_session->items().keys(), QList<int>{row + 1});
    QCOMPARE(m_session->items().first().Type, row);
    QTEST(m_session->items().first().Desc, "name");
    QTEST(m_session->items().first().DescView, "view");
    QCOMPARE(m_session->log.takeNew(), QStringList());
}

void TestTable20Window::minusInTheRowIsNoDigit_data()
{
    QTest::addColumn<QString>("digits");
    QTest::addColumn<int>("row");
    QTest::newRow("low byte") << "-100" << 0;
    QTest::newRow("high byte") << "05-1" << 5;
    QTest::newRow("both") << "-1-1" << 0;
    QTest::newRow("plus, which is one") << "+500" << 5;
}

void TestTable20Window::minusInTheRowIsNoDigit()
{
    QFETCH(const QString, digits);
    QFETCH(const int, row);
    QList<Json::Value> records = field(9);
    records[0] = record(1, 1, 6, "0106" + digits + "5400" + groupDigits(9, 1, {3, 1, 0, 0, 0, 2}).mid(12));
    m_session->load(records);
    QCOMPARE(m_session->items().keys(), QList<int>{row + 1});
    QCOMPARE(m_session->items().first().Type, row);
    QCOMPARE(m_session->items().first().Block, 3);
    QCOMPARE(m_session->log.takeNew(), QStringList());
}

void TestTable20Window::listWithoutHeadsTakesTheCatalogue()
{
    m_session->load(fields({0, 1, 9}));
    QCOMPARE(m_session->items().keys(), (QList<int>{1, 2, 10}));
    QCOMPARE(m_session->items()[1].Desc, "Шапка: заголовок");
    QCOMPARE(m_session->items()[1].DescView, "Ш.: заголовок");
    QCOMPARE(m_session->items()[1].BL_MASK, 0xffffffffU);
    QCOMPARE(m_session->items()[2].Desc, "Свободная строка 1");
    QCOMPARE(m_session->items()[2].DescView, "Свободная строка 1");
    QCOMPARE(m_session->items()[2].BL_MASK, 0xffffU);
    QCOMPARE(m_session->items()[10].Desc, "Позиция: номер");
    QCOMPARE(m_session->items()[10].DescView, "П.: номер");
    QCOMPARE(m_session->items()[10].BL_MASK, 0xffffU);
}

void TestTable20Window::wholeCatalogueComesButForTheLastName()
{
    QList<int> rows;
    for (int row = 0; row < 161; ++row)
        rows.append(row);
    m_session->load(fields(rows));
    QCOMPARE(m_session->items().size(), 161);
    for (const auto& [key, isNeeded] :
         {std::pair(1, false), std::pair(11, false), std::pair(12, true), std::pair(13, false),
          std::pair(16, true), std::pair(19, true), std::pair(32, false), std::pair(33, true),
          std::pair(70, true), std::pair(71, false), std::pair(128, false), std::pair(134, true),
          std::pair(135, false), std::pair(160, false)}) {
        QCOMPARE(m_session->items()[key].FA_NEED, isNeeded);
        QCOMPARE(m_session->items()[key].Type, key - 1);
    }
    QCOMPARE(m_session->items()[43].Desc, "ИТОГ: сумма");
    QCOMPARE(m_session->items()[159].Desc, "QR-код");
    QCOMPARE(m_session->items()[160].Desc, "unknow");
    QCOMPARE(m_session->items()[160].DescView, "unknow");
    QCOMPARE(m_session->items()[161].Desc, "unknow");
    QCOMPARE(m_session->items()[1].BL_MASK, 0xffffffffU);
    for (int key = 2; key <= 161; ++key)
        QCOMPARE(m_session->items()[key].BL_MASK, 0xffffU);
}

void TestTable20Window::flagsGoByTheCountOfFields()
{
    // The rows of keys 12 and 41, which every device wants; then the twelfth field of the list.
    m_session->load(fields({11, 40, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    QCOMPARE(m_session->items()[12].FA_NEED, false);
    QCOMPARE(m_session->items()[41].FA_NEED, false);
    QCOMPARE(m_session->items()[9].FA_NEED, false);
    QCOMPARE(m_session->items()[10].FA_NEED, true);
}

void TestTable20Window::unknownGroupsAreLogged()
{
    QList<Json::Value> records = field(0);
    const QList<std::pair<int, int>> groups{{1, 5},  {0, 6},   {1, 0},   {7, 11},  {13, 19}, {19, 20},
                                            {2, 6},  {-1, -1}, {1, 19},  {300, 1}, {19, 0},  {6, 1},
                                            {0, 19}, {8, 12},  {14, 18}, {12, 7}};
    for (const auto& [first, last] : groups)
        records.insert(2, record(1, first, last, groupDigits(9, 1, {9, 9, 9, 9, 9, 9})));
    m_session->load(records);
    QCOMPARE(m_session->log.takeNew(), QStringList(groups.size(), "---: unknow"));
    QCOMPARE(m_session->items().keys(), QList<int>{1});
    const QMap<int, T20Item> withThem = m_session->items();
    m_session->load(field(0));
    for (const auto param : T20Item::kDeviceParams)
        QCOMPARE(withThem[1].*param, m_session->items()[1].*param);
}

void TestTable20Window::fieldWithoutItsFirstGroupIsReported()
{
    const Json::Value last = record(1, 19, 19, groupDigits(77, 19, {65}));
    QList<Json::Value> records = field(30);
    for (int i = 0; i < 10; ++i)
        records += {record(1, 7, 12, groupDigits(77, 7, {9, 9, 9, 9, 9, 9})), last};
    records += field(31);
    m_session->load(records);
    QCOMPARE(m_session->log.takeNew(), QStringList(10, "wrong pole keyPlN"));
    QCOMPARE(m_session->items().keys(), (QList<int>{31, 32}));
    // They count all the same: this one is the twelfth.
    QCOMPARE(m_session->items()[32].FA_NEED, true);

    // At the start of a list the row is 1 until it is told.
    m_session->load({last});
    QCOMPARE(m_session->log.takeNew(), QStringList());
    QCOMPARE(m_session->items().keys(), QList<int>{2});
    QCOMPARE(m_session->items()[2].Type, 1);
    QCOMPARE(m_session->items()[2].TailChar, 65);
    QCOMPARE(m_session->items()[2].Desc, "Свободная строка 1");
}

void TestTable20Window::missingGroupsLeaveNoNumbers()
{
    QList<Json::Value> records = field(0);
    records +=
        {record(1, 1, 6, groupDigits(4, 1, {3, 4, 5, 6, 7, 8})), record(1, 19, 19, groupDigits(4, 19, {9}))};
    m_session->load(records);
    QCOMPARE(m_session->items().keys(), (QList<int>{1, 5}));
    QList<int> numbers;
    for (const auto param : T20Item::kDeviceParams)
        numbers.append(m_session->items()[5].*param);
    QCOMPARE(numbers, (QList<int>{3, 4, 5, 6, 7, 8, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, 9}));
}

void TestTable20Window::otherSubTablesAreSkipped()
{
    QList<Json::Value> records = field(7, 2);
    records += record(2, 0, 0, "junk");
    records += record(2, 5, 5, "");
    records += record(2, 19, 19, "");
    QList<Json::Value> mixed;
    const QList<Json::Value> wanted = field(3);
    for (const auto& value : wanted)
        mixed += records + QList<Json::Value>{value};
    m_session->load(mixed);
    QCOMPARE(m_session->items().keys(), QList<int>{4});
    QCOMPARE(m_session->items()[4].BL_MASK, 0xffffffffU);
    QCOMPARE(m_session->log.takeNew(), QStringList());

    m_session->load(records, 5);
    QCOMPARE(m_session->items().keys(), QList<int>());
}

void TestTable20Window::elementsThatAreNoRecordsAreSkipped()
{
    Json::Value wrongText = record(1, 1, 6, QString());
    wrongText["v"] = Json::Value(Json::arrayValue);
    Json::Value wrongGroup = record(1, 19, 19, groupDigits(9, 19, {9}));
    wrongGroup["p1"] = "19";
    Json::Value wrongSubTable = wrongGroup;
    wrongSubTable["p1"] = 19;
    wrongSubTable["s"] = Json::Value(Json::objectValue);
    QList<Json::Value> wrong{5,         "text",     Json::Value(), true, Json::Value(Json::arrayValue),
                             wrongText, wrongGroup, wrongSubTable};

    // Nothing is made of another type: neither a number of what is no integer, nor a text of a number. Each of these
    // would complete a field or be an unknown group.
    const Json::Value complete = record(1, 19, 19, groupDigits(9, 19, {9}));
    const auto completeBut = [&complete](const char* member, const Json::Value& value) {
        Json::Value changed = complete;
        changed[member] = value;
        return changed;
    };
    wrong +=
        {completeBut("s", true),  completeBut("s", 1.5),   completeBut("t", true),  completeBut("t", 20.5),
         completeBut("r", false), completeBut("r", 1.25),  completeBut("p1", true), completeBut("p1", 19.5),
         completeBut("p2", true), completeBut("p2", 19.5), completeBut("v", 1313),  completeBut("v", true),
         completeBut("v", 13.5)};
    m_session->load(wrong + field(3));
    QCOMPARE(m_session->items().keys(), QList<int>{4});
    QCOMPARE(m_session->items()[4].BL_MASK, 0xffffffffU);
    QCOMPARE(m_session->log.takeNew(), QStringList());
}

void TestTable20Window::laterFieldOfARowReplacesTheEarlier()
{
    QList<Json::Value> second = field(3);
    second[3] = record(1, 19, 19, groupDigits(3, 19, {99}));
    m_session->load(field(3) + second);
    QCOMPARE(m_session->items().keys(), QList<int>{4});
    QCOMPARE(m_session->items()[4].TailChar, 99);
    QCOMPARE(m_session->items()[4].BL_MASK, 0xffffU);
}

void TestTable20Window::listReplacesTheTemplate()
{
    m_session->load(fields({0, 1, 2}));
    m_session->load(field(1));
    QCOMPARE(m_session->items().keys(), QList<int>{2});
    m_session->load({});
    QCOMPARE(m_session->items().keys(), QList<int>());
    m_session->load(field(1));
    Json::Value nothing;
    m_session->probe.loadRecords(nothing, 1);
    QCOMPARE(m_session->items().keys(), QList<int>());
}

void TestTable20Window::templateComesBackAsItWent()
{
    BD_T20Items before;
    for (int key = 1; key <= 159; ++key) {
        T20Item item;
        int number = 0;
        for (const auto param : T20Item::kDeviceParams)
            item.*param = (key * 31 + 17 * number++) % 256;
        before.AddPoleToBD(key, item);
    }
    Json::Value list(Json::arrayValue);
    QCOMPARE(before.SaveAsJsonV01(list, 8), 0);
    m_session->probe.loadRecords(list, 8);
    QCOMPARE(m_session->items().keys(), before.items.keys());
    for (int key = 1; key <= 159; ++key) {
        const T20Item item = m_session->items()[key];
        for (const auto param : T20Item::kDeviceParams)
            QCOMPARE(item.*param, before.items[key].*param);
        QCOMPARE(item.Type, key - 1);
        QCOMPARE(item.Desc, before.getPolesLabels().at(key - 1));
        QCOMPARE(item.DescView, before.getPolesLabelsView().at(key - 1));
    }
    QCOMPARE(m_session->log.takeNew(), QStringList());
}

QTEST_MAIN(TestTable20Window)

#include "tst_table20_window.moc"
