#include "ui_mainwindow.h"

#include <QApplication>
#include <QHeaderView>
#include <QMainWindow>
#include <QTest>

#include <memory>

namespace {

/// One widget as the form must make it. `points` is its font size, 0 for the font of the application.
struct WidgetRow
{
    const char* name;
    const char* className;
    QRect geometry;
    QString text = {};
    int points = 0;
    QString toolTip = {};
    bool enabled = true;
};

const QList<WidgetRow>& widgetRows()
{
    static const QList<WidgetRow> rows{
        {"graphicsView_1", "QGraphicsView", {10, 140, 661, 451}},
        {"btnBlTitlesOnOff",
         "QPushButton",
         {28, 105, 91, 28},
         "Заголовки",
         9,
         "Вкл./выкл. заголовков блоков"},
        {"btnFontMonoWide",
         "QPushButton",
         {130, 105, 40, 28},
         "[Aa]",
         9,
         "Вкл./выкл. пропорционального шрифта полей"},
        {"btnScaleX05", "QPushButton", {190, 105, 40, 28}, "M-", 9},
        {"lePolesMasshtab", "QLineEdit", {235, 107, 60, 24}, {}, 9},
        {"btnScaleX20", "QPushButton", {300, 105, 40, 28}, "M+", 9},
        {"comboKassa", "QComboBox", {360, 106, 121, 26}},
        {"comboLentaSize", "QComboBox", {490, 106, 60, 26}},
        {"btnRedraw", "QPushButton", {560, 105, 111, 28}, "Обновить", 9},
        {"btnFreeStrEditor",
         "QPushButton",
         {620, 20, 51, 51},
         "===\n===",
         0,
         "Редактор свободных строк",
         false},
        {"lblLogo", "QLabel", {1, 1, 181, 71}, {}, 9},
        {"lblSettingsDesc_2", "QLabel", {40, 60, 121, 21}, "редактор", 12},
        {"grBoxFilter", "QGroupBox", {680, 29, 351, 80}},
        {"btnFiltrShowAll", "QPushButton", {10, 20, 91, 25}, "Все", 9},
        {"btnFiltrRegistr", "QPushButton", {170, 20, 91, 25}, "Регистр", 9},
        {"lePolesFilterStr", "QLineEdit", {10, 50, 251, 22}, {}, 9},
        {"chbFilter", "QCheckBox", {280, 50, 61, 20}, "Вкл.", 9},
        {"listWidget", "QListWidget", {680, 115, 351, 141}},
        {"lblSettingsDesc", "QLabel", {680, 260, 181, 16}, "Свойства элемента", 9},
        {"lePoleDesc", "QLineEdit", {680, 280, 351, 25}},
        {"settingsWidget", "QTableWidget", {680, 310, 351, 241}},
        {"settingsWidgetView", "QTableWidget", {690, 300, 351, 241}, {}, 0, {}, false},
        {"btnSetSetModePoz", "QPushButton", {680, 550, 50, 40}, {}, 9},
        {"btnSetSetModeView", "QPushButton", {730, 550, 50, 40}, {}, 9},
        {"btnPoleDel", "QPushButton", {920, 560, 111, 28}, "Удалить поле", 9},
        {"btnDbgDnload", "QPushButton", {1040, 0, 80, 28}, "Dnload", 0, {}, false},
        {"btnDbgSaveJson", "QPushButton", {1130, 0, 80, 28}, "Save Json", 0, {}, false},
        {"btnDbgDnload_2", "QPushButton", {1040, 30, 80, 28}, "Load", 0, {}, false},
        {"btnDbgUploadJson", "QPushButton", {1130, 30, 80, 28}, "Upload", 0, {}, false},
        {"lblDllLibsDatas", "QLabel", {1040, 70, 181, 16}, "инфо", 9},
        {"leDbgCmd", "QLineEdit", {1040, 120, 181, 22}, {}, 9, {}, false},
        {"btnDbgCmdCall", "QPushButton", {1230, 120, 50, 30}, "call", 0, {}, false},
        {"btnDbgLoadFile", "QPushButton", {1040, 150, 50, 30}, "empty", 0, {}, false},
        {"btnDbgClear", "QPushButton", {1040, 180, 50, 30}, "clear", 0, {}, false},
        {"teLog", "QTextEdit", {1040, 220, 491, 371}, {}, 0, {}, false},
    };
    return rows;
}

QString textOf(const QWidget& widget)
{
    const QVariant text = widget.property("text");
    return text.isValid() ? text.toString() : QString();
}

/// The names of the actions, with "-" for a separator.
QStringList namesOf(const QList<QAction*>& actions)
{
    QStringList names;
    for (const QAction* const action : actions)
        names.append(action->isSeparator() ? QStringLiteral("-") : action->objectName());
    return names;
}

QImage imageOf(const char* name)
{
    return QPixmap(QStringLiteral(":/images/") + QString::fromLatin1(name)).toImage();
}

QImage iconImage(const QPushButton& button, QSize size)
{
    return button.icon().pixmap(size).toImage();
}

} // namespace

