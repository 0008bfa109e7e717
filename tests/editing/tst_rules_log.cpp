#include "editing/celldelegate.h"
#include "editing/fieldlistlook.h"
#include "editing/rulesbench.h"
#include "support/tablesteps.h"

#include <QGraphicsItem>
#include <QTableWidget>
#include <QTest>

namespace {

const QString kCleared = QStringLiteral("Scene cleared!");

FieldRow unplaced(const QString& desc)
{
    return {.size = 0, .desc = desc};
}

/// What is new in the log beside what the filling of a form tells.
QStringList withoutFilling(QStringList log)
{
    log.removeIf([](const QString& line) {
        return line.startsWith(u"int!=in2") || line.startsWith(u"cellChngd") || line.startsWith(u"dbg:") ||
               line.startsWith(u"dataNewInt") || line.startsWith(u"new selItem");
    });
    return log;
}

} // namespace

class tst_RulesLog : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { m_bench.dropIfFailed(); }

    void commitIsLoggedWriteByWrite_data();
    void commitIsLoggedWriteByWrite();
    void textsAreLoggedAsTheyStand();

    void nameColumnIsNoChange();
    void withoutAFieldNothingIsLogged();
    void headingsAndLinesLogNoChange();
    void clickOnTheTapeGoesBeforeThePickInTheSameTurn();
    void quickPicksInTheListEndWithTheLast();
    void manyChangesShareOneRedraw();

    void fillingAFormChangesNoRecord_data();
    void fillingAFormChangesNoRecord();
    void lookingThroughATemplateChangesNoRecord_data();
    void lookingThroughATemplateChangesNoRecord();

private:
    SharedBench m_bench;
};

