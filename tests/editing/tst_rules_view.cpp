#include "editing/rulesbench.h"
#include "editing/tablerows.h"
#include "support/tablesteps.h"

#include <QGraphicsItem>
#include <QTableWidget>
#include <QTest>

namespace {

const QString kNo = QStringLiteral("Нет");
const QString kYes = QStringLiteral("Да");
const QString kFormats[] = {QStringLiteral("Не маскировать нули"), QStringLiteral("Печать в формате 0.0"),
                            QStringLiteral("Обрез.незнач.нули"), QStringLiteral("Печатать как штуки")};

Edit yesEdit(ViewRow row, const char* change)
{
    return {2, row, kNo, 0, kYes, 1, QString::fromLatin1(change)};
}

Edit noEdit(ViewRow row, const char* change)
{
    return {2, row, kYes, 1, kNo, 0, QString::fromLatin1(change)};
}

/// The number that the editor of the format writes is one below the format.
Edit formatEdit(int from, int to)
{
    return {2,
            kFormatRow,
            kFormats[from],
            from,
            kFormats[to],
            to - 1,
            QStringLiteral("1.FractFormat %1>%2").arg(from).arg(to)};
}

Edit charEdit(const QString& oldText, int from, const QString& newText, int to)
{
    return {2, kTailRow, oldText, from, newText, to, QStringLiteral("1.TailChar %1>%2").arg(from).arg(to)};
}

/// The ways to pick the field under test: placed on the tape, and of no size in the list.
constexpr int kPickSizes[] = {4, 0};

} // namespace

class tst_RulesView : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { m_bench.dropIfFailed(); }

    void fontIsTaken_data();
    void fontIsTaken();
    void doubleSizeIsTaken_data();
    void doubleSizeIsTaken();
    void lineGapIsTaken_data();
    void lineGapIsTaken();
    void brightnessIsTakenSilently_data();
    void brightnessIsTakenSilently();
    void formatIsTakenSilently_data();
    void formatIsTakenSilently();
    void tailCharIsTaken_data();
    void tailCharIsTaken();
    void leadCharIsTakenSilently_data();
    void leadCharIsTakenSilently();
    void leadCharKeepsTheLowByteOfTheFlags_data();
    void leadCharKeepsTheLowByteOfTheFlags();
    void numberBeyondTheEditorIsNotTaken_data();
    void numberBeyondTheEditorIsNotTaken();
    void textOutsideTheTableCountsAsTheFirst_data();
    void textOutsideTheTableCountsAsTheFirst();
    void editorLeftAloneChangesNothing_data();
    void editorLeftAloneChangesNothing();

private:
    SharedBench m_bench;
};

void tst_RulesView::fontIsTaken_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QSize>("cell");
    QTest::newRow("1") << 0 << 1 << QSize(12, 24);
    QTest::newRow("3") << 0 << 3 << QSize(12, 16);
    QTest::newRow("6") << 0 << 6 << QSize(10, 14);
    QTest::newRow("7, the last") << 0 << 7 << QSize(9, 14);
    QTest::newRow("0, the first") << 7 << 0 << QSize(12, 20);
}

void tst_RulesView::fontIsTaken()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QSize, cell);
    auto& bench = m_bench.get();
    for (const int size : kPickSizes) {
        bench.open({{.font = from, .x = 7, .size = size}, unplaced()});
        bench.pick(1, 2);
        bench.type(kFontRow, QString::number(to));
        const Edit edit =
            Edit::number(2, kFontRow, from, to, QStringLiteral("1.Font %1>%2").arg(from).arg(to));
        QCOMPARE(bench.outcome().lines(), takenByValue(edit).thenRedrawn(size == 0).lines());
        QCOMPARE(bench.appliedOnCall(), 2);
        if (size > 0) {
            QCOMPARE(poleItem(bench.window(), 1)->boundingRect(),
                     QRectF(0, 0, 4 * cell.width(), cell.height()));
            QCOMPARE(poleItem(bench.window(), 1)->x(), 7.0 * cell.width() + 1);
        }
    }
}

