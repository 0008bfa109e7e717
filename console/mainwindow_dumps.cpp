#include "app/mainwindow.h"

namespace {

/// At least three digits.
QString zeroFilled(int number)
{
    const char* const fill = number < 10 ? "00" : number < 100 ? "0" : "";
    return QLatin1String(fill) + QString::number(number);
}

} // namespace

void MainWindow::dumpFields()
{
    const int count = static_cast<int>(bd.items.size());
    LogAddDbg(tr("BDPoleys info. Kol=%1").arg(count));
    LogAddDbg(tr("[i]= NEED Bl Y X DX Desc"));
    for (int key = 1; key <= count; ++key) {
        const BD_T20Items::T20Item& item = bd.getPoleByKey(key);
        LogAddDbg(tr("[%1/%8]= %2 %3 %4 %5 %6 %7")
                      .arg(zeroFilled(key), QString::number(item.FA_NEED ? 1 : 0),
                           QString::number(item.Block), QString::number(item.Line), QString::number(item.X),
                           QString::number(item.Size), item.Desc, zeroFilled(item.Type)));
    }
}

void MainWindow::dumpBlocks()
{
    LogAddDbg(tr("BDBlocks info. Kol=%1").arg(bd.blocks.size()));
    LogAddDbg(tr("Бл[i]= Lines"));
    LogAddDbg(tr("  Ln[i]= Poley idx key "));
    for (qsizetype block = 0; block < bd.blocks.size(); ++block) {
        const auto& lines = bd.blocks.at(block).lines;
        LogAddDbg(tr("Бл[%1]= %2").arg(block).arg(lines.size()));
        for (qsizetype line = 0; line < lines.size(); ++line) {
            const BD_T20Items::T_Line& fields = lines.at(line);
            if (fields.poles.isEmpty())
                LogAddDbg(tr("  Ln[%1]= %2 - -").arg(line).arg(0));
            else
                LogAddDbg(tr("  Ln[%1]= %2 %3 %4")
                              .arg(line)
                              .arg(fields.poles.size())
                              .arg(fields.firstIdx)
                              .arg(fields.poles.value(fields.firstIdx)));
        }
    }
}

void MainWindow::dumpLayout()
{
    LogAddDbg(tr("Maket Blocks Kol=[lines/empty] BaseY=[offset]"));
    LogAddDbg(tr("  Line[i]= DY BaseY ChDX"));
    for (int block = 0; block < maket.blocks.size(); ++block) {
        const GUIMaket::T_MBlock& geometry = maket.blocks.at(block);
        LogAddDbg(tr("Maket Blocks Kol=%1/%2 BaseY=%3")
                      .arg(maket.getBlockKolLines(block))
                      .arg(geometry.kolLines)
                      .arg(geometry.baseY));
        for (int line = 0; line < maket.getBlockKolLines(block); ++line)
            LogAddDbg(tr("  Line[%1]= %2 %3 %4")
                          .arg(line)
                          .arg(maket.getLineHeight(block, line))
                          .arg(maket.getLineBaseY(block, line))
                          .arg(maket.getLineCharDX(block, line)));
    }
}

void MainWindow::dumpMasks()
{
    const int count = static_cast<int>(bd.items.size());
    LogAddDbg(tr("BDPoleys MASK info. Kol=%1").arg(count));
    for (int key = 1; key <= count; ++key) {
        const BD_T20Items::T20Item& item = bd.getPoleByKey(key);
        QString row;
        for (int block = 0; block < maket.blockCount; ++block)
            row += tr("[%1]").arg((item.BL_MASK >> block & 1U) != 0 ? QLatin1Char('8') : QLatin1Char('_'));
        LogAddDbg(row + item.DescView);
    }
}
