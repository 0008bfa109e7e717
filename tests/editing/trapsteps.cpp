#include "editing/trapsteps.h"

#include "editing/editingsession.h"
#include "editing/fieldlistlook.h"
#include "editing/fieldsteps.h"
#include "support/tablesteps.h"
#include "view/itemline.h"
#include "view/itempole.h"

#include <QComboBox>
#include <QGraphicsItem>
#include <QGraphicsProxyWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

QPointer<QSpinBox> typeInto(EditingSession& session, int row, const QString& text)
{
    QPointer<QSpinBox> editor(qobject_cast<QSpinBox*>(fillIn(session.window, row, text).data()));
    if (editor == nullptr)
        qFatal("row %d opens no number editor", row);
    return editor;
}

QPointer<QComboBox> chooseIn(EditingSession& session, int row, const QString& text)
{
    QPointer<QComboBox> editor(qobject_cast<QComboBox*>(fillIn(session.window, row, text).data()));
    if (editor == nullptr)
        qFatal("row %d opens no list", row);
    return editor;
}

void waitForLoop(EditingSession& session)
{
    session.settle();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void checkTableTellsTheTruth(EditingSession& session)
{
    const QGraphicsItem* const item = session.probe.curItem();
    const int rows = propertyTable(session.window)->rowCount();
    if (item != nullptr && item->type() != ItemPole::Type) {
        QCOMPARE(rows, item->type() == ItemLine::Type ? 4 : 2);
        return;
    }
    const int key = item == nullptr ? session.probe.curKey() : item->data(1).toInt();
    if (key == 0) {
        QCOMPARE(rows, 0);
        return;
    }
    QVERIFY(rows == 12 || rows == 8);
    const auto record = session.records().value(key);
    const QList<int> numbers = rows == 12
                                   ? QList<int>{-1, record.Line, record.X, record.Size}
                                   : QList<int>{record.Font, -1, -1, record.LineGap, record.Brightness};
    for (int row = 0; row < numbers.size(); ++row) {
        if (numbers.at(row) >= 0)
            QCOMPARE(valueCell(session.window, row)->text(), QString::number(numbers.at(row)));
    }
}

void checkNothingIsPicked(EditingSession& session)
{
    QCOMPARE(session.probe.curItem(), nullptr);
    QCOMPARE(session.probe.curKey(), 0);
    QCOMPARE(propertyTable(session.window)->rowCount(), 0);
    QCOMPARE(shownDesc(session.window), QStringLiteral("Поле не выбрано"));
    for (const char* const name : {"btnSetSetModePoz", "btnSetSetModeView", "btnPoleDel"})
        QVERIFY2(!named<QPushButton>(session.window, name)->isEnabled(), name);
    QVERIFY(!session.lineButton(QStringLiteral("+"))->isVisible());
    QVERIFY(!session.lineButton(QStringLiteral("-"))->isVisible());
}

void clickLineButton(EditingSession& session, const QString& text)
{
    QGraphicsProxyWidget* const button = session.lineButton(text);
    QVERIFY(button != nullptr && button->isVisible());
    clickItem(session.window, button);
}

void selectPole(EditingSession& session, int key)
{
    session.probe.scene().clearSelection();
    poleItem(session.window, key)->setSelected(true);
}
