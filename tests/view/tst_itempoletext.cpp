#include "view/itempole.h"

#include "fieldpicture.h"

#include <QTest>

namespace {

const QString kText = QStringLiteral("О.Сумма");

/// What a scene shows of one field.
Picture shown(int dx, int height, int size, const QString& text, bool mono, bool selected = false)
{
    QGraphicsScene scene;
    auto* const field = new ItemPole(1, dx, height, size, text);
    field->poleMono = mono;
    scene.addItem(field);
    field->setSelected(selected);
    return Picture::ofScene(scene, 700, height);
}

/// Adds `text` with one character to a cell.
void writeCells(Picture& picture, int dx, int y, const QString& text)
{
    for (int i = 0; i < text.size(); ++i)
        writeShadowed(picture, dx * i + 1, y, text.mid(i, 1), Qt::black);
}

} // namespace

class tst_ItemPoleText : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void fieldOfOneCharacterShowsOne_data();
    void fieldOfOneCharacterShowsOne();
    void wholeTextIsGreenWithADarkBlueShadow();
    void wholeTextIsNotCutToTheSizeOfTheField();
    void wholeTextIsCutByTheShape();
    void oneCharacterToACellIsGreenWithABlackShadow();
    void oneCharacterToACellStartsOneUnitIntoItsCell();
    void oneCharacterToACellIsCutByTheShape();
    void characterAfterTheLastCellReachesBackIntoTheField();
    void oneCharacterToACellOfALongFieldFillsItsShape();
    void baselineFollowsHalfTheHeight_data();
    void baselineFollowsHalfTheHeight();
    void selectionLeavesTheColoursOfTheText();
    void textIsDrawnInTheFontOfThePainter();
    void textOfAMegabytePaints_data();
    void textOfAMegabytePaints();
};

void tst_ItemPoleText::initTestCase()
{
    useFontWithoutHalftones();
}

void tst_ItemPoleText::fieldOfOneCharacterShowsOne_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("class with a dot") << 1 << QStringLiteral("О.Сумма") << QStringLiteral("О.");
    QTest::newRow("class and nothing else") << 1 << QStringLiteral("О.") << QStringLiteral("О.");
    QTest::newRow("two letters") << 1 << QStringLiteral("Итог") << QStringLiteral("И");
    QTest::newRow("one letter") << 1 << QStringLiteral("Ж") << QStringLiteral("Ж");
    QTest::newRow("dot in the third place") << 1 << QStringLiteral("ОЖ.") << QStringLiteral("О");
    QTest::newRow("dot alone") << 1 << QStringLiteral(".") << QStringLiteral(".");
    QTest::newRow("dot first") << 1 << QStringLiteral(".Ж") << QStringLiteral(".");
    QTest::newRow("two dots") << 1 << QStringLiteral("..Ж") << QStringLiteral("..");
    QTest::newRow("comma") << 1 << QStringLiteral("О,Ж") << QStringLiteral("О");
    QTest::newRow("size 0") << 0 << QStringLiteral("Итог") << QStringLiteral("И");
}

void tst_ItemPoleText::fieldOfOneCharacterShowsOne()
{
    QFETCH(const int, size);
    QFETCH(const QString, text);
    QFETCH(const QString, expected);
    for (const bool mono : {false, true}) {
        ItemPole field(1, 12, 20, size, text);
        field.poleMono = mono;
        Picture picture = bareField(12, 20, size);
        writeShadowed(picture, 3, 13, expected, Qt::darkBlue);
        QVERIFY(picture.count(Qt::green) > 0);
        QCOMPARE(Picture::ofItem(field, 700, 20).differenceFrom(picture), QString());
    }
}

void tst_ItemPoleText::wholeTextIsGreenWithADarkBlueShadow()
{
    ItemPole field(1, 12, 20, 10, kText);
    const Picture picture = Picture::ofItem(field, 700, 20);
    QVERIFY(picture.count(Qt::green) > 0);
    QVERIFY(picture.count(Qt::darkBlue) > 0);
    QCOMPARE(picture.count(Qt::black), 0);
    Picture expected = bareField(12, 20, 10);
    writeShadowed(expected, 3, 13, kText, Qt::darkBlue);
    QCOMPARE(picture.differenceFrom(expected), QString());
}

void tst_ItemPoleText::wholeTextIsNotCutToTheSizeOfTheField()
{
    ItemPole field(1, 12, 20, 2, kText);
    Picture expected = bareField(12, 20, 2);
    writeShadowed(expected, 3, 13, kText, Qt::darkBlue);
    QVERIFY(expected.count(Qt::green, QRect(24, 0, 100, 20)) > 0);
    QCOMPARE(Picture::ofItem(field, 700, 20).differenceFrom(expected), QString());
}

void tst_ItemPoleText::wholeTextIsCutByTheShape()
{
    // Lower than the text and shorter, too.
    Picture expected = bareField(12, 6, 2);
    writeShadowed(expected, 3, 6, kText, Qt::darkBlue);
    expected.clip(QRect(0, 0, 24, 6));
    QVERIFY(expected.count(Qt::green) > 0);
    QCOMPARE(shown(12, 6, 2, kText, false).differenceFrom(expected), QString());
}

void tst_ItemPoleText::oneCharacterToACellIsGreenWithABlackShadow()
{
    ItemPole field(1, 12, 20, 10, kText);
    field.poleMono = true;
    const Picture picture = Picture::ofItem(field, 700, 20);
    QVERIFY(picture.count(Qt::green) > 0);
    QVERIFY(picture.count(Qt::black) > 0);
    QCOMPARE(picture.count(Qt::darkBlue), 0);
}

