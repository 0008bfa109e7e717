#include "support/tablesteps.h"

#include "app/mainwindow.h"
#include "editing/celldelegate.h"
#include "support/usersteps.h"
#include "support/windowprobe.h"
#include "view/itemblockheader.h"
#include "view/itemline.h"
#include "view/itempole.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QGraphicsView>
#include <QListWidget>
#include <QPointer>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

namespace {

constexpr int kValueColumn = 1;

template <typename Matches>
QGraphicsItem* findItem(MainWindow& window, int type, Matches matches)
{
    for (QGraphicsItem* const item : WindowProbe(window).scene().items()) {
        if (item->type() == type && matches(item))
            return item;
    }
    return nullptr;
}

} // namespace

QGraphicsItem* poleItem(MainWindow& window, int key)
{
    return findItem(window, ItemPole::Type, [=](auto* item) { return item->data(1).toInt() == key; });
}

QGraphicsItem* lineItem(MainWindow& window, int block, int line)
{
    return findItem(window, ItemLine::Type, [=](auto* item) {
        return item->data(1).toInt() == block && item->data(2).toInt() == line;
    });
}

QGraphicsItem* headerItem(MainWindow& window, int block)
{
    return findItem(window, ItemBlockHeader::Type,
                    [=](auto* item) { return item->data(1).toInt() == block; });
}

QPoint visiblePoint(MainWindow& window, QGraphicsItem* item)
{
    auto* const view = named<QGraphicsView>(window, "graphicsView_1");
    view->ensureVisible(item);
    const QRectF area = item->sceneBoundingRect();
    constexpr int kSteps = 64;
    for (int step = 1; step < kSteps; ++step) {
        const QPointF at(area.left() + area.width() * step / kSteps, area.center().y());
        const QPoint point = view->mapFromScene(at);
        if (view->viewport()->rect().contains(point) && view->itemAt(point) == item)
            return point;
    }
    qFatal("the item lies nowhere on top");
    return {};
}

void clickItem(MainWindow& window, QGraphicsItem* item)
{
    const QPoint point = visiblePoint(window, item);
    auto* const view = named<QGraphicsView>(window, "graphicsView_1");
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, point);
}

void pickItem(MainWindow& window, QGraphicsItem* item)
{
    clickItem(window, item);
    QTRY_COMPARE(WindowProbe(window).curItem(), item);
}

void pickPole(MainWindow& window, int key)
{
    QGraphicsItem* const item = poleItem(window, key);
    if (item == nullptr)
        qFatal("field %d is not on the tape", key);
    pickItem(window, item);
}

void pickInList(MainWindow& window, const QString& text)
{
    auto* const list = named<QListWidget>(window, "listWidget");
    const auto found = list->findItems(text, Qt::MatchExactly);
    if (found.isEmpty())
        qFatal("the list has no line %s", qPrintable(text));
    list->scrollToItem(found.constFirst());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(found.constFirst()).center());
}

QTableWidget* propertyTable(MainWindow& window)
{
    return named<QTableWidget>(window, "settingsWidget");
}

QTableWidgetItem* valueCell(MainWindow& window, int row)
{
    return propertyTable(window)->item(row, kValueColumn);
}

QString cellState(MainWindow& window, int row)
{
    const QTableWidgetItem* const cell = valueCell(window, row);
    if (cell == nullptr)
        return QStringLiteral("no cell");
    return QStringLiteral("%1|%2|%3")
        .arg(cell->text(), cell->data(CellDelegate::kValueRole).toString(),
             cell->data(CellDelegate::kEditedRole).toString());
}

QWidget* openEditor(MainWindow& window, int row)
{
    QTableWidget* const table = propertyTable(window);
    const auto index = table->model()->index(row, kValueColumn);
    table->scrollTo(index);
    const QPoint at = table->visualRect(index).center();
    if (table->indexWidget(index) == nullptr)
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, at);
    if (table->indexWidget(index) == nullptr)
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, at);
    return table->indexWidget(index);
}

void pressEnter(QWidget* editor)
{
    const QPointer<QWidget> open(editor);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(open.isNull() || !open->isVisible());
}

void typeNumber(MainWindow& window, int row, const QString& text)
{
    auto* const editor = qobject_cast<QSpinBox*>(openEditor(window, row));
    if (editor == nullptr)
        qFatal("row %d opens no number editor", row);
    editor->selectAll();
    QTest::keyClicks(editor, text);
    pressEnter(editor);
}

void chooseText(MainWindow& window, int row, const QString& text)
{
    auto* const editor = qobject_cast<QComboBox*>(openEditor(window, row));
    if (editor == nullptr)
        qFatal("row %d opens no list", row);
    const int line = editor->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (line < 0)
        qFatal("row %d has no line %s", row, qPrintable(text));
    editor->showPopup();
    QAbstractItemView* const popup = editor->view();
    QTRY_VERIFY(popup->isVisible());
    const auto index = popup->model()->index(line, editor->modelColumn());
    popup->scrollTo(index);
    QTest::mouseMove(popup->viewport(), popup->visualRect(index).center());
    QTest::mouseClick(popup->viewport(), Qt::LeftButton, {}, popup->visualRect(index).center());
    if (popup->isVisible())
        QTest::keyClick(popup, Qt::Key_Return);
    QTRY_VERIFY(!popup->isVisible());
    pressEnter(editor);
}

void waitForRedraw(MainWindow& window)
{
    QTRY_VERIFY(!WindowProbe(window).redrawPending());
}

QStringList logSince(MainWindow& window, qsizetype from)
{
    return WindowProbe(window).log().mid(from);
}
