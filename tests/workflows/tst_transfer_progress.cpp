#include "workflows/transferbench.h"

#include <QLabel>
#include <QMutex>
#include <QTest>
#include <QThread>
#include <QThreadPool>

#include <algorithm>

namespace {

bool isWorking()
{
    return QThreadPool::globalInstance()->activeThreadCount() > 0;
}

/// A transfer that takes a while: some 600 ms for 40 fields in either direction.
struct SlowBench : TransferBench
{
    SlowBench()
        : TransferBench(manyFields(40))
    {
        fields[0].desc = QStringLiteral("Касса: поле");
        setTemplates({{1, fields}, {2, manyFields(3)}});
        device.set({{"latencyMs", 3}});
        device.takeTrace();
    }

    QList<FieldRow> fields = manyFields(40);
};

/// What is wrong with the threads of the calls; empty if the worker has the driver to itself while it works.
QString threadDifference(const QJsonArray& trace)
{
    QString mainThread;
    QString worker;
    double workBegin = 0;
    double workEnd = 0;
    double lastEnd = 0;
    for (const QJsonValue value : trace) {
        const QString operation = value["op"].toString();
        const QString thread = value["thread"].toString();
        if (operation == u"readStatus")
            mainThread = thread;
        if (value["begin"].toDouble() < lastEnd)
            return QStringLiteral("overlap at ") + operation;
        lastEnd = value["end"].toDouble();
        if (!operation.endsWith(u"CommandBuffer"))
            continue;
        if (worker.isEmpty()) {
            worker = thread;
            workBegin = value["begin"].toDouble();
        }
        if (thread != worker)
            return QStringLiteral("two workers");
        workEnd = value["end"].toDouble();
    }
    if (worker.isEmpty() || mainThread.isEmpty() || worker == mainThread)
        return QStringLiteral("no worker");
    for (const QJsonValue value : trace) {
        const QString operation = value["op"].toString();
        const bool isDuringWork =
            value["begin"].toDouble() >= workBegin && value["end"].toDouble() <= workEnd;
        if (!isDuringWork && (operation.startsWith(u"getResult") || operation.startsWith(u"getBadParam")))
            continue; // each of them asks about its own last operation
        const bool isWork = isDuringWork || operation == u"getAnswerBuffer";
        if (value["thread"].toString() != (isWork ? worker : mainThread))
            return QStringLiteral("wrong thread: ") + operation;
    }
    return {};
}

} // namespace

/// The progress window, and the two threads behind it.
class TestTransferProgress : public QObject
{
    Q_OBJECT

private slots:
    void windowLivesDuringTheTransfer_data();
    void windowLivesDuringTheTransfer();
    void workerHasTheDriverToItself_data();
    void workerHasTheDriverToItself();
    void signalsComeFromTheWorkerInOrder();
    void closedWindowWaitsForTheEnd_data();
    void closedWindowWaitsForTheEnd();
    void endBeforeTheWindowClosesItAtOnce();
    void ticksInTheProgressWindow();
    void warningInTheProgressWindow();
    void transferEndsUnderAWarning();
};

void TestTransferProgress::windowLivesDuringTheTransfer_data()
{
    QTest::addColumn<bool>("isDownload");
    QTest::newRow("download") << true;
    QTest::newRow("upload") << false;
}

void TestTransferProgress::windowLivesDuringTheTransfer()
{
    QFETCH(const bool, isDownload);
    SlowBench b;
    const QString mark = QStringLiteral("проба");
    int rewritten = -1; // the first time it is the test's own
    bool isRedrawn = false;
    b.user.meanwhile([&](QDialog& dialog) {
        if (dialog.windowTitle() == kQuestionTitle || !isWorking())
            return;
        const WindowProbe probe(*b.window);
        if (rewritten < 0)
            probe.requestRedraw();
        isRedrawn = isRedrawn || (rewritten >= 0 && !probe.redrawPending());
        if (b.statusCell(2)->text() == mark)
            return;
        ++rewritten;
        b.statusCell(2)->setText(mark);
    });
    isDownload ? b.download({}) : b.upload({});
    b.user.meanwhile({});
    QVERIFY2(rewritten >= 1, qPrintable(QString::number(rewritten)));
    QVERIFY(isRedrawn);
    QCOMPARE(b.robot.takeTexts(), QStringList(kTemplateDone));
    QCOMPARE(b.user.takeTitles(), QStringList({kQuestionTitle, isDownload ? kReadingTitle : kWritingTitle}));
    QCOMPARE(b.harm(isDownload ? b.fields : manyFields(40)), QStringList());
    QTRY_VERIFY(b.statusCell(2)->text().startsWith("Тавр 77Ф;"));
    // Each step was shown.
    QCOMPARE(b.progress.size(), isDownload ? 20 : 40);
    QVERIFY(std::is_sorted(b.progress.cbegin(), b.progress.cend()));
    QCOMPARE(b.progress.last(), isDownload ? 20 : 100);
}

