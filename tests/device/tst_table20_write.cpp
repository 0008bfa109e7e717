#include "device/tablescript.h"
#include "support/jsontext.h"
#include "support/takedriver.h"

#include <QTest>

namespace {

/// A session before a device that takes every command.
struct Bench
{
    Bench()
        : transfer(session)
    {
        takeDriver(session, device);
        device.otherwise = [](const QString&) { return TableScript::Answer{"51 00"}; };
    }

    /// Writes the records of a JSON text.
    int write(const QByteArray& text)
    {
        Json::Value rows = jsonOf(text);
        return session.writeTableTLV(rows);
    }

    TableScript device;
    clKRD9IO session;
    TransferSignals transfer;
};

/// A record of row `row` with the bytes "0106".
QByteArray recordOfRow(const QByteArray& row)
{
    return R"({"t": 20, "s": 2, "r": )" + row + R"(, "p1": 1, "p2": 6, "v": "0106"})";
}

QByteArray listOf(const QList<QByteArray>& records)
{
    return "[" + records.join(", ") + "]";
}

QByteArray rows(const QList<QByteArray>& numbers)
{
    QList<QByteArray> records;
    for (const auto& number : numbers)
        records.append(recordOfRow(number));
    return listOf(records);
}

const QString kSent = QStringLiteral("51 01 14 02 00 00 01 06");
const QByteArray kHeadRecord = R"({"t": 20, "s": 2, "r": 9, "p1": 0, "p2": 0, "v": "0000A1"})";

} // namespace

/// Writing of a template table: the commands, the progress, and records that cannot be written.
class TestTable20Write : public QObject
{
    Q_OBJECT

private slots:
    void recordIsOneCommand();
    void commandIsMadeOfTheRecord_data();
    void commandIsMadeOfTheRecord();
    void headsAreSkipped();
    void listOfHeadsSendsNothing();
    void emptyListSendsNothing_data();
    void emptyListSendsNothing();
    void progressFollowsTheRows_data();
    void progressFollowsTheRows();

    void refusedRecordIsLostAlone_data();
    void refusedRecordIsLostAlone();
    void lostDeviceDoesNotStopTheWriting();
    void missingDriverDoesNotStopTheWriting();
    void exceptionOfTheDriverEndsTheWriting_data();
    void exceptionOfTheDriverEndsTheWriting();
    void elementsThatAreNoRecordsAreSkipped();
    void missingMembersCountAsZero();

    void tableThatWasReadIsWrittenBack();
    void listStaysAsItIs();
};

void TestTable20Write::recordIsOneCommand()
{
    Bench bench;
    QCOMPARE(bench.write(R"([{"t": 20, "s": 2, "r": 1, "p1": 19, "p2": 19,
                              "v": "131300000E0013000A00010001000802000100AB"}])"),
             0);
    QCOMPARE(bench.device.calls(),
             (QStringList{"setCommandBuffer(\"51 01 14 02 00 00 13 13 00 00 0E 00 "
                          "13 00 0A 00 01 00 01 00 08 02 00 01 00 AB \")",
                          "execCommandBuffer()", "getAnswerBuffer(4096)", "getResultCode()"}));
    QCOMPARE(bench.transfer.seen, (QStringList{"100", "end"}));
}

