#include "device/dlgprintrcp.h"
#include "ui_dlgprintrcp.h"

dlgPrintRcp::dlgPrintRcp()
    : ui(new Ui_dlgPrintRcp)
{
    ui->setupUi(this);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
}

dlgPrintRcp::~dlgPrintRcp()
{
    delete ui;
}

void dlgPrintRcp::initDialog(bool shiftClosed, bool templateLoaded, bool notFiscal)
{
    ui->chb01OpenSession->setChecked(shiftClosed);
    ui->chb02UpLoadShablon->setEnabled(templateLoaded);
    ui->chb02UpLoadShablon->setChecked(templateLoaded);
    ui->label_2->setVisible(!notFiscal);
    ui->buttonBox->setVisible(notFiscal);
}

int dlgPrintRcp::getSubTblNum() const
{
    return ui->spinShablonNum->value();
}

bool dlgPrintRcp::isUpLoadShablonEnabled() const
{
    return ui->chb02UpLoadShablon->isChecked();
}

bool dlgPrintRcp::isSessionCloseChecked() const
{
    return ui->chb03CloseSession->isChecked();
}

bool dlgPrintRcp::isPortCloseChecked() const
{
    return ui->chb04portRelease->isChecked();
}

bool dlgPrintRcp::isLoadFreeStrChecked() const
{
    return false;
}

void dlgPrintRcp::on_spinShablonNum_valueChanged(int value)
{
    ui->buttonBox->setEnabled(value == 1 || value == 2);
}
