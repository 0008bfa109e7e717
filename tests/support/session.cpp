#include "support/session.h"

#include "view/itempole.h"

#include <QAction>
#include <QGraphicsItem>
#include <QWidget>

Session::Session()
    : log(window)
    , probe(window)
{
    showWindow(window);
    log.takeNew();
}

bool Session::canSave() const
{
    return named<QAction>(window, "actionSave")->isEnabled();
}

QString Session::goodFile(int count, const QString& name) const
{
    return dir.write(name, maskFile(manyFields(count)));
}

QStringList Session::keysOnTape() const
{
    QStringList keys;
    for (const auto* const item : probe.scene().items(Qt::AscendingOrder)) {
        if (item->type() == ItemPole::Type)
            keys.append(item->data(1).toString());
    }
    return keys;
}

Session& SharedSession::withoutTemplate()
{
    if (!m_session)
        m_session = std::make_unique<Session>();
    Session& s = *m_session;
    if (s.probe.maket().getShablonLoaded())
        s.open(s.dir.write("empty.csv", {}));
    s.robot.takeTexts();
    s.log.takeNew();
    return s;
}

bool areTemplateCommands(const MainWindow& window, bool enabled)
{
    for (const char* const name : {"actionSaveAs", "action_5"})
        if (named<QAction>(window, name)->isEnabled() != enabled)
            return false;
    for (const char* const name : {"btnRedraw", "btnScaleX05", "btnScaleX20", "btnBlTitlesOnOff",
                                   "btnFontMonoWide", "comboKassa", "comboLentaSize"})
        if (named<QWidget>(window, name)->isEnabled() != enabled)
            return false;
    return true;
}
