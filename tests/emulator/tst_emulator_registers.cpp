#include "fpaxlibrary.h"

#include <QTest>

#include <algorithm>
#include <vector>

class TestEmulatorRegisters : public QObject
{
    Q_OBJECT

private slots:
    void textGetterTellsTheLengthAndEndsWithZero_data();
    void textGetterTellsTheLengthAndEndsWithZero();
    void textGetterWithoutABufferTellsTheLength();
    void emptyTextNeedsNothing();
    void textOfTheCapacityAsksForMore();
    void longTextArrivesWholeAtTheSecondCall();
    void captionKeepsEveryCharacter();
    void nullTextIsAnEmptyText();
    void numberGetterWithoutATargetFails();
    void sumIsARegister();
    void gettersKeepTheCodeOfAFailedOperation();
    void setterEndsTheFailure();
    void goodOperationEndsTheFailure();
    void statusRegistersAreEmptyBeforeReadStatus();
    void readStatusFillsTheRegisters();
    void registersFollowTheDeviceOnlyAtReadStatus();
    void descriptionBeginsWithTheModel();
    void firmwareVersionHasThreeParts();
    void templateUnitNeedsANewerFirmware_data();
    void templateUnitNeedsANewerFirmware();
    void unknownUnitIsABadParameter();
};

void TestEmulatorRegisters::textGetterTellsTheLengthAndEndsWithZero_data()
{
    QTest::addColumn<int>("capacity");
    for (const int capacity : {1, 2, 3, 4, 5, 6, 7, 8, 100})
        QTest::addRow("%d", capacity) << capacity;
}

void TestEmulatorRegisters::textGetterTellsTheLengthAndEndsWithZero()
{
    QFETCH(int, capacity);
    const QString text = "Строка";
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    QCOMPARE(driver->setCaption(text.toStdWString().c_str()), 0);

    std::vector<wchar_t> buffer(200, L'#');
    const int needed = driver->getCaption(buffer.data(), capacity);
    QCOMPARE(needed, capacity == text.size() ? text.size() + 1 : text.size());
    const auto fits = std::min<qsizetype>(capacity - 1, text.size());
    QCOMPARE(QString::fromWCharArray(buffer.data()), text.left(fits));
    QVERIFY(std::all_of(buffer.begin() + capacity, buffer.end(), [](wchar_t c) { return c == L'#'; }));
}

void TestEmulatorRegisters::textGetterWithoutABufferTellsTheLength()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    driver->setCaption(L"abc");
    QCOMPARE(driver->getCaption(nullptr, 0), 3);
    QCOMPARE(driver->getCaption(nullptr, 10), 3);
    wchar_t untouched = L'#';
    QCOMPARE(driver->getCaption(&untouched, 0), 3);
    QCOMPARE(driver->getCaption(&untouched, -4), 3);
    QCOMPARE(untouched, L'#');
}

void TestEmulatorRegisters::emptyTextNeedsNothing()
{
    FpaxLibrary fpax;
    wchar_t buffer[4] = L"###";
    QCOMPARE(fpax.create()->getCaption(buffer, 4), 0);
    QCOMPARE(buffer[0], L'\0');
}

void TestEmulatorRegisters::textOfTheCapacityAsksForMore()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    driver->setCaption(L"12345678");
    wchar_t buffer[9] = {};
    QVERIFY(driver->getCaption(buffer, 8) > 8);
    QCOMPARE(driver->getCaption(buffer, 9), 8);
    QCOMPARE(QString::fromWCharArray(buffer), "12345678");
}

void TestEmulatorRegisters::longTextArrivesWholeAtTheSecondCall()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    const QString text = QString("Ж").repeated(5000);
    driver->setCaption(text.toStdWString().c_str());
    QCOMPARE(textOf(driver, &IFpax::getCaption), text);
}

void TestEmulatorRegisters::captionKeepsEveryCharacter()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    const QString text = "№ «ёЁ» – \t\n😀 end ";
    driver->setCaption(text.toStdWString().c_str());
    QCOMPARE(textOf(driver, &IFpax::getCaption), text);
}

