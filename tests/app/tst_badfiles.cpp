#include "support/expectedscene.h"
#include "support/session.h"

#include <QFile>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

const QString kCleared = QStringLiteral("Scene cleared!");
const QString kDump = QStringLiteral("Распознан формат: new, 9*9");
const QString kMask = QStringLiteral("Распознан формат: new, 26+str");
const QString kNotRecognised = QStringLiteral("Не распознан формат!");
const QString kNotRecognisedBox =
    QStringLiteral("Не удалось распознать формат файла!\nВозможно это не файл шаблона!");
const QString kNothingFoundBox = QStringLiteral("Корректных данных не найдено!");

/// The warning about the one finding `finding`.
QString oneFinding(const QString& finding)
{
    return QStringLiteral("Поля шаблона имеют недопустимые значения!\n"
                          "Найденных ошибок: 1, всего несоответствий: 1\n"
                          "Найденные несоответствия:\n") +
           finding;
}

/// A record of "new, 26+str" with `text` in place of its column number `column`.
QByteArray recordWith(int column, const QByteArray& text)
{
    auto columns = maskRecord(0, FieldRow()).split(';');
    columns[column] = text;
    return columns.join(';') + '\n';
}

constexpr int kType = 2;
constexpr int kFont = 4;
constexpr int kLine = 9;
constexpr int kX = 10;
constexpr int kSize = 11;
constexpr int kDesc = 25;

} // namespace

/// Files that are no templates, or templates that nothing good can come of. One window meets them all.
class tst_BadFiles : public QObject
{
    Q_OBJECT

private slots:
    void cleanupTestCase() { m_shared.close(); }

    void rejectedFileLeavesTheWindowUsable_data();
    void rejectedFileLeavesTheWindowUsable();
    void oddFileIsReadAsFarAsItIsGood_data();
    void oddFileIsReadAsFarAsItIsGood();
    void pipeOrDeviceIsNeverOpened_data();
    void pipeOrDeviceIsNeverOpened();
    void pipeOrDeviceIsNeverWritten_data();
    void pipeOrDeviceIsNeverWritten();

private:
    /// A good file is opened as ever.
    void openGoodFile();

    SharedSession m_shared;
};

void tst_BadFiles::openGoodFile()
{
    Session& s = m_shared.withoutTemplate();
    s.open(s.goodFile(2));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(s.log.takeNew(), (QStringList{kMask, kCleared}));
    QCOMPARE(sceneDifferences(s.probe.scene(), manyFields(2), {}), QStringList());
}

