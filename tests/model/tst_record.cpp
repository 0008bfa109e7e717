#include "records.h"

#include <QTest>

#include <climits>
#include <type_traits>

using namespace records;

class TestRecord : public QObject
{
    Q_OBJECT

private slots:
    void recordHasTwentyFourMembersInOrder();
    void recordIsAPlainValue();
    void deviceParamsAreNumberedInOrder();
    void copyDoesNotFollowItsOriginal();
    void assignmentCopiesEveryMember();
    void insertedRecordIsBlank();
    void initWithDefValuesSetsTypeOnly();
    void clearResetsPlacementAndTextsOnly();
    void clearToUndefSetsEveryNumberToMinusOne();
    void clearToUndefKeepsTheBlock_data();
    void clearToUndefKeepsTheBlock();
    void shortDescriptionFollowsFromDescription_data();
    void shortDescriptionFollowsFromDescription();
    void shortDescriptionOfARecordDiffersFromTheCatalogue();
    void classIsTextBeforeFirstColon_data();
    void classIsTextBeforeFirstColon();
    void storeHasItsMembersInOrder();
    void newStoreHasNoFieldsAndNoBlocks();
    void itemsStandInAscendingKeyOrder();
    void poleByKeyIsAReferenceIntoTheStore();
    void poleByKeyTakesAnyKey_data();
    void poleByKeyTakesAnyKey();
    void poleByKeyBeyondTheEndGrowsTheStoreByOne();
    void laterLoopsVisitKeysUpToTheNewSize();
    void keyByDescFindsTheExactText_data();
    void keyByDescFindsTheExactText();
    void keyByDescTakesTheLowestKey();
    void keyByDescIsZeroInAnEmptyStore();
    void keyByDescLooksAtKeysUpToTheSizeOnly();
    void keyByDescInsertsMissingKeysBlank();
    void keyByDescFindsATextThatTheCatalogueLacks();
    void keyByDescWantsTheMisspelledLabels();
    void clearEmptiesFieldsAndBlocksAndKeepsTheCatalogue();
};

void TestRecord::recordHasTwentyFourMembersInOrder()
{
    const T20Item item = distinctRecord();
    const auto& [need, mask, type, block, font, x2x, x2y, poleFlags, lineGap, line, x, size, dropIfZero,
                 pressRight, expand, cutToWidth, maskMode, fractFormat, brightness, alignInPole, alignOnTape,
                 tailChar, desc, descView] = item;
    static_assert(std::is_same_v<decltype(need), const bool>);
    static_assert(std::is_same_v<decltype(mask), const quint32>);
    static_assert(std::is_same_v<decltype(type), const int>);
    static_assert(std::is_same_v<decltype(desc), const QString>);
    static_assert(std::is_same_v<decltype(descView), const QString>);
    QCOMPARE(need, true);
    QCOMPARE(mask, 101U);
    QCOMPARE(type, 102);
    const QList<int> params = {block,      font,        x2x,         x2y,      poleFlags,
                               lineGap,    line,        x,           size,     dropIfZero,
                               pressRight, expand,      cutToWidth,  maskMode, fractFormat,
                               brightness, alignInPole, alignOnTape, tailChar};
    QList<int> expected;
    for (int value = 103; value < 122; ++value)
        expected.append(value);
    QCOMPARE(params, expected);
    QCOMPARE(desc, QStringLiteral("Класс: полное"));
    QCOMPARE(descView, QStringLiteral("краткое"));
}

void TestRecord::recordIsAPlainValue()
{
    static_assert(!std::is_polymorphic_v<T20Item>);
    static_assert(std::is_aggregate_v<T20Item>);
    static_assert(std::is_copy_constructible_v<T20Item> && std::is_copy_assignable_v<T20Item>);
    const T20Item original = distinctRecord();
    const T20Item copy = original;
    QVERIFY(isSame(copy, original));
}

void TestRecord::deviceParamsAreNumberedInOrder()
{
    QCOMPARE(T20Item::kDeviceParams.size(), std::size(kParams));
    for (std::size_t i = 0; i < std::size(kParams); ++i)
        QVERIFY2(T20Item::kDeviceParams.at(i) == kParams[i].param, kParams[i].name);
}

void TestRecord::copyDoesNotFollowItsOriginal()
{
    T20Item original = distinctRecord();
    const T20Item copy = original;
    original.ClearToUndef();
    original.Block = 0;
    QVERIFY(isSame(copy, distinctRecord()));
}

