#include "editing/editingsession.h"
#include "support/tablesteps.h"

#include <QAbstractItemDelegate>
#include <QPointer>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

namespace {

constexpr int kMostRows = 12;

using Delegates = QList<QPointer<QAbstractItemDelegate>>;

Delegates delegatesOf(MainWindow& window)
{
    Delegates delegates;
    for (int row = 0; row < kMostRows; ++row)
        delegates.append(propertyTable(window)->itemDelegateForRow(row));
    return delegates;
}

/// Which of the three buttons beside the table are enabled: position mode, view mode, delete.
QString buttonStates(MainWindow& window)
{
    QString states;
    for (const char* const name : {"btnSetSetModePoz", "btnSetSetModeView", "btnPoleDel"})
        states += named<QPushButton>(window, name)->isEnabled() ? u'+' : u'-';
    return states;
}

/// Which of the mode buttons are checked, position mode first.
QString checkMarks(MainWindow& window)
{
    QString marks;
    for (const char* const name : {"btnSetSetModePoz", "btnSetSetModeView"})
        marks += named<QPushButton>(window, name)->isChecked() ? u'x' : u'.';
    return marks;
}

} // namespace

class tst_TableModes : public QObject
{
    Q_OBJECT

private slots:
    void formRemovesTheDelegatesOfItsOwnRowsOnly();
    void emptyTableKeepsEveryDelegate();
    void modeSurvivesSelectionChanges();
    void checkMarksFollowTheMode();
    void modeButtonRightAfterARedrawFillsNothing();
    void buttonsFollowTheElementOnTheScene();
    void buttonsFollowTheFieldOfTheList();
};

void tst_TableModes::formRemovesTheDelegatesOfItsOwnRowsOnly()
{
    EditingSession session(workFields());
    pickPole(session.window, 3);
    const Delegates position = delegatesOf(session.window);
    QVERIFY(!position.contains(nullptr));

    clickButton(session.window, "btnSetSetModeView");
    const Delegates view = delegatesOf(session.window);
    for (int row = 0; row < kMostRows; ++row) {
        if (row < 8) {
            QVERIFY(position.at(row).isNull());
            QVERIFY(!view.at(row).isNull());
        } else {
            QCOMPARE(view.at(row), position.at(row));
        }
    }

    pickItem(session.window, lineItem(session.window, 1, 1));
    const Delegates line = delegatesOf(session.window);
    for (int row = 0; row < kMostRows; ++row) {
        QCOMPARE(view.at(row).isNull(), row < 4);
        QCOMPARE(line.at(row), row < 4 ? nullptr : view.at(row));
    }

    pickPole(session.window, 3);
    clickButton(session.window, "btnSetSetModePoz");
    QVERIFY(!delegatesOf(session.window).contains(nullptr));
    for (int row = 4; row < kMostRows; ++row)
        QVERIFY(line.at(row).isNull());
}

void tst_TableModes::emptyTableKeepsEveryDelegate()
{
    EditingSession session(workFields());
    pickPole(session.window, 3);
    const Delegates position = delegatesOf(session.window);
    clickButton(session.window, "btnRedraw");
    QTRY_COMPARE(propertyTable(session.window)->rowCount(), 0);
    QVERIFY(!position.contains(nullptr));
    QCOMPARE(delegatesOf(session.window), position);

    pickItem(session.window, headerItem(session.window, 0));
    QVERIFY(position.at(0).isNull());
    QVERIFY(position.at(1).isNull());
    QVERIFY(!position.at(2).isNull());
}

void tst_TableModes::modeSurvivesSelectionChanges()
{
    EditingSession session(workFields());
    pickPole(session.window, 3);
    QCOMPARE(propertyTable(session.window)->rowCount(), 12);
    clickButton(session.window, "btnSetSetModeView");
    QCOMPARE(propertyTable(session.window)->rowCount(), 8);
    pickPole(session.window, 4);
    QCOMPARE(propertyTable(session.window)->rowCount(), 8);
    pickItem(session.window, headerItem(session.window, 1));
    QCOMPARE(propertyTable(session.window)->rowCount(), 2);
    clickButton(session.window, "btnRedraw");
    session.settle();
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    QCOMPARE(propertyTable(session.window)->rowCount(), 8);
    session.open(workFields());
    pickPole(session.window, 7);
    QCOMPARE(propertyTable(session.window)->rowCount(), 8);
    clickButton(session.window, "btnSetSetModePoz");
    pickPole(session.window, 1);
    QCOMPARE(propertyTable(session.window)->rowCount(), 12);
}

