#include "fpaxlibrary.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

#include <functional>
#include <thread>

class TestEmulatorDialog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void dialogIsRussianAndModal();
    void dialogShowsTheDevice();
    void acceptedValuesReachTheDevice();
    void rejectedDialogChangesNothing();
    void acceptedDialogWithoutAChangeChangesNothing();
    void changedPortReachesTheSetting();
    void portThatIsNoComStays();
    void modelBringsItsLineLength();
    void deviceOfAnUnknownModelKeepsIt();
    void faultsOfTheDialogHold();
    void faultsOfTheDialogShowTheRulesInForce();
    void unreadableFaultsKeepTheDialogOpen();
    void otherThreadsGoOnWhileTheDialogIsOpen();
    void dialogOfAWorkerIsRefused();
    void secondDialogShowsWhatTheFirstLeft();

private:
    /// Shows the dialog, lets `steps` work in it, and returns the status.
    int show(const std::function<void(QDialog*)>& steps);
    static void press(QDialog* dialog, QDialogButtonBox::StandardButton button);
    template <class Widget>
    static Widget* find(QDialog* dialog, const char* name);

    std::unique_ptr<FpaxLibrary> m_fpax;
    IFpax* m_driver = nullptr;
};

void TestEmulatorDialog::init()
{
    m_fpax = std::make_unique<FpaxLibrary>();
    m_driver = m_fpax->create();
}

void TestEmulatorDialog::cleanup()
{
    m_fpax.reset();
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

int TestEmulatorDialog::show(const std::function<void(QDialog*)>& steps)
{
    bool seen = false;
    QTimer robot;
    robot.setInterval(5);
    connect(&robot, &QTimer::timeout, this, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            return;
        robot.stop();
        seen = true;
        steps(dialog);
        if (dialog->isVisible())
            press(dialog, QDialogButtonBox::Cancel);
    });
    robot.start();
    const int status = m_driver->ShowProperties();
    return seen ? status : -1000000;
}

void TestEmulatorDialog::press(QDialog* dialog, QDialogButtonBox::StandardButton button)
{
    QTest::mouseClick(find<QDialogButtonBox>(dialog, "buttonBox")->button(button), Qt::LeftButton);
}

template <class Widget>
Widget* TestEmulatorDialog::find(QDialog* dialog, const char* name)
{
    auto* widget = dialog->findChild<Widget*>(name);
    if (widget == nullptr)
        qFatal("no widget %s", name);
    return widget;
}

void TestEmulatorDialog::dialogIsRussianAndModal()
{
    QString title;
    bool modal = false;
    QStringList labels;
    QCOMPARE(show([&](QDialog* dialog) {
                 title = dialog->windowTitle();
                 modal = dialog->isModal();
                 for (const QLabel* label : dialog->findChildren<QLabel*>())
                     labels.append(label->text());
             }),
             0);
    QCOMPARE(title, "Эмулятор кассы");
    QVERIFY(modal);
    QVERIFY(labels.contains("Серийный номер"));
}

void TestEmulatorDialog::dialogShowsTheDevice()
{
    m_fpax->set({{"model", 72},
                 {"modelName", "Тавр 90Ф"},
                 {"serial", "0099"},
                 {"firmwareBuild", 3128},
                 {"fiscal", true},
                 {"shiftOpen", true},
                 {"shiftExpired", true},
                 {"receiptState", 1},
                 {"lineLength", 35},
                 {"connected", false},
                 {"latencyMs", 12}});
    setSetting(m_driver, "Port", "7");
    QStringList seen;
    QCOMPARE(show([&](QDialog* dialog) {
                 seen << find<QComboBox>(dialog, "comboModel")->currentText()
                      << find<QLineEdit>(dialog, "leSerial")->text();
                 for (const char* name : {"spinBuild", "spinLineLength", "spinPort", "spinLatency"})
                     seen << QString::number(find<QSpinBox>(dialog, name)->value());
                 for (const char* name :
                      {"chbFiscal", "chbShift", "chbShiftExpired", "chbReceipt", "chbConnected"})
                     seen << QString::number(find<QCheckBox>(dialog, name)->isChecked());
             }),
             0);
    QCOMPARE(seen, (QStringList{"Тавр 90Ф", "0099", "3128", "35", "7", "12", "1", "1", "1", "1", "0"}));
}

