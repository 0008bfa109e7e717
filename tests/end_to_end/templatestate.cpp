#include "templatestate.h"

#include "support/expectedscene.h"

#include <algorithm>

namespace {

using Field = BD_T20Items::T20Item;

constexpr int kLastLine = 255;
constexpr int kLastPosition = 255;
constexpr int kSearchEnd = 100;

enum class Shown { Number, Block, YesNo, Align, Format, Mask, Character };

/// A row of the property table.
struct Row
{
    const char* name;
    int Field::*property;
    Shown shown;
    bool isRedraw;
    int bit = -1;
};

enum PositionRow { BlockRow, LineRow, XRow, SizeRow };

constexpr Row kPositions[] = {
    {"Блок", &Field::Block, Shown::Block, true},
    {"Строка в блоке", &Field::Line, Shown::Number, true},
    {"Позиция в строке", &Field::X, Shown::Number, true},
    {"Размер поля (знаков)", &Field::Size, Shown::Number, true},
    {"По ширине ленты", &Field::AlignOnTape, Shown::Align, false},
    {"Внутри поля", &Field::AlignInPole, Shown::Align, false},
    {"Прижать вправо", &Field::PressRight, Shown::YesNo, false},
    {"Расширить поле", &Field::Expand, Shown::YesNo, false},
    {"Обрезать по ширине", &Field::CutToWidth, Shown::YesNo, false},
    {"Маскирование", &Field::MaskMode, Shown::Mask, false},
    {"Убрать строку, если 0", &Field::DropIfZero, Shown::YesNo, false},
    {"Таблица строк", &Field::PoleFlags, Shown::YesNo, false, 0},
};

constexpr Row kView[] = {
    {"Шрифт", &Field::Font, Shown::Number, true},
    {"Двойная ширина", &Field::X2X, Shown::YesNo, true},
    {"Двойная высота", &Field::X2Y, Shown::YesNo, true},
    {"Межстрочный интервал", &Field::LineGap, Shown::Number, true},
    {"Яркость", &Field::Brightness, Shown::Number, false},
    {"Формат дробных чисел", &Field::FractFormat, Shown::Format, false},
    {"Символ после поля", &Field::TailChar, Shown::Character, true},
    {"Символ в начале поля", &Field::PoleFlags, Shown::YesNo, false, 1},
};

const Row& rowAt(bool isPositions, int row)
{
    return isPositions ? kPositions[row] : kView[row];
}

bool isTaken(const TemplateState& state, int block, int line, int x)
{
    return std::any_of(state.fields.cbegin(), state.fields.cend(), [=](const auto& entry) {
        const Field& field = entry.second;
        return field.Size > 0 && field.Block == block && field.Line == line && field.X == x;
    });
}

/// Moves the fields of `block` from `line` on by `step` lines.
void shiftFields(TemplateState& state, int block, int line, int step)
{
    for (auto& [key, field] : state.fields) {
        if (field.Size > 0 && field.Block == block && field.Line >= line)
            field.Line += step;
    }
    state.lines[block] += step;
}

Consequence refused(const TemplateState& before, const QString& text)
{
    return {before, {text}, false};
}

Consequence afterBlock(const TemplateState& before, int key, int block)
{
    const Field& field = before.fields.at(key);
    if (((field.BL_MASK >> block) & 1U) == 0)
        return refused(before, QStringLiteral("Поле не может находиться в данном блоке!"));
    if (field.Line >= before.lines.at(block))
        return refused(before, QStringLiteral("Нет такой строки в новом блоке!"));
    Consequence after{before, {}, true};
    Field& moved = after.state.fields[key];
    if (isTaken(before, block, field.Line, field.X)) {
        int x = field.X + 1;
        while (x < kSearchEnd && isTaken(before, block, field.Line, x))
            ++x;
        if (x == kSearchEnd || x > kLastPosition)
            return refused(before, QStringLiteral("Ячейка уже занята!"));
        moved.X = x;
        after.boxes.append(QStringLiteral("Ячейка в новом блоке занята - поле помещено в ячейку %1!").arg(x));
    }
    moved.Block = block;
    return after;
}

/// Why the row refuses the number; empty if it takes it.
QString refusalOf(const TemplateState& before, const CellEntry& entry)
{
    const Field& field = before.fields.at(entry.key);
    const QString noLine = QStringLiteral("Нет такой строки!");
    const QString taken = QStringLiteral("Ячейка уже занята!");
    switch (entry.row) {
    case LineRow:
        if (entry.number >= before.lines.at(field.Block))
            return noLine;
        return isTaken(before, field.Block, entry.number, field.X) ? taken : QString();
    case XRow:
        return isTaken(before, field.Block, field.Line, entry.number) ? taken : QString();
    case SizeRow:
        if (field.Line >= before.lines.at(field.Block))
            return noLine;
        return field.Size == 0 && isTaken(before, field.Block, field.Line, field.X) ? taken : QString();
    default:
        return {};
    }
}

QString characterOf(int code)
{
    constexpr int kFirstMiddle = 0x80;
    constexpr int kFirstLetter = 0xc0;
    constexpr int kCodeWithoutCharacter = 0x98;
    static const QString middle =
        QStringLiteral("ЂЃ‚ѓ„…†‡€‰Љ‹ЊЌЋЏђ‘’“”•–— ™љ›њќћџ\u00a0ЎўЈ¤Ґ¦§Ё©Є«¬\u00ad®Ї°±Ііґµ¶·ё№є»јЅѕї");
    if (code == kCodeWithoutCharacter)
        return {};
    if (code >= kFirstLetter)
        return QChar(0x410 + code - kFirstLetter);
    return code < kFirstMiddle ? QChar(code) : middle.at(code - kFirstMiddle);
}

} // namespace

