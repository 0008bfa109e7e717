#include "editing/editingsession.h"
#include "editing/tablerows.h"
#include "support/tablesteps.h"

#include <QAbstractButton>
#include <QGraphicsItem>
#include <QGraphicsProxyWidget>
#include <QTest>

namespace {

/// How many lines each block of the tape has.
QList<int> lineCounts(const EditingSession& session)
{
    QList<int> counts;
    for (int block = 0; block < 10; ++block)
        counts.append(session.probe.maket().getBlockKolLines(block));
    return counts;
}

} // namespace

/// Elements that are not what a command is for, and not where the tape has put them.
class tst_OddElements : public QObject
{
    Q_OBJECT

private slots:
    void hiddenLineButtonDoesNothing_data();
    void hiddenLineButtonDoesNothing();
    void positionPutsAMovedFieldBack_data();
    void positionPutsAMovedFieldBack();
};

void tst_OddElements::hiddenLineButtonDoesNothing_data()
{
    QTest::addColumn<bool>("isHeading");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line");
    QTest::newRow("minus at a heading") << true << "-"
                                        << "Del selected line?";
    QTest::newRow("plus at a field") << false << "+"
                                     << "Add selected line?";
    QTest::newRow("minus at a field") << false << "-"
                                      << "Del selected line?";
}

void tst_OddElements::hiddenLineButtonDoesNothing()
{
    QFETCH(const bool, isHeading);
    QFETCH(const QString, text);
    QFETCH(const QString, line);
    EditingSession session(workFields());
    QGraphicsItem* const item = isHeading ? headerItem(session.window, 1) : poleItem(session.window, 4);
    pickItem(session.window, item);
    session.settle();
    QGraphicsProxyWidget* const proxy = session.lineButton(text);
    QVERIFY(!proxy->isVisible());
    const auto before = session.records();
    const auto lines = lineCounts(session);
    const auto logged = session.probe.log().size();

    qobject_cast<QAbstractButton*>(proxy->widget())->click();

    QCOMPARE(logSince(session.window, logged), QStringList{line});
    QVERIFY(!session.probe.redrawPending());
    QCOMPARE(session.changesSince(before), QStringList());
    QCOMPARE(lineCounts(session), lines);
    QCOMPARE(session.robot.takeTexts(), QStringList());
    QCOMPARE(session.probe.curItem(), item);
}

void tst_OddElements::positionPutsAMovedFieldBack_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QPointF>("place");
    // Cells are 12 wide. Two lines of 20 and a heading of 21 stand above block 1; each block begins with a heading.
    QTest::newRow("first line of a block") << 4 << QPointF(33 * 12 + 1, 61 + 21 + 1);
    // In block 1: a line of 20, and two empty ones of 15.
    QTest::newRow("fourth line") << 7 << QPointF(33 * 12 + 1, 61 + 21 + 20 + 15 + 15 + 1);
}

void tst_OddElements::positionPutsAMovedFieldBack()
{
    QFETCH(const int, key);
    QFETCH(const QPointF, place);
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, key);
    QGraphicsItem* const item = poleItem(session.window, key);
    item->moveBy(13, -9);
    QVERIFY(item->y() != place.y());
    typeNumber(session.window, kPositionRow, QStringLiteral("33"));
    QCOMPARE(item->pos(), place);
    QVERIFY(!session.probe.redrawPending());
    QCOMPARE(poleItem(session.window, key), item);
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("%1.X=33").arg(key)});
}

QTEST_MAIN(tst_OddElements)
#include "tst_odd_elements.moc"
