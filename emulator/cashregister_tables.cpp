#include "emulator/cashregister.h"

#include "emulator/hexbytes.h"
#include "emulator/tablecommand.h"

#include <QTextCodec>

namespace emulator {

namespace {

constexpr int kDeviceTable = 2;
constexpr int kFreeLineTable = 21;
constexpr int kFreeLineField = 1;
constexpr int kMaxFreeLineLength = 80;
/// The field that selects the template, and its number in older firmware.
constexpr int kTemplateField = 111;
constexpr int kOldTemplateField = 19;
constexpr int kText = 1;
constexpr int kHex = 2;

Outcome noSuchField(const FieldAddress& address)
{
    if (address.row != 1)
        return Outcome::refused(code::kNoSuchRow);
    const bool known = address.field == kTemplateField || address.field == kOldTemplateField;
    return known ? Outcome::badParameter(4, QString("Тип поля %1").arg(address.type))
                 : Outcome::refused(code::kNoSuchField);
}

bool isTemplateSwitch(const FieldAddress& address)
{
    return address.table == kDeviceTable && address.row == 1 && address.type == kHex &&
           (address.field == kTemplateField || address.field == kOldTemplateField);
}

QTextCodec* deviceCodec()
{
    return QTextCodec::codecForName("IBM 866");
}

QString hexOf(const QString& line)
{
    return spacedHex(deviceCodec()->fromUnicode(line)).remove(' ');
}

/// The line as the device's code page keeps it; nothing if the text is not of the type.
std::optional<QString> freeLine(const QString& text, int type)
{
    const std::optional<QByteArray> bytes =
        type == kHex ? bytesFromHex(text) : std::optional(deviceCodec()->fromUnicode(text));
    return bytes ? std::optional(deviceCodec()->toUnicode(*bytes)) : std::nullopt;
}

} // namespace

Outcome CashRegister::programmingStep() const
{
    return m_state.mode == mode::kProgramming ? Outcome::ok() : Outcome::refused(code::kWrongMode);
}

Outcome CashRegister::readField(const FieldAddress& address, QString& text) const
{
    const Outcome step = programmingStep();
    if (!step.isOk())
        return step;
    if (isTemplateSwitch(address)) {
        text = spacedHex(QByteArray(1, static_cast<char>(m_state.activeTemplate)));
        return Outcome::ok();
    }
    if (address.table == kDeviceTable)
        return noSuchField(address);
    if (address.table != kFreeLineTable)
        return Outcome::refused(code::kNoSuchTable);
    if (address.row < 1 || address.row > m_state.freeLines.size())
        return Outcome::refused(code::kNoSuchRow);
    if (address.field != kFreeLineField)
        return Outcome::refused(code::kNoSuchField);
    if (address.type != kText && address.type != kHex)
        return Outcome::badParameter(4, QString("Тип поля %1").arg(address.type));
    const QString& line = m_state.freeLines[address.row - 1];
    text = address.type == kHex ? hexOf(line) : line;
    return Outcome::ok();
}

Outcome CashRegister::writeField(const FieldAddress& address, const QString& text)
{
    QString old;
    const Outcome reached = readField(address, old);
    if (!reached.isOk())
        return reached;
    if (isTemplateSwitch(address)) {
        const std::optional<QByteArray> bytes = bytesFromHex(text);
        const bool isOneByte = bytes && bytes->size() == 1;
        const int number = isOneByte ? static_cast<unsigned char>(bytes->front()) : -1;
        if (number != 0 && !m_state.templates.contains(number))
            return Outcome::badParameter(5, QString("Номер шаблона %1").arg(text));
        m_state.activeTemplate = number;
    } else {
        const std::optional<QString> line = freeLine(text, address.type);
        if (!line || line->size() > kMaxFreeLineLength)
            return Outcome::badParameter(5, QString("Строка «%1»").arg(text.left(kMaxFreeLineLength)));
        m_state.freeLines[address.row - 1] = *line;
    }
    m_changed = true;
    return Outcome::ok();
}

Outcome CashRegister::execute(const QString& command, QString& answer)
{
    answer.clear();
    const Outcome step = programmingStep();
    if (!step.isOk())
        return step;
    const std::optional<QByteArray> bytes = bytesFromHex(command);
    if (!bytes)
        return Outcome::refused(code::kBadCommand);
    const CommandResult result = executeTableCommand(*bytes, m_state.templates, m_state.parameterGroup);
    answer = spacedHex(result.answer);
    m_templatesChanged = m_templatesChanged || result.written;
    return result.outcome;
}

} // namespace emulator
