#pragma once

#include <QBrush>
#include <QFont>
#include <QLineF>
#include <QList>
#include <QPaintDevice>
#include <QPen>
#include <QRectF>
#include <QTransform>

#include <memory>
#include <optional>
#include <variant>
#include <vector>

class QGraphicsView;
class QPainter;

/// A picture as the list of the primitives that were painted: rectangles, lines and texts, each with what it
/// changes of the painter.
class RecordedPicture
{
public:
    struct Text
    {
        QPointF at;
        QString text;
    };
    using Shape = std::variant<QList<QRectF>, QList<QLineF>, Text>;

    struct Primitive
    {
        Shape shape;
        std::optional<QTransform> transform;
        std::optional<QRectF> clip; ///< in pixels of the device
        std::optional<QPen> pen;
        std::optional<QBrush> brush;
        std::optional<QFont> font;
    };

    /// Draws all of it with `painter`, which stands in its first state, and leaves the painter as it is then.
    void drawWith(QPainter& painter) const;

    /// Number of rectangles, lines or texts.
    int countOfRects() const;
    int countOfLines() const;
    int countOfTexts() const;

    std::vector<Primitive> primitives;
    bool isComplete = true; ///< nothing else than these primitives was painted
};

/// A device of the size and resolution of a view's viewport that keeps what is painted on it.
class PaintRecorder : public QPaintDevice
{
public:
    /// What `view` shows of its scene now.
    static RecordedPicture record(QGraphicsView& view);

    ~PaintRecorder() override;
    Q_DISABLE_COPY_MOVE(PaintRecorder)

    QPaintEngine* paintEngine() const override;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    class Engine;

    PaintRecorder(QSize size, int dpi);

    QSize m_size;
    int m_dpi;
    std::unique_ptr<Engine> m_engine;
};
