#include "editing/delegatecombobox.h"

#include <QComboBox>

int cmbData(QComboBox* combo, int role)
{
    if (combo == nullptr || combo->currentIndex() < 0)
        return -1;
    return combo->currentData(role).toInt();
}

void QComboSelectWithText(QComboBox* combo, const QString& text)
{
    combo->setCurrentIndex(combo->findData(text, Qt::DisplayRole, Qt::MatchCaseSensitive));
}

DelegateComboBox::DelegateComboBox(bool isOneAbove)
    : m_isOneAbove(isOneAbove)
{
}

void DelegateComboBox::addLine(const ComboBoxLine& line)
{
    m_lines.append(line);
}

QWidget* DelegateComboBox::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                        const QModelIndex& index) const
{
    if (!index.isValid())
        return nullptr;
    auto* const combo = new QComboBox(parent);
    for (const auto& [text, data] : m_lines)
        combo->insertItem(combo->count(), text, data);
    return combo;
}

void DelegateComboBox::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (auto* const combo = qobject_cast<QComboBox*>(editor))
        QComboSelectWithText(combo, index.data(Qt::EditRole).toString());
}

QVariant DelegateComboBox::editorText(QWidget* editor) const
{
    const auto* const combo = qobject_cast<QComboBox*>(editor);
    // Without a current line the cell has a text that the list lacks, and the user has chosen none.
    return combo == nullptr || combo->currentIndex() < 0 ? QVariant() : QVariant(combo->currentText());
}

QVariant DelegateComboBox::editorValue(QWidget* editor) const
{
    return cmbData(qobject_cast<QComboBox*>(editor), Qt::UserRole) - (m_isOneAbove ? 1 : 0);
}
