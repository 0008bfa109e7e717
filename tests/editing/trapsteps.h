#pragma once

#include <QPointer>

class EditingSession;
class QComboBox;
class QSpinBox;
class QString;

// What leads to the state in which something else happens, and what must hold afterwards.

/// Opens the number editor of `row` and types `text` over its number, without a commit.
QPointer<QSpinBox> typeInto(EditingSession& session, int row, const QString& text);

/// Opens the list editor of `row` and chooses `text`, without a commit.
QPointer<QComboBox> chooseIn(EditingSession& session, int row, const QString& text);

/// Waits until the selection loop has nothing left to do and what is to be deleted later is gone.
void waitForLoop(EditingSession& session);

/// What the table shows of numbers must be the record of the picked field, that of a heading or a line has its number
/// of rows, and there is nothing if none is picked.
void checkTableTellsTheTruth(EditingSession& session);

/// Neither a field nor an element of the scene must be picked: table, buttons and description show nothing.
void checkNothingIsPicked(EditingSession& session);

/// Clicks on the "+" or "-" of the scene, which must be in sight; does not wait for the new picture.
void clickLineButton(EditingSession& session, const QString& text);

/// Selects the field `key` on the scene without a mouse, which a message box would not let through.
void selectPole(EditingSession& session, int key);
