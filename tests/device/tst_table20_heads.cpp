#include "device/recordssession.h"

#include <QTest>

#include <memory>

using T20Item = BD_T20Items::T20Item;

namespace {

/// What stands in a head before the tag of the name.
const QString kHeadStart = QStringLiteral("0000A1A2A3A4A5A6A7A80300010013");

Json::Value head(const QString& behindStart)
{
    return record(1, 0, 0, kHeadStart + behindStart);
}

} // namespace

/// The heads of rows: names, masks and mandatory flags that come with the records of a device.
class TestTable20Heads : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void headGivesNameAndMask_data();
    void headGivesNameAndMask();
    void undefinedCharacterKeepsItsPlace();
    void headWithoutANameGivesNothing_data();
    void headWithoutANameGivesNothing();
    void headOfAnotherKindIsLogged_data();
    void headOfAnotherKindIsLogged();
    void headIsForOneFieldOnly();

private:
    std::unique_ptr<RecordsSession> m_session;
};

void TestTable20Heads::initTestCase()
{
    m_session = std::make_unique<RecordsSession>();
}

void TestTable20Heads::cleanupTestCase()
{
    m_session.reset();
}

void TestTable20Heads::init()
{
    m_session->clear();
}

void TestTable20Heads::headGivesNameAndMask_data()
{
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("view");
    QTest::addColumn<quint32>("mask");
    QTest::addColumn<bool>("isNeeded");
    QTest::addColumn<QString>("line");
    const auto row = [](const char* title, const char* digits, const char* name, const char* view,
                        quint32 mask, bool isNeeded, const char* line) {
        QTest::newRow(title) << QString(digits) << QString(name) << QString(view) << mask << isNeeded
                             << QString(line);
    };
    row("no rest", "04000300C8ECFF05000000", "Имя", "Имя", 0, false, "3 Имя ");
    row("2 digits", "04000300C8ECFF05000100FF", "Имя", "Имя", 0xff, false, "3 Имя FF");
    row("4 digits", "04000300C8ECFF05000200FF03", "Имя", "Имя", 0x3ff, false, "3 Имя FF03");
    row("6 digits", "04000300C8ECFF05000300FF0301", "Имя", "Имя", 0x3ff, false, "3 Имя FF0301");
    row("8 digits", "04000300C8ECFF05000400FF030405", "Имя", "Имя", 0x3ff, true, "3 Имя FF030405");
    row("10 digits", "04000300C8ECFF05000500FF03040506", "Имя", "Имя", 0x3ff, false, "3 Имя FF03040506");
    row("low byte first", "04000300C8ECFF0500020080A1", "Имя", "Имя", 0xa180, false, "3 Имя 80A1");
    row("lower case", "04000300c8ecff05000200ab0c", "Имя", "Имя", 0x0cab, false, "3 Имя ab0c");
    row("rest of no digits", "04000300C8ECFF05000200ZZYY", "Имя", "Имя", 0, false, "3 Имя ZZYY");
    row("high byte of the length", "040003FFC8ECFF05000200FF03", "Имя", "Имя", 0x3ff, false, "3 Имя FF03");
    row("class", "04000A00CAEBE0F1F13A20E8ECFF05000200FF03", "Класс: имя", "К.: имя", 0x3ff, false,
        "10 Класс: имя FF03");
    row("own name of a class", "04000B00C7CD3A20EDE0E4EFE8F1FC05000200FF03", "ЗН: надпись", "З.: надпись",
        0x3ff, false, "11 ЗН: надпись FF03");
    row("letters and signs", "04000700A8B8B9AB97BB2105000200FF03", "Ёё№«—»!", "Ёё№«—»!", 0x3ff, false,
        "7 Ёё№«—»! FF03");
    row("placeholders", "0400060025312025322505000200FF03", "%1 %2%", "%1 %2%", 0x3ff, false,
        "6 %1 %2% FF03");
    row("looks rich", "040008003C623E783C2F623E05000200FF03", "<b>x</b>", "<b>x</b>", 0x3ff, false,
        "8 <b>x</b> FF03");
    row("control characters", "04000600C8090AFF000D05000200FF03", "И  я  ", "И  я  ", 0x3ff, false,
        "6 И  я   FF03");
    row("no digits within the name", "04000300C8ZZFF05000200FF03", "И я", "И я", 0x3ff, false, "3 И я FF03");
    row("cut behind the name", "04000300C8ECFF0", "Имя", "Имя", 0, false, "3 Имя ");
    row("cut within the next tag", "04000300C8ECFF0500", "Имя", "Имя", 0, false, "3 Имя ");
    row("1 digit", "04000300C8ECFF05000100F", "Имя", "Имя", 0xf, false, "3 Имя F");
    row("3 digits", "04000300C8ECFF05000200FF3", "Имя", "Имя", 0x3ff, false, "3 Имя FF3");
    row("7 digits", "04000300C8ECFF05000400FF03040", "Имя", "Имя", 0x3ff, false, "3 Имя FF03040");
    row("minus in the rest", "04000300C8ECFF05000100-1", "Имя", "Имя", 0, false, "3 Имя -1");
    row("minus behind a byte of the rest", "04000300C8ECFF05000200FF-3", "Имя", "Имя", 0xff, false,
        "3 Имя FF-3");
    row("minus in the name", "04000300C8-1FF05000200FF03", "И я", "И я", 0x3ff, false, "3 И я FF03");
    const QString longest(255, u'И');
    QTest::newRow("longest name") << "0400FF00" + QString("C8").repeated(255) + "05000200FF03" << longest
                                  << longest << 0x3ffU << false << "255 " + longest + " FF03";
}

