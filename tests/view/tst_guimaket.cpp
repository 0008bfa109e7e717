#include "tape.h"

#include <QTest>

#include <utility>

class tst_GUIMaket : public QObject
{
    Q_OBJECT

private slots:
    void startValues();
    void textTables();
    void switchesKeepWhatIsSet();
    void clearEmptiesTheBlocksAndNothingElse();
    void createBDBlocksReplacesTheBlocks();
    void createBDLinesReplacesBothLists();
    void heightOfABlockIsTheSumOfItsLines();
    void lineBaseOfABlock();
    void numberOfLinesIsTheGreaterOfListAndCount();
    void layoutIsCopiedByValue();
    void templateWithoutFieldsChangesNothing_data();
    void templateWithoutFieldsChangesNothing();
    void withoutATemplateThereIsNothingToDo();
    void keepingLinesBeforeTheFirstLayoutIsHarmless();
};

void tst_GUIMaket::startValues()
{
    const GUIMaket maket;
    QVERIFY(maket.blocks.isEmpty());
    QCOMPARE(maket.scale, 2);
    QCOMPARE(maket.getScale(), 2);
    QCOMPARE(maket.headerDX, 384);
    QCOMPARE(maket.blockCount, 10);
    QCOMPARE(maket.headerDY, 21);
    QCOMPARE(maket.emptyLineDY, 15);
    QCOMPARE(maket.getShablonLoaded(), false);
    QCOMPARE(maket.getBlockTitleEnabled(), false);
    QCOMPARE(maket.fontMonoWide, false);
    QCOMPARE(maket.pBD, nullptr);
}

void tst_GUIMaket::textTables()
{
    const GUIMaket maket;
    const QMap<int, QString> titles{{0, QStringLiteral("Шапка чека")},
                                    {1, QStringLiteral("Регистрация")},
                                    {2, QStringLiteral("Предытоговый")},
                                    {3, QStringLiteral("Итог")},
                                    {4, QStringLiteral("Налоги")},
                                    {5, QStringLiteral("Оплата")},
                                    {6, QStringLiteral("Подвал чека")},
                                    {7, QStringLiteral("Фискальный блок")},
                                    {8, QStringLiteral("Строка \"ЧЕК АННУЛИРОВАН\"")},
                                    {9, QStringLiteral("Сторно оплаты")}};
    QCOMPARE(maket.titles, titles);
    const QMap<int, QString> yesNo{{0, QStringLiteral("Нет")}, {1, QStringLiteral("Да")}};
    QCOMPARE(maket.yesNoNames, yesNo);
    const QMap<int, QString> align{
        {1, QStringLiteral("Слева")}, {2, QStringLiteral("По центру")}, {3, QStringLiteral("Справа")}};
    QCOMPARE(maket.alignTitles, align);
    const QMap<int, QString> format{{0, QStringLiteral("Не маскировать нули")},
                                    {1, QStringLiteral("Печать в формате 0.0")},
                                    {2, QStringLiteral("Образать незначащие нули")},
                                    {3, QStringLiteral("Печатать как штуки")}};
    QCOMPARE(maket.formatTitles, format);
}

void tst_GUIMaket::switchesKeepWhatIsSet()
{
    GUIMaket maket;
    for (const bool on : {true, false, true}) {
        maket.setShablonLoaded(on);
        QCOMPARE(maket.getShablonLoaded(), on);
        QCOMPARE(maket.shablonLoaded, on);
        maket.setBlockTitleEnabled(!on);
        QCOMPARE(maket.getBlockTitleEnabled(), !on);
        QCOMPARE(maket.blockTitleEnabled, !on);
        QCOMPARE(maket.getShablonLoaded(), on);
    }
    for (const int step : {0, 4, 1, 3, 2}) {
        maket.setScale(step);
        QCOMPARE(maket.getScale(), step);
        QCOMPARE(maket.scale, step);
    }
}

void tst_GUIMaket::clearEmptiesTheBlocksAndNothingElse()
{
    Tape tape;
    tape.place(1, 3);
    QCOMPARE(tape.maket.ReComputeBDBlocks(true), 0);
    tape.maket.setScale(4);
    tape.maket.setShablonLoaded(true);
    tape.maket.fontMonoWide = true;
    tape.maket.Clear();
    QVERIFY(tape.maket.blocks.isEmpty());
    QCOMPARE(tape.maket.getScale(), 4);
    QVERIFY(tape.maket.getShablonLoaded());
    QVERIFY(tape.maket.getBlockTitleEnabled());
    QVERIFY(tape.maket.fontMonoWide);
    QCOMPARE(tape.maket.pBD, &tape.bd);
    QCOMPARE(tape.maket.titles.size(), 10);
    QCOMPARE(tape.maket.headerDX, 384);
    QCOMPARE(tape.bd.items.size(), 1);
}

