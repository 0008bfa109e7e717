#include "app/mainwindow.h"

#include "device/jsonfile.h"

int MainWindow::JsonFileReadAndParse(const QString& fileName, Json::Value& root)
{
    QString errors;
    const int result = JsonFile::read(fileName, root, errors);
    if (result == JsonFile::NotOpened)
        LogAddDbg(tr("Не удалось открыть файл с настройками [%1]").arg(fileName));
    else if (result == JsonFile::NotParsed)
        LogAddDbg(tr("Ошибка при разборе json [%1]").arg(errors));
    return result;
}
