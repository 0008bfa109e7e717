#include "device/tablescript.h"
#include "support/jsontext.h"
#include "support/takedriver.h"

#include <QTest>

namespace {

using Answer = TableScript::Answer;

/// A session before the scripted device.
struct Bench
{
    Bench()
        : transfer(session)
    {
        takeDriver(session, device);
        fillTwoRows(device);
    }

    /// Reads sub-table 2; `stop` is what the number became.
    int read()
    {
        stop = 2;
        return session.readTableTLV(stop);
    }

    TableScript device;
    clKRD9IO session;
    TransferSignals transfer;
    int stop = 0;
};

QStringList goodExchange(const QString& command)
{
    return {"setCommandBuffer(\"" + command + " \")", "execCommandBuffer()", "getAnswerBuffer(4096)",
            "getResultCode()"};
}

/// A driver that has a head for every row, and counts instead of keeping a record.
class EndlessTable : public RecordingDriver
{
public:
    int setCommandBuffer(const wchar_t*) override { return ++exchanges; }
    int execCommandBuffer() override { return 0; }
    int getResultCode(int* value) override { return *value = 0; }
    int getAnswerBuffer(wchar_t* buffer, int capacity) override
    {
        // As a group it ends at parameter 0, and no row has one to give.
        static const auto head = textSource("00 00 00 00 00 00 00 00 00 00 00 00 03 00 01 00 00");
        return head(buffer, capacity);
    }

    int exchanges = 0;
};

/// Such a driver before a session whose table grows while the driver makes its third exchange.
class GrowingTable : public EndlessTable
{
public:
    GrowingTable(clKRD9IO& session, Json::ArrayIndex size)
        : m_session(session)
        , m_size(size)
    {
    }

    int execCommandBuffer() override
    {
        if (exchanges == 3) // the elements before the last one are not there, which costs nothing
            m_session.tlvTable[m_size - 1] = Json::Value();
        return EndlessTable::execCommandBuffer();
    }

private:
    clKRD9IO& m_session;
    Json::ArrayIndex m_size;
};

} // namespace

/// Reading of a template table: the calls of the driver, what ends a row and the table, and what is told meanwhile.
class TestTable20Read : public QObject
{
    Q_OBJECT

private slots:
    void tableIsReadRowByRow();
    void recordsHaveSixMembers();
    void subTableIsTheNumberGiven_data();
    void subTableIsTheNumberGiven();
    void newReadReplacesTheOld();
    void progressIsHalfTheRow();

    void badHeadEndsTheTable_data();
    void badHeadEndsTheTable();
    void refusedFirstRowIsAnEmptyTable();
    void badGroupLosesTheRestOfItsRow_data();
    void badGroupLosesTheRestOfItsRow();
    void failureWithoutACodeIsNoFailure();
    void shortestGroupIsTaken();
    void rowWithoutParamsIsAskedOnce();
    void oddAnswersAreKeptAsTheyAre();

    void rowThatDoesNotAdvanceIsLeft_data();
    void rowThatDoesNotAdvanceIsLeft();
    void rowOfManyGroupsIsReadWhole();
    void tableWithoutAnEndIsLeftAtTheLastRow();
    void tableThatFillsTheMemoryIsLeft_data();
    void tableThatFillsTheMemoryIsLeft();

    void lostExchangeEndsTheReading_data();
    void lostExchangeEndsTheReading();
    void missingDriverIsAFailure();
    void exceptionOfTheDriverEndsTheReading_data();
    void exceptionOfTheDriverEndsTheReading();
};

