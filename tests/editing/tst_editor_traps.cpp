#include "editing/editingsession.h"
#include "editing/refusals.h"
#include "editing/tablerows.h"
#include "editing/trapsteps.h"
#include "support/tablesteps.h"

#include <QAbstractItemDelegate>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

#include <memory>

class tst_EditorTraps : public QObject
{
    Q_OBJECT

private slots:
    void selectionChangesUnderAnOpenEditor();
    void modeButtonUnderAnOpenEditor();
    void viewButtonsUnderAnOpenEditor();
    void deleteButtonUnderAnOpenEditor();
    void deferredRedrawUnderAnOpenEditor();
    void deferredRedrawUnderAnUnfoldedList();
    void formFilledAnewUnderAnOpenEditor();
    void takeOverUnderAnOpenEditor();
    void windowClosesUnderAnOpenEditor_data();
    void windowClosesUnderAnOpenEditor();
};

void tst_EditorTraps::selectionChangesUnderAnOpenEditor()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 3);
    auto editor = typeInto(session, kPositionRow, QStringLiteral("10"));
    pickPole(session.window, 7);
    waitForLoop(session);
    QVERIFY(editor.isNull());
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("3.X=10")});
    checkTableTellsTheTruth(session);

    auto list = chooseIn(session, 5, QStringLiteral("Справа"));
    pickItem(session.window, lineItem(session.window, 1, 2));
    waitForLoop(session);
    QVERIFY(list.isNull());
    QCOMPARE(session.changesSince(before),
             (QStringList{QStringLiteral("3.X=10"), QStringLiteral("7.AlignInPole=3")}));

    // A refused value: the box comes before the new selection.
    pickPole(session.window, 7);
    editor = typeInto(session, kLineRow, QStringLiteral("60"));
    clickItem(session.window, poleItem(session.window, 4));
    waitForLoop(session);
    QCOMPARE(session.robot.takeTexts(), QStringList{kNoLine});
    QCOMPARE(session.changesSince(before),
             (QStringList{QStringLiteral("3.X=10"), QStringLiteral("7.AlignInPole=3")}));
    checkTableTellsTheTruth(session);

    // A selection that comes without a click, as from the list, drops what is not finished.
    pickPole(session.window, 7);
    editor = typeInto(session, kLineRow, QStringLiteral("2"));
    selectPole(session, 1);
    waitForLoop(session);
    QVERIFY(editor.isNull());
    QCOMPARE(session.changesSince(before),
             (QStringList{QStringLiteral("3.X=10"), QStringLiteral("7.AlignInPole=3")}));
    checkTableTellsTheTruth(session);
}

void tst_EditorTraps::modeButtonUnderAnOpenEditor()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 3);
    auto editor = typeInto(session, kPositionRow, QStringLiteral("9"));
    clickButton(session.window, "btnSetSetModeView");
    waitForLoop(session);
    QVERIFY(editor.isNull());
    QCOMPARE(propertyTable(session.window)->rowCount(), 8);
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("3.X=9")});

    editor = typeInto(session, 4, QStringLiteral("14"));
    clickButton(session.window, "btnSetSetModePoz");
    waitForLoop(session);
    QCOMPARE(propertyTable(session.window)->rowCount(), 12);
    const QStringList changes{QStringLiteral("3.X=9"), QStringLiteral("3.Brightness=14")};
    QCOMPARE(session.changesSince(before), changes);
    checkTableTellsTheTruth(session);

    editor = typeInto(session, kPositionRow, QStringLiteral("20"));
    clickButton(session.window, "btnSetSetModeView");
    waitForLoop(session);
    QCOMPARE(session.robot.takeTexts(), QStringList{kTaken});
    QCOMPARE(session.changesSince(before), changes);
    checkTableTellsTheTruth(session);
}

void tst_EditorTraps::viewButtonsUnderAnOpenEditor()
{
    EditingSession session(workFields());
    const auto before = session.records();
    int x = 5;
    for (const char* const button :
         {"btnRedraw", "btnBlTitlesOnOff", "btnFontMonoWide", "btnScaleX20", "btnScaleX05"}) {
        pickPole(session.window, 3);
        const auto editor = typeInto(session, kPositionRow, QString::number(++x));
        clickButton(session.window, button);
        waitForLoop(session);
        QVERIFY2(editor.isNull(), button);
        QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("3.X=%1").arg(x)});
        checkTableTellsTheTruth(session);
    }
    pickPole(session.window, 3);
    const auto editor = typeInto(session, kLineRow, QStringLiteral("70"));
    clickButton(session.window, "btnRedraw");
    waitForLoop(session);
    QVERIFY(editor.isNull());
    QCOMPARE(session.robot.takeTexts(), QStringList{kNoLine});
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("3.X=%1").arg(x)});
}

void tst_EditorTraps::deleteButtonUnderAnOpenEditor()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 4);
    const auto editor = typeInto(session, kPositionRow, QStringLiteral("33"));
    clickButton(session.window, "btnPoleDel");
    waitForLoop(session);
    QVERIFY(editor.isNull());
    QCOMPARE(session.changesSince(before),
             (QStringList{QStringLiteral("4.X=33"), QStringLiteral("4.Size=0")}));
    QCOMPARE(poleItem(session.window, 4), nullptr);
    checkTableTellsTheTruth(session);
}

