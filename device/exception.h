#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

/// What the device layer throws: a message for the user.
class Exception : public std::exception
{
public:
    explicit Exception(const QString& text);
    /// `text` is UTF-8.
    explicit Exception(const char* text);

    /// The message in UTF-8; valid until the next call.
    const char* what() const noexcept override;
    const QString& whatQString() const { return message; }

private:
    QString message;
    mutable QByteArray utf8;
};

/// There is no driver to talk to.
class DeviceNotFoundException : public Exception
{
public:
    DeviceNotFoundException();
};