void TestTable20Read::tableIsReadRowByRow()
{
    Bench bench;
    QCOMPARE(bench.read(), 0);
    QCOMPARE(bench.stop, 3);

    QStringList calls;
    for (const auto& command : {kAskHead1, kAskGroup1a, kAskGroup1b, kAskHead2, kAskGroup2})
        calls += goodExchange(command);
    // The refusal is diagnosed, the answer read all the same, and the code looked at again.
    calls += {"setCommandBuffer(\"" + kAskHead3 + " \")",
              "execCommandBuffer()",
              "getResultCode()",
              "getResultDescription(4096)",
              "getBadParam()",
              "getResultCode()",
              "getAnswerBuffer(4096)",
              "getResultCode()"};
    QCOMPARE(bench.device.calls(), calls);
    QCOMPARE(shortForms(bench.session.tlvTable),
             (QStringList{kRecordHead1, kRecord1a, kRecord1b, kRecordHead2, kRecord2}));
    QCOMPARE(bench.transfer.seen, (QStringList{"0", "1", "end"}));
}

void TestTable20Read::recordsHaveSixMembers()
{
    Bench bench;
    QCOMPARE(bench.read(), 0);
    QVERIFY(bench.session.tlvTable.isArray());
    for (const auto& record : std::as_const(bench.session.tlvTable)) {
        QCOMPARE(record.getMemberNames(), (Json::Value::Members{"p1", "p2", "r", "s", "t", "v"}));
        for (const char* number : {"p1", "p2", "r", "s", "t"})
            QCOMPARE(record[number].type(), Json::intValue);
        QCOMPARE(record["v"].type(), Json::stringValue);
    }
}

void TestTable20Read::subTableIsTheNumberGiven_data()
{
    QTest::addColumn<int>("subTable");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("group");
    QTest::newRow("1") << 1 << "51 00 14 01 01 00 00 00"
                       << "51 00 14 01 01 00 01 02";
    QTest::newRow("0") << 0 << "51 00 14 00 01 00 00 00"
                       << "51 00 14 00 01 00 01 02";
    QTest::newRow("255") << 255 << "51 00 14 FF 01 00 00 00"
                         << "51 00 14 FF 01 00 01 02";
    QTest::newRow("300, cut on its way") << 300 << "51 00 14 2C 01 00 00 00"
                                         << "51 00 14 2C 01 00 01 02";
}

void TestTable20Read::subTableIsTheNumberGiven()
{
    QFETCH(const int, subTable);
    QFETCH(const QString, command);
    QFETCH(const QString, group);
    Bench bench;
    bench.device.answerTo(command, {kHead2});
    bench.device.answerTo(group, {kGroup2});
    int n = subTable;
    QCOMPARE(bench.session.readTableTLV(n), 0);
    QCOMPARE(n, 2);
    QCOMPARE(bench.device.commands().first(2), (QStringList{command, group}));
    QCOMPARE(bench.session.tlvTable.size(), 2U);
    for (const auto& record : std::as_const(bench.session.tlvTable))
        QCOMPARE(record["s"].asInt(), subTable);
}

void TestTable20Read::newReadReplacesTheOld()
{
    Bench bench;
    bench.session.tlvTable.append("old");
    QCOMPARE(bench.read(), 0);
    QCOMPARE(bench.session.tlvTable.size(), 5U);
    QCOMPARE(bench.read(), 0);
    QCOMPARE(bench.session.tlvTable.size(), 5U);
    bench.device.answerTo(kAskHead1, {{}, TableScript::kRefusal, 0});
    QCOMPARE(bench.read(), 0);
    QCOMPARE(bench.session.tlvTable.size(), 0U);
}

void TestTable20Read::progressIsHalfTheRow()
{
    Bench bench;
    bench.device.otherwise = [](const QString& command) {
        // Rows up to 5, each of no parameters.
        const int row = command.mid(12, 2).toInt(nullptr, 16);
        return row <= 5 ? Answer{"00 00 00 00 00 00 00 00 00 00 00 00 03 00 01 00 00"}
                        : Answer{{}, TableScript::kRefusal, 0};
    };
    int n = 1;
    QCOMPARE(bench.session.readTableTLV(n), 0);
    QCOMPARE(n, 6);
    QCOMPARE(bench.transfer.seen, (QStringList{"0", "1", "1", "2", "2", "end"}));
}

