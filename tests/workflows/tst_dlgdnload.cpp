#include "workflows/dlgdnload.h"
#include "workflows/transferbench.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

namespace {

const QString kNothing = QStringLiteral("Ничего не выбрано для загрузки!");

/// What happens to a dialog that is open, and how it ends.
int resultOf(dlgDnLoad& dialog, const DialogUser::Steps& steps)
{
    DialogUser user(QStringLiteral("dlgDnLoad"));
    user.order(steps);
    return dialog.exec();
}

bool isNumberEnabled(const QDialog& dialog)
{
    const bool isSpinBox = named<QSpinBox>(dialog, "spinBox")->isEnabled();
    const bool isLabel = named<QLabel>(dialog, "label_2")->isEnabled();
    if (isSpinBox != isLabel)
        QTest::qFail("number and its label differ", __FILE__, __LINE__);
    return isSpinBox;
}

} // namespace

/// The dialog before an exchange, by itself.
class TestDlgDnLoad : public QObject
{
    Q_OBJECT

private slots:
    void dialogHasTitleAndSize();
    void everyWidgetIsAsDrawn_data();
    void everyWidgetIsAsDrawn();
    void formHasNoOtherWidgets();
    void startsWithTheTemplateTicked();
    void templateWantsANumber();
    void nothingTickedIsTold();
    void goodChoiceEndsTheQuestion_data();
    void goodChoiceEndsTheQuestion();
    void numberGoesNoHigher();
    void untickedTemplateDisablesTheNumber();
    void tickOfTheProgramLeavesTheNumber();
    void offersWhatThereIs_data();
    void offersWhatThereIs();
    void closeEndsItAsTheButtonDoes();
    void userCancels_data();
    void userCancels();
    void progressIsShown();
    void opensTwice();
    void stopDoesNotEndIt();
};

void TestDlgDnLoad::dialogHasTitleAndSize()
{
    const dlgDnLoad dialog;
    QCOMPARE(dialog.windowTitle(), QString("Обмен с устройством"));
    QCOMPARE(dialog.size(), QSize(360, 178));
    QVERIFY(!dialog.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
    QVERIFY(dialog.windowFlags().testFlag(Qt::Dialog));
    QVERIFY(dialog.parent() == nullptr);
}

void TestDlgDnLoad::everyWidgetIsAsDrawn_data()
{
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("parent");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QRect>("geometry");
    const auto row = [](const char* name, const char* className, const char* parent, const char* text,
                        QRect geometry) {
        QTest::newRow(name) << QString(className) << QString(parent) << QString(text) << geometry;
    };
    row("groupBox", "QGroupBox", "dlgDnLoad", "Что загружать:", {10, 10, 340, 91});
    row("chbFLoadShablon", "QCheckBox", "groupBox", "Шаблон", {10, 30, 101, 20});
    row("chbFLoadFreeStrs", "QCheckBox", "groupBox", "Свободные строки", {10, 60, 151, 20});
    row("label_2", "QLabel", "groupBox", "Номер в устройстве:", {150, 30, 131, 21});
    row("spinBox", "QSpinBox", "groupBox", nullptr, {290, 30, 42, 22});
    row("progressBar", "QProgressBar", "dlgDnLoad", "0%", {10, 110, 340, 23});
    row("btnLoad", "QPushButton", "dlgDnLoad", "Загрузить", {130, 140, 101, 28});
}

void TestDlgDnLoad::everyWidgetIsAsDrawn()
{
    QFETCH(const QString, className);
    QFETCH(const QString, parent);
    QFETCH(const QString, text);
    QFETCH(const QRect, geometry);
    const dlgDnLoad dialog;
    const auto* const widget = named<QWidget>(dialog, QTest::currentDataTag());
    QCOMPARE(QString(widget->metaObject()->className()), className);
    QCOMPARE(widget->parent()->objectName(), parent);
    QCOMPARE(widget->geometry(), geometry);
    const char* const property = className == u"QGroupBox" ? "title" : "text";
    if (!text.isNull())
        QCOMPARE(widget->property(property).toString(), text);
}

void TestDlgDnLoad::formHasNoOtherWidgets()
{
    const dlgDnLoad dialog;
    QStringList names;
    for (const auto* const widget : dialog.findChildren<QWidget*>()) {
        if (!widget->objectName().startsWith(u"qt_"))
            names.append(widget->objectName());
    }
    // In the order of the form, those of the group behind it.
    QCOMPARE(names, QStringList({"groupBox", "chbFLoadShablon", "chbFLoadFreeStrs", "label_2", "spinBox",
                                 "progressBar", "btnLoad"}));
}

void TestDlgDnLoad::startsWithTheTemplateTicked()
{
    const dlgDnLoad dialog;
    QVERIFY(dialog.isLoadTblChecked());
    QVERIFY(!dialog.isLoadFreeStrChecked());
    QCOMPARE(dialog.getSubTblNum(), 0);
    const auto* const number = named<QSpinBox>(dialog, "spinBox");
    QCOMPARE(number->minimum(), 0);
    QCOMPARE(number->maximum(), 2);
    const auto* const progress = named<QProgressBar>(dialog, "progressBar");
    QCOMPARE(progress->value(), 0);
    QCOMPARE(progress->minimum(), 0);
    QCOMPARE(progress->maximum(), 100);
    for (const auto* const widget : dialog.findChildren<QWidget*>())
        QVERIFY2(widget->isEnabled(), qPrintable(widget->objectName()));
}

void TestDlgDnLoad::templateWantsANumber()
{
    DialogRobot robot;
    dlgDnLoad dialog;
    for (const bool isFreeLines : {false, true}) {
        bool isStillOpen = false;
        const int result = resultOf(dialog, [&](QDialog& open) {
            choose(open, {.isFreeLines = isFreeLines, .number = 0});
            clickButton(open, "btnLoad");
            isStillOpen = open.isVisible();
            open.reject();
        });
        QCOMPARE(result, 0);
        QVERIFY(isStillOpen);
        const auto boxes = robot.takeBoxes();
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.first().text, QString(kNoNumberText));
        QCOMPARE(boxes.first().title, QString());
        QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    }
}

