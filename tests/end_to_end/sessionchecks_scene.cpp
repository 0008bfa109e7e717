#include "sessionchecks.h"

#include "app/mainwindow.h"
#include "support/windowprobe.h"
#include "view/itemblockheader.h"
#include "view/itemline.h"
#include "view/itempole.h"

#include <QGraphicsLineItem>
#include <QGraphicsProxyWidget>
#include <QGraphicsView>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <cmath>
#include <map>

namespace {

constexpr int kBlocks = 10;
constexpr int kPlainLines = 4;
constexpr int kLineButtons = 2;
constexpr int kWidestField = 633;

} // namespace

QGraphicsProxyWidget* lineButton(const QGraphicsScene& scene, const QString& text)
{
    for (QGraphicsItem* const item : scene.items()) {
        auto* const proxy = qgraphicsitem_cast<QGraphicsProxyWidget*>(item);
        if (proxy != nullptr && proxy->widget()->property("text").toString() == text)
            return proxy;
    }
    return nullptr;
}

void SessionChecks::checkItems()
{
    const WindowProbe probe(m_window);
    const auto& maket = probe.maket();
    int headers = 0;
    int lines = 0;
    int poles = 0;
    const auto items = probe.scene().items();
    for (const QGraphicsItem* const item : items) {
        const int number = item->data(1).toInt();
        if (item->type() == ItemPole::Type) {
            ++poles;
        } else if (item->type() == ItemLine::Type) {
            const int l = item->data(2).toInt();
            const QRectF place(1, maket.getLineBaseY(number, l) + 1, probe.tapeWidth() - 1,
                               maket.getLineHeight(number, l) - 1);
            expect(item->sceneBoundingRect() == place,
                   [&] { return QStringLiteral("line %1 of %2").arg(l).arg(number); });
            ++lines;
        } else if (item->type() == ItemBlockHeader::Type) {
            expect(item->pos() == QPointF(1, maket.getLineBaseY(number, 0) + 1),
                   [&] { return QStringLiteral("heading %1").arg(number); });
            ++headers;
        }
    }
    int expectedLines = 0;
    for (const auto& block : maket.blocks)
        expectedLines += block.kolLines - 1;
    expect(lines == expectedLines, [&] { return QStringLiteral("%1 lines drawn").arg(lines); });
    expect(headers == (maket.blockTitleEnabled ? kBlocks : 0),
           [&] { return QStringLiteral("%1 headings").arg(headers); });
    expect(items.size() == headers + lines + poles + kPlainLines + kLineButtons,
           [&] { return QStringLiteral("%1 items").arg(items.size()); });
}

void SessionChecks::checkPoles()
{
    const WindowProbe probe(m_window);
    const auto& bd = probe.bd();
    const auto& maket = probe.maket();
    std::map<int, QRectF> poles;
    for (QGraphicsItem* const item : probe.scene().items()) {
        if (item->type() != ItemPole::Type)
            continue;
        const int key = item->data(1).toInt();
        expect(!poles.contains(key), [&] { return QStringLiteral("field %1 twice").arg(key); });
        poles[key] = item->sceneBoundingRect();
        expect(static_cast<const ItemPole*>(item)->poleMono == maket.fontMonoWide,
               [&] { return QStringLiteral("field %1 in the other kind of text").arg(key); });
    }
    for (auto it = bd.items.cbegin(); it != bd.items.cend(); ++it) {
        if (it->Size == 0) {
            expect(!poles.contains(it.key()),
                   [&] { return QStringLiteral("field %1 is drawn").arg(it.key()); });
            continue;
        }
        const int dx = maket.getLineCharDX(it->Block, it->Line);
        const QRectF place(dx * it->X + 1, maket.getLineBaseY(it->Block, it->Line) + 1,
                           std::min(dx * it->Size, kWidestField), maket.getLineHeight(it->Block, it->Line));
        expect(poles[it.key()] == place,
               [&] { return QStringLiteral("field %1 is drawn elsewhere").arg(it.key()); });
    }
}

