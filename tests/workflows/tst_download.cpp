#include "support/session.h"
#include "workflows/transferbench.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QSpinBox>
#include <QTest>

namespace {

/// The template of a device: fields with all kinds of parameters, one that is not placed, and heads of both kinds.
QList<FieldRow> deviceFields()
{
    QList<FieldRow> fields = manyFields(5);
    fields[1].font = 7;
    fields[1].x2x = 1;
    fields[1].x2y = 1;
    fields[1].flags = 3;
    fields[1].gap = 255;
    fields[2] = {.block = 9,
                 .line = 3,
                 .x = 7,
                 .size = 12,
                 .dropIfZero = 1,
                 .pressRight = 1,
                 .expand = 1,
                 .cutToWidth = 1,
                 .maskMode = 3,
                 .fractFormat = 2,
                 .brightness = 15,
                 .alignInPole = 3,
                 .alignOnTape = 2,
                 .tailChar = 255,
                 .desc = "Касса: третье поле"};
    fields[3].size = 0;
    fields[3].desc = "Касса: не печатается";
    fields[0].need = true;
    fields[2].need = true;
    fields[2].blockMask = 0x200;
    fields[4].blockMask = 0x3ff;
    return fields;
}

QStringList listedFields(const MainWindow& window)
{
    const auto* const list = named<QListWidget>(window, "listWidget");
    QStringList texts;
    for (int row = 0; row < list->count(); ++row)
        texts.append(list->item(row)->text());
    return texts;
}

/// The last lines of a download with a template.
QStringList endLines()
{
    return {QStringLiteral("Scene cleared!"), modelLine()};
}

const QStringList kDeviceLines{"Добро пожаловать!", "", "Спасибо за покупку <b>%1</b>", ""};

} // namespace

/// "Прочитать из кассы", from the menu to what the window holds afterwards.
class TestDownload : public QObject
{
    Q_OBJECT

private slots:
    void deviceMustAnswer();
    void questionIsCancelled();
    void everythingIsOffered_data();
    void everythingIsOffered();
    void templateIsReplaced();
    void longTableIsRead();
    void commandsComeWithATemplate();
    void freeLinesAlone();
    void reportNamesBothParts_data();
    void reportNamesBothParts();
    void failedReadLeavesWhatCame_data();
    void failedReadLeavesWhatCame();
    void nothingReadLeavesNoTemplate_data();
    void nothingReadLeavesNoTemplate();
    void badValuesLoseTheTemplate();
    void modelFollowsTheReport();
    void modelOfTheDeviceIsTaken_data();
    void modelOfTheDeviceIsTaken();
    void oldReleaseHasNoTemplateVersion();
};

void TestDownload::deviceMustAnswer()
{
    TransferBench b;
    b.windowLines() = kDeviceLines;
    b.device.set({{"connected", false}});
    b.download({.isFreeLines = true});
    QCOMPARE(b.robot.takeTexts(), QStringList(kNoPortText));
    QCOMPARE(b.user.takeTitles(), QStringList());
    QCOMPARE(b.watch->takeNew(), QStringList("==================================") + noConnectionLines());
    QCOMPARE(b.harm(manyFields(4)), QStringList());
    QCOMPARE(b.windowLines(), kDeviceLines);
}

void TestDownload::questionIsCancelled()
{
    TransferBench b;
    b.windowLines() = kDeviceLines;
    b.user.order([](QDialog& dialog) {
        choose(dialog, {.isFreeLines = true});
        dialog.close();
    });
    chooseInMenu(*b.window, "actionDnLoad");
    QCOMPARE(b.user.takeTitles(), QStringList(kQuestionTitle));
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QCOMPARE(b.watch->takeNew(), questionLines());
    QCOMPARE(b.device.takeCalls().last(), QString("enterMode()"));
    QCOMPARE(b.harm(manyFields(4)), QStringList());
    QCOMPARE(b.windowLines(), kDeviceLines);
}

