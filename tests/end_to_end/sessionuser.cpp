#include "sessionuser.h"

#include "app/mainwindow.h"
#include "support/tablesteps.h"
#include "support/windowprobe.h"
#include "view/itempole.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QGraphicsItem>
#include <QGraphicsProxyWidget>
#include <QGraphicsView>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

namespace {

constexpr int kValueColumn = 1;
constexpr int kPositionRow = 2;

/// Lets the window go on until `holds()`; false if it never does. Unlike the waiting of the test library this
/// never sleeps, which would be most of a long session.
template <typename Holds>
bool waitUntil(Holds holds)
{
    constexpr int kPatienceMs = 10000;
    QElapsedTimer clock;
    clock.start();
    while (!holds()) {
        if (clock.elapsed() > kPatienceMs)
            return false;
        QCoreApplication::processEvents();
        // Editors that have closed are deleted here.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

/// All properties of all fields, for a comparison.
QStringList fieldTexts(const BD_T20Items& bd)
{
    QStringList rows;
    bd.SaveToListWMask(rows);
    return rows;
}

} // namespace

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

void SessionUser::open()
{
    const QString name = chance(50) ? QStringLiteral("80") : QStringLiteral("57");
    openTemplate(m_window, m_robot, QStringLiteral(SAMPLES_DIR "/grocery-%1mm.csv").arg(name));
    settle();
}

void SessionUser::settle()
{
    const WindowProbe probe(m_window);
    if (!waitUntil([&] { return probe.isSettled(); }))
        m_wrong.append(QStringLiteral("the selection loop never comes to rest"));
}

QStringList SessionUser::act()
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
    m_wrong.clear();
    const bool isPositionOpen =
        m_table->indexWidget(m_table->model()->index(kPositionRow, kValueColumn)) != nullptr;
    if (upTo(399) == 0) {
        m_last = QStringLiteral("save and reopen");
        saveAndReopen();
    } else {
        int at = upTo(99);
        const Action* action = actions;
        while (at >= action->weight)
            at -= (action++)->weight;
        m_last = QString::fromLatin1(action->name);
        (this->*action->run)();
    }
    // An editor left open is committed by whatever takes the focus.
    if (isPositionOpen)
        m_checks.positionWasMoved();
    // Now and then the next thing comes before the window has caught up.
    const bool isChecked = chance(90);
    if (isChecked)
        settle();
    for (const auto& box : m_robot.takeBoxes()) {
        if (box.icon != QMessageBox::Warning)
            m_wrong.append(QStringLiteral("box: ") + box.text);
        if (box.text.startsWith(QStringLiteral("Ячейка в новом блоке занята")))
            m_checks.fieldWasPushed();
    }
    if (isChecked)
        m_wrong += m_checks.violations();
    return m_wrong;
}

void SessionUser::clickView(const QPointF& scenePos)
{
    m_view->ensureVisible(QRectF(scenePos, QSizeF(1, 1)), 5, 5);
    QTest::mouseClick(m_view->viewport(), Qt::LeftButton, {}, m_view->mapFromScene(scenePos));
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

bool SessionUser::changeEditor(QWidget* editor)
{
    if (auto* const number = qobject_cast<QSpinBox*>(editor)) {
        number->selectAll();
        QTest::keyClicks(number, QString::number(chance(70) ? upTo(15) : upTo(300)));
        return true;
    }
    if (auto* const list = qobject_cast<QComboBox*>(editor)) {
        QTest::keyClick(list, Qt::Key_Home);
        for (int i = upTo(std::min(list->count(), 10) - 1); i > 0; --i)
            QTest::keyClick(list, Qt::Key_Down);
        return true;
    }
    return false;
}

void SessionUser::editCell()
{
    if (m_table->rowCount() == 0)
        return;
    const int row = chance(60) ? upTo(3) : upTo(m_table->rowCount() - 1);
    if (row >= m_table->rowCount())
        return;
    const QPointer<QWidget> editor = openEditor(m_window, row);
    if (editor == nullptr)
        return;
    if (chance(90))
        changeEditor(editor);
    if (row == kPositionRow)
        m_checks.positionWasMoved();
    QTest::keyClick(editor, chance(90) ? Qt::Key_Return : Qt::Key_Escape);
    if (!waitUntil([&] { return editor == nullptr || !editor->isVisible(); }))
        m_wrong.append(QStringLiteral("the editor of row %1 stays open: %2 %3")
                           .arg(QString::number(row), QString::fromLatin1(editor->metaObject()->className()),
                                editor->property("text").toString()));
}

void SessionUser::leaveEditorOpen()
{
    if (m_table->rowCount() == 0)
        return;
    const int row = upTo(m_table->rowCount() - 1);
    QWidget* const editor = openEditor(m_window, row);
    if (editor != nullptr && chance(50))
        changeEditor(editor);
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
    static const QString words[] = {QStringLiteral("налог"), QStringLiteral("Тег"), QStringLiteral("%1"),
                                    QStringLiteral("а")};
    for (const QChar letter : words[upTo(3)])
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
    clickButton(m_window, "btnPoleDel");
}

void SessionUser::changeTape()
{
    auto* const combo = named<QComboBox>(m_window, chance(50) ? "comboLentaSize" : "comboKassa");
    QTest::keyClick(combo, chance(50) ? Qt::Key_Down : Qt::Key_Up);
}

void SessionUser::changeView()
{
    static const char* const buttons[] = {"btnScaleX05", "btnScaleX20", "btnBlTitlesOnOff", "btnFontMonoWide",
                                          "btnRedraw"};
    clickButton(m_window, buttons[upTo(4)]);
}

void SessionUser::dragField()
{
    for (QGraphicsItem* const item : WindowProbe(m_window).scene().items(Qt::AscendingOrder)) {
        if (item->type() != ItemPole::Type || !chance(5))
            continue;
        const QPoint from = m_view->mapFromScene(item->sceneBoundingRect().center());
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

void SessionUser::saveAndReopen()
{
    auto& bd = WindowProbe(m_window).bd();
    const QString path = m_dir.path(QStringLiteral("session.csv"));
    saveTemplateAs(m_window, m_robot, path);
    const QStringList saved = fieldTexts(bd);
    if (bytesOf(path) != (saved.join(u'\n') + u'\n').toUtf8())
        m_wrong.append(QStringLiteral("the file does not hold the fields"));
    openTemplate(m_window, m_robot, path);
    if (fieldTexts(bd) != saved)
        m_wrong.append(QStringLiteral("the file read back gives other fields"));
    if (chance(30))
        open();
}
