#include "editing/refusals.h"
#include "editing/rulesbench.h"
#include "editing/tablerows.h"
#include "support/tablesteps.h"
#include "view/itemline.h"

#include <QGraphicsItem>
#include <QTableWidget>
#include <QTest>

namespace {

const QString kYes = QStringLiteral("Да");
const QString kNo = QStringLiteral("Нет");

/// One edit and what must come of it.
struct Step
{
    int mode;
    int row;
    QString text;
    QStringList changes;  ///< without the key
    QString warning = {}; ///< of the one box; empty for none
};

Step taken(int mode, int row, const QString& text, const QString& change)
{
    return {mode, row, text, {change}};
}

Step refused(int row, const QString& text, const QString& warning)
{
    return {1, row, text, {}, warning};
}

Step unchanged(int row, const QString& text)
{
    return {1, row, text, {}};
}

/// | key | block | line | x   | size |                                          |
/// |-----|-------|------|-----|------|------------------------------------------|
/// | 1   | 0     | 1    | 0   | 10   | on one cell with 2                       |
/// | 2   | 0     | 1    | 0   | 5    |                                          |
/// | 3   | 2     | 255  | 255 | 255  | every other value the highest, too       |
/// | 4   | 1     | 1    | 3   | 200  | allowed in no block, wider than the tape |
/// | 5   | 3     | 255  | 255 | 0    |                                          |
/// | 6   | 1     | 1    | 3   | 0    | allowed in no block, on the cell of 4    |
QList<FieldRow> strainedFields()
{
    const auto desc = [](int key) { return QStringLiteral("Проба: поле %1").arg(key); };
    return {{.desc = desc(1)},
            {.size = 5, .desc = desc(2)},
            {.block = 2,
             .font = 7,
             .x2x = 1,
             .x2y = 1,
             .flags = 3,
             .gap = 255,
             .line = 255,
             .x = 255,
             .size = 255,
             .dropIfZero = 1,
             .pressRight = 1,
             .expand = 1,
             .cutToWidth = 1,
             .maskMode = 3,
             .fractFormat = 3,
             .brightness = 15,
             .alignInPole = 3,
             .alignOnTape = 3,
             .tailChar = 255,
             .desc = desc(3)},
            {.block = 1, .x = 3, .size = 200, .desc = desc(4), .blockMask = 0},
            {.block = 3, .line = 255, .x = 255, .size = 0, .desc = desc(5)},
            {.block = 1, .x = 3, .size = 0, .desc = desc(6), .blockMask = 0}};
}

/// Rows that take anything, for a field with the values of a new FieldRow.
QList<Step> silentSteps()
{
    return {taken(1, kOnTapeRow, QStringLiteral("Справа"), QStringLiteral("AlignOnTape 1>3")),
            taken(1, kInPoleRow, QStringLiteral("По центру"), QStringLiteral("AlignInPole 1>2")),
            taken(1, kPressRow, kYes, QStringLiteral("PressRight 0>1")),
            taken(1, kExpandRow, kYes, QStringLiteral("Expand 0>1")),
            taken(1, kCutRow, kYes, QStringLiteral("CutToWidth 0>1")),
            taken(1, kMaskRow, QStringLiteral("Выровнять нулями"), QStringLiteral("MaskMode 0>2")),
            taken(1, kDropRow, kYes, QStringLiteral("DropIfZero 0>1")),
            taken(1, kStringsRow, kYes, QStringLiteral("PoleFlags 0>1"))};
}

/// Rows of view mode for the same field, after silentSteps().
QList<Step> viewSteps()
{
    return {taken(2, kFontRow, QStringLiteral("6"), QStringLiteral("Font 0>6")),
            taken(2, kDoubleWidthRow, kYes, QStringLiteral("X2X 0>1")),
            taken(2, kDoubleHeightRow, kYes, QStringLiteral("X2Y 0>1")),
            taken(2, kLineGapRow, QStringLiteral("15"), QStringLiteral("LineGap 0>15")),
            taken(2, kBrightnessRow, QStringLiteral("15"), QStringLiteral("Brightness 0>15")),
            taken(2, kFormatRow, QStringLiteral("Печатать как штуки"), QStringLiteral("FractFormat 0>3")),
            taken(2, kTailRow, QStringLiteral("я"), QStringLiteral("TailChar 32>255")),
            taken(2, kLeadRow, kYes, QStringLiteral("PoleFlags 1>3"))};
}

} // namespace

