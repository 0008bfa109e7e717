#include "editing/editingsession.h"
#include "editing/refusals.h"
#include "editing/trapsteps.h"
#include "support/expectedscene.h"
#include "support/tablesteps.h"

#include <QGraphicsItem>
#include <QGraphicsProxyWidget>
#include <QPointer>
#include <QTableWidget>
#include <QTest>

namespace {

const QString& addText()
{
    static const QString text = QStringLiteral("+");
    return text;
}

const QString& delText()
{
    static const QString text = QStringLiteral("-");
    return text;
}

/// Selects `item`, clicks on the line button `text` and waits for the new picture.
void useLineButton(EditingSession& session, QGraphicsItem* item, const QString& text)
{
    pickItem(session.window, item);
    clickLineButton(session, text);
    session.settle();
}

/// The line numbers of the ten blocks: those of the model's blocks, then those of the tape.
QString lineCounts(EditingSession& session)
{
    QStringList model;
    QStringList tape;
    for (int block = 0; block < 10; ++block) {
        model.append(QString::number(session.probe.bd().blocks.at(block).lines.size()));
        tape.append(QString::number(session.probe.maket().getBlockKolLines(block)));
    }
    return model.join(u' ') + QStringLiteral(" / ") + tape.join(u' ');
}

/// What the picture must be once the fields stand on these lines.
QStringList differences(EditingSession& session, QList<FieldRow> fields, const QMap<int, int>& lines)
{
    for (auto it = lines.cbegin(); it != lines.cend(); ++it)
        fields[it.key() - 1].line = it.value();
    return sceneDifferences(session.probe.scene(), fields, {});
}

} // namespace

class tst_Lines : public QObject
{
    Q_OBJECT

private slots:
    void plusAtALineOpensItThere();
    void plusAtAHeadingOpensTheFirstLine();
    void plusAtTheLastLinePushesItDown();
    void plusInABlockWithoutFieldsAddsAnEmptyLine();
    void plusLeavesFieldsThatAreNotPlaced();
    void plusStopsAtLine255_data();
    void plusStopsAtLine255();
    void minusClosesAnEmptyLine();
    void minusOnALineWithAFieldIsRefused();
    void minusOnALineThatTheModelLacks();
    void addedLinesSurviveARedraw();
    void buttonsWithoutAnElementDoNothing();
    void slotsOnlyAskForTheRedraw();
    void secondClickBeforeTheRedrawSeesTheMovedFields();
    void boxOverTheButtonKeepsItAlive();
};

void tst_Lines::plusAtALineOpensItThere()
{
    const auto fields = workFields();
    EditingSession session(fields);
    const auto before = session.records();
    const auto logged = session.probe.log().size();
    useLineButton(session, lineItem(session.window, 0, 2), addText());
    QVERIFY(logSince(session.window, logged).contains(QStringLiteral("Add selected line?")));
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("2.Line=3")});
    QCOMPARE(lineCounts(session), QStringLiteral("4 5 1 1 1 1 1 1 1 2 / 4 5 1 1 1 1 1 1 1 2"));
    QCOMPARE(differences(session, fields, {{2, 3}}), QStringList());
    QCOMPARE(session.probe.curItem(), nullptr);
    QCOMPARE(propertyTable(session.window)->rowCount(), 0);

    // An empty line, too, opens above itself.
    useLineButton(session, lineItem(session.window, 1, 3), addText());
    QCOMPARE(session.changesSince(before),
             (QStringList{QStringLiteral("2.Line=3"), QStringLiteral("7.Line=5")}));
    QCOMPARE(differences(session, fields, {{2, 3}, {7, 5}}), QStringList());
    QCOMPARE(session.robot.takeTexts(), QStringList());
}

void tst_Lines::plusAtAHeadingOpensTheFirstLine()
{
    const auto fields = workFields();
    EditingSession session(fields);
    const auto before = session.records();
    useLineButton(session, headerItem(session.window, 1), addText());
    QCOMPARE(
        session.changesSince(before),
        (QStringList{QStringLiteral("3.Line=2"), QStringLiteral("4.Line=2"), QStringLiteral("7.Line=5")}));
    QCOMPARE(lineCounts(session), QStringLiteral("3 6 1 1 1 1 1 1 1 2 / 3 6 1 1 1 1 1 1 1 2"));
    QCOMPARE(differences(session, fields, {{3, 2}, {4, 2}, {7, 5}}), QStringList());
}

