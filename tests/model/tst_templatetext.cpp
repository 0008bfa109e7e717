#include "model/bd_t20items.h"
#include "model/templatetext.h"

#include <QRandomGenerator>
#include <QTest>

#include <type_traits>

namespace {

/// A literal with its NULs.
template <std::size_t N>
QByteArray bytes(const char (&literal)[N])
{
    return QByteArray(literal, static_cast<qsizetype>(N) - 1);
}

} // namespace

static_assert(!std::is_copy_constructible_v<TemplateText> && !std::is_copy_assignable_v<TemplateText>);

class TestTemplateText : public QObject
{
    Q_OBJECT

private slots:
    void bytesBecomeLines_data();
    void bytesBecomeLines();
    void leadingByteOrderMarkIsWhatTheDecoderMakesOfIt();
    void byteOrderMarkElsewhereStays();
    void brokenTextDecodesAsAWhole_data();
    void brokenTextDecodesAsAWhole();
    void linesJoinedAreTheTextAgain();
    void recordsOutliveTheText();
    void lastLineWithoutLineFeedIsARecord();
};

void TestTemplateText::bytesBecomeLines_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QStringList>("lines");
    const QString no = QString("");
    QTest::newRow("no bytes") << QByteArray() << QStringList{no};
    QTest::newRow("empty bytes") << QByteArray("") << QStringList{no};
    QTest::newRow("one line feed") << bytes("\n") << QStringList{no, no};
    QTest::newRow("no line feed") << bytes("a;b") << QStringList{"a;b"};
    QTest::newRow("line feed at the end") << bytes("a\n") << QStringList{"a", no};
    QTest::newRow("two lines") << bytes("a\nb") << QStringList{"a", "b"};
    QTest::newRow("empty lines") << bytes("\n\na\n\n\nb\n\n")
                                 << QStringList{no, no, "a", no, no, "b", no, no};
    QTest::newRow("carriage returns stay") << bytes("a\r\nb\r\n") << QStringList{"a\r", "b\r", no};
    QTest::newRow("carriage return ends nothing") << bytes("a\rb\r\r\nc") << QStringList{"a\rb\r\r", "c"};
    QTest::newRow("line feed before carriage return") << bytes("a\n\rb") << QStringList{"a", "\rb"};
    QTest::newRow("blanks stay") << bytes(" a \n\tb\t\n ") << QStringList{" a ", "\tb\t", " "};
    QTest::newRow("other separators end nothing")
        << QByteArray("a\vb\fc\x1e"
                      "d\xc2\x85"
                      "e\xe2\x80\xa8"
                      "f\xe2\x80\xa9g\nh")
        << QStringList{QString::fromUtf16(u"a\vb\fc\u001ed\u0085e\u2028f\u2029g"), "h"};
    QTest::newRow("Cyrillic") << QByteArray("Налог: ставка\nИТОГ: сумма")
                              << QStringList{"Налог: ставка", "ИТОГ: сумма"};
    QTest::newRow("beyond 16 bits") << bytes("\xf0\x9f\x98\x80\nb") << QStringList{"😀", "b"};
    QTest::newRow("NUL ends the text") << bytes("a\nb\0c\nd") << QStringList{"a", "b"};
    QTest::newRow("NUL first") << bytes("\0a\nb") << QStringList{no};
    QTest::newRow("NUL after a line feed") << bytes("a\n\0b") << QStringList{"a", no};
    QTest::newRow("NUL last") << bytes("a\nb\n\0") << QStringList{"a", "b", no};
    QTest::newRow("two NULs") << bytes("a\0b\0c") << QStringList{"a"};
}

void TestTemplateText::bytesBecomeLines()
{
    QFETCH(const QByteArray, data);
    QFETCH(const QStringList, lines);
    QCOMPARE(TemplateText(data).lines(), lines);
}

void TestTemplateText::leadingByteOrderMarkIsWhatTheDecoderMakesOfIt()
{
    const QByteArray data = bytes("\xef\xbb\xbf"
                                  "1;ffff\nb");
    QCOMPARE(TemplateText(data).lines(), QString::fromUtf8(data).split('\n'));
    QCOMPARE(TemplateText(bytes("\xef\xbb\xbf")).lines(), QStringList{QString::fromUtf8("\xef\xbb\xbf")});
    QCOMPARE(TemplateText(bytes("\xef\xbb")).lines(), QStringList{QString::fromUtf8("\xef\xbb")});
}

void TestTemplateText::byteOrderMarkElsewhereStays()
{
    const TemplateText text(bytes("a\n\xef\xbb\xbf"
                                  "b\xef\xbb\xbf"));
    QCOMPARE(text.lines(), (QStringList{"a", QChar(0xfeff) + QString("b") + QChar(0xfeff)}));
}

