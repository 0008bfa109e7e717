#include "device/receiptcalls.h"

#include "support/drivercalls.h"
#include "support/recordingdriver.h"
#include "support/takedriver.h"

#include <QTest>

#include <algorithm>
#include <optional>

namespace {

constexpr int kPrinted = 0;
constexpr int kFailed = 255;
constexpr double kSum = 33;
constexpr int kLastSenderCall = 20;
constexpr int kLastAddressCall = 25;
constexpr RecordingDriver::Outcome kRefused{-1, -100};
constexpr RecordingDriver::Outcome kRefusedWithoutACode{-1, 0};

/// A driver that a session prints with, and what came of it.
struct Printing
{
    Printing()
    {
        takeDriver(session, driver);
        driver.setNumber("getSumm", kSum);
    }

    void print(int templateNumber = 1, bool fieldNineteen = false)
    {
        result = session.printReceipt(templateNumber, fieldNineteen, log);
        calls = receiptCalls(driver.calls());
    }

    RecordingDriver driver;
    clKRD9IO session;
    QStringList log;
    QStringList calls;
    int result = -1;
};

/// The number of the last call that is left out when call `k` is refused with an ordinary code; nothing if the receipt
/// ends there.
std::optional<int> lastLostCall(int k)
{
    constexpr int opening = 15;
    constexpr int sum = 69;
    if (k > 11 && k <= opening)
        return opening;
    if (k > opening && k <= kLastAddressCall)
        return k <= kLastSenderCall ? kLastSenderCall : kLastAddressCall;
    return k == sum ? std::optional(sum) : std::nullopt;
}

bool isModeOfTheTable(int k)
{
    return k == 3 || k == 4;
}

} // namespace

/// The whole test receipt as the driver and the log see it, and what each failure makes of it.
class TestReceiptSession : public QObject
{
    Q_OBJECT

private slots:
    void wholeReceipt();
    void olderField();
    void templateNumberIsTwoDigits_data();
    void templateNumberIsTwoDigits();
    void addressesStandFast();
    void paymentsArePartsOfTheSum_data();
    void paymentsArePartsOfTheSum();
    void sumStartsAtZero();
    void logIsContinued();
    void sessionWithoutADriver();
    void openReceiptIsNotThere_data();
    void openReceiptIsNotThere();
    void openReceiptStays_data();
    void openReceiptStays();
    void shiftIsClosedFirst_data();
    void shiftIsClosedFirst();
    void recoveryFails_data();
    void recoveryFails();
    void recoveryWithoutACode();
    void otherRefusalOfTheOpeningIsSwallowed_data();
    void otherRefusalOfTheOpeningIsSwallowed();
    void eachCallIsRefused();
    void eachCallIsRefusedWithoutACode();
    void eachCallThrowsItsOwn();
};

void TestReceiptSession::wholeReceipt()
{
    Printing p;
    p.print();
    QCOMPARE(p.result, kPrinted);
    QCOMPARE(p.calls, goodReceiptCalls("111", "01", {"8.25", "33"}));
    QCOMPARE(p.calls.size(), kReceiptCallCount);
    QCOMPARE(p.log, receiptLog());
    QVERIFY(p.session.modeProgram);
}

void TestReceiptSession::olderField()
{
    Printing p;
    p.print(2, true);
    QCOMPARE(p.result, kPrinted);
    QCOMPARE(p.calls, goodReceiptCalls("19", "02", {"8.25", "33"}));
    QCOMPARE(p.log, receiptLog());
}

void TestReceiptSession::templateNumberIsTwoDigits_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("digits");
    QTest::newRow("none") << 0 << "00";
    QTest::newRow("first") << 1 << "01";
    QTest::newRow("second") << 2 << "02";
    QTest::newRow("letter") << 10 << "0A";
    QTest::newRow("two digits") << 16 << "10";
    QTest::newRow("six bits") << 63 << "3F";
    QTest::newRow("seventh bit") << 64 << "00";
    QTest::newRow("seven bits") << 127 << "3F";
    QTest::newRow("beyond") << 0x1A5 << "25";
    QTest::newRow("negative") << -1 << "3F";
}

void TestReceiptSession::templateNumberIsTwoDigits()
{
    QFETCH(const int, number);
    QFETCH(const QString, digits);
    Printing p;
    p.print(number);
    QCOMPARE(p.result, kPrinted);
    QCOMPARE(p.driver.count("setCaption"), 1);
    QCOMPARE(p.driver.lastText("setCaption").toUpper(), digits);
}

