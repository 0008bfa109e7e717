#pragma once

#include "editing/celldelegate.h"

#include <QVariant>

#include <utility>

class QComboBox;

/// The data of the current line of `combo` under `role` as an int; -1 without a combo box or a current line.
int cmbData(QComboBox* combo, int role);

/// Makes the line with exactly this text the current one; none if there is no such line.
void QComboSelectWithText(QComboBox* combo, const QString& text);

/// Cell editor for a choice from a list.
class DelegateComboBox : public CellDelegate
{
    Q_OBJECT

public:
    /// Text and data of a line of the list.
    using ComboBoxLine = std::pair<QString, QVariant>;

    /// `isOneAbove`: the data of the lines are one above the values to store.
    explicit DelegateComboBox(bool isOneAbove);

    void addLine(const ComboBoxLine& line);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;

protected:
    QVariant editorText(QWidget* editor) const override;
    QVariant editorValue(QWidget* editor) const override;

private:
    QList<ComboBoxLine> m_lines;
    bool m_isOneAbove;
};
