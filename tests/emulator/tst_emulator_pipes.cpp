#include "fpaxsteps.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <thread>

/// A pipe among the files of the emulator: nobody writes to it, so whoever opens it for reading waits,
/// and so does whoever opens it for writing.
class TestEmulatorPipes : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void pipeInPlaceOfTheStateGivesDefaults();
    void stateReplacesThePipe();
    void pipeInPlaceOfTheRulesHasNone();
    void pipeEndsTheRulesOfTheFileBefore();
    void rulesOfAFileInPlaceOfThePipeHold();
    void pipeInPlaceOfAComingFileIsNotWrittenTo_data();
    void pipeInPlaceOfAComingFileIsNotWrittenTo();

private:
    QString file(const QString& name) const { return m_folder->filePath(name); }
    QString state() const { return file("fpax_state.json"); }
    QString rules() const { return file("fpax_faults.json"); }
    void writeRules() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

/// Makes a pipe, notices whoever opens it for reading, and lets him go on as with an empty file.
class WatchedPipe
{
public:
    explicit WatchedPipe(const QString& path)
        : m_path(QFile::encodeName(path))
    {
        if (::mkfifo(m_path.constData(), 0600) != 0)
            qFatal("no pipe at %s", m_path.constData());
        m_thread = std::thread([this] { watch(); });
    }
    ~WatchedPipe() { stop(); }
    WatchedPipe(const WatchedPipe&) = delete;
    WatchedPipe& operator=(const WatchedPipe&) = delete;

    /// Whether a reader came so far. The watch ends.
    bool wasRead()
    {
        stop();
        return m_wasRead;
    }

private:
    void watch()
    {
        while (!m_stop.tryAcquire(1, 5)) {
            // Without a reader this fails.
            const int pipe = ::open(m_path.constData(), O_WRONLY | O_NONBLOCK);
            if (pipe < 0)
                continue;
            m_wasRead = true;
            ::close(pipe);
        }
    }

    void stop()
    {
        m_stop.release();
        if (m_thread.joinable())
            m_thread.join();
    }

    QByteArray m_path;
    QSemaphore m_stop;
    std::atomic<bool> m_wasRead = false;
    std::thread m_thread;
};

/// Makes a pipe and takes whatever is written to it, so that no writer waits.
class DrainedPipe
{
public:
    explicit DrainedPipe(const QString& path)
    {
        const QByteArray name = QFile::encodeName(path);
        if (::mkfifo(name.constData(), 0600) != 0)
            qFatal("no pipe at %s", name.constData());
        m_end = ::open(name.constData(), O_RDONLY | O_NONBLOCK);
        m_thread = std::thread([this] {
            while (!m_stop.tryAcquire(1, 5))
                drain();
        });
    }
    ~DrainedPipe()
    {
        stop();
        ::close(m_end);
    }
    DrainedPipe(const DrainedPipe&) = delete;
    DrainedPipe& operator=(const DrainedPipe&) = delete;

    /// Whether anything came through. The watch ends.
    bool wasWritten()
    {
        stop();
        drain();
        return m_wasWritten;
    }

private:
    void drain()
    {
        std::array<char, 4096> buffer{};
        while (::read(m_end, buffer.data(), buffer.size()) > 0)
            m_wasWritten = true;
    }

    void stop()
    {
        m_stop.release();
        if (m_thread.joinable())
            m_thread.join();
    }

    int m_end = -1;
    QSemaphore m_stop;
    std::atomic<bool> m_wasWritten = false;
    std::thread m_thread;
};

} // namespace

void TestEmulatorPipes::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    qputenv("FPAX_HOME", m_folder->path().toUtf8());
}

void TestEmulatorPipes::cleanup()
{
    qunsetenv("FPAX_HOME");
    m_folder.reset();
}

void TestEmulatorPipes::writeRules() const
{
    QFile target(rules());
    QVERIFY(target.open(QIODevice::WriteOnly));
    target.write(R"([{"operation": "readStatus", "code": -71}])");
}

void TestEmulatorPipes::pipeInPlaceOfTheStateGivesDefaults()
{
    FpaxLibrary fpax;
    const QJsonObject defaults = fpax.state();
    fpax.set({{"serial", "before"}});
    WatchedPipe pipe(state());
    fpax.control({{"cmd", "reload"}});
    QVERIFY(!pipe.wasRead());
    QCOMPARE(fpax.state(), defaults);
    QCOMPARE(connected(fpax)->readStatus(), 0);
}

void TestEmulatorPipes::stateReplacesThePipe()
{
    FpaxLibrary fpax;
    WatchedPipe pipe(state());
    fpax.control({{"cmd", "reload"}});
    QVERIFY(!pipe.wasRead());
    QCOMPARE(enter(connected(fpax), 4), 0);
    QVERIFY(QFileInfo(state()).isFile());
    QFile written(state());
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(QJsonDocument::fromJson(written.readAll()).object(), fpax.state());
}

void TestEmulatorPipes::pipeInPlaceOfTheRulesHasNone()
{
    WatchedPipe pipe(rules());
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    QCOMPARE(connected(fpax)->readStatus(), 0);
    QVERIFY(!pipe.wasRead());
}

void TestEmulatorPipes::pipeEndsTheRulesOfTheFileBefore()
{
    writeRules();
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    IFpax* driver = connected(fpax);
    QVERIFY(driver->readStatus() < 0);
    QVERIFY(QFile::remove(rules()));
    WatchedPipe pipe(rules());
    QCOMPARE(driver->readStatus(), 0);
    QVERIFY(!pipe.wasRead());
}

void TestEmulatorPipes::rulesOfAFileInPlaceOfThePipeHold()
{
    WatchedPipe pipe(rules());
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    IFpax* driver = connected(fpax);
    QCOMPARE(driver->readStatus(), 0);
    QVERIFY(!pipe.wasRead());
    QVERIFY(QFile::remove(rules()));
    writeRules();
    QVERIFY(driver->readStatus() < 0);
    QCOMPARE(codeOf(driver), -71);
}

void TestEmulatorPipes::pipeInPlaceOfAComingFileIsNotWrittenTo_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("written");
    const QString text = "fpax_paper/0001-annulled.txt";
    const QString picture = "fpax_paper/0001-annulled.png";
    QTest::newRow("state") << "fpax_state.json.part" << QStringList{text, picture};
    QTest::newRow("text of a print") << text << QStringList{"fpax_state.json"};
    QTest::newRow("picture of a print") << picture << QStringList{"fpax_state.json", text};
}

void TestEmulatorPipes::pipeInPlaceOfAComingFileIsNotWrittenTo()
{
    QFETCH(QString, name);
    QFETCH(QStringList, written);
    QVERIFY(QDir(m_folder->path()).mkdir("fpax_paper"));
    DrainedPipe pipe(file(name));
    FpaxLibrary fpax;
    fpax.control({{"cmd", "reload"}});
    IFpax* driver = connected(fpax);
    QCOMPARE(openReceipt(driver), 0);
    QCOMPARE(driver->cancelCheck(), 0);
    QVERIFY(!pipe.wasWritten());
    QVERIFY(QFileInfo::exists(file(name)) && !QFileInfo(file(name)).isFile());
    for (const QString& other : written)
        QVERIFY2(QFileInfo(file(other)).isFile(), qPrintable(other));
}

QTEST_MAIN(TestEmulatorPipes)
#include "tst_emulator_pipes.moc"
