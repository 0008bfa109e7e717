#include "editing/editingsession.h"
#include "editing/fieldlistlook.h"
#include "editing/refusals.h"
#include "editing/trapsteps.h"
#include "support/session.h"
#include "support/tablesteps.h"

#include <QAction>
#include <QListWidget>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

#include <functional>

namespace {

const QString kNoFormat =
    QStringLiteral("Не удалось распознать формат файла!\nВозможно это не файл шаблона!");
const QString kNoData = QStringLiteral("Корректных данных не найдено!");
const QString kNothing = QStringLiteral("Поле не выбрано");
const QString kNewEmptySelection = QStringLiteral("new selItem type=0 idx=-1 ...");

QString writeForeignFile(EditingSession& session)
{
    return session.dir.write(QStringLiteral("letter.csv"), "Добрый день!\nЭто письмо; в нём нет полей.\n");
}

/// Nothing of the former template is left, on the tape, in the list, in the table.
void checkNothingIsLeft(EditingSession& session)
{
    QVERIFY(session.records().isEmpty());
    QVERIFY(!session.probe.maket().getShablonLoaded());
    QVERIFY(areTemplateCommands(session.window, false));
    QVERIFY(named<QAction>(session.window, "actionSave")->isEnabled());
    checkNothingIsPicked(session);
    QCOMPARE(session.probe.scene().selectedItems().size(), 0);
    for (int block = 0; block < 10; ++block)
        QCOMPARE(headerItem(session.window, block), nullptr);
    for (int key = 1; key <= 9; ++key)
        QCOMPARE(poleItem(session.window, key), nullptr);
    QCOMPARE(fieldList(session.window)->count(), 0);
    QCOMPARE(listTitle(session.window), QStringLiteral("Фильтр полей [0 из 0]"));
}

} // namespace

class tst_UnrecognisedFile : public QObject
{
    Q_OBJECT

private slots:
    void selectionEndsWithTheTemplate_data();
    void selectionEndsWithTheTemplate();
    void formerTemplateIsSeenUntilTheBoxesAreAnswered();
    void fieldOfTheFormerTemplateHasNoProperties();
    void refusalOfAnOpenEditorComesBeforeTheBoxesOfTheFile();
    void nextTemplateStartsAnew();
};

void tst_UnrecognisedFile::selectionEndsWithTheTemplate_data()
{
    using Pick = std::function<void(EditingSession&)>;
    QTest::addColumn<Pick>("pick");
    QTest::addColumn<QStringList>("log");
    const QStringList lines{QStringLiteral("Не распознан формат!"), QStringLiteral("Scene cleared!")};
    QTest::newRow("nothing") << Pick([](EditingSession&) {}) << lines;
    QTest::newRow("field on the tape")
        << Pick([](EditingSession& s) { pickPole(s.window, 3); }) << lines + QStringList{kNewEmptySelection};
    QTest::newRow("field of the list")
        << Pick([](EditingSession& s) { pickInList(s.window, QStringLiteral("Позиция: секция")); }) << lines;
    QTest::newRow("heading") << Pick([](EditingSession& s) { pickItem(s.window, headerItem(s.window, 1)); })
                             << lines + QStringList{kNewEmptySelection};
    QTest::newRow("line") << Pick([](EditingSession& s) { pickItem(s.window, lineItem(s.window, 1, 2)); })
                          << lines + QStringList{kNewEmptySelection};
}

void tst_UnrecognisedFile::selectionEndsWithTheTemplate()
{
    QFETCH(const std::function<void(EditingSession&)>, pick);
    QFETCH(const QStringList, log);
    EditingSession session(workFields());
    pick(session);
    session.settle();
    const QString path = writeForeignFile(session);
    const auto logged = session.probe.log().size();
    openTemplate(session.window, session.robot, path);
    const auto boxes = session.robot.takeBoxes();
    QCOMPARE(boxes.size(), 2);
    QCOMPARE(boxes.at(0).text, kNoFormat);
    QCOMPARE(boxes.at(1).text, kNoData);
    for (const auto& box : boxes)
        QCOMPARE(box.icon, QMessageBox::Warning);
    waitForLoop(session);
    QCOMPARE(logSince(session.window, logged), log);
    checkNothingIsLeft(session);
    // What "Сохранить" would write to is the foreign file.
    QCOMPARE(session.probe.currentFileName(), path);
}

