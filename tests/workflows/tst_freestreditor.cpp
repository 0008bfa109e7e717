#include "support/session.h"
#include "workflows/dlgfreestreditor.h"
#include "workflows/transferbench.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

namespace {

const QString kNoLines = QStringLiteral("Свободные строки не загружены!");
const QString kCut =
    QStringLiteral("При сохранении часть строк была обрезана под ширину ленты. Проверьте строки!");
const QString kEditor = QStringLiteral("dlgFreeStrEditor");

QListWidget* listOf(const QDialog& dialog)
{
    return named<QListWidget>(dialog, "listWidget");
}

QLineEdit* openEditor(const QDialog& dialog)
{
    return listOf(dialog)->viewport()->findChild<QLineEdit*>();
}

QPoint middleOf(const QListWidget& list, int row)
{
    return list.visualItemRect(list.item(row)).center();
}

/// Double-clicks on a line and types over it; the editor stays open.
void typeOver(QDialog& dialog, int row, const QString& text)
{
    QListWidget* const list = listOf(dialog);
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    const QPoint point = middleOf(*list, row);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, point);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, point);
    QLineEdit* const editor = openEditor(dialog);
    QVERIFY(editor != nullptr);
    editor->selectAll();
    editor->insert(text);
}

/// Types over a line and ends with Enter.
void enterLine(QDialog& dialog, int row, const QString& text)
{
    typeOver(dialog, row, text);
    if (openEditor(dialog) == nullptr)
        return;
    QTest::keyClick(openEditor(dialog), Qt::Key_Return);
    QTRY_COMPARE(listOf(dialog)->item(row)->text(), text);
}

void pressOk(const QDialog& dialog)
{
    QTest::mouseClick(named<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok),
                      Qt::LeftButton);
}

/// Opens the editor by the window's button.
void edit(Session& s, DialogUser& user, const DialogUser::Steps& steps)
{
    QTRY_VERIFY(named<QPushButton>(s.window, "btnFreeStrEditor")->isEnabled());
    user.order(steps);
    s.click("btnFreeStrEditor");
    QCOMPARE(user.ordersLeft(), 0);
}

} // namespace

/// The editor of the free lines: the dialog by itself, and what the window makes of it.
class TestFreeStrEditor : public QObject
{
    Q_OBJECT

private slots:
    void dialogIsAsDrawn();
    void linesGoInAndOut_data();
    void linesGoInAndOut();
    void onlyADoubleClickOpensALine();
    void okAndCancelEndTheDialog();
    void commandsFollowTheLines();
    void emptyListIsNotEdited();
    void menuAndButtonOpenIt();
    void enterKeepsTheLine();
    void okKeepsTheLineThatIsOpen();
    void escapeInALineLeavesIt();
    void closedWindowLosesTheEdits();
    void nothingIsTrimmedOrPadded();
    void linesAreCutToTheTape_data();
    void linesAreCutToTheTape();
    void limitIsThatOfTheTapeAtTheEnd();
    void pairOfUnitsIsNotTorn();
    void changedNumberOfLinesIsNotTaken_data();
    void changedNumberOfLinesIsNotTaken();
};

void TestFreeStrEditor::dialogIsAsDrawn()
{
    const dlgFreeStrEditor dialog;
    QCOMPARE(dialog.windowTitle(), QString("Редактор строк"));
    QCOMPARE(dialog.size(), QSize(670, 306));
    QVERIFY(!dialog.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
    QVERIFY(dialog.parent() == nullptr);
    const QListWidget* const list = listOf(dialog);
    QCOMPARE(list->geometry(), QRect(10, 20, 651, 230));
    QCOMPARE(list->editTriggers(), QAbstractItemView::EditTriggers(QAbstractItemView::DoubleClicked));
    QCOMPARE(list->count(), 0);
    const auto* const buttons = named<QDialogButtonBox>(dialog, "buttonBox");
    QCOMPARE(buttons->geometry(), QRect(30, 260, 351, 32));
    QCOMPARE(buttons->orientation(), Qt::Horizontal);
    QCOMPARE(buttons->standardButtons(), QDialogButtonBox::StandardButtons(QDialogButtonBox::Ok));
    const auto widgets = dialog.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(widgets.size(), 2);
}

void TestFreeStrEditor::linesGoInAndOut_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("none") << QStringList();
    QTest::newRow("one") << QStringList("Спасибо");
    QTest::newRow("empty ones") << QStringList({"", "а", "", ""});
    QTest::newRow("odd ones") << QStringList({"  края  ", "<b>%1</b>", "та же", "та же", QString(300, u'ш')});
}