void TestTransferProgress::workerHasTheDriverToItself_data()
{
    QTest::addColumn<bool>("isDownload");
    QTest::newRow("download") << true;
    QTest::newRow("upload") << false;
}

void TestTransferProgress::workerHasTheDriverToItself()
{
    QFETCH(const bool, isDownload);
    SlowBench b;
    b.setDeviceLines({"", ""});
    b.windowLines() = {"раз", "два"};
    isDownload ? b.download({.isFreeLines = true}) : b.upload({.isFreeLines = true});
    const QJsonArray trace = b.device.takeTrace();
    // 40 rows, each with 5 requests or 4 records of at least 4 calls.
    QVERIFY2(trace.size() > 640, qPrintable(QString::number(trace.size())));
    QCOMPARE(threadDifference(trace), QString());
    QCOMPARE(b.robot.takeTexts().size(), 1);
    QCOMPARE(KRD9IO.thread(), QThread::currentThread());
}

void TestTransferProgress::signalsComeFromTheWorkerInOrder()
{
    SlowBench b;
    QMutex mutex;
    QStringList heard;
    bool isForeign = true;
    const auto hear = [&](const QString& text) {
        const QMutexLocker locker(&mutex);
        heard.append(text);
        isForeign = isForeign && QThread::currentThread() != KRD9IO.thread();
    };
    QObject receiver;
    connect(
        &KRD9IO, &clKRD9IO::updateProgressValue, &receiver, [&](int value) { hear(QString::number(value)); },
        Qt::DirectConnection);
    connect(
        &KRD9IO, &clKRD9IO::progressEnd, &receiver, [&] { hear("end"); }, Qt::DirectConnection);
    b.download({.number = 2});
    QCOMPARE(heard, QStringList({"0", "1", "1", "end"}));
    QVERIFY(isForeign);
    // A free line makes no progress.
    heard.clear();
    b.download({.isTemplate = false, .isFreeLines = true});
    QCOMPARE(heard, QStringList());
}

void TestTransferProgress::closedWindowWaitsForTheEnd_data()
{
    QTest::addColumn<bool>("isDownload");
    QTest::addColumn<QByteArray>("way");
    for (const char* const way : {"window", "key", "button"}) {
        QTest::addRow("download, %s", way) << true << QByteArray(way);
        QTest::addRow("upload, %s", way) << false << QByteArray(way);
    }
}

void TestTransferProgress::closedWindowWaitsForTheEnd()
{
    QFETCH(const bool, isDownload);
    QFETCH(const QByteArray, way);
    SlowBench b;
    b.device.takeCalls();
    bool wasWorking = false;
    b.answer({}, [&](QDialog& dialog) {
        wasWorking = isWorking();
        if (way == "window")
            dialog.close(); // as a window is closed
        else if (way == "key")
            QTest::keyClick(&dialog, Qt::Key_Escape);
        else
            clickButton(dialog, "btnLoad");
        QVERIFY(!dialog.isVisible());
    });
    bool isWorkingAtTheEnd = true;
    b.robot.whileBoxIsOpen([&] { isWorkingAtTheEnd = isWorking(); }, {});
    QTRY_VERIFY(b.isEnabled("actionUpLoad"));
    chooseInMenu(*b.window, isDownload ? "actionDnLoad" : "actionUpLoad");
    QVERIFY(wasWorking);
    QVERIFY(!isWorkingAtTheEnd);
    QCOMPARE(b.user.ordersLeft(), 0);
    QCOMPARE(b.robot.takeTexts(), QStringList(kTemplateDone));
    const auto commands = b.device.takeCalls().filter("execCommandBuffer").size();
    if (isDownload) {
        QCOMPARE(commands, 40 * 5 + 1);
        QCOMPARE(b.harm(b.fields), QStringList());
        QCOMPARE(b.saved(), maskFile(b.fields));
    } else {
        QCOMPARE(commands, 40 * 4);
        QStringList rows;
        for (const auto& field : manyFields(40))
            rows.append(paramDigits(field));
        QCOMPARE(b.deviceRows(1), rows);
        QCOMPARE(b.saved(), maskFile(manyFields(40)));
    }
    // What was still on its way to the window has reached nobody else: the next transfer counts from the start.
    b.device.set({{"latencyMs", 0}});
    b.download({.number = 2});
    QCOMPARE(b.progress, QList<int>(1, 1));
    QCOMPARE(b.harm(manyFields(3)), QStringList());
}

