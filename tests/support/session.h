#pragma once

#include "app/mainwindow.h"
#include "support/dialogrobot.h"
#include "support/templatefile.h"
#include "support/usersteps.h"
#include "support/windowprobe.h"

#include <memory>

/// One user before one open window, with a program directory of their own.
struct Session
{
    Session();

    void open(const QString& path) { openTemplate(window, robot, path); }
    void saveAs(const QString& path) { saveTemplateAs(window, robot, path); }
    void save() { chooseInMenu(window, "actionSave"); }
    void click(const char* button) { clickButton(window, button); }

    /// True while the menu offers "Сохранить".
    bool canSave() const;

    /// The path of a new template file of manyFields(`count`).
    QString goodFile(int count, const QString& name = QStringLiteral("good.csv")) const;

    /// The keys of the fields on the tape.
    QStringList keysOnTape() const;

    ProgramDir dir;
    DialogRobot robot;
    MainWindow window;
    LogWatch log;
    WindowProbe probe;
};

/// The window that the rows of data-driven tests share. Close it in cleanupTestCase().
class SharedSession
{
public:
    /// The window, opened if it is not yet, without a template and with nothing left in log and boxes.
    Session& withoutTemplate();
    void close() { m_session.reset(); }

private:
    std::unique_ptr<Session> m_session;
};

/// True if all commands that come and go with a template are enabled, or all disabled, as told.
bool areTemplateCommands(const MainWindow& window, bool enabled);
