#include "support/session.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace {

/// The warning about `path`, which cannot be written.
QString writeError(const QString& path)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        qFatal("%s can be written", qPrintable(path));
    return QStringLiteral("Не удалось открыть файл для записи (%1)").arg(file.errorString());
}

} // namespace

class tst_Saving : public QObject
{
    Q_OBJECT

private slots:
    void saveAfterARejectedFileEmptiesIt();
    void shorterFileKeepsTheTailOfTheTemplate();
    void saveAsWritesEveryRecord();
    void saveWritesOverTheOpenFile();
    void cancelledOpenForgetsTheFile();
    void cancelledSaveAsForgetsTheFile();
    void failedSaveLeavesTheTemplate();
    void failedSaveAsStillAllowsSave();
    void oldFormatDoesNotSurviveSavingAndReading();
    void templateIsSavedAndOpenedUnderAnyName_data();
    void templateIsSavedAndOpenedUnderAnyName();
    void shortcutsOpenAndSave();

    void cleanupTestCase();

private:
    SharedSession m_shared;
};

void tst_Saving::cleanupTestCase()
{
    m_shared.close();
}

void tst_Saving::saveAfterARejectedFileEmptiesIt()
{
    Session s;
    const QString path = s.dir.write("bad.csv", maskFile({{.line = 256}}));
    s.open(path);
    s.robot.takeTexts();
    s.log.takeNew();
    QVERIFY(s.canSave());
    s.save();
    QVERIFY(QFile::exists(path));
    QCOMPARE(QFileInfo(path).size(), 0);
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(s.log.takeNew(), QStringList());
}

void tst_Saving::shorterFileKeepsTheTailOfTheTemplate()
{
    Session s;
    s.open(s.goodFile(6));
    auto shorter = manyFields(2);
    shorter[0].desc = QStringLiteral("Новое: первое");
    shorter[1].desc = QStringLiteral("Новое: второе");
    const QString path = s.dir.write("short.csv", maskFile(shorter));
    s.open(path);
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(s.keysOnTape(), (QStringList{"1", "2", "3", "4", "5", "6"}));
    QCOMPARE(s.probe.bd().items.value(2).Desc, QStringLiteral("Новое: второе"));
    s.save();
    QCOMPARE(bytesOf(path), maskFile(shorter + manyFields(6).mid(2)));
}

void tst_Saving::saveAsWritesEveryRecord()
{
    Session s;
    QList<FieldRow> fields = manyFields(40);
    fields[0] = {.block = 1,
                 .font = 1,
                 .line = 2,
                 .size = 20,
                 .brightness = 1,
                 .desc = QStringLiteral("Позиция: наименование"),
                 .need = true};
    fields[1].blockMask = 0xff;
    fields[2].tailChar = 200;
    fields[3].tailChar = 7;
    fields[4].size = 0;
    fields[5] = {.flags = 3, .gap = 255, .line = 255, .x = 255, .size = 255};
    s.open(s.dir.write("good.csv", maskFile(fields)));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    s.log.takeNew();

    // No ending is added to the name.
    const QString path = s.dir.path("copy");
    s.saveAs(path);
    QCOMPARE(s.probe.currentFileName(), path);
    QCOMPARE(bytesOf(path), maskFile(fields));
    QVERIFY(bytesOf(path).startsWith(
        "1;ffff;000;1;1;0;0;0;0;2;0;20;---;0;0;0;0;0;0;1;1;1;32;00;0;Позиция: наименование\n"));
    QVERIFY(!QFile::exists(path + QStringLiteral(".csv")));
    QCOMPARE(s.log.takeNew(), QStringList());

    // A longer file is cut; the question about it is the dialog's.
    const QString longer = s.dir.write("longer.csv", QByteArray(200000, 'x'));
    s.saveAs(longer);
    QCOMPARE(s.robot.takeFileQuestions(), 1);
    QCOMPARE(bytesOf(longer), maskFile(fields));
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void tst_Saving::saveWritesOverTheOpenFile()
{
    Session s;
    // An older format goes out in the new one.
    const FieldRow field{.block = 2, .line = 3, .x = 4, .size = 5, .maskMode = 3};
    const QString path = s.dir.write("old.csv", oldRecord(field) + '\n');
    s.open(path);
    s.save();
    QCOMPARE(bytesOf(path), maskRecord(1, field) + '\n');
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(s.robot.takeFileDialogs().size(), 1);
}

void tst_Saving::cancelledOpenForgetsTheFile()
{
    Session s;
    const QString path = s.goodFile(2);
    s.open(path);
    const QByteArray before = bytesOf(path);
    const auto items = s.probe.scene().items();
    s.log.takeNew();

    s.robot.cancelFileDialog();
    chooseInMenu(s.window, "actionOpen");
    QCOMPARE(s.robot.takeFileDialogs().size(), 2);
    QCOMPARE(s.probe.currentFileName(), QString());
    QCOMPARE(s.probe.scene().items(), items);
    QVERIFY(s.canSave());
    QVERIFY(QFile::remove(path));
    s.save();
    QVERIFY(!QFile::exists(path));
    QCOMPARE(s.probe.bd().items.size(), 2);
    QCOMPARE(s.probe.maket().getShablonLoaded(), true);
    QCOMPARE(s.log.takeNew(), QStringList());
    QCOMPARE(s.robot.takeTexts(), QStringList());

    s.saveAs(path);
    QCOMPARE(bytesOf(path), before);
}

void tst_Saving::cancelledSaveAsForgetsTheFile()
{
    Session s;
    const QString path = s.goodFile(2);
    s.open(path);
    s.robot.cancelFileDialog();
    chooseInMenu(s.window, "actionSaveAs");
    QCOMPARE(s.probe.currentFileName(), QString());
    QVERIFY(s.canSave());
    QVERIFY(QFile::remove(path));
    s.save();
    QVERIFY(!QFile::exists(path));
    QCOMPARE(s.robot.takeTexts(), QStringList());
    QCOMPARE(s.probe.bd().items.size(), 2);
}

void tst_Saving::failedSaveLeavesTheTemplate()
{
    Session s;
    const QString path = s.goodFile(2);
    s.open(path);
    s.log.takeNew();
    const auto items = s.probe.scene().items();
    QVERIFY(QFile::remove(path));
    QVERIFY(QDir(path).mkpath("."));
    s.save();
    const auto boxes = s.robot.takeBoxes();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first().text, writeError(path));
    QCOMPARE(boxes.first().icon, QMessageBox::Warning);
    QCOMPARE(s.probe.currentFileName(), path);
    QVERIFY(s.canSave());
    QCOMPARE(s.probe.bd().items.size(), 2);
    QCOMPARE(s.probe.scene().items(), items);
    QCOMPARE(s.log.takeNew(), QStringList());

    QVERIFY(QDir(path).removeRecursively());
    s.save();
    QCOMPARE(bytesOf(path), maskFile(manyFields(2)));
}

