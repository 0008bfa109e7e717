#include "dumprows.h"

#include <QRandomGenerator>
#include <QTest>

using recordtools::differences;
using recordtools::Item;
using recordtools::votesFor;

namespace {

/// The bytes of a file: every row ends with a line feed, the last one too.
QByteArray bytesOf(const BD_T20Items& bd)
{
    QStringList rows;
    bd.SaveToListWMask(rows);
    QByteArray data;
    for (const auto& row : rows)
        data += row.toUtf8() + '\n';
    return data;
}

/// What is read from `data` over an empty template, by the reader of the only format that is written.
BD_T20Items readBack(const QByteArray& data)
{
    const TemplateText text(data);
    BD_T20Items bd;
    bd.LoadFromListV04(text.lines());
    return bd;
}

/// A template as it comes from a device: key k has Type k-1.
BD_T20Items deviceTemplate(int count)
{
    QRandomGenerator random(160);
    BD_T20Items bd;
    for (int key = 1; key <= count; ++key) {
        Item item;
        item.FA_NEED = random.bounded(2) == 1;
        item.BL_MASK = random.bounded(0x10000U);
        item.Type = key - 1;
        for (const auto& [name, param] : recordtools::kParams)
            item.*param = random.bounded(256);
        item.Desc = bd.PolesLabels.value(key - 1, "Свой: текст");
        item.makeDescViewFromDesc();
        bd.AddPoleToBD(key, item);
    }
    return bd;
}

QStringList validate(const BD_T20Items& bd)
{
    QStringList messages;
    bd.CheckBDCorrect(10, messages, false);
    return messages;
}

/// Lines of a good template of `count` fields in one of the older formats.
QStringList olderLines(bool old, int count)
{
    const QString numbers =
        old ? "0;0;0;0;0;0;1;0;10;0;0;0;0;0;0;0;0;1;1;32;" : "0;0;0;0;0;0;1;0;10;0;0;0;0;0;0;0;1;1;32;";
    return QStringList(count, numbers + "Свой: текст");
}

/// The same of "new, 9*9".
QStringList dumpLines(int count)
{
    QStringList lines;
    for (int row = 1; row <= count; ++row)
        lines += dumprows::rowLines(row, {0, 0, 0, 1, 0, 0, 0, 0, 0});
    return lines;
}

} // namespace

class TestWritingRoundTrip : public QObject
{
    Q_OBJECT

private slots:
    void everyFieldComesBack();
    void templateOfADeviceKeepsItsKeys();
    void everyRowVotesForItsFormat();
    void writingAgainGivesTheSameBytes();
    void lastLineFeedGivesNoRecord();
    void templateOfAnOlderFormatMovesByOneKey_data();
    void templateOfAnOlderFormatMovesByOneKey();
    void semicolonInADescriptionCutsIt();
    void typeBelowZeroComesBackAsZero();
    void rowWithoutDashesComesBack();
    void plainRowsComeBackAsPlainRecords();
};

void TestWritingRoundTrip::everyFieldComesBack()
{
    BD_T20Items bd;
    for (int key = 1; key <= 3; ++key) {
        Item item = recordtools::markedItem(key);
        item.Type = key - 1;
        item.FA_NEED = key == 2;
        item.makeDescViewFromDesc();
        bd.AddPoleToBD(key, item);
    }
    QCOMPARE(differences(readBack(bytesOf(bd)).items, bd.items), QStringList());
}

void TestWritingRoundTrip::templateOfADeviceKeepsItsKeys()
{
    const BD_T20Items bd = deviceTemplate(200);
    const BD_T20Items back = readBack(bytesOf(bd));
    QCOMPARE(back.items.size(), 200);
    QCOMPARE(differences(back.items, bd.items), QStringList());
    BD_T20Items good;
    for (int key = 1; key <= 160; ++key) {
        good.getPoleByKey(key).Type = key - 1;
        good.getPoleByKey(key).Line = 1;
    }
    QCOMPARE(validate(good), QStringList());
    QCOMPARE(validate(readBack(bytesOf(good))), QStringList());
}

void TestWritingRoundTrip::everyRowVotesForItsFormat()
{
    QCOMPARE(votesFor(bytesOf(deviceTemplate(160))), (QList<int>{0, 0, 0, 0, 160}));
}

void TestWritingRoundTrip::writingAgainGivesTheSameBytes()
{
    const QByteArray data = bytesOf(deviceTemplate(160));
    QCOMPARE(bytesOf(readBack(data)), data);
}

