#include "editing/editingsession.h"
#include "editing/fieldlistlook.h"
#include "editing/trapsteps.h"
#include "support/tablesteps.h"
#include "view/itemblockheader.h"
#include "view/itemline.h"
#include "view/itempole.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsView>
#include <QTableWidget>
#include <QTest>

#include <array>
#include <cstddef>
#include <new>

namespace {

QGraphicsView* viewOf(MainWindow& window)
{
    return named<QGraphicsView>(window, "graphicsView_1");
}

/// The lines of the log that tell of a new selection, from the line `from` on.
QStringList selectionLines(MainWindow& window, qsizetype from)
{
    return logSince(window, from).filter(QStringLiteral("new selItem"));
}

QString selectionLine(int type, int number)
{
    return QStringLiteral("new selItem type=%1 idx=%2 ...").arg(type).arg(number);
}

/// Clicks right of the tape, where nothing stands.
void clickEmptySpace(MainWindow& window)
{
    QGraphicsView* const view = viewOf(window);
    const QPoint at(view->viewport()->width() - 5, view->viewport()->height() - 5);
    QCOMPARE(view->itemAt(at), nullptr);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at);
}

/// The blocks whose lines are allowed, and "mixed" if the lines of a block disagree.
QString allowedBlocks(MainWindow& window)
{
    QMap<int, bool> allowed;
    for (QGraphicsItem* const item : WindowProbe(window).scene().items()) {
        const auto* const line = qgraphicsitem_cast<ItemLine*>(item);
        if (line == nullptr)
            continue;
        const int block = line->data(1).toInt();
        if (allowed.contains(block) && allowed.value(block) != line->lineAllowed)
            return QStringLiteral("mixed");
        allowed.insert(block, line->lineAllowed);
    }
    QString blocks;
    for (auto it = allowed.cbegin(); it != allowed.cend(); ++it) {
        if (it.value())
            blocks += QString::number(it.key());
    }
    return blocks;
}

/// One field on each of two lines in all ten blocks, and the field 21 with `mask`.
QList<FieldRow> fieldsInEveryBlock(unsigned int mask)
{
    QList<FieldRow> fields;
    for (int block = 0; block < 10; ++block) {
        fields.append({.block = block, .line = 1, .size = 4});
        fields.append({.block = block, .line = 2, .size = 4});
    }
    fields.append({.block = 0, .line = 1, .x = 20, .size = 4, .blockMask = mask});
    return fields;
}

/// A field's picture that always comes to life at the same address.
class PinnedPole : public ItemPole
{
public:
    using ItemPole::ItemPole;

    static void* operator new(std::size_t size)
    {
        if (size > s_place.size())
            qFatal("the place is too small");
        return s_place.data();
    }
    static void operator delete(void* /*memory*/) {}

private:
    alignas(std::max_align_t) static inline std::array<std::byte, 1024> s_place{};
};

} // namespace

class tst_Selection : public QObject
{
    Q_OBJECT

private slots:
    void fieldIsSelectedOnTheReleaseOfTheMouse();
    void eachKindOfElementIsToldToTheLog();
    void clickPicksWhatLiesOnTop();
    void draggedFieldComesBackWithTheNextRebuild();
    void draggingTheSelectedFieldKeepsItsRecord();
    void clickOnEmptySpaceDeselects();
    void twoSelectedElementsCountAsNone();
    void lineButtonsStandBesideHeadingsAndLines();
    void lineButtonsFollowTapeWidthAndHeadings();
    void linesOfForbiddenBlocksAreHatched();
    void everyBlockIsAllowedUnlessAFieldIsSelected();
    void hatchingIsSeenOnTheTape();
    void redrawLosesTheSelection();
    void takeOverEndsAPick_data();
    void takeOverEndsAPick();
    void itemAtTheAddressOfTheOldOneIsANewSelection();
};

