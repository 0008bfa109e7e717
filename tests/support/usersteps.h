#pragma once

#include <QApplication>
#include <QString>
#include <QStringList>

class MainWindow;
class QAction;

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

/// Clicks with the left mouse button in the middle of the button `name`.
void clickButton(MainWindow& window, const char* name);

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

/// All bytes of a file; a null array if it cannot be read.
QByteArray bytesOf(const QString& path);
