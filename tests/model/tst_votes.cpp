#include "model/bd_t20items.h"

#include <QRandomGenerator>
#include <QTest>

using Votes = QList<int>;

namespace {

constexpr int kOld = 1;   // "old, 20+[str]"
constexpr int kDump = 2;  // "new, 9*9"
constexpr int kPlain = 3; // "new, 19+str"
constexpr int kMask = 4;  // "new, 26+str"

Votes votesFor(const QStringList& lines)
{
    static const BD_T20Items bd;
    Votes votes;
    bd.LoadFrom_AnalizeType(lines, votes);
    return votes;
}

/// Five counters of which `counter` is 1; all are 0 for counter 0.
Votes oneVote(int counter)
{
    Votes votes(5, 0);
    if (counter > 0)
        votes[counter] = 1;
    return votes;
}

/// Columns that look like no format, with `texts` put in at their places.
QString line(int count, const QMap<int, QString>& texts = {}, QChar separator = ';')
{
    QStringList columns(count, QString("x"));
    for (auto it = texts.cbegin(); it != texts.cend(); ++it)
        columns[it.key()] = it.value();
    return columns.join(separator);
}

QString maskLine(const QMap<int, QString>& texts = {}, int count = 26, QChar separator = ';')
{
    QMap<int, QString> all{{0, "1"}, {1, "ffff"}, {2, "011"}, {25, "Текст"}};
    all.insert(texts);
    return line(count, all, separator);
}

/// The rules once more, in the plainest words, over a plain split.
int counterOf(const QString& text)
{
    auto columns = text.split(';');
    if (columns.size() < 2)
        columns = text.split(',');
    const auto length = [&columns](int column) { return columns.at(column).size(); };
    const bool isCode = columns.size() > 19 && length(19) > 0 && length(19) < 4;
    switch (columns.size()) {
    case 21:
        return isCode && (length(20) == 0 || length(20) > 3) ? kOld : 0;
    case 9:
        return kDump;
    case 20:
        return length(19) > 3 ? kPlain : (isCode ? kOld : 0);
    default:
        break;
    }
    const bool isMask = columns.size() > 25 && (columns.at(0) == "0" || columns.at(0) == "1") &&
                        length(1) == 4 && length(2) > 0 && length(2) < 4 && length(25) > 3;
    return isMask ? kMask : 0;
}

} // namespace

class TestVotes : public QObject
{
    Q_OBJECT

private slots:
    void noLinesGiveOneAndFiveZeros();
    void anyLineGivesZero();
    void oldCountersAreThrownAway();
    void oneLineVotes_data();
    void oneLineVotes();
    void lineOfFewColumnsIsPassedOver_data();
    void lineOfFewColumnsIsPassedOver();
    void columnCountDecides_data();
    void columnCountDecides();
    void commasVoteLikeSemicolons_data();
    void commasVoteLikeSemicolons();
    void oneSemicolonKeepsCommasFromBeingTried();
    void everyLineWithALongDescriptionVotesForTheOldest();
    void linesWithAnEmptyTwentiethColumnAreNotRecognised();
    void commentOfNineColumnsVotes();
    void commentsOfTwentyColumnsVoteAndOfTwentySixDoNot();
    void shortLinesVoteToo();
    void carriageReturnCountsAsACharacter();
    void countersAddUp();
    void equalCountersStayEqual();
    void randomShapesVoteByTheRules();
};

void TestVotes::noLinesGiveOneAndFiveZeros()
{
    Votes votes{9, 9};
    QCOMPARE(BD_T20Items().LoadFrom_AnalizeType({}, votes), 1);
    QCOMPARE(votes, Votes(5, 0));
}

void TestVotes::anyLineGivesZero()
{
    Votes votes;
    const BD_T20Items bd; // voting leaves it alone
    QCOMPARE(bd.LoadFrom_AnalizeType({""}, votes), 0);
    QCOMPARE(votes, Votes(5, 0));
    QCOMPARE(bd.LoadFrom_AnalizeType({line(9)}, votes), 0);
    QCOMPARE(votes, oneVote(kDump));
}