void tst_Selection::fieldIsSelectedOnTheReleaseOfTheMouse()
{
    EditingSession session(workFields());
    const auto before = session.records();
    QGraphicsItem* const item = poleItem(session.window, 3);
    const QPoint at = visiblePoint(session.window, item);
    QTest::mousePress(viewOf(session.window)->viewport(), Qt::LeftButton, {}, at);
    QVERIFY(!item->isSelected());
    QTest::mouseRelease(viewOf(session.window)->viewport(), Qt::LeftButton, {}, at);
    QVERIFY(item->isSelected());
    // It is the loop that takes the selection.
    QCOMPARE(session.probe.curItem(), nullptr);
    QCOMPARE(propertyTable(session.window)->rowCount(), 0);
    QTRY_COMPARE(session.probe.curItem(), item);
    QCOMPARE(propertyTable(session.window)->rowCount(), 12);
    QCOMPARE(shownDesc(session.window), QStringLiteral("Позиция: номер"));
    QCOMPARE(session.probe.curKey(), 0);
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_Selection::eachKindOfElementIsToldToTheLog()
{
    EditingSession session(workFields());
    const auto from = session.probe.log().size();
    pickPole(session.window, 7);
    pickItem(session.window, headerItem(session.window, 6));
    QCOMPARE(shownDesc(session.window), QStringLiteral("Поле не выбрано"));
    pickItem(session.window, lineItem(session.window, 1, 3));
    QCOMPARE(shownDesc(session.window), QStringLiteral("Поле не выбрано"));
    clickEmptySpace(session.window);
    session.settle();
    pickPole(session.window, 9);
    QCOMPARE(selectionLines(session.window, from),
             (QStringList{selectionLine(65538, 7), selectionLine(65537, 6), selectionLine(65539, 1),
                          selectionLine(0, -1), selectionLine(65538, 9)}));
}

void tst_Selection::clickPicksWhatLiesOnTop()
{
    EditingSession session({{.line = 1, .x = 0, .size = 20}, {.line = 1, .x = 5, .size = 20}});
    QGraphicsView* const view = viewOf(session.window);
    QGraphicsItem* const line = lineItem(session.window, 0, 1);
    const auto pickAt = [&](qreal x) {
        const QPoint at = view->mapFromScene(QPointF(x, line->sceneBoundingRect().center().y()));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at);
        session.settle();
    };
    pickAt(30); // cell 2
    QCOMPARE(session.probe.curItem(), poleItem(session.window, 1));
    pickAt(150); // cell 12, under both
    QCOMPARE(session.probe.curItem(), poleItem(session.window, 2));
    pickAt(290); // cell 24
    QCOMPARE(session.probe.curItem(), poleItem(session.window, 2));
    pickAt(400); // beyond both
    QCOMPARE(session.probe.curItem(), line);
}

void tst_Selection::draggedFieldComesBackWithTheNextRebuild()
{
    EditingSession session(workFields());
    const auto before = session.records();
    QGraphicsView* const view = viewOf(session.window);
    QGraphicsItem* const item = poleItem(session.window, 3);
    const QPointF home = item->pos();
    const QPoint from = visiblePoint(session.window, item);
    QTest::mousePress(view->viewport(), Qt::LeftButton, {}, from);
    QTest::mouseMove(view->viewport(), from + QPoint(40, 12));
    QTest::mouseMove(view->viewport(), from + QPoint(80, 25));
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, from + QPoint(80, 25));
    QCOMPARE(item->pos(), home + QPointF(80, 25));
    QCOMPARE(session.changesSince(before), QStringList());

    clickButton(session.window, "btnRedraw");
    QCOMPARE(poleItem(session.window, 3)->pos(), home);
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_Selection::draggingTheSelectedFieldKeepsItsRecord()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 7);
    QGraphicsItem* const item = session.probe.curItem();
    const QPointF home = item->pos();
    const QPoint from = visiblePoint(session.window, item);
    QTest::mousePress(viewOf(session.window)->viewport(), Qt::LeftButton, {}, from);
    QTest::mouseMove(viewOf(session.window)->viewport(), from + QPoint(50, -20));
    QTest::mouseRelease(viewOf(session.window)->viewport(), Qt::LeftButton, {}, from + QPoint(50, -20));
    QCOMPARE(item->pos(), home + QPointF(50, -20));
    session.settle();
    QCOMPARE(session.probe.curItem(), item);
    QCOMPARE(cellState(session.window, 2), QStringLiteral("0|0|false"));
    QCOMPARE(session.changesSince(before), QStringList());

    // A change of another property rebuilds the picture from the record.
    typeNumber(session.window, 3, QStringLiteral("11"));
    waitForRedraw(session.window);
    QCOMPARE(poleItem(session.window, 7)->pos(), home);
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("7.Size=11")});
}

