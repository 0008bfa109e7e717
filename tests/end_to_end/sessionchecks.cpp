#include "sessionchecks.h"

#include "app/mainwindow.h"
#include "support/tablesteps.h"
#include "support/windowprobe.h"
#include "view/itemblockheader.h"
#include "view/itemline.h"
#include "view/itempole.h"

#include <QGraphicsItem>
#include <QTableWidget>

#include <algorithm>
#include <map>

namespace {

constexpr int kBlocks = 10;

int cellWidth(int font)
{
    return font == 6 ? 10 : font == 7 ? 9 : 12;
}

int lineHeight(int font)
{
    static const std::map<int, int> heights{{1, 24}, {3, 16}, {4, 10}, {5, 10}, {6, 14}, {7, 14}};
    const auto found = heights.find(font);
    return found == heights.end() ? 20 : found->second;
}

} // namespace

SessionChecks::SessionChecks(MainWindow& window)
    : m_window(window)
{
}

QStringList SessionChecks::violations()
{
    m_found.clear();
    checkFields();
    checkBlocks();
    checkGeometry();
    checkScene();
    checkTable();
    return m_found;
}

void SessionChecks::checkFields()
{
    auto& bd = WindowProbe(m_window).bd();
    QStringList messages;
    expect(bd.CheckBDCorrect(kBlocks, messages, false) == 0,
           [&] { return QString(u"fields: " + messages.join(u' ')); });
    int key = 0;
    for (auto it = bd.items.cbegin(); it != bd.items.cend(); ++it) {
        ++key;
        expect(it.key() == key, [&] { return QStringLiteral("key %1 is not %2").arg(it.key()).arg(key); });
    }
}

void SessionChecks::checkBlocks()
{
    auto& bd = WindowProbe(m_window).bd();
    std::map<std::pair<int, int>, QList<int>> keys;
    std::map<int, int> lastLine;
    for (auto it = bd.items.cbegin(); it != bd.items.cend(); ++it) {
        if (it->Size == 0)
            continue;
        keys[{it->Block, it->Line}].append(it.key());
        lastLine[it->Block] = std::max(lastLine[it->Block], it->Line);
    }
    expect(bd.blocks.size() == kBlocks, [&] { return QStringLiteral("%1 blocks").arg(bd.blocks.size()); });
    bool isLeftmostRight = true;
    for (int b = 0; b < bd.blocks.size(); ++b) {
        const auto& lines = bd.blocks.at(b).lines;
        expect(lines.size() == lastLine[b] + 1,
               [&] { return QStringLiteral("block %1: %2 lines").arg(b).arg(lines.size()); });
        for (int l = 0; l < lines.size(); ++l) {
            const auto& poles = keys[{b, l}];
            expect(lines.at(l).poles == poles,
                   [&] { return QStringLiteral("block %1 line %2: other fields").arg(b).arg(l); });
            const auto leftmost = std::min_element(poles.cbegin(), poles.cend(), [&](int one, int other) {
                return bd.items.value(one).X < bd.items.value(other).X;
            });
            const auto index = poles.isEmpty() ? -1 : leftmost - poles.cbegin();
            isLeftmostRight = isLeftmostRight && lines.at(l).firstIdx == index;
        }
    }
    expect(isLeftmostRight || m_isLeftmostOld, [&] { return QStringLiteral("wrong leftmost field"); });
    if (isLeftmostRight)
        m_isLeftmostOld = false;
}

void SessionChecks::checkGeometry()
{
    const WindowProbe probe(m_window);
    const auto& bd = probe.bd();
    const auto& maket = probe.maket();
    expect(maket.blocks.size() == kBlocks,
           [&] { return QStringLiteral("%1 laid out").arg(maket.blocks.size()); });
    int y = 0;
    for (int b = 0; b < maket.blocks.size(); ++b) {
        const auto& block = maket.blocks.at(b);
        const QString where = QStringLiteral("layout of block %1: ").arg(b);
        expect(block.baseY == y, [&] { return QString(where + u"base"); });
        expect(block.kolLines == block.lineDY.size() && block.kolLines == block.lineDX.size(),
               [&] { return QString(where + u"lists"); });
        expect(block.kolLines >= bd.blocks.at(b).lines.size(),
               [&] { return QString(where + u"fewer lines than the model"); });
        for (int l = 0; l < block.lineDY.size(); ++l) {
            int dy = l == 0 ? (maket.blockTitleEnabled ? 21 : 0) : 15;
            int dx = l == 0 ? 384 : 0;
            if (l > 0 && l < bd.blocks.at(b).lines.size() && !bd.blocks.at(b).lines.at(l).poles.isEmpty()) {
                const auto& line = bd.blocks.at(b).lines.at(l);
                const auto first = bd.items.value(line.poles.value(line.firstIdx));
                dy = lineHeight(first.Font) * (first.X2Y + 1);
                dx = cellWidth(first.Font) * (first.X2X + 1);
            }
            expect(block.lineDY.at(l) == dy && block.lineDX.at(l) == dx,
                   [&] { return QString(where + QString::number(l)); });
            y += dy;
        }
    }
}

