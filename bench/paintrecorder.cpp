#include "bench/paintrecorder.h"

#include <QGraphicsView>
#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <numeric>

namespace {

template <typename Value>
void setIfChanged(std::optional<Value>& change, std::optional<Value>& last, const Value& now)
{
    if (last != now)
        change = last = now;
}

/// Sum of the sizes of all lists of `List` among the primitives.
template <typename List>
int totalSize(const std::vector<RecordedPicture::Primitive>& primitives)
{
    return std::accumulate(primitives.begin(), primitives.end(), 0, [](int sum, const auto& primitive) {
        const auto* const list = std::get_if<List>(&primitive.shape);
        return sum + (list == nullptr ? 0 : static_cast<int>(list->size()));
    });
}

} // namespace

void RecordedPicture::drawWith(QPainter& painter) const
{
    for (const auto& [shape, transform, clip, pen, brush, font] : primitives) {
        if (clip) {
            painter.resetTransform();
            painter.setClipRect(*clip);
        }
        if (transform)
            painter.setTransform(*transform);
        if (pen)
            painter.setPen(*pen);
        if (brush)
            painter.setBrush(*brush);
        if (font)
            painter.setFont(*font);
        if (const auto* const rects = std::get_if<QList<QRectF>>(&shape))
            painter.drawRects(rects->constData(), static_cast<int>(rects->size()));
        else if (const auto* const lines = std::get_if<QList<QLineF>>(&shape))
            painter.drawLines(lines->constData(), static_cast<int>(lines->size()));
        else if (const auto* const text = std::get_if<Text>(&shape))
            painter.drawText(text->at, text->text);
    }
}

int RecordedPicture::countOfRects() const
{
    return totalSize<QList<QRectF>>(primitives);
}

int RecordedPicture::countOfLines() const
{
    return totalSize<QList<QLineF>>(primitives);
}

int RecordedPicture::countOfTexts() const
{
    return static_cast<int>(std::count_if(primitives.begin(), primitives.end(), [](const auto& primitive) {
        return std::holds_alternative<Text>(primitive.shape);
    }));
}

/// Reads the state of the painter at each primitive and keeps what has changed of it.
class PaintRecorder::Engine : public QPaintEngine
{
public:
    Engine()
        : QPaintEngine(AllFeatures)
    {
    }

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState&) override {}

    using QPaintEngine::drawLines;
    using QPaintEngine::drawRects;
    void drawRects(const QRectF* rects, int count) override { add(QList<QRectF>(rects, rects + count)); }
    void drawLines(const QLineF* lines, int count) override { add(QList<QLineF>(lines, lines + count)); }
    void drawTextItem(const QPointF& at, const QTextItem& item) override
    {
        add(RecordedPicture::Text{at, item.text()});
    }

    using QPaintEngine::drawEllipse;
    using QPaintEngine::drawPoints;
    using QPaintEngine::drawPolygon;
    void drawEllipse(const QRectF&) override { picture.isComplete = false; }
    void drawPath(const QPainterPath&) override { picture.isComplete = false; }
    void drawPoints(const QPointF*, int) override { picture.isComplete = false; }
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override { picture.isComplete = false; }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override { picture.isComplete = false; }

    RecordedPicture picture;

private:
    void add(const RecordedPicture::Shape& shape)
    {
        const QTransform transform = painter()->transform();
        RecordedPicture::Primitive primitive;
        primitive.shape = shape;
        if (painter()->hasClipping())
            setIfChanged(primitive.clip, m_clip, transform.mapRect(painter()->clipBoundingRect()));
        if (primitive.clip)
            m_transform.reset(); // drawing sets a clip without any transform
        setIfChanged(primitive.transform, m_transform, transform);
        setIfChanged(primitive.pen, m_pen, painter()->pen());
        setIfChanged(primitive.brush, m_brush, painter()->brush());
        setIfChanged(primitive.font, m_font, painter()->font());
        picture.primitives.push_back(primitive);
    }

    std::optional<QTransform> m_transform;
    std::optional<QRectF> m_clip;
    std::optional<QPen> m_pen;
    std::optional<QBrush> m_brush;
    std::optional<QFont> m_font;
};

PaintRecorder::PaintRecorder(QSize size, int dpi)
    : m_size(size)
    , m_dpi(dpi)
    , m_engine(std::make_unique<Engine>())
{
}

PaintRecorder::~PaintRecorder() = default;

QPaintEngine* PaintRecorder::paintEngine() const
{
    return m_engine.get();
}

int PaintRecorder::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth:
        return m_size.width();
    case PdmHeight:
        return m_size.height();
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return m_dpi;
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
    default:
        return QPaintDevice::metric(metric);
    }
}

RecordedPicture PaintRecorder::record(QGraphicsView& view)
{
    const QWidget* const viewport = view.viewport();
    PaintRecorder recorder(viewport->size(), viewport->logicalDpiX());
    QPainter painter(&recorder);
    painter.setFont(viewport->font());
    view.render(&painter, viewport->rect(), viewport->rect());
    painter.end();
    return recorder.m_engine->picture;
}