void TestTransferProgress::endBeforeTheWindowClosesItAtOnce()
{
    SlowBench b;
    b.device.set({{"latencyMs", 0}});
    for (const bool isDownload : {true, false}) {
        bool isWaitedFor = false;
        bool isWindowReached = false;
        b.user.order([&](QDialog& dialog) {
            choose(dialog, {.number = 1});
            // The title is set when the worker has been started, and before the window is opened again.
            connect(&dialog, &QWidget::windowTitleChanged, &b.user,
                    [&isWaitedFor] { isWaitedFor = QThreadPool::globalInstance()->waitForDone(60000); });
            clickButton(dialog, "btnLoad");
        });
        b.user.order([&isWindowReached](QDialog&) { isWindowReached = true; });
        QTRY_VERIFY(b.isEnabled("actionUpLoad"));
        chooseInMenu(*b.window, isDownload ? "actionDnLoad" : "actionUpLoad");
        QVERIFY(isWaitedFor);
        QVERIFY(!isWindowReached);
        QCOMPARE(b.robot.takeTexts(), QStringList(kTemplateDone));
        QCOMPARE(b.user.takeTitles(),
                 QStringList({kQuestionTitle, isDownload ? kReadingTitle : kWritingTitle}));
        QCOMPARE(b.harm(b.fields), QStringList());
    }
}

void TestTransferProgress::ticksInTheProgressWindow()
{
    SlowBench b;
    b.setDeviceLines({"раз", "два"});
    // The number has been asked for; whether free lines follow is looked at when their turn comes.
    b.answer({}, [](QDialog& dialog) { choose(dialog, {.isFreeLines = true, .number = 2}); });
    chooseInMenu(*b.window, "actionDnLoad");
    QCOMPARE(b.robot.takeTexts(), QStringList(reportOf(kTemplateDone, kLinesLoaded)));
    QVERIFY(b.watch->takeNew().contains("count=1"));
    QCOMPARE(b.harm(b.fields), QStringList());
    QCOMPARE(b.windowLines(), QStringList({"раз", "два"}));
}

void TestTransferProgress::warningInTheProgressWindow()
{
    SlowBench b;
    bool isStillOpen = false;
    b.answer({}, [&isStillOpen](QDialog& dialog) {
        choose(dialog, {.number = 0});
        clickButton(dialog, "btnLoad");
        isStillOpen = dialog.isVisible();
    });
    chooseInMenu(*b.window, "actionDnLoad");
    QVERIFY(isStillOpen);
    QCOMPARE(b.robot.takeTexts(), QStringList({kNoNumberText, kTemplateDone}));
    QCOMPARE(b.harm(b.fields), QStringList());
}

void TestTransferProgress::transferEndsUnderAWarning()
{
    SlowBench b;
    QPointer<QDialog> progress;
    b.robot.whileBoxIsOpen({}, [&progress] { return progress != nullptr && !progress->isVisible(); });
    b.answer({}, [&progress](QDialog& dialog) {
        progress = &dialog;
        choose(dialog, {.number = 0});
        clickButton(dialog, "btnLoad");
    });
    chooseInMenu(*b.window, "actionDnLoad");
    QCOMPARE(b.robot.takeTexts(), QStringList({kNoNumberText, kTemplateDone}));
    QCOMPARE(b.harm(b.fields), QStringList());
    b.upload({});
    QCOMPARE(b.robot.takeTexts(), QStringList(kTemplateDone));
}

QTEST_MAIN(TestTransferProgress)

#include "tst_transfer_progress.moc"
