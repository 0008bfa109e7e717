#include "model/bd_t20items.h"

namespace {

using T20Item = BD_T20Items::T20Item;

} // namespace

const std::array<int T20Item::*, 19> T20Item::kDeviceParams = {
    &T20Item::Block,       &T20Item::Font,        &T20Item::X2X,         &T20Item::X2Y,
    &T20Item::PoleFlags,   &T20Item::LineGap,     &T20Item::Line,        &T20Item::X,
    &T20Item::Size,        &T20Item::DropIfZero,  &T20Item::PressRight,  &T20Item::Expand,
    &T20Item::CutToWidth,  &T20Item::MaskMode,    &T20Item::FractFormat, &T20Item::Brightness,
    &T20Item::AlignInPole, &T20Item::AlignOnTape, &T20Item::TailChar,
};

void T20Item::InitWithDefValues(int type)
{
    Type = type;
}

void T20Item::Clear()
{
    Desc = QString();
    DescView = QString();
    FA_NEED = false;
    BL_MASK = 0xff;
    Type = 0;
    Line = 0;
    X = 0;
    Size = 0;
}

void T20Item::ClearToUndef()
{
    Desc = QString();
    DescView = QString();
    FA_NEED = false;
    BL_MASK = 0xffffffff;
    Type = -1;
    for (const auto param : kDeviceParams) {
        if (param != &T20Item::Block)
            this->*param = -1;
    }
}

void T20Item::makeDescViewFromDesc()
{
    const auto colon = Desc.indexOf(u':');
    if (colon < 0)
        DescView = Desc;
    else
        DescView = QStringView(Desc).left(1) + u'.' + QStringView(Desc).mid(colon);
}

QString T20Item::getPoleClass() const
{
    const auto colon = Desc.indexOf(u':');
    return colon < 0 ? QString() : Desc.left(colon);
}
