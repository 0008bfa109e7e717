#include "view/itemline.h"

#include "picture.h"

#include <QTest>

namespace {

constexpr int kWidth = 384;
constexpr int kHeight = 20;
constexpr int kCell = 12;

/// A pixel between the two guides of the second cell.
constexpr QPoint kInside(18, 10);

/// The columns of the guides of `cells` cells.
QList<int> guides(int cells, int cellDX)
{
    QList<int> columns;
    for (int cell = 0; cell < cells; ++cell)
        columns << cell * cellDX << (cell + 1) * cellDX - 1;
    return columns;
}

/// The light gray lines of a line that lies on nothing else.
void drawGuides(Picture& picture)
{
    picture.fill(0, 0, kWidth, 1, Qt::lightGray);
    picture.fill(0, kHeight - 1, kWidth, 1, Qt::lightGray);
    for (const int column : guides(32, kCell))
        picture.fill(column, 0, 1, kHeight, Qt::lightGray);
}

/// A line filled with `inside`; the outline of the fill ends one unit outside of the line.
Picture filledLine(Qt::GlobalColor inside)
{
    Picture picture(kWidth, kHeight);
    picture.outlined(0, 0, kWidth, kHeight, Qt::lightGray, inside);
    drawGuides(picture);
    return picture;
}

/// True if four black pixels stand in a row downward, each `step` columns right of the one above.
bool hasDiagonal(const Picture& picture, int step)
{
    for (int y = 1; y < 9; ++y) {
        for (int x = 5; x < 25; ++x) {
            int length = 0;
            while (length < 4 && picture.at(x + step * length, y + length) == QColor(Qt::black))
                ++length;
            if (length == 4)
                return true;
        }
    }
    return false;
}

Picture pictureOf(ItemLine& line)
{
    return Picture::ofItem(line, kWidth, kHeight);
}

} // namespace

class tst_ItemLine : public QObject
{
    Q_OBJECT

private slots:
    void typeFlagsAndData();
    void boundingRectIsOneLessThanTheSize();
    void lineWithFieldsHasEdgesAndCellsOnly();
    void emptyLineIsADarkMagentaBandUnderTheGrid();
    void selectedLineIsYellow();
    void selectedEmptyLineIsYellowAndNotMagenta();
    void lineThatIsNotAllowedIsHatchedInBlack();
    void hatchingReachesToTheEdges();
    void hatchingLiesUnderTheMagentaOfAnEmptyLine();
    void hatchingLiesUnderTheYellowOfASelectedLine();
    void hatchingEndsWhenTheLineIsAllowedAgain();
    void titleModeHasNoVisibleEffect_data();
    void titleModeHasNoVisibleEffect();
    void cellsUpToTheWidth_data();
    void cellsUpToTheWidth();
    void lineInASceneLooksTheSame();
};

void tst_ItemLine::typeFlagsAndData()
{
    const ItemLine line(false, 1, kWidth, kHeight, kCell);
    QCOMPARE(line.type(), 65539);
    QCOMPARE(line.flags(), QGraphicsItem::GraphicsItemFlags(QGraphicsItem::ItemIsSelectable));
    QVERIFY(line.lineAllowed);
    QVERIFY2(!line.data(1).isValid(), "the block number is set by whoever makes the line");
    QVERIFY2(!line.data(2).isValid(), "the line number is set by whoever makes the line");
}

void tst_ItemLine::boundingRectIsOneLessThanTheSize()
{
    QCOMPARE(ItemLine(true, 2, 432, 15, 12).boundingRect(), QRectF(0, 0, 431, 14));
}

void tst_ItemLine::lineWithFieldsHasEdgesAndCellsOnly()
{
    ItemLine line(false, 1, kWidth, kHeight, kCell);
    Picture expected(kWidth, kHeight);
    drawGuides(expected);
    const Picture picture = pictureOf(line);
    QCOMPARE(picture.at(kInside.x(), kInside.y()), QColor(Qt::white));
    QCOMPARE(picture.at(383, 0), QColor(Qt::lightGray));
    QCOMPARE(picture.at(383, 19), QColor(Qt::lightGray));
    QCOMPARE(picture.at(11, 10), QColor(Qt::lightGray));
    QCOMPARE(picture.at(12, 10), QColor(Qt::lightGray));
    QCOMPARE(picture.differenceFrom(expected), QString());
}

