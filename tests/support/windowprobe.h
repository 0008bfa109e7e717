#pragma once

#include "app/mainwindow.h"

/// Looks at what a window keeps to itself, gives it states that no widget gives, and calls the members that no widget
/// calls. All other commands go through the widgets.
class WindowProbe
{
public:
    explicit WindowProbe(MainWindow& window)
        : m_window(window)
    {
    }

    BD_T20Items& bd() const { return m_window.bd; }
    GUIMaket& maket() const { return m_window.maket; }
    QGraphicsScene& scene() const { return m_window.scene; }
    QGraphicsItem* curItem() const { return m_window.curItem; }
    int curKey() const { return m_window.curKey; }
    int tapeWidth() const { return m_window.tapeWidth; }
    int startCountdown() const { return m_window.startCountdown; }
    bool redrawPending() const { return m_window.redrawPending; }

    /// What the window takes for the selected field; 0 if there is none.
    int keyOfSelectedPole() const { return m_window.getKeyPlForSelectedPole(); }

    /// Puts the property table into a mode, also into one that no button gives.
    void setTableMode(int mode) const { m_window.setMode = mode; }

    /// Makes `key` the field picked in the list, whatever is selected on the scene.
    void setCurKey(int key) const { m_window.curKey = key; }

    /// Asks for the deferred redraw, as an edit of a field does.
    void requestRedraw() const { m_window.redrawPending = true; }

    /// True once the selection loop has nothing left to do: it knows the selection, and no redraw is due.
    bool isSettled() const
    {
        const auto selected = m_window.scene.selectedItems();
        const QGraphicsItem* const single = selected.size() == 1 ? selected.constFirst() : nullptr;
        return !m_window.redrawPending && !m_window.prevItemGone && m_window.prevItem == single;
    }

    /// What the user is told of a device that has left the session as it is now.
    QString connectionFailure() const { return m_window.connectionFailure(); }

    /// Follows a model of the device, also one that no device reports.
    void followModel(int model) const { m_window.ConnectedModelChange(model); }

    /// Gives the tape a width in dots, also one that no tape has.
    void setTapeWidth(int width) const { m_window.tapeWidth = width; }

    /// Makes the selection loop turn that often.
    void setSelectionTick(int ms) const { m_window.selectionTickMs = ms; }

    QString currentFileName() const { return m_window.currentFileName; }
    QStringList kassaNames() const { return m_window.kassaNames; }
    QStringList kassaTapes() const { return m_window.kassaTapes; }
    QList<int> kassaCodes() const { return m_window.kassaCodes; }
    QStringList& freeStrings() const { return m_window.freeStrings; }
    bool keepTempFiles() const { return m_window.keepTempFiles; }

    // Tables of the device: members that no widget of their own calls.
    static int parseParam(int index, const QString& v) { return MainWindow::ParseTLVParam(index, v); }
    void loadRecords(Json::Value& rows, int subTable) const
    {
        m_window.LoadFromJsonTLVSubTable(rows, subTable);
    }
    void writeRecords(QLumFpax& fpax, Json::Value& rows, QStringList& log) const
    {
        m_window.DvcIOWriteTLV20(fpax, rows, log);
    }
    void saveRecordsFile(int subTable, bool toFile) const
    {
        m_window.SaveToJsonFileTLVSubTable(subTable, toFile);
    }
    void loadRecordsFile(int subTable) const { m_window.LoadFromJsonFileTLVSubTableOld(subTable); }
    void setKeepTempFiles(bool keep) const { m_window.keepTempFiles = keep; }
    void loadFreeLinesFile() const { m_window.LoadFromJsonFileFreeStr(); }
    void saveFreeLinesFile() const { m_window.SaveToJsonFileFreeStr(); }
    QString decodeFreeLine(const QString& hex, bool flag) const
    {
        QString line;
        m_window.RecodeStrsFromBAToUtf(hex, line, flag);
        return line;
    }

    /// Runs what stands behind the console's button that is never enabled.
    void callLoadFile() const { m_window.on_btnDbgLoadFile_clicked(); }

    // Commands that are declared and do nothing.
    int loadAllFromDevice() const { return m_window.LoadFromDvcToJsonAll(); }
    void callOldDownload() const { m_window.on_actionDnLoad_triggeredOld(); }

    /// The template as its file would have it.
    QByteArray heldTemplate() const;

    /// The lines of the log; none while it is empty.
    QStringList log() const;

private:
    MainWindow& m_window;
};
