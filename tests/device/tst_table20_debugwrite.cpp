#include "device/qlumfpax.h"
#include "device/tablescript.h"
#include "device/templaterecords.h"
#include "support/session.h"

#include <QTest>

#include <json/json.h>

#include <memory>
#include <stdexcept>

namespace {

/// A record of the template table; its bytes need not fit its parameters.
Json::Value record(int subTable, int row, int first, int last, const char* v)
{
    Json::Value value(Json::objectValue);
    value["t"] = 20;
    value["s"] = subTable;
    value["r"] = row;
    value["p1"] = first;
    value["p2"] = last;
    value["v"] = v;
    return value;
}

} // namespace

/// The debug writing of the template table with its log.
class TestTable20DebugWrite : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void goodWriteHasTwoLines_data();
    void goodWriteHasTwoLines();
    void commandIsSentAsLogged();
    void refusedWriteHasThreeLines();
    void lostExchangeIsTold();
    void missingDriverIsToldForEachRecord();
    void exceptionOfTheDriverEndsTheWriting();
    void headsAndStrangeElementsAreSkipped();

private:
    /// What the debug writing of `records` to `device` logs.
    QStringList written(TableScript& device, const QList<Json::Value>& records)
    {
        QLumFpax fpax(&device);
        Json::Value list = listOf(records);
        QStringList log{"old"};
        m_session->probe.writeRecords(fpax, list, log);
        return log;
    }

    std::unique_ptr<Session> m_session;
};

void TestTable20DebugWrite::initTestCase()
{
    m_session = std::make_unique<Session>();
}

void TestTable20DebugWrite::cleanupTestCase()
{
    m_session.reset();
}

void TestTable20DebugWrite::goodWriteHasTwoLines_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QString>("end");
    QTest::newRow("four bytes") << "51 00 AA 07"
                                << "OK res=0 answer=4 [81,0,170]";
    QTest::newRow("three bytes") << "FF FE 00"
                                 << "OK res=0 answer=3 [255,254,0]";
    QTest::newRow("two bytes") << "51 00"
                               << "OK res=0 answer=2 [45,45,45]";
    QTest::newRow("two bytes and a blank") << "51 00 "
                                           << "OK res=0 answer=3 [81,0,0]";
    QTest::newRow("one byte") << "51"
                              << "OK res=0 answer=1 [45,45,45]";
    QTest::newRow("no answer") << ""
                               << "OK res=0 answer=1 [45,45,45]";
}

void TestTable20DebugWrite::goodWriteHasTwoLines()
{
    QFETCH(const QString, answer);
    QFETCH(const QString, end);
    TableScript device;
    device.answerTo("51 01 14 02 00 00 01 06 AB", {answer});
    QCOMPARE(written(device, {record(2, 7, 1, 6, "0106AB")}),
             (QStringList{"Запись Т20С2Р7(1-6) = 5101140200000106AB", "Запись Т20С2Р7(1-6) = " + end}));
    QCOMPARE(device.operations(),
             (QStringList{"setCommandBuffer", "execCommandBuffer", "getAnswerBuffer", "getResultCode"}));
}

void TestTable20DebugWrite::commandIsSentAsLogged()
{
    TableScript device;
    device.answerTo("51 01 14 0A 00 00 AB 0C", {"51 00 01"});
    // The text becomes upper-case on its way to the device.
    QCOMPARE(written(device, {record(10, -1, 300, 19, "ab0c")}),
             (QStringList{"Запись Т20С10Р-1(300-19) = 5101140a0000ab0c",
                          "Запись Т20С10Р-1(300-19) = OK res=0 answer=3 [81,0,1]"}));
    QCOMPARE(device.commands(), QStringList{"51 01 14 0A 00 00 AB 0C"});
}

void TestTable20DebugWrite::refusedWriteHasThreeLines()
{
    TableScript device;
    device.answerTo("51 01 14 02 00 00 01", {"51 07 08 09", {-1, -3}, 0});
    device.answerTo("51 01 14 02 00 00 02", {"", {-1, -3}, 0});
    device.answerTo("51 01 14 02 00 00 03", {"51 00 01", {}, 12});
    device.answerTo("51 01 14 02 00 00 04", {"51 00 01", {-1, 0}, 0});
    QCOMPARE(
        written(device, {record(2, 1, 1, 6, "01"), record(2, 1, 7, 12, "02"), record(2, 2, 1, 6, "03"),
                         record(2, 3, 1, 6, "04")}),
        (QStringList{
            "Запись Т20С2Р1(1-6) = 51011402000001", "Write row 1 error, ResultCode=-3 answer.size=4 [81,7,8]",
            "Запись Т20С2Р1(1-6) = OK res=-3 answer=4 [81,7,8]", "Запись Т20С2Р1(7-12) = 51011402000002",
            "Write row 1 error, ResultCode=-3 answer.size=1 [45,45,45]",
            "Запись Т20С2Р1(7-12) = OK res=-3 answer=1 [45,45,45]", "Запись Т20С2Р2(1-6) = 51011402000003",
            "Write row 2 error, ResultCode=12 answer.size=3 [81,0,1]",
            "Запись Т20С2Р2(1-6) = OK res=12 answer=3 [81,0,1]", "Запись Т20С2Р3(1-6) = 51011402000004",
            "Запись Т20С2Р3(1-6) = OK res=0 answer=3 [81,0,1]"}));
}

