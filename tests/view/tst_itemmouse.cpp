#include "view/itemblockheader.h"
#include "view/itemline.h"
#include "view/itempole.h"

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QTest>

#include <memory>

/// What the mouse does to the items, by real events on a view.
class tst_ItemMouse : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void fieldIsSelectedByTheReleaseAndNotByThePress();
    void pressOnASecondFieldKeepsTheFirstSelectedUntilTheRelease();
    void pressOnASelectedFieldKeepsItSelected();
    void doubleClickByItselfSelectsNothing();
    void rightButtonSelectsNoField();
    void clickBesideAFieldDeselectsIt();
    void draggedFieldMoves();
    void headingIsSelectedByAClickAndStaysInPlace();
    void lineIsSelectedByAClickAndStaysInPlace();

private:
    QPoint at(const QGraphicsItem* item) const
    {
        return view->mapFromScene(item->sceneBoundingRect().center());
    }
    void press(const QGraphicsItem* item)
    {
        QTest::mousePress(view->viewport(), Qt::LeftButton, {}, at(item));
    }
    void release(const QGraphicsItem* item)
    {
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, at(item));
    }
    void drag(const QGraphicsItem* item, const QPoint& by);

    std::unique_ptr<QGraphicsScene> scene;
    std::unique_ptr<QGraphicsView> view;
    ItemPole* first = nullptr;
    ItemPole* second = nullptr;
    ItemBlockHeader* heading = nullptr;
    ItemLine* line = nullptr;
};

void tst_ItemMouse::init()
{
    scene = std::make_unique<QGraphicsScene>(0, 0, 400, 200);
    heading = new ItemBlockHeader(384, 21, QStringLiteral("Шапка чека"));
    line = new ItemLine(false, 1, 384, 20, 12);
    first = new ItemPole(7, 12, 20, 5, QStringLiteral("О.Сумма"));
    second = new ItemPole(8, 12, 20, 5, QStringLiteral("О.Налог"));
    line->setPos(0, 40);
    first->setPos(0, 80);
    second->setPos(120, 80);
    for (QGraphicsItem* const item : std::initializer_list<QGraphicsItem*>{heading, line, first, second})
        scene->addItem(item);

    view = std::make_unique<QGraphicsView>(scene.get());
    view->resize(440, 240);
    view->show();
    QVERIFY(QTest::qWaitForWindowExposed(view.get()));
}

void tst_ItemMouse::cleanup()
{
    view.reset();
    scene.reset();
}

void tst_ItemMouse::drag(const QGraphicsItem* item, const QPoint& by)
{
    const QPoint from = at(item);
    QTest::mousePress(view->viewport(), Qt::LeftButton, {}, from);
    QTest::mouseMove(view->viewport(), from + by / 2);
    QTest::mouseMove(view->viewport(), from + by);
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, from + by);
}

void tst_ItemMouse::fieldIsSelectedByTheReleaseAndNotByThePress()
{
    press(first);
    QVERIFY(!first->isSelected());
    QVERIFY(scene->selectedItems().isEmpty());
    release(first);
    QVERIFY(first->isSelected());
    QCOMPARE(scene->selectedItems().size(), 1);
}

void tst_ItemMouse::pressOnASecondFieldKeepsTheFirstSelectedUntilTheRelease()
{
    first->setSelected(true);
    press(second);
    QVERIFY(first->isSelected());
    QVERIFY(!second->isSelected());
    release(second);
    QVERIFY(!first->isSelected());
    QVERIFY(second->isSelected());
}

void tst_ItemMouse::pressOnASelectedFieldKeepsItSelected()
{
    first->setSelected(true);
    press(first);
    QVERIFY(first->isSelected());
    release(first);
    QVERIFY(first->isSelected());
}

void tst_ItemMouse::doubleClickByItselfSelectsNothing()
{
    second->setSelected(true);
    const QPoint place = at(first);
    QMouseEvent doubleClick(QEvent::MouseButtonDblClick, place, view->viewport()->mapToGlobal(place),
                            Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view->viewport(), &doubleClick);
    QVERIFY(!first->isSelected());
    QVERIFY(second->isSelected());
    release(first);
    QVERIFY(first->isSelected());
    QVERIFY(!second->isSelected());
}

void tst_ItemMouse::rightButtonSelectsNoField()
{
    QTest::mouseClick(view->viewport(), Qt::RightButton, {}, at(first));
    QVERIFY(scene->selectedItems().isEmpty());
}

void tst_ItemMouse::clickBesideAFieldDeselectsIt()
{
    first->setSelected(true);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->mapFromScene(QPointF(200, 160)));
    QVERIFY(scene->selectedItems().isEmpty());
}

void tst_ItemMouse::draggedFieldMoves()
{
    const QPointF before = first->pos();
    const QRectF shape = first->boundingRect();
    drag(first, QPoint(30, 40));
    QCOMPARE(first->pos(), before + QPointF(30, 40));
    QCOMPARE(second->pos(), QPointF(120, 80));
    QCOMPARE(first->data(1), QVariant(7));
    QCOMPARE(first->boundingRect(), shape);
}

void tst_ItemMouse::headingIsSelectedByAClickAndStaysInPlace()
{
    first->setSelected(true);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at(heading));
    QCOMPARE(scene->selectedItems(), QList<QGraphicsItem*>{heading});
    drag(heading, QPoint(30, 40));
    QCOMPARE(heading->pos(), QPointF(0, 0));
}

void tst_ItemMouse::lineIsSelectedByAClickAndStaysInPlace()
{
    first->setSelected(true);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at(line));
    QCOMPARE(scene->selectedItems(), QList<QGraphicsItem*>{line});
    drag(line, QPoint(30, 40));
    QCOMPARE(line->pos(), QPointF(0, 40));
}

QTEST_MAIN(tst_ItemMouse)
#include "tst_itemmouse.moc"
