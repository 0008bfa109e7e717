#include "view/itempole.h"

#include "fieldpicture.h"

#include <QTest>

class tst_ItemPole : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void typeFlagsAndData();
    void startsWithoutOneCharacterToACell();
    void boundingRectIsAtMost633Wide_data();
    void boundingRectIsAtMost633Wide();
    void bodyIsGrayAndItsFirstCellDarkGray();
    void bodyLeavesTheBottomRowFree_data();
    void bodyLeavesTheBottomRowFree();
    void fieldTooLongToShowEndsInANotch();
    void notchIsHalfTheHeightRoundedDown_data();
    void notchIsHalfTheHeightRoundedDown();
    void fieldOfExactly633HasAPlainBody();
    void selectedFieldHasAYellowCellAndFrame();
    void selectionFrameOfALongFieldStandsAt632();
    void selectionFrameOfAFieldOf634StandsOutsideOfItsShape();
    void selectionFrameOfAFieldOf635StandsAt632();
    void frameLiesOverTheText();
    void deselectedFieldLosesCellAndFrame();
    void emptyTextDrawsNothing_data();
    void emptyTextDrawsNothing();
};

void tst_ItemPole::initTestCase()
{
    useFontWithoutHalftones();
}

void tst_ItemPole::typeFlagsAndData()
{
    const ItemPole field(42, 12, 20, 5, QString());
    QCOMPARE(field.type(), 65538);
    QCOMPARE(field.data(1), QVariant(42));
    QVERIFY(!field.data(2).isValid());
    QCOMPARE(field.flags(), QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable |
                                QGraphicsItem::ItemClipsToShape);
}

void tst_ItemPole::startsWithoutOneCharacterToACell()
{
    QVERIFY(!ItemPole(1, 12, 20, 5, QString()).poleMono);
}

void tst_ItemPole::boundingRectIsAtMost633Wide_data()
{
    QTest::addColumn<int>("dx");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("width");
    QTest::newRow("one character") << 12 << 1 << 12;
    QTest::newRow("five characters") << 12 << 5 << 60;
    QTest::newRow("52 characters") << 12 << 52 << 624;
    QTest::newRow("632") << 8 << 79 << 632;
    QTest::newRow("633") << 211 << 3 << 633;
    QTest::newRow("634") << 2 << 317 << 633;
    QTest::newRow("60 characters") << 12 << 60 << 633;
    QTest::newRow("255 characters of double width") << 24 << 255 << 633;
}

void tst_ItemPole::boundingRectIsAtMost633Wide()
{
    QFETCH(const int, dx);
    QFETCH(const int, size);
    QFETCH(const int, width);
    QCOMPARE(ItemPole(1, dx, 20, size, QString()).boundingRect(), QRectF(0, 0, width, 20));
}

void tst_ItemPole::bodyIsGrayAndItsFirstCellDarkGray()
{
    ItemPole field(1, 12, 20, 5, QString());
    const Picture picture = Picture::ofItem(field, 700, 20);
    QCOMPARE(picture.at(0, 0), QColor(Qt::darkGray));
    QCOMPARE(picture.at(11, 18), QColor(Qt::darkGray));
    QCOMPARE(picture.at(12, 0), QColor(Qt::gray));
    QCOMPARE(picture.at(59, 18), QColor(Qt::gray));
    QCOMPARE(picture.at(60, 10), QColor(Qt::white));
    QCOMPARE(picture.at(30, 19), QColor(Qt::white));
    QCOMPARE(picture.differenceFrom(bareField(12, 20, 5)), QString());
}

void tst_ItemPole::bodyLeavesTheBottomRowFree_data()
{
    QTest::addColumn<int>("height");
    for (const int height : {10, 14, 15, 16, 20, 24, 48})
        QTest::addRow("%d", height) << height;
}

void tst_ItemPole::bodyLeavesTheBottomRowFree()
{
    QFETCH(const int, height);
    ItemPole field(1, 9, height, 7, QString());
    const Picture picture = Picture::ofItem(field, 700, height);
    QCOMPARE(picture.at(40, height - 2), QColor(Qt::gray));
    QCOMPARE(picture.at(40, height - 1), QColor(Qt::white));
    QCOMPARE(picture.differenceFrom(bareField(9, height, 7)), QString());
}

void tst_ItemPole::fieldTooLongToShowEndsInANotch()
{
    ItemPole field(1, 12, 20, 60, QString());
    const Picture picture = Picture::ofItem(field, 700, 20);
    QCOMPARE(picture.at(630, 18), QColor(Qt::gray));
    QCOMPARE(picture.at(631, 9), QColor(Qt::gray));
    QCOMPARE(picture.at(632, 9), QColor(Qt::gray));
    QCOMPARE(picture.at(631, 10), QColor(Qt::white));
    QCOMPARE(picture.at(632, 10), QColor(Qt::white));
    QCOMPARE(picture.at(633, 0), QColor(Qt::white));
    QCOMPARE(picture.differenceFrom(bareField(12, 20, 60)), QString());
}

void tst_ItemPole::notchIsHalfTheHeightRoundedDown_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("rows");
    QTest::newRow("10") << 10 << 5;
    QTest::newRow("14") << 14 << 7;
    QTest::newRow("15") << 15 << 7;
    QTest::newRow("21") << 21 << 10;
    QTest::newRow("48") << 48 << 24;
}

void tst_ItemPole::notchIsHalfTheHeightRoundedDown()
{
    QFETCH(const int, height);
    QFETCH(const int, rows);
    ItemPole field(1, 12, height, 60, QString());
    const Picture picture = Picture::ofItem(field, 700, height);
    QCOMPARE(picture.count(Qt::gray, QRect(631, 0, 1, height)), rows);
    QCOMPARE(picture.count(Qt::gray, QRect(632, 0, 1, height)), rows);
    QCOMPARE(picture.at(632, rows - 1), QColor(Qt::gray));
}

