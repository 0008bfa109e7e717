#include "fpaxlibrary.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestEmulatorFaultFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void rulesOfTheFileHold();
    void rulesMayStandInAnObject();
    void changedFileIsReadAgain();
    void sameFileKeepsItsCount();
    void removedFileEndsTheFaults();
    void brokenFileHasNoRules_data();
    void brokenFileHasNoRules();
    void commandWinsOverAFileThatIsThere();
    void changedFileWinsOverTheCommand();

private:
    void write(const QByteArray& content) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<FpaxLibrary> m_fpax;
    IFpax* m_driver = nullptr;
};

void TestEmulatorFaultFile::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    qputenv("FPAX_HOME", m_folder->path().toUtf8());
    m_fpax = std::make_unique<FpaxLibrary>();
    m_fpax->control({{"cmd", "reload"}});
    m_driver = connected(*m_fpax);
}

void TestEmulatorFaultFile::cleanup()
{
    qunsetenv("FPAX_HOME");
    m_fpax.reset();
    m_folder.reset();
}

void TestEmulatorFaultFile::write(const QByteArray& content) const
{
    QFile file(m_folder->filePath("fpax_faults.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

void TestEmulatorFaultFile::rulesOfTheFileHold()
{
    write(R"([{"operation": "readStatus", "code": -71}])");
    QVERIFY(m_driver->readStatus() < 0);
    QCOMPARE(codeOf(m_driver), -71);
}

void TestEmulatorFaultFile::rulesMayStandInAnObject()
{
    write(R"({"rules": [{"operation": "readStatus", "code": -72}]})");
    QVERIFY(m_driver->readStatus() < 0);
    QCOMPARE(codeOf(m_driver), -72);
}

void TestEmulatorFaultFile::changedFileIsReadAgain()
{
    write(R"([{"operation": "readStatus", "code": -7}])");
    QVERIFY(m_driver->readStatus() < 0);
    write(R"([{"operation": "readStatus", "code": -7777}])");
    QVERIFY(m_driver->readStatus() < 0);
    QCOMPARE(codeOf(m_driver), -7777);
}

void TestEmulatorFaultFile::sameFileKeepsItsCount()
{
    write(R"([{"operation": "readStatus", "call": 2}])");
    QCOMPARE(m_driver->readStatus(), 0);
    QVERIFY(m_driver->readStatus() < 0);
    QCOMPARE(m_driver->readStatus(), 0);
    QCOMPARE(m_fpax->count(), 3);
}

void TestEmulatorFaultFile::removedFileEndsTheFaults()
{
    write(R"([{"operation": "*"}])");
    QVERIFY(m_driver->readStatus() < 0);
    QVERIFY(QFile::remove(m_folder->filePath("fpax_faults.json")));
    QCOMPARE(m_driver->readStatus(), 0);
}

void TestEmulatorFaultFile::brokenFileHasNoRules_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no json") << QByteArray("fail!");
    QTest::newRow("cut") << QByteArray(R"([{"operation": "readSta)");
    QTest::newRow("object without rules") << QByteArray(R"({"operation": "readStatus"})");
    QTest::newRow("rules of a wrong type") << QByteArray(R"({"rules": "readStatus"})");
    QTest::newRow("element of a wrong type") << QByteArray(R"(["readStatus"])");
    QTest::newRow("operation of a wrong type") << QByteArray(R"([{"operation": 5}])");
    QTest::newRow("unknown operation") << QByteArray(R"([{"operation": "dance"}])");
}

void TestEmulatorFaultFile::brokenFileHasNoRules()
{
    QFETCH(QByteArray, content);
    write(R"([{"operation": "readStatus"}])");
    QVERIFY(m_driver->readStatus() < 0);
    write(content);
    QCOMPARE(m_driver->readStatus(), 0);
}

void TestEmulatorFaultFile::commandWinsOverAFileThatIsThere()
{
    write(R"([{"operation": "readStatus", "code": -5}])");
    QVERIFY(m_fpax->setFaults({QJsonObject{{"operation", "resetMode"}}}));
    QCOMPARE(m_driver->readStatus(), 0);
    QVERIFY(m_driver->resetMode() < 0);
}

void TestEmulatorFaultFile::changedFileWinsOverTheCommand()
{
    QVERIFY(m_fpax->setFaults({QJsonObject{{"operation", "resetMode"}}}));
    QVERIFY(m_driver->resetMode() < 0);
    write(R"([{"operation": "readStatus", "code": -5}])");
    QCOMPARE(m_driver->resetMode(), 0);
    QVERIFY(m_driver->readStatus() < 0);
}

QTEST_MAIN(TestEmulatorFaultFile)
#include "tst_emulator_faultfile.moc"