void tst_ItemLine::emptyLineIsADarkMagentaBandUnderTheGrid()
{
    ItemLine line(true, 1, kWidth, kHeight, kCell);
    const Picture picture = pictureOf(line);
    QCOMPARE(picture.at(kInside.x(), kInside.y()), QColor(Qt::darkMagenta));
    QCOMPARE(picture.at(11, 10), QColor(Qt::lightGray));
    QCOMPARE(picture.at(kInside.x(), 0), QColor(Qt::lightGray));
    QCOMPARE(picture.differenceFrom(filledLine(Qt::darkMagenta)), QString());
}

void tst_ItemLine::selectedLineIsYellow()
{
    ItemLine line(false, 1, kWidth, kHeight, kCell);
    line.setSelected(true);
    const Picture picture = pictureOf(line);
    QCOMPARE(picture.at(kInside.x(), kInside.y()), QColor(Qt::yellow));
    QCOMPARE(picture.differenceFrom(filledLine(Qt::yellow)), QString());
}

void tst_ItemLine::selectedEmptyLineIsYellowAndNotMagenta()
{
    ItemLine line(true, 1, kWidth, kHeight, kCell);
    line.setSelected(true);
    const Picture picture = pictureOf(line);
    QCOMPARE(picture.at(kInside.x(), kInside.y()), QColor(Qt::yellow));
    QCOMPARE(picture.count(Qt::darkMagenta), 0);
}

void tst_ItemLine::lineThatIsNotAllowedIsHatchedInBlack()
{
    ItemLine line(false, 1, kWidth, kHeight, 30);
    line.lineAllowed = false;
    const Picture picture = pictureOf(line);
    for (int cell = 0; cell < 12; ++cell) {
        const QRect inside(30 * cell + 1, 1, 28, kHeight - 2);
        const int black = picture.count(Qt::black, inside);
        const int blank = picture.count(Qt::white, inside);
        QVERIFY2(black > 0, "the hatching is drawn in the default colour of the style");
        QVERIFY2(blank > black, "the hatching lets the ground through");
        QCOMPARE(black + blank, inside.width() * inside.height());
    }
    QVERIFY2(hasDiagonal(picture, 1), "the hatching falls to the right");
    QVERIFY2(hasDiagonal(picture, -1), "the hatching rises to the right");
}

void tst_ItemLine::hatchingReachesToTheEdges()
{
    // Cells wider than the line: nothing but the hatching and its outline.
    ItemLine line(false, 1, 64, kHeight, 100);
    line.lineAllowed = false;
    const Picture picture = Picture::ofItem(line, 64, kHeight);
    QVERIFY(picture.count(Qt::black, QRect(56, 1, 8, kHeight - 2)) > 0);
    QCOMPARE(picture.count(Qt::black), picture.count(Qt::black, QRect(1, 1, 63, kHeight - 2)));
    QCOMPARE(picture.count(Qt::lightGray, QRect(64, 0, 1, kHeight)), kHeight);
    QCOMPARE(picture.count(Qt::lightGray, QRect(0, kHeight - 1, 65, 1)), 65);
    QCOMPARE(picture.at(30, kHeight), QColor(Qt::white));
    QCOMPARE(picture.at(65, 10), QColor(Qt::white));
}

void tst_ItemLine::hatchingLiesUnderTheMagentaOfAnEmptyLine()
{
    ItemLine line(true, 1, kWidth, kHeight, kCell);
    line.lineAllowed = false;
    QCOMPARE(pictureOf(line).differenceFrom(filledLine(Qt::darkMagenta)), QString());
}

void tst_ItemLine::hatchingLiesUnderTheYellowOfASelectedLine()
{
    for (const bool empty : {false, true}) {
        ItemLine line(empty, 1, kWidth, kHeight, kCell);
        line.lineAllowed = false;
        line.setSelected(true);
        QCOMPARE(pictureOf(line).differenceFrom(filledLine(Qt::yellow)), QString());
    }
}

