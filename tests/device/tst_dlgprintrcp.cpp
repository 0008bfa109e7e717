#include "device/dlgprintrcp.h"
#include "support/usersteps.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

namespace {

struct CheckBoxRow
{
    const char* name;
    const char* text;
    QRect geometry;
    bool isChecked;
    bool isEnabled;
};

const CheckBoxRow kCheckBoxes[] = {
    {"chb04portRelease", "освободить порт", {20, 150, 351, 20}, false, true},
    {"chb02UpLoadShablon", "загрузить текущий шаблон в кассу", {20, 60, 351, 20}, false, true},
    {"chb03CloseSession", "закрыть смену после печати", {20, 120, 351, 20}, false, true},
    {"chb01OpenSession", "открыть смену", {20, 30, 351, 20}, false, false},
    {"chb03CloseSession_2", "сформировать и напечатать чек", {20, 90, 351, 20}, true, false},
};

QPushButton* okOf(const QDialog& dialog)
{
    return named<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok);
}

void show(QDialog& dialog)
{
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
}

void typeNumber(const QDialog& dialog, const QString& digits)
{
    auto* const spin = named<QSpinBox>(dialog, "spinShablonNum");
    spin->setFocus();
    spin->selectAll();
    QTest::keyClicks(spin, digits);
}

void click(const QDialog& dialog, const char* name)
{
    auto* const box = named<QCheckBox>(dialog, name);
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
}

} // namespace

/// The dialog that asks how the test receipt is printed.
class TestDlgPrintRcp : public QObject
{
    Q_OBJECT

private slots:
    void window();
    void allWidgets();
    void checkBoxes_data();
    void checkBoxes();
    void labels();
    void numberBox();
    void buttonBox();
    void initDialogShowsTheState_data();
    void initDialogShowsTheState();
    void initDialogTwice();
    void numberEnablesTheButton();
    void numberStaysInItsRange();
    void okAccepts();
    void returnWithoutANumberDoesNothing();
    void warningLeavesNoWayOn();
    void closingRejects_data();
    void closingRejects();
    void boxSignalsCloseTheDialog();
    void gettersFollowTheBoxes();
    void displayedBoxesCannotBeChanged();
};

void TestDlgPrintRcp::window()
{
    const dlgPrintRcp dialog;
    QCOMPARE(dialog.windowTitle(), QString("Печать тестового чека"));
    QCOMPARE(dialog.size(), QSize(411, 330));
    QVERIFY(!dialog.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
    QCOMPARE(dialog.windowFlags() & Qt::WindowType_Mask, Qt::Dialog);
    QCOMPARE(dialog.parent(), nullptr);
}

void TestDlgPrintRcp::allWidgets()
{
    const dlgPrintRcp dialog;
    QStringList names;
    for (const auto* const child : dialog.findChildren<QWidget*>()) {
        if (!child->objectName().isEmpty() && !child->objectName().startsWith("qt_"))
            names.append(child->objectName());
    }
    // In the order of the form, those of the group behind it.
    QCOMPARE(names, QStringList({"buttonBox", "spinShablonNum", "label", "groupBox", "chb04portRelease",
                                 "chb02UpLoadShablon", "chb03CloseSession", "chb01OpenSession",
                                 "chb03CloseSession_2", "label_2"}));
    const auto* const group = named<QGroupBox>(dialog, "groupBox");
    QCOMPARE(group->title(), QString("Этапы печати чека"));
    QCOMPARE(group->geometry(), QRect(10, 10, 391, 191));
    QCOMPARE(group->parentWidget(), &dialog);
    QVERIFY(group->isEnabled());
}

void TestDlgPrintRcp::checkBoxes_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < static_cast<int>(std::size(kCheckBoxes)); ++i)
        QTest::newRow(kCheckBoxes[i].name) << i;
}