void tst_Lines::plusAtTheLastLinePushesItDown()
{
    const auto fields = workFields();
    EditingSession session(fields);
    const auto before = session.records();
    useLineButton(session, lineItem(session.window, 9, 1), addText());
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("9.Line=2")});
    QCOMPARE(differences(session, fields, {{9, 2}}), QStringList());
}

void tst_Lines::plusInABlockWithoutFieldsAddsAnEmptyLine()
{
    EditingSession session(workFields());
    const auto before = session.records();
    QCOMPARE(lineItem(session.window, 4, 1), nullptr);
    useLineButton(session, headerItem(session.window, 4), addText());
    QCOMPARE(session.changesSince(before), QStringList());
    QCOMPARE(lineCounts(session), QStringLiteral("3 5 1 1 1 1 1 1 1 2 / 3 5 1 1 2 1 1 1 1 2"));
    QVERIFY(lineItem(session.window, 4, 1) != nullptr);
    QCOMPARE(session.probe.maket().getLineHeight(4, 1), 15);
    QCOMPARE(session.probe.maket().getLineCharDX(4, 1), 0);

    // The new line grows on, and the block closes again line by line.
    useLineButton(session, lineItem(session.window, 4, 1), addText());
    QVERIFY(lineItem(session.window, 4, 2) != nullptr);
    useLineButton(session, lineItem(session.window, 4, 1), delText());
    QVERIFY(lineItem(session.window, 4, 1) != nullptr);
    QCOMPARE(lineItem(session.window, 4, 2), nullptr);
    useLineButton(session, lineItem(session.window, 4, 1), delText());
    QCOMPARE(lineItem(session.window, 4, 1), nullptr);
    QCOMPARE(session.changesSince(before), QStringList());
    QCOMPARE(sceneDifferences(session.probe.scene(), workFields(), {}), QStringList());

    // Without headings nothing of such a block is left to click on.
    clickButton(session.window, "btnBlTitlesOnOff");
    QCOMPARE(headerItem(session.window, 4), nullptr);
    QCOMPARE(lineItem(session.window, 4, 1), nullptr);
}

void tst_Lines::plusLeavesFieldsThatAreNotPlaced()
{
    EditingSession session(workFields());
    useLineButton(session, lineItem(session.window, 1, 1), addText());
    QCOMPARE(session.probe.bd().items.value(3).Line, 2);
    for (const int key : {5, 6, 8})
        QCOMPARE(session.probe.bd().items.value(key).Line, 1);
    useLineButton(session, lineItem(session.window, 1, 1), delText());
    for (const int key : {3, 4, 5, 6, 8})
        QCOMPARE(session.probe.bd().items.value(key).Line, 1);
}

void tst_Lines::plusStopsAtLine255_data()
{
    QTest::addColumn<int>("lastLine");
    QTest::addColumn<int>("lastSize");
    QTest::addColumn<bool>("isHeading");
    QTest::addColumn<bool>("isRoom");
    QTest::newRow("field on 255") << 255 << 10 << false << false;
    QTest::newRow("field on 255, at the heading") << 255 << 10 << true << false;
    QTest::newRow("field on 254") << 254 << 10 << false << true;
    QTest::newRow("field on 255 that is not placed") << 255 << 0 << true << true;
}

