#include "support/session.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace {

const QString kCleared = QStringLiteral("Scene cleared!");
const QString kRecognised = QStringLiteral("Распознан формат: new, 26+str");
const QString kNotRecognised = QStringLiteral("Не распознан формат!");
const QString kNotRecognisedBox =
    QStringLiteral("Не удалось распознать формат файла!\nВозможно это не файл шаблона!");
const QString kNothingFoundBox = QStringLiteral("Корректных данных не найдено!");
const QString kCannotOpenBox = QStringLiteral("Не удалось открыть файл!");

/// A file of `count` fields, the first `bad` of which have a line out of range.
QByteArray fileWithBadLines(int count, int bad)
{
    auto fields = manyFields(count);
    for (int i = 0; i < bad; ++i)
        fields[i].line = 256;
    return maskFile(fields);
}

} // namespace

class tst_Files : public QObject
{
    Q_OBJECT

private slots:
    void dialogsAskForCsvFilesWhereTheLastOneLay();
    void openedTemplateStandsOnTheTape();
    void everyFormatIsRecognised_data();
    void everyFormatIsRecognised();
    void mostVotesWinAndTiesGoToTheOlderFormat_data();
    void mostVotesWinAndTiesGoToTheOlderFormat();
    void commentsOfNineColumnsOutvoteARecord();
    void fileThatVanishesIsNotOpened();
    void folderIsEnteredAndNeverOpened();
    void unrecognisedFileGivesTwoWarnings_data();
    void unrecognisedFileGivesTwoWarnings();
    void recognisedFileWithoutRecordsGivesOneWarning();
    void recognisedFileWithoutRecordsKeepsTheTemplate();
    void tenBadFieldsAreAllListed();
    void elevenBadFieldsAreListedInPart();
    void oneBadFieldLosesTheTemplateBefore();
    void takeOverTurnsHeadingsOn();

    void cleanupTestCase();

private:
    SharedSession m_shared;
};

void tst_Files::cleanupTestCase()
{
    m_shared.close();
}

void tst_Files::dialogsAskForCsvFilesWhereTheLastOneLay()
{
    Session s;
    for (const char* const folder : {"a", "b"})
        QVERIFY(QDir(s.dir.path(folder)).mkpath("."));
    // The user goes into a folder and takes a file there.
    s.robot.typeFileNames({s.dir.path("a"), s.goodFile(2, "a/good.csv")});
    chooseInMenu(s.window, "actionOpen");
    s.robot.typeFileNames({s.dir.path("b"), s.dir.path("b/copy.csv")});
    chooseInMenu(s.window, "actionSaveAs");
    s.open(s.dir.path("b/copy.csv"));
    const auto dialogs = s.robot.takeFileDialogs();
    QCOMPARE(dialogs.size(), 3);
    for (const auto& dialog : dialogs) {
        QCOMPARE(dialog.filter, QStringLiteral("*.csv"));
        QCOMPARE(dialog.parent, &s.window);
        QCOMPARE(dialog.options, QFileDialog::Options());
    }
    QCOMPARE(dialogs.at(0).title, QStringLiteral("Выбор файла с шаблоном"));
    QCOMPARE(dialogs.at(0).isSave, false);
    QCOMPARE(dialogs.at(1).title, QStringLiteral("Выбор файла для сохранения"));
    QCOMPARE(dialogs.at(1).isSave, true);
    QCOMPARE(dialogs.at(1).directory, s.dir.path("a"));
    QCOMPARE(dialogs.at(2).directory, s.dir.path("b"));
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void tst_Files::openedTemplateStandsOnTheTape()
{
    Session s;
    QVERIFY(areTemplateCommands(s.window, false));
    QVERIFY(!s.canSave());
    const QString path = s.goodFile(3);
    s.open(path);
    QCOMPARE(s.log.takeNew(), (QStringList{kRecognised, kCleared}));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QVERIFY(areTemplateCommands(s.window, true));
    QVERIFY(s.canSave());
    QCOMPARE(s.probe.currentFileName(), path);
    QCOMPARE(s.probe.maket().getShablonLoaded(), true);
    QCOMPARE(s.probe.bd().items.size(), 3);
    QCOMPARE(s.keysOnTape(), (QStringList{"1", "2", "3"}));
}

void tst_Files::everyFormatIsRecognised_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("type");
    const FieldRow field{.block = 3, .font = 6, .line = 2, .x = 5, .size = 7, .dropIfZero = 1, .maskMode = 2};
    QTest::newRow("old, 20+[str]") << oldRecord(field) + '\n' << 1;
    QTest::newRow("new, 9*9") << dumpRecords(1, field).join('\n') + '\n' << 1;
    QTest::newRow("new, 19+str") << plainRecord(field) + '\n' << 1;
    QTest::newRow("new, 26+str") << maskRecord(0, field) + '\n' << 0;
}

