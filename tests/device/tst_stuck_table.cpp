#include "device/clkrd9io.h"
#include "device/tablescript.h"
#include "support/takedriver.h"

#include <QTest>

namespace {

/// The two digits of a byte.
QString byteText(int byte)
{
    return QStringLiteral("%1").arg(byte, 2, 16, QLatin1Char('0')).toUpper();
}

/// The head of a row of `count` parameters.
QString headOf(int count)
{
    return QStringLiteral("51 00 00 00 A1 A2 A3 A4 A5 A6 A7 A8 03 00 01 00 ") + byteText(count);
}

/// A group that holds the parameters from `first` to `last`.
QString groupOf(int first, int last)
{
    return QStringLiteral("51 00 ") + byteText(first) + u' ' + byteText(last) +
           QStringLiteral(" 00 00 1C 00 00 00");
}

/// What a raw command asks for: the row from 1, and the first parameter, which is 0 for the head.
struct Question
{
    explicit Question(const QString& command)
        : row(command.mid(12, 2).toInt(nullptr, 16) + 256 * command.mid(15, 2).toInt(nullptr, 16))
        , first(command.mid(18, 2).toInt(nullptr, 16))
    {
    }

    int row;
    int first;
};

/// A session before a device that has an answer to every command.
struct Bench
{
    Bench()
        : transfer(session)
    {
        takeDriver(session, device);
    }

    /// Reads sub-table 2.
    int read()
    {
        stop = 2;
        return session.readTableTLV(stop);
    }

    /// How many records of `row` the table holds.
    int recordsOf(int row) const
    {
        int count = 0;
        for (const auto& record : session.tlvTable)
            count += record["r"].asInt() == row ? 1 : 0;
        return count;
    }

    TableScript device;
    clKRD9IO session;
    TransferSignals transfer;
    int stop = 0;
};

/// A row that does not get on: its head, and 256 answers.
constexpr int kStuckRecords = 257;

} // namespace

/// A device that gives the same answer again and again is left after sixteen rows of it.
class TestStuckTable : public QObject
{
    Q_OBJECT

private slots:
    void sameHeadToEveryCommandEndsAfterSixteenRows();
    void rowThatAdvancesStartsTheCountAnew();
    void rowsOfManyGroupsAreNotStuck();
};

void TestStuckTable::sameHeadToEveryCommandEndsAfterSixteenRows()
{
    Bench bench;
    bench.device.otherwise = [](const QString&) { return TableScript::Answer{headOf(3)}; };
    QCOMPARE(bench.read(), 0);
    QCOMPARE(bench.stop, 17);
    QCOMPARE(bench.device.commands().size(), 16 * kStuckRecords);
    QCOMPARE(bench.session.tlvTable.size(), 16U * kStuckRecords);
    for (int row = 1; row <= 16; ++row)
        QCOMPARE(bench.recordsOf(row), kStuckRecords);
    QCOMPARE(bench.transfer.seen, (QStringList{"0", "1", "1", "2", "2", "3", "3", "4", "4", "5", "5", "6",
                                               "6", "7", "7", "8", "end"}));
}

void TestStuckTable::rowThatAdvancesStartsTheCountAnew()
{
    constexpr int goodRow = 16;
    Bench bench;
    bench.device.otherwise = [](const QString& command) {
        const Question question(command);
        const bool isGood = question.row == goodRow && question.first != 0;
        return TableScript::Answer{isGood ? groupOf(1, 3) : headOf(3)};
    };
    QCOMPARE(bench.read(), 0);
    // Fifteen rows, the good one, and sixteen more.
    QCOMPARE(bench.stop, 33);
    QCOMPARE(bench.recordsOf(15), kStuckRecords);
    QCOMPARE(bench.recordsOf(goodRow), 2);
    QCOMPARE(bench.recordsOf(17), kStuckRecords);
    QCOMPARE(bench.recordsOf(32), kStuckRecords);
    QCOMPARE(bench.session.tlvTable.size(), 31U * kStuckRecords + 2U);
    QCOMPARE(bench.transfer.seen.size(), 33);
    QCOMPARE(bench.transfer.seen.constLast(), QString("end"));
}

void TestStuckTable::rowsOfManyGroupsAreNotStuck()
{
    constexpr int rows = 20;
    constexpr int count = 255;
    Bench bench;
    bench.device.otherwise = [](const QString& command) {
        const Question question(command);
        if (question.row > rows)
            return TableScript::Answer{{}, TableScript::kRefusal};
        return TableScript::Answer{question.first == 0 ? headOf(count)
                                                       : groupOf(question.first, question.first)};
    };
    QCOMPARE(bench.read(), 0);
    QCOMPARE(bench.stop, rows + 1);
    for (int row = 1; row <= rows; ++row)
        QCOMPARE(bench.recordsOf(row), 1 + count);
}

QTEST_GUILESS_MAIN(TestStuckTable)

#include "tst_stuck_table.moc"
