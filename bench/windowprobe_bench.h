#pragma once

#include "app/mainwindow.h"

/// What a measure needs of a window and no button gives.
class WindowProbe
{
public:
    explicit WindowProbe(MainWindow& window)
        : m_window(window)
    {
    }

    MainWindow& window() const { return m_window; }
    void loadFileData(const QByteArray& bytes) const { m_window.LoadFileData(bytes); }
    void rebuildView() const { m_window.rebuildView(); }
    const QGraphicsScene& scene() const { return m_window.scene; }
    void changeSetMode(int mode) const { m_window.changeSetMode(mode); }
    void timerTick() const { m_window.timerTick(); }
    void setSelectionTick(int ms) const { m_window.selectionTickMs = ms; }
    void updateFilterOut() const { m_window.updateFilterOut(); }
    bool isRedrawPending() const { return m_window.redrawPending; }
    int fontOf(int key) const { return m_window.bd.getPoleByKey(key).Font; }
    bool isLoaded() const { return m_window.maket.getShablonLoaded(); }

    /// The widget of this name, which the form has.
    template <typename Widget>
    Widget& child(const char* name) const
    {
        auto* const widget = m_window.findChild<Widget*>(QLatin1String(name));
        if (widget == nullptr)
            qFatal("the form has no %s", name);
        return *widget;
    }

private:
    MainWindow& m_window;
};
