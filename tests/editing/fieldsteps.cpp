#include "editing/fieldsteps.h"

#include "support/tablesteps.h"
#include "support/windowprobe.h"

#include <QComboBox>
#include <QSpinBox>
#include <QTest>

void pickField(MainWindow& window, int key)
{
    const auto record = WindowProbe(window).bd().items.value(key);
    if (record.Size > 0)
        pickPole(window, key);
    else
        pickInList(window, record.Desc);
}

QPointer<QWidget> fillIn(MainWindow& window, int row, const QString& text)
{
    QPointer<QWidget> editor(openEditor(window, row));
    if (auto* const number = qobject_cast<QSpinBox*>(editor.data()); number != nullptr) {
        number->selectAll();
        QTest::keyClicks(number, text);
    } else if (auto* const list = qobject_cast<QComboBox*>(editor.data()); list != nullptr) {
        list->setCurrentIndex(list->findText(text));
    } else {
        qFatal("row %d opens neither a number editor nor a list", row);
    }
    return editor;
}
