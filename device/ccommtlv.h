#pragma once

#include <QVector>

/// The raw commands for the rows of the device's template table, and what its answers look like.
///
/// A read command: code, 0, table, sub-table, row (two bytes, low one first, from 1), first parameter, last
/// parameter. Parameters 0 to 0 stand for the head of the row. Every number is cut to its bytes.
class cCommTLV
{
public:
    /// Code of the command that reads and writes table rows.
    static constexpr unsigned char kTableCommand = 0x51;

    explicit cCommTLV(unsigned char code = kTableCommand)
        : commandCode(code)
    {
    }

    /// Fills `out` with the command that reads parameters `first` to `last` of a row.
    void GetCmdAskRowFT(QVector<unsigned char>& out, int table, int subTable, int row, int first,
                        int last) const;
    /// Fills `out` with the command that reads the head of a row.
    void GetCmdAskRow00(QVector<unsigned char>& out, int table, int subTable, int row) const;

    /// True if `answer` is the head of a row: `paramCount` then is its number of parameters, else 0.
    static bool CheckAnswerForRow00(const QVector<unsigned char>& answer, int& paramCount);

private:
    unsigned char commandCode;
};
