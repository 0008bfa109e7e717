#pragma once

#include "model/bd_t20items.h"

#include <QStringList>

#include <map>

/// The fields of a template and the lines on the tape, in stores of their own.
struct TemplateState
{
    std::map<int, BD_T20Items::T20Item> fields; ///< by key
    QList<int> lines;                           ///< of each block, the line of its heading included
};

/// What the user has left in a cell editor of the property table of a field.
struct CellEntry
{
    int key = 0;
    bool isPositions = true; ///< position mode, else view mode
    int row = 0;
    bool isOnTape = true; ///< the field is selected on the tape, not only in the list
    bool isChoice = true; ///< false while the editor shows what it can instead of the value
    int number = 0;       ///< of a list: the number that the chosen line stands for
};

/// What comes of something that the user does.
struct Consequence
{
    TemplateState state;
    QStringList boxes;     ///< texts of the warnings
    bool isRedraw = false; ///< the tape is drawn anew
};

/// The consequence of committing `entry`.
Consequence afterEntry(const TemplateState& before, const CellEntry& entry);

/// The consequence of "+" at line `line` of `block`.
Consequence afterLineAdded(const TemplateState& before, int block, int line);

/// The consequence of "-" at line `line` of `block`.
Consequence afterLineDeleted(const TemplateState& before, int block, int line);

/// The consequence of deleting the field `key` that is selected on the tape.
Consequence afterFieldDeleted(const TemplateState& before, int key);

/// The consequence of saving the template and opening it again: only lines with fields make a block longer.
Consequence afterReopening(const TemplateState& before);

/// The first thing in which the two differ; empty if there is none.
QString differenceOf(const TemplateState& expected, const TemplateState& found);

/// The number that a row of the property table shows of `field`.
int shownNumber(const BD_T20Items::T20Item& field, bool isPositions, int row);

/// The text that the row shows for it; a null string if that character is none.
QString shownText(const BD_T20Items::T20Item& field, bool isPositions, int row);

/// The names of the rows.
QStringList rowNames(bool isPositions);

/// The number that the first line of the row's list stands for.
int firstListNumber(bool isPositions, int row);
