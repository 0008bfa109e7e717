#pragma once

#include "editing/celldelegate.h"

/// Cell editor for a number.
class DelegateSpinBox : public CellDelegate
{
    Q_OBJECT

public:
    DelegateSpinBox(int minimum, int maximum);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;

protected:
    QVariant editorText(QWidget* editor) const override;
    QVariant editorValue(QWidget* editor) const override;

private:
    int m_minimum;
    int m_maximum;
};
