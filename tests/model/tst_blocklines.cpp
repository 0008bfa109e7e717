#include "records.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <climits>
#include <cstdio>
#include <type_traits>

using namespace records;
using T_Line = BD_T20Items::T_Line;
using T_SHBlock = BD_T20Items::T_SHBlock;

namespace {

constexpr auto kRemoveHeldKey = "--remove-held-key";
constexpr auto kRemoveAbsentKey = "--remove-absent-key";

/// What the child process does: it says how far it came.
int removeKeyAndTell(int key)
{
    T_Line line;
    line.AddPole(5);
    std::puts("before");
    std::fflush(stdout);
    line.RemovePole(key);
    std::puts("after");
    std::fflush(stdout);
    return 0;
}

} // namespace

class TestBlockLines : public QObject
{
    Q_OBJECT

private slots:
    void newLineIsEmpty();
    void newBlockHasNoLines();
    void lineAndBlockAreCopiedByValue();
    void addPoleAppendsAndKeepsTheFirstIndex();
    void removePoleTakesTheFirstOccurrence();
    void removingAHeldKeyGoesOn();
    void removingAnAbsentKeyEndsTheProcess();
    void createLinesReplacesThem_data();
    void createLinesReplacesThem();
    void insertPoleAppendsToItsLine();
    void leftmostFieldOfALine_data();
    void leftmostFieldOfALine();
    void leftmostFieldOfAnEmptyLineIsReset();
    void paramsAreComputedForAllLines();
};

void TestBlockLines::newLineIsEmpty()
{
    const T_Line line;
    QVERIFY(line.poles.isEmpty());
    QCOMPARE(line.firstIdx, -1);
    static_assert(!std::is_polymorphic_v<T_Line>);
}

void TestBlockLines::newBlockHasNoLines()
{
    const T_SHBlock block;
    QVERIFY(block.lines.isEmpty());
    static_assert(!std::is_polymorphic_v<T_SHBlock>);
}

void TestBlockLines::lineAndBlockAreCopiedByValue()
{
    T_SHBlock block;
    block.CreateBDLines(2);
    block.InsertPole(1, 7);
    const T_SHBlock copy = block;
    const T_Line line = block.lines.at(1);
    block.InsertPole(1, 8);
    block.CreateBDLines(0);
    QCOMPARE(copy.lines.size(), 2);
    QCOMPARE(copy.lines.at(1).poles, QList<int>{7});
    QCOMPARE(line.poles, QList<int>{7});
}

void TestBlockLines::addPoleAppendsAndKeepsTheFirstIndex()
{
    T_Line line;
    line.AddPole(9);
    line.AddPole(2);
    line.AddPole(9);
    QCOMPARE(line.poles, (QList<int>{9, 2, 9}));
    QCOMPARE(line.firstIdx, -1);
    line.firstIdx = 2;
    line.AddPole(1);
    QCOMPARE(line.firstIdx, 2);
}

void TestBlockLines::removePoleTakesTheFirstOccurrence()
{
    T_Line line;
    line.poles = {3, 9, 2, 9};
    line.firstIdx = 3;
    line.RemovePole(9);
    QCOMPARE(line.poles, (QList<int>{3, 2, 9}));
    QCOMPARE(line.firstIdx, 3);
    line.RemovePole(9);
    line.RemovePole(3);
    line.RemovePole(2);
    QVERIFY(line.poles.isEmpty());
    QCOMPARE(line.firstIdx, 3);
}

void TestBlockLines::removingAHeldKeyGoesOn()
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {kRemoveHeldKey});
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 0);
    QCOMPARE(child.readAllStandardOutput().split('\n'), (QList<QByteArray>{"before", "after", ""}));
}

void TestBlockLines::removingAnAbsentKeyEndsTheProcess()
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {kRemoveAbsentKey});
    QVERIFY(child.waitForFinished());
    QVERIFY(child.exitStatus() == QProcess::CrashExit || child.exitCode() != 0);
    QCOMPARE(child.readAllStandardOutput().split('\n'), (QList<QByteArray>{"before", ""}));
}

