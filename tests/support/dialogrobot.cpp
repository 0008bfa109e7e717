#include "support/dialogrobot.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QTest>
#include <QTextDocument>
#include <QWindow>

bool DialogRobot::SeenBox::isRich() const
{
    return format == Qt::RichText || (format == Qt::AutoText && Qt::mightBeRichText(text));
}

DialogRobot::DialogRobot()
{
    connect(&m_timer, &QTimer::timeout, this, &DialogRobot::look);
    m_timer.start(1);
}

QStringList DialogRobot::takeTexts()
{
    QStringList texts;
    for (const auto& box : takeBoxes())
        texts.append(box.text);
    return texts;
}

void DialogRobot::whileBoxIsOpen(const std::function<void()>& act, const std::function<bool()>& isOver)
{
    m_act = act ? act : [] {};
    m_isOver = isOver;
}

bool DialogRobot::isBoxHeld()
{
    constexpr int kLongestHoldMs = 10000;
    if (m_act) {
        m_holdEnd.setRemainingTime(kLongestHoldMs);
        std::exchange(m_act, {})();
    }
    if (!m_isOver || m_isOver()) {
        m_isOver = {};
        return false;
    }
    if (m_holdEnd.hasExpired()) {
        m_isOver = {};
        QTest::qFail("nothing ends the hold of the box", __FILE__, __LINE__);
    }
    return true;
}

void DialogRobot::look()
{
    QWidget* const modal = QApplication::activeModalWidget();
    if (modal == nullptr || modal == m_busyWith || !modal->isVisible() || modal->windowHandle() == nullptr ||
        !modal->windowHandle()->isExposed())
        return;
    // Posted: what the answer opens in its turn is answered while this one is still under way, and a timer does
    // not fire inside its own slot.
    const auto post = [this, modal](auto* dialog) {
        m_busyWith = modal;
        QMetaObject::invokeMethod(
            this,
            [this, dialog = QPointer(dialog)] {
                if (dialog != nullptr)
                    answer(dialog.data());
                m_busyWith = nullptr;
            },
            Qt::QueuedConnection);
    };
    if (auto* const box = qobject_cast<QMessageBox*>(modal)) {
        if (!isBoxHeld())
            post(box);
    } else if (auto* const dialog = qobject_cast<QFileDialog*>(modal)) {
        post(dialog);
    }
}

void DialogRobot::answer(QMessageBox* box)
{
    if (qobject_cast<QFileDialog*>(box->parentWidget()) != nullptr) {
        ++m_fileQuestions;
        QAbstractButton* const yes = box->button(QMessageBox::Yes);
        QTest::mouseClick(yes != nullptr ? yes : box->buttons().constFirst(), Qt::LeftButton);
        return;
    }
    if (box != m_lastSeen) {
        m_boxes.append({box->windowTitle(), box->text(), box->icon(), box->parent() != nullptr,
                        box->standardButtons(), box->textFormat()});
        if (m_atEachBox)
            m_atEachBox(m_boxes.constLast());
    }
    m_lastSeen = box;
    QTest::mouseClick(box->buttons().constFirst(), Qt::LeftButton);
}

void DialogRobot::answer(QFileDialog* dialog)
{
    if (dialog != m_lastSeen) {
        m_fileDialogs.append(
            {dialog->windowTitle(), dialog->nameFilters().join(u'|'), dialog->directory().absolutePath(),
             dialog->acceptMode() == QFileDialog::AcceptSave, dialog->parentWidget(), dialog->options()});
        if (m_whenChosen)
            connect(dialog, &QDialog::accepted, this, std::exchange(m_whenChosen, {}));
    }
    m_lastSeen = dialog;
    if (m_paths.isEmpty()) {
        QTest::keyClick(dialog, Qt::Key_Escape);
        return;
    }
    auto* const name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    // Only while it has the focus does the dialog take what is typed, and not what is marked in its list.
    name->setFocus();
    name->clear();
    name->insert(m_paths.takeFirst());
    QTest::keyClick(name, Qt::Key_Return);
}
