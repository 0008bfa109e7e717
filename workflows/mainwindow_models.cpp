#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "app/csettings.h"
#include "device/regularfile.h"

namespace {

struct KassaModel
{
    const char* name;
    const char* tape; // millimetres
    int code;         // as the device reports it
};

constexpr KassaModel kModels[] = {
    {QT_TRANSLATE_NOOP("MainWindow", "Тавр 11Ф"), "57", 67},
    {QT_TRANSLATE_NOOP("MainWindow", "Тавр 15Ф"), "57", 78},
    {QT_TRANSLATE_NOOP("MainWindow", "Тавр 30Ф"), "57", 61},
    {QT_TRANSLATE_NOOP("MainWindow", "Тавр 60Ф"), "57", 75},
    {QT_TRANSLATE_NOOP("MainWindow", "Тавр 90Ф"), "57", 72},
    {QT_TRANSLATE_NOOP("MainWindow", "Тавр 52Ф"), "57", 64},
    {QT_TRANSLATE_NOOP("MainWindow", "Тавр 55Ф"), "57", 62},
    {QT_TRANSLATE_NOOP("MainWindow", "Тавр 22Ф"), "80", 63},
    {QT_TRANSLATE_NOOP("MainWindow", "Тавр 25Ф"), "80", 57},
    {QT_TRANSLATE_NOOP("MainWindow", "Тавр 77Ф"), "80", 69},
    {QT_TRANSLATE_NOOP("MainWindow", "Ларец ФА"), "80", 76},
};

constexpr int kShortestRecord = 5;

} // namespace

void MainWindow::FillDefaultKassaList()
{
    kassaNames.clear();
    kassaTapes.clear();
    kassaCodes.clear();
    for (const auto& model : kModels) {
        kassaNames.append(tr(model.name));
        kassaTapes.append(QString::fromUtf8(model.tape));
        kassaCodes.append(model.code);
    }
}

void MainWindow::LoadAndSetKassaList()
{
    QFile file(Settings.pathApp + "/" + "kassa.csv");
    if (!openRegularFile(file, QIODevice::ReadOnly))
        return;
    const QByteArray bytes = file.readAll();
    file.close();

    const QStringList records = QString::fromUtf8(bytes.constData()).split(u'\n');
    kassaNames.clear();
    kassaTapes.clear();
    kassaCodes.clear();
    for (const auto& record : records) {
        if (record.size() < kShortestRecord)
            continue;
        const QStringList fields = record.split(u';');
        if (fields.size() != 6 || fields.at(0) != u"1" || fields.at(2).toInt() == 0 || fields.at(5).isEmpty())
            continue;
        kassaNames.append(fields.at(5));
        kassaTapes.append(fields.at(2));
        kassaCodes.append(fields.at(3).toInt());
    }
}

void MainWindow::on_comboKassa_currentIndexChanged(int index)
{
    if (index < 0 || index >= kassaTapes.size())
        return;
    for (int i = 0; i < ui->comboLentaSize->count(); ++i) {
        if (ui->comboLentaSize->itemText(i).left(2) == kassaTapes.at(index)) {
            ui->comboLentaSize->setCurrentIndex(i);
            return;
        }
    }
    msgBoxWarnOK(tr("Неизвестная ширина ленты!"));
}

void MainWindow::ConnectedModelChange(int model)
{
    if (model <= 0)
        return;
    const int i = ui->comboKassa->currentIndex();
    if (i < 0 || i >= kassaCodes.size() || kassaCodes.at(i) == model)
        return;
    LogAddDbg(tr("ConnectedModelChanged cur=%1 new=%2").arg(kassaCodes.at(i)).arg(model));
    const auto index = static_cast<int>(kassaCodes.indexOf(model));
    if (index < 0) {
        LogAddDbg(tr("ConnectedModelChanged newModelIdxNotFound!"));
        return;
    }
    LogAddDbg(tr("ConnectedModelChanged newModel: %1").arg(kassaNames.at(index)));
    ui->comboKassa->setCurrentIndex(index);
}