void tst_RulesLog::commitIsLoggedWriteByWrite_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("log");
    QTest::newRow("block") << 1 << 0 << QStringLiteral("Итог")
                           << QStringList{
                                  "int!=in2: Итог 0 1",
                                  "dbg: 1 Итог 1",
                                  "dbg: 1 Итог 3",
                                  "cellChngd : 1,0 m1=65538 m2=1 d=Итог di=3",
                                  "int!=in2: Итог 0 3",
                                  "dbg: 3 Итог 3",
                                  "cellChngd : 1,0 m1=65538 m2=1 d=Итог di=3",
                                  "int!=in2: Итог 0 3",
                                  "dbg: 3 Итог 3",
                                  "cellChngd : 1,0 m1=65538 m2=1 d=Итог di=3",
                                  "Scene cleared!",
                                  "new selItem type=0 idx=-1 ...",
                              };
    QTest::newRow("block refused") << 1 << 0 << QStringLiteral("Оплата")
                                   << QStringList{
                                          "int!=in2: Оплата 0 1",
                                          "dbg: 1 Оплата 1",
                                          "dbg: 1 Оплата 5",
                                          "int!=in2: Регистрация 0 1",
                                          "dbg: 1 Регистрация 1",
                                          "cellChngd : 1,0 m1=65538 m2=1 d=Регистрация di=1",
                                          "cellChngd : 1,0 m1=65538 m2=1 d=Оплата di=5",
                                          "int!=in2: Регистрация 0 1",
                                          "dbg: 1 Регистрация 1",
                                          "cellChngd : 1,0 m1=65538 m2=1 d=Регистрация di=1",
                                      };
    QTest::newRow("line") << 1 << 1 << QStringLiteral("2")
                          << QStringList{
                                 "int!=in2: 2 2 1",
                                 "cellChngd : 1,1 m1=65538 m2=1 d=2 di=1",
                                 "cellChngd : 1,1 m1=65538 m2=1 d=2 di=2",
                                 "cellChngd : 1,1 m1=65538 m2=1 d=2 di=2",
                                 "Scene cleared!",
                                 "new selItem type=0 idx=-1 ...",
                             };
    QTest::newRow("line refused") << 1 << 1 << QStringLiteral("9")
                                  << QStringList{
                                         "int!=in2: 9 9 1",
                                         "cellChngd : 1,1 m1=65538 m2=1 d=9 di=1",
                                         "cellChngd : 1,1 m1=65538 m2=1 d=1 di=1",
                                         "cellChngd : 1,1 m1=65538 m2=1 d=9 di=9",
                                         "cellChngd : 1,1 m1=65538 m2=1 d=1 di=1",
                                     };
    QTest::newRow("position") << 1 << 2 << QStringLiteral("30")
                              << QStringList{
                                     "int!=in2: 30 30 7",
                                     "cellChngd : 1,2 m1=65538 m2=1 d=30 di=7",
                                     "cellChngd : 1,2 m1=65538 m2=1 d=30 di=30",
                                     "cellChngd : 1,2 m1=65538 m2=1 d=30 di=30",
                                 };
    QTest::newRow("alignment") << 1 << 4 << QStringLiteral("Справа")
                               << QStringList{
                                      "int!=in2: Справа 0 1", "cellChngd : 1,4 m1=65538 m2=1 d=Справа di=3",
                                      "int!=in2: Справа 0 3", "cellChngd : 1,4 m1=65538 m2=1 d=Справа di=3",
                                      "int!=in2: Справа 0 3", "cellChngd : 1,4 m1=65538 m2=1 d=Справа di=3",
                                  };
    QTest::newRow("press right") << 1 << 6 << QStringLiteral("Да")
                                 << QStringList{
                                        "cellChngd : 1,6 m1=65538 m2=1 d=Да di=0", "int!=in2: Да 0 1",
                                        "cellChngd : 1,6 m1=65538 m2=1 d=Да di=1", "int!=in2: Да 0 1",
                                        "cellChngd : 1,6 m1=65538 m2=1 d=Да di=1",
                                    };
    QTest::newRow("masking") << 1 << 9 << QStringLiteral("Маскировать")
                             << QStringList{
                                    "dataNewInt= 0 Маскировать",
                                    "dataNewInt= 1",
                                    "cellChngd : 1,9 m1=65538 m2=1 d=Маскировать di=1",
                                    "int!=in2: Маскировать 0 1",
                                    "dataNewInt= 1 Маскировать",
                                    "dataNewInt= 1",
                                    "cellChngd : 1,9 m1=65538 m2=1 d=Маскировать di=1",
                                    "int!=in2: Маскировать 0 1",
                                    "dataNewInt= 1 Маскировать",
                                    "dataNewInt= 1",
                                    "cellChngd : 1,9 m1=65538 m2=1 d=Маскировать di=1",
                                };
    QTest::newRow("double width") << 2 << 1 << QStringLiteral("Да")
                                  << QStringList{
                                         "cellChngd : 1,1 m1=65538 m2=2 d=Да di=1", "int!=in2: Да 0 1",
                                         "cellChngd : 1,1 m1=65538 m2=2 d=Да di=1", "int!=in2: Да 0 1",
                                         "cellChngd : 1,1 m1=65538 m2=2 d=Да di=1", "Scene cleared!",
                                         "new selItem type=0 idx=-1 ...",
                                     };
    QTest::newRow("format") << 2 << 5 << QStringLiteral("Не маскировать нули")
                            << QStringList{
                                   "int!=in2: Не маскировать нули 0 2",
                                   "cellChngd : 1,5 m1=65538 m2=2 d=Не маскировать нули di=0",
                                   "int!=in2: Не маскировать нули 0 4294967295",
                                   "cellChngd : 1,5 m1=65538 m2=2 d=Не маскировать нули di=0",
                                   "int!=in2: Не маскировать нули 0 4294967295",
                                   "cellChngd : 1,5 m1=65538 m2=2 d=Не маскировать нули di=0",
                               };
    QTest::newRow("character") << 2 << 6 << QStringLiteral("5")
                               << QStringList{
                                      "int!=in2: 5 5 32", "cellChngd : 1,6 m1=65538 m2=2 d=5 di=32",
                                      "int!=in2: 5 5 53", "cellChngd : 1,6 m1=65538 m2=2 d=5 di=53",
                                      "int!=in2: 5 5 53", "cellChngd : 1,6 m1=65538 m2=2 d=5 di=53",
                                      "Scene cleared!",   "new selItem type=0 idx=-1 ...",
                                  };
}

