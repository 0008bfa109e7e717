#include "editing/celldelegate.h"
#include "editing/delegatecombobox.h"
#include "editing/delegatespinbox.h"
#include "editing/editingsession.h"
#include "support/tablesteps.h"

#include <QComboBox>
#include <QPointer>
#include <QScopedPointer>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTableWidget>
#include <QTest>

namespace {

/// What an editor offers: "0..99", or its lines as "text=data".
QString contentsOf(QWidget* editor)
{
    if (const auto* const number = qobject_cast<QSpinBox*>(editor))
        return QStringLiteral("%1..%2").arg(number->minimum()).arg(number->maximum());
    const auto* const combo = qobject_cast<QComboBox*>(editor);
    if (combo == nullptr)
        return QStringLiteral("no editor");
    QStringList lines;
    for (int i = 0; i < combo->count(); ++i)
        lines.append(combo->itemText(i) + u'=' + combo->itemData(i).toString());
    return lines.join(u';');
}

/// Opens the editor of `row` as a user does, and leaves it with Escape.
QString offerOf(MainWindow& window, int row)
{
    const QPointer<QWidget> editor(openEditor(window, row));
    const QString contents = contentsOf(editor);
    if (editor != nullptr)
        QTest::keyClick(editor, Qt::Key_Escape);
    if (!QTest::qWaitFor([&] { return editor.isNull() || !editor->isVisible(); }))
        return QStringLiteral("stays open");
    return contents;
}

QString yesNoOffer()
{
    return QStringLiteral("Нет=1;Да=2");
}

/// The characters of code page 1251 from 0x80 to 0xbf, with a blank for the code that has none.
QString middleOfCodePage()
{
    return QStringLiteral("ЂЃ‚ѓ„…†‡€‰Љ‹ЊЌЋЏђ‘’“”•–— ™љ›њќћџ\u00a0ЎўЈ¤Ґ¦§Ё©Є«¬\u00ad®Ї°±Ііґµ¶·ё№є»јЅѕї");
}

constexpr int kCodeWithoutCharacter = 0x98;

/// One cell outside the window, for a delegate of the table to write to.
class LoneCell
{
public:
    LoneCell()
        : m_model(1, 1)
    {
        QObject::connect(&m_model, &QStandardItemModel::dataChanged, &m_model,
                         [this] { m_writes.append(state()); });
    }

    QModelIndex index() const { return m_model.index(0, 0); }

    /// Text, value and flag as "text|value|flag".
    QString state() const
    {
        return index().data(Qt::EditRole).toString() + u'|' +
               index().data(CellDelegate::kValueRole).toString() + u'|' +
               index().data(CellDelegate::kEditedRole).toString();
    }

    void fill(const QVariant& text, int value)
    {
        m_model.setData(index(), text, Qt::EditRole);
        m_model.setData(index(), value, CellDelegate::kValueRole);
        m_model.setData(index(), false, CellDelegate::kEditedRole);
        m_writes.clear();
    }

    /// Lets the delegate write `editor` to the cell; returns the states after each write.
    QStringList commit(const QAbstractItemDelegate& delegate, QWidget* editor)
    {
        m_writes.clear();
        delegate.setModelData(editor, &m_model, index());
        return m_writes;
    }

private:
    QStandardItemModel m_model;
    QStringList m_writes;
};

} // namespace

class tst_TableEditors : public QObject
{
    Q_OBJECT

private slots:
    void editorsOfPositionMode();
    void editorsOfViewMode();
    void namesHaveNoEditor();
    void editorShowsItsCell();
    void commitWritesTextThenValueThenFlag();
    void valuesOfEveryListLine();
    void numberIsWrittenInBothRoles();
    void commitByTheUserSetsTheFlag();
    void editorOfAValueThatItCannotShowWritesTheFlagOnly();
    void invalidIndexGetsNoEditor();
    void editorTakesTheRectangleOfItsCell();
    void dataOfAComboBoxLine();
    void selectingALineByItsText();
};

