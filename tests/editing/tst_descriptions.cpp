#include "editing/editingsession.h"
#include "editing/fieldlistlook.h"
#include "editing/tablerows.h"
#include "editing/trapsteps.h"
#include "support/expectedscene.h"
#include "support/tablesteps.h"
#include "view/fieldpicture.h"

#include <QCheckBox>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QTableWidget>
#include <QTest>
#include <QToolTip>

#include <utility>

namespace {

const QString kTwin = QStringLiteral("Двойник: поле");

/// Lets the pointer rest at `at` of `widget` and returns the tool tip that this gives.
QString toolTipAt(QWidget* widget, const QPoint& at)
{
    QToolTip::hideText();
    QHelpEvent rest(QEvent::ToolTip, at, widget->mapToGlobal(at));
    QCoreApplication::sendEvent(widget, &rest);
    return QToolTip::text();
}

/// Two fields without a description and two with the same one, the second of each pair on the tape.
///
/// | key | desc   | line | size |
/// |-----|--------|------|------|
/// | 1   | own    | 1    | 10   |
/// | 2   | none   | 5    | 0    |
/// | 3   | none   | 2    | 8    |
/// | 4   | twin   | 6    | 0    |
/// | 5   | twin   | 3    | 9    |
QList<FieldRow> pairs()
{
    return {{.line = 1, .desc = QStringLiteral("На ленте: поле")},
            {.line = 5, .size = 0, .desc = QString()},
            {.line = 2, .size = 8, .desc = QString()},
            {.line = 6, .size = 0, .desc = kTwin},
            {.line = 3, .size = 9, .desc = kTwin}};
}

/// The same with the first of each pair on the tape.
QList<FieldRow> turnedPairs()
{
    auto fields = pairs();
    std::swap(fields[1], fields[2]);
    std::swap(fields[3], fields[4]);
    return fields;
}

QStringList oddDescriptions()
{
    return {QStringLiteral("<b>x</b>"),
            QStringLiteral("%1 %2 &amp;"),
            QStringLiteral("<b>жирно</b>: <FONT COLOR=red>красно</FONT>"),
            QStringLiteral("%1: %2 %L3 100% &lt;"),
            QStringLiteral("&Поле: &&сумма"),
            QStringLiteral("<i>a</i>&nbsp;<br>"),
            QStringLiteral("<html><body><table><tr><td>a</td></tr></table>")};
}

QList<FieldRow> oddFields(int size)
{
    QList<FieldRow> fields{{.line = 1, .desc = QStringLiteral("На ленте: поле")}};
    int line = 1;
    for (const auto& desc : oddDescriptions())
        fields.append({.line = ++line, .size = size, .desc = desc});
    return fields;
}

/// Opens `fields` from a file with commas for semicolons, which a description may then hold.
void openOdd(EditingSession& session, const QList<FieldRow>& fields)
{
    QByteArray bytes;
    int type = 0;
    for (FieldRow field : fields) {
        const QString desc = std::exchange(field.desc, QString());
        bytes += maskRecord(type++, field).replace(';', ',') + desc.toUtf8() + '\n';
    }
    openTemplate(session.window, session.robot, session.dir.write(QStringLiteral("odd.csv"), bytes));
    QVERIFY(session.probe.maket().getShablonLoaded());
    QCOMPARE(session.records().size(), fields.size());
    session.activate();
    session.settle();
}

/// Where `image` is not as its first pixel, cut to what lies between the first and the last such row and column.
QImage inkOf(const QImage& image)
{
    QImage ink(image.size(), QImage::Format_Mono);
    ink.fill(0);
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == image.pixelColor(0, 0))
                continue;
            ink.setPixel(x, y, 1);
            box |= QRect(x, y, 1, 1);
        }
    }
    return ink.copy(box);
}

