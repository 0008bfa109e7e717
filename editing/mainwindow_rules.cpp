#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "editing/celldelegate.h"
#include "editing/propertyrows.h"
#include "view/itempole.h"

namespace {

// Positions that the search for a free cell tries: up to this one, without it.
constexpr int kSearchEnd = 100;
constexpr int kLastPosition = 255;

/// The key of `texts` from 1 on whose text is `text`; 0 if there is none.
int keyOfText(const QMap<int, QString>& texts, const QString& text)
{
    const int key = texts.key(text, 0);
    return key > 0 ? key : 0;
}

} // namespace

/// One change of a value cell.
struct MainWindow::CellChange
{
    int key;      ///< of the field
    int row;      ///< of the table
    QString text; ///< of the cell
    int value;    ///< number of the cell
    int form;     ///< the filling of the table that the cell belongs to
    bool isShown; ///< the text is the one that the record's value shows, so nothing has changed
};

void MainWindow::on_settingsWidget_currentCellChanged(int /*currentRow*/, int /*currentColumn*/,
                                                      int /*previousRow*/, int /*previousColumn*/)
{
}

void MainWindow::on_settingsWidget_cellChanged(int row, int column)
{
    if (column == 0)
        return;
    int key = curKey;
    if (curKey != 0) {
        curType = ItemPole::Type;
    } else if (curItem == nullptr) {
        curType = 0;
        return;
    } else {
        curType = curItem->type();
        key = curItem->data(1).toInt();
        if (curType != ItemPole::Type)
            return;
    }

    const QTableWidgetItem* const cell = ui->settingsWidget->item(row, column);
    if (cell == nullptr)
        return;
    const QString text = cell->data(Qt::DisplayRole).toString();
    const int number = text.toInt();
    const auto value = static_cast<unsigned int>(cell->data(CellDelegate::kValueRole).toInt());
    if (static_cast<unsigned int>(number) != value)
        LogAddDbg(tr("int!=in2: %3 %1 %2").arg(QString::number(number), QString::number(value), text));

    if (setMode != 1 && setMode != 2)
        qFatal("no mode %d of the property table", setMode);
    const auto rows = setMode == 1 ? positionRows() : viewRows();
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size())
        return;
    const PropertyRow& property = rows[static_cast<std::size_t>(row)];
    const CellChange change{key,       row,
                            text,      static_cast<int>(value),
                            tableForm, text == shownText(property, property.valueOf(bd.getPoleByKey(key)))};
    bool isPlacing = false;
    const int stored = setMode == 1 ? changePosition(change, isPlacing) : changeView(change);
    LogAddDbg(tr("cellChngd : %1,%2 m1=%3 m2=%4 d=%5 di=%6")
                  .arg(QString::number(column), QString::number(row), QString::number(curType),
                       QString::number(setMode), text, QString::number(stored)));
    if (isPlacing)
        updateFilterOut();
}

int MainWindow::numberOfText(const PropertyRow& property, const CellChange& change)
{
    const auto& texts = gl.*property.texts;
    if (property.texts != &glData::alignNames)
        return keyOfText(texts, change.text);
    if (change.text == texts.value(1))
        return 1;
    return change.text == texts.value(3) ? 3 : 2;
}

void MainWindow::storeValue(const PropertyRow& property, const CellChange& change, int value, bool isRedraw)
{
    auto& item = bd.getPoleByKey(change.key);
    if (change.isShown || property.valueOf(item) == value)
        return;
    property.store(item, value);
    if (isRedraw)
        redrawPending = true;
}

int MainWindow::changeView(const CellChange& change)
{
    enum Row { Font, DoubleWidth, DoubleHeight, LineGap, Brightness, FractFormat, TailChar, LeadChar };
    const PropertyRow& property = viewRows()[static_cast<std::size_t>(change.row)];
    int number = change.value;
    if (change.row == DoubleWidth || change.row == DoubleHeight || change.row == FractFormat ||
        change.row == LeadChar)
        number = numberOfText(property, change);
    const bool isSilent = change.row == Brightness || change.row == FractFormat || change.row == LeadChar;
    storeValue(property, change, number, !isSilent);
    return number;
}

