#include "editing/rulesbench.h"
#include "editing/tablerows.h"
#include "support/tablesteps.h"

#include <QTableWidget>
#include <QTest>

namespace {

/// What an accepted edit of one of the rows leaves that redraw nothing.
Outcome takenSilently(const Edit& edit)
{
    if (edit.row == kOnTapeRow || edit.row == kInPoleRow)
        return takenByText(edit, edit.newValue);
    if (edit.row != kMaskRow)
        return takenByValue(edit);
    Outcome outcome = takenByText(edit, edit.newValue);
    outcome.log.clear();
    for (const int value : {edit.oldValue, edit.newValue, edit.newValue}) {
        QStringList lines = callLines(1, kMaskRow, edit.newText, value, edit.newValue);
        const QString last = lines.takeLast();
        lines.append(QStringLiteral("dataNewInt= %1 %2").arg(value).arg(edit.newText));
        lines.append(QStringLiteral("dataNewInt= %1").arg(edit.newValue));
        outcome.log += lines + QStringList{last};
    }
    return outcome;
}

} // namespace

/// Rows whose change redraws nothing.
class tst_RulesSilent : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { m_bench.dropIfFailed(); }

    void silentListRowIsTaken_data();
    void silentListRowIsTaken();
    void silentListRowOfTheListIsTaken_data();
    void silentListRowOfTheListIsTaken();
    void unknownAlignmentIsTheCentre_data();
    void unknownAlignmentIsTheCentre();
    void tableOfLinesKeepsTheLowByteOfTheFlags_data();
    void tableOfLinesKeepsTheLowByteOfTheFlags();
    void editorLeftAloneChangesNothing_data();
    void editorLeftAloneChangesNothing();

private:
    SharedBench m_bench;
};

void tst_RulesSilent::silentListRowIsTaken_data()
{
    QTest::addColumn<FieldRow>("field");
    QTest::addColumn<Edit>("edit");
    const QString no = QStringLiteral("Нет");
    const QString yes = QStringLiteral("Да");
    const QString left = QStringLiteral("Слева");
    const QString centre = QStringLiteral("По центру");
    const QString right = QStringLiteral("Справа");
    const auto row = [](const char* name, const FieldRow& field, PositionRow at, const QString& from,
                        int fromValue, const QString& to, int toValue, const char* change) {
        QTest::newRow(name) << field
                            << Edit{1, at, from, fromValue, to, toValue, QString::fromLatin1(change)};
    };
    row("on the tape: to the left", {.alignOnTape = 2}, kOnTapeRow, centre, 2, left, 1, "1.AlignOnTape 2>1");
    row("on the tape: to the centre", {.alignOnTape = 3}, kOnTapeRow, right, 3, centre, 2,
        "1.AlignOnTape 3>2");
    row("on the tape: to the right", {.alignOnTape = 1}, kOnTapeRow, left, 1, right, 3, "1.AlignOnTape 1>3");
    row("on the tape: from nothing", {.alignOnTape = 0}, kOnTapeRow, {}, 0, left, 1, "1.AlignOnTape 0>1");
    row("in the field: to the left", {.alignInPole = 3}, kInPoleRow, right, 3, left, 1, "1.AlignInPole 3>1");
    row("in the field: to the centre", {.alignInPole = 1}, kInPoleRow, left, 1, centre, 2,
        "1.AlignInPole 1>2");
    row("in the field: to the right", {.alignInPole = 2}, kInPoleRow, centre, 2, right, 3,
        "1.AlignInPole 2>3");
    row("in the field: from nothing", {.alignInPole = 0}, kInPoleRow, {}, 0, centre, 2, "1.AlignInPole 0>2");
    row("press right: yes", {}, kPressRow, no, 0, yes, 1, "1.PressRight 0>1");
    row("press right: no", {.pressRight = 1}, kPressRow, yes, 1, no, 0, "1.PressRight 1>0");
    row("expand: yes", {}, kExpandRow, no, 0, yes, 1, "1.Expand 0>1");
    row("expand: no", {.expand = 1}, kExpandRow, yes, 1, no, 0, "1.Expand 1>0");
    row("cut: yes", {}, kCutRow, no, 0, yes, 1, "1.CutToWidth 0>1");
    row("cut: no", {.cutToWidth = 1}, kCutRow, yes, 1, no, 0, "1.CutToWidth 1>0");
    row("masking: off", {.maskMode = 3}, kMaskRow, QStringLiteral("Приж.своб.символ"), 3,
        QStringLiteral("Выключено"), 0, "1.MaskMode 3>0");
    row("masking: on", {.maskMode = 0}, kMaskRow, QStringLiteral("Выключено"), 0,
        QStringLiteral("Маскировать"), 1, "1.MaskMode 0>1");
    row("masking: zeros", {.maskMode = 1}, kMaskRow, QStringLiteral("Маскировать"), 1,
        QStringLiteral("Выровнять нулями"), 2, "1.MaskMode 1>2");
    row("masking: free character", {.maskMode = 2}, kMaskRow, QStringLiteral("Выровнять нулями"), 2,
        QStringLiteral("Приж.своб.символ"), 3, "1.MaskMode 2>3");
    row("drop: yes", {}, kDropRow, no, 0, yes, 1, "1.DropIfZero 0>1");
    row("drop: no", {.dropIfZero = 1}, kDropRow, yes, 1, no, 0, "1.DropIfZero 1>0");
    row("table of lines: yes", {.flags = 2}, kStringsRow, no, 0, yes, 1, "1.PoleFlags 2>3");
    row("table of lines: no", {.flags = 3}, kStringsRow, yes, 1, no, 0, "1.PoleFlags 3>2");
}

