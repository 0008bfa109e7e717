#include "records.h"

#include <QTest>

#include <climits>

using namespace records;

namespace {

/// A parameter with its lowest and highest valid value; `place` names it in errors of placement, and `correction` is
/// what is told of field 1 instead of such an error when corrections are asked for.
struct Range
{
    const char* name;
    Param param;
    int lowest;
    int highest;
    const char* place;
    const char* correction;
};

constexpr Range kRanges[] = {
    {"Block", &T20Item::Block, 0, 9, "раздел", "В поле №1 скорректирован раздел!"},
    {"Font", &T20Item::Font, 0, 7, nullptr, nullptr},
    {"X2X", &T20Item::X2X, 0, 1, nullptr, nullptr},
    {"X2Y", &T20Item::X2Y, 0, 1, nullptr, nullptr},
    {"PoleFlags", &T20Item::PoleFlags, 0, 3, nullptr, nullptr},
    {"LineGap", &T20Item::LineGap, 0, 255, nullptr, nullptr},
    {"Line", &T20Item::Line, 1, 255, "строка", "В поле №1 скорректирована строка!"},
    {"X", &T20Item::X, 0, 255, "позиция", "В поле №1 скорректирована позиция!"},
    {"Size", &T20Item::Size, 0, 255, "размер поля", "В поле №1 скорректирован размер!"},
    {"DropIfZero", &T20Item::DropIfZero, 0, 1, nullptr, nullptr},
    {"PressRight", &T20Item::PressRight, 0, 1, nullptr, nullptr},
    {"Expand", &T20Item::Expand, 0, 1, nullptr, nullptr},
    {"CutToWidth", &T20Item::CutToWidth, 0, 1, nullptr, nullptr},
    {"MaskMode", &T20Item::MaskMode, 0, 3, nullptr, nullptr},
    {"FractFormat", &T20Item::FractFormat, 0, 3, nullptr, nullptr},
    {"Brightness", &T20Item::Brightness, 0, 15, nullptr, nullptr},
    {"AlignInPole", &T20Item::AlignInPole, 0, 3, nullptr, nullptr},
    {"AlignOnTape", &T20Item::AlignOnTape, 0, 3, nullptr, nullptr},
    {"TailChar", &T20Item::TailChar, 0, 255, nullptr, nullptr},
};

const QString kValueMessage = QStringLiteral("У поля №1 недопустимое значение(я)!");

/// The message of a misplaced field.
QString misplaced(int key, const char* place)
{
    return QStringLiteral("В поле №") + QString::number(key) + QStringLiteral(" ошибка (") +
           QString::fromUtf8(place) + QStringLiteral(")!");
}

} // namespace

class TestValidation : public QObject
{
    Q_OBJECT

private slots:
    void emptyStoreGivesMinusOneAndNoMessages_data();
    void emptyStoreGivesMinusOneAndNoMessages();
    void goodStoreGivesZeroAndNoMessages();
    void messagesAreEmptiedFirst();
    void allRangesTogetherAreValid();

    void valueWithinItsRange_data();
    void valueWithinItsRange();
    void valueOutOfItsRange_data();
    void valueOutOfItsRange();
    void blockIsComparedWithTheNumberOfBlocks_data();
    void blockIsComparedWithTheNumberOfBlocks();

    void lastMisplacementIsNamed_data();
    void lastMisplacementIsNamed();
    void everyCorrectionIsReportedInOrder_data();
    void everyCorrectionIsReportedInOrder();
    void blockAndSizeOutOfRangeNameTheSize();
    void misplacedFieldIsNotCheckedForValues();
    void correctedFieldIsCheckedForValues();
    void correctionsAreNoErrorsAndLeaveTheStore();
    void severalBadValuesAreOneError();
    void errorsCountKeys();

    void missingKeyIsReportedAndNotInserted_data();
    void missingKeyIsReportedAndNotInserted();
    void keysAboveTheSizeAreNotLookedAt();
    void keysBelowOneAreNotLookedAt();
    void hiddenFieldIsValidatedToo();
    void fontThatFitsTheDeviceBitsFails();
    void messagesCountKeysFromOneWhateverTheType();
    void otherMembersAreNotValidated();
    void overlapsWidthsAndMasksAreNotValidated();
};