void TestReceiptSession::addressesStandFast()
{
    Printing first;
    first.print();
    Printing second;
    second.print(2, true);
    const QStringList addresses = first.driver.callsOf("setTagValue");
    QCOMPARE(addresses.size(), 2);
    for (const auto& address : addresses)
        QVERIFY2(address.size() > QString("setTagValue(\"\")").size(), qPrintable(address));
    QCOMPARE(second.driver.callsOf("setTagValue"), addresses);
}

void TestReceiptSession::paymentsArePartsOfTheSum_data()
{
    QTest::addColumn<double>("sum");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("round") << 100.0 << QStringList{"25", "100"};
    QTest::newRow("fraction") << 32.5 << QStringList{"8.125", "32.5"};
    QTest::newRow("nothing") << 0.0 << QStringList{"0", "0"};
    QTest::newRow("negative") << -2.0 << QStringList{"-0.5", "-2"};
}

void TestReceiptSession::paymentsArePartsOfTheSum()
{
    QFETCH(const double, sum);
    QFETCH(const QStringList, texts);
    Printing p;
    p.driver.setNumber("getSumm", sum);
    p.print();
    QCOMPARE(p.result, kPrinted);
    QCOMPARE(p.calls, goodReceiptCalls("111", "01", texts));
}

void TestReceiptSession::sumStartsAtZero()
{
    RecordingDriver driver; // fills no sum in
    clKRD9IO session;
    takeDriver(session, driver);
    QStringList log;
    QCOMPARE(session.printReceipt(1, false, log), kPrinted);
    QCOMPARE(receiptCalls(driver.calls()), goodReceiptCalls("111", "01", {"0", "0"}));
}

void TestReceiptSession::logIsContinued()
{
    Printing p;
    p.log = QStringList{"до чека"};
    p.print();
    QCOMPARE(p.log, QStringList("до чека") + receiptLog());
}

void TestReceiptSession::sessionWithoutADriver()
{
    clKRD9IO session;
    QStringList log;
    QCOMPARE(session.printReceipt(1, false, log), kFailed);
    QCOMPARE(log, receiptLog().first(1));
}

void TestReceiptSession::openReceiptIsNotThere_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("no receipt") << -16;
    QTest::newRow("no receipt in this mode") << -3801;
}

void TestReceiptSession::openReceiptIsNotThere()
{
    QFETCH(const int, code);
    Printing p;
    p.driver.answer("cancelCheck", {-1, code});
    p.print();
    QCOMPARE(p.result, kPrinted);
    QCOMPARE(p.calls, goodReceiptCalls("111", "01", {"8.25", "33"}));
    QCOMPARE(p.log, receiptLog());
}

void TestReceiptSession::openReceiptStays_data()
{
    QTest::addColumn<int>("code");
    for (const int code : {-1, -6, -15, -17, 16, 3801, -3800, -3802, -3822})
        QTest::addRow("%d", code) << code;
}

void TestReceiptSession::openReceiptStays()
{
    QFETCH(const int, code);
    Printing p;
    p.driver.answer("cancelCheck", {-1, code});
    p.print();
    QCOMPARE(p.result, kFailed);
    QCOMPARE(p.calls, QStringList({"setDeviceEnabled(1)", "cancelCheck()"}));
    QCOMPARE(p.log, receiptLog().first(2));
}

void TestReceiptSession::shiftIsClosedFirst_data()
{
    QTest::addColumn<int>("k");
    QTest::newRow("mode") << 12;
    QTest::newRow("entering the mode") << 13;
    QTest::newRow("type of the receipt") << 14;
    QTest::newRow("opening") << 15;
}

void TestReceiptSession::shiftIsClosedFirst()
{
    QFETCH(const int, k);
    Printing p;
    p.driver.answerNth(k, {-1, kShiftMustBeClosed});
    p.print();
    const QStringList good = goodReceiptCalls("111", "01", {"8.25", "33"});
    QCOMPARE(p.calls, good.first(k) + recoveryCalls() + good.mid(15));
    QCOMPARE(p.log, receiptLog().first(k > 13 ? 6 : 5) + recoveryLog() + receiptLog().mid(6));
    QCOMPARE(p.result, kPrinted);
}

void TestReceiptSession::recoveryFails_data()
{
    QTest::addColumn<int>("code"); // 0: an exception of another type
    QTest::newRow("any code") << -100;
    QTest::newRow("the shift again") << kShiftMustBeClosed;
    QTest::newRow("exception") << 0;
}

