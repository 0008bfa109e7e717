#include "support/drivercalls.h"
#include "support/recordingdriver.h"
#include "support/takedriver.h"

#include <QTest>

#include <string>
#include <vector>

namespace {

/// A device with a table of free lines, which refuses the row behind the last one.
class LineTable : public RecordingDriver
{
public:
    explicit LineTable(const QStringList& lines)
        : m_lines(lines)
    {
    }

    int readTableField() override
    {
        const int row = static_cast<int>(lastNumber("setRowNumber"));
        if (row > m_lines.size())
            answer("readTableField", {-1, -3});
        else
            setText("getCaption", m_lines.at(row - 1));
        return RecordingDriver::readTableField();
    }

    int setCaption(const wchar_t* text) override
    {
        captions.emplace_back(text);
        return RecordingDriver::setCaption(text);
    }

    /// The texts given, character by character: a text of the calls has lost a mark at its start.
    std::vector<std::wstring> captions;

private:
    QStringList m_lines;
};

/// A session before a device with these free lines.
struct Bench
{
    explicit Bench(const QStringList& lines = {})
        : device(lines)
    {
        takeDriver(session, device);
    }

    LineTable device;
    clKRD9IO session;
};

const QStringList kPreparation{"setDeviceEnabled(1)", "setMode(4)", "enterMode()", "setTableNumber(21)"};

QStringList readCalls(int row)
{
    return {QStringLiteral("setRowNumber(%1)").arg(row), "setFieldNumber(1)", "setFieldType(1)",
            "readTableField()"};
}

QStringList writeCalls(int row, const QString& text)
{
    return {QStringLiteral("setRowNumber(%1)").arg(row), "setCaption(\"" + text + "\")", "setFieldType(1)",
            "writeTableField()"};
}

/// The calls of a good reading of the lines "Первая", "".
QStringList goodReading()
{
    QStringList calls = kPreparation;
    calls += readCalls(1);
    calls += "getCaption(4096)";
    calls += readCalls(2);
    calls += "getCaption(4096)";
    calls += readCalls(3);
    calls += kDiagnosis;
    calls += "resetMode()";
    return calls;
}

/// The calls of a good writing of the lines "Первая", "".
QStringList goodWriting()
{
    return kPreparation + QStringList{"setFieldNumber(1)"} + writeCalls(1, "Первая") + writeCalls(2, "");
}

const QStringList kTwoLines{"Первая", ""};

/// A driver that refuses no row, and keeps no record.
class EndlessLines : public RecordingDriver
{
public:
    int setRowNumber(int value) override { return row = value; }
    int setFieldNumber(int) override { return 0; }
    int setFieldType(int) override { return 0; }
    int readTableField() override { return ++readings; }
    int getCaption(wchar_t* buffer, int) override
    {
        buffer[0] = row == 65535 ? L'Я' : L'x';
        return 1;
    }

    int row = 0;
    int readings = 0;
};

} // namespace

/// Reading and writing of the free lines: the calls of the driver and every failure of each of them.
class TestTable21Session : public QObject
{
    Q_OBJECT

private slots:
    void linesAreReadUntilARowIsRefused();
    void deviceWithoutRowsGivesNoLines();
    void linesComeAsTheyAre_data();
    void linesComeAsTheyAre();
    void failureOfEachCallOfTheReading();
    void failureWithoutACodeEndsTheReadingAtARowOnly();
    void exceptionOfTheDriverFailsTheReading();
    void deviceThatRefusesNothingIsStopped();

    void linesAreWrittenRowByRow();
    void emptyListPreparesTheDeviceAllTheSame();
    void lineIsWrittenUpToItsFirstZero_data();
    void lineIsWrittenUpToItsFirstZero();
    void markAtTheStartIsWritten();
    void failureOfEachCallOfTheWriting();
    void failureWithoutACodeDoesNotStopTheWriting();
    void failedResetFailsTheWriting();
    void exceptionOfTheDriverFailsTheWriting();

    void missingDriverIsAFailure();
    void linesThatWereReadAreWrittenBack();
};