/// The form alone, set up on a plain window: what stands here is its state before the program changes it.
class tst_Form : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void windowHasItsNameTitleAndSizes();
    void everyWidgetIsMadeAsDrawn_data();
    void everyWidgetIsMadeAsDrawn();
    void formHasNoOtherWidgets();
    void everyActionIsMadeAsDrawn_data();
    void everyActionIsMadeAsDrawn();
    void menusHoldTheirActionsInOrder();
    void toolBarHoldsOneSeparator();
    void buttonsOfModesAndFilterAreCheckableAndFlat();
    void linesAlignTheirTexts();
    void tapeViewSmoothsTextsOnly();
    void listNeverScrollsSideways();
    void bothTablesHaveTwoNamedColumns();
    void unusedTableLiesLowest();
    void picturesAreThoseOfTheProgram();
    void onlyTheConsoleLiesRightOfTheForm();

private:
    std::unique_ptr<QMainWindow> m_window;
    Ui_MainWindow m_ui;
};

void tst_Form::initTestCase()
{
    Q_INIT_RESOURCE(images);
    // Unlike any size of the form, so that a font of its own is seen.
    QFont font = QApplication::font();
    font.setPointSize(17);
    font.setWeight(QFont::Bold);
    QApplication::setFont(font);
    m_window = std::make_unique<QMainWindow>();
    m_ui.setupUi(m_window.get());
}

void tst_Form::windowHasItsNameTitleAndSizes()
{
    QCOMPARE(m_window->objectName(), QStringLiteral("MainWindow"));
    QCOMPARE(m_window->windowTitle(), QStringLiteral("MainWindow"));
    QCOMPARE(m_window->size(), QSize(1040, 665));
    QCOMPARE(m_window->minimumSize(), QSize(1040, 665));
    QCOMPARE(m_window->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    QCOMPARE(m_window->centralWidget(), m_ui.centralWidget);
    QCOMPARE(QByteArray(m_ui.centralWidget->metaObject()->className()), QByteArray("QWidget"));
    QVERIFY(m_ui.centralWidget->layout() == nullptr);
    QCOMPARE(m_window->statusBar(), m_ui.statusBar);
    QCOMPARE(m_window->menuBar(), m_ui.menuBar);
}

void tst_Form::everyWidgetIsMadeAsDrawn_data()
{
    QTest::addColumn<int>("index");
    int index = 0;
    for (const auto& row : widgetRows())
        QTest::newRow(row.name) << index++;
}

void tst_Form::everyWidgetIsMadeAsDrawn()
{
    QFETCH(const int, index);
    const WidgetRow& row = widgetRows().at(index);
    auto* const widget = m_window->findChild<QWidget*>(QString::fromLatin1(row.name));
    QVERIFY(widget != nullptr);
    QCOMPARE(QByteArray(widget->metaObject()->className()), QByteArray(row.className));
    const QStringList inFilter{"btnFiltrShowAll", "btnFiltrRegistr", "lePolesFilterStr", "chbFilter"};
    QWidget* const parent =
        inFilter.contains(QLatin1String(row.name)) ? m_ui.grBoxFilter : m_ui.centralWidget;
    QCOMPARE(widget->parentWidget(), parent);
    QCOMPARE(widget->geometry(), row.geometry);
    QCOMPARE(textOf(*widget), row.text);
    QCOMPARE(widget->toolTip(), row.toolTip);
    QCOMPARE(widget->isEnabled(), row.enabled);
    QCOMPARE(widget->isHidden(), false);
    QCOMPARE(widget->font().pointSize(), row.points == 0 ? 17 : row.points);
    QCOMPARE(widget->font().weight(), widget == m_ui.chbFilter ? QFont::Normal : QFont::Bold);
    QCOMPARE(widget->font().family(), QApplication::font().family());
}

void tst_Form::formHasNoOtherWidgets()
{
    QStringList unknown;
    for (const QWidget* const parent : {m_ui.centralWidget, static_cast<QWidget*>(m_ui.grBoxFilter)}) {
        for (const auto* const widget : parent->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            const auto isIt = [widget](const WidgetRow& row) {
                return widget->objectName() == QLatin1String(row.name);
            };
            if (std::none_of(widgetRows().cbegin(), widgetRows().cend(), isIt))
                unknown.append(widget->objectName());
        }
    }
    QCOMPARE(unknown, QStringList());
    QCOMPARE(m_ui.grBoxFilter->title(), QStringLiteral("Фильтр полей"));
}

void tst_Form::everyActionIsMadeAsDrawn_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shortcut");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("actionOpen") << "Открыть..."
                                << "Ctrl+O" << true;
    QTest::newRow("actionSave") << "Сохранить"
                                << "Ctrl+S" << false;
    QTest::newRow("actionSaveAs") << "Сохранить как..."
                                  << "" << false;
    QTest::newRow("action_5") << "Свойства"
                              << "" << false;
    QTest::newRow("actionExit") << "Выход"
                                << "" << true;
    QTest::newRow("actionIOSettings") << "Настройка соединения"
                                      << "" << true;
    QTest::newRow("actionDnLoad") << "Прочитать из кассы"
                                  << "" << true;
    QTest::newRow("actionUpLoad") << "Загрузить в кассу"
                                  << "" << true;
    QTest::newRow("actionFreeStrEditor") << "Редактировать"
                                         << "" << false;
    QTest::newRow("actionFreePort") << "Освободить порт"
                                    << "" << true;
    QTest::newRow("actionPrintTestChek") << "Тестовый чек"
                                         << "" << true;
    QTest::newRow("actionAbout") << "О программе"
                                 << "" << true;
}

