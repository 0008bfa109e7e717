#include "workflows/connectionbench.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace {

const QString kOpenReceipt = QStringLiteral("Обмен невозможен - открыт чек.");
const QString kReleased = QStringLiteral("Порт освобожден.");
const QString kNotReleased =
    QStringLiteral("<FONT COLOR=red>При попытке освобождения порта возникла ошибка.</FONT>");

/// How a device fails that is asked for an exchange, and what the user is told.
void addDeviceFailures()
{
    QTest::addColumn<QJsonObject>("state");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("message");
    QTest::newRow("port") << QJsonObject() << "setDeviceEnabled" << kNoPortText;
    QTest::newRow("cable") << QJsonObject{{"connected", false}} << "" << kNoPortText;
    QTest::newRow("status") << QJsonObject() << "readStatus" << kNoExchangeText;
    QTest::newRow("version") << QJsonObject() << "readUnitVersion" << kNoExchangeText;
    QTest::newRow("mode") << QJsonObject() << "enterMode" << kNoModeText;
    QTest::newRow("receipt") << QJsonObject{{"receiptState", 1}} << "" << kOpenReceipt;
    QTest::newRow("receipt, and a failure before")
        << QJsonObject{{"receiptState", 1}} << "readUnitVersion" << kNoExchangeText;
}

} // namespace

/// The driver's dialog and the release of the port, chosen in the menu, and what is told of a device that fails.
class TestConnectionMenu : public QObject
{
    Q_OBJECT

private slots:
    void dialogIsFollowedByTheNewState();
    void cancelledDialogIsFollowedByTheState();
    void dialogOfADriverThatReportsMore();
    void dialogThatDoesNotOpen_data() { addFailureRows(); }
    void dialogThatDoesNotOpen();
    void failureAfterTheDialogIsTold_data() { addDeviceFailures(); }
    void failureAfterTheDialogIsTold();
    void failureBeforeAnExchangeIsTold_data();
    void failureBeforeAnExchangeIsTold();
    void windowLivesWhileABoxIsOpen();
    void portIsReleased();
    void portIsNotReleased_data();
    void portIsNotReleased();
    void portIsOpenedAgain();
};

void TestConnectionMenu::dialogIsFollowedByTheNewState()
{
    RunningBench b;
    b.driverDialog.accept([](QDialog& dialog) {
        named<QLineEdit>(dialog, "leSerial")->setText("новый");
        named<QCheckBox>(dialog, "chbShift")->setChecked(true);
    });
    b.choose("actionIOSettings");

    QCOMPARE(b.driverDialog.takeSeen(), 1);
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QCOMPARE(KRD9IO.serialText, QString("новый"));
    QCOMPARE(b.watch->takeNew(), QStringList("ShowProperties() ret=0") + goodDeviceLines());
    const QStringList calls = b.device.takeCalls();
    QCOMPARE(calls.first(2), QStringList({"ShowProperties()", "setDeviceEnabled(1)"}));
    QCOMPARE(calls.last(), QString("enterMode()"));
    QVERIFY(calls.filter("setSingleSetting").isEmpty());
    QTRY_VERIFY(b.statusCell(2)->text().contains(" с/н:новый "));
    QVERIFY(b.statusCell(2)->text().endsWith(" Смена: открыта Чек: закрыт "));
    QCOMPARE(b.harm(b.fields), QStringList());
}

void TestConnectionMenu::cancelledDialogIsFollowedByTheState()
{
    RunningBench b;
    b.driverDialog.cancel([](QDialog& dialog) { named<QLineEdit>(dialog, "leSerial")->setText("новый"); });
    b.choose("actionIOSettings");

    QCOMPARE(b.driverDialog.takeSeen(), 1);
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QCOMPARE(KRD9IO.serialText, QString("0063220000017"));
    QCOMPARE(b.watch->takeNew(), QStringList("ShowProperties() ret=0") + goodDeviceLines());
}

void TestConnectionMenu::dialogOfADriverThatReportsMore()
{
    RunningBench b;
    b.device.setFaults({QJsonObject{{"operation", "ShowProperties"}, {"status", 17}}});
    b.choose("actionIOSettings");
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QCOMPARE(b.watch->takeNew(), QStringList("ShowProperties() ret=17") + goodDeviceLines());
}

void TestConnectionMenu::dialogThatDoesNotOpen()
{
    QFETCH(const Failure, failure);
    RunningBench b;
    b.device.fail("ShowProperties", failure);
    b.choose("actionIOSettings");

    const auto boxes = b.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, kNoDialogText);
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    QCOMPARE(boxes.first().title, QString());
    QCOMPARE(b.watch->takeNew(), QStringList("ShowProperties() ret=-1"));
    // The device is not asked.
    QCOMPARE(b.device.takeCalls(), QStringList("ShowProperties()"));
    QCOMPARE(b.harm(b.fields), QStringList());
}

