#include "app/mainwindow.h"
#include "ui_mainwindow.h"

void MainWindow::showScaleMsshtb()
{
    int percent = 100;
    switch (maket.getScale()) {
    case 0:
        percent = 44;
        break;
    case 1:
        percent = 67;
        break;
    case 3:
        percent = 150;
        break;
    case 4:
        percent = 225;
        break;
    default:
        break;
    }
    ui->lePolesMasshtab->setText(tr("%1%").arg(percent));
}

void MainWindow::on_btnScaleX20_clicked()
{
    if (maket.getScale() > 3)
        return;
    ui->graphicsView_1->scale(1.5, 1.5);
    maket.setScale(maket.getScale() + 1);
    showScaleMsshtb();
}

void MainWindow::on_btnScaleX05_clicked()
{
    if (maket.getScale() <= 0)
        return;
    ui->graphicsView_1->scale(0.6666666666666666, 0.6666666666666666);
    maket.setScale(maket.getScale() - 1);
    showScaleMsshtb();
}

void MainWindow::on_btnRedraw_clicked()
{
    RedrawOnly();
}

void MainWindow::on_btnBlTitlesOnOff_clicked()
{
    maket.setBlockTitleEnabled(!maket.getBlockTitleEnabled());
    RedrawOnly();
}

void MainWindow::on_btnFontMonoWide_clicked()
{
    maket.fontMonoWide = !maket.fontMonoWide;
    RedrawOnly();
}

void MainWindow::on_comboLentaSize_currentIndexChanged(QString arg1)
{
    const QString key = arg1.left(2);
    tapeWidth = 576;
    if (key == u"44")
        tapeWidth = 384;
    else if (key == u"57")
        tapeWidth = 432;
    else if (key != u"80")
        msgBoxWarnOK(tr("Неизвестная ширина ленты!"));
    if (ui->comboLentaSize->isEnabled())
        RedrawOnly();
}