void TestTable21Session::linesAreReadUntilARowIsRefused()
{
    Bench bench(kTwoLines);
    QStringList lines{"old"};
    QCOMPARE(bench.session.readTable21(lines), 0);
    QCOMPARE(lines, kTwoLines);
    QCOMPARE(bench.device.calls(), goodReading());
}

void TestTable21Session::deviceWithoutRowsGivesNoLines()
{
    Bench bench;
    QStringList lines{"old"};
    QCOMPARE(bench.session.readTable21(lines), 0);
    QCOMPARE(lines, QStringList());
    QCOMPARE(bench.device.calls(), kPreparation + readCalls(1) + kDiagnosis + QStringList{"resetMode()"});
}

void TestTable21Session::linesComeAsTheyAre_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("blanks") << "  a  ";
    QTest::newRow("placeholder") << "%1 %2";
    QTest::newRow("Cyrillic and signs") << "Ёлка № 5 — «да»";
    QTest::newRow("control characters") << "a\tb\nc\x01";
    QTest::newRow("beyond the first plane") << QString::fromUtf8("\xF0\x9F\x98\x80");
    QTest::newRow("as long as the buffer") << QString(4096, u'ж');
    QTest::newRow("longer than the buffer") << QString(5000, u'ж') + "!";
}

void TestTable21Session::linesComeAsTheyAre()
{
    QFETCH(const QString, line);
    Bench bench({line});
    QStringList lines;
    QCOMPARE(bench.session.readTable21(lines), 0);
    QCOMPARE(lines, QStringList{line});
}

void TestTable21Session::failureOfEachCallOfTheReading()
{
    const QStringList good = goodReading();
    for (int k = 1; k <= good.size(); ++k) {
        const QString call = good.at(k - 1);
        Bench bench(kTwoLines);
        bench.device.answerNth(k, {-1, -7});
        QStringList lines{"old"};
        const int result = bench.session.readTable21(lines);
        const QByteArray where = QByteArray::number(k) + ": " + call.toUtf8();

        const qsizetype taken = good.first(k - 1).count("getCaption(4096)");
        if (isGetter(call)) { // getters never fail; a caption that is not there is empty
            QVERIFY2(result == 0, where.constData());
            const bool isFirstCaption = call == u"getCaption(4096)" && taken == 0;
            QCOMPARE(lines, isFirstCaption ? (QStringList{"", ""}) : kTwoLines);
            QCOMPARE(bench.device.calls(), good);
            continue;
        }
        QCOMPARE(lines, kTwoLines.first(taken));
        const bool isPreparation = k <= 3;
        const bool isReset = k == good.size();
        QVERIFY2(result == (isPreparation || isReset ? 255 : 0), where.constData());
        // The failed call is the last but for its diagnosis; behind the preparation the mode is left.
        QStringList calls = good.first(k) + kDiagnosis;
        if (!isPreparation && !isReset)
            calls += "resetMode()";
        QCOMPARE(bench.device.calls(), calls);
    }
}

void TestTable21Session::failureWithoutACodeEndsTheReadingAtARowOnly()
{
    for (const char* operation : {"setDeviceEnabled", "setMode", "enterMode", "setTableNumber",
                                  "setRowNumber", "setFieldNumber", "setFieldType", "resetMode"}) {
        Bench bench(kTwoLines);
        bench.device.answer(operation, {-1, 0});
        QStringList lines;
        QVERIFY2(bench.session.readTable21(lines) == 0, operation);
        QCOMPARE(lines, kTwoLines);
        QCOMPARE(bench.device.count("resetMode"), 1);
    }

    Bench bench(QStringList{"1", "2", "3"});
    bench.device.answerCall("readTableField", 3, {-5, 0});
    QStringList lines;
    QCOMPARE(bench.session.readTable21(lines), 0);
    QCOMPARE(lines, (QStringList{"1", "2"}));
    QCOMPARE(bench.device.calls().last(2), (QStringList{"getResultCode()", "resetMode()"}));

    // A positive status is none.
    Bench other(kTwoLines);
    other.device.answerCall("readTableField", 1, {5, 0});
    QCOMPARE(other.session.readTable21(lines), 0);
    QCOMPARE(lines, kTwoLines);
}

