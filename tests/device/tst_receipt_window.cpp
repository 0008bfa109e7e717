#include "device/receiptcalls.h"
#include "support/recordingdriver.h"
#include "support/takedriver.h"
#include "workflows/connectionbench.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>

namespace {

const QString kRule = QStringLiteral("==================================");
const QString kTitle = QStringLiteral("Печать тестового чека");
const QString kDone = QStringLiteral("Печать тестового чека завершена");
const QStringList kLoaded{"Шаблон успешно загружен.", "", ""};
const QStringList kNothingLoaded{"", "", ""};

/// What the user does with the dialog of the receipt.
struct Choice
{
    int number = 1;
    bool isUpLoad = true;
    bool isSessionClose = false;
    bool isPortRelease = false;
    bool isCancelled = false;
};

/// Answers the dialog of the receipt while it lives, and remembers how it was.
class ReceiptUser : public QObject
{
    Q_OBJECT

public:
    ReceiptUser()
    {
        connect(&m_timer, &QTimer::timeout, this, &ReceiptUser::look);
        m_timer.start(1);
    }

    Choice choice;
    int seen = 0;
    bool isShiftTicked = false;
    bool isUpLoadOffered = false;
    bool isUpLoadTicked = false;
    bool isWarned = false;
    bool isButtonOffered = false;

private:
    void look()
    {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || dialog == m_lastSeen || dialog->windowTitle() != kTitle ||
            !dialog->isVisible())
            return;
        m_lastSeen = dialog;
        ++seen;
        auto* const buttons = named<QDialogButtonBox>(*dialog, "buttonBox");
        const auto* const upLoad = named<QCheckBox>(*dialog, "chb02UpLoadShablon");
        isShiftTicked = named<QCheckBox>(*dialog, "chb01OpenSession")->isChecked();
        isUpLoadOffered = upLoad->isEnabled();
        isUpLoadTicked = upLoad->isChecked();
        isWarned = named<QWidget>(*dialog, "label_2")->isVisible();
        isButtonOffered = buttons->isVisible();

        tick(*dialog, "chb02UpLoadShablon", choice.isUpLoad);
        tick(*dialog, "chb03CloseSession", choice.isSessionClose);
        tick(*dialog, "chb04portRelease", choice.isPortRelease);
        auto* const spin = named<QSpinBox>(*dialog, "spinShablonNum");
        spin->selectAll();
        QTest::keyClicks(spin, QString::number(choice.number));
        if (isButtonOffered && !choice.isCancelled)
            QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
        else
            QTest::keyClick(dialog, Qt::Key_Escape);
    }

    static void tick(const QDialog& dialog, const char* name, bool isTicked)
    {
        auto* const box = named<QCheckBox>(dialog, name);
        if (box->isEnabled() && box->isChecked() != isTicked)
            QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    }

    QTimer m_timer;
    QPointer<QWidget> m_lastSeen;
};

/// The program with a driver that writes down its calls in place of one from a library.
struct ReceiptBench
{
    ReceiptBench()
    {
        showWindow(window);
        takeDriver(KRD9IO, driver);
        driver.setText("getDeviceDescription", "Тавр 22Ф;проба");
        driver.setNumber("getSumm", 33);
        robot.takeBoxes();
        log.takeNew();
    }

    void openTwoFields()
    {
        openTemplate(window, robot, dir.write(QStringLiteral("two.csv"), maskFile(manyFields(2))));
        log.takeNew();
    }

    /// Chooses the command; the log of it and the calls that follow the look at the device are left behind.
    void print(const Choice& choice = {})
    {
        user.choice = choice;
        driver.forgetCalls();
        chooseInMenu(window, "actionPrintTestChek");
        lines = log.takeNew();
        // The connection ends by entering the mode of the exchange.
        calls = receiptCalls(driver.calls());
        calls = calls.mid(calls.indexOf("enterMode()") + 1);
    }

    QStringList head() const { return QStringList(kRule) + goodDeviceLines() + QStringList(kTitle); }

    SessionRenewal renewal;
    RecordingDriver driver;
    ProgramDir dir;
    DialogRobot robot;
    MainWindow window;
    LogWatch log{window};
    ReceiptUser user;
    QStringList lines;
    QStringList calls;
};