void tst_RulesLog::commitIsLoggedWriteByWrite()
{
    QFETCH(int, mode);
    QFETCH(int, row);
    QFETCH(QString, text);
    QFETCH(QStringList, log);
    auto& bench = m_bench.get();
    FieldRow below = other(2, 0);
    below.block = 1;
    FieldRow target = other(1, 0);
    target.block = 3;
    bench.open({{.block = 1, .x = 7, .fractFormat = 2, .blockMask = 0x000a}, below, target});
    bench.pick(1, mode);
    bool isNumber = false;
    text.toInt(&isNumber);
    if (isNumber && mode == 1)
        bench.type(row, text);
    else
        bench.choose(row, text);
    QCOMPARE(bench.outcome().log, log);
}

void tst_RulesLog::textsAreLoggedAsTheyStand()
{
    auto& bench = m_bench.get();
    bench.open({FieldRow()});
    bench.pick(1);
    // Neither a place marker nor a mark of rich text means anything in the log.
    valueCell(bench.window(), 9)->setText(QStringLiteral("<b>%1 %6</b>"));
    bench.settle();
    const QStringList log{
        "dataNewInt= 0 <b>%1 %6</b>",
        "dataNewInt= 0",
        "cellChngd : 1,9 m1=65538 m2=1 d=<b>%1 %6</b> di=0",
    };
    QCOMPARE(bench.outcome().log, log);
    QCOMPARE(bench.outcome().changes, QStringList());
}

void tst_RulesLog::nameColumnIsNoChange()
{
    auto& bench = m_bench.get();
    bench.open({FieldRow()});
    bench.pick(1);
    for (int row = 0; row < 12; ++row)
        propertyTable(bench.window())->item(row, 0)->setText(QStringLiteral("Справа"));
    bench.settle();
    QCOMPARE(bench.outcome().lines(), Outcome().lines());
}

void tst_RulesLog::withoutAFieldNothingIsLogged()
{
    auto& bench = m_bench.get();
    bench.open({FieldRow()});
    bench.pick(1);
    // The tape is drawn anew at once; the table keeps its cells until the next turn of the loop.
    clickButton(bench.window(), "btnRedraw");
    QCOMPARE(bench.probe().curItem(), nullptr);
    QTableWidgetItem* const cell = valueCell(bench.window(), 4);
    QVERIFY(cell != nullptr);
    bench.watch();
    cell->setText(QStringLiteral("Справа"));
    QCOMPARE(bench.outcome().log, QStringList());
    bench.settle();
    QCOMPARE(bench.outcome().log, QStringList{QStringLiteral("new selItem type=0 idx=-1 ...")});
    QCOMPARE(bench.outcome().changes, QStringList());
}

void tst_RulesLog::headingsAndLinesLogNoChange()
{
    auto& bench = m_bench.get();
    bench.open({{.line = 2}});
    bench.watch();
    pickItem(bench.window(), headerItem(bench.window(), 3));
    pickItem(bench.window(), lineItem(bench.window(), 0, 1));
    propertyTable(bench.window())->item(2, 1)->setText(QStringLiteral("7"));
    bench.settle();
    QCOMPARE(bench.outcome().changes, QStringList());
    QCOMPARE(bench.outcome().log, (QStringList{QStringLiteral("new selItem type=65537 idx=3 ..."),
                                               QStringLiteral("new selItem type=65539 idx=0 ...")}));
}

