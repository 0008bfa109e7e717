#include "fpaxlibrary.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class TestEmulatorLibrary : public QObject
{
    Q_OBJECT

private slots:
    void fileIsNamedFpax();
    void versionThirteenGivesAnObject();
    void otherVersionsGiveNull_data();
    void otherVersionsGiveNull();
    void releaseNullsThePointer();
    void releaseTakesNullInEveryForm();
    void releaseOfAnUnknownPointerNullsItOnly();
    void severalObjectsShareOneDevice();
    void eachObjectHasItsOwnResult();
    void eachObjectHasItsOwnPort();
    void unloadFreesObjectsThatNobodyReleased();
    void libraryCanBeLoadedAgain();
    void unknownCommandIsRefused_data();
    void unknownCommandIsRefused();
    void resetGivesANewDevice();
};

void TestEmulatorLibrary::fileIsNamedFpax()
{
    QVERIFY(QFileInfo(FpaxLibrary::path()).fileName().contains("fpax"));
}

void TestEmulatorLibrary::versionThirteenGivesAnObject()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create(13);
    QVERIFY(driver != nullptr);
    QVERIFY(!textOf(driver, &IFpax::getDriverName).isEmpty());
    QVERIFY(!textOf(driver, &IFpax::getDriverVersion).isEmpty());
    QCOMPARE(codeOf(driver), 0);
}

void TestEmulatorLibrary::otherVersionsGiveNull_data()
{
    QTest::addColumn<int>("version");
    for (const int version : {0, 1, 12, 14, -13, 0x7FFFFFFF})
        QTest::addRow("%d", version) << version;
}

void TestEmulatorLibrary::otherVersionsGiveNull()
{
    QFETCH(int, version);
    FpaxLibrary fpax;
    QVERIFY(fpax.create(version) == nullptr);
}

void TestEmulatorLibrary::releaseNullsThePointer()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    fpax.release(&driver);
    QVERIFY(driver == nullptr);
}

void TestEmulatorLibrary::releaseTakesNullInEveryForm()
{
    FpaxLibrary fpax;
    fpax.release(nullptr);
    IFpax* driver = nullptr;
    fpax.release(&driver);
    QVERIFY(driver == nullptr);
    QVERIFY(fpax.create() != nullptr);
}

void TestEmulatorLibrary::releaseOfAnUnknownPointerNullsItOnly()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    IFpax* again = driver;
    fpax.release(&driver);
    fpax.release(&again);
    QVERIFY(again == nullptr);
}

void TestEmulatorLibrary::severalObjectsShareOneDevice()
{
    FpaxLibrary fpax;
    IFpax* first = connected(fpax);
    IFpax* second = connected(fpax);
    QVERIFY(first != second);
    QCOMPARE(enter(first, 1), 0);
    first->setCheckType(1);
    QCOMPARE(first->openCheck(), 0);

    QCOMPARE(second->readStatus(), 0);
    QCOMPARE(numberOf(second, &IFpax::getCheckState), 1);
    fpax.release(&second);
    QCOMPARE(first->readStatus(), 0);
    QCOMPARE(numberOf(first, &IFpax::getCheckState), 1);
}

void TestEmulatorLibrary::eachObjectHasItsOwnResult()
{
    FpaxLibrary fpax;
    IFpax* first = connected(fpax);
    IFpax* second = connected(fpax);
    QVERIFY(first->cancelCheck() < 0);
    QVERIFY(codeOf(first) < 0);
    QCOMPARE(codeOf(second), 0);
}

void TestEmulatorLibrary::eachObjectHasItsOwnPort()
{
    FpaxLibrary fpax;
    IFpax* first = connected(fpax);
    IFpax* second = connected(fpax);
    QCOMPARE(second->setDeviceEnabled(0), 0);
    QVERIFY(second->readStatus() < 0);
    QCOMPARE(first->readStatus(), 0);
}

void TestEmulatorLibrary::unloadFreesObjectsThatNobodyReleased()
{
    // The leak check at the end of the process is the judge of it; here the unloading itself must go through.
    auto fpax = std::make_unique<FpaxLibrary>();
    for (int i = 0; i < 5; ++i)
        QCOMPARE(enter(connected(*fpax), 4), 0);
    QVERIFY(fpax->library().unload());
    QVERIFY(!fpax->library().isLoaded());
}

void TestEmulatorLibrary::libraryCanBeLoadedAgain()
{
    const QTemporaryDir empty;
    QVERIFY(empty.isValid());
    qputenv("FPAX_HOME", empty.path().toUtf8());
    const auto forget = qScopeGuard([] { qunsetenv("FPAX_HOME"); });
    for (int i = 0; i < 3; ++i) {
        // Only a library that was gone looks for the files again, and there are none.
        FpaxLibrary fpax(FpaxLibrary::Start::Files);
        QCOMPARE(fpax.state().value("mode").toInt(), 0);
        fpax.reset();
        QCOMPARE(enter(connected(fpax), 4), 0);
        QCOMPARE(fpax.state().value("mode").toInt(), 4);
    }
}

void TestEmulatorLibrary::unknownCommandIsRefused_data()
{
    QTest::addColumn<QJsonObject>("command");
    QTest::newRow("no command") << QJsonObject{};
    QTest::newRow("unknown") << QJsonObject{{"cmd", "explode"}};
    QTest::newRow("command of a wrong type") << QJsonObject{{"cmd", 5}};
    QTest::newRow("set without a state") << QJsonObject{{"cmd", "set"}};
    QTest::newRow("faults without rules") << QJsonObject{{"cmd", "faults"}};
    QTest::newRow("rule without an operation")
        << QJsonObject{{"cmd", "faults"}, {"rules", QJsonArray{QJsonObject{{"code", -5}}}}};
    QTest::newRow("trace without a switch") << QJsonObject{{"cmd", "trace"}};
}

void TestEmulatorLibrary::unknownCommandIsRefused()
{
    QFETCH(QJsonObject, command);
    FpaxLibrary fpax;
    const QJsonObject before = fpax.state();
    const QJsonObject answer = fpax.control(command).toObject();
    QCOMPARE(answer.value("ok"), QJsonValue(false));
    QVERIFY(!answer.value("error").toString().isEmpty());
    QCOMPARE(fpax.state(), before);
}

void TestEmulatorLibrary::resetGivesANewDevice()
{
    FpaxLibrary fpax;
    const QJsonObject fresh = fpax.state();
    fpax.set({{"serial", "42"}, {"connected", false}, {"shiftOpen", true}, {"lineLength", 20}});
    QVERIFY(fpax.state() != fresh);
    fpax.reset();
    QCOMPARE(fpax.state(), fresh);
}

QTEST_MAIN(TestEmulatorLibrary)
#include "tst_emulator_library.moc"