void TestVotes::oldCountersAreThrownAway()
{
    Votes votes{1, 2, 3, 4, 5, 6, 7};
    BD_T20Items().LoadFrom_AnalizeType({line(9)}, votes);
    QCOMPARE(votes, oneVote(kDump));
}

void TestVotes::oneLineVotes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("counter");
    const auto row = [](const char* name, const QString& text, int counter) {
        QTest::newRow(name) << text << counter;
    };
    const QString none = QString("");

    row("20: empty column 19", line(20, {{19, none}}), 0);
    row("20: code of 1", line(20, {{19, "7"}}), kOld);
    row("20: code of 3", line(20, {{19, "255"}}), kOld);
    row("20: text of 3", line(20, {{19, "абв"}}), kOld);
    row("20: text of 4", line(20, {{19, "абвг"}}), kPlain);
    row("20: number of 4", line(20, {{19, "1234"}}), kPlain);
    row("20: blank", line(20, {{19, " "}}), kOld);
    row("20: all other columns empty", QString(19, ';') + "32", kOld);

    row("21: code of 1, no description", line(21, {{19, "7"}, {20, none}}), kOld);
    row("21: code of 3, no description", line(21, {{19, "255"}, {20, none}}), kOld);
    row("21: code and description of 4", line(21, {{19, "32"}, {20, "абвг"}}), kOld);
    row("21: code and description of 3", line(21, {{19, "32"}, {20, "абв"}}), 0);
    row("21: code and description of 1", line(21, {{19, "32"}, {20, "а"}}), 0);
    row("21: no code, description of 4", line(21, {{19, none}, {20, "абвг"}}), 0);
    row("21: column 19 of 4, description of 4", line(21, {{19, "1234"}, {20, "абвг"}}), 0);
    row("21: column 19 of 4, no description", line(21, {{19, "1234"}, {20, none}}), 0);
    row("21: no code, no description", line(21, {{19, none}, {20, none}}), 0);

    row("9: any contents", line(9), kDump);
    row("9: empty contents", QString(8, ';'), kDump);

    row("26: mandatory", maskLine(), kMask);
    row("26: not mandatory", maskLine({{0, "0"}}), kMask);
    row("26: column 0 is 2", maskLine({{0, "2"}}), 0);
    row("26: column 0 is 01", maskLine({{0, "01"}}), 0);
    row("26: column 0 is 00", maskLine({{0, "00"}}), 0);
    row("26: column 0 with a blank", maskLine({{0, " 1"}}), 0);
    row("26: column 0 with a sign", maskLine({{0, "+1"}}), 0);
    row("26: column 0 empty", maskLine({{0, none}}), 0);
    row("26: mask of 3", maskLine({{1, "fff"}}), 0);
    row("26: mask of 5", maskLine({{1, "0ffff"}}), 0);
    row("26: mask wider than 16 bits", maskLine({{1, "1ffff"}}), 0);
    row("26: mask that is no number", maskLine({{1, "zzzz"}}), kMask);
    row("26: no mask", maskLine({{1, none}}), 0);
    row("26: type of 1", maskLine({{2, "0"}}), kMask);
    row("26: type of 3", maskLine({{2, "159"}}), kMask);
    row("26: type of 4", maskLine({{2, "1000"}}), 0);
    row("26: type -1 as written", maskLine({{2, "00-1"}}), 0);
    row("26: type that is no number", maskLine({{2, "abc"}}), kMask);
    row("26: no type", maskLine({{2, none}}), 0);
    row("26: description of 3", maskLine({{25, "абв"}}), 0);
    row("26: description of 4", maskLine({{25, "абвг"}}), kMask);
    row("26: no description", maskLine({{25, none}}), 0);
    row("26: other columns empty", "0;ffff;1;" + QString(22, ';') + "Текст", kMask);
}

void TestVotes::oneLineVotes()
{
    QFETCH(const QString, text);
    QFETCH(const int, counter);
    QCOMPARE(votesFor({text}), oneVote(counter));
}

