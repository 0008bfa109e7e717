#include "sessionuser.h"

#include "app/mainwindow.h"
#include "support/windowprobe.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTest>

namespace {

QList<quint32> seeds{1};
int actions = 20000;

} // namespace

class tst_RandomSession : public QObject
{
    Q_OBJECT

private slots:
    void everyStateIsWhole_data();
    void everyStateIsWhole();
};

void tst_RandomSession::everyStateIsWhole_data()
{
    QTest::addColumn<quint32>("seed");
    for (const quint32 seed : std::as_const(seeds))
        QTest::addRow("seed %u", seed) << seed;
}

void tst_RandomSession::everyStateIsWhole()
{
    QFETCH(const quint32, seed);
    qInfo("seed %u, %d actions; again with: tst_random_session --seed %u --actions %d", seed, actions, seed,
          actions);
    const ProgramDir dir;
    DialogRobot robot;
    MainWindow window;
    WindowProbe(window).setSelectionTick(0);
    showAndStart(window);
    SessionUser user(window, robot, dir, seed);
    user.open();
    constexpr int kToldActions = 8;
    QStringList story;
    for (int i = 1; i <= actions; ++i) {
        const QStringList wrong = user.act();
        story.append(QStringLiteral("%1 %2").arg(QString::number(i), user.lastAction()));
        if (story.size() > kToldActions)
            story.removeFirst();
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n') + u"\nafter\n" + story.join(u'\n')));
    }
}

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("seed"), QStringLiteral("The seed of the one session to run."),
                      QStringLiteral("number")});
    parser.addOption({QStringLiteral("actions"),
                      QStringLiteral("How many things the user does in a session."),
                      QStringLiteral("number")});
    parser.process(app);
    bool isUsable = true;
    if (parser.isSet(QStringLiteral("seed")))
        seeds = {parser.value(QStringLiteral("seed")).toUInt(&isUsable)};
    if (isUsable && parser.isSet(QStringLiteral("actions")))
        actions = parser.value(QStringLiteral("actions")).toInt(&isUsable);
    if (!isUsable || actions < 1)
        parser.showHelp(2);
    tst_RandomSession test;
    return QTest::qExec(&test, {app.applicationFilePath()});
}

#include "tst_random_session.moc"
