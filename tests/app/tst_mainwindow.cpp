#include "app/csettings.h"
#include "support/session.h"

#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <QGraphicsOpacityEffect>
#include <QGraphicsView>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QTextEdit>

#include <memory>

namespace {

/// The labels of the status bar from left to right.
QList<QLabel*> statusCells(const MainWindow& window)
{
    auto cells = named<QStatusBar>(window, "statusBar")->findChildren<QLabel*>(Qt::FindDirectChildrenOnly);
    std::stable_sort(cells.begin(), cells.end(),
                     [](const QLabel* a, const QLabel* b) { return a->x() < b->x(); });
    return cells;
}

QGraphicsOpacityEffect* logoFade(const MainWindow& window)
{
    return qobject_cast<QGraphicsOpacityEffect*>(named<QLabel>(window, "lblLogo")->graphicsEffect());
}

QStringList s_warnings;

void collectWarnings(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    if (type == QtWarningMsg)
        s_warnings.append(text);
}

/// The slots that are named after an object and a signal of it, but have no such object and signal.
QStringList slotsWithoutObject(const MainWindow& window)
{
    QStringList alone;
    const QMetaObject& meta = MainWindow::staticMetaObject;
    const auto objects = window.findChildren<QObject*>();
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QByteArray slot = meta.method(i).methodSignature();
        if (!slot.startsWith("on_"))
            continue;
        const auto isSource = [&slot](const QObject* object) {
            const QByteArray prefix = "on_" + object->objectName().toLatin1() + '_';
            return !object->objectName().isEmpty() && slot.startsWith(prefix) &&
                   object->metaObject()->indexOfSignal(slot.mid(prefix.size())) >= 0;
        };
        if (std::none_of(objects.cbegin(), objects.cend(), isSource))
            alone.append(QString::fromLatin1(slot));
    }
    return alone;
}

} // namespace

class tst_MainWindow : public QObject
{
    Q_OBJECT

private slots:
    void withoutDriverTheWindowOpensAndSaysSo();
    void startsWithoutTemplateAndConsole();
    void logoFadesInByEightSteps();
    void selectionLoopStartsWhenTheLogoIsThere();
    void statusLoopSwitchesTheDeviceCommands();
    void modelWithANarrowTapeIsShownButNotYetDrawn();
    void closingTakesHalfASecond();
    void closingStopsTheFading();
    void closingStopsBothLoops();
    void exitClosesAtOnceAndEndsTheProgram();
    void aboutBoxNamesTheProgram();
    void propertiesEntryDoesNothing();
    void logFillsWhileHiddenAndCanBeCleared();
    void onlyThreeSlotsHaveNoObject();
    void widerWindowShowsThePlaceOfTheConsole();
    void textTablesAreComplete();
    void blockNumberIsFoundByTitle();
    void settingsTellWhereTheProgramLies();
};

void tst_MainWindow::withoutDriverTheWindowOpensAndSaysSo()
{
    const ProgramDir dir;
    DialogRobot robot;
    MainWindow window;
    showAndStart(window);
    const auto cells = statusCells(window);
    QCOMPARE(cells.size(), 3);
    const QImage failed = QPixmap(QStringLiteral(":/images/err2424r.png")).toImage();
    QVERIFY(!failed.isNull());
    QCOMPARE(cells.at(0)->pixmap(Qt::ReturnByValue).toImage(), failed);
    QCOMPARE(cells.at(1)->text(), QStringLiteral("Драйвер НЕ загружен!"));
    QCOMPARE(robot.takeTexts(), QStringList());
}

