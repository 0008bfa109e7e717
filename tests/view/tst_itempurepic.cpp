#include "view/itempurepic.h"

#include "picture.h"

#include <QTest>

namespace {

/// A picture of four differently coloured quarters.
QPixmap quarters(int side)
{
    QPixmap pixmap(2 * side, 2 * side);
    QPainter painter(&pixmap);
    painter.fillRect(0, 0, side, side, Qt::red);
    painter.fillRect(side, 0, side, side, Qt::green);
    painter.fillRect(0, side, side, side, Qt::blue);
    painter.fillRect(side, side, side, side, Qt::cyan);
    return pixmap;
}

} // namespace

class tst_ItemPurePic : public QObject
{
    Q_OBJECT

private slots:
    void typeOfTheBaseAndNoFlags();
    void boundingRectIsOneLessThanTheSize();
    void pictureStandsInTheMiddle_data();
    void pictureStandsInTheMiddle();
    void wholePictureIsStretchedToTheSize();
    void itemPositionDoesNotMoveThePicture();
};

void tst_ItemPurePic::typeOfTheBaseAndNoFlags()
{
    const ItemPurePic item(10, 10, quarters(5));
    QCOMPARE(item.type(), static_cast<int>(QGraphicsItem::UserType));
    QCOMPARE(item.flags(), QGraphicsItem::GraphicsItemFlags());
    QVERIFY(!item.data(1).isValid());
}

void tst_ItemPurePic::boundingRectIsOneLessThanTheSize()
{
    QCOMPARE(ItemPurePic(120, 80, quarters(5)).boundingRect(), QRectF(0, 0, 119, 79));
}

void tst_ItemPurePic::pictureStandsInTheMiddle_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("place");
    QTest::newRow("even") << QSize(40, 20) << QRect(310, 215, 40, 20);
    QTest::newRow("odd sizes are halved downward") << QSize(41, 21) << QRect(310, 215, 41, 21);
    QTest::newRow("one dot") << QSize(1, 1) << QRect(330, 225, 1, 1);
    QTest::newRow("the whole view") << QSize(660, 450) << QRect(0, 0, 660, 450);
}

void tst_ItemPurePic::pictureStandsInTheMiddle()
{
    QFETCH(const QSize, size);
    QFETCH(const QRect, place);
    QPixmap red(8, 8);
    red.fill(Qt::red);
    ItemPurePic item(size.width(), size.height(), red);
    Picture expected(660, 450);
    expected.fill(place.x(), place.y(), place.width(), place.height(), Qt::red);
    QCOMPARE(Picture::ofItem(item, 660, 450).differenceFrom(expected), QString());
}

void tst_ItemPurePic::wholePictureIsStretchedToTheSize()
{
    ItemPurePic item(40, 20, quarters(4));
    Picture expected(660, 450);
    expected.fill(310, 215, 20, 10, Qt::red);
    expected.fill(330, 215, 20, 10, Qt::green);
    expected.fill(310, 225, 20, 10, Qt::blue);
    expected.fill(330, 225, 20, 10, Qt::cyan);
    QCOMPARE(Picture::ofItem(item, 660, 450).differenceFrom(expected), QString());
}

void tst_ItemPurePic::itemPositionDoesNotMoveThePicture()
{
    ItemPurePic item(40, 20, quarters(20));
    const Picture atOrigin = Picture::ofItem(item, 660, 450);
    item.setPos(100, 50);
    QCOMPARE(Picture::ofItem(item, 660, 450).differenceFrom(atOrigin), QString());
}

QTEST_MAIN(tst_ItemPurePic)
#include "tst_itempurepic.moc"