void TestDownload::everythingIsOffered_data()
{
    QTest::addColumn<int>("fieldCount");
    QTest::newRow("no template") << 0;
    QTest::newRow("template") << 2;
}

void TestDownload::everythingIsOffered()
{
    QFETCH(const int, fieldCount);
    TransferBench b(manyFields(fieldCount));
    bool isRight = false;
    b.user.order([&isRight](QDialog& dialog) {
        isRight = named<QCheckBox>(dialog, "chbFLoadShablon")->isEnabled() &&
                  named<QCheckBox>(dialog, "chbFLoadShablon")->isChecked() &&
                  named<QCheckBox>(dialog, "chbFLoadFreeStrs")->isEnabled() &&
                  !named<QCheckBox>(dialog, "chbFLoadFreeStrs")->isChecked() &&
                  named<QSpinBox>(dialog, "spinBox")->isEnabled() &&
                  named<QSpinBox>(dialog, "spinBox")->value() == 0 &&
                  named<QLabel>(dialog, "label_2")->isEnabled();
        dialog.reject();
    });
    chooseInMenu(*b.window, "actionDnLoad");
    QVERIFY(isRight);
}

void TestDownload::templateIsReplaced()
{
    TransferBench b;
    const auto first = manyFields(3);
    const auto second = deviceFields();
    b.setTemplates({{1, first}, {2, second}});
    b.windowLines() = kDeviceLines;
    b.download({.number = 2});

    QCOMPARE(b.user.takeTitles(), QStringList({kQuestionTitle, kReadingTitle}));
    const auto boxes = b.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, QString(kTemplateDone));
    QCOMPARE(boxes.first().icon, QMessageBox::NoIcon);
    QCOMPARE(boxes.first().title, QString());
    QCOMPARE(b.watch->takeNew(), downloadLines(2, second) + endLines());
    QCOMPARE(b.harm(second), QStringList());
    QCOMPARE(listedFields(*b.window), QStringList("Касса: не печатается"));
    QCOMPARE(b.saved(), maskFile(second));
    QCOMPARE(b.windowLines(), kDeviceLines);
    QCOMPARE(b.progress, QList<int>({1, 2}));

    // A template with fewer fields leaves none of the others behind.
    b.watch->takeNew();
    b.download({.number = 1});
    QCOMPARE(b.robot.takeTexts(), QStringList(kTemplateDone));
    QCOMPARE(b.watch->takeNew(), downloadLines(1, first) + endLines());
    QCOMPARE(b.harm(first), QStringList());
    QCOMPARE(b.saved(), maskFile(first));
}

void TestDownload::longTableIsRead()
{
    TransferBench b;
    const auto fields = fieldsOf(bytesOf(QStringLiteral(SAMPLES_DIR "/grocery-80mm.csv")));
    QCOMPARE(fields.size(), 160);
    b.setTemplates({{1, fields}});
    b.download({});
    QCOMPARE(b.robot.takeTexts(), QStringList(kTemplateDone));
    QCOMPARE(b.watch->takeNew(), downloadLines(1, fields) + endLines());
    QCOMPARE(b.harm(fields), QStringList());
    // A head and four groups for each row, and the row behind the last one.
    QCOMPARE(b.device.takeCalls().filter("setCommandBuffer(").size(), 160 * 5 + 1);
    QList<int> steps;
    for (int value = 1; value <= 80; ++value)
        steps.append(value);
    QCOMPARE(b.progress, steps);
}

void TestDownload::commandsComeWithATemplate()
{
    TransferBench b(QList<FieldRow>{});
    QVERIFY(areTemplateCommands(*b.window, false));
    QVERIFY(!b.isEnabled("actionUpLoad"));
    b.setTemplates({{1, deviceFields()}});
    b.setDeviceLines(kDeviceLines);
    b.download({.isFreeLines = true});
    QVERIFY(areTemplateCommands(*b.window, true));
    // There is no file to save to.
    QVERIFY(!b.isEnabled("actionSave"));
    QTRY_VERIFY(b.isEnabled("actionUpLoad"));
    QTRY_VERIFY(b.isEnabled("actionFreeStrEditor"));
    QCOMPARE(b.harm(deviceFields()), QStringList());
}

