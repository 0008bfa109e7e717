#include "sessionuser.h"

#include "app/mainwindow.h"
#include "sessionwait.h"
#include "support/tablesteps.h"
#include "support/windowprobe.h"
#include "view/itemline.h"
#include "view/itempole.h"

#include <QComboBox>
#include <QGraphicsItem>
#include <QGraphicsProxyWidget>
#include <QGraphicsView>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

SessionUser::SessionUser(MainWindow& window, DialogRobot& robot, const ProgramDir& dir, quint32 seed)
    : m_window(window)
    , m_robot(robot)
    , m_dir(dir)
    , m_view(named<QGraphicsView>(window, "graphicsView_1"))
    , m_table(named<QTableWidget>(window, "settingsWidget"))
    , m_checks(window)
    , m_random(seed)
{
}

int SessionUser::upTo(int last)
{
    return static_cast<int>(m_random() % static_cast<unsigned int>(last + 1));
}

void SessionUser::settle()
{
    const WindowProbe probe(m_window);
    if (!waitUntil([&] { return probe.isSettled(); }))
        m_wrong.append(QStringLiteral("the selection loop never comes to rest"));
}

void SessionUser::runNext()
{
    struct Action
    {
        int weight;
        const char* name;
        void (SessionUser::*run)();
    };
    static const Action actions[] = {
        {24, "pick on the tape", &SessionUser::pickOnTape},
        {2, "click on nothing", &SessionUser::clickNothing},
        {34, "edit a cell", &SessionUser::editCell},
        {2, "leave an editor open", &SessionUser::leaveEditorOpen},
        {6, "change the mode", &SessionUser::changeMode},
        {10, "pick in the list", &SessionUser::pickInFieldList},
        {5, "change the filter", &SessionUser::changeFilter},
        {8, "add or delete a line", &SessionUser::clickLineButton},
        {3, "delete a field", &SessionUser::deleteField},
        {2, "change tape or model", &SessionUser::changeTape},
        {3, "change the view", &SessionUser::changeView},
        {1, "drag a field", &SessionUser::dragField},
    };
    if (upTo(399) == 0) {
        m_last = QStringLiteral("save and reopen");
        saveAndReopen();
        return;
    }
    int at = upTo(99);
    const Action* action = actions;
    while (at >= action->weight)
        at -= (action++)->weight;
    m_last = QString::fromLatin1(action->name);
    (this->*action->run)();
}

QStringList SessionUser::act()
{
    const WindowProbe probe(m_window);
    m_change = {};
    m_isRedrawFree = false;
    m_isOpening = false;
    const TemplateState before = state();
    const int curKey = probe.curKey();
    const QPointer<QGraphicsProxyWidget> drawn = lineButton(probe.scene(), QStringLiteral("+"));
    m_starts = {before};
    if (isEditorOpen()) {
        m_starts.append(afterEntry(before, entryIn(m_editor)).state);
        // Whatever takes the focus commits it.
        m_checks.positionWasMoved();
        m_checks.sizeWasEdited();
    }
    m_isCertain = m_starts.size() == 1 && probe.isSettled();

    runNext();
    // Now and then the next thing comes before the window has caught up.
    const bool isChecked = chance(90);
    if (isChecked)
        settle();
    else
        tell(QStringLiteral("without waiting"));
    checkBoxes(before);
    if (const QString fault = templateFault(before); !fault.isEmpty())
        m_wrong.append(fault);
    if (isChecked) {
        m_wrong += redrawFault(before, drawn == nullptr);
        if (m_isCertain && m_change && curKey != 0 && !m_isOpening && !m_isRedrawFree &&
            probe.curKey() != curKey)
            m_wrong.append(QStringLiteral("the pick of field %1 is lost").arg(curKey));
        m_wrong += m_checks.violations();
    }
    m_wrong.removeAll(QString());
    return std::exchange(m_wrong, {});
}

void SessionUser::clickView(const QPointF& scenePos)
{
    m_view->ensureVisible(QRectF(scenePos, QSizeF(1, 1)), 5, 5);
    const QPoint at = m_view->mapFromScene(scenePos);
    const QGraphicsItem* const top = m_view->itemAt(at);
    const QGraphicsItem* const current = WindowProbe(m_window).curItem();
    if (top != nullptr && top->type() == QGraphicsProxyWidget::Type && current != nullptr) {
        const bool isAdd = top == lineButton(WindowProbe(m_window).scene(), QStringLiteral("+"));
        // At its very edge the button may be missed.
        constexpr int kEdge = 3;
        const QRectF inside = top->sceneBoundingRect().adjusted(kEdge, kEdge, -kEdge, -kEdge);
        m_isCertain = m_isCertain && inside.contains(m_view->mapToScene(at));
        const int block = current->data(1).toInt();
        const int line = current->type() == ItemLine::Type ? current->data(2).toInt() : 1;
        m_change = [=](const TemplateState& start) {
            return isAdd ? afterLineAdded(start, block, line) : afterLineDeleted(start, block, line);
        };
    }
    if (top != nullptr)
        tell(QStringLiteral("item %1 %2 %3")
                 .arg(top->type())
                 .arg(top->data(1).toInt())
                 .arg(top->data(2).toInt()));
    QTest::mouseClick(m_view->viewport(), Qt::LeftButton, {}, at);
}

