#include "records.h"

#include <QTest>

#include <climits>

using namespace records;

namespace {

/// Keys 1 to 11 without key 1: ten fields on the lines 2 to 11 of block 1.
BD_T20Items storeWithoutItsFirstKey()
{
    BD_T20Items bd;
    for (int key = 2; key <= 11; ++key)
        bd.AddPoleToBD(key, fieldAt(1, key, 0));
    return bd;
}

} // namespace

class TestStoreLoops : public QObject
{
    Q_OBJECT

private slots:
    void addPoleStoresACopyOfEveryMember();
    void addPoleReplacesTheRecordThatWasThere();
    void needIsTakenFromTheRecord();
    void visibleMeansASizeAboveZero_data();
    void visibleMeansASizeAboveZero();
    void everyCellOfAnEmptyStoreIsTaken_data();
    void everyCellOfAnEmptyStoreIsTaken();
    void cellIsTakenWhereAFieldStarts_data();
    void cellIsTakenWhereAFieldStarts();
    void cellOfAHiddenFieldIsFree();
    void loopsInsertMissingKeysBlank_data();
    void loopsInsertMissingKeysBlank();
    void loopsVisitKeysUpToTheSizeOnly();
    void holeMakesTheStoreGrowDuringALaterPassOnly();
    void recomputeFillsHolesInBothItsPasses();
    void recomputeWithAHoleSettlesWithTheNextOne();
    void extremeValuesEndNothing_data();
    void extremeValuesEndNothing();
    void extremeArgumentsEndNothing();
};

void TestStoreLoops::addPoleStoresACopyOfEveryMember()
{
    BD_T20Items bd;
    T20Item item = distinctRecord();
    bd.AddPoleToBD(7, item);
    item.ClearToUndef();
    QCOMPARE(bd.items.keys(), QList<int>{7});
    QVERIFY(isSame(bd.items.value(7), distinctRecord()));
    QVERIFY(bd.blocks.isEmpty());
}

void TestStoreLoops::addPoleReplacesTheRecordThatWasThere()
{
    BD_T20Items bd;
    for (int key = 1; key <= 3; ++key)
        bd.AddPoleToBD(key, fieldAt(key, key, key));
    bd.AddPoleToBD(2, distinctRecord());
    QCOMPARE(bd.items.size(), 3);
    QVERIFY(isSame(bd.items.value(1), fieldAt(1, 1, 1)));
    QVERIFY(isSame(bd.items.value(2), distinctRecord()));
    QVERIFY(isSame(bd.items.value(3), fieldAt(3, 3, 3)));
}

void TestStoreLoops::needIsTakenFromTheRecord()
{
    BD_T20Items bd;
    bd.getPoleByKey(1).FA_NEED = true;
    bd.getPoleByKey(12).FA_NEED = false;
    QVERIFY(bd.isItemNEED(1));
    QVERIFY(!bd.isItemNEED(12));
    QCOMPARE(bd.items.size(), 2);
    QVERIFY(!bd.isItemNEED(16));
    QCOMPARE(bd.items.keys(), (QList<int>{1, 12, 16}));
    QVERIFY(isBlank(bd.items.value(16)));
}

void TestStoreLoops::visibleMeansASizeAboveZero_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("isVisible");
    QTest::newRow("0") << 0 << false;
    QTest::newRow("1") << 1 << true;
    QTest::newRow("255") << 255 << true;
    QTest::newRow("256") << 256 << true;
    QTest::newRow("-1") << -1 << false;
    QTest::newRow("lowest int") << INT_MIN << false;
    QTest::newRow("highest int") << INT_MAX << true;
}

void TestStoreLoops::visibleMeansASizeAboveZero()
{
    QFETCH(int, size);
    QFETCH(bool, isVisible);
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(0, 1, 0, size));
    QCOMPARE(bd.isItemVisibled(1), isVisible);
    QCOMPARE(bd.items.size(), 1);
    QVERIFY(!bd.isItemVisibled(5));
    QVERIFY(isBlank(bd.items.value(5)));
    QCOMPARE(bd.items.keys(), (QList<int>{1, 5}));
}

void TestStoreLoops::everyCellOfAnEmptyStoreIsTaken_data()
{
    QTest::addColumn<int>("value");
    for (const int value : {0, 1, 255, -1, INT_MIN, INT_MAX})
        QTest::addRow("%d", value) << value;
}

void TestStoreLoops::everyCellOfAnEmptyStoreIsTaken()
{
    QFETCH(int, value);
    BD_T20Items bd;
    QVERIFY(bd.isCellBLXTaken(value, value, value));
    QVERIFY(bd.items.isEmpty());
}

void TestStoreLoops::cellIsTakenWhereAFieldStarts_data()
{
    QTest::addColumn<int>("block");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("x");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("start cell") << 2 << 4 << 6 << true;
    QTest::newRow("inside the width") << 2 << 4 << 7 << false;
    QTest::newRow("last cell of the width") << 2 << 4 << 15 << false;
    QTest::newRow("cell before") << 2 << 4 << 5 << false;
    QTest::newRow("other line") << 2 << 5 << 6 << false;
    QTest::newRow("other block") << 3 << 4 << 6 << false;
    QTest::newRow("last field") << 9 << 1 << 0 << true;
    QTest::newRow("numbers in another order") << 4 << 2 << 6 << false;
}