void TestTemplateText::brokenTextDecodesAsAWhole_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QStringList>("lines");
    const QString bad(QChar::ReplacementCharacter);
    QTest::newRow("byte that no text has") << bytes("a\xff"
                                                    "b\nc")
                                           << QStringList{"a" + bad + "b", "c"};
    QTest::newRow("sequence cut by a line feed") << bytes("a\xd0\nb") << QStringList{"a" + bad, "b"};
    QTest::newRow("sequence cut by the end") << bytes("a\nb\xd0") << QStringList{"a", "b" + bad};
    QTest::newRow("sequence cut by a NUL") << bytes("a\xd0\0\x9f") << QStringList{"a" + bad};
    QTest::newRow("rest of a sequence") << bytes("\x9f"
                                                 "a\n\xbf")
                                        << QStringList{bad + "a", bad};
    QTest::newRow("long form of NUL is none")
        << bytes("a\xc0\x80z\nb") << QStringList{"a" + bad + bad + "z", "b"};
    QTest::newRow("long form of a line feed is none")
        << bytes("a\xc0\x8az") << QStringList{"a" + bad + bad + "z"};
    QTest::newRow("code page 1251") << bytes("\xcd\xe0\xeb\n\xce") << QStringList{bad + bad + bad, bad};
}

void TestTemplateText::brokenTextDecodesAsAWhole()
{
    QFETCH(const QByteArray, data);
    QFETCH(const QStringList, lines);
    QCOMPARE(TemplateText(data).lines(), lines);
}

void TestTemplateText::linesJoinedAreTheTextAgain()
{
    QRandomGenerator random(20);
    const QByteArray alphabet = bytes("\n\n\r;,a1\xd0\x9f\xff\xef\xbb\xbf");
    for (int round = 0; round < 5000; ++round) {
        QByteArray data;
        for (auto length = random.bounded(40); length > 0; --length)
            data.append(alphabet.at(random.bounded(static_cast<int>(alphabet.size()))));
        const bool hasNul = random.bounded(4) == 0;
        const TemplateText text(hasNul ? data + '\0' + data : data);
        QCOMPARE(text.lines().join('\n'), QString::fromUtf8(data));
        QCOMPARE(text.lines().size(), data.count('\n') + 1);
    }
}

void TestTemplateText::recordsOutliveTheText()
{
    BD_T20Items mask;
    BD_T20Items old;
    BD_T20Items plain;
    {
        const TemplateText text(
            "1;0000;000;1;0;0;0;0;0;1;0;9;-------;0;0;0;0;0;0;0;1;1;32;00;0;Свой: первый");
        mask.LoadFromListV04(text.lines());
        const TemplateText oldText("1;0;0;0;0;0;1;0;10;0;0;0;0;0;0;0;0;1;1;32;Свой: второй");
        old.LoadFromListV01(oldText.lines(), true);
        const TemplateText plainText("1;0;0;0;0;0;1;0;10;0;0;0;0;0;0;0;0;1;32;Свой: третий");
        plain.LoadFromListV01(plainText.lines(), false);
    }
    QCOMPARE(mask.getPoleByKey(1).Desc, "Свой: первый");
    QCOMPARE(mask.getPoleByKey(1).DescView, "С.: первый");
    QCOMPARE(old.getPoleByKey(1).Desc, "Свой: второй");
    QCOMPARE(old.getPoleByKey(1).DescView, "С.: второй");
    QCOMPARE(plain.getPoleByKey(1).Desc, "Свой: третий");
    QCOMPARE(plain.getPoleByKey(1).DescView, "С.: третий");
}

void TestTemplateText::lastLineWithoutLineFeedIsARecord()
{
    const QByteArray row("1;ffff;%;1;1;0;0;0;0;2;0;20;---;0;0;0;0;0;0;1;1;1;32;00;0;Текст");
    QByteArray data = row;
    data.replace("%", "011").append('\n').append(row).replace("%", "012");
    BD_T20Items without;
    without.LoadFromListV04(TemplateText(data).lines());
    QCOMPARE(without.items.keys(), (QList<int>{12, 13}));
    QCOMPARE(without.items[13].Desc, "Текст");
    BD_T20Items with;
    with.LoadFromListV04(TemplateText(data + '\n').lines());
    QCOMPARE(with.items.keys(), (QList<int>{12, 13}));
    QCOMPARE(with.items[13].Desc, "Текст");
}

QTEST_GUILESS_MAIN(TestTemplateText)
#include "tst_templatetext.moc"
