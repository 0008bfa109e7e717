#pragma once

#include "workflows/connectionbench.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMap>

/// Attends to one of the program's own dialogs each time it is opened.
class DialogUser : public QObject
{
    Q_OBJECT

public:
    using Steps = std::function<void(QDialog&)>;

    /// For the dialogs whose object name is `name`.
    explicit DialogUser(const QString& name);
    ~DialogUser() override;

    /// What is done when the dialog is open, an order for each time. Without an order it is cancelled.
    void order(const Steps& steps) { m_orders.append(steps); }
    /// How many orders there was no dialog for.
    qsizetype ordersLeft() const { return m_orders.size(); }
    void dropOrders() { m_orders.clear(); }

    /// Done again and again while the dialog is open.
    void meanwhile(const Steps& steps) { m_meanwhile = steps; }

    /// The titles of the dialog since the last call, one for each time that it was opened.
    QStringList takeTitles() { return std::exchange(m_titles, {}); }

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void look();

    QString m_name;
    QTimer m_timer;
    QPointer<QDialog> m_open;
    QList<Steps> m_orders;
    Steps m_meanwhile;
    QStringList m_titles;
};

/// What the user ticks and types before an exchange.
struct Choice
{
    bool isTemplate = true;
    bool isFreeLines = false;
    int number = 1;
};

/// Makes the dialog show the choice, as far as it lets the user; the number also if the template is not ticked.
void choose(QDialog& dialog, const Choice& choice);

/// The program with a device that answers, and a template on the tape. The device is of the model that the window
/// starts with.
struct TransferBench : ConnectionBench
{
    explicit TransferBench(const QList<FieldRow>& fields = manyFields(4));

    /// Makes these the only templates of the device.
    void setTemplates(const QMap<int, QList<FieldRow>>& templates);
    /// The parameters of the device's template in hexadecimal digits, a text for each row.
    QStringList deviceRows(int number);
    void setDeviceLines(const QStringList& lines)
    {
        device.set({{"table21", QJsonArray::fromStringList(lines)}});
    }
    QStringList deviceLines();
    QStringList& windowLines() const { return WindowProbe(*window).freeStrings(); }

    /// Each raw command from the `n`-th on, counted from the first one after this call, ends with this code.
    void failCommands(int n, int code);

    /// Orders an answer to the question and what is done in the progress window.
    void answer(
        const Choice& choice, const DialogUser::Steps& inProgress = [](QDialog&) {});
    /// Chooses the command; the question is answered, the progress window left alone.
    void download(const Choice& choice);
    void upload(const Choice& choice);

    /// Saves the template and reads the file.
    QByteArray saved();
    QString chosenModel() const;
    /// No block, no line and no field is drawn.
    bool isTapeEmpty() const;

    DialogUser user{QStringLiteral("dlgDnLoad")};
    QList<int> progress; ///< what the bar has shown, in order
    std::unique_ptr<LogWatch> watch;
};

/// The parameters of a field in hexadecimal digits, as the device keeps them.
QString paramDigits(const FieldRow& field);
/// The fields of a file of "new, 26+str".
QList<FieldRow> fieldsOf(const QByteArray& file);

/// What the log has of an exchange before its question.
QStringList questionLines();
/// What the log has of a download of the fields as template `number`, from its question to the report.
QStringList downloadLines(int number, const QList<FieldRow>& fields);
/// What the log has of the free lines alone.
QStringList versionLines();
/// The last line of a download.
QString modelLine();

extern const char* const kQuestionTitle;
extern const char* const kReadingTitle;
extern const char* const kWritingTitle;

/// What the question says to a template without a number.
extern const char* const kNoNumberText;

// Parts of reports.
extern const char* const kTemplateDone;
extern const char* const kTemplateFailed;
extern const char* const kLinesLoaded;
extern const char* const kLinesNotLoaded;
extern const char* const kLinesSaved;
extern const char* const kLinesNotSaved;

/// The report of both parts.
QString reportOf(const char* templatePart, const char* linesPart);