void tst_MainWindow::startsWithoutTemplateAndConsole()
{
    const ProgramDir dir;
    MainWindow window;
    showWindow(window);

    for (const char* const name :
         {"btnSetSetModePoz", "btnSetSetModeView", "btnPoleDel", "btnRedraw", "btnScaleX05", "btnScaleX20",
          "btnBlTitlesOnOff", "btnFontMonoWide", "comboKassa", "comboLentaSize", "btnFreeStrEditor"})
        QVERIFY2(!named<QWidget>(window, name)->isEnabled(), name);
    for (const char* const name : {"actionSave", "actionSaveAs", "action_5", "actionFreeStrEditor"})
        QVERIFY2(!named<QAction>(window, name)->isEnabled(), name);
    for (const char* const name : {"actionOpen", "actionExit", "actionIOSettings", "actionDnLoad",
                                   "actionPrintTestChek", "actionAbout"})
        QVERIFY2(named<QAction>(window, name)->isEnabled(), name);
    for (const char* const name : {"mainToolBar", "settingsWidgetView"})
        QVERIFY2(named<QWidget>(window, name)->isHidden(), name);
    for (const char* const name : {"leDbgCmd", "btnDbgLoadFile", "btnDbgCmdCall", "btnDbgClear", "teLog",
                                   "btnDbgDnload_2", "btnDbgDnload", "btnDbgSaveJson", "btnDbgUploadJson"}) {
        QVERIFY2(named<QWidget>(window, name)->isHidden(), name);
        QVERIFY2(!named<QWidget>(window, name)->isEnabled(), name);
    }
    QCOMPARE(named<QLabel>(window, "lblDllLibsDatas")->text(), QString());
    QCOMPARE(named<QLineEdit>(window, "lePolesMasshtab")->text(), QStringLiteral("100%"));

    const auto* const lenta = named<QComboBox>(window, "comboLentaSize");
    QCOMPARE(lenta->count(), 3);
    QCOMPARE(lenta->itemText(0), QStringLiteral("44мм"));
    QCOMPARE(lenta->itemText(1), QStringLiteral("57мм"));
    QCOMPARE(lenta->itemText(2), QStringLiteral("80мм"));
    QCOMPARE(lenta->currentIndex(), 2);
    const auto* const view = named<QGraphicsView>(window, "graphicsView_1");
    QCOMPARE(view->alignment(), Qt::AlignLeft | Qt::AlignTop);
    QCOMPARE(view->transform(), QTransform());

    const WindowProbe probe(window);
    QCOMPARE(view->scene(), &probe.scene());
    QVERIFY(probe.scene().items().isEmpty());
    QCOMPARE(probe.tapeWidth(), 576);
    QCOMPARE(probe.maket().getShablonLoaded(), false);
    QCOMPARE(probe.maket().fontMonoWide, false);
    QCOMPARE(probe.maket().pBD, &probe.bd());
    QVERIFY(probe.bd().items.isEmpty());
    QVERIFY(probe.curItem() == nullptr);
    QCOMPARE(probe.curKey(), 0);
    QVERIFY(probe.currentFileName().isEmpty());
    // Filling the two lists draws nothing.
    QVERIFY(!probe.log().contains(QStringLiteral("Scene cleared!")));
}

