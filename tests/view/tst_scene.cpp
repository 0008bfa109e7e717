#include "support/expectedscene.h"
#include "support/session.h"

#include <QComboBox>
#include <QGraphicsLineItem>
#include <QGraphicsView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

namespace {

const QString kCleared = QStringLiteral("Scene cleared!");

constexpr int kHeading = 65537;
constexpr int kField = 65538;
constexpr int kLine = 65539;

/// Two fields on line 2 of block 1.
QList<FieldRow> smallTemplate()
{
    return {{.block = 1, .font = 1, .line = 2, .x = 3, .size = 5, .desc = "Позиция: цена"},
            {.block = 1, .font = 7, .line = 2, .x = 0, .size = 2, .desc = "Без класса"}};
}

/// Whatever is unusual and still allowed.
QList<FieldRow> oddTemplate()
{
    return {
        {.block = 9, .font = 1, .line = 3, .size = 4, .desc = "Сторно: в последнем блоке"},
        {.block = 9, .line = 1, .size = 40, .desc = "Сторно: снизу"},
        {.block = 0, .font = 6, .x2x = 1, .x2y = 1, .line = 1, .x = 2, .size = 6, .desc = "Двойное: оба"},
        {.block = 0, .font = 3, .line = 1, .x = 9, .size = 3, .desc = "Двойное: сосед"},
        {.block = 2, .font = 4, .x2y = 1, .line = 1, .size = 30, .desc = "Высокое: поле"},
        {.block = 2, .font = 5, .x2x = 1, .line = 2, .size = 30, .desc = "Широкое: слишком"},
        {.block = 4, .line = 1, .size = 0, .desc = "Скрыто: на занятой строке"},
        {.block = 4, .line = 1, .x = 7, .size = 1, .desc = "Знак: один"},
        {.block = 6, .line = 9, .size = 0, .desc = "Скрыто: за концом блока"},
        {.block = 3, .line = 1, .x = 255, .size = 255, .desc = "Итог: за краем ленты"},
        {.block = 5, .font = 2, .line = 2, .x = 4, .size = 8, .desc = "Оплата: первое"},
        {.block = 5, .font = 7, .line = 2, .x = 4, .size = 5, .desc = "Оплата: второе там же"},
        {.block = 7, .font = 0, .line = 1, .size = 53, .desc = ""},
        {.block = 8, .font = 5, .line = 255, .size = 10, .desc = "Далеко: внизу"},
    };
}

/// As many fields as a device has, all over the tape.
QList<FieldRow> fullTemplate()
{
    QList<FieldRow> fields;
    for (int i = 0; i < 160; ++i) {
        fields.append({.block = i * 7 % 10,
                       .font = i % 8,
                       .x2x = i % 5 == 0 ? 1 : 0,
                       .x2y = i % 7 == 0 ? 1 : 0,
                       .line = i / 10 * 3 % 14 + 1,
                       .x = i * 13 % 48,
                       .size = i % 11 == 0 ? 0 : i % 29 + 1,
                       .desc = i % 3 == 0 ? QStringLiteral("Поле %1").arg(i)
                                          : QStringLiteral("Поле: номер %1").arg(i)});
    }
    return fields;
}

/// A user with a template before them.
struct TapeSession : Session
{
    TapeSession() = default;

    explicit TapeSession(const QList<FieldRow>& fields)
    {
        openFields(fields);
        log.takeNew();
    }

    void openFields(const QList<FieldRow>& fields)
    {
        open(dir.write("template.csv", maskFile(fields)));
        QCOMPARE(robot.takeTexts(), QStringList());
    }

    void chooseWidth(int index) { chooseInCombo(window, "comboLentaSize", index); }
    QGraphicsView* view() const { return named<QGraphicsView>(window, "graphicsView_1"); }
    QString scaleText() const { return named<QLineEdit>(window, "lePolesMasshtab")->text(); }

    QList<QGraphicsItem*> items(int type) const
    {
        QList<QGraphicsItem*> found;
        for (auto* const item : probe.scene().items(Qt::AscendingOrder)) {
            if (item->type() == type)
                found.append(item);
        }
        return found;
    }

    /// y of the guide of a line; -1 if there is none.
    double lineY(int block, int line) const
    {
        for (const auto* const item : items(kLine)) {
            if (item->data(1) == block && item->data(2) == line)
                return item->y();
        }
        return -1;
    }
};

constexpr int kWidths[] = {384, 432, 576}; // by the index in the list of widths

} // namespace

