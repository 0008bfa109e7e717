#pragma once

#include <QItemDelegate>
#include <QList>
#include <QPointer>

/// What the cell editors of the property table have in common: a commit is three writes, and neither the
/// delegate nor its editor goes away in the middle of one.
///
/// A write can open a message box, whose event loop may fill the table anew. Then the cell is another one,
/// and the rest of the commit is dropped.
class CellDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    /// Data roles of a value cell.
    static constexpr int kValueRole = Qt::UserRole;      ///< the number of the value
    static constexpr int kEditedRole = Qt::UserRole + 1; ///< true once an editor has written the cell

    using QItemDelegate::QItemDelegate;

    /// Deletes the delegate, at once or after the commit that is under way.
    void dismiss();

    /// Writes text, value and edited flag, in this order, as long as the cell stands.
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const final;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const final;
    void destroyEditor(QWidget* editor, const QModelIndex& index) const final;

protected:
    /// What the editor would put under Qt::EditRole; an invalid variant if it has nothing to say, as it shows
    /// a value that is not the cell's and the user has not touched it.
    virtual QVariant editorText(QWidget* editor) const = 0;

    /// What the editor would put under the value role.
    virtual QVariant editorValue(QWidget* editor) const = 0;

private:
    mutable bool m_committing = false;
    mutable QList<QPointer<QWidget>> m_condemned; ///< editors to delete after the commit
    bool m_dismissed = false;
};
