#include "workflows/transferbench.h"

#include <QCheckBox>
#include <QLabel>
#include <QSpinBox>
#include <QTest>

namespace {

const QString kGrocery = QStringLiteral(SAMPLES_DIR "/grocery-80mm.csv");
const QString kNarrow = QStringLiteral(SAMPLES_DIR "/grocery-57mm.csv");

const QStringList kWindowLines{"Первая строка", "", "Ещё одна: ёЁ №1", "последняя"};

/// The texts of the raw commands among the calls.
QStringList commandsIn(const QStringList& calls)
{
    QStringList commands;
    for (const auto& call : calls.filter("setCommandBuffer("))
        commands.append(call.section(u'"', 1, 1));
    return commands;
}

/// One parameter as a command carries it.
QString entry(const char* param, const char* bits, const char* value)
{
    return QString("%1 00 0A 00 01 00 01 00 %2 02 00 01 00 %3 ").arg(param, bits, value);
}

/// A device that has room for the free lines of the window.
void makeRoom(TransferBench& b)
{
    b.setDeviceLines(QStringList(kWindowLines.size(), QString()));
}

} // namespace

/// "Загрузить в кассу", from the menu to what the device holds afterwards.
class TestUpload : public QObject
{
    Q_OBJECT

private slots:
    void openReceiptForbidsTheExchange();
    void questionIsCancelled();
    void onlyWhatThereIsIsOffered_data();
    void onlyWhatThereIsIsOffered();
    void noTemplateNeedsTheFreeLines();
    void firstFieldIsFourCommands();
    void wholeTemplateArrives();
    void freeLinesAlone();
    void reportNamesBothParts_data();
    void reportNamesBothParts();
    void refusedRecordsAreNotTold();
    void deviceWithFewerLinesFails();
    void modelIsLeftAlone();
    void templateTravelsThereAndBack_data();
    void templateTravelsThereAndBack();
};

void TestUpload::openReceiptForbidsTheExchange()
{
    TransferBench b;
    b.windowLines() = kWindowLines;
    b.device.set({{"receiptState", 1}});
    b.upload({.isFreeLines = true});
    QCOMPARE(b.robot.takeTexts(), QStringList("Обмен невозможен - открыт чек."));
    QCOMPARE(b.user.takeTitles(), QStringList());
    QCOMPARE(b.watch->takeNew(), QStringList("==================================") + noConnectionLines());
    QCOMPARE(b.harm(manyFields(4)), QStringList());
    QCOMPARE(b.windowLines(), kWindowLines);
}

