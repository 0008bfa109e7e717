#include "model/linecolumns.h"
#include "recordtools.h"

#include <QRandomGenerator>
#include <QTest>

namespace {

QStringList columnsOf(const QString& line, int least)
{
    const LineColumns columns(line, [least](int count) { return count >= least; });
    QStringList texts;
    for (int i = 0; i < columns.count(); ++i)
        texts.append(columns[i].toString());
    return texts;
}

int numberOf(const QString& text)
{
    return LineColumns(text, [](int) { return true; }).number(0);
}

} // namespace

class TestLineColumns : public QObject
{
    Q_OBJECT

private slots:
    void semicolonsSeparateAndEmptyColumnsCount_data();
    void semicolonsSeparateAndEmptyColumnsCount();
    void commasSeparateOnlyIfSemicolonsDoNotGiveEnough();
    void nothingBeyondTheMostIsSplit();
    void columnIsTakenAsANumber_data();
    void columnIsTakenAsANumber();
    void numbersAreThoseOfTheGeneralConversion();
};

void TestLineColumns::semicolonsSeparateAndEmptyColumnsCount_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("columns");
    QTest::newRow("empty line") << "" << QStringList{""};
    QTest::newRow("one column") << "abc" << QStringList{"abc"};
    QTest::newRow("separator alone") << ";" << QStringList{"", ""};
    QTest::newRow("empty columns") << ";a;;b;" << QStringList{"", "a", "", "b", ""};
    QTest::newRow("blanks stay") << " a ; b\r" << QStringList{" a ", " b\r"};
    QTest::newRow("commas within") << "a,b;c,d" << QStringList{"a,b", "c,d"};
    QTest::newRow("quotes mean nothing") << "\"a;b\"" << QStringList{"\"a", "b\""};
}

void TestLineColumns::semicolonsSeparateAndEmptyColumnsCount()
{
    QFETCH(const QString, line);
    QFETCH(const QStringList, columns);
    QCOMPARE(columnsOf(line, 1), columns);
}

void TestLineColumns::commasSeparateOnlyIfSemicolonsDoNotGiveEnough()
{
    QCOMPARE(columnsOf("a;b,c,d", 2), (QStringList{"a", "b,c,d"}));
    QCOMPARE(columnsOf("a;b,c,d", 3), (QStringList{"a;b", "c", "d"}));
    // Commas that do not give enough either are what is left.
    QCOMPARE(columnsOf("a;b;c,d", 4), (QStringList{"a;b;c", "d"}));
}

void TestLineColumns::nothingBeyondTheMostIsSplit()
{
    const int most = LineColumns::kMost;
    for (const int count : {most - 1, most, most + 1, 3 * most}) {
        const auto texts = recordtools::countedColumns(100, count);
        QCOMPARE(columnsOf(texts.join(';'), 1), texts.mid(0, most));
        QCOMPARE(columnsOf(texts.join(','), 2), texts.mid(0, most));
    }
    // A second split that gives fewer columns than the first.
    QCOMPARE(columnsOf(QString(100, ';') + ",a", 100), (QStringList{QString(100, ';'), "a"}));
}

void TestLineColumns::columnIsTakenAsANumber_data()
{
    recordtools::addNumberRows();
}

void TestLineColumns::columnIsTakenAsANumber()
{
    QFETCH(const QString, text);
    QFETCH(const int, value);
    QCOMPARE(numberOf(text), value);
}

void TestLineColumns::numbersAreThoseOfTheGeneralConversion()
{
    QRandomGenerator random(26);
    const QString alphabet = QString::fromUtf8("000123456789+- \t\r.,/:xA\u00a0\u2212\u0663\u0967\uff17");
    for (int round = 0; round < 100000; ++round) {
        QString text;
        for (auto length = random.bounded(13); length > 0; --length) {
            // Mostly digits, or hardly any text would be a number.
            const int range = random.bounded(8) == 0 ? static_cast<int>(alphabet.size()) : 12;
            text.append(alphabet.at(random.bounded(range)));
        }
        if (numberOf(text) != text.toInt())
            QCOMPARE(QString("%1 is %2").arg(text).arg(numberOf(text)),
                     QString("%1 is %2").arg(text).arg(text.toInt()));
    }
}

QTEST_GUILESS_MAIN(TestLineColumns)
#include "tst_linecolumns.moc"