void tst_Saving::failedSaveAsStillAllowsSave()
{
    Session s;
    // A template that came without a file leaves Save disabled: this is the way there without a device.
    s.open(s.goodFile(2));
    named<QAction>(s.window, "actionSave")->setEnabled(false);
    const QString path = s.dir.path("copy.csv");
    s.robot.whenFileIsChosen([&] { QDir(path).mkpath("."); });
    s.saveAs(path);
    QCOMPARE(s.robot.takeTexts(), QStringList{writeError(path)});
    QCOMPARE(s.probe.currentFileName(), path);
    QVERIFY(s.canSave());
    QCOMPARE(s.probe.bd().items.size(), 2);

    const QString lost = s.dir.path("sub/copy.csv");
    QVERIFY(QDir(s.dir.path("sub")).mkpath("."));
    s.robot.whenFileIsChosen([&] { QDir(s.dir.path("sub")).removeRecursively(); });
    s.saveAs(lost);
    QCOMPARE(s.robot.takeTexts(), QStringList{writeError(lost)});
    QCOMPARE(s.probe.currentFileName(), lost);
}

void tst_Saving::oldFormatDoesNotSurviveSavingAndReading()
{
    Session s;
    const QString path =
        s.dir.write("old.csv", plainRecord(FieldRow()) + '\n' + plainRecord({.line = 2}) + '\n');
    s.open(path);
    s.save();
    QCOMPARE(s.robot.takeTexts(), QStringList());
    // In a fresh window: over the old template the records of its own key 1 would be left.
    Session fresh;
    fresh.open(path);
    QCOMPARE(fresh.robot.takeTexts(), QStringList{"Поля шаблона имеют недопустимые значения!\n"
                                                  "Найденных ошибок: 1, всего несоответствий: 1\n"
                                                  "Найденные несоответствия:\n"
                                                  "Пропущено поле №1"});
}

void tst_Saving::templateIsSavedAndOpenedUnderAnyName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("two hundred characters") << QString(196, u'n') + QStringLiteral(".csv");
    QTest::newRow("Cyrillic") << QStringLiteral("Шаблон чека №1 (копия), «ёж».csv");
    QTest::newRow("placeholders") << QStringLiteral("100%1 %2.csv");
    QTest::newRow("folder of its own") << QStringLiteral("Мои шаблоны/Чек.csv");
}

void tst_Saving::templateIsSavedAndOpenedUnderAnyName()
{
    QFETCH(const QString, name);
    Session& s = m_shared.withoutTemplate();
    QVERIFY(QDir(QFileInfo(s.dir.path(name)).path()).mkpath("."));
    s.open(s.goodFile(2));
    s.saveAs(s.dir.path(name));
    QCOMPARE(s.probe.currentFileName(), s.dir.path(name));
    QCOMPARE(bytesOf(s.dir.path(name)), maskFile(manyFields(2)));
    s.dir.write(name, maskFile(manyFields(4)));
    s.open(s.dir.path(name));
    QCOMPARE(s.probe.currentFileName(), s.dir.path(name));
    QCOMPARE(s.keysOnTape().size(), 4);
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void tst_Saving::shortcutsOpenAndSave()
{
    Session s;
    const QString path = s.goodFile(2);
    const auto isActive = [&s] {
        s.window.activateWindow();
        return QTest::qWaitForWindowActive(&s.window);
    };
    QVERIFY(isActive());
    s.robot.typeFileName(path);
    QTest::keyClick(&s.window, Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(s.probe.currentFileName(), path);
    QVERIFY(QFile::remove(path));
    QVERIFY(isActive());
    QTest::keyClick(&s.window, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(bytesOf(path), maskFile(manyFields(2)));
}

QTEST_MAIN(tst_Saving)
#include "tst_saving.moc"
