#pragma once

#include <QDeadlineTimer>
#include <QFileDialog>
#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <functional>

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
        bool hasParent;
        QMessageBox::StandardButtons buttons;
        Qt::TextFormat format;

        /// True if the marks in the text are carried out instead of shown.
        bool isRich() const;
    };

    /// A file dialog as the user saw it.
    struct SeenFileDialog
    {
        QString title;
        QString filter;
        QString directory;
        bool isSave;
        QWidget* parent;
        QFileDialog::Options options;
    };

    DialogRobot();

    /// The next file dialog is answered with `path`.
    void typeFileName(const QString& path) { m_paths = {path}; }

    /// In the next file dialog these are typed one after the other while it stays open.
    void typeFileNames(const QStringList& paths) { m_paths = paths; }

    /// The next file dialog is cancelled, which is also what happens to one that nobody announced, or that
    /// takes none of the names.
    void cancelFileDialog() { m_paths.clear(); }

    /// Runs `change` in the moment between the user's choice in the next file dialog and the program's answer.
    void whenFileIsChosen(const std::function<void()>& change) { m_whenChosen = change; }

    /// While the next message box is open, `act` runs once, and the box is answered only when `isOver` holds.
    void whileBoxIsOpen(const std::function<void()>& act, const std::function<bool()>& isOver);

    /// From now on `look` runs for each message box while it is open, once.
    void atEachBox(const std::function<void(const SeenBox&)>& look) { m_atEachBox = look; }

    /// The boxes since the last call, oldest first.
    QList<SeenBox> takeBoxes() { return std::exchange(m_boxes, {}); }

    /// The texts of the boxes since the last call, oldest first.
    QStringList takeTexts();

    /// The file dialogs since the last call, oldest first.
    QList<SeenFileDialog> takeFileDialogs() { return std::exchange(m_fileDialogs, {}); }

    /// How many questions the file dialogs asked since the last call; each was answered with yes.
    int takeFileQuestions() { return std::exchange(m_fileQuestions, 0); }

private:
    void look();
    bool isBoxHeld();
    void answer(QMessageBox* box);
    void answer(QFileDialog* dialog);

    QTimer m_timer;
    QPointer<QWidget> m_busyWith;
    QPointer<QWidget> m_lastSeen;
    QStringList m_paths;
    std::function<void()> m_whenChosen;
    std::function<void()> m_act;
    std::function<bool()> m_isOver;
    std::function<void(const SeenBox&)> m_atEachBox;
    QDeadlineTimer m_holdEnd;
    QList<SeenBox> m_boxes;
    QList<SeenFileDialog> m_fileDialogs;
    int m_fileQuestions = 0;
};
