#include "editing/propertyrows.h"

namespace {

using T20Item = BD_T20Items::T20Item;
using Texts = MainWindow::glData;
using Editor = PropertyRow::Editor;

constexpr PropertyRow number(const char* name, int minimum, int maximum, int T20Item::*param)
{
    return {name, Editor::Number, minimum, maximum, nullptr, param, -1};
}

constexpr PropertyRow list(const char* name, Editor editor, QMap<int, QString> Texts::*texts,
                           int T20Item::*param, int bit = -1)
{
    return {name, editor, 0, 0, texts, param, bit};
}

constexpr PropertyRow yesNo(const char* name, int T20Item::*param, int bit = -1)
{
    return list(name, Editor::ListOneAbove, &Texts::yesNo, param, bit);
}

constexpr PropertyRow kPositionRows[] = {
    list(QT_TRANSLATE_NOOP("MainWindow", "Блок"), Editor::List, &Texts::blockTitles, &T20Item::Block),
    number(QT_TRANSLATE_NOOP("MainWindow", "Строка в блоке"), 1, 99, &T20Item::Line),
    number(QT_TRANSLATE_NOOP("MainWindow", "Позиция в строке"), 0, 99, &T20Item::X),
    number(QT_TRANSLATE_NOOP("MainWindow", "Размер поля (знаков)"), 0, 255, &T20Item::Size),
    list(QT_TRANSLATE_NOOP("MainWindow", "По ширине ленты"), Editor::List, &Texts::alignNames,
         &T20Item::AlignOnTape),
    list(QT_TRANSLATE_NOOP("MainWindow", "Внутри поля"), Editor::List, &Texts::alignNames,
         &T20Item::AlignInPole),
    yesNo(QT_TRANSLATE_NOOP("MainWindow", "Прижать вправо"), &T20Item::PressRight),
    yesNo(QT_TRANSLATE_NOOP("MainWindow", "Расширить поле"), &T20Item::Expand),
    yesNo(QT_TRANSLATE_NOOP("MainWindow", "Обрезать по ширине"), &T20Item::CutToWidth),
    list(QT_TRANSLATE_NOOP("MainWindow", "Маскирование"), Editor::List, &Texts::maskModes,
         &T20Item::MaskMode),
    yesNo(QT_TRANSLATE_NOOP("MainWindow", "Убрать строку, если 0"), &T20Item::DropIfZero),
    yesNo(QT_TRANSLATE_NOOP("MainWindow", "Таблица строк"), &T20Item::PoleFlags, 0),
};

constexpr PropertyRow kViewRows[] = {
    number(QT_TRANSLATE_NOOP("MainWindow", "Шрифт"), 0, 7, &T20Item::Font),
    yesNo(QT_TRANSLATE_NOOP("MainWindow", "Двойная ширина"), &T20Item::X2X),
    yesNo(QT_TRANSLATE_NOOP("MainWindow", "Двойная высота"), &T20Item::X2Y),
    number(QT_TRANSLATE_NOOP("MainWindow", "Межстрочный интервал"), 0, 15, &T20Item::LineGap),
    number(QT_TRANSLATE_NOOP("MainWindow", "Яркость"), 0, 15, &T20Item::Brightness),
    list(QT_TRANSLATE_NOOP("MainWindow", "Формат дробных чисел"), Editor::ListKeyOfAbove,
         &Texts::numberFormats, &T20Item::FractFormat),
    {QT_TRANSLATE_NOOP("MainWindow", "Символ после поля"), Editor::Character, 32, 255, nullptr,
     &T20Item::TailChar, -1},
    yesNo(QT_TRANSLATE_NOOP("MainWindow", "Символ в начале поля"), &T20Item::PoleFlags, 1),
};

} // namespace

int PropertyRow::valueOf(const T20Item& item) const
{
    return bit < 0 ? item.*param : (item.*param >> bit) & 1;
}

void PropertyRow::store(T20Item& item, int value) const
{
    if (bit < 0) {
        item.*param = value;
        return;
    }
    const int mask = 1 << bit;
    item.*param = (item.*param & 0xff & ~mask) | ((value & 1) << bit);
}

std::span<const PropertyRow> positionRows()
{
    return kPositionRows;
}

std::span<const PropertyRow> viewRows()
{
    return kViewRows;
}