void TestStoreLoops::cellIsTakenWhereAFieldStarts()
{
    QFETCH(int, block);
    QFETCH(int, line);
    QFETCH(int, x);
    QFETCH(bool, isTaken);
    BD_T20Items bd = computedStoreOf({fieldAt(2, 4, 6, 10), fieldAt(7, 7, 7), fieldAt(9, 1, 0, 1)});
    QCOMPARE(bd.isCellBLXTaken(block, line, x), isTaken);
    bd.blocks.clear();
    QCOMPARE(bd.isCellBLXTaken(block, line, x), isTaken);
}

void TestStoreLoops::cellOfAHiddenFieldIsFree()
{
    BD_T20Items bd = computedStoreOf({fieldAt(2, 4, 6, 0)});
    QVERIFY(!bd.isCellBLXTaken(2, 4, 6));
    bd.getPoleByKey(1).Size = 1;
    QVERIFY(bd.isCellBLXTaken(2, 4, 6));
}

void TestStoreLoops::loopsInsertMissingKeysBlank_data()
{
    using Loop = void (*)(BD_T20Items&);
    QTest::addColumn<Loop>("loop");
    const auto add = [](const char* name, Loop loop) { QTest::newRow(name) << loop; };
    add("ReComputeBDBlocks", [](BD_T20Items& bd) { bd.ReComputeBDBlocks(); });
    add("ComputeMaxRowInAllBlocks", [](BD_T20Items& bd) { bd.ComputeMaxRowInAllBlocks(10); });
    add("isCellBLXTaken", [](BD_T20Items& bd) { bd.isCellBLXTaken(7, 7, 7); });
    add("AddLineInBlock", [](BD_T20Items& bd) { bd.AddLineInBlock(1, 1); });
    add("DelLineInBlock", [](BD_T20Items& bd) { bd.DelLineInBlock(1, 1); });
}

void TestStoreLoops::loopsInsertMissingKeysBlank()
{
    using Loop = void (*)(BD_T20Items&);
    QFETCH(Loop, loop);
    BD_T20Items bd = computedStoreOf({fieldAt(1, 3, 0), fieldAt(1, 1, 0), fieldAt(1, 2, 0)});
    bd.items.remove(1);
    bd.items.remove(2);
    bd.AddPoleToBD(4, distinctRecord());
    bd.AddPoleToBD(5, distinctRecord());
    loop(bd);
    QVERIFY(bd.items.contains(1));
    QVERIFY(bd.items.contains(2));
    QVERIFY(isBlank(bd.items.value(1)));
    QVERIFY(isBlank(bd.items.value(2)));
    QCOMPARE(bd.items.keys(), (QList<int>{1, 2, 3, 4, 5}));
    QVERIFY(isSame(bd.items.value(5), distinctRecord()));
}

void TestStoreLoops::loopsVisitKeysUpToTheSizeOnly()
{
    BD_T20Items bd = storeWithoutItsFirstKey();
    QCOMPARE(bd.ComputeMaxRowInAllBlocks(2), (QList<int>{0, 10}));

    bd = storeWithoutItsFirstKey();
    QVERIFY(!bd.isCellBLXTaken(1, 11, 0));

    bd = storeWithoutItsFirstKey();
    bd.blocks.resize(10);
    bd.blocks[1].CreateBDLines(12);
    BD_T20Items other = bd;
    bd.AddLineInBlock(1, 1);
    QCOMPARE(linesOf(bd), (QList<int>{0, 3, 4, 5, 6, 7, 8, 9, 10, 11, 11}));
    other.DelLineInBlock(1, 1);
    QCOMPARE(linesOf(other), (QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 11}));

    BD_T20Items below;
    below.AddPoleToBD(-3, fieldAt(1, 5, 0));
    below.AddPoleToBD(0, fieldAt(1, 6, 0));
    QCOMPARE(below.ComputeMaxRowInAllBlocks(2), (QList<int>{0, 0}));
    QCOMPARE(below.items.keys(), (QList<int>{-3, 0, 1, 2}));
    below.AddPoleToBD(1, fieldAt(1, 7, 0));
    QCOMPARE(below.ComputeMaxRowInAllBlocks(2), (QList<int>{0, 7}));
    QVERIFY(isSame(below.items.value(1), fieldAt(1, 7, 0)));
    QVERIFY(isSame(below.items.value(0), fieldAt(1, 6, 0)));
}