void tst_RulesSilent::silentListRowIsTaken()
{
    QFETCH(FieldRow, field);
    QFETCH(Edit, edit);
    auto& bench = m_bench.get();
    bench.open({field, unplaced()});
    bench.pick(1);
    QCOMPARE(cellState(bench.window(), edit.row),
             QStringLiteral("%1|%2|false").arg(edit.oldText).arg(edit.oldValue));
    bench.choose(edit.row, edit.newText);
    QCOMPARE(bench.outcome().lines(), takenSilently(edit).lines());
    const bool isByText = edit.row == kOnTapeRow || edit.row == kInPoleRow || edit.row == kMaskRow;
    QCOMPARE(bench.appliedOnCall(), isByText ? 1 : 2);
    QCOMPARE(propertyTable(bench.window())->rowCount(), 12);
}

void tst_RulesSilent::silentListRowOfTheListIsTaken_data()
{
    QTest::addColumn<Edit>("edit");
    const auto yes = [](const char* name, PositionRow at, const char* change) {
        QTest::newRow(name) << Edit{
            1, at, QStringLiteral("Нет"), 0, QStringLiteral("Да"), 1, QString::fromLatin1(change)};
    };
    const QString left = QStringLiteral("Слева");
    const QString right = QStringLiteral("Справа");
    QTest::newRow("on the tape") << Edit{
        1, kOnTapeRow, left, 1, right, 3, QStringLiteral("1.AlignOnTape 1>3")};
    QTest::newRow("in the field") << Edit{
        1, kInPoleRow, left, 1, right, 3, QStringLiteral("1.AlignInPole 1>3")};
    yes("press right", kPressRow, "1.PressRight 0>1");
    yes("expand", kExpandRow, "1.Expand 0>1");
    yes("cut", kCutRow, "1.CutToWidth 0>1");
    QTest::newRow("masking") << Edit{1,
                                     kMaskRow,
                                     QStringLiteral("Выключено"),
                                     0,
                                     QStringLiteral("Выровнять нулями"),
                                     2,
                                     QStringLiteral("1.MaskMode 0>2")};
    yes("drop", kDropRow, "1.DropIfZero 0>1");
    yes("table of lines", kStringsRow, "1.PoleFlags 0>1");
}

void tst_RulesSilent::silentListRowOfTheListIsTaken()
{
    QFETCH(Edit, edit);
    auto& bench = m_bench.get();
    bench.open({{.size = 0}, other(1, 0)});
    bench.pick(1);
    bench.choose(edit.row, edit.newText);
    QCOMPARE(bench.outcome().lines(), takenSilently(edit).lines());
}

void tst_RulesSilent::unknownAlignmentIsTheCentre_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::newRow("on the tape, a word") << int(kOnTapeRow) << QStringLiteral("Наискосок");
    QTest::newRow("on the tape, nothing") << int(kOnTapeRow) << QString();
    QTest::newRow("in the field, another case") << int(kInPoleRow) << QStringLiteral("слева");
    QTest::newRow("in the field, a number") << int(kInPoleRow) << QStringLiteral("3");
}

