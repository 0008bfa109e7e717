#include "editing/editingsession.h"
#include "editing/refusals.h"
#include "editing/tablerows.h"
#include "editing/trapsteps.h"
#include "support/tablesteps.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsView>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include <utility>

namespace {

QWidget* viewportOf(EditingSession& session)
{
    return named<QGraphicsView>(session.window, "graphicsView_1")->viewport();
}

/// Moves the pointer to `at` of the viewport, coming from the side.
void movePointer(EditingSession& session, const QPoint& at)
{
    for (const QPoint& point : {at + QPoint(40, 2), at + QPoint(1, 0), at})
        QTest::mouseMove(viewportOf(session), point);
}

/// Redraws the tape, in a turn of the selection loop or at once, without the pointer.
void redraw(EditingSession& session, bool isSlow)
{
    if (isSlow)
        session.probe.requestRedraw();
    else
        named<QPushButton>(session.window, "btnRedraw")->click();
    waitForLoop(session);
}

/// Counts the moves of the pointer that reach a widget.
class MoveCounter : public QObject
{
public:
    explicit MoveCounter(QWidget* widget) { widget->installEventFilter(this); }

    /// The moves since the last call.
    int take() { return std::exchange(m_count, 0); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::MouseMove)
            ++m_count;
        return QObject::eventFilter(watched, event);
    }

private:
    int m_count = 0;
};

} // namespace

class tst_VanishingItems : public QObject
{
    Q_OBJECT

private slots:
    void listIsFilledAnewUnderItsCurrentLine();
    void clickOnTheListCommitsTheSizeFirst();
    void itemDiesWhileItIsDragged();
    void itemDiesUnderThePointer_data();
    void itemDiesUnderThePointer();
    void lineButtonDiesUnderThePointer_data();
    void lineButtonDiesUnderThePointer();
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
    QTRY_COMPARE(session.probe.curKey(), 8);
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
    QCOMPARE(session.robot.takeTexts(), QStringList{kTaken});
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

void tst_VanishingItems::itemDiesUnderThePointer_data()
{
    QTest::addColumn<bool>("isSlow");
    QTest::newRow("redraw of the loop") << true;
    QTest::newRow("redraw at once") << false;
}

void tst_VanishingItems::itemDiesUnderThePointer()
{
    QFETCH(const bool, isSlow);
    EditingSession session(workFields());
    const auto before = session.records();
    MoveCounter moves(viewportOf(session));
    const auto items = [&session] {
        return QList<QGraphicsItem*>{poleItem(session.window, 7), lineItem(session.window, 1, 3),
                                     headerItem(session.window, 0), headerItem(session.window, 6)};
    };
    for (qsizetype i = 0; i < items().size(); ++i) {
        QGraphicsItem* const item = items().at(i);
        const QPoint at = visiblePoint(session.window, item);
        movePointer(session, at);
        QVERIFY(moves.take() >= 2);
        QVERIFY(item->isUnderMouse());
        redraw(session, isSlow);
        // Its successor takes the pointer over, and the next moves and clicks.
        QVERIFY(items().at(i)->isUnderMouse());
        movePointer(session, at);
        QVERIFY(moves.take() >= 2);
        pickItem(session.window, items().at(i));
    }
    QCOMPARE(session.changesSince(before), QStringList());
    checkTableTellsTheTruth(session);
}

void tst_VanishingItems::lineButtonDiesUnderThePointer_data()
{
    itemDiesUnderThePointer_data();
}

void tst_VanishingItems::lineButtonDiesUnderThePointer()
{
    QFETCH(const bool, isSlow);
    EditingSession session(workFields());
    const auto before = session.records();
    auto* const view = named<QGraphicsView>(session.window, "graphicsView_1");
    for (const auto& text : {QStringLiteral("+"), QStringLiteral("-")}) {
        pickItem(session.window, lineItem(session.window, 1, 2));
        const QPointer<QGraphicsProxyWidget> proxy(session.lineButton(text));
        view->ensureVisible(proxy);
        const QPoint at = view->mapFromScene(proxy->sceneBoundingRect().center());
        movePointer(session, at);
        QVERIFY(proxy->isUnderMouse());
        // The scene has let the button know.
        QTRY_VERIFY(proxy->widget()->underMouse());
        const QPointer<QWidget> button(proxy->widget());
        redraw(session, isSlow);
        QVERIFY(proxy.isNull());
        QVERIFY(button.isNull());

        // The new one stands there only with the next selection, and it works.
        movePointer(session, at);
        QVERIFY(!session.lineButton(text)->isVisible());
        pickItem(session.window, lineItem(session.window, 1, 2));
        QCOMPARE(view->mapFromScene(session.lineButton(text)->sceneBoundingRect().center()), at);
        movePointer(session, at);
        QTRY_VERIFY(session.lineButton(text)->widget()->underMouse());
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at);
        waitForLoop(session);
        QCOMPARE(session.probe.maket().getBlockKolLines(1), text == u"+" ? 6 : 5);
    }
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
