#include "editing/editingsession.h"
#include "editing/trapsteps.h"
#include "support/tablesteps.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsView>
#include <QListWidget>
#include <QPointer>
#include <QSpinBox>
#include <QTest>

namespace {

constexpr int kSizeRow = 3;

QWidget* viewportOf(EditingSession& session)
{
    return named<QGraphicsView>(session.window, "graphicsView_1")->viewport();
}

} // namespace

class tst_VanishingItems : public QObject
{
    Q_OBJECT

private slots:
    void listIsFilledAnewUnderItsCurrentLine();
    void clickOnTheListCommitsTheSizeFirst();
    void itemDiesWhileItIsDragged();
    void itemDiesUnderThePointer();
    void lineButtonDiesWhileItIsPressed();
};

void tst_VanishingItems::listIsFilledAnewUnderItsCurrentLine()
{
    EditingSession session(workFields());
    const auto before = session.records();
    auto* const list = named<QListWidget>(session.window, "listWidget");
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    QCOMPARE(list->currentRow(), 0);
    typeNumber(session.window, kSizeRow, QStringLiteral("4"));
    QCOMPARE(list->count(), 2);
    QCOMPARE(list->currentRow(), -1);
    waitForLoop(session);
    QCOMPARE(session.probe.curKey(), 5);
    checkTableTellsTheTruth(session);
    // Keys in the list go on from its first line.
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Down);
    QTRY_VERIFY(session.probe.curKey() == 6 || session.probe.curKey() == 8);
    checkTableTellsTheTruth(session);

    // Refilled by other buttons while a line is current.
    pickInList(session.window, QStringLiteral("Налог: ставка"));
    clickButton(session.window, "btnFiltrShowAll");
    QCOMPARE(list->count(), 9);
    QCOMPARE(session.probe.curKey(), 8);
    pickInList(session.window, QStringLiteral("Шапка: заголовок"));
    session.open(workFields());
    waitForLoop(session);
    QCOMPARE(session.changesSince(before), QStringList());
    checkTableTellsTheTruth(session);
}

void tst_VanishingItems::clickOnTheListCommitsTheSizeFirst()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    const auto editor = typeInto(session, kSizeRow, QStringLiteral("4"));
    // The commit takes the first line away under the pointer.
    pickInList(session.window, QStringLiteral("Позиция: сумма"));
    waitForLoop(session);
    QVERIFY(editor.isNull());
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("5.Size=4")});
    QVERIFY(poleItem(session.window, 5) != nullptr);
    checkTableTellsTheTruth(session);

    // A refused one opens its box first.
    session.open(workFields());
    pickInList(session.window, QStringLiteral("Налог: ставка"));
    typeInto(session, kSizeRow, QStringLiteral("4"));
    pickInList(session.window, QStringLiteral("Позиция: сумма"));
    waitForLoop(session);
    QCOMPARE(session.robot.takeTexts(), QStringList{QStringLiteral("Ячейка уже занята!")});
    QCOMPARE(session.changesSince(before), QStringList());
    checkTableTellsTheTruth(session);
}

void tst_VanishingItems::itemDiesWhileItIsDragged()
{
    EditingSession session(workFields());
    const auto before = session.records();
    for (const bool isSelected : {false, true}) {
        if (isSelected)
            pickPole(session.window, 7);
        QGraphicsItem* const item = poleItem(session.window, 7);
        const QPointF home = item->pos();
        const QPoint from = visiblePoint(session.window, item);
        QTest::mousePress(viewportOf(session), Qt::LeftButton, {}, from);
        QTest::mouseMove(viewportOf(session), from + QPoint(30, 10));
        QVERIFY(item->pos() != home);
        session.probe.requestRedraw();
        waitForLoop(session);
        QTest::mouseMove(viewportOf(session), from + QPoint(60, 20));
        QTest::mouseRelease(viewportOf(session), Qt::LeftButton, {}, from + QPoint(60, 20));
        waitForLoop(session);
        QCOMPARE(poleItem(session.window, 7)->pos(), home);
        QCOMPARE(session.changesSince(before), QStringList());
        pickPole(session.window, 3);
        checkTableTellsTheTruth(session);
    }
}

void tst_VanishingItems::itemDiesUnderThePointer()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickItem(session.window, lineItem(session.window, 1, 2));
    auto* const view = named<QGraphicsView>(session.window, "graphicsView_1");
    for (QGraphicsItem* const item : {poleItem(session.window, 7), lineItem(session.window, 1, 3),
                                      static_cast<QGraphicsItem*>(session.lineButton(QStringLiteral("-")))}) {
        const QPoint at = view->mapFromScene(item->sceneBoundingRect().center());
        QTest::mouseMove(view->viewport(), at);
        QTest::mouseMove(view->viewport(), at + QPoint(1, 0));
    }
    session.probe.requestRedraw();
    waitForLoop(session);
    QTest::mouseMove(view->viewport(), QPoint(60, 60));
    QTest::mouseMove(view->viewport(), QPoint(62, 60));
    pickPole(session.window, 7);
    QCOMPARE(session.changesSince(before), QStringList());
    checkTableTellsTheTruth(session);
}

void tst_VanishingItems::lineButtonDiesWhileItIsPressed()
{
    EditingSession session(workFields());
    const auto before = session.records();
    auto* const view = named<QGraphicsView>(session.window, "graphicsView_1");
    for (const auto& text : {QStringLiteral("+"), QStringLiteral("-")}) {
        pickItem(session.window, lineItem(session.window, 1, 2));
        QGraphicsProxyWidget* const proxy = session.lineButton(text);
        view->ensureVisible(proxy);
        const QPoint at = view->mapFromScene(proxy->sceneBoundingRect().center());
        QTest::mousePress(view->viewport(), Qt::LeftButton, {}, at);
        session.probe.requestRedraw();
        waitForLoop(session);
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, at);
        waitForLoop(session);
        QVERIFY(!session.probe.redrawPending());
        QCOMPARE(session.changesSince(before), QStringList());
        QCOMPARE(session.probe.maket().getBlockKolLines(1), 5);
    }
    pickPole(session.window, 7);
    checkTableTellsTheTruth(session);
}

QTEST_MAIN(tst_VanishingItems)
#include "tst_vanishing_items.moc"
