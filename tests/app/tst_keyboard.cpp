#include "ui_mainwindow.h"

#include <QApplication>
#include <QMainWindow>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

/// What the Tab key leads through while the table has no rows. The console is hidden in the program.
QStringList tabOrder()
{
    return QStringLiteral(
               "graphicsView_1 btnFiltrShowAll btnFiltrRegistr lePolesFilterStr chbFilter listWidget "
               "lePoleDesc btnSetSetModePoz btnSetSetModeView "
               "btnPoleDel btnFreeStrEditor btnBlTitlesOnOff btnFontMonoWide btnScaleX05 "
               "lePolesMasshtab btnScaleX20 comboKassa comboLentaSize btnRedraw settingsWidget leDbgCmd "
               "btnDbgCmdCall btnDbgLoadFile btnDbgClear btnDbgDnload btnDbgDnload_2 "
               "btnDbgSaveJson btnDbgUploadJson teLog")
        .split(u' ');
}

QString nameOfFocus()
{
    const QWidget* const widget = QApplication::focusWidget();
    return widget == nullptr ? QString() : widget->objectName();
}

void press(Qt::Key key)
{
    QWidget* const popup = QApplication::activePopupWidget();
    QTest::keyClick(popup != nullptr ? popup : QApplication::focusWidget(), key);
}

} // namespace

/// The form by itself, used without a mouse.
class tst_Keyboard : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void tabLeadsFromTheTapeThroughAllWidgets();
    void backtabLeadsBack();
    void tabLeadsFromValueToValueInTheTable();
    void menusAreReached_data();
    void menusAreReached();

private:
    std::unique_ptr<QMainWindow> m_window;
    Ui_MainWindow m_ui;
};

void tst_Keyboard::init()
{
    Q_INIT_RESOURCE(images);
    m_window = std::make_unique<QMainWindow>();
    m_ui.setupUi(m_window.get());
    for (QWidget* const widget : m_window->findChildren<QWidget*>())
        widget->setEnabled(true);
    for (QAction* const action : m_window->findChildren<QAction*>())
        action->setEnabled(true);
    // As the program does at once
    m_ui.settingsWidgetView->hide();
    m_ui.settingsWidget->setRowCount(0);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_Keyboard::tabLeadsFromTheTapeThroughAllWidgets()
{
    QStringList seen;
    for (qsizetype i = 0; i < tabOrder().size(); ++i) {
        seen.append(nameOfFocus());
        press(Qt::Key_Tab);
    }
    QCOMPARE(seen.join(u' '), tabOrder().join(u' '));
}

void tst_Keyboard::backtabLeadsBack()
{
    m_ui.teLog->setFocus();
    QStringList seen;
    for (qsizetype i = 0; i < tabOrder().size(); ++i) {
        seen.prepend(nameOfFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ShiftModifier);
    }
    QCOMPARE(seen.join(u' '), tabOrder().join(u' '));
}

void tst_Keyboard::tabLeadsFromValueToValueInTheTable()
{
    // Which is why the table comes after all buttons.
    m_ui.settingsWidget->setRowCount(2);
    m_ui.settingsWidget->setFocus();
    m_ui.settingsWidget->setCurrentCell(0, 1);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    QCOMPARE(nameOfFocus(), QStringLiteral("settingsWidget"));
    QCOMPARE(m_ui.settingsWidget->currentRow(), 1);
    QCOMPARE(m_ui.settingsWidget->currentColumn(), 1);
}

void tst_Keyboard::menusAreReached_data()
{
    QTest::addColumn<int>("menu");
    QTest::addColumn<int>("line");
    QTest::newRow("actionOpen") << 0 << 0;
    QTest::newRow("actionSave") << 0 << 1;
    QTest::newRow("actionSaveAs") << 0 << 2;
    QTest::newRow("action_5") << 0 << 3;
    QTest::newRow("actionExit") << 0 << 4;
    QTest::newRow("actionIOSettings") << 1 << 0;
    QTest::newRow("actionFreePort") << 1 << 1;
    QTest::newRow("actionDnLoad") << 1 << 2;
    QTest::newRow("actionUpLoad") << 1 << 3;
    QTest::newRow("actionPrintTestChek") << 1 << 4;
    QTest::newRow("actionFreeStrEditor") << 2 << 0;
    QTest::newRow("actionAbout") << 3 << 0;
}

void tst_Keyboard::menusAreReached()
{
    QFETCH(const int, menu);
    QFETCH(const int, line);
    const auto* const action = m_window->findChild<QAction*>(QString::fromLatin1(QTest::currentDataTag()),
                                                             Qt::FindDirectChildrenOnly);
    QVERIFY(action != nullptr);
    const QSignalSpy triggered(action, &QAction::triggered);

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Alt);
    QCOMPARE(QApplication::focusWidget(), m_ui.menuBar);
    for (int i = 0; i < menu; ++i)
        press(Qt::Key_Right);
    press(Qt::Key_Down);
    QVERIFY(QApplication::activePopupWidget() != nullptr);
    for (int i = 0; i < line; ++i)
        press(Qt::Key_Down);
    press(Qt::Key_Return);

    QCOMPARE(triggered.size(), 1);
    QVERIFY(QApplication::activePopupWidget() == nullptr);
}

QTEST_MAIN(tst_Keyboard)
#include "tst_keyboard.moc"
