#include "workflows/transferbench.h"

#include <QComboBox>
#include <QDialog>
#include <QTest>

namespace {

const QString kLinesReport = QStringLiteral("Свободные строки загружены.");
const QString kUnknownWidth = QStringLiteral("Неизвестная ширина ленты!");

/// Two rows of one number, and the start choice behind them.
const QByteArray kFourModels = "1;;57;7;;А\n1;;80;7;;Б\n1;;80;9;;В\n1;;80;8;;Г\n";

QString changeLine(int current, int reported)
{
    return QStringLiteral("ConnectedModelChanged cur=%1 new=%2").arg(current).arg(reported);
}

QString newModelLine(const char* name)
{
    return QStringLiteral("ConnectedModelChanged newModel: ") + QString::fromUtf8(name);
}

const QString kNotFound = QStringLiteral("ConnectedModelChanged newModelIdxNotFound!");
const QString kCleared = QStringLiteral("Scene cleared!");

/// The program with a list of models of the user's own, and a template on the tape.
struct ModelBench : ConnectionBench
{
    explicit ModelBench(const QByteArray& models)
    {
        dir.write(QStringLiteral("kassa.csv"), models);
        writeUsualSettings();
        start();
        showAndWait();
        openFields(manyFields(3));
        watch = std::make_unique<LogWatch>(*window);
    }

    QComboBox* kassa() const { return named<QComboBox>(*window, "comboKassa"); }
    QString tape() const { return named<QComboBox>(*window, "comboLentaSize")->currentText(); }

    /// Reads the free lines of a device of this model; gives the lines of the log behind the one with its number.
    QStringList download(int model)
    {
        device.set({{"model", model}});
        watch->takeNew();
        user.order([](QDialog& dialog) {
            choose(dialog, {.isTemplate = false, .isFreeLines = true});
            clickButton(dialog, "btnLoad");
        });
        chooseInMenu(*window, "actionDnLoad");
        const QStringList log = watch->takeNew();
        const qsizetype reported = log.indexOf(modelLine());
        if (reported < 0 || KRD9IO.modelId != model)
            return {QStringLiteral("the model is not told")};
        return log.mid(reported + 1);
    }

    DialogUser user{QStringLiteral("dlgDnLoad")};
    std::unique_ptr<LogWatch> watch;
};

} // namespace

/// The model that a device reports after a download takes over the choice in the list, and with it the tape.
class TestModelOfTheDevice : public QObject
{
    Q_OBJECT

private slots:
    void firstRowOfTheNumberIsChosen();
    void choiceOfTheSameNumberStays();
    void numberOutsideTheListIsLogged();
    void numberThatIsNoneIsPassedOver();
    void listWithoutAChoiceStaysSo();
    void tapeOutsideTheListIsToldBehindTheReport();
};

void TestModelOfTheDevice::firstRowOfTheNumberIsChosen()
{
    ModelBench b(kFourModels);
    QCOMPARE(b.kassa()->currentText(), QString("В"));
    QCOMPARE(b.tape(), QString("80мм"));

    QCOMPARE(b.download(7), (QStringList{changeLine(9, 7), newModelLine("А"), kCleared}));
    QCOMPARE(b.kassa()->currentIndex(), 0);
    QCOMPARE(b.tape(), QString("57мм"));
    QCOMPARE(WindowProbe(*b.window).tapeWidth(), 432);
    QCOMPARE(b.robot.takeTexts(), QStringList{kLinesReport});
    QCOMPARE(b.harm(manyFields(3)), QStringList());
}

void TestModelOfTheDevice::choiceOfTheSameNumberStays()
{
    ModelBench b(kFourModels);
    chooseInCombo(*b.window, "comboKassa", 1);
    QCOMPARE(b.kassa()->currentText(), QString("Б"));
    // А has the number, too, and stands before it.
    QCOMPARE(b.download(7), QStringList());
    QCOMPARE(b.kassa()->currentIndex(), 1);
    QCOMPARE(b.tape(), QString("80мм"));
    QCOMPARE(b.robot.takeTexts(), QStringList{kLinesReport});
}

void TestModelOfTheDevice::numberOutsideTheListIsLogged()
{
    ModelBench b(kFourModels);
    QCOMPARE(b.download(77), (QStringList{changeLine(9, 77), kNotFound}));
    QCOMPARE(b.kassa()->currentIndex(), 2);
    QCOMPARE(b.tape(), QString("80мм"));
    QCOMPARE(b.robot.takeTexts(), QStringList{kLinesReport});
}

void TestModelOfTheDevice::numberThatIsNoneIsPassedOver()
{
    // The list has these numbers, but no device does.
    ModelBench b("1;;57;0;;А\n1;;57;-7;;Б\n1;;80;9;;В\n1;;80;8;;Г\n");
    QCOMPARE(b.download(0), QStringList());
    const WindowProbe probe(*b.window);
    for (const int model : {0, -1, -7}) {
        probe.followModel(model);
        QCOMPARE(b.watch->takeNew(), QStringList());
        QCOMPARE(b.kassa()->currentIndex(), 2);
    }
    QCOMPARE(b.tape(), QString("80мм"));
    QCOMPARE(b.robot.takeTexts(), QStringList{kLinesReport});
}

void TestModelOfTheDevice::listWithoutAChoiceStaysSo()
{
    ModelBench b(kFourModels);
    b.kassa()->setCurrentIndex(-1);
    QCOMPARE(b.tape(), QString("80мм"));
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QCOMPARE(b.download(7), QStringList());
    QCOMPARE(b.kassa()->currentIndex(), -1);
    QCOMPARE(b.tape(), QString("80мм"));
    QCOMPARE(b.robot.takeTexts(), QStringList{kLinesReport});
}

void TestModelOfTheDevice::tapeOutsideTheListIsToldBehindTheReport()
{
    ModelBench b("1;;57;7;;А\n1;;58;5;;Б\n1;;80;9;;В\n1;;80;8;;Г\n");
    QCOMPARE(b.download(5), (QStringList{changeLine(9, 5), newModelLine("Б")}));
    QCOMPARE(b.robot.takeTexts(), (QStringList{kLinesReport, kUnknownWidth}));
    QCOMPARE(b.kassa()->currentIndex(), 1);
    QCOMPARE(b.tape(), QString("80мм"));
    QCOMPARE(WindowProbe(*b.window).tapeWidth(), 576);
    QCOMPARE(b.harm(manyFields(3)), QStringList());
}

QTEST_MAIN(TestModelOfTheDevice)

#include "tst_model_of_the_device.moc"
