#include "fpaxlibrary.h"

#include <QTest>

#include <atomic>
#include <thread>
#include <vector>

class TestEmulatorThreads : public QObject
{
    Q_OBJECT

private slots:
    void traceHoldsOperationArgumentsAndStatus();
    void traceTellsTheThread();
    void takingTheTraceEmptiesIt();
    void switchedOffTraceHoldsNothing();
    void spansFollowEachOther();
    void callsFromManyThreadsAreAllCounted();
    void slowOperationDoesNotBlockAnotherObject();
};

void TestEmulatorThreads::traceHoldsOperationArgumentsAndStatus()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.control({{"cmd", "trace"}, {"on", true}});
    driver->setMode(99);
    driver->enterMode();
    setSetting(driver, "Port", "6");
    driver->setCaption(L"Текст");
    driver->setSumm(2.5);
    const QJsonArray calls = fpax.control({{"cmd", "calls"}}).toArray();
    QCOMPARE(calls.size(), 5);
    QCOMPARE(calls[0]["op"].toString(), "setMode");
    QCOMPARE(calls[0]["args"].toArray(), QJsonArray{99});
    QCOMPARE(calls[0]["status"].toInt(-5), 0);
    QCOMPARE(calls[1]["op"].toString(), "enterMode");
    QVERIFY(calls[1]["status"].toInt() < 0);
    QCOMPARE(calls[2]["args"].toArray(), (QJsonArray{"Port", "6"}));
    QCOMPARE(calls[3]["args"].toArray(), QJsonArray{"Текст"});
    QCOMPARE(calls[4]["args"].toArray(), QJsonArray{2.5});
}

void TestEmulatorThreads::traceTellsTheThread()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.control({{"cmd", "trace"}, {"on", true}});
    driver->readStatus();
    std::thread worker([driver] { driver->readStatus(); });
    worker.join();
    driver->readStatus();
    const QJsonArray calls = fpax.control({{"cmd", "calls"}}).toArray();
    QCOMPARE(calls.size(), 3);
    QCOMPARE(calls[0]["thread"], calls[2]["thread"]);
    QVERIFY(calls[0]["thread"] != calls[1]["thread"]);
}

void TestEmulatorThreads::takingTheTraceEmptiesIt()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.control({{"cmd", "trace"}, {"on", true}});
    driver->readStatus();
    QCOMPARE(fpax.control({{"cmd", "calls"}}).toArray().size(), 1);
    QCOMPARE(fpax.control({{"cmd", "calls"}}).toArray().size(), 0);
}

void TestEmulatorThreads::switchedOffTraceHoldsNothing()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    driver->readStatus();
    QCOMPARE(fpax.control({{"cmd", "calls"}}).toArray().size(), 0);
    fpax.control({{"cmd", "trace"}, {"on", true}});
    driver->readStatus();
    fpax.control({{"cmd", "trace"}, {"on", false}});
    QCOMPARE(fpax.control({{"cmd", "calls"}}).toArray().size(), 0);
}

void TestEmulatorThreads::spansFollowEachOther()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    fpax.control({{"cmd", "trace"}, {"on", true}});
    for (int i = 0; i < 10; ++i)
        driver->readStatus();
    const QJsonArray calls = fpax.control({{"cmd", "calls"}}).toArray();
    qint64 last = 0;
    for (const QJsonValue& call : calls) {
        QVERIFY(call["begin"].toInteger() >= last);
        QVERIFY(call["end"].toInteger() >= call["begin"].toInteger());
        last = call["end"].toInteger();
    }
    QVERIFY(last > 0);
}

void TestEmulatorThreads::callsFromManyThreadsAreAllCounted()
{
    constexpr int kThreads = 4;
    constexpr int kCalls = 200;
    FpaxLibrary fpax;
    fpax.setFaults({});
    std::atomic<int> failures = 0;
    std::vector<std::thread> workers;
    for (int i = 0; i < kThreads; ++i)
        workers.emplace_back([&failures, driver = fpax.create()] {
            failures += driver->setDeviceEnabled(1) == 0 ? 0 : 1;
            for (int call = 0; call < kCalls; ++call)
                failures += driver->setMode(4) == 0 && driver->enterMode() == 0 ? 0 : 1;
        });
    for (std::thread& worker : workers)
        worker.join();
    QCOMPARE(failures.load(), 0);
    QCOMPARE(fpax.count(), kThreads * (2 * kCalls + 1));
}

void TestEmulatorThreads::slowOperationDoesNotBlockAnotherObject()
{
    FpaxLibrary fpax;
    IFpax* slow = connected(fpax);
    IFpax* quick = fpax.create();
    fpax.setFaults({QJsonObject{{"operation", "readStatus"}, {"delayMs", 2000}}});
    std::atomic<bool> ended = false;
    std::thread worker([slow, &ended] {
        slow->readStatus();
        ended = true;
    });
    QTRY_COMPARE(fpax.count(), 1);
    QCOMPARE(quick->setMode(4), 0);
    const bool endedBefore = ended;
    worker.join();
    QVERIFY(!endedBefore);
}

QTEST_MAIN(TestEmulatorThreads)
#include "tst_emulator_threads.moc"