QStringList upLoadLine(int number)
{
    return {QStringLiteral("Загрузка шаблона в кассу отмечена - грузим (шаблон №%1)...").arg(number)};
}

QStringList resultLines(int result)
{
    return {QStringLiteral("Команда на печать вернула значение: %1").arg(result), QString(), QString()};
}

} // namespace

/// The command "test receipt" as the user meets it.
class TestReceiptWindow : public QObject
{
    Q_OBJECT

private slots:
    void templateIsSentBeforeThePrinting();
    void templateIsLeftAlone();
    void withoutATemplate();
    void templateIsNotSent();
    void everyStep_data();
    void everyStep();
    void failedSteps();
    void receiptFailsAndTheRestFollows_data();
    void receiptFailsAndTheRestFollows();
    void shiftIsClosedInTheMiddle();
    void dialogShowsTheShift_data();
    void dialogShowsTheShift();
    void rejectedDialogEndsIt();
    void fiscalisedDevice();
    void noConnection();
    void openReceiptBlocksTheExchange();
    void noDriver();
    void twoReceipts();
};

void TestReceiptWindow::templateIsSentBeforeThePrinting()
{
    ReceiptBench b;
    b.openTwoFields();
    b.print({.number = 2});
    QCOMPARE(b.user.seen, 1);
    QVERIFY(b.user.isUpLoadOffered);
    QVERIFY(b.user.isUpLoadTicked);
    QCOMPARE(b.lines,
             b.head() + upLoadLine(2) + kLoaded + receiptLog() + resultLines(0) + QStringList(kDone));
    QCOMPARE(b.robot.takeTexts(), QStringList());

    // Four records for each field, and then the receipt.
    constexpr int records = 8;
    const QStringList commands = b.driver.callsOf("setCommandBuffer");
    QCOMPARE(commands.size(), records);
    for (const auto& command : commands)
        QVERIFY2(command.startsWith("setCommandBuffer(\"51 01 14 02 00 00 "), qPrintable(command));
    QVERIFY(commands.at(0).startsWith("setCommandBuffer(\"51 01 14 02 00 00 01 06 00 00 54 00 01 00 0A 00 "));
    QVERIFY(commands.at(7).startsWith("setCommandBuffer(\"51 01 14 02 00 00 13 13 01 00 0E 00 13 00 0A 00 "));
    const auto receipt = b.calls.indexOf("setDeviceEnabled(1)");
    QCOMPARE(b.calls.mid(0, receipt).filter("execCommandBuffer()").size(), records);
    QCOMPARE(b.calls.mid(receipt), goodReceiptCalls("111", "02", {"8.25", "33"}));
}

void TestReceiptWindow::templateIsLeftAlone()
{
    ReceiptBench b;
    b.openTwoFields();
    b.print({.number = 1, .isUpLoad = false});
    QCOMPARE(b.lines, b.head() + kNothingLoaded + receiptLog() + resultLines(0) + QStringList(kDone));
    QCOMPARE(b.calls, goodReceiptCalls("111", "01", {"8.25", "33"}));
}

void TestReceiptWindow::withoutATemplate()
{
    ReceiptBench b;
    b.print({.number = 1});
    QVERIFY(!b.user.isUpLoadOffered);
    QVERIFY(!b.user.isUpLoadTicked);
    QCOMPARE(b.lines, b.head() + kNothingLoaded + receiptLog() + resultLines(0) + QStringList(kDone));
    QCOMPARE(b.calls, goodReceiptCalls("111", "01", {"8.25", "33"}));
}

void TestReceiptWindow::templateIsNotSent()
{
    ReceiptBench b;
    b.openTwoFields();
    b.driver.onCall("setCommandBuffer", [] { throw 1; });
    b.print({.number = 1});
    const QString report = "При сохранении шаблона возникла ошибка.";
    QCOMPARE(b.lines, b.head() + upLoadLine(1) + QStringList({report, "", ""}) + receiptLog() +
                          resultLines(0) + QStringList(kDone));
    const auto* const document = named<QTextEdit>(b.window, "teLog")->document();
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        const bool isRed = !block.text().isEmpty() &&
                           block.begin().fragment().charFormat().foreground().color() == QColor(Qt::red);
        QVERIFY2(isRed == (block.text() == report), qPrintable(block.text()));
    }
}