class tst_Scene : public QObject
{
    Q_OBJECT

private slots:
    void smallTemplateGivesTheseItems();
    void sceneShowsTheTemplate_data();
    void sceneShowsTheTemplate();
    void sceneIsEmptyBeforeTheFirstTemplateAndAfterARefusedOne();
    void edgesStandAtTheChosenWidth();
    void lastBlockLiesBelowTheSideEdges();
    void headingsOffMoveEverythingUp();
    void blockWithoutFieldsHasOnlyItsHeading();
    void templateOfHiddenFieldsShowsHeadingsAlone();
    void fieldBeyondTheTapeIsDrawnBeyondIt();
    void sceneReachesLeftOfTheTape();
    void scaleHasFiveSteps();
    void scaleAndScrollingOutliveRebuilds();
    void scalingRebuildsNothing();
    void everyRedrawCommandRebuildsOnce();
    void unknownWidthIsTakenForTheWidest();
    void redrawLeavesTheLinesOfTheModelAlone();
};

void tst_Scene::smallTemplateGivesTheseItems()
{
    TapeSession s(smallTemplate());
    QStringList seen;
    for (const auto* const item : s.probe.scene().items(Qt::AscendingOrder)) {
        if (item->type() == QGraphicsLineItem::Type) {
            const QLineF line = qgraphicsitem_cast<const QGraphicsLineItem*>(item)->line();
            seen.append(
                QStringLiteral("%1,%2-%3,%4").arg(line.x1()).arg(line.y1()).arg(line.x2()).arg(line.y2()));
            continue;
        }
        QString kind = item->type() == kHeading ? "heading"
                       : item->type() == kField ? "field"
                       : item->type() == kLine  ? "line"
                                                : "button";
        for (const int number : {1, 2}) {
            if (item->data(number).isValid())
                kind += u' ' + item->data(number).toString();
        }
        const QSizeF size = item->boundingRect().size();
        seen.append(QStringLiteral("%1 at %2,%3 %4x%5")
                        .arg(kind)
                        .arg(item->x())
                        .arg(item->y())
                        .arg(size.width())
                        .arg(size.height()));
    }
    QCOMPARE(seen.join(u'\n'), QStringList({"0,0-576,0",
                                            "0,0-0,219", // 9 headings, an empty line and one of font 7
                                            "577,0-577,219",
                                            "heading 0 at 1,1 575x20",
                                            "heading 1 at 1,22 575x20",
                                            "heading 2 at 1,72 575x20",
                                            "heading 3 at 1,93 575x20",
                                            "heading 4 at 1,114 575x20",
                                            "heading 5 at 1,135 575x20",
                                            "heading 6 at 1,156 575x20",
                                            "heading 7 at 1,177 575x20",
                                            "heading 8 at 1,198 575x20",
                                            "heading 9 at 1,219 575x20",
                                            "line 1 1 at 1,43 575x14",
                                            "line 1 2 at 1,58 575x13",
                                            "field 1 at 28,58 45x14",
                                            "field 2 at 1,58 18x14",
                                            "-30,0--29,0",
                                            "button at 0,0 24x24",
                                            "button at 0,0 24x24"})
                                   .join(u'\n'));
}

void tst_Scene::sceneShowsTheTemplate_data()
{
    QTest::addColumn<QList<FieldRow>>("fields");
    QTest::newRow("small") << smallTemplate();
    QTest::newRow("odd") << oddTemplate();
    QTest::newRow("full") << fullTemplate();
}

void tst_Scene::sceneShowsTheTemplate()
{
    QFETCH(const QList<FieldRow>, fields);
    TapeSession s(fields);
    TapeChoice choice;
    QCOMPARE(sceneDifferences(s.probe.scene(), fields, choice), QStringList());
    for (const int widthIndex : {0, 1, 2}) {
        s.chooseWidth(widthIndex);
        choice.width = kWidths[widthIndex];
        for (int i = 0; i < 2; ++i) {
            s.click("btnBlTitlesOnOff");
            choice.headings = !choice.headings;
            for (int k = 0; k < 2; ++k) {
                s.click("btnFontMonoWide");
                choice.mono = !choice.mono;
                QCOMPARE(sceneDifferences(s.probe.scene(), fields, choice), QStringList());
            }
        }
    }
}

void tst_Scene::sceneIsEmptyBeforeTheFirstTemplateAndAfterARefusedOne()
{
    TapeSession s;
    QVERIFY(s.probe.scene().items().isEmpty());
    QVERIFY(!s.probe.log().contains(kCleared));
    s.openFields(smallTemplate());
    QVERIFY(!s.items(kField).isEmpty());
    s.log.takeNew();
    s.open(s.dir.write("bad.csv", "nothing"));
    QCOMPARE(s.log.takeNew(), (QStringList{"Не распознан формат!", kCleared}));
    // Only the white line and the two hidden buttons are left.
    QCOMPARE(sceneDifferences(s.probe.scene(), {}, {}), QStringList());
    QCOMPARE(s.probe.scene().items().size(), 3);
}