void TestValidation::emptyStoreGivesMinusOneAndNoMessages_data()
{
    QTest::addColumn<bool>("fix");
    QTest::newRow("check") << false;
    QTest::newRow("fix") << true;
}

void TestValidation::emptyStoreGivesMinusOneAndNoMessages()
{
    QFETCH(bool, fix);
    const BD_T20Items bd;
    QStringList messages = {QStringLiteral("прежнее")};
    QCOMPARE(bd.CheckBDCorrect(10, messages, fix), -1);
    QVERIFY(messages.isEmpty());
}

void TestValidation::goodStoreGivesZeroAndNoMessages()
{
    BD_T20Items bd;
    for (int key = 1; key <= 160; ++key)
        bd.AddPoleToBD(key, fieldAt(key % 10, key, key, key % 3));
    for (const bool fix : {false, true}) {
        QStringList messages;
        QCOMPARE(bd.CheckBDCorrect(10, messages, fix), 0);
        QVERIFY(messages.isEmpty());
    }
}

void TestValidation::messagesAreEmptiedFirst()
{
    const BD_T20Items bd = storeOf({fieldAt(0, 0, 0)});
    QStringList messages = {QStringLiteral("прежнее"), QStringLiteral("ещё")};
    QCOMPARE(bd.CheckBDCorrect(10, messages, false), 1);
    QCOMPARE(messages, QStringList{misplaced(1, "строка")});
}

void TestValidation::allRangesTogetherAreValid()
{
    T20Item lowest;
    T20Item highest;
    for (const auto& range : kRanges) {
        lowest.*range.param = range.lowest;
        highest.*range.param = range.highest;
    }
    const BD_T20Items bd = storeOf({lowest, highest});
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, false), 0);
    QVERIFY(messages.isEmpty());
}

void TestValidation::valueWithinItsRange_data()
{
    QTest::addColumn<int>("range");
    QTest::addColumn<int>("value");
    for (int i = 0; i < int(std::size(kRanges)); ++i) {
        for (int value = kRanges[i].lowest; value <= kRanges[i].highest; ++value) {
            if (value <= kRanges[i].lowest + 3 || value == kRanges[i].highest)
                QTest::addRow("%s %d", kRanges[i].name, value) << i << value;
        }
    }
}

void TestValidation::valueWithinItsRange()
{
    QFETCH(int, range);
    QFETCH(int, value);
    T20Item item = fieldAt(1, 1, 1);
    item.*kRanges[range].param = value;
    const BD_T20Items bd = storeOf({item});
    for (const bool fix : {false, true}) {
        QStringList messages;
        QCOMPARE(bd.CheckBDCorrect(10, messages, fix), 0);
        QVERIFY(messages.isEmpty());
    }
}

void TestValidation::valueOutOfItsRange_data()
{
    QTest::addColumn<int>("range");
    QTest::addColumn<int>("value");
    for (int i = 0; i < int(std::size(kRanges)); ++i) {
        const auto& range = kRanges[i];
        QList<int> values = {INT_MIN, range.lowest - 1, range.highest + 1, INT_MAX};
        if (range.lowest > 0)
            values.insert(1, -1);
        // A multiple of 256 is a good value in its low byte.
        values.append(range.lowest + 256);
        values.append(range.lowest - 256);
        values.append(range.lowest + 65536);
        for (const int value : values)
            QTest::addRow("%s %d", range.name, value) << i << value;
    }
}

void TestValidation::valueOutOfItsRange()
{
    QFETCH(int, range);
    QFETCH(int, value);
    const Range& bad = kRanges[range];
    T20Item item = fieldAt(1, 1, 1);
    item.*bad.param = value;
    const BD_T20Items bd = storeOf({item});
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, false), 1);
    QCOMPARE(messages, QStringList{bad.place ? misplaced(1, bad.place) : kValueMessage});
    QCOMPARE(bd.CheckBDCorrect(10, messages, true), bad.place ? 0 : 1);
    QCOMPARE(messages, QStringList{bad.place ? QString::fromUtf8(bad.correction) : kValueMessage});
    QVERIFY(isSame(bd.items.value(1), item));
}

