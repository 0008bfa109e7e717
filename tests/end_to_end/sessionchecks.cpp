#include "sessionchecks.h"

#include "app/mainwindow.h"
#include "support/usersteps.h"
#include "support/windowprobe.h"
#include "view/itempole.h"

#include <QCheckBox>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
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
    , m_graphics(named<QGraphicsView>(window, "graphicsView_1"))
    , m_scale(named<QLineEdit>(window, "lePolesMasshtab"))
    , m_table(named<QTableWidget>(window, "settingsWidget"))
    , m_desc(named<QLineEdit>(window, "lePoleDesc"))
    , m_positions(named<QPushButton>(window, "btnSetSetModePoz"))
    , m_view(named<QPushButton>(window, "btnSetSetModeView"))
    , m_delete(named<QPushButton>(window, "btnPoleDel"))
    , m_box(named<QGroupBox>(window, "grBoxFilter"))
    , m_list(named<QListWidget>(window, "listWidget"))
    , m_filterText(named<QLineEdit>(window, "lePolesFilterStr"))
    , m_filter(named<QCheckBox>(window, "chbFilter"))
    , m_case(named<QPushButton>(window, "btnFiltrRegistr"))
    , m_all(named<QPushButton>(window, "btnFiltrShowAll"))
{
}

QStringList SessionChecks::violations()
{
    m_found.clear();
    checkFields();
    checkBlocks();
    checkGeometry();
    checkItems();
    checkPoles();
    checkFrame();
    checkLineButtons();
    checkAllowedLines();
    checkScale();
    checkSelection();
    checkButtons();
    checkTable();
    checkFieldList();
    return m_found;
}

int SessionChecks::pickedKey() const
{
    const WindowProbe probe(m_window);
    const QGraphicsItem* const item = probe.curItem();
    if (item == nullptr)
        return probe.curKey();
    return item->type() == ItemPole::Type ? item->data(1).toInt() : 0;
}

void SessionChecks::checkFields()
{
    const auto& bd = WindowProbe(m_window).bd();
    QStringList messages;
    expect(bd.CheckBDCorrect(kBlocks, messages, false) == 0,
           [&] { return QString(u"fields: " + messages.join(u' ')); });
    int key = 0;
    for (auto it = bd.items.cbegin(); it != bd.items.cend(); ++it) {
        ++key;
        expect(it.key() == key, [&] { return QStringLiteral("key %1 is not %2").arg(it.key()).arg(key); });
        const auto colon = it->Desc.indexOf(u':');
        const QString view =
            colon < 0 ? it->Desc : it->Desc.left(1) + u'.' + QStringView(it->Desc).mid(colon);
        expect(it->DescView == view, [&] { return QStringLiteral("short text of field %1").arg(key); });
    }
}

void SessionChecks::checkBlocks()
{
    const auto& bd = WindowProbe(m_window).bd();
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
