#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "app/csettings.h"
#include "device/devicecodes.h"
#include "device/jsonfile.h"
#include "device/jsonmember.h"

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
    const auto row = JsonMember::integer(element["r"]);
    const bool isFreeLine =
        JsonMember::integer(element["t"]) == DeviceCode::kFreeLineTable && row >= 1 && row <= kLastRow;
    return isFreeLine ? JsonMember::text(element["v"]).value_or(QString()) : QString();
}

/// The bytes of `line` alone.
QByteArray encodedLine(QTextEncoder& encoder, const QString& line)
{
    // Half a character at the end of a line waits in the encoder for its other half. A line feed drives it out.
    return encoder.fromUnicode(line + u'\n').chopped(1);
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
        const QByteArray digits = encodedLine(encoder866, freeStrings.at(i)).toHex().toUpper();
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
