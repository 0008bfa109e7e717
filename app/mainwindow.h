#pragma once

#include "model/bd_t20items.h"
#include "view/guimaket.h"

#include <QAbstractItemView>
#include <QGraphicsScene>
#include <QMainWindow>
#include <QMap>
#include <QStringList>
#include <QTextCodec>
#include <QTextDecoder>
#include <QTextEncoder>

#include <json/value.h>

#include <functional>
#include <span>

class QGraphicsItem;
class QGraphicsProxyWidget;
class QLabel;
class QPushButton;
class QTableWidget;
class QTableWidgetItem;
class QLumFpax;
class Ui_MainWindow;
class dlgDnLoad;
struct PropertyRow;
struct TlvRecord;

namespace LUM::Fpax {
class IFpax;
}

/// The window of the program. All commands are its members; each theme of them has a source of its own in the
/// folder of the subsystem that owns it.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Builds the window in its not-loaded state, starts the timer loops, loads the driver and tries the connection;
    /// goes on without either.
    explicit MainWindow(QWidget* parent = nullptr);

    /// Keeps a port that was changed in the driver's dialog, and stops the timer loops, which takes half a second.
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
    void on_actionIOSettings_triggered();
    void on_actionFreePort_triggered();
    void on_actionDnLoad_triggeredOld();
    void on_actionDnLoad_triggered();
    void on_actionUpLoad_triggered();
    void on_actionPrintTestChek_triggered();
    void on_actionFreeStrEditor_triggered();
    void on_btnFreeStrEditor_clicked();
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

    // Property table.
    void on_settingsWidget_cellChanged(int row, int column);
    void on_settingsWidget_currentCellChanged(int currentRow, int currentColumn, int previousRow,
                                              int previousColumn);
    void on_btnSetSetModePoz_clicked();
    void on_btnSetSetModeView_clicked();
    void on_btnPoleDel_clicked();

    // Field list.
    void on_chbFilter_stateChanged(int arg1);
    void on_btnFiltrShowAll_toggled(bool checked);
    void on_lePolesFilterStr_textChanged(QString arg1);
    void on_btnFiltrRegistr_clicked();
    void on_listView_clicked(QModelIndex index);
    void on_listWidget_itemSelectionChanged();

    // Device models.
    void on_comboKassa_currentIndexChanged(int index);

    // Console.
    void on_lePolesFilterStr_returnPressed();
    void on_btnDbgCmdCall_clicked();
    void on_btnDbgLoadFile_clicked();
    void on_btnDbgSaveJson_clicked();
    void on_btnDbgDnload_2_clicked();
    void on_btnDbgClear_clicked();
    void on_btnDbgUploadJson_clicked();
    void on_btnDbgDnload_clicked();

