#pragma once

#include "app/mainwindow.h"

#include <span>

/// One row of the property table of a field: its name, how it is edited, and the property of the record.
struct PropertyRow
{
    enum class Editor {
        Number,         ///< a number from `minimum` to `maximum`
        List,           ///< a line of `texts`
        ListOneAbove,   ///< the same; the data of the lines are one above the value
        ListKeyOfAbove, ///< as ListOneAbove, though the data of the lines equal the value
        Character,      ///< a character by its code from `minimum` to `maximum`
    };

    const char* name;
    Editor editor;
    int minimum;
    int maximum;
    QMap<int, QString> MainWindow::glData::*texts;
    int BD_T20Items::T20Item::*param;
    int bit; ///< the bit of the property that the row shows; -1 if it shows all of it

    /// The number that the row shows for `item`.
    int valueOf(const BD_T20Items::T20Item& item) const;

    /// Stores `value` as what the row shows. Of a property shown by its bits the low byte is kept.
    void store(BD_T20Items::T20Item& item, int value) const;
};

/// The rows of position mode.
std::span<const PropertyRow> positionRows();

/// The rows of view mode.
std::span<const PropertyRow> viewRows();