void tst_EditorTraps::deferredRedrawUnderAnOpenEditor()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 3);
    const auto number = typeInto(session, kPositionRow, QStringLiteral("7"));
    session.probe.requestRedraw();
    waitForLoop(session);
    QVERIFY(number.isNull());
    QCOMPARE(session.changesSince(before), QStringList());
    checkTableTellsTheTruth(session);

    pickPole(session.window, 3);
    const auto list = chooseIn(session, 4, QStringLiteral("Справа"));
    session.probe.requestRedraw();
    waitForLoop(session);
    QVERIFY(list.isNull());
    QCOMPARE(session.changesSince(before), QStringList());

    // A field of the list keeps its table, and the editor its text.
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    auto editor = typeInto(session, kPositionRow, QStringLiteral("44"));
    session.probe.requestRedraw();
    waitForLoop(session);
    QVERIFY(!editor.isNull());
    pressEnter(editor);
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("5.X=44")});
}

void tst_EditorTraps::deferredRedrawUnderAnUnfoldedList()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 3);
    const QPointer<QComboBox> list(qobject_cast<QComboBox*>(openEditor(session.window, 4)));
    list->showPopup();
    QTRY_VERIFY(list->view()->isVisible());
    QTest::keyClick(list->view(), Qt::Key_Down);
    session.probe.requestRedraw();
    waitForLoop(session);
    QTRY_VERIFY(list.isNull());
    QCOMPARE(QApplication::activePopupWidget(), nullptr);
    QCOMPARE(session.changesSince(before), QStringList());
    checkTableTellsTheTruth(session);
}

void tst_EditorTraps::formFilledAnewUnderAnOpenEditor()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 3);
    // Without a click the editor keeps the focus while its delegate goes away.
    for (const char* const button : {"btnSetSetModePoz", "btnSetSetModeView", "btnSetSetModePoz"}) {
        const QPointer<QWidget> editor(typeInto(session, 3, QStringLiteral("2")).data());
        const QPointer<QAbstractItemDelegate> delegate(propertyTable(session.window)->itemDelegateForRow(3));
        named<QPushButton>(session.window, button)->click();
        QVERIFY(delegate.isNull());
        waitForLoop(session);
        QVERIFY(editor.isNull());
        QCOMPARE(session.changesSince(before), QStringList());
        checkTableTellsTheTruth(session);
    }
}

void tst_EditorTraps::takeOverUnderAnOpenEditor()
{
    EditingSession session(workFields());
    const auto openByKeys = [&session](QWidget* editor, const QString& path) {
        session.robot.typeFileName(path);
        QTest::keyClick(editor, Qt::Key_O, Qt::ControlModifier);
        waitForLoop(session);
    };
    QList<FieldRow> others = workFields();
    for (auto& field : others)
        field.brightness = 9;
    session.open(others);
    const auto afterwards = session.records();

    for (const QString& typed : {QStringLiteral("15"), QStringLiteral("20")}) {
        session.open(workFields());
        pickPole(session.window, 3);
        const auto editor = typeInto(session, kPositionRow, typed);
        session.robot.takeFileDialogs();
        openByKeys(editor, session.write(others));
        QVERIFY(editor.isNull());
        QCOMPARE(session.robot.takeFileDialogs().size(), 1);
        // The cell at 20 is taken, so that commit is refused first.
        QCOMPARE(session.robot.takeTexts().size(), typed == u"20" ? 1 : 0);
        QCOMPARE(session.changesSince(afterwards), QStringList());
        checkTableTellsTheTruth(session);
    }

    session.open(workFields());
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    auto editor = typeInto(session, kSizeRow, QStringLiteral("3"));
    openByKeys(editor, session.write({{.block = 40}}));
    QVERIFY(editor.isNull());
    QCOMPARE(session.robot.takeTexts().size(), 1);
    QVERIFY(session.records().isEmpty());
    checkTableTellsTheTruth(session);

    session.open(workFields());
    pickPole(session.window, 3);
    editor = typeInto(session, kPositionRow, QStringLiteral("3"));
    openByKeys(editor, session.dir.write(QStringLiteral("empty.csv"), QByteArray()));
    QVERIFY(editor.isNull());
    QCOMPARE(session.robot.takeTexts().size(), 2);
    QVERIFY(session.records().isEmpty());
    checkTableTellsTheTruth(session);
}

void tst_EditorTraps::windowClosesUnderAnOpenEditor_data()
{
    QTest::addColumn<bool>("isClosed");
    QTest::addColumn<bool>("isList");
    QTest::newRow("destroyed, number") << false << false;
    QTest::newRow("destroyed, list") << false << true;
    QTest::newRow("closed first, number") << true << false;
    QTest::newRow("closed first, list") << true << true;
}

void tst_EditorTraps::windowClosesUnderAnOpenEditor()
{
    QFETCH(const bool, isClosed);
    QFETCH(const bool, isList);
    auto session = std::make_unique<EditingSession>(workFields());
    const auto before = session->records();
    pickPole(session->window, 3);
    QPointer<QWidget> editor;
    if (isList) {
        const auto list = chooseIn(*session, 0, QStringLiteral("Подвал чека"));
        list->showPopup();
        editor = list;
    } else {
        editor = typeInto(*session, kPositionRow, QStringLiteral("4"));
    }
    QVERIFY(editor != nullptr);
    QCOMPARE(session->changesSince(before), QStringList());
    if (isClosed)
        session->window.close();
    session.reset();
    QVERIFY(editor.isNull());
}

QTEST_MAIN(tst_EditorTraps)
#include "tst_editor_traps.moc"
