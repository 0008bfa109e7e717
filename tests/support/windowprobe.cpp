#include "support/windowprobe.h"

#include <QTextEdit>

QByteArray WindowProbe::heldTemplate() const
{
    QStringList rows;
    m_window.bd.SaveToListWMask(rows);
    QByteArray bytes;
    for (const auto& row : rows)
        bytes += row.toUtf8() + '\n';
    return bytes;
}

QStringList WindowProbe::log() const
{
    const QString text = m_window.findChild<QTextEdit*>(QStringLiteral("teLog"))->toPlainText();
    return text.isEmpty() ? QStringList() : text.split(u'\n');
}