void tst_RulesView::doubleSizeIsTaken_data()
{
    QTest::addColumn<FieldRow>("field");
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<QSize>("cell");
    QTest::newRow("double width") << FieldRow{.font = 1} << yesEdit(kDoubleWidthRow, "1.X2X 0>1")
                                  << QSize(24, 24);
    QTest::newRow("single width") << FieldRow{.font = 1, .x2x = 1} << noEdit(kDoubleWidthRow, "1.X2X 1>0")
                                  << QSize(12, 24);
    QTest::newRow("double height") << FieldRow{.font = 1} << yesEdit(kDoubleHeightRow, "1.X2Y 0>1")
                                   << QSize(12, 48);
    QTest::newRow("single height") << FieldRow{.font = 1, .x2y = 1} << noEdit(kDoubleHeightRow, "1.X2Y 1>0")
                                   << QSize(12, 24);
}

void tst_RulesView::doubleSizeIsTaken()
{
    QFETCH(FieldRow, field);
    QFETCH(Edit, edit);
    QFETCH(QSize, cell);
    auto& bench = m_bench.get();
    for (const int size : kPickSizes) {
        field.size = size;
        bench.open({field, unplaced()});
        bench.pick(1, 2);
        bench.choose(edit.row, edit.newText);
        QCOMPARE(bench.outcome().lines(), takenByText(edit, edit.newValue).thenRedrawn(size == 0).lines());
        QCOMPARE(bench.appliedOnCall(), 1);
        if (size > 0)
            QCOMPARE(poleItem(bench.window(), 1)->boundingRect(),
                     QRectF(0, 0, 4 * cell.width(), cell.height()));
    }
}

void tst_RulesView::lineGapIsTaken_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::newRow("largest of the editor") << 3 << 15;
    QTest::newRow("none") << 3 << 0;
    QTest::newRow("over a number that the editor cannot show") << 200 << 7;
    QTest::newRow("over such a number, by the one that it opens on") << 200 << 15;
}

void tst_RulesView::lineGapIsTaken()
{
    QFETCH(int, from);
    QFETCH(int, to);
    auto& bench = m_bench.get();
    for (const int size : kPickSizes) {
        bench.open({{.gap = from, .size = size}, unplaced()});
        bench.pick(1, 2);
        bench.type(kLineGapRow, QString::number(to));
        const Edit edit =
            Edit::number(2, kLineGapRow, from, to, QStringLiteral("1.LineGap %1>%2").arg(from).arg(to));
        QCOMPARE(bench.outcome().lines(), takenByValue(edit).thenRedrawn(size == 0).lines());
        QCOMPARE(bench.appliedOnCall(), 2);
    }
}

void tst_RulesView::brightnessIsTakenSilently_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::newRow("largest") << 3 << 15;
    QTest::newRow("none") << 3 << 0;
}

void tst_RulesView::brightnessIsTakenSilently()
{
    QFETCH(int, from);
    QFETCH(int, to);
    auto& bench = m_bench.get();
    for (const int size : kPickSizes) {
        bench.open({{.size = size, .brightness = from}, unplaced()});
        bench.pick(1, 2);
        bench.type(kBrightnessRow, QString::number(to));
        const Edit edit =
            Edit::number(2, kBrightnessRow, from, to, QStringLiteral("1.Brightness %1>%2").arg(from).arg(to));
        QCOMPARE(bench.outcome().lines(), takenByValue(edit).lines());
        QCOMPARE(propertyTable(bench.window())->rowCount(), 8);
    }
}

void tst_RulesView::formatIsTakenSilently_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::newRow("to zeros as they are") << 2 << 0;
    QTest::newRow("to 0.0, whose number stands in the cell already") << 0 << 1;
    QTest::newRow("to 0.0") << 3 << 1;
    QTest::newRow("to zeros cut") << 0 << 2;
    QTest::newRow("to pieces") << 1 << 3;
}

void tst_RulesView::formatIsTakenSilently()
{
    QFETCH(int, from);
    QFETCH(int, to);
    auto& bench = m_bench.get();
    for (const int size : kPickSizes) {
        bench.open({{.size = size, .fractFormat = from}, unplaced()});
        bench.pick(1, 2);
        bench.choose(kFormatRow, kFormats[to]);
        QCOMPARE(bench.outcome().lines(), takenByText(formatEdit(from, to), to).lines());
        QCOMPARE(bench.appliedOnCall(), 1);
    }
}

