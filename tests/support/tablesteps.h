#pragma once

#include <QPoint>
#include <QString>
#include <QStringList>

class MainWindow;
class QGraphicsItem;
class QTableWidget;
class QTableWidgetItem;
class QWidget;

// What a user does on the tape, in the property table and in the field list.

/// The item of the field `key` on the scene; null if it is not placed.
QGraphicsItem* poleItem(MainWindow& window, int key);

/// The item of print line `line` of `block`; null if there is none.
QGraphicsItem* lineItem(MainWindow& window, int block, int line);

/// The heading of `block`; null if there is none.
QGraphicsItem* headerItem(MainWindow& window, int block);

/// A point of the view's viewport at which `item` lies on top, after scrolling to it.
QPoint visiblePoint(MainWindow& window, QGraphicsItem* item);

/// Presses and releases the left mouse button on `item`; does not wait for the table.
void clickItem(MainWindow& window, QGraphicsItem* item);

/// Clicks on `item` and waits until the selection loop has taken it.
void pickItem(MainWindow& window, QGraphicsItem* item);

/// Clicks on the field `key` on the tape and waits until the table shows it.
void pickPole(MainWindow& window, int key);

/// Clicks on the line `text` of the field list.
void pickInList(MainWindow& window, const QString& text);

/// The property table.
QTableWidget* propertyTable(MainWindow& window);

/// The value cell of `row`.
QTableWidgetItem* valueCell(MainWindow& window, int row);

/// Text, value and edited flag of the value cell of `row`, as "text|value|flag".
QString cellState(MainWindow& window, int row);

/// Double-clicks the value cell of `row` and returns the editor that opens; null if none does.
QWidget* openEditor(MainWindow& window, int row);

/// Opens the editor of `row`, types `text` over what it shows and presses Enter; returns when the commit is over.
void typeNumber(MainWindow& window, int row, const QString& text);

/// Opens the editor of `row`, chooses the line `text` from its list with the mouse and presses Enter; returns when
/// the commit is over.
void chooseText(MainWindow& window, int row, const QString& text);

/// Presses Enter in `editor` and waits until the editor is closed.
void pressEnter(QWidget* editor);

/// Waits until the redraw that a change has asked for is done.
void waitForRedraw(MainWindow& window);

/// The lines of the log that came after the first `from` ones.
QStringList logSince(MainWindow& window, qsizetype from);