void TestValidation::blockIsComparedWithTheNumberOfBlocks_data()
{
    QTest::addColumn<int>("blockCount");
    QTest::addColumn<int>("block");
    QTest::addColumn<bool>("isGood");
    QTest::newRow("last of three") << 3 << 2 << true;
    QTest::newRow("behind three") << 3 << 3 << false;
    QTest::newRow("only one") << 1 << 0 << true;
    QTest::newRow("no blocks") << 0 << 0 << false;
    QTest::newRow("last of twelve") << 12 << 11 << true;
    QTest::newRow("negative of twelve") << 12 << -1 << false;
    QTest::newRow("highest ints") << INT_MAX << INT_MAX << false;
    QTest::newRow("below the highest int") << INT_MAX << INT_MAX - 1 << true;
    QTest::newRow("lowest ints") << INT_MIN << INT_MIN << false;
}

void TestValidation::blockIsComparedWithTheNumberOfBlocks()
{
    QFETCH(int, blockCount);
    QFETCH(int, block);
    QFETCH(bool, isGood);
    const BD_T20Items bd = storeOf({fieldAt(block, 1, 1)});
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(blockCount, messages, false), isGood ? 0 : 1);
    QCOMPARE(messages, isGood ? QStringList() : QStringList{misplaced(1, "раздел")});
    QCOMPARE(bd.CheckBDCorrect(blockCount, messages, true), 0);
    QCOMPARE(messages.size(), isGood ? 0 : 1);
}

void TestValidation::lastMisplacementIsNamed_data()
{
    QTest::addColumn<int>("bad");
    QTest::addColumn<QString>("place");
    for (int bad = 1; bad < 16; ++bad) {
        const char* const place = bad >= 8   ? "размер поля"
                                  : bad >= 4 ? "позиция"
                                  : bad >= 2 ? "строка"
                                             : "раздел";
        QTest::addRow("%s%s%s%s", bad & 1 ? " Block" : "", bad & 2 ? " Line" : "", bad & 4 ? " X" : "",
                      bad & 8 ? " Size" : "")
            << bad << QString::fromUtf8(place);
    }
}

void TestValidation::lastMisplacementIsNamed()
{
    QFETCH(int, bad);
    QFETCH(QString, place);
    const BD_T20Items bd =
        storeOf({fieldAt(bad & 1 ? 10 : 9, bad & 2 ? 256 : 255, bad & 4 ? 256 : 255, bad & 8 ? -1 : 0)});
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, false), 1);
    QCOMPARE(messages, QStringList{misplaced(1, place.toUtf8().constData())});
}

void TestValidation::everyCorrectionIsReportedInOrder_data()
{
    QTest::addColumn<int>("bad");
    for (int bad = 0; bad < 16; ++bad)
        QTest::addRow("%d", bad) << bad;
}

void TestValidation::everyCorrectionIsReportedInOrder()
{
    QFETCH(int, bad);
    const BD_T20Items bd =
        storeOf({fieldAt(bad & 1 ? -1 : 0, bad & 2 ? 0 : 1, bad & 4 ? -1 : 0, bad & 8 ? 256 : 255)});
    QStringList expected;
    if (bad & 1)
        expected.append(QStringLiteral("В поле №1 скорректирован раздел!"));
    if (bad & 2)
        expected.append(QStringLiteral("В поле №1 скорректирована строка!"));
    if (bad & 4)
        expected.append(QStringLiteral("В поле №1 скорректирована позиция!"));
    if (bad & 8)
        expected.append(QStringLiteral("В поле №1 скорректирован размер!"));
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, true), 0);
    QCOMPARE(messages, expected);
}

void TestValidation::blockAndSizeOutOfRangeNameTheSize()
{
    const BD_T20Items bd = storeOf({fieldAt(10, 1, 0, 256)});
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, false), 1);
    QCOMPARE(messages, QStringList{QStringLiteral("В поле №1 ошибка (размер поля)!")});
}

