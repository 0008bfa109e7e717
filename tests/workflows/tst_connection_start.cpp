#include "workflows/connectionbench.h"

#include <QAction>
#include <QLabel>
#include <QPixmap>
#include <QTest>

namespace {

constexpr auto kGoodPicture = ":/images/ok2424r.png";
constexpr auto kBadPicture = ":/images/err2424r.png";

bool shows(const QLabel& label, const char* image)
{
    const QImage picture = QPixmap(QString::fromLatin1(image)).toImage();
    return !picture.isNull() && label.pixmap(Qt::ReturnByValue).toImage() == picture;
}

/// What is written down when the program starts with this device and the usual settings.
QStringList logOfAStart(ConnectionBench& b)
{
    b.writeUsualSettings();
    b.start();
    return b.log();
}

} // namespace

/// The start of the program: without a driver, with a device that answers, and with one that does not.
class TestConnectionStart : public QObject
{
    Q_OBJECT

private slots:
    void goodDeviceIsShown();
    void callsOfAStart();
    void logOfAGoodDeviceIsExact();
    void missingDriverIsShown();
    void commandsWithoutADriver_data();
    void commandsWithoutADriver();
    void deviceWithoutAPort();
    void silentDeviceIsLogged();
    void openReceiptIsLogged();
    void statusLineTellsShiftAndReceipt_data();
    void statusLineTellsShiftAndReceipt();
    void statusLineWithoutADescription();
    void deviceTextsArePlainText();
    void refusalIsPlainText();
    void throwingDriver_data();
    void throwingDriver();
    void uploadComesWithLinesOrATemplate();
};

void TestConnectionStart::goodDeviceIsShown()
{
    ConnectionBench b;
    const QStringList log = logOfAStart(b);

    QCOMPARE(log, driverLines() + goodDeviceLines());
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QVERIFY(shows(*b.statusCell(0), kGoodPicture));
    QVERIFY(!shows(*b.statusCell(0), kBadPicture));
    QCOMPARE(b.statusCell(1)->text(), QString(" 1.0.0 "));
    QCOMPARE(b.statusCell(2)->text(), QString());
    QVERIFY(KRD9IO.driverLoaded && KRD9IO.portOpen && KRD9IO.connected && KRD9IO.modeProgram);

    b.showAndWait();
    QCOMPARE(b.statusCell(2)->text(),
             KRD9IO.deviceText + " с/н:0063220000017 Лента: 48 симв. Смена: закрыта Чек: закрыт ");
    QVERIFY(!b.isEnabled("actionUpLoad"));
    QVERIFY(!b.isEnabled("actionFreeStrEditor"));
    for (const char* const action :
         {"actionIOSettings", "actionDnLoad", "actionPrintTestChek", "actionFreePort"})
        QVERIFY2(b.isEnabled(action), action);
}

void TestConnectionStart::callsOfAStart()
{
    ConnectionBench b;
    logOfAStart(b);
    const QStringList calls = b.device.takeCalls();
    QCOMPARE(
        calls.first(8),
        QStringList({"getDriverName(4096)", "getDriverVersion(4096)", R"(setSingleSetting("Model", "63"))",
                     QStringLiteral("setSingleSetting(\"SearchDir\", \"%1/\")").arg(Settings.pathApp),
                     R"(setSingleSetting("Protocol", "3"))", R"(setSingleSetting("Port", "5"))",
                     R"(setSingleSetting("BaudRate", "115200"))", "applySingleSettings()"}));
    QCOMPARE(calls.value(8), QString("setDeviceEnabled(1)"));
    QCOMPARE(calls.last(), QString("enterMode()"));
    QCOMPARE(calls.size(), 33);

    // The timers ask the driver nothing.
    b.showAndWait();
    b.statusCell(2)->setText("прежний текст");
    QTRY_VERIFY(b.statusCell(2)->text() != u"прежний текст");
    QCOMPARE(b.device.takeCalls(), QStringList());
}

void TestConnectionStart::logOfAGoodDeviceIsExact()
{
    ConnectionBench b;
    b.device.set({{"modelName", "Тавр 90Ф"},
                  {"lineLength", 44},
                  {"firmwareMajor", 5},
                  {"firmwareMinor", 6},
                  {"firmwareBuild", 3128},
                  {"fiscal", true},
                  {"shiftOpen", true}});
    const QStringList log = logOfAStart(b).mid(2);
    QCOMPARE(log, QStringList({"==== Полученные данные ====", "\"Эмулятор кассы\" v1.0.0",
                               "Тавр 90Ф;эмулятор кассы;лента 44 симв.", "Прошивка:\t\t5.6.3128",
                               "Версия шаблонов:\t-", "Состояние сессии:\t1 \tЧек: 0 Fiscal: 1"}));
}

