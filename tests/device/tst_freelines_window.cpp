#include "device/jsonfile.h"
#include "device/jsonfilesession.h"

#include <QTest>

#include <json/json.h>

#include <memory>

namespace {

const QString kFile = QStringLiteral("tables.json");

/// A line of the file.
QByteArray line(const QByteArray& row, const QByteArray& v, const QByteArray& table = "21")
{
    return R"({"t": )" + table + R"(, "f": 1, "r": )" + row + R"(, "v": )" + v + "}";
}

QByteArray listOf(const QList<QByteArray>& elements)
{
    return "[" + elements.join(", ") + "]";
}

/// The letters of code page 866 behind its ASCII half, in their order there.
const QString kUpperHalf = QStringLiteral("АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯабвгдежзийклмноп"
                                          "░▒▓│┤╡╢╖╕╣║╗╝╜╛┐└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀"
                                          "рстуфхцчшщъыьэюяЁёЄєЇїЎў°∙·√№¤■\u00a0");

/// What two characters that are no digits become.
const QString kZero = QString(QChar(0));

/// What the file holds of three lines.
const QString kWrittenFile = QStringLiteral(R"([
	{
		"f" : 1,
		"r" : 1,
		"t" : 21,
		"v" : "8FE0A8A2A5E22C20F1ABAAA020FC3121"
	},
	{
		"f" : 1,
		"r" : 2,
		"t" : 21,
		"v" : ""
	},
	{
		"f" : 1,
		"r" : 3,
		"t" : 21,
		"v" : "C4"
	}
]
)");

} // namespace

/// The free lines and the file tables.json.
class TestFreeLinesWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void digitsBecomeALine_data();
    void digitsBecomeALine();
    void linesAreRead_data();
    void linesAreRead();
    void missingFileLeavesNoLines();
    void unreadableFileLeavesNoLines_data();
    void unreadableFileLeavesNoLines();
    void fileWithoutAListLeavesNoLines_data();
    void fileWithoutAListLeavesNoLines();

    void linesAreWritten();
    void noLinesAreAnEmptyList();
    void unknownCharactersTakeTheirPlace();
    void halfACharacterStaysInItsLine();
    void unwritableFileIsTold();
    void everyLetterComesBack();
    void controlCharactersComeBackAsTheirBytes();
    void emptyLineIsLostOnItsWay();

private:
    JsonFileSession& s() { return *m_session; }

    /// Loads a file of `text`, which must be told to hold no free lines.
    void compareRefused(const QByteArray& text);

    /// The digits of the lines in the file.
    QStringList writtenDigits()
    {
        Json::Value lines;
        QString errors;
        QStringList digits;
        if (JsonFile::read(s().file, lines, errors) == JsonFile::Read) {
            for (const auto& element : std::as_const(lines))
                digits.append(QString::fromStdString(element["v"].asString()));
        }
        return digits;
    }

    std::unique_ptr<JsonFileSession> m_session;
};

void TestFreeLinesWindow::initTestCase()
{
    m_session = std::make_unique<JsonFileSession>(kFile);
}

void TestFreeLinesWindow::cleanupTestCase()
{
    m_session.reset();
}

void TestFreeLinesWindow::init()
{
    s().clear();
    s().probe.freeStrings() = {"прежняя"};
}

void TestFreeLinesWindow::digitsBecomeALine_data()
{
    QTest::addColumn<QString>("hex");
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("ASCII") << "48656C6C6F21"
                           << "Hello!";
    QTest::newRow("Cyrillic") << "8FE0A8A2A5E2"
                              << "Привет";
    QTest::newRow("lower case") << "8fe0a8a2a5e2"
                                << "Привет";
    QTest::newRow("signs") << "F0F1FC20C4"
                           << "Ёё№ ─";
    QTest::newRow("odd digits") << "80818"
                                << "АБ";
    QTest::newRow("one digit") << "8"
                               << "";
    QTest::newRow("blanks") << "202080"
                            << "  А";
    QTest::newRow("no digits") << "ZZ80" << kZero + "А";
    QTest::newRow("minus") << "-180" << kZero + "А";
    QTest::newRow("plus") << "+8" << QString(QChar(8));
    QTest::newRow("one digit of two") << "8G81" << kZero + "Б";
}

