#pragma once

#include "support/templatefile.h"

#include <QStringList>

class QGraphicsScene;

/// How the user wants the tape drawn.
struct TapeChoice
{
    int width = 576; ///< in dots
    bool headings = true;
    bool mono = false; ///< field text one character to a cell
};

/// The texts of the ten headings.
QStringList headingTexts();

/// Compares the scene with what `fields` (keys from 1 on) must look like, item by item in stacking order: what it
/// is, where it stands, its numbers and its painted picture. Places and numbers are computed from the fields
/// alone; the picture is that of a fresh item with these numbers, whose painting `tests/view` checks. Returns one line
/// for each difference, so none if the scene is right.
QStringList sceneDifferences(const QGraphicsScene& scene, const QList<FieldRow>& fields,
                             const TapeChoice& choice);
