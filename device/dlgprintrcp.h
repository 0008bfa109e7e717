#pragma once

#include <QDialog>

class Ui_dlgPrintRcp;

/// Asks with which template the test receipt is printed and which steps are taken around it.
class dlgPrintRcp : public QDialog
{
    Q_OBJECT

public:
    dlgPrintRcp();
    ~dlgPrintRcp() override;
    Q_DISABLE_COPY_MOVE(dlgPrintRcp)

    /// Shows what will happen; without `notFiscal` there is a warning in place of the button.
    void initDialog(bool shiftClosed, bool templateLoaded, bool notFiscal);

    /// Number of the template in the device, 1 or 2; 0 if none was chosen.
    int getSubTblNum() const;
    bool isUpLoadShablonEnabled() const;
    bool isSessionCloseChecked() const;
    bool isPortCloseChecked() const;
    /// Always false: no widget stands behind it.
    bool isLoadFreeStrChecked() const;

private slots:
    void on_spinShablonNum_valueChanged(int value);

private:
    Ui_dlgPrintRcp* ui;
};