/// The ink of `text` alone, as far as it fits into `width`.
QImage plainInk(const QWidget& widget, const QString& text, int width)
{
    QImage image(width, 2 * widget.fontMetrics().height(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(widget.font());
    painter.drawText(QPointF(3, widget.fontMetrics().height()), text);
    painter.end();
    return inkOf(image);
}

/// What the window shows of the field `key`, which must fit into it.
QImage shownPole(EditingSession& session, int key)
{
    auto* const view = named<QGraphicsView>(session.window, "graphicsView_1");
    QGraphicsItem* const item = poleItem(session.window, key);
    view->ensureVisible(item);
    const QRect area = view->mapFromScene(item->sceneBoundingRect()).boundingRect();
    return view->viewport()->grab(QRect(area.topLeft(), item->boundingRect().size().toSize())).toImage();
}

/// The first pixel in which `image` differs from `expected`, in words; the last row is not the field's own.
QString difference(const QImage& image, const Picture& expected)
{
    for (int y = 0; y < image.height() - 1; ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != expected.at(x, y))
                return QStringLiteral("(%1, %2) is %3 and not %4")
                    .arg(x)
                    .arg(y)
                    .arg(image.pixelColor(x, y).name(), expected.at(x, y).name());
        }
    }
    return {};
}

} // namespace

class tst_Descriptions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { useFontWithoutHalftones(); }

    void tapeShowsPairsByTheirKeys();
    void listShowsPairsLineByLine();
    void lineOfAPairPicksTheLowestKey();
    void lineOfAPairPicksTheFieldOnTheTape();
    void twoLinesOfAPairPickTheSameField();
    void fieldOnTheTapeIsPickedByItself();
    void filterMeetsEmptyDescriptions();

    void oddDescriptionsArePaintedAsTheyStand_data();
    void oddDescriptionsArePaintedAsTheyStand();
    void oddDescriptionsAreListedAsTheyStand();
    void oddDescriptionsAreShownBesideTheTable();
    void descriptionsHaveNoToolTip();
};

void tst_Descriptions::tapeShowsPairsByTheirKeys()
{
    for (const auto& fields : {pairs(), turnedPairs()}) {
        EditingSession session(fields);
        QCOMPARE(sceneDifferences(session.probe.scene(), fields, {}), QStringList());
        clickButton(session.window, "btnFontMonoWide");
        QCOMPARE(sceneDifferences(session.probe.scene(), fields, {.mono = true}), QStringList());
    }
    // A field without a description is a body without a text.
    EditingSession session(pairs());
    QCOMPARE(difference(shownPole(session, 3), bareField(12, 20, 8)), QString());
}

void tst_Descriptions::listShowsPairsLineByLine()
{
    EditingSession session(pairs());
    QCOMPARE(listTexts(session.window), (QStringList{QString(), kTwin}));
    QCOMPARE(listTitle(session.window), QStringLiteral("Фильтр полей [2 из 5]"));
    clickButton(session.window, "btnFiltrShowAll");
    QCOMPARE(listTexts(session.window),
             (QStringList{QStringLiteral("На ленте: поле"), QString(), QString(), kTwin, kTwin}));
    QCOMPARE(listTitle(session.window), QStringLiteral("Фильтр полей [5 из 5]"));
}

void tst_Descriptions::lineOfAPairPicksTheLowestKey()
{
    EditingSession session(pairs());
    const auto before = session.records();
    clickListLine(session.window, 0);
    QCOMPARE(session.probe.curKey(), 2);
    QCOMPARE(session.probe.curItem(), nullptr);
    QCOMPARE(shownDesc(session.window), QString());
    QCOMPARE(cellState(session.window, kLineRow), QStringLiteral("5|5|false"));
    clickListLine(session.window, 1);
    QCOMPARE(session.probe.curKey(), 4);
    QCOMPARE(shownDesc(session.window), kTwin);
    QCOMPARE(cellState(session.window, kLineRow), QStringLiteral("6|6|false"));
    session.settle();
    typeNumber(session.window, 2, QStringLiteral("44"));
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("4.X=44")});
}

