#include "support/windowprobe.h"

#include <QTextEdit>

QStringList WindowProbe::log() const
{
    return m_window.findChild<QTextEdit*>(QStringLiteral("teLog"))->toPlainText().split(u'\n');
}
