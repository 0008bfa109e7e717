#pragma once

#include <QString>
#include <QStringList>

class MainWindow;
class QListWidget;

// What the field list and the line beside the property table show.

/// The field list.
QListWidget* fieldList(MainWindow& window);

/// The lines of the field list.
QStringList listTexts(MainWindow& window);

/// The title of the field list.
QString listTitle(MainWindow& window);

/// Clicks on the line number `row` of the field list.
void clickListLine(MainWindow& window, int row);

/// The description beside the property table.
QString shownDesc(MainWindow& window);
