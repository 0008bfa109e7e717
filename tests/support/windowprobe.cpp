#include "support/windowprobe.h"

#include <QTextEdit>

QStringList WindowProbe::log() const
{
    const QString text = m_window.findChild<QTextEdit*>(QStringLiteral("teLog"))->toPlainText();
    return text.isEmpty() ? QStringList() : text.split(u'\n');
}