void TestStoreLoops::holeMakesTheStoreGrowDuringALaterPassOnly()
{
    BD_T20Items bd;
    bd.AddPoleToBD(2, fieldAt(1, 2, 0));
    bd.AddPoleToBD(6, fieldAt(1, 6, 0));
    QVERIFY(!bd.isCellBLXTaken(1, 6, 0));
    QCOMPARE(bd.items.keys(), (QList<int>{1, 2, 6}));
    QVERIFY(!bd.isCellBLXTaken(1, 6, 0));
    QCOMPARE(bd.items.keys(), (QList<int>{1, 2, 3, 6}));
    QVERIFY(!bd.isCellBLXTaken(1, 6, 0));
    QCOMPARE(bd.items.keys(), (QList<int>{1, 2, 3, 4, 6}));
    QVERIFY(!bd.isCellBLXTaken(1, 6, 0));
    QCOMPARE(bd.items.keys(), (QList<int>{1, 2, 3, 4, 5, 6}));
    QVERIFY(bd.isCellBLXTaken(1, 6, 0));
    QCOMPARE(bd.items.size(), 6);
}

void TestStoreLoops::recomputeFillsHolesInBothItsPasses()
{
    // The pass that finds the highest lines and the pass that lists the keys have a bound each.
    BD_T20Items bd;
    bd.AddPoleToBD(2, fieldAt(1, 2, 0));
    bd.AddPoleToBD(6, fieldAt(1, 2, 5));
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.items.keys(), (QList<int>{1, 2, 3, 6}));

    bd.Clear();
    for (int key = 2; key <= 11; ++key)
        bd.AddPoleToBD(key, fieldAt(1, 1, key));
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.getLineKolPoley(1, 1), 10);
    QVERIFY(bd.blocks.at(1).lines.at(1).poles.contains(11));
}

void TestStoreLoops::recomputeWithAHoleSettlesWithTheNextOne()
{
    BD_T20Items bd = storeWithoutItsFirstKey();
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.blocks.at(1).lines.size(), 11);
    QCOMPARE(bd.items.size(), 11);
    bd.ReComputeBDBlocks();
    QCOMPARE(bd.blocks.at(1).lines.size(), 12);
    QCOMPARE(bd.blocks.at(1).lines.last().poles, QList<int>{11});
}

void TestStoreLoops::extremeValuesEndNothing_data()
{
    QTest::addColumn<Param>("param");
    QTest::addColumn<int>("value");
    for (const auto& [name, param] : kParams) {
        QTest::addRow("%s lowest int", name) << param << INT_MIN;
        QTest::addRow("%s highest int", name) << param << INT_MAX;
        QTest::addRow("%s -1", name) << param << -1;
    }
    QTest::addRow("Type lowest int") << Param(&T20Item::Type) << INT_MIN;
    QTest::addRow("Type highest int") << Param(&T20Item::Type) << INT_MAX;
}

void TestStoreLoops::extremeValuesEndNothing()
{
    QFETCH(Param, param);
    QFETCH(int, value);
    T20Item item = fieldAt(1, 2, 3);
    item.BL_MASK = 0xffffffff;
    item.*param = value;
    BD_T20Items bd = computedStoreOf({item, fieldAt(1, 2, 9), item});
    QCOMPARE(bd.blocks.size(), 10);
    for (int line = 0; line < bd.blocks.at(1).lines.size(); ++line) {
        if (bd.isLineHavePoles(1, line)) {
            bd.getLineFont(1, line);
            bd.getLineX2X(1, line);
            bd.getLineX2Y(1, line);
        }
    }
    QVERIFY(bd.isCellBLXTaken(item.Block, item.Line, item.X) == (item.Size > 0));
    bd.AddLineInBlock(1, 0);
    QCOMPARE(bd.items.value(2).Line, 3);
    bd.DelLineInBlock(1, 0);
    QCOMPARE(bd.items.value(2).Line, 2);
    if (param != &T20Item::Line)
        QVERIFY(isSame(bd.items.value(1), item));
    QVERIFY(isSame(bd.items.value(1), bd.items.value(3)));
    QStringList messages;
    const bool isChecked = param != &T20Item::Type;
    QCOMPARE(bd.CheckBDCorrect(10, messages, false), isChecked ? 2 : 0);
    bd.CheckBDCorrect(10, messages, true);
    QCOMPARE(messages.size(), isChecked ? 2 : 0);
}

void TestStoreLoops::extremeArgumentsEndNothing()
{
    const BD_T20Items untouched = computedStoreOf({fieldAt(1, 2, 3), fieldAt(1, 4, 3)});
    for (const int block : {INT_MIN, -1, 10, INT_MAX}) {
        for (const int line : {INT_MIN, -1, 0, 1, INT_MAX}) {
            BD_T20Items bd = untouched;
            QVERIFY(!bd.isCellBLXTaken(block, line, INT_MAX));
            QVERIFY(!bd.isCellBLXTaken(block, line, INT_MIN));
            bd.AddLineInBlock(block, line);
            bd.DelLineInBlock(block, line);
            QVERIFY(isSame(bd.items, untouched.items));
        }
    }
    BD_T20Items bd = untouched;
    QVERIFY(bd.ComputeMaxRowInAllBlocks(INT_MIN).isEmpty());
    QVERIFY(!bd.isItemVisibled(INT_MIN));
    QVERIFY(!bd.isItemNEED(INT_MAX));
}

QTEST_GUILESS_MAIN(TestStoreLoops)
#include "tst_storeloops.moc"