void tst_ItemLine::hatchingEndsWhenTheLineIsAllowedAgain()
{
    ItemLine line(false, 1, kWidth, kHeight, kCell);
    const Picture before = pictureOf(line);
    line.lineAllowed = false;
    QVERIFY(!pictureOf(line).differenceFrom(before).isEmpty());
    line.lineAllowed = true;
    QCOMPARE(pictureOf(line).differenceFrom(before), QString());
}

void tst_ItemLine::titleModeHasNoVisibleEffect_data()
{
    QTest::addColumn<bool>("empty");
    QTest::addColumn<bool>("allowed");
    QTest::addColumn<bool>("selected");
    for (int states = 0; states < 8; ++states)
        QTest::addRow("states %d", states)
            << ((states & 1) != 0) << ((states & 2) != 0) << ((states & 4) != 0);
}

void tst_ItemLine::titleModeHasNoVisibleEffect()
{
    QFETCH(const bool, empty);
    QFETCH(const bool, allowed);
    QFETCH(const bool, selected);
    const auto picture = [&](int titleMode) {
        ItemLine line(empty, titleMode, kWidth, kHeight, kCell);
        line.lineAllowed = allowed;
        line.setSelected(selected);
        return pictureOf(line);
    };
    QCOMPARE(picture(2).differenceFrom(picture(1)), QString());
    QVERIFY(picture(2).count(Qt::lightGray) > 0);
}

void tst_ItemLine::cellsUpToTheWidth_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("cellDX");
    QTest::addColumn<int>("cells");
    QTest::addColumn<int>("lastColumn");
    QTest::newRow("30 on the widest tape") << 576 << 30 << 19 << 569;
    QTest::newRow("9 on the widest tape: the 65th would end at 584") << 576 << 9 << 64 << 575;
    QTest::newRow("5 on the widest tape stops after the 65th") << 576 << 5 << 65 << 324;
    QTest::newRow("exactly 65 of 5") << 325 << 5 << 65 << 324;
    QTest::newRow("12 on the narrowest tape") << 384 << 12 << 32 << 383;
    QTest::newRow("the last cell ends with the line") << 24 << 12 << 2 << 23;
    QTest::newRow("the last cell would end beyond the line") << 23 << 12 << 1 << 11;
    QTest::newRow("no cell fits") << 11 << 12 << 0 << -1;
}

void tst_ItemLine::cellsUpToTheWidth()
{
    QFETCH(const int, width);
    QFETCH(const int, cellDX);
    QFETCH(const int, cells);
    QFETCH(const int, lastColumn);
    ItemLine line(false, 1, width, kHeight, cellDX);
    const Picture picture = Picture::ofItem(line, width, kHeight);
    const QList<int> columns = picture.columnsOf(Qt::lightGray, kHeight / 2);
    QCOMPARE(columns, guides(cells, cellDX));
    if (cells > 0)
        QCOMPARE(columns.last(), lastColumn);
    for (const int column : columns)
        QCOMPARE(picture.count(Qt::lightGray, QRect(column, 0, 1, kHeight)), kHeight);
    QCOMPARE(picture.at(width - 1, 0), QColor(Qt::lightGray));
    QCOMPARE(picture.at(width, 0), QColor(Qt::white));
    QCOMPARE(picture.at(width - 1, kHeight - 1), QColor(Qt::lightGray));
}

void tst_ItemLine::lineInASceneLooksTheSame()
{
    QGraphicsScene scene;
    auto* const line = new ItemLine(true, 1, kWidth, kHeight, kCell);
    scene.addItem(line);
    QCOMPARE(Picture::ofScene(scene, kWidth, kHeight).differenceFrom(filledLine(Qt::darkMagenta)), QString());
    line->setSelected(true);
    QCOMPARE(Picture::ofScene(scene, kWidth, kHeight).differenceFrom(filledLine(Qt::yellow)), QString());
}

QTEST_MAIN(tst_ItemLine)
#include "tst_itemline.moc"