void tst_Lines::plusStopsAtLine255()
{
    QFETCH(const int, lastLine);
    QFETCH(const int, lastSize);
    QFETCH(const bool, isHeading);
    QFETCH(const bool, isRoom);
    EditingSession session({{.block = 2, .line = 3}, {.block = 2, .line = lastLine, .size = lastSize}});
    const auto before = session.records();
    const QString counts = lineCounts(session);
    const auto logged = session.probe.log().size();
    pickItem(session.window, isHeading ? headerItem(session.window, 2) : lineItem(session.window, 2, 3));
    clickLineButton(session, addText());
    QVERIFY(logSince(session.window, logged).contains(QStringLiteral("Add selected line?")));
    QCOMPARE(session.probe.redrawPending(), isRoom);
    session.settle();
    QStringList changes;
    if (isRoom)
        changes.append(QStringLiteral("1.Line=4"));
    if (isRoom && lastSize > 0)
        changes.append(QStringLiteral("2.Line=255"));
    QCOMPARE(session.changesSince(before), changes);
    QCOMPARE(lineCounts(session) == counts, !isRoom);
    QCOMPARE(session.robot.takeTexts(), QStringList());
    if (!isRoom || lastSize == 0)
        return;

    // Now the last field stands on 255, and no other block is held up by it.
    useLineButton(session, lineItem(session.window, 2, 1), addText());
    QCOMPARE(session.changesSince(before), changes);
    useLineButton(session, headerItem(session.window, 1), addText());
    QVERIFY(lineItem(session.window, 1, 1) != nullptr);
}

void tst_Lines::minusClosesAnEmptyLine()
{
    const auto fields = workFields();
    EditingSession session(fields);
    const auto before = session.records();
    const auto logged = session.probe.log().size();
    useLineButton(session, lineItem(session.window, 1, 2), delText());
    QVERIFY(logSince(session.window, logged).contains(QStringLiteral("Del selected line?")));
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("7.Line=3")});
    QCOMPARE(lineCounts(session), QStringLiteral("3 4 1 1 1 1 1 1 1 2 / 3 4 1 1 1 1 1 1 1 2"));
    QCOMPARE(differences(session, fields, {{7, 3}}), QStringList());
    QCOMPARE(session.probe.curItem(), nullptr);

    useLineButton(session, lineItem(session.window, 1, 2), delText());
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("7.Line=2")});
    QCOMPARE(differences(session, fields, {{7, 2}}), QStringList());
    QCOMPARE(session.robot.takeTexts(), QStringList());
}

void tst_Lines::minusOnALineWithAFieldIsRefused()
{
    EditingSession session(workFields());
    const auto before = session.records();
    const QString counts = lineCounts(session);
    for (const auto& [block, line] : {std::pair{0, 1}, std::pair{1, 1}, std::pair{1, 4}, std::pair{9, 1}}) {
        QGraphicsItem* const item = lineItem(session.window, block, line);
        pickItem(session.window, item);
        clickLineButton(session, delText());
        QCOMPARE(session.robot.takeTexts(), QStringList{kNotEmpty});
        QVERIFY(!session.probe.redrawPending());
        QCOMPARE(session.probe.curItem(), item);
        QCOMPARE(lineItem(session.window, block, line), item);
        QVERIFY(session.lineButton(delText())->isVisible());
    }
    QCOMPARE(session.changesSince(before), QStringList());
    QCOMPARE(lineCounts(session), counts);

    clickLineButton(session, delText());
    QCOMPARE(session.robot.takeBoxes().size(), 1);
    clickButton(session.window, "btnRedraw");
    QCOMPARE(sceneDifferences(session.probe.scene(), workFields(), {}), QStringList());
}

void tst_Lines::minusOnALineThatTheModelLacks()
{
    EditingSession session(workFields());
    pickPole(session.window, 7);
    clickButton(session.window, "btnPoleDel");
    session.settle();
    const auto before = session.records();
    QCOMPARE(lineCounts(session), QStringLiteral("3 2 1 1 1 1 1 1 1 2 / 3 5 1 1 1 1 1 1 1 2"));
    useLineButton(session, lineItem(session.window, 1, 4), delText());
    useLineButton(session, lineItem(session.window, 1, 2), delText());
    QCOMPARE(lineCounts(session), QStringLiteral("3 2 1 1 1 1 1 1 1 2 / 3 3 1 1 1 1 1 1 1 2"));
    QCOMPARE(session.changesSince(before), QStringList());
    QCOMPARE(session.robot.takeTexts(), QStringList());
}

