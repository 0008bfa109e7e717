#include "app/mainwindow.h"
#include "support/dialogrobot.h"
#include "support/expectedscene.h"
#include "support/templatefile.h"
#include "support/usersteps.h"
#include "support/windowprobe.h"

#include <QComboBox>
#include <QDir>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

const QString kUnknownWidth = QStringLiteral("Неизвестная ширина ленты!");

const QStringList kBuiltInNames{"Тавр 11Ф", "Тавр 15Ф", "Тавр 30Ф", "Тавр 60Ф", "Тавр 90Ф", "Тавр 52Ф",
                                "Тавр 55Ф", "Тавр 22Ф", "Тавр 25Ф", "Тавр 77Ф", "Ларец ФА"};
const QStringList kBuiltInTapes{"57", "57", "57", "57", "57", "57", "57", "80", "80", "80", "80"};
const QList<int> kBuiltInCodes{67, 78, 61, 75, 72, 64, 62, 63, 57, 69, 76};

QStringList entriesOf(const QComboBox& combo)
{
    QStringList entries;
    for (int i = 0; i < combo.count(); ++i)
        entries.append(combo.itemText(i));
    return entries;
}

/// A new window with the file kassa.csv as given; none if it is null.
struct KassaSession
{
    explicit KassaSession(const QByteArray& kassaFile)
        : isWritten(kassaFile.isNull() || !dir.write(QStringLiteral("kassa.csv"), kassaFile).isEmpty())
        , probe(window)
    {
    }

    QComboBox* kassa() const { return named<QComboBox>(window, "comboKassa"); }
    QComboBox* lenta() const { return named<QComboBox>(window, "comboLentaSize"); }
    void choose(int index) { chooseInCombo(window, "comboKassa", index); }

    ProgramDir dir;
    bool isWritten; // before the window is made
    DialogRobot robot;
    MainWindow window;
    WindowProbe probe;
};

} // namespace

class TestModels : public QObject
{
    Q_OBJECT

private slots:
    void builtInListReplacesAnUnusableFile_data();
    void builtInListReplacesAnUnusableFile();
    void folderOrPipeIsNoFile();
    void listComesFromTheFile_data();
    void listComesFromTheFile();
    void modelSetsTheTape();
    void builtInModelsSetTheirTapes();
    void modelOfTheSameTapeRedrawsNothing();
    void unknownTapeIsToldAndChangesNothing();
    void unknownTapeIsToldAtStart();
    void choiceIsNotKept();
    void fileIsNeverWritten();
};

void TestModels::builtInListReplacesAnUnusableFile_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("no file") << QByteArray();
    QTest::newRow("empty file") << QByteArray("");
    QTest::newRow("one record") << QByteArray("1;;57;1;;Одна\n");
    QTest::newRow("one record that counts")
        << QByteArray("вкл;а;лента;код;б;имя\n1;;57;1;;Одна\n0;;57;1;;Две\n");
    QTest::newRow("rubbish") << QByteArray("\xff\xfe\0;;;;;\n1;2;3", 14);
    QTest::newRow("rubbish without a zero") << QByteArray("\xff\xfe;;;;;\n1;2;3");
}