void TestDownload::freeLinesAlone()
{
    TransferBench b;
    b.setDeviceLines(kDeviceLines);
    b.windowLines() = {"старая", "старая", "старая", "старая", "старая"};
    for (const int number : {0, 2}) {
        b.download({.isTemplate = false, .isFreeLines = true, .number = number});
        QCOMPARE(b.user.takeTitles(), QStringList(kQuestionTitle));
        QCOMPARE(b.robot.takeTexts(), QStringList(kLinesLoaded));
        QCOMPARE(b.watch->takeNew(), questionLines() + versionLines() + QStringList(modelLine()));
        QCOMPARE(b.windowLines(), kDeviceLines);
        const QStringList calls = b.device.takeCalls();
        QCOMPARE(calls.filter("CommandBuffer").size(), 0);
        QCOMPARE(calls.filter("readTableField").size(), kDeviceLines.size() + 1);
        QCOMPARE(calls.last(), QString("resetMode()"));
    }
    QCOMPARE(b.harm(manyFields(4)), QStringList());
    QTRY_VERIFY(b.isEnabled("actionFreeStrEditor"));

    // A device without free lines takes those of the window.
    b.setDeviceLines({});
    b.download({.isTemplate = false, .isFreeLines = true});
    QCOMPARE(b.robot.takeTexts(), QStringList(kLinesLoaded));
    QCOMPARE(b.windowLines(), QStringList());
    QTRY_VERIFY(!b.isEnabled("actionFreeStrEditor"));
}

void TestDownload::reportNamesBothParts_data()
{
    QTest::addColumn<bool>("isTemplateGood");
    QTest::addColumn<bool>("isLinesGood");
    QTest::addColumn<QString>("report");
    QTest::newRow("both good") << true << true << reportOf(kTemplateDone, kLinesLoaded);
    QTest::newRow("lines fail") << true << false << reportOf(kTemplateDone, kLinesNotLoaded);
    QTest::newRow("template fails") << false << true << reportOf(kTemplateFailed, kLinesLoaded);
    QTest::newRow("both fail") << false << false << reportOf(kTemplateFailed, kLinesNotLoaded);
}

void TestDownload::reportNamesBothParts()
{
    QFETCH(const bool, isTemplateGood);
    QFETCH(const bool, isLinesGood);
    QFETCH(const QString, report);
    TransferBench b;
    const auto fields = deviceFields();
    b.setTemplates({{1, fields}});
    b.setDeviceLines(kDeviceLines);
    b.windowLines() = {"старая"};
    QJsonArray rules;
    // The last row's end is lost, and the second entry into programming mode, which is that of the free lines.
    if (!isTemplateGood)
        rules.append(QJsonObject{{"operation", "execCommandBuffer"}, {"call", 26}, {"code", -6}});
    if (!isLinesGood)
        rules.append(QJsonObject{{"operation", "enterMode"}, {"call", 2}, {"code", -1000}});
    b.device.setFaults(rules);
    b.download({.isFreeLines = true});

    const auto boxes = b.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, report);
    QCOMPARE(boxes.first().icon, QMessageBox::NoIcon);
    // By itself a box looks for marks in the first line only.
    QCOMPARE(boxes.first().format == Qt::RichText, report.contains("<FONT"));
    QCOMPARE(boxes.first().isRich(), report.contains("<FONT"));
    QCOMPARE(b.watch->takeNew(), downloadLines(1, fields) + endLines());
    QCOMPARE(b.harm(fields), QStringList());
    QCOMPARE(b.windowLines(), isLinesGood ? kDeviceLines : QStringList());
}

