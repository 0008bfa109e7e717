#include "support/recordingdriver.h"

#include "device/qlumfpax.h"

#include <QTest>

#include <climits>
#include <stdexcept>
#include <string>

using LUM::Fpax::IFpax;
using Bytes = QVector<unsigned char>;

namespace {

/// How a command ends: its answer or what it threw.
struct Ending
{
    Bytes answer;
    QString error; ///< null if nothing was thrown
};

template <typename Command>
Ending run(RecordingDriver& driver, const Command& command)
{
    QLumFpax wrapper(&driver);
    Ending ending;
    try {
        ending.answer = wrapper.runCommand(command);
    } catch (const Exception& error) {
        ending.error = error.whatQString();
    }
    return ending;
}

const Bytes kCommand = {0x51, 0x0a};
const QString kSent = QStringLiteral("setCommandBuffer(\"51 0A \")");

} // namespace

/// Raw commands: what the driver is given, what is made of its answer, and of its failures.
class TestRunCommand : public QObject
{
    Q_OBJECT

private slots:
    void bytesAreSentAsPairs_data();
    void bytesAreSentAsPairs();
    void digitsAreSentAsPairs_data();
    void digitsAreSentAsPairs();
    void answerBecomesBytes_data();
    void answerBecomesBytes();
    void longAnswerComesWhole();
    void unreadAnswerIsOneZero();
    void answerIsReadInBothForms();

    void refusedCommandLeavesAtOnce_data();
    void refusedCommandLeavesAtOnce();
    void refusedCommandWithoutACodeIsSent();
    void lostExchangeIsPassedOn();
    void otherCodesAreLeftToTheCaller_data();
    void otherCodesAreLeftToTheCaller();
    void failureWithoutACodeIsNoFailure();
    void codeThatCountsIsTheOneAfterTheFailure();
    void exceptionOfTheDriverPassesThrough();
};

void TestRunCommand::bytesAreSentAsPairs_data()
{
    QTest::addColumn<Bytes>("command");
    QTest::addColumn<QString>("sent");
    QTest::newRow("empty") << Bytes() << "";
    QTest::newRow("one") << Bytes{0x51} << "51 ";
    QTest::newRow("one digit") << Bytes{0x00, 0x07} << "00 07 ";
    QTest::newRow("upper case") << Bytes{0xab, 0x0f, 0xff} << "AB 0F FF ";
    Bytes all;
    QString allSent;
    for (int byte = 0; byte < 256; ++byte) {
        all.append(static_cast<unsigned char>(byte));
        allSent += QString::number(byte, 16).rightJustified(2, u'0').toUpper() + u' ';
    }
    QTest::newRow("all") << all << allSent;
    QTest::newRow("long") << Bytes(20'000, 0xc3) << QString("C3 ").repeated(20'000);
}

void TestRunCommand::bytesAreSentAsPairs()
{
    QFETCH(const Bytes, command);
    QFETCH(const QString, sent);
    RecordingDriver driver;

    const Ending ending = run(driver, command);

    QVERIFY2(ending.error.isNull(), qPrintable(ending.error));
    QCOMPARE(driver.calls(), QStringList({"setCommandBuffer(\"" + sent + "\")", "execCommandBuffer()",
                                          "getAnswerBuffer(4096)"}));
}

void TestRunCommand::digitsAreSentAsPairs_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QString>("sent");
    QTest::newRow("empty") << QByteArray() << "";
    QTest::newRow("one pair") << QByteArray("51") << "51 ";
    QTest::newRow("several") << QByteArray("51010014") << "51 01 00 14 ";
    QTest::newRow("lower case") << QByteArray("abcdefAb") << "AB CD EF AB ";
    QTest::newRow("no digits") << QByteArray("xyz!") << "XY Z! ";
    QTest::newRow("placeholders") << QByteArray("%1%2") << "%1 %2 ";
    // The zero that pairs with the last digit ends the text for the driver.
    QTest::newRow("one digit") << QByteArray("5") << "5";
    QTest::newRow("odd") << QByteArray("51a") << "51 A";
    QTest::newRow("long") << QByteArray("c3").repeated(20'000) << QString("C3 ").repeated(20'000);
}

