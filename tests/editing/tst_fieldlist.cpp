#include "editing/editingsession.h"
#include "editing/fieldlistlook.h"
#include "support/tablesteps.h"

#include <QCheckBox>
#include <QGraphicsItem>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

namespace {

QString title(int shown, int all)
{
    return QStringLiteral("Фильтр полей [%1 из %2]").arg(shown).arg(all);
}

/// Types `text` over what stands in the filter.
void typeFilter(MainWindow& window, const QString& text)
{
    auto* const edit = named<QLineEdit>(window, "lePolesFilterStr");
    QTest::mouseClick(edit, Qt::LeftButton);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    // The key that stands on the keyboard does not matter, only the character that it gives.
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_unknown, QString(character), Qt::NoModifier);
}

void clickFilterOnOff(MainWindow& window)
{
    clickCheckBox(named<QCheckBox>(window, "chbFilter"));
}

/// Fields of size 0 with these descriptions, after one that is placed.
QList<FieldRow> unplacedFields(const QStringList& descs)
{
    QList<FieldRow> fields{{.desc = QStringLiteral("На ленте: поле")}};
    for (const auto& desc : descs)
        fields.append({.size = 0, .desc = desc});
    return fields;
}

} // namespace

class tst_FieldList : public QObject
{
    Q_OBJECT

private slots:
    void listIsEmptyWithoutATemplate();
    void listShowsTheFieldsThatAreNotPlaced();
    void showingAllListsEveryField();
    void filterKeepsTheLinesThatHoldItsText();
    void caseButtonDecidesAboutCapitalLetters();
    void filterThatIsOffHasNoEffect();
    void listFollowsThePlacedFields();
    void takeOverFillsTheListAnew();
    void holeInTheKeysBecomesAnEmptyLine();
    void markupAndPlaceholdersStayPlainText();
    void pickedPlacedFieldIsSelectedOnTheScene();
    void pickedPlacedFieldReplacesTheSelection();
    void pickedUnplacedFieldFillsTheTableAtOnce();
    void pickWithNothingSelectedOutlivesTheLoop();
    void pickEndsTheSelectionOnTheScene();
    void nextSelectionEndsThePick();
    void lineWithoutFieldEmptiesTheTable();
    void sizeOfAPickedFieldTakesItsLineOff();
};