void TestFreeLinesWindow::digitsBecomeALine()
{
    QFETCH(const QString, hex);
    QTEST(s().probe.decodeFreeLine(hex, false), "text");
    QTEST(s().probe.decodeFreeLine(hex, true), "text");
}

void TestFreeLinesWindow::linesAreRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("two lines") << listOf({line("1", "\"80\""), line("2", "\"81\"")}) << QStringList{"А", "Б"};
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF" + listOf({line("1", "\"80\"")}))
                                     << QStringList{"А"};
    QTest::newRow("order of the file")
        << listOf({line("3", "\"82\""), line("1", "\"80\""), line("2", "\"81\"")})
        << QStringList{"В", "А", "Б"};
    QTest::newRow("one row twice") << listOf({line("1", "\"80\""), line("1", "\"81\"")})
                                   << QStringList{"А", "Б"};
    QTest::newRow("rows") << listOf({line("0", "\"80\""), line("1", "\"81\""), line("255", "\"82\""),
                                     line("256", "\"83\""), line("-1", "\"84\"")})
                          << QStringList{"Б", "В"};
    QTest::newRow("tables") << listOf({line("1", "\"80\"", "20"), line("1", "\"81\"", "21"),
                                       line("1", "\"82\"", "0"), line("1", "\"83\"", "-21")})
                            << QStringList{"Б"};
    QTest::newRow("empty line") << listOf({line("1", "\"\""), line("2", "\"81\"")}) << QStringList{"Б"};
    QTest::newRow("odd digits") << listOf({line("1", "\"80818\""), line("2", "\"8\"")})
                                << QStringList{"АБ", ""};
    QTest::newRow("field does not matter")
        << QByteArray(R"([{"t": 21, "f": 7, "r": 1, "v": "80"}, {"t": 21, "r": 2, "v": "81"}])")
        << QStringList{"А", "Б"};
    QTest::newRow("empty list") << QByteArray("[]") << QStringList();
    QTest::newRow("strange elements") << listOf({"5", "\"80\"", "null", "true", "1.5", "[]",
                                                 "[" + line("1", "\"80\"") + "]", "{}", line("1", "\"81\"")})
                                      << QStringList{"Б"};
    QTest::newRow("wrong types") << listOf({line("\"1\"", "\"80\""), line("[1]", "\"80\""),
                                            line("{}", "\"80\""), line("99999999999", "\"80\""),
                                            line("1", "\"80\"", "\"21\""), line("1", "\"80\"", "[21]"),
                                            line("1", "[]"), line("1", "{}"), line("1", "null"),
                                            line("2", "\"81\"")})
                                 << QStringList{"Б"};
    QTest::newRow("types that could be converted")
        << listOf({line("1", "80"), line("1", "true"), line("1", "8.5"), line("true", "\"80\""),
                   line("1.5", "\"80\""), line("1", "\"80\"", "21.5"), line("1", "\"80\"", "true"),
                   line("2", "\"81\"")})
        << QStringList{"Б"};
    QTest::newRow("no digits") << listOf({line("1", "\"ZZ80\"")}) << QStringList{kZero + "А"};
    QTest::newRow("zero within") << listOf({line("1", R"("80\u000081")")}) << QStringList{"А" + kZero};
    QTest::newRow("missing members") << QByteArray(
                                            R"([{"t": 21, "v": "80"}, {"r": 1, "v": "80"}, {"t": 21, "r": 1},
                         {"t": 21, "r": 1, "v": "81"}])")
                                     << QStringList{"Б"};
    QTest::newRow("comments") << "// lines\n" + listOf({line("1", "\"80\"")}) + "\n/* end */"
                              << QStringList{"А"};
    QTest::newRow("blanks and comments behind")
        << listOf({line("1", "\"80\"")}) + " \t\r\n// one ]\n/* two ] */ // three" << QStringList{"А"};
}

