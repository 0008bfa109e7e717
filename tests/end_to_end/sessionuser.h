#pragma once

#include "sessionchecks.h"
#include "templatestate.h"

#include "support/dialogrobot.h"
#include "support/usersteps.h"

#include <QPointer>

#include <functional>
#include <random>

class MainWindow;
class QGraphicsView;
class QTableWidget;

/// A user who does one random thing after the other in a window. The same seed does the same things.
class SessionUser
{
public:
    SessionUser(MainWindow& window, DialogRobot& robot, const ProgramDir& dir, quint32 seed);

    /// Opens one of the templates that the session goes through.
    void open();

    /// Does the next thing, mostly waits until the window has settled, and returns what is then wrong.
    QStringList act();

    /// What the last thing was, in a line.
    QString lastAction() const { return m_last; }

private:
    int upTo(int last);
    bool chance(int percent) { return upTo(99) < percent; }

    void pickOnTape();
    void clickNothing();
    void editCell();
    void leaveEditorOpen();
    void changeMode();
    void pickInFieldList();
    void changeFilter();
    void clickLineButton();
    void deleteField();
    void changeTape();
    void changeView();
    void dragField();
    void saveAndReopen();
    void runNext();
    void tell(const QString& detail) { m_last += u", " + detail; }
    void settle();

    void clickView(const QPointF& scenePos);
    void useEditor(QWidget* editor, int row, int percent);
    CellEntry entryIn(const QWidget* editor) const;
    bool isEditorOpen() const;
    int fieldInTable() const;

    TemplateState state() const;
    QString templateFault(const TemplateState& before);
    QString redrawFault(const TemplateState& before, bool isRebuilt) const;
    void checkBoxes(const TemplateState& before);

    MainWindow& m_window;
    DialogRobot& m_robot;
    const ProgramDir& m_dir;
    QGraphicsView* m_view;
    QTableWidget* m_table;
    SessionChecks m_checks;
    std::mt19937 m_random;
    QString m_last;
    QStringList m_wrong;

    /// The editor that was used last, and its cell.
    QPointer<QWidget> m_editor;
    CellEntry m_cell;

    // What is known of the thing under way.
    std::function<Consequence(const TemplateState&)>
        m_change;                  ///< what it does to the template; null: nothing
    QList<TemplateState> m_starts; ///< what it may start from: an open editor may be committed by it, or not
    bool m_isCertain = true;       ///< nothing that came before can change what comes of it
    bool m_isRedrawFree = false;   ///< it may redraw the tape for reasons of its own
    bool m_isOpening = false;      ///< it opens another template, which it has compared itself
};
