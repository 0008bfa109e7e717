#include "device/emulatedsession.h"
#include "threads/transferwatch.h"

#include <QSet>
#include <QTest>

#include <algorithm>
#include <vector>

namespace {

constexpr int kRows = 160;
constexpr int kTemplate = 1;
constexpr int kOtherTemplate = 2;

/// Under ThreadSanitizer the pool is left out: the library that it belongs to hides from the detector how a task
/// begins and ends, and every access on both sides would look like a race.
const std::vector<std::pair<const char*, Worker>> kWorkers = {
#ifndef RACE_DETECTOR
    {"thread of the pool", Worker::Pool},
#endif
    {"standard thread", Worker::Thread},
};

/// A call of the driver as the emulator has noted it.
struct TracedCall
{
    QString operation;
    QString thread;
    qint64 begin = 0;
    qint64 end = 0;
};

/// The calls since the last look, by the time of their begin.
std::vector<TracedCall> takeTracedCalls(EmulatedDevice& device)
{
    std::vector<TracedCall> calls;
    for (const QJsonValue value : device.takeTrace())
        calls.push_back({value["op"].toString(), value["thread"].toString(), value["begin"].toInteger(),
                         value["end"].toInteger()});
    std::stable_sort(calls.begin(), calls.end(),
                     [](const TracedCall& a, const TracedCall& b) { return a.begin < b.begin; });
    return calls;
}

/// Two calls that overlap; empty if there are none.
QString firstOverlap(const std::vector<TracedCall>& calls)
{
    for (std::size_t i = 1; i < calls.size(); ++i) {
        if (calls[i].begin < calls[i - 1].end)
            return calls[i - 1].operation + u' ' + calls[i].operation;
    }
    return {};
}

QSet<QString> threadsOf(const std::vector<TracedCall>& calls)
{
    QSet<QString> threads;
    for (const TracedCall& call : calls)
        threads.insert(call.thread);
    return threads;
}

/// The parameters of a template as the device has them: for each row its digits.
QStringList deviceParams(EmulatedDevice& device, int number)
{
    QStringList rows;
    const QJsonValue table = device.state().value("table20")[QString::number(number)];
    for (const auto& row : table["params"].toArray())
        rows.append(row.toString().toUpper());
    return rows;
}

/// The same out of the records that were read.
QStringList recordParams(const Json::Value& records)
{
    QStringList rows;
    for (const auto& record : records) {
        const int first = record["p1"].asInt();
        const int last = record["p2"].asInt();
        if (first == 0) {
            rows.append(QString());
            continue;
        }
        const QString v = QString::fromStdString(record["v"].asString());
        for (int i = 0; i <= last - first; ++i)
            rows.last() += v.mid(12 + 28 * i + 26, 2);
    }
    return rows;
}

/// The records as those of another template.
Json::Value movedTo(const Json::Value& records, int number)
{
    Json::Value moved = records;
    for (auto& record : moved)
        record["s"] = number;
    return moved;
}

QList<int> progressOfReading()
{
    QList<int> values;
    for (int row = 1; row <= kRows; ++row)
        values.append(row / 2);
    return values;
}

/// A value for each record but the heads.
QList<int> progressOfWriting(const Json::Value& records)
{
    QList<int> values;
    for (const auto& record : records) {
        if (record["p1"].asInt() != 0)
            values.append(record["r"].asInt() * 100 / kRows);
    }
    return values;
}

} // namespace

/// The transfers of the template table on a worker thread, while the main thread takes the signals in its event loop.
class TestTransfersThreads : public QObject
{
    Q_OBJECT

private slots:
    void readingTellsEachRowToTheMainThread_data() { workers(); }
    void readingTellsEachRowToTheMainThread();
    void writingTellsEachRecordToTheMainThread_data() { workers(); }
    void writingTellsEachRecordToTheMainThread();
    void signalsArriveWhileTheDeviceWorks_data() { workers(); }
    void signalsArriveWhileTheDeviceWorks();
    void driverIsCalledByOneThreadAtATime_data() { workers(); }
    void driverIsCalledByOneThreadAtATime();
    void failureEndsTheTransferOnTheMainThread_data();
    void failureEndsTheTransferOnTheMainThread();

private:
    static void workers();
};

void TestTransfersThreads::workers()
{
    QTest::addColumn<Worker>("worker");
    for (const auto& [name, worker] : kWorkers)
        QTest::addRow("%s", name) << worker;
}

void TestTransfersThreads::readingTellsEachRowToTheMainThread()
{
    QFETCH(const Worker, worker);
    EmulatedSession emulated;
    clKRD9IO& session = emulated.session;
    QCOMPARE(session.getStatus(), 1);
    TransferWatch watch(session);

    int n = kTemplate;
    QCOMPARE(runOn(worker, watch, [&session, &n] { return session.readTableTLV(n); }), 0);
    QCOMPARE(n, kRows + 1);
    QCOMPARE(watch.values, progressOfReading());
    QCOMPARE(watch.ends, 1);
    QCOMPARE(watch.valuesBehindEnd, 0);
    QCOMPARE(watch.onOtherThread, 0);
    const QStringList expected = deviceParams(emulated.device, kTemplate);
    QCOMPARE(expected.size(), kRows);
    QCOMPARE(recordParams(session.tlvTable), expected);
}