void SessionUser::pickOnTape()
{
    const auto items = WindowProbe(m_window).scene().items(Qt::AscendingOrder);
    QGraphicsItem* const item = items.at(upTo(static_cast<int>(items.size()) - 1));
    const QRectF area = item->sceneBoundingRect();
    clickView({area.left() + std::min(area.width(), 600.0) * upTo(99) / 100, area.center().y()});
}

void SessionUser::clickNothing()
{
    clickView({WindowProbe(m_window).tapeWidth() + 20.0, 5.0});
}

void SessionUser::changeMode()
{
    clickButton(m_window, chance(50) ? "btnSetSetModePoz" : "btnSetSetModeView");
}

void SessionUser::pickInFieldList()
{
    auto* const list = named<QListWidget>(m_window, "listWidget");
    if (list->count() == 0)
        return;
    QListWidgetItem* const line = list->item(upTo(list->count() - 1));
    list->scrollToItem(line);
    tell(line->text().left(30));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(line).center());
}

void SessionUser::changeFilter()
{
    static const char* const buttons[] = {"btnFiltrShowAll", "btnFiltrRegistr", "chbFilter"};
    if (chance(60)) {
        auto* const button = named<QAbstractButton>(m_window, buttons[upTo(2)]);
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(10, button->height() / 2));
        return;
    }
    auto* const filter = named<QLineEdit>(m_window, "lePolesFilterStr");
    filter->selectAll();
    static const QStringList words{QStringLiteral("налог"),  QStringLiteral("Тег"), QStringLiteral("%1"),
                                   QStringLiteral("straße"), QStringLiteral("<b>"), QStringLiteral("а")};
    for (const QChar letter : words.at(upTo(static_cast<int>(words.size()) - 1)))
        QTest::sendKeyEvent(QTest::Click, filter, Qt::Key_unknown, QString(letter), Qt::NoModifier);
    if (chance(30)) {
        filter->selectAll();
        QTest::keyClick(filter, Qt::Key_Delete);
    }
}

void SessionUser::clickLineButton()
{
    QList<QGraphicsItem*> shown;
    for (QGraphicsItem* const item : WindowProbe(m_window).scene().items(Qt::AscendingOrder)) {
        if (item->type() == QGraphicsProxyWidget::Type && item->isVisible())
            shown.append(item);
    }
    if (shown.isEmpty())
        pickOnTape();
    else
        clickView(shown.at(upTo(static_cast<int>(shown.size()) - 1))->sceneBoundingRect().center());
}

void SessionUser::deleteField()
{
    const QGraphicsItem* const item = WindowProbe(m_window).curItem();
    if (item != nullptr && item->type() == ItemPole::Type) {
        const int key = item->data(1).toInt();
        m_change = [key](const TemplateState& start) { return afterFieldDeleted(start, key); };
    }
    clickButton(m_window, "btnPoleDel");
}

void SessionUser::changeTape()
{
    m_isRedrawFree = true;
    auto* const combo = named<QComboBox>(m_window, chance(50) ? "comboLentaSize" : "comboKassa");
    QTest::keyClick(combo, chance(50) ? Qt::Key_Down : Qt::Key_Up);
}

void SessionUser::changeView()
{
    static const char* const buttons[] = {"btnScaleX05", "btnScaleX20", "btnBlTitlesOnOff", "btnFontMonoWide",
                                          "btnRedraw"};
    const int button = upTo(4);
    m_isRedrawFree = button > 1;
    tell(QString::fromLatin1(buttons[button]));
    clickButton(m_window, buttons[button]);
}

void SessionUser::dragField()
{
    m_isRedrawFree = true;
    for (QGraphicsItem* const item : WindowProbe(m_window).scene().items(Qt::AscendingOrder)) {
        if (item->type() != ItemPole::Type || !chance(5))
            continue;
        const QPoint from = m_view->mapFromScene(item->sceneBoundingRect().center());
        const QGraphicsItem* const top = m_view->itemAt(from);
        if (top == nullptr || top->type() != ItemPole::Type)
            continue;
        QTest::mousePress(m_view->viewport(), Qt::LeftButton, {}, from);
        QTest::mouseMove(m_view->viewport(), from + QPoint(15, 20));
        QTest::mouseMove(m_view->viewport(), from + QPoint(30, 40));
        if (chance(30))
            clickButton(m_window, "btnRedraw");
        QTest::mouseRelease(m_view->viewport(), Qt::LeftButton, {}, from + QPoint(30, 40));
        break;
    }
    // What was dragged goes back with the next rebuild.
    clickButton(m_window, "btnRedraw");
}
