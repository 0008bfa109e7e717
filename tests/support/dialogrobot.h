#pragma once

#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <optional>

class QFileDialog;

/// Answers the modal boxes and file dialogs of the program while it lives, as a user would: message boxes are
/// written down and closed with their button, file dialogs get a name typed and accepted.
class DialogRobot : public QObject
{
    Q_OBJECT

public:
    /// A message box as the user saw it.
    struct SeenBox
    {
        QString title;
        QString text;
        QMessageBox::Icon icon;
    };

    /// A file dialog as the user saw it.
    struct SeenFileDialog
    {
        QString title;
        QString filter;
        QString directory;
        bool isSave;
    };

    DialogRobot();

    /// The next file dialog is answered with `path`.
    void typeFileName(const QString& path) { m_path = path; }

    /// The next file dialog is cancelled, which is also what happens to one that nobody announced.
    void cancelFileDialog() { m_path.reset(); }

    /// The boxes since the last call, oldest first.
    QList<SeenBox> takeBoxes() { return std::exchange(m_boxes, {}); }

    /// The texts of the boxes since the last call, oldest first.
    QStringList takeTexts();

    /// The file dialogs since the last call, oldest first.
    QList<SeenFileDialog> takeFileDialogs() { return std::exchange(m_fileDialogs, {}); }

private:
    void look();
    void answer(QMessageBox* box);
    void answer(QFileDialog* dialog);

    QTimer m_timer;
    QPointer<QWidget> m_answered;
    std::optional<QString> m_path;
    QList<SeenBox> m_boxes;
    QList<SeenFileDialog> m_fileDialogs;
};
