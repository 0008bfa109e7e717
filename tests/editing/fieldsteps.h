#pragma once

#include <QPointer>
#include <QWidget>

class MainWindow;
class QString;

/// Picks the field `key`, on the tape if it is placed and else in the list.
void pickField(MainWindow& window, int key);

/// Opens the editor of `row` and types `text` over its number or chooses `text` in its list, without a commit.
QPointer<QWidget> fillIn(MainWindow& window, int row, const QString& text);
