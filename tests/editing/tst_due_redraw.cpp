#include "editing/editingsession.h"
#include "editing/tablerows.h"
#include "editing/trapsteps.h"
#include "support/tablesteps.h"

#include <QGraphicsScene>
#include <QLineEdit>
#include <QTest>

namespace {

const QString kCleared = QStringLiteral("Scene cleared!");

} // namespace

/// A redraw that is due or just done when something else happens.
class tst_DueRedraw : public QObject
{
    Q_OBJECT

private slots:
    void takeOverDropsIt_data();
    void takeOverDropsIt();
    void pickInTheListHoldsRightAfterIt_data();
    void pickInTheListHoldsRightAfterIt();
};

void tst_DueRedraw::takeOverDropsIt_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("boxes");
    QTest::addColumn<QString>("format");
    QTest::newRow("bad fields") << maskFile({{.block = 1, .font = 8, .line = 2}}) << 1
                                << "Распознан формат: new, 26+str";
    QTest::newRow("no template") << QByteArray("Добрый день!\nЭто письмо; в нём нет полей.\n") << 2
                                 << "Не распознан формат!";
}

void tst_DueRedraw::takeOverDropsIt()
{
    QFETCH(const QByteArray, file);
    QFETCH(const int, boxes);
    QFETCH(const QString, format);
    EditingSession session(workFields());
    const QString path = session.dir.write(QStringLiteral("other.csv"), file);
    const auto logged = session.probe.log().size();
    // The log from the take-over on.
    const auto newLog = [&] {
        const QStringList lines = logSince(session.window, logged);
        const qsizetype begin = lines.indexOf(format);
        return begin < 0 ? QStringList() : lines.mid(begin);
    };

    bool isDue = false;
    session.robot.whenFileIsChosen([&] {
        session.probe.requestRedraw();
        isDue = true;
    });
    QStringList logBehindTheBox;
    bool isTapeThere = false;
    // The loop has turned when it knows what is selected now, or has drawn.
    const auto hasTurned = [&] {
        logBehindTheBox = newLog();
        isTapeThere = poleItem(session.window, 7) != nullptr && headerItem(session.window, 9) != nullptr;
        return !isTapeThere || logBehindTheBox.contains(kCleared) ||
               session.probe.curItem() == poleItem(session.window, 7);
    };
    session.robot.whileBoxIsOpen(
        [&] {
            if (poleItem(session.window, 7) != nullptr)
                selectPole(session, 7);
        },
        hasTurned);
    openTemplate(session.window, session.robot, path);
    QVERIFY(isDue);
    QCOMPARE(session.robot.takeTexts().size(), boxes);
    QVERIFY(isTapeThere);
    QVERIFY(logBehindTheBox.contains(QStringLiteral("new selItem type=65538 idx=7 ...")));
    QVERIFY(!logBehindTheBox.contains(kCleared));
    QVERIFY(!session.probe.redrawPending());

    waitForLoop(session);
    // The one rebuild is that of the take-over.
    QCOMPARE(newLog().count(kCleared), 1);
    QVERIFY(session.records().isEmpty());
    QCOMPARE(poleItem(session.window, 7), nullptr);
}

void tst_DueRedraw::pickInTheListHoldsRightAfterIt_data()
{
    QTest::addColumn<QByteArray>("button");
    for (const char* const button : {"btnRedraw", "btnBlTitlesOnOff", "btnFontMonoWide"})
        QTest::newRow(button) << QByteArray(button);
}

void tst_DueRedraw::pickInTheListHoldsRightAfterIt()
{
    QFETCH(const QByteArray, button);
    constexpr int key = 5;
    const QString desc = QStringLiteral("Позиция: секция");
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 1);
    // No turn of the loop between the two.
    clickButton(session.window, button.constData());
    pickInList(session.window, desc);
    QCOMPARE(session.probe.curKey(), key);
    QVERIFY(!session.probe.isSettled());

    waitForLoop(session);
    QCOMPARE(session.probe.curKey(), key);
    QCOMPARE(session.probe.keyOfSelectedPole(), key);
    QCOMPARE(named<QLineEdit>(session.window, "lePoleDesc")->text(), desc);
    checkTableTellsTheTruth(session);
    typeNumber(session.window, kSizeRow, QStringLiteral("6"));
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("5.Size=6")});
}

QTEST_MAIN(tst_DueRedraw)
#include "tst_due_redraw.moc"