void TestRecord::assignmentCopiesEveryMember()
{
    T20Item item;
    item.Desc = QStringLiteral("прежнее");
    item = distinctRecord();
    QVERIFY(isSame(item, distinctRecord()));
}

void TestRecord::insertedRecordIsBlank()
{
    BD_T20Items bd;
    QVERIFY(isBlank(bd.getPoleByKey(1)));
    QVERIFY(isBlank(T20Item()));
}

void TestRecord::initWithDefValuesSetsTypeOnly()
{
    T20Item item = distinctRecord();
    item.InitWithDefValues(-17);
    T20Item expected = distinctRecord();
    expected.Type = -17;
    QVERIFY(isSame(item, expected));
}

void TestRecord::clearResetsPlacementAndTextsOnly()
{
    T20Item item = distinctRecord();
    item.Clear();
    T20Item expected = distinctRecord();
    expected.Desc = QString();
    expected.DescView = QString();
    expected.FA_NEED = false;
    expected.BL_MASK = 0xff;
    expected.Type = 0;
    expected.Line = 0;
    expected.X = 0;
    expected.Size = 0;
    QVERIFY(isSame(item, expected));
}

void TestRecord::clearToUndefSetsEveryNumberToMinusOne()
{
    T20Item item = distinctRecord();
    item.ClearToUndef();
    QCOMPARE(item.FA_NEED, false);
    QCOMPARE(item.BL_MASK, 0xffffffffU);
    QCOMPARE(item.Type, -1);
    for (const auto& [name, param] : kParams) {
        if (param != &T20Item::Block)
            QVERIFY2(item.*param == -1, name);
    }
    QVERIFY(item.Desc.isNull());
    QVERIFY(item.DescView.isNull());
}

void TestRecord::clearToUndefKeepsTheBlock_data()
{
    QTest::addColumn<int>("block");
    for (const int block : {0, 7, -5, INT_MIN, INT_MAX})
        QTest::addRow("%d", block) << block;
}

void TestRecord::clearToUndefKeepsTheBlock()
{
    QFETCH(int, block);
    T20Item item = distinctRecord();
    item.Block = block;
    item.ClearToUndef();
    QCOMPARE(item.Block, block);
}

void TestRecord::shortDescriptionFollowsFromDescription_data()
{
    QTest::addColumn<QString>("desc");
    QTest::addColumn<QString>("descView");
    QTest::newRow("class and detail") << "Налог: ставка"
                                      << "Н.: ставка";
    QTest::newRow("first of two colons") << "Оплата: Обшая: надпись"
                                         << "О.: Обшая: надпись";
    QTest::newRow("no colon") << "Свободная строка 1"
                              << "Свободная строка 1";
    QTest::newRow("class of one character") << "A: b"
                                            << "A.: b";
    QTest::newRow("colon without a blank") << "Налог:ставка"
                                           << "Н.:ставка";
    QTest::newRow("colon at the end") << "Налог:"
                                      << "Н.:";
    QTest::newRow("colon at the start") << ":ставка"
                                        << ":.:ставка";
    QTest::newRow("short class") << "ЗН: надпись"
                                 << "З.: надпись";
    QTest::newRow("empty") << ""
                           << "";
}

void TestRecord::shortDescriptionFollowsFromDescription()
{
    QFETCH(QString, desc);
    QFETCH(QString, descView);
    T20Item item = distinctRecord();
    item.Desc = desc;
    item.makeDescViewFromDesc();
    QCOMPARE(item.DescView, descView);
    T20Item expected = distinctRecord();
    expected.Desc = desc;
    expected.DescView = descView;
    QVERIFY(isSame(item, expected));
}

void TestRecord::shortDescriptionOfARecordDiffersFromTheCatalogue()
{
    BD_T20Items bd;
    T20Item item;
    item.Desc = bd.getPolesLabels().at(94);
    QCOMPARE(item.Desc, QStringLiteral("ЗН: надпись"));
    item.makeDescViewFromDesc();
    QCOMPARE(item.DescView, QStringLiteral("З.: надпись"));
    QCOMPARE(bd.getPolesLabelsView().at(94), QStringLiteral("ЗН: надпись"));
}

void TestRecord::classIsTextBeforeFirstColon_data()
{
    QTest::addColumn<QString>("desc");
    QTest::addColumn<QString>("poleClass");
    QTest::newRow("class and detail") << "Налог: ставка"
                                      << "Налог";
    QTest::newRow("first of two colons") << "Оплата: Обшая: надпись"
                                         << "Оплата";
    QTest::newRow("blank before the colon") << "Налог : ставка"
                                            << "Налог ";
    QTest::newRow("colon at the start") << ": ставка"
                                        << "";
    QTest::newRow("no colon") << "Свободная строка 1"
                              << "";
    QTest::newRow("empty") << ""
                           << "";
}