void tst_RulesSilent::unknownAlignmentIsTheCentre()
{
    QFETCH(int, row);
    QFETCH(QString, text);
    auto& bench = m_bench.get();
    bench.open({{.alignInPole = 1, .alignOnTape = 1}});
    bench.pick(1);
    // No editor offers such a text.
    valueCell(bench.window(), row)->setText(text);
    bench.settle();
    const Outcome centred{.changes = {row == kOnTapeRow ? QStringLiteral("1.AlignOnTape 1>2")
                                                        : QStringLiteral("1.AlignInPole 1>2")},
                          .warnings = {},
                          .cells = {text + QStringLiteral("|1|false")},
                          .log = callLines(1, row, text, 1, 2),
                          .refills = 0};
    QCOMPARE(bench.outcome().lines(), centred.lines());
}

void tst_RulesSilent::tableOfLinesKeepsTheLowByteOfTheFlags_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("to");
    QTest::newRow("set") << 0xfc << QStringLiteral("Да") << 0xfd;
    QTest::newRow("cleared") << 0xff << QStringLiteral("Нет") << 0xfe;
    QTest::newRow("set, higher bits lost") << 0x7fc << QStringLiteral("Да") << 0xfd;
    QTest::newRow("cleared, higher bits lost") << 0x7ff << QStringLiteral("Нет") << 0xfe;
}

void tst_RulesSilent::tableOfLinesKeepsTheLowByteOfTheFlags()
{
    QFETCH(int, from);
    QFETCH(QString, text);
    QFETCH(int, to);
    auto& bench = m_bench.get();
    bench.open({FieldRow()});
    // More than a file may give.
    bench.probe().bd().getPoleByKey(1).PoleFlags = from;
    bench.pick(1);
    bench.choose(kStringsRow, text);
    QCOMPARE(bench.outcome().changes, QStringList{QStringLiteral("1.PoleFlags %1>%2").arg(from).arg(to)});
}

void tst_RulesSilent::editorLeftAloneChangesNothing_data()
{
    QTest::addColumn<FieldRow>("field");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("state");
    const FieldRow usual{.line = 2, .x = 7, .pressRight = 1, .maskMode = 2};
    QTest::newRow("block") << usual << int(kBlockRow) << QStringLiteral("Шапка чека|0|true");
    QTest::newRow("line") << usual << int(kLineRow) << QStringLiteral("2|2|true");
    QTest::newRow("position") << usual << int(kPositionRow) << QStringLiteral("7|7|true");
    QTest::newRow("size") << usual << int(kSizeRow) << QStringLiteral("10|10|true");
    QTest::newRow("on the tape") << usual << int(kOnTapeRow) << QStringLiteral("Слева|1|true");
    QTest::newRow("press right") << usual << int(kPressRow) << QStringLiteral("Да|1|true");
    QTest::newRow("expand") << usual << int(kExpandRow) << QStringLiteral("Нет|0|true");
    QTest::newRow("masking") << usual << int(kMaskRow) << QStringLiteral("Выровнять нулями|2|true");
    QTest::newRow("table of lines") << usual << int(kStringsRow) << QStringLiteral("Нет|0|true");
    QTest::newRow("line 200 in an editor up to 99")
        << FieldRow{.line = 200} << int(kLineRow) << QStringLiteral("200|200|true");
    QTest::newRow("position 150 in an editor up to 99")
        << FieldRow{.x = 150} << int(kPositionRow) << QStringLiteral("150|150|true");
    QTest::newRow("no alignment on the tape")
        << FieldRow{.alignOnTape = 0} << int(kOnTapeRow) << QStringLiteral("|0|true");
    QTest::newRow("no alignment in the field")
        << FieldRow{.alignInPole = 0} << int(kInPoleRow) << QStringLiteral("|0|true");
}

void tst_RulesSilent::editorLeftAloneChangesNothing()
{
    QFETCH(FieldRow, field);
    QFETCH(int, row);
    QFETCH(QString, state);
    auto& bench = m_bench.get();
    bench.open({field, unplaced()});
    bench.pick(1);
    checkLeftAlone(bench, row, state);
}

QTEST_MAIN(tst_RulesSilent)
#include "tst_rules_silent.moc"
