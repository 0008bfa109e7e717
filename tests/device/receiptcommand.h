#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// What the user wants of the command "test receipt", on a device whose shift has lasted too long or not.
struct ReceiptOrder
{
    int number = 1;
    bool isUpLoad = true;
    bool isSessionClose = true;
    bool isPortRelease = true;
    bool isShiftTooOld = false;
};

/// What became of a call of the driver, as the program learns it.
struct MadeCall
{
    enum class End {
        Done,
        Refused,   ///< with a result code
        Unnoticed, ///< not done, but there is no code, or nobody looks at it
        Thrown
    };

    QString text;
    End end = End::Done;
    int code = 0; ///< of a refusal

    bool isFailure() const { return end == End::Refused || end == End::Thrown; }
};

/// What the user meets in the course of the command.
struct ReceiptCourse
{
    bool isAsked = false; ///< the dialog of the receipt comes
    QStringList boxes;
    QStringList log;
    /// The first place where other calls were made than what became of the earlier ones lets expect; empty if there
    /// is none.
    QString oddity;
    /// The program must end at the last of the calls.
    bool isEnd = false;
};

/// The course of the command that the ends of its calls lead to. `commands` are the raw commands of the template.
ReceiptCourse receiptCourse(const QList<MadeCall>& calls, const ReceiptOrder& order,
                            const QStringList& commands);
