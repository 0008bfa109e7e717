#include "fpaxsteps.h"

#include <QMap>
#include <QTest>

/// Fields of a template on paper: each test places a few and looks at the text and the picture of a receipt.
class TestEmulatorLayout : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void fontsHaveTheirSizes_data();
    void fontsHaveTheirSizes();
    void leftmostFieldDecidesOnTheLine();
    void doubleWidthTakesTwoColumns();
    void inkStaysInTheCellsOfTheField();
    void alignmentInsideTheField_data();
    void alignmentInsideTheField();
    void loneFieldIsAlignedOnTheTape_data();
    void loneFieldIsAlignedOnTheTape();
    void fieldBesideOthersKeepsItsCell();
    void longTextGoesOnBelowOrIsCut_data();
    void longTextGoesOnBelowOrIsCut();
    void expandedFieldReachesTheNextOne();
    void numbersFollowTheirFormat_data();
    void numbersFollowTheirFormat();
    void wholeQuantityFollowsItsFormat_data();
    void wholeQuantityFollowsItsFormat();
    void maskingAndZeroFill_data();
    void maskingAndZeroFill();
    void zeroDropsItsLine();
    void lineWithoutDataIsLeftOut();
    void linesWithoutFieldsAreBlank();
    void characterBehindTheField();
    void positionsRepeatTheirBlock();
    void textEndsAtTheEdgeOfTheTape();

private:
    /// Parameters of one field by their numbers; those not named have the values of an ordinary text.
    using Params = QMap<int, int>;
    /// The template holds just these fields, then a receipt with one position is printed.
    void print(const QMap<int, Params>& fields);
    QStringList lines() const { return m_folder->text("receipt"); }
    QImage picture() const { return m_folder->picture("receipt"); }

    std::unique_ptr<FpaxLibrary> m_fpax;
    std::unique_ptr<PaperFolder> m_folder;
};

namespace {

constexpr int kBlock = 1;
constexpr int kFont = 2;
constexpr int kDoubleWidth = 3;
constexpr int kDoubleHeight = 4;
constexpr int kLine = 7;
constexpr int kX = 8;
constexpr int kSize = 9;
constexpr int kDropIfZero = 10;
constexpr int kPressRight = 11;
constexpr int kExpand = 12;
constexpr int kCut = 13;
constexpr int kMask = 14;
constexpr int kFormat = 15;
constexpr int kAlign = 17;
constexpr int kTapeAlign = 18;
constexpr int kTail = 19;

} // namespace

void TestEmulatorLayout::init()
{
    m_fpax = std::make_unique<FpaxLibrary>();
    m_folder = std::make_unique<PaperFolder>(*m_fpax);
    m_fpax->set({{"lineLength", 32}, {"table21", QJsonArray{"abcdef", "12345678"}}});
}

void TestEmulatorLayout::cleanup()
{
    m_fpax.reset();
    m_folder.reset();
}

void TestEmulatorLayout::print(const QMap<int, Params>& fields)
{
    QJsonArray rows;
    for (int key = 1; key <= 160; ++key) {
        QByteArray params(19, '\0');
        if (fields.contains(key)) {
            const Params ordinary{{kFont, 1}, {kLine, 1}, {kAlign, 1}, {kTapeAlign, 1}, {kTail, 32}};
            for (auto it = ordinary.begin(); it != ordinary.end(); ++it)
                params[it.key() - 1] = static_cast<char>(it.value());
            const Params given = fields[key];
            for (auto it = given.begin(); it != given.end(); ++it)
                params[it.key() - 1] = static_cast<char>(it.value());
        }
        rows.append(QString::fromLatin1(params.toHex()));
    }
    m_fpax->set({{"table20", QJsonObject{{"1", QJsonObject{{"params", rows}}}}}});
    IFpax* driver = connected(*m_fpax);
    QCOMPARE(openReceipt(driver), 0);
    driver->setPositionSum(12.3);
    QCOMPARE(sell(driver, "name", 12.3), 0);
    QCOMPARE(pay(driver, 0, 12.3), 0);
    QCOMPARE(driver->closeCheck(), 0);
}

void TestEmulatorLayout::fontsHaveTheirSizes_data()
{
    QTest::addColumn<int>("font");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("0") << 0 << 12 << 20;
    QTest::newRow("1") << 1 << 12 << 24;
    QTest::newRow("2") << 2 << 12 << 20;
    QTest::newRow("3") << 3 << 12 << 16;
    QTest::newRow("4") << 4 << 12 << 10;
    QTest::newRow("5") << 5 << 12 << 10;
    QTest::newRow("6") << 6 << 10 << 14;
    QTest::newRow("7") << 7 << 9 << 14;
}