void TestModels::builtInListReplacesAnUnusableFile()
{
    QFETCH(const QByteArray, bytes);
    KassaSession s(bytes);
    QCOMPARE(s.probe.kassaNames(), kBuiltInNames);
    QCOMPARE(s.probe.kassaTapes(), kBuiltInTapes);
    QCOMPARE(s.probe.kassaCodes(), kBuiltInCodes);
    QCOMPARE(entriesOf(*s.kassa()), kBuiltInNames);
    QCOMPARE(s.kassa()->currentText(), QStringLiteral("Тавр 77Ф"));
    QCOMPARE(s.lenta()->currentText(), QStringLiteral("80мм"));
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void TestModels::folderOrPipeIsNoFile()
{
    const ProgramDir dir;
    const QString path = dir.path(QStringLiteral("kassa.csv"));
    QVERIFY(QDir(path).mkpath(QStringLiteral(".")));
    {
        MainWindow window;
        QCOMPARE(WindowProbe(window).kassaNames(), kBuiltInNames);
    }
#ifdef Q_OS_UNIX
    QVERIFY(QDir(path).removeRecursively());
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    MainWindow window;
    QCOMPARE(WindowProbe(window).kassaNames(), kBuiltInNames);
#endif
}

void TestModels::listComesFromTheFile_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("tapes");
    QTest::addColumn<QList<int>>("codes");
    QTest::addColumn<QString>("chosen");
    const QByteArray two = "1;а;57;11;б;Первая\n1;;80;22;;Вторая\n";
    const auto row = [](const char* name, const QByteArray& bytes, const QStringList& names,
                        const QStringList& tapes, const QList<int>& codes, const char* chosen) {
        QTest::newRow(name) << bytes << names << tapes << codes << QString::fromUtf8(chosen);
    };
    row("two records", two, {"Первая", "Вторая"}, {"57", "80"}, {11, 22}, "Первая");
    row("three records without a last line feed", two + "1;;44;33;;Третья", {"Первая", "Вторая", "Третья"},
        {"57", "80", "44"}, {11, 22, 33}, "Вторая");
    row("carriage returns stay in the names", "1;;57;1;;А\r\n1;;80;2;;Б\r\n", {"А\r", "Б\r"}, {"57", "80"},
        {1, 2}, "А\r");
    row("the switch is exactly 1",
        two + "0;;57;1;;Н0\n 1;;57;1;;Н1\n01;;57;1;;Н2\n1 ;;57;1;;Н3\n;;57;1;;Н4\n11;;57;1;;Н5\n",
        {"Первая", "Вторая"}, {"57", "80"}, {11, 22}, "Первая");
    row("six fields and no other number", two + "1;;57;1;Пять\n1;;57;1;;;Семь\n1;;57;1;;Имя;\n",
        {"Первая", "Вторая"}, {"57", "80"}, {11, 22}, "Первая");
    row("the tape is a number",
        two + "1;;57мм;1;;Н0\n1;;0;1;;Н1\n1;;00;1;;Н2\n1;;;1;;Н3\n1;;лента;1;;Н4\n1;;5.7;1;;Н5\n",
        {"Первая", "Вторая"}, {"57", "80"}, {11, 22}, "Первая");
    row("the name is not empty", two + "1;;57;1;;\n", {"Первая", "Вторая"}, {"57", "80"}, {11, 22}, "Первая");
    row("any code will do", two + "1;;57;;;Без кода\n1;;57;код;;Слово\n1;;57;-5;;Минус\n",
        {"Первая", "Вторая", "Без кода", "Слово", "Минус"}, {"57", "80", "57", "57", "57"},
        {11, 22, 0, 0, -5}, "Слово");
    row("header, empty and short lines", "вкл;x;лента;код;y;имя\n\n1;;\n;;;;;\n" + two, {"Первая", "Вторая"},
        {"57", "80"}, {11, 22}, "Первая");
    row("the same model twice", "1;;57;7;;Т\n1;;80;7;;Т\n1;;80;7;;Т\n", {"Т", "Т", "Т"}, {"57", "80", "80"},
        {7, 7, 7}, "Т");
}

