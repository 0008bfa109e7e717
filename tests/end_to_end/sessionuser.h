#pragma once

#include "sessionchecks.h"

#include "support/dialogrobot.h"
#include "support/usersteps.h"

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

    /// What the last thing was.
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
    void settle();

    bool changeEditor(QWidget* editor);
    void clickView(const QPointF& scenePos);

    MainWindow& m_window;
    DialogRobot& m_robot;
    const ProgramDir& m_dir;
    QGraphicsView* m_view;
    QTableWidget* m_table;
    SessionChecks m_checks;
    std::mt19937 m_random;
    QString m_last;
    QStringList m_wrong;
};