void TestTable20Read::badHeadEndsTheTable_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("codeAfterwards");
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("8 bytes") << "00 00 00 00 00 00 00 00" << 0;
    QTest::newRow("9 bytes") << "00 00 00 00 00 00 00 00 00" << 0;
    QTest::newRow("16 bytes") << "00 00 00 00 00 00 00 00 00 00 00 00 03 00 01 00" << 0;
    QTest::newRow("byte 1") << "00 01 00 00 00 00 00 00 00 00 00 00 03 00 01 00 02" << 0;
    QTest::newRow("byte 2") << "00 00 01 00 00 00 00 00 00 00 00 00 03 00 01 00 02" << 0;
    QTest::newRow("byte 3") << "00 00 00 01 00 00 00 00 00 00 00 00 03 00 01 00 02" << 0;
    QTest::newRow("tag") << "00 00 00 00 00 00 00 00 00 00 00 00 04 00 01 00 02" << 0;
    QTest::newRow("length") << "00 00 00 00 00 00 00 00 00 00 00 00 03 00 02 00 02" << 0;
    QTest::newRow("commas") << "00,00,00,00,00,00,00,00,00,00,00,00,03,00,01,00,02" << 0;
    QTest::newRow("code behind a good answer") << kHead2 << 5;
    QTest::newRow("negative code behind a good answer") << kHead2 << -5;
}

void TestTable20Read::badHeadEndsTheTable()
{
    QFETCH(const QString, text);
    QFETCH(const int, codeAfterwards);
    Bench bench;
    bench.device.answerTo(kAskHead2, {text, {}, codeAfterwards});
    QCOMPARE(bench.read(), 0);
    QCOMPARE(bench.stop, 2);
    QCOMPARE(shortForms(bench.session.tlvTable), (QStringList{kRecordHead1, kRecord1a, kRecord1b}));
    QCOMPARE(bench.device.commands(), (QStringList{kAskHead1, kAskGroup1a, kAskGroup1b, kAskHead2}));
    QCOMPARE(bench.transfer.seen, (QStringList{"0", "end"}));
}

void TestTable20Read::refusedFirstRowIsAnEmptyTable()
{
    Bench bench;
    bench.device.answerTo(kAskHead1, {kHead1, TableScript::kRefusal, 0});
    QCOMPARE(bench.read(), 0);
    QCOMPARE(bench.stop, 1);
    QCOMPARE(bench.session.tlvTable.size(), 0U);
    QCOMPARE(bench.device.commands(), QStringList{kAskHead1});
    QCOMPARE(bench.transfer.seen, QStringList{"end"});
}

void TestTable20Read::badGroupLosesTheRestOfItsRow_data()
{
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("codeAfterwards");
    for (const auto& [name, group, good] :
         {std::tuple("first", kAskGroup1a, kGroup1a), std::tuple("second", kAskGroup1b, kGroup1b)}) {
        QTest::addRow("%s refused", name) << group << good << -3 << 0;
        QTest::addRow("%s, code behind a good answer", name) << group << good << 0 << 7;
        QTest::addRow("%s empty", name) << group << "" << 0 << 0;
        QTest::addRow("%s, 8 bytes", name) << group << "00 00 01 03 00 00 00 00" << 0 << 0;
        QTest::addRow("%s, byte 1", name) << group << "00 01 01 03 00 00 00 00 00" << 0 << 0;
    }
}

