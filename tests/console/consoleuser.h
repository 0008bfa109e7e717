#pragma once

#include <QString>
#include <QStringList>

class MainWindow;

/// All widgets of the console.
QStringList consoleWidgets();

/// Those of them that a user can see and use. A widget that is only one of both is told as "half" and its name.
QStringList usableConsoleWidgets(const MainWindow& window);

/// Clears the filter line and types `text` into it, letter by letter.
void typeFilter(MainWindow& window, const QString& text);

/// The same, and Return.
void typeWord(MainWindow& window, const QString& text);

/// What the filter line shows.
QString filterText(const MainWindow& window);

/// Clears the console's line and types `command` into it; the console must be on.
void typeCommand(MainWindow& window, const QString& command);

/// The same, and clicks on the line's button.
void callCommand(MainWindow& window, const QString& command);

/// What the console's line shows.
QString commandText(const MainWindow& window);