void TestFreeStrEditor::linesGoInAndOut()
{
    QFETCH(const QStringList, lines);
    dlgFreeStrEditor dialog;
    dialog.SetData(lines);
    const QListWidget* const list = listOf(dialog);
    QCOMPARE(list->count(), lines.size());
    for (int row = 0; row < list->count(); ++row) {
        QCOMPARE(list->item(row)->text(), lines.at(row));
        // Editable beside what an item is anyway.
        QCOMPARE(list->item(row)->flags(), QListWidgetItem().flags() | Qt::ItemIsEditable);
    }
    QCOMPARE(dialog.ReadData(), lines);
}

void TestFreeStrEditor::onlyADoubleClickOpensALine()
{
    dlgFreeStrEditor dialog;
    dialog.SetData({"первая", "вторая"});
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QListWidget* const list = listOf(dialog);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, middleOf(*list, 1));
    QCOMPARE(list->currentRow(), 1);
    QVERIFY(openEditor(dialog) == nullptr);
    QTest::keyClick(list, Qt::Key_F2);
    QVERIFY(openEditor(dialog) == nullptr);
    QTest::keyClick(list, 'x');
    QVERIFY(openEditor(dialog) == nullptr);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, middleOf(*list, 1));
    QVERIFY(openEditor(dialog) == nullptr);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, middleOf(*list, 1));
    QVERIFY(openEditor(dialog) != nullptr);
    QCOMPARE(openEditor(dialog)->text(), QString("вторая"));
}

void TestFreeStrEditor::okAndCancelEndTheDialog()
{
    DialogUser user(kEditor);
    dlgFreeStrEditor dialog;
    user.order([](QDialog& open) { pressOk(open); });
    QCOMPARE(dialog.exec(), 1);
    user.order([](QDialog& open) { open.close(); });
    QCOMPARE(dialog.exec(), 0);
    user.order([](QDialog& open) { emit named<QDialogButtonBox>(open, "buttonBox")->rejected(); });
    QCOMPARE(dialog.exec(), 0);
}

void TestFreeStrEditor::commandsFollowTheLines()
{
    Session s;
    showAndStart(s.window);
    const auto* const button = named<QPushButton>(s.window, "btnFreeStrEditor");
    const auto* const action = named<QAction>(s.window, "actionFreeStrEditor");
    const auto* const upload = named<QAction>(s.window, "actionUpLoad");
    QTRY_VERIFY(!upload->isEnabled());
    QVERIFY(!button->isEnabled());
    QVERIFY(!action->isEnabled());

    // Lines and no template.
    s.probe.freeStrings() = {""};
    QTRY_VERIFY(button->isEnabled());
    QVERIFY(action->isEnabled());
    QVERIFY(upload->isEnabled());
    s.probe.freeStrings().clear();
    QTRY_VERIFY(!button->isEnabled());
    QVERIFY(!action->isEnabled());
    QVERIFY(!upload->isEnabled());

    // A template and no lines.
    s.open(s.goodFile(3));
    QTRY_VERIFY(upload->isEnabled());
    QVERIFY(!button->isEnabled());
    QVERIFY(!action->isEnabled());
}

void TestFreeStrEditor::emptyListIsNotEdited()
{
    Session s;
    showAndStart(s.window);
    DialogUser user(kEditor);
    auto* const action = named<QAction>(s.window, "actionFreeStrEditor");
    s.probe.freeStrings() = {"строка"};
    QTRY_VERIFY(action->isEnabled());
    // The commands know of it only at the next turn of the timer.
    s.probe.freeStrings().clear();
    action->trigger();
    s.probe.freeStrings() = {"строка"};
    QTRY_VERIFY(action->isEnabled());
    s.probe.freeStrings().clear();
    s.click("btnFreeStrEditor");

    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 2);
    for (const auto& box : boxes) {
        QCOMPARE(box.text, kNoLines);
        QCOMPARE(box.icon, QMessageBox::Warning);
    }
    QCOMPARE(user.takeTitles(), QStringList());
}

