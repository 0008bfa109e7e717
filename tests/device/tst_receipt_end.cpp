#include "device/receiptcalls.h"

#include "support/ownprocess.h"
#include "support/recordingdriver.h"
#include "support/takedriver.h"

#include <QCoreApplication>
#include <QTest>

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace {

constexpr auto kRefusedCall = "--refuse";

RecordingDriver* ending = nullptr;
QStringList endingLog;

/// Stands in for the end of the process: writes down what was done until then.
[[noreturn]] void tellTheEnd()
{
    for (const auto& call : receiptCalls(ending->calls()))
        std::printf("call %s\n", qUtf8Printable(call));
    for (const auto& line : endingLog)
        std::printf("line %s\n", qUtf8Printable(line));
    std::printf("exception %d\n", std::current_exception() ? 1 : 0);
    std::fflush(stdout);
    std::abort();
}

/// A program that prints a receipt with a driver that refuses call `k`; `isTold` makes it speak at its end.
int printRefused(int k, bool isTold)
{
    RecordingDriver driver;
    clKRD9IO session;
    takeDriver(session, driver);
    driver.answerNth(k, {-1, -100});
    ending = &driver;
    if (isTold)
        std::set_terminate(tellTheEnd);
    const int result = session.printReceipt(1, false, endingLog);
    std::printf("result %d\n", result);
    return 0;
}

} // namespace

/// A device that does not enter programming mode in the middle of a receipt ends the program.
class TestReceiptEnd : public QObject
{
    Q_OBJECT

private slots:
    void refusedModeEndsTheProcess_data();
    void refusedModeEndsTheProcess();
    void endIsAbnormalByItself();
    void otherRefusalDoesNot();
};

void TestReceiptEnd::refusedModeEndsTheProcess_data()
{
    QTest::addColumn<int>("k");
    QTest::newRow("number of the mode") << 3;
    QTest::newRow("entering it") << 4;
}

void TestReceiptEnd::refusedModeEndsTheProcess()
{
    QFETCH(const int, k);
    const Ended ended = runMyself({kRefusedCall, QString::number(k), "told"});
    QStringList expected;
    for (const auto& call : goodReceiptCalls("111", "01", {"0", "0"}).first(k))
        expected.append("call " + call);
    for (const auto& line : receiptLog().first(3))
        expected.append("line " + line);
    expected.append("exception 0");
    QCOMPARE(ended.lines, expected);
    QCOMPARE(ended.status, QProcess::CrashExit);
    QCOMPARE(sanitizerReport(ended.errors), QString());
}

void TestReceiptEnd::endIsAbnormalByItself()
{
    const Ended ended = runMyself({kRefusedCall, "4"});
    QCOMPARE(ended.status, QProcess::CrashExit);
    QCOMPARE(ended.lines, QStringList());
    QCOMPARE(sanitizerReport(ended.errors), QString());
}

void TestReceiptEnd::otherRefusalDoesNot()
{
    for (const char* const k : {"2", "5"}) {
        const Ended ended = runMyself({kRefusedCall, k, "told"});
        QCOMPARE(ended.status, QProcess::NormalExit);
        QCOMPARE(ended.lines, QStringList("result 255"));
        QCOMPARE(ended.errors, QString());
    }
}

int main(int argc, char** argv)
{
    if (argc > 2 && qstrcmp(argv[1], kRefusedCall) == 0)
        return printRefused(QByteArray(argv[2]).toInt(), argc > 3);
    QCoreApplication application(argc, argv);
    TestReceiptEnd test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_receipt_end.moc"
