#pragma once

#include "bench/paintrecorder.h"
#include "bench/windowprobe_bench.h"

#include <vector>

class QGraphicsItem;
class QGraphicsView;
class QTableWidget;

/// A user who changes the font of one field again and again, and what it costs until the tape shows it.
class FontEditing
{
public:
    /// Edits the first field that the view shows whole.
    explicit FontEditing(const WindowProbe& probe);

    /// Picks the field and enters another font; returns the seconds of the commit, of the turn of the
    /// selection loop that redraws, and of painting the view.
    double change();

    /// Returns the seconds of drawing what the view shows now, primitive by primitive, into an image.
    double drawPrimitives();

    /// The primitives that the view shows now.
    RecordedPicture shownPicture() const;

    /// True if all changes have been made and all images equalled the view, pixel by pixel.
    bool isTrue() const { return m_isTrue; }

    /// The parts of each change, in seconds.
    const std::vector<double>& commitTimes() const { return m_commitTimes; }
    const std::vector<double>& turnTimes() const { return m_turnTimes; }
    const std::vector<double>& paintTimes() const { return m_paintTimes; }

private:
    QGraphicsItem* editedItem() const;

    WindowProbe m_probe;
    QGraphicsView& m_view;
    QTableWidget& m_table;
    int m_key = 0;
    bool m_isTrue = true;
    std::vector<double> m_commitTimes;
    std::vector<double> m_turnTimes;
    std::vector<double> m_paintTimes;
};