void TestUpload::questionIsCancelled()
{
    TransferBench b;
    b.windowLines() = kWindowLines;
    const auto before = b.device.state().value("table20");
    const auto linesBefore = b.deviceLines();
    QTRY_VERIFY(b.isEnabled("actionUpLoad"));
    b.user.order([](QDialog& dialog) {
        choose(dialog, {.isFreeLines = true});
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    chooseInMenu(*b.window, "actionUpLoad");
    QCOMPARE(b.user.takeTitles(), QStringList(kQuestionTitle));
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QCOMPARE(b.watch->takeNew(), questionLines());
    QCOMPARE(b.device.takeCalls().last(), QString("enterMode()"));
    QCOMPARE(b.device.state().value("table20"), before);
    QCOMPARE(b.deviceLines(), linesBefore);
}

void TestUpload::onlyWhatThereIsIsOffered_data()
{
    QTest::addColumn<bool>("isTemplate");
    QTest::addColumn<bool>("isFreeLines");
    QTest::newRow("template") << true << false;
    QTest::newRow("free lines") << false << true;
    QTest::newRow("both") << true << true;
}

void TestUpload::onlyWhatThereIsIsOffered()
{
    QFETCH(const bool, isTemplate);
    QFETCH(const bool, isFreeLines);
    TransferBench b(manyFields(isTemplate ? 3 : 0));
    if (isFreeLines)
        b.windowLines() = kWindowLines;
    QTRY_VERIFY(b.isEnabled("actionUpLoad"));
    bool isRight = false;
    b.user.order([&](QDialog& dialog) {
        const auto* const table = named<QCheckBox>(dialog, "chbFLoadShablon");
        const auto* const lines = named<QCheckBox>(dialog, "chbFLoadFreeStrs");
        isRight = table->isEnabled() == isTemplate && table->isChecked() == isTemplate &&
                  named<QSpinBox>(dialog, "spinBox")->isEnabled() == isTemplate &&
                  named<QLabel>(dialog, "label_2")->isEnabled() == isTemplate &&
                  lines->isEnabled() == isFreeLines && !lines->isChecked();
        dialog.reject();
    });
    chooseInMenu(*b.window, "actionUpLoad");
    QVERIFY(isRight);
}

void TestUpload::noTemplateNeedsTheFreeLines()
{
    TransferBench b(QList<FieldRow>{});
    makeRoom(b);
    b.windowLines() = kWindowLines;
    QTRY_VERIFY(b.isEnabled("actionUpLoad"));
    b.user.order([](QDialog& dialog) {
        clickButton(dialog, "btnLoad");
        QVERIFY(dialog.isVisible());
        choose(dialog, {.isTemplate = false, .isFreeLines = true});
        clickButton(dialog, "btnLoad");
    });
    chooseInMenu(*b.window, "actionUpLoad");
    QCOMPARE(b.robot.takeTexts(), QStringList({"Ничего не выбрано для загрузки!", kLinesSaved}));
    QCOMPARE(b.deviceLines(), kWindowLines);
}

void TestUpload::firstFieldIsFourCommands()
{
    TransferBench b(QList<FieldRow>{});
    openTemplate(*b.window, b.robot, kGrocery);
    b.watch->takeNew();
    b.upload({.number = 2});
    const QStringList commands = commandsIn(b.device.takeCalls());
    QCOMPARE(commands.size(), 640);
    const QStringList first{"51 01 14 02 00 00 01 06 00 00 54 00 " + entry("01", "08", "00") +
                                entry("02", "04", "01") + entry("03", "01", "01") + entry("04", "01", "01") +
                                entry("05", "02", "00") + entry("06", "08", "04"),
                            "51 01 14 02 00 00 07 0C 00 00 54 00 " + entry("07", "08", "02") +
                                entry("08", "08", "00") + entry("09", "08", "18") + entry("0A", "01", "00") +
                                entry("0B", "01", "00") + entry("0C", "01", "00"),
                            "51 01 14 02 00 00 0D 12 00 00 54 00 " + entry("0D", "01", "00") +
                                entry("0E", "02", "00") + entry("0F", "02", "00") + entry("10", "04", "08") +
                                entry("11", "02", "02") + entry("12", "02", "02"),
                            "51 01 14 02 00 00 13 13 00 00 0E 00 " + entry("13", "08", "20")};
    QCOMPARE(commands.first(4), first);
    // The row stands in the third byte of the record, the last one is 159.
    QVERIFY(commands.at(4).startsWith("51 01 14 02 00 00 01 06 01 00 54 00 "));
    QVERIFY(commands.at(639).startsWith("51 01 14 02 00 00 13 13 9F 00 0E 00 "));
}

void TestUpload::wholeTemplateArrives()
{
    TransferBench b(QList<FieldRow>{});
    openTemplate(*b.window, b.robot, kGrocery);
    const auto fields = fieldsOf(bytesOf(kGrocery));
    b.watch->takeNew();
    const QStringList other = b.deviceRows(2);
    b.upload({.number = 1});

    QCOMPARE(b.user.takeTitles(), QStringList({kQuestionTitle, kWritingTitle}));
    const auto boxes = b.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, QString(kTemplateDone));
    QCOMPARE(boxes.first().icon, QMessageBox::NoIcon);
    QCOMPARE(boxes.first().title, QString());
    QCOMPARE(b.watch->takeNew(), questionLines());
    QStringList rows;
    for (const auto& field : fields)
        rows.append(paramDigits(field));
    QCOMPARE(b.deviceRows(1), rows);
    QCOMPARE(b.deviceRows(2), other);
    QList<int> steps;
    for (int value = 1; value <= 100; ++value)
        steps.append(value);
    QCOMPARE(b.progress, steps);
    // The window has what it had.
    QCOMPARE(b.harm(fields), QStringList());
    QCOMPARE(b.saved(), bytesOf(kGrocery));
}

void TestUpload::freeLinesAlone()
{
    TransferBench b;
    makeRoom(b);
    b.windowLines() = kWindowLines;
    const auto templates = b.device.state().value("table20");
    b.upload({.isTemplate = false, .isFreeLines = true, .number = 0});
    QCOMPARE(b.user.takeTitles(), QStringList(kQuestionTitle));
    QCOMPARE(b.robot.takeTexts(), QStringList(kLinesSaved));
    QCOMPARE(b.watch->takeNew(), questionLines());
    QCOMPARE(b.deviceLines(), kWindowLines);
    QCOMPARE(b.windowLines(), kWindowLines);
    QCOMPARE(b.device.state().value("table20"), templates);
    const QStringList calls = b.device.takeCalls();
    QCOMPARE(commandsIn(calls), QStringList());
    // The device stays in programming mode.
    QCOMPARE(calls.filter("resetMode"), QStringList());
    QCOMPARE(b.device.state().value("mode").toInt(), 4);
}

void TestUpload::reportNamesBothParts_data()
{
    QTest::addColumn<bool>("isTemplateGood");
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QString>("report");
    QTest::newRow("both good") << true << "" << reportOf(kTemplateDone, kLinesSaved);
    QTest::newRow("lines fail: mode") << true << "enterMode" << reportOf(kTemplateDone, kLinesNotSaved);
    QTest::newRow("lines fail: row") << true << "writeTableField" << reportOf(kTemplateDone, kLinesNotSaved);
    QTest::newRow("template fails") << false << "" << reportOf(kTemplateFailed, kLinesSaved);
    QTest::newRow("both fail") << false << "writeTableField" << reportOf(kTemplateFailed, kLinesNotSaved);
}

void TestUpload::reportNamesBothParts()
{
    QFETCH(const bool, isTemplateGood);
    QFETCH(const QString, failing);
    QFETCH(const QString, report);
    TransferBench b;
    makeRoom(b);
    b.windowLines() = kWindowLines;
    QJsonArray rules;
    // Only a driver that breaks its word makes a write fail as a whole.
    if (!isTemplateGood)
        rules.append(QJsonObject{{"operation", "execCommandBuffer"}, {"call", 6}, {"throw", "std"}});
    if (!failing.isEmpty())
        rules.append(QJsonObject{{"operation", failing}, {"call", 2}, {"code", -1000}});
    b.device.setFaults(rules);
    b.upload({.isFreeLines = true});
    const auto boxes = b.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, report);
    QCOMPARE(boxes.first().format == Qt::RichText, report.contains("<FONT"));
    QCOMPARE(boxes.first().isRich(), report.contains("<FONT"));
    QCOMPARE(b.watch->takeNew(), questionLines());
    QCOMPARE(b.harm(manyFields(4)), QStringList());
    QCOMPARE(b.windowLines(), kWindowLines);
    // A row that fails ends the free lines; the row before it is written.
    const QStringList empty(kWindowLines.size(), QString());
    QStringList written = kWindowLines;
    if (failing == u"enterMode")
        written = empty;
    else if (!failing.isEmpty())
        written = kWindowLines.first(1) + empty.mid(1);
    QCOMPARE(b.deviceLines(), written);
}

