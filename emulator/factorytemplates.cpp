#include "emulator/factorytemplates.h"

#include "emulator/fieldnames.h"

#include <array>

namespace emulator {

namespace {

constexpr int kWideTape = 48;
constexpr int kNarrowTape = 32;
constexpr int kFontNormal = 1;
constexpr int kFontSmall = 6;
constexpr int kNormalBrightness = 8;
constexpr quint32 kAnyBlock = 0x3FF;

enum Style : unsigned { Plain = 0, Bold = 1, Centred = 2, AtRight = 4, DropEmpty = 8, Cut = 16, Small = 32 };

/// Where a field stands. A negative `x` counts from the right end of the tape; a `size` of 0 takes what is left.
struct Place
{
    int key = 0;
    int block = 0;
    int line = 0;
    int x = 0;
    int size = 0;
    unsigned style = Plain;
};

constexpr std::array kPlaces{
    // Head of the receipt.
    Place{1, 0, 1, 0, 0, Bold | Centred}, Place{2, 0, 2, 0, 0, Centred}, Place{3, 0, 3, 0, 0, Centred},
    Place{78, 0, 5, 0, 14}, Place{113, 0, 5, -14, 4}, Place{114, 0, 5, -9, 9, AtRight},
    // A position.
    Place{10, 1, 1, 0, 3, AtRight}, Place{12, 1, 1, 4, 0}, Place{16, 1, 2, 4, 9, AtRight},
    Place{15, 1, 2, 14, 1}, Place{14, 1, 2, -16, 8, AtRight}, Place{18, 1, 2, -8, 1},
    Place{19, 1, 2, -7, 7, AtRight}, Place{28, 1, 3, 4, 10, Cut}, Place{31, 1, 3, -8, 1},
    Place{32, 1, 3, -7, 7, AtRight | DropEmpty}, Place{33, 1, 4, 4, 12, Cut},
    Place{34, 1, 4, -14, 14, AtRight},
    // Before the total.
    Place{35, 2, 1, 0, 12}, Place{36, 2, 1, -12, 1}, Place{37, 2, 1, -11, 11, AtRight},
    Place{38, 2, 2, 0, 12}, Place{39, 2, 2, -12, 1}, Place{40, 2, 2, -11, 11, AtRight | DropEmpty},
    // The total.
    Place{41, 3, 1, 0, 5, Bold}, Place{42, 3, 1, 5, 1}, Place{43, 3, 1, 6, 9, AtRight},
    // Taxes, a line each.
    Place{44, 4, 1, 0, 2}, Place{45, 4, 1, 3, 14}, Place{46, 4, 1, -12, 1}, Place{47, 4, 1, -11, 11, AtRight},
    Place{48, 4, 2, 0, 2}, Place{49, 4, 2, 3, 14}, Place{50, 4, 2, -12, 1}, Place{51, 4, 2, -11, 11, AtRight},
    Place{52, 4, 3, 0, 2}, Place{53, 4, 3, 3, 14}, Place{54, 4, 3, -12, 1}, Place{55, 4, 3, -11, 11, AtRight},
    Place{56, 4, 4, 0, 2}, Place{57, 4, 4, 3, 14}, Place{58, 4, 4, -12, 1}, Place{59, 4, 4, -11, 11, AtRight},
    Place{60, 4, 5, 0, 2}, Place{61, 4, 5, 3, 14}, Place{62, 4, 5, -12, 1}, Place{63, 4, 5, -11, 11, AtRight},
    Place{64, 4, 6, 0, 2}, Place{65, 4, 6, 3, 14}, Place{66, 4, 6, -12, 1}, Place{67, 4, 6, -11, 11, AtRight},
    // Payment.
    Place{128, 5, 1, 0, 14}, Place{129, 5, 1, -12, 1}, Place{130, 5, 1, -11, 11, AtRight | DropEmpty},
    Place{131, 5, 2, 0, 14}, Place{132, 5, 2, -12, 1}, Place{133, 5, 2, -11, 11, AtRight | DropEmpty},
    Place{68, 5, 3, 0, 14}, Place{69, 5, 3, -12, 1}, Place{70, 5, 3, -11, 11, AtRight},
    Place{75, 5, 4, 0, 14}, Place{76, 5, 4, -12, 1}, Place{77, 5, 4, -11, 11, AtRight | DropEmpty},
    // Foot of the receipt.
    Place{81, 6, 1, 0, 8}, Place{82, 6, 1, 9, 0}, Place{85, 6, 2, 0, 13}, Place{86, 6, 2, 13, 0},
    Place{87, 6, 3, 0, 0, Small}, Place{88, 6, 4, 0, 0, Small}, Place{101, 6, 5, 0, 0, Small},
    Place{102, 6, 6, 0, 0, Small}, Place{89, 6, 7, 0, 0}, Place{90, 6, 8, 0, 0}, Place{91, 6, 9, 0, 0},
    Place{92, 6, 10, 0, 0}, Place{93, 6, 11, 0, 12}, Place{94, 6, 11, 13, 0}, Place{103, 6, 12, 0, 0},
    Place{104, 6, 13, 0, 0}, Place{105, 6, 14, 0, 0}, Place{106, 6, 15, 0, 0}, Place{107, 6, 16, 0, 0},
    Place{108, 6, 17, 0, 0}, Place{109, 6, 18, 0, 0}, Place{110, 6, 19, 0, 0}, Place{127, 6, 20, 0, 0},
    Place{134, 6, 21, 0, 0}, Place{4, 6, 22, 0, 0, Centred},
    // The fiscal block.
    Place{125, 7, 1, 0, 5}, Place{126, 7, 1, -16, 16, AtRight}, Place{95, 7, 2, 0, 3}, Place{96, 7, 2, 4, 14},
    Place{111, 7, 2, -12, 6}, Place{112, 7, 2, -5, 5, AtRight}, Place{97, 7, 3, 0, 4}, Place{98, 7, 3, 5, 12},
    Place{99, 7, 3, -10, 4}, Place{100, 7, 3, -5, 5, AtRight}, Place{117, 7, 4, 0, 4},
    Place{118, 7, 4, -16, 16, AtRight}, Place{119, 7, 5, 0, 3}, Place{120, 7, 5, -16, 16, AtRight},
    Place{121, 7, 6, 0, 3}, Place{122, 7, 6, 4, 8}, Place{123, 7, 6, -15, 4},
    Place{124, 7, 6, -10, 10, AtRight}, Place{115, 7, 7, 0, 9}, Place{116, 7, 7, 10, 0},
    Place{159, 7, 9, 0, 0, Centred},
    // An annulled receipt, and payments taken back.
    Place{158, 8, 1, 0, 0, Bold | Centred}, Place{71, 9, 1, 0, 14}, Place{72, 9, 1, 15, 4},
    Place{73, 9, 1, -12, 1}, Place{74, 9, 1, -11, 11, AtRight}};

TemplateRow blankRow(const QString& name)
{
    TemplateRow row{QByteArray(kParamCount, '\0'), name, {}};
    row.set(Param::Font, kFontNormal);
    row.set(Param::Line, 1);
    row.set(Param::Brightness, kNormalBrightness);
    row.set(Param::AlignInField, 1);
    row.set(Param::AlignOnTape, 1);
    row.set(Param::TailChar, kBlank);
    return row;
}

void place(TemplateRow& row, const Place& place, int tape)
{
    const bool bold = (place.style & Bold) != 0;
    const int cells = bold ? tape / 2 : tape;
    const int x = place.x < 0 ? cells + place.x : place.x;
    row.set(Param::Block, place.block);
    row.set(Param::Line, place.line);
    row.set(Param::X, x);
    row.set(Param::Size, place.size == 0 ? cells - x : place.size);
    row.set(Param::DoubleWidth, bold ? 1 : 0);
    row.set(Param::DoubleHeight, bold ? 1 : 0);
    if ((place.style & Small) != 0)
        row.set(Param::Font, kFontSmall);
    if ((place.style & Centred) != 0) {
        row.set(Param::AlignInField, kCentre);
        row.set(Param::AlignOnTape, kCentre);
    }
    if ((place.style & AtRight) != 0) {
        row.set(Param::AlignInField, kRight);
        row.set(Param::PressRight, 1);
    }
    row.set(Param::DropIfZero, (place.style & DropEmpty) != 0 ? 1 : 0);
    row.set(Param::CutToWidth, (place.style & Cut) != 0 ? 1 : 0);
}

bool isMandatory(int key)
{
    return key == 12 || key == 16 || key == 19 || (key >= 33 && key <= 70) || (key >= 75 && key <= 78) ||
           key == 81 || key == 82 || (key >= 85 && key <= 126) || (key >= 129 && key <= 134);
}

quint32 blocksOf(int key)
{
    if (key >= 10 && key <= 34)
        return 1U << 1;
    if (key >= 71 && key <= 74)
        return 1U << 9;
    if (key == 158)
        return 1U << 8;
    if (key >= 35 && key <= 70)
        return 0x3EU;
    return kAnyBlock;
}

QByteArray maskBytes(quint32 mask, int count)
{
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
        bytes.append(static_cast<char>(mask >> (8 * i) & 0xFF));
    return bytes;
}

// Mandatory fields have a mask of four bytes, that is how a reader knows them. The others have as many as their
// blocks need, and the user's own fields one more.
QByteArray maskOf(int key)
{
    const quint32 blocks = blocksOf(key);
    if (isMandatory(key))
        return maskBytes(blocks, 4);
    if (blocks <= 0xFF)
        return maskBytes(blocks, 1);
    return maskBytes(blocks, key >= 135 && key <= 157 ? 3 : 2);
}

SubTable factoryTemplate(int tape)
{
    const QStringList names = fieldNames();
    SubTable rows;
    for (qsizetype i = 0; i < names.size(); ++i) {
        rows.append(blankRow(names[i]));
        rows.last().mask = maskOf(static_cast<int>(i) + 1);
    }
    for (const Place& field : kPlaces)
        place(rows[field.key - 1], field, tape);
    return rows;
}

} // namespace

TemplateTable factoryTemplates()
{
    SubTable narrow = factoryTemplate(kNarrowTape);
    // The narrow printer has no pictures: the field is there, and no block takes it.
    narrow.last().mask.clear();
    return {{1, factoryTemplate(kWideTape)}, {2, narrow}};
}

QStringList factoryFreeLines()
{
    return {"Добро пожаловать!", "Мы рады вас видеть", "Спасибо за покупку", "", "", "", "", ""};
}

} // namespace emulator
