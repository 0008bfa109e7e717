#include "editing/editingsession.h"
#include "editing/fieldlistlook.h"
#include "editing/refusals.h"
#include "editing/tablerows.h"
#include "editing/trapsteps.h"
#include "support/tablesteps.h"

#include <QGraphicsItem>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

namespace {

/// Clicks on a mode button, which the window may keep disabled, and returns what the log gets.
QStringList clickMode(EditingSession& session, const char* button)
{
    const auto logged = session.probe.log().size();
    named<QPushButton>(session.window, button)->setEnabled(true);
    clickButton(session.window, button);
    return logSince(session.window, logged);
}

QStringList errorLine(const QString& line)
{
    return {QStringLiteral("ERR: getKeyPlForSelectedPole() ") + line};
}

bool isEnabled(EditingSession& session, const char* button)
{
    return named<QPushButton>(session.window, button)->isEnabled();
}

void checkMode(EditingSession& session, int mode)
{
    QCOMPARE(named<QPushButton>(session.window, "btnSetSetModePoz")->isChecked(), mode == 1);
    QCOMPARE(named<QPushButton>(session.window, "btnSetSetModeView")->isChecked(), mode == 2);
}

} // namespace

/// What happens to a field of the list while an element of the scene is selected, and to an element that is no
/// field where a field is wanted. The window itself keeps these states from the user.
class tst_TwoPicks : public QObject
{
    Q_OBJECT

private slots:
    void keyOfTheOnePick();
    void elementThatIsNoFieldHasNoKey_data();
    void elementThatIsNoFieldHasNoKey();
    void twoPicksHaveNoKey();
    void editGoesToTheFieldOfTheList();
    void deleteButtonGoesToTheFieldOnTheScene();
    void pickInTheListEndsBoth();
    void nextSelectionEndsThePickOfTheList();
};

void tst_TwoPicks::keyOfTheOnePick()
{
    EditingSession session(workFields());
    const auto before = session.records();
    QCOMPARE(session.probe.keyOfSelectedPole(), 0);
    pickPole(session.window, 7);
    QCOMPARE(session.probe.keyOfSelectedPole(), 7);
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    QCOMPARE(session.probe.keyOfSelectedPole(), 5);
    QCOMPARE(session.probe.log().filter(QStringLiteral("ERR")), QStringList());
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_TwoPicks::elementThatIsNoFieldHasNoKey_data()
{
    QTest::addColumn<bool>("isHeading");
    QTest::newRow("heading") << true;
    QTest::newRow("line") << false;
}

void tst_TwoPicks::elementThatIsNoFieldHasNoKey()
{
    QFETCH(const bool, isHeading);
    EditingSession session(workFields());
    const auto before = session.records();
    pickItem(session.window, isHeading ? headerItem(session.window, 1) : lineItem(session.window, 1, 2));
    const QStringList error = errorLine(QStringLiteral("item not Pole!"));
    QCOMPARE(clickMode(session, "btnSetSetModeView"), error);
    checkMode(session, 2);
    QCOMPARE(clickMode(session, "btnSetSetModePoz"), error);
    checkMode(session, 1);
    const auto logged = session.probe.log().size();
    QCOMPARE(session.probe.keyOfSelectedPole(), 0);
    QCOMPARE(logSince(session.window, logged), error);
    QCOMPARE(session.changesSince(before), QStringList());

    // The mode stands for the next field.
    clickMode(session, "btnSetSetModeView");
    pickPole(session.window, 3);
    QCOMPARE(propertyTable(session.window)->rowCount(), 8);
}

void tst_TwoPicks::twoPicksHaveNoKey()
{
    EditingSession session(workFields());
    const auto before = session.records();
    const QStringList error = errorLine(QStringLiteral("sims!"));
    for (const bool isField : {true, false}) {
        // Also before the type of the element is asked for.
        pickItem(session.window, isField ? poleItem(session.window, 3) : lineItem(session.window, 1, 2));
        session.probe.setCurKey(5);
        QCOMPARE(clickMode(session, "btnSetSetModeView"), error);
        checkMode(session, 2);
        QCOMPARE(clickMode(session, "btnSetSetModePoz"), error);
        checkMode(session, 1);
        const auto logged = session.probe.log().size();
        QCOMPARE(session.probe.keyOfSelectedPole(), 0);
        QCOMPARE(logSince(session.window, logged), error);
        session.probe.setCurKey(0);
    }
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_TwoPicks::editGoesToTheFieldOfTheList()
{
    EditingSession session(workFields());
    const auto before = session.records();
    const auto countCalls = [&session](qsizetype logged) {
        return logSince(session.window, logged).filter(QStringLiteral("m1=65538")).size();
    };
    // Whatever the element on the scene is.
    pickPole(session.window, 3);
    session.probe.setCurKey(5);
    auto logged = session.probe.log().size();
    typeNumber(session.window, kSizeRow, QStringLiteral("9"));
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("5.Size=9")});
    QCOMPARE(countCalls(logged), 3);
    waitForLoop(session);
    QVERIFY(poleItem(session.window, 5) != nullptr);

    pickPole(session.window, 3);
    clickButton(session.window, "btnSetSetModeView");
    session.probe.setCurKey(7);
    logged = session.probe.log().size();
    typeNumber(session.window, kBrightnessRow, QStringLiteral("11"));
    QCOMPARE(session.changesSince(before),
             (QStringList{QStringLiteral("5.Size=9"), QStringLiteral("7.Brightness=11")}));
    QCOMPARE(countCalls(logged), 3);

    // A refusal goes by the cells of the same field's line: on that of the field 1, which has the same position, the
    // cell 20 is free.
    session.probe.setCurKey(0);
    clickButton(session.window, "btnSetSetModePoz");
    pickPole(session.window, 1);
    session.probe.setCurKey(3);
    typeNumber(session.window, kPositionRow, QStringLiteral("20"));
    QCOMPARE(session.robot.takeTexts(), QStringList{kTaken});
    QCOMPARE(cellState(session.window, kPositionRow), QStringLiteral("0|0|true"));
    QCOMPARE(session.changesSince(before),
             (QStringList{QStringLiteral("5.Size=9"), QStringLiteral("7.Brightness=11")}));
}