void tst_TableEditors::editorsOfPositionMode()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 3);
    const QString align = QStringLiteral("Слева=1;По центру=2;Справа=3");
    const QStringList offers{
        QStringLiteral("Шапка чека=0;Регистрация=1;Предытоговый=2;Итог=3;Налоги=4;Оплата=5;Подвал чека=6;"
                       "Фискальный=7;\"Чек аннулирован\"=8;Сторно оплаты=9"),
        QStringLiteral("1..99"),
        QStringLiteral("0..99"),
        QStringLiteral("0..255"),
        align,
        align,
        yesNoOffer(),
        yesNoOffer(),
        yesNoOffer(),
        QStringLiteral("Выключено=0;Маскировать=1;Выровнять нулями=2;Приж.своб.символ=3"),
        yesNoOffer(),
        yesNoOffer(),
    };
    for (int row = 0; row < offers.size(); ++row) {
        const QString cell = cellState(session.window, row);
        QCOMPARE(offerOf(session.window, row), offers.at(row));
        QCOMPARE(cellState(session.window, row), cell);
    }
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_TableEditors::editorsOfViewMode()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 3);
    clickButton(session.window, "btnSetSetModeView");
    const QMap<int, QString> offers{
        {0, QStringLiteral("0..7")},
        {1, yesNoOffer()},
        {2, yesNoOffer()},
        {3, QStringLiteral("0..15")},
        {4, QStringLiteral("0..15")},
        {5, QStringLiteral(
                "Не маскировать нули=0;Печать в формате 0.0=1;Обрез.незнач.нули=2;Печатать как штуки=3")},
        {7, yesNoOffer()},
    };
    for (auto it = offers.cbegin(); it != offers.cend(); ++it)
        QCOMPARE(offerOf(session.window, it.key()), it.value());

    const QPointer<QComboBox> characters(qobject_cast<QComboBox*>(openEditor(session.window, 6)));
    QVERIFY(characters != nullptr);
    QCOMPARE(characters->count(), 224);
    const QString middle = middleOfCodePage();
    QCOMPARE(middle.size(), 64);
    for (int code = 32; code <= 255; ++code) {
        QCOMPARE(characters->itemData(code - 32).toInt(), code);
        if (code == kCodeWithoutCharacter)
            continue;
        const QChar character = code < 0x80   ? QChar(code)
                                : code < 0xc0 ? middle.at(code - 0x80)
                                              : QChar(0x0410 + code - 0xc0);
        QCOMPARE(characters->itemText(code - 32), QString(character));
    }
    QTest::keyClick(characters, Qt::Key_Escape);
    QTRY_VERIFY(characters.isNull());
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_TableEditors::namesHaveNoEditor()
{
    EditingSession session(workFields());
    pickPole(session.window, 3);
    QTableWidget* const table = propertyTable(session.window);
    for (int row = 0; row < table->rowCount(); ++row) {
        const auto index = table->model()->index(row, 0);
        table->scrollTo(index);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(index).center());
        QCOMPARE(table->indexWidget(index), nullptr);
    }
}

void tst_TableEditors::editorShowsItsCell()
{
    EditingSession session(
        {{.font = 5, .line = 1, .x = 17, .maskMode = 2, .alignInPole = 3, .tailChar = 0xc6}});
    pickPole(session.window, 1);
    QCOMPARE(qobject_cast<QSpinBox*>(openEditor(session.window, 2))->value(), 17);
    QCOMPARE(qobject_cast<QComboBox*>(openEditor(session.window, 5))->currentText(),
             QStringLiteral("Справа"));
    QCOMPARE(qobject_cast<QComboBox*>(openEditor(session.window, 9))->currentText(),
             QStringLiteral("Выровнять нулями"));
    clickButton(session.window, "btnSetSetModeView");
    QCOMPARE(qobject_cast<QSpinBox*>(openEditor(session.window, 0))->value(), 5);
    QCOMPARE(qobject_cast<QComboBox*>(openEditor(session.window, 6))->currentText(), QStringLiteral("Ж"));
}