Consequence afterEntry(const TemplateState& before, const CellEntry& entry)
{
    const Row& row = rowAt(entry.isPositions, entry.row);
    if (!before.fields.contains(entry.key) || !entry.isChoice ||
        entry.number == shownNumber(before.fields.at(entry.key), entry.isPositions, entry.row))
        return {before, {}, false};
    if (entry.isPositions && entry.row == BlockRow)
        return afterBlock(before, entry.key, entry.number);
    const QString refusal = entry.isPositions ? refusalOf(before, entry) : QString();
    if (!refusal.isEmpty())
        return refused(before, refusal);
    // A position on the tape moves its picture and redraws nothing.
    const bool isMoved = entry.isPositions && entry.row == XRow && entry.isOnTape;
    Consequence after{before, {}, row.isRedraw && !isMoved};
    int& value = after.state.fields[entry.key].*row.property;
    if (row.bit < 0)
        value = entry.number;
    else
        value = (value & ~(1 << row.bit)) | (entry.number << row.bit);
    return after;
}

Consequence afterLineAdded(const TemplateState& before, int block, int line)
{
    const bool isFull = std::any_of(before.fields.cbegin(), before.fields.cend(), [=](const auto& entry) {
        const Field& field = entry.second;
        return field.Size > 0 && field.Block == block && field.Line >= std::max(line, kLastLine);
    });
    Consequence after{before, {}, !isFull};
    if (!isFull)
        shiftFields(after.state, block, line, 1);
    return after;
}

Consequence afterLineDeleted(const TemplateState& before, int block, int line)
{
    const bool isUsed = std::any_of(before.fields.cbegin(), before.fields.cend(), [=](const auto& entry) {
        const Field& field = entry.second;
        return field.Size > 0 && field.Block == block && field.Line == line;
    });
    if (isUsed)
        return refused(before, QStringLiteral("Строка не пустая!\nНельзя удалить."));
    Consequence after{before, {}, true};
    shiftFields(after.state, block, line + 1, -1);
    return after;
}