void TestFreeLinesWindow::linesAreRead()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QStringList, lines);
    s().writeFile(text);
    s().probe.loadFreeLinesFile();
    QCOMPARE(s().probe.freeStrings(), lines);
    QCOMPARE(s().log.takeNew(), QStringList{QStringLiteral("Read FreeStr kol=%1").arg(lines.size())});
    QCOMPARE(s().robot.takeTexts(), QStringList());
    QCOMPARE(bytesOf(s().file), text);
}

void TestFreeLinesWindow::missingFileLeavesNoLines()
{
    for (const bool isFolder : {false, true}) {
        if (isFolder)
            QVERIFY(s().blockFile());
        s().probe.freeStrings() = {"прежняя"};
        s().probe.loadFreeLinesFile();
        QCOMPARE(s().probe.freeStrings(), QStringList());
        QCOMPARE(s().takeWarning(), "Ошибка ввода-вывода!");
        QCOMPARE(s().log.takeNew(), QStringList{"Не удалось открыть файл с настройками [" + s().file + "]"});
    }
    QVERIFY(s().unblockFile());
}

void TestFreeLinesWindow::unreadableFileLeavesNoLines_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("text") << QByteArray("строка");
    QTest::newRow("cut") << listOf({line("1", "\"80\"")}).chopped(1);
    QTest::newRow("comma") << "[" + line("1", "\"80\"") + ",]";
    QTest::newRow("number") << QByteArray("21");
    QTest::newRow("string") << QByteArray("\"80\"");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("deeply nested") << QByteArray(200000, '[') + QByteArray(200000, ']');
    QTest::newRow("nested objects") << QByteArray("{\"a\":").repeated(5000) + "1" + QByteArray(5000, '}');
    QTest::newRow("zeros") << QByteArray(100, '\0');
    const QByteArray good = listOf({line("1", "\"80\"")});
    QTest::newRow("number beyond all") << listOf({line("1e400", "\"80\"")});
    QTest::newRow("half a character") << listOf({line("1", R"("\ud800")")});
    QTest::newRow("text behind") << good + "x";
    QTest::newRow("list behind") << good + good;
    QTest::newRow("end behind") << good + "\n]";
}

void TestFreeLinesWindow::unreadableFileLeavesNoLines()
{
    QFETCH(const QByteArray, text);
    compareRefused(text);
    const QStringList log = s().log.takeNew();
    QVERIFY(log.filter("Read FreeStr").isEmpty());
    const QStringList told = log.filter("Ошибка при разборе json");
    QCOMPARE(told.size(), 1);
    QVERIFY(told[0].startsWith("Ошибка при разборе json ["));
}

void TestFreeLinesWindow::fileWithoutAListLeavesNoLines_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("object") << QByteArray("{}");
    QTest::newRow("one line") << line("1", "\"80\"");
    QTest::newRow("object of lines") << "{\"a\": " + line("1", "\"80\"") + "}";
}

void TestFreeLinesWindow::fileWithoutAListLeavesNoLines()
{
    QFETCH(const QByteArray, text);
    compareRefused(text);
    // It can be parsed, so there is nothing to tell of the parser.
    QCOMPARE(s().log.takeNew(), QStringList());
}

void TestFreeLinesWindow::compareRefused(const QByteArray& text)
{
    s().writeFile(text);
    s().probe.loadFreeLinesFile();
    QCOMPARE(s().probe.freeStrings(), QStringList());
    QCOMPARE(s().takeWarning(), "Не удалось разобрать свободные строки!");
}

void TestFreeLinesWindow::linesAreWritten()
{
    s().writeFile(QByteArray(5000, 'x'));
    s().probe.freeStrings() = {"Привет, ёлка №1!", "", "─"};
    s().probe.saveFreeLinesFile();
    QCOMPARE(s().robot.takeTexts(), QStringList());
    QCOMPARE(s().indentedFile(), kWrittenFile);
}

void TestFreeLinesWindow::noLinesAreAnEmptyList()
{
    s().probe.freeStrings().clear();
    s().probe.saveFreeLinesFile();
    QCOMPARE(bytesOf(s().file).trimmed(), "[]");
    s().probe.loadFreeLinesFile();
    QCOMPARE(s().probe.freeStrings(), QStringList());
    QCOMPARE(s().log.takeNew(), QStringList{"Read FreeStr kol=0"});
    QCOMPARE(s().robot.takeTexts(), QStringList());
}

