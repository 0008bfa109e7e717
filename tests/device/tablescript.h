#pragma once

#include "device/clkrd9io.h"
#include "support/recordingdriver.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

/// A device that answers raw commands by a script; it refuses commands that the script does not know.
class TableScript : public RecordingDriver
{
public:
    struct Answer
    {
        QString text;           ///< of the answer buffer
        Outcome sending = {};   ///< how the execution ends
        int codeAfterwards = 0; ///< result code when the answer has been taken; 0 leaves it
    };

    static constexpr Outcome kRefusal = {-1, -3};

    TableScript() { setText("getResultDescription", "Отказ"); }

    /// `command` is as the driver gets it, without the blank at its end.
    void answerTo(const QString& command, const Answer& answer) { script.insert(command, answer); }

    /// Answers what the script does not know.
    std::function<Answer(const QString& command)> otherwise = [](const QString&) {
        return Answer{{}, kRefusal, 0};
    };

    /// The commands sent so far, without the blanks at their ends.
    QStringList commands() const
    {
        QStringList sent;
        for (const QString& call : callsOf("setCommandBuffer"))
            sent.append(call.mid(18).chopped(2).trimmed());
        return sent;
    }

    int execCommandBuffer() override
    {
        const QString command = lastText("setCommandBuffer").trimmed();
        const Answer given = script.contains(command) ? script.value(command) : otherwise(command);
        RecordingDriver::answer("execCommandBuffer", given.sending);
        setText("getAnswerBuffer", given.text);
        codeAfterwards = given.codeAfterwards;
        return RecordingDriver::execCommandBuffer();
    }

    int getAnswerBuffer(wchar_t* buffer, int capacity) override
    {
        if (codeAfterwards != 0)
            resultCode = codeAfterwards;
        return RecordingDriver::getAnswerBuffer(buffer, capacity);
    }

private:
    QMap<QString, Answer> script;
    int codeAfterwards = 0;
};

/// What a session says while it moves a table: "5" for a progress value, "end" for its end.
class TransferSignals : public QObject
{
public:
    explicit TransferSignals(const clKRD9IO& session)
    {
        connect(&session, &clKRD9IO::updateProgressValue, this,
                [this](int value) { seen.append(QString::number(value)); });
        connect(&session, &clKRD9IO::progressEnd, this, [this] { seen.append(QStringLiteral("end")); });
    }

    QStringList seen;
};

/// A record in short: "t s r p1-p2 v".
inline QString shortForm(const Json::Value& record)
{
    return QStringLiteral("%1 %2 %3 %4-%5 %6")
        .arg(record["t"].asInt())
        .arg(record["s"].asInt())
        .arg(record["r"].asInt())
        .arg(record["p1"].asInt())
        .arg(record["p2"].asInt())
        .arg(QString::fromStdString(record["v"].asString()));
}

inline QStringList shortForms(const Json::Value& records)
{
    QStringList forms;
    for (const auto& record : records)
        forms.append(shortForm(record));
    return forms;
}

// A table of two rows. The first has a name and three parameters in two groups, the second two in one group.

inline const QString kHead1 = QStringLiteral("51 00 00 00 A1 A2 A3 A4 A5 A6 A7 A8 03 00 01 00 03 "
                                             "04 00 01 00 C0 05 00 02 00 FF 03");
inline const QString kGroup1a = QStringLiteral("51 00 01 02 00 00 1C 00 "
                                               "01 00 0A 00 01 00 01 00 08 02 00 01 00 07 "
                                               "02 00 0A 00 01 00 01 00 04 02 00 01 00 03");
inline const QString kGroup1b = QStringLiteral("51 00 03 03 00 00 0E 00 "
                                               "03 00 0A 00 01 00 01 00 01 02 00 01 00 01");
inline const QString kHead2 = QStringLiteral("00 00 00 00 00 00 00 00 00 00 00 00 03 00 01 00 02");
inline const QString kGroup2 = QStringLiteral("00 00 01 02 01 00 1C 00 "
                                              "01 00 0A 00 01 00 01 00 08 02 00 01 00 09 "
                                              "02 00 0A 00 01 00 01 00 04 02 00 01 00 0B");

inline const QString kAskHead1 = QStringLiteral("51 00 14 02 01 00 00 00");
inline const QString kAskGroup1a = QStringLiteral("51 00 14 02 01 00 01 03");
inline const QString kAskGroup1b = QStringLiteral("51 00 14 02 01 00 03 03");
inline const QString kAskHead2 = QStringLiteral("51 00 14 02 02 00 00 00");
inline const QString kAskGroup2 = QStringLiteral("51 00 14 02 02 00 01 02");
inline const QString kAskHead3 = QStringLiteral("51 00 14 02 03 00 00 00");

inline const QString kRecordHead1 = QStringLiteral("20 2 1 0-0 0000A1A2A3A4A5A6A7A80300010003"
                                                   "04000100C005000200FF03");
inline const QString kRecord1a = QStringLiteral("20 2 1 1-2 010200001C00"
                                                "01000A0001000100080200010007"
                                                "02000A0001000100040200010003");
inline const QString kRecord1b = QStringLiteral("20 2 1 3-3 030300000E00"
                                                "03000A0001000100010200010001");
inline const QString kRecordHead2 = QStringLiteral("20 2 2 0-0 000000000000000000000300010002");
inline const QString kRecord2 = QStringLiteral("20 2 2 1-2 010201001C00"
                                               "01000A0001000100080200010009"
                                               "02000A000100010004020001000B");

/// Puts the two rows into sub-table 2.
inline void fillTwoRows(TableScript& device)
{
    device.answerTo(kAskHead1, {kHead1});
    device.answerTo(kAskGroup1a, {kGroup1a});
    device.answerTo(kAskGroup1b, {kGroup1b});
    device.answerTo(kAskHead2, {kHead2});
    device.answerTo(kAskGroup2, {kGroup2});
}