void tst_TableModes::checkMarksFollowTheMode()
{
    EditingSession session(workFields());
    for (const char* const name : {"btnSetSetModePoz", "btnSetSetModeView"}) {
        const auto* const button = named<QPushButton>(session.window, name);
        QVERIFY(button->isCheckable());
        QCOMPARE(button->text(), QString());
        QVERIFY(!button->icon().isNull());
    }
    QCOMPARE(checkMarks(session.window), QStringLiteral("x."));
    pickPole(session.window, 3);
    clickButton(session.window, "btnSetSetModePoz");
    QCOMPARE(checkMarks(session.window), QStringLiteral("x."));
    clickButton(session.window, "btnSetSetModeView");
    QCOMPARE(checkMarks(session.window), QStringLiteral(".x"));
    clickButton(session.window, "btnSetSetModeView");
    QCOMPARE(checkMarks(session.window), QStringLiteral(".x"));
    QCOMPARE(propertyTable(session.window)->rowCount(), 8);
    clickButton(session.window, "btnSetSetModePoz");
    QCOMPARE(checkMarks(session.window), QStringLiteral("x."));
}

void tst_TableModes::modeButtonRightAfterARedrawFillsNothing()
{
    EditingSession session(workFields());
    pickPole(session.window, 3);
    const auto before = session.records();
    // No turn of the loop comes between the two clicks: nothing is selected, yet the buttons are still enabled.
    clickButton(session.window, "btnRedraw");
    clickButton(session.window, "btnSetSetModeView");
    QCOMPARE(checkMarks(session.window), QStringLiteral(".x"));
    QCOMPARE(propertyTable(session.window)->rowCount(), 12);
    QTRY_COMPARE(propertyTable(session.window)->rowCount(), 0);
    QCOMPARE(session.changesSince(before), QStringList());
    pickPole(session.window, 3);
    QCOMPARE(propertyTable(session.window)->rowCount(), 8);
}

void tst_TableModes::buttonsFollowTheElementOnTheScene()
{
    EditingSession session(workFields());
    QCOMPARE(buttonStates(session.window), QStringLiteral("---"));
    pickPole(session.window, 3);
    QCOMPARE(buttonStates(session.window), QStringLiteral("+++"));
    pickPole(session.window, 2);
    QCOMPARE(buttonStates(session.window), QStringLiteral("++-"));
    pickItem(session.window, headerItem(session.window, 1));
    QCOMPARE(buttonStates(session.window), QStringLiteral("---"));
    pickPole(session.window, 7);
    QCOMPARE(buttonStates(session.window), QStringLiteral("+++"));
    pickItem(session.window, lineItem(session.window, 1, 1));
    QCOMPARE(buttonStates(session.window), QStringLiteral("---"));
    pickPole(session.window, 7);
    clickButton(session.window, "btnRedraw");
    QTRY_COMPARE(buttonStates(session.window), QStringLiteral("---"));
}

void tst_TableModes::buttonsFollowTheFieldOfTheList()
{
    EditingSession session(workFields());
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    QCOMPARE(buttonStates(session.window), QStringLiteral("++-"));
    // A field with a size that the scene does not show yet.
    session.probe.bd().items[8].Size = 5;
    pickInList(session.window, QStringLiteral("Налог: ставка"));
    QCOMPARE(session.probe.curKey(), 8);
    QCOMPARE(buttonStates(session.window), QStringLiteral("+++"));
    session.probe.bd().items[6].Size = 5;
    pickInList(session.window, QStringLiteral("Позиция: сумма"));
    QCOMPARE(session.probe.curKey(), 6);
    QCOMPARE(buttonStates(session.window), QStringLiteral("++-"));
}

QTEST_MAIN(tst_TableModes)
#include "tst_table_modes.moc"
