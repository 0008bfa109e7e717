#include "editing/editingsession.h"
#include "support/expectedscene.h"
#include "support/tablesteps.h"

#include <QTableWidget>
#include <QTest>

namespace {

/// Name and value cell of each row, as "name=text|value|flag".
QStringList tableRows(MainWindow& window)
{
    QStringList rows;
    const QTableWidget* const table = propertyTable(window);
    for (int row = 0; row < table->rowCount(); ++row)
        rows.append(table->item(row, 0)->text() + u'=' + cellState(window, row));
    return rows;
}

QList<int> columnWidths(MainWindow& window)
{
    const QTableWidget* const table = propertyTable(window);
    return {table->columnWidth(0), table->columnWidth(1)};
}

/// The lines of the log that tell of changed cells, from the line `from` on.
QStringList changeLines(MainWindow& window, qsizetype from)
{
    return logSince(window, from).filter(QStringLiteral("cellChngd"));
}

bool isNameColumnFixed(MainWindow& window)
{
    const QTableWidget* const table = propertyTable(window);
    for (int row = 0; row < table->rowCount(); ++row) {
        const Qt::ItemFlags flags = table->item(row, 0)->flags();
        if (flags.testAnyFlags(Qt::ItemIsEditable | Qt::ItemIsSelectable) ||
            !flags.testFlag(Qt::ItemIsEnabled))
            return false;
    }
    return true;
}

} // namespace

class tst_Table : public QObject
{
    Q_OBJECT

private slots:
    void tableIsEmptyUntilSomethingIsPicked();
    void headingIsShownReadOnly();
    void guideLineShowsTheFontOfItsLeftmostField();
    void guideLineWithoutFieldsShowsNoFont();
    void positionFormShowsTheRecord();
    void viewFormShowsTheRecord();
    void valueWithoutTextShowsAnEmptyCell();
    void valueRoleIsEightBitsWide();
    void fillingLeavesEveryRecordAsItWas();
    void fillingTellsTheLogOfEachRow();
    void fieldFromTheListGetsTheSameTable();
    void keyWithoutRecordShowsABlankOne();
};

void tst_Table::tableIsEmptyUntilSomethingIsPicked()
{
    EditingSession session(workFields());
    QCOMPARE(propertyTable(session.window)->columnCount(), 2);
    QCOMPARE(propertyTable(session.window)->rowCount(), 0);
    QCOMPARE(columnWidths(session.window), (QList<int>{200, 125}));

    pickPole(session.window, 3);
    QCOMPARE(propertyTable(session.window)->rowCount(), 12);
    clickButton(session.window, "btnRedraw");
    QTRY_COMPARE(propertyTable(session.window)->rowCount(), 0);
    QCOMPARE(columnWidths(session.window), (QList<int>{200, 125}));
}