void tst_Lines::addedLinesSurviveARedraw()
{
    EditingSession session(workFields());
    useLineButton(session, headerItem(session.window, 4), addText());
    for (const char* const button :
         {"btnRedraw", "btnBlTitlesOnOff", "btnFontMonoWide", "btnBlTitlesOnOff"}) {
        clickButton(session.window, button);
        QVERIFY2(lineItem(session.window, 4, 1) != nullptr, button);
    }
    session.open(workFields());
    QCOMPARE(lineItem(session.window, 4, 1), nullptr);
}

void tst_Lines::buttonsWithoutAnElementDoNothing()
{
    EditingSession session(workFields());
    const QString counts = lineCounts(session);
    // A pick in the list leaves the buttons in sight, though no line is selected any more.
    pickItem(session.window, lineItem(session.window, 1, 2));
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    session.settle();
    const auto before = session.records();
    const auto logged = session.probe.log().size();
    clickLineButton(session, addText());
    clickLineButton(session, delText());
    QVERIFY(!session.probe.redrawPending());
    QCOMPARE(session.changesSince(before), QStringList());
    QCOMPARE(lineCounts(session), counts);
    QCOMPARE(logSince(session.window, logged),
             (QStringList{QStringLiteral("Add selected line?"), QStringLiteral("Del selected line?")}));
    QCOMPARE(session.probe.curKey(), 5);
}

void tst_Lines::slotsOnlyAskForTheRedraw()
{
    EditingSession session(workFields());
    for (const auto& text : {addText(), delText()}) {
        QGraphicsItem* const line = lineItem(session.window, 1, 2);
        pickItem(session.window, line);
        const auto logged = session.probe.log().size();
        clickLineButton(session, text);
        QVERIFY(session.probe.redrawPending());
        QVERIFY(session.probe.scene().items().contains(line));
        QVERIFY(!logSince(session.window, logged).contains(QStringLiteral("Scene cleared!")));
        session.settle();
        QCOMPARE(logSince(session.window, logged).count(QStringLiteral("Scene cleared!")), 1);
    }
}

void tst_Lines::secondClickBeforeTheRedrawSeesTheMovedFields()
{
    const auto fields = workFields();
    EditingSession session(fields);
    const auto before = session.records();
    // Line 2 is empty, and the field of line 4 comes nearer with each click.
    pickItem(session.window, lineItem(session.window, 1, 2));
    for (int click = 0; click < 3; ++click)
        clickLineButton(session, delText());
    session.settle();
    QCOMPARE(session.robot.takeTexts(), QStringList{kNotEmpty});
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("7.Line=2")});
    QCOMPARE(differences(session, fields, {{7, 2}}), QStringList());

    pickItem(session.window, headerItem(session.window, 9));
    clickLineButton(session, addText());
    clickLineButton(session, addText());
    session.settle();
    QCOMPARE(session.changesSince(before),
             (QStringList{QStringLiteral("7.Line=2"), QStringLiteral("9.Line=3")}));
    QCOMPARE(differences(session, fields, {{7, 2}, {9, 3}}), QStringList());
}

void tst_Lines::boxOverTheButtonKeepsItAlive()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickItem(session.window, lineItem(session.window, 1, 1));
    const QPointer<QWidget> button(session.lineButton(delText())->widget());
    const auto logged = session.probe.log().size();
    // A redraw is due while the box is open: it has to wait until the click on the button is over. A turn of the
    // loop takes the new selection first and would redraw after it.
    QGraphicsItem* const other = lineItem(session.window, 0, 1);
    const auto isCleared = [&] {
        return logSince(session.window, logged).contains(QStringLiteral("Scene cleared!"));
    };
    session.robot.whileBoxIsOpen(
        [&] {
            session.probe.requestRedraw();
            session.probe.scene().clearSelection();
            other->setSelected(true);
        },
        [&] { return isCleared() || session.probe.curItem() == other; });
    clickLineButton(session, delText());
    QVERIFY(!button.isNull());
    QVERIFY(!isCleared());
    session.settle();
    QVERIFY(isCleared());
    QVERIFY(button.isNull());
    QCOMPARE(session.robot.takeTexts().size(), 1);
    QCOMPARE(session.changesSince(before), QStringList());
}

QTEST_MAIN(tst_Lines)
#include "tst_lines.moc"
