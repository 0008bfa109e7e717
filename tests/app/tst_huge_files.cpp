#include "support/session.h"

#include <QFile>
#include <QTest>

namespace {

constexpr qint64 kTooLong = 64 * 1024 * 1024 + 1;

/// Writes `bytes` to the file `name` of the program's folder and stretches it beyond all measure; the rest takes no
/// room.
QString writeHuge(const ProgramDir& dir, const QString& name, const QByteArray& bytes)
{
    QFile file(dir.write(name, bytes));
    if (!file.resize(kTooLong))
        qFatal("%s", qPrintable(file.errorString()));
    return file.fileName();
}

} // namespace

/// Files that are too long to be read stay closed, whatever stands at their beginning.
class tst_HugeFiles : public QObject
{
    Q_OBJECT

private slots:
    void templateIsKept();
    void templateOfTheUsualLengthOpensAsEver();
    void builtInModelsAreTaken();
    void freeLinesAreNotRead();
};

void tst_HugeFiles::templateIsKept()
{
    Session s;
    s.open(s.goodFile(3));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    const QByteArray held = s.probe.heldTemplate();
    const QStringList keys = s.keysOnTape();
    QCOMPARE(keys.size(), 3);
    s.log.takeNew();

    const QString path = writeHuge(s.dir, "huge.csv", maskFile(manyFields(5)));
    s.open(path);
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, QString("Не удалось открыть файл!"));
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    QCOMPARE(s.log.takeNew(), QStringList());
    QCOMPARE(s.probe.heldTemplate(), held);
    QCOMPARE(s.keysOnTape(), keys);
    QVERIFY(areTemplateCommands(s.window, true));
    QCOMPARE(s.probe.currentFileName(), path);
}

void tst_HugeFiles::templateOfTheUsualLengthOpensAsEver()
{
    Session s;
    const QString path = writeHuge(s.dir, "huge.csv", maskFile(manyFields(5)));
    s.open(path);
    QCOMPARE(s.robot.takeTexts(), QStringList{"Не удалось открыть файл!"});
    QVERIFY(areTemplateCommands(s.window, false));
    QVERIFY(!s.canSave());
    QCOMPARE(s.probe.heldTemplate(), QByteArray());
    // The same beginning, and nothing behind it.
    s.dir.write("huge.csv", maskFile(manyFields(5)));
    s.open(path);
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(s.probe.heldTemplate(), maskFile(manyFields(5)));
    QVERIFY(s.canSave());
}

void tst_HugeFiles::builtInModelsAreTaken()
{
    const ProgramDir dir;
    writeHuge(dir, "kassa.csv", "1;;57;7;;А\n1;;80;8;;Б\n");
    MainWindow window;
    const WindowProbe probe(window);
    QCOMPARE(probe.kassaNames().size(), 11);
    QCOMPARE(probe.kassaNames().first(), QString("Тавр 11Ф"));
}

void tst_HugeFiles::freeLinesAreNotRead()
{
    Session s;
    const QString path = writeHuge(s.dir, "tables.json", R"([{"t": 21, "f": 1, "r": 1, "v": "8F"}])");
    s.probe.freeStrings() = QStringList{"прежняя"};
    s.probe.loadFreeLinesFile();
    QCOMPARE(s.probe.freeStrings(), QStringList());
    QCOMPARE(s.robot.takeTexts(), QStringList{"Ошибка ввода-вывода!"});
    QCOMPARE(s.log.takeNew(), QStringList{QString("Не удалось открыть файл с настройками [%1]").arg(path)});
    QCOMPARE(QFile(path).size(), kTooLong);

    s.dir.write("tables.json", R"([{"t": 21, "f": 1, "r": 1, "v": "8F"}])");
    s.probe.loadFreeLinesFile();
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(s.probe.freeStrings(), QStringList{"П"});
}

QTEST_MAIN(tst_HugeFiles)
#include "tst_huge_files.moc"
