#pragma once

#include "device/exception.h"

#include <QFuture>
#include <QObject>
#include <QString>
#include <QVector>

#include <algorithm>
#include <cwchar>

/// Calls the functions of a driver interface `T` and turns their style into ours: a missing driver and a bad
/// status become exceptions, text moves between QString and wide buffers. The driver is not owned and may be null.
///
/// Every operation throws DeviceNotFoundException, and calls nothing, if there is no driver.
template <typename T>
class QLumInterface
{
public:
    QLumInterface() = default;
    explicit QLumInterface(T* driver)
        : iface(driver)
    {
    }
    virtual ~QLumInterface() = default;
    Q_DISABLE_COPY_MOVE(QLumInterface)

    /// Capacity of the first buffer for a text, in characters.
    virtual int defaultBufferSize() const { return 1024; }

    T* driver() const
    {
        if (!iface)
            throw DeviceNotFoundException();
        return iface;
    }

    /// The number that `get` fills in, 0 if it does not; the status is ignored.
    int getInt(int (T::*get)(int*))
    {
        int value = 0;
        (driver()->*get)(&value);
        return value;
    }

    int setInt(int (T::*set)(int), int value) { return raiseError((driver()->*set)(value)); }
    int setBool(int (T::*set)(int), bool value) { return setInt(set, value ? 1 : 0); }
    int setDouble(int (T::*set)(double), double value) { return raiseError((driver()->*set)(value)); }
    int setText(int (T::*set)(const wchar_t*), const QString& text)
    {
        return raiseError((driver()->*set)(toWide(text).constData()));
    }
    int execMethod(int (T::*method)()) { return raiseError((driver()->*method)()); }

    /// The text that `get` gives, of any length; empty if there is nothing to read.
    QString getBuff(int (T::*get)(wchar_t*, int))
    {
        return readText(
            [this, get](wchar_t* buffer, int capacity) { return (driver()->*get)(buffer, capacity); });
    }

    QString getSetting(const QString& name)
    {
        const QVector<wchar_t> wideName = toWide(name);
        return readText([this, &wideName](wchar_t* buffer, int capacity) {
            return driver()->getSingleSetting(wideName.constData(), buffer, capacity);
        });
    }

    QString getMapping(const QString& name)
    {
        const QVector<wchar_t> wideName = toWide(name);
        return readText([this, &wideName](wchar_t* buffer, int capacity) {
            return driver()->getSingleMapping(wideName.constData(), buffer, capacity);
        });
    }

    void setSetting(const QString& name, const QString& value)
    {
        raiseError(driver()->setSingleSetting(toWide(name).constData(), toWide(value).constData()));
    }
    void setSetting(const QString& name, int value) { setSetting(name, QString::number(value)); }
    /// `value` is UTF-8.
    void setSetting(const QString& name, const char* value) { setSetting(name, QString::fromUtf8(value)); }

    /// Gives `status` back unless it is negative and the driver also reports a result code: then throws an
    /// Exception with the driver's words.
    int raiseError(int status)
    {
        T* const source = driver();
        return status >= 0 ? status : raiseFailure(source, status);
    }

    /// A text as a driver takes it: wide characters with a zero at the end.
    static QVector<wchar_t> toWide(const QString& text)
    {
        QVector<wchar_t> wide(text.size() + 1, L'\0');
        text.toWCharArray(wide.data());
        return wide;
    }

private:
    int raiseFailure(T* source, int status)
    {
        int code = 0;
        source->getResultCode(&code);
        if (code == 0)
            return status;
        const QString message =
            QObject::tr("[%1] %2").arg(QString::number(code), getBuff(&T::getResultDescription));
        QString badParam;
        if (getInt(&T::getBadParam) != 0)
            badParam = QObject::tr("%1").arg(getBuff(&T::getBadParamDescription));
        if (badParam.isEmpty())
            throw Exception(message);
        throw Exception(QObject::tr("%1 (%2)").arg(message, badParam));
    }

    /// More than any driver has to say: an answer that asks for a longer buffer is no text.
    static constexpr int kLongestText = 1 << 24;

    /// `read` fills a buffer of the given capacity and tells the length that it needs.
    template <typename Read>
    QString readText(Read read)
    {
        int capacity = defaultBufferSize();
        // One zero more than the driver knows of: a text that fills the whole buffer ends there.
        QVector<wchar_t> buffer(capacity + 1, L'\0');
        const int length = read(buffer.data(), capacity);
        if (length <= 0 || length > kLongestText)
            return {};
        if (length > capacity) {
            capacity = length + 1;
            buffer = QVector<wchar_t>(capacity + 1, L'\0');
            read(buffer.data(), capacity);
        }
        return fromWide(buffer.constData());
    }

    /// QString::fromWCharArray() for a whole text; the usual one has only ASCII in it, which goes several times faster.
    static QString fromWide(const wchar_t* wide)
    {
        const auto length = static_cast<qsizetype>(std::wcslen(wide));
        if (!std::all_of(wide, wide + length,
                         [](wchar_t character) { return character > 0 && character < 0x80; }))
            return QString::fromWCharArray(wide, length);
        QString text(length, Qt::Uninitialized);
        std::transform(wide, wide + length, text.data(),
                       [](wchar_t character) { return QChar(static_cast<char16_t>(character)); });
        return text;
    }

    T* iface = nullptr;
    QFuture<int> future; ///< kept for calls in the background, of which there are none
};