void tst_Selection::clickOnEmptySpaceDeselects()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 3);
    clickEmptySpace(session.window);
    session.settle();
    checkNothingIsPicked(session);
    pickItem(session.window, lineItem(session.window, 1, 2));
    clickEmptySpace(session.window);
    session.settle();
    checkNothingIsPicked(session);

    const auto logged = session.probe.log().size();
    clickEmptySpace(session.window);
    session.probe.requestRedraw();
    waitForRedraw(session.window);
    QCOMPARE(selectionLines(session.window, logged), QStringList());
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_Selection::twoSelectedElementsCountAsNone()
{
    EditingSession session(workFields());
    pickPole(session.window, 3);
    const auto logged = session.probe.log().size();
    const auto controlClick = [&session](QGraphicsItem* item) {
        const QPoint at = visiblePoint(session.window, item);
        QTest::mouseClick(viewOf(session.window)->viewport(), Qt::LeftButton, Qt::ControlModifier, at);
        session.settle();
    };
    controlClick(poleItem(session.window, 7));
    QCOMPARE(session.probe.scene().selectedItems().size(), 2);
    checkNothingIsPicked(session);
    controlClick(lineItem(session.window, 1, 2));
    QCOMPARE(session.probe.scene().selectedItems().size(), 3);
    QCOMPARE(selectionLines(session.window, logged), QStringList{selectionLine(0, -1)});

    controlClick(poleItem(session.window, 3));
    controlClick(lineItem(session.window, 1, 2));
    QCOMPARE(session.probe.curItem(), poleItem(session.window, 7));
    QCOMPARE(shownDesc(session.window), QStringLiteral("Чек: итог"));
}

void tst_Selection::lineButtonsStandBesideHeadingsAndLines()
{
    EditingSession session(workFields());
    const QGraphicsProxyWidget* const add = session.lineButton(QStringLiteral("+"));
    const QGraphicsProxyWidget* const del = session.lineButton(QStringLiteral("-"));
    QVERIFY(!add->isVisible());
    QVERIFY(!del->isVisible());
    pickItem(session.window, headerItem(session.window, 1));
    // The heading stands at 62 and is 21 high.
    QVERIFY(add->isVisible());
    QVERIFY(!del->isVisible());
    QCOMPARE(add->pos(), QPointF(-26, 71));
    QCOMPARE(add->size(), QSizeF(24, 24));
    pickItem(session.window, headerItem(session.window, 0));
    QCOMPARE(add->pos(), QPointF(-26, 10));
    // An empty line at 103, 15 high.
    pickItem(session.window, lineItem(session.window, 1, 2));
    QVERIFY(add->isVisible());
    QVERIFY(del->isVisible());
    QCOMPARE(add->pos(), QPointF(-26, 106));
    QCOMPARE(del->pos(), QPointF(580, 98));
    QCOMPARE(del->size(), QSizeF(24, 24));
    // One with a field of double height at 133, 40 high.
    pickItem(session.window, lineItem(session.window, 1, 4));
    QCOMPARE(add->pos(), QPointF(-26, 161));
    QCOMPARE(del->pos(), QPointF(580, 141));
    pickItem(session.window, headerItem(session.window, 2));
    QVERIFY(add->isVisible());
    QVERIFY(!del->isVisible());
    pickItem(session.window, lineItem(session.window, 1, 1));
    pickPole(session.window, 4);
    QVERIFY(!add->isVisible());
    QVERIFY(!del->isVisible());
}

void tst_Selection::lineButtonsFollowTapeWidthAndHeadings()
{
    EditingSession session(workFields());
    chooseInCombo(session.window, "comboLentaSize", 0);
    session.settle();
    pickItem(session.window, lineItem(session.window, 1, 2));
    QCOMPARE(session.lineButton(QStringLiteral("-"))->pos(), QPointF(388, 98));
    clickButton(session.window, "btnBlTitlesOnOff");
    session.settle();
    QVERIFY(!session.lineButton(QStringLiteral("+"))->isVisible());
    pickItem(session.window, lineItem(session.window, 1, 2));
    QCOMPARE(session.lineButton(QStringLiteral("+"))->pos(), QPointF(-26, 64));
    QCOMPARE(session.lineButton(QStringLiteral("-"))->pos(), QPointF(388, 56));
}

void tst_Selection::linesOfForbiddenBlocksAreHatched()
{
    EditingSession session(fieldsInEveryBlock(0x0));
    const QString all = QStringLiteral("0123456789");
    QCOMPARE(allowedBlocks(session.window), all);
    const std::pair<unsigned int, QString> masks[] = {{0x0, QString()},
                                                      {0x1, QStringLiteral("0")},
                                                      {0x3ff, all},
                                                      {0x155, QStringLiteral("02468")},
                                                      {0x200, QStringLiteral("9")},
                                                      {0xfffffc00, QString()},
                                                      {0xffffffff, all}};
    for (const auto& [mask, blocks] : masks) {
        session.probe.bd().items[21].BL_MASK = mask;
        pickPole(session.window, 21);
        QCOMPARE(allowedBlocks(session.window), blocks);
        pickPole(session.window, 1);
        QCOMPARE(allowedBlocks(session.window), all);
    }
}