void tst_RulesView::tailCharIsTaken_data()
{
    QTest::addColumn<Edit>("edit");
    const QString a = QStringLiteral("A");
    const QString blank = QStringLiteral(" ");
    QTest::newRow("letter") << charEdit(blank, 32, a, 65);
    QTest::newRow("blank, the first of the list") << charEdit(a, 65, blank, 32);
    QTest::newRow("last of the list") << charEdit(a, 65, QStringLiteral("я"), 255);
    QTest::newRow("letter outside the alphabet's row") << charEdit(a, 65, QStringLiteral("Ё"), 168);
    QTest::newRow("digit, whose text is a number") << charEdit(a, 65, QStringLiteral("5"), 53);
    QTest::newRow("percent sign") << charEdit(a, 65, QStringLiteral("%"), 37);
    QTest::newRow("ampersand") << charEdit(a, 65, QStringLiteral("&"), 38);
    QTest::newRow("angle bracket") << charEdit(a, 65, QStringLiteral("<"), 60);
    QTest::newRow("over one that the list lacks") << charEdit(QStringLiteral("\n"), 10, a, 65);
    QTest::newRow("over the null character") << charEdit(QString(QChar()), 0, a, 65);
}

void tst_RulesView::tailCharIsTaken()
{
    QFETCH(Edit, edit);
    auto& bench = m_bench.get();
    for (const int size : kPickSizes) {
        bench.open({{.size = size, .tailChar = edit.oldValue}, unplaced()});
        bench.pick(1, 2);
        QCOMPARE(valueCell(bench.window(), kTailRow)->text(), edit.oldText);
        bench.choose(kTailRow, edit.newText);
        QCOMPARE(bench.outcome().lines(), takenByValue(edit).thenRedrawn(size == 0).lines());
        QCOMPARE(bench.appliedOnCall(), 2);
    }
}

void tst_RulesView::leadCharIsTakenSilently_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<Edit>("edit");
    QTest::newRow("set alone") << 0 << yesEdit(kLeadRow, "1.PoleFlags 0>2");
    QTest::newRow("set beside the other") << 1 << yesEdit(kLeadRow, "1.PoleFlags 1>3");
    QTest::newRow("cleared alone") << 2 << noEdit(kLeadRow, "1.PoleFlags 2>0");
    QTest::newRow("cleared beside the other") << 3 << noEdit(kLeadRow, "1.PoleFlags 3>1");
}

void tst_RulesView::leadCharIsTakenSilently()
{
    QFETCH(int, flags);
    QFETCH(Edit, edit);
    auto& bench = m_bench.get();
    for (const int size : kPickSizes) {
        bench.open({{.flags = flags, .size = size}, unplaced()});
        bench.pick(1, 2);
        bench.choose(kLeadRow, edit.newText);
        QCOMPARE(bench.outcome().lines(), takenByText(edit, edit.newValue).lines());
        QCOMPARE(bench.appliedOnCall(), 1);
    }
}

void tst_RulesView::leadCharKeepsTheLowByteOfTheFlags_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("to");
    QTest::newRow("set") << 0xf9 << kYes << 0xfb;
    QTest::newRow("cleared") << 0xff << kNo << 0xfd;
    QTest::newRow("set, higher bits lost") << 0x7f9 << kYes << 0xfb;
    QTest::newRow("cleared, higher bits lost") << 0x7ff << kNo << 0xfd;
}

void tst_RulesView::leadCharKeepsTheLowByteOfTheFlags()
{
    QFETCH(int, from);
    QFETCH(QString, text);
    QFETCH(int, to);
    auto& bench = m_bench.get();
    bench.open({FieldRow()});
    // More than a file may give.
    bench.probe().bd().getPoleByKey(1).PoleFlags = from;
    bench.pick(1, 2);
    bench.choose(kLeadRow, text);
    QCOMPARE(bench.outcome().changes, QStringList{QStringLiteral("1.PoleFlags %1>%2").arg(from).arg(to)});
}