void tst_Descriptions::lineOfAPairPicksTheFieldOnTheTape()
{
    // The line stands for the key that is not placed, its text for the lower one, which is.
    EditingSession session(turnedPairs());
    const auto before = session.records();
    QCOMPARE(listTexts(session.window), (QStringList{QString(), kTwin}));
    clickListLine(session.window, 0);
    QTRY_COMPARE(session.probe.curItem(), poleItem(session.window, 2));
    QCOMPARE(session.probe.curKey(), 0);
    QCOMPARE(shownDesc(session.window), QString());
    QCOMPARE(cellState(session.window, kLineRow), QStringLiteral("2|2|false"));
    clickListLine(session.window, 1);
    QTRY_COMPARE(session.probe.curItem(), poleItem(session.window, 4));
    QCOMPARE(cellState(session.window, kLineRow), QStringLiteral("3|3|false"));
    typeNumber(session.window, kSizeRow, QStringLiteral("12"));
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("4.Size=12")});
}

void tst_Descriptions::twoLinesOfAPairPickTheSameField()
{
    auto fields = pairs();
    for (auto& field : fields)
        field.size = field.desc.startsWith(QStringLiteral("На")) ? 10 : 0;
    EditingSession session(fields);
    const auto before = session.records();
    QCOMPARE(listTexts(session.window), (QStringList{QString(), QString(), kTwin, kTwin}));
    for (const int row : {0, 1, 2, 3, 1}) {
        clickListLine(session.window, row);
        QCOMPARE(session.probe.curKey(), row < 2 ? 2 : 4);
        QCOMPARE(cellState(session.window, kLineRow),
                 row < 2 ? QStringLiteral("5|5|false") : QStringLiteral("6|6|false"));
        session.settle();
    }
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_Descriptions::fieldOnTheTapeIsPickedByItself()
{
    EditingSession session(pairs());
    const auto before = session.records();
    pickPole(session.window, 3);
    QCOMPARE(shownDesc(session.window), QString());
    QCOMPARE(cellState(session.window, kLineRow), QStringLiteral("2|2|false"));
    QCOMPARE(cellState(session.window, kSizeRow), QStringLiteral("8|8|false"));
    clickButton(session.window, "btnPoleDel");
    session.settle();
    QCOMPARE(session.changesSince(before), QStringList{QStringLiteral("3.Size=0")});
    QCOMPARE(listTexts(session.window), (QStringList{QString(), QString(), kTwin}));

    pickPole(session.window, 5);
    QCOMPARE(shownDesc(session.window), kTwin);
    QCOMPARE(cellState(session.window, kSizeRow), QStringLiteral("9|9|false"));
    typeNumber(session.window, kSizeRow, QStringLiteral("0"));
    session.settle();
    QCOMPARE(session.changesSince(before),
             (QStringList{QStringLiteral("3.Size=0"), QStringLiteral("5.Size=0")}));
    QCOMPARE(listTexts(session.window), (QStringList{QString(), QString(), kTwin, kTwin}));
}

void tst_Descriptions::filterMeetsEmptyDescriptions()
{
    EditingSession session(pairs());
    clickCheckBox(named<QCheckBox>(session.window, "chbFilter"));
    QCOMPARE(listTexts(session.window), (QStringList{QString(), kTwin}));
    named<QLineEdit>(session.window, "lePolesFilterStr")->setText(QStringLiteral("п"));
    QCOMPARE(listTexts(session.window), QStringList{kTwin});
    clickListLine(session.window, 0);
    QCOMPARE(session.probe.curKey(), 4);
}

void tst_Descriptions::oddDescriptionsArePaintedAsTheyStand_data()
{
    QTest::addColumn<bool>("isMono");
    QTest::newRow("whole") << false;
    QTest::newRow("one character to a cell") << true;
}

void tst_Descriptions::oddDescriptionsArePaintedAsTheyStand()
{
    QFETCH(const bool, isMono);
    constexpr int kSize = 40;
    const auto fields = oddFields(kSize);
    EditingSession session(fields.first(1));
    openOdd(session, fields);
    if (isMono)
        clickButton(session.window, "btnFontMonoWide");
    QCOMPARE(sceneDifferences(session.probe.scene(), fields, {.mono = isMono}), QStringList());
    for (int key = 2; key <= fields.size(); ++key) {
        const QString text = fields.at(key - 1).view();
        Picture expected = bareField(12, 20, kSize);
        for (int i = 0; isMono && i < text.size(); ++i)
            writeShadowed(expected, 12 * i + 1, 13, text.mid(i, 1), Qt::black);
        if (!isMono)
            writeShadowed(expected, 3, 13, text, Qt::darkBlue);
        QVERIFY(expected.count(Qt::green) > 20);
        const QString found = difference(shownPole(session, key), expected);
        QVERIFY2(found.isEmpty(), qPrintable(text + u' ' + found));
    }
}

void tst_Descriptions::oddDescriptionsAreListedAsTheyStand()
{
    EditingSession session(pairs().first(1));
    openOdd(session, oddFields(0));
    QCOMPARE(listTexts(session.window), oddDescriptions());
    QListWidget* const list = fieldList(session.window);
    for (int row = 0; row < list->count(); ++row) {
        const QRect area = list->visualItemRect(list->item(row)) & list->viewport()->rect();
        const QImage found = inkOf(list->viewport()->grab(area).toImage());
        // A long line goes on beyond the edge of the list.
        const int width = list->fontMetrics().horizontalAdvance(oddDescriptions().at(row)) + 10;
        const QImage expected = plainInk(*list, oddDescriptions().at(row), width);
        const QRect common = found.rect() & expected.rect();
        QVERIFY(common.width() > 20 && common.height() > 5);
        QCOMPARE(found.height(), expected.height());
        QVERIFY(found.width() == expected.width() || expected.width() > area.width() - 10);
        QVERIFY2(found.copy(common) == expected.copy(common), qPrintable(oddDescriptions().at(row)));
    }
}

void tst_Descriptions::oddDescriptionsAreShownBesideTheTable()
{
    EditingSession session(pairs().first(1));
    openOdd(session, oddFields(10));
    const auto before = session.records();
    clickButton(session.window, "btnFiltrShowAll");
    for (int key = 2; key <= oddDescriptions().size() + 1; ++key) {
        const QString desc = oddDescriptions().at(key - 2);
        pickPole(session.window, key);
        QCOMPARE(shownDesc(session.window), desc);
        QCOMPARE(cellState(session.window, kLineRow), QStringLiteral("%1|%1|false").arg(key));
        // From the list to the same field.
        pickPole(session.window, 1);
        pickInList(session.window, desc);
        QTRY_COMPARE(session.probe.curItem(), poleItem(session.window, key));
        QCOMPARE(shownDesc(session.window), desc);
    }
    QCOMPARE(session.changesSince(before), QStringList());
}

void tst_Descriptions::descriptionsHaveNoToolTip()
{
    EditingSession session(pairs().first(1));
    openOdd(session, oddFields(10));
    clickButton(session.window, "btnFiltrShowAll");
    auto* const view = named<QGraphicsView>(session.window, "graphicsView_1");
    for (int key = 2; key <= oddDescriptions().size() + 1; ++key) {
        pickPole(session.window, key);
        QCOMPARE(toolTipAt(view->viewport(), visiblePoint(session.window, poleItem(session.window, key))),
                 QString());
        QListWidget* const list = fieldList(session.window);
        list->scrollToItem(list->item(key - 1));
        QCOMPARE(toolTipAt(list->viewport(), list->visualItemRect(list->item(key - 1)).center()), QString());
        QTableWidget* const table = propertyTable(session.window);
        QCOMPARE(toolTipAt(table->viewport(), table->visualItemRect(table->item(0, 1)).center()), QString());
        auto* const line = named<QLineEdit>(session.window, "lePoleDesc");
        QCOMPARE(toolTipAt(line, line->rect().center()), QString());
    }
    // Where there is one, this finds it.
    auto* const button = named<QWidget>(session.window, "btnFontMonoWide");
    QVERIFY(!toolTipAt(button, button->rect().center()).isEmpty());
}

QTEST_MAIN(tst_Descriptions)
#include "tst_descriptions.moc"
