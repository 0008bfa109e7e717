#include "device/receiptbench.h"
#include "device/receiptcalls.h"
#include "support/ownprocess.h"

#include <QApplication>
#include <QTest>

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace {

constexpr auto kPrint = "--print";

EmulatedReceipt* ending = nullptr;

void tell(const char* what, const QStringList& lines)
{
    for (const auto& line : lines)
        std::printf("%s %s\n", what, qUtf8Printable(line));
}

/// Stands in for the end of the process: writes down what was done until then.
[[noreturn]] void tellTheEnd()
{
    tell("call", receiptCalls(ending->device.takeCalls()));
    tell("line", ending->log());
    tell("box", ending->robot.takeTexts());
    std::printf("exception %d\n", std::current_exception() ? 1 : 0);
    std::fflush(stdout);
    std::abort();
}

/// A receipt is left open on the device, and the driver says of it what is not true.
QJsonArray openReceiptRules()
{
    return {QJsonObject{{"operation", "enterMode"}, {"call", 1}, {"status", 0}, {"code", 0}},
            QJsonObject{{"operation", "cancelCheck"}, {"status", 0}, {"code", 0}}};
}

/// The program, in which the user prints a receipt while the `k`-th call of it is refused; 0: on a device that refuses
/// the mode by itself. "told" makes it speak at its end.
int printRefused(int& argc, char** argv)
{
    QApplication application(argc, argv);
    const int k = QByteArray(argv[2]).toInt();
    EmulatedReceipt b;
    ending = &b;
    const int start = receiptStart(b.calls);
    b.prepare(kEverything);
    if (argc > 3)
        std::set_terminate(tellTheEnd);
    if (k > 0) {
        b.print(kEverything, start + k - 1);
    } else {
        b.device.set({{"receiptState", 1}, {"mode", 1}});
        b.device.setFaults(openReceiptRules());
        b.print(kEverything);
    }
    tell("line", b.log().mid(b.log().size() - 1));
    return 0;
}

/// Of what the program told, the lines of this kind.
QStringList linesOf(const Ended& ended, const char* what)
{
    QStringList lines;
    const QString start = QString::fromLatin1(what) + u' ';
    for (const auto& line : ended.lines)
        if (line.startsWith(start))
            lines.append(line.mid(start.size()));
    return lines;
}

} // namespace

/// The program in whose middle of a receipt the device does not enter programming mode.
class TestReceiptWindowEnd : public QObject
{
    Q_OBJECT

private slots:
    void refusedModeEndsTheProgram_data();
    void refusedModeEndsTheProgram();
    void endIsAbnormalByItself();
    void refusalsBesideItDoNot();
};

void TestReceiptWindowEnd::refusedModeEndsTheProgram_data()
{
    QTest::addColumn<int>("k");
    QTest::addColumn<int>("made");
    QTest::newRow("number of the mode") << 3 << 3;
    QTest::newRow("entering it") << 4 << 4;
    QTest::newRow("receipt that stays open") << 0 << 4;
}

void TestReceiptWindowEnd::refusedModeEndsTheProgram()
{
    QFETCH(const int, k);
    QFETCH(const int, made);
    const Ended ended = runMyself({kPrint, QString::number(k), "told"});
    QVERIFY2(ended.status == QProcess::CrashExit, qPrintable(ended.errors));
    QCOMPARE(sanitizerReport(ended.errors), QString());
    // On the spot: no call follows the refusal.
    const QStringList calls = linesOf(ended, "call");
    const QStringList receipt = goodReceiptCalls("111", "01", receiptSums()).first(made);
    QCOMPARE(calls.mid(calls.size() - made), receipt);
    // The lines of the receipt are lost with it, and there is no message.
    QCOMPARE(
        linesOf(ended, "line").mid(7),
        QStringList({"Печать тестового чека", "Загрузка шаблона в кассу отмечена - грузим (шаблон №1)...",
                     "Шаблон успешно загружен.", "", ""}));
    QCOMPARE(linesOf(ended, "box"), QStringList());
    QCOMPARE(linesOf(ended, "exception"), QStringList("0"));
}

void TestReceiptWindowEnd::endIsAbnormalByItself()
{
    const Ended ended = runMyself({kPrint, "4"});
    QCOMPARE(ended.status, QProcess::CrashExit);
    QCOMPARE(sanitizerReport(ended.errors), QString());
    QCOMPARE(linesOf(ended, "line"), QStringList());
}

void TestReceiptWindowEnd::refusalsBesideItDoNot()
{
    for (const char* const k : {"2", "5"}) {
        const Ended ended = runMyself({kPrint, k, "told"});
        QVERIFY2(ended.status == QProcess::NormalExit, qPrintable(ended.errors));
        QCOMPARE(ended.code, 0);
        QCOMPARE(sanitizerReport(ended.errors), QString());
        QCOMPARE(linesOf(ended, "line"), QStringList("Печать тестового чека завершена"));
    }
}

int main(int argc, char** argv)
{
    if (argc > 2 && qstrcmp(argv[1], kPrint) == 0)
        return printRefused(argc, argv);
    QApplication application(argc, argv);
    TestReceiptWindowEnd test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_receipt_windowend.moc"
