#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "app/csettings.h"
#include "device/jsonfile.h"
#include "device/qlumfpax.h"
#include "device/tlvrecord.h"

#include <QFile>

using LUM::Fpax::IFpax;

namespace {

using T20Item = BD_T20Items::T20Item;

constexpr int kHexadecimal = 16;

/// The byte whose digits begin at `position`; 0 if there are none, as with a minus.
int byteAt(QStringView digits, qsizetype position)
{
    return digits.mid(position, 2).toUShort(nullptr, kHexadecimal);
}

QString recordsPath()
{
    return Settings.pathApp + "/" + "tablestlv.json";
}

/// A name as the device gives it, in bytes of its code page. Control characters would tear a row of a template file
/// apart, so they become blanks.
QString decodedName(QTextDecoder& decoder, QStringView digits)
{
    QByteArray bytes;
    for (qsizetype i = 0; i < digits.size(); i += 2)
        bytes.append(static_cast<char>(byteAt(digits, i)));
    QString name = decoder.toUnicode(bytes);
    for (auto& character : name) {
        if (character < u' ')
            character = u' ';
    }
    return name;
}

} // namespace

int MainWindow::ParseTLVParam(int index, const QString& v)
{
    constexpr qsizetype entrySize = 28; // digits
    constexpr qsizetype entriesStart = 16;
    constexpr qsizetype valueOffset = 26;
    return v.mid(index * entrySize - entriesStart, entrySize)
        .mid(valueOffset, 2)
        .toUShort(nullptr, kHexadecimal);
}

void MainWindow::LoadFromJsonTLVSubTable(Json::Value& rows, int subTable)
{
    bd.Clear();
    T20Item item;
    item.ClearToUndef();
    int counter = 1;
    int rowKey = 1;
    for (const auto& value : std::as_const(rows)) {
        const auto record = TlvRecord::fromJson(value);
        if (!record || record->subTable != subTable)
            continue;
        const QString& v = record->bytes;
        const auto group = std::pair(record->first, record->last);
        const auto takeParams = [&] {
            for (int param = group.first; param <= group.second; ++param)
                item.*T20Item::kDeviceParams.at(static_cast<std::size_t>(param - 1)) =
                    ParseTLVParam(param - group.first + 1, v);
        };
        if (group == std::pair(0, 0)) {
            takeRowHead(v, item);
        } else if (group == std::pair(1, 6)) {
            rowKey = byteAt(v, 4) + 256 * byteAt(v, 6);
            takeParams();
        } else if (group == std::pair(7, 12) || group == std::pair(13, 18)) {
            takeParams();
        } else if (group == std::pair(19, 19)) {
            takeParams();
            completeField(item, counter, rowKey);
            item.ClearToUndef();
            ++counter;
            item.FA_NEED = BD_T20Items::getFA_NEED(counter);
            item.BL_MASK = 0xFFFF;
            rowKey = -1;
        } else {
            LogAddDbg(tr("---: unknow"));
        }
    }
}

void MainWindow::takeRowHead(const QString& v, T20Item& item)
{
    constexpr qsizetype tagStart = 30; // digits
    constexpr qsizetype nameStart = 38;
    constexpr qsizetype restStart = 46;
    if (v.mid(tagStart, 4) != u"0400") {
        LogAddDbg(tr("00-00: %1").arg(v.left(50)));
        return;
    }
    const qsizetype length = byteAt(v, 34);
    if (length <= 0 || 2 * length + nameStart >= v.size())
        return;
    const QString name = decodedName(decoder1251, QStringView(v).mid(nameStart, 2 * length));
    if (!name.isEmpty()) {
        item.Desc = name;
        item.makeDescViewFromDesc();
    }
    const QString rest = v.mid(2 * length + restStart);
    const int mask = rest.size() == 2 ? byteAt(rest, 0) : byteAt(rest, 0) + 256 * byteAt(rest, 2);
    item.BL_MASK = static_cast<quint32>(mask);
    item.FA_NEED = rest.size() == 8;
    LogAddDbg(tr("%1 %2 %3").arg(QString::number(length), name, rest));
}