void TestTable20Heads::headGivesNameAndMask()
{
    QFETCH(const QString, digits);
    QFETCH(const QString, line);
    // Behind another field, as the first one and the others start from different flags.
    m_session->load(field(0) + QList<Json::Value>{head(digits)} + field(30));
    const T20Item item = m_session->items().value(31);
    QTEST(item.Desc, "name");
    QTEST(item.DescView, "view");
    QTEST(item.BL_MASK, "mask");
    QTEST(item.FA_NEED, "isNeeded");
    QCOMPARE(m_session->log.takeNew(), QStringList{line});

    m_session->load(QList<Json::Value>{head(digits)} + field(30));
    QTEST(m_session->items().value(31).Desc, "name");
    QTEST(m_session->items().value(31).BL_MASK, "mask");
    QTEST(m_session->items().value(31).FA_NEED, "isNeeded");

    // The twelfth field of a list is mandatory unless its head says otherwise.
    QVERIFY(BD_T20Items::getFA_NEED(12));
    m_session->load(fields({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}) + QList<Json::Value>{head(digits)} +
                    field(30));
    QTEST(m_session->items().value(31).BL_MASK, "mask");
    QTEST(m_session->items().value(31).FA_NEED, "isNeeded");
}

void TestTable20Heads::undefinedCharacterKeepsItsPlace()
{
    m_session->load(QList<Json::Value>{head("04000300C898FF05000200FF03")} + field(30));
    const QString name = m_session->items().value(31).Desc;
    QCOMPARE(name.size(), 3);
    QCOMPARE(name.front(), u'И');
    QCOMPARE(name[1], QChar(0x98)); // what the code page leaves out keeps its number
    QCOMPARE(name.back(), u'я');
    QCOMPARE(m_session->items().value(31).BL_MASK, 0x3ffU);
}

