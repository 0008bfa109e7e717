#include "emulator/jsonread.h"

#include <cmath>

namespace emulator {

void readInt(const QJsonObject& object, const QString& key, int least, int greatest, int& target)
{
    const QJsonValue value = object.value(key);
    if (!value.isDouble())
        return;
    const double number = value.toDouble();
    if (number >= least && number <= greatest && std::floor(number) == number)
        target = static_cast<int>(number);
}

void readBool(const QJsonObject& object, const QString& key, bool& target)
{
    const QJsonValue value = object.value(key);
    if (value.isBool())
        target = value.toBool();
}

void readText(const QJsonObject& object, const QString& key, QString& target)
{
    const QJsonValue value = object.value(key);
    if (value.isString())
        target = value.toString();
}

} // namespace emulator