void tst_BadFiles::rejectedFileLeavesTheWindowUsable_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("boxes");
    QTest::addColumn<QStringList>("log");
    const QStringList unknownBoxes{kNotRecognisedBox, kNothingFoundBox};
    const QStringList unknownLog{kNotRecognised, kCleared};
    const auto unknown = [&](const char* name, const QByteArray& bytes) {
        QTest::newRow(name) << bytes << unknownBoxes << unknownLog;
    };
    const auto finding = [](const char* name, const QByteArray& bytes, const QString& text) {
        QTest::newRow(name) << bytes << QStringList{oneFinding(text)}
                            << QStringList{kMask, oneFinding(text), kCleared};
    };
    const QByteArray good = maskRecord(0, FieldRow()) + '\n';

    unknown("a NUL first", QByteArray(1, '\0') + good);
    unknown("NULs only", QByteArray(100000, '\0'));
    unknown("broken UTF-8", QByteArray("\xff\xfe\xc3\x28\xe2\x82;\x80\xf8\n\xed\xa0\x80", 13));
    unknown("five megabytes in one line", QByteArray(5 << 20, 'x'));
    unknown("a megabyte of semicolons", QByteArray(1 << 20, ';'));
    unknown("a megabyte of line feeds", QByteArray(1 << 20, '\n'));
    unknown("nineteen semicolons", QByteArray(19, ';'));
    unknown("twenty-five semicolons", QByteArray(25, ';'));
    unknown("a million lines", QByteArray("1;2;3\n").repeated(1000000));
    unknown("carriage returns alone", good.trimmed().left(20) + QByteArray("\r").repeated(500));
    unknown("a type that is too long", recordWith(kType, "2147483647"));
    unknown("a mask that is too wide", recordWith(1, "1ffff"));
    unknown("column 0 is 2", recordWith(0, "2"));
    QTest::newRow("eight semicolons")
        << QByteArray(8, ';') << QStringList{kNothingFoundBox} << QStringList{kDump, kCleared};
    QTest::newRow("a million lines of semicolons")
        << QByteArray(";;;;;;;;\n").repeated(1000000) << QStringList{kNothingFoundBox}
        << QStringList{kDump, kCleared};

    finding("the highest type", good + recordWith(kType, "2147483647"), "Пропущено поле №2");
    finding("a type below zero", recordWith(kType, "-1"), "Пропущено поле №1");
    finding("a hole in the types", recordWith(kType, "999"), "Пропущено поле №1");
    finding("text for a line", recordWith(kLine, "abc"), "В поле №1 ошибка (строка)!");
    finding("no line", recordWith(kLine, ""), "В поле №1 ошибка (строка)!");
    finding("a line as a fraction", recordWith(kLine, "1.5"), "В поле №1 ошибка (строка)!");
    finding("a line in Arabic digits", recordWith(kLine, "\u0661"), "В поле №1 ошибка (строка)!");
    finding("a line beyond all numbers", recordWith(kLine, "99999999999999999999"),
            "В поле №1 ошибка (строка)!");
    finding("the highest line", recordWith(kLine, "2147483647"), "В поле №1 ошибка (строка)!");
    finding("the lowest line", recordWith(kLine, "-2147483648"), "В поле №1 ошибка (строка)!");
    finding("the highest block", recordWith(3, "2147483647"), "В поле №1 ошибка (раздел)!");
    finding("the lowest block", recordWith(3, "-2147483648"), "В поле №1 ошибка (раздел)!");
    finding("the highest position", recordWith(kX, "2147483647"), "В поле №1 ошибка (позиция)!");
    finding("a position below zero", recordWith(kX, "-1"), "В поле №1 ошибка (позиция)!");
    finding("the highest size", recordWith(kSize, "2147483647"), "В поле №1 ошибка (размер поля)!");
    finding("the highest font", recordWith(kFont, "2147483647"), "У поля №1 недопустимое значение(я)!");
    finding("a font below zero", recordWith(kFont, "-1"), "У поля №1 недопустимое значение(я)!");
}

void tst_BadFiles::rejectedFileLeavesTheWindowUsable()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, boxes);
    QFETCH(const QStringList, log);
    Session& s = m_shared.withoutTemplate();
    s.open(s.dir.write(QStringLiteral("bad.csv"), bytes));
    QCOMPARE(s.robot.takeTexts(), boxes);
    QCOMPARE(s.log.takeNew().join(u'\n'), log.join(u'\n'));
    QVERIFY(s.probe.bd().items.isEmpty());
    QCOMPARE(s.probe.maket().getShablonLoaded(), false);
    QCOMPARE(sceneDifferences(s.probe.scene(), {}, {}), QStringList());
    openGoodFile();
}