void TestFreeLinesWindow::unknownCharactersTakeTheirPlace()
{
    s().probe.freeStrings() = {"А€Б", "А«Б»"};
    s().probe.saveFreeLinesFile();
    QCOMPARE(writtenDigits(), (QStringList{"803F81", "803F813F"}));
    s().probe.loadFreeLinesFile();
    const QStringList lines = s().probe.freeStrings();
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines[0].size(), 3);
    QCOMPARE(lines[0].front(), u'А');
    QVERIFY(lines[0][1] != u'€');
    QCOMPARE(lines[0].back(), u'Б');
    QCOMPARE(lines[1].size(), 4);
    QCOMPARE(lines[1][2], u'Б');
}

void TestFreeLinesWindow::halfACharacterStaysInItsLine()
{
    const QChar first(0xD83D);
    const QChar second(0xDE00);
    for (int saving = 0; saving < 2; ++saving) {
        s().probe.freeStrings() = {"a" + QString(first), "bc", QString(first), second + QString("b"),
                                   "Я" + QString(first)};
        s().probe.saveFreeLinesFile();
        QCOMPARE(writtenDigits(), (QStringList{"613F", "6263", "3F", "3F62", "9F3F"}));
    }
}

void TestFreeLinesWindow::unwritableFileIsTold()
{
    QVERIFY(s().blockFile());
    s().probe.saveFreeLinesFile();
    QVERIFY(s().unblockFile());
    QCOMPARE(s().takeWarning(), "Не удалось открыть файл для записи!");
    QCOMPARE(s().probe.freeStrings(), QStringList{"прежняя"});
}

void TestFreeLinesWindow::everyLetterComesBack()
{
    QCOMPARE(kUpperHalf.size(), 128);
    QString hex;
    for (int byte = 128; byte < 256; ++byte)
        hex += QString::number(byte, 16).toUpper();
    QCOMPARE(s().probe.decodeFreeLine(hex, false), kUpperHalf);

    QString ascii;
    for (char16_t character = u' '; character < 127; ++character)
        ascii += character;
    s().probe.freeStrings() = {kUpperHalf, ascii};
    s().probe.saveFreeLinesFile();
    QVERIFY(bytesOf(s().file).contains(hex.toLatin1()));
    s().probe.freeStrings().clear();
    s().probe.loadFreeLinesFile();
    QCOMPARE(s().probe.freeStrings(), (QStringList{kUpperHalf, ascii}));
}

void TestFreeLinesWindow::controlCharactersComeBackAsTheirBytes()
{
    // The table of the code page has three of them in each other's places, as old PCs did.
    QCOMPARE(s().probe.decodeFreeLine("1A1C7F", false), "\x1C\x7F\x1A");
    QString hex;
    for (int byte = 0; byte < 128; ++byte)
        hex += QString::number(byte, 16).rightJustified(2, u'0').toUpper();
    s().probe.freeStrings() = {s().probe.decodeFreeLine(hex, false)};
    s().probe.saveFreeLinesFile();
    QCOMPARE(writtenDigits(), QStringList{hex});
}

void TestFreeLinesWindow::emptyLineIsLostOnItsWay()
{
    s().probe.freeStrings() = {"1", "", " ", "4"};
    s().probe.saveFreeLinesFile();
    s().probe.loadFreeLinesFile();
    QCOMPARE(s().probe.freeStrings(), (QStringList{"1", " ", "4"}));
    QCOMPARE(s().log.takeNew(), QStringList{"Read FreeStr kol=3"});

    // Rows beyond the last one of the device are written, and left out when they are read.
    s().probe.freeStrings() = QStringList(256, "x");
    s().probe.saveFreeLinesFile();
    s().probe.loadFreeLinesFile();
    QCOMPARE(s().probe.freeStrings().size(), 255);
}

QTEST_MAIN(TestFreeLinesWindow)

#include "tst_freelines_window.moc"
