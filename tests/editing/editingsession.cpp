#include "editing/editingsession.h"

#include "support/namedparams.h"

#include <QAbstractButton>
#include <QGraphicsProxyWidget>
#include <QTest>

namespace {

using T20Item = BD_T20Items::T20Item;

QStringList recordLines(int key, const T20Item& item)
{
    const QString start = QString::number(key) + u'.';
    QStringList lines{start + QLatin1String("Type=") + QString::number(item.Type)};
    for (const auto& [name, param] : records::kParams)
        lines.append(start + QLatin1String(name) + u'=' + QString::number(item.*param));
    lines.append(start + QLatin1String("FA_NEED=") + QString::number(item.FA_NEED ? 1 : 0));
    lines.append(start + QLatin1String("BL_MASK=") + QString::number(item.BL_MASK));
    lines.append(start + QLatin1String("Desc=") + item.Desc);
    lines.append(start + QLatin1String("DescView=") + item.DescView);
    return lines;
}

} // namespace

EditingSession::EditingSession(const QList<FieldRow>& fields)
{
    showAndStart(window);
    open(fields);
}

void EditingSession::open(const QList<FieldRow>& fields)
{
    Session::open(write(fields));
    if (!probe.maket().getShablonLoaded())
        qFatal("the template is refused: %s", qPrintable(robot.takeTexts().join(u'|')));
    activate();
    settle();
}

void EditingSession::activate()
{
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window))
        qFatal("the window does not become active");
}

QString EditingSession::write(const QList<FieldRow>& fields)
{
    return dir.write(QStringLiteral("%1.csv").arg(++m_files), maskFile(fields));
}

QStringList EditingSession::changesSince(const Records& before) const
{
    const Records now = records();
    QStringList changes;
    for (auto it = now.cbegin(); it != now.cend(); ++it) {
        const QStringList lines = recordLines(it.key(), it.value());
        const QStringList old =
            before.contains(it.key()) ? recordLines(it.key(), before.value(it.key())) : QStringList();
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (lines.at(i) != old.value(i))
                changes.append(lines.at(i));
        }
    }
    for (auto it = before.cbegin(); it != before.cend(); ++it) {
        if (!now.contains(it.key()))
            changes.append(QStringLiteral("%1 is gone").arg(it.key()));
    }
    return changes;
}

void EditingSession::settle()
{
    QTRY_VERIFY(probe.isSettled());
}

QGraphicsProxyWidget* EditingSession::lineButton(const QString& text) const
{
    for (QGraphicsItem* const item : probe.scene().items()) {
        auto* const proxy = qgraphicsitem_cast<QGraphicsProxyWidget*>(item);
        auto* const button = proxy == nullptr ? nullptr : qobject_cast<QAbstractButton*>(proxy->widget());
        if (button != nullptr && button->text() == text)
            return proxy;
    }
    return nullptr;
}

QList<FieldRow> workFields()
{
    return {
        {.block = 0,
         .line = 1,
         .x = 0,
         .size = 10,
         .desc = QStringLiteral("Шапка: заголовок"),
         .blockMask = 0x43},
        {.block = 0, .line = 2, .x = 2, .size = 12, .desc = QStringLiteral("Клише: строка"), .need = true},
        {.block = 1,
         .line = 1,
         .x = 0,
         .size = 6,
         .desc = QStringLiteral("Позиция: номер"),
         .blockMask = 0x2},
        {.block = 1, .line = 1, .x = 20, .size = 5, .desc = QStringLiteral("Позиция: цена")},
        {.block = 1, .line = 1, .x = 40, .size = 0, .desc = QStringLiteral("Позиция: секция")},
        {.block = 1, .line = 1, .x = 50, .size = 0, .desc = QStringLiteral("Позиция: сумма"), .need = true},
        {.block = 1, .x2y = 1, .line = 4, .x = 0, .size = 10, .desc = QStringLiteral("Чек: итог")},
        {.block = 1, .line = 1, .x = 0, .size = 0, .desc = QStringLiteral("Налог: ставка")},
        {.block = 9, .line = 1, .x = 0, .size = 8, .desc = QStringLiteral("Возврат: сумма")},
    };
}
