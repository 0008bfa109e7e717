#pragma once

#include <QStringList>

class MainWindow;
class QAbstractButton;
class QGraphicsProxyWidget;
class QGraphicsScene;
class QGraphicsView;
class QGroupBox;
class QLineEdit;
class QListWidget;
class QTableWidget;

/// The "+" or "-" button of a scene; null if there is none.
QGraphicsProxyWidget* lineButton(const QGraphicsScene& scene, const QString& text);

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

    /// A size was edited: the delete button follows only with the next pick.
    void sizeWasEdited() { m_isDeleteOld = true; }

    /// One line for each thing that does not hold.
    QStringList violations();

private:
    // The models.
    void checkFields();
    void checkBlocks();
    void checkGeometry();

    // The scene.
    void checkItems();
    void checkPoles();
    void checkFrame();
    void checkLineButtons();
    void checkAllowedLines();
    void checkScale();

    // The table and what shows the selection beside it.
    void checkSelection();
    void checkButtons();
    void checkTable();
    void checkNames(const QStringList& names, bool isEditable);
    void checkValues(const QStringList& texts);
    void checkPoleTable(int key);
    QStringList lineTexts(int block, int line) const;

    void checkFieldList();

    /// The key of the field that is selected on the tape or picked in the list; 0 if none is.
    int pickedKey() const;

    /// Writes down what `what()` says if something does not hold.
    template <typename What>
    void expect(bool holds, What what)
    {
        if (!holds)
            m_found.append(what());
    }

    MainWindow& m_window;
    QGraphicsView* m_graphics;
    QLineEdit* m_scale;
    QTableWidget* m_table;
    QLineEdit* m_desc;
    QAbstractButton* m_positions;
    QAbstractButton* m_view;
    QAbstractButton* m_delete;
    QGroupBox* m_box;
    QListWidget* m_list;
    QLineEdit* m_filterText;
    QAbstractButton* m_filter;
    QAbstractButton* m_case;
    QAbstractButton* m_all;
    bool m_isLeftmostOld = false;
    bool m_isShownXOld = false;
    bool m_isDeleteOld = false;
    QStringList m_found;
};
