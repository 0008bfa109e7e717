#include "fpaxsteps.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

class TestEmulatorState : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void changesAreWrittenAndReadBack();
    void fileIsWrittenByTheOperationsThatMatter();
    void registersDoNotTouchTheFile();
    void settingsSurvive();
    void stateSurvivesUnloading();
    void badFileGivesDefaults_data();
    void badFileGivesDefaults();
    void membersOfWrongTypesAreLeftOut_data();
    void membersOfWrongTypesAreLeftOut();
    void countersHaveRoomToCountOn_data();
    void countersHaveRoomToCountOn();
    void directoryInPlaceOfTheFileIsNoHarm();
    void missingFolderIsNoHarm();
    void withoutAFolderTheProgramsOwnIsUsed();
    void resetLeavesTheFileAlone();
    void reloadTakesTheFileAgain();

private:
    QString file() const { return m_folder->filePath("fpax_state.json"); }
    void write(const QByteArray& content) const;
    QJsonObject written() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestEmulatorState::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    qputenv("FPAX_HOME", m_folder->path().toUtf8());
}

void TestEmulatorState::cleanup()
{
    qunsetenv("FPAX_HOME");
    m_folder.reset();
}

void TestEmulatorState::write(const QByteArray& content) const
{
    QFile target(file());
    QVERIFY(target.open(QIODevice::WriteOnly));
    target.write(content);
}

QJsonObject TestEmulatorState::written() const
{
    QFile source(file());
    if (!source.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(source.readAll()).object();
}

void TestEmulatorState::changesAreWrittenAndReadBack()
{
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    const QJsonObject changes{
        {"serial", "777"},        {"model", 61},        {"modelName", "Тавр 30Ф"}, {"firmwareBuild", 3000},
        {"fiscal", true},         {"shiftOpen", true},  {"shiftExpired", true},    {"receiptState", 1},
        {"lineLength", 36},       {"mode", 1},          {"connected", false},      {"latencyMs", 3},
        {"templateBuild", "901"}, {"firmwareMajor", 9}, {"firmwareMinor", 8},      {"templateMajor", "7"},
        {"templateMinor", "6"}};
    fpax.set(changes);
    const QJsonObject state = fpax.state();
    QCOMPARE(written(), state);
    for (auto it = changes.begin(); it != changes.end(); ++it)
        QCOMPARE(state.value(it.key()), it.value());
    fpax.reset();
    QVERIFY(fpax.state() != state);
    fpax.control({{"cmd", "reload"}});
    QCOMPARE(fpax.state(), state);
}

void TestEmulatorState::fileIsWrittenByTheOperationsThatMatter()
{
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    IFpax* driver = connected(fpax);
    QCOMPARE(enter(driver, 1), 0);
    driver->setCheckType(1);
    QCOMPARE(driver->openCheck(), 0);
    QCOMPARE(written().value("receiptState").toInt(), 1);
    QCOMPARE(written().value("shiftOpen"), QJsonValue(true));
    QCOMPARE(driver->cancelCheck(), 0);
    QCOMPARE(written().value("receiptState").toInt(-1), 0);
}

void TestEmulatorState::registersDoNotTouchTheFile()
{
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    IFpax* driver = connected(fpax);
    driver->setMode(4);
    driver->setCaption(L"x");
    driver->setSumm(1);
    setSetting(driver, "Port", "3");
    driver->readStatus();
    QVERIFY(!QFile::exists(file()));
}

void TestEmulatorState::settingsSurvive()
{
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    IFpax* driver = fpax.create();
    setSetting(driver, "Port", "19");
    QCOMPARE(driver->applySingleSettings(), 0);
    QCOMPARE(written().value("settings").toObject().value("Port").toString(), "19");
    fpax.control({{"cmd", "reload"}});
    QCOMPARE(settingOf(fpax.create(), "Port"), "19");
}

void TestEmulatorState::stateSurvivesUnloading()
{
    {
        FpaxLibrary fpax;
        fpax.control({{"cmd", "reload"}});
        fpax.set({{"serial", "beyond"}});
    }
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    QCOMPARE(fpax.state().value("serial").toString(), "beyond");
}

void TestEmulatorState::badFileGivesDefaults_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no json") << QByteArray("serial = 5");
    QTest::newRow("cut") << QByteArray(R"({"serial": "12", "mod)");
    QTest::newRow("array") << QByteArray(R"(["serial"])");
    QTest::newRow("number") << QByteArray("5");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("binary") << QByteArray::fromHex("fffefd00deadbeef");
    QTest::newRow("deep") << QByteArray(20000, '[');
    QTest::newRow("unknown members") << QByteArray(R"({"colour": "red", "": [1, {"a": null}]})");
}

void TestEmulatorState::badFileGivesDefaults()
{
    QFETCH(QByteArray, content);
    FpaxLibrary fpax;
    const QJsonObject defaults = fpax.state();
    write(content);
    fpax.control({{"cmd", "reload"}});
    QCOMPARE(fpax.state(), defaults);
    QCOMPARE(connected(fpax)->readStatus(), 0);
}