void tst_Files::everyFormatIsRecognised()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const int, type);
    Session& s = m_shared.withoutTemplate();
    s.open(s.dir.write("file.csv", bytes));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(s.log.takeNew(),
             (QStringList{QStringLiteral("Распознан формат: ") + QLatin1String(QTest::currentDataTag()),
                          kCleared}));
    QCOMPARE(s.probe.bd().items.size(), 1);
    const auto& item = s.probe.bd().items.first();
    QCOMPARE(s.probe.bd().items.firstKey(), 1);
    QCOMPARE(item.Type, type);
    QCOMPARE((QList<int>{item.Block, item.Font, item.Line, item.X, item.Size, item.DropIfZero, item.MaskMode,
                         item.TailChar}),
             (QList<int>{3, 6, 2, 5, 7, 1, 2, 32}));
}

void tst_Files::mostVotesWinAndTiesGoToTheOlderFormat_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("format");
    const FieldRow field;
    const QByteArray old = oldRecord(field) + '\n';
    const QByteArray dump = dumpRecords(1, field).first() + '\n';
    const QByteArray plain = plainRecord(field) + '\n';
    const QByteArray mask = maskRecord(0, field) + '\n';
    // The younger one stands first in each file: the order of the lines does not decide.
    QTest::newRow("1 and 2") << dump + old << "old, 20+[str]";
    QTest::newRow("1 and 3") << plain + old << "old, 20+[str]";
    QTest::newRow("1 and 4") << mask + old << "old, 20+[str]";
    QTest::newRow("2 and 3") << plain + dump << "new, 9*9";
    QTest::newRow("2 and 4") << mask + dump << "new, 9*9";
    QTest::newRow("3 and 4") << mask + plain << "new, 19+str";
    QTest::newRow("all") << mask + plain + dump + old << "old, 20+[str]";
    QTest::newRow("4 with one more") << mask + mask + old << "new, 26+str";
    QTest::newRow("3 with one more") << old + dump + plain + plain << "new, 19+str";
}

void tst_Files::mostVotesWinAndTiesGoToTheOlderFormat()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, format);
    Session& s = m_shared.withoutTemplate();
    s.open(s.dir.write("file.csv", bytes));
    QCOMPARE(s.log.takeNew().constFirst(), QStringLiteral("Распознан формат: ") + format);
}

void tst_Files::commentsOfNineColumnsOutvoteARecord()
{
    Session s;
    s.open(s.dir.write("file.csv", "#;2;3;4;5;6;7;8;9\n#;2;3;4;5;6;7;8;9\n" + maskFile(manyFields(1))));
    QCOMPARE(s.log.takeNew(), (QStringList{"Распознан формат: new, 9*9", kCleared}));
    QCOMPARE(s.robot.takeTexts(), QStringList{kNothingFoundBox});
}

void tst_Files::fileThatVanishesIsNotOpened()
{
    Session s;
    s.open(s.goodFile(2));
    s.log.takeNew();
    const auto items = s.probe.scene().items();
    const QString path = s.goodFile(3, "gone.csv");
    s.robot.whenFileIsChosen([&] { QFile::remove(path); });
    s.open(path);
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, kCannotOpenBox);
    QCOMPARE(boxes.first().title, QString());
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    QCOMPARE(boxes.first().hasParent, false);
    QCOMPARE(boxes.first().buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(s.log.takeNew(), QStringList());
    QCOMPARE(s.probe.scene().items(), items);
    QCOMPARE(s.probe.bd().items.size(), 2);
    QCOMPARE(s.probe.currentFileName(), path);

    // The name that failed is the one that Save takes now.
    s.save();
    QCOMPARE(bytesOf(path), maskFile(manyFields(2)));
}