void TestTable21Session::exceptionOfTheDriverFailsTheReading()
{
    const QStringList good = goodReading();
    for (const bool isStandard : {true, false}) {
        for (int k = 1; k <= good.size(); ++k) {
            Bench bench(kTwoLines);
            const QString call = good.at(k - 1);
            const QString operation = operationOf(call);
            const qsizetype n = good.first(k).count(call);
            bench.device.onCall(operation, [&bench, operation, call, n, isStandard] {
                if (bench.device.callsOf(operation).count(call) < n)
                    return;
                throwOut(isStandard);
            });
            QStringList lines{"old"};
            QCOMPARE(bench.session.readTable21(lines), 255);
            QCOMPARE(bench.device.calls(), good.first(k));
            // What was read so far stays.
            QCOMPARE(lines, kTwoLines.first(good.first(k - 1).count("getCaption(4096)")));
        }
    }
}

void TestTable21Session::deviceThatRefusesNothingIsStopped()
{
    EndlessLines device;
    clKRD9IO session;
    takeDriver(session, device);
    QStringList lines;
    QCOMPARE(session.readTable21(lines), 0);
    QCOMPARE(lines.size(), 65535);
    QCOMPARE(device.readings, 65535);
    QCOMPARE(lines.constFirst(), "x");
    QCOMPARE(lines.constLast(), "Я");
    QCOMPARE(device.calls(), kPreparation + QStringList{"resetMode()"});
}

void TestTable21Session::linesAreWrittenRowByRow()
{
    Bench bench;
    QCOMPARE(bench.session.writeTable21(kTwoLines), 0);
    // The device stays in its mode.
    QCOMPARE(bench.device.calls(), goodWriting());
}

void TestTable21Session::emptyListPreparesTheDeviceAllTheSame()
{
    Bench bench;
    QCOMPARE(bench.session.writeTable21({}), 0);
    QCOMPARE(bench.device.calls(), kPreparation + QStringList{"setFieldNumber(1)"});
}

void TestTable21Session::lineIsWrittenUpToItsFirstZero_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("written");
    QTest::newRow("zero within") << QString::fromUtf16(u"ab\0cd", 5) << "ab";
    QTest::newRow("zero at the start") << QString::fromUtf16(u"\0cd", 3) << "";
    QTest::newRow("zero at the end") << QString::fromUtf16(u"да\0", 3) << "да";
    QTest::newRow("Cyrillic and signs") << "Ёлка № 5 — «да»"
                                        << "Ёлка № 5 — «да»";
    QTest::newRow("blanks and control characters") << " a\tb\n "
                                                   << " a\tb\n ";
    QTest::newRow("quotes and placeholders") << "\"%1\""
                                             << "\"%1\"";
    QTest::newRow("beyond the first plane")
        << QString::fromUtf8("\xF0\x9F\x98\x80") << QString::fromUtf8("\xF0\x9F\x98\x80");
    QTest::newRow("long") << QString(5000, u'ж') << QString(5000, u'ж');
}

void TestTable21Session::lineIsWrittenUpToItsFirstZero()
{
    QFETCH(const QString, line);
    QFETCH(const QString, written);
    Bench bench;
    QCOMPARE(bench.session.writeTable21({"1", line, "3"}), 0);
    QCOMPARE(bench.device.callsOf("setCaption"),
             (QStringList{"setCaption(\"1\")", "setCaption(\"" + written + "\")", "setCaption(\"3\")"}));
    QCOMPARE(bench.device.count("writeTableField"), 3);
}

void TestTable21Session::markAtTheStartIsWritten()
{
    Bench bench;
    const QString mark(QChar(0xFEFF));
    QCOMPARE(bench.session.writeTable21({mark + "да", mark, mark + mark + "a" + mark}), 0);
    QVERIFY(
        (bench.device.captions == std::vector<std::wstring>{L"\uFEFFда", L"\uFEFF", L"\uFEFF\uFEFFa\uFEFF"}));
}