int MainWindow::changePosition(const CellChange& change, bool& isPlacing)
{
    enum Row { Block, Line, Position, Size, OnTape, InPole, PressRight, Expand, Cut, Mask };
    const PropertyRow& property = positionRows()[static_cast<std::size_t>(change.row)];
    switch (change.row) {
    case Block:
        return changeBlock(change);
    case Line:
        changeLine(change);
        break;
    case Position:
        changeX(change);
        break;
    case Size:
        isPlacing = changeSize(change);
        break;
    case OnTape:
    case InPole: {
        const int align = numberOfText(property, change);
        storeValue(property, change, align, false);
        return align;
    }
    case Mask: {
        LogAddDbg(tr("dataNewInt= %1 %2")
                      .arg(QString::number(static_cast<unsigned int>(change.value)), change.text));
        const int mask = numberOfText(property, change);
        LogAddDbg(tr("dataNewInt= %1").arg(mask));
        storeValue(property, change, mask, false);
        return mask;
    }
    default:
        storeValue(property, change, change.value, false);
        break;
    }
    return change.value;
}

void MainWindow::refuse(const CellChange& change, const QString& message)
{
    msgBoxWarnOK(message);
    // The table may have been filled anew while the box was open.
    if (change.form != tableForm)
        return;
    const PropertyRow& property = positionRows()[static_cast<std::size_t>(change.row)];
    putTableValue(change.row, property, property.valueOf(bd.getPoleByKey(change.key)));
}

int MainWindow::changeBlock(const CellChange& change)
{
    auto& item = bd.getPoleByKey(change.key);
    const int oldBlock = item.Block;
    const int newBlock = gl.GetBlTitlesNumForName(change.text);
    LogAddDbg(tr("dbg: %1 %2 %3")
                  .arg(QString::number(oldBlock), change.text,
                       QString::number(static_cast<unsigned int>(change.value))));
    if (change.isShown || newBlock == oldBlock)
        return newBlock;
    LogAddDbg(tr("dbg: %1 %2 %3").arg(QString::number(oldBlock), change.text, QString::number(newBlock)));

    if (newBlock < 0 || ((item.BL_MASK >> newBlock) & 1U) == 0) {
        refuse(change, tr("Поле не может находиться в данном блоке!"));
        return newBlock;
    }
    if (item.Line >= maket.getBlockKolLines(newBlock)) {
        refuse(change, tr("Нет такой строки в новом блоке!"));
        return newBlock;
    }
    if (!bd.isCellBLXTaken(newBlock, item.Line, item.X)) {
        item.Block = newBlock;
        redrawPending = true;
        return newBlock;
    }
    int x = item.X + 1;
    while (x < kSearchEnd && bd.isCellBLXTaken(newBlock, item.Line, x))
        ++x;
    if (x == kSearchEnd || x > kLastPosition) {
        refuse(change, tr("Ячейка уже занята!"));
        return newBlock;
    }
    item.Block = newBlock;
    item.X = x;
    msgBoxWarnOK(tr("Ячейка в новом блоке занята - поле помещено в ячейку %1!").arg(x));
    redrawPending = true;
    return newBlock;
}

void MainWindow::changeLine(const CellChange& change)
{
    auto& item = bd.getPoleByKey(change.key);
    if (change.isShown || change.value == item.Line)
        return;
    if (change.value >= maket.getBlockKolLines(item.Block)) {
        refuse(change, tr("Нет такой строки!"));
        return;
    }
    if (bd.isCellBLXTaken(item.Block, change.value, item.X)) {
        refuse(change, tr("Ячейка уже занята!"));
        return;
    }
    item.Line = change.value;
    redrawPending = true;
}

void MainWindow::changeX(const CellChange& change)
{
    auto& item = bd.getPoleByKey(change.key);
    if (change.isShown || change.value == item.X)
        return;
    if (bd.isCellBLXTaken(item.Block, item.Line, change.value)) {
        refuse(change, tr("Ячейка уже занята!"));
        return;
    }
    item.X = change.value;
    if (curItem != nullptr && curKey == 0)
        curItem->setPos(maket.getLineCharDX(item.Block, item.Line) * item.X + 1,
                        maket.getLineBaseY(item.Block, item.Line) + 1);
    else
        redrawPending = true;
}

bool MainWindow::changeSize(const CellChange& change)
{
    auto& item = bd.getPoleByKey(change.key);
    if (change.isShown || change.value == item.Size)
        return false;
    if (item.Line >= maket.getBlockKolLines(item.Block)) {
        refuse(change, tr("Нет такой строки!"));
        return false;
    }
    if (item.Size == 0 && bd.isCellBLXTaken(item.Block, item.Line, item.X)) {
        refuse(change, tr("Ячейка уже занята!"));
        return false;
    }
    item.Size = change.value;
    redrawPending = true;
    return true;
}
