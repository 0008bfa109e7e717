#include "device/driverfolder.h"

#include "device/ifpax.h"
#include "device/krdlibrary.h"

#include <QTest>

#include <cstdint>
#include <memory>

using LUM::Fpax::IFpax;
using Library = KRDLibrary<IFpax>;

namespace {

/// A pointer that nobody may follow, only keep.
IFpax* somebodysInstance()
{
    return reinterpret_cast<IFpax*>(std::uintptr_t{0x1000});
}

QStringList* debugLines = nullptr;

void keepDebugLine(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (debugLines && type == QtDebugMsg)
        debugLines->append(text);
}

/// The lines that go to the debug output while it lives.
class DebugOutput
{
public:
    DebugOutput()
    {
        debugLines = &lines;
        former = qInstallMessageHandler(keepDebugLine);
    }
    ~DebugOutput()
    {
        qInstallMessageHandler(former);
        debugLines = nullptr;
    }
    Q_DISABLE_COPY_MOVE(DebugOutput)

    QStringList lines;

private:
    QtMessageHandler former = nullptr;
};

} // namespace

/// The generic loader of a driver library.
class TestLoader : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsLoadedAtFirst();
    void allSymbolsAreResolvedAtOnce();
    void goodLibraryIsUsable();
    void fullFileNameIsTakenAsWell();
    void moduleNameCountsWithItsCase();
    void libraryWithoutAFunctionIsNoDriver_data();
    void libraryWithoutAFunctionIsNoDriver();
    void fileThatIsNoLibraryIsReported_data();
    void fileThatIsNoLibraryIsReported();
    void placeholdersInAFileNameStayInTheReport();
    void factoryMayRefuse_data();
    void factoryMayRefuse();
    void instanceIsReleasedThroughTheLibrary();
    void nothingIsCreatedOrReleasedAfterUnloading();
    void destructorUnloads();
    void destructorOfAnotherLoaderLeavesTheLibrary();
};

void TestLoader::nothingIsLoadedAtFirst()
{
    const DriverFolder folder;
    QVERIFY(folder.install("contract_driver"));

    const Library library(folder.driverPath(), "Fpax");
    IFpax* instance = somebodysInstance();
    library.CoReleaseInstance(&instance);

    QVERIFY(!library.isLoaded());
    QVERIFY(!library.parent());
    QVERIFY(!library.CoCreateInstance(13));
    QCOMPARE(instance, somebodysInstance());
}

void TestLoader::allSymbolsAreResolvedAtOnce()
{
    const Library library("fpax", "Fpax");

    QCOMPARE(library.loadHints(), QLibrary::LoadHints(QLibrary::ResolveAllSymbolsHint));
}

void TestLoader::goodLibraryIsUsable()
{
    const DriverFolder folder;
    QVERIFY(folder.install("contract_driver"));
    Library library(folder.driverPath(), "Fpax");
    const DebugOutput output;

    QVERIFY(library.load());

    QVERIFY(library.isLoaded());
    QCOMPARE(contractCalls(library), QStringList());
    QVERIFY(library.CoCreateInstance(13));
    QVERIFY(library.CoCreateInstance(-2));
    QCOMPARE(contractCalls(library), QStringList({"CreateFpaxInterface(13)", "CreateFpaxInterface(-2)"}));
    QCOMPARE(output.lines, QStringList());
}

void TestLoader::fullFileNameIsTakenAsWell()
{
    const DriverFolder folder;
    QVERIFY(folder.install("contract_driver"));
    Library library(folder.driverFile(), "Fpax");

    QVERIFY(library.load());
    QVERIFY(library.CoCreateInstance(13));
}

void TestLoader::moduleNameCountsWithItsCase()
{
    const DriverFolder folder;
    QVERIFY(folder.install("contract_driver"));
    for (const QString module : {"fpax", "FPAX", "", "Fpax "}) {
        Library library(folder.driverPath(), module);

        QVERIFY2(!library.load(), qPrintable(module));
        QVERIFY(library.isLoaded());
        QVERIFY(!library.CoCreateInstance(13));
    }
}

void TestLoader::libraryWithoutAFunctionIsNoDriver_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no release function") << "driver_without_release";
    QTest::newRow("no create function") << "driver_without_create";
    QTest::newRow("neither") << "driver_without_functions";
}

void TestLoader::libraryWithoutAFunctionIsNoDriver()
{
    QFETCH(const QString, name);
    const DriverFolder folder;
    QVERIFY(folder.install(name));
    Library library(folder.driverPath(), "Fpax");
    const DebugOutput output;

    QVERIFY(!library.load());

    QVERIFY(library.isLoaded());
    QVERIFY(!library.CoCreateInstance(13));
    IFpax* instance = somebodysInstance();
    library.CoReleaseInstance(&instance);
    QCOMPARE(instance, somebodysInstance());
    // Only a library that does not load is worth a line.
    QCOMPARE(output.lines, QStringList());
}