void tst_UnrecognisedFile::formerTemplateIsSeenUntilTheBoxesAreAnswered()
{
    EditingSession session(workFields());
    pickPole(session.window, 3);
    bool isTapeThere = false;
    bool isTableEmpty = false;
    QString desc;
    qsizetype left = -1;
    session.robot.whileBoxIsOpen(
        [&] {
            isTapeThere = poleItem(session.window, 7) != nullptr && headerItem(session.window, 9) != nullptr;
            isTableEmpty = propertyTable(session.window)->rowCount() == 0;
            desc = shownDesc(session.window);
            left = session.records().size();
        },
        [] { return true; });
    openTemplate(session.window, session.robot, writeForeignFile(session));
    QCOMPARE(session.robot.takeTexts(), (QStringList{kNoFormat, kNoData}));
    QVERIFY(isTapeThere);
    QVERIFY(isTableEmpty);
    QCOMPARE(desc, kNothing);
    QCOMPARE(left, 0);
    waitForLoop(session);
    checkNothingIsLeft(session);
}

void tst_UnrecognisedFile::fieldOfTheFormerTemplateHasNoProperties()
{
    EditingSession session(workFields());
    int rows = -1;
    qsizetype records = -1;
    QString desc;
    session.robot.whileBoxIsOpen([&] { selectPole(session, 7); },
                                 [&] {
                                     if (session.probe.curItem() != poleItem(session.window, 7))
                                         return false;
                                     rows = propertyTable(session.window)->rowCount();
                                     records = session.records().size();
                                     desc = shownDesc(session.window);
                                     return true;
                                 });
    const auto logged = session.probe.log().size();
    openTemplate(session.window, session.robot, writeForeignFile(session));
    QCOMPARE(session.robot.takeTexts(), (QStringList{kNoFormat, kNoData}));
    QCOMPARE(rows, 0);
    QCOMPARE(records, 0);
    QCOMPARE(desc, kNothing);
    waitForLoop(session);
    QCOMPARE(logSince(session.window, logged),
             (QStringList{QStringLiteral("Не распознан формат!"),
                          QStringLiteral("new selItem type=65538 idx=7 ..."),
                          QStringLiteral("Scene cleared!"), kNewEmptySelection}));
    checkNothingIsLeft(session);
}

void tst_UnrecognisedFile::refusalOfAnOpenEditorComesBeforeTheBoxesOfTheFile()
{
    EditingSession session(workFields());
    const QString path = writeForeignFile(session);
    pickPole(session.window, 7);
    // A value that is refused comes with its own box before the two of the file.
    const auto editor = typeInto(session, 1, QStringLiteral("50"));
    session.robot.typeFileName(path);
    QTest::keyClick(editor, Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(session.robot.takeTexts(), (QStringList{kNoLine, kNoFormat, kNoData}));
    waitForLoop(session);
    QVERIFY(editor.isNull());
    checkNothingIsLeft(session);
}

void tst_UnrecognisedFile::nextTemplateStartsAnew()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 3);
    openTemplate(session.window, session.robot, writeForeignFile(session));
    QCOMPARE(session.robot.takeTexts().size(), 2);
    waitForLoop(session);
    session.open(workFields());
    QCOMPARE(session.changesSince(before), QStringList());
    QVERIFY(areTemplateCommands(session.window, true));
    QCOMPARE(session.probe.curItem(), nullptr);
    QCOMPARE(shownDesc(session.window), kNothing);
    QCOMPARE(listTitle(session.window), QStringLiteral("Фильтр полей [3 из 9]"));
    pickPole(session.window, 3);
    QCOMPARE(shownDesc(session.window), QStringLiteral("Позиция: номер"));
    checkTableTellsTheTruth(session);
}

QTEST_MAIN(tst_UnrecognisedFile)
#include "tst_unrecognised_file.moc"