void tst_Scene::edgesStandAtTheChosenWidth()
{
    TapeSession s(smallTemplate());
    const auto rightEdge = [&s] {
        return qgraphicsitem_cast<QGraphicsLineItem*>(s.items(QGraphicsLineItem::Type).at(2))->line().x1();
    };
    QCOMPARE(rightEdge(), 577.0);
    QCOMPARE(s.items(kLine).first()->boundingRect().width(), 575.0);
    s.chooseWidth(0);
    QCOMPARE(rightEdge(), 385.0);
    QCOMPARE(s.items(kLine).first()->boundingRect().width(), 383.0);
    s.chooseWidth(1);
    QCOMPARE(rightEdge(), 433.0);
    s.chooseWidth(2);
    QCOMPARE(rightEdge(), 577.0);
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void tst_Scene::lastBlockLiesBelowTheSideEdges()
{
    TapeSession s(oddTemplate());
    const auto edges = s.items(QGraphicsLineItem::Type);
    const double end = qgraphicsitem_cast<QGraphicsLineItem*>(edges.at(1))->line().y2();
    QCOMPARE(qgraphicsitem_cast<QGraphicsLineItem*>(edges.at(2))->line().y2(), end);
    QVERIFY(s.lineY(9, 1) > end);
    QCOMPARE(s.lineY(9, 1), end + 21);
    int inLastBlock = 0;
    for (const auto* const item : s.items(kField)) {
        if (item->y() > end)
            ++inLastBlock;
    }
    QCOMPARE(inLastBlock, 2);
}

void tst_Scene::headingsOffMoveEverythingUp()
{
    const auto fields = manyFields(300); // thirty lines in each of the ten blocks
    TapeSession s(fields);
    QCOMPARE(s.items(kHeading).size(), 10);
    QList<double> before;
    for (int b = 0; b < 10; ++b)
        before.append(s.lineY(b, 1));
    s.click("btnBlTitlesOnOff");
    QCOMPARE(s.items(kHeading).size(), 0);
    QCOMPARE(s.items(kLine).size(), 300);
    for (int b = 0; b < 10; ++b)
        QCOMPARE(s.lineY(b, 1), before.at(b) - 21 * (b + 1));
    s.click("btnBlTitlesOnOff");
    QCOMPARE(s.items(kHeading).size(), 10);
    for (int b = 0; b < 10; ++b)
        QCOMPARE(s.lineY(b, 1), before.at(b));
}

void tst_Scene::blockWithoutFieldsHasOnlyItsHeading()
{
    TapeSession s(smallTemplate());
    const auto inBlock = [&s](int block) {
        QStringList kinds;
        for (const auto* const item : s.items(kHeading) + s.items(kLine)) {
            if (item->data(1) == block)
                kinds.append(item->type() == kHeading ? "heading" : "line");
        }
        return kinds;
    };
    QCOMPARE(inBlock(0), QStringList{"heading"});
    QCOMPARE(inBlock(1), (QStringList{"heading", "line", "line"}));
    s.click("btnBlTitlesOnOff");
    QCOMPARE(inBlock(0), QStringList());
    QCOMPARE(inBlock(1), (QStringList{"line", "line"}));
}

void tst_Scene::templateOfHiddenFieldsShowsHeadingsAlone()
{
    const QList<FieldRow> hidden{{.block = 1, .line = 5, .size = 0}, {.block = 9, .line = 5, .size = 0}};
    TapeSession s(hidden);
    QCOMPARE(sceneDifferences(s.probe.scene(), hidden, {}), QStringList());
    QCOMPARE(s.items(kHeading).size(), 10);
    QCOMPARE(s.items(kLine).size(), 0);
    QCOMPARE(s.items(kField).size(), 0);
}

void tst_Scene::fieldBeyondTheTapeIsDrawnBeyondIt()
{
    TapeSession s(QList<FieldRow>{{.line = 1, .x = 100, .size = 3}});
    QCOMPARE(s.items(kField).first()->pos(), QPointF(12 * 100 + 1, 22));
    QVERIFY(s.items(kField).first()->isVisible());
    QVERIFY(s.probe.scene().itemsBoundingRect().right() >= 1237);
}

void tst_Scene::sceneReachesLeftOfTheTape()
{
    TapeSession s(smallTemplate());
    const double left = s.probe.scene().itemsBoundingRect().left();
    QVERIFY2(left <= -30 && left >= -31, qPrintable(QString::number(left)));
}

void tst_Scene::scaleHasFiveSteps()
{
    TapeSession s(smallTemplate());
    const auto expect = [&s](const char* text, double factor) {
        QCOMPARE(s.scaleText(), QString::fromLatin1(text));
        QCOMPARE(s.view()->transform().m11(), factor);
        QCOMPARE(s.view()->transform().m22(), factor);
        QVERIFY(s.view()->transform().type() <= QTransform::TxScale);
    };
    expect("100%", 1);
    s.click("btnScaleX20");
    expect("150%", 1.5);
    s.click("btnScaleX20");
    expect("225%", 2.25);
    s.click("btnScaleX20");
    expect("225%", 2.25);
    s.click("btnScaleX05");
    expect("150%", 1.5);
    s.click("btnScaleX05");
    expect("100%", 1);
    s.click("btnScaleX05");
    expect("67%", 2.0 / 3);
    s.click("btnScaleX05");
    expect("44%", 4.0 / 9);
    s.click("btnScaleX05");
    expect("44%", 4.0 / 9);
    s.click("btnScaleX20");
    expect("67%", 2.0 / 3);
    s.click("btnScaleX20");
    expect("100%", 1);
}

void tst_Scene::scaleAndScrollingOutliveRebuilds()
{
    TapeSession s(fullTemplate());
    s.click("btnScaleX20");
    s.click("btnScaleX20");
    auto* const down = s.view()->verticalScrollBar();
    auto* const right = s.view()->horizontalScrollBar();
    QTRY_VERIFY(down->maximum() > 300);
    QTRY_VERIFY(right->maximum() > 100);
    down->setValue(300);
    right->setValue(50);
    const auto isKept = [&] {
        QCoreApplication::processEvents();
        return down->value() == 300 && right->value() == 50 && s.scaleText() == QLatin1String("225%") &&
               qFuzzyCompare(s.view()->transform().m11(), 2.25);
    };
    QVERIFY(isKept());
    s.click("btnRedraw");
    QVERIFY(isKept());
    s.click("btnFontMonoWide");
    QVERIFY(isKept());
    s.openFields(fullTemplate());
    QVERIFY(isKept());

    // A refused template takes the buttons away, not the scale.
    s.open(s.dir.write("bad.csv", "nothing"));
    QCOMPARE(s.scaleText(), QStringLiteral("225%"));
    s.click("btnScaleX05");
    QCOMPARE(s.scaleText(), QStringLiteral("225%"));
    s.robot.takeTexts();
    s.openFields(fullTemplate());
    s.click("btnScaleX05");
    QCOMPARE(s.scaleText(), QStringLiteral("150%"));
    QCOMPARE(s.view()->transform().m11(), 1.5);
}

void tst_Scene::scalingRebuildsNothing()
{
    TapeSession s(smallTemplate());
    const auto items = s.probe.scene().items();
    s.click("btnScaleX20");
    s.click("btnScaleX05");
    s.click("btnScaleX05");
    QCOMPARE(s.log.takeNew(), QStringList());
    QCOMPARE(s.probe.scene().items(), items);
}

void tst_Scene::everyRedrawCommandRebuildsOnce()
{
    TapeSession s(smallTemplate());
    for (const char* const button : {"btnRedraw", "btnBlTitlesOnOff", "btnFontMonoWide"}) {
        s.click(button);
        QCOMPARE(s.log.takeNew(), QStringList{kCleared});
    }
    s.chooseWidth(1);
    QCOMPARE(s.log.takeNew(), QStringList{kCleared});
    // The entry that stands there already is no change.
    s.chooseWidth(1);
    QCOMPARE(s.log.takeNew(), QStringList());
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void tst_Scene::unknownWidthIsTakenForTheWidest()
{
    TapeSession s(smallTemplate());
    auto* const widths = named<QComboBox>(s.window, "comboLentaSize");
    widths->addItem(QStringLiteral("58мм"));
    s.chooseWidth(0);
    s.log.takeNew();
    s.chooseWidth(3);
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, QStringLiteral("Неизвестная ширина ленты!"));
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    QCOMPARE(s.log.takeNew(), QStringList{kCleared});
    QCOMPARE(s.probe.tapeWidth(), 576);
    QCOMPARE(sceneDifferences(s.probe.scene(), smallTemplate(), {}), QStringList());
}

void tst_Scene::redrawLeavesTheLinesOfTheModelAlone()
{
    // One field that shows, and one on the empty line before it that does not yet.
    QList<FieldRow> fields{{.line = 2}, {.font = 1, .line = 1, .size = 0}};
    TapeSession s(fields);
    s.probe.bd().getPoleByKey(2).Size = 10;
    s.click("btnRedraw");
    // The field is drawn, but its line has no field as yet: it keeps its height and the cells of no font.
    QCOMPARE(s.items(kField).size(), 2);
    QCOMPARE(s.items(kField).at(1)->boundingRect().size(), QSizeF(50, 15));
    QCOMPARE(s.lineY(0, 2) - s.lineY(0, 1), 15.0);

    s.probe.requestRedraw();
    QTRY_VERIFY(!s.probe.redrawPending());
    fields[1].size = 10;
    QCOMPARE(sceneDifferences(s.probe.scene(), fields, {}), QStringList());
}

QTEST_MAIN(tst_Scene)
#include "tst_scene.moc"
