#include "markingtranslator.h"
#include "model/bd_t20items.h"

#include <QFile>
#include <QTest>

#include <climits>
#include <type_traits>

namespace {

/// A row of the list of all fields: key; full label; short label; 1 if the field is mandatory.
struct CatalogueRow
{
    int key = 0;
    QString label;
    QString labelView;
    bool isMandatory = false;
};

QList<CatalogueRow> readCatalogue()
{
    QFile file(QStringLiteral(CATALOGUE_FILE));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<CatalogueRow> rows;
    const auto lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        const QStringList columns = line.split(u';');
        if (columns.size() != 4)
            return {};
        rows.append({columns.at(0).toInt(), columns.at(1), columns.at(2), columns.at(3) == u"1"});
    }
    return rows;
}

} // namespace

class TestCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void rowHasItsLabels_data();
    void rowHasItsLabels();
    void catalogueInUseHas160Rows();
    void listsAreReferencesIntoTheStore();
    void tenShortLabelsKeepTheirClass();
    void cancelledReceiptKeepsItsQuotesInTheShortLabel();
    void commonPartHasTheKeys1To133();
    void firstGenerationAddsOneRow();
    void secondGenerationAddsFourRows();
    void thirdGenerationAddsUserTagsAndThreeRows();
    void generationReplacesTheListsThatWereThere_data();
    void generationReplacesTheListsThatWereThere();
    void generationLeavesFieldsAndBlocksAlone();
    void keyIsMandatory_data();
    void keyIsMandatory();
    void mandatoryKeysOutsideTheCatalogue_data();
    void mandatoryKeysOutsideTheCatalogue();
    void labelsPassThroughTranslation();

private:
    QList<CatalogueRow> m_rows;
};

void TestCatalogue::initTestCase()
{
    m_rows = readCatalogue();
    QCOMPARE(m_rows.size(), 160);
    for (int i = 0; i < 160; ++i)
        QCOMPARE(m_rows.at(i).key, i + 1);
}

void TestCatalogue::rowHasItsLabels_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("labelView");
    for (const auto& row : m_rows)
        QTest::addRow("key %d", row.key) << row.key << row.label << row.labelView;
}

void TestCatalogue::rowHasItsLabels()
{
    QFETCH(int, key);
    QFETCH(QString, label);
    QFETCH(QString, labelView);
    BD_T20Items bd;
    QCOMPARE(bd.getPolesLabels().value(key - 1), label);
    QCOMPARE(bd.getPolesLabelsView().value(key - 1), labelView);
}

void TestCatalogue::catalogueInUseHas160Rows()
{
    BD_T20Items bd;
    QCOMPARE(bd.getPolesLabels().size(), 160);
    QCOMPARE(bd.getPolesLabelsView().size(), 160);
}

void TestCatalogue::listsAreReferencesIntoTheStore()
{
    BD_T20Items bd;
    QCOMPARE(&bd.getPolesLabels(), &bd.PolesLabels);
    QCOMPARE(&bd.getPolesLabelsView(), &bd.PolesLabelsView);
}

void TestCatalogue::tenShortLabelsKeepTheirClass()
{
    BD_T20Items bd;
    QList<int> exceptions;
    for (int key = 1; key <= 160; ++key) {
        BD_T20Items::T20Item item;
        item.Desc = bd.getPolesLabels().at(key - 1);
        item.makeDescViewFromDesc();
        if (bd.getPolesLabelsView().at(key - 1) != item.DescView) {
            QCOMPARE(bd.getPolesLabelsView().at(key - 1), item.Desc);
            exceptions.append(key);
        }
    }
    QCOMPARE(exceptions, (QList<int>{95, 96, 97, 98, 99, 100, 117, 118, 123, 124}));
}

void TestCatalogue::cancelledReceiptKeepsItsQuotesInTheShortLabel()
{
    BD_T20Items bd;
    QCOMPARE(bd.getPolesLabels().at(157), QStringLiteral("Строка: \"ЧЕК АННУЛИРОВАН\""));
    QCOMPARE(bd.getPolesLabelsView().at(157), QStringLiteral("С.: \"ЧЕК АННУЛИРОВАН\""));
}

void TestCatalogue::commonPartHasTheKeys1To133()
{
    BD_T20Items bd;
    bd.InitPolesLabelsCmn();
    QCOMPARE(bd.getPolesLabels().size(), 133);
    QCOMPARE(bd.getPolesLabelsView().size(), 133);
    for (int i = 0; i < 133; ++i) {
        QCOMPARE(bd.getPolesLabels().at(i), m_rows.at(i).label);
        QCOMPARE(bd.getPolesLabelsView().at(i), m_rows.at(i).labelView);
    }
}

void TestCatalogue::firstGenerationAddsOneRow()
{
    BD_T20Items common;
    common.InitPolesLabelsCmn();
    BD_T20Items bd;
    bd.InitPolesLabelsV01();
    QCOMPARE(bd.getPolesLabels(),
             common.getPolesLabels() + QStringList{QStringLiteral("Строка: \"ЧЕК АННУЛИРОВАН\"")});
    QCOMPARE(bd.getPolesLabelsView(),
             common.getPolesLabelsView() + QStringList{QStringLiteral("С.: \"ЧЕК АННУЛИРОВАН\"")});
    QCOMPARE(bd.getPolesLabels().size(), 134);
}