void tst_RulesLog::clickOnTheTapeGoesBeforeThePickInTheSameTurn()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 7}, other(1, 20), unplaced(QStringLiteral("Запас: поле"))});
    bench.pick(1);
    // A pick in the list and right after it, within one turn, a click on the tape: the table shows the latter.
    pickInList(bench.window(), QStringLiteral("Запас: поле"));
    clickItem(bench.window(), poleItem(bench.window(), 2));
    bench.settle();
    QVERIFY(poleItem(bench.window(), 2)->isSelected());
    QCOMPARE(bench.probe().curKey(), 0);
    QCOMPARE(bench.probe().curItem(), poleItem(bench.window(), 2));
    bench.type(2, QStringLiteral("50"));
    QCOMPARE(bench.outcome().changes, QStringList{QStringLiteral("2.X 20>50")});
}

void tst_RulesLog::quickPicksInTheListEndWithTheLast()
{
    auto& bench = m_bench.get();
    const QString one = QStringLiteral("Один: поле");
    const QString two = QStringLiteral("Два: поле");
    const QString spare = QStringLiteral("Запас: поле");
    bench.open({{.x = 7, .desc = one}, {.x = 30, .desc = two}, unplaced(spare)});
    clickButton(bench.window(), "btnFiltrShowAll");
    const auto pickQuickly = [&](const QStringList& texts) {
        for (const auto& text : texts)
            pickInList(bench.window(), text);
        bench.settle();
    };
    const auto probe = bench.probe();

    pickQuickly({one});
    pickQuickly({spare, two});
    QCOMPARE(probe.curKey(), 0);
    QCOMPARE(probe.curItem(), poleItem(bench.window(), 2));

    // Back to the one that the loop has seen last.
    pickQuickly({spare, two});
    QCOMPARE(probe.curKey(), 0);
    QCOMPARE(probe.curItem(), poleItem(bench.window(), 2));
    QCOMPARE(valueCell(bench.window(), 2)->text(), QStringLiteral("30"));

    pickQuickly({one, spare});
    QCOMPARE(probe.curKey(), 3);
    QVERIFY(probe.scene().selectedItems().isEmpty());

    // What is picked on the tape after that is taken like any other.
    bench.pick(1);
    QCOMPARE(probe.curKey(), 0);
    clickButton(bench.window(), "btnFiltrShowAll");
}

void tst_RulesLog::manyChangesShareOneRedraw()
{
    auto& bench = m_bench.get();
    bench.open({{.x = 7}, other(2, 0)});
    bench.pick(1, 2);
    // Faster than any hand: all between two turns of the loop.
    for (const auto& [row, number] : {std::pair{0, 3}, std::pair{3, 5}, std::pair{0, 4}}) {
        valueCell(bench.window(), row)->setText(QString::number(number));
        valueCell(bench.window(), row)->setData(CellDelegate::kValueRole, number);
    }
    QVERIFY(bench.probe().redrawPending());
    QCOMPARE(bench.outcome().log.count(kCleared), 0);
    bench.settle();
    QCOMPARE(bench.outcome().changes,
             (QStringList{QStringLiteral("1.Font 0>4"), QStringLiteral("1.LineGap 0>5")}));
    QCOMPARE(bench.outcome().log.count(kCleared), 1);
}

