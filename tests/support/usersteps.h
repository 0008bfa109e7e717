#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class DialogRobot;
class MainWindow;
class QCheckBox;

/// The widget or object of that name; if there is none, the failure lists the names that there are.
QObject* findNamed(const QObject& parent, const char* className, const QString& name);

/// The child `name` of `parent` as a T.
template <typename T>
T* named(const QObject& parent, const char* name)
{
    return qobject_cast<T*>(findNamed(parent, T::staticMetaObject.className(), QString::fromLatin1(name)));
}

/// Opens the menu of the menu bar that holds the action `actionName` and clicks on the action.
void chooseInMenu(MainWindow& window, const char* actionName);

/// Clicks with the left mouse button in the middle of the button `name` of a window or dialog.
void clickButton(const QObject& parent, const char* name);

/// Clicks on the mark of a check box.
void clickCheckBox(QCheckBox* box);

/// Unfolds the combo box `name` and picks the entry number `index` there.
void chooseInCombo(MainWindow& window, const char* name, int index);

/// Chooses "Открыть..." and answers its dialog with `path`.
void openTemplate(MainWindow& window, DialogRobot& robot, const QString& path);

/// Chooses "Сохранить как..." and answers its dialog with `path`.
void saveTemplateAs(MainWindow& window, DialogRobot& robot, const QString& path);

/// Shows the window and waits until it is there.
void showWindow(MainWindow& window);

/// Shows the window and waits until it is there; returns once its timer loops are both running.
void showAndStart(MainWindow& window);

/// An application directory of a test's own, empty at first, to which the program's files go while it lives.
class ProgramDir
{
public:
    ProgramDir();
    ~ProgramDir();
    Q_DISABLE_COPY_MOVE(ProgramDir)

    /// The path of the file `name` in it.
    QString path(const QString& name) const;

    /// Writes `bytes` to the file `name` in it and returns its path.
    QString write(const QString& name, const QByteArray& bytes) const;

private:
    QString m_before;
    QString m_path;
};

/// Hands out what a window's log has got since the last look.
class LogWatch
{
public:
    explicit LogWatch(MainWindow& window);

    /// The lines added since the last call, or since this object was made.
    QStringList takeNew();

private:
    MainWindow& m_window;
    qsizetype m_seen;
};

/// All bytes of a file; a null array if it cannot be read.
QByteArray bytesOf(const QString& path);