void TestConnectionMenu::failureAfterTheDialogIsTold()
{
    QFETCH(const QJsonObject, state);
    QFETCH(const QString, operation);
    QFETCH(const QString, message);
    RunningBench b;
    b.device.set(state);
    if (!operation.isEmpty())
        b.device.fail(operation, Failure::Coded);
    b.choose("actionIOSettings");

    const auto boxes = b.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, message);
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    QCOMPARE(b.watch->takeNew(), QStringList("ShowProperties() ret=0") + noConnectionLines());
    QVERIFY(!KRD9IO.modeProgram);
    QCOMPARE(b.harm(b.fields), QStringList());

    // Asked again, a device that is well answers.
    b.device.dropFaults();
    b.device.set({{"connected", true}, {"receiptState", 0}});
    b.choose("actionIOSettings");
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QCOMPARE(b.watch->takeNew(), QStringList("ShowProperties() ret=0") + goodDeviceLines());
}

void TestConnectionMenu::failureBeforeAnExchangeIsTold_data()
{
    QTest::addColumn<QByteArray>("action");
    for (const char* const action : {"actionDnLoad", "actionUpLoad", "actionPrintTestChek"})
        QTest::newRow(action) << QByteArray(action);
}

void TestConnectionMenu::failureBeforeAnExchangeIsTold()
{
    QFETCH(const QByteArray, action);
    RunningBench b;
    QTRY_VERIFY(b.isEnabled(action.constData()));
    const struct
    {
        QJsonObject state;
        const char* operation;
        QString message;
    } failures[] = {{{}, "setDeviceEnabled", kNoPortText},
                    {{}, "readStatus", kNoExchangeText},
                    {{}, "enterMode", kNoModeText},
                    {{{"receiptState", 1}}, "getBadParamDescription", kOpenReceipt}};
    for (const auto& failure : failures) {
        b.device.set(failure.state);
        b.device.fail(failure.operation, Failure::Coded);
        b.device.takeCalls();
        b.choose(action.constData());
        QCOMPARE(b.robot.takeTexts(), QStringList{failure.message});
        QCOMPARE(b.watch->takeNew().last(noConnectionLines().size()), noConnectionLines());
        QVERIFY(!b.device.takeCalls().contains("setMode(1)"));
        QCOMPARE(b.harm(b.fields), QStringList());
    }
}

void TestConnectionMenu::windowLivesWhileABoxIsOpen()
{
    RunningBench b;
    b.device.fail("setDeviceEnabled", Failure::Coded);
    const QString reason = QStringLiteral("Ошибка подключения: [-1000] ") + kFailureText;
    b.robot.whileBoxIsOpen({}, [&] { return b.statusCell(2)->text() == reason; });
    b.choose("actionIOSettings");
    QCOMPARE(b.robot.takeTexts(), QStringList(kNoPortText));
    QCOMPARE(b.statusCell(2)->text(), reason);
}

void TestConnectionMenu::portIsReleased()
{
    RunningBench b;
    const QString line = b.statusCell(2)->text();
    b.choose("actionFreePort");

    const auto boxes = b.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, kReleased);
    QCOMPARE(boxes.first().icon, QMessageBox::NoIcon);
    QCOMPARE(boxes.first().title, QString());
    QCOMPARE(b.device.takeCalls(), QStringList("setDeviceEnabled(0)"));
    QCOMPARE(b.watch->takeNew(), QStringList());
    QVERIFY(KRD9IO.driverIface->readStatus() < 0);
    // What is known of the device stays on show.
    QVERIFY(KRD9IO.portOpen);
    QCOMPARE(b.statusCell(2)->text(), line);
    QVERIFY(b.isEnabled("actionFreePort"));
    QCOMPARE(b.harm(b.fields), QStringList());
}

void TestConnectionMenu::portIsNotReleased_data()
{
    QTest::addColumn<Failure>("failure");
    QTest::addColumn<QString>("message");
    QTest::newRow("code") << Failure::Coded << kNotReleased;
    QTest::newRow("no code") << Failure::Codeless << kReleased;
    QTest::newRow("standard exception") << Failure::Standard << kNotReleased;
    QTest::newRow("any exception") << Failure::Foreign << kNotReleased;
}

void TestConnectionMenu::portIsNotReleased()
{
    QFETCH(const Failure, failure);
    QFETCH(const QString, message);
    RunningBench b;
    b.device.fail("setDeviceEnabled", failure);
    b.choose("actionFreePort");
    const auto boxes = b.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, message);
    QCOMPARE(boxes.first().icon, QMessageBox::NoIcon);
    QCOMPARE(boxes.first().format == Qt::RichText, message == kNotReleased);
    QCOMPARE(boxes.first().isRich(), message == kNotReleased);
    QCOMPARE(b.harm(b.fields), QStringList());
}

void TestConnectionMenu::portIsOpenedAgain()
{
    RunningBench b;
    b.choose("actionFreePort");
    b.choose("actionFreePort");
    QCOMPARE(b.robot.takeTexts(), QStringList({kReleased, kReleased}));
    b.choose("actionIOSettings");
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QCOMPARE(KRD9IO.driverIface->readStatus(), 0);
}

QTEST_MAIN(TestConnectionMenu)

#include "tst_connection_menu.moc"
