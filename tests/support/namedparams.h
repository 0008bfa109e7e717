#pragma once

#include "model/bd_t20items.h"

namespace records {

using T20Item = BD_T20Items::T20Item;
using Param = int T20Item::*;

/// A device parameter by its name.
struct NamedParam
{
    const char* name;
    Param param;
};

/// The parameters 1 to 19 in the device's order.
inline constexpr NamedParam kParams[] = {
    {"Block", &T20Item::Block},
    {"Font", &T20Item::Font},
    {"X2X", &T20Item::X2X},
    {"X2Y", &T20Item::X2Y},
    {"PoleFlags", &T20Item::PoleFlags},
    {"LineGap", &T20Item::LineGap},
    {"Line", &T20Item::Line},
    {"X", &T20Item::X},
    {"Size", &T20Item::Size},
    {"DropIfZero", &T20Item::DropIfZero},
    {"PressRight", &T20Item::PressRight},
    {"Expand", &T20Item::Expand},
    {"CutToWidth", &T20Item::CutToWidth},
    {"MaskMode", &T20Item::MaskMode},
    {"FractFormat", &T20Item::FractFormat},
    {"Brightness", &T20Item::Brightness},
    {"AlignInPole", &T20Item::AlignInPole},
    {"AlignOnTape", &T20Item::AlignOnTape},
    {"TailChar", &T20Item::TailChar},
};

} // namespace records
