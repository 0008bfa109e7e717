#include "editing/celldelegate.h"

#include <QPersistentModelIndex>

void CellDelegate::dismiss()
{
    if (m_committing)
        m_dismissed = true;
    else
        delete this;
}

void CellDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    const QPersistentModelIndex cell(index);
    const auto isGone = [&] { return m_dismissed || !cell.isValid() || !m_condemned.isEmpty(); };

    m_committing = true;
    // Each value is read right before its write: a refusal has put the old value back into the editor.
    if (const QVariant text = editorText(editor); text.isValid()) {
        model->setData(cell, text, Qt::EditRole);
        if (!isGone())
            model->setData(cell, editorValue(editor), kValueRole);
    }
    if (!isGone())
        model->setData(cell, true, kEditedRole);
    m_committing = false;

    // Whoever called for the commit still uses both, so they go with the next turn of its event loop.
    for (const auto& condemned : std::as_const(m_condemned)) {
        if (condemned)
            condemned->deleteLater();
    }
    m_condemned.clear();
    if (m_dismissed)
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): a delegate's functions are const in Qt
        const_cast<CellDelegate*>(this)->deleteLater();
}

void CellDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const
{
    if (index.isValid())
        editor->setGeometry(option.rect);
}

void CellDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const
{
    if (m_committing)
        m_condemned.append(editor);
    else
        QItemDelegate::destroyEditor(editor, index);
}
