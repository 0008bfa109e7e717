#pragma once

#include <QString>
#include <QStringList>

// What the console's check of the driver says.
inline const QString kLoaded = QStringLiteral("Драйвер загружен!");
inline const QString kCreated = QStringLiteral("Объект драйвера создан!");
inline const QString kDestroyed = QStringLiteral("Объект драйвера разрушен!");
inline const QString kFailed = QStringLiteral("ERR: Ошибка при работе...");
inline const QString kConnectedBox = QStringLiteral("In mode program now");
inline const QString kReleasedBox = QStringLiteral("Check port avail");

inline QStringList linesOfTheChange()
{
    return {"Задаем настройки драйверу", "После настройки", "in drv port: 8", "in drv protocol: 0",
            "in drv bods: 115200"};
}

inline QStringList linesOfTheConnection()
{
    return {"Подключение к устройству...", "Сброс режима...", "Отключение..."};
}
