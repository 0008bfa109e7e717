#include "support/expectedscene.h"

#include "view/itemblockheader.h"
#include "view/itemline.h"
#include "view/itempole.h"

#include <QGraphicsLineItem>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QImage>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionGraphicsItem>

#include <map>
#include <memory>
#include <vector>

namespace {

constexpr int kBlocks = 10;
constexpr int kHeadingHeight = 21;
constexpr int kEmptyLineHeight = 15;
constexpr int kEmptyLineCell = 30;

constexpr int kCellWidth[] = {12, 12, 12, 12, 12, 12, 10, 9};
constexpr int kLineHeight[] = {20, 24, 20, 16, 10, 10, 14, 14};

/// A line of a block, as the leftmost of its fields makes it.
struct TapeLine
{
    int height = kEmptyLineHeight;
    int cell = 0;
    int leftmostX = -1;
    int y = 0;
};

/// The tape as a table: where each heading and each line stands.
struct Tape
{
    int headingY[kBlocks] = {};
    std::map<int, TapeLine> lines[kBlocks]; // from 1 on, without holes
};

Tape layOut(const QList<FieldRow>& fields, const TapeChoice& choice)
{
    Tape tape;
    for (const auto& field : fields) {
        if (field.size == 0)
            continue;
        auto& block = tape.lines[field.block];
        for (int l = 1; l <= field.line; ++l)
            block[l];
        TapeLine& line = block[field.line];
        // Of two fields on the same cell the first one counts.
        if (line.leftmostX >= 0 && line.leftmostX <= field.x)
            continue;
        line.leftmostX = field.x;
        line.height = kLineHeight[field.font] * (field.x2y + 1);
        line.cell = kCellWidth[field.font] * (field.x2x + 1);
    }
    int y = 0;
    for (int b = 0; b < kBlocks; ++b) {
        tape.headingY[b] = y;
        y += choice.headings ? kHeadingHeight : 0;
        for (auto& [number, line] : tape.lines[b]) {
            line.y = y;
            y += line.height;
        }
    }
    return tape;
}

/// What must be found at one place of the stack. `twin` is a fresh item of the same making.
struct Expected
{
    std::shared_ptr<QGraphicsItem> twin;
    QPointF pos;
    QString button; // for the two proxies
};

std::vector<Expected> expectedItems(const QList<FieldRow>& fields, const TapeChoice& choice)
{
    std::vector<Expected> all;
    const auto addPlainLine = [&all](QLineF line, const QColor& color) {
        auto item = std::make_shared<QGraphicsLineItem>(line);
        item->setPen(QPen(color));
        all.push_back({item, {0, 0}, {}});
    };

    const Tape tape = layOut(fields, choice);
    if (!fields.isEmpty()) {
        const int w = choice.width;
        const int yEnd = tape.headingY[kBlocks - 1] + 1;
        addPlainLine(QLineF(0, 0, w, 0), Qt::darkBlue);
        addPlainLine(QLineF(0, 0, 0, yEnd), Qt::darkBlue);
        addPlainLine(QLineF(w + 1, 0, w + 1, yEnd), Qt::darkBlue);
    }
    for (int b = 0; b < kBlocks && choice.headings && !fields.isEmpty(); ++b) {
        auto item = std::make_shared<ItemBlockHeader>(choice.width, kHeadingHeight, headingTexts().at(b));
        item->setData(1, b);
        all.push_back({item, QPointF(1, tape.headingY[b] + 1), {}});
    }
    for (int b = 0; b < kBlocks; ++b) {
        for (const auto& [number, line] : tape.lines[b]) {
            auto item = std::make_shared<ItemLine>(line.leftmostX < 0, choice.headings ? 1 : 2, choice.width,
                                                   line.height, line.cell == 0 ? kEmptyLineCell : line.cell);
            item->setData(1, b);
            item->setData(2, number);
            all.push_back({item, QPointF(1, line.y + 1), {}});
        }
    }
    int key = 0;
    for (const auto& field : fields) {
        ++key;
        if (field.size == 0)
            continue;
        const TapeLine& line = tape.lines[field.block].at(field.line);
        auto item = std::make_shared<ItemPole>(key, line.cell, line.height, field.size, field.view());
        item->poleMono = choice.mono;
        all.push_back({item, QPointF(line.cell * field.x + 1, line.y + 1), {}});
    }
    addPlainLine(QLineF(-30, 0, -29, 0), Qt::white);
    all.push_back({nullptr, {0, 0}, QStringLiteral("+")});
    all.push_back({nullptr, {0, 0}, QStringLiteral("-")});
    return all;
}

QImage pictureOf(QGraphicsItem& item)
{
    QImage image(item.boundingRect().toAlignedRect().size() + QSize(2, 2),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    QStyleOptionGraphicsItem option;
    item.paint(&painter, &option, nullptr);
    return image;
}

/// What is wrong with a hidden button of the scene; empty if nothing is.
QString buttonFault(QGraphicsItem& item, const QString& text)
{
    auto* const proxy = qgraphicsitem_cast<QGraphicsProxyWidget*>(&item);
    if (proxy == nullptr)
        return QStringLiteral("no widget");
    auto* const button = qobject_cast<QPushButton*>(proxy->widget());
    if (button == nullptr || button->text() != text)
        return QStringLiteral("not the button ") + text;
    if (button->minimumSize() != QSize(24, 24) || button->maximumSize() != QSize(24, 24))
        return QStringLiteral("size of the button ") + text;
    if (button->parent() != nullptr)
        return QStringLiteral("parent of the button ") + text;
    return proxy->isVisible() ? QStringLiteral("the button is shown: ") + text : QString();
}

QString plainLineFault(const QGraphicsLineItem& found, const QGraphicsLineItem& wanted)
{
    if (found.line() != wanted.line())
        return QStringLiteral("line to %1,%2, not %3,%4")
            .arg(found.line().x2())
            .arg(found.line().y2())
            .arg(wanted.line().x2())
            .arg(wanted.line().y2());
    return found.pen() == wanted.pen() ? QString() : QStringLiteral("pen ") + found.pen().color().name();
}

QString itemFault(QGraphicsItem& found, const Expected& expected)
{
    if (!expected.button.isEmpty())
        return buttonFault(found, expected.button);
    QGraphicsItem& twin = *expected.twin;
    if (found.type() != twin.type())
        return QStringLiteral("type %1, not %2").arg(found.type()).arg(twin.type());
    if (found.pos() != expected.pos)
        return QStringLiteral("at %1,%2, not %3,%4")
            .arg(found.pos().x())
            .arg(found.pos().y())
            .arg(expected.pos.x())
            .arg(expected.pos.y());
    if (found.parentItem() != nullptr || !found.isVisible() || found.flags() != twin.flags())
        return QStringLiteral("parent, visibility or flags");
    if (const auto* const line = qgraphicsitem_cast<QGraphicsLineItem*>(&found))
        return plainLineFault(*line, *qgraphicsitem_cast<QGraphicsLineItem*>(&twin));
    if (found.data(1) != twin.data(1) || found.data(2) != twin.data(2))
        return QStringLiteral("data %1 %2, not %3 %4")
            .arg(found.data(1).toString(), found.data(2).toString(), twin.data(1).toString(),
                 twin.data(2).toString());
    if (found.boundingRect() != twin.boundingRect())
        return QStringLiteral("size %1 x %2, not %3 x %4")
            .arg(found.boundingRect().width())
            .arg(found.boundingRect().height())
            .arg(twin.boundingRect().width())
            .arg(twin.boundingRect().height());
    return pictureOf(found) == pictureOf(twin) ? QString() : QStringLiteral("picture");
}

} // namespace

QStringList headingTexts()
{
    return {
        QStringLiteral("Шапка чека"),   QStringLiteral("Регистрация"), QStringLiteral("Предытоговый"),
        QStringLiteral("Итог"),         QStringLiteral("Налоги"),      QStringLiteral("Оплата"),
        QStringLiteral("Подвал чека"),  QStringLiteral("Фискальный"),  QStringLiteral("\"Чек аннулирован\""),
        QStringLiteral("Сторно оплаты")};
}

QStringList sceneDifferences(const QGraphicsScene& scene, const QList<FieldRow>& fields,
                             const TapeChoice& choice)
{
    const auto found = scene.items(Qt::AscendingOrder);
    const auto expected = expectedItems(fields, choice);
    QStringList faults;
    if (scene.backgroundBrush() != QBrush(Qt::white))
        faults.append(QStringLiteral("background"));
    if (found.size() != static_cast<qsizetype>(expected.size()))
        faults.append(QStringLiteral("%1 items, not %2").arg(found.size()).arg(expected.size()));
    const auto common = std::min(found.size(), static_cast<qsizetype>(expected.size()));
    for (qsizetype i = 0; i < common; ++i) {
        const QString fault = itemFault(*found.at(i), expected.at(static_cast<std::size_t>(i)));
        if (!fault.isEmpty())
            faults.append(QStringLiteral("item %1: %2").arg(i).arg(fault));
    }
    return faults;
}
