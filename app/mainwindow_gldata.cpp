#include "app/mainwindow.h"

MainWindow::glData::glData()
    : blockTitles{{0, tr("Шапка чека")},   {1, tr("Регистрация")}, {2, tr("Предытоговый")},
                  {3, tr("Итог")},         {4, tr("Налоги")},      {5, tr("Оплата")},
                  {6, tr("Подвал чека")},  {7, tr("Фискальный")},  {8, tr("\"Чек аннулирован\"")},
                  {9, tr("Сторно оплаты")}}
    , yesNo{{0, tr("Нет")}, {1, tr("Да")}}
    , alignNames{{1, tr("Слева")}, {2, tr("По центру")}, {3, tr("Справа")}}
    , numberFormats{{0, tr("Не маскировать нули")},
                    {1, tr("Печать в формате 0.0")},
                    {2, tr("Обрез.незнач.нули")},
                    {3, tr("Печатать как штуки")}}
    , maskModes{{0, tr("Выключено")},
                {1, tr("Маскировать")},
                {2, tr("Выровнять нулями")},
                {3, tr("Приж.своб.символ")}}
{
}

int MainWindow::glData::GetBlTitlesNumForName(const QString& name) const
{
    for (int k = 0; k < blockTitles.size(); ++k) {
        if (blockTitles.value(k) == name)
            return k;
    }
    return -1;
}
