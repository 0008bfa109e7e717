#include "app/mainwindow.h"

#include "workflows/dlgfreestreditor.h"

namespace {

/// Characters in a line of a tape of this width in dots.
qsizetype charsPerLine(int tapeWidth)
{
    switch (tapeWidth) {
    case 576:
        return 64;
    case 432:
        return 48;
    case 384:
        return 42;
    default:
        return 80;
    }
}

/// The first `limit` units of a line; a character of two units is not torn apart.
QString cutLine(const QString& line, qsizetype limit)
{
    QString cut = line.left(limit);
    if (cut.back().isHighSurrogate())
        cut.chop(1);
    return cut;
}

} // namespace

void MainWindow::on_btnFreeStrEditor_clicked()
{
    RunFreeStrEditor();
}

void MainWindow::on_actionFreeStrEditor_triggered()
{
    RunFreeStrEditor();
}

void MainWindow::RunFreeStrEditor()
{
    dlgFreeStrEditor dialog;
    if (freeStrings.isEmpty()) {
        msgBoxWarnOK(tr("Свободные строки не загружены!"));
        return;
    }
    dialog.SetData(freeStrings);
    if (dialog.exec() == QDialog::Rejected)
        return;
    const QStringList edited = dialog.ReadData();
    if (edited.size() != freeStrings.size()) {
        msgBoxWarnOK(tr("Число свободных строк изменилось!\nСохранение строк отменено!"));
        return;
    }
    const qsizetype limit = charsPerLine(tapeWidth);
    bool isCut = false;
    for (qsizetype i = 0; i < edited.size(); ++i) {
        const bool isTooLong = edited.at(i).size() > limit;
        freeStrings[i] = isTooLong ? cutLine(edited.at(i), limit) : edited.at(i);
        isCut = isCut || isTooLong;
    }
    if (isCut)
        msgBoxWarnOK(tr("При сохранении часть строк была обрезана под ширину ленты. Проверьте строки!"));
}
