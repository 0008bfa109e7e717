#include "view/itemblockheader.h"

#include "picture.h"

#include <QTest>

namespace {

const QString kTitle = QStringLiteral("Шапка чека");

/// The heading of 384 x 21 with `title`, its inside in `inside`.
Picture expectedHeading(Qt::GlobalColor inside, const QString& title)
{
    Picture picture(384, 21);
    picture.outlined(0, 0, 383, 20, Qt::darkBlue, inside);
    picture.write(6, 17, title, Qt::black);
    picture.write(5, 16, title, Qt::yellow);
    return picture;
}

} // namespace

class tst_ItemBlockHeader : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void typeFlagsAndData();
    void boundingRectIsOneLessThanTheSize();
    void lightGrayBodyInADarkBlueFrame();
    void selectedBodyIsYellow();
    void titleIsYellowWithABlackShadow();
    void titleOfASelectedHeadingKeepsItsShadow();
    void titleStandsOnTheBottomOfAnyHeight();
    void titleIsDrawnInTheFontOfThePainter();
    void headingInASceneLooksTheSame();
};

void tst_ItemBlockHeader::initTestCase()
{
    useFontWithoutHalftones();
}

void tst_ItemBlockHeader::typeFlagsAndData()
{
    const ItemBlockHeader heading(384, 21, kTitle);
    QCOMPARE(heading.type(), 65537);
    QCOMPARE(heading.flags(), QGraphicsItem::GraphicsItemFlags(QGraphicsItem::ItemIsSelectable));
    QVERIFY2(!heading.data(1).isValid(), "the block number is set by whoever makes the heading");
}

void tst_ItemBlockHeader::boundingRectIsOneLessThanTheSize()
{
    QCOMPARE(ItemBlockHeader(576, 21, kTitle).boundingRect(), QRectF(0, 0, 575, 20));
}

void tst_ItemBlockHeader::lightGrayBodyInADarkBlueFrame()
{
    ItemBlockHeader heading(384, 21, QString());
    const Picture picture = Picture::ofItem(heading, 384, 21);
    QCOMPARE(picture.at(0, 0), QColor(Qt::darkBlue));
    QCOMPARE(picture.at(383, 0), QColor(Qt::darkBlue));
    QCOMPARE(picture.at(383, 20), QColor(Qt::darkBlue));
    QCOMPARE(picture.at(0, 10), QColor(Qt::darkBlue));
    QCOMPARE(picture.at(1, 1), QColor(Qt::lightGray));
    QCOMPARE(picture.at(382, 19), QColor(Qt::lightGray));
    QCOMPARE(picture.at(384, 10), QColor(Qt::white));
    QCOMPARE(picture.at(10, 21), QColor(Qt::white));
    QCOMPARE(picture.differenceFrom(expectedHeading(Qt::lightGray, QString())), QString());
}

void tst_ItemBlockHeader::selectedBodyIsYellow()
{
    ItemBlockHeader heading(384, 21, QString());
    heading.setSelected(true);
    const Picture picture = Picture::ofItem(heading, 384, 21);
    QCOMPARE(picture.at(200, 10), QColor(Qt::yellow));
    QCOMPARE(picture.at(0, 0), QColor(Qt::darkBlue));
    QCOMPARE(picture.count(Qt::lightGray), 0);

    heading.setSelected(false);
    QCOMPARE(Picture::ofItem(heading, 384, 21).at(200, 10), QColor(Qt::lightGray));
}

void tst_ItemBlockHeader::titleIsYellowWithABlackShadow()
{
    ItemBlockHeader heading(384, 21, kTitle);
    const Picture picture = Picture::ofItem(heading, 384, 21);
    QVERIFY(picture.count(Qt::yellow, QRect(5, 1, 120, 18)) > 0);
    QVERIFY(picture.count(Qt::black, QRect(6, 2, 120, 18)) > 0);
    QCOMPARE(picture.differenceFrom(expectedHeading(Qt::lightGray, kTitle)), QString());
}

void tst_ItemBlockHeader::titleOfASelectedHeadingKeepsItsShadow()
{
    ItemBlockHeader heading(384, 21, kTitle);
    heading.setSelected(true);
    const Picture picture = Picture::ofItem(heading, 384, 21);
    QVERIFY(picture.count(Qt::black, QRect(6, 2, 120, 18)) > 0);
    QCOMPARE(picture.differenceFrom(expectedHeading(Qt::yellow, kTitle)), QString());
}

void tst_ItemBlockHeader::titleStandsOnTheBottomOfAnyHeight()
{
    ItemBlockHeader heading(100, 60, kTitle);
    Picture expected(100, 60);
    expected.outlined(0, 0, 99, 59, Qt::darkBlue, Qt::lightGray);
    expected.write(6, 56, kTitle, Qt::black);
    expected.write(5, 55, kTitle, Qt::yellow);
    QCOMPARE(Picture::ofItem(heading, 100, 60).differenceFrom(expected), QString());
}

void tst_ItemBlockHeader::titleIsDrawnInTheFontOfThePainter()
{
    QFont large;
    large.setPixelSize(18);
    ItemBlockHeader heading(384, 21, kTitle);
    Picture expected(384, 21);
    expected.outlined(0, 0, 383, 20, Qt::darkBlue, Qt::lightGray);
    expected.write(6, 17, kTitle, Qt::black, large);
    expected.write(5, 16, kTitle, Qt::yellow, large);
    QCOMPARE(Picture::ofItem(heading, 384, 21, large).differenceFrom(expected), QString());
}

void tst_ItemBlockHeader::headingInASceneLooksTheSame()
{
    QGraphicsScene scene;
    scene.addItem(new ItemBlockHeader(384, 21, kTitle));
    QCOMPARE(Picture::ofScene(scene, 384, 21).differenceFrom(expectedHeading(Qt::lightGray, kTitle)),
             QString());
}

QTEST_MAIN(tst_ItemBlockHeader)
#include "tst_itemblockheader.moc"
