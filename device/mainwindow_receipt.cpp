#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "device/clkrd9io.h"
#include "device/dlgprintrcp.h"
#include "device/guarded.h"

namespace {

QString doneOrError(int result)
{
    return result == clKRD9IO::kDone ? QStringLiteral("OK") : QStringLiteral("ERROR");
}

} // namespace

void MainWindow::on_actionPrintTestChek_triggered()
{
    LogAddDbg(QStringLiteral("=================================="));
    if (!CheckOrSetConnection(false))
        return;
    dlgPrintRcp dialog;
    dialog.initDialog(KRD9IO.sessionState == 0, maket.getShablonLoaded(), KRD9IO.fiscalState == 0);
    if (dialog.exec() == QDialog::Rejected)
        return;
    LogAddDbg(tr("Печать тестового чека"));
    const int n = dialog.getSubTblNum();

    QString report;
    if (dialog.isUpLoadShablonEnabled()) {
        LogAddDbg(tr("Загрузка шаблона в кассу отмечена - грузим (шаблон №%1)...").arg(n));
        Json::Value rows(Json::arrayValue);
        bd.SaveAsJsonV01(rows, n);
        report = templateReport(KRD9IO.writeTableTLV(rows));
    }
    if (dialog.isLoadFreeStrChecked())
        addReport(report, savedFreeLinesReport(KRD9IO.writeTable21(freeStrings)));
    ui->teLog->append(report);
    ui->teLog->append(QStringLiteral("\n"));

    QStringList steps;
    const int printed = KRD9IO.printReceipt(n, false, steps);
    for (const auto& step : steps)
        LogAddDbg(step);
    LogAddDbg(tr("Команда на печать вернула значение: %1").arg(printed));
    ui->teLog->append(QStringLiteral("\n"));

    if (dialog.isSessionCloseChecked()) {
        LogAddDbg(tr("Закрытие смены отмечено - пробуем закрыть..."));
        const int closed = guarded(clKRD9IO::kDriverError, [] { return KRD9IO.closeSession(); });
        LogAddDbg(tr("Закрытие смены: %1").arg(doneOrError(closed)));
    }
    if (dialog.isPortCloseChecked()) {
        LogAddDbg(tr("Закрытие порта отмечено - пробуем закрыть..."));
        LogAddDbg(tr("Закрытие порта: %1").arg(doneOrError(KRD9IO.releasePort())));
    }
    LogAddDbg(tr("Печать тестового чека завершена"));
}