void TestRunCommand::digitsAreSentAsPairs()
{
    QFETCH(const QByteArray, command);
    QFETCH(const QString, sent);
    RecordingDriver driver;

    const Ending ending = run(driver, command.toStdString());

    QVERIFY2(ending.error.isNull(), qPrintable(ending.error));
    QCOMPARE(driver.calls(), QStringList({"setCommandBuffer(\"" + sent + "\")", "execCommandBuffer()",
                                          "getAnswerBuffer(4096)"}));
}

void TestRunCommand::answerBecomesBytes_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<Bytes>("bytes");
    QTest::newRow("empty") << "" << Bytes{0};
    QTest::newRow("one") << "51" << Bytes{0x51};
    QTest::newRow("two") << "51 0A" << Bytes{0x51, 0x0a};
    QTest::newRow("trailing blank") << "51 0A " << Bytes{0x51, 0x0a, 0};
    QTest::newRow("leading blank") << " 51" << Bytes{0, 0x51};
    QTest::newRow("two blanks") << "51  0A" << Bytes{0x51, 0, 0x0a};
    QTest::newRow("blanks alone") << "  " << Bytes{0, 0, 0};
    QTest::newRow("lower case") << "ab cD ff" << Bytes{0xab, 0xcd, 0xff};
    QTest::newRow("unparsable") << "zz 5G 51 G" << Bytes{0, 0, 0x51, 0};
    QTest::newRow("russian letters") << "АВ 51" << Bytes{0, 0x51};
    QTest::newRow("one digit") << "5 a" << Bytes{5, 10};
    QTest::newRow("cut to eight bits") << "1FF 100 7FFFFF81" << Bytes{0xff, 0, 0x81};
    QTest::newRow("beyond an int") << "80000000 FFFFFFFF 100000051" << Bytes{0, 0, 0};
    QTest::newRow("signs") << "-1 +7" << Bytes{0xff, 7};
    QTest::newRow("no separator") << "510A" << Bytes{0x0a};
    QTest::newRow("other separators") << "51,0A 51;0A 07" << Bytes{0, 0, 7};
}

void TestRunCommand::answerBecomesBytes()
{
    QFETCH(const QString, answer);
    QFETCH(const Bytes, bytes);
    RecordingDriver driver;
    driver.setText("getAnswerBuffer", answer);

    const Ending ending = run(driver, kCommand);

    QVERIFY2(ending.error.isNull(), qPrintable(ending.error));
    QCOMPARE(ending.answer, bytes);
}

void TestRunCommand::longAnswerComesWhole()
{
    RecordingDriver driver;
    QString answer;
    Bytes bytes;
    for (int i = 0; i < 50'000; ++i) {
        answer += (i > 0 ? u" " : u"") + QString::number(i % 251, 16);
        bytes.append(static_cast<unsigned char>(i % 251));
    }
    driver.setText("getAnswerBuffer", answer);

    const Ending ending = run(driver, kCommand);

    QVERIFY(ending.answer == bytes);
    QCOMPARE(driver.calls(), QStringList({kSent, "execCommandBuffer()", "getAnswerBuffer(4096)",
                                          "getAnswerBuffer(" + QString::number(answer.size() + 1) + ")"}));
}

void TestRunCommand::unreadAnswerIsOneZero()
{
    RecordingDriver driver;
    driver.setText("getAnswerBuffer", "51 0A");
    driver.answer("getAnswerBuffer", {-1, -3});

    const Ending ending = run(driver, kCommand);

    QVERIFY(ending.error.isNull());
    QCOMPARE(ending.answer, Bytes{0});
}

void TestRunCommand::answerIsReadInBothForms()
{
    RecordingDriver driver;
    driver.onCall("execCommandBuffer",
                  [&] { driver.setText("getAnswerBuffer", driver.lastText("setCommandBuffer")); });

    QCOMPARE(run(driver, kCommand).answer, Bytes({0x51, 0x0a, 0}));
    QCOMPARE(run(driver, std::string("510a")).answer, Bytes({0x51, 0x0a, 0}));
    QCOMPARE(driver.callsOf("setCommandBuffer"), QStringList({kSent, kSent}));
}

void TestRunCommand::refusedCommandLeavesAtOnce_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("-3") << -3;
    QTest::newRow("-6") << -6;
}