void tst_FieldList::listIsEmptyWithoutATemplate()
{
    EditingSession session(workFields());
    QFile file(session.dir.path(QStringLiteral("bad.csv")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    openTemplate(session.window, session.robot, file.fileName());
    QCOMPARE(session.robot.takeTexts().size(), 2);
    QCOMPARE(listTexts(session.window), QStringList());
    QCOMPARE(listTitle(session.window), title(0, 0));
    clickButton(session.window, "btnFiltrShowAll");
    clickFilterOnOff(session.window);
    QCOMPARE(listTexts(session.window), QStringList());
    QCOMPARE(listTitle(session.window), title(0, 0));
}

void tst_FieldList::listShowsTheFieldsThatAreNotPlaced()
{
    EditingSession session(workFields());
    QCOMPARE(listTexts(session.window),
             (QStringList{QStringLiteral("Позиция: секция"), QStringLiteral("Позиция: сумма"),
                          QStringLiteral("Налог: ставка")}));
    QCOMPARE(listTitle(session.window), title(3, 9));
    QVERIFY(!named<QCheckBox>(session.window, "chbFilter")->isChecked());
    QCOMPARE(named<QCheckBox>(session.window, "chbFilter")->text(), QStringLiteral("Вкл."));
    QCOMPARE(named<QPushButton>(session.window, "btnFiltrRegistr")->text(), QStringLiteral("Регистр"));
    QCOMPARE(named<QPushButton>(session.window, "btnFiltrShowAll")->text(), QStringLiteral("Все"));
    // Only a size above 0 places a field.
    session.probe.bd().items[5].Size = -1;
    session.probe.bd().items[6].Size = 1;
    typeFilter(session.window, QStringLiteral("x"));
    QCOMPARE(listTexts(session.window),
             (QStringList{QStringLiteral("Позиция: секция"), QStringLiteral("Налог: ставка")}));
    QCOMPARE(listTitle(session.window), title(2, 9));
}

void tst_FieldList::showingAllListsEveryField()
{
    const auto fields = workFields();
    QStringList all;
    for (const auto& field : fields)
        all.append(field.desc);
    EditingSession session(fields);
    clickButton(session.window, "btnFiltrShowAll");
    QCOMPARE(listTexts(session.window), all);
    QCOMPARE(listTitle(session.window), title(9, 9));
    clickButton(session.window, "btnFiltrShowAll");
    QCOMPARE(listTitle(session.window), title(3, 9));
}

void tst_FieldList::filterKeepsTheLinesThatHoldItsText()
{
    EditingSession session(workFields());
    clickFilterOnOff(session.window);
    QCOMPARE(listTitle(session.window), title(3, 9)); // an empty text matches everything
    typeFilter(session.window, QStringLiteral("ци"));
    QCOMPARE(listTexts(session.window),
             (QStringList{QStringLiteral("Позиция: секция"), QStringLiteral("Позиция: сумма")}));
    QCOMPARE(listTitle(session.window), title(2, 9));
    typeFilter(session.window, QStringLiteral(": с"));
    QCOMPARE(listTitle(session.window), title(3, 9));
    typeFilter(session.window, QStringLiteral(": су"));
    QCOMPARE(listTexts(session.window), QStringList{QStringLiteral("Позиция: сумма")});
    clickButton(session.window, "btnFiltrShowAll");
    QCOMPARE(listTitle(session.window), title(2, 9)); // "Возврат: сумма" too
    typeFilter(session.window, QStringLiteral("нет такого"));
    QCOMPARE(listTexts(session.window), QStringList());
    QCOMPARE(listTitle(session.window), title(0, 9));
    typeFilter(session.window, QStringLiteral("."));
    QCOMPARE(listTitle(session.window), title(0, 9));
}

void tst_FieldList::caseButtonDecidesAboutCapitalLetters()
{
    EditingSession session(unplacedFields({QStringLiteral("Ёлка: Total"), QStringLiteral("ёлка: TOTAL"),
                                           QStringLiteral("сосна: Straße"), QStringLiteral("Сосна: total")}));
    const QStringList all = listTexts(session.window);
    QCOMPARE(all.size(), 4);
    clickFilterOnOff(session.window);

    typeFilter(session.window, QStringLiteral("ёлка"));
    QCOMPARE(listTexts(session.window), all.first(2));
    typeFilter(session.window, QStringLiteral("tOtAl"));
    QCOMPARE(listTexts(session.window), (QStringList{all.at(0), all.at(1), all.at(3)}));
    typeFilter(session.window, QStringLiteral("STRASSE"));
    QCOMPARE(listTexts(session.window), QStringList{all.at(2)});

    clickButton(session.window, "btnFiltrRegistr");
    QCOMPARE(listTexts(session.window), QStringList());
    typeFilter(session.window, QStringLiteral("ёлка"));
    QCOMPARE(listTexts(session.window), QStringList{all.at(1)});
    typeFilter(session.window, QStringLiteral("Total"));
    QCOMPARE(listTexts(session.window), QStringList{all.at(0)});
    clickButton(session.window, "btnFiltrRegistr");
    QCOMPARE(listTitle(session.window), title(3, 5));
}

void tst_FieldList::filterThatIsOffHasNoEffect()
{
    EditingSession session(workFields());
    const QStringList lines = listTexts(session.window);
    clickListLine(session.window, 0);
    QCOMPARE(fieldList(session.window)->selectedItems().size(), 1);
    typeFilter(session.window, QStringLiteral("Сум"));
    QCOMPARE(listTexts(session.window), lines);
    QCOMPARE(listTitle(session.window), title(3, 9));
    QCOMPARE(fieldList(session.window)->selectedItems().size(), 0); // filled anew all the same
    clickListLine(session.window, 0);
    clickButton(session.window, "btnFiltrRegistr");
    QCOMPARE(listTexts(session.window), lines);
    QCOMPARE(fieldList(session.window)->selectedItems().size(), 0);

    clickFilterOnOff(session.window);
    QCOMPARE(listTexts(session.window), QStringList());
    clickFilterOnOff(session.window);
    QCOMPARE(listTexts(session.window), lines);
}

void tst_FieldList::listFollowsThePlacedFields()
{
    EditingSession session(workFields());
    pickPole(session.window, 4);
    clickButton(session.window, "btnPoleDel");
    QCOMPARE(listTexts(session.window),
             (QStringList{QStringLiteral("Позиция: цена"), QStringLiteral("Позиция: секция"),
                          QStringLiteral("Позиция: сумма"), QStringLiteral("Налог: ставка")}));
    QCOMPARE(listTitle(session.window), title(4, 9));
    session.settle();

    pickPole(session.window, 7);
    typeNumber(session.window, 3, QStringLiteral("0"));
    QCOMPARE(listTitle(session.window), title(5, 9));
    QCOMPARE(listTexts(session.window).at(3), QStringLiteral("Чек: итог"));
}

void tst_FieldList::takeOverFillsTheListAnew()
{
    EditingSession session(workFields());
    // Of a shorter template the records beyond its end stay.
    session.open(unplacedFields({QStringLiteral("Новое: поле")}));
    QCOMPARE(listTexts(session.window),
             (QStringList{QStringLiteral("Новое: поле"), QStringLiteral("Позиция: секция"),
                          QStringLiteral("Позиция: сумма"), QStringLiteral("Налог: ставка")}));
    QCOMPARE(listTitle(session.window), title(4, 9));
    openTemplate(session.window, session.robot, session.write({{.block = 77}}));
    QCOMPARE(session.robot.takeTexts().size(), 1);
    QCOMPARE(listTexts(session.window), QStringList());
    QCOMPARE(listTitle(session.window), title(0, 0));
}

void tst_FieldList::holeInTheKeysBecomesAnEmptyLine()
{
    EditingSession session(workFields());
    session.probe.bd().items.remove(5);
    typeFilter(session.window, QStringLiteral("x"));
    QCOMPARE(listTexts(session.window),
             (QStringList{QString(), QStringLiteral("Позиция: сумма"), QStringLiteral("Налог: ставка")}));
    QVERIFY(session.probe.bd().items.contains(5));
    QCOMPARE(listTitle(session.window), title(3, 9));

    clickListLine(session.window, 0);
    QCOMPARE(session.probe.curKey(), 5);
    QCOMPARE(shownDesc(session.window), QString());
    QCOMPARE(propertyTable(session.window)->rowCount(), 12);
}

void tst_FieldList::markupAndPlaceholdersStayPlainText()
{
    const QStringList descs{QStringLiteral("<b>жирно</b>: <FONT COLOR=red>красно</FONT>"),
                            QStringLiteral("%1: %2 %L1 100%"), QStringLiteral("&амперсанд: &&quot"),
                            QStringLiteral("Длинно: ") + QString(3000, u'ж')};
    EditingSession session(unplacedFields(descs));
    QCOMPARE(listTexts(session.window), descs);
    for (int row = 0; row < descs.size(); ++row) {
        const auto logged = session.probe.log().size();
        clickListLine(session.window, row);
        QCOMPARE(session.probe.curKey(), row + 2);
        const int limit = named<QLineEdit>(session.window, "lePoleDesc")->maxLength();
        QCOMPARE(shownDesc(session.window), descs.at(row).left(limit));
        QVERIFY(logSince(session.window, logged).size() >= 12);
    }
    clickFilterOnOff(session.window);
    typeFilter(session.window, QStringLiteral("%2"));
    QCOMPARE(listTexts(session.window), QStringList{descs.at(1)});
    QCOMPARE(listTitle(session.window), title(1, 5));
    typeFilter(session.window, QStringLiteral("</B>"));
    QCOMPARE(listTexts(session.window), QStringList{descs.at(0)});

    // The same on the scene.
    auto fields = unplacedFields(descs);
    for (int i = 0; i < fields.size(); ++i)
        fields[i].line = i + 1;
    for (auto& field : fields)
        field.size = 10;
    session.open(fields);
    for (int key = 2; key <= 4; ++key) {
        pickPole(session.window, key);
        QCOMPARE(shownDesc(session.window), descs.at(key - 2));
    }
}

void tst_FieldList::pickedPlacedFieldIsSelectedOnTheScene()
{
    EditingSession session(workFields());
    const auto before = session.records();
    clickButton(session.window, "btnFiltrShowAll");
    pickInList(session.window, QStringLiteral("Чек: итог"));
    QVERIFY(poleItem(session.window, 7)->isSelected());
    QTRY_COMPARE(session.probe.curItem(), poleItem(session.window, 7));
    QCOMPARE(session.probe.curKey(), 0);
    QCOMPARE(shownDesc(session.window), QStringLiteral("Чек: итог"));
    QCOMPARE(cellState(session.window, 1), QStringLiteral("4|4|false"));
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_FieldList::pickedPlacedFieldReplacesTheSelection()
{
    EditingSession session(workFields());
    clickButton(session.window, "btnFiltrShowAll");
    pickPole(session.window, 1);
    pickInList(session.window, QStringLiteral("Чек: итог"));
    QCOMPARE(session.probe.scene().selectedItems(), QList<QGraphicsItem*>{poleItem(session.window, 7)});
    QTRY_COMPARE(session.probe.curItem(), poleItem(session.window, 7));

    // From a field that is picked in the list, too.
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    QCOMPARE(session.probe.curKey(), 5);
    session.settle();
    QCOMPARE(session.probe.curKey(), 5);
    pickInList(session.window, QStringLiteral("Шапка: заголовок"));
    QTRY_COMPARE(session.probe.curItem(), poleItem(session.window, 1));
    QCOMPARE(session.probe.curKey(), 0);
}

void tst_FieldList::pickedUnplacedFieldFillsTheTableAtOnce()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickInList(session.window, QStringLiteral("Налог: ставка"));
    QCOMPARE(session.probe.curKey(), 8);
    QCOMPARE(session.probe.curItem(), nullptr);
    QCOMPARE(shownDesc(session.window), QStringLiteral("Налог: ставка"));
    QCOMPARE(propertyTable(session.window)->rowCount(), 12);
    QCOMPARE(cellState(session.window, 0), QStringLiteral("Регистрация|1|false"));
    QCOMPARE(cellState(session.window, 3), QStringLiteral("0|0|false"));
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_FieldList::pickWithNothingSelectedOutlivesTheLoop()
{
    EditingSession session(workFields());
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    const auto logged = session.probe.log().size();
    for (int turn = 0; turn < 3; ++turn) {
        session.probe.requestRedraw();
        waitForRedraw(session.window);
    }
    QCOMPARE(session.probe.curKey(), 5);
    QCOMPARE(propertyTable(session.window)->rowCount(), 12);
    QCOMPARE(shownDesc(session.window), QStringLiteral("Позиция: секция"));
    QCOMPARE(logSince(session.window, logged).filter(QStringLiteral("new selItem")), QStringList());

    // The pick left no mark behind that would hide the next selection from the loop.
    pickPole(session.window, 3);
    QCOMPARE(session.probe.curKey(), 0);
    QCOMPARE(shownDesc(session.window), QStringLiteral("Позиция: номер"));
}

void tst_FieldList::pickEndsTheSelectionOnTheScene()
{
    EditingSession session(workFields());
    pickPole(session.window, 3);
    const auto logged = session.probe.log().size();
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    QCOMPARE(session.probe.curItem(), nullptr);
    QCOMPARE(session.probe.curKey(), 5);
    QCOMPARE(session.probe.scene().selectedItems().size(), 0);
    session.settle();
    QCOMPARE(session.probe.curKey(), 5);
    QCOMPARE(shownDesc(session.window), QStringLiteral("Позиция: секция"));
    QCOMPARE(propertyTable(session.window)->rowCount(), 12);
    QCOMPARE(cellState(session.window, 2), QStringLiteral("40|40|false"));
    QVERIFY(named<QPushButton>(session.window, "btnSetSetModeView")->isEnabled());
    QVERIFY(!named<QPushButton>(session.window, "btnPoleDel")->isEnabled());
    QCOMPARE(logSince(session.window, logged).filter(QStringLiteral("new selItem")), QStringList());
}

void tst_FieldList::nextSelectionEndsThePick()
{
    EditingSession session(workFields());
    pickPole(session.window, 3);
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    session.settle();
    pickPole(session.window, 3);
    QCOMPARE(session.probe.curKey(), 0);
    QCOMPARE(shownDesc(session.window), QStringLiteral("Позиция: номер"));
    QCOMPARE(cellState(session.window, 2), QStringLiteral("0|0|false"));
    QVERIFY(named<QPushButton>(session.window, "btnPoleDel")->isEnabled());
}

void tst_FieldList::lineWithoutFieldEmptiesTheTable()
{
    EditingSession session(workFields());
    pickPole(session.window, 3);
    session.probe.bd().items[5].Desc = QStringLiteral("Другое: имя");
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    QCOMPARE(session.probe.curKey(), 0);
    QCOMPARE(session.probe.curItem(), nullptr);
    QCOMPARE(propertyTable(session.window)->rowCount(), 0);
    QCOMPARE(shownDesc(session.window), QStringLiteral("Поле не выбрано"));
    QVERIFY(!named<QPushButton>(session.window, "btnSetSetModePoz")->isEnabled());
    QVERIFY(!named<QPushButton>(session.window, "btnPoleDel")->isEnabled());
    session.settle();
    QCOMPARE(propertyTable(session.window)->rowCount(), 0);
}

void tst_FieldList::sizeOfAPickedFieldTakesItsLineOff()
{
    EditingSession session(workFields());
    const auto before = session.records();
    pickInList(session.window, QStringLiteral("Позиция: секция"));
    typeNumber(session.window, 3, QStringLiteral("6"));
    QCOMPARE(listTexts(session.window),
             (QStringList{QStringLiteral("Позиция: сумма"), QStringLiteral("Налог: ставка")}));
    QCOMPARE(listTitle(session.window), title(2, 9));
    QCOMPARE(fieldList(session.window)->selectedItems().size(), 0);
    QCOMPARE(session.probe.curKey(), 5);
    waitForRedraw(session.window);
    session.settle();
    QCOMPARE(session.probe.curKey(), 5);
    QCOMPARE(propertyTable(session.window)->rowCount(), 12);
    QVERIFY(poleItem(session.window, 5) != nullptr);
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("5.Size=6")});

    clickButton(session.window, "btnFiltrShowAll");
    pickInList(session.window, QStringLiteral("Налог: ставка"));
    session.settle();
    session.probe.bd().items[8].X = 8;
    typeNumber(session.window, 3, QStringLiteral("2"));
    QCOMPARE(listTitle(session.window), title(9, 9));
    QVERIFY(listTexts(session.window).contains(QStringLiteral("Налог: ставка")));
}

QTEST_MAIN(tst_FieldList)
#include "tst_fieldlist.moc"