void TestTable20Heads::headWithoutANameGivesNothing_data()
{
    QTest::addColumn<QString>("digits");
    QTest::newRow("length 0") << "0400000005000200FF03";
    QTest::newRow("nothing behind the name") << "04000300C8ECFF";
    QTest::newRow("name cut") << "04000400C8ECFF";
    QTest::newRow("longer than all") << "0400FF00C8ECFF05000200FF03";
    QTest::newRow("no length") << "0400";
    QTest::newRow("length of no digits") << "0400ZZ00C8ECFF05000200FF03";
    QTest::newRow("length with a minus") << "0400-100C8ECFF05000200FF03";
}

void TestTable20Heads::headWithoutANameGivesNothing()
{
    QFETCH(const QString, digits);
    m_session->load(field(0) + QList<Json::Value>{head(digits)} + field(11));
    QCOMPARE(m_session->items()[12].Desc, "Позиция: наименование");
    QCOMPARE(m_session->items()[12].DescView, "П.: наименование");
    QCOMPARE(m_session->items()[12].BL_MASK, 0xffffU);
    QCOMPARE(m_session->log.takeNew(), QStringList());
}

void TestTable20Heads::headOfAnotherKindIsLogged_data()
{
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("line");
    QTest::newRow("other tag") << kHeadStart + "05000300C8ECFF05000200FF03"
                               << "00-00: 0000A1A2A3A4A5A6A7A8030001001305000300C8ECFF050002";
    QTest::newRow("high byte of the tag") << kHeadStart + "04010300C8ECFF05000200FF03"
                                          << "00-00: 0000A1A2A3A4A5A6A7A8030001001304010300C8ECFF050002";
    QTest::newRow("head without a name") << kHeadStart << "00-00: 0000A1A2A3A4A5A6A7A80300010013";
    QTest::newRow("short") << "0000"
                           << "00-00: 0000";
    QTest::newRow("empty") << ""
                           << "00-00: ";
    QTest::newRow("placeholder") << "%1%2"
                                 << "00-00: %1%2";
}

void TestTable20Heads::headOfAnotherKindIsLogged()
{
    QFETCH(const QString, digits);
    QFETCH(const QString, line);
    m_session->load(field(0) + QList<Json::Value>{record(1, 0, 0, digits)} + field(11));
    QCOMPARE(m_session->items()[12].Desc, "Позиция: наименование");
    QCOMPARE(m_session->items()[12].BL_MASK, 0xffffU);
    QCOMPARE(m_session->log.takeNew(), QStringList{line});
}

void TestTable20Heads::headIsForOneFieldOnly()
{
    const auto named = head("04000300C8ECFF05000400FF030000");
    const auto other = head("04000200CDE5050002000100");
    m_session->load(QList<Json::Value>{named} + field(0) + field(1) + QList<Json::Value>{other} + field(2) +
                    QList<Json::Value>{named, other} + field(3) + QList<Json::Value>{named});
    QCOMPARE(m_session->items().keys(), (QList<int>{1, 2, 3, 4}));
    QCOMPARE(m_session->items()[1].Desc, "Имя");
    QCOMPARE(m_session->items()[1].FA_NEED, true);
    QCOMPARE(m_session->items()[2].Desc, "Свободная строка 1");
    QCOMPARE(m_session->items()[2].DescView, "Свободная строка 1");
    QCOMPARE(m_session->items()[2].FA_NEED, false);
    QCOMPARE(m_session->items()[2].BL_MASK, 0xffffU);
    QCOMPARE(m_session->items()[3].Desc, "Не");
    QCOMPARE(m_session->items()[3].BL_MASK, 1U);
    QCOMPARE(m_session->items()[4].Desc, "Не");
    QCOMPARE(m_session->items()[4].FA_NEED, false);

    // It may also come between the groups of its field.
    QList<Json::Value> records = field(0);
    records.insert(2, named);
    m_session->load(records);
    QCOMPARE(m_session->items()[1].Desc, "Имя");
    QCOMPARE(m_session->items()[1].BL_MASK, 0x3ffU);
    QCOMPARE(m_session->items()[1].Line, 1);
}

QTEST_MAIN(TestTable20Heads)

#include "tst_table20_heads.moc"