void tst_BadFiles::oddFileIsReadAsFarAsItIsGood_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QList<FieldRow>>("fields");
    const auto odd = [](const char* name, const QByteArray& bytes, const QList<FieldRow>& fields) {
        QTest::newRow(name) << bytes << fields;
    };
    const FieldRow plain;
    const QByteArray good = maskRecord(0, plain) + '\n';
    odd("a NUL after the first record", good + '\0' + maskRecord(1, plain) + '\n', {plain});
    odd("text for a font", recordWith(kFont, "abc"), {plain});
    odd("a position beyond all numbers", recordWith(kX, "4294967296"), {plain});
    odd("a type beyond all numbers is row 0", recordWith(kType, "001") + recordWith(kType, "2147483648"),
        {plain, plain});
    odd("a size that is no number", recordWith(kSize, "ten"), {{.size = 0}});
    odd("no line feed at the end", maskRecord(0, plain), {plain});
    odd("empty lines and rubbish between", "\n\nrubbish\n" + good + "\n;;;\n" + maskRecord(1, {.line = 2}),
        {plain, {.line = 2}});
    odd("broken UTF-8 in a description", recordWith(kDesc, "ab\xff\xc3("),
        {{.desc = QStringLiteral("ab\uFFFD\uFFFD(")}});
    odd("a carriage return in a description", recordWith(kDesc, "abcd\r"),
        {{.desc = QStringLiteral("abcd\r")}});
    odd("a description of a megabyte", recordWith(kDesc, QByteArray(1 << 20, 'd')),
        {{.desc = QString(1 << 20, u'd')}});
    odd("placeholders and tags in a description", recordWith(kDesc, "<b>%1</b>: %n &amp"),
        {{.desc = QStringLiteral("<b>%1</b>: %n &amp")}});
    odd("half a million records of one field", good.repeated(500000), {plain});
    odd("a thousand more columns", maskRecord(0, plain) + QByteArray(1000, ';') + '\n', {plain});
}

void tst_BadFiles::oddFileIsReadAsFarAsItIsGood()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QList<FieldRow>, fields);
    Session& s = m_shared.withoutTemplate();
    s.open(s.dir.write(QStringLiteral("odd.csv"), bytes));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(s.log.takeNew(), (QStringList{kMask, kCleared}));
    QCOMPARE(sceneDifferences(s.probe.scene(), fields, {}), QStringList());
    openGoodFile();
}

namespace {

void addPipesAndDevices()
{
    QTest::addColumn<QString>("path");
    // An empty path stands for a pipe that the test makes.
    QTest::newRow("a pipe") << QString();
    for (const char* const device : {"/dev/zero", "/dev/full"}) {
        if (QFile::exists(QString::fromLatin1(device)))
            QTest::newRow(device) << QString::fromLatin1(device);
    }
}

/// The path itself, or that of a new pipe in `dir`; empty where there are no pipes.
QString pathOrPipe(const QString& path, const ProgramDir& dir)
{
    if (!path.isEmpty())
        return path;
#ifdef Q_OS_UNIX
    const QString pipe = dir.path(QStringLiteral("pipe.csv"));
    QFile::remove(pipe);
    return mkfifo(QFile::encodeName(pipe).constData(), 0600) == 0 ? pipe : QString();
#else
    Q_UNUSED(dir)
    return {};
#endif
}

} // namespace

void tst_BadFiles::pipeOrDeviceIsNeverOpened_data()
{
    addPipesAndDevices();
}

void tst_BadFiles::pipeOrDeviceIsNeverOpened()
{
    QFETCH(QString, path);
    Session& s = m_shared.withoutTemplate();
    path = pathOrPipe(path, s.dir);
    if (path.isEmpty())
        QSKIP("no pipes on this system");
    s.open(path);
    QCOMPARE(s.robot.takeTexts(), QStringList{"Не удалось открыть файл!"});
    QCOMPARE(s.log.takeNew(), QStringList());
    QCOMPARE(s.probe.currentFileName(), path);
    openGoodFile();
}

void tst_BadFiles::pipeOrDeviceIsNeverWritten_data()
{
    addPipesAndDevices();
}

void tst_BadFiles::pipeOrDeviceIsNeverWritten()
{
    QFETCH(QString, path);
    Session& s = m_shared.withoutTemplate();
    path = pathOrPipe(path, s.dir);
    if (path.isEmpty())
        QSKIP("no pipes on this system");
    s.open(s.goodFile(2));
    s.log.takeNew();
    s.saveAs(path);
    const QStringList texts = s.robot.takeTexts();
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts.first().startsWith(QStringLiteral("Не удалось открыть файл для записи (")),
             qPrintable(texts.first()));
    QCOMPARE(s.log.takeNew(), QStringList());
    QCOMPARE(s.probe.currentFileName(), path);
    QCOMPARE(sceneDifferences(s.probe.scene(), manyFields(2), {}), QStringList());
    openGoodFile();
}

QTEST_MAIN(tst_BadFiles)
#include "tst_badfiles.moc"
