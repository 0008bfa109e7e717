#include "editing/editingsession.h"
#include "editing/fieldsteps.h"
#include "editing/refusals.h"
#include "editing/tablerows.h"
#include "editing/trapsteps.h"
#include "support/tablesteps.h"

#include <QGraphicsItem>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include <functional>
#include <memory>

namespace {

using Step = std::function<void(EditingSession&)>;

/// Turns the selection over between the fields 1 and 2; true once the loop has followed a few times.
class LoopTurns
{
public:
    explicit LoopTurns(EditingSession& session)
        : m_session(session)
    {
    }

    bool operator()()
    {
        if (m_turns > 0 && m_session.probe.curItem() != poleItem(m_session.window, m_turns % 2 + 1))
            return false;
        if (++m_turns > 4)
            return true;
        selectPole(m_session, m_turns % 2 + 1);
        return false;
    }

private:
    EditingSession& m_session;
    int m_turns = 0;
};

/// Something that happens while a box is open, and how to see that it has happened.
struct Meanwhile
{
    const char* name;
    Step act;
    std::function<bool(EditingSession&)> isOver;
};

QList<Meanwhile> meanwhiles()
{
    const auto isEmpty = [](EditingSession& s) { return propertyTable(s.window)->rowCount() == 0; };
    return {
        {"nothing", [](EditingSession&) {}, [](EditingSession&) { return true; }},
        {"another field is selected", [](EditingSession& s) { selectPole(s, 1); },
         [](EditingSession& s) { return s.probe.curItem() == poleItem(s.window, 1); }},
        {"a line is selected",
         [](EditingSession& s) {
             s.probe.scene().clearSelection();
             lineItem(s.window, 1, 2)->setSelected(true);
         },
         [](EditingSession& s) { return propertyTable(s.window)->rowCount() == 4; }},
        {"a field of the redrawn tape is selected",
         [](EditingSession& s) {
             selectPole(s, 1);
             s.probe.scene().clearSelection();
             named<QPushButton>(s.window, "btnRedraw")->click();
             selectPole(s, 2);
         },
         [](EditingSession& s) { return s.probe.curItem() == poleItem(s.window, 2); }},
        {"the tape is redrawn", [](EditingSession& s) { s.probe.requestRedraw(); },
         [](EditingSession& s) { return !s.probe.redrawPending() && s.probe.isSettled(); }},
        {"the redraw button", [](EditingSession& s) { named<QPushButton>(s.window, "btnRedraw")->click(); },
         [](EditingSession& s) { return s.probe.isSettled(); }},
        {"a redrawn tape and an empty table",
         [](EditingSession& s) {
             selectPole(s, 2);
             s.probe.requestRedraw();
         },
         isEmpty},
        {"the other mode",
         [](EditingSession& s) { named<QPushButton>(s.window, "btnSetSetModeView")->click(); },
         [](EditingSession&) { return true; }},
        {"the same form again",
         [](EditingSession& s) { named<QPushButton>(s.window, "btnSetSetModePoz")->click(); },
         [](EditingSession&) { return true; }},
        {"a field of the list",
         [](EditingSession& s) { named<QListWidget>(s.window, "listWidget")->setCurrentRow(0); },
         [](EditingSession& s) { return s.probe.curKey() == 5 && s.probe.isSettled(); }},
        {"the list is filled anew",
         [](EditingSession& s) { named<QPushButton>(s.window, "btnFiltrShowAll")->click(); },
         [](EditingSession&) { return true; }},
    };
}

/// Opens `fields` anew, shows where the field `key` stands, and has `meanwhile` happen while the next box is open.
void prepare(EditingSession& session, const QList<FieldRow>& fields, int key, const Meanwhile& meanwhile)
{
    session.open(fields);
    pickField(session.window, key);
    if (propertyTable(session.window)->rowCount() != 12)
        clickButton(session.window, "btnSetSetModePoz");
    session.robot.whileBoxIsOpen([&] { meanwhile.act(session); }, [&] { return meanwhile.isOver(session); });
}

} // namespace