void TestRecord::classIsTextBeforeFirstColon()
{
    QFETCH(QString, desc);
    QFETCH(QString, poleClass);
    T20Item item;
    item.Desc = desc;
    QCOMPARE(item.getPoleClass(), poleClass);
    QCOMPARE(item.Desc, desc);
}

void TestRecord::storeHasItsMembersInOrder()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(0, 1, 0));
    bd.ReComputeBDBlocks();
    const auto& [labels, labelsView, items, blocks] = bd;
    static_assert(std::is_same_v<decltype(labels), const QStringList>);
    static_assert(std::is_same_v<decltype(labelsView), const QStringList>);
    static_assert(std::is_same_v<decltype(items), const QMap<int, T20Item>>);
    static_assert(std::is_same_v<decltype(blocks), const QList<BD_T20Items::T_SHBlock>>);
    QCOMPARE(labels.first(), QStringLiteral("Шапка: заголовок"));
    QCOMPARE(labelsView.first(), QStringLiteral("Ш.: заголовок"));
    QCOMPARE(items.size(), 1);
    QCOMPARE(blocks.size(), 10);
}

void TestRecord::newStoreHasNoFieldsAndNoBlocks()
{
    const BD_T20Items bd;
    QVERIFY(bd.items.isEmpty());
    QVERIFY(bd.blocks.isEmpty());
}

void TestRecord::itemsStandInAscendingKeyOrder()
{
    BD_T20Items bd;
    for (const int key : {160, 3, 42, 1})
        bd.AddPoleToBD(key, T20Item());
    QCOMPARE(bd.items.keys(), (QList<int>{1, 3, 42, 160}));
}

void TestRecord::poleByKeyIsAReferenceIntoTheStore()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(3, 4, 5));
    T20Item& item = bd.getPoleByKey(1);
    QVERIFY(isSame(item, fieldAt(3, 4, 5)));
    item.X = 77;
    QCOMPARE(bd.items.value(1).X, 77);
    QCOMPARE(bd.items.size(), 1);
}

void TestRecord::poleByKeyTakesAnyKey_data()
{
    QTest::addColumn<int>("key");
    for (const int key : {INT_MIN, -1, 0, 1, 160, 161, INT_MAX})
        QTest::addRow("%d", key) << key;
}

void TestRecord::poleByKeyTakesAnyKey()
{
    QFETCH(int, key);
    BD_T20Items bd;
    QVERIFY(isBlank(bd.getPoleByKey(key)));
    QCOMPARE(bd.items.keys(), QList<int>{key});
}

void TestRecord::poleByKeyBeyondTheEndGrowsTheStoreByOne()
{
    BD_T20Items bd;
    for (int key = 1; key <= 3; ++key)
        bd.AddPoleToBD(key, fieldAt(0, key, 0));
    QVERIFY(isBlank(bd.getPoleByKey(10)));
    QCOMPARE(bd.items.size(), 4);
    bd.getPoleByKey(10);
    QCOMPARE(bd.items.size(), 4);
}

void TestRecord::laterLoopsVisitKeysUpToTheNewSize()
{
    BD_T20Items bd;
    for (int key = 1; key <= 3; ++key)
        bd.AddPoleToBD(key, fieldAt(0, key, 0));
    T20Item five;
    five.Desc = QStringLiteral("пятое");
    bd.AddPoleToBD(5, five);
    QCOMPARE(bd.getPoleKeyByDesc(five.Desc), 0);
    QVERIFY(bd.items.contains(4));
    QCOMPARE(bd.items.size(), 5);
    QCOMPARE(bd.getPoleKeyByDesc(five.Desc), 5);
}

void TestRecord::keyByDescFindsTheExactText_data()
{
    QTest::addColumn<QString>("desc");
    QTest::addColumn<int>("key");
    QTest::newRow("first") << "Шапка: заголовок" << 1;
    QTest::newRow("last") << "Картинка" << 160;
    QTest::newRow("quotes belong to the text") << "Строка: \"ЧЕК АННУЛИРОВАН\"" << 158;
    QTest::newRow("other case") << "картинка" << 0;
    QTest::newRow("beginning only") << "Картин" << 0;
    QTest::newRow("longer") << "Картинка 1" << 0;
    QTest::newRow("blank behind") << "Картинка " << 0;
    QTest::newRow("short label") << "Ш.: заголовок" << 0;
    QTest::newRow("empty") << "" << 0;
}

