#include "device/clkrd9io.h"

#include "device/batostring.h"
#include "device/ccommtlv.h"
#include "device/tlvrecord.h"

#include <algorithm>
#include <utility>
#include <vector>

using LUM::Fpax::IFpax;

namespace {

constexpr int kLastRow = 0xFF00;
constexpr int kHighestWrittenRow = 300;

/// A device that does not get on within a row is asked no longer.
constexpr int kMostParameterRequests = 256;

/// Nor is one that does so row after row.
constexpr int kMostStuckRows = 16;

/// A device that has an answer to everything is left when its records fill the memory: sixteen for each row of the
/// longest table, where a usual row has five.
constexpr Json::ArrayIndex kMostRecords = 1U << 20;

constexpr qsizetype kShortestAnswer = 9;

/// What an answer holds behind its first two bytes, as text.
QString recordBytes(const QVector<unsigned char>& answer)
{
    constexpr qsizetype answerStart = 4; // digits
    return baToString(answer, QString()).remove(0, answerStart);
}

bool isCountedRow(int row)
{
    return row >= 0 && row <= kHighestWrittenRow;
}

} // namespace

int clKRD9IO::readTableTLV(int& n)
{
    const int subTable = n;
    int row = 1;
    int result = kDone;
    try {
        tlvTable.clear();
        int stuckRows = 0;
        while (row <= kLastRow && stuckRows < kMostStuckRows && tlvTable.size() < kMostRecords) {
            const Json::ArrayIndex before = tlvTable.size();
            if (!readRow(subTable, row))
                break;
            const bool isStuck = tlvTable.size() - before > kMostParameterRequests;
            stuckRows = isStuck ? stuckRows + 1 : 0;
            emit updateProgressValue(row / 2);
            ++row;
        }
    } catch (...) {
        result = kDriverError;
    }
    n = std::min(row, kLastRow);
    emit progressEnd();
    return result;
}

/// Adds the records of one row to `tlvTable`; false if the table has no such row.
bool clKRD9IO::readRow(int subTable, int row)
{
    const cCommTLV commands;
    QVector<unsigned char> command;
    commands.GetCmdAskRow00(command, TlvRecord::kTemplateTable, subTable, row);
    QVector<unsigned char> answer = fpax().runCommand(command);
    if (fpax().getInt(&IFpax::getResultCode) != 0 || answer.size() < kShortestAnswer)
        return false;
    int count = 0;
    if (!cCommTLV::CheckAnswerForRow00(answer, count))
        return false;

    TlvRecord record;
    record.subTable = subTable;
    record.row = row;
    record.bytes = recordBytes(answer);
    tlvTable.append(record.toJson());

    int first = 1;
    for (int requests = 0; requests < kMostParameterRequests; ++requests) {
        commands.GetCmdAskRowFT(command, TlvRecord::kTemplateTable, subTable, row, first, count);
        answer = fpax().runCommand(command);
        if (fpax().getInt(&IFpax::getResultCode) != 0 || answer.size() < kShortestAnswer || answer[1] != 0)
            break;
        record.first = answer[2];
        record.last = answer[3];
        record.bytes = recordBytes(answer);
        tlvTable.append(record.toJson());
        first = record.last + 1;
        if (first > count)
            break;
    }
    return true;
}

int clKRD9IO::writeTableTLV(Json::Value& rows)
{
    int result = kDone;
    try {
        std::vector<TlvRecord> records;
        records.reserve(rows.size());
        int maxRow = 0;
        for (const auto& value : std::as_const(rows)) {
            auto record = TlvRecord::fromJson(value);
            if (!record)
                continue;
            if (isCountedRow(record->row))
                maxRow = std::max(maxRow, record->row);
            records.push_back(std::move(*record));
        }
        int current = 0;
        for (const TlvRecord& record : records) {
            if (record.first == 0)
                continue;
            if (isCountedRow(record.row))
                current = record.row;
            try {
                fpax().runCommand(record.writeCommand());
                fpax().getInt(&IFpax::getResultCode);
            } catch (const Exception&) { // a record that the device refuses is lost, the next one follows
            }
            emit updateProgressValue(maxRow == 0 ? 0 : current * 100 / maxRow);
        }
    } catch (...) {
        result = kDriverError;
    }
    emit progressEnd();
    return result;
}
