#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "device/clkrd9io.h"
#include "workflows/dlgdnload.h"

#include <QFuture>
#include <QtConcurrent>

QString MainWindow::templateReport(int result)
{
    return result == clKRD9IO::kDone ? tr("Шаблон успешно загружен.")
                                     : tr("<FONT COLOR=red>При сохранении шаблона возникла ошибка.</FONT>");
}

QString MainWindow::savedFreeLinesReport(int result)
{
    return result == clKRD9IO::kDone
               ? tr("Свободные строки сохранены.")
               : tr("<FONT COLOR=red>При сохранении свободных строк возникла ошибка.</FONT>");
}

void MainWindow::addReport(QString& report, const QString& text)
{
    if (!report.isEmpty())
        report += u'\n';
    report += text;
}

void MainWindow::on_actionDnLoad_triggered()
{
    LogAddDbg(QStringLiteral("=================================="));
    if (!CheckOrSetConnection(false))
        return;
    dlgDnLoad dialog;
    if (dialog.exec() == QDialog::Rejected)
        return;
    LogAddDbg(tr("Версия прошивки: %1").arg(KRD9IO.firmwareText));
    LogAddDbg(tr("Версия шаблонов: %1").arg(KRD9IO.templatesText));

    QString report;
    if (dialog.isLoadTblChecked()) {
        const int n = dialog.getSubTblNum();
        const int result = runTransfer(dialog, tr("Чтение данных с устройства"), [n] {
            int row = n;
            return KRD9IO.readTableTLV(row);
        });
        Json::Value rows = KRD9IO.tlvTable;
        LogAddDbg(tr("count=%1").arg(n));
        LoadFromJsonTLVSubTable(rows, n);
        CheckBDPoley_RebuildMaket();
        report = templateReport(result);
    }
    if (dialog.isLoadFreeStrChecked()) {
        const int result = KRD9IO.readTable21(freeStrings);
        addReport(report, result == clKRD9IO::kDone
                              ? tr("Свободные строки загружены.")
                              : tr("<FONT COLOR=red>При загрузке свободных строк возникла ошибка.</FONT>"));
    }
    msgBoxTextOK(report);

    const QString model = KRD9IO.getDeviceModel();
    LogAddDbg(tr("====== Касса ID=%1 str=%2").arg(QString::number(KRD9IO.modelId), model));
    ConnectedModelChange(KRD9IO.modelId);
}

void MainWindow::on_actionUpLoad_triggered()
{
    LogAddDbg(QStringLiteral("=================================="));
    if (!CheckOrSetConnection(false))
        return;
    dlgDnLoad dialog;
    dialog.setWhatLoadEnable(maket.getShablonLoaded(), !freeStrings.isEmpty());
    if (dialog.exec() == QDialog::Rejected)
        return;
    const int n = dialog.getSubTblNum();

    QString report;
    if (dialog.isLoadTblChecked()) {
        Json::Value rows(Json::arrayValue);
        bd.SaveAsJsonV01(rows, n);
        report = templateReport(runTransfer(dialog, tr("Запись данных в устройство"),
                                            [rows]() mutable { return KRD9IO.writeTableTLV(rows); }));
    }
    if (dialog.isLoadFreeStrChecked())
        addReport(report, savedFreeLinesReport(KRD9IO.writeTable21(freeStrings)));
    msgBoxTextOK(report);
}

int MainWindow::runTransfer(dlgDnLoad& dialog, const QString& title, const std::function<int()>& transfer)
{
    connect(&KRD9IO, &clKRD9IO::updateProgressValue, &dialog, &dlgDnLoad::setValue);
    connect(&KRD9IO, &clKRD9IO::progressEnd, &dialog, &dlgDnLoad::close);
    QFuture<int> running = QtConcurrent::run(transfer);
    dialog.setWindowTitle(title);
    dialog.exec();
    running.waitForFinished();
    return running.result();
}
