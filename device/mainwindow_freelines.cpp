#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "app/csettings.h"
#include "device/devicecodes.h"
#include "device/jsonfile.h"

namespace {

constexpr int kLastRow = 255;

QString freeLinesPath()
{
    return Settings.pathApp + "/" + "tables.json";
}

/// One line of the file: its digits, or an empty text if the element is no free line.
QString freeLineDigits(const Json::Value& element)
{
    if (!element.isObject())
        return {};
    try {
        const int row = element["r"].asInt();
        const bool isFreeLine =
            element["t"].asInt() == DeviceCode::kFreeLineTable && row >= 1 && row <= kLastRow;
        return isFreeLine ? QString::fromStdString(element["v"].asString()) : QString();
    } catch (const Json::Exception&) {
        return {};
    }
}

} // namespace

void MainWindow::RecodeStrsFromBAToUtf(const QString& hex, QString& out, bool /*flag*/)
{
    QByteArray bytes;
    for (qsizetype i = 0; i + 1 < hex.size(); i += 2)
        bytes.append(static_cast<char>(QStringView(hex).mid(i, 2).toUInt(nullptr, 16)));
    out = decoder866.toUnicode(bytes);
}

void MainWindow::LoadFromJsonFileFreeStr()
{
    freeStrings.clear();
    Json::Value lines;
    const int result = JsonFileReadAndParse(freeLinesPath(), lines);
    if (result == JsonFile::NotOpened) {
        msgBoxWarnOK(tr("Ошибка ввода-вывода!"));
        return;
    }
    if (result != JsonFile::Read || !lines.isArray()) {
        msgBoxWarnOK(tr("Не удалось разобрать свободные строки!"));
        return;
    }
    for (const auto& element : std::as_const(lines)) {
        const QString digits = freeLineDigits(element);
        if (digits.isEmpty())
            continue;
        QString line;
        RecodeStrsFromBAToUtf(digits, line, false);
        freeStrings.append(line);
    }
    LogAddDbg(tr("Read FreeStr kol=%1").arg(freeStrings.size()));
}

void MainWindow::SaveToJsonFileFreeStr()
{
    Json::Value lines(Json::arrayValue);
    for (qsizetype i = 0; i < freeStrings.size(); ++i) {
        const QByteArray digits = encoder866.fromUnicode(freeStrings.at(i)).toHex().toUpper();
        Json::Value line(Json::objectValue);
        line["t"] = DeviceCode::kFreeLineTable;
        line["f"] = DeviceCode::kFreeLineField;
        line["r"] = static_cast<int>(i) + 1;
        line["v"] = digits.toStdString();
        lines.append(line);
    }
    if (!JsonFile::write(freeLinesPath(), lines))
        msgBoxWarnOK(tr("Не удалось открыть файл для записи!"));
}
