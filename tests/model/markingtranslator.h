#pragma once

#include <QString>
#include <QTranslator>

/// Marks every text that it is asked for.
class MarkingTranslator : public QTranslator
{
public:
    /// What it makes of a text of the model.
    static QString marked(const QString& text) { return QStringLiteral("QObject|") + text; }

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* sourceText, const char*, int) const override
    {
        return QLatin1String(context) + u'|' + QString::fromUtf8(sourceText);
    }
};