void TestVotes::lineOfFewColumnsIsPassedOver_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("blank") << " ";
    QTest::newRow("carriage return") << "\r";
    QTest::newRow("no separator") << QString(100, 'a');
    QTest::newRow("tabs") << QString(8, '\t');
    QTest::newRow("separator alone") << ";";
    QTest::newRow("comma alone") << ",";
}

void TestVotes::lineOfFewColumnsIsPassedOver()
{
    QFETCH(const QString, text);
    QCOMPARE(votesFor({text}), Votes(5, 0));
    QCOMPARE(votesFor({text, line(9), text}), oneVote(kDump));
}

void TestVotes::columnCountDecides_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("counter");
    for (int count = 2; count <= 40; ++count) {
        const int counter = count == 9 ? kDump : count == 20 ? kPlain : count >= 26 ? kMask : 0;
        QTest::addRow("%d columns", count) << count << counter;
    }
    QTest::newRow("1000 columns") << 1000 << kMask;
}

/// Contents that satisfy the rules of all formats but the oldest, so that the count alone decides.
void TestVotes::columnCountDecides()
{
    QFETCH(const int, count);
    QFETCH(const int, counter);
    QMap<int, QString> texts;
    for (const auto& [column, text] :
         {std::pair{0, "1"}, {1, "ffff"}, {2, "011"}, {19, "Описание"}, {20, "Описание"}, {25, "Описание"}}) {
        if (column < count)
            texts.insert(column, text);
    }
    QCOMPARE(votesFor({line(count, texts)}), oneVote(counter));
}

void TestVotes::commasVoteLikeSemicolons_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("counter");
    QTest::newRow("old with a description") << line(21, {{20, "Описание"}}, ',') << kOld;
    QTest::newRow("old") << line(20, {}, ',') << kOld;
    QTest::newRow("dump") << line(9, {}, ',') << kDump;
    QTest::newRow("plain") << line(20, {{19, "Описание"}}, ',') << kPlain;
    QTest::newRow("mask") << maskLine({}, 26, ',') << kMask;
    QTest::newRow("mask and more") << maskLine({}, 30, ',') << kMask;
    QTest::newRow("eight columns") << line(8, {}, ',') << 0;
}

void TestVotes::commasVoteLikeSemicolons()
{
    QFETCH(const QString, text);
    QFETCH(const int, counter);
    QCOMPARE(votesFor({text}), oneVote(counter));
}

void TestVotes::oneSemicolonKeepsCommasFromBeingTried()
{
    QCOMPARE(votesFor({line(9, {{8, "a;b"}}, ',')}), Votes(5, 0));
    QCOMPARE(votesFor({line(20, {{19, "Описание; продолжение"}}, ',')}), Votes(5, 0));
    QCOMPARE(votesFor({line(9, {{3, "a,b"}}, ';')}), oneVote(kDump));
}

void TestVotes::everyLineWithALongDescriptionVotesForTheOldest()
{
    const QStringList lines{line(21, {{19, "7"}, {20, "Поле"}}),
                            line(21, {{19, "32"}, {20, "Налог: ставка"}}),
                            line(21, {{19, "255"}, {20, "ИТОГ: сумма"}})};
    QCOMPARE(votesFor(lines), (Votes{0, 3, 0, 0, 0}));
    QCOMPARE(votesFor(lines + QStringList{line(21, {{19, "2550"}, {20, "ИТОГ: сумма"}}),
                                          line(21, {{19, QString("")}, {20, "ИТОГ: сумма"}})}),
             (Votes{0, 3, 0, 0, 0}));
}

void TestVotes::linesWithAnEmptyTwentiethColumnAreNotRecognised()
{
    QCOMPARE(votesFor(QStringList(160, line(20, {{19, QString("")}}))), Votes(5, 0));
}

void TestVotes::commentOfNineColumnsVotes()
{
    const QStringList lines{"#20;1;1;0;0;0;0;0;41", "#;;;;;;;;"};
    QCOMPARE(votesFor(lines), (Votes{0, 0, 2, 0, 0}));
    BD_T20Items bd;
    bd.LoadFromListV02(lines);
    bd.LoadFromListV01(lines, true);
    bd.LoadFromListV01(lines, false);
    bd.LoadFromListV04(lines);
    QVERIFY(bd.items.isEmpty());
}

