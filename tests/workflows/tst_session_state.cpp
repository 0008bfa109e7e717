#include "workflows/connectionbench.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QLabel>
#include <QTest>

namespace {

const QString kUnknownReason = QStringLiteral("Связь не установлена, причина неизвестна.");
const QString kOpenReceipt = QStringLiteral("Обмен невозможен - открыт чек.");

/// Between two looks a mark has gone from a label.
struct Passing
{
    qint64 before = 0;
    qint64 after = 0;
};

/// A window without a driver, to which a session can be shown in any state.
struct AskedWindow
{
    SessionRenewal renewal;
    ProgramDir dir;
    MainWindow window;
};

/// Writes a mark into `cell` and lets the program run until it is gone.
Passing passingOfAMark(QLabel& cell, const QElapsedTimer& clock)
{
    const QString mark = QStringLiteral("метка");
    const QDeadlineTimer tooLate(30000);
    cell.setText(mark);
    Passing passing;
    while (cell.text() == mark && !tooLate.hasExpired()) {
        passing.before = clock.elapsed();
        QCoreApplication::processEvents();
        passing.after = clock.elapsed();
    }
    if (cell.text() == mark)
        qFatal("nothing writes to the cell");
    return passing;
}

} // namespace

/// What the window makes of the state that the session has: the words for a failure, and the cell of the status bar.
class TestSessionState : public QObject
{
    Q_OBJECT

private slots:
    void cleanupTestCase() { m_asked.reset(); }

    void statusCellIsWrittenFiveTimesASecondAtMost();
    void failureHasItsWords_data();
    void failureHasItsWords();

private:
    std::unique_ptr<AskedWindow> m_asked;
};

void TestSessionState::statusCellIsWrittenFiveTimesASecondAtMost()
{
    constexpr int turns = 4;
    constexpr qint64 shortestTurnMs = 190; // 200, which a coarse timer may cut by a twentieth
    RunningBench b;
    QLabel& cell = *b.statusCell(2);
    const QString status = cell.text();
    QElapsedTimer clock;
    clock.start();
    const Passing first = passingOfAMark(cell, clock);
    Passing last;
    for (int turn = 0; turn < turns; ++turn) {
        last = passingOfAMark(cell, clock);
        QCOMPARE(cell.text(), status);
    }
    // However late a look was, the true time is not longer than this.
    const qint64 longest = last.after - first.before;
    QVERIFY2(longest >= turns * shortestTurnMs, qPrintable(QString::number(longest)));
}

void TestSessionState::failureHasItsWords_data()
{
    QTest::addColumn<bool>("portOpen");
    QTest::addColumn<bool>("connected");
    QTest::addColumn<bool>("modeProgram");
    QTest::addColumn<int>("receipt");
    QTest::addColumn<QString>("words");
    const auto row = [](const char* name, bool portOpen, bool connected, bool modeProgram, int receipt,
                        const QString& words) {
        QTest::newRow(name) << portOpen << connected << modeProgram << receipt << words;
    };
    row("nothing is well", false, false, false, 0, kNoPortText);
    row("no port, all else well", false, true, true, 0, kNoPortText);
    row("no port, and a receipt", false, true, false, 1, kNoPortText);
    row("no port, no link, program mode, a receipt", false, false, true, 1, kNoPortText);
    row("no link", true, false, false, 0, kNoExchangeText);
    row("no link, program mode", true, false, true, 0, kNoExchangeText);
    row("no link, and a receipt", true, false, false, 1, kNoExchangeText);
    row("no link, program mode, a receipt", true, false, true, 1, kNoExchangeText);
    row("program mode", true, true, true, 0, kUnknownReason);
    row("program mode, and a receipt", true, true, true, 1, kUnknownReason);
    row("no mode", true, true, false, 0, kNoModeText);
    row("a receipt", true, true, false, 1, kOpenReceipt);
    row("another state of the receipt", true, true, false, 4, kOpenReceipt);
    row("a state below zero", true, true, false, -1, kOpenReceipt);
}

void TestSessionState::failureHasItsWords()
{
    QFETCH(const bool, portOpen);
    QFETCH(const bool, connected);
    QFETCH(const bool, modeProgram);
    QFETCH(const int, receipt);
    if (!m_asked)
        m_asked = std::make_unique<AskedWindow>();
    KRD9IO.portOpen = portOpen;
    KRD9IO.connected = connected;
    KRD9IO.modeProgram = modeProgram;
    KRD9IO.checkState = receipt;
    QTEST(WindowProbe(m_asked->window).connectionFailure(), "words");
}

QTEST_MAIN(TestSessionState)

#include "tst_session_state.moc"