void TestCatalogue::secondGenerationAddsFourRows()
{
    BD_T20Items common;
    common.InitPolesLabelsCmn();
    BD_T20Items bd;
    bd.InitPolesLabelsV02();
    const QStringList labels = {QStringLiteral("Пользовательский тег 2"),
                                QStringLiteral("Строка: \"ЧЕК АННУЛИРОВАН\""), QStringLiteral("QR-код"),
                                QStringLiteral("Картинка")};
    const QStringList labelsView = {QStringLiteral("Пользовательский тег 2"),
                                    QStringLiteral("С.: \"ЧЕК АННУЛИРОВАН\""), QStringLiteral("QR-код"),
                                    QStringLiteral("Картинка")};
    QCOMPARE(bd.getPolesLabels(), common.getPolesLabels() + labels);
    QCOMPARE(bd.getPolesLabelsView(), common.getPolesLabelsView() + labelsView);
    QCOMPARE(bd.getPolesLabels().size(), 137);
}

void TestCatalogue::thirdGenerationAddsUserTagsAndThreeRows()
{
    BD_T20Items bd;
    bd.InitPolesLabelsV01();
    bd.InitPolesLabelsV03();
    QStringList labels;
    QStringList labelsView;
    for (const auto& row : m_rows) {
        labels.append(row.label);
        labelsView.append(row.labelView);
    }
    QCOMPARE(bd.getPolesLabels(), labels);
    QCOMPARE(bd.getPolesLabelsView(), labelsView);
    QCOMPARE(labels.filter(QStringLiteral("Пользовательский тег")).size(), 25);
}

void TestCatalogue::generationReplacesTheListsThatWereThere_data()
{
    QTest::addColumn<int>("generation");
    QTest::addColumn<int>("rows");
    QTest::newRow("common part") << 0 << 133;
    QTest::newRow("first") << 1 << 134;
    QTest::newRow("second") << 2 << 137;
    QTest::newRow("third") << 3 << 160;
}

void TestCatalogue::generationReplacesTheListsThatWereThere()
{
    QFETCH(int, generation);
    QFETCH(int, rows);
    BD_T20Items bd;
    bd.PolesLabels = QStringList{QStringLiteral("прежнее")};
    bd.PolesLabelsView = QStringList{QStringLiteral("прежнее"), QStringLiteral("ещё")};
    void (BD_T20Items::*const inits[])() = {
        &BD_T20Items::InitPolesLabelsCmn, &BD_T20Items::InitPolesLabelsV01, &BD_T20Items::InitPolesLabelsV02,
        &BD_T20Items::InitPolesLabelsV03};
    for (int pass = 0; pass < 2; ++pass) {
        (bd.*inits[generation])();
        QCOMPARE(bd.getPolesLabels().size(), rows);
        QCOMPARE(bd.getPolesLabelsView().size(), rows);
        QVERIFY(!bd.getPolesLabels().contains(QStringLiteral("прежнее")));
        QVERIFY(!bd.getPolesLabelsView().contains(QStringLiteral("прежнее")));
    }
}

void TestCatalogue::generationLeavesFieldsAndBlocksAlone()
{
    BD_T20Items bd;
    auto& item = bd.getPoleByKey(1);
    item.Size = 1;
    item.Line = 1;
    item.Desc = QStringLiteral("Шапка: заголовок");
    bd.ReComputeBDBlocks();
    bd.InitPolesLabelsV01();
    QCOMPARE(bd.items.size(), 1);
    QCOMPARE(bd.items.value(1).Desc, QStringLiteral("Шапка: заголовок"));
    QCOMPARE(bd.blocks.size(), 10);
}

void TestCatalogue::keyIsMandatory_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("isMandatory");
    for (const auto& row : m_rows)
        QTest::addRow("key %d", row.key) << row.key << row.isMandatory;
}

void TestCatalogue::keyIsMandatory()
{
    QFETCH(int, key);
    QFETCH(bool, isMandatory);
    // Neither the record nor the generation of the catalogue has a say.
    static_assert(std::is_same_v<decltype(&BD_T20Items::getFA_NEED), bool (*)(int)>);
    QCOMPARE(BD_T20Items::getFA_NEED(key), isMandatory);
}

void TestCatalogue::mandatoryKeysOutsideTheCatalogue_data()
{
    QTest::addColumn<int>("key");
    for (const int key : {INT_MIN, -134, -12, -1, 0, 161, 200, 268, 65548, INT_MAX})
        QTest::addRow("key %d", key) << key;
}

void TestCatalogue::mandatoryKeysOutsideTheCatalogue()
{
    QFETCH(int, key);
    QVERIFY(!BD_T20Items::getFA_NEED(key));
}

void TestCatalogue::labelsPassThroughTranslation()
{
    MarkingTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const BD_T20Items bd;
    QVERIFY(QCoreApplication::removeTranslator(&translator));
    QCOMPARE(bd.PolesLabels.size(), 160);
    for (int i = 0; i < 160; ++i)
        QCOMPARE(bd.PolesLabels.at(i), MarkingTranslator::marked(m_rows.at(i).label));
    QCOMPARE(bd.PolesLabelsView.size(), 160);
    for (const auto& label : bd.PolesLabelsView)
        QVERIFY2(label.startsWith(u'Q'), qPrintable(label)); // of the mark
}

QTEST_GUILESS_MAIN(TestCatalogue)
#include "tst_catalogue.moc"