void TestTransfersThreads::writingTellsEachRecordToTheMainThread()
{
    QFETCH(const Worker, worker);
    EmulatedSession emulated;
    clKRD9IO& session = emulated.session;
    QCOMPARE(session.getStatus(), 1);
    int n = kTemplate;
    QCOMPARE(session.readTableTLV(n), 0);
    Json::Value records = movedTo(session.tlvTable, kOtherTemplate);
    const QStringList expected = deviceParams(emulated.device, kTemplate);
    QVERIFY(deviceParams(emulated.device, kOtherTemplate) != expected);
    TransferWatch watch(session);

    QCOMPARE(runOn(worker, watch, [&session, &records] { return session.writeTableTLV(records); }), 0);
    QCOMPARE(watch.values, progressOfWriting(records));
    QCOMPARE(watch.ends, 1);
    QCOMPARE(watch.valuesBehindEnd, 0);
    QCOMPARE(watch.onOtherThread, 0);
    QCOMPARE(deviceParams(emulated.device, kOtherTemplate), expected);
}

void TestTransfersThreads::signalsArriveWhileTheDeviceWorks()
{
    QFETCH(const Worker, worker);
    EmulatedSession emulated;
    clKRD9IO& session = emulated.session;
    QCOMPARE(session.getStatus(), 1);
    emulated.device.set({{"latencyMs", 1}});
    TransferWatch watch(session);
    const StatusReader status(session);

    int n = kTemplate;
    QCOMPARE(runOn(worker, watch, [&session, &n] { return session.readTableTLV(n); }), 0);
    QVERIFY(watch.duringTransfer > kRows / 2);
    QVERIFY(status.readings > 0);
    QVERIFY(status.lastText.startsWith(session.deviceText));
    Json::Value records = session.tlvTable;
    QCOMPARE(runOn(worker, watch, [&session, &records] { return session.writeTableTLV(records); }), 0);
    QVERIFY(watch.duringTransfer > kRows / 2);
    QCOMPARE(watch.values, progressOfWriting(records));
}

void TestTransfersThreads::driverIsCalledByOneThreadAtATime()
{
    QFETCH(const Worker, worker);
    constexpr int rounds = 3;
    EmulatedSession emulated;
    clKRD9IO& session = emulated.session;
    TransferWatch watch(session);
    takeTracedCalls(emulated.device);
    QCOMPARE(session.getStatus(), 1);
    const QSet<QString> mainThread = threadsOf(takeTracedCalls(emulated.device));
    QCOMPARE(mainThread.size(), 1);

    std::vector<TracedCall> calls;
    const auto noteCalls = [&calls, &emulated] {
        const std::vector<TracedCall> more = takeTracedCalls(emulated.device);
        calls.insert(calls.end(), more.begin(), more.end());
        return threadsOf(more);
    };
    for (int round = 0; round < rounds; ++round) {
        // As the window does it: the template on the worker, then the free lines here.
        int n = kTemplate;
        QCOMPARE(runOn(worker, watch, [&session, &n] { return session.readTableTLV(n); }), 0);
        const QSet<QString> reader = noteCalls();
        QCOMPARE(reader.size(), 1);
        QVERIFY(reader != mainThread);
        QStringList lines;
        QCOMPARE(session.readTable21(lines), 0);
        QCOMPARE(noteCalls(), mainThread);
        QVERIFY(!lines.isEmpty());

        QCOMPARE(session.getStatus(), 1);
        Json::Value records = session.tlvTable;
        noteCalls();
        QCOMPARE(runOn(worker, watch, [&session, &records] { return session.writeTableTLV(records); }), 0);
        const QSet<QString> writer = noteCalls();
        QCOMPARE(writer.size(), 1);
        QVERIFY(writer != mainThread);
        lines.first() = QStringLiteral("Строка %1").arg(round);
        QCOMPARE(session.writeTable21(lines), 0);
        QCOMPARE(noteCalls(), mainThread);
        const QJsonArray stored = emulated.device.state().value("table21").toArray();
        QCOMPARE(stored, QJsonArray::fromStringList(lines));
    }
    QVERIFY(calls.size() > rounds * 5 * kRows);
    QCOMPARE(firstOverlap(calls), QString());
}

void TestTransfersThreads::failureEndsTheTransferOnTheMainThread_data()
{
    QTest::addColumn<Worker>("worker");
    QTest::addColumn<QJsonObject>("fault");
    const QJsonObject thrown = {{"throw", "std"}};
    const QJsonObject thrownNumber = {{"throw", "other"}};
    const QJsonObject lost = {{"status", -1}, {"code", -6}, {"description", "нет связи"}};
    for (const auto& [name, worker] : kWorkers) {
        QTest::addRow("%s, exception", name) << worker << thrown;
        QTest::addRow("%s, number thrown", name) << worker << thrownNumber;
        QTest::addRow("%s, link lost", name) << worker << lost;
    }
}

void TestTransfersThreads::failureEndsTheTransferOnTheMainThread()
{
    QFETCH(const Worker, worker);
    QFETCH(QJsonObject, fault);
    constexpr int goodCommands = 5; // a head and four groups make a row
    EmulatedSession emulated;
    clKRD9IO& session = emulated.session;
    QCOMPARE(session.getStatus(), 1);
    TransferWatch watch(session);

    fault["operation"] = "execCommandBuffer";
    fault["call"] = 2 * goodCommands + 1;
    emulated.device.setFaults({fault});
    int n = kTemplate;
    QCOMPARE(runOn(worker, watch, [&session, &n] { return session.readTableTLV(n); }), 255);
    QCOMPARE(n, 3);
    QCOMPARE(watch.values, (QList<int>{0, 1}));
    QCOMPARE(watch.ends, 1);
    QCOMPARE(watch.onOtherThread, 0);

    emulated.device.dropFaults();
    n = kTemplate;
    QCOMPARE(runOn(worker, watch, [&session, &n] { return session.readTableTLV(n); }), 0);
    QCOMPARE(watch.values, progressOfReading());
    QCOMPARE(recordParams(session.tlvTable), deviceParams(emulated.device, kTemplate));
}

QTEST_GUILESS_MAIN(TestTransfersThreads)

#include "tst_transfers_threads.moc"
