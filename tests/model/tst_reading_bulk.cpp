#include "recordtools.h"

#include <QRandomGenerator>
#include <QTest>

using recordtools::votesFor;

// Files that are far larger or far worse than any template. They end in time and leave a sound template.

namespace {

constexpr int kMillion = 1000000;
constexpr int kEightMegabytes = 8 * 1024 * 1024;

/// Reads `data` in every way over one template.
void readInEveryWay(BD_T20Items& bd, const QByteArray& data)
{
    const TemplateText text(data);
    bd.LoadFromListV01(text.lines(), true);
    bd.LoadFromListV02(text.lines());
    bd.LoadFromListV01(text.lines(), false);
    bd.LoadFromListV04(text.lines());
}

} // namespace

class TestReadingBulk : public QObject
{
    Q_OBJECT

private slots:
    void millionLinesOfEachFormat_data();
    void millionLinesOfEachFormat();
    void millionEmptyLines();
    void oneEndlessLine_data();
    void oneEndlessLine();
    void randomBytes();
};

void TestReadingBulk::millionLinesOfEachFormat_data()
{
    QTest::addColumn<int>("format");
    QTest::newRow("old, 20+[str]") << 1;
    QTest::newRow("new, 9*9") << 2;
    QTest::newRow("new, 19+str") << 3;
    QTest::newRow("new, 26+str") << 4;
}

void TestReadingBulk::millionLinesOfEachFormat()
{
    QFETCH(const int, format);
    QByteArray data;
    data.reserve(80 * kMillion);
    for (int i = 0; i < kMillion; ++i) {
        switch (format) {
        case 1:
            data += "0;0;0;0;0;0;1;0;10;0;0;0;0;0;0;0;0;1;1;32;\n";
            break;
        case 2:
            data += "20;" + QByteArray::number(i / 9 + 1) + ';' + QByteArray::number(i % 9 + 1) +
                    ";0;0;0;0;0;0a\n";
            break;
        case 3:
            data += "0;0;0;0;0;0;1;0;10;0;0;0;0;0;0;0;1;1;32;Text\n";
            break;
        default:
            data += "0;ffff;" + QByteArray::number(i % 1000) +
                    ";0;0;0;0;0;0;1;0;10;-;0;0;0;0;0;0;0;1;1;32;0;0;Text\n";
            break;
        }
    }
    QList<int> votes(5, 0);
    votes[format] = kMillion;
    QCOMPARE(votesFor(data), votes);

    const TemplateText text(data);
    QCOMPARE(text.lines().size(), kMillion + 1);
    BD_T20Items bd;
    int count = kMillion;
    if (format == 2) {
        bd.LoadFromListV02(text.lines());
        count = kMillion / 9;
    } else if (format == 4) {
        bd.LoadFromListV04(text.lines());
        count = 1000;
    } else {
        bd.LoadFromListV01(text.lines(), format == 1);
    }
    QCOMPARE(bd.items.size(), count);
    QCOMPARE(bd.items.firstKey(), 1);
    QCOMPARE(bd.items.lastKey(), count);
    QCOMPARE(bd.items.last().Size, 10);
    QCOMPARE(bd.items.last().Type, format == 4 ? 999 : count);
    QCOMPARE(bd.items.last().Desc, format > 2 ? QString("Text") : QString("unknow:%1").arg(count));
}

void TestReadingBulk::millionEmptyLines()
{
    const QByteArray data(kMillion, '\n');
    QCOMPARE(TemplateText(data).lines().size(), kMillion + 1);
    QCOMPARE(votesFor(data), QList<int>(5, 0));
    BD_T20Items bd;
    readInEveryWay(bd, data);
    QVERIFY(bd.items.isEmpty());
}

void TestReadingBulk::oneEndlessLine_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("count");
    QTest::newRow("semicolons") << QByteArray(kEightMegabytes, ';') << 0;
    QTest::newRow("commas") << QByteArray(kEightMegabytes, ',') << 0;
    QTest::newRow("semicolons behind a number") << '1' + QByteArray(kEightMegabytes, ';') << 1;
    QTest::newRow("commas behind a number") << '1' + QByteArray(kEightMegabytes, ',') << 1;
    QTest::newRow("digits") << QByteArray(kEightMegabytes, '1') << 0;
    QTest::newRow("blanks") << QByteArray(kEightMegabytes, ' ') << 0;
    QTest::newRow("comment") << QByteArray(kEightMegabytes, '#') << 0;
    QTest::newRow("carriage returns") << QByteArray(kEightMegabytes, '\r') << 0;
    QTest::newRow("bytes that no text has") << QByteArray(kEightMegabytes, '\xff') << 0;
    QTest::newRow("zero bytes") << QByteArray(kEightMegabytes, '\0') << 0;
}

void TestReadingBulk::oneEndlessLine()
{
    QFETCH(const QByteArray, data);
    QFETCH(const int, count);
    QCOMPARE(TemplateText(data).lines().size(), 1);
    QCOMPARE(votesFor(data), QList<int>(5, 0));
    BD_T20Items bd;
    readInEveryWay(bd, data);
    QCOMPARE(bd.items.size(), count);
}

void TestReadingBulk::randomBytes()
{
    QRandomGenerator random(100000);
    const QByteArray likely("0000111223456789abcdef;;;;;;;;;;;,,,,,-+# \r");
    const QList<int> counts{1, 9, 20, 21, 26, 27};
    QByteArray data;
    for (int i = 0; i < 100000; ++i) {
        const int kind = random.bounded(3);
        if (kind == 0) {
            // Any bytes, but for those that would end the line or the text.
            for (int left = random.bounded(80); left > 0; --left) {
                const int byte = random.bounded(1, 256);
                data += static_cast<char>(byte == '\n' ? ';' : byte);
            }
        } else if (kind == 1) {
            for (int left = random.bounded(80); left > 0; --left)
                data += likely.at(random.bounded(static_cast<int>(likely.size())));
        } else {
            // The shape of a format with random contents.
            for (int left = counts.at(random.bounded(static_cast<int>(counts.size()))); left > 0; --left)
                data += QByteArray::number(random.bounded(-2, 300)) + (left > 1 ? ";" : "");
        }
        data += '\n';
    }
    QCOMPARE(TemplateText(data).lines().size(), 100001);
    for (const int counter : {1, 2})
        QVERIFY(votesFor(data).at(counter) > 0);

    const TemplateText text(data);
    BD_T20Items ordinal;
    ordinal.LoadFromListV01(text.lines(), true);
    QVERIFY(ordinal.items.size() > 1000);
    QCOMPARE(ordinal.items.firstKey(), 1);
    QCOMPARE(ordinal.items.lastKey(), ordinal.items.size());
    for (auto it = ordinal.items.cbegin(); it != ordinal.items.cend(); ++it)
        QCOMPARE(it->Type, it.key());
    BD_T20Items numbered;
    numbered.LoadFromListV04(text.lines());
    QVERIFY(numbered.items.size() > 10);
    for (auto it = numbered.items.cbegin(); it != numbered.items.cend(); ++it)
        QCOMPARE(it->Type, it.key() - 1);

    BD_T20Items bd;
    readInEveryWay(bd, data);
    QStringList messages;
    QVERIFY(bd.CheckBDCorrect(10, messages, false) > 0);
    QStringList rows;
    QCOMPARE(bd.SaveToListWMask(rows), 0);
    QCOMPARE(rows.size(), bd.items.size());
}

QTEST_GUILESS_MAIN(TestReadingBulk)
#include "tst_reading_bulk.moc"