/// Templates that a file may hold and that no edit in the table would make.
class tst_StrainedTemplates : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_bench.get().open(strainedFields()); }
    void cleanup() { m_bench.dropIfFailed(); }

    void everyFieldIsShownAsItStands();
    void twoFieldsOnOneCell();
    void fieldBelowTheOtherOnItsCell();
    void highestValues();
    void highestValuesOfView();
    void fieldAllowedNowhere();
    void unplacedFieldFarBelowItsBlock();
    void unplacedFieldAllowedNowhere();
    void fieldAllowedNowhereHatchesEveryLine();

private:
    /// Does the steps with the field `key`, which is picked anew whenever a redraw has ended the pick.
    void walk(int key, const QList<Step>& steps);

    SharedBench m_bench;
};

void tst_StrainedTemplates::walk(int key, const QList<Step>& steps)
{
    auto& bench = m_bench.get();
    for (const auto& step : steps) {
        const QString name =
            QStringLiteral("field %1, mode %2, row %3: %4")
                .arg(QString::number(key), QString::number(step.mode), QString::number(step.row), step.text);
        const QGraphicsItem* const item = poleItem(bench.window(), key);
        if (item == nullptr || bench.probe().curItem() != item ||
            propertyTable(bench.window())->rowCount() != (step.mode == 1 ? 12 : 8))
            bench.pick(key, step.mode);
        const auto* const delegate = propertyTable(bench.window())->itemDelegateForRow(step.row);
        if (delegate != nullptr && delegate->inherits("DelegateSpinBox"))
            bench.type(step.row, step.text);
        else
            bench.choose(step.row, step.text);
        const Outcome outcome = bench.outcome();
        QStringList changes;
        for (const auto& change : step.changes)
            changes.append(QStringLiteral("%1.%2").arg(key).arg(change));
        QVERIFY2(outcome.changes == changes, qPrintable(name + u' ' + outcome.changes.join(u'|')));
        const QStringList warnings = step.warning.isEmpty() ? QStringList() : QStringList{step.warning};
        QVERIFY2(outcome.warnings == warnings, qPrintable(name + u' ' + outcome.warnings.join(u'|')));
    }
}

void tst_StrainedTemplates::everyFieldIsShownAsItStands()
{
    auto& bench = m_bench.get();
    for (int key = 1; key <= 6; ++key) {
        const auto record = bench.record(key);
        const auto state = [](int value) { return QStringLiteral("%1|%1|false").arg(value); };
        bench.pick(key);
        QCOMPARE(cellState(bench.window(), kLineRow), state(record.Line));
        QCOMPARE(cellState(bench.window(), kPositionRow), state(record.X));
        QCOMPARE(cellState(bench.window(), kSizeRow), state(record.Size));
        bench.pick(key, 2);
        QCOMPARE(cellState(bench.window(), kLineGapRow), state(record.LineGap));
        QCOMPARE(cellState(bench.window(), kFontRow), state(record.Font));
    }
    QCOMPARE(cellState(bench.window(), kTailRow), QStringLiteral(" |32|false"));
    bench.pick(3, 2);
    QCOMPARE(cellState(bench.window(), kTailRow), QStringLiteral("я|255|false"));
}

void tst_StrainedTemplates::twoFieldsOnOneCell()
{
    walk(1, {refused(kLineRow, QStringLiteral("2"), kNoLine),
             taken(1, kBlockRow, QStringLiteral("Регистрация"), QStringLiteral("Block 0>1")),
             refused(kPositionRow, QStringLiteral("3"), kTaken),
             // Inside the wide field, whose first cell alone counts.
             taken(1, kPositionRow, QStringLiteral("4"), QStringLiteral("X 0>4")),
             taken(1, kPositionRow, QStringLiteral("0"), QStringLiteral("X 4>0")),
             // Back to the cell that the other one holds.
             {1,
              kBlockRow,
              QStringLiteral("Шапка чека"),
              {QStringLiteral("Block 1>0"), QStringLiteral("X 0>1")},
              pushedTo(1)},
             taken(1, kSizeRow, QStringLiteral("255"), QStringLiteral("Size 10>255")),
             taken(1, kSizeRow, QStringLiteral("12"), QStringLiteral("Size 255>12"))});
    walk(1, silentSteps());
    walk(1, viewSteps());
}

