#pragma once

#include <QString>

/// Helpers for the JSON that the program writes as text.
class UtilJson
{
public:
    /// The text between double quotes; nothing inside is escaped.
    static QString strQQ(const QString& text);

    /// The content of a new settings.json.
    static QString SetSettingsJson();
};
