#include "editing/fieldlistlook.h"

#include "app/mainwindow.h"
#include "support/usersteps.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

QListWidget* fieldList(MainWindow& window)
{
    return named<QListWidget>(window, "listWidget");
}

QStringList listTexts(MainWindow& window)
{
    const QListWidget* const list = fieldList(window);
    QStringList texts;
    for (int row = 0; row < list->count(); ++row)
        texts.append(list->item(row)->text());
    return texts;
}

QString listTitle(MainWindow& window)
{
    return named<QGroupBox>(window, "grBoxFilter")->title();
}

void clickListLine(MainWindow& window, int row)
{
    QListWidget* const list = fieldList(window);
    list->scrollToItem(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
}

QString shownDesc(MainWindow& window)
{
    return named<QLineEdit>(window, "lePoleDesc")->text();
}