void tst_StrainedTemplates::fieldBelowTheOtherOnItsCell()
{
    auto& bench = m_bench.get();
    // Once off the tape, it does not get back to the cell that the other one still holds.
    walk(2, {taken(1, kSizeRow, QStringLiteral("0"), QStringLiteral("Size 5>0")),
             refused(kSizeRow, QStringLiteral("5"), kTaken)});
    QCOMPARE(poleItem(bench.window(), 2), nullptr);
    walk(2, {taken(1, kPositionRow, QStringLiteral("1"), QStringLiteral("X 0>1")),
             taken(1, kSizeRow, QStringLiteral("5"), QStringLiteral("Size 0>5")),
             refused(kPositionRow, QStringLiteral("0"), kTaken)});
    QCOMPARE(poleItem(bench.window(), 2)->x(), 13.0);
    walk(2, silentSteps());
    walk(2, viewSteps());
}

void tst_StrainedTemplates::highestValues()
{
    auto& bench = m_bench.get();
    QCOMPARE(bench.probe().maket().getBlockKolLines(2), 256);
    QCOMPARE(poleItem(bench.window(), 3)->x(), 18.0 * 255 + 1);
    walk(3, {refused(kBlockRow, QStringLiteral("Шапка чека"), kNoLineThere),
             taken(1, kLineRow, QStringLiteral("99"), QStringLiteral("Line 255>99")),
             taken(1, kLineRow, QStringLiteral("1"), QStringLiteral("Line 99>1")),
             taken(1, kBlockRow, QStringLiteral("Регистрация"), QStringLiteral("Block 2>1")),
             taken(1, kPositionRow, QStringLiteral("99"), QStringLiteral("X 255>99")),
             taken(1, kSizeRow, QStringLiteral("0"), QStringLiteral("Size 255>0")),
             taken(1, kSizeRow, QStringLiteral("255"), QStringLiteral("Size 0>255")),
             refused(kPositionRow, QStringLiteral("3"), kTaken),
             taken(1, kOnTapeRow, QStringLiteral("Слева"), QStringLiteral("AlignOnTape 3>1")),
             taken(1, kInPoleRow, QStringLiteral("По центру"), QStringLiteral("AlignInPole 3>2")),
             taken(1, kPressRow, kNo, QStringLiteral("PressRight 1>0")),
             taken(1, kExpandRow, kNo, QStringLiteral("Expand 1>0")),
             taken(1, kCutRow, kNo, QStringLiteral("CutToWidth 1>0")),
             taken(1, kMaskRow, QStringLiteral("Выключено"), QStringLiteral("MaskMode 3>0")),
             taken(1, kDropRow, kNo, QStringLiteral("DropIfZero 1>0")),
             taken(1, kStringsRow, kNo, QStringLiteral("PoleFlags 3>2"))});
    // The lines of the block that it has left stay.
    QCOMPARE(bench.probe().maket().getBlockKolLines(2), 256);
}

void tst_StrainedTemplates::highestValuesOfView()
{
    walk(3, {taken(2, kLineGapRow, QStringLiteral("3"), QStringLiteral("LineGap 255>3")),
             taken(2, kFontRow, QStringLiteral("0"), QStringLiteral("Font 7>0")),
             taken(2, kDoubleWidthRow, kNo, QStringLiteral("X2X 1>0")),
             taken(2, kDoubleHeightRow, kNo, QStringLiteral("X2Y 1>0")),
             taken(2, kBrightnessRow, QStringLiteral("0"), QStringLiteral("Brightness 15>0")),
             taken(2, kFormatRow, QStringLiteral("Не маскировать нули"), QStringLiteral("FractFormat 3>0")),
             taken(2, kTailRow, QStringLiteral("А"), QStringLiteral("TailChar 255>192")),
             taken(2, kLeadRow, kNo, QStringLiteral("PoleFlags 3>1"))});
    QCOMPARE(poleItem(m_bench.get().window(), 3)->x(), 12.0 * 255 + 1);
}

