#pragma once

#include <QString>

// What the window says when it refuses a change, or makes another one of it.

inline const QString kForbidden = QStringLiteral("Поле не может находиться в данном блоке!");
inline const QString kNoLine = QStringLiteral("Нет такой строки!");
inline const QString kNoLineThere = QStringLiteral("Нет такой строки в новом блоке!");
inline const QString kTaken = QStringLiteral("Ячейка уже занята!");
inline const QString kNotEmpty = QStringLiteral("Строка не пустая!\nНельзя удалить.");

/// The report of a field that a taken cell has pushed to the position `x`.
inline QString pushedTo(int x)
{
    return QStringLiteral("Ячейка в новом блоке занята - поле помещено в ячейку %1!").arg(x);
}
