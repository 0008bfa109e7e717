#include "device/qlumfpax.h"

#include "device/hexdigit.h"

#include <algorithm>
#include <utility>

using LUM::Fpax::IFpax;

namespace {

/// The one result code of a raw command that its caller does not have to look at: nothing can be exchanged.
constexpr int kNoExchange = -6;

/// The low byte of a hexadecimal number, 0 if `part` is none.
unsigned char parsedByte(QStringView part)
{
    return static_cast<unsigned char>(static_cast<unsigned>(part.toInt(nullptr, 16)) & 0xFFU);
}

/// The bytes of an answer: what stands between the blanks, whether it is a number or not.
QVector<unsigned char> parsedAnswer(QStringView answer)
{
    QVector<unsigned char> bytes;
    bytes.reserve(answer.size() / 3 + 1);
    // Nearly every answer has nothing but pairs of digits, and the general way is slow.
    while (answer.size() > 2 && answer[2] == u' ') {
        const int high = hexDigitValue(answer[0]);
        const int low = hexDigitValue(answer[1]);
        if (high < 0 || low < 0)
            break;
        bytes.append(static_cast<unsigned char>(high * 16 + low));
        answer = answer.mid(3);
    }
    for (const QStringView part : answer.tokenize(u' '))
        bytes.append(parsedByte(part));
    return bytes;
}

/// A command as a driver takes it. All characters come from single bytes, so none needs two units.
QVector<wchar_t> wideCommand(const QString& text)
{
    QVector<wchar_t> wide(text.size() + 1, L'\0');
    std::transform(text.cbegin(), text.cend(), wide.begin(),
                   [](QChar character) { return static_cast<wchar_t>(character.unicode()); });
    return wide;
}

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
    // Behind the last character of an odd number stands the zero that ends the string.
    const std::size_t pairs = (command.size() + 1) / 2;
    QString text(static_cast<qsizetype>(pairs) * 3, Qt::Uninitialized);
    QChar* next = text.data();
    for (std::size_t i = 0; i < 2 * pairs; i += 2) {
        *next++ = QLatin1Char(command.c_str()[i]);
        *next++ = QLatin1Char(command.c_str()[i + 1]);
        *next++ = u' ';
    }
    return sendCommandText(std::move(text).toUpper());
}

QVector<unsigned char> QLumFpax::sendCommandText(const QString& text)
{
    raiseError(driver()->setCommandBuffer(wideCommand(text).constData()));
    try {
        execMethod(&IFpax::execCommandBuffer);
    } catch (const Exception&) {
        if (getInt(&IFpax::getResultCode) == kNoExchange)
            throw;
    }
    return parsedAnswer(getBuff(&IFpax::getAnswerBuffer));
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