void TestDlgPrintRcp::checkBoxes()
{
    QFETCH(const int, index);
    const CheckBoxRow& row = kCheckBoxes[index];
    const dlgPrintRcp dialog;
    const auto* const box = named<QCheckBox>(dialog, row.name);
    QCOMPARE(box->parentWidget()->objectName(), QString("groupBox"));
    QCOMPARE(box->text(), QString(row.text));
    QCOMPARE(box->geometry(), row.geometry);
    QCOMPARE(box->font().pointSize(), 9);
    QCOMPARE(box->font().weight(), static_cast<int>(QFont::Normal));
    QCOMPARE(box->isChecked(), row.isChecked);
    QCOMPARE(box->isEnabled(), row.isEnabled);
    QVERIFY(!box->isTristate());
}

void TestDlgPrintRcp::labels()
{
    const dlgPrintRcp dialog;
    const auto* const label = named<QLabel>(dialog, "label");
    QCOMPARE(label->text(), QString("номер шаблона для печати"));
    QCOMPARE(label->geometry(), QRect(70, 222, 301, 16));
    QCOMPARE(label->font().pointSize(), 9);
    QCOMPARE(label->font().weight(), static_cast<int>(QFont::Normal));
    QCOMPARE(label->parentWidget(), &dialog);

    const auto* const warning = named<QLabel>(dialog, "label_2");
    QCOMPARE(warning->text(),
             QString("Внимание!\nПечать тестового чека\nна фискализированных кассах заблокирована!"));
    QCOMPARE(warning->geometry(), QRect(20, 250, 381, 61));
    QCOMPARE(warning->font().pointSize(), 9);
    QCOMPARE(warning->font().weight(), static_cast<int>(QFont::Bold));
    QCOMPARE(warning->parentWidget(), &dialog);
}

void TestDlgPrintRcp::numberBox()
{
    const dlgPrintRcp dialog;
    const auto* const spin = named<QSpinBox>(dialog, "spinShablonNum");
    QCOMPARE(spin->geometry(), QRect(20, 220, 42, 22));
    QCOMPARE(spin->minimum(), 0);
    QCOMPARE(spin->maximum(), 2);
    QCOMPARE(spin->value(), 0);
    QVERIFY(spin->isEnabled());
    QCOMPARE(spin->parentWidget(), &dialog);
}

void TestDlgPrintRcp::buttonBox()
{
    const dlgPrintRcp dialog;
    const auto* const box = named<QDialogButtonBox>(dialog, "buttonBox");
    QCOMPARE(box->geometry(), QRect(30, 280, 221, 32));
    QCOMPARE(box->orientation(), Qt::Horizontal);
    QCOMPARE(box->standardButtons(), QDialogButtonBox::StandardButtons(QDialogButtonBox::Ok));
    QCOMPARE(box->buttons().size(), 1);
    QVERIFY(!box->isEnabled());
    QCOMPARE(box->parentWidget(), &dialog);
}

void TestDlgPrintRcp::initDialogShowsTheState_data()
{
    QTest::addColumn<bool>("shiftClosed");
    QTest::addColumn<bool>("templateLoaded");
    QTest::addColumn<bool>("notFiscal");
    for (int bits = 0; bits < 8; ++bits)
        QTest::addRow("shift %s, %s, %s", (bits & 1) != 0 ? "closed" : "open",
                      (bits & 2) != 0 ? "template" : "no template", (bits & 4) != 0 ? "not fiscal" : "fiscal")
            << ((bits & 1) != 0) << ((bits & 2) != 0) << ((bits & 4) != 0);
}

