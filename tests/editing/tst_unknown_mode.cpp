#include "editing/editingsession.h"
#include "support/ownprocess.h"
#include "support/tablesteps.h"

#include <QApplication>
#include <QTableWidget>
#include <QTest>

#include <cstdio>
#include <memory>

namespace {

constexpr int kPositionRow = 2;
constexpr auto kCommit = "--commit";
constexpr auto kFill = "--fill";
constexpr auto kFillOthers = "--fill-others";

/// What a program that ends must still tell about.
struct LastWords
{
    std::unique_ptr<EditingSession> session;
    EditingSession::Records before;
    qsizetype logged = 0;
};

LastWords& lastWords()
{
    static LastWords words;
    return words;
}

void tell(const QString& line)
{
    std::puts(qPrintable(line));
    std::fflush(stdout);
}

void tellLogAndChanges()
{
    const LastWords& words = lastWords();
    for (const auto& line : logSince(words.session->window, words.logged))
        tell(QStringLiteral("log: ") + line);
    for (const auto& change : words.session->changesSince(words.before))
        tell(QStringLiteral("record: ") + change);
}

void tellTheEnd(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    if (type != QtFatalMsg) {
        std::fputs(qPrintable(text + u'\n'), stderr);
        return;
    }
    tellLogAndChanges();
    tell(QStringLiteral("fatal: ") + text);
}

/// The part of the program that may end: `what` is done while the table is in `mode`.
int runPart(const QByteArray& what, int mode)
{
    LastWords& words = lastWords();
    words.session = std::make_unique<EditingSession>(workFields());
    EditingSession& session = *words.session;
    words.before = session.records();
    if (what == kCommit)
        pickPole(session.window, 3);
    session.probe.setTableMode(mode);
    words.logged = session.probe.log().size();
    qInstallMessageHandler(tellTheEnd);
    if (what == kCommit) {
        typeNumber(session.window, kPositionRow, QStringLiteral("7"));
    } else if (what == kFill) {
        pickPole(session.window, 3);
    } else {
        pickItem(session.window, headerItem(session.window, 3));
        tell(valueCell(session.window, 0)->text());
        pickItem(session.window, lineItem(session.window, 1, 2));
        tell(valueCell(session.window, 3)->text());
    }
    tellLogAndChanges();
    qInstallMessageHandler(nullptr);
    words.session.reset();
    return 0;
}

/// Runs `what` in a process of its own.
Ended endOf(const char* what, int mode)
{
    return runMyself({QString::fromLatin1(what), QString::number(mode)});
}

} // namespace

class tst_UnknownMode : public QObject
{
    Q_OBJECT

private slots:
    void commitEndsTheProgram_data();
    void commitEndsTheProgram();
    void shownFieldEndsTheProgram_data();
    void shownFieldEndsTheProgram();
    void headingsAndLinesAreShownInAnyMode();
    void knownModeGoesOn();
};

void tst_UnknownMode::commitEndsTheProgram_data()
{
    QTest::addColumn<int>("mode");
    for (const int mode : {0, 3, -1, 65538})
        QTest::addRow("%d", mode) << mode;
}

void tst_UnknownMode::commitEndsTheProgram()
{
    QFETCH(const int, mode);
    const Ended ended = endOf(kCommit, mode);
    QCOMPARE(ended.status, QProcess::CrashExit);
    // The cell is read before the rule is looked for, and nothing comes after it.
    QCOMPARE(ended.lines.size(), 2);
    QCOMPARE(ended.lines.at(0), QStringLiteral("log: int!=in2: 7 7 0"));
    QVERIFY2(ended.lines.at(1).startsWith(QStringLiteral("fatal: ")), qPrintable(ended.lines.at(1)));
    QVERIFY2(ended.lines.at(1).contains(QString::number(mode)), qPrintable(ended.lines.at(1)));
    QCOMPARE(sanitizerReport(ended.errors), QString());
}

void tst_UnknownMode::shownFieldEndsTheProgram_data()
{
    commitEndsTheProgram_data();
}

void tst_UnknownMode::shownFieldEndsTheProgram()
{
    QFETCH(const int, mode);
    const Ended ended = endOf(kFill, mode);
    QCOMPARE(ended.status, QProcess::CrashExit);
    QVERIFY(!ended.lines.isEmpty());
    QVERIFY2(ended.lines.constLast().startsWith(QStringLiteral("fatal: ")),
             qPrintable(ended.lines.constLast()));
    QCOMPARE(ended.lines.filter(QStringLiteral("cellChngd")), QStringList());
    QCOMPARE(ended.lines.filter(QStringLiteral("record: ")), QStringList());
    QCOMPARE(sanitizerReport(ended.errors), QString());
}

void tst_UnknownMode::headingsAndLinesAreShownInAnyMode()
{
    const Ended ended = endOf(kFillOthers, 3);
    QCOMPARE(ended.status, QProcess::NormalExit);
    QCOMPARE(ended.code, 0);
    QCOMPARE(ended.lines, (QStringList{QStringLiteral("Итог"), QStringLiteral("[1] Регистрация"),
                                       QStringLiteral("log: new selItem type=65537 idx=3 ..."),
                                       QStringLiteral("log: new selItem type=65539 idx=1 ...")}));
}

void tst_UnknownMode::knownModeGoesOn()
{
    const Ended ended = endOf(kCommit, 1);
    QCOMPARE(ended.status, QProcess::NormalExit);
    QCOMPARE(ended.code, 0);
    QCOMPARE(ended.lines.filter(QStringLiteral("fatal: ")), QStringList());
    QCOMPARE(ended.lines.filter(QStringLiteral("log: cellChngd")).size(), 3);
    QCOMPARE(ended.lines.constLast(), QStringLiteral("record: 3.X=7"));
}

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const QByteArray what(argc == 3 ? argv[1] : "");
    if (what == kCommit || what == kFill || what == kFillOthers)
        return runPart(what, QByteArray(argv[2]).toInt());
    tst_UnknownMode test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_unknown_mode.moc"
