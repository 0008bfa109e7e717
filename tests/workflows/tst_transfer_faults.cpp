#include "workflows/transferbench.h"

#include <QLabel>
#include <QTest>

#include <numeric>

namespace {

const QString kNothingCame = QStringLiteral("Корректных данных не найдено!");
const QString kFindings = QStringLiteral("Поля шаблона имеют недопустимые значения!");

constexpr int kNoCode = 0;
constexpr int kLinkLost = -6;

/// The three fields of the one side and of the other, all their parameter groups different.
QList<FieldRow> ourFields()
{
    QList<FieldRow> fields = manyFields(3);
    for (auto& field : fields)
        field.desc = QStringLiteral("Касса: ") + QString::number(field.line);
    return fields;
}

QList<FieldRow> otherFields()
{
    QList<FieldRow> fields = ourFields();
    for (auto& field : fields) {
        field.block = 5;
        field.size = 33;
        field.brightness = 9;
        field.tailChar = 65;
    }
    return fields;
}

const QStringList kOurLines{"раз", "два", "три"};

/// One driver call of an exchange, and where in it.
struct Call
{
    enum class Phase { Connection, Template, FreeLines };
    Phase phase;
    QString operation;
    int row = 0;   ///< from 1; 0 before the first one
    int first = 0; ///< first parameter of the raw command; 0 in a head