void tst_RulesView::numberBeyondTheEditorIsNotTaken_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("state");
    QTest::newRow("font 8") << int(kFontRow) << QStringLiteral("8") << QStringLiteral("3|3|true");
    QTest::newRow("font -1") << int(kFontRow) << QStringLiteral("-1") << QStringLiteral("1|1|true");
    QTest::newRow("gap 16") << int(kLineGapRow) << QStringLiteral("16") << QStringLiteral("1|1|true");
    QTest::newRow("brightness 200") << int(kBrightnessRow) << QStringLiteral("200")
                                    << QStringLiteral("2|2|true");
}

void tst_RulesView::numberBeyondTheEditorIsNotTaken()
{
    QFETCH(int, row);
    QFETCH(QString, typed);
    QFETCH(QString, state);
    auto& bench = m_bench.get();
    // In the list, so that the table outlives a redraw.
    bench.open({{.font = 3, .gap = 3, .size = 0, .brightness = 3}});
    bench.pick(1, 2);
    // What is typed beyond the range does not enter the editor.
    bench.type(row, typed);
    QCOMPARE(cellState(bench.window(), row), state);
    const auto& record = bench.record(1);
    const int shown = row == kFontRow ? record.Font : row == kLineGapRow ? record.LineGap : record.Brightness;
    QCOMPARE(QString::number(shown), valueCell(bench.window(), row)->text());
}

void tst_RulesView::textOutsideTheTableCountsAsTheFirst_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("change");
    QTest::newRow("width") << int(kDoubleWidthRow) << QStringLiteral("да") << QStringLiteral("1.X2X 1>0");
    QTest::newRow("height") << int(kDoubleHeightRow) << QStringLiteral("1") << QStringLiteral("1.X2Y 1>0");
    QTest::newRow("format") << int(kFormatRow) << QStringLiteral("Печать")
                            << QStringLiteral("1.FractFormat 3>0");
    QTest::newRow("flag") << int(kLeadRow) << QString() << QStringLiteral("1.PoleFlags 3>1");
}

void tst_RulesView::textOutsideTheTableCountsAsTheFirst()
{
    QFETCH(int, row);
    QFETCH(QString, text);
    QFETCH(QString, change);
    auto& bench = m_bench.get();
    bench.open({{.x2x = 1, .x2y = 1, .flags = 3, .fractFormat = 3}});
    bench.pick(1, 2);
    // No editor offers such a text.
    valueCell(bench.window(), row)->setText(text);
    bench.settle();
    QCOMPARE(bench.outcome().changes, QStringList{change});
}

void tst_RulesView::editorLeftAloneChangesNothing_data()
{
    QTest::addColumn<FieldRow>("field");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("state");
    const FieldRow usual{
        .font = 2, .x2x = 1, .flags = 2, .gap = 4, .fractFormat = 2, .brightness = 5, .tailChar = 65};
    QTest::newRow("font") << usual << int(kFontRow) << QStringLiteral("2|2|true");
    QTest::newRow("width") << usual << int(kDoubleWidthRow) << QStringLiteral("Да|1|true");
    QTest::newRow("height") << usual << int(kDoubleHeightRow) << QStringLiteral("Нет|0|true");
    QTest::newRow("gap") << usual << int(kLineGapRow) << QStringLiteral("4|4|true");
    QTest::newRow("brightness") << usual << int(kBrightnessRow) << QStringLiteral("5|5|true");
    // Its list holds no number one above, so the one in the cell comes out one too low.
    QTest::newRow("format") << usual << int(kFormatRow) << QStringLiteral("Обрез.незнач.нули|1|true");
    QTest::newRow("character") << usual << int(kTailRow) << QStringLiteral("A|65|true");
    QTest::newRow("flag") << usual << int(kLeadRow) << QStringLiteral("Да|1|true");
    QTest::newRow("gap 200 in an editor up to 15")
        << FieldRow{.gap = 200} << int(kLineGapRow) << QStringLiteral("200|200|true");
    QTest::newRow("character outside the list")
        << FieldRow{.tailChar = 10} << int(kTailRow) << QStringLiteral("\n|10|true");
}

void tst_RulesView::editorLeftAloneChangesNothing()
{
    QFETCH(FieldRow, field);
    QFETCH(int, row);
    QFETCH(QString, state);
    auto& bench = m_bench.get();
    bench.open({field, unplaced()});
    bench.pick(1, 2);
    checkLeftAlone(bench, row, state);
}

QTEST_MAIN(tst_RulesView)
#include "tst_rules_view.moc"
