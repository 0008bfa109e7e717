#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "app/csettings.h"

#include <QElapsedTimer>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>

/// The images lie in a static library, so nothing takes them into the program by itself.
static void initImages()
{
    Q_INIT_RESOURCE(images);
}

namespace {

constexpr int kFirstTickMs = 100;
constexpr int kCloseWaitMs = 500;

void showModalBox(QMessageBox::Icon icon, const QString& title, const QString& text)
{
    QMessageBox box;
    // By itself the box looks for marks in the first line only.
    if (text.contains(QLatin1String("<FONT")))
        box.setTextFormat(Qt::RichText);
    box.setWindowTitle(title);
    box.setIcon(icon);
    box.setText(text);
    box.exec();
}

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
    , ui(new Ui_MainWindow)
    , decoder866(QTextCodec::codecForName("cp866"))
    , decoder1251(QTextCodec::codecForName("cp1251"))
    , encoder866(QTextCodec::codecForName("cp866"))
{
    initImages();
    ui->setupUi(this);
    // No signal of the combo box carries a text and that name: the slot is connected by hand.
    connect(ui->comboLentaSize, &QComboBox::currentTextChanged, this,
            &MainWindow::on_comboLentaSize_currentIndexChanged);

    lblStatusIcon = new QLabel(this);
    lblStatusDriver = new QLabel(this);
    lblStatusDevice = new QLabel(this);

    settingsWidget_initForEmpty();
    setMode = 1;
    maket.pBD = &bd;
    maket.setShablonLoaded(false);

    ui->mainToolBar->hide();
    ui->btnSetSetModePoz->setEnabled(false);
    ui->btnSetSetModeView->setEnabled(false);
    ui->btnPoleDel->setEnabled(false);

    [[maybe_unused]] const QPixmap cup(QStringLiteral(":/images/cup_76x81.png"));

    ui->graphicsView_1->setScene(&scene);
    ui->graphicsView_1->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    ui->graphicsView_1->update();

    redrawPending = false;
    listPicked = false;
    maket.fontMonoWide = false;
    curItem = nullptr;
    curKey = 0;

    setGuiStateWhenNotLoaded();
    showWhenBegin();

    // The list is disabled now, so filling it draws nothing.
    ui->comboLentaSize->addItems({tr("44мм"), tr("57мм"), tr("80мм")});
    ui->comboLentaSize->setCurrentIndex(2);

    LoadAndSetKassaList();
    if (kassaNames.size() < 2)
        FillDefaultKassaList();
    ui->comboKassa->clear();
    ui->comboKassa->addItems(kassaNames);
    ui->comboKassa->setCurrentIndex(static_cast<int>(kassaNames.size()) - 2);

    // Whatever width the model in the list has set.
    tapeWidth = 576;
    keepTempFiles = false;

    ui->settingsWidgetView->hide();
    ui->lblDllLibsDatas->clear();
    for (QWidget* const widget : std::initializer_list<QWidget*>{
             ui->leDbgCmd, ui->btnDbgLoadFile, ui->btnDbgCmdCall, ui->btnDbgClear, ui->teLog,
             ui->btnDbgDnload_2, ui->btnDbgDnload, ui->btnDbgSaveJson, ui->btnDbgUploadJson})
        widget->hide();

    auto* const fade = new QGraphicsOpacityEffect(ui->lblLogo);
    fade->setOpacity(0);
    ui->lblLogo->setGraphicsEffect(fade);

    for (QLabel* const label : {lblStatusIcon, lblStatusDriver, lblStatusDevice})
        ui->statusBar->addWidget(label, 0);
    // What a device says is plain text.
    lblStatusDriver->setTextFormat(Qt::PlainText);
    lblStatusDevice->setTextFormat(Qt::PlainText);

    closing = false;
    startCountdown = 10;
    QTimer::singleShot(kFirstTickMs, this, SLOT(timerTickSlow()));

    loadDriver();
    CheckOrSetConnection(true);
}

MainWindow::~MainWindow()
{
    closing = true;
    keepChangedPort();
    // The pending single shots fire here and find `closing` set.
    QElapsedTimer wait;
    wait.start();
    while (wait.elapsed() < kCloseWaitMs)
        QCoreApplication::processEvents();
    // The widgets die after the members: from here on none of them may call a slot.
    dropTable();
    for (QObject* const child : findChildren<QObject*>())
        child->disconnect(this);
    delete ui;
}

void MainWindow::msgBoxTextOK(const QString& text)
{
    showModalBox(QMessageBox::NoIcon, QString(), text);
}

void MainWindow::msgBoxWarnOK(const QString& text)
{
    showModalBox(QMessageBox::Warning, QString(), text);
}

void MainWindow::LogAddDbg(const QString& text)
{
    // The log is plain text, whatever a line may look like.
    if (Qt::mightBeRichText(text))
        ui->teLog->append(QLatin1String("<span style=\"white-space: pre-wrap\">") + text.toHtmlEscaped() +
                          QLatin1String("</span>"));
    else
        ui->teLog->append(text);
}

void MainWindow::showWhenBegin()
{
    updateFilterOut();
    showScaleMsshtb();
}

void MainWindow::setGuiStateWhenLoaded()
{
    showWhenBegin();
    setGuiStateMask(true);
}

void MainWindow::setGuiStateWhenNotLoaded()
{
    showWhenBegin();
    setGuiStateMask(false);
    settingsWidget_initForEmpty();
}

void MainWindow::setGuiStateMask(bool enabled)
{
    ui->actionSaveAs->setEnabled(enabled);
    ui->action_5->setEnabled(enabled);
    ui->btnRedraw->setEnabled(enabled);
    ui->btnScaleX05->setEnabled(enabled);
    ui->btnScaleX20->setEnabled(enabled);
    ui->btnBlTitlesOnOff->setEnabled(enabled);
    ui->btnFontMonoWide->setEnabled(enabled);
    ui->comboKassa->setEnabled(enabled);
    ui->comboLentaSize->setEnabled(enabled);
}

void MainWindow::on_actionExit_triggered()
{
    close();
}

void MainWindow::on_actionAbout_triggered()
{
    showModalBox(QMessageBox::Information, tr("О программе"),
                 tr("Шаблонист.") + QLatin1Char('\n') +
                     tr("Редактор шаблонов чека для контрольно-кассовой техники.\nВсе права защищены."));
}

void MainWindow::on_actionDnLoad_triggeredOld() {}

void MainWindow::LoadLib() {}

int MainWindow::LoadFromDvcToJsonAll()
{
    return 0;
}