void SessionChecks::checkFrame()
{
    const WindowProbe probe(m_window);
    const int width = probe.tapeWidth();
    const int yEnd = probe.maket().getLineBaseY(kBlocks - 1, 0) + 1;
    const QList<QLineF> wanted{QLineF(0, 0, width, 0), QLineF(0, 0, 0, yEnd),
                               QLineF(width + 1, 0, width + 1, yEnd), QLineF(-30, 0, -29, 0)};
    QList<QLineF> found;
    for (QGraphicsItem* const item : probe.scene().items(Qt::AscendingOrder)) {
        if (const auto* const line = qgraphicsitem_cast<QGraphicsLineItem*>(item))
            found.append(line->line());
    }
    expect(found == wanted, [] { return QStringLiteral("the frame of the tape"); });
}

void SessionChecks::checkLineButtons()
{
    const WindowProbe probe(m_window);
    const QGraphicsItem* const item = probe.curItem();
    const bool isLine = item != nullptr && item->type() == ItemLine::Type;
    const bool isHeader = item != nullptr && item->type() == ItemBlockHeader::Type;
    const QGraphicsProxyWidget* const add = lineButton(probe.scene(), QStringLiteral("+"));
    const QGraphicsProxyWidget* const del = lineButton(probe.scene(), QStringLiteral("-"));
    if (add == nullptr || del == nullptr) {
        m_found.append(QStringLiteral("no buttons of a line"));
        return;
    }
    // A pick in the list leaves them as they are.
    if (probe.curKey() != 0)
        return;
    expect(add->isVisible() == (isLine || isHeader), [] { return QStringLiteral("the button +"); });
    expect(del->isVisible() == isLine, [] { return QStringLiteral("the button -"); });
    if (!isLine && !isHeader)
        return;
    const int h = probe.maket().getLineHeight(item->data(1).toInt(), isLine ? item->data(2).toInt() : 0);
    expect(add->pos() == item->pos() + QPointF(-27, h - 12),
           [] { return QStringLiteral("place of the button +"); });
    expect(!isLine || del->pos() == item->pos() + QPointF(probe.tapeWidth() + 3, h / 2 - 12),
           [] { return QStringLiteral("place of the button -"); });
}

void SessionChecks::checkAllowedLines()
{
    const WindowProbe probe(m_window);
    const auto& bd = probe.bd();
    constexpr unsigned int kAllBlocks = (1U << kBlocks) - 1;
    unsigned int seen = 0;
    unsigned int allowed = 0;
    unsigned int refused = 0;
    for (QGraphicsItem* const item : probe.scene().items()) {
        if (item->type() != ItemLine::Type)
            continue;
        const unsigned int bit = 1U << item->data(1).toInt();
        seen |= bit;
        (static_cast<const ItemLine*>(item)->lineAllowed ? allowed : refused) |= bit;
    }
    const auto isMask = [&](unsigned int mask) {
        return allowed == (mask & seen) && refused == (~mask & seen);
    };
    const QGraphicsItem* const item = probe.curItem();
    bool isRight = isMask(kAllBlocks);
    if (item != nullptr && item->type() == ItemPole::Type) {
        isRight = isMask(bd.items.value(item->data(1).toInt()).BL_MASK);
    } else if (probe.curKey() != 0) {
        // A pick in the list leaves the lines as the field that was selected before has marked them.
        isRight = isRight || std::any_of(bd.items.cbegin(), bd.items.cend(),
                                         [&](const auto& field) { return isMask(field.BL_MASK); });
    }
    expect(isRight, [&] {
        return QStringLiteral("allowed blocks %1, others %2").arg(allowed, 0, 16).arg(refused, 0, 16);
    });
}

void SessionChecks::checkScale()
{
    static const QStringList steps{QStringLiteral("44%"), QStringLiteral("67%"), QStringLiteral("100%"),
                                   QStringLiteral("150%"), QStringLiteral("225%")};
    const QString shown = m_scale->text();
    const int step = WindowProbe(m_window).maket().getScale();
    expect(shown == steps.value(step), [&] { return QString(u"scale " + shown); });
    const double scale = m_graphics->transform().m11();
    expect(qAbs(scale - std::pow(1.5, step - 2)) < 1e-6,
           [&] { return QStringLiteral("the view is scaled by %1").arg(scale); });
}
