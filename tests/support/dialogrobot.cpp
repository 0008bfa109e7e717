#include "support/dialogrobot.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QTest>

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

void DialogRobot::look()
{
    QWidget* const modal = QApplication::activeModalWidget();
    if (modal == nullptr || modal == m_answered || !modal->isVisible())
        return;
    m_answered = modal;
    if (auto* const box = qobject_cast<QMessageBox*>(modal))
        answer(box);
    else if (auto* const dialog = qobject_cast<QFileDialog*>(modal))
        answer(dialog);
}

void DialogRobot::answer(QMessageBox* box)
{
    m_boxes.append({box->windowTitle(), box->text(), box->icon()});
    QTest::mouseClick(box->buttons().constFirst(), Qt::LeftButton);
}

void DialogRobot::answer(QFileDialog* dialog)
{
    m_fileDialogs.append({dialog->windowTitle(), dialog->nameFilters().join(u'|'),
                          dialog->directory().absolutePath(),
                          dialog->acceptMode() == QFileDialog::AcceptSave});
    if (!m_path) {
        QTest::keyClick(dialog, Qt::Key_Escape);
        return;
    }
    auto* const name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    name->clear();
    QTest::keyClicks(name, *m_path);
    m_path.reset();
    QTest::keyClick(name, Qt::Key_Return);
}