void tst_StrainedTemplates::fieldAllowedNowhere()
{
    QList<Step> steps;
    for (const auto& title : {QStringLiteral("Шапка чека"), QStringLiteral("Предытоговый"),
                              QStringLiteral("\"Чек аннулирован\""), QStringLiteral("Сторно оплаты")})
        steps.append(refused(kBlockRow, title, kForbidden));
    walk(4, steps);
    // Its own block is asked for only when it changes.
    walk(4, {refused(kLineRow, QStringLiteral("2"), kNoLine),
             taken(1, kPositionRow, QStringLiteral("99"), QStringLiteral("X 3>99")),
             taken(1, kPositionRow, QStringLiteral("0"), QStringLiteral("X 99>0")),
             taken(1, kSizeRow, QStringLiteral("255"), QStringLiteral("Size 200>255")),
             taken(1, kSizeRow, QStringLiteral("1"), QStringLiteral("Size 255>1"))});
    walk(4, silentSteps());
    walk(4, viewSteps());
}

void tst_StrainedTemplates::unplacedFieldFarBelowItsBlock()
{
    auto& bench = m_bench.get();
    walk(5, {refused(kSizeRow, QStringLiteral("5"), kNoLine), refused(kLineRow, QStringLiteral("1"), kNoLine),
             unchanged(kBlockRow, QStringLiteral("Итог")),
             refused(kBlockRow, QStringLiteral("Регистрация"), kNoLineThere),
             // The cell at 255 is taken, and no position follows it.
             refused(kBlockRow, QStringLiteral("Предытоговый"), kTaken),
             taken(1, kPositionRow, QStringLiteral("99"), QStringLiteral("X 255>99")),
             taken(1, kBlockRow, QStringLiteral("Предытоговый"), QStringLiteral("Block 3>2")),
             taken(1, kSizeRow, QStringLiteral("255"), QStringLiteral("Size 0>255"))});
    QVERIFY(poleItem(bench.window(), 5) != nullptr);
    // Now it is the leftmost of its line, and the line is as it is.
    QCOMPARE(poleItem(bench.window(), 5)->x(), 12.0 * 99 + 1);
    QCOMPARE(poleItem(bench.window(), 3)->x(), 12.0 * 255 + 1);
    walk(5, silentSteps());
    walk(5, viewSteps());
}

void tst_StrainedTemplates::unplacedFieldAllowedNowhere()
{
    walk(6, {refused(kBlockRow, QStringLiteral("Подвал чека"), kForbidden),
             refused(kSizeRow, QStringLiteral("5"), kTaken)});
    walk(6, silentSteps());
    walk(6, viewSteps());
    walk(6, {taken(1, kPositionRow, QStringLiteral("2"), QStringLiteral("X 3>2")),
             taken(1, kSizeRow, QStringLiteral("5"), QStringLiteral("Size 0>5")),
             refused(kBlockRow, QStringLiteral("Шапка чека"), kForbidden)});
}

void tst_StrainedTemplates::fieldAllowedNowhereHatchesEveryLine()
{
    auto& bench = m_bench.get();
    const auto allowedLines = [&bench] {
        int count = 0;
        for (QGraphicsItem* const item : bench.probe().scene().items()) {
            const auto* const line = qgraphicsitem_cast<ItemLine*>(item);
            count += line != nullptr && line->lineAllowed ? 1 : 0;
        }
        return count;
    };
    constexpr int kLines = 1 + 1 + 255;
    QCOMPARE(allowedLines(), kLines);
    bench.pick(4);
    QCOMPARE(allowedLines(), 0);
    bench.pick(1);
    QCOMPARE(allowedLines(), kLines);
}

QTEST_MAIN(tst_StrainedTemplates)
#include "tst_strained_templates.moc"
