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

    void loadFileData(const QByteArray& bytes) const { m_window.LoadFileData(bytes); }
    void rebuildView() const { m_window.rebuildView(); }
    const QGraphicsScene& scene() const { return m_window.scene; }
    bool isLoaded() const { return m_window.maket.getShablonLoaded(); }

private:
    MainWindow& m_window;
};
