#include "fpaxsteps.h"

#include <QFile>
#include <QJsonDocument>
#include <QTest>

#include <memory>

class TestEmulatorWriteCommand : public QObject
{
    Q_OBJECT

private slots:
    void writtenParametersReadBack();
    void writeGoesToItsOwnRowAndSubTable();
    void readRecordCanBeWrittenBack();
    void groupsOfATemplateWriter();
    void valuesFillTheirWidths();
    void badWritesAreRefused_data();
    void badWritesAreRefused();
    void refusedWriteChangesNothing();
    void writingWantsProgrammingMode();
    void writtenTableSurvives();
    void writtenTableIsSavedByTheNextOperation();
    void writtenTableIsSavedWhenTheLibraryGoes();
    void resetBringsTheFactoryTemplates();
};

namespace {

const QList<int> kDistinct{9, 15, 1, 0, 3, 77, 254, 201, 48, 1, 0, 1, 1, 2, 3, 13, 2, 1, 42};

} // namespace

void TestEmulatorWriteCommand::writtenParametersReadBack()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    const QByteArray answer = exchange(driver, writeCommand(1, 0, 1, kDistinct));
    QCOMPARE(codeOf(driver), 0);
    QVERIFY(answer.size() > 2);
    QCOMPARE(answer.at(1), '\0');
    QCOMPARE(readRow(driver, 1, 1), kDistinct);
}

void TestEmulatorWriteCommand::writeGoesToItsOwnRowAndSubTable()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    const QList<int> before = readRow(driver, 1, 160);
    const QList<int> neighbour = readRow(driver, 2, 159);
    exchange(driver, writeCommand(2, 159, 1, kDistinct));
    QCOMPARE(codeOf(driver), 0);
    QCOMPARE(readRow(driver, 2, 160), kDistinct);
    QCOMPARE(readRow(driver, 1, 160), before);
    QCOMPARE(readRow(driver, 2, 159), neighbour);
}

void TestEmulatorWriteCommand::readRecordCanBeWrittenBack()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    exchange(driver, writeCommand(1, 11, 1, kDistinct));
    const QByteArray record = exchange(driver, readCommand(1, 12, 7, 12)).mid(2);
    exchange(driver, writeCommand(1, 11, 7, {1, 2, 3, 0, 0, 0}));
    QVERIFY(readRow(driver, 1, 12) != kDistinct);
    exchange(driver, QByteArray::fromHex("510114010000") + record);
    QCOMPARE(codeOf(driver), 0);
    QCOMPARE(readRow(driver, 1, 12), kDistinct);
}

void TestEmulatorWriteCommand::groupsOfATemplateWriter()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    for (const int first : {1, 7, 13, 19}) {
        exchange(driver, writeCommand(2, 0, first, kDistinct.mid(first - 1, 6)));
        QCOMPARE(codeOf(driver), 0);
    }
    QCOMPARE(readRow(driver, 2, 1), kDistinct);
}

void TestEmulatorWriteCommand::valuesFillTheirWidths()
{
    const QList<int> highest{255, 15, 1, 1, 3, 255, 255, 255, 255, 1, 1, 1, 1, 3, 3, 15, 3, 3, 255};
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    exchange(driver, writeCommand(1, 0, 1, highest));
    QCOMPARE(codeOf(driver), 0);
    QCOMPARE(readRow(driver, 1, 1), highest);
    for (int param = 1; param <= 19; ++param) {
        if (highest[param - 1] == 255)
            continue;
        exchange(driver, writeCommand(1, 0, param, {highest[param - 1] + 1}));
        QCOMPARE(codeOf(driver), -11);
        QCOMPARE(numberOf(driver, &IFpax::getBadParam), param);
        QVERIFY(!textOf(driver, &IFpax::getBadParamDescription).isEmpty());
    }
    QCOMPARE(readRow(driver, 1, 1), highest);
}