void TestUpload::refusedRecordsAreNotTold()
{
    TransferBench b;
    const QStringList before = b.deviceRows(1);
    for (const int code : {-1000, -6}) {
        b.failCommands(1, code);
        b.upload({});
        QCOMPARE(b.robot.takeTexts(), QStringList(kTemplateDone));
        QCOMPARE(b.deviceRows(1), before);
        QCOMPARE(commandsIn(b.device.takeCalls()).size(), 16);
        QCOMPARE(b.progress, QList<int>({25, 50, 75, 100}));
    }
    // One that is lost does not take the others with it.
    b.device.setFaults({QJsonObject{{"operation", "execCommandBuffer"}, {"call", 2}, {"code", -6}}});
    b.upload({});
    QCOMPARE(b.robot.takeTexts(), QStringList(kTemplateDone));
    QStringList rows;
    for (const auto& field : manyFields(4))
        rows.append(paramDigits(field));
    // Parameters 7 to 12 of the first field.
    rows[0].replace(12, 12, before.first().mid(12, 12));
    QCOMPARE(b.deviceRows(1).first(4), rows);
    QCOMPARE(b.deviceRows(1).mid(4), before.mid(4));
}

void TestUpload::deviceWithFewerLinesFails()
{
    TransferBench b;
    b.setDeviceLines({"", ""});
    b.windowLines() = kWindowLines;
    b.upload({.isTemplate = false, .isFreeLines = true});
    QCOMPARE(b.robot.takeTexts(), QStringList(kLinesNotSaved));
    QCOMPARE(b.deviceLines(), kWindowLines.first(2));
    QCOMPARE(b.windowLines(), kWindowLines);
    QCOMPARE(b.device.takeCalls().last(), QString("resetMode()"));
}