void SessionChecks::checkScene()
{
    const WindowProbe probe(m_window);
    const auto& bd = probe.bd();
    const auto& maket = probe.maket();
    std::map<int, QRectF> poles;
    int headers = 0;
    int lines = 0;
    for (const QGraphicsItem* const item : probe.scene().items()) {
        const int number = item->data(1).toInt();
        if (item->type() == ItemPole::Type) {
            expect(!poles.contains(number), [&] { return QStringLiteral("field %1 twice").arg(number); });
            poles[number] = item->sceneBoundingRect();
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
    for (auto it = bd.items.cbegin(); it != bd.items.cend(); ++it) {
        if (it->Size == 0) {
            expect(!poles.contains(it.key()),
                   [&] { return QStringLiteral("field %1 is drawn").arg(it.key()); });
            continue;
        }
        const int dx = maket.getLineCharDX(it->Block, it->Line);
        const QRectF place(dx * it->X + 1, maket.getLineBaseY(it->Block, it->Line) + 1,
                           std::min(dx * it->Size, 633), maket.getLineHeight(it->Block, it->Line));
        expect(poles[it.key()] == place,
               [&] { return QStringLiteral("field %1 is drawn elsewhere").arg(it.key()); });
    }
}

void SessionChecks::checkTable()
{
    const WindowProbe probe(m_window);
    const QGraphicsItem* const item = probe.curItem();
    const QTableWidget* const table = propertyTable(m_window);
    if (item == nullptr && probe.curKey() == 0) {
        expect(table->rowCount() == 0,
               [&] { return QStringLiteral("%1 rows for nothing").arg(table->rowCount()); });
        return;
    }
    const bool isPole = item == nullptr || item->type() == ItemPole::Type;
    if (!isPole) {
        expect(table->rowCount() == (item->type() == ItemLine::Type ? 4 : 2),
               [&] { return QStringLiteral("rows"); });
        return;
    }
    const int key = item == nullptr ? probe.curKey() : item->data(1).toInt();
    const auto field = probe.bd().items.value(key);
    const bool isPositions = table->rowCount() == 12;
    expect(isPositions || table->rowCount() == 8,
           [&] { return QStringLiteral("%1 rows").arg(table->rowCount()); });
    const auto shows = [&](int row, const QString& text) {
        expect(table->item(row, 1) != nullptr && table->item(row, 1)->text() == text, [&] {
            return QString(QStringLiteral("field %1, row %2 is not %3")
                               .arg(QString::number(key), QString::number(row), text));
        });
    };
    const auto yesNo = [](int value) { return value != 0 ? QStringLiteral("Да") : QStringLiteral("Нет"); };
    if (isPositions) {
        shows(0, probe.blockTitles().value(field.Block));
        shows(1, QString::number(field.Line));
        if (table->item(2, 1)->text() == QString::number(field.X))
            m_isShownXOld = false;
        expect(!m_isShownXOld || item == nullptr,
               [&] { return QStringLiteral("field %1: old position").arg(key); });
        if (!m_isShownXOld)
            shows(2, QString::number(field.X));
        shows(3, QString::number(field.Size));
        shows(6, yesNo(field.PressRight));
        shows(11, yesNo(field.PoleFlags & 1));
    } else {
        shows(0, QString::number(field.Font));
        shows(1, yesNo(field.X2X));
        shows(3, QString::number(field.LineGap));
        shows(4, QString::number(field.Brightness));
        shows(7, yesNo(field.PoleFlags >> 1));
    }
}