void TestReceiptWindow::everyStep_data()
{
    QTest::addColumn<bool>("isUpLoad");
    QTest::addColumn<bool>("isSessionClose");
    QTest::addColumn<bool>("isPortRelease");
    for (int bits = 1; bits < 8; ++bits)
        QTest::addRow("%d", bits) << ((bits & 1) != 0) << ((bits & 2) != 0) << ((bits & 4) != 0);
}

void TestReceiptWindow::everyStep()
{
    QFETCH(const bool, isUpLoad);
    QFETCH(const bool, isSessionClose);
    QFETCH(const bool, isPortRelease);
    ReceiptBench b;
    b.openTwoFields();
    b.print({1, isUpLoad, isSessionClose, isPortRelease});
    QStringList lines =
        b.head() + (isUpLoad ? upLoadLine(1) + kLoaded : kNothingLoaded) + receiptLog() + resultLines(0);
    QStringList calls = goodReceiptCalls("111", "01", {"8.25", "33"});
    if (isSessionClose) {
        lines += {"Закрытие смены отмечено - пробуем закрыть...", "Закрытие смены: OK"};
        calls += sessionCloseCalls();
    }
    if (isPortRelease) {
        lines += {"Закрытие порта отмечено - пробуем закрыть...", "Закрытие порта: OK"};
        calls.append("setDeviceEnabled(0)");
    }
    QCOMPARE(b.lines, lines + QStringList(kDone));
    QCOMPARE(b.calls.mid(b.calls.indexOf("setDeviceEnabled(1)")), calls);
    QCOMPARE(b.driver.count("setCommandBuffer"), isUpLoad ? 8 : 0);
}

void TestReceiptWindow::failedSteps()
{
    ReceiptBench b;
    b.driver.answer("makeReport", {-1, -100});
    b.driver.answerCall("setDeviceEnabled", 3, {-1, -100}); // after the connection and the receipt
    b.print({.isSessionClose = true, .isPortRelease = true});
    QCOMPARE(
        b.lines,
        b.head() + kNothingLoaded + receiptLog() + resultLines(0) +
            QStringList({"Закрытие смены отмечено - пробуем закрыть...", "Закрытие смены: ERROR",
                         "Закрытие порта отмечено - пробуем закрыть...", "Закрытие порта: ERROR", kDone}));
    QCOMPARE(b.robot.takeTexts(), QStringList());

    // An exception of the driver's own counts as much.
    b.driver.dropOutcomes();
    b.driver.onCall("makeReport", [] { throw 1; });
    b.driver.onCall("setDeviceEnabled", [&b] {
        if (b.driver.lastNumber("setDeviceEnabled") == 0)
            throw 1;
    });
    b.print({.isSessionClose = true, .isPortRelease = true});
    QCOMPARE(b.lines.mid(b.lines.size() - 5),
             QStringList({"Закрытие смены отмечено - пробуем закрыть...", "Закрытие смены: ERROR",
                          "Закрытие порта отмечено - пробуем закрыть...", "Закрытие порта: ERROR", kDone}));
}

void TestReceiptWindow::receiptFailsAndTheRestFollows_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("lines");
    QTest::newRow("open receipt") << "cancelCheck" << 2;
    QTest::newRow("table") << "writeTableField" << 4;
    QTest::newRow("position") << "registerPosition" << 9;
    QTest::newRow("rounding") << "applyRounding" << 10;
    QTest::newRow("payment") << "makePaymentVariant" << 11;
    QTest::newRow("end") << "closeCheck" << 12;
}

void TestReceiptWindow::receiptFailsAndTheRestFollows()
{
    QFETCH(const QString, operation);
    QFETCH(const int, lines);
    ReceiptBench b;
    b.driver.answer(operation, {-1, -100});
    b.print({.isSessionClose = true, .isPortRelease = true});
    QCOMPARE(b.lines,
             b.head() + kNothingLoaded + receiptLog().first(lines) + resultLines(255) +
                 QStringList({"Закрытие смены отмечено - пробуем закрыть...", "Закрытие смены: OK",
                              "Закрытие порта отмечено - пробуем закрыть...", "Закрытие порта: OK", kDone}));
    QCOMPARE(b.robot.takeTexts(), QStringList());
}