void TestEmulatorRegisters::nullTextIsAnEmptyText()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    driver->setCaption(L"old");
    QCOMPARE(driver->setCaption(nullptr), 0);
    QCOMPARE(textOf(driver, &IFpax::getCaption), QString());
    QCOMPARE(driver->setCommandBuffer(nullptr), 0);
    QCOMPARE(driver->setTagValue(nullptr), 0);
    QCOMPARE(driver->setPositionName(nullptr), 0);
}

void TestEmulatorRegisters::numberGetterWithoutATargetFails()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    for (const NumberGetter getter :
         {&IFpax::getResultCode, &IFpax::getBadParam, &IFpax::getFiscal, &IFpax::getCheckState,
          &IFpax::getSessionOpened, &IFpax::getModelId, &IFpax::getCharLineLength})
        QVERIFY((driver->*getter)(nullptr) < 0);
    QVERIFY(driver->getSumm(nullptr) < 0);
    QCOMPARE(codeOf(driver), 0);
}

void TestEmulatorRegisters::sumIsARegister()
{
    FpaxLibrary fpax;
    IFpax* driver = fpax.create();
    QCOMPARE(driver->setSumm(12.75), 0);
    double sum = 0;
    QVERIFY(driver->getSumm(&sum) >= 0);
    QCOMPARE(sum, 12.75);
}

void TestEmulatorRegisters::gettersKeepTheCodeOfAFailedOperation()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QVERIFY(driver->cancelCheck() < 0);
    const int code = codeOf(driver);
    const QString description = textOf(driver, &IFpax::getResultDescription);
    QVERIFY(code < 0);
    QVERIFY(!description.isEmpty());

    textOf(driver, &IFpax::getCaption);
    textOf(driver, &IFpax::getAnswerBuffer);
    textOf(driver, &IFpax::getDriverName);
    settingOf(driver, "Port");
    mappingOf(driver, "Port");
    numberOf(driver, &IFpax::getFiscal);
    numberOf(driver, &IFpax::getBadParam);
    double sum = 0;
    driver->getSumm(&sum);
    QCOMPARE(codeOf(driver), code);
    QCOMPARE(textOf(driver, &IFpax::getResultDescription), description);
}

void TestEmulatorRegisters::setterEndsTheFailure()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QVERIFY(driver->cancelCheck() < 0);
    QCOMPARE(driver->setMode(4), 0);
    QCOMPARE(codeOf(driver), 0);
}

void TestEmulatorRegisters::goodOperationEndsTheFailure()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QVERIFY(enter(driver, 99) < 0);
    QVERIFY(numberOf(driver, &IFpax::getBadParam) != 0);
    QCOMPARE(driver->readStatus(), 0);
    QCOMPARE(codeOf(driver), 0);
    QCOMPARE(numberOf(driver, &IFpax::getBadParam), 0);
    QCOMPARE(textOf(driver, &IFpax::getBadParamDescription), QString());
}

void TestEmulatorRegisters::statusRegistersAreEmptyBeforeReadStatus()
{
    FpaxLibrary fpax;
    fpax.set({{"fiscal", true}, {"shiftOpen", true}, {"receiptState", 1}});
    IFpax* driver = fpax.create();
    QCOMPARE(textOf(driver, &IFpax::getSerialNumber), QString());
    QCOMPARE(textOf(driver, &IFpax::getDeviceDescription), QString());
    QCOMPARE(numberOf(driver, &IFpax::getFiscal), 0);
    QCOMPARE(numberOf(driver, &IFpax::getSessionOpened), 0);
    QCOMPARE(numberOf(driver, &IFpax::getCheckState), 0);
    QCOMPARE(numberOf(driver, &IFpax::getModelId), 0);
    QCOMPARE(numberOf(driver, &IFpax::getCharLineLength), 0);
}

