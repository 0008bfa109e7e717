#include "device/qlumfpax.h"

using LUM::Fpax::IFpax;

namespace {

/// The one result code of a raw command that its caller does not have to look at: nothing can be exchanged.
constexpr int kNoExchange = -6;

} // namespace

QLumFpax::QLumFpax(IFpax* driver)
    : QLumInterface(driver)
{
}

QVector<unsigned char> QLumFpax::runCommand(const QVector<unsigned char>& command)
{
    constexpr char digits[] = "0123456789ABCDEF";
    QString text;
    text.reserve(command.size() * 3);
    for (const unsigned char byte : command) {
        text += QLatin1Char(digits[byte >> 4]);
        text += QLatin1Char(digits[byte & 0x0F]);
        text += u' ';
    }
    return sendCommandText(text);
}

QVector<unsigned char> QLumFpax::runCommand(const std::string& command)
{
    QString text;
    text.reserve(static_cast<qsizetype>(command.size() / 2 + 1) * 3);
    for (std::size_t i = 0; i < command.size(); i += 2) {
        // Behind the last character of an odd number stands the zero that ends the string.
        text += QLatin1Char(command[i]);
        text += QLatin1Char(command.c_str()[i + 1]);
        text += u' ';
    }
    return sendCommandText(text.toUpper());
}

QVector<unsigned char> QLumFpax::sendCommandText(const QString& text)
{
    raiseError(driver()->setCommandBuffer(toWide(text).constData()));
    try {
        execMethod(&IFpax::execCommandBuffer);
    } catch (const Exception&) {
        if (getInt(&IFpax::getResultCode) == kNoExchange)
            throw;
    }
    const QString answer = getBuff(&IFpax::getAnswerBuffer);
    QVector<unsigned char> bytes;
    bytes.reserve(answer.size() / 3 + 1);
    for (const QStringView part : QStringView(answer).tokenize(u' '))
        bytes.append(static_cast<unsigned char>(static_cast<unsigned>(part.toInt(nullptr, 16)) & 0xFFU));
    return bytes;
}

QDate QLumFpax::getDate(DateGetter get)
{
    int day = 0;
    int month = 0;
    int year = 0;
    (driver()->*get)(&day, &month, &year);
    return {year, month, day};
}

QTime QLumFpax::getTime(DateGetter get)
{
    int hour = 0;
    int minute = 0;
    int second = 0;
    (driver()->*get)(&hour, &minute, &second);
    return {hour, minute, second};
}

int QLumFpax::setDate(DateSetter set, const QDate& date)
{
    return raiseError((driver()->*set)(date.day(), date.month(), date.year()));
}

int QLumFpax::setTime(DateSetter set, const QTime& time)
{
    return raiseError((driver()->*set)(time.hour(), time.minute(), time.second()));
}