void tst_Files::folderIsEnteredAndNeverOpened()
{
    Session s;
    QVERIFY(QDir(s.dir.path("folder.csv")).mkpath("."));
    // The dialog goes into a folder and waits for a file.
    s.robot.typeFileNames({s.dir.path("folder.csv")});
    chooseInMenu(s.window, "actionOpen");
    QCOMPARE(s.robot.takeFileDialogs().size(), 1);
    QCOMPARE(s.probe.currentFileName(), QString());
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QVERIFY(!s.canSave());

    const QString path = s.goodFile(2, "file.csv");
    s.robot.whenFileIsChosen([&] {
        QFile::remove(path);
        QDir(path).mkpath(".");
    });
    s.open(path);
    QCOMPARE(s.robot.takeTexts(), QStringList{kCannotOpenBox});
    QCOMPARE(s.probe.currentFileName(), path);
    QVERIFY(!s.canSave());
    QVERIFY(areTemplateCommands(s.window, false));
    QCOMPARE(s.log.takeNew(), QStringList());
}

void tst_Files::unrecognisedFileGivesTwoWarnings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("zero bytes") << QByteArray();
    QTest::newRow("text") << QByteArray("Это письмо, а не шаблон.\nИ ещё строка.\n");
    QTest::newRow("twenty columns, the last empty") << QByteArray("1;2;3;4;5;6;7;8;9;0;1;2;3;4;5;6;7;8;9;\n");
    QTest::newRow("twenty-two columns") << QByteArray("1;2;3;4;5;6;7;8;9;0;1;2;3;4;5;6;7;8;9;0;1;2\n");
}

void tst_Files::unrecognisedFileGivesTwoWarnings()
{
    QFETCH(const QByteArray, bytes);
    Session& s = m_shared.withoutTemplate();
    s.open(s.goodFile(2));
    s.log.takeNew();
    const QString path = s.dir.write("other.csv", bytes);
    s.open(path);
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 2);
    QCOMPARE(boxes.at(0).text, kNotRecognisedBox);
    QCOMPARE(boxes.at(0).icon, QMessageBox::Warning);
    QCOMPARE(boxes.at(1).text, kNothingFoundBox);
    QCOMPARE(boxes.at(1).icon, QMessageBox::Warning);
    QCOMPARE(s.log.takeNew(), (QStringList{kNotRecognised, kCleared}));
    QVERIFY(s.probe.bd().items.isEmpty());
    QVERIFY(s.probe.bd().blocks.isEmpty());
    QVERIFY(s.probe.maket().blocks.isEmpty());
    QCOMPARE(s.probe.maket().getShablonLoaded(), false);
    QCOMPARE(s.keysOnTape(), QStringList());
    QVERIFY(areTemplateCommands(s.window, false));
    QVERIFY(s.canSave());
    QCOMPARE(s.probe.currentFileName(), path);
}

void tst_Files::recognisedFileWithoutRecordsGivesOneWarning()
{
    Session s;
    s.open(s.dir.write("file.csv", "10;1;1;0;0;0;0;0;00\n"));
    QCOMPARE(s.robot.takeTexts(), QStringList{kNothingFoundBox});
    QCOMPARE(s.log.takeNew(), (QStringList{"Распознан формат: new, 9*9", kCleared}));
    QVERIFY(areTemplateCommands(s.window, false));
    QVERIFY(s.canSave());
}

void tst_Files::recognisedFileWithoutRecordsKeepsTheTemplate()
{
    Session s;
    s.open(s.goodFile(2));
    s.log.takeNew();
    s.open(s.dir.write("file.csv", "10;1;1;0;0;0;0;0;00\n"));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(s.log.takeNew(), (QStringList{"Распознан формат: new, 9*9", kCleared}));
    QVERIFY(areTemplateCommands(s.window, true));
    QCOMPARE(s.keysOnTape(), (QStringList{"1", "2"}));
}