void TestReceiptSession::recoveryFails()
{
    QFETCH(const int, code);
    const QStringList good = goodReceiptCalls("111", "01", {"8.25", "33"});
    // The length of its log by the call that fails.
    const int lines[] = {1, 1, 2, 2, 3, 3, 4, 4};
    for (int call = 1; call <= recoveryCalls().size(); ++call) {
        Printing p;
        const QString operation = operationOf(recoveryCalls().at(call - 1));
        p.driver.answerCall("openCheck", 1, {-1, kShiftMustBeClosed});
        const QStringList callsUntilThen = good.first(15) + recoveryCalls().first(call);
        const auto before =
            static_cast<int>(std::count_if(callsUntilThen.cbegin(), callsUntilThen.cend(),
                                           [&](const QString& c) { return operationOf(c) == operation; }));
        p.driver.onCall(operation, [&] {
            if (p.driver.count(operation) != before)
                return;
            if (code == 0)
                throw 1;
            p.driver.answerCall(operation, before, {-1, code});
        });
        p.print();
        QCOMPARE(p.calls, callsUntilThen);
        QCOMPARE(p.log, receiptLog().first(6) + recoveryLog().first(lines[call - 1]));
        QCOMPARE(p.result, kFailed);
    }
}

void TestReceiptSession::recoveryWithoutACode()
{
    const QStringList good = goodReceiptCalls("111", "01", {"8.25", "33"});
    Printing p;
    p.driver.answerCall("openCheck", 1, {-1, kShiftMustBeClosed});
    p.driver.answerCall("openCheck", 2, kRefusedWithoutACode);
    p.driver.answer("makeReport", kRefusedWithoutACode);
    p.driver.answer("setReportType", kRefusedWithoutACode);
    p.print();
    QCOMPARE(p.calls, good.first(15) + recoveryCalls() + good.mid(15));
    QCOMPARE(p.log, receiptLog().first(6) + recoveryLog() + receiptLog().mid(6));
    QCOMPARE(p.result, kPrinted);
}

void TestReceiptSession::otherRefusalOfTheOpeningIsSwallowed_data()
{
    QTest::addColumn<int>("code");
    for (const int code : {-1, -6, -16, -3801, -3803, -3821, -3823, 3822})
        QTest::addRow("%d", code) << code;
}

void TestReceiptSession::otherRefusalOfTheOpeningIsSwallowed()
{
    QFETCH(const int, code);
    Printing p;
    p.driver.answer("openCheck", {-1, code});
    p.print();
    QCOMPARE(p.calls, goodReceiptCalls("111", "01", {"8.25", "33"}));
    QCOMPARE(p.log, receiptLog());
    QCOMPARE(p.result, kPrinted);
}

void TestReceiptSession::eachCallIsRefused()
{
    const QStringList good = goodReceiptCalls("111", "01", {"8.25", "33"});
    for (int k = 1; k <= kReceiptCallCount; ++k) {
        if (isModeOfTheTable(k)) // ends the process
            continue;
        Printing p;
        // The diagnosis of a failure counts too, but all of it stands behind the call.
        p.driver.answerNth(k, kRefused);
        p.print();
        const std::optional<int> lost = lastLostCall(k);
        QStringList log = receiptLog();
        if (!lost)
            log = log.first(receiptLineOf(k));
        else if (k <= 13)
            log.removeOne("Открытие чека...");
        QCOMPARE(p.calls, good.first(k) + (lost ? good.mid(*lost) : QStringList()));
        QCOMPARE(p.log, log);
        QCOMPARE(p.result, lost ? kPrinted : kFailed);
    }
}

void TestReceiptSession::eachCallIsRefusedWithoutACode()
{
    const QStringList good = goodReceiptCalls("111", "01", {"8.25", "33"});
    for (int k = 1; k <= kReceiptCallCount; ++k) {
        Printing p;
        p.driver.answerNth(k, kRefusedWithoutACode);
        p.print();
        QCOMPARE(p.calls, good);
        QCOMPARE(p.log, receiptLog());
        QCOMPARE(p.result, kPrinted);
    }
}

void TestReceiptSession::eachCallThrowsItsOwn()
{
    const QStringList good = goodReceiptCalls("111", "01", {"8.25", "33"});
    for (int k = 1; k <= kReceiptCallCount; ++k) {
        Printing p;
        p.driver.onCall(operationOf(good.at(k - 1)), [&p, k] {
            if (p.driver.calls().size() == k)
                throw 1;
        });
        p.print();
        // Only the attributes of the receipt put up with that.
        const bool isAttribute = k > 15 && k <= kLastAddressCall;
        const QStringList rest = good.mid(k <= kLastSenderCall ? kLastSenderCall : kLastAddressCall);
        QCOMPARE(p.calls, good.first(k) + (isAttribute ? rest : QStringList()));
        QCOMPARE(p.log, isAttribute ? receiptLog() : receiptLog().first(receiptLineOf(k)));
        QCOMPARE(p.result, isAttribute ? kPrinted : kFailed);
    }
}

QTEST_GUILESS_MAIN(TestReceiptSession)

#include "tst_receipt_session.moc"