void TestEmulatorState::membersOfWrongTypesAreLeftOut_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");
    QTest::newRow("text for a number") << "model" << QJsonValue("63");
    QTest::newRow("fraction") << "lineLength" << QJsonValue(1.5);
    QTest::newRow("beyond an int") << "firmwareBuild" << QJsonValue(1e20);
    QTest::newRow("negative") << "latencyMs" << QJsonValue(-1);
    QTest::newRow("line without cells") << "lineLength" << QJsonValue(0);
    QTest::newRow("number for a text") << "serial" << QJsonValue(5);
    QTest::newRow("number for a flag") << "connected" << QJsonValue(0);
    QTest::newRow("array for an object") << "settings" << QJsonValue(QJsonArray{1});
    QTest::newRow("template beyond a byte") << "activeTemplate" << QJsonValue(256);
    QTest::newRow("null") << "modelName" << QJsonValue(QJsonValue::Null);
    QTest::newRow("text for counters") << "counters" << QJsonValue("many");
}

void TestEmulatorState::membersOfWrongTypesAreLeftOut()
{
    QFETCH(QString, key);
    QFETCH(QJsonValue, value);
    FpaxLibrary fpax;
    const QJsonValue normal = fpax.state().value(key);
    write(QJsonDocument(QJsonObject{{key, value}, {"templateBuild", "55"}}).toJson());
    fpax.control({{"cmd", "reload"}});
    QCOMPARE(fpax.state().value(key), normal);
    QCOMPARE(fpax.state().value("templateBuild").toString(), "55");
}

void TestEmulatorState::countersHaveRoomToCountOn_data()
{
    QTest::addColumn<qint64>("written");
    QTest::addColumn<int>("taken");
    QTest::newRow("usual") << qint64{41} << 41;
    QTest::newRow("greatest") << qint64{1'000'000'000} << 1'000'000'000;
    QTest::newRow("beyond the greatest") << qint64{1'000'000'001} << 0;
    QTest::newRow("last of an int") << qint64{2'147'483'647} << 0;
}

void TestEmulatorState::countersHaveRoomToCountOn()
{
    QFETCH(qint64, written);
    QFETCH(int, taken);
    const QStringList names{"shifts", "receipts", "annulled", "documents"};
    QJsonObject counters;
    for (const QString& name : names)
        counters.insert(name, written);
    write(QJsonDocument(QJsonObject{{"counters", counters}}).toJson());
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    IFpax* driver = connected(fpax);
    QCOMPARE(openReceipt(driver), 0);
    QCOMPARE(driver->closeCheck(), 0);
    QCOMPARE(openReceipt(driver), 0);
    QCOMPARE(driver->cancelCheck(), 0);
    const QJsonObject counted = fpax.state().value("counters").toObject();
    for (const QString& name : names)
        QCOMPARE(counted.value(name).toInt(-1), taken + (name == "documents" ? 2 : 1));
}

void TestEmulatorState::directoryInPlaceOfTheFileIsNoHarm()
{
    QVERIFY(QDir(m_folder->path()).mkdir("fpax_state.json"));
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    IFpax* driver = connected(fpax);
    QCOMPARE(enter(driver, 4), 0);
    QVERIFY(QFileInfo(file()).isDir());
}

void TestEmulatorState::missingFolderIsNoHarm()
{
    qputenv("FPAX_HOME", (m_folder->path() + "/none/such").toUtf8());
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    IFpax* driver = connected(fpax);
    QCOMPARE(enter(driver, 4), 0);
    QCOMPARE(fpax.state().value("mode").toInt(), 4);
}

void TestEmulatorState::withoutAFolderTheProgramsOwnIsUsed()
{
    qunsetenv("FPAX_HOME");
    const QString own = QCoreApplication::applicationDirPath() + "/fpax_state.json";
    // An aborted run may have left one.
    QFile::remove(own);
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    fpax.set({{"serial", "here"}});
    QVERIFY(QFile::exists(own));
    QVERIFY(QFile::remove(own));
}

void TestEmulatorState::resetLeavesTheFileAlone()
{
    write(R"({"serial": "kept"})");
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    fpax.reset();
    QVERIFY(fpax.state().value("serial").toString() != "kept");
    fpax.set({{"serial", "other"}});
    QCOMPARE(enter(connected(fpax), 4), 0);
    QCOMPARE(written(), (QJsonObject{{"serial", "kept"}}));
}

void TestEmulatorState::reloadTakesTheFileAgain()
{
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    write(R"({"serial": "first"})");
    fpax.control({{"cmd", "reload"}});
    QCOMPARE(fpax.state().value("serial").toString(), "first");
    write(R"({"lineLength": 20})");
    fpax.control({{"cmd", "reload"}});
    QCOMPARE(fpax.state().value("lineLength").toInt(), 20);
    QVERIFY(fpax.state().value("serial").toString() != "first");
}

QTEST_MAIN(TestEmulatorState)
#include "tst_emulator_state.moc"