void TestEmulatorLayout::fontsHaveTheirSizes()
{
    QFETCH(int, font);
    QFETCH(int, width);
    QFETCH(int, height);
    print({{2, {{kFont, font}, {kSize, 6}, {kX, 20}}}});
    const QImage image = picture();
    QCOMPARE(image.height(), height);
    // The first dark column lies within the first cell of the field.
    int left = 0;
    const auto isDark = [&image, height](int x) {
        for (int y = 0; y < height; ++y)
            if (qGray(image.pixel(x, y)) < 200)
                return true;
        return false;
    };
    while (left < image.width() && !isDark(left))
        ++left;
    QVERIFY(left >= 20 * width);
    QVERIFY(left < 21 * width);
}

void TestEmulatorLayout::leftmostFieldDecidesOnTheLine()
{
    print({{2, {{kX, 10}, {kSize, 6}, {kFont, 4}}},
           {3, {{kX, 0}, {kSize, 8}, {kFont, 3}, {kDoubleHeight, 1}}}});
    QCOMPARE(picture().height(), 32);
    QCOMPARE(lines(), QStringList{"12345678  abcdef"});
}

void TestEmulatorLayout::doubleWidthTakesTwoColumns()
{
    print({{2, {{kX, 2}, {kSize, 6}, {kDoubleWidth, 1}, {kDoubleHeight, 1}}}});
    QCOMPARE(lines(), QStringList{"    a b c d e f"});
    QCOMPARE(picture().height(), 48);
}

void TestEmulatorLayout::inkStaysInTheCellsOfTheField()
{
    print({{2, {{kX, 5}, {kSize, 6}, {kLine, 2}}}});
    const QImage image = picture();
    QCOMPARE(image.height(), 15 + 24);
    int inside = 0;
    int outside = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const bool dark = qGray(image.pixel(x, y)) < 200;
            const bool field = x >= 5 * 12 && x < 11 * 12 && y >= 15;
            inside += dark && field ? 1 : 0;
            outside += dark && !field ? 1 : 0;
        }
    QVERIFY(inside > 100);
    QCOMPARE(outside, 0);
}

void TestEmulatorLayout::alignmentInsideTheField_data()
{
    QTest::addColumn<int>("align");
    QTest::addColumn<int>("pressRight");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << 0 << 0 << "  abcdef";
    QTest::newRow("left") << 1 << 0 << "  abcdef";
    QTest::newRow("centre") << 2 << 0 << "    abcdef";
    QTest::newRow("right") << 3 << 0 << "      abcdef";
    QTest::newRow("pressed right") << 1 << 1 << "      abcdef";
}

void TestEmulatorLayout::alignmentInsideTheField()
{
    QFETCH(int, align);
    QFETCH(int, pressRight);
    QFETCH(QString, expected);
    print({{2, {{kX, 2}, {kSize, 10}, {kAlign, align}, {kPressRight, pressRight}}}});
    QCOMPARE(lines(), QStringList{expected});
}

void TestEmulatorLayout::loneFieldIsAlignedOnTheTape_data()
{
    QTest::addColumn<int>("align");
    QTest::addColumn<int>("blanks");
    QTest::newRow("none") << 0 << 4;
    QTest::newRow("left") << 1 << 4;
    QTest::newRow("centre") << 2 << 13;
    QTest::newRow("right") << 3 << 26;
}

void TestEmulatorLayout::loneFieldIsAlignedOnTheTape()
{
    QFETCH(int, align);
    QFETCH(int, blanks);
    print({{2, {{kX, 4}, {kSize, 6}, {kTapeAlign, align}}}});
    QCOMPARE(lines(), QStringList{QString(blanks, ' ') + "abcdef"});
}

void TestEmulatorLayout::fieldBesideOthersKeepsItsCell()
{
    print({{2, {{kX, 0}, {kSize, 6}, {kTapeAlign, 3}}}, {3, {{kX, 8}, {kSize, 8}, {kTapeAlign, 3}}}});
    QCOMPARE(lines(), QStringList{"abcdef  12345678"});
}

void TestEmulatorLayout::longTextGoesOnBelowOrIsCut_data()
{
    QTest::addColumn<int>("cut");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("goes on") << 0 << QStringList{" 123", " 456", " 78"};
    QTest::newRow("cut") << 1 << QStringList{" 123"};
}

void TestEmulatorLayout::longTextGoesOnBelowOrIsCut()
{
    QFETCH(int, cut);
    QFETCH(QStringList, expected);
    print({{3, {{kX, 1}, {kSize, 3}, {kCut, cut}}}});
    QCOMPARE(lines(), expected);
    QCOMPARE(picture().height(), 24 * expected.size());
}

void TestEmulatorLayout::expandedFieldReachesTheNextOne()
{
    print({{2, {{kX, 10}, {kSize, 6}}}, {3, {{kX, 1}, {kSize, 3}, {kExpand, 1}}}});
    QCOMPARE(lines(), QStringList{" 12345678 abcdef"});
}