void TestFreeStrEditor::menuAndButtonOpenIt()
{
    Session s;
    showAndStart(s.window);
    DialogUser user(kEditor);
    const QStringList lines{"Добро пожаловать", "", "Спасибо"};
    s.probe.freeStrings() = lines;
    QTRY_VERIFY(named<QAction>(s.window, "actionFreeStrEditor")->isEnabled());
    QStringList shown;
    const auto look = [&shown](QDialog& open) {
        for (int row = 0; row < listOf(open)->count(); ++row)
            shown.append(listOf(open)->item(row)->text());
        QVERIFY(open.isModal());
        QVERIFY(open.parent() == nullptr);
        pressOk(open);
    };
    user.order(look);
    chooseInMenu(s.window, "actionFreeStrEditor");
    edit(s, user, look);
    QCOMPARE(user.takeTitles(), QStringList({"Редактор строк", "Редактор строк"}));
    QCOMPARE(shown, lines + lines);
    QCOMPARE(s.probe.freeStrings(), lines);
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(s.log.takeNew(), QStringList());
}

void TestFreeStrEditor::enterKeepsTheLine()
{
    Session s;
    showAndStart(s.window);
    DialogUser user(kEditor);
    s.probe.freeStrings() = {"раз", "два", "три"};
    edit(s, user, [](QDialog& open) {
        enterLine(open, 1, "ДВА");
        QVERIFY(open.isVisible());
        enterLine(open, 2, "");
        pressOk(open);
    });
    QCOMPARE(s.probe.freeStrings(), QStringList({"раз", "ДВА", ""}));
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void TestFreeStrEditor::okKeepsTheLineThatIsOpen()
{
    Session s;
    showAndStart(s.window);
    DialogUser user(kEditor);
    s.probe.freeStrings() = {"раз", "два", "три"};
    edit(s, user, [](QDialog& open) {
        typeOver(open, 0, "РАЗ");
        pressOk(open);
    });
    QCOMPARE(s.probe.freeStrings(), QStringList({"РАЗ", "два", "три"}));
}

void TestFreeStrEditor::escapeInALineLeavesIt()
{
    Session s;
    showAndStart(s.window);
    DialogUser user(kEditor);
    s.probe.freeStrings() = {"раз", "два", "три"};
    edit(s, user, [](QDialog& open) {
        typeOver(open, 0, "РАЗ");
        QTest::keyClick(openEditor(open), Qt::Key_Escape);
        QTRY_VERIFY(openEditor(open) == nullptr || !openEditor(open)->isVisible());
        QVERIFY(open.isVisible());
        pressOk(open);
    });
    QCOMPARE(s.probe.freeStrings(), QStringList({"раз", "два", "три"}));
}

void TestFreeStrEditor::closedWindowLosesTheEdits()
{
    Session s;
    showAndStart(s.window);
    DialogUser user(kEditor);
    const QStringList lines{"раз", "два", QString(100, u'ю')};
    s.probe.freeStrings() = lines;
    edit(s, user, [](QDialog& open) {
        enterLine(open, 0, "РАЗ");
        open.close();
    });
    QCOMPARE(s.probe.freeStrings(), lines);
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void TestFreeStrEditor::nothingIsTrimmedOrPadded()
{
    Session s;
    showAndStart(s.window);
    DialogUser user(kEditor);
    const QStringList lines{"", "  ", "  середина  ", "<FONT COLOR=red>%1</FONT>", ""};
    s.probe.freeStrings() = lines;
    edit(s, user, [](QDialog& open) { pressOk(open); });
    QCOMPARE(s.probe.freeStrings(), lines);
    edit(s, user, [](QDialog& open) {
        enterLine(open, 0, "   ");
        pressOk(open);
    });
    QCOMPARE(s.probe.freeStrings().first(), QString("   "));
}

void TestFreeStrEditor::linesAreCutToTheTape_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("limit");
    QTest::newRow("80 mm") << 576 << 64;
    QTest::newRow("57 mm") << 432 << 48;
    QTest::newRow("44 mm") << 384 << 42;
    QTest::newRow("another") << 500 << 80;
}

void TestFreeStrEditor::linesAreCutToTheTape()
{
    QFETCH(const int, width);
    QFETCH(const int, limit);
    Session s;
    showAndStart(s.window);
    DialogUser user(kEditor);
    s.probe.setTapeWidth(width);
    const QString full = QString(limit - 1, u'ж') + u'!';
    s.probe.freeStrings() = {"коротко", "старая", full.left(limit - 1)};
    edit(s, user, [&full](QDialog& open) {
        enterLine(open, 1, full);
        pressOk(open);
    });
    const QStringList exact{"коротко", full, full.left(limit - 1)};
    QCOMPARE(s.probe.freeStrings(), exact);
    QCOMPARE(s.robot.takeTexts(), QStringList());

    edit(s, user, [&full](QDialog& open) {
        enterLine(open, 0, full + u'?');
        pressOk(open);
    });
    QCOMPARE(s.probe.freeStrings(), QStringList({full, full, full.left(limit - 1)}));
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, kCut);
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    // Cut once, it is told no more.
    edit(s, user, [](QDialog& open) { pressOk(open); });
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void TestFreeStrEditor::limitIsThatOfTheTapeAtTheEnd()
{
    Session s;
    showAndStart(s.window);
    s.open(s.goodFile(3));
    DialogUser user(kEditor);
    const QString text(64, u'ы');
    s.probe.freeStrings() = {text, text};
    const auto accept = [](QDialog& open) { pressOk(open); };
    chooseInCombo(s.window, "comboLentaSize", 2);
    edit(s, user, accept);
    QCOMPARE(s.probe.freeStrings(), QStringList({text, text}));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    // Lines that nobody edits are cut like the others, all with one warning. The tape that counts is that of the end.
    edit(s, user, [&s](QDialog& open) {
        s.probe.setTapeWidth(432);
        pressOk(open);
    });
    QCOMPARE(s.probe.freeStrings(), QStringList({text.left(48), text.left(48)}));
    QCOMPARE(s.robot.takeTexts(), QStringList(kCut));
    s.probe.freeStrings() = {text, text};
    chooseInCombo(s.window, "comboLentaSize", 1);
    edit(s, user, accept);
    QCOMPARE(s.probe.freeStrings(), QStringList({text.left(48), text.left(48)}));
    QCOMPARE(s.robot.takeTexts(), QStringList(kCut));
    chooseInCombo(s.window, "comboLentaSize", 0);
    edit(s, user, accept);
    QCOMPARE(s.probe.freeStrings(), QStringList({text.left(42), text.left(42)}));
    QCOMPARE(s.robot.takeTexts(), QStringList(kCut));
}

void TestFreeStrEditor::pairOfUnitsIsNotTorn()
{
    Session s;
    showAndStart(s.window);
    DialogUser user(kEditor);
    s.probe.setTapeWidth(384);
    const QString pair = QStringLiteral("😀");
    QCOMPARE(pair.size(), 2);
    const auto letters = [](int count) { return QString(count, u'щ'); };
    const auto accept = [](QDialog& open) { pressOk(open); };
    // The pair ends with the tape.
    s.probe.freeStrings() = {letters(40) + pair};
    edit(s, user, accept);
    QCOMPARE(s.probe.freeStrings(), QStringList(letters(40) + pair));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    s.probe.freeStrings() = {letters(40) + pair + u'!', letters(41) + pair, letters(41) + pair + u'!',
                             letters(42) + pair};
    edit(s, user, accept);
    QCOMPARE(s.probe.freeStrings(), QStringList({letters(40) + pair, letters(41), letters(41), letters(42)}));
    QCOMPARE(s.robot.takeTexts(), QStringList(kCut));
}

void TestFreeStrEditor::changedNumberOfLinesIsNotTaken_data()
{
    QTest::addColumn<int>("change");
    QTest::newRow("one fewer") << -1;
    QTest::newRow("one more") << 1;
}

void TestFreeStrEditor::changedNumberOfLinesIsNotTaken()
{
    QFETCH(const int, change);
    Session s;
    showAndStart(s.window);
    DialogUser user(kEditor);
    // The last one is too long for the tape: of that nothing is said either.
    const QStringList lines{"раз", "два", QString(100, u'ю')};
    s.probe.freeStrings() = lines;
    edit(s, user, [change](QDialog& open) {
        enterLine(open, 0, "РАЗ");
        if (change < 0)
            delete listOf(open)->takeItem(1);
        else
            listOf(open)->addItem("четыре");
        pressOk(open);
    });
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, QString("Число свободных строк изменилось!\nСохранение строк отменено!"));
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    QCOMPARE(s.probe.freeStrings(), lines);
}

QTEST_MAIN(TestFreeStrEditor)

#include "tst_freestreditor.moc"
