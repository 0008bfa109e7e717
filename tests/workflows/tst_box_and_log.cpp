#include "support/filelimit.h"
#include "workflows/connectionbench.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QTest>

namespace {

/// The log of the window there is, also while it is still being made.
QStringList presentLog()
{
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (auto* const window = qobject_cast<MainWindow*>(widget))
            return WindowProbe(*window).log();
    }
    return {};
}

/// Remembers for each box of `robot` what it said, and the log that stood behind it.
struct BoxWatch
{
    struct Look
    {
        QString text;
        QStringList log;
    };

    explicit BoxWatch(DialogRobot& robot)
    {
        robot.atEachBox([this](const DialogRobot::SeenBox& box) { looks.append({box.text, presentLog()}); });
    }

    QList<Look> looks;
};

// Macros, so that a failure names the test's line and ends the test.

/// The only box said `message`, and `line` was the last one in the log then.
#define VERIFY_BOX(watch, message, line)                                                                     \
    do {                                                                                                     \
        QCOMPARE((watch).looks.size(), 1);                                                                   \
        QCOMPARE((watch).looks.first().text, QString(message));                                              \
        QVERIFY(!(watch).looks.first().log.isEmpty());                                                       \
        QCOMPARE((watch).looks.first().log.last(), QString(line));                                           \
    } while (false)

} // namespace

/// Which comes first, the message box or the line in the log that tells of the same.
class TestBoxAndLog : public QObject
{
    Q_OBJECT

private slots:
    void refusedSettingsAreShownFirst();
    void failedReopeningIsShownFirst();
    void failedCreationIsLoggedFirst();
    void failedDialogIsLoggedFirst();
    void missingConnectionIsLoggedFirst();
    void unsavedLogIsLoggedFirst();
    void unknownFormatIsLoggedFirst();
    void badFieldsAreShownFirst();
};

void TestBoxAndLog::refusedSettingsAreShownFirst()
{
    ConnectionBench b;
    BoxWatch watch(b.robot);
    b.writeSettings("{}");
    b.start();
    const QString refusal = QStringLiteral("Ошибка при задании настроек обмена (ret=13)");
    VERIFY_BOX(watch, refusal, driverLines().last());
    QCOMPARE(b.log(), watch.looks.first().log + QStringList{refusal});
}

void TestBoxAndLog::failedReopeningIsShownFirst()
{
#ifdef Q_OS_UNIX
    ConnectionBench b;
    BoxWatch watch(b.robot);
    {
        const FileLimit limit(16); // the new settings are cut
        b.start();
    }
    const QString failure = QStringLiteral("Ошибка в настройках (переоткрытие settings.json)");
    QCOMPARE(watch.looks.size(), 1);
    QCOMPARE(watch.looks.first().text, failure);
    QCOMPARE(b.log(), watch.looks.first().log + QStringList{failure});
#else
    QSKIP("no limit for the length of files here");
#endif
}

void TestBoxAndLog::failedCreationIsLoggedFirst()
{
    ConnectionBench b;
    BoxWatch watch(b.robot);
    QVERIFY(QDir().mkdir(b.settingsPath()));
    b.start();
    VERIFY_BOX(watch, "Ошибка в настройках (создание settings.json)",
               "Не удалось содать новый файл с настройками!");
    QCOMPARE(b.log(), watch.looks.first().log);
}

void TestBoxAndLog::failedDialogIsLoggedFirst()
{
    RunningBench b;
    BoxWatch watch(b.robot);
    b.device.fail("ShowProperties", Failure::Coded);
    b.choose("actionIOSettings");
    VERIFY_BOX(watch, kNoDialogText, "ShowProperties() ret=-1");
    QCOMPARE(b.log(), watch.looks.first().log);
}

void TestBoxAndLog::missingConnectionIsLoggedFirst()
{
    RunningBench b;
    BoxWatch watch(b.robot);
    b.device.set({{"connected", false}});
    b.choose("actionDnLoad");
    const QStringList lines = noConnectionLines();
    VERIFY_BOX(watch, kNoPortText, lines.last());
    QCOMPARE(watch.looks.first().log.last(lines.size()), lines);
    QCOMPARE(b.log(), watch.looks.first().log);
}

void TestBoxAndLog::unsavedLogIsLoggedFirst()
{
    RunningBench b;
    BoxWatch watch(b.robot);
    QVERIFY(QDir().mkdir(b.dir.path("outlog.txt")));
    auto* const line = named<QLineEdit>(*b.window, "lePolesFilterStr");
    line->clear();
    QTest::keyClicks(line, "SAVELOG");
    QTest::keyClick(line, Qt::Key_Return);
    const QString failure = QStringLiteral("Не удалось содать новый файл с логом!");
    VERIFY_BOX(watch, failure, failure);
    QCOMPARE(b.log(), watch.looks.first().log);
}

void TestBoxAndLog::unknownFormatIsLoggedFirst()
{
    RunningBench b;
    BoxWatch watch(b.robot);
    openTemplate(*b.window, b.robot, b.dir.write("letter.csv", "Добрый день!\n"));
    QCOMPARE(watch.looks.size(), 2);
    for (const auto& look : watch.looks)
        QCOMPARE(look.log.last(), QString("Не распознан формат!"));
    QCOMPARE(watch.looks.at(1).text, QString("Корректных данных не найдено!"));
}

void TestBoxAndLog::badFieldsAreShownFirst()
{
    RunningBench b;
    BoxWatch watch(b.robot);
    openTemplate(*b.window, b.robot, b.dir.write("bad.csv", maskFile({{.font = 8}})));
    QCOMPARE(watch.looks.size(), 1);
    const auto& look = watch.looks.first();
    QVERIFY2(look.text.startsWith("Поля шаблона имеют недопустимые значения!\n"), qPrintable(look.text));
    QCOMPARE(look.log.last(), QString("Распознан формат: new, 26+str"));
    QCOMPARE(b.log(), look.log + look.text.split(u'\n') + QStringList{"Scene cleared!"});
}

QTEST_MAIN(TestBoxAndLog)

#include "tst_box_and_log.moc"
