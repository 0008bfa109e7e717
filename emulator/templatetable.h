#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>

namespace emulator {

/// Parameters of a field, as the device numbers them.
enum class Param : int {
    Block = 1,
    Font,
    DoubleWidth,
    DoubleHeight,
    Flags,
    LineGap,
    Line,
    X,
    Size,
    DropIfZero,
    PressRight,
    Expand,
    CutToWidth,
    MaskMode,
    FractFormat,
    Brightness,
    AlignInField,
    AlignOnTape,
    TailChar
};

constexpr int kParamCount = 19;

/// Values of the alignment parameters.
constexpr int kCentre = 2;
constexpr int kRight = 3;

/// The tail character that is a blank.
constexpr int kBlank = 32;

/// Width of a parameter in bits, 0 for a number that is none.
int paramBits(int param);

/// One row of table 20: a field with its parameters, and its head.
struct TemplateRow
{
    /// One byte for each parameter.
    QByteArray params;
    QString name;
    /// Little-endian mask of the blocks that the field may stand in; the device stores it with 0 to 4 bytes.
    QByteArray mask;

    /// Value of a parameter; 0 for one that the row lacks.
    int value(Param param) const;
    void set(Param param, int value);
    bool isPlaced() const { return value(Param::Size) > 0; }

    bool operator==(const TemplateRow&) const = default;
};

using SubTable = QList<TemplateRow>;
/// Templates by their number.
using TemplateTable = QMap<int, SubTable>;

QJsonObject templateTableToJson(const TemplateTable& table);
/// Sub-tables that are not described well are left out.
TemplateTable templateTableFromJson(const QJsonObject& object);

} // namespace emulator
