#include "view/guimaket.h"

#include "model/bd_t20items.h"

#include <QObject>

#include <algorithm>
#include <numeric>

int GUIMaket::T_MBlock::getAllBlockDY() const
{
    return std::accumulate(lineDY.cbegin(), lineDY.cend(), 0);
}

int GUIMaket::T_MBlock::getLineBaseY(int line) const
{
    if (line >= lineDY.size())
        return -1;
    return std::accumulate(lineDY.cbegin(), lineDY.cbegin() + std::max(line, 0), baseY);
}

void GUIMaket::T_MBlock::CreateBDLines(int count)
{
    lineDY = QList<int>(std::max(count, 0), 0);
    lineDX = lineDY;
}

GUIMaket::GUIMaket()
    : titles{{0, QObject::tr("Шапка чека")},
             {1, QObject::tr("Регистрация")},
             {2, QObject::tr("Предытоговый")},
             {3, QObject::tr("Итог")},
             {4, QObject::tr("Налоги")},
             {5, QObject::tr("Оплата")},
             {6, QObject::tr("Подвал чека")},
             {7, QObject::tr("Фискальный блок")},
             {8, QObject::tr("Строка \"ЧЕК АННУЛИРОВАН\"")},
             {9, QObject::tr("Сторно оплаты")}}
    , yesNoNames{{0, QObject::tr("Нет")}, {1, QObject::tr("Да")}}
    , alignTitles{{1, QObject::tr("Слева")}, {2, QObject::tr("По центру")}, {3, QObject::tr("Справа")}}
    , formatTitles{{0, QObject::tr("Не маскировать нули")},
                   {1, QObject::tr("Печать в формате 0.0")},
                   {2, QObject::tr("Образать незначащие нули")},
                   {3, QObject::tr("Печатать как штуки")}}
{
}

int GUIMaket::FontSizeDX(int font)
{
    switch (font) {
    case 6:
        return 10;
    case 7:
        return 9;
    default:
        return 12;
    }
}

int GUIMaket::FontSizeDY(int font)
{
    switch (font) {
    case 1:
        return 24;
    case 3:
        return 16;
    case 4:
    case 5:
        return 10;
    case 6:
    case 7:
        return 14;
    default:
        return 20;
    }
}

void GUIMaket::Clear()
{
    blocks.clear();
}

void GUIMaket::CreateBDBlocks(int count)
{
    blocks = QList<T_MBlock>(std::max(count, 0));
}

const GUIMaket::T_MBlock* GUIMaket::blockAt(int block) const
{
    return block < 0 || block >= blocks.size() ? nullptr : &blocks.at(block);
}

int GUIMaket::getBlockKolLines(int block) const
{
    const T_MBlock* const found = blockAt(block);
    return found == nullptr ? 0 : std::max(static_cast<int>(found->lineDY.size()), found->kolLines);
}

int GUIMaket::getLineBaseY(int block, int line) const
{
    const T_MBlock* const found = blockAt(block);
    return found == nullptr ? -1 : found->getLineBaseY(line);
}

int GUIMaket::getLineCharDX(int block, int line) const
{
    const T_MBlock* const found = blockAt(block);
    return found == nullptr ? 0 : found->lineDX.value(line, 0);
}

int GUIMaket::getLineHeight(int block, int line) const
{
    const T_MBlock* const found = blockAt(block);
    return found == nullptr ? 0 : found->lineDY.value(line, 0);
}

void GUIMaket::AddLineInBlock(int block, int /*line*/)
{
    if (blockAt(block) == nullptr)
        return;
    T_MBlock& grown = blocks[block];
    grown.lineDY.append(0);
    grown.lineDX.append(0);
    ++grown.kolLines;
}

void GUIMaket::DelLineInBlock(int block, int line)
{
    if (blockAt(block) == nullptr || line <= 0 || line >= blocks.at(block).kolLines)
        return;
    T_MBlock& shrunk = blocks[block];
    --shrunk.kolLines;
    if (line < shrunk.lineDY.size())
        shrunk.lineDY.removeAt(line);
    if (line < shrunk.lineDX.size())
        shrunk.lineDX.removeAt(line);
}

int GUIMaket::ReComputeBDBlocks(bool rebuild)
{
    if (pBD == nullptr || (!rebuild && blocks.size() < blockCount))
        return 1;
    const auto maxRows = pBD->ComputeMaxRowInAllBlocks(blockCount);
    if (maxRows.isEmpty())
        return 1;
    if (rebuild)
        CreateBDBlocks(blockCount);

    for (int b = 0; b < blockCount; ++b) {
        T_MBlock& block = blocks[b];
        block.kolLines = rebuild ? maxRows.at(b) + 1 : getBlockKolLines(b);
        block.CreateBDLines(block.kolLines);
        if (block.kolLines > 0) {
            block.lineDX[0] = headerDX;
            block.lineDY[0] = blockTitleEnabled ? headerDY : 0;
        }
    }

    for (int b = 0; b < blockCount; ++b) {
        T_MBlock& block = blocks[b];
        for (int l = 1; l < getBlockKolLines(b); ++l) {
            if (!pBD->isLineHavePoles(b, l)) {
                block.lineDY[l] = emptyLineDY;
                continue;
            }
            const auto first = pBD->getLineFirstPole(b, l);
            block.lineDY[l] = FontSizeDY(first.Font) * (first.X2Y != 0 ? 2 : 1);
            block.lineDX[l] = FontSizeDX(first.Font) * (first.X2X != 0 ? 2 : 1);
        }
    }

    blocks[0].baseY = 0;
    for (int b = 1; b < blockCount; ++b)
        blocks[b].baseY = blocks.at(b - 1).baseY + blocks.at(b - 1).getAllBlockDY();
    return 0;
}
