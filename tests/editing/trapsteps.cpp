#include "editing/trapsteps.h"

#include "editing/editingsession.h"
#include "support/tablesteps.h"
#include "view/itemline.h"
#include "view/itempole.h"

#include <QComboBox>
#include <QGraphicsItem>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

QPointer<QSpinBox> typeInto(EditingSession& session, int row, const QString& text)
{
    QPointer<QSpinBox> editor(qobject_cast<QSpinBox*>(openEditor(session.window, row)));
    if (editor == nullptr)
        qFatal("row %d opens no number editor", row);
    editor->selectAll();
    QTest::keyClicks(editor, text);
    return editor;
}

QPointer<QComboBox> chooseIn(EditingSession& session, int row, const QString& text)
{
    QPointer<QComboBox> editor(qobject_cast<QComboBox*>(openEditor(session.window, row)));
    if (editor == nullptr)
        qFatal("row %d opens no list", row);
    editor->setCurrentIndex(editor->findText(text));
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
    const auto& record = session.probe.bd().items[key];
    const QList<int> numbers = rows == 12
                                   ? QList<int>{-1, record.Line, record.X, record.Size}
                                   : QList<int>{record.Font, -1, -1, record.LineGap, record.Brightness};
    for (int row = 0; row < numbers.size(); ++row) {
        if (numbers.at(row) >= 0)
            QCOMPARE(valueCell(session.window, row)->text(), QString::number(numbers.at(row)));
    }
}

void selectPole(EditingSession& session, int key)
{
    session.probe.scene().clearSelection();
    poleItem(session.window, key)->setSelected(true);
}