void TestBlockLines::createLinesReplacesThem_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("lines");
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("one") << 1 << 1;
    QTest::newRow("as before") << 3 << 3;
    QTest::newRow("256") << 256 << 256;
    QTest::newRow("-1") << -1 << 0;
    QTest::newRow("lowest int") << INT_MIN << 0;
}

void TestBlockLines::createLinesReplacesThem()
{
    QFETCH(int, count);
    QFETCH(int, lines);
    T_SHBlock block;
    block.CreateBDLines(3);
    block.InsertPole(0, 5);
    block.lines[0].firstIdx = 0;
    block.CreateBDLines(count);
    QCOMPARE(block.lines.size(), lines);
    for (const auto& line : block.lines) {
        QVERIFY(line.poles.isEmpty());
        QCOMPARE(line.firstIdx, -1);
    }
}

void TestBlockLines::insertPoleAppendsToItsLine()
{
    T_SHBlock block;
    block.CreateBDLines(3);
    block.InsertPole(2, 8);
    block.InsertPole(2, 4);
    block.InsertPole(0, 1);
    QCOMPARE(block.lines.at(0).poles, QList<int>{1});
    QVERIFY(block.lines.at(1).poles.isEmpty());
    QCOMPARE(block.lines.at(2).poles, (QList<int>{8, 4}));
    QCOMPARE(block.lines.at(2).firstIdx, -1);
}

void TestBlockLines::leftmostFieldOfALine_data()
{
    QTest::addColumn<QList<int>>("positions");
    QTest::addColumn<int>("firstIdx");
    QTest::newRow("one field") << QList<int>{200} << 0;
    QTest::newRow("one field at the highest int") << QList<int>{INT_MAX} << 0;
    QTest::newRow("first is leftmost") << QList<int>{1, 5, 9} << 0;
    QTest::newRow("last is leftmost") << QList<int>{9, 5, 1} << 2;
    QTest::newRow("middle is leftmost") << QList<int>{9, 1, 5} << 1;
    QTest::newRow("equal positions") << QList<int>{4, 4} << 0;
    QTest::newRow("equal smallest positions") << QList<int>{9, 4, 4, 4} << 1;
    QTest::newRow("later smaller takes over") << QList<int>{9, 4, 7, 3} << 3;
    QTest::newRow("negative") << QList<int>{0, -1} << 1;
    QTest::newRow("extreme ints") << QList<int>{INT_MAX, INT_MIN, 0} << 1;
}

void TestBlockLines::leftmostFieldOfALine()
{
    QFETCH(QList<int>, positions);
    QFETCH(int, firstIdx);
    BD_T20Items bd;
    T_Line line;
    for (int i = 0; i < positions.size(); ++i) {
        bd.AddPoleToBD(i + 1, fieldAt(0, 1, positions.at(i)));
        line.AddPole(i + 1);
    }
    line.firstIdx = 77;
    line.FindIdxOfFirstPole(&bd);
    QCOMPARE(line.firstIdx, firstIdx);
}

void TestBlockLines::leftmostFieldOfAnEmptyLineIsReset()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(0, 1, 0));
    T_Line line;
    line.firstIdx = 0;
    line.FindIdxOfFirstPole(&bd);
    QCOMPARE(line.firstIdx, -1);
}

void TestBlockLines::paramsAreComputedForAllLines()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(0, 1, 9));
    bd.AddPoleToBD(2, fieldAt(0, 1, 3));
    T_SHBlock block;
    block.CreateBDLines(3);
    block.lines[0].firstIdx = 5;
    block.InsertPole(1, 1);
    block.InsertPole(1, 2);
    block.InsertPole(2, 1);
    block.ComputeParamsForAllLines(&bd);
    QCOMPARE(block.lines.at(0).firstIdx, -1);
    QCOMPARE(block.lines.at(1).firstIdx, 1);
    QCOMPARE(block.lines.at(2).firstIdx, 0);
}

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (app.arguments().contains(QLatin1String(kRemoveHeldKey)))
        return removeKeyAndTell(5);
    if (app.arguments().contains(QLatin1String(kRemoveAbsentKey)))
        return removeKeyAndTell(6);
    TestBlockLines test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_blocklines.moc"