void TestTable20Read::badGroupLosesTheRestOfItsRow()
{
    QFETCH(const QString, group);
    QFETCH(const QString, text);
    QFETCH(const int, code);
    QFETCH(const int, codeAfterwards);
    Bench bench;
    bench.device.answerTo(group, {text, {code == 0 ? 0 : -1, code}, codeAfterwards});
    QCOMPARE(bench.read(), 0);
    QCOMPARE(bench.stop, 3);
    const bool isFirst = group == kAskGroup1a;
    QStringList records{kRecordHead1, kRecord1a, kRecordHead2, kRecord2};
    QStringList commands{kAskHead1, kAskGroup1a, kAskGroup1b, kAskHead2, kAskGroup2, kAskHead3};
    if (isFirst) {
        records.removeOne(kRecord1a);
        commands.removeOne(kAskGroup1b);
    }
    QCOMPARE(shortForms(bench.session.tlvTable), records);
    QCOMPARE(bench.device.commands(), commands);
    QCOMPARE(bench.transfer.seen, (QStringList{"0", "1", "end"}));
}

void TestTable20Read::failureWithoutACodeIsNoFailure()
{
    Bench bench;
    for (const auto& [command, answer] :
         {std::pair(kAskHead1, kHead1), std::pair(kAskGroup1a, kGroup1a), std::pair(kAskGroup1b, kGroup1b)})
        bench.device.answerTo(command, {answer, {-1, 0}, 0});
    bench.device.answer("setCommandBuffer", {-1, 0});
    QCOMPARE(bench.read(), 0);
    QCOMPARE(bench.stop, 3);
    QCOMPARE(bench.session.tlvTable.size(), 5U);
}

void TestTable20Read::shortestGroupIsTaken()
{
    Bench bench;
    bench.device.answerTo(kAskGroup1b, {"FF 00 03 03 AA BB CC DD EE"});
    QCOMPARE(bench.read(), 0);
    QCOMPARE(shortForms(bench.session.tlvTable),
             (QStringList{kRecordHead1, kRecord1a, "20 2 1 3-3 0303AABBCCDDEE", kRecordHead2, kRecord2}));
}

void TestTable20Read::rowWithoutParamsIsAskedOnce()
{
    Bench bench;
    QString head = kHead1;
    head.replace("01 00 03 04", "01 00 00 04");
    bench.device.answerTo(kAskHead1, {head});
    bench.device.answerTo("51 00 14 02 01 00 01 00", {"00 00 01 00 00 00 00 00 00"});
    QCOMPARE(bench.read(), 0);
    QCOMPARE(bench.device.commands(),
             (QStringList{kAskHead1, "51 00 14 02 01 00 01 00", kAskHead2, kAskGroup2, kAskHead3}));
    QCOMPARE(shortForms(bench.session.tlvTable).mid(1),
             (QStringList{"20 2 1 1-0 01000000000000", kRecordHead2, kRecord2}));
}

void TestTable20Read::oddAnswersAreKeptAsTheyAre()
{
    Bench bench;
    // Lower case, other parameters than asked for, and a blank that counts as a byte.
    bench.device.answerTo(kAskGroup1a, {"00 00 09 ff 0a 1b 00 xx 00 "});
    QCOMPARE(bench.read(), 0);
    QCOMPARE(shortForms(bench.session.tlvTable),
             (QStringList{kRecordHead1, "20 2 1 9-255 09FF0A1B00000000", kRecordHead2, kRecord2}));
}

void TestTable20Read::rowThatDoesNotAdvanceIsLeft_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QStringList>("asked");
    QTest::newRow("ends at 0") << "00 00 01 00 00 00 00 00 00"
                               << QStringList{"51 00 14 02 01 00 01 03", "51 00 14 02 01 00 01 03"};
    QTest::newRow("ends at 1") << "00 00 01 01 00 00 00 00 00"
                               << QStringList{"51 00 14 02 01 00 01 03", "51 00 14 02 01 00 02 03"};
    QTest::newRow("ends at 2") << "00 00 03 02 00 00 00 00 00"
                               << QStringList{"51 00 14 02 01 00 01 03", "51 00 14 02 01 00 03 03"};
}