void TestDlgPrintRcp::initDialogShowsTheState()
{
    QFETCH(const bool, shiftClosed);
    QFETCH(const bool, templateLoaded);
    QFETCH(const bool, notFiscal);
    dlgPrintRcp dialog;
    dialog.initDialog(shiftClosed, templateLoaded, notFiscal);
    show(dialog);
    QCOMPARE(named<QCheckBox>(dialog, "chb01OpenSession")->isChecked(), shiftClosed);
    QVERIFY(!named<QCheckBox>(dialog, "chb01OpenSession")->isEnabled());
    QCOMPARE(named<QCheckBox>(dialog, "chb02UpLoadShablon")->isChecked(), templateLoaded);
    QCOMPARE(named<QCheckBox>(dialog, "chb02UpLoadShablon")->isEnabled(), templateLoaded);
    QCOMPARE(named<QLabel>(dialog, "label_2")->isVisible(), !notFiscal);
    QCOMPARE(named<QDialogButtonBox>(dialog, "buttonBox")->isVisible(), notFiscal);
    QCOMPARE(okOf(dialog)->isVisible(), notFiscal);

    // The rest is as it was made.
    QVERIFY(!named<QDialogButtonBox>(dialog, "buttonBox")->isEnabled());
    QCOMPARE(named<QSpinBox>(dialog, "spinShablonNum")->value(), 0);
    QVERIFY(named<QCheckBox>(dialog, "chb03CloseSession_2")->isChecked());
    QVERIFY(!named<QCheckBox>(dialog, "chb03CloseSession_2")->isEnabled());
    for (const char* const name : {"chb03CloseSession", "chb04portRelease"}) {
        QVERIFY(!named<QCheckBox>(dialog, name)->isChecked());
        QVERIFY(named<QCheckBox>(dialog, name)->isEnabled());
    }
    QCOMPARE(dialog.getSubTblNum(), 0);
    QCOMPARE(dialog.isUpLoadShablonEnabled(), templateLoaded);
    QVERIFY(!dialog.isSessionCloseChecked());
    QVERIFY(!dialog.isPortCloseChecked());
    QVERIFY(!dialog.isLoadFreeStrChecked());
}

void TestDlgPrintRcp::initDialogTwice()
{
    dlgPrintRcp dialog;
    dialog.initDialog(true, true, false);
    dialog.initDialog(false, false, true);
    show(dialog);
    QVERIFY(!named<QCheckBox>(dialog, "chb01OpenSession")->isChecked());
    QVERIFY(!named<QCheckBox>(dialog, "chb02UpLoadShablon")->isChecked());
    QVERIFY(!named<QCheckBox>(dialog, "chb02UpLoadShablon")->isEnabled());
    QVERIFY(!named<QLabel>(dialog, "label_2")->isVisible());
    QVERIFY(okOf(dialog)->isVisible());
}

void TestDlgPrintRcp::numberEnablesTheButton()
{
    dlgPrintRcp dialog;
    dialog.initDialog(true, false, true);
    show(dialog);
    const auto* const box = named<QDialogButtonBox>(dialog, "buttonBox");
    for (const int number : {1, 0, 2, 0, 2, 1}) {
        typeNumber(dialog, QString::number(number));
        QCOMPARE(dialog.getSubTblNum(), number);
        QCOMPARE(box->isEnabled(), number != 0);
        QCOMPARE(okOf(dialog)->isEnabled(), number != 0);
    }
}

void TestDlgPrintRcp::numberStaysInItsRange()
{
    dlgPrintRcp dialog;
    dialog.initDialog(true, false, true);
    show(dialog);
    auto* const spin = named<QSpinBox>(dialog, "spinShablonNum");
    QTest::keyClick(spin, Qt::Key_Down);
    QCOMPARE(dialog.getSubTblNum(), 0);
    QVERIFY(!okOf(dialog)->isEnabled());
    for (const int number : {1, 2, 2}) {
        QTest::keyClick(spin, Qt::Key_Up);
        QCOMPARE(dialog.getSubTblNum(), number);
        QVERIFY(okOf(dialog)->isEnabled());
    }
    typeNumber(dialog, "3");
    QCOMPARE(dialog.getSubTblNum(), 2);
}

void TestDlgPrintRcp::okAccepts()
{
    dlgPrintRcp dialog;
    dialog.initDialog(true, true, true);
    show(dialog);
    QSignalSpy finished(&dialog, &QDialog::finished);
    QTest::mouseClick(okOf(dialog), Qt::LeftButton); // disabled yet
    QCOMPARE(finished.size(), 0);
    typeNumber(dialog, "2");
    QTest::mouseClick(okOf(dialog), Qt::LeftButton);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.getSubTblNum(), 2);
}