void tst_Form::everyActionIsMadeAsDrawn()
{
    QFETCH(const QString, text);
    QFETCH(const QString, shortcut);
    QFETCH(const bool, enabled);
    auto* const action = m_window->findChild<QAction*>(QString::fromLatin1(QTest::currentDataTag()),
                                                       Qt::FindDirectChildrenOnly);
    QVERIFY(action != nullptr);
    QCOMPARE(action->text(), text);
    QCOMPARE(action->shortcut(), QKeySequence(shortcut));
    QCOMPARE(action->isEnabled(), enabled);
    QCOMPARE(action->isCheckable(), false);
}

void tst_Form::menusHoldTheirActionsInOrder()
{
    QCOMPARE(QByteArray(m_ui.menuBar->metaObject()->className()), QByteArray("QMenuBar"));
    QCOMPARE(m_ui.menuBar->geometry(), QRect(0, 0, 1040, 26));
    QCOMPARE(m_ui.menuBar->actions(),
             (QList<QAction*>{m_ui.menu->menuAction(), m_ui.menu_2->menuAction(), m_ui.menu_3->menuAction(),
                              m_ui.menu_4->menuAction()}));
    QCOMPARE(m_ui.menu->title(), QStringLiteral("Файл"));
    QCOMPARE(m_ui.menu_2->title(), QStringLiteral("Касса"));
    QCOMPARE(m_ui.menu_3->title(), QStringLiteral("Редактор строк"));
    QCOMPARE(m_ui.menu_4->title(), QStringLiteral("О программе"));
    QCOMPARE(namesOf(m_ui.menu->actions()).join(u' '),
             QStringLiteral("actionOpen actionSave actionSaveAs - action_5 - actionExit"));
    QCOMPARE(namesOf(m_ui.menu_2->actions()).join(u' '),
             QStringLiteral("actionIOSettings actionFreePort - actionDnLoad actionUpLoad - "
                            "actionPrintTestChek"));
    QCOMPARE(namesOf(m_ui.menu_3->actions()).join(u' '), QStringLiteral("actionFreeStrEditor"));
    QCOMPARE(namesOf(m_ui.menu_4->actions()).join(u' '), QStringLiteral("actionAbout"));
}

void tst_Form::toolBarHoldsOneSeparator()
{
    QCOMPARE(QByteArray(m_ui.mainToolBar->metaObject()->className()), QByteArray("QToolBar"));
    QCOMPARE(m_window->toolBarArea(m_ui.mainToolBar), Qt::TopToolBarArea);
    QCOMPARE(namesOf(m_ui.mainToolBar->actions()), QStringList{"-"});
    QCOMPARE(QByteArray(m_ui.statusBar->metaObject()->className()), QByteArray("QStatusBar"));
}

void tst_Form::buttonsOfModesAndFilterAreCheckableAndFlat()
{
    const QList<QPushButton*> flat{m_ui.btnFiltrShowAll, m_ui.btnFiltrRegistr, m_ui.btnSetSetModePoz,
                                   m_ui.btnSetSetModeView};
    for (const auto* const button : m_window->findChildren<QPushButton*>()) {
        QVERIFY2(button->isCheckable() == flat.contains(button), qPrintable(button->objectName()));
        QVERIFY2(button->isFlat() == flat.contains(button), qPrintable(button->objectName()));
        QVERIFY2(button->isChecked() == (button == m_ui.btnSetSetModePoz), qPrintable(button->objectName()));
    }
    QVERIFY(!m_ui.chbFilter->isChecked());
}

