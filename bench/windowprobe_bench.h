#pragma once

#include "app/mainwindow.h"

#include <QFile>

#include <cstdio>

/// What a measure needs of a window and no button gives.
class WindowProbe
{
public:
    explicit WindowProbe(MainWindow& window)
        : m_window(window)
    {
    }

    MainWindow& window() const { return m_window; }

    /// Opens the template of 80 mm; false, with a word about it, if that cannot be done.
    bool openSample() const
    {
        QFile file(QStringLiteral(SAMPLES_DIR "/grocery-80mm.csv"));
        if (file.open(QIODevice::ReadOnly))
            m_window.LoadFileData(file.readAll());
        if (!m_window.maket.getShablonLoaded())
            std::fputs("the sample template cannot be loaded\n", stderr);
        return m_window.maket.getShablonLoaded();
    }

    void rebuildView() const { m_window.rebuildView(); }
    const QGraphicsScene& scene() const { return m_window.scene; }
    void changeSetMode(int mode) const { m_window.changeSetMode(mode); }
    void timerTick() const { m_window.timerTick(); }
    void setSelectionTick(int ms) const { m_window.selectionTickMs = ms; }
    void updateFilterOut() const { m_window.updateFilterOut(); }
    bool isRedrawPending() const { return m_window.redrawPending; }
    int fontOf(int key) const { return m_window.bd.getPoleByKey(key).Font; }

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