void TestReceiptWindow::shiftIsClosedInTheMiddle()
{
    ReceiptBench b;
    b.driver.answerCall("openCheck", 1, {-1, kShiftMustBeClosed});
    b.print();
    QCOMPARE(b.lines, b.head() + kNothingLoaded + receiptLog().first(6) + recoveryLog() +
                          receiptLog().mid(6) + resultLines(0) + QStringList(kDone));
}

void TestReceiptWindow::dialogShowsTheShift_data()
{
    QTest::addColumn<int>("state");
    QTest::newRow("closed") << 0;
    QTest::newRow("open") << 1;
    QTest::newRow("other") << 3;
}

void TestReceiptWindow::dialogShowsTheShift()
{
    QFETCH(const int, state);
    ReceiptBench b;
    b.driver.setNumber("getSessionOpened", state);
    b.print({.isCancelled = true});
    QCOMPARE(b.user.seen, 1);
    QCOMPARE(b.user.isShiftTicked, state == 0);
    QVERIFY(!b.user.isWarned);
    QVERIFY(b.user.isButtonOffered);
}

void TestReceiptWindow::rejectedDialogEndsIt()
{
    ReceiptBench b;
    b.openTwoFields();
    b.print({.isSessionClose = true, .isPortRelease = true, .isCancelled = true});
    QCOMPARE(b.user.seen, 1);
    QCOMPARE(b.lines, QStringList(kRule) + goodDeviceLines());
    QCOMPARE(b.calls, QStringList());
    QCOMPARE(b.robot.takeTexts(), QStringList());
}

void TestReceiptWindow::fiscalisedDevice()
{
    ReceiptBench b;
    b.openTwoFields();
    b.driver.setNumber("getFiscal", 1);
    b.print();
    QCOMPARE(b.user.seen, 1);
    QVERIFY(b.user.isWarned);
    QVERIFY(!b.user.isButtonOffered);
    QCOMPARE(b.lines, QStringList(kRule) + goodDeviceLines());
    QCOMPARE(b.calls, QStringList());
}

void TestReceiptWindow::noConnection()
{
    ReceiptBench b;
    b.openTwoFields();
    b.driver.answer("setDeviceEnabled", {-1, -100});
    b.print();
    QCOMPARE(b.robot.takeTexts(), QStringList("Порт обмена недоступен!"));
    QCOMPARE(b.user.seen, 0);
    QCOMPARE(b.lines, QStringList(kRule) + noConnectionLines());
    QCOMPARE(receiptCalls(b.driver.calls()), QStringList("setDeviceEnabled(1)"));
}

void TestReceiptWindow::openReceiptBlocksTheExchange()
{
    ReceiptBench b;
    b.driver.setNumber("getCheckState", 1);
    b.driver.answer("enterMode", {-1, -100});
    b.print();
    QCOMPARE(b.robot.takeTexts(), QStringList("Обмен невозможен - открыт чек."));
    QCOMPARE(b.user.seen, 0);
    QCOMPARE(b.lines, QStringList(kRule) + noConnectionLines());
    QCOMPARE(b.driver.count("cancelCheck"), 0);
}

void TestReceiptWindow::noDriver()
{
    ReceiptBench b;
    KRD9IO.driverLoaded = false;
    b.print();
    QCOMPARE(b.robot.takeTexts(), QStringList("Драйвер не загружен! Обмен невозможен."));
    QCOMPARE(b.user.seen, 0);
    QCOMPARE(b.lines, QStringList(kRule));
    QCOMPARE(b.driver.calls(), QStringList());
}

void TestReceiptWindow::twoReceipts()
{
    ReceiptBench b;
    b.openTwoFields();
    b.print({.number = 1});
    b.print({.number = 2});
    QCOMPARE(b.user.seen, 2);
    QCOMPARE(b.lines,
             b.head() + upLoadLine(2) + kLoaded + receiptLog() + resultLines(0) + QStringList(kDone));
    QCOMPARE(b.calls.mid(b.calls.indexOf("setDeviceEnabled(1)")),
             goodReceiptCalls("111", "02", {"8.25", "33"}));
}

QTEST_MAIN(TestReceiptWindow)

#include "tst_receipt_window.moc"