void TestWritingRoundTrip::lastLineFeedGivesNoRecord()
{
    const BD_T20Items bd = deviceTemplate(5);
    const QByteArray data = bytesOf(bd);
    QVERIFY(data.endsWith('\n'));
    QCOMPARE(TemplateText(data).lines().size(), 6);
    QCOMPARE(TemplateText(data).lines().last(), QString(""));
    QCOMPARE(readBack(data).items.keys(), (QList<int>{1, 2, 3, 4, 5}));
    QCOMPARE(differences(readBack(data.chopped(1)).items, bd.items), QStringList());
}

void TestWritingRoundTrip::templateOfAnOlderFormatMovesByOneKey_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("old, 20+[str]") << "old";
    QTest::newRow("new, 19+str") << "plain";
    QTest::newRow("new, 9*9") << "dump";
}

void TestWritingRoundTrip::templateOfAnOlderFormatMovesByOneKey()
{
    QFETCH(const QString, format);
    BD_T20Items bd;
    if (format == "dump")
        bd.LoadFromListV02(dumpLines(10));
    else
        bd.LoadFromListV01(olderLines(format == "old", 10), format == "old");
    QCOMPARE(bd.items.keys(), (QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    QCOMPARE(validate(bd), QStringList());

    const BD_T20Items back = readBack(bytesOf(bd));
    QMap<int, Item> moved;
    for (auto it = bd.items.cbegin(); it != bd.items.cend(); ++it) {
        QCOMPARE(it->Type, it.key());
        moved[it.key() + 1] = it.value();
        moved[it.key() + 1].makeDescViewFromDesc();
    }
    QCOMPARE(differences(back.items, moved), QStringList());
    QCOMPARE(validate(back), QStringList{"Пропущено поле №1"});
    QStringList messages;
    QCOMPARE(back.CheckBDCorrect(10, messages, false), 1);
}

void TestWritingRoundTrip::semicolonInADescriptionCutsIt()
{
    BD_T20Items bd = deviceTemplate(1);
    bd.getPoleByKey(1).Desc = "Свой: а;б;в";
    QVERIFY(bytesOf(bd).endsWith(";Свой: а;б;в\n"));
    QCOMPARE(readBack(bytesOf(bd)).items.value(1).Desc, "Свой: а");
    QCOMPARE(readBack(bytesOf(bd)).items.value(1).DescView, "С.: а");
}

void TestWritingRoundTrip::typeBelowZeroComesBackAsZero()
{
    // "00-1" is no number.
    BD_T20Items bd = deviceTemplate(1);
    bd.getPoleByKey(1).Type = -1;
    QVERIFY(bytesOf(bd).contains(";00-1;"));
    QCOMPARE(readBack(bytesOf(bd)).items.value(1).Type, 0);
}

void TestWritingRoundTrip::rowWithoutDashesComesBack()
{
    BD_T20Items bd;
    Item item;
    item.Type = 1234567;
    item.BL_MASK = 0xffffffff;
    for (const auto& [name, param] : recordtools::kParams)
        item.*param = -2147483647;
    item.Desc = item.DescView = "Текст";
    bd.AddPoleToBD(1234568, item);
    QCOMPARE(QString::fromUtf8(bytesOf(bd)).section(';', 12, 12), QString(""));
    QCOMPARE(differences(readBack(bytesOf(bd)).items, bd.items), QStringList());
}

void TestWritingRoundTrip::plainRowsComeBackAsPlainRecords()
{
    const BD_T20Items bd = deviceTemplate(160);
    QStringList rows;
    QCOMPARE(bd.SaveToList(rows), 0);
    QList<int> votes;
    bd.LoadFrom_AnalizeType(rows, votes);
    QCOMPARE(votes, (QList<int>{0, 0, 0, 160, 0}));
    BD_T20Items back;
    back.LoadFromListV01(rows, false);
    // What these rows have no place for comes from the key.
    QMap<int, Item> expected = bd.items;
    for (auto it = expected.begin(); it != expected.end(); ++it) {
        it->FA_NEED = recordtools::isMandatory(it.key());
        it->BL_MASK = 0xffff;
        it->Type = it.key();
    }
    QCOMPARE(differences(back.items, expected), QStringList());
}

QTEST_GUILESS_MAIN(TestWritingRoundTrip)
#include "tst_writing_roundtrip.moc"