void TestRecord::keyByDescFindsTheExactText()
{
    QFETCH(QString, desc);
    QFETCH(int, key);
    BD_T20Items bd;
    for (int i = 0; i < 160; ++i) {
        T20Item item;
        item.Desc = bd.getPolesLabels().at(i);
        item.DescView = bd.getPolesLabelsView().at(i);
        bd.AddPoleToBD(i + 1, item);
    }
    QCOMPARE(bd.getPoleKeyByDesc(desc), key);
    QCOMPARE(bd.items.size(), 160);
}

void TestRecord::keyByDescTakesTheLowestKey()
{
    BD_T20Items bd;
    T20Item item;
    item.Desc = QStringLiteral("одно и то же");
    bd.AddPoleToBD(1, T20Item());
    bd.AddPoleToBD(3, item);
    bd.AddPoleToBD(2, item);
    QCOMPARE(bd.getPoleKeyByDesc(item.Desc), 2);
}

void TestRecord::keyByDescIsZeroInAnEmptyStore()
{
    BD_T20Items bd;
    QCOMPARE(bd.getPoleKeyByDesc(QStringLiteral("Шапка: заголовок")), 0);
    QCOMPARE(bd.getPoleKeyByDesc(QString()), 0);
    QVERIFY(bd.items.isEmpty());
}

void TestRecord::keyByDescLooksAtKeysUpToTheSizeOnly()
{
    BD_T20Items bd;
    T20Item item;
    item.Desc = QStringLiteral("искомое");
    bd.AddPoleToBD(0, item);
    bd.AddPoleToBD(-1, item);
    bd.AddPoleToBD(100, item);
    QCOMPARE(bd.getPoleKeyByDesc(item.Desc), 0);
}

void TestRecord::keyByDescInsertsMissingKeysBlank()
{
    BD_T20Items bd;
    bd.AddPoleToBD(2, distinctRecord());
    bd.AddPoleToBD(4, distinctRecord());
    QCOMPARE(bd.getPoleKeyByDesc(QStringLiteral("нет такого")), 0);
    QCOMPARE(bd.items.keys(), (QList<int>{1, 2, 4}));
    QVERIFY(isBlank(bd.items.value(1)));
    QVERIFY(isSame(bd.items.value(2), distinctRecord()));
}

void TestRecord::keyByDescFindsATextThatTheCatalogueLacks()
{
    BD_T20Items bd;
    T20Item item;
    item.Desc = QStringLiteral("Свой текст файла");
    QVERIFY(!bd.getPolesLabels().contains(item.Desc));
    bd.AddPoleToBD(1, item);
    QCOMPARE(bd.getPoleKeyByDesc(item.Desc), 1);
    QCOMPARE(bd.getPoleKeyByDesc(bd.getPolesLabels().first()), 0);
}

void TestRecord::keyByDescWantsTheMisspelledLabels()
{
    BD_T20Items bd;
    for (int key = 1; key <= 160; ++key)
        bd.getPoleByKey(key).Desc = bd.getPolesLabels().at(key - 1);
    QCOMPARE(bd.getPoleKeyByDesc(QStringLiteral("Оплата: Обшая: надпись")), 68);
    QCOMPARE(bd.getPoleKeyByDesc(QStringLiteral("Оплата: Обшая: символ суммы")), 69);
    QCOMPARE(bd.getPoleKeyByDesc(QStringLiteral("Оплата: Обшая: сумма")), 70);
    QCOMPARE(bd.getPoleKeyByDesc(QStringLiteral("Оплата: Общая: сумма")), 0);
}

void TestRecord::clearEmptiesFieldsAndBlocksAndKeepsTheCatalogue()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, fieldAt(0, 1, 0));
    bd.ReComputeBDBlocks();
    bd.getPolesLabels()[0] = QStringLiteral("своё полное");
    bd.getPolesLabelsView()[0] = QStringLiteral("своё краткое");
    const QStringList labels = bd.getPolesLabels();
    const QStringList labelsView = bd.getPolesLabelsView();
    QCOMPARE(bd.blocks.size(), 10);
    bd.Clear();
    QVERIFY(bd.items.isEmpty());
    QVERIFY(bd.blocks.isEmpty());
    QCOMPARE(bd.getPolesLabels(), labels);
    QCOMPARE(bd.getPolesLabelsView(), labelsView);
}

QTEST_GUILESS_MAIN(TestRecord)
#include "tst_record.moc"