void TestTable20DebugWrite::lostExchangeIsTold()
{
    TableScript device;
    device.setText("getResultDescription", "Нет связи %1");
    device.answerTo("51 01 14 02 00 00 01", {"", {-1, -6}, 0});
    device.answerTo("51 01 14 02 00 00 02", {"51 00 01"});
    QCOMPARE(written(device, {record(2, 1, 1, 6, "01"), record(2, 2, 1, 6, "02")}),
             (QStringList{"Запись Т20С2Р1(1-6) = 51011402000001", "Ошибка записи - [-6] Нет связи %1",
                          "Запись Т20С2Р2(1-6) = 51011402000002",
                          "Запись Т20С2Р2(1-6) = OK res=0 answer=3 [81,0,1]"}));

    // So is a command that the driver does not take.
    device.dropOutcomes();
    device.forgetCalls();
    device.answerCall("setCommandBuffer", 1, {-1, -8});
    QCOMPARE(written(device, {record(2, 3, 1, 6, "02")}),
             (QStringList{"Запись Т20С2Р3(1-6) = 51011402000002", "Ошибка записи - [-8] Нет связи %1"}));
    QCOMPARE(device.count("execCommandBuffer"), 0);
}

void TestTable20DebugWrite::missingDriverIsToldForEachRecord()
{
    QLumFpax fpax;
    Json::Value list = listOf({record(2, 1, 1, 6, "01"), record(2, 2, 1, 6, "02")});
    QStringList log;
    m_session->probe.writeRecords(fpax, list, log);
    QCOMPARE(log, (QStringList{
                      "Запись Т20С2Р1(1-6) = 51011402000001", "Ошибка записи - Несуществующее устройство",
                      "Запись Т20С2Р2(1-6) = 51011402000002", "Ошибка записи - Несуществующее устройство"}));
}

void TestTable20DebugWrite::exceptionOfTheDriverEndsTheWriting()
{
    TableScript device;
    device.otherwise = [](const QString&) { return TableScript::Answer{"51 00 01"}; };
    const QList<Json::Value> records{record(2, 1, 1, 6, "01"), record(2, 2, 1, 6, "02"),
                                     record(2, 3, 1, 6, "03")};
    const QStringList logged{"Запись Т20С2Р1(1-6) = 51011402000001",
                             "Запись Т20С2Р1(1-6) = OK res=0 answer=3 [81,0,1]",
                             "Запись Т20С2Р2(1-6) = 51011402000002"};
    device.onCall("getAnswerBuffer", [&device] {
        if (device.count("getAnswerBuffer") == 2)
            throw std::runtime_error("сломан %1");
    });
    QCOMPARE(written(device, records), logged + QStringList{"Ошибка драйвера ККТ - сломан %1"});

    // So does one of its own, which says nothing.
    device.forgetCalls();
    device.onCall("getAnswerBuffer", [&device] {
        if (device.count("getAnswerBuffer") == 2)
            throw 42;
    });
    QCOMPARE(written(device, records), logged + QStringList{"Ошибка драйвера ККТ - "});
    QCOMPARE(device.commands(), (QStringList{"51 01 14 02 00 00 01", "51 01 14 02 00 00 02"}));
}

void TestTable20DebugWrite::headsAndStrangeElementsAreSkipped()
{
    TableScript device;
    Json::Value wrongRow = record(2, 1, 1, 6, "01");
    wrongRow["r"] = "1";
    QCOMPARE(written(device, {record(2, 1, 0, 0, "01"), record(2, 1, 0, 6, "01"), wrongRow, 5, "text",
                              Json::Value(), Json::Value(Json::arrayValue)}),
             QStringList());
    QCOMPARE(written(device, {}), QStringList());
    QCOMPARE(device.calls(), QStringList());
}

QTEST_MAIN(TestTable20DebugWrite)

#include "tst_table20_debugwrite.moc"
