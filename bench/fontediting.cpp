#include "bench/fontediting.h"

#include "bench/measure.h"
#include "view/itempole.h"

#include <QAbstractItemDelegate>
#include <QCoreApplication>
#include <QGraphicsView>
#include <QImage>
#include <QPainter>
#include <QSpinBox>
#include <QTableWidget>
#include <QTextEdit>

#include <memory>

namespace {

constexpr int kViewMode = 2;
constexpr int kFontRow = 0;
constexpr int kValueColumn = 1;

} // namespace

FontEditing::FontEditing(const WindowProbe& probe)
    : m_probe(probe)
    , m_view(probe.child<QGraphicsView>("graphicsView_1"))
    , m_table(probe.child<QTableWidget>("settingsWidget"))
{
    m_probe.changeSetMode(kViewMode);
    const QRectF shown = m_view.mapToScene(m_view.viewport()->rect()).boundingRect();
    for (const QGraphicsItem* const item : m_probe.scene().items(shown, Qt::ContainsItemShape)) {
        if (item->type() == ItemPole::Type)
            m_key = item->data(1).toInt();
    }
}

QGraphicsItem* FontEditing::editedItem() const
{
    for (QGraphicsItem* const item : m_probe.scene().items()) {
        if (item->type() == ItemPole::Type && item->data(1).toInt() == m_key)
            return item;
    }
    return nullptr;
}

double FontEditing::change()
{
    QCoreApplication::processEvents();
    QGraphicsItem* const item = editedItem();
    if (item == nullptr) {
        m_isTrue = false;
        return 0;
    }
    item->setSelected(true);
    m_probe.timerTick();
    m_probe.child<QTextEdit>("teLog").clear();
    QCoreApplication::processEvents();

    const QModelIndex cell = m_table.model()->index(kFontRow, kValueColumn);
    const auto* const delegate = m_table.itemDelegateForRow(kFontRow);
    const std::unique_ptr<QWidget> editor(delegate->createEditor(m_table.viewport(), {}, cell));
    delegate->setEditorData(editor.get(), cell);
    auto* const box = qobject_cast<QSpinBox*>(editor.get());
    const int font = box->value() == 1 ? 2 : 1;
    box->setValue(font);

    m_commitTimes.push_back(secondsOf([&] { delegate->setModelData(box, m_table.model(), cell); }));
    // The table shows the new text while the change waits for the turn that redraws the tape.
    QCoreApplication::processEvents();
    m_turnTimes.push_back(secondsOf([&] { m_probe.timerTick(); }));
    m_paintTimes.push_back(secondsOf([&] { m_view.viewport()->repaint(); }));
    m_isTrue = m_isTrue && m_probe.fontOf(m_key) == font && !m_probe.isRedrawPending();
    return m_commitTimes.back() + m_turnTimes.back() + m_paintTimes.back();
}

RecordedPicture FontEditing::shownPicture() const
{
    return PaintRecorder::record(m_view);
}

double FontEditing::drawPrimitives()
{
    const RecordedPicture picture = shownPicture();
    QImage image(m_view.viewport()->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const double seconds = secondsOf([&] {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::TextAntialiasing);
        picture.drawWith(painter);
    });
    const QImage shown = m_view.viewport()->grab().toImage().convertToFormat(image.format());
    m_isTrue = m_isTrue && picture.isComplete && image == shown;
    return seconds;
}
