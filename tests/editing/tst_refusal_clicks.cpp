#include "editing/editingsession.h"
#include "editing/fieldsteps.h"
#include "editing/refusals.h"
#include "editing/tablerows.h"
#include "editing/trapsteps.h"
#include "support/tablesteps.h"

#include <QApplication>
#include <QComboBox>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

#include <memory>

namespace {

void clickCell(EditingSession& session, int row, int column)
{
    QTableWidget* const table = propertyTable(session.window);
    const QRect area = table->visualItemRect(table->item(row, column));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, area.center());
}

QWidget* editorAt(EditingSession& session, int row)
{
    QTableWidget* const table = propertyTable(session.window);
    return table->indexWidget(table->model()->index(row, 1));
}

} // namespace

/// An editor whose value is refused, and the click that makes it commit.
class tst_RefusalClicks : public QObject
{
    Q_OBJECT

private slots:
    void clickOnAnotherValue_data();
    void clickOnAnotherValue();
    void clickOnAName();
    void clickOnAnotherValueAfterTheTableHasGone();
    void clickOnALineButton_data();
    void clickOnALineButton();
    void clickOnALineButtonOfALineWithFields();
    void windowClosesOverARefusedValue_data();
    void windowClosesOverARefusedValue();
    void windowClosesOverAGoodValue();
};

void tst_RefusalClicks::clickOnAnotherValue_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("restored");
    QTest::addColumn<int>("clicked");
    QTest::addColumn<QString>("next");
    QTest::newRow("block, then line")
        << 3 << int(kBlockRow) << QStringLiteral("Шапка чека") << kForbidden
        << QStringLiteral("Регистрация|1|true") << int(kLineRow) << QStringLiteral("1");
    QTest::newRow("line, then position")
        << 7 << int(kLineRow) << QStringLiteral("50") << kNoLine << QStringLiteral("4|4|true")
        << int(kPositionRow) << QStringLiteral("0");
    QTest::newRow("position, then size")
        << 3 << int(kPositionRow) << QStringLiteral("20") << kTaken << QStringLiteral("0|0|true")
        << int(kSizeRow) << QStringLiteral("6");
    QTest::newRow("position, then block")
        << 3 << int(kPositionRow) << QStringLiteral("20") << kTaken << QStringLiteral("0|0|true")
        << int(kBlockRow) << QStringLiteral("Регистрация");
    QTest::newRow("size, then alignment")
        << 8 << int(kSizeRow) << QStringLiteral("5") << kTaken << QStringLiteral("0|0|true")
        << int(kOnTapeRow) << QStringLiteral("Слева");
}

void tst_RefusalClicks::clickOnAnotherValue()
{
    QFETCH(const int, key);
    QFETCH(const int, row);
    QFETCH(const QString, text);
    QFETCH(const QString, message);
    QFETCH(const QString, restored);
    QFETCH(const int, clicked);
    QFETCH(const QString, next);
    EditingSession session(workFields());
    const auto before = session.records();
    pickField(session.window, key);
    const auto editor = fillIn(session.window, row, text);
    clickCell(session, clicked, 1);
    QCOMPARE(session.robot.takeTexts(), QStringList{message});
    waitForLoop(session);
    QVERIFY(editor.isNull());
    QCOMPARE(session.changesSince(before), QStringList());
    QCOMPARE(cellState(session.window, row), restored);
    checkTableTellsTheTruth(session);

    // The click itself has opened the other cell.
    QCOMPARE(propertyTable(session.window)->currentRow(), clicked);
    QWidget* const opened = editorAt(session, clicked);
    QVERIFY(opened != nullptr);
    if (const auto* const list = qobject_cast<QComboBox*>(opened); list != nullptr)
        QCOMPARE(list->currentText(), next);
    else
        QCOMPARE(QString::number(qobject_cast<QSpinBox*>(opened)->value()), next);
    pressEnter(opened);
    QCOMPARE(session.changesSince(before), QStringList());
    QCOMPARE(session.robot.takeTexts(), QStringList());
}

void tst_RefusalClicks::clickOnAName()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 7);
    const auto editor = typeInto(session, kLineRow, QStringLiteral("50"));
    clickCell(session, kSizeRow, 0);
    QCOMPARE(session.robot.takeTexts(), QStringList{kNoLine});
    waitForLoop(session);
    QVERIFY(editor.isNull());
    QCOMPARE(session.changesSince(before), QStringList());
    QCOMPARE(cellState(session.window, kLineRow), QStringLiteral("4|4|true"));
    for (int row = 0; row < 12; ++row)
        QCOMPARE(editorAt(session, row), nullptr);
    // The field is still under edit.
    typeNumber(session.window, kLineRow, QStringLiteral("2"));
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("7.Line=2")});
}

void tst_RefusalClicks::clickOnAnotherValueAfterTheTableHasGone()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 7);
    session.robot.whileBoxIsOpen([&session] { session.probe.requestRedraw(); },
                                 [&session] { return propertyTable(session.window)->rowCount() == 0; });
    const auto editor = typeInto(session, kLineRow, QStringLiteral("50"));
    clickCell(session, kSizeRow, 1);
    QCOMPARE(session.robot.takeTexts(), QStringList{kNoLine});
    waitForLoop(session);
    QVERIFY(editor.isNull());
    QCOMPARE(propertyTable(session.window)->rowCount(), 0);
    QCOMPARE(session.changesSince(before), QStringList());
    pickPole(session.window, 7);
    QCOMPARE(cellState(session.window, kLineRow), QStringLiteral("4|4|false"));
}