void TestEmulatorDialog::acceptedValuesReachTheDevice()
{
    QCOMPARE(show([](QDialog* dialog) {
                 find<QComboBox>(dialog, "comboModel")->setCurrentText("Тавр 55Ф");
                 find<QLineEdit>(dialog, "leSerial")->setText("555");
                 find<QSpinBox>(dialog, "spinBuild")->setValue(3000);
                 find<QSpinBox>(dialog, "spinLineLength")->setValue(33);
                 find<QSpinBox>(dialog, "spinLatency")->setValue(4);
                 for (const char* name : {"chbFiscal", "chbShift", "chbReceipt", "chbConnected"})
                     QTest::mouseClick(find<QCheckBox>(dialog, name), Qt::LeftButton, {}, QPoint(5, 8));
                 press(dialog, QDialogButtonBox::Ok);
             }),
             0);
    const QJsonObject state = m_fpax->state();
    QCOMPARE(state.value("model").toInt(), 62);
    QCOMPARE(state.value("modelName").toString(), "Тавр 55Ф");
    QCOMPARE(state.value("serial").toString(), "555");
    QCOMPARE(state.value("firmwareBuild").toInt(), 3000);
    QCOMPARE(state.value("lineLength").toInt(), 33);
    QCOMPARE(state.value("latencyMs").toInt(), 4);
    QCOMPARE(state.value("fiscal"), QJsonValue(true));
    QCOMPARE(state.value("shiftOpen"), QJsonValue(true));
    QCOMPARE(state.value("receiptState").toInt(), 1);
    QCOMPARE(state.value("connected"), QJsonValue(false));
}

void TestEmulatorDialog::rejectedDialogChangesNothing()
{
    const QJsonObject before = m_fpax->state();
    const QString port = settingOf(m_driver, "Port");
    QCOMPARE(show([](QDialog* dialog) {
                 find<QLineEdit>(dialog, "leSerial")->setText("no");
                 find<QSpinBox>(dialog, "spinPort")->setValue(99);
                 find<QPlainTextEdit>(dialog, "teFaults")->setPlainText(R"([{"operation": "*"}])");
                 press(dialog, QDialogButtonBox::Cancel);
             }),
             0);
    QCOMPARE(m_fpax->state(), before);
    QCOMPARE(settingOf(m_driver, "Port"), port);
    QCOMPARE(m_driver->setDeviceEnabled(1), 0);
}

void TestEmulatorDialog::acceptedDialogWithoutAChangeChangesNothing()
{
    m_fpax->set({{"receiptState", 2}, {"shiftOpen", true}});
    const QJsonObject before = m_fpax->state();
    QCOMPARE(show([](QDialog* dialog) { press(dialog, QDialogButtonBox::Ok); }), 0);
    QCOMPARE(m_fpax->state(), before);
    QCOMPARE(m_driver->setDeviceEnabled(1), 0);
}

void TestEmulatorDialog::changedPortReachesTheSetting()
{
    setSetting(m_driver, "Port", "5");
    QCOMPARE(m_driver->applySingleSettings(), 0);
    QCOMPARE(show([](QDialog* dialog) {
                 find<QSpinBox>(dialog, "spinPort")->setValue(12);
                 press(dialog, QDialogButtonBox::Ok);
             }),
             0);
    QCOMPARE(settingOf(m_driver, "Port"), "12");
    QCOMPARE(m_fpax->state().value("settings").toObject().value("Port").toString(), "12");
}

void TestEmulatorDialog::portThatIsNoComStays()
{
    setSetting(m_driver, "Port", "USB");
    QCOMPARE(m_driver->applySingleSettings(), 0);
    QCOMPARE(show([](QDialog* dialog) { press(dialog, QDialogButtonBox::Ok); }), 0);
    QCOMPARE(settingOf(m_driver, "Port"), "USB");
}