void tst_Selection::everyBlockIsAllowedUnlessAFieldIsSelected()
{
    EditingSession session(fieldsInEveryBlock(0x9));
    const QString all = QStringLiteral("0123456789");
    const auto pickField = [&session] {
        pickPole(session.window, 21);
        QCOMPARE(allowedBlocks(session.window), QStringLiteral("03"));
    };
    pickField();
    pickItem(session.window, headerItem(session.window, 0));
    QCOMPARE(allowedBlocks(session.window), all);
    pickField();
    pickItem(session.window, lineItem(session.window, 0, 2));
    QCOMPARE(allowedBlocks(session.window), all);
    pickField();
    clickEmptySpace(session.window);
    session.settle();
    QCOMPARE(allowedBlocks(session.window), all);
    pickField();
    clickButton(session.window, "btnRedraw");
    session.settle();
    QCOMPARE(allowedBlocks(session.window), all);
}

void tst_Selection::hatchingIsSeenOnTheTape()
{
    EditingSession session(workFields());
    const auto shotOfLine = [&session](int block, int line) {
        QGraphicsView* const view = viewOf(session.window);
        const QRectF area = lineItem(session.window, block, line)->sceneBoundingRect();
        const QRect free = view->mapFromScene(QRectF(250, area.top(), 100, area.height())).boundingRect();
        QCoreApplication::processEvents();
        return view->viewport()->grab(free).toImage();
    };
    const QImage plain = shotOfLine(0, 1);
    const QImage allowed = shotOfLine(1, 4);
    pickPole(session.window, 3); // may stand in block 1 only
    QVERIFY(shotOfLine(0, 1) != plain);
    QCOMPARE(shotOfLine(1, 4), allowed);
    clickEmptySpace(session.window);
    session.settle();
    QCOMPARE(shotOfLine(0, 1), plain);
}

void tst_Selection::redrawLosesTheSelection()
{
    EditingSession session(workFields());
    const auto before = session.records();
    for (const char* const button : {"btnRedraw", "btnBlTitlesOnOff", "btnFontMonoWide"}) {
        pickPole(session.window, 3);
        const auto logged = session.probe.log().size();
        clickButton(session.window, button);
        QCOMPARE(session.probe.curItem(), nullptr);
        session.settle();
        checkNothingIsPicked(session);
        QCOMPARE(selectionLines(session.window, logged), QStringList{selectionLine(0, -1)});
    }
    pickPole(session.window, 3);
    session.probe.requestRedraw();
    waitForRedraw(session.window);
    session.settle();
    checkNothingIsPicked(session);
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_Selection::takeOverEndsAPick_data()
{
    QTest::addColumn<bool>("isGood");
    QTest::newRow("good") << true;
    QTest::newRow("refused") << false;
}

void tst_Selection::takeOverEndsAPick()
{
    QFETCH(const bool, isGood);
    EditingSession session(workFields());
    const auto takeOver = [&] {
        openTemplate(session.window, session.robot, session.write({{.block = isGood ? 3 : 33}}));
        QCOMPARE(session.robot.takeTexts().size(), isGood ? 0 : 1);
        // At once, not with the next turn of the loop.
        checkNothingIsPicked(session);
        session.settle();
        checkNothingIsPicked(session);
        session.open(workFields());
    };
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    takeOver();
    pickPole(session.window, 3);
    takeOver();
    pickPole(session.window, 3);
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    takeOver();
    // The loop waits for no deselection that does not come any more.
    pickPole(session.window, 4);
    QCOMPARE(shownDesc(session.window), QStringLiteral("Позиция: цена"));
}

void tst_Selection::itemAtTheAddressOfTheOldOneIsANewSelection()
{
    EditingSession session(workFields());
    const auto pinned = [&session](int key) {
        auto* const item = new PinnedPole(key, 12, 20, 5, QStringLiteral("x"));
        session.probe.scene().addItem(item);
        session.probe.scene().clearSelection();
        item->setSelected(true);
        return item;
    };
    const PinnedPole* const first = pinned(3);
    QTRY_COMPARE(shownDesc(session.window), QStringLiteral("Позиция: номер"));

    // No turn of the loop comes between the end of the old item and the new one.
    clickButton(session.window, "btnRedraw");
    const PinnedPole* const second = pinned(4);
    QCOMPARE(second, first);
    QTRY_COMPARE(shownDesc(session.window), QStringLiteral("Позиция: цена"));
    QCOMPARE(session.probe.curItem(), second);
    QCOMPARE(cellState(session.window, 2), QStringLiteral("20|20|false"));

    clickButton(session.window, "btnRedraw");
    session.settle();
    checkNothingIsPicked(session);
}

QTEST_MAIN(tst_Selection)
#include "tst_selection.moc"
