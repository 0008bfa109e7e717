#include "emulator/tablecommand.h"

#include <QTextCodec>

#include <algorithm>

namespace emulator {

namespace {

constexpr int kTableCommand = 0x51;
constexpr int kRead = 0;
constexpr int kWrite = 1;
constexpr int kTemplateTable = 20;
constexpr int kAddressSize = 6;
constexpr int kReadSize = 8;
constexpr int kRecordStart = 6;
constexpr int kEntrySize = 14;
constexpr int kMaxNameBytes = 0xFF;

int byteAt(const QByteArray& bytes, qsizetype index)
{
    return static_cast<unsigned char>(bytes[index]);
}

int wordAt(const QByteArray& bytes, qsizetype index)
{
    return byteAt(bytes, index) | byteAt(bytes, index + 1) << 8;
}

void appendByte(QByteArray& bytes, qsizetype value)
{
    bytes.append(static_cast<char>(value));
}

void appendWord(QByteArray& bytes, qsizetype value)
{
    appendByte(bytes, value & 0xFF);
    appendByte(bytes, value >> 8 & 0xFF);
}

void appendTlv(QByteArray& bytes, int tag, const QByteArray& value)
{
    appendWord(bytes, tag);
    appendWord(bytes, value.size());
    bytes.append(value);
}

QByteArray oneByte(int value)
{
    return QByteArray(1, static_cast<char>(value));
}

QByteArray entry(int param, int bits, int value)
{
    QByteArray inner;
    appendTlv(inner, 1, oneByte(bits));
    appendTlv(inner, 2, oneByte(value));
    QByteArray bytes;
    appendTlv(bytes, param, inner);
    return bytes;
}

/// A record's start: its parameters, the row counted from 0, and the length of what follows.
QByteArray record(int first, int last, int row, const QByteArray& data)
{
    QByteArray bytes;
    appendByte(bytes, first);
    appendByte(bytes, last);
    appendWord(bytes, row);
    appendWord(bytes, data.size());
    return bytes + data;
}

QByteArray head(const TemplateRow& row, int number)
{
    QByteArray inner;
    appendTlv(inner, 3, oneByte(static_cast<int>(row.params.size())));
    const QByteArray name = QTextCodec::codecForName("Windows-1251")->fromUnicode(row.name);
    appendTlv(inner, 4, name.left(kMaxNameBytes));
    appendTlv(inner, 5, row.mask);
    QByteArray data;
    appendTlv(data, 0, inner);
    return record(0, 0, number, data);
}

QByteArray accepted(const QByteArray& body)
{
    return oneByte(kTableCommand) + oneByte(0) + body;
}

/// What the answer tells of a failure, never 0.
int errorByte(int code)
{
    return 1 + -code % 0xFF;
}

CommandResult refused(int code)
{
    return {Outcome::refused(code), oneByte(kTableCommand) + oneByte(errorByte(code)), false};
}

CommandResult tooWide(int param, int value)
{
    CommandResult result = refused(code::kBadParameter);
    result.outcome = Outcome::badParameter(
        param, QString("Значение %1 параметра %2").arg(QString::number(value), QString::number(param)));
    return result;
}

CommandResult read(const QByteArray& command, const SubTable& rows, int groupSize)
{
    if (command.size() != kReadSize)
        return refused(code::kBadCommand);
    const int number = wordAt(command, 4);
    const int first = byteAt(command, 6);
    const int last = byteAt(command, 7);
    if (number < 1 || number > rows.size())
        return refused(code::kNoSuchRow);
    const TemplateRow& row = rows[number - 1];
    if (first == 0 && last == 0)
        return {Outcome::ok(), accepted(head(row, number - 1)), false};
    if (first < 1 || first > last || last > row.params.size())
        return refused(code::kNoSuchField);
    const int given = std::min(last, first + groupSize - 1);
    QByteArray data;
    for (int param = first; param <= given; ++param)
        data += entry(param, paramBits(param), row.value(Param(param)));
    return {Outcome::ok(), accepted(record(first, given, number - 1, data)), false};
}

CommandResult write(const QByteArray& command, SubTable& rows)
{
    if (command.size() < kAddressSize + kRecordStart)
        return refused(code::kBadCommand);
    const QByteArray body = command.mid(kAddressSize);
    const int first = byteAt(body, 0);
    const int last = byteAt(body, 1);
    const int number = wordAt(body, 2);
    const int count = last - first + 1;
    if (number >= rows.size())
        return refused(code::kNoSuchRow);
    if (first < 1 || count < 1 || last > rows[number].params.size())
        return refused(code::kNoSuchField);
    if (wordAt(body, 4) != count * kEntrySize || body.size() != kRecordStart + count * kEntrySize)
        return refused(code::kBadCommand);
    TemplateRow row = rows[number];
    for (int i = 0; i < count; ++i) {
        const int param = first + i;
        const QByteArray given = body.mid(kRecordStart + i * kEntrySize, kEntrySize);
        const int value = byteAt(given, kEntrySize - 1);
        if (given != entry(param, paramBits(param), value))
            return refused(code::kBadCommand);
        if (value >> paramBits(param) != 0)
            return tooWide(param, value);
        row.set(Param(param), value);
    }
    rows[number] = row;
    return {Outcome::ok(), accepted(oneByte(count)), true};
}

} // namespace

CommandResult executeTableCommand(const QByteArray& command, TemplateTable& table, int groupSize)
{
    if (command.isEmpty())
        return refused(code::kBadCommand);
    if (byteAt(command, 0) != kTableCommand)
        return refused(code::kNotSupported);
    if (command.size() < kAddressSize)
        return refused(code::kBadCommand);
    const auto rows = table.find(byteAt(command, 3));
    if (byteAt(command, 2) != kTemplateTable || rows == table.end())
        return refused(code::kNoSuchTable);
    switch (byteAt(command, 1)) {
    case kRead:
        return read(command, rows.value(), groupSize);
    case kWrite:
        return write(command, rows.value());
    default:
        return refused(code::kNotSupported);
    }
}

} // namespace emulator
