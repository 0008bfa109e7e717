#pragma once

#include "device/exception.h"

#include <QString>

#include <typeinfo>

/// The text of the Exception that comes out of `action`, a null string if none does.
template <typename Action>
QString thrownText(const Action& action)
{
    try {
        action();
    } catch (const Exception& error) {
        if (typeid(error) == typeid(Exception))
            return error.whatQString();
        return QStringLiteral("an exception of another type: ") + error.whatQString();
    }
    return {};
}