void TestUpload::modelIsLeftAlone()
{
    TransferBench b;
    b.device.set({{"model", 67}, {"modelName", "Тавр 11Ф"}});
    b.upload({});
    QCOMPARE(b.robot.takeTexts(), QStringList(kTemplateDone));
    QCOMPARE(KRD9IO.modelId, 67);
    QCOMPARE(b.watch->takeNew(), questionLines());
    QCOMPARE(b.chosenModel(), QString("Тавр 77Ф"));
    QCOMPARE(WindowProbe(*b.window).tapeWidth(), 576);
}

void TestUpload::templateTravelsThereAndBack_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("isKnown");
    // What the device calls its fields, where they may stand and which are mandatory is not sent: it tells its own.
    QTest::newRow("80 mm, heads of the device") << kGrocery << false;
    QTest::newRow("57 mm, heads of the device") << kNarrow << false;
    QTest::newRow("80 mm, heads of the file") << kGrocery << true;
}

void TestUpload::templateTravelsThereAndBack()
{
    QFETCH(const QString, path);
    QFETCH(const bool, isKnown);
    TransferBench b(QList<FieldRow>{});
    const auto sent = fieldsOf(bytesOf(path));
    QCOMPARE(maskFile(sent), bytesOf(path));

    // The device has fields of its own under these heads, with other parameters.
    QList<FieldRow> own = manyFields(static_cast<int>(sent.size()));
    QList<FieldRow> back = sent;
    for (int i = 0; i < own.size(); ++i) {
        if (isKnown) {
            own[i].desc = sent[i].desc;
            own[i].blockMask = sent[i].blockMask;
            own[i].need = sent[i].need;
        } else {
            own[i].blockMask = i % 2 == 0 ? 0x3ff : 0x41;
            own[i].need = i % 3 == 0;
        }
        back[i].desc = own[i].desc;
        back[i].blockMask = own[i].blockMask;
        back[i].need = own[i].need;
    }
    b.setTemplates({{1, manyFields(7)}, {2, own}});
    openTemplate(*b.window, b.robot, path);
    b.upload({.number = 2});
    // Another template comes between.
    b.download({.number = 1});
    QCOMPARE(b.harm(manyFields(7)), QStringList());
    b.download({.number = 2});
    QCOMPARE(b.robot.takeTexts(), QStringList({kTemplateDone, kTemplateDone, kTemplateDone}));
    QCOMPARE(b.saved(), maskFile(back));
    QCOMPARE(b.saved() == bytesOf(path), isKnown);
}

QTEST_MAIN(TestUpload)

#include "tst_upload.moc"