Consequence afterFieldDeleted(const TemplateState& before, int key)
{
    const bool isNeeded = before.fields.at(key).FA_NEED;
    Consequence after{before, {}, !isNeeded};
    if (!isNeeded)
        after.state.fields[key].Size = 0;
    return after;
}

Consequence afterReopening(const TemplateState& before)
{
    Consequence after{before, {}, true};
    after.state.lines.fill(1);
    for (const auto& [key, field] : before.fields) {
        int& lines = after.state.lines[field.Block];
        if (field.Size > 0)
            lines = std::max(lines, field.Line + 1);
    }
    return after;
}

QString differenceOf(const TemplateState& expected, const TemplateState& found)
{
    if (expected.lines != found.lines) {
        QStringList texts;
        for (const auto& lines : {expected.lines, found.lines}) {
            for (const int count : lines)
                texts.append(QString::number(count));
            texts.append(QStringLiteral("|"));
        }
        return QStringLiteral("lines of the blocks, expected and found: ") + texts.join(u' ');
    }
    if (expected.fields.size() != found.fields.size())
        return QStringLiteral("%1 fields, not %2").arg(found.fields.size()).arg(expected.fields.size());
    for (const auto& [key, is] : found.fields) {
        const auto shall = expected.fields.find(key);
        if (shall == expected.fields.cend())
            return QStringLiteral("no field %1").arg(key);
        const Field& other = shall->second;
        int number = 0;
        for (const auto param : Field::kDeviceParams) {
            ++number;
            if (is.*param != other.*param)
                return QStringLiteral("field %1: parameter %2 is %3, not %4")
                    .arg(key)
                    .arg(number)
                    .arg(is.*param)
                    .arg(other.*param);
        }
        if (is.FA_NEED != other.FA_NEED || is.BL_MASK != other.BL_MASK || is.Type != other.Type ||
            is.Desc != other.Desc || is.DescView != other.DescView)
            return QStringLiteral("field %1: other than its parameters").arg(key);
    }
    return {};
}

int shownNumber(const Field& field, bool isPositions, int row)
{
    const Row& shown = rowAt(isPositions, row);
    const int value = field.*shown.property;
    return shown.bit < 0 ? value : (value >> shown.bit) & 1;
}

QString shownText(const Field& field, bool isPositions, int row)
{
    static const QStringList yesNo{QStringLiteral("Нет"), QStringLiteral("Да")};
    static const QStringList aligns{QStringLiteral(""), QStringLiteral("Слева"), QStringLiteral("По центру"),
                                    QStringLiteral("Справа")};
    static const QStringList formats{
        QStringLiteral("Не маскировать нули"), QStringLiteral("Печать в формате 0.0"),
        QStringLiteral("Обрез.незнач.нули"), QStringLiteral("Печатать как штуки")};
    static const QStringList masks{QStringLiteral("Выключено"), QStringLiteral("Маскировать"),
                                   QStringLiteral("Выровнять нулями"), QStringLiteral("Приж.своб.символ")};
    static const QStringList blocks = headingTexts();
    const int number = shownNumber(field, isPositions, row);
    switch (rowAt(isPositions, row).shown) {
    case Shown::Number:
        break;
    case Shown::Block:
        return blocks.value(number);
    case Shown::YesNo:
        return yesNo.value(number);
    case Shown::Align:
        return aligns.value(number);
    case Shown::Format:
        return formats.value(number);
    case Shown::Mask:
        return masks.value(number);
    case Shown::Character:
        return characterOf(number);
    }
    return QString::number(number);
}

QStringList rowNames(bool isPositions)
{
    QStringList names;
    if (isPositions) {
        for (const Row& row : kPositions)
            names.append(QString::fromUtf8(row.name));
    } else {
        for (const Row& row : kView)
            names.append(QString::fromUtf8(row.name));
    }
    return names;
}

int firstListNumber(bool isPositions, int row)
{
    switch (rowAt(isPositions, row).shown) {
    case Shown::Align:
        return 1;
    case Shown::Character:
        return ' ';
    default:
        return 0;
    }
}
