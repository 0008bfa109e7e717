#include "model/templatetext.h"

TemplateText::TemplateText(const QByteArray& data)
{
    const auto nul = data.indexOf('\0');
    m_text = QString::fromUtf8(data.constData(), nul < 0 ? data.size() : nul);

    qsizetype start = 0;
    qsizetype end = 0;
    do {
        end = m_text.indexOf(u'\n', start);
        const auto length = (end < 0 ? m_text.size() : end) - start;
        m_lines.append(QString::fromRawData(m_text.constData() + start, length));
        start = end + 1;
    } while (end >= 0);
}
