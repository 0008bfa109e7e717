#include "model/bd_t20items.h"
#include "records.h"

#include <QTest>

using namespace records;

/// The search for a field on a cell, in a store with holes: it looks no further than it has to.
class TestCellSearch : public QObject
{
    Q_OBJECT

private slots:
    void searchEndsAtItsMatch();
    void searchWithoutAMatchPassesEveryKey();
    void hiddenFieldOnTheCellIsNoMatch();
};

void TestCellSearch::searchEndsAtItsMatch()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(2, 4, 6));
    bd.AddPoleToBD(3, fieldAt(7, 7, 7));
    QVERIFY(bd.isCellBLXTaken(2, 4, 6));
    QCOMPARE(bd.items.keys(), (QList<int>{1, 3}));
}

void TestCellSearch::searchWithoutAMatchPassesEveryKey()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(2, 4, 6));
    bd.AddPoleToBD(3, fieldAt(7, 7, 7));
    QVERIFY(!bd.isCellBLXTaken(2, 4, 7));
    QCOMPARE(bd.items.keys(), (QList<int>{1, 2, 3}));
    QVERIFY(isBlank(bd.items.value(2)));
    QVERIFY(isSame(bd.items.value(1), fieldAt(2, 4, 6)));
    QVERIFY(isSame(bd.items.value(3), fieldAt(7, 7, 7)));
}

void TestCellSearch::hiddenFieldOnTheCellIsNoMatch()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(2, 4, 6, 0));
    bd.AddPoleToBD(3, fieldAt(2, 4, 6));
    // Two keys are walked, and the second is the hole.
    QVERIFY(!bd.isCellBLXTaken(2, 4, 6));
    QCOMPARE(bd.items.keys(), (QList<int>{1, 2, 3}));
    // Now the third is reached.
    QVERIFY(bd.isCellBLXTaken(2, 4, 6));
    QCOMPARE(bd.items.keys(), (QList<int>{1, 2, 3}));
}

QTEST_APPLESS_MAIN(TestCellSearch)

#include "tst_cell_search.moc"