void tst_Table::headingIsShownReadOnly()
{
    EditingSession session(workFields());
    const auto before = session.records();
    for (int block = 0; block < 10; ++block) {
        pickItem(session.window, headerItem(session.window, block));
        QCOMPARE(tableRows(session.window),
                 (QStringList{QStringLiteral("Название=%1||").arg(headingTexts().at(block)),
                              QStringLiteral("Номер=%1||").arg(block)}));
        QCOMPARE(columnWidths(session.window), (QList<int>{180, 165}));
        QCOMPARE(propertyTable(session.window)->editTriggers(), QAbstractItemView::NoEditTriggers);
        QVERIFY(isNameColumnFixed(session.window));
        QVERIFY(valueCell(session.window, 0)->flags().testFlag(Qt::ItemIsEditable));
        QCOMPARE(openEditor(session.window, 0), nullptr);
        QCOMPARE(openEditor(session.window, 1), nullptr);
    }
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_Table::guideLineShowsTheFontOfItsLeftmostField()
{
    struct Font
    {
        int dx;
        int dy;
    };
    const Font fonts[] = {{12, 20}, {12, 24}, {12, 20}, {12, 16}, {12, 10}, {12, 10}, {10, 14}, {9, 14}};
    QList<FieldRow> fields;
    for (int font = 0; font < 8; ++font) {
        // The field to the left decides, though its key is the higher one.
        fields.append({.block = 2, .font = (font + 1) % 8, .line = font + 1, .x = 30, .size = 4});
        fields.append({.block = 2, .font = font, .x2y = font % 2, .line = font + 1, .x = 20, .size = 4});
    }
    EditingSession session(fields);
    const auto before = session.records();
    for (int font = 0; font < 8; ++font) {
        pickItem(session.window, lineItem(session.window, 2, font + 1));
        const auto [dx, dy] = fonts[font];
        QCOMPARE(tableRows(session.window),
                 (QStringList{QStringLiteral("Высота=%1||").arg(font % 2 == 1 ? 2 * dy : dy),
                              QStringLiteral("Шрифт=%1 (%2x%3)||").arg(font).arg(dx).arg(dy),
                              QStringLiteral("Полей=2||"), QStringLiteral("Блок=[2] Предытоговый||")}));
        QCOMPARE(columnWidths(session.window), (QList<int>{180, 165}));
        QCOMPARE(propertyTable(session.window)->editTriggers(), QAbstractItemView::NoEditTriggers);
        QVERIFY(isNameColumnFixed(session.window));
        QCOMPARE(openEditor(session.window, 2), nullptr);
    }
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_Table::guideLineWithoutFieldsShowsNoFont()
{
    EditingSession session(workFields());
    const QStringList empty{QStringLiteral("Высота=20||"), QStringLiteral("Шрифт=-1 (12x20)||"),
                            QStringLiteral("Полей=0||"), QStringLiteral("Блок=[1] Регистрация||")};
    pickItem(session.window, lineItem(session.window, 1, 2));
    QCOMPARE(tableRows(session.window), empty);

    // The last line of the block loses its only field, so the model ends before it while the tape keeps it.
    pickPole(session.window, 7);
    clickButton(session.window, "btnPoleDel");
    session.settle();
    QCOMPARE(session.probe.bd().blocks.at(1).lines.size(), 2);
    pickItem(session.window, lineItem(session.window, 1, 4));
    QCOMPARE(tableRows(session.window), empty);
}

void tst_Table::positionFormShowsTheRecord()
{
    EditingSession session({{.block = 8,
                             .flags = 3,
                             .line = 2,
                             .x = 7,
                             .size = 11,
                             .dropIfZero = 1,
                             .pressRight = 0,
                             .expand = 1,
                             .cutToWidth = 0,
                             .maskMode = 3,
                             .alignInPole = 3,
                             .alignOnTape = 1},
                            {.block = 0,
                             .flags = 2,
                             .line = 1,
                             .x = 0,
                             .size = 30,
                             .dropIfZero = 0,
                             .pressRight = 1,
                             .expand = 0,
                             .cutToWidth = 1,
                             .maskMode = 1,
                             .alignInPole = 1,
                             .alignOnTape = 2}});
    pickPole(session.window, 1);
    QCOMPARE(
        tableRows(session.window),
        (QStringList{
            QStringLiteral("Блок=\"Чек аннулирован\"|8|false"), QStringLiteral("Строка в блоке=2|2|false"),
            QStringLiteral("Позиция в строке=7|7|false"), QStringLiteral("Размер поля (знаков)=11|11|false"),
            QStringLiteral("По ширине ленты=Слева|1|false"), QStringLiteral("Внутри поля=Справа|3|false"),
            QStringLiteral("Прижать вправо=Нет|0|false"), QStringLiteral("Расширить поле=Да|1|false"),
            QStringLiteral("Обрезать по ширине=Нет|0|false"),
            QStringLiteral("Маскирование=Приж.своб.символ|3|false"),
            QStringLiteral("Убрать строку, если 0=Да|1|false"), QStringLiteral("Таблица строк=Да|1|false")}));
    QCOMPARE(columnWidths(session.window), (QList<int>{170, 155}));
    QCOMPARE(propertyTable(session.window)->editTriggers(), QAbstractItemView::AllEditTriggers);
    QVERIFY(isNameColumnFixed(session.window));

    pickPole(session.window, 2);
    QCOMPARE(
        tableRows(session.window),
        (QStringList{
            QStringLiteral("Блок=Шапка чека|0|false"), QStringLiteral("Строка в блоке=1|1|false"),
            QStringLiteral("Позиция в строке=0|0|false"), QStringLiteral("Размер поля (знаков)=30|30|false"),
            QStringLiteral("По ширине ленты=По центру|2|false"), QStringLiteral("Внутри поля=Слева|1|false"),
            QStringLiteral("Прижать вправо=Да|1|false"), QStringLiteral("Расширить поле=Нет|0|false"),
            QStringLiteral("Обрезать по ширине=Да|1|false"),
            QStringLiteral("Маскирование=Маскировать|1|false"),
            QStringLiteral("Убрать строку, если 0=Нет|0|false"),
            QStringLiteral("Таблица строк=Нет|0|false")}));
}

void tst_Table::viewFormShowsTheRecord()
{
    EditingSession session({{.font = 7,
                             .x2x = 1,
                             .x2y = 0,
                             .flags = 2,
                             .gap = 15,
                             .line = 1,
                             .size = 10,
                             .fractFormat = 2,
                             .brightness = 15,
                             .tailChar = 0xdf},
                            {.font = 1,
                             .x2x = 0,
                             .x2y = 1,
                             .flags = 1,
                             .gap = 200,
                             .line = 2,
                             .size = 10,
                             .fractFormat = 0,
                             .brightness = 0,
                             .tailChar = 32}});
    pickPole(session.window, 1);
    clickButton(session.window, "btnSetSetModeView");
    QCOMPARE(tableRows(session.window),
             (QStringList{QStringLiteral("Шрифт=7|7|false"), QStringLiteral("Двойная ширина=Да|1|false"),
                          QStringLiteral("Двойная высота=Нет|0|false"),
                          QStringLiteral("Межстрочный интервал=15|15|false"),
                          QStringLiteral("Яркость=15|15|false"),
                          QStringLiteral("Формат дробных чисел=Обрез.незнач.нули|2|false"),
                          QStringLiteral("Символ после поля=Я|223|false"),
                          QStringLiteral("Символ в начале поля=Да|1|false")}));
    QCOMPARE(columnWidths(session.window), (QList<int>{180, 165}));
    QCOMPARE(propertyTable(session.window)->editTriggers(), QAbstractItemView::AllEditTriggers);
    QVERIFY(isNameColumnFixed(session.window));

    pickPole(session.window, 2);
    QCOMPARE(tableRows(session.window),
             (QStringList{QStringLiteral("Шрифт=1|1|false"), QStringLiteral("Двойная ширина=Нет|0|false"),
                          QStringLiteral("Двойная высота=Да|1|false"),
                          QStringLiteral("Межстрочный интервал=200|200|false"),
                          QStringLiteral("Яркость=0|0|false"),
                          QStringLiteral("Формат дробных чисел=Не маскировать нули|0|false"),
                          QStringLiteral("Символ после поля= |32|false"),
                          QStringLiteral("Символ в начале поля=Нет|0|false")}));
}

void tst_Table::valueWithoutTextShowsAnEmptyCell()
{
    EditingSession session({{.line = 1, .alignInPole = 0, .alignOnTape = 0}});
    const auto before = session.records();
    pickPole(session.window, 1);
    QCOMPARE(cellState(session.window, 4), QStringLiteral("|0|false"));
    QCOMPARE(cellState(session.window, 5), QStringLiteral("|0|false"));
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_Table::valueRoleIsEightBitsWide()
{
    EditingSession session(workFields());
    auto& item = session.probe.bd().items[3];
    item.Line = -1;
    item.X = 300;
    item.PressRight = -1;
    item.MaskMode = 258;
    item.Font = 300;
    item.Brightness = -1;
    item.X2X = 257;
    item.TailChar = 300;
    const auto before = session.records();
    const auto logged = session.probe.log().size();

    pickPole(session.window, 3);
    QCOMPARE(cellState(session.window, 1), QStringLiteral("-1|255|false"));
    QCOMPARE(cellState(session.window, 2), QStringLiteral("300|44|false"));
    QCOMPARE(cellState(session.window, 6), QStringLiteral("|255|false"));
    QCOMPARE(cellState(session.window, 9).section(u'|', 1), QStringLiteral("2|false"));
    clickButton(session.window, "btnSetSetModeView");
    QCOMPARE(cellState(session.window, 0), QStringLiteral("300|44|false"));
    QCOMPARE(cellState(session.window, 1).section(u'|', 1), QStringLiteral("1|false"));
    QCOMPARE(cellState(session.window, 4), QStringLiteral("-1|255|false"));
    QCOMPARE(cellState(session.window, 6), QStringLiteral(",|44|false"));

    QCOMPARE(session.changesSince(before), QStringList());
    QVERIFY(!session.probe.redrawPending());
    QCOMPARE(session.robot.takeTexts(), QStringList());
    const QStringList log = logSince(session.window, logged);
    QVERIFY(log.contains(QStringLiteral("int!=in2: -1 -1 255")));
    QVERIFY(log.contains(QStringLiteral("int!=in2: 300 300 44")));
}

void tst_Table::fillingLeavesEveryRecordAsItWas()
{
    EditingSession session(workFields());
    openTemplate(session.window, session.robot, QStringLiteral(SAMPLES_DIR "/grocery-80mm.csv"));
    session.settle();
    const auto before = session.records();
    QCOMPARE(before.size(), 160);
    for (int key = 1; key <= 160; ++key) {
        if (poleItem(session.window, key) == nullptr)
            continue;
        pickPole(session.window, key);
        clickButton(session.window, "btnSetSetModeView");
        clickButton(session.window, "btnSetSetModePoz");
    }
    QCOMPARE(session.changesSince(before), QStringList());
    QVERIFY(!session.probe.redrawPending());
    QCOMPARE(session.robot.takeTexts(), QStringList());
}

void tst_Table::fillingTellsTheLogOfEachRow()
{
    EditingSession session(
        {{.block = 1, .flags = 1, .line = 1, .x = 3, .size = 9, .maskMode = 2, .alignOnTape = 3}});
    auto from = session.probe.log().size();
    pickPole(session.window, 1);
    const QString start = QStringLiteral("cellChngd : 1,%1 m1=65538 m2=%2 d=%3 di=%4");
    const auto line = [&](int row, int mode, const QString& text, int number) {
        return start.arg(QString::number(row), QString::number(mode), text, QString::number(number));
    };
    const QString no = QStringLiteral("Нет");
    QCOMPARE(changeLines(session.window, from),
             (QStringList{line(0, 1, QStringLiteral("Регистрация"), 1), line(1, 1, QStringLiteral("1"), 1),
                          line(2, 1, QStringLiteral("3"), 3), line(3, 1, QStringLiteral("9"), 9),
                          line(4, 1, QStringLiteral("Справа"), 3), line(5, 1, QStringLiteral("Слева"), 1),
                          line(6, 1, no, 0), line(7, 1, no, 0), line(8, 1, no, 0),
                          line(9, 1, QStringLiteral("Выровнять нулями"), 2), line(10, 1, no, 0),
                          line(11, 1, QStringLiteral("Да"), 1)}));
    QVERIFY(logSince(session.window, from).contains(QStringLiteral("int!=in2: Регистрация 0 1")));

    from = session.probe.log().size();
    clickButton(session.window, "btnSetSetModeView");
    QCOMPARE(changeLines(session.window, from),
             (QStringList{line(0, 2, QStringLiteral("0"), 0), line(1, 2, no, 0), line(2, 2, no, 0),
                          line(3, 2, QStringLiteral("0"), 0), line(4, 2, QStringLiteral("0"), 0),
                          line(5, 2, QStringLiteral("Не маскировать нули"), 0),
                          line(6, 2, QStringLiteral(" "), 32), line(7, 2, no, 0)}));
}

void tst_Table::fieldFromTheListGetsTheSameTable()
{
    QList<FieldRow> fields = workFields();
    fields[4].alignInPole = 3;
    fields[4].flags = 1;
    fields[4].font = 6;
    EditingSession session(fields);
    const auto bothForms = [&session] {
        QStringList rows = tableRows(session.window);
        clickButton(session.window, "btnSetSetModeView");
        rows += tableRows(session.window);
        clickButton(session.window, "btnSetSetModePoz");
        return rows;
    };
    pickInList(session.window, fields[4].desc);
    QStringList fromList = bothForms();
    QCOMPARE(fromList.size(), 20);
    QCOMPARE(columnWidths(session.window), (QList<int>{170, 155}));

    fields[4].size = 4;
    session.open(fields);
    pickPole(session.window, 5);
    QCOMPARE(fromList.at(3), QStringLiteral("Размер поля (знаков)=0|0|false"));
    fromList[3] = QStringLiteral("Размер поля (знаков)=4|4|false");
    QCOMPARE(bothForms(), fromList);
}

void tst_Table::keyWithoutRecordShowsABlankOne()
{
    EditingSession session(workFields());
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    session.probe.bd().items.remove(5);
    const BD_T20Items::T20Item blank;

    clickButton(session.window, "btnSetSetModeView");
    QVERIFY(session.probe.bd().items.contains(5));
    const auto& made = session.probe.bd().items[5];
    QCOMPARE(made.Desc, QString());
    QCOMPARE(made.Size, blank.Size);
    QCOMPARE(propertyTable(session.window)->rowCount(), 8);
    QCOMPARE(cellState(session.window, 0), QStringLiteral("%1|%1|false").arg(blank.Font));
    clickButton(session.window, "btnSetSetModePoz");
    QCOMPARE(propertyTable(session.window)->rowCount(), 12);
    QCOMPARE(cellState(session.window, 3), QStringLiteral("0|0|false"));
}

QTEST_MAIN(tst_Table)
#include "tst_table.moc"