void TestValidation::misplacedFieldIsNotCheckedForValues()
{
    T20Item item = fieldAt(10, 1, 0);
    item.Font = 8;
    const BD_T20Items bd = storeOf({item});
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, false), 1);
    QCOMPARE(messages, QStringList{misplaced(1, "раздел")});
}

void TestValidation::correctedFieldIsCheckedForValues()
{
    T20Item item = fieldAt(10, 0, 256, 256);
    item.Font = 8;
    const BD_T20Items bd = storeOf({item});
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, true), 1);
    QCOMPARE(messages, (QStringList{QStringLiteral("В поле №1 скорректирован раздел!"),
                                    QStringLiteral("В поле №1 скорректирована строка!"),
                                    QStringLiteral("В поле №1 скорректирована позиция!"),
                                    QStringLiteral("В поле №1 скорректирован размер!"), kValueMessage}));
}

void TestValidation::correctionsAreNoErrorsAndLeaveTheStore()
{
    BD_T20Items bd = storeOf({fieldAt(10, 0, -1, 300), fieldAt(0, 1, 0), fieldAt(-4, 1000, 256, -2)});
    bd.ReComputeBDBlocks();
    const auto before = bd.items;
    const auto linesBefore = bd.blocks.at(0).lines.size();
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, true), 0);
    QCOMPARE(messages.size(), 8);
    QVERIFY(messages.at(4).startsWith(QStringLiteral("В поле №3 ")));
    QVERIFY(isSame(bd.items, before));
    QCOMPARE(bd.blocks.at(0).lines.size(), linesBefore);
    const QStringList first = messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, true), 0);
    QCOMPARE(messages, first);
    QCOMPARE(bd.CheckBDCorrect(10, messages, false), 2);
}

void TestValidation::severalBadValuesAreOneError()
{
    T20Item item = fieldAt(0, 1, 0);
    for (const auto& range : kRanges) {
        if (!range.place)
            item.*range.param = range.highest + 1;
    }
    const BD_T20Items bd = storeOf({item});
    for (const bool fix : {false, true}) {
        QStringList messages;
        QCOMPARE(bd.CheckBDCorrect(10, messages, fix), 1);
        QCOMPARE(messages, QStringList{kValueMessage});
    }
}

void TestValidation::errorsCountKeys()
{
    T20Item badValue = fieldAt(0, 1, 0);
    badValue.Brightness = 16;
    badValue.TailChar = 256;
    BD_T20Items bd =
        storeOf({fieldAt(10, 0, -1), fieldAt(0, 1, 0), badValue, fieldAt(0, 1, 0), fieldAt(0, 1, 256)});
    bd.items.remove(4);
    bd.AddPoleToBD(6, fieldAt(0, 0, 0));
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, false), 4);
    QCOMPARE(messages, (QStringList{QStringLiteral("В поле №1 ошибка (позиция)!"),
                                    QStringLiteral("У поля №3 недопустимое значение(я)!"),
                                    QStringLiteral("Пропущено поле №4"),
                                    QStringLiteral("В поле №5 ошибка (позиция)!")}));
    QCOMPARE(bd.CheckBDCorrect(10, messages, true), 2);
    QCOMPARE(messages, (QStringList{QStringLiteral("В поле №1 скорректирован раздел!"),
                                    QStringLiteral("В поле №1 скорректирована строка!"),
                                    QStringLiteral("В поле №1 скорректирована позиция!"),
                                    QStringLiteral("У поля №3 недопустимое значение(я)!"),
                                    QStringLiteral("Пропущено поле №4"),
                                    QStringLiteral("В поле №5 скорректирована позиция!")}));
}

void TestValidation::missingKeyIsReportedAndNotInserted_data()
{
    emptyStoreGivesMinusOneAndNoMessages_data();
}

