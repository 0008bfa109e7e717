#pragma once

#include "model/bd_t20items.h"
#include "view/guimaket.h"

#include <QGraphicsScene>
#include <QMainWindow>
#include <QMap>
#include <QStringList>
#include <QTextCodec>
#include <QTextDecoder>
#include <QTextEncoder>

class QGraphicsItem;
class QGraphicsOpacityEffect;
class QGraphicsProxyWidget;
class QLabel;
class QPushButton;
class Ui_MainWindow;

/// The window of the program. All commands are its members; each theme of them has a source of its own in the
/// folder of the subsystem that owns it.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Builds the window in its not-loaded state and starts the timer loops.
    explicit MainWindow(QWidget* parent = nullptr);

    /// Stops the timer loops, which takes half a second.
    ~MainWindow() override;
    Q_DISABLE_COPY_MOVE(MainWindow)

    /// The texts of the property table.
    class glData
    {
    public:
        glData();

        /// The lowest number of a block whose title equals `name`, or -1.
        int GetBlTitlesNumForName(const QString& name) const;

        QMap<int, QString> blockTitles;
        QMap<int, QString> yesNo;
        QMap<int, QString> alignNames;
        QMap<int, QString> numberFormats;
        QMap<int, QString> maskModes;
    };

    /// Tests look inside through it.
    friend class WindowProbe;

private slots:
    // Menu.
    void on_actionOpen_triggered();
    void on_actionSave_triggered();
    void on_actionSaveAs_triggered();
    void on_actionExit_triggered();
    void on_actionAbout_triggered();

    // Timer loops: single shots that arm themselves again.
    void timerTick();
    void timerTickSlow();

    // View.
    void maketAddSelectedLine();
    void maketDelSelectedLine();
    void on_btnScaleX05_clicked();
    void on_btnScaleX20_clicked();
    void on_btnRedraw_clicked();
    void on_btnBlTitlesOnOff_clicked();
    void on_btnFontMonoWide_clicked();
    void on_comboLentaSize_currentIndexChanged(QString arg1);

    // Device models.
    void on_comboKassa_currentIndexChanged(int index);

    // Console.
    void on_btnDbgClear_clicked();

private:
    // Messages.
    /// A modal box without an icon, for the report of a finished command; rich text is allowed.
    static void msgBoxTextOK(const QString& text);
    /// A modal warning.
    static void msgBoxWarnOK(const QString& text);
    /// Adds one line to the log.
    void LogAddDbg(const QString& text);

    // The two states of the window.
    void showWhenBegin();
    void setGuiStateWhenLoaded();
    void setGuiStateWhenNotLoaded();
    void setGuiStateMask(bool enabled);

    // Template files.
    /// Takes the bytes of a template file: finds the format, reads the fields, checks and shows them.
    void LoadFileData(const QByteArray& bytes);
    /// Writes the template to the file `name`.
    void SaveToFName(const QString& name);
    /// Checks the fields of the model and shows them as the tape, or tells what is wrong and drops them.
    void CheckBDPoley_RebuildMaket();

    // Scene.
    /// Clears the scene and builds it anew from the models.
    void rebuildView();
    void addTapeFrame();
    void addBlockHeaders();
    void addGuideLines();
    void addPoles();
    void addLineButtons();
    /// New sizes and positions, then a rebuild of the scene.
    void RedrawOnly();
    /// New lines of the model, then as RedrawOnly().
    void RedrawWithBD();
    /// Shows the scale step in percent.
    void showScaleMsshtb();
    /// False if a new line at `line` would push a field of `block` beyond the last possible line.
    bool isRoomForLine(int block, int line);

    // Device models.
    /// Fills the model lists with the built-in table.
    void FillDefaultKassaList();
    /// Reads the model lists from kassa.csv; a file that cannot be read leaves them alone.
    void LoadAndSetKassaList();

    glData gl;
    Ui_MainWindow* ui;
    QLabel* lblStatusIcon = nullptr;
    QLabel* lblStatusDriver = nullptr;
    QLabel* lblStatusDevice = nullptr;
    QStringList kassaNames;
    QStringList kassaTapes;
    QList<int> kassaCodes;
    GUIMaket maket;
    BD_T20Items bd;
    QGraphicsScene scene;
    QPushButton* btnLineAdd = nullptr;
    QPushButton* btnLineDel = nullptr;
    QGraphicsProxyWidget* proxyLineAdd = nullptr;
    QGraphicsProxyWidget* proxyLineDel = nullptr;
    QStringList freeStrings;
    bool redrawPending = false;
    QTextDecoder decoder866;
    QTextDecoder decoder1251;
    QTextEncoder encoder866;
    QString currentFileName;
    QGraphicsItem* curItem = nullptr; ///< the selected item of the scene; not owned
    int curKey = 0;
    bool listPicked = false;
    int tapeWidth = 576; ///< in dots: 384, 432 or 576
    int curType = 0;
    int setMode = 1;
    int startCountdown = 10;
    bool closing = false;
    bool keepTempFiles = false;
};
