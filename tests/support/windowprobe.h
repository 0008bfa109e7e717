#pragma once

#include "app/mainwindow.h"

/// Looks at what a window keeps to itself: models, scene and state. Commands go through the widgets.
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

    /// Asks for the deferred redraw, as an edit of a field does.
    void requestRedraw() const { m_window.redrawPending = true; }

    QString currentFileName() const { return m_window.currentFileName; }
    QStringList kassaNames() const { return m_window.kassaNames; }
    QStringList kassaTapes() const { return m_window.kassaTapes; }
    QList<int> kassaCodes() const { return m_window.kassaCodes; }
    QStringList& freeStrings() const { return m_window.freeStrings; }
    QMap<int, QString> blockTitles() const { return m_window.gl.blockTitles; }

    /// The lines of the log; none while it is empty.
    QStringList log() const;

private:
    MainWindow& m_window;
};