void TestDownload::failedReadLeavesWhatCame_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("fieldCount");
    QTest::newRow("head of the third row") << 11 << 2;
    QTest::newRow("group of the third row") << 14 << 2;
    QTest::newRow("last group of the third row") << 15 << 2;
    QTest::newRow("head of the fourth row") << 16 << 3;
}

void TestDownload::failedReadLeavesWhatCame()
{
    QFETCH(const int, command);
    QFETCH(const int, fieldCount);
    TransferBench b;
    const auto fields = deviceFields();
    b.setTemplates({{1, fields}});
    b.failCommands(command, -6);
    b.download({});
    QCOMPARE(b.robot.takeTexts(), QStringList(kTemplateFailed));
    QCOMPARE(b.user.takeTitles(), QStringList({kQuestionTitle, kReadingTitle}));
    // Nothing is asked for after the failure.
    QCOMPARE(b.device.takeCalls().filter("execCommandBuffer").size(), command);
    QCOMPARE(b.harm(fields.first(fieldCount)), QStringList());
    b.device.dropFaults();
    QCOMPARE(b.saved(), maskFile(fields.first(fieldCount)));
    const QStringList log = b.watch->takeNew();
    QCOMPARE(log.last(2), endLines());
    // The head of the row that was not completed is told of, too.
    const int heads = command % 5 == 1 ? fieldCount : fieldCount + 1;
    QCOMPARE(log.first(log.size() - 2), downloadLines(1, fields.first(heads)));
}

void TestDownload::nothingReadLeavesNoTemplate_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("report");
    // A device that refuses the first row has an empty table, and that is no failure.
    QTest::newRow("refused") << -3840 << kTemplateDone;
    QTest::newRow("no exchange") << -6 << kTemplateFailed;
}

void TestDownload::nothingReadLeavesNoTemplate()
{
    QFETCH(const int, code);
    QFETCH(const QString, report);
    TransferBench b;
    b.failCommands(1, code);
    b.download({});
    QCOMPARE(b.robot.takeTexts(), QStringList({"Корректных данных не найдено!", report}));
    QCOMPARE(b.watch->takeNew(), downloadLines(1, {}) + endLines());
    QVERIFY(areTemplateCommands(*b.window, false));
    QVERIFY(b.isTapeEmpty());
    QCOMPARE(listedFields(*b.window), QStringList());
    QTRY_VERIFY(!b.isEnabled("actionUpLoad"));

    // A good read afterwards is a good template.
    b.device.dropFaults();
    b.setTemplates({{1, deviceFields()}});
    b.download({});
    QCOMPARE(b.robot.takeTexts(), QStringList(kTemplateDone));
    QCOMPARE(b.harm(deviceFields()), QStringList());
}

void TestDownload::badValuesLoseTheTemplate()
{
    TransferBench b;
    auto fields = deviceFields();
    fields[1].line = 0;
    fields[3].font = 8;
    b.setTemplates({{1, fields}});
    b.download({});
    const QString findings =
        "Поля шаблона имеют недопустимые значения!\nНайденных ошибок: 2, всего несоответствий: 2\n"
        "Найденные несоответствия:\nВ поле №2 ошибка (строка)!\n"
        "У поля №4 недопустимое значение(я)!";
    QCOMPARE(b.robot.takeTexts(), QStringList({findings, kTemplateDone}));
    QCOMPARE(b.watch->takeNew(), downloadLines(1, fields) + findings.split(u'\n') + endLines());
    QVERIFY(areTemplateCommands(*b.window, false));
    QVERIFY(b.isTapeEmpty());
    QCOMPARE(listedFields(*b.window), QStringList());
}

