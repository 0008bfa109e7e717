#include "device/ccommtlv.h"

namespace {

unsigned char lowByte(int value)
{
    return static_cast<unsigned char>(static_cast<unsigned>(value) & 0xFFU);
}

unsigned char highByte(int value)
{
    return static_cast<unsigned char>((static_cast<unsigned>(value) >> 8) & 0xFFU);
}

} // namespace

void cCommTLV::GetCmdAskRowFT(QVector<unsigned char>& out, int table, int subTable, int row, int first,
                              int last) const
{
    constexpr unsigned char read = 0x00;
    out = {commandCode,  read,          lowByte(table), lowByte(subTable),
           lowByte(row), highByte(row), lowByte(first), lowByte(last)};
}

void cCommTLV::GetCmdAskRow00(QVector<unsigned char>& out, int table, int subTable, int row) const
{
    GetCmdAskRowFT(out, table, subTable, row, 0, 0);
}

bool cCommTLV::CheckAnswerForRow00(const QVector<unsigned char>& answer, int& paramCount)
{
    constexpr qsizetype countOffset = 16;
    paramCount = 0;
    if (answer.size() <= countOffset)
        return false;
    if (answer[1] != 0 || answer[2] != 0 || answer[3] != 0)
        return false;
    // The number of parameters: tag 3, length 1.
    if (answer[12] != 3 || answer[13] != 0 || answer[14] != 1 || answer[15] != 0)
        return false;
    paramCount = answer[countOffset];
    return true;
}