void TestTable20Write::commandIsMadeOfTheRecord_data()
{
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<QString>("command");
    const auto row = [](const char* name, const char* record, const char* command) {
        QTest::newRow(name) << QByteArray(record) << QString(command);
    };
    row("first template", R"({"t": 20, "s": 1, "r": 1, "p1": 1, "p2": 6, "v": "0106"})",
        "51 01 14 01 00 00 01 06");
    row("lower case", R"({"t": 20, "s": 10, "r": 1, "p1": 1, "p2": 6, "v": "abcd0f"})",
        "51 01 14 0A 00 00 AB CD 0F");
    row("another table", R"({"t": 5, "s": 255, "r": 1, "p1": 1, "p2": 6, "v": "FF"})",
        "51 01 05 FF 00 00 FF");
    row("row stays out of the start", R"({"t": 20, "s": 1, "r": 258, "p1": 1, "p2": 6, "v": "01"})",
        "51 01 14 01 00 00 01");
    row("params stay out of it", R"({"t": 20, "s": 1, "r": 1, "p1": 200, "p2": 300, "v": "01"})",
        "51 01 14 01 00 00 01");
    row("no bytes", R"({"t": 20, "s": 1, "r": 1, "p1": 1, "p2": 6, "v": ""})", "51 01 14 01 00 00");
    // The last pair takes the zero that ends the text.
    row("odd digits", R"({"t": 20, "s": 1, "r": 1, "p1": 1, "p2": 6, "v": "ABC"})", "51 01 14 01 00 00 AB C");
    row("no digits", R"({"t": 20, "s": 1, "r": 1, "p1": 1, "p2": 6, "v": "%1-x"})",
        "51 01 14 01 00 00 %1 -X");
}

void TestTable20Write::commandIsMadeOfTheRecord()
{
    QFETCH(const QByteArray, record);
    QFETCH(const QString, command);
    Bench bench;
    QCOMPARE(bench.write(listOf({record})), 0);
    QCOMPARE(bench.device.commands(), QStringList{command});
}

void TestTable20Write::headsAreSkipped()
{
    Bench bench;
    QCOMPARE(bench.write(listOf({kHeadRecord, recordOfRow("1"), kHeadRecord, recordOfRow("2"),
                                 R"({"t": 20, "s": 2, "r": 3, "p1": 0, "p2": 6, "v": "0006"})"})),
             0);
    QCOMPARE(bench.device.commands(), (QStringList{kSent, kSent}));
    // A head counts for the highest row all the same.
    QCOMPARE(bench.transfer.seen, (QStringList{"11", "22", "end"}));
}

void TestTable20Write::listOfHeadsSendsNothing()
{
    Bench bench;
    QCOMPARE(bench.write(listOf({kHeadRecord, kHeadRecord})), 0);
    QCOMPARE(bench.device.calls(), QStringList());
    QCOMPARE(bench.transfer.seen, QStringList{"end"});
}

void TestTable20Write::emptyListSendsNothing_data()
{
    QTest::addColumn<QByteArray>("text");
    for (const char* text : {"[]", "{}", "null", "5", "\"text\"", "true", "1.5"})
        QTest::newRow(text) << QByteArray(text);
}

void TestTable20Write::emptyListSendsNothing()
{
    QFETCH(const QByteArray, text);
    Bench bench;
    QCOMPARE(bench.write(text), 0);
    QCOMPARE(bench.device.calls(), QStringList());
    QCOMPARE(bench.transfer.seen, QStringList{"end"});
}

void TestTable20Write::progressFollowsTheRows_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("seen");
    QTest::newRow("three rows") << rows({"1", "2", "3"}) << QStringList{"33", "66", "100", "end"};
    QTest::newRow("records of one row")
        << rows({"1", "1", "2", "2"}) << QStringList{"50", "50", "100", "100", "end"};
    QTest::newRow("any order") << rows({"160", "1", "80"}) << QStringList{"100", "0", "50", "end"};
    QTest::newRow("highest that counts") << rows({"300", "150"}) << QStringList{"100", "50", "end"};
    QTest::newRow("301 stays where it was")
        << rows({"301", "5", "301", "10"}) << QStringList{"0", "50", "50", "100", "end"};
    QTest::newRow("negative stays where it was")
        << rows({"-1", "1", "-1", "2"}) << QStringList{"0", "50", "50", "100", "end"};
    QTest::newRow("0 counts") << rows({"2", "0", "1"}) << QStringList{"100", "0", "50", "end"};
    QTest::newRow("0 alone") << rows({"0", "0"}) << QStringList{"0", "0", "end"};
    QTest::newRow("301 alone") << rows({"301"}) << QStringList{"0", "end"};
    QTest::newRow("highest number") << rows({"2147483647", "-2147483648", "3"})
                                    << QStringList{"0", "0", "100", "end"};
}

