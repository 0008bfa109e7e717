#include "device/regularfile.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

constexpr qint64 kLongest = 64 * 1024 * 1024;

} // namespace

/// Which files the program opens at all.
class TestRegularFile : public QObject
{
    Q_OBJECT

private slots:
    void longestFileThatIsRead_data();
    void longestFileThatIsRead();
    void longerFileIsWrittenOver();
    void missingFileIsOnlyWritten();
    void folderIsNoFile();
    void pipeIsNoFile();

private:
    QString path(const char* name) const { return m_dir.filePath(QString::fromLatin1(name)); }
    /// A file of that size that takes no room.
    QString sparseFile(qint64 size) const;

    QTemporaryDir m_dir;
};

QString TestRegularFile::sparseFile(qint64 size) const
{
    QFile file(path("sparse"));
    if (!file.open(QIODevice::WriteOnly) || !file.resize(size))
        qFatal("%s", qPrintable(file.errorString()));
    return file.fileName();
}

void TestRegularFile::longestFileThatIsRead_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<bool>("isOpened");
    QTest::newRow("empty") << qint64(0) << true;
    QTest::newRow("one byte less") << kLongest - 1 << true;
    QTest::newRow("exactly") << kLongest << true;
    QTest::newRow("one byte more") << kLongest + 1 << false;
    QTest::newRow("many times more") << 1000 * kLongest << false;
}

void TestRegularFile::longestFileThatIsRead()
{
    QFETCH(const qint64, size);
    QFETCH(const bool, isOpened);
    const QString name = sparseFile(size);
    QFile file(name);
    QCOMPARE(openRegularFile(file, QIODevice::ReadOnly), isOpened);
    QCOMPARE(file.isOpen(), isOpened);
    QCOMPARE(QFile(name).size(), size);
}

void TestRegularFile::longerFileIsWrittenOver()
{
    QFile file(sparseFile(kLongest + 1));
    QVERIFY(openRegularFile(file, QIODevice::WriteOnly));
    QCOMPARE(file.write("1"), 1);
    file.close();
    QCOMPARE(file.size(), 1);
}

void TestRegularFile::missingFileIsOnlyWritten()
{
    QFile file(path("new"));
    QVERIFY(!openRegularFile(file, QIODevice::ReadOnly));
    QVERIFY(!file.exists());
    QVERIFY(openRegularFile(file, QIODevice::WriteOnly));
    QVERIFY(file.exists());
}

void TestRegularFile::folderIsNoFile()
{
    QVERIFY(QDir(m_dir.path()).mkdir("folder"));
    for (const auto mode : {QIODevice::ReadOnly, QIODevice::WriteOnly}) {
        QFile file(path("folder"));
        QVERIFY(!openRegularFile(file, mode));
        // The words for it are the toolkit's.
        QVERIFY(file.error() != QFileDevice::NoError);
    }
}

void TestRegularFile::pipeIsNoFile()
{
#ifdef Q_OS_UNIX
    QCOMPARE(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    for (const auto mode : {QIODevice::ReadOnly, QIODevice::WriteOnly, QIODevice::ReadWrite}) {
        QFile file(path("pipe"));
        QVERIFY(!openRegularFile(file, mode));
        QVERIFY(!file.isOpen());
    }
#else
    QSKIP("no pipes among the files here");
#endif
}

QTEST_APPLESS_MAIN(TestRegularFile)

#include "tst_regularfile.moc"
