#include "editing/editingsession.h"
#include "editing/refusals.h"
#include "editing/tablerows.h"
#include "editing/trapsteps.h"
#include "support/tablesteps.h"

#include <QComboBox>
#include <QFile>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

namespace {

/// A template in a file of its own, a field of it picked.
struct OpenFile
{
    OpenFile()
        : path(session.probe.currentFileName())
    {
        pickPole(session.window, 3);
        // What is there afterwards has been written anew.
        if (!QFile::remove(path))
            qFatal("the template has no file");
    }

    EditingSession session{workFields()};
    QString path;
};

void pressSave(QWidget* editor)
{
    QTest::keyClick(editor, Qt::Key_S, Qt::ControlModifier);
}

} // namespace

/// "Сохранить" by its keys while a cell of the property table is being edited.
class tst_SaveWithEditor : public QObject
{
    Q_OBJECT

private slots:
    void typedNumberIsTakenFirst();
    void typedNumberThatAsksForARedrawIsTakenFirst();
    void chosenTextIsTakenFirst();
    void refusedNumberIsToldAndNotSaved();
    void untouchedEditorChangesNothing();
    void tableWithoutAnEditorKeepsItsPick();
};

void tst_SaveWithEditor::typedNumberIsTakenFirst()
{
    OpenFile file;
    const auto editor = typeInto(file.session, kPositionRow, QStringLiteral("9"));
    pressSave(editor);
    auto fields = workFields();
    fields[2].x = 9;
    QCOMPARE(bytesOf(file.path), maskFile(fields));
    QCOMPARE(file.session.robot.takeTexts(), QStringList());
    QTRY_VERIFY(editor.isNull());
    QCOMPARE(file.session.records().value(3).X, 9);
    waitForLoop(file.session);
    checkTableTellsTheTruth(file.session);
}

void tst_SaveWithEditor::typedNumberThatAsksForARedrawIsTakenFirst()
{
    OpenFile file;
    const auto editor = typeInto(file.session, kSizeRow, QStringLiteral("11"));
    pressSave(editor);
    auto fields = workFields();
    fields[2].size = 11;
    QCOMPARE(bytesOf(file.path), maskFile(fields));
    QTRY_VERIFY(editor.isNull());
    waitForLoop(file.session);
    checkTableTellsTheTruth(file.session);
}

void tst_SaveWithEditor::chosenTextIsTakenFirst()
{
    OpenFile file;
    const auto editor = chooseIn(file.session, kOnTapeRow, QStringLiteral("Справа"));
    pressSave(editor);
    auto fields = workFields();
    fields[2].alignOnTape = 3;
    QCOMPARE(bytesOf(file.path), maskFile(fields));
    QTRY_VERIFY(editor.isNull());
}

void tst_SaveWithEditor::refusedNumberIsToldAndNotSaved()
{
    OpenFile file;
    const auto editor = typeInto(file.session, kLineRow, QStringLiteral("50"));
    QByteArray behindTheBox = "nothing";
    file.session.robot.atEachBox([&](const DialogRobot::SeenBox&) { behindTheBox = bytesOf(file.path); });
    pressSave(editor);
    QCOMPARE(file.session.robot.takeTexts(), QStringList{kNoLine});
    // The value is settled before anything is written.
    QVERIFY(behindTheBox.isNull());
    QCOMPARE(bytesOf(file.path), maskFile(workFields()));
    QTRY_VERIFY(editor.isNull());
    QCOMPARE(valueCell(file.session.window, kLineRow)->text(), QString("1"));
    checkTableTellsTheTruth(file.session);
}

void tst_SaveWithEditor::untouchedEditorChangesNothing()
{
    OpenFile file;
    const QPointer<QWidget> editor(openEditor(file.session.window, kPositionRow));
    QVERIFY(editor != nullptr);
    pressSave(editor);
    QCOMPARE(bytesOf(file.path), maskFile(workFields()));
    QCOMPARE(file.session.robot.takeTexts(), QStringList());
}

void tst_SaveWithEditor::tableWithoutAnEditorKeepsItsPick()
{
    OpenFile file;
    pressSave(&file.session.window);
    QCOMPARE(bytesOf(file.path), maskFile(workFields()));
    QCOMPARE(file.session.probe.keyOfSelectedPole(), 3);
    checkTableTellsTheTruth(file.session);
}

QTEST_MAIN(tst_SaveWithEditor)
#include "tst_save_with_editor.moc"