void TestEmulatorRegisters::readStatusFillsTheRegisters()
{
    FpaxLibrary fpax;
    fpax.set({{"serial", "0012"},
              {"model", 72},
              {"modelName", "Тавр 90Ф"},
              {"fiscal", true},
              {"shiftOpen", true},
              {"receiptState", 1},
              {"lineLength", 36}});
    IFpax* driver = connected(fpax);
    QCOMPARE(driver->readStatus(), 0);
    QCOMPARE(textOf(driver, &IFpax::getSerialNumber), "0012");
    QVERIFY(textOf(driver, &IFpax::getDeviceDescription).startsWith("Тавр 90Ф;"));
    QVERIFY(numberOf(driver, &IFpax::getFiscal) != 0);
    QVERIFY(numberOf(driver, &IFpax::getSessionOpened) != 0);
    QVERIFY(numberOf(driver, &IFpax::getCheckState) != 0);
    QCOMPARE(numberOf(driver, &IFpax::getModelId), 72);
    QCOMPARE(numberOf(driver, &IFpax::getCharLineLength), 36);
}

void TestEmulatorRegisters::registersFollowTheDeviceOnlyAtReadStatus()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(driver->readStatus(), 0);
    QCOMPARE(enter(driver, 1), 0);
    driver->setCheckType(1);
    QCOMPARE(driver->openCheck(), 0);
    QCOMPARE(numberOf(driver, &IFpax::getCheckState), 0);
    QCOMPARE(driver->readStatus(), 0);
    QCOMPARE(numberOf(driver, &IFpax::getCheckState), 1);
}

void TestEmulatorRegisters::descriptionBeginsWithTheModel()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    driver->readStatus();
    QCOMPARE(textOf(driver, &IFpax::getDeviceDescription).section(';', 0, 0), "Тавр 22Ф");
    QCOMPARE(numberOf(driver, &IFpax::getModelId), 63);
}

void TestEmulatorRegisters::firmwareVersionHasThreeParts()
{
    FpaxLibrary fpax;
    fpax.set({{"firmwareMajor", 3}, {"firmwareMinor", 7}, {"firmwareBuild", 3200}});
    IFpax* driver = connected(fpax);
    driver->setUnitType(145);
    QCOMPARE(driver->readUnitVersion(), 0);
    QCOMPARE(textOf(driver, &IFpax::getUnitVersionMajor), "3");
    QCOMPARE(textOf(driver, &IFpax::getUnitVersionMinor), "7");
    QCOMPARE(textOf(driver, &IFpax::getUnitVersionBuild), "3200");
}

void TestEmulatorRegisters::templateUnitNeedsANewerFirmware_data()
{
    QTest::addColumn<int>("build");
    QTest::addColumn<bool>("there");
    QTest::newRow("old") << 100 << false;
    QTest::newRow("last without") << 3128 << false;
    QTest::newRow("first with") << 3129 << true;
    QTest::newRow("new") << 9000 << true;
}

void TestEmulatorRegisters::templateUnitNeedsANewerFirmware()
{
    QFETCH(int, build);
    QFETCH(bool, there);
    FpaxLibrary fpax;
    fpax.set(
        {{"firmwareBuild", build}, {"templateMajor", "5"}, {"templateMinor", "6"}, {"templateBuild", "70"}});
    IFpax* driver = connected(fpax);
    driver->setUnitType(160);
    QCOMPARE(driver->readUnitVersion() >= 0, there);
    QCOMPARE(codeOf(driver) == 0, there);
    QCOMPARE(textOf(driver, &IFpax::getUnitVersionBuild), there ? "70" : "");
}

void TestEmulatorRegisters::unknownUnitIsABadParameter()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    driver->setUnitType(7);
    QVERIFY(driver->readUnitVersion() < 0);
    QCOMPARE(codeOf(driver), -11);
    QVERIFY(numberOf(driver, &IFpax::getBadParam) != 0);
    QVERIFY(!textOf(driver, &IFpax::getBadParamDescription).isEmpty());
}

QTEST_MAIN(TestEmulatorRegisters)
#include "tst_emulator_registers.moc"