void tst_RulesLog::fillingAFormChangesNoRecord_data()
{
    QTest::addColumn<FieldRow>("field");
    QTest::addColumn<int>("poked");
    const int none = 0;
    QTest::newRow("no alignment") << FieldRow{.alignInPole = 0, .alignOnTape = 0} << none;
    QTest::newRow("numbers beyond the editors")
        << FieldRow{.gap = 255, .line = 255, .x = 255, .size = 255} << none;
    QTest::newRow("line feed as the character") << FieldRow{.tailChar = 10} << none;
    QTest::newRow("null character") << FieldRow{.tailChar = 0} << none;
    QTest::newRow("a code without a character") << FieldRow{.tailChar = 152} << none;
    QTest::newRow("all that is yes") << FieldRow{.block = 9,
                                                 .font = 7,
                                                 .x2x = 1,
                                                 .x2y = 1,
                                                 .flags = 3,
                                                 .dropIfZero = 1,
                                                 .pressRight = 1,
                                                 .expand = 1,
                                                 .cutToWidth = 1,
                                                 .maskMode = 3,
                                                 .fractFormat = 3,
                                                 .brightness = 15,
                                                 .alignInPole = 3,
                                                 .alignOnTape = 3,
                                                 .tailChar = 255}
                                     << none;
    QTest::newRow("nothing known") << FieldRow() << -1;
    QTest::newRow("more than eight bits") << FieldRow() << 300;
    QTest::newRow("no low byte") << FieldRow() << 256;
}

void tst_RulesLog::fillingAFormChangesNoRecord()
{
    QFETCH(FieldRow, field);
    QFETCH(int, poked);
    auto& bench = m_bench.get();
    for (const bool isListed : {false, true}) {
        if (isListed)
            field.size = 0;
        bench.open({field, other(1, 0)});
        auto& record = bench.probe().bd().getPoleByKey(1);
        if (poked != 0) {
            // What the tape does not need; no file gives such values.
            for (int BD_T20Items::T20Item::*const param : BD_T20Items::T20Item::kDeviceParams) {
                if (param != &BD_T20Items::T20Item::Block && param != &BD_T20Items::T20Item::Line &&
                    param != &BD_T20Items::T20Item::X && param != &BD_T20Items::T20Item::Size)
                    record.*param = poked;
            }
            if (isListed)
                record.X = poked;
        }
        bench.watch();
        const auto before = bench.probe().bd().items;
        for (const int mode : {1, 2, 1}) {
            if (mode == 1 && bench.probe().curItem() == nullptr && bench.probe().curKey() == 0) {
                bench.pick(1, 1);
            } else {
                clickButton(bench.window(), mode == 1 ? "btnSetSetModePoz" : "btnSetSetModeView");
            }
            QCOMPARE(propertyTable(bench.window())->rowCount(), mode == 1 ? 12 : 8);
        }
        bench.settle();
        const Outcome outcome = bench.outcome();
        QCOMPARE(outcome.changes, QStringList());
        QCOMPARE(outcome.warnings, QStringList());
        QVERIFY(!outcome.log.contains(kCleared));
        QCOMPARE(outcome.refills, 0);
        for (const auto param : BD_T20Items::T20Item::kDeviceParams)
            QCOMPARE(bench.record(1).*param, before.value(1).*param);
    }
}

void tst_RulesLog::lookingThroughATemplateChangesNoRecord_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("80 mm") << QStringLiteral("grocery-80mm.csv");
    QTest::newRow("57 mm") << QStringLiteral("grocery-57mm.csv");
}

void tst_RulesLog::lookingThroughATemplateChangesNoRecord()
{
    QFETCH(QString, file);
    auto& bench = m_bench.get();
    bench.openFile(QStringLiteral(SAMPLES_DIR "/") + file);
    const auto before = bench.probe().bd().items;
    const auto logged = bench.probe().log().size();
    for (int key = 1; key <= 160; key += 7) {
        bench.pick(key, key % 2 + 1);
        QCOMPARE(shownDesc(bench.window()), before.value(key).Desc);
    }
    bench.settle();
    QCOMPARE(bench.probe().bd().items.size(), before.size());
    for (int key = 1; key <= 160; ++key) {
        for (const auto param : BD_T20Items::T20Item::kDeviceParams)
            QCOMPARE(bench.record(key).*param, before.value(key).*param);
    }
    QCOMPARE(withoutFilling(logSince(bench.window(), logged)), QStringList());
}

QTEST_MAIN(tst_RulesLog)
#include "tst_rules_log.moc"
