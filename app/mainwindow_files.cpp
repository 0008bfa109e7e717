#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "device/regularfile.h"
#include "model/templatetext.h"

#include <QFileDialog>

#include <algorithm>

namespace {

constexpr int kMostFindings = 10;

/// The text of the warning about bad fields: how many, and the first ten of the findings.
QString findingsText(int errors, const QStringList& messages)
{
    const QString feed = QStringLiteral("\n");
    QString text = MainWindow::tr("Поля шаблона имеют недопустимые значения!%1Найденных ошибок: %2, всего "
                                  "несоответствий: %3")
                       .arg(feed, QString::number(errors), QString::number(messages.size()));
    text += messages.size() > kMostFindings ? MainWindow::tr("%1Первые 10 несоответствий:").arg(feed)
                                            : MainWindow::tr("%1Найденные несоответствия:").arg(feed);
    for (const auto& message : messages.first(std::min<qsizetype>(messages.size(), kMostFindings)))
        text += feed + message;
    return text;
}

} // namespace

void MainWindow::on_actionOpen_triggered()
{
    currentFileName =
        QFileDialog::getOpenFileName(this, tr("Выбор файла с шаблоном"), QString(), tr("*.csv"));
    if (currentFileName.isEmpty())
        return;
    QFile file(currentFileName);
    if (!openRegularFile(file, QIODevice::ReadOnly)) {
        msgBoxWarnOK(tr("Не удалось открыть файл!"));
        return;
    }
    const QByteArray bytes = file.readAll();
    file.close();
    LoadFileData(bytes);
    ui->actionSave->setEnabled(true);
}

void MainWindow::LoadFileData(const QByteArray& bytes)
{
    {
        const TemplateText text(bytes);
        const auto& lines = text.lines();
        QList<int> votes;
        bd.LoadFrom_AnalizeType(lines, votes);
        const int most = votes.isEmpty() ? 0 : *std::max_element(votes.cbegin(), votes.cend());
        const auto wins = [&](int format) { return votes.value(format) > 0 && votes.value(format) == most; };
        if (wins(1)) {
            ui->teLog->append(tr("Распознан формат: old, 20+[str]"));
            bd.LoadFromListV01(lines, true);
        } else if (wins(2)) {
            ui->teLog->append(tr("Распознан формат: new, 9*9"));
            bd.LoadFromListV02(lines);
        } else if (wins(3)) {
            ui->teLog->append(tr("Распознан формат: new, 19+str"));
            bd.LoadFromListV01(lines, false);
        } else if (wins(4)) {
            ui->teLog->append(tr("Распознан формат: new, 26+str"));
            bd.LoadFromListV04(lines);
        } else {
            ui->teLog->append(tr("Не распознан формат!"));
            bd.Clear();
            endPick();
            redrawPending = false;
            msgBoxWarnOK(tr("Не удалось распознать формат файла!\nВозможно это не файл шаблона!"));
        }
    }
    CheckBDPoley_RebuildMaket();
}

void MainWindow::CheckBDPoley_RebuildMaket()
{
    QStringList messages;
    const int errors = bd.CheckBDCorrect(maket.blockCount, messages, false);
    maket.setBlockTitleEnabled(true);
    endPick();
    // A redraw that is still due would show fields under the box that are not to be shown.
    redrawPending = false;
    if (errors == 0) {
        bd.ReComputeBDBlocks();
        maket.ReComputeBDBlocks(true);
        maket.setShablonLoaded(true);
        setGuiStateWhenLoaded();
        rebuildView();
        return;
    }
    if (errors < 0) {
        msgBoxWarnOK(tr("Корректных данных не найдено!"));
    } else {
        const QString text = findingsText(errors, messages);
        msgBoxWarnOK(text);
        ui->teLog->append(text);
    }
    bd.Clear();
    maket.Clear();
    maket.setShablonLoaded(false);
    setGuiStateWhenNotLoaded();
    rebuildView();
}

void MainWindow::on_actionSave_triggered()
{
    takeOpenEditor();
    if (!currentFileName.isEmpty())
        SaveToFName(currentFileName);
}

void MainWindow::on_actionSaveAs_triggered()
{
    currentFileName =
        QFileDialog::getSaveFileName(this, tr("Выбор файла для сохранения"), QString(), tr("*.csv"));
    if (currentFileName.isEmpty())
        return;
    SaveToFName(currentFileName);
    ui->actionSave->setEnabled(true);
}

void MainWindow::SaveToFName(const QString& name)
{
    QFile file(name);
    if (!openRegularFile(file, QIODevice::WriteOnly)) {
        msgBoxWarnOK(tr("Не удалось открыть файл для записи (%1)").arg(file.errorString()));
        return;
    }
    QStringList rows;
    bd.SaveToListWMask(rows);
    for (const auto& row : rows) {
        file.write(row.toUtf8());
        file.write("\n");
    }
    file.close();
}