    bool isGetter() const { return operation.startsWith(u"get"); }
    bool isAnyOf(const QStringList& operations) const { return operations.contains(operation); }
};

/// The calls that count for a fault.
QList<Call> callsOf(const QStringList& trace)
{
    QList<Call> calls;
    Call call{Call::Phase::Connection, {}};
    for (const auto& text : trace) {
        call.operation = operationOf(text);
        if (call.isAnyOf({"getResultCode", "getResultDescription", "getBadParam", "getBadParamDescription"}))
            continue;
        if (call.operation == u"setCommandBuffer") {
            const QStringList bytes = text.section(u'"', 1, 1).split(u' ');
            const bool isWrite = bytes.at(1) == u"01";
            call.phase = Call::Phase::Template;
            call.row = bytes.at(isWrite ? 8 : 4).toInt(nullptr, 16) + (isWrite ? 1 : 0);
            call.first = bytes.at(6).toInt(nullptr, 16);
        } else if (call.operation == u"setDeviceEnabled" && !calls.isEmpty()) {
            call.phase = Call::Phase::FreeLines;
            call.row = 0;
        } else if (call.operation == u"setRowNumber") {
            ++call.row;
        }
        calls.append(call);
    }
    return calls;
}

/// What an exchange with one failing call comes to.
struct Result
{
    QString refusal; ///< the exchange did not begin
    bool isTemplateGood = true;
    bool isLinesGood = true;
    QList<int> keys = {1, 2, 3};       ///< fields that came
    QList<int> lostGroups = {0, 0, 0}; ///< for each field the first parameter of the record that was lost
    QStringList lines = kOurLines;
};

QString refusalOf(const Call& call, int code)
{
    if (call.phase != Call::Phase::Connection || call.isGetter() || code == kNoCode)
        return {};
    if (call.operation == u"setDeviceEnabled")
        return kNoPortText;
    return call.isAnyOf({"setMode", "enterMode"}) ? kNoModeText : kNoExchangeText;
}

QList<int> keysUpTo(int last)
{
    QList<int> keys(std::min(last, 3));
    std::iota(keys.begin(), keys.end(), 1);
    return keys;
}

void failTemplateRead(const Call& call, int code, Result& result)
{
    const bool isHandedOver = call.operation != u"setCommandBuffer";
    const bool isAnswer = call.operation == u"getAnswerBuffer";
    if ((!isHandedOver && code != kNoCode) || (!isAnswer && code == kLinkLost)) {
        result.isTemplateGood = false;
        result.keys = keysUpTo(call.row - 1);
    } else if (call.first == 0) {
        result.keys = keysUpTo(call.row - 1);
    } else if (isAnswer || code != kNoCode) {
        result.keys.removeAll(call.row);
    } // else the answer before comes again, and then the same request
}

void failLinesRead(const Call& call, int code, Result& result)
{
    if (call.operation == u"getCaption") {
        result.lines[call.row - 1].clear();
    } else if (call.row == 0) {
        if (call.operation == u"setTableNumber") {
            result.lines.clear();
        } else if (code != kNoCode) {
            result.isLinesGood = false;
            result.lines.clear();
        }
    } else if (call.operation == u"resetMode") {
        result.isLinesGood = code == kNoCode;
    } else if (code != kNoCode || call.operation == u"readTableField" || call.row == 1) {
        result.lines = kOurLines.first(call.row - 1);
    } else if (call.operation == u"setRowNumber") {
        // The row before is read again.
        if (call.row > 3)
            result.lines.append(QString());
        result.lines[call.row - 1] = kOurLines.at(call.row - 2);
    }
}

Result downloadWith(const Call& call, int code)
{
    Result result;
    result.refusal = refusalOf(call, code);
    if (call.phase == Call::Phase::Template)
        failTemplateRead(call, code, result);
    else if (call.phase == Call::Phase::FreeLines)
        failLinesRead(call, code, result);
    return result;
}

void failLinesWrite(const Call& call, int code, Result& result)
{
    const bool isDevicePrepared = call.isAnyOf({"setDeviceEnabled", "setMode", "enterMode"});
    const bool isLost = code != kNoCode || (call.row == 0 && !isDevicePrepared) ||
                        (call.row == 1 && call.isAnyOf({"setRowNumber", "setFieldType"}));
    const auto keep = [&result](int count) {
        for (int i = count; i < result.lines.size(); ++i)
            result.lines[i].clear();
    };
    if (isLost) {
        result.isLinesGood = false;
        keep(std::max(0, call.row - 1));
    } else if (call.operation == u"writeTableField") {
        result.lines[call.row - 1].clear();
    } else if (call.operation == u"setRowNumber") {
        // The row before is written again.
        result.lines[call.row - 2] = kOurLines.at(call.row - 1);
        result.lines[call.row - 1].clear();
    } else if (call.operation == u"setCaption") {
        result.lines[call.row - 1] = call.row == 1 ? QString() : kOurLines.at(call.row - 2);
    }
}

Result uploadWith(const Call& call, int code)
{
    Result result;
    result.refusal = refusalOf(call, code);
    if (call.phase == Call::Phase::Template && call.operation != u"getAnswerBuffer")
        result.lostGroups[call.row - 1] = call.first;
    else if (call.phase == Call::Phase::FreeLines)
        failLinesWrite(call, code, result);
    return result;
}

/// The rows of the device after an upload; a lost record leaves what was there.
QStringList rowsAfter(const Result& result)
{
    QStringList rows;
    for (int i = 0; i < 3; ++i) {
        QString row = paramDigits(ourFields().at(i));
        const int first = result.lostGroups.at(i);
        if (first > 0)
            row.replace(2 * (first - 1), first == 19 ? 2 : 12,
                        paramDigits(otherFields().at(i)).mid(2 * (first - 1), first == 19 ? 2 : 12));
        rows.append(row);
    }
    return rows;
}

/// The device in programming mode, as a whole exchange leaves it, and the driver's registers empty.
void prepare(TransferBench& b)
{
    b.device.dropFaults();
    b.device.set({{"mode", 4}});
    auto* const driver = KRD9IO.driverIface;
    driver->setTableNumber(0);
    driver->setRowNumber(0);
    driver->setFieldNumber(0);
    driver->setFieldType(0);
    driver->setCaption(L"");
    driver->setCommandBuffer(L"");
    driver->execCommandBuffer();
    b.device.takeCalls();
}

void failCall(TransferBench& b, int n, int code)
{
    b.device.setFaults({QJsonObject{{"operation", "*"}, {"call", n}, {"status", -1}, {"code", code}}});
}

/// Where a failure is, for messages.
QByteArray placeOf(int n, const Call& call)
{
    return QStringLiteral("call %1, %2, row %3, parameter %4")
        .arg(QString::number(n), call.operation, QString::number(call.row), QString::number(call.first))
        .toUtf8();
}

void addCodes()
{
    QTest::addColumn<int>("code");
    QTest::newRow("code") << -1000;
    QTest::newRow("no code") << kNoCode;
    QTest::newRow("no exchange") << kLinkLost;
}

QString report(const Result& result, const char* linesDone, const char* linesFailed)
{
    return reportOf(result.isTemplateGood ? kTemplateDone : kTemplateFailed,
                    result.isLinesGood ? linesDone : linesFailed);
}

} // namespace

/// Each driver call of a download and of an upload fails once, in every way that a driver reports.
class TestTransferFaults : public QObject
{
    Q_OBJECT

private slots:
    void eachCallOfADownload_data() { addCodes(); }
    void eachCallOfADownload();
    void eachCallOfAnUpload_data() { addCodes(); }
    void eachCallOfAnUpload();
};