void tst_TableEditors::commitWritesTextThenValueThenFlag()
{
    LoneCell cell;
    const DelegateSpinBox number(0, 99);
    const QScopedPointer<QWidget> spinBox(number.createEditor(nullptr, {}, cell.index()));
    cell.fill(5, 5);
    number.setEditorData(spinBox.data(), cell.index());
    qobject_cast<QSpinBox*>(spinBox.data())->setValue(42);
    QCOMPARE(cell.commit(number, spinBox.data()),
             (QStringList{QStringLiteral("42|5|false"), QStringLiteral("42|42|false"),
                          QStringLiteral("42|42|true")}));

    DelegateComboBox list(true);
    list.addLine({QStringLiteral("Нет"), 1});
    list.addLine({QStringLiteral("Да"), 2});
    const QScopedPointer<QWidget> combo(list.createEditor(nullptr, {}, cell.index()));
    cell.fill(QStringLiteral("Нет"), 0);
    list.setEditorData(combo.data(), cell.index());
    QCOMPARE(qobject_cast<QComboBox*>(combo.data())->currentIndex(), 0);
    qobject_cast<QComboBox*>(combo.data())->setCurrentIndex(1);
    QCOMPARE(cell.commit(list, combo.data()),
             (QStringList{QStringLiteral("Да|0|false"), QStringLiteral("Да|1|false"),
                          QStringLiteral("Да|1|true")}));
}

void tst_TableEditors::valuesOfEveryListLine()
{
    EditingSession session(workFields());
    pickPole(session.window, 3);
    // From the number of the line to the value that it stores, for each list of the table.
    const auto check = [&session](int row, int first) {
        const QAbstractItemDelegate* const delegate = propertyTable(session.window)->itemDelegateForRow(row);
        LoneCell cell;
        const QScopedPointer<QWidget> editor(delegate->createEditor(nullptr, {}, cell.index()));
        auto* const combo = qobject_cast<QComboBox*>(editor.data());
        QVERIFY(combo != nullptr);
        for (int line = 0; line < combo->count(); ++line) {
            cell.fill(QString(), 0);
            combo->setCurrentIndex(line);
            cell.commit(*delegate, combo);
            QCOMPARE(cell.state(), QStringLiteral("%1|%2|true").arg(combo->itemText(line)).arg(first + line));
        }
    };
    check(0, 0);
    check(4, 1);
    check(5, 1);
    for (const int row : {6, 7, 8, 10, 11})
        check(row, 0);
    check(9, 0);
    clickButton(session.window, "btnSetSetModeView");
    for (const int row : {1, 2, 7})
        check(row, 0);
    check(5, -1); // its lines carry the keys, though the values are counted from one below
    check(6, 32);
}

void tst_TableEditors::numberIsWrittenInBothRoles()
{
    EditingSession session(workFields());
    pickPole(session.window, 3);
    const auto check = [&session](int row, int number) {
        const QAbstractItemDelegate* const delegate = propertyTable(session.window)->itemDelegateForRow(row);
        LoneCell cell;
        const QScopedPointer<QWidget> editor(delegate->createEditor(nullptr, {}, cell.index()));
        auto* const spinBox = qobject_cast<QSpinBox*>(editor.data());
        QVERIFY(spinBox != nullptr);
        spinBox->setValue(number);
        cell.commit(*delegate, spinBox);
        QCOMPARE(cell.state(), QStringLiteral("%1|%1|true").arg(number));
    };
    for (const int number : {1, 50, 99})
        check(1, number);
    for (const int number : {0, 99})
        check(2, number);
    for (const int number : {0, 128, 255})
        check(3, number);
    clickButton(session.window, "btnSetSetModeView");
    for (const int number : {0, 7})
        check(0, number);
    for (const int number : {0, 15}) {
        check(3, number);
        check(4, number);
    }
}

void tst_TableEditors::commitByTheUserSetsTheFlag()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 3);
    chooseText(session.window, 5, QStringLiteral("Справа"));
    QCOMPARE(cellState(session.window, 5), QStringLiteral("Справа|3|true"));
    chooseText(session.window, 6, QStringLiteral("Да"));
    QCOMPARE(cellState(session.window, 6), QStringLiteral("Да|1|true"));
    clickButton(session.window, "btnSetSetModeView");
    chooseText(session.window, 5, QStringLiteral("Обрез.незнач.нули"));
    QCOMPARE(cellState(session.window, 5), QStringLiteral("Обрез.незнач.нули|1|true"));
    typeNumber(session.window, 4, QStringLiteral("12"));
    QCOMPARE(cellState(session.window, 4), QStringLiteral("12|12|true"));
    QCOMPARE(session.changesSince(before),
             (QStringList{QStringLiteral("3.PressRight=1"), QStringLiteral("3.FractFormat=2"),
                          QStringLiteral("3.Brightness=12"), QStringLiteral("3.AlignInPole=3")}));

    // A form filled anew forgets the flags.
    clickButton(session.window, "btnSetSetModePoz");
    QCOMPARE(cellState(session.window, 5), QStringLiteral("Справа|3|false"));
}