void TestDlgPrintRcp::returnWithoutANumberDoesNothing()
{
    dlgPrintRcp dialog;
    dialog.initDialog(true, true, true);
    show(dialog);
    QTest::keyClick(named<QSpinBox>(dialog, "spinShablonNum"), Qt::Key_Return);
    QVERIFY(dialog.isVisible());
    typeNumber(dialog, "1");
    QTest::keyClick(named<QSpinBox>(dialog, "spinShablonNum"), Qt::Key_Return);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
}

void TestDlgPrintRcp::warningLeavesNoWayOn()
{
    dlgPrintRcp dialog;
    dialog.initDialog(true, true, false);
    show(dialog);
    typeNumber(dialog, "1");
    QVERIFY(!okOf(dialog)->isVisible());
    QTest::keyClick(named<QSpinBox>(dialog, "spinShablonNum"), Qt::Key_Return);
    QVERIFY(dialog.isVisible());
    QTest::keyClick(&dialog, Qt::Key_Enter);
    QVERIFY(dialog.isVisible());
    dialog.close();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), static_cast<int>(QDialog::Rejected));
}

void TestDlgPrintRcp::closingRejects_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("escape") << true;
    QTest::newRow("title bar") << false;
}

void TestDlgPrintRcp::closingRejects()
{
    QFETCH(const bool, byKey);
    dlgPrintRcp dialog;
    dialog.initDialog(true, true, true);
    show(dialog);
    typeNumber(dialog, "1");
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    if (byKey)
        QTest::keyClick(&dialog, Qt::Key_Escape);
    else
        dialog.close();
    QCOMPARE(rejected.size(), 1);
    QCOMPARE(dialog.result(), static_cast<int>(QDialog::Rejected));
    QVERIFY(!dialog.isVisible());
}

void TestDlgPrintRcp::boxSignalsCloseTheDialog()
{
    dlgPrintRcp dialog;
    dialog.initDialog(true, true, true);
    show(dialog);
    const QSignalSpy accepted(&dialog, &QDialog::accepted);
    const QSignalSpy rejected(&dialog, &QDialog::rejected);
    emit named<QDialogButtonBox>(dialog, "buttonBox")->rejected();
    QCOMPARE(rejected.size(), 1);
    QVERIFY(!dialog.isVisible());
    show(dialog);
    emit named<QDialogButtonBox>(dialog, "buttonBox")->accepted();
    QCOMPARE(accepted.size(), 1);
    QVERIFY(!dialog.isVisible());
}

void TestDlgPrintRcp::gettersFollowTheBoxes()
{
    dlgPrintRcp dialog;
    dialog.initDialog(false, true, true);
    show(dialog);
    const auto getters = [&dialog] {
        return QList<bool>{dialog.isUpLoadShablonEnabled(), dialog.isSessionCloseChecked(),
                           dialog.isPortCloseChecked(), dialog.isLoadFreeStrChecked()};
    };
    QCOMPARE(getters(), (QList<bool>{true, false, false, false}));
    click(dialog, "chb02UpLoadShablon");
    QCOMPARE(getters(), (QList<bool>{false, false, false, false}));
    click(dialog, "chb03CloseSession");
    QCOMPARE(getters(), (QList<bool>{false, true, false, false}));
    click(dialog, "chb04portRelease");
    QCOMPARE(getters(), (QList<bool>{false, true, true, false}));
    click(dialog, "chb02UpLoadShablon");
    QCOMPARE(getters(), (QList<bool>{true, true, true, false}));
    click(dialog, "chb03CloseSession");
    QCOMPARE(getters(), (QList<bool>{true, false, true, false}));
    QCOMPARE(dialog.getSubTblNum(), 0);
}

void TestDlgPrintRcp::displayedBoxesCannotBeChanged()
{
    dlgPrintRcp dialog;
    dialog.initDialog(false, false, true);
    show(dialog);
    for (const char* const name : {"chb01OpenSession", "chb02UpLoadShablon", "chb03CloseSession_2"}) {
        const bool before = named<QCheckBox>(dialog, name)->isChecked();
        click(dialog, name);
        QCOMPARE(named<QCheckBox>(dialog, name)->isChecked(), before);
    }
}

QTEST_MAIN(TestDlgPrintRcp)

#include "tst_dlgprintrcp.moc"