void TestEmulatorDialog::modelBringsItsLineLength()
{
    int narrow = 0;
    int wide = 0;
    QCOMPARE(show([&](QDialog* dialog) {
                 auto* model = find<QComboBox>(dialog, "comboModel");
                 model->setCurrentText("Тавр 60Ф");
                 narrow = find<QSpinBox>(dialog, "spinLineLength")->value();
                 model->setCurrentText("Тавр 77Ф");
                 wide = find<QSpinBox>(dialog, "spinLineLength")->value();
             }),
             0);
    QCOMPARE(narrow, 36);
    QCOMPARE(wide, 48);
}

void TestEmulatorDialog::deviceOfAnUnknownModelKeepsIt()
{
    m_fpax->set({{"model", 500}, {"modelName", "Другая"}, {"lineLength", 30}});
    QCOMPARE(show([](QDialog* dialog) { press(dialog, QDialogButtonBox::Ok); }), 0);
    QCOMPARE(m_fpax->state().value("model").toInt(), 500);
    QCOMPARE(m_fpax->state().value("modelName").toString(), "Другая");
    QCOMPARE(m_fpax->state().value("lineLength").toInt(), 30);
}

void TestEmulatorDialog::faultsOfTheDialogHold()
{
    QCOMPARE(show([](QDialog* dialog) {
                 find<QPlainTextEdit>(dialog, "teFaults")
                     ->setPlainText(R"([{"operation": "setDeviceEnabled", "code": -909}])");
                 press(dialog, QDialogButtonBox::Ok);
             }),
             0);
    QVERIFY(m_driver->setDeviceEnabled(1) < 0);
    QCOMPARE(codeOf(m_driver), -909);
    QCOMPARE(show([](QDialog* dialog) {
                 find<QPlainTextEdit>(dialog, "teFaults")->clear();
                 press(dialog, QDialogButtonBox::Ok);
             }),
             0);
    QCOMPARE(m_driver->setDeviceEnabled(1), 0);
}

void TestEmulatorDialog::faultsOfTheDialogShowTheRulesInForce()
{
    m_fpax->setFaults({QJsonObject{{"operation", "readStatus"}, {"code", -31337}}});
    QString text;
    QCOMPARE(show([&](QDialog* dialog) { text = find<QPlainTextEdit>(dialog, "teFaults")->toPlainText(); }),
             0);
    QVERIFY(text.contains("-31337"));
}

void TestEmulatorDialog::unreadableFaultsKeepTheDialogOpen()
{
    bool open = false;
    bool told = false;
    bool toldBefore = true;
    QCOMPARE(show([&](QDialog* dialog) {
                 auto* error = find<QLabel>(dialog, "lblFaultsError");
                 toldBefore = error->isVisible();
                 find<QPlainTextEdit>(dialog, "teFaults")->setPlainText("сломайся");
                 press(dialog, QDialogButtonBox::Ok);
                 open = dialog->isVisible();
                 told = error->isVisible();
             }),
             0);
    QVERIFY(open);
    QVERIFY(told);
    QVERIFY(!toldBefore);
}

void TestEmulatorDialog::otherThreadsGoOnWhileTheDialogIsOpen()
{
    IFpax* other = m_fpax->create();
    int status = -1;
    QCOMPARE(show([&](QDialog*) {
                 std::thread worker([&] { status = other->setDeviceEnabled(1); });
                 worker.join();
             }),
             0);
    QCOMPARE(status, 0);
}

void TestEmulatorDialog::dialogOfAWorkerIsRefused()
{
    int status = 0;
    std::thread worker([&] { status = m_driver->ShowProperties(); });
    worker.join();
    QVERIFY(status < 0);
    QVERIFY(codeOf(m_driver) < 0);
}

void TestEmulatorDialog::secondDialogShowsWhatTheFirstLeft()
{
    QCOMPARE(show([](QDialog* dialog) {
                 find<QLineEdit>(dialog, "leSerial")->setText("first");
                 press(dialog, QDialogButtonBox::Ok);
             }),
             0);
    QString serial;
    QCOMPARE(show([&](QDialog* dialog) { serial = find<QLineEdit>(dialog, "leSerial")->text(); }), 0);
    QCOMPARE(serial, "first");
}

QTEST_MAIN(TestEmulatorDialog)
#include "tst_emulator_dialog.moc"
