#include "emulator/resultcodes.h"

#include <algorithm>
#include <array>

namespace emulator {

namespace {

struct CodeText
{
    int code;
    const char* text;
};

constexpr std::array kTexts{
    CodeText{code::kOk, "Ошибок нет"},
    CodeText{code::kPortUnavailable, "Порт недоступен"},
    CodeText{code::kPortClosed, "Порт не открыт"},
    CodeText{code::kNoDisplay, "Нет окна, в котором можно показать настройки"},
    CodeText{code::kInternal, "Внутренняя ошибка драйвера"},
    CodeText{code::kLinkLost, "Касса не отвечает"},
    CodeText{code::kBadParameter, "Недопустимое значение параметра"},
    CodeText{code::kNoReceipt, "Нет открытого чека"},
    CodeText{code::kInjected, "Заданная ошибка"},
    CodeText{code::kWrongMode, "Действие невозможно в этом режиме"},
    CodeText{code::kReceiptOpen, "Сначала нужно закрыть чек"},
    CodeText{code::kShiftClosed, "Смена не открыта"},
    CodeText{code::kShiftTooLong, "Смена длится больше суток, её нужно закрыть"},
    CodeText{code::kNotSupported, "Касса не знает такой команды"},
    CodeText{code::kNoSuchUnit, "В кассе нет такого узла"},
    CodeText{code::kNoSuchTable, "Нет такой таблицы"},
    CodeText{code::kNoSuchRow, "Нет такой строки в таблице"},
    CodeText{code::kNoSuchField, "Нет такого поля в строке таблицы"},
    CodeText{code::kBadCommand, "Команда составлена неверно"},
    CodeText{code::kNotPaid, "Чек оплачен не полностью"},
    CodeText{code::kPaymentBegun, "Оплата чека уже начата"},
    CodeText{code::kPaymentTooLarge, "Безналичная оплата больше суммы чека"},
    CodeText{code::kNoSuchPayment, "Нет оплаты, которую можно сторнировать"},
};

} // namespace

QString resultText(int code)
{
    const auto found = std::find_if(kTexts.begin(), kTexts.end(),
                                    [code](const CodeText& entry) { return entry.code == code; });
    return found == kTexts.end() ? QString("Неизвестная ошибка %1").arg(code) : QString(found->text);
}

} // namespace emulator
