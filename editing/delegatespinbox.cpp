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
        // Enter tells of a new value even where it is the one that has been shown all along.
        connect(this, &QSpinBox::valueChanged, this, [this](int number) {
            if (number != m_shown)
                m_isClamped = false;
        });
        // An emptied editor goes back to what it has shown, which nobody has typed.
        connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) {
            if (!text.isEmpty())
                m_isClamped = false;
        });
    }

    /// Shows `number`, or the nearest one in range.
    void showNumber(int number)
    {
        setValue(number);
        m_shown = value();
        m_isClamped = m_shown != number;
    }

    /// The cell's number is out of range, shown as the nearest one, and the user has not touched it.
    bool isClamped() const { return m_isClamped; }

private:
    int m_shown = 0;
    bool m_isClamped = false;
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
    if (spinBox != nullptr)
        spinBox->showNumber(index.data(Qt::EditRole).toInt());
}

QVariant DelegateSpinBox::editorText(QWidget* editor) const
{
    auto* const spinBox = dynamic_cast<CellSpinBox*>(editor);
    if (spinBox == nullptr)
        return {};
    spinBox->interpretText();
    return spinBox->isClamped() ? QVariant() : QVariant(spinBox->value());
}

QVariant DelegateSpinBox::editorValue(QWidget* editor) const
{
    const auto* const spinBox = dynamic_cast<CellSpinBox*>(editor);
    return spinBox == nullptr ? QVariant() : QVariant(spinBox->value());
}
