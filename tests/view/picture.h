#pragma once

#include <QApplication>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QImage>
#include <QList>
#include <QPainter>

/// A picture in the coordinates of an item, with a margin on every side so that what an item paints outside of
/// itself is seen too. White where nothing is painted: no item uses white.
///
/// Tests take one from an item and build the expected one pixel by pixel.
class Picture
{
public:
    static constexpr int kMargin = 40;

    Picture(int width, int height)
        : pixels(width + 2 * kMargin, height + 2 * kMargin, QImage::Format_RGB32)
    {
        pixels.fill(Qt::white);
    }

    /// What `item` paints by itself, clipped by nothing but the margin.
    static Picture ofItem(QGraphicsItem& item, int width, int height, const QFont& font = QFont())
    {
        Picture picture(width, height);
        QPainter painter(&picture.pixels);
        painter.setFont(font);
        painter.translate(kMargin, kMargin);
        item.paint(&painter, nullptr, nullptr);
        return picture;
    }

    /// What `scene` shows from its origin on.
    static Picture ofScene(QGraphicsScene& scene, int width, int height)
    {
        Picture picture(width, height);
        QPainter painter(&picture.pixels);
        const QRectF target(picture.pixels.rect());
        scene.render(&painter, target, target.translated(-kMargin, -kMargin));
        return picture;
    }

    QColor at(int x, int y) const { return pixels.pixelColor(x + kMargin, y + kMargin); }

    /// The columns of row `y` that have this colour.
    QList<int> columnsOf(Qt::GlobalColor colour, int y) const
    {
        QList<int> found;
        for (int x = -kMargin; x < pixels.width() - kMargin; ++x) {
            if (at(x, y) == QColor(colour))
                found.append(x);
        }
        return found;
    }

    /// Number of pixels of this colour within `area`.
    int count(Qt::GlobalColor colour, const QRect& area) const
    {
        int found = 0;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                found += at(x, y) == QColor(colour) ? 1 : 0;
        }
        return found;
    }

    /// Number of pixels of this colour in the whole picture.
    int count(Qt::GlobalColor colour) const { return count(colour, area()); }

    /// Colours the pixels of columns x to x + width - 1 and rows y to y + height - 1.
    void fill(int x, int y, int width, int height, Qt::GlobalColor colour)
    {
        const QRect visible = QRect(x, y, width, height) & area();
        for (int row = visible.top(); row <= visible.bottom(); ++row) {
            for (int column = visible.left(); column <= visible.right(); ++column)
                set(column, row, colour);
        }
    }

    /// A filled rectangle with an outline, which runs along columns x and x + width and rows y and y + height.
    void outlined(int x, int y, int width, int height, Qt::GlobalColor outline, Qt::GlobalColor inside)
    {
        fill(x, y, width + 1, height + 1, outline);
        fill(x + 1, y + 1, width - 1, height - 1, inside);
    }

    /// Colours the pixels that `text` covers when its baseline starts at (x, y).
    void write(int x, int y, const QString& text, Qt::GlobalColor colour, const QFont& font = QFont())
    {
        QImage ink(pixels.size(), QImage::Format_RGB32);
        ink.fill(Qt::white);
        {
            QPainter painter(&ink);
            painter.setFont(font);
            painter.setPen(Qt::black);
            painter.drawText(QPointF(x + kMargin, y + kMargin), text);
        }
        for (int row = 0; row < ink.height(); ++row) {
            for (int column = 0; column < ink.width(); ++column) {
                if (ink.pixelColor(column, row) == QColor(Qt::black))
                    pixels.setPixelColor(column, row, colour);
            }
        }
    }

    /// Blanks everything outside of `shape`.
    void clip(const QRect& shape)
    {
        for (int y = area().top(); y <= area().bottom(); ++y) {
            for (int x = area().left(); x <= area().right(); ++x) {
                if (!shape.contains(x, y))
                    set(x, y, Qt::white);
            }
        }
    }

    /// The first pixel in which this picture is not as `expected`, in words; empty if they are alike.
    QString differenceFrom(const Picture& expected) const
    {
        if (pixels.size() != expected.pixels.size())
            return QStringLiteral("the sizes differ");
        for (int y = area().top(); y <= area().bottom(); ++y) {
            for (int x = area().left(); x <= area().right(); ++x) {
                if (at(x, y) != expected.at(x, y))
                    return QStringLiteral("(%1, %2) is %3 and not %4")
                        .arg(x)
                        .arg(y)
                        .arg(at(x, y).name(), expected.at(x, y).name());
            }
        }
        return QString();
    }

private:
    QRect area() const { return pixels.rect().translated(-kMargin, -kMargin); }

    void set(int x, int y, Qt::GlobalColor colour) { pixels.setPixelColor(x + kMargin, y + kMargin, colour); }

    QImage pixels;
};

/// Gives the application a font whose glyphs have no half-tones, so that every pixel of a text has the pen's
/// own colour.
inline void useFontWithoutHalftones()
{
    QFont font;
    font.setPixelSize(12);
    font.setStyleStrategy(QFont::NoAntialias);
    QApplication::setFont(font);
}