void tst_GUIMaket::createBDBlocksReplacesTheBlocks()
{
    GUIMaket maket;
    maket.CreateBDBlocks(10);
    QCOMPARE(maket.blocks.size(), 10);
    maket.blocks[0].CreateBDLines(4);
    maket.CreateBDBlocks(3);
    QCOMPARE(maket.blocks.size(), 3);
    for (const auto& block : maket.blocks) {
        QVERIFY(block.lineDY.isEmpty());
        QVERIFY(block.lineDX.isEmpty());
    }
    maket.CreateBDBlocks(0);
    QVERIFY(maket.blocks.isEmpty());
}

void tst_GUIMaket::createBDLinesReplacesBothLists()
{
    GUIMaket::T_MBlock block;
    block.kolLines = 7;
    block.baseY = 42;
    block.lineDY = {21, 20, 15};
    block.lineDX = {384};
    block.CreateBDLines(2);
    QCOMPARE(block.lineDY, (QList<int>{0, 0}));
    QCOMPARE(block.lineDX, (QList<int>{0, 0}));
    QCOMPARE(block.kolLines, 7);
    QCOMPARE(block.baseY, 42);
    block.CreateBDLines(0);
    QVERIFY(block.lineDY.isEmpty());
    QVERIFY(block.lineDX.isEmpty());
}

void tst_GUIMaket::heightOfABlockIsTheSumOfItsLines()
{
    GUIMaket::T_MBlock block;
    QCOMPARE(block.getAllBlockDY(), 0);
    block.baseY = 100;
    block.lineDY = {21, 20, 15, 48};
    QCOMPARE(block.getAllBlockDY(), 104);
}

void tst_GUIMaket::lineBaseOfABlock()
{
    GUIMaket maket;
    maket.CreateBDBlocks(1);
    auto& block = maket.blocks[0];
    block.baseY = 100;
    block.lineDY = {21, 20, 15};
    const QList<std::pair<int, int>> expected{{-5, 100}, {-1, 100}, {0, 100},  {1, 121},
                                              {2, 141},  {3, -1},   {1000, -1}};
    for (const auto& [line, base] : expected) {
        QCOMPARE(block.getLineBaseY(line), base);
        QCOMPARE(maket.getLineBaseY(0, line), base);
    }
    block.CreateBDLines(0);
    QCOMPARE(block.getLineBaseY(0), -1);
    QCOMPARE(block.getLineBaseY(-1), 100);
}

void tst_GUIMaket::numberOfLinesIsTheGreaterOfListAndCount()
{
    GUIMaket maket;
    maket.CreateBDBlocks(1);
    maket.blocks[0].lineDY = {0, 0, 0};
    maket.blocks[0].kolLines = 2;
    QCOMPARE(maket.getBlockKolLines(0), 3);
    maket.blocks[0].kolLines = 5;
    QCOMPARE(maket.getBlockKolLines(0), 5);
}

void tst_GUIMaket::layoutIsCopiedByValue()
{
    Tape tape;
    tape.place(0, 2);
    tape.maket.ReComputeBDBlocks(true);
    const GUIMaket copy = tape.maket;
    tape.maket.AddLineInBlock(0, 1);
    tape.maket.blocks[0].lineDY[1] = 99;
    QCOMPARE(copy.getBlockKolLines(0), 3);
    QCOMPARE(copy.getLineHeight(0, 1), 15);
}

void tst_GUIMaket::templateWithoutFieldsChangesNothing_data()
{
    QTest::addColumn<bool>("rebuild");
    QTest::newRow("anew") << true;
    QTest::newRow("keeping the lines") << false;
}

void tst_GUIMaket::templateWithoutFieldsChangesNothing()
{
    QFETCH(const bool, rebuild);
    Tape tape;
    QCOMPARE(tape.maket.ReComputeBDBlocks(rebuild), 1);
    QVERIFY(tape.maket.blocks.isEmpty());

    tape.place(1, 3);
    QCOMPARE(tape.maket.ReComputeBDBlocks(true), 0);
    tape.maket.AddLineInBlock(2, 1);
    const QString before = numbersOf(tape.maket);
    tape.bd.Clear();
    tape.maket.setBlockTitleEnabled(false);
    QCOMPARE(tape.maket.ReComputeBDBlocks(rebuild), 1);
    QCOMPARE(numbersOf(tape.maket), before);
}

void tst_GUIMaket::withoutATemplateThereIsNothingToDo()
{
    GUIMaket maket;
    QCOMPARE(maket.ReComputeBDBlocks(true), 1);
    QCOMPARE(maket.ReComputeBDBlocks(false), 1);
    QVERIFY(maket.blocks.isEmpty());
}

void tst_GUIMaket::keepingLinesBeforeTheFirstLayoutIsHarmless()
{
    Tape tape;
    tape.place(1, 3);
    QCOMPARE(tape.maket.ReComputeBDBlocks(false), 1);
    QVERIFY(tape.maket.blocks.isEmpty());
    QCOMPARE(tape.maket.ReComputeBDBlocks(true), 0);
    QCOMPARE(tape.maket.getBlockKolLines(1), 4);
}

QTEST_MAIN(tst_GUIMaket)
#include "tst_guimaket.moc"