void tst_TableEditors::editorOfAValueThatItCannotShowWritesTheFlagOnly()
{
    EditingSession session({{.gap = 200, .line = 1, .alignInPole = 0, .alignOnTape = 0, .tailChar = 7}});
    auto& item = session.probe.bd().items[1];
    item.Line = -1;
    item.X = 150;
    item.PressRight = -1;
    const auto before = session.records();
    pickPole(session.window, 1);
    const auto leave = [&session](int row) {
        const QString cell = cellState(session.window, row);
        QVERIFY(cell.endsWith(QStringLiteral("|false")));
        pressEnter(openEditor(session.window, row));
        QCOMPARE(cellState(session.window, row), cell.chopped(5) + QStringLiteral("true"));
    };
    for (const int row : {1, 2, 4, 5, 6})
        leave(row);
    clickButton(session.window, "btnSetSetModeView");
    for (const int row : {3, 6})
        leave(row);
    QCOMPARE(session.changesSince(before), QStringList());
    QVERIFY(!session.probe.redrawPending());
    QCOMPARE(session.robot.takeTexts(), QStringList());

    // A user who types the number that the editor shows means it.
    typeNumber(session.window, 3, QStringLiteral("15"));
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("1.LineGap=15")});
}

void tst_TableEditors::invalidIndexGetsNoEditor()
{
    const DelegateComboBox list(false);
    QCOMPARE(list.createEditor(nullptr, {}, QModelIndex()), nullptr);
    const DelegateSpinBox number(0, 9);
    QCOMPARE(number.createEditor(nullptr, {}, QModelIndex()), nullptr);
}

void tst_TableEditors::editorTakesTheRectangleOfItsCell()
{
    LoneCell cell;
    QStyleOptionViewItem option;
    option.rect = QRect(3, 5, 70, 20);
    QWidget editor;
    editor.setGeometry(1, 2, 30, 40);
    const DelegateComboBox list(false);
    const DelegateSpinBox number(0, 9);
    list.updateEditorGeometry(&editor, option, QModelIndex());
    number.updateEditorGeometry(&editor, option, QModelIndex());
    QCOMPARE(editor.geometry(), QRect(1, 2, 30, 40));
    list.updateEditorGeometry(&editor, option, cell.index());
    QCOMPARE(editor.geometry(), option.rect);
    option.rect.translate(10, 10);
    number.updateEditorGeometry(&editor, option, cell.index());
    QCOMPARE(editor.geometry(), option.rect);
}

void tst_TableEditors::dataOfAComboBoxLine()
{
    QCOMPARE(cmbData(nullptr, Qt::UserRole), -1);
    QComboBox combo;
    QCOMPARE(cmbData(&combo, Qt::UserRole), -1);
    combo.addItem(QStringLiteral("7"), 12);
    combo.addItem(QStringLiteral("текст"));
    combo.setCurrentIndex(0);
    QCOMPARE(cmbData(&combo, Qt::UserRole), 12);
    QCOMPARE(cmbData(&combo, Qt::DisplayRole), 7);
    combo.setCurrentIndex(1);
    QCOMPARE(cmbData(&combo, Qt::UserRole), 0);
    combo.setCurrentIndex(-1);
    QCOMPARE(cmbData(&combo, Qt::UserRole), -1);
}

void tst_TableEditors::selectingALineByItsText()
{
    QComboBox combo;
    combo.addItems(
        {QStringLiteral("Да"), QStringLiteral("да, но"), QStringLiteral("да"), QStringLiteral("да")});
    QComboSelectWithText(&combo, QStringLiteral("да"));
    QCOMPARE(combo.currentIndex(), 2);
    QComboSelectWithText(&combo, QStringLiteral("Да"));
    QCOMPARE(combo.currentIndex(), 0);
    QComboSelectWithText(&combo, QStringLiteral("ДА"));
    QCOMPARE(combo.currentIndex(), -1);
    QComboSelectWithText(&combo, QStringLiteral("да,"));
    QCOMPARE(combo.currentIndex(), -1);
}

QTEST_MAIN(tst_TableEditors)
#include "tst_table_editors.moc"
