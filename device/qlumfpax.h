#pragma once

#include "device/ifpax.h"
#include "device/qluminterface.h"

#include <QDate>
#include <QTime>
#include <QVector>

#include <string>

/// The driver of the cash register, with raw commands, dates and times beside the general calls.
class QLumFpax : public QLumInterface<LUM::Fpax::IFpax>
{
public:
    QLumFpax() = default;
    explicit QLumFpax(LUM::Fpax::IFpax* driver);

    int defaultBufferSize() const override { return 4096; }

    /// Sends a raw command and gives the bytes of the answer. Throws Exception if the command could not be handed
    /// over or the driver's code is -6; with any other code the answer is read all the same and the caller looks
    /// at the code. The answer has one byte at least: an empty text, like a blank at its end, counts as a zero.
    QVector<unsigned char> runCommand(const QVector<unsigned char>& command);
    /// The same for a command in hexadecimal digits without separators.
    QVector<unsigned char> runCommand(const std::string& command);

    using DateGetter = int (LUM::Fpax::IFpax::*)(int*, int*, int*);
    using DateSetter = int (LUM::Fpax::IFpax::*)(int, int, int);

    /// `get` fills in day, month and year; the status is ignored.
    QDate getDate(DateGetter get);
    /// `get` fills in hour, minute and second; the status is ignored.
    QTime getTime(DateGetter get);
    int setDate(DateSetter set, const QDate& date);
    int setTime(DateSetter set, const QTime& time);

private:
    QVector<unsigned char> sendCommandText(const QString& text);
};