void TestVotes::commentsOfTwentyColumnsVoteAndOfTwentySixDoNot()
{
    QCOMPARE(votesFor({line(20, {{0, "#"}})}), oneVote(kOld));
    QCOMPARE(votesFor({line(20, {{0, "#"}, {19, "Описание"}})}), oneVote(kPlain));
    QCOMPARE(votesFor({maskLine({{0, "#1"}})}), oneVote(0));
}

void TestVotes::shortLinesVoteToo()
{
    QCOMPARE(votesFor({QString(19, ';') + "1"}), oneVote(kOld));
    QCOMPARE(votesFor({"0;ffff;1" + QString(23, ';') + "Поле"}), oneVote(kMask));
}

void TestVotes::carriageReturnCountsAsACharacter()
{
    QCOMPARE(votesFor({line(20, {{19, "\r"}})}), oneVote(kOld));
    QCOMPARE(votesFor({line(20, {{19, "32\r"}})}), oneVote(kOld));
    QCOMPARE(votesFor({line(20, {{19, "255\r"}})}), oneVote(kPlain));
    QCOMPARE(votesFor({line(20, {{19, "абв\r"}})}), oneVote(kPlain));
    QCOMPARE(votesFor({line(21, {{19, "32"}, {20, "\r"}})}), oneVote(0));
    QCOMPARE(votesFor({line(21, {{19, "32"}, {20, "абв\r"}})}), oneVote(kOld));
    QCOMPARE(votesFor({line(9, {{8, "41\r"}})}), oneVote(kDump));
    QCOMPARE(votesFor({maskLine({{25, "абв\r"}})}), oneVote(kMask));
}

void TestVotes::countersAddUp()
{
    QStringList lines;
    lines += QStringList(4, line(21, {{20, "Описание"}}));
    lines += QStringList(1, line(20));
    lines += QStringList(2, line(9));
    lines += QStringList(7, line(20, {{19, "Описание"}}));
    lines += QStringList(3, maskLine());
    lines += QStringList(50, line(22));
    QCOMPARE(votesFor(lines), (Votes{0, 5, 2, 7, 3}));
}

void TestVotes::equalCountersStayEqual()
{
    // Who wins is for the caller to say, who prefers the older format: it must see the tie.
    const QStringList lines{maskLine(), line(20, {{19, "Описание"}}), line(9), line(20),
                            maskLine(), line(20, {{19, "Описание"}}), line(9), line(20)};
    QCOMPARE(votesFor(lines), (Votes{0, 2, 2, 2, 2}));
}

void TestVotes::randomShapesVoteByTheRules()
{
    QRandomGenerator random(9);
    const QStringList texts{"",     "0",    "1",        "2",   "12", "123", "1234",
                            "ffff", "Поле", "Описание", "a,b", "#",  "\r"};
    const QList<int> counts{1, 2, 8, 9, 10, 19, 20, 21, 22, 25, 26, 27, 28, 60};
    const auto pick = [&random](const auto& list) {
        return list.at(random.bounded(static_cast<int>(list.size())));
    };
    QStringList lines;
    Votes expected(5, 0);
    for (int i = 0; i < 20000; ++i) {
        QStringList columns;
        for (int left = pick(counts); left > 0; --left)
            columns.append(pick(texts));
        if (columns.size() > 25 && random.bounded(2) == 0) {
            columns[0] = pick(QStringList{"0", "1"});
            columns[1] = "ffff";
        }
        const QString text = columns.join(pick(QStringList{";", ";", ";", ","}));
        lines.append(text);
        if (const int counter = counterOf(text); counter > 0)
            ++expected[counter];
        QCOMPARE(votesFor({text}), oneVote(counterOf(text)));
    }
    for (int counter = kOld; counter <= kMask; ++counter)
        QVERIFY(expected.at(counter) > 50);
    QCOMPARE(votesFor(lines), expected);
}

QTEST_GUILESS_MAIN(TestVotes)
#include "tst_votes.moc"