void TestLoader::fileThatIsNoLibraryIsReported_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("exists");
    QTest::newRow("no file") << QByteArray() << false;
    QTest::newRow("empty") << QByteArray("") << true;
    QTest::newRow("text") << QByteArray("Это не библиотека %1 %2\n") << true;
    QTest::newRow("beginning of a library") << QByteArray("\x7f"
                                                          "ELF\x02\x01\x01",
                                                          7)
                                            << true;
    QTest::newRow("zeros") << QByteArray(100'000, '\0') << true;
}

void TestLoader::fileThatIsNoLibraryIsReported()
{
    QFETCH(const QByteArray, content);
    QFETCH(const bool, exists);
    const DriverFolder folder;
    QVERIFY(!exists || folder.installFile(content));
    Library library(folder.driverPath(), "Fpax");
    const DebugOutput output;

    QVERIFY(!library.load());

    QVERIFY(!library.isLoaded());
    QVERIFY(!library.errorString().isEmpty());
    QVERIFY(library.fileName().startsWith(folder.path()));
    QVERIFY(!library.CoCreateInstance(13));
    const QString expected = "<" + library.fileName() + "> load error [" + library.errorString() + "]";
    QCOMPARE(output.lines, QStringList(expected));
}

void TestLoader::placeholdersInAFileNameStayInTheReport()
{
    const DriverFolder folder("папка %2 %1");
    Library library(folder.driverPath(), "Fpax");
    const DebugOutput output;

    QVERIFY(!library.load());

    const QString expected = "<" + library.fileName() + "> load error [" + library.errorString() + "]";
    QVERIFY(library.fileName().contains("папка %2 %1"));
    QCOMPARE(output.lines, QStringList(expected));
}

void TestLoader::factoryMayRefuse_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("by null") << "driver_of_other_version";
    QTest::newRow("by an exception") << "driver_that_throws";
    QTest::newRow("by an exception of its own") << "driver_that_throws_its_own";
}

void TestLoader::factoryMayRefuse()
{
    QFETCH(const QString, name);
    const DriverFolder folder;
    QVERIFY(folder.install(name));
    Library library(folder.driverPath(), "Fpax");

    QVERIFY(library.load());
    QVERIFY(!library.CoCreateInstance(13));
}

void TestLoader::instanceIsReleasedThroughTheLibrary()
{
    const DriverFolder folder;
    QVERIFY(folder.install("contract_driver"));
    Library library(folder.driverPath(), "Fpax");
    QVERIFY(library.load());
    IFpax* instance = library.CoCreateInstance(13);

    library.CoReleaseInstance(&instance);

    QVERIFY(!instance);
    QCOMPARE(contractCalls(library),
             QStringList({"CreateFpaxInterface(13)", "ReleaseFpaxInterface(\"own instance\")"}));
}

void TestLoader::nothingIsCreatedOrReleasedAfterUnloading()
{
    const DriverFolder folder;
    QVERIFY(folder.install("contract_driver"));
    Library library(folder.driverPath(), "Fpax");
    QVERIFY(library.load());
    QVERIFY(library.unload());

    QVERIFY(!library.CoCreateInstance(13));
    IFpax* instance = somebodysInstance();
    library.CoReleaseInstance(&instance);
    QCOMPARE(instance, somebodysInstance());
}

void TestLoader::destructorUnloads()
{
    const DriverFolder folder;
    QVERIFY(folder.install("contract_driver"));
    auto library = std::make_unique<Library>(folder.driverPath(), "Fpax");
    QVERIFY(library->load());
    const UnloadWatch watch;
    watch.watch(*library);
    QCOMPARE(UnloadWatch::unloaded(), 0);

    library.reset();

    QCOMPARE(UnloadWatch::unloaded(), 1);
    QCOMPARE(UnloadWatch::lastCalls(), QStringList());
}

void TestLoader::destructorOfAnotherLoaderLeavesTheLibrary()
{
    const DriverFolder folder;
    QVERIFY(folder.install("contract_driver"));
    Library sessions(folder.driverPath(), "Fpax");
    QVERIFY(sessions.load());
    IFpax* const driver = sessions.CoCreateInstance(13);
    const UnloadWatch watch;
    watch.watch(sessions);
    {
        Library consoles(folder.driverPath(), "Fpax");
        QVERIFY(consoles.load());
        IFpax* instance = consoles.CoCreateInstance(13);
        consoles.CoReleaseInstance(&instance);
    }

    QCOMPARE(UnloadWatch::unloaded(), 0);
    forgetContractCalls(sessions);
    QCOMPARE(driver->setMode(4), 20);
    QCOMPARE(contractCalls(sessions), QStringList("setMode(4)"));
}

QTEST_APPLESS_MAIN(TestLoader)

#include "tst_loader.moc"