class tst_BoxTraps : public QObject
{
    Q_OBJECT

private slots:
    void refusalByEnter_data();
    void refusalByEnter();
    void refusalByClickingElsewhere();
    void reportOfAMovedField();
    void boxStaysOpenForManyTurns();
};

void tst_BoxTraps::refusalByEnter_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    QTest::newRow("block") << 3 << int(kBlockRow) << QStringLiteral("Шапка чека") << kForbidden;
    QTest::newRow("line") << 7 << int(kLineRow) << QStringLiteral("50") << kNoLine;
    QTest::newRow("position") << 3 << int(kPositionRow) << QStringLiteral("20") << kTaken;
    QTest::newRow("size") << 8 << int(kSizeRow) << QStringLiteral("5") << kTaken;
}

void tst_BoxTraps::refusalByEnter()
{
    QFETCH(const int, key);
    QFETCH(const int, row);
    QFETCH(const QString, text);
    QFETCH(const QString, message);
    EditingSession session(workFields());
    const auto before = session.records();
    for (const auto& meanwhile : meanwhiles()) {
        prepare(session, workFields(), key, meanwhile);
        const auto editor = fillIn(session.window, row, text);
        pressEnter(editor);
        QVERIFY2(session.robot.takeTexts() == QStringList{message}, meanwhile.name);
        waitForLoop(session);
        QVERIFY2(editor.isNull(), meanwhile.name);
        QVERIFY2(session.changesSince(before).isEmpty(), meanwhile.name);
        checkTableTellsTheTruth(session);
    }
}

void tst_BoxTraps::refusalByClickingElsewhere()
{
    EditingSession session(workFields());
    const auto before = session.records();
    for (const auto& meanwhile : meanwhiles()) {
        prepare(session, workFields(), 7, meanwhile);
        const auto editor = fillIn(session.window, kLineRow, QStringLiteral("50"));
        QTest::mouseClick(named<QLineEdit>(session.window, "lePolesFilterStr"), Qt::LeftButton);
        QVERIFY2(session.robot.takeTexts() == QStringList{kNoLine}, meanwhile.name);
        waitForLoop(session);
        QVERIFY2(editor.isNull(), meanwhile.name);
        QVERIFY2(session.changesSince(before).isEmpty(), meanwhile.name);
        checkTableTellsTheTruth(session);
    }
}

void tst_BoxTraps::reportOfAMovedField()
{
    QList<FieldRow> fields = workFields();
    fields[8].x = 20;
    EditingSession session(fields);
    const auto before = session.records();
    for (const auto& meanwhile : meanwhiles()) {
        prepare(session, fields, 4, meanwhile);
        const auto editor = fillIn(session.window, kBlockRow, QStringLiteral("Сторно оплаты"));
        pressEnter(editor);
        QVERIFY2(session.robot.takeTexts() == QStringList{pushedTo(21)}, meanwhile.name);
        waitForLoop(session);
        QVERIFY2(editor.isNull(), meanwhile.name);
        QVERIFY2((session.changesSince(before) ==
                  QStringList{QStringLiteral("4.Block=9"), QStringLiteral("4.X=21")}),
                 meanwhile.name);
        // The picture follows the record.
        QCOMPARE(poleItem(session.window, 4)->pos(),
                 QPointF(12 * 21 + 1, poleItem(session.window, 9)->pos().y()));
        checkTableTellsTheTruth(session);
    }
}

void tst_BoxTraps::boxStaysOpenForManyTurns()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickPole(session.window, 7);
    const auto logged = session.probe.log().size();
    const auto turns = std::make_shared<LoopTurns>(session);
    session.robot.whileBoxIsOpen({}, [turns] { return (*turns)(); });
    typeNumber(session.window, kLineRow, QStringLiteral("50"));
    QCOMPARE(session.robot.takeTexts(), QStringList{kNoLine});
    waitForLoop(session);
    QCOMPARE(logSince(session.window, logged).filter(QStringLiteral("new selItem")).size(), 4);
    QCOMPARE(session.changesSince(before), QStringList());
    checkTableTellsTheTruth(session);
}

QTEST_MAIN(tst_BoxTraps)
#include "tst_box_traps.moc"
