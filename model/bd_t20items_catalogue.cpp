#include "model/bd_t20items.h"

#include <QObject>

namespace {

const char* const kCommonLabels[] = {
    QT_TRANSLATE_NOOP("QObject", "Шапка: заголовок"),
    QT_TRANSLATE_NOOP("QObject", "Свободная строка 1"),
    QT_TRANSLATE_NOOP("QObject", "Свободная строка 2"),
    QT_TRANSLATE_NOOP("QObject", "Свободная строка 3"),
    QT_TRANSLATE_NOOP("QObject", "Свободная строка 4"),
    QT_TRANSLATE_NOOP("QObject", "Свободная строка 5"),
    QT_TRANSLATE_NOOP("QObject", "Свободная строка 6"),
    QT_TRANSLATE_NOOP("QObject", "Свободная строка 7"),
    QT_TRANSLATE_NOOP("QObject", "Свободная строка 8"),
    QT_TRANSLATE_NOOP("QObject", "Позиция: номер"),
    QT_TRANSLATE_NOOP("QObject", "Позиция: секция"),
    QT_TRANSLATE_NOOP("QObject", "Позиция: наименование"),
    QT_TRANSLATE_NOOP("QObject", "Позиция: цена без скидки"),
    QT_TRANSLATE_NOOP("QObject", "Позиция: цена со скидкой"),
    QT_TRANSLATE_NOOP("QObject", "Позиция: символ кол-ва"),
    QT_TRANSLATE_NOOP("QObject", "Позиция: кол-во"),
    QT_TRANSLATE_NOOP("QObject", "Позиция: единица измерения товара"),
    QT_TRANSLATE_NOOP("QObject", "Позиция: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Позиция: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Скидка/Надбавка: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Скидка/Надбавка: ставка"),
    QT_TRANSLATE_NOOP("QObject", "Скидка/Надбавка: символ ставки"),
    QT_TRANSLATE_NOOP("QObject", "Скидка/Надбавка: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Скидка/Надбавка: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Скидка/Надбавка за единицу: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Скидка/Надбавка за единицу: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Налог: символ"),
    QT_TRANSLATE_NOOP("QObject", "Налог: наименование"),
    QT_TRANSLATE_NOOP("QObject", "Налог: ставка"),
    QT_TRANSLATE_NOOP("QObject", "Налог: символ ставка"),
    QT_TRANSLATE_NOOP("QObject", "Налог: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Налог: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Признак предмета расчета"),
    QT_TRANSLATE_NOOP("QObject", "Признак способа расчета"),
    QT_TRANSLATE_NOOP("QObject", "Подытог: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Подытог: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Подытог: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Скидка/Надбавка на чек: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Скидка/Надбавка на чек: символ"),
    QT_TRANSLATE_NOOP("QObject", "Скидка/Надбавка на чек: ставка"),
    QT_TRANSLATE_NOOP("QObject", "ИТОГ: надпись"),
    QT_TRANSLATE_NOOP("QObject", "ИТОГ: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "ИТОГ: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: A: символ"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: A: наименование"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: A: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: A: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: B: символ"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: B: наименование"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: B: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: B: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: C: символ"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: C: наименование"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: C: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: C: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: D: символ"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: D: наименование"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: D: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: D: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: E: символ"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: E: наименование"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: E: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: E: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: F: символ"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: F: наименование"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: F: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Налог на чек: F: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Оплата: Обшая: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Оплата: Обшая: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Оплата: Обшая: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Сторно оплаты: надпись сторно"),
    QT_TRANSLATE_NOOP("QObject", "Сторно оплаты: надпись платежа"),
    QT_TRANSLATE_NOOP("QObject", "Сторно оплаты: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Сторно оплаты: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Сдача: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Сдача: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Сдача: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Подвал: тип чека"),
    QT_TRANSLATE_NOOP("QObject", "Касса: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Касса: значение"),
    QT_TRANSLATE_NOOP("QObject", "Кассир: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Кассир: значение"),
    QT_TRANSLATE_NOOP("QObject", "Документ: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Документ: значение"),
    QT_TRANSLATE_NOOP("QObject", "Пользователь: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Пользователь: значение"),
    QT_TRANSLATE_NOOP("QObject", "Адрес расчета: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Адрес расчета: значение"),
    QT_TRANSLATE_NOOP("QObject", "Адрес покупателя: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Адрес покупателя: значение"),
    QT_TRANSLATE_NOOP("QObject", "Адрес отправителя: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Адрес отправителя: значение"),
    QT_TRANSLATE_NOOP("QObject", "Номер автомата: наименование"),
    QT_TRANSLATE_NOOP("QObject", "Номер автомата: значение"),
    QT_TRANSLATE_NOOP("QObject", "ЗН: надпись"),
    QT_TRANSLATE_NOOP("QObject", "ЗН: значение"),
    QT_TRANSLATE_NOOP("QObject", "ИНН: надпись"),
    QT_TRANSLATE_NOOP("QObject", "ИНН: значение"),
    QT_TRANSLATE_NOOP("QObject", "СНО: надпись"),
    QT_TRANSLATE_NOOP("QObject", "СНО: значение"),
    QT_TRANSLATE_NOOP("QObject", "Место расчетов: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Место расчетов: значение"),
    QT_TRANSLATE_NOOP("QObject", "Признак расчетов только в Интернет"),
    QT_TRANSLATE_NOOP("QObject", "Признак агента: Банковский платежный агент"),
    QT_TRANSLATE_NOOP("QObject", "Признак агента: Банковский платежный субагент"),
    QT_TRANSLATE_NOOP("QObject", "Признак агента: Платежный агент"),
    QT_TRANSLATE_NOOP("QObject", "Признак агента: Платежный субагент"),
    QT_TRANSLATE_NOOP("QObject", "Признак агента: Поверенный"),
    QT_TRANSLATE_NOOP("QObject", "Признак агента: Комиссионер"),
    QT_TRANSLATE_NOOP("QObject", "Признак агента: Агент"),
    QT_TRANSLATE_NOOP("QObject", "Номер смены: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Номер смены: значение"),
    QT_TRANSLATE_NOOP("QObject", "Номер чека: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Номер чека: значение"),
    QT_TRANSLATE_NOOP("QObject", "ФНС сайт: надпись"),
    QT_TRANSLATE_NOOP("QObject", "ФНС сайт: значение"),
    QT_TRANSLATE_NOOP("QObject", "РНМ: надпись"),
    QT_TRANSLATE_NOOP("QObject", "РНМ: значение"),
    QT_TRANSLATE_NOOP("QObject", "Номер ФН: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Номер ФН: значение"),
    QT_TRANSLATE_NOOP("QObject", "Номер ФД: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Номер ФД: значение"),
    QT_TRANSLATE_NOOP("QObject", "ФПД: надпись"),
    QT_TRANSLATE_NOOP("QObject", "ФПД: значение"),
    QT_TRANSLATE_NOOP("QObject", "Дата, Время: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Дата, Время: значение"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 1"),
    QT_TRANSLATE_NOOP("QObject", "Оплата: Наличные: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Оплата: Наличные: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Оплата: Наличные: сумма"),
    QT_TRANSLATE_NOOP("QObject", "Оплата: Электронные: надпись"),
    QT_TRANSLATE_NOOP("QObject", "Оплата: Электронные: символ суммы"),
    QT_TRANSLATE_NOOP("QObject", "Оплата: Электронные: сумма"),
};

const char* const kUserTagLabels[] = {
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 2_1"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 3_1"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 4_1"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 5_1"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 1_2"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 2_2"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 3_2"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 4_2"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 5_2"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 1_3"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 2_3"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 3_3"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 4_3"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 5_3"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 1_4"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 2_4"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 3_4"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 4_4"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 5_4"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 1_5"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 2_5"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 3_5"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 4_5"),
    QT_TRANSLATE_NOOP("QObject", "Пользовательский тег 5_5"),
};

/// These classes are short already, so the short label keeps them.
bool isShortClass(const QString& poleClass)
{
    return poleClass == QObject::tr("ЗН") || poleClass == QObject::tr("ИНН") ||
           poleClass == QObject::tr("СНО") || poleClass == QObject::tr("РНМ") ||
           poleClass == QObject::tr("ФПД");
}

void addLabel(BD_T20Items& bd, const QString& label)
{
    BD_T20Items::T20Item item;
    item.Desc = label;
    item.makeDescViewFromDesc();
    bd.PolesLabels.append(label);
    bd.PolesLabelsView.append(isShortClass(item.getPoleClass()) ? label : item.DescView);
}

} // namespace

void BD_T20Items::InitPolesLabelsCmn()
{
    PolesLabels.clear();
    PolesLabelsView.clear();
    for (const char* label : kCommonLabels)
        addLabel(*this, QObject::tr(label));
}

void BD_T20Items::InitPolesLabelsV01()
{
    InitPolesLabelsCmn();
    addLabel(*this, QObject::tr("Строка: \"ЧЕК АННУЛИРОВАН\""));
}

void BD_T20Items::InitPolesLabelsV02()
{
    InitPolesLabelsCmn();
    addLabel(*this, QObject::tr("Пользовательский тег 2"));
    addLabel(*this, QObject::tr("Строка: \"ЧЕК АННУЛИРОВАН\""));
    addLabel(*this, QObject::tr("QR-код"));
    addLabel(*this, QObject::tr("Картинка"));
}

void BD_T20Items::InitPolesLabelsV03()
{
    InitPolesLabelsCmn();
    for (const char* label : kUserTagLabels)
        addLabel(*this, QObject::tr(label));
    addLabel(*this, QObject::tr("Строка: \"ЧЕК АННУЛИРОВАН\""));
    addLabel(*this, QObject::tr("QR-код"));
    addLabel(*this, QObject::tr("Картинка"));
}