void TestTable21Session::failureOfEachCallOfTheWriting()
{
    const QStringList good = goodWriting();
    for (int k = 1; k <= good.size(); ++k) {
        Bench bench;
        bench.device.answerNth(k, {-1, -7});
        const bool isPreparation = k <= 3;
        QCOMPARE(bench.session.writeTable21(kTwoLines), isPreparation ? 255 : 1);
        QStringList calls = good.first(k) + kDiagnosis;
        if (!isPreparation)
            calls += "resetMode()";
        QCOMPARE(bench.device.calls(), calls);
    }
}

void TestTable21Session::failureWithoutACodeDoesNotStopTheWriting()
{
    for (const char* operation :
         {"setDeviceEnabled", "setMode", "enterMode", "setTableNumber", "setRowNumber", "setFieldNumber",
          "setCaption", "setFieldType", "writeTableField"}) {
        Bench bench;
        bench.device.answer(operation, {-1, 0});
        QVERIFY2(bench.session.writeTable21(kTwoLines) == 0, operation);
        QCOMPARE(bench.device.count("writeTableField"), 2);
        QCOMPARE(bench.device.count("resetMode"), 0);
    }
}

void TestTable21Session::failedResetFailsTheWriting()
{
    Bench bench;
    bench.device.answerCall("writeTableField", 2, {-1, -7});
    bench.device.answer("resetMode", {-1, -8});
    QCOMPARE(bench.session.writeTable21({"1", "2", "3"}), 255);
    QCOMPARE(bench.device.count("writeTableField"), 2);
    QCOMPARE(bench.device.count("resetMode"), 1);

    Bench withoutCode;
    withoutCode.device.answerCall("writeTableField", 2, {-1, -7});
    withoutCode.device.answer("resetMode", {-1, 0});
    QCOMPARE(withoutCode.session.writeTable21({"1", "2", "3"}), 1);
}

void TestTable21Session::exceptionOfTheDriverFailsTheWriting()
{
    const QStringList good = goodWriting();
    for (const bool isStandard : {true, false}) {
        for (int k = 1; k <= good.size(); ++k) {
            Bench bench;
            const QString call = good.at(k - 1);
            const QString operation = operationOf(call);
            const qsizetype n = good.first(k).count(call);
            bench.device.onCall(operation, [&bench, operation, call, n, isStandard] {
                if (bench.device.callsOf(operation).count(call) < n)
                    return;
                throwOut(isStandard);
            });
            QCOMPARE(bench.session.writeTable21(kTwoLines), 255);
            QCOMPARE(bench.device.calls(), good.first(k));
        }
    }
}

void TestTable21Session::missingDriverIsAFailure()
{
    for (const bool hasWrapper : {false, true}) {
        clKRD9IO session;
        if (hasWrapper)
            session.fpaxWrapper.reset(new QLumFpax);
        QStringList lines{"old"};
        QCOMPARE(session.readTable21(lines), 255);
        QCOMPARE(lines, QStringList());
        QCOMPARE(session.writeTable21({"new"}), 255);
    }
}

void TestTable21Session::linesThatWereReadAreWrittenBack()
{
    const QStringList inDevice{"Спасибо", "", "  за покупку! ", "№ %1"};
    Bench bench(inDevice);
    QStringList lines;
    QCOMPARE(bench.session.readTable21(lines), 0);
    bench.device.forgetCalls();
    QCOMPARE(bench.session.writeTable21(lines), 0);
    QCOMPARE(bench.device.callsOf("setCaption"),
             (QStringList{"setCaption(\"Спасибо\")", "setCaption(\"\")", "setCaption(\"  за покупку! \")",
                          "setCaption(\"№ %1\")"}));
    QCOMPARE(bench.device.callsOf("setRowNumber"),
             (QStringList{"setRowNumber(1)", "setRowNumber(2)", "setRowNumber(3)", "setRowNumber(4)"}));
}

QTEST_GUILESS_MAIN(TestTable21Session)

#include "tst_table21_session.moc"