void TestConnectionStart::missingDriverIsShown()
{
    ConnectionBench b;
    b.device.remove();
    b.start();

    const QString reason = KRD9IO.library->fileName() + "\n" + KRD9IO.library->errorString();
    QCOMPARE(b.log().join(u'\n'), "Драйвер НЕ загружен! ret=1 strOut=Ошибка загрузки библиотеки " + reason);
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QVERIFY(shows(*b.statusCell(0), kBadPicture));
    QCOMPARE(b.statusCell(1)->text(), QString("Драйвер НЕ загружен!"));
    QVERIFY(!QFile::exists(b.settingsPath()));

    b.showAndWait();
    b.statusCell(2)->setText("прежний текст");
    auto* const freePort = named<QAction>(*b.window, "actionFreePort");
    freePort->setEnabled(true);
    QTRY_VERIFY(!freePort->isEnabled());
    QCOMPARE(b.statusCell(2)->text(), QString("прежний текст"));
    QCOMPARE(b.device.takeCalls(), QStringList());
}

void TestConnectionStart::commandsWithoutADriver_data()
{
    QTest::addColumn<QByteArray>("action");
    for (const char* const action :
         {"actionIOSettings", "actionDnLoad", "actionUpLoad", "actionPrintTestChek"})
        QTest::newRow(action) << QByteArray(action);
}

void TestConnectionStart::commandsWithoutADriver()
{
    QFETCH(const QByteArray, action);
    ConnectionBench b;
    b.device.remove();
    b.start();
    b.showAndWait();
    const auto fields = manyFields(3);
    b.openFields(fields);
    QTRY_VERIFY(b.isEnabled("actionUpLoad"));

    chooseInMenu(*b.window, action.constData());

    const auto boxes = b.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, QString("Драйвер не загружен! Обмен невозможен."));
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    QCOMPARE(b.harm(fields), QStringList());
}

void TestConnectionStart::deviceWithoutAPort()
{
    ConnectionBench b;
    b.device.set({{"connected", false}});
    const QStringList log = logOfAStart(b);

    QVERIFY(KRD9IO.deviceText.startsWith("Ошибка подключения: [-"));
    QCOMPARE(log, driverLines() +
                      QStringList({"==== No connection ====", "Driver:\t1 \t" + KRD9IO.deviceText,
                                   "Port:  \t0", "Connect:\t0", "ModePrgrm:\t0", "Сессия:\t0 \tЧек: 0"}));
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QVERIFY(shows(*b.statusCell(0), kGoodPicture));

    b.showAndWait();
    QCOMPARE(b.statusCell(2)->text(), KRD9IO.deviceText);
    QVERIFY(b.isEnabled("actionFreePort"));
}

void TestConnectionStart::silentDeviceIsLogged()
{
    ConnectionBench b;
    b.device.fail("readStatus", Failure::Coded);
    const QStringList log = logOfAStart(b);

    QCOMPARE(log, driverLines() + QStringList({"==== No connection ====", "Driver:\t1 \t", "Port:  \t1",
                                               "Connect:\t0", "ModePrgrm:\t0", "Сессия:\t0 \tЧек: 0"}));
    QCOMPARE(b.robot.takeTexts(), QStringList());
    b.showAndWait();
    QCOMPARE(b.statusCell(2)->text(), QString());
}

void TestConnectionStart::openReceiptIsLogged()
{
    ConnectionBench b;
    b.device.set({{"receiptState", 1}, {"shiftOpen", true}, {"mode", 1}});
    const QStringList log = logOfAStart(b);

    QCOMPARE(log, driverLines() +
                      QStringList(
                          {"==== No connection ====", "Driver:\t1 \tТавр 22Ф;эмулятор кассы;лента 48 симв.",
                           "Port:  \t1", "Connect:\t1", "ModePrgrm:\t0", "Сессия:\t1 \tЧек: 1"}));
    QCOMPARE(b.robot.takeTexts(), QStringList());
    b.showAndWait();
    QVERIFY(b.statusCell(2)->text().endsWith(" Смена: открыта Чек: открыт "));
}

void TestConnectionStart::statusLineTellsShiftAndReceipt_data()
{
    QTest::addColumn<bool>("shift");
    QTest::addColumn<int>("receipt");
    QTest::addColumn<QString>("end");
    QTest::newRow("both closed") << false << 0 << " Смена: закрыта Чек: закрыт ";
    QTest::newRow("shift open") << true << 0 << " Смена: открыта Чек: закрыт ";
    QTest::newRow("receipt open") << false << 3 << " Смена: закрыта Чек: открыт ";
    QTest::newRow("both open") << true << 1 << " Смена: открыта Чек: открыт ";
}

void TestConnectionStart::statusLineTellsShiftAndReceipt()
{
    QFETCH(const bool, shift);
    QFETCH(const int, receipt);
    QFETCH(const QString, end);
    ConnectionBench b;
    b.device.set({{"shiftOpen", shift}, {"receiptState", receipt}, {"lineLength", 32}, {"serial", "77"}});
    logOfAStart(b);
    b.showAndWait();
    QCOMPARE(b.statusCell(2)->text(), "Тавр 22Ф;эмулятор кассы;лента 32 симв. с/н:77 Лента: 32 симв." + end);
}

