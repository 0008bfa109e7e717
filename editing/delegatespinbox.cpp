#include "editing/delegatespinbox.h"

#include <QLineEdit>
#include <QSpinBox>

namespace {

/// A spin box that knows whether it shows what the cell holds.
class CellSpinBox : public QSpinBox
{
public:
    explicit CellSpinBox(QWidget* parent)
        : QSpinBox(parent)
    {
        connect(this, &QSpinBox::valueChanged, this, [this] { isClamped = false; });
        connect(lineEdit(), &QLineEdit::textEdited, this, [this] { isClamped = false; });
    }

    /// The cell's number is out of range, shown as the nearest one, and the user has not touched it.
    bool isClamped = false;
};

} // namespace

DelegateSpinBox::DelegateSpinBox(int minimum, int maximum)
    : m_minimum(minimum)
    , m_maximum(maximum)
{
}

QWidget* DelegateSpinBox::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                       const QModelIndex& index) const
{
    if (!index.isValid())
        return nullptr;
    auto* const editor = new CellSpinBox(parent);
    editor->setRange(m_minimum, m_maximum);
    return editor;
}

void DelegateSpinBox::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto* const spinBox = dynamic_cast<CellSpinBox*>(editor);
    if (spinBox == nullptr)
        return;
    const int number = index.data(Qt::EditRole).toInt();
    spinBox->setValue(number);
    spinBox->isClamped = spinBox->value() != number;
}

QVariant DelegateSpinBox::editorText(QWidget* editor) const
{
    auto* const spinBox = dynamic_cast<CellSpinBox*>(editor);
    if (spinBox == nullptr)
        return {};
    spinBox->interpretText();
    return spinBox->isClamped ? QVariant() : QVariant(spinBox->value());
}

QVariant DelegateSpinBox::editorValue(QWidget* editor) const
{
    const auto* const spinBox = dynamic_cast<CellSpinBox*>(editor);
    return spinBox == nullptr ? QVariant() : QVariant(spinBox->value());
}