void tst_TwoPicks::deleteButtonGoesToTheFieldOnTheScene()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 3);
    session.probe.setCurKey(7);
    clickButton(session.window, "btnPoleDel");
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("3.Size=0")});
    QCOMPARE(session.probe.curItem(), nullptr);
    QCOMPARE(poleItem(session.window, 3), nullptr);
    waitForLoop(session);
    QCOMPARE(session.probe.curKey(), 0);
    checkTableTellsTheTruth(session);

    // An element that is no field takes nothing with it.
    pickItem(session.window, lineItem(session.window, 1, 4));
    session.probe.setCurKey(7);
    named<QPushButton>(session.window, "btnPoleDel")->setEnabled(true);
    clickButton(session.window, "btnPoleDel");
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("3.Size=0")});
    QCOMPARE(session.probe.curItem(), lineItem(session.window, 1, 4));
}

void tst_TwoPicks::pickInTheListEndsBoth()
{
    EditingSession session(workFields());
    // The buttons are set anew for the field of the list, as the scene then has no element.
    pickPole(session.window, 2);
    QVERIFY(!isEnabled(session, "btnPoleDel"));
    session.probe.setCurKey(7);
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    QCOMPARE(session.probe.curItem(), nullptr);
    QCOMPARE(session.probe.curKey(), 5);
    QVERIFY(isEnabled(session, "btnSetSetModeView"));
    QVERIFY(!isEnabled(session, "btnPoleDel"));
    waitForLoop(session);
    QCOMPARE(session.probe.curKey(), 5);
    checkTableTellsTheTruth(session);
}

void tst_TwoPicks::nextSelectionEndsThePickOfTheList()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 3);
    session.probe.setCurKey(5);
    // A redraw ends the selection, and with it the pick.
    session.probe.requestRedraw();
    QTRY_COMPARE(session.probe.curItem(), nullptr);
    waitForLoop(session);
    QCOMPARE(session.probe.curKey(), 0);
    QCOMPARE(propertyTable(session.window)->rowCount(), 0);
    QCOMPARE(shownDesc(session.window), QStringLiteral("Поле не выбрано"));

    pickPole(session.window, 3);
    session.probe.setCurKey(5);
    pickPole(session.window, 9);
    QCOMPARE(session.probe.curKey(), 0);
    QCOMPARE(session.probe.keyOfSelectedPole(), 9);
    QCOMPARE(shownDesc(session.window), QStringLiteral("Возврат: сумма"));

    session.probe.setCurKey(5);
    pickItem(session.window, headerItem(session.window, 2));
    QCOMPARE(session.probe.curKey(), 0);
    QCOMPARE(shownDesc(session.window), QStringLiteral("Поле не выбрано"));
    QCOMPARE(propertyTable(session.window)->rowCount(), 2);
    for (const char* const button : {"btnSetSetModePoz", "btnSetSetModeView", "btnPoleDel"})
        QVERIFY2(!isEnabled(session, button), button);
    QCOMPARE(session.changesSince(before), QStringList());
}

QTEST_MAIN(tst_TwoPicks)
#include "tst_two_picks.moc"