void TestTable20Write::progressFollowsTheRows()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QStringList, seen);
    Bench bench;
    QCOMPARE(bench.write(text), 0);
    QCOMPARE(bench.transfer.seen, seen);
    // Whatever its row, each record is sent.
    QCOMPARE(bench.device.commands(), QStringList(seen.size() - 1, kSent));
}

void TestTable20Write::refusedRecordIsLostAlone_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("code");
    QTest::newRow("refused") << "execCommandBuffer" << -1 << -3;
    QTest::newRow("refused without a code") << "execCommandBuffer" << -1 << 0;
    QTest::newRow("no exchange") << "execCommandBuffer" << -1 << -6;
    QTest::newRow("not taken") << "setCommandBuffer" << -1 << -4;
}

void TestTable20Write::refusedRecordIsLostAlone()
{
    QFETCH(const QString, operation);
    QFETCH(const int, status);
    QFETCH(const int, code);
    Bench bench;
    bench.device.answerCall(operation, 2, {status, code});
    QCOMPARE(bench.write(rows({"1", "2", "3"})), 0);
    QCOMPARE(bench.device.commands(), (QStringList{kSent, kSent, kSent}));
    QCOMPARE(bench.device.count("execCommandBuffer"), operation == "setCommandBuffer" ? 2 : 3);
    QCOMPARE(bench.transfer.seen, (QStringList{"33", "66", "100", "end"}));
}

void TestTable20Write::lostDeviceDoesNotStopTheWriting()
{
    Bench bench;
    bench.device.otherwise = [](const QString&) { return TableScript::Answer{{}, {-1, -6}, 0}; };
    QCOMPARE(bench.write(rows({"1", "2", "3", "4"})), 0);
    QCOMPARE(bench.device.commands(), QStringList(4, kSent));
    QCOMPARE(bench.transfer.seen, (QStringList{"25", "50", "75", "100", "end"}));
}

void TestTable20Write::missingDriverDoesNotStopTheWriting()
{
    for (const bool hasWrapper : {false, true}) {
        clKRD9IO session;
        if (hasWrapper)
            session.fpaxWrapper.reset(new QLumFpax);
        TransferSignals transfer(session);
        Json::Value list = jsonOf(rows({"1", "2"}));
        QCOMPARE(session.writeTableTLV(list), 0);
        QCOMPARE(transfer.seen, (QStringList{"50", "100", "end"}));
    }
}

void TestTable20Write::exceptionOfTheDriverEndsTheWriting_data()
{
    QTest::addColumn<QString>("operation");
    for (const char* operation :
         {"setCommandBuffer", "execCommandBuffer", "getAnswerBuffer", "getResultCode"})
        QTest::newRow(operation) << operation;
}

void TestTable20Write::exceptionOfTheDriverEndsTheWriting()
{
    QFETCH(const QString, operation);
    for (const bool isStandard : {true, false}) {
        Bench bench;
        bench.device.onCall(operation, [&bench, operation, isStandard] {
            if (bench.device.count(operation) < 2)
                return;
            throwOut(isStandard);
        });
        QCOMPARE(bench.write(rows({"1", "2", "3"})), 255);
        QCOMPARE(bench.device.commands(), (QStringList{kSent, kSent}));
        QCOMPARE(bench.transfer.seen, (QStringList{"33", "end"}));
    }
}