void TestValidation::missingKeyIsReportedAndNotInserted()
{
    QFETCH(bool, fix);
    BD_T20Items bd = storeOf({fieldAt(0, 1, 0)});
    bd.AddPoleToBD(5, fieldAt(0, 1, 0));
    bd.AddPoleToBD(7, fieldAt(0, 1, 0));
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, fix), 2);
    QCOMPARE(messages,
             (QStringList{QStringLiteral("Пропущено поле №2"), QStringLiteral("Пропущено поле №3")}));
    QCOMPARE(bd.items.keys(), (QList<int>{1, 5, 7}));
}

void TestValidation::keysAboveTheSizeAreNotLookedAt()
{
    BD_T20Items bd;
    for (int key = 2; key <= 10; ++key)
        bd.AddPoleToBD(key, fieldAt(0, 1, 0));
    bd.AddPoleToBD(11, fieldAt(99, 0, -1, -1));
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, false), 1);
    QCOMPARE(messages, QStringList{QStringLiteral("Пропущено поле №1")});
}

void TestValidation::keysBelowOneAreNotLookedAt()
{
    BD_T20Items bd = storeOf({fieldAt(0, 1, 0)});
    bd.AddPoleToBD(0, fieldAt(99, 0, -1, -1));
    bd.AddPoleToBD(INT_MIN, fieldAt(99, 0, -1, -1));
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, false), 2);
    QCOMPARE(messages,
             (QStringList{QStringLiteral("Пропущено поле №2"), QStringLiteral("Пропущено поле №3")}));
}

void TestValidation::hiddenFieldIsValidatedToo()
{
    for (const int size : {0, 5}) {
        const BD_T20Items bd = storeOf({fieldAt(0, 0, 0, size)});
        QStringList messages;
        QCOMPARE(bd.CheckBDCorrect(10, messages, false), 1);
        QCOMPARE(messages, QStringList{QStringLiteral("В поле №1 ошибка (строка)!")});
    }
    T20Item hidden = fieldAt(0, 1, 0, 0);
    hidden.MaskMode = 4;
    QStringList messages;
    QCOMPARE(storeOf({hidden}).CheckBDCorrect(10, messages, false), 1);
    QCOMPARE(messages, QStringList{kValueMessage});
}

void TestValidation::fontThatFitsTheDeviceBitsFails()
{
    T20Item item = fieldAt(0, 1, 0);
    for (int font = 8; font <= 15; ++font) {
        item.Font = font;
        QStringList messages;
        QCOMPARE(storeOf({item}).CheckBDCorrect(10, messages, false), 1);
        QCOMPARE(messages, QStringList{kValueMessage});
    }
}

void TestValidation::messagesCountKeysFromOneWhateverTheType()
{
    BD_T20Items bd;
    for (int type = 0; type < 3; ++type) {
        T20Item item = fieldAt(0, 1, 0);
        item.Type = type;
        if (type == 1)
            item.Line = 0;
        bd.AddPoleToBD(type + 1, item);
    }
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, false), 1);
    QCOMPARE(messages, QStringList{misplaced(2, "строка")});
}

void TestValidation::otherMembersAreNotValidated()
{
    T20Item item = fieldAt(0, 1, 0);
    for (const int type : {INT_MIN, -1, 160, INT_MAX}) {
        for (const quint32 mask : {0U, 0xffffU, 0xffffffffU}) {
            item.FA_NEED = !item.FA_NEED;
            item.Type = type;
            item.BL_MASK = mask;
            item.Desc = QStringLiteral("%1: нет в каталоге");
            item.DescView = QString();
            QStringList messages;
            QCOMPARE(storeOf({item}).CheckBDCorrect(10, messages, false), 0);
            QVERIFY(messages.isEmpty());
        }
    }
}

void TestValidation::overlapsWidthsAndMasksAreNotValidated()
{
    T20Item wide = fieldAt(3, 1, 255, 255);
    wide.BL_MASK = 1U << 4;
    const BD_T20Items bd = storeOf({wide, wide, fieldAt(3, 1, 255, 1)});
    QStringList messages;
    QCOMPARE(bd.CheckBDCorrect(10, messages, false), 0);
    QVERIFY(messages.isEmpty());
}

QTEST_GUILESS_MAIN(TestValidation)
#include "tst_validation.moc"
