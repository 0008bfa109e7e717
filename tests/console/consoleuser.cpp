#include "console/consoleuser.h"

#include "app/mainwindow.h"
#include "support/usersteps.h"

#include <QLineEdit>
#include <QTest>

namespace {

void typeInto(QLineEdit* line, const QString& text)
{
    line->setFocus();
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    // As an input method brings it in: keyClicks() knows no Cyrillic keys.
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, line, Qt::Key_unknown, QString(character), Qt::NoModifier);
    QCOMPARE(line->text(), text);
}

} // namespace

QStringList consoleWidgets()
{
    return {"teLog",       "leDbgCmd",     "btnDbgCmdCall",  "btnDbgSaveJson",  "btnDbgDnload_2",
            "btnDbgClear", "btnDbgDnload", "btnDbgLoadFile", "btnDbgUploadJson"};
}

QStringList usableConsoleWidgets(const MainWindow& window)
{
    QStringList usable;
    for (const auto& name : consoleWidgets()) {
        const auto* const widget = named<QWidget>(window, qPrintable(name));
        if (widget->isEnabled() && widget->isVisible())
            usable.append(name);
        else if (widget->isEnabled() || widget->isVisible())
            usable.append("half " + name);
    }
    return usable;
}

void typeFilter(MainWindow& window, const QString& text)
{
    typeInto(named<QLineEdit>(window, "lePolesFilterStr"), text);
}

void typeWord(MainWindow& window, const QString& text)
{
    typeFilter(window, text);
    QTest::keyClick(named<QLineEdit>(window, "lePolesFilterStr"), Qt::Key_Return);
}

QString filterText(const MainWindow& window)
{
    return named<QLineEdit>(window, "lePolesFilterStr")->text();
}

void typeCommand(MainWindow& window, const QString& command)
{
    typeInto(named<QLineEdit>(window, "leDbgCmd"), command);
}

void callCommand(MainWindow& window, const QString& command)
{
    typeCommand(window, command);
    clickButton(window, "btnDbgCmdCall");
}

QString commandText(const MainWindow& window)
{
    return named<QLineEdit>(window, "leDbgCmd")->text();
}