void tst_ItemPoleText::oneCharacterToACellStartsOneUnitIntoItsCell()
{
    for (const int dx : {9, 10, 12, 24}) {
        ItemPole field(1, dx, 20, 10, kText);
        field.poleMono = true;
        Picture expected = bareField(dx, 20, 10);
        writeCells(expected, dx, 13, kText);
        QVERIFY(expected.count(Qt::green, QRect(6 * dx, 0, dx, 20)) > 0);
        QCOMPARE(Picture::ofItem(field, 700, 20).differenceFrom(expected), QString());
    }
}

void tst_ItemPoleText::oneCharacterToACellIsCutByTheShape()
{
    Picture expected = bareField(12, 20, 3);
    writeCells(expected, 12, 13, kText);
    expected.clip(QRect(0, 0, 36, 20));
    QVERIFY(expected.count(Qt::green, QRect(24, 0, 12, 20)) > 0);
    QCOMPARE(shown(12, 20, 3, kText, true).differenceFrom(expected), QString());
}

void tst_ItemPoleText::characterAfterTheLastCellReachesBackIntoTheField()
{
    // The accent stands left of where it starts: only the shape cuts a text, not the size of the field.
    const QString text = QStringLiteral("АА") + QChar(0x0301);
    Picture withAccent = bareField(12, 20, 2);
    writeCells(withAccent, 12, 13, text);
    withAccent.clip(QRect(0, 0, 24, 20));
    Picture without = bareField(12, 20, 2);
    writeCells(without, 12, 13, text.left(2));
    without.clip(QRect(0, 0, 24, 20));
    if (withAccent.differenceFrom(without).isEmpty())
        QSKIP("The accents of this font do not reach to the left");
    QCOMPARE(shown(12, 20, 2, text, true).differenceFrom(withAccent), QString());
}

void tst_ItemPoleText::oneCharacterToACellOfALongFieldFillsItsShape()
{
    const QString text(100, QChar(u'Ж'));
    Picture expected = bareField(12, 20, 60);
    writeCells(expected, 12, 13, text.left(60));
    expected.clip(QRect(0, 0, 633, 20));
    QVERIFY(expected.count(Qt::green, QRect(625, 0, 8, 20)) > 0);
    QCOMPARE(shown(12, 20, 60, text, true).differenceFrom(expected), QString());
}

void tst_ItemPoleText::baselineFollowsHalfTheHeight_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("baseline");
    QTest::newRow("10") << 10 << 8;
    QTest::newRow("14") << 14 << 10;
    QTest::newRow("15") << 15 << 10;
    QTest::newRow("21") << 21 << 13;
    QTest::newRow("48") << 48 << 27;
}

void tst_ItemPoleText::baselineFollowsHalfTheHeight()
{
    QFETCH(const int, height);
    QFETCH(const int, baseline);

    ItemPole one(1, 12, height, 1, kText);
    Picture expected = bareField(12, height, 1);
    writeShadowed(expected, 3, baseline, kText.left(2), Qt::darkBlue);
    QCOMPARE(Picture::ofItem(one, 700, height).differenceFrom(expected), QString());

    ItemPole whole(1, 12, height, 10, kText);
    expected = bareField(12, height, 10);
    writeShadowed(expected, 3, baseline, kText, Qt::darkBlue);
    QCOMPARE(Picture::ofItem(whole, 700, height).differenceFrom(expected), QString());

    whole.poleMono = true;
    expected = bareField(12, height, 10);
    writeCells(expected, 12, baseline, kText);
    QCOMPARE(Picture::ofItem(whole, 700, height).differenceFrom(expected), QString());
}

void tst_ItemPoleText::selectionLeavesTheColoursOfTheText()
{
    Picture expected = bareField(12, 24, 10, Qt::yellow);
    writeShadowed(expected, 3, 15, kText, Qt::darkBlue);
    drawFrame(expected, 119, 24);
    QCOMPARE(shown(12, 24, 10, kText, false, true).differenceFrom(expected), QString());

    expected = bareField(12, 24, 10, Qt::yellow);
    writeCells(expected, 12, 15, kText);
    drawFrame(expected, 119, 24);
    QCOMPARE(shown(12, 24, 10, kText, true, true).differenceFrom(expected), QString());
}

void tst_ItemPoleText::textIsDrawnInTheFontOfThePainter()
{
    QFont large;
    large.setPixelSize(17);
    ItemPole field(1, 12, 24, 10, kText);
    Picture expected = bareField(12, 24, 10);
    writeShadowed(expected, 3, 15, kText, Qt::darkBlue, large);
    QCOMPARE(Picture::ofItem(field, 700, 24, large).differenceFrom(expected), QString());
}

void tst_ItemPoleText::textOfAMegabytePaints_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("mono");
    QTest::newRow("one character") << 1 << false;
    QTest::newRow("a few characters") << 10 << false;
    QTest::newRow("the longest field") << 255 << false;
    QTest::newRow("one character to a cell") << 10 << true;
    QTest::newRow("one character to a cell, the longest field") << 255 << true;
}

void tst_ItemPoleText::textOfAMegabytePaints()
{
    QFETCH(const int, size);
    QFETCH(const bool, mono);
    const QString text = QStringLiteral("О.Сумма чека ").repeated(1024 * 1024 / 13 + 1);
    const Picture expected = shown(12, 20, size, text.left(700), mono);
    QVERIFY(expected.count(Qt::green) > 0);
    QCOMPARE(shown(12, 20, size, text, mono).differenceFrom(expected), QString());
}

QTEST_MAIN(tst_ItemPoleText)
#include "tst_itempoletext.moc"
