#include "workflows/dlgdnload.h"
#include "ui_dlgdnload.h"

#include <QMessageBox>

namespace {

constexpr int kChosen = 1;

} // namespace

dlgDnLoad::dlgDnLoad()
    : ui(new Ui_dlgDnLoad)
{
    ui->setupUi(this);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
}

dlgDnLoad::~dlgDnLoad()
{
    delete ui;
}

bool dlgDnLoad::isLoadTblChecked() const
{
    return ui->chbFLoadShablon->isChecked();
}

bool dlgDnLoad::isLoadFreeStrChecked() const
{
    return ui->chbFLoadFreeStrs->isChecked();
}

int dlgDnLoad::getSubTblNum() const
{
    return ui->spinBox->value();
}

void dlgDnLoad::setWhatLoadEnable(bool table, bool freeLines)
{
    ui->chbFLoadShablon->setChecked(table);
    ui->chbFLoadShablon->setEnabled(table);
    ui->spinBox->setEnabled(table);
    ui->label_2->setEnabled(table);
    ui->chbFLoadFreeStrs->setEnabled(freeLines);
}

void dlgDnLoad::setValue(int value)
{
    ui->progressBar->setValue(value);
}

void dlgDnLoad::close()
{
    done(kChosen);
}

void dlgDnLoad::stop()
{
    timer.stop();
}

void dlgDnLoad::on_btnLoad_clicked()
{
    if (isLoadTblChecked() && getSubTblNum() == 0)
        warn(tr("Задайте номер шаблона в устройстве, в который будет записан макет шаблона!"));
    else if (!isLoadTblChecked() && !isLoadFreeStrChecked())
        warn(tr("Ничего не выбрано для загрузки!"));
    else
        done(kChosen);
}

void dlgDnLoad::on_chbFLoadShablon_clicked()
{
    ui->spinBox->setEnabled(isLoadTblChecked());
    ui->label_2->setEnabled(isLoadTblChecked());
}

void dlgDnLoad::warn(const QString& text)
{
    QMessageBox box;
    box.setIcon(QMessageBox::Warning);
    box.setText(text);
    box.exec();
}
