#include "device/receiptbench.h"

#include <QTest>

namespace {

QStringList resultOf(const EmulatedReceipt& b)
{
    return b.log().filter(QStringLiteral("Команда на печать вернула значение"));
}

} // namespace

/// The test receipt with a driver that fails in odd ways, and how little of it the user is told.
class TestReceiptBroken : public QObject
{
    Q_OBJECT

private slots:
    void eachCallFails_data();
    void eachCallFails();
    void spoiltAnswersDoNotMatter_data();
    void spoiltAnswersDoNotMatter();
    void codeOfTheMissingReceiptIsNotTold_data();
    void codeOfTheMissingReceiptIsNotTold();
    void textOfTheFailureIsNotTold();
    void receiptLeftOpenIsAnnulledByTheNext();
};

void TestReceiptBroken::eachCallFails_data()
{
    QTest::addColumn<Failure>("failure");
    QTest::newRow("no code") << Failure::Codeless;
    QTest::newRow("done only in its answer") << Failure::Pretended;
}

void TestReceiptBroken::eachCallFails()
{
    QFETCH(const Failure, failure);
    const QString harm = harmOfFaults(kEverything, {.failure = failure}, kSeldom);
    QVERIFY2(harm.isEmpty(), qPrintable(harm));
}

void TestReceiptBroken::spoiltAnswersDoNotMatter_data()
{
    QTest::addColumn<QString>("answer");
    for (const char* const answer : {"short", "empty", "garbled", "<b>%1</b>"})
        QTest::newRow(answer) << QString(answer);
}

void TestReceiptBroken::spoiltAnswersDoNotMatter()
{
    QFETCH(const QString, answer);
    EmulatedReceipt b;
    b.prepare(kEverything);
    b.device.setFaults({QJsonObject{{"operation", "getAnswerBuffer"}, {"answer", answer}}});
    b.print(kEverything);
    const QString harm = b.harmAfter();
    QVERIFY2(harm.isEmpty(), qPrintable(harm));
    QCOMPARE(b.log().filter("Шаблон успешно загружен.").size(), 1);
    QCOMPARE(resultOf(b), QStringList("Команда на печать вернула значение: 0"));
    const QString after = b.harmOfGoodReceipt(kEverything);
    QVERIFY2(after.isEmpty(), qPrintable(after));
}

void TestReceiptBroken::codeOfTheMissingReceiptIsNotTold_data()
{
    QTest::addColumn<int>("call");
    QTest::addColumn<int>("result");
    QTest::newRow("to the one who called") << 1 << 0; // so nothing is raised
    QTest::newRow("to the one who asks whether it matters") << 2 << 255;
}

void TestReceiptBroken::codeOfTheMissingReceiptIsNotTold()
{
    QFETCH(const int, call);
    QFETCH(const int, result);
    EmulatedReceipt b;
    b.prepare(kReceiptAlone);
    b.device.setFaults({QJsonObject{{"operation", "getResultCode"}, {"call", call}, {"status", -1}}});
    b.print(kReceiptAlone);
    QCOMPARE(resultOf(b), QStringList(QStringLiteral("Команда на печать вернула значение: %1").arg(result)));
    const QStringList log = b.log();
    QCOMPARE(log.contains("Вход в режим программирования..."), result == 0);
    QVERIFY(log.contains("Отменяем предыдущий чек..."));
    QCOMPARE(log.last(), QString("Печать тестового чека завершена"));
    QCOMPARE(b.robot.takeTexts(), QStringList());
    const QString harm = b.harmOfGoodReceipt(kReceiptAlone);
    QVERIFY2(harm.isEmpty(), qPrintable(harm));
}

void TestReceiptBroken::textOfTheFailureIsNotTold()
{
    EmulatedReceipt b;
    b.prepare(kEverything);
    const QString text = "<FONT COLOR=red>%1 & отказ</FONT>";
    b.device.setFaults({QJsonObject{{"operation", "registerPosition"},
                                    {"call", 3},
                                    {"status", -1},
                                    {"code", -77},
                                    {"description", text},
                                    {"badParam", 1},
                                    {"badParamText", text}}});
    b.print(kEverything);
    QCOMPARE(resultOf(b), QStringList("Команда на печать вернула значение: 255"));
    QCOMPARE(b.log().filter("отказ"), QStringList());
    QCOMPARE(b.log().filter("-77"), QStringList());
    QCOMPARE(b.robot.takeTexts(), QStringList());
}

void TestReceiptBroken::receiptLeftOpenIsAnnulledByTheNext()
{
    EmulatedReceipt b;
    b.prepare(kReceiptAlone);
    const auto annulled = [&b] { return b.device.state().value("counters")["annulled"].toInt(); };
    const int before = annulled();
    b.device.setFaults({QJsonObject{{"operation", "closeCheck"}, {"code", -1}}});
    b.print(kReceiptAlone);
    QCOMPARE(resultOf(b), QStringList("Команда на печать вернула значение: 255"));
    QVERIFY(b.device.state()["receiptState"].toInt() != 0);
    QCOMPARE(annulled(), before);

    // A device that refuses the mode of the exchange is not printed on.
    b.device.takeCalls();
    b.print(kReceiptAlone);
    QCOMPARE(b.robot.takeTexts(), QStringList("Обмен невозможен - открыт чек."));
    QVERIFY(b.device.state()["receiptState"].toInt() != 0);

    // One that enters it gets rid of the receipt without a question.
    b.user.dropOrders();
    b.user.takeTitles();
    b.device.setFaults({QJsonObject{{"operation", "enterMode"}, {"call", 1}, {"status", 0}, {"code", 0}}});
    b.print(kReceiptAlone);
    QCOMPARE(b.robot.takeTexts(), QStringList());
    QCOMPARE(b.user.takeTitles(), QStringList("Печать тестового чека"));
    QCOMPARE(annulled(), before + 1);
    QCOMPARE(resultOf(b).last(), QString("Команда на печать вернула значение: 0"));
    QCOMPARE(b.device.state()["receiptState"].toInt(), 0);
}

QTEST_MAIN(TestReceiptBroken)

#include "tst_receipt_broken.moc"