void TestDlgDnLoad::nothingTickedIsTold()
{
    DialogRobot robot;
    dlgDnLoad dialog;
    for (const int number : {0, 1}) {
        bool isStillOpen = false;
        const int result = resultOf(dialog, [&](QDialog& open) {
            choose(open, {.isTemplate = false, .number = number});
            clickButton(open, "btnLoad");
            isStillOpen = open.isVisible();
            open.reject();
        });
        QCOMPARE(result, 0);
        QVERIFY(isStillOpen);
        const auto boxes = robot.takeBoxes();
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.first().text, kNothing);
        QCOMPARE(boxes.first().title, QString());
        QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    }
}

void TestDlgDnLoad::goodChoiceEndsTheQuestion_data()
{
    QTest::addColumn<bool>("isTemplate");
    QTest::addColumn<bool>("isFreeLines");
    QTest::addColumn<int>("number");
    QTest::newRow("template 1") << true << false << 1;
    QTest::newRow("template 2") << true << false << 2;
    QTest::newRow("free lines") << false << true << 0;
    QTest::newRow("free lines, number chosen before") << false << true << 2;
    QTest::newRow("both") << true << true << 2;
}

void TestDlgDnLoad::goodChoiceEndsTheQuestion()
{
    QFETCH(const bool, isTemplate);
    QFETCH(const bool, isFreeLines);
    QFETCH(const int, number);
    DialogRobot robot;
    dlgDnLoad dialog;
    const int result = resultOf(dialog, [&](QDialog& open) {
        choose(open, {isTemplate, isFreeLines, number});
        clickButton(open, "btnLoad");
    });
    QCOMPARE(result, 1);
    QCOMPARE(dialog.isLoadTblChecked(), isTemplate);
    QCOMPARE(dialog.isLoadFreeStrChecked(), isFreeLines);
    QCOMPARE(dialog.getSubTblNum(), number);
    QCOMPARE(robot.takeTexts(), QStringList());
}

void TestDlgDnLoad::numberGoesNoHigher()
{
    dlgDnLoad dialog;
    resultOf(dialog, [](QDialog& open) {
        auto* const number = named<QSpinBox>(open, "spinBox");
        for (int i = 0; i < 4; ++i)
            QTest::keyClick(number, Qt::Key_Up);
        open.reject();
    });
    QCOMPARE(dialog.getSubTblNum(), 2);
    resultOf(dialog, [](QDialog& open) {
        choose(open, {.number = 3});
        open.reject();
    });
    QCOMPARE(dialog.getSubTblNum(), 2);
}

void TestDlgDnLoad::untickedTemplateDisablesTheNumber()
{
    dlgDnLoad dialog;
    QList<bool> enabled;
    resultOf(dialog, [&enabled](QDialog& open) {
        for (const bool isTicked : {false, true, false}) {
            choose(open, {.isTemplate = isTicked, .number = 2});
            enabled.append(isNumberEnabled(open));
        }
        open.reject();
    });
    QCOMPARE(enabled, QList<bool>({false, true, false}));
    QVERIFY(named<QCheckBox>(dialog, "chbFLoadFreeStrs")->isEnabled());
}

void TestDlgDnLoad::tickOfTheProgramLeavesTheNumber()
{
    const dlgDnLoad dialog;
    named<QCheckBox>(dialog, "chbFLoadShablon")->setChecked(false);
    QVERIFY(isNumberEnabled(dialog));
}

