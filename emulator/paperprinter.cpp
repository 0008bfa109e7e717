#include "emulator/paperprinter.h"

#include "emulator/statefile.h"

#include <QDir>
#include <QFile>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace emulator {

namespace {

constexpr int kMaxImageHeight = 30000;
constexpr int kDrawnPixelSize = 40;
/// Share of a cell that its character fills.
constexpr double kGlyphWidth = 0.95;
/// Accents over capitals reach above what a font calls its ascent.
constexpr double kHeadroom = 1.12;

/// Draws single characters, stretched to any cell.
class GlyphPen
{
public:
    GlyphPen()
        : m_font(QString::fromLatin1("monospace"))
        , m_metrics(monospaced(m_font))
    {
    }

    void draw(QPainter& painter, QChar character, const QRectF& cell) const
    {
        QPainterPath path;
        path.addText(0, m_metrics.ascent() * kHeadroom, m_font, character);
        const double advance = std::max(1.0, m_metrics.horizontalAdvance(character));
        painter.save();
        painter.setClipRect(cell);
        painter.translate(cell.topLeft());
        painter.scale(cell.width() * kGlyphWidth / advance,
                      cell.height() / (m_metrics.ascent() * kHeadroom + m_metrics.descent()));
        painter.fillPath(path, Qt::black);
        painter.restore();
    }

private:
    static const QFont& monospaced(QFont& font)
    {
        font.setStyleHint(QFont::Monospace);
        font.setPixelSize(kDrawnPixelSize);
        return font;
    }

    QFont m_font;
    QFontMetricsF m_metrics;
};

void drawLine(QPainter& painter, const GlyphPen& pen, const PaperLine& line, int top)
{
    for (const PaperText& piece : line.texts)
        for (qsizetype i = 0; i < piece.text.size(); ++i) {
            if (piece.text[i] == ' ')
                continue;
            const auto left = static_cast<double>((piece.cell + i) * line.cellWidth);
            pen.draw(painter, piece.text[i], QRectF(left, top, line.cellWidth, line.height));
        }
}

} // namespace

QImage paperImage(const Paper& paper, int lineLength)
{
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
        return {};
    int height = 0;
    for (const PaperLine& line : paper)
        height += line.height;
    QImage image(lineLength * kTapeCellWidth, std::clamp(height, 1, kMaxImageHeight), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const GlyphPen pen;
    int top = 0;
    for (const PaperLine& line : paper) {
        drawLine(painter, pen, line, top);
        top += line.height;
    }
    return image;
}

void writePrint(const Print& print, const QString& folder)
{
    QDir().mkpath(folder);
    const QString stem = folder + '/' + print.name;
    QFile file(stem + ".txt");
    if (!isFreeForFile(file.fileName()) || !file.open(QIODevice::WriteOnly))
        return;
    file.write(paperText(print.paper).toUtf8());
    const QImage image = paperImage(print.paper, print.lineLength);
    if (!image.isNull() && isFreeForFile(stem + ".png"))
        image.save(stem + ".png", "PNG");
}

} // namespace emulator