void TestTransferFaults::eachCallOfADownload()
{
    QFETCH(const int, code);
    const auto fields = ourFields();
    const Choice both{.isFreeLines = true};
    TransferBench b;
    b.setTemplates({{1, fields}});
    b.setDeviceLines(kOurLines);
    prepare(b);
    b.download(both);
    const QList<Call> calls = callsOf(b.device.takeCalls());
    QCOMPARE(b.robot.takeTexts(), QStringList(report({}, kLinesLoaded, kLinesNotLoaded)));
    QVERIFY2(calls.size() > 80, qPrintable(QString::number(calls.size())));

    QList<FieldRow> held = fields;
    QStringList heldLines = kOurLines;
    for (int k = 1; k <= calls.size(); ++k) {
        const Call& call = calls.at(k - 1);
        const Result expected = downloadWith(call, code);
        const QByteArray place = placeOf(k, call);
        prepare(b);
        b.user.takeTitles();
        failCall(b, k, code);
        b.download(both);
        b.device.dropFaults();

        const QStringList texts = b.robot.takeTexts();
        if (!expected.refusal.isEmpty()) {
            QVERIFY2(texts == QStringList(expected.refusal), place);
            QVERIFY2(b.user.takeTitles().isEmpty(), place);
        } else {
            const bool isWhole = expected.keys == keysUpTo(static_cast<int>(expected.keys.size()));
            const bool isTaken = isWhole && !expected.keys.isEmpty();
            held = isTaken ? fields.first(expected.keys.size()) : QList<FieldRow>();
            heldLines = expected.lines;
            QVERIFY2(texts.value(texts.size() - 1) == report(expected, kLinesLoaded, kLinesNotLoaded),
                     QByteArray(place + ": " + texts.join(u'|').toUtf8()));
            QVERIFY2(texts.size() == (isTaken ? 1 : 2), place);
            if (!isTaken)
                QVERIFY2(texts.first().startsWith(expected.keys.isEmpty() ? kNothingCame : kFindings), place);
        }
        QVERIFY2(WindowProbe(*b.window).heldTemplate() == maskFile(held), place);
        QVERIFY2(b.windowLines() == heldLines, place);
        if (held.isEmpty())
            QVERIFY2(b.isTapeEmpty(), place);
        else
            QVERIFY2(b.harm(held).isEmpty(), place);
        b.user.dropOrders();
    }
    prepare(b);
    b.download(both);
    QCOMPARE(b.robot.takeTexts(), QStringList(report({}, kLinesLoaded, kLinesNotLoaded)));
    QCOMPARE(b.harm(fields), QStringList());
    QTRY_VERIFY(b.statusCell(2)->text().startsWith(KRD9IO.deviceText));
}

void TestTransferFaults::eachCallOfAnUpload()
{
    QFETCH(const int, code);
    const auto fields = ourFields();
    const Choice both{.isFreeLines = true};
    TransferBench b(fields);
    b.windowLines() = kOurLines;
    const auto prepareAll = [&b] {
        b.setTemplates({{1, otherFields()}});
        b.setDeviceLines({"", "", ""});
        prepare(b);
    };
    prepareAll();
    b.upload(both);
    const QList<Call> calls = callsOf(b.device.takeCalls());
    QCOMPARE(b.robot.takeTexts(), QStringList(report({}, kLinesSaved, kLinesNotSaved)));
    QCOMPARE(b.deviceRows(1), rowsAfter({}));
    QVERIFY2(calls.size() > 70, qPrintable(QString::number(calls.size())));

    for (int k = 1; k <= calls.size(); ++k) {
        const Call& call = calls.at(k - 1);
        const Result expected = uploadWith(call, code);
        const QByteArray place = placeOf(k, call);
        prepareAll();
        b.user.takeTitles();
        failCall(b, k, code);
        b.upload(both);
        b.device.dropFaults();

        const QStringList texts = b.robot.takeTexts();
        if (!expected.refusal.isEmpty()) {
            QVERIFY2(texts == QStringList(expected.refusal), place);
            QVERIFY2(b.user.takeTitles().isEmpty(), place);
        } else {
            QVERIFY2(texts == QStringList(report(expected, kLinesSaved, kLinesNotSaved)),
                     QByteArray(place + ": " + texts.join(u'|').toUtf8()));
            QVERIFY2(b.deviceRows(1) == rowsAfter(expected), place);
            QVERIFY2(b.deviceLines() == expected.lines,
                     QByteArray(place + ": " + b.deviceLines().join(u'|').toUtf8()));
        }
        QVERIFY2(WindowProbe(*b.window).heldTemplate() == maskFile(fields), place);
        QVERIFY2(b.windowLines() == kOurLines, place);
        QVERIFY2(b.harm(fields).isEmpty(), place);
        b.user.dropOrders();
    }
    prepareAll();
    b.upload(both);
    QCOMPARE(b.robot.takeTexts(), QStringList(report({}, kLinesSaved, kLinesNotSaved)));
    QCOMPARE(b.deviceRows(1), rowsAfter({}));
    QTRY_VERIFY(b.statusCell(2)->text().startsWith(KRD9IO.deviceText));
}

QTEST_MAIN(TestTransferFaults)

#include "tst_transfer_faults.moc"