void TestDlgDnLoad::offersWhatThereIs_data()
{
    QTest::addColumn<bool>("table");
    QTest::addColumn<bool>("freeLines");
    QTest::newRow("nothing") << false << false;
    QTest::newRow("template") << true << false;
    QTest::newRow("free lines") << false << true;
    QTest::newRow("both") << true << true;
}

void TestDlgDnLoad::offersWhatThereIs()
{
    QFETCH(const bool, table);
    QFETCH(const bool, freeLines);
    for (const bool wasTicked : {false, true}) {
        dlgDnLoad dialog;
        auto* const linesBox = named<QCheckBox>(dialog, "chbFLoadFreeStrs");
        auto* const templateBox = named<QCheckBox>(dialog, "chbFLoadShablon");
        linesBox->setChecked(wasTicked);
        dialog.setWhatLoadEnable(table, freeLines);
        QCOMPARE(templateBox->isEnabled(), table);
        QCOMPARE(dialog.isLoadTblChecked(), table);
        QCOMPARE(isNumberEnabled(dialog), table);
        QCOMPARE(linesBox->isEnabled(), freeLines);
        QCOMPARE(dialog.isLoadFreeStrChecked(), wasTicked);
        // And back: the template is ticked with what it is offered.
        dialog.setWhatLoadEnable(!table, !freeLines);
        QCOMPARE(templateBox->isEnabled(), !table);
        QCOMPARE(dialog.isLoadTblChecked(), !table);
        QCOMPARE(isNumberEnabled(dialog), !table);
        QCOMPARE(linesBox->isEnabled(), !freeLines);
        QCOMPARE(dialog.isLoadFreeStrChecked(), wasTicked);
    }
}

void TestDlgDnLoad::closeEndsItAsTheButtonDoes()
{
    DialogRobot robot;
    dlgDnLoad dialog;
    // Whatever is ticked: no number was chosen here.
    QCOMPARE(resultOf(dialog, [&dialog](QDialog&) { dialog.close(); }), 1);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(robot.takeTexts(), QStringList());
}

void TestDlgDnLoad::userCancels_data()
{
    QTest::addColumn<bool>("isKey");
    QTest::newRow("window") << false;
    QTest::newRow("key") << true;
}

void TestDlgDnLoad::userCancels()
{
    QFETCH(const bool, isKey);
    dlgDnLoad dialog;
    const int result = resultOf(dialog, [isKey](QDialog& open) {
        choose(open, {});
        if (isKey)
            QTest::keyClick(&open, Qt::Key_Escape);
        else
            open.close(); // as a window is closed
    });
    QCOMPARE(result, 0);
}

void TestDlgDnLoad::progressIsShown()
{
    dlgDnLoad dialog;
    const auto* const bar = named<QProgressBar>(dialog, "progressBar");
    for (const int value : {1, 50, 100, 7, 0}) {
        dialog.setValue(value);
        QCOMPARE(bar->value(), value);
    }
    // The device may count further than the bar goes.
    dialog.setValue(100);
    dialog.setValue(32640);
    QCOMPARE(bar->value(), 100);
}

void TestDlgDnLoad::opensTwice()
{
    DialogUser user(QStringLiteral("dlgDnLoad"));
    dlgDnLoad dialog;
    user.order([](QDialog& open) {
        choose(open, {.isFreeLines = true, .number = 2});
        clickButton(open, "btnLoad");
    });
    QCOMPARE(dialog.exec(), 1);
    bool isButtonLive = false;
    user.order([&](QDialog& open) {
        isButtonLive = named<QPushButton>(open, "btnLoad")->isEnabled();
        dialog.setValue(40);
        dialog.close();
    });
    dialog.setWindowTitle(QStringLiteral("Второй раз"));
    QCOMPARE(dialog.exec(), 1);
    QCOMPARE(user.takeTitles(), QStringList({"Обмен с устройством", "Второй раз"}));
    QVERIFY(isButtonLive);
    QVERIFY(dialog.isLoadTblChecked());
    QVERIFY(dialog.isLoadFreeStrChecked());
    QCOMPARE(dialog.getSubTblNum(), 2);
    QCOMPARE(named<QProgressBar>(dialog, "progressBar")->value(), 40);
}

void TestDlgDnLoad::stopDoesNotEndIt()
{
    dlgDnLoad dialog;
    bool isStillOpen = false;
    const int result = resultOf(dialog, [&](QDialog& open) {
        dialog.stop();
        isStillOpen = open.isVisible();
        open.reject();
    });
    QCOMPARE(result, 0);
    QVERIFY(isStillOpen);
}

QTEST_MAIN(TestDlgDnLoad)

#include "tst_dlgdnload.moc"
