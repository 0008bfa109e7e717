#pragma once

#include <QStringList>

class MainWindow;

/// What must hold in a window at any moment at which its selection loop has nothing left to do. Everything is
/// computed here anew from the fields, or from the layer below.
class SessionChecks
{
public:
    explicit SessionChecks(MainWindow& window);

    /// A position was edited on the tape: the leftmost field of a line is found anew only by the next redraw.
    void positionWasMoved() { m_isLeftmostOld = true; }

    /// A change of block has pushed the field to another position, which its table shows only when filled anew.
    void fieldWasPushed() { m_isShownXOld = true; }

    /// One line for each thing that does not hold.
    QStringList violations();

private:
    void checkFields();
    void checkBlocks();
    void checkGeometry();
    void checkScene();
    void checkTable();
    /// Writes down what `what()` says if something does not hold.
    template <typename What>
    void expect(bool holds, What what)
    {
        if (!holds)
            m_found.append(what());
    }

    MainWindow& m_window;
    bool m_isLeftmostOld = false;
    bool m_isShownXOld = false;
    QStringList m_found;
};
