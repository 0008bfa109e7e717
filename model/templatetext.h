#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The bytes of a template file as text and as lines.
///
/// The bytes before the first NUL are read as UTF-8. A line ends at a line feed and nowhere else, and empty
/// lines count. The lines share the memory of the text, so they must not outlive this object.
class TemplateText
{
public:
    explicit TemplateText(const QByteArray& data);
    ~TemplateText() = default;
    TemplateText(const TemplateText&) = delete;
    TemplateText& operator=(const TemplateText&) = delete;

    const QStringList& lines() const { return m_lines; }

private:
    QString m_text;
    QStringList m_lines;
};