void TestModels::listComesFromTheFile()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, names);
    QFETCH(const QStringList, tapes);
    QFETCH(const QList<int>, codes);
    QFETCH(const QString, chosen);
    KassaSession s(bytes);
    QCOMPARE(s.probe.kassaNames(), names);
    QCOMPARE(s.probe.kassaTapes(), tapes);
    QCOMPARE(s.probe.kassaCodes(), codes);
    QCOMPARE(entriesOf(*s.kassa()), names);
    QCOMPARE(s.kassa()->currentIndex(), names.size() - 2);
    QCOMPARE(s.kassa()->currentText(), chosen);
    QCOMPARE(s.lenta()->currentText(), tapes.at(names.size() - 2) + QStringLiteral("мм"));
    QCOMPARE(s.probe.tapeWidth(), 576);
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void TestModels::modelSetsTheTape()
{
    KassaSession s("1;;57;1;;А\n1;;44;2;;Б\n1;;80;3;;В\n1;;80;4;;Г\n");
    showWindow(s.window);
    const auto fields = manyFields(3);
    openTemplate(s.window, s.robot, s.dir.write(QStringLiteral("good.csv"), maskFile(fields)));
    LogWatch log(s.window);
    const struct
    {
        int index;
        const char* tape;
        int width;
    } steps[] = {{0, "57мм", 432}, {1, "44мм", 384}, {2, "80мм", 576}, {1, "44мм", 384}};
    for (const auto& step : steps) {
        s.choose(step.index);
        QCOMPARE(s.lenta()->currentText(), QString::fromUtf8(step.tape));
        QCOMPARE(s.probe.tapeWidth(), step.width);
        QCOMPARE(log.takeNew(), QStringList{"Scene cleared!"});
        QCOMPARE(sceneDifferences(s.probe.scene(), fields, {.width = step.width}), QStringList());
    }
    // The width can still be chosen by itself, and the model stays.
    chooseInCombo(s.window, "comboLentaSize", 2);
    QCOMPARE(s.kassa()->currentText(), QStringLiteral("Б"));
    QCOMPARE(s.probe.tapeWidth(), 576);
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void TestModels::builtInModelsSetTheirTapes()
{
    KassaSession s{QByteArray()};
    showWindow(s.window);
    openTemplate(s.window, s.robot, s.dir.write(QStringLiteral("good.csv"), maskFile(manyFields(3))));
    for (int i = 0; i < kBuiltInNames.size(); ++i) {
        s.choose(i);
        QCOMPARE(s.lenta()->currentText(), kBuiltInTapes.at(i) + QStringLiteral("мм"));
        QCOMPARE(s.probe.tapeWidth(), kBuiltInTapes.at(i) == u"57" ? 432 : 576);
    }
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void TestModels::modelOfTheSameTapeRedrawsNothing()
{
    KassaSession s{QByteArray()};
    showWindow(s.window);
    openTemplate(s.window, s.robot, s.dir.write(QStringLiteral("good.csv"), maskFile(manyFields(3))));
    LogWatch log(s.window);
    s.choose(10);
    QCOMPARE(s.kassa()->currentText(), QStringLiteral("Ларец ФА"));
    QCOMPARE(log.takeNew(), QStringList());
}

void TestModels::unknownTapeIsToldAndChangesNothing()
{
    KassaSession s("1;;57;1;;А\n1;;80;2;;Б\n1;;58;3;;В\n1;;080;4;;Г\n1;;-5;5;;Д\n1;;57;6;;Е\n1;;80;7;;Ж\n");
    showWindow(s.window);
    openTemplate(s.window, s.robot, s.dir.write(QStringLiteral("good.csv"), maskFile(manyFields(3))));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    s.choose(1);
    LogWatch log(s.window);
    // No such width; three characters, which match no two; and a number all the same.
    for (const int index : {2, 3, 4}) {
        s.choose(index);
        const auto boxes = s.robot.takeBoxes();
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.first().text, kUnknownWidth);
        QCOMPARE(boxes.first().icon, QMessageBox::Warning);
        QCOMPARE(s.lenta()->currentText(), QStringLiteral("80мм"));
        QCOMPARE(s.probe.tapeWidth(), 576);
    }
    QCOMPARE(log.takeNew(), QStringList());
}

void TestModels::unknownTapeIsToldAtStart()
{
    // The first entry is chosen while the list fills, then the one before the last.
    KassaSession first("1;;58;1;;А\n1;;57;2;;Б\n1;;80;3;;В\n");
    QCOMPARE(first.robot.takeTexts(), QStringList{kUnknownWidth});
    QCOMPARE(first.lenta()->currentText(), QStringLiteral("57мм"));

    KassaSession second("1;;57;1;;А\n1;;100;2;;Б\n1;;80;3;;В\n");
    QCOMPARE(second.robot.takeTexts(), QStringList{kUnknownWidth});
    QCOMPARE(second.kassa()->currentText(), QStringLiteral("Б"));
    QCOMPARE(second.lenta()->currentText(), QStringLiteral("57мм"));
    QCOMPARE(second.probe.tapeWidth(), 576);
}

void TestModels::choiceIsNotKept()
{
    const ProgramDir dir;
    DialogRobot robot;
    {
        MainWindow window;
        showWindow(window);
        openTemplate(window, robot, dir.write(QStringLiteral("good.csv"), maskFile(manyFields(3))));
        chooseInCombo(window, "comboKassa", 0);
        QCOMPARE(named<QComboBox>(window, "comboKassa")->currentText(), QStringLiteral("Тавр 11Ф"));
    }
    MainWindow window;
    QCOMPARE(named<QComboBox>(window, "comboKassa")->currentText(), QStringLiteral("Тавр 77Ф"));
    QCOMPARE(named<QComboBox>(window, "comboLentaSize")->currentText(), QStringLiteral("80мм"));
}

void TestModels::fileIsNeverWritten()
{
    const QByteArray bytes = "1;;57;1;;А\r\n1;;80;2;;Б";
    const ProgramDir dir;
    DialogRobot robot;
    const QString path = dir.write(QStringLiteral("kassa.csv"), bytes);
    const QString fields = dir.write(QStringLiteral("good.csv"), maskFile(manyFields(3)));
    const auto useModels = [&robot, &fields] {
        MainWindow window;
        showWindow(window);
        openTemplate(window, robot, fields);
        chooseInCombo(window, "comboKassa", 1);
        chooseInCombo(window, "comboKassa", 0);
        chooseInCombo(window, "comboLentaSize", 1);
    };
    useModels();
    QCOMPARE(bytesOf(path), bytes);
    QVERIFY(QFile::remove(path));
    useModels();
    QVERIFY(!QFile::exists(path));
    QCOMPARE(robot.takeTexts(), QStringList());
}

QTEST_MAIN(TestModels)

#include "tst_models.moc"