void tst_RefusalClicks::clickOnALineButton_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("log");
    QTest::newRow("plus") << QStringLiteral("+") << QStringLiteral("Add selected line?");
    QTest::newRow("minus") << QStringLiteral("-") << QStringLiteral("Del selected line?");
}

void tst_RefusalClicks::clickOnALineButton()
{
    QFETCH(const QString, button);
    QFETCH(const QString, log);
    EditingSession session(workFields());
    const auto before = session.records();
    pickItem(session.window, lineItem(session.window, 1, 2));
    // A pick in the list leaves the buttons where they are.
    pickInList(session.window, QStringLiteral("Налог: ставка"));
    session.settle();
    const auto editor = typeInto(session, kSizeRow, QStringLiteral("5"));
    const auto logged = session.probe.log().size();
    clickLineButton(session, button);
    QCOMPARE(session.robot.takeTexts(), QStringList{kTaken});
    waitForLoop(session);
    QVERIFY(editor.isNull());
    QCOMPARE(session.changesSince(before), QStringList());
    QCOMPARE(cellState(session.window, kSizeRow), QStringLiteral("0|0|true"));

    // The click comes after the box, and there is no line to add to or to delete.
    const QStringList lines = logSince(session.window, logged);
    QCOMPARE(lines.filter(log).size(), 1);
    QCOMPARE(lines.constLast(), log);
    QCOMPARE(session.probe.maket().getBlockKolLines(1), 5);
    QCOMPARE(session.probe.curKey(), 8);
    QCOMPARE(session.probe.curItem(), nullptr);
    checkTableTellsTheTruth(session);

    // With a line selected the same buttons work.
    pickItem(session.window, lineItem(session.window, 1, 3));
    clickLineButton(session, button);
    waitForLoop(session);
    QCOMPARE(session.probe.maket().getBlockKolLines(1), button == u"+" ? 6 : 4);
    QCOMPARE(session.changesSince(before),
             QStringList{button == u"+" ? QStringLiteral("7.Line=5") : QStringLiteral("7.Line=3")});
}

void tst_RefusalClicks::clickOnALineButtonOfALineWithFields()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickItem(session.window, lineItem(session.window, 1, 4));
    pickInList(session.window, QStringLiteral("Налог: ставка"));
    session.settle();
    // While the box stands, the line is selected again: then the click finds it.
    session.robot.whileBoxIsOpen(
        [&session] { lineItem(session.window, 1, 4)->setSelected(true); },
        [&session] { return session.probe.curItem() == lineItem(session.window, 1, 4); });
    const auto editor = typeInto(session, kSizeRow, QStringLiteral("5"));
    clickLineButton(session, QStringLiteral("-"));
    QCOMPARE(session.robot.takeTexts(), (QStringList{kTaken, kNotEmpty}));
    waitForLoop(session);
    QVERIFY(editor.isNull());
    QCOMPARE(session.changesSince(before), QStringList());
    QCOMPARE(session.probe.maket().getBlockKolLines(1), 5);
    checkTableTellsTheTruth(session);
}

void tst_RefusalClicks::windowClosesOverARefusedValue_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    QTest::newRow("line") << int(kLineRow) << QStringLiteral("50") << kNoLine;
    QTest::newRow("position") << int(kPositionRow) << QStringLiteral("20") << kTaken;
    QTest::newRow("block") << int(kBlockRow) << QStringLiteral("Шапка чека") << kForbidden;
}

void tst_RefusalClicks::windowClosesOverARefusedValue()
{
    QFETCH(const int, row);
    QFETCH(const QString, text);
    QFETCH(const QString, message);
    auto session = std::make_unique<EditingSession>(workFields());
    const auto before = session->records();
    pickPole(session->window, 3);
    const auto editor = fillIn(session->window, row, text);
    QVERIFY(session->window.close());
    QVERIFY(!session->window.isVisible());
    // The editor has lost the focus with its window, so it has asked for its value.
    QCOMPARE(session->robot.takeTexts(), QStringList{message});
    QCOMPARE(session->changesSince(before), QStringList());
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
    session.reset();
    QVERIFY(editor.isNull());
}

void tst_RefusalClicks::windowClosesOverAGoodValue()
{
    auto session = std::make_unique<EditingSession>(workFields());
    const auto before = session->records();
    pickPole(session->window, 3);
    const auto editor = typeInto(*session, kPositionRow, QStringLiteral("4"));
    QVERIFY(session->window.close());
    QVERIFY(!session->window.isVisible());
    QCOMPARE(session->changesSince(before), QStringList{QStringLiteral("3.X=4")});
    QCOMPARE(session->robot.takeTexts(), QStringList());
    session.reset();
    QVERIFY(editor.isNull());
}

QTEST_MAIN(tst_RefusalClicks)
#include "tst_refusal_clicks.moc"