void TestTable20Read::rowThatDoesNotAdvanceIsLeft()
{
    QFETCH(const QString, answer);
    QFETCH(const QStringList, asked);
    Bench bench;
    for (const QString& command : asked)
        bench.device.answerTo(command, {answer});
    QCOMPARE(bench.read(), 0);
    QCOMPARE(bench.stop, 3);
    // The same request follows again, but not for ever, and the next row is read as any other.
    QStringList commands = {kAskHead1, asked.first()};
    commands += QStringList(255, asked.last());
    commands += {kAskHead2, kAskGroup2, kAskHead3};
    QCOMPARE(bench.device.commands(), commands);
    QCOMPARE(bench.session.tlvTable.size(), 1U + 256U + 2U);
    QCOMPARE(shortForms(bench.session.tlvTable).mid(257), (QStringList{kRecordHead2, kRecord2}));
    QCOMPARE(bench.transfer.seen, (QStringList{"0", "1", "end"}));
}

void TestTable20Read::rowOfManyGroupsIsReadWhole()
{
    Bench bench;
    QString head = kHead1;
    head.replace("01 00 03 04", "01 00 FF 04");
    bench.device.answerTo(kAskHead1, {head});
    bench.device.otherwise = [](const QString& command) {
        if (!command.startsWith(u"51 00 14 02 01 00 ") || !command.endsWith(u" FF"))
            return Answer{{}, TableScript::kRefusal, 0};
        const QString param = command.mid(18, 2);
        return Answer{"00 00 " + param + u' ' + param + " 00 00 00 00 00"};
    };
    QCOMPARE(bench.read(), 0);
    QCOMPARE(bench.stop, 3);
    QCOMPARE(bench.session.tlvTable.size(), 1U + 255U + 2U);
    for (int param = 1; param <= 255; ++param) {
        const Json::Value& record = bench.session.tlvTable[param];
        QCOMPARE(record["p1"].asInt(), param);
        QCOMPARE(record["p2"].asInt(), param);
    }
    QCOMPARE(bench.device.commands().at(255), "51 00 14 02 01 00 FF FF");
}

void TestTable20Read::tableWithoutAnEndIsLeftAtTheLastRow()
{
    EndlessTable device;
    clKRD9IO session;
    takeDriver(session, device);
    TransferSignals transfer(session);
    int n = 1;
    QCOMPARE(session.readTableTLV(n), 0);
    QCOMPARE(n, 65280);
    QCOMPARE(device.exchanges, 2 * 65280);
    QCOMPARE(session.tlvTable.size(), 2U * 65280U);
    QCOMPARE(session.tlvTable[2 * 65280 - 1]["r"].asInt(), 65280);
    QCOMPARE(transfer.seen.size(), 65281);
    QCOMPARE(transfer.seen.mid(65278), (QStringList{"32639", "32640", "end"}));
}

void TestTable20Read::tableThatFillsTheMemoryIsLeft_data()
{
    QTest::addColumn<Json::ArrayIndex>("before");
    QTest::addColumn<int>("stop");
    QTest::addColumn<Json::ArrayIndex>("size");
    // Each row adds two records; a row that was begun is read whole.
    QTest::newRow("last row fits") << 1048572U << 4 << 1048576U;
    QTest::newRow("last row stands out") << 1048573U << 4 << 1048577U;
    QTest::newRow("one record is missing") << 1048575U << 3 << 1048577U;
}

void TestTable20Read::tableThatFillsTheMemoryIsLeft()
{
    QFETCH(const Json::ArrayIndex, before);
    QFETCH(const int, stop);
    clKRD9IO session;
    GrowingTable device(session, before);
    takeDriver(session, device);
    const TransferSignals transfer(session);
    int n = 1;
    QCOMPARE(session.readTableTLV(n), 0);
    QCOMPARE(n, stop);
    QCOMPARE(device.exchanges, 2 * (stop - 1));
    QTEST(session.tlvTable.size(), "size");
    QCOMPARE(transfer.seen, (QStringList{"0", "1", "1"}.first(stop - 1) + QStringList{"end"}));
}