void tst_ItemPole::fieldOfExactly633HasAPlainBody()
{
    ItemPole field(1, 211, 20, 3, QString());
    const Picture picture = Picture::ofItem(field, 700, 20);
    QCOMPARE(picture.at(631, 18), QColor(Qt::gray));
    QCOMPARE(picture.at(632, 18), QColor(Qt::gray));
    QCOMPARE(picture.at(633, 0), QColor(Qt::white));
    QCOMPARE(picture.differenceFrom(bareField(211, 20, 3)), QString());
}

void tst_ItemPole::selectedFieldHasAYellowCellAndFrame()
{
    ItemPole field(1, 12, 20, 5, QString());
    field.setSelected(true);
    const Picture picture = Picture::ofItem(field, 700, 20);
    QCOMPARE(picture.at(5, 10), QColor(Qt::yellow));
    QCOMPARE(picture.at(30, 0), QColor(Qt::yellow));
    QCOMPARE(picture.at(30, 19), QColor(Qt::yellow));
    QCOMPARE(picture.at(59, 10), QColor(Qt::yellow));
    QCOMPARE(picture.at(58, 10), QColor(Qt::gray));
    QCOMPARE(picture.at(60, 0), QColor(Qt::white));
    Picture expected = bareField(12, 20, 5, Qt::yellow);
    drawFrame(expected, 59, 20);
    QCOMPARE(picture.differenceFrom(expected), QString());
}

void tst_ItemPole::selectionFrameOfALongFieldStandsAt632()
{
    ItemPole field(1, 12, 20, 60, QString());
    field.setSelected(true);
    const Picture picture = Picture::ofItem(field, 700, 20);
    QCOMPARE(picture.count(Qt::yellow, QRect(632, 0, 1, 20)), 20);
    QCOMPARE(picture.count(Qt::yellow, QRect(633, 0, 40, 20)), 0);
    Picture expected = bareField(12, 20, 60, Qt::yellow);
    drawFrame(expected, 632, 20);
    QCOMPARE(picture.differenceFrom(expected), QString());
}

void tst_ItemPole::selectionFrameOfAFieldOf634StandsOutsideOfItsShape()
{
    auto* const field = new ItemPole(1, 2, 20, 317, QString());
    QGraphicsScene scene;
    scene.addItem(field);
    field->setSelected(true);
    Picture expected = bareField(2, 20, 317, Qt::yellow);
    drawFrame(expected, 633, 20);
    QCOMPARE(Picture::ofItem(*field, 700, 20).differenceFrom(expected), QString());

    expected.clip(QRect(0, 0, 633, 20));
    QCOMPARE(Picture::ofScene(scene, 700, 20).differenceFrom(expected), QString());
}

void tst_ItemPole::selectionFrameOfAFieldOf635StandsAt632()
{
    ItemPole field(1, 5, 20, 127, QString());
    field.setSelected(true);
    Picture expected = bareField(5, 20, 127, Qt::yellow);
    drawFrame(expected, 632, 20);
    QCOMPARE(Picture::ofItem(field, 700, 20).differenceFrom(expected), QString());
}

void tst_ItemPole::frameLiesOverTheText()
{
    // A line so low that the text reaches over its edges.
    const QString text = QStringLiteral("ЙЩЙЩЙЩ");
    ItemPole field(1, 12, 6, 8, text);
    Picture expected = bareField(12, 6, 8);
    writeShadowed(expected, 3, 6, text, Qt::darkBlue);
    QVERIFY(expected.count(Qt::green, QRect(3, 0, 90, 1)) > 0);
    QCOMPARE(Picture::ofItem(field, 700, 6).differenceFrom(expected), QString());

    field.setSelected(true);
    expected = bareField(12, 6, 8, Qt::yellow);
    writeShadowed(expected, 3, 6, text, Qt::darkBlue);
    drawFrame(expected, 95, 6);
    QCOMPARE(Picture::ofItem(field, 700, 6).differenceFrom(expected), QString());
}

void tst_ItemPole::deselectedFieldLosesCellAndFrame()
{
    ItemPole field(1, 12, 20, 5, QString());
    field.setSelected(true);
    QVERIFY(Picture::ofItem(field, 700, 20).count(Qt::yellow) > 0);
    field.setSelected(false);
    QCOMPARE(Picture::ofItem(field, 700, 20).differenceFrom(bareField(12, 20, 5)), QString());
}

void tst_ItemPole::emptyTextDrawsNothing_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("mono");
    QTest::newRow("one character") << 1 << false;
    QTest::newRow("many characters") << 10 << false;
    QTest::newRow("one character to a cell") << 10 << true;
    QTest::newRow("one character to a cell, one cell") << 1 << true;
}

void tst_ItemPole::emptyTextDrawsNothing()
{
    QFETCH(const int, size);
    QFETCH(const bool, mono);
    for (const QString& text : {QString(), QString::fromLatin1("")}) {
        ItemPole field(1, 12, 20, size, text);
        field.poleMono = mono;
        QCOMPARE(Picture::ofItem(field, 700, 20).differenceFrom(bareField(12, 20, size)), QString());

        field.setSelected(true);
        Picture expected = bareField(12, 20, size, Qt::yellow);
        drawFrame(expected, 12 * size - 1, 20);
        QCOMPARE(Picture::ofItem(field, 700, 20).differenceFrom(expected), QString());
    }
}

QTEST_MAIN(tst_ItemPole)
#include "tst_itempole.moc"
