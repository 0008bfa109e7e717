#pragma once

#include "app/mainwindow.h"
#include "support/dialogrobot.h"
#include "support/templatefile.h"
#include "support/usersteps.h"
#include "support/windowprobe.h"

#include <QObject>
#include <QStringList>

#include <memory>

/// What one edit left behind. A test compares all of it with what it expects.
struct Outcome
{
    QStringList changes;  ///< of the records, each as "key.Property old>new"
    QStringList warnings; ///< texts of the warning boxes
    QStringList cells;    ///< the edited cell after each call of the change handler, as "text|value|flag"
    QStringList log;      ///< all lines, those of the selection loop's next turns included
    int refills = 0;      ///< of the field list

    /// All of it, each line with its kind in front.
    QStringList lines() const;

    /// This outcome, with a redraw of a scene on which an item was selected.
    Outcome thenRedrawn() const;

    /// This outcome, with a redraw of a scene on which nothing was selected.
    Outcome thenRebuilt() const;

    /// This outcome, with the redraw that follows for a field picked in the list or on the tape.
    Outcome thenRedrawn(bool isListed) const { return isListed ? thenRebuilt() : thenRedrawn(); }
};

/// A row of the property table and what it goes from and to.
struct Edit
{
    int mode;
    int row;
    QString oldText;
    int oldValue;
    QString newText;
    int newValue;
    QString change; ///< of the record, see Outcome

    /// An edit of a number.
    static Edit number(int mode, int row, int from, int to, const QString& change = {});
};

/// An edit of the position of the field 1.
Edit positionEdit(int from, int to);

/// What one call of the change handler logs outside the block row.
QStringList callLines(int mode, int row, const QString& text, int value, int worked);

/// What one call of the change handler logs for the block row: `from` is the field's block, `to` that of the text.
QStringList blockLines(int from, const QString& text, int value, int to);

/// What an accepted edit of a row leaves that goes by the number: nothing before the second of its three calls.
Outcome takenByValue(const Edit& edit);

/// What an accepted edit of a row leaves that goes by the text, which stands for `number`.
Outcome takenByText(const Edit& edit, int number);

/// What an accepted edit of the block row leaves.
Outcome takenBlock(const Edit& edit);

/// What a refused edit of a row leaves that goes by the number.
Outcome refusedByValue(const Edit& edit, const QString& warning);

/// What a refused edit of the block row leaves.
Outcome refusedBlock(const Edit& edit, const QString& warning);

/// A small field that gives a line or takes a cell.
FieldRow other(int line, int x, int size = 3);

/// A field without a place, so that the list is never empty.
FieldRow unplaced();

/// Adds a column with the size of the field under test, which decides how it is picked, and a row for each way.
void addBothPicks();

/// A window with a template, a user at its property table, and a look at all that an edit there does.
class RulesBench : public QObject
{
    Q_OBJECT

public:
    RulesBench();
    ~RulesBench() override;

    MainWindow& window() { return m_window; }
    WindowProbe& probe() { return m_probe; }
    DialogRobot& robot() { return m_robot; }
    const BD_T20Items::T20Item& record(int key) { return m_probe.bd().getPoleByKey(key); }

    /// Opens a template of these fields, the first of which gets the key 1.
    void open(const QList<FieldRow>& fields);

    /// Opens the template file `path`.
    void openFile(const QString& path);

    /// Picks the field, on the tape if it is placed and else in the list, and shows its properties in `mode`; a pick
    /// changes no record and opens no box.
    void pick(int key, int mode = 1);

    /// Forgets what has been seen so far: outcome() tells what follows.
    void watch();

    /// Lets several turns of the selection loop pass.
    void settle();

    /// Types `text` into the number editor of `row`, Enter.
    void type(int row, const QString& text);

    /// Chooses `text` in the list editor of `row`, Enter.
    void choose(int row, const QString& text);

    /// Opens the editor of `row` and leaves it at once with Enter.
    void openAndLeave(int row);

    /// What has happened since watch() or since the last edit began.
    Outcome outcome();

    /// On which call of the handler the records changed first; 0 if they did not.
    int appliedOnCall() const { return m_appliedOnCall; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QStringList changes();
    void noteCall(int row, int column);

    ProgramDir m_dir;
    DialogRobot m_robot;
    MainWindow m_window;
    WindowProbe m_probe;
    QMap<int, BD_T20Items::T20Item> m_before;
    QList<DialogRobot::SeenBox> m_boxes;
    QStringList m_cells;
    qsizetype m_logStart = 0;
    int m_refills = 0;
    int m_appliedOnCall = 0;
    int m_turns = 0;
    int m_mode = 1;
};

/// Opens the editor of `row` and leaves it at once: the cell is then as `state` tells, and nothing else has happened.
void checkLeftAlone(RulesBench& bench, int row, const QString& state);

/// One bench for all test functions of a class, as long as none of them fails.
class SharedBench
{
public:
    RulesBench& get();

    /// To be called after each test function: a failed one leaves its bench to nobody.
    void dropIfFailed();

private:
    std::unique_ptr<RulesBench> m_bench;
};
