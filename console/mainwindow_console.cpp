#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "app/csettings.h"
#include "device/regularfile.h"

#include <QTextStream>

namespace {

void enableAndShow(std::initializer_list<QWidget*> widgets)
{
    for (QWidget* const widget : widgets) {
        widget->setEnabled(true);
        widget->show();
    }
}

bool writeRows(const QString& name, const QStringList& rows)
{
    QFile file(Settings.pathApp + "/" + name);
    if (!openRegularFile(file, QIODevice::WriteOnly))
        return false;
    for (const auto& row : rows)
        file.write(row.toUtf8() + '\n');
    file.close();
    return true;
}

} // namespace

void MainWindow::on_lePolesFilterStr_returnPressed()
{
    const QString word = ui->lePolesFilterStr->text().toUpper();
    if (word == u"SAM") {
        enableAndShow({ui->leDbgCmd, ui->btnDbgCmdCall, ui->teLog});
        ui->lePolesFilterStr->clear();
    } else if (word == u"SAVELOG") {
        saveLog();
    } else if (word == u"SAVEMASK") {
        QStringList rows;
        const int result = bd.ExportMaskList(rows);
        saveExport(result, rows, QStringLiteral("masks.csv"), tr("Masks saved"));
    } else if (word == u"SAVENAME") {
        QStringList rows;
        const int result = bd.ExportNameList(rows);
        saveExport(result, rows, QStringLiteral("names.csv"), tr("Names saved"));
    }
}

void MainWindow::saveLog()
{
    QFile file(Settings.pathApp + "/" + "outlog.txt");
    if (!openRegularFile(file, QIODevice::WriteOnly)) {
        const QString failure = tr("Не удалось содать новый файл с логом!");
        LogAddDbg(failure);
        msgBoxWarnOK(failure);
        return;
    }
    QTextStream stream(&file);
    stream << ui->teLog->toPlainText();
    stream.flush();
    file.close();
    ui->lePolesFilterStr->setText(tr("OK"));
}

void MainWindow::saveExport(int result, const QStringList& rows, const QString& name, const QString& done)
{
    if (result != 0) {
        msgBoxWarnOK(tr("error"));
        return;
    }
    if (!writeRows(name, rows)) {
        msgBoxWarnOK(tr("Не удалось открыть файл для записи!"));
        return;
    }
    msgBoxWarnOK(done);
    ui->lePolesFilterStr->clear();
}

void MainWindow::on_btnDbgCmdCall_clicked()
{
    const QString command = ui->leDbgCmd->text().toUpper();
    if (command == u"SHBD") {
        dumpFields();
    } else if (command == u"SHBDBL") {
        dumpBlocks();
    } else if (command == u"SHMBL") {
        dumpLayout();
    } else if (command == u"SHMSK") {
        dumpMasks();
    } else if (command == u"SETDBG") {
        LogAddDbg(tr("DBG MODE ON"));
        keepTempFiles = true;
        enableAndShow({ui->btnDbgDnload_2, ui->btnDbgSaveJson});
    } else if (command == u"IOINFO") {
        checkDriver();
    }
}

void MainWindow::on_btnDbgSaveJson_clicked()
{
    const QString text = ui->leDbgCmd->text();
    const int number = text.size() == 1 ? text.toInt() : 0;
    SaveToJsonFileTLVSubTable(number != 0 ? number : 1, true);
    msgBoxWarnOK(tr("Закончено!"));
}

void MainWindow::on_btnDbgDnload_2_clicked()
{
    LoadFromJsonFileTLVSubTableOld(1);
    LoadFromJsonFileFreeStr();
}

void MainWindow::on_btnDbgClear_clicked()
{
    ui->teLog->clear();
}

void MainWindow::on_btnDbgUploadJson_clicked() {}

void MainWindow::on_btnDbgDnload_clicked() {}