void TestConnectionStart::statusLineWithoutADescription()
{
    ConnectionBench b;
    b.device.fail("getDeviceDescription", Failure::Coded);
    const QStringList log = logOfAStart(b);
    QCOMPARE(log.mid(2), goodDeviceLines());
    QCOMPARE(log.value(4), QString());
    b.showAndWait();
    QCOMPARE(b.statusCell(2)->text(), QString());

    // A description that speaks of a failed connection stands alone, wherever it does.
    b.stop();
    b.device.dropFaults();
    b.device.set({{"modelName", "Касса: Ошибка подключения"}});
    b.start();
    b.showAndWait();
    QCOMPARE(b.statusCell(2)->text(), KRD9IO.deviceText);
    QVERIFY(KRD9IO.deviceText.startsWith("Касса: Ошибка подключения;"));
}

void TestConnectionStart::deviceTextsArePlainText()
{
    ConnectionBench b;
    const QString name = "<b>Касса</b> %1 &amp; <img src=x>";
    const QString serial = "<i>%2</i>%1";
    b.device.set({{"modelName", name}, {"serial", serial}, {"templateMajor", "<u>%3</u>"}});
    const QStringList log = logOfAStart(b);

    QCOMPARE(log, driverLines() + goodDeviceLines());
    QVERIFY(log.contains(name + ";эмулятор кассы;лента 48 симв."));
    QVERIFY(log.contains("Версия шаблонов:\t<u>%3</u>.0.27"));

    b.showAndWait();
    QCOMPARE(b.statusCell(2)->textFormat(), Qt::PlainText);
    QCOMPARE(b.statusCell(2)->text(), name + ";эмулятор кассы;лента 48 симв. с/н:" + serial +
                                          " Лента: 48 симв. Смена: закрыта Чек: закрыт ");
}

void TestConnectionStart::refusalIsPlainText()
{
    ConnectionBench b;
    b.device.fail("setDeviceEnabled", Failure::Coded);
    const QStringList log = logOfAStart(b);
    const QString reason = QStringLiteral("Ошибка подключения: [-1000] ") + kFailureText;
    QVERIFY(log.contains("Driver:\t1 \t" + reason));
    b.showAndWait();
    QCOMPARE(b.statusCell(2)->text(), reason);
    QCOMPARE(b.statusCell(2)->textFormat(), Qt::PlainText);
}

void TestConnectionStart::throwingDriver_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QStringList>("boxes");
    QTest::addColumn<QString>("line");
    const QString settingsFailure = "Ошибка при задании настроек обмена (ret=255)";
    const auto row = [](const char* operation, const QStringList& boxes, const QString& line) {
        QTest::newRow(operation) << QString(operation) << boxes << line;
    };
    row("getDriverName", {}, "Драйвер успешно загружен: \"\" v");
    row("setSingleSetting", {settingsFailure}, settingsFailure);
    row("applySingleSettings", {settingsFailure}, settingsFailure);
    row("setDeviceEnabled", {}, "Port:  \t0");
    row("readStatus", {}, "Connect:\t0");
    row("getSerialNumber", {}, "Connect:\t0");
    row("getFiscal", {}, "Connect:\t0");
    row("enterMode", {}, "ModePrgrm:\t0");
    row("getResultCode", {}, "==== Полученные данные ====");
}

void TestConnectionStart::throwingDriver()
{
    QFETCH(const QString, operation);
    QFETCH(const QStringList, boxes);
    QFETCH(const QString, line);
    for (const Failure failure : {Failure::Standard, Failure::Foreign}) {
        ConnectionBench b;
        b.device.fail(operation, failure);
        const QStringList log = logOfAStart(b);
        QVERIFY2(log.contains(line), qPrintable(log.join(u'\n')));
        QCOMPARE(b.robot.takeTexts(), boxes);
        QVERIFY(KRD9IO.driverLoaded);
    }
}

void TestConnectionStart::uploadComesWithLinesOrATemplate()
{
    ConnectionBench b;
    logOfAStart(b);
    b.showAndWait();
    WindowProbe(*b.window).freeStrings() = {"строка"};
    QTRY_VERIFY(b.isEnabled("actionUpLoad"));
    QVERIFY(b.isEnabled("actionFreeStrEditor"));
    QVERIFY(named<QWidget>(*b.window, "btnFreeStrEditor")->isEnabled());
    WindowProbe(*b.window).freeStrings().clear();
    QTRY_VERIFY(!b.isEnabled("actionUpLoad"));
    QVERIFY(!b.isEnabled("actionFreeStrEditor"));
    QVERIFY(!named<QWidget>(*b.window, "btnFreeStrEditor")->isEnabled());
    b.openFields(manyFields(3));
    QTRY_VERIFY(b.isEnabled("actionUpLoad"));
    QVERIFY(!b.isEnabled("actionFreeStrEditor"));
}

QTEST_MAIN(TestConnectionStart)

#include "tst_connection_start.moc"
