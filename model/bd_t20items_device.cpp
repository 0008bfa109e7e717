#include "model/bd_t20items.h"

#include "device/batostring.h"
#include "device/tlvrecord.h"

#include <array>

namespace {

using T20Item = BD_T20Items::T20Item;

/// Widths of the parameters in bits, in the device's order.
constexpr std::array<unsigned short, 19> kParamBits = {8, 4, 1, 1, 2, 8, 8, 8, 8, 1,
                                                       1, 1, 1, 2, 2, 4, 2, 2, 8};

constexpr unsigned short kParamLength = 14; // bytes

unsigned char lowByte(unsigned short value)
{
    return static_cast<unsigned char>(value & 0xFF);
}

} // namespace

int BD_T20Items::SaveAsJsonV01(Json::Value& out, int subTable)
{
    const int count = static_cast<int>(items.size());
    if (count == 0)
        return 1;
    for (int key = 1; key <= count; ++key) {
        const auto save = [&](int first, int last, const QString& params) {
            const QString start =
                getStartStr(static_cast<unsigned short>(first), static_cast<unsigned short>(last),
                            static_cast<unsigned short>(key - 1),
                            static_cast<unsigned short>((last - first + 1) * kParamLength));
            SaveAsJsonV01SaveRecord(out, TlvRecord::kTemplateTable, subTable, key, first, last,
                                    start + params);
        };
        save(1, 6, getParamsStr0106(key));
        save(7, 12, getParamsStr0712(key));
        save(13, 18, getParamsStr1318(key));
        save(19, 19, getParamsStr1919(key));
    }
    return 0;
}

void BD_T20Items::SaveAsJsonV01SaveRecord(Json::Value& out, int t, int s, int r, int p1, int p2,
                                          const QString& v)
{
    out.append(TlvRecord{t, s, r, p1, p2, v}.toJson());
}

QString BD_T20Items::getStartStr(unsigned short first, unsigned short last, unsigned short row,
                                 unsigned short length)
{
    return baToString({lowByte(first), lowByte(last), lowByte(row), 0, lowByte(length), 0}, QString());
}

QString BD_T20Items::getStdParamStr(unsigned short tag, unsigned short bits, unsigned short value)
{
    constexpr unsigned char restLength = 10;
    return baToString({lowByte(tag), 0, restLength, 0, 1, 0, 1, 0, lowByte(bits), 2, 0, 1, 0, lowByte(value)},
                      QString());
}

QString BD_T20Items::getParamsStr0106(int key)
{
    return paramsText(key, 1, 6);
}

QString BD_T20Items::getParamsStr0712(int key)
{
    return paramsText(key, 7, 12);
}

QString BD_T20Items::getParamsStr1318(int key)
{
    return paramsText(key, 13, 18);
}

QString BD_T20Items::getParamsStr1919(int key)
{
    return paramsText(key, 19, 19);
}

/// The parameters `first` to `last` of the field, one after the other.
QString BD_T20Items::paramsText(int key, std::size_t first, std::size_t last)
{
    const T20Item& item = getPoleByKey(key);
    QString text;
    for (std::size_t param = first; param <= last; ++param) {
        const int value = item.*T20Item::kDeviceParams.at(param - 1);
        text += getStdParamStr(static_cast<unsigned short>(param), kParamBits.at(param - 1),
                               static_cast<unsigned short>(value));
    }
    return text;
}
