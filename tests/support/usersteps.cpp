#include "support/usersteps.h"

#include "app/csettings.h"
#include "app/mainwindow.h"
#include "support/dialogrobot.h"
#include "support/windowprobe.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

QObject* findNamed(const QObject& parent, const char* className, const QString& name)
{
    QStringList others;
    for (QObject* const child : parent.findChildren<QObject*>()) {
        if (!child->inherits(className))
            continue;
        if (child->objectName() == name)
            return child;
        others.append(child->objectName());
    }
    qFatal("no %s named %s; there are: %s", className, qPrintable(name), qPrintable(others.join(u' ')));
    return nullptr;
}

void chooseInMenu(MainWindow& window, const char* actionName)
{
    auto* const action = named<QAction>(window, actionName);
    auto* const bar = named<QMenuBar>(window, "menuBar");
    for (QAction* const entry : bar->actions()) {
        QMenu* const menu = entry->menu();
        if (!menu->actions().contains(action))
            continue;
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(entry).center());
        QVERIFY(QTest::qWaitForWindowExposed(menu));
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        menu->hide();
        return;
    }
    qFatal("no menu holds %s", actionName);
}

void clickButton(const QObject& parent, const char* name)
{
    QTest::mouseClick(named<QPushButton>(parent, name), Qt::LeftButton);
}

void clickCheckBox(QCheckBox* box)
{
    constexpr int middleOfTheMark = 8; // beside the text, which is as wide as the box
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(middleOfTheMark, box->height() / 2));
}

void chooseInCombo(MainWindow& window, const char* name, int index)
{
    auto* const combo = named<QComboBox>(window, name);
    QTest::mouseClick(combo, Qt::LeftButton);
    QAbstractItemView* const list = combo->view();
    QVERIFY2(QTest::qWaitFor([list] { return list->isVisible(); }), name);
    QTest::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < index; ++i)
        QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    QCOMPARE(combo->currentIndex(), index);
}

void openTemplate(MainWindow& window, DialogRobot& robot, const QString& path)
{
    robot.typeFileName(path);
    chooseInMenu(window, "actionOpen");
}

void saveTemplateAs(MainWindow& window, DialogRobot& robot, const QString& path)
{
    robot.typeFileName(path);
    chooseInMenu(window, "actionSaveAs");
}

void showWindow(MainWindow& window)
{
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
}

void showAndStart(MainWindow& window)
{
    showWindow(window);
    QTRY_COMPARE(WindowProbe(window).startCountdown(), 0);
}

ProgramDir::ProgramDir()
    : m_before(Settings.pathApp)
{
    QTemporaryDir dir;
    dir.setAutoRemove(false);
    m_path = dir.path();
    Settings.pathApp = m_path;
}

ProgramDir::~ProgramDir()
{
    Settings.pathApp = m_before;
    QDir(m_path).removeRecursively();
}

QString ProgramDir::path(const QString& name) const
{
    return m_path + u'/' + name;
}

QString ProgramDir::write(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}

LogWatch::LogWatch(MainWindow& window)
    : m_window(window)
    , m_seen(WindowProbe(window).log().size())
{
}

QStringList LogWatch::takeNew()
{
    const QStringList all = WindowProbe(m_window).log();
    return all.mid(std::exchange(m_seen, all.size()));
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