void TestEmulatorLayout::numbersFollowTheirFormat_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<QString>("expected");
    QTest::newRow("all digits") << 0 << "12.30";
    QTest::newRow("one decimal") << 1 << "12.3";
    QTest::newRow("no zeros behind") << 2 << "12.3";
    QTest::newRow("pieces") << 3 << "12";
}

void TestEmulatorLayout::numbersFollowTheirFormat()
{
    QFETCH(int, format);
    QFETCH(QString, expected);
    print({{19, {{kBlock, 1}, {kSize, 8}, {kFormat, format}}}});
    QCOMPARE(lines(), QStringList{expected});
}

void TestEmulatorLayout::wholeQuantityFollowsItsFormat_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<QString>("expected");
    QTest::newRow("all digits") << 0 << "1.000";
    QTest::newRow("one decimal") << 1 << "1.0";
    QTest::newRow("no zeros behind, and no point") << 2 << "1";
    QTest::newRow("pieces") << 3 << "1";
}

void TestEmulatorLayout::wholeQuantityFollowsItsFormat()
{
    QFETCH(int, format);
    QFETCH(QString, expected);
    print({{16, {{kBlock, 1}, {kSize, 8}, {kFormat, format}}}});
    QCOMPARE(lines(), QStringList{expected});
}

void TestEmulatorLayout::maskingAndZeroFill_data()
{
    QTest::addColumn<int>("mask");
    QTest::addColumn<QString>("expected");
    QTest::newRow("off") << 0 << "12345678";
    QTest::newRow("masked") << 1 << "****5678";
    QTest::newRow("filled with zeros") << 2 << "0012345678";
}

void TestEmulatorLayout::maskingAndZeroFill()
{
    QFETCH(int, mask);
    QFETCH(QString, expected);
    print({{3, {{kSize, 10}, {kMask, mask}}}});
    QCOMPARE(lines(), QStringList{expected});
}

void TestEmulatorLayout::zeroDropsItsLine()
{
    // No change and nothing by card.
    print({{2, {{kLine, 1}, {kSize, 6}}},
           {77, {{kLine, 1}, {kX, 8}, {kSize, 8}, {kDropIfZero, 1}}},
           {131, {{kLine, 2}, {kSize, 14}}},
           {133, {{kLine, 2}, {kX, 16}, {kSize, 8}, {kDropIfZero, 0}}},
           {130, {{kLine, 3}, {kSize, 8}, {kDropIfZero, 1}}}});
    QCOMPARE(lines(), (QStringList{"ЭЛЕКТРОННЫМИ    0.00", "12.30"}));
}

void TestEmulatorLayout::lineWithoutDataIsLeftOut()
{
    print({{6, {{kLine, 1}, {kSize, 6}}}, {2, {{kLine, 2}, {kSize, 6}}}, {104, {{kLine, 3}, {kSize, 6}}}});
    QCOMPARE(lines(), QStringList{"abcdef"});
}

void TestEmulatorLayout::linesWithoutFieldsAreBlank()
{
    print({{2, {{kLine, 3}, {kSize, 6}}}});
    QCOMPARE(lines(), (QStringList{"", "", "abcdef"}));
    QCOMPARE(picture().height(), 15 + 15 + 24);
}

void TestEmulatorLayout::characterBehindTheField()
{
    print({{2, {{kSize, 8}, {kTail, '!'}}}});
    QCOMPARE(lines(), QStringList{"abcdef  !"});
}

void TestEmulatorLayout::positionsRepeatTheirBlock()
{
    QJsonArray rows;
    for (int key = 1; key <= 12; ++key)
        rows.append(key == 12 ? "01010000000001000A00000000000001010120" : "");
    m_fpax->set({{"table20", QJsonObject{{"1", QJsonObject{{"params", rows}}}}}});
    IFpax* driver = connected(*m_fpax);
    QCOMPARE(openReceipt(driver), 0);
    for (const char* name : {"one", "two", "three"})
        QCOMPARE(sell(driver, name, 1), 0);
    QCOMPARE(pay(driver, 0, 3), 0);
    QCOMPARE(driver->closeCheck(), 0);
    QCOMPARE(lines(), (QStringList{"one", "two", "three"}));
}

void TestEmulatorLayout::textEndsAtTheEdgeOfTheTape()
{
    print({{3, {{kX, 28}, {kSize, 8}, {kCut, 1}}}});
    QCOMPARE(lines(), QStringList{QString(28, ' ') + "1234"});
    QCOMPARE(picture().width(), 384);
}

QTEST_MAIN(TestEmulatorLayout)
#include "tst_emulator_layout.moc"
