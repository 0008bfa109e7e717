#include "device/exception.h"

Exception::Exception(const QString& text)
    : message(text)
{
}

Exception::Exception(const char* text)
    : message(QString::fromUtf8(text))
{
}

const char* Exception::what() const noexcept
{
    utf8 = message.toUtf8();
    return utf8.constData();
}

DeviceNotFoundException::DeviceNotFoundException()
    : Exception("Несуществующее устройство")
{
}