void tst_Form::linesAlignTheirTexts()
{
    QCOMPARE(m_ui.lePolesMasshtab->alignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
    QCOMPARE(m_ui.leDbgCmd->alignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
    QVERIFY(m_ui.lePolesFilterStr->alignment().testFlag(Qt::AlignRight));
    QCOMPARE(m_ui.lePoleDesc->alignment() & Qt::AlignHorizontal_Mask, Qt::AlignLeft);
    for (const auto* const line : m_window->findChildren<QLineEdit*>())
        QVERIFY2(line->isReadOnly() == (line == m_ui.lePolesMasshtab), qPrintable(line->objectName()));
}

void tst_Form::tapeViewSmoothsTextsOnly()
{
    QCOMPARE(m_ui.graphicsView_1->sceneRect(), QRectF(0, 0, 0, 0));
    QCOMPARE(m_ui.graphicsView_1->renderHints(), QPainter::RenderHints(QPainter::TextAntialiasing));
}

void tst_Form::listNeverScrollsSideways()
{
    QCOMPARE(m_ui.listWidget->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(m_ui.listWidget->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QCOMPARE(m_ui.listWidget->count(), 0);
}

void tst_Form::bothTablesHaveTwoNamedColumns()
{
    for (const auto* const table : {m_ui.settingsWidget, m_ui.settingsWidgetView}) {
        QCOMPARE(table->rowCount(), 6);
        QCOMPARE(table->columnCount(), 2);
        QCOMPARE(table->horizontalHeaderItem(0)->text(), QStringLiteral("Свойство"));
        QCOMPARE(table->horizontalHeaderItem(1)->text(), QStringLiteral("Знач."));
        QVERIFY(!table->horizontalHeader()->isHidden());
        QVERIFY(table->verticalHeader()->isHidden());
        QCOMPARE(table->verticalHeader()->defaultSectionSize(), 25);
        QCOMPARE(table->verticalHeader()->minimumSectionSize(), 20);
    }
}

void tst_Form::unusedTableLiesLowest()
{
    // Siblings are stacked in the order of the children.
    const auto siblings = m_ui.centralWidget->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    QCOMPARE(siblings.first(), m_ui.settingsWidgetView);
}

void tst_Form::picturesAreThoseOfTheProgram()
{
    QCOMPARE(imageOf("reload2424.png").size(), QSize(24, 24));
    QCOMPARE(imageOf("cup_76x81.png").size(), QSize(76, 81));
    QCOMPARE(imageOf("ok2424r.png").size(), QSize(24, 24));
    QCOMPARE(imageOf("err2424r.png").size(), QSize(24, 24));
    QVERIFY(!imageOf("st_poz.png").isNull());
    QVERIFY(!imageOf("st_view.png").isNull());
    QVERIFY(imageOf("st_poz.png") != imageOf("st_view.png"));
    QVERIFY(imageOf("ok2424r.png") != imageOf("err2424r.png"));
    QVERIFY(!imageOf("tavr_logo_small_grey.png").isNull());

    QCOMPARE(m_ui.btnRedraw->iconSize(), QSize(24, 24));
    QCOMPARE(iconImage(*m_ui.btnRedraw, {24, 24}), imageOf("reload2424.png"));
    const QImage poz = imageOf("st_poz.png");
    QCOMPARE(iconImage(*m_ui.btnSetSetModePoz, poz.size()), poz);
    const QImage view = imageOf("st_view.png");
    QCOMPARE(iconImage(*m_ui.btnSetSetModeView, view.size()), view);
    QCOMPARE(m_ui.lblLogo->pixmap(Qt::ReturnByValue).toImage(), imageOf("tavr_logo_small_grey.png"));
}

void tst_Form::onlyTheConsoleLiesRightOfTheForm()
{
    const QStringList console{"btnDbgDnload",    "btnDbgSaveJson", "btnDbgDnload_2", "btnDbgUploadJson",
                              "lblDllLibsDatas", "leDbgCmd",       "btnDbgCmdCall",  "btnDbgLoadFile",
                              "btnDbgClear",     "teLog"};
    for (const auto* const widget : m_ui.centralWidget->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        QVERIFY2((widget->x() >= 1040) == console.contains(widget->objectName()),
                 qPrintable(widget->objectName()));
}

QTEST_MAIN(tst_Form)
#include "tst_form.moc"