void MainWindow::completeField(T20Item& item, int counter, int rowKey)
{
    item.Type = rowKey;
    if (item.Desc.isEmpty()) {
        const QStringList& labels = bd.getPolesLabels();
        const bool isKnown = counter < labels.size() && rowKey >= 0 && rowKey < labels.size();
        item.Desc = isKnown ? labels.at(rowKey) : tr("unknow");
        item.DescView = isKnown ? bd.getPolesLabelsView().at(rowKey) : tr("unknow");
    }
    if (rowKey < 0)
        LogAddDbg(tr("wrong pole keyPlN"));
    else
        bd.AddPoleToBD(rowKey + 1, item);
}

void MainWindow::DvcIOWriteTLV20(QLumFpax& fpax, Json::Value& rows, QStringList& log)
{
    log.clear();
    try {
        for (const auto& value : std::as_const(rows)) {
            const auto record = TlvRecord::fromJson(value);
            if (!record || record->first == 0)
                continue;
            try {
                logRecordWrite(fpax, *record, log);
            } catch (const Exception& error) {
                log.append(tr("Ошибка записи - %1").arg(error.whatQString()));
            }
        }
    } catch (const std::exception& error) {
        log.append(tr("Ошибка драйвера ККТ - %1").arg(QString::fromUtf8(error.what())));
    } catch (...) { // it says nothing of itself
        log.append(tr("Ошибка драйвера ККТ - %1").arg(QString()));
    }
}

void MainWindow::logRecordWrite(QLumFpax& fpax, const TlvRecord& record, QStringList& log)
{
    constexpr unsigned char noByte = '-';
    const std::string command = record.writeCommand();
    const QString address = tr("Запись Т%1С%2Р%3(%4-%5)")
                                .arg(record.table)
                                .arg(record.subTable)
                                .arg(record.row)
                                .arg(record.first)
                                .arg(record.last);
    log.append(address + tr(" = %1").arg(QString::fromStdString(command)));
    const QVector<unsigned char> answer = fpax.runCommand(command);
    const int code = fpax.getInt(&IFpax::getResultCode);
    const bool hasBytes = answer.size() > 2;
    const QString bytes = QStringLiteral("[%1,%2,%3]")
                              .arg(hasBytes ? answer[0] : noByte)
                              .arg(hasBytes ? answer[1] : noByte)
                              .arg(hasBytes ? answer[2] : noByte);
    if (code != 0)
        log.append(tr("Write row %1 error, ResultCode=%2 answer.size=%3 %4")
                       .arg(QString::number(record.row), QString::number(code),
                            QString::number(answer.size()), bytes));
    log.append(
        address +
        tr(" = OK res=%1 answer=%2 %3").arg(QString::number(code), QString::number(answer.size()), bytes));
}

void MainWindow::SaveToJsonFileTLVSubTable(int subTable, bool toFile)
{
    Json::Value rows(Json::arrayValue);
    bd.SaveAsJsonV01(rows, subTable);
    if (toFile && !JsonFile::write(recordsPath(), rows))
        msgBoxWarnOK(tr("Не удалось открыть файл для записи!"));
}

void MainWindow::LoadFromJsonFileTLVSubTableOld(int subTable)
{
    Json::Value rows;
    const int result = JsonFileReadAndParse(recordsPath(), rows);
    if (result == JsonFile::NotOpened) {
        msgBoxWarnOK(tr("Ошибка ввода-вывода!"));
        return;
    }
    if (result != JsonFile::Read || !rows.isArray()) {
        msgBoxWarnOK(tr("Не удалось разобрать структуры!"));
        return;
    }
    LoadFromJsonTLVSubTable(rows, subTable);
    if (!keepTempFiles)
        QFile::remove(recordsPath());
    CheckBDPoley_RebuildMaket();
}