void TestEmulatorWriteCommand::badWritesAreRefused_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<int>("code");
    const QByteArray good = writeCommand(1, 0, 1, {1, 2});
    const auto changed = [&good](qsizetype index, int value) {
        QByteArray bad = good;
        bad[index] = static_cast<char>(value);
        return bad;
    };
    QTest::newRow("no record") << good.left(6) << -3843;
    QTest::newRow("start only") << good.left(12) << -3843;
    QTest::newRow("cut") << good.chopped(1) << -3843;
    QTest::newRow("one byte more") << good + '\0' << -3843;
    QTest::newRow("other table") << changed(2, 21) << -3840;
    QTest::newRow("other sub-table") << changed(3, 9) << -3840;
    QTest::newRow("head") << changed(6, 0) << -3842;
    QTest::newRow("backwards") << changed(7, 0) << -3842;
    QTest::newRow("more than there are") << changed(7, 3) << -3843;
    QTest::newRow("row 160") << changed(8, 160) << -3841;
    QTest::newRow("row 256") << changed(9, 1) << -3841;
    QTest::newRow("length") << changed(10, 27) << -3843;
    QTest::newRow("length, high byte") << changed(11, 1) << -3843;
    QTest::newRow("tag") << changed(12, 2) << -3843;
    QTest::newRow("entry length") << changed(14, 9) << -3843;
    QTest::newRow("inner tag") << changed(16, 3) << -3843;
    QTest::newRow("width") << changed(20, 7) << -3843;
    QTest::newRow("parameter 20") << writeCommand(1, 0, 19, {1}).replace(6, 2, QByteArray::fromHex("1414"))
                                  << -3842;
}

void TestEmulatorWriteCommand::badWritesAreRefused()
{
    QFETCH(QByteArray, command);
    QFETCH(int, code);
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    const QJsonObject before = fpax.state();
    const QByteArray answer = exchange(driver, command);
    QCOMPARE(codeOf(driver), code);
    QCOMPARE(answer.size(), 2);
    QVERIFY(answer.at(1) != '\0');
    QCOMPARE(fpax.state(), before);
}

void TestEmulatorWriteCommand::refusedWriteChangesNothing()
{
    FpaxLibrary fpax;
    IFpax* driver = programming(fpax);
    const QList<int> before = readRow(driver, 1, 1);
    // The first of the two parameters is good, the second is not.
    exchange(driver, writeCommand(1, 0, 1, {before[0] + 1, 16}));
    QCOMPARE(codeOf(driver), -11);
    QCOMPARE(readRow(driver, 1, 1), before);
}

void TestEmulatorWriteCommand::writingWantsProgrammingMode()
{
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(enter(driver, 1), 0);
    const QJsonObject before = fpax.state();
    exchange(driver, writeCommand(1, 0, 1, {5}));
    QCOMPARE(codeOf(driver), -3801);
    QCOMPARE(fpax.state(), before);
}

void TestEmulatorWriteCommand::writtenTableSurvives()
{
    FpaxLibrary fpax;
    PaperFolder folder(fpax);
    IFpax* driver = programming(fpax);
    exchange(driver, writeCommand(2, 3, 1, kDistinct));
    QCOMPARE(codeOf(driver), 0);
    fpax.reset();
    fpax.control({{"cmd", "reload"}});
    QCOMPARE(enter(driver, 4), 0);
    QCOMPARE(readRow(driver, 2, 4), kDistinct);
}

void TestEmulatorWriteCommand::writtenTableIsSavedByTheNextOperation()
{
    FpaxLibrary fpax;
    PaperFolder folder(fpax);
    IFpax* driver = programming(fpax);
    exchange(driver, writeCommand(2, 3, 1, kDistinct));
    QCOMPARE(codeOf(driver), 0);
    QCOMPARE(driver->readStatus(), 0);
    QFile file(folder.path() + "/fpax_state.json");
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonObject written = QJsonDocument::fromJson(file.readAll()).object();
    QCOMPARE(written, fpax.state());
    QCOMPARE(written["table20"].toObject()["2"].toObject()["params"].toArray().at(3).toString(),
             "090F0100034DFEC930010001010203"
             "0D02012A");
}

void TestEmulatorWriteCommand::writtenTableIsSavedWhenTheLibraryGoes()
{
    auto fpax = std::make_unique<FpaxLibrary>();
    const PaperFolder folder(*fpax);
    exchange(programming(*fpax), writeCommand(2, 3, 1, kDistinct));
    fpax.reset();
    FpaxLibrary again;
    again.control({{"cmd", "reload"}});
    QCOMPARE(readRow(programming(again), 2, 4), kDistinct);
}

void TestEmulatorWriteCommand::resetBringsTheFactoryTemplates()
{
    FpaxLibrary fpax;
    const QJsonObject fresh = fpax.state();
    exchange(programming(fpax), writeCommand(1, 0, 1, kDistinct));
    fpax.reset();
    QCOMPARE(fpax.state(), fresh);
}

QTEST_MAIN(TestEmulatorWriteCommand)
#include "tst_emulator_writecommand.moc"