void TestTable20Write::elementsThatAreNoRecordsAreSkipped()
{
    Bench bench;
    QCOMPARE(bench.write(listOf({"5",
                                 "\"0106\"",
                                 "null",
                                 "true",
                                 "[]",
                                 "[" + recordOfRow("200") + "]",
                                 recordOfRow("1"),
                                 recordOfRow("\"290\""),
                                 recordOfRow("[290]"),
                                 recordOfRow("{}"),
                                 recordOfRow("5000000000"),
                                 R"({"t": "20", "s": 2, "r": 290, "p1": 1, "p2": 6, "v": "01"})",
                                 R"({"t": 20, "s": [2], "r": 290, "p1": 1, "p2": 6, "v": "01"})",
                                 R"({"t": 20, "s": 2, "r": 290, "p1": "1", "p2": 6, "v": "01"})",
                                 R"({"t": 20, "s": 2, "r": 290, "p1": 1, "p2": {}, "v": "01"})",
                                 R"({"t": 20, "s": 2, "r": 290, "p1": 1, "p2": 6, "v": ["01"]})",
                                 R"({"t": 20, "s": 2, "r": 290, "p1": 1, "p2": 6, "v": {}})",
                                 recordOfRow("true"),
                                 recordOfRow("290.5"),
                                 R"({"t": 20.5, "s": 2, "r": 290, "p1": 1, "p2": 6, "v": "01"})",
                                 R"({"t": 20, "s": true, "r": 290, "p1": 1, "p2": 6, "v": "01"})",
                                 R"({"t": 20, "s": 2.5, "r": 290, "p1": 1, "p2": 6, "v": "01"})",
                                 R"({"t": 20, "s": 2, "r": 290, "p1": true, "p2": 6, "v": "01"})",
                                 R"({"t": 20, "s": 2, "r": 290, "p1": 1.5, "p2": 6, "v": "01"})",
                                 R"({"t": 20, "s": 2, "r": 290, "p1": 1, "p2": true, "v": "01"})",
                                 R"({"t": 20, "s": 2, "r": 290, "p1": 1, "p2": 6, "v": 1})",
                                 R"({"t": 20, "s": 2, "r": 290, "p1": 1, "p2": 6, "v": true})",
                                 recordOfRow("2")})),
             0);
    // Neither commands nor signals, and their rows do not count.
    QCOMPARE(bench.device.commands(), (QStringList{kSent, kSent}));
    QCOMPARE(bench.transfer.seen, (QStringList{"50", "100", "end"}));
}

void TestTable20Write::missingMembersCountAsZero()
{
    Bench bench;
    QCOMPARE(bench.write(R"([{}, {"p1": 1}, {"t": 20, "s": 2, "r": 1, "p2": 6, "v": "0106"}])"), 0);
    QCOMPARE(bench.device.commands(), QStringList{"51 01 00 00 00 00"});
    QCOMPARE(bench.transfer.seen, (QStringList{"0", "end"}));

    // So do those that are null.
    bench.device.forgetCalls();
    QCOMPARE(bench.write(R"([{"t": 20, "s": null, "r": null, "p1": 1, "p2": null, "v": null}])"), 0);
    QCOMPARE(bench.device.commands(), QStringList{"51 01 14 00 00 00"});
}

void TestTable20Write::tableThatWasReadIsWrittenBack()
{
    Bench bench;
    fillTwoRows(bench.device);
    bench.device.otherwise = [](const QString&) { return TableScript::Answer{{}, TableScript::kRefusal, 0}; };
    int n = 2;
    QCOMPARE(bench.session.readTableTLV(n), 0);
    bench.device.forgetCalls();
    bench.transfer.seen.clear();

    Json::Value list = bench.session.tlvTable;
    QCOMPARE(bench.session.writeTableTLV(list), 0);
    // The answers of the device from their third byte on.
    const QString start = QStringLiteral("51 01 14 02 00 00 ");
    QCOMPARE(bench.device.commands(),
             (QStringList{start + kGroup1a.mid(6), start + kGroup1b.mid(6), start + kGroup2.mid(6)}));
    QCOMPARE(bench.transfer.seen, (QStringList{"50", "50", "100", "end"}));
}

void TestTable20Write::listStaysAsItIs()
{
    Bench bench;
    Json::Value list = jsonOf(listOf({kHeadRecord, recordOfRow("1"), "5", "{}"}));
    const Json::Value before = list;
    QCOMPARE(bench.session.writeTableTLV(list), 0);
    QVERIFY(list == before);
    QVERIFY(bench.session.tlvTable.isNull());
}

QTEST_GUILESS_MAIN(TestTable20Write)

#include "tst_table20_write.moc"