private:
    // Messages.
    /// A modal box without an icon, for the report of a finished command; rich text is allowed.
    static void msgBoxTextOK(const QString& text);
    /// A modal warning.
    static void msgBoxWarnOK(const QString& text);
    /// Adds one line to the log.
    void LogAddDbg(const QString& text);

    // Kept for callers that are gone: they do nothing.
    void LoadLib();
    int LoadFromDvcToJsonAll();

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
    /// Recomputes the model's lines if a change of the fields still waits for its redraw.
    void refreshStaleBlocks();

    // Selection.
    /// Shows `selection`, which may be null, in the property table and on the tape.
    void takeSelection(QGraphicsItem* selection);
    /// Places the "+" and "-" buttons beside the selected heading or line; hides them for anything else.
    void showLineButtons();
    /// Ends every pick, on the scene and in the field list: nothing is picked and the table is empty.
    void endPick();
    /// Marks the lines of each block as allowed exactly if the bit of the block is set in `mask`.
    void SetMaskOfPoleToAllBlocks(unsigned int mask);
    /// The key of the selected field, on the scene or in the list; 0 if there is none.
    int getKeyPlForSelectedPole();

    // Property table: its forms.
    void settingsWidget_initForEmpty();
    void settingsWidget_initForHeader();
    void settingsWidget_initForLine();
    /// Shows the field `key` in the mode in use; a missing key gets a blank record.
    void settingsWidget_initForPole(int key);
    void settingsWidget_initForPolePoz(int key);
    void settingsWidget_initForPoleView(int key);
    void fillPoleForm(int key, std::span<const PropertyRow> rows, int nameWidth, int valueWidth);
    /// Empties column 1 of delegates and editors and puts the names into column 0.
    void beginTableForm(int nameWidth, int valueWidth, const QStringList& names,
                        QAbstractItemView::EditTriggers triggers);
    /// Closes an open cell editor without taking its value.
    void closeTableEditors();
    /// Ends the editor that the user types into, as a click beside it does: its value is taken or refused.
    void takeOpenEditor();
    /// Closes the editor and deletes all delegates, for the end of the window.
    void dropTable();
    /// Puts one new cell for each text into `column`, from `firstRow` down.
    static void OutColumnNamesFromList(QTableWidget* table, int firstRow, int column,
                                       const QStringList& texts, bool readOnly);
    /// Takes the delegates from the first `rows` rows and deletes them.
    static void RemovePrevDelegates4Column(QTableWidget* table, int rows);
    /// Sets value and flag of `item` and makes it the cell.
    void putTableItem(QTableWidgetItem* item, int row, int column, unsigned char value);
    /// A cell with the value in decimal, or as the character of that code.
    void setTableItem(int row, int column, unsigned char value, bool asChar);
    /// A cell with the text of the value; empty if `texts` has none.
    void setTableItem(int row, int column, const QMap<int, QString>& texts, unsigned char value);
    void putTableValue(int row, const PropertyRow& property, int value);
    QAbstractItemDelegate* makeDelegate(const PropertyRow& row);
    /// The text that a row shows for `value`.
    QString shownText(const PropertyRow& row, int value);
    /// The character of code page 1251 with this code.
    QString charText(int code);
    /// Enables the mode buttons and the delete button as the selected element allows.
    void changeSettingTableBtnsOnOff();
    void changeSetMode(int mode);

    // Property table: the rules of a change. The int results are the number that the rule stored or would
    // have stored.
    struct CellChange;
    int changeView(const CellChange& change);
    /// `isPlacing` becomes true if the set of placed fields may have changed.
    int changePosition(const CellChange& change, bool& isPlacing);
    int changeBlock(const CellChange& change);
    void changeLine(const CellChange& change);
    void changeX(const CellChange& change);
    /// True if the field has taken the size.
    bool changeSize(const CellChange& change);
    /// The number that the cell's text stands for in a row that is told by its text.
    int numberOfText(const PropertyRow& property, const CellChange& change);
    void storeValue(const PropertyRow& property, const CellChange& change, int value, bool isRedraw);
    /// Shows `message` and puts the record's value back into the cell.
    void refuse(const CellChange& change, const QString& message);

    // Field list.
    /// The descriptions of the fields that the filter lets through, in key order.
    void makeFilteredPoleyList(QStringList& out);
    /// Fills the list and the title of its box anew.
    void updateFilterOut();

    // Device.
    /// Loads the driver from the program's folder and shows its state.
    void loadDriver();
    /// Asks the device for its state, at the start with the settings file first. True if the device is ready for an
    /// exchange; failures are told in a box, except for those of the start that the user did not ask for.
    bool CheckOrSetConnection(bool applySettings);
    /// Reads settings.json, or writes a new one in its place, and hands it to the driver.
    bool applyPortSettings();
    void logNoConnection();
    /// The words for the state that a failed connection has left.
    QString connectionFailure() const;
    /// What the status bar says about the device.
    QString deviceStatusText() const;
    /// Writes settings.json if the driver reports another port.
    void keepChangedPort();
    /// Reads a JSON file: 0, 11 if it cannot be opened, 12 if it cannot be parsed; both are logged.
    int JsonFileReadAndParse(const QString& fileName, Json::Value& root);

    // Template table of the device.
    /// The value of parameter `index`, from 1, in the digits of a record; 0 where there is none.
    static int ParseTLVParam(int index, const QString& v);
    /// Replaces the fields by those of the records of one sub-table; the check and the redraw are the caller's.
    void LoadFromJsonTLVSubTable(Json::Value& rows, int subTable);
    /// Takes name, mask and mandatory flag from the digits of a row's head.
    void takeRowHead(const QString& v, BD_T20Items::T20Item& item);
    /// Stores the field whose last parameter has come.
    void completeField(BD_T20Items::T20Item& item, int counter, int rowKey);
    /// Writes the records with `fpax`, leaving lines about each in `log`.
    void DvcIOWriteTLV20(QLumFpax& fpax, Json::Value& rows, QStringList& log);
    static void logRecordWrite(QLumFpax& fpax, const TlvRecord& record, QStringList& log);
    /// Makes the records of the template and, with `toFile`, writes them to tablestlv.json.
    void SaveToJsonFileTLVSubTable(int subTable, bool toFile);
    /// Reads tablestlv.json and takes over its fields.
    void LoadFromJsonFileTLVSubTableOld(int subTable);

    // Free lines.
    /// Decodes hexadecimal digits of code page 866.
    void RecodeStrsFromBAToUtf(const QString& hex, QString& out, bool flag);
    /// Replaces the free lines by those of tables.json; a failure leaves none.
    void LoadFromJsonFileFreeStr();
    void SaveToJsonFileFreeStr();
    void RunFreeStrEditor();

    // Exchange with the device.
    /// Runs `transfer` on a worker thread while `dialog` shows its progress; gives its result.
    static int runTransfer(dlgDnLoad& dialog, const QString& title, const std::function<int()>& transfer);
    // The words for results, and a report made of them.
    static QString templateReport(int result);
    static QString savedFreeLinesReport(int result);
    static void addReport(QString& report, const QString& text);

    // Console.
    void saveLog();
    void saveExport(int result, const QStringList& rows, const QString& name, const QString& done);
    void dumpFields();
    void dumpBlocks();
    void dumpLayout();
    void dumpMasks();
    /// Checks driver and port with a driver object of its own.
    void checkDriver();
    void logDriverNotLoaded(const QString& reason);
    /// The check itself; `driver` may be null. `whenConnected` runs while the port is open.
    void checkDriverObject(LUM::Fpax::IFpax* driver, const std::function<void()>& release,
                           const std::function<void(QLumFpax&)>& whenConnected);
    void logDriverSettings(QLumFpax& fpax);
    void changeDriverSettings(QLumFpax& fpax);

    // Device models.
    /// Follows the model that the device reports.
    void ConnectedModelChange(int model);
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
    Json::Value ioSettings; ///< content of settings.json, null until it was read
    GUIMaket maket;
    BD_T20Items bd;
    QGraphicsScene scene;
    QPushButton* btnLineAdd = nullptr;
    QPushButton* btnLineDel = nullptr;
    QGraphicsProxyWidget* proxyLineAdd = nullptr;
    QGraphicsProxyWidget* proxyLineDel = nullptr;
    QStringList freeStrings;
    bool redrawPending = false;
    bool lineBoxOpen = false; ///< a message box stands inside a click on a button of the scene
    QTextDecoder decoder866;
    QTextDecoder decoder1251;
    QTextEncoder encoder866;
    QString currentFileName;
    QGraphicsItem* curItem = nullptr;  ///< the selected item of the scene; not owned
    QGraphicsItem* prevItem = nullptr; ///< the selection at the last turn of timerTick; never followed
    bool prevItemGone = false;         ///< a rebuild has deleted the items since then
    int curKey = 0;                    ///< the field picked in the list; 0 if none
    bool listPicked = false;
    int tapeWidth = 576; ///< in dots: 384, 432 or 576
    int curType = 0;
    int setMode = 1;          ///< 1: positions, 2: view
    int selectionTickMs = 50; ///< pause between two turns of the selection loop; tests shorten it
    int tableForm = 0;        ///< counts the fillings of the property table
    int startCountdown = 10;
    bool closing = false;
    bool keepTempFiles = false;
};