void tst_MainWindow::logoFadesInByEightSteps()
{
    const ProgramDir dir;
    QElapsedTimer clock;
    clock.start();
    MainWindow window;
    auto* const fade = logoFade(window);
    QVERIFY(fade != nullptr);
    QCOMPARE(fade->opacity(), 0.0);
    QCOMPARE(WindowProbe(window).startCountdown(), 10);
    QList<qreal> steps;
    connect(fade, &QGraphicsOpacityEffect::opacityChanged, this, [&](qreal o) { steps.append(o); });
    showWindow(window);
    QTRY_COMPARE(fade->opacity(), 1.0);
    // Ten ticks of a tenth of a second, coarse timers allowed for.
    QVERIFY2(clock.elapsed() >= 900, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(steps, (QList<qreal>{0.125, 0.25, 0.375, 0.5, 0.625, 0.75, 0.875, 1.0}));
    QCOMPARE(WindowProbe(window).startCountdown(), 0);
}

void tst_MainWindow::selectionLoopStartsWhenTheLogoIsThere()
{
    const ProgramDir dir;
    MainWindow window;
    const WindowProbe probe(window);
    showWindow(window);
    LogWatch log(window);
    probe.requestRedraw();
    QTRY_COMPARE(probe.startCountdown(), 1);
    QVERIFY(probe.redrawPending());
    QCOMPARE(log.takeNew(), QStringList());
    QTRY_VERIFY(!probe.redrawPending());
    QCOMPARE(probe.startCountdown(), 0);
    QCOMPARE(log.takeNew(), QStringList{"Scene cleared!"});
    // The loop goes on: the next wish is met as well, and once.
    probe.requestRedraw();
    QTRY_VERIFY(!probe.redrawPending());
    QCOMPARE(log.takeNew(), QStringList{"Scene cleared!"});
}

void tst_MainWindow::statusLoopSwitchesTheDeviceCommands()
{
    const ProgramDir dir;
    DialogRobot robot;
    MainWindow window;
    const WindowProbe probe(window);
    auto* const upload = named<QAction>(window, "actionUpLoad");
    auto* const editor = named<QAction>(window, "actionFreeStrEditor");
    auto* const editorButton = named<QPushButton>(window, "btnFreeStrEditor");
    QVERIFY(upload->isEnabled());
    showAndStart(window);
    QTRY_VERIFY(!upload->isEnabled());
    QVERIFY(!editor->isEnabled());
    QVERIFY(!editorButton->isEnabled());
    QVERIFY(!named<QAction>(window, "actionFreePort")->isEnabled());

    probe.freeStrings() = QStringList{QStringLiteral("строка")};
    QTRY_VERIFY(upload->isEnabled());
    QVERIFY(editor->isEnabled());
    QVERIFY(editorButton->isEnabled());
    probe.freeStrings().clear();
    QTRY_VERIFY(!upload->isEnabled());
    QVERIFY(!editor->isEnabled());
    QVERIFY(!editorButton->isEnabled());

    openTemplate(window, robot, dir.write(QStringLiteral("good.csv"), maskFile(manyFields(2))));
    QTRY_VERIFY(upload->isEnabled());
    QVERIFY(!editor->isEnabled());
    openTemplate(window, robot, dir.write(QStringLiteral("bad.csv"), "nothing"));
    QTRY_VERIFY(!upload->isEnabled());
}

void tst_MainWindow::modelWithANarrowTapeIsShownButNotYetDrawn()
{
    const ProgramDir dir;
    dir.write(QStringLiteral("kassa.csv"), "1;;80;1;;Первая\n1;;57;2;;Узкая\n1;;80;3;;Последняя\n");
    DialogRobot robot;
    MainWindow window;
    const WindowProbe probe(window);
    QCOMPARE(named<QComboBox>(window, "comboKassa")->currentText(), QStringLiteral("Узкая"));
    QCOMPARE(named<QComboBox>(window, "comboLentaSize")->currentText(), QStringLiteral("57мм"));
    QCOMPARE(probe.tapeWidth(), 576);

    // The two agree again at the next change of the width, not before.
    showWindow(window);
    openTemplate(window, robot, dir.write(QStringLiteral("good.csv"), maskFile(manyFields(2))));
    QCOMPARE(probe.tapeWidth(), 576);
    chooseInCombo(window, "comboLentaSize", 1);
    QCOMPARE(probe.tapeWidth(), 576);
    chooseInCombo(window, "comboLentaSize", 0);
    QCOMPARE(probe.tapeWidth(), 384);
    chooseInCombo(window, "comboLentaSize", 1);
    QCOMPARE(probe.tapeWidth(), 432);
}

void tst_MainWindow::closingTakesHalfASecond()
{
    const ProgramDir dir;
    auto window = std::make_unique<MainWindow>();
    showAndStart(*window);
    QVERIFY(window->close());
    QElapsedTimer clock;
    clock.start();
    window.reset();
    QVERIFY2(clock.elapsed() >= 500, qPrintable(QString::number(clock.elapsed())));
}

void tst_MainWindow::closingStopsTheFading()
{
    const ProgramDir dir;
    auto window = std::make_unique<MainWindow>();
    showWindow(*window);
    auto* const fade = logoFade(*window);
    QTRY_COMPARE(fade->opacity(), 0.25);
    const QSignalSpy steps(fade, &QGraphicsOpacityEffect::opacityChanged);
    window.reset();
    QCOMPARE(steps.count(), 0);
}

void tst_MainWindow::closingStopsBothLoops()
{
    const ProgramDir dir;
    auto window = std::make_unique<MainWindow>();
    showAndStart(*window);
    auto* const upload = named<QAction>(*window, "actionUpLoad");
    QTRY_VERIFY(!upload->isEnabled());
    // A turn of either loop would be seen.
    WindowProbe(*window).freeStrings() = QStringList{QStringLiteral("строка")};
    WindowProbe(*window).requestRedraw();
    const QSignalSpy slowTicks(upload, &QAction::enabledChanged);
    const QSignalSpy logLines(named<QTextEdit>(*window, "teLog"), &QTextEdit::textChanged);
    window.reset();
    QCOMPARE(slowTicks.count(), 0);
    QCOMPARE(logLines.count(), 0);
}

void tst_MainWindow::exitClosesAtOnceAndEndsTheProgram()
{
    Session s;
    s.open(s.goodFile(2));
    QVERIFY(s.window.isVisible());
    QTimer::singleShot(0, &s.window, [&] { chooseInMenu(s.window, "actionExit"); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(!s.window.isVisible());
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void tst_MainWindow::aboutBoxNamesTheProgram()
{
    Session s;
    chooseInMenu(s.window, "actionAbout");
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().title, QStringLiteral("О программе"));
    QCOMPARE(boxes.first().icon, QMessageBox::Information);
    QCOMPARE(boxes.first().hasParent, false);
    const QStringList lines = boxes.first().text.split(u'\n');
    QCOMPARE(lines.first(), QStringLiteral("Шаблонист."));
    QVERIFY(lines.size() >= 2);
    QVERIFY(!lines.at(1).trimmed().isEmpty());
}

void tst_MainWindow::propertiesEntryDoesNothing()
{
    Session s;
    s.open(s.goodFile(2));
    s.robot.takeFileDialogs();
    QVERIFY(named<QAction>(s.window, "action_5")->isEnabled());
    const QSignalSpy clicks(named<QAction>(s.window, "action_5"), &QAction::triggered);
    s.log.takeNew();
    const auto items = s.probe.scene().items();
    chooseInMenu(s.window, "action_5");
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(s.log.takeNew(), QStringList());
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QVERIFY(s.robot.takeFileDialogs().isEmpty());
    QCOMPARE(s.probe.scene().items(), items);
}

void tst_MainWindow::logFillsWhileHiddenAndCanBeCleared()
{
    Session s;
    s.open(s.goodFile(2));
    auto* const log = named<QTextEdit>(s.window, "teLog");
    QVERIFY(log->isHidden());
    log->show();
    QVERIFY(log->toPlainText().endsWith(QStringLiteral("Распознан формат: new, 26+str\nScene cleared!")));

    // What the console does with its widgets.
    auto* const clear = named<QPushButton>(s.window, "btnDbgClear");
    s.window.resize(1600, 700);
    clear->show();
    clear->setEnabled(true);
    s.click("btnDbgClear");
    QCOMPARE(log->toPlainText(), QString());
}

void tst_MainWindow::onlyThreeSlotsHaveNoObject()
{
    const ProgramDir dir;
    s_warnings.clear();
    const auto before = qInstallMessageHandler(collectWarnings);
    MainWindow window;
    qInstallMessageHandler(before);

    // These have no object, or no signal of that shape.
    QStringList expected{"on_actionDnLoad_triggeredOld()", "on_listView_clicked(QModelIndex)",
                         "on_comboLentaSize_currentIndexChanged(QString)"};
    QStringList alone = slotsWithoutObject(window);
    expected.sort();
    alone.sort();
    QCOMPARE(alone, expected);
    const QMetaObject& meta = MainWindow::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 43);
    for (const QString& slot : alone) {
        const bool isWarned = std::any_of(s_warnings.cbegin(), s_warnings.cend(),
                                          [&slot](const QString& warning) { return warning.contains(slot); });
        QVERIFY2(isWarned, qPrintable(slot));
    }
}

void tst_MainWindow::widerWindowShowsThePlaceOfTheConsole()
{
    const ProgramDir dir;
    MainWindow window;
    showWindow(window);
    QCOMPARE(window.size(), QSize(1040, 665));
    auto* const log = named<QTextEdit>(window, "teLog");
    log->show();
    QVERIFY(log->visibleRegion().isEmpty());
    window.resize(500, 400);
    QCOMPARE(window.size(), QSize(1040, 665));
    window.resize(1600, 800);
    QCOMPARE(window.size(), QSize(1600, 800));
    QTRY_COMPARE(log->visibleRegion().boundingRect().size(), log->size());
}

void tst_MainWindow::textTablesAreComplete()
{
    const MainWindow::glData gl;
    using Texts = QMap<int, QString>;
    QCOMPARE(gl.blockTitles, (Texts{{0, "Шапка чека"},
                                    {1, "Регистрация"},
                                    {2, "Предытоговый"},
                                    {3, "Итог"},
                                    {4, "Налоги"},
                                    {5, "Оплата"},
                                    {6, "Подвал чека"},
                                    {7, "Фискальный"},
                                    {8, "\"Чек аннулирован\""},
                                    {9, "Сторно оплаты"}}));
    QCOMPARE(gl.yesNo, (Texts{{0, "Нет"}, {1, "Да"}}));
    QCOMPARE(gl.alignNames, (Texts{{1, "Слева"}, {2, "По центру"}, {3, "Справа"}}));
    QCOMPARE(gl.numberFormats, (Texts{{0, "Не маскировать нули"},
                                      {1, "Печать в формате 0.0"},
                                      {2, "Обрез.незнач.нули"},
                                      {3, "Печатать как штуки"}}));
    QCOMPARE(gl.maskModes,
             (Texts{{0, "Выключено"}, {1, "Маскировать"}, {2, "Выровнять нулями"}, {3, "Приж.своб.символ"}}));
}

void tst_MainWindow::blockNumberIsFoundByTitle()
{
    const MainWindow::glData gl;
    QCOMPARE(gl.GetBlTitlesNumForName(QStringLiteral("Шапка чека")), 0);
    QCOMPARE(gl.GetBlTitlesNumForName(QStringLiteral("Итог")), 3);
    QCOMPARE(gl.GetBlTitlesNumForName(QStringLiteral("\"Чек аннулирован\"")), 8);
    QCOMPARE(gl.GetBlTitlesNumForName(QStringLiteral("Сторно оплаты")), 9);
    QCOMPARE(gl.GetBlTitlesNumForName(QStringLiteral("Фискальный блок")), -1);
    QCOMPARE(gl.GetBlTitlesNumForName(QStringLiteral("итог")), -1);
    QCOMPARE(gl.GetBlTitlesNumForName(QString()), -1);
}

void tst_MainWindow::settingsTellWhereTheProgramLies()
{
    cSettings settings;
    QCOMPARE(settings.pathApp, QString());
    QCOMPARE(settings.confMasks, QStringList{"*.con"});
    QCOMPARE(settings.styleGood, QStringLiteral("color: green;"));
    QCOMPARE(settings.styleBad, QStringLiteral("color: red;"));
    QCOMPARE(settings.paramA, 2);
    QCOMPARE(settings.paramB, 3);
    settings.InitPaths();
    const QString app = QCoreApplication::applicationDirPath();
    QCOMPARE(settings.pathApp, app);
    QCOMPARE(settings.pathLogs, app + QStringLiteral("/logs"));
    QCOMPARE(settings.pathDatas, app + QStringLiteral("/datas"));
    QVERIFY(!QFileInfo::exists(settings.pathLogs));
    QVERIFY(!QFileInfo::exists(settings.pathDatas));
}

QTEST_MAIN(tst_MainWindow)
#include "tst_mainwindow.moc"