void tst_Files::tenBadFieldsAreAllListed()
{
    Session s;
    s.open(s.goodFile(2));
    s.log.takeNew();
    const QString path = s.dir.write("bad.csv", fileWithBadLines(12, 10));
    // The log gets the text and the fields go once the box is answered.
    QString lastLogged;
    qsizetype read = 0;
    QStringList shown;
    s.robot.atEachBox([&](const DialogRobot::SeenBox& /*box*/) {
        lastLogged = s.probe.log().constLast();
        read = s.probe.bd().items.size();
        shown = s.keysOnTape();
    });
    s.open(path);
    QCOMPARE(lastLogged, kRecognised);
    QCOMPARE(read, 12);
    QCOMPARE(shown, (QStringList{"1", "2"}));
    const QString text = QStringLiteral("Поля шаблона имеют недопустимые значения!\n"
                                        "Найденных ошибок: 10, всего несоответствий: 10\n"
                                        "Найденные несоответствия:\n"
                                        "В поле №1 ошибка (строка)!\n"
                                        "В поле №2 ошибка (строка)!\n"
                                        "В поле №3 ошибка (строка)!\n"
                                        "В поле №4 ошибка (строка)!\n"
                                        "В поле №5 ошибка (строка)!\n"
                                        "В поле №6 ошибка (строка)!\n"
                                        "В поле №7 ошибка (строка)!\n"
                                        "В поле №8 ошибка (строка)!\n"
                                        "В поле №9 ошибка (строка)!\n"
                                        "В поле №10 ошибка (строка)!");
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, text);
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    QCOMPARE(s.log.takeNew().join(u'\n'), QStringList({kRecognised, text, kCleared}).join(u'\n'));
    QVERIFY(s.probe.bd().items.isEmpty());
    QVERIFY(areTemplateCommands(s.window, false));
    QCOMPARE(s.probe.currentFileName(), path);
    QVERIFY(s.canSave());
}

void tst_Files::elevenBadFieldsAreListedInPart()
{
    Session s;
    auto fields = manyFields(13);
    fields[0].block = 10;
    fields[1].line = 0;
    fields[2].x = 256;
    fields[3].size = -1;
    fields[4].block = -1;
    fields[4].size = 256; // of several misplacements the last one is named
    for (int i = 5; i < 10; ++i)
        fields[i].font = 8;
    fields[11].tailChar = 256; // the eleventh is found and not listed
    s.open(s.dir.write("bad.csv", maskFile(fields)));
    const QString text = QStringLiteral("Поля шаблона имеют недопустимые значения!\n"
                                        "Найденных ошибок: 11, всего несоответствий: 11\n"
                                        "Первые 10 несоответствий:\n"
                                        "В поле №1 ошибка (раздел)!\n"
                                        "В поле №2 ошибка (строка)!\n"
                                        "В поле №3 ошибка (позиция)!\n"
                                        "В поле №4 ошибка (размер поля)!\n"
                                        "В поле №5 ошибка (размер поля)!\n"
                                        "У поля №6 недопустимое значение(я)!\n"
                                        "У поля №7 недопустимое значение(я)!\n"
                                        "У поля №8 недопустимое значение(я)!\n"
                                        "У поля №9 недопустимое значение(я)!\n"
                                        "У поля №10 недопустимое значение(я)!");
    QCOMPARE(s.robot.takeTexts(), QStringList{text});
    QCOMPARE(s.log.takeNew().join(u'\n'), QStringList({kRecognised, text, kCleared}).join(u'\n'));
}

void tst_Files::oneBadFieldLosesTheTemplateBefore()
{
    Session s;
    s.open(s.goodFile(5));
    QCOMPARE(s.keysOnTape().size(), 5);
    s.log.takeNew();
    s.open(s.dir.write("bad.csv", fileWithBadLines(3, 1)));
    const QString text = QStringLiteral("Поля шаблона имеют недопустимые значения!\n"
                                        "Найденных ошибок: 1, всего несоответствий: 1\n"
                                        "Найденные несоответствия:\n"
                                        "В поле №1 ошибка (строка)!");
    QCOMPARE(s.robot.takeTexts(), QStringList{text});
    QVERIFY(s.probe.bd().items.isEmpty());
    QVERIFY(s.probe.maket().blocks.isEmpty());
    QCOMPARE(s.probe.maket().getShablonLoaded(), false);
    QCOMPARE(s.keysOnTape(), QStringList());
    QVERIFY(areTemplateCommands(s.window, false));
}

void tst_Files::takeOverTurnsHeadingsOn()
{
    Session s;
    s.open(s.goodFile(2));
    s.click("btnBlTitlesOnOff");
    QCOMPARE(s.probe.maket().getBlockTitleEnabled(), false);
    s.open(s.goodFile(2));
    QCOMPARE(s.probe.maket().getBlockTitleEnabled(), true);
    s.click("btnBlTitlesOnOff");
    s.open(s.dir.write("bad.csv", "nothing"));
    QCOMPARE(s.probe.maket().getBlockTitleEnabled(), true);
}

QTEST_MAIN(tst_Files)
#include "tst_files.moc"