void TestTable20Read::lostExchangeEndsTheReading_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("n");
    QTest::addColumn<int>("records");
    QTest::addColumn<int>("stop");
    QTest::newRow("first head") << kAskHead1 << "execCommandBuffer" << 1 << 0 << 1;
    QTest::newRow("first group") << kAskGroup1a << "execCommandBuffer" << 2 << 1 << 1;
    QTest::newRow("second group") << kAskGroup1b << "execCommandBuffer" << 3 << 2 << 1;
    QTest::newRow("second head") << kAskHead2 << "execCommandBuffer" << 4 << 3 << 2;
    QTest::newRow("group of the second row") << kAskGroup2 << "execCommandBuffer" << 5 << 4 << 2;
    QTest::newRow("command not taken") << kAskHead2 << "setCommandBuffer" << 4 << 3 << 2;
}

void TestTable20Read::lostExchangeEndsTheReading()
{
    QFETCH(const QString, command);
    QFETCH(const QString, operation);
    QFETCH(const int, n);
    QFETCH(const int, records);
    QFETCH(const int, stop);
    Bench bench;
    bench.device.answerCall(operation, n, {-1, -6});
    QCOMPARE(bench.read(), 255);
    QCOMPARE(bench.stop, stop);
    QCOMPARE(bench.device.commands().constLast(), command);
    QCOMPARE(shortForms(bench.session.tlvTable),
             QStringList({kRecordHead1, kRecord1a, kRecord1b, kRecordHead2, kRecord2}).first(records));
    QCOMPARE(bench.transfer.seen, stop == 1 ? QStringList{"end"} : (QStringList{"0", "end"}));

    // The next reading finds everything as ever.
    bench.device.dropOutcomes();
    bench.device.forgetCalls();
    QCOMPARE(bench.read(), 0);
    QCOMPARE(bench.session.tlvTable.size(), 5U);
}

void TestTable20Read::missingDriverIsAFailure()
{
    {
        clKRD9IO session;
        session.tlvTable.append("old");
        TransferSignals transfer(session);
        int n = 7;
        QCOMPARE(session.readTableTLV(n), 255);
        QCOMPARE(n, 1);
        QCOMPARE(session.tlvTable.size(), 0U);
        QCOMPARE(transfer.seen, QStringList{"end"});
    }
    clKRD9IO session;
    session.fpaxWrapper.reset(new QLumFpax);
    TransferSignals transfer(session);
    int n = 7;
    QCOMPARE(session.readTableTLV(n), 255);
    QCOMPARE(n, 1);
    QCOMPARE(transfer.seen, QStringList{"end"});
}

void TestTable20Read::exceptionOfTheDriverEndsTheReading_data()
{
    QTest::addColumn<QString>("operation");
    for (const char* operation :
         {"setCommandBuffer", "execCommandBuffer", "getAnswerBuffer", "getResultCode"})
        QTest::newRow(operation) << operation;
}

void TestTable20Read::exceptionOfTheDriverEndsTheReading()
{
    QFETCH(const QString, operation);
    for (const bool isStandard : {true, false}) {
        Bench bench;
        // The session asks for the second row with the fourth command.
        bench.device.onCall(operation, [&bench, isStandard] {
            if (bench.device.count("setCommandBuffer") < 4)
                return;
            throwOut(isStandard);
        });
        QCOMPARE(bench.read(), 255);
        QCOMPARE(bench.stop, 2);
        QCOMPARE(shortForms(bench.session.tlvTable), (QStringList{kRecordHead1, kRecord1a, kRecord1b}));
        QCOMPARE(bench.transfer.seen, (QStringList{"0", "end"}));
    }
}

QTEST_GUILESS_MAIN(TestTable20Read)

#include "tst_table20_read.moc"
