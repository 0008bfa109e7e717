#include "device/clkrd9io.h"

#include "device/devicecodes.h"

using LUM::Fpax::IFpax;

namespace {

constexpr int kTextType = 1;

/// A device that refuses no row at all is not asked for ever.
constexpr int kLastFreeLine = 65535;

} // namespace

/// Opens the port and enters programming mode. Throws Exception.
void clKRD9IO::prepareTables()
{
    fpax().setInt(&IFpax::setDeviceEnabled, 1);
    enterDeviceMode(DeviceCode::kModeProgramming);
}

int clKRD9IO::readTable21(QStringList& lines)
{
    try {
        lines.clear();
        prepareTables();
        try {
            fpax().setInt(&IFpax::setTableNumber, DeviceCode::kFreeLineTable);
            for (int row = 1; row <= kLastFreeLine; ++row) {
                fpax().setInt(&IFpax::setRowNumber, row);
                fpax().setInt(&IFpax::setFieldNumber, DeviceCode::kFreeLineField);
                fpax().setInt(&IFpax::setFieldType, kTextType);
                if (fpax().execMethod(&IFpax::readTableField) < 0)
                    break;
                lines.append(fpax().getBuff(&IFpax::getCaption));
            }
        } catch (const Exception&) { // the row behind the last one
        }
        fpax().execMethod(&IFpax::resetMode);
    } catch (...) {
        return kDriverError;
    }
    return kDone;
}

int clKRD9IO::writeTable21(const QStringList& lines)
{
    constexpr int rowFailed = 1;
    try {
        prepareTables();
        try {
            fpax().setInt(&IFpax::setTableNumber, DeviceCode::kFreeLineTable);
            fpax().setInt(&IFpax::setFieldNumber, DeviceCode::kFreeLineField);
            for (int i = 1; i <= lines.size(); ++i) {
                fpax().setInt(&IFpax::setRowNumber, i);
                const QString& line = lines.at(i - 1);
                fpax().setText(&IFpax::setCaption, line.left(line.indexOf(QChar(u'\0'))));
                fpax().setInt(&IFpax::setFieldType, kTextType);
                fpax().execMethod(&IFpax::writeTableField);
            }
        } catch (const Exception&) {
            fpax().execMethod(&IFpax::resetMode);
            return rowFailed;
        }
    } catch (...) {
        return kDriverError;
    }
    return kDone;
}