void TestDownload::modelFollowsTheReport()
{
    TransferBench b;
    const auto fields = deviceFields();
    b.setTemplates({{1, fields}});
    b.setDeviceLines(kDeviceLines);
    b.device.set({{"model", 67}, {"modelName", "Прибор"}});
    QStringList seen;
    QStringList log;
    b.robot.atEachBox([&](const DialogRobot::SeenBox& box) {
        seen.append({box.text, b.chosenModel(), QString::number(WindowProbe(*b.window).tapeWidth())});
        log = b.watch->takeNew();
    });
    b.download({.isFreeLines = true});
    // What was read is there while the report is; the model is still the old one.
    QCOMPARE(seen, QStringList({reportOf(kTemplateDone, kLinesLoaded), "Тавр 77Ф", "576"}));
    QCOMPARE(log, downloadLines(1, fields) + QStringList("Scene cleared!"));
    QCOMPARE(b.chosenModel(), QString("Тавр 11Ф"));
    QCOMPARE(b.watch->takeNew().first(), QString("====== Касса ID=67 str=Прибор"));
}

void TestDownload::modelOfTheDeviceIsTaken_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<int>("width");
    QTest::newRow("the same") << 69 << "Тавр 77Ф" << QStringList() << "Тавр 77Ф" << 576;
    QTest::newRow("same tape") << 63 << "Тавр 22Ф"
                               << QStringList({"ConnectedModelChanged cur=69 new=63",
                                               "ConnectedModelChanged newModel: Тавр 22Ф"})
                               << "Тавр 22Ф" << 576;
    QTest::newRow("another tape") << 67 << "Прибор"
                                  << QStringList({"ConnectedModelChanged cur=69 new=67",
                                                  "ConnectedModelChanged newModel: Тавр 11Ф",
                                                  "Scene cleared!"})
                                  << "Тавр 11Ф" << 432;
    QTest::newRow("unknown") << 1000 << "Прибор"
                             << QStringList({"ConnectedModelChanged cur=69 new=1000",
                                             "ConnectedModelChanged newModelIdxNotFound!"})
                             << "Тавр 77Ф" << 576;
    QTest::newRow("none") << 0 << "Прибор" << QStringList() << "Тавр 77Ф" << 576;
}

void TestDownload::modelOfTheDeviceIsTaken()
{
    QFETCH(const int, model);
    QFETCH(const QString, name);
    QFETCH(const QStringList, lines);
    QFETCH(const QString, chosen);
    QFETCH(const int, width);
    TransferBench b;
    const auto fields = deviceFields();
    b.setTemplates({{1, fields}});
    b.device.set({{"model", model}, {"modelName", name}});
    b.download({});
    const QString told = QStringLiteral("====== Касса ID=%1 str=%2").arg(QString::number(model), name);
    QCOMPARE(b.watch->takeNew(), downloadLines(1, fields) + QStringList({"Scene cleared!", told}) + lines);
    QCOMPARE(b.chosenModel(), chosen);
    QCOMPARE(WindowProbe(*b.window).tapeWidth(), width);
    QCOMPARE(named<QComboBox>(*b.window, "comboLentaSize")->currentText(),
             QString(width == 432 ? "57мм" : "80мм"));
    QCOMPARE(b.harm(fields), QStringList());

    // Asked again, there is nothing to change unless the model is unknown.
    b.download({.isTemplate = false, .isFreeLines = true});
    const QStringList again = model == 1000 ? lines : QStringList();
    QCOMPARE(b.watch->takeNew(), questionLines() + versionLines() + QStringList(told) + again);
    QCOMPARE(b.robot.takeTexts(), QStringList({kTemplateDone, kLinesLoaded}));
}

void TestDownload::oldReleaseHasNoTemplateVersion()
{
    TransferBench b;
    b.setTemplates({{1, deviceFields()}});
    b.device.set({{"firmwareMajor", 7}, {"firmwareMinor", 1}, {"firmwareBuild", 3128}});
    b.download({});
    const QStringList log = b.watch->takeNew();
    const auto place = log.indexOf("Версия прошивки: 7.1.3128");
    QVERIFY(place > 0);
    QCOMPARE(log.at(place + 1), QString("Версия шаблонов: -"));
    // No decision depends on it.
    QCOMPARE(b.harm(deviceFields()), QStringList());
}

QTEST_MAIN(TestDownload)

#include "tst_download.moc"
