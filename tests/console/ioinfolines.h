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

inline const QString kNoObject = QStringLiteral("Не удалось создать объект драйвера!");

// What its earlier form says first.
inline const QString kTestBox = QStringLiteral("test");
inline const QStringList kTestLines{"test 1 bb=543", "test 2 bb=543"};

inline QStringList linesOfTheChange()
{
    return {"Задаем настройки драйверу", "После настройки", "in drv port: 8", "in drv protocol: 0",
            "in drv bods: 115200"};
}

inline QStringList linesOfTheConnection()
{
    return {"Подключение к устройству...", "Сброс режима...", "Отключение..."};
}

/// The same of the earlier form without a template.
inline QStringList linesOfTheEarlierConnection()
{
    return {"Подключение к устройству...",
            "Вход в режим программирования...",
            "====LOGGER",
            "====LOGGER END",
            "Сброс режима...",
            "Отключение..."};
}