void TestRunCommand::refusedCommandLeavesAtOnce()
{
    QFETCH(const int, code);
    RecordingDriver driver;
    driver.answer("setCommandBuffer", {-1, code});
    driver.setText("getResultDescription", "Неверная команда");
    driver.setText("getAnswerBuffer", "51");
    const QString expected = "[" + QString::number(code) + "] Неверная команда";

    QCOMPARE(run(driver, kCommand).error, expected);
    QCOMPARE(run(driver, std::string("510a")).error, expected);

    QCOMPARE(driver.callsOf("setCommandBuffer"), QStringList({kSent, kSent}));
    QCOMPARE(driver.count("execCommandBuffer"), 0);
    QCOMPARE(driver.count("getAnswerBuffer"), 0);
}

void TestRunCommand::refusedCommandWithoutACodeIsSent()
{
    RecordingDriver driver;
    driver.answer("setCommandBuffer", {-1, 0});
    driver.setText("getAnswerBuffer", "51");

    const Ending ending = run(driver, kCommand);

    QVERIFY(ending.error.isNull());
    QCOMPARE(ending.answer, Bytes{0x51});
    QCOMPARE(driver.calls(),
             QStringList({kSent, "getResultCode()", "execCommandBuffer()", "getAnswerBuffer(4096)"}));
}

void TestRunCommand::lostExchangeIsPassedOn()
{
    RecordingDriver driver;
    driver.answer("execCommandBuffer", {-1, -6});
    driver.setText("getResultDescription", "Нет связи");
    driver.setText("getAnswerBuffer", "51");

    QCOMPARE(run(driver, kCommand).error, QString("[-6] Нет связи"));
    QCOMPARE(run(driver, std::string("510a")).error, QString("[-6] Нет связи"));

    QCOMPARE(driver.count("execCommandBuffer"), 2);
    QCOMPARE(driver.count("getAnswerBuffer"), 0);
}

void TestRunCommand::otherCodesAreLeftToTheCaller_data()
{
    QTest::addColumn<int>("code");
    for (const int code : {-1, -5, -7, -3853, 6, 1, INT_MIN})
        QTest::newRow(qPrintable(QString::number(code))) << code;
}

void TestRunCommand::otherCodesAreLeftToTheCaller()
{
    QFETCH(const int, code);
    RecordingDriver driver;
    driver.answer("execCommandBuffer", {-1, code});
    driver.setText("getAnswerBuffer", "51 07");

    const Ending ending = run(driver, kCommand);

    QVERIFY2(ending.error.isNull(), qPrintable(ending.error));
    QCOMPARE(ending.answer, Bytes({0x51, 0x07}));
    QCOMPARE(driver.calls(),
             QStringList({kSent, "execCommandBuffer()", "getResultCode()", "getResultDescription(4096)",
                          "getBadParam()", "getResultCode()", "getAnswerBuffer(4096)"}));
    QCOMPARE(run(driver, std::string("510a")).answer, Bytes({0x51, 0x07}));
    // The caller still finds the code.
    QLumFpax wrapper(&driver);
    QCOMPARE(wrapper.getInt(&IFpax::getResultCode), code);
}

void TestRunCommand::failureWithoutACodeIsNoFailure()
{
    RecordingDriver driver;
    driver.answer("execCommandBuffer", {-6, 0});
    driver.setText("getAnswerBuffer", "51");

    const Ending ending = run(driver, kCommand);

    QVERIFY(ending.error.isNull());
    QCOMPARE(ending.answer, Bytes{0x51});
    QCOMPARE(driver.calls(),
             QStringList({kSent, "execCommandBuffer()", "getResultCode()", "getAnswerBuffer(4096)"}));
}

void TestRunCommand::codeThatCountsIsTheOneAfterTheFailure()
{
    // A driver that counts its getters among its operations.
    RecordingDriver driver;
    driver.answer("execCommandBuffer", {-1, -6});
    driver.onCall("getBadParam", [&] { driver.resultCode = 0; });
    driver.setText("getAnswerBuffer", "51");

    const Ending ending = run(driver, kCommand);

    QVERIFY2(ending.error.isNull(), qPrintable(ending.error));
    QCOMPARE(ending.answer, Bytes{0x51});
}

void TestRunCommand::exceptionOfTheDriverPassesThrough()
{
    RecordingDriver driver;
    driver.onCall("execCommandBuffer", [] { throw std::logic_error("the driver's own"); });
    QLumFpax wrapper(&driver);

    QVERIFY_THROWS_EXCEPTION(std::logic_error, wrapper.runCommand(kCommand));

    QCOMPARE(driver.calls(), QStringList({kSent, "execCommandBuffer()"}));
}

QTEST_APPLESS_MAIN(TestRunCommand)

#include "tst_runcommand.moc"
