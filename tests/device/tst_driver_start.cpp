#include "device/driverfolder.h"

#include "device/clkrd9io.h"

#include <QCoreApplication>
#include <QTest>

#include <json/value.h>

#include <memory>

using LUM::Fpax::IFpax;

namespace {

constexpr auto kLoadError = "Ошибка загрузки библиотеки ";

/// What a start of the driver that fails because of the library says.
QString loadErrorOf(const clKRD9IO& session)
{
    return kLoadError + session.library->fileName() + "\n" + session.library->errorString();
}

} // namespace

/// The session takes a driver from a file, or goes on without one.
class TestDriverStart : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCoreApplication::setApplicationName("Программа %1"); }
    void goodDriverIsTaken();
    void programDirectoryIsNotUsed();
    void driverThatCannotBeLoaded_data();
    void driverThatCannotBeLoaded();
    void directoryInTheDriversPlace();
    void placeholdersInTheDirectoryStay();
    void driverWithoutAnInterfaceForUs_data();
    void driverWithoutAnInterfaceForUs();
    void driverWhoseTextsThrowIsTakenWithoutAName();
    void secondStartTakesTheNewDriver();
    void secondStartOfTheSameFileLoadsItAnew();
    void secondStartThatFailsLeavesNothingOfTheFirst_data();
    void secondStartThatFailsLeavesNothingOfTheFirst();
    void goodStartAfterABadOne();
    void endOfTheSessionUnloadsWithoutReleasing();
};

/// Every operation of a session without a driver declines.
#define VERIFY_NO_DRIVER(session)                                                                            \
    do {                                                                                                     \
        QVERIFY(!(session).driverLoaded);                                                                    \
        QVERIFY(!(session).driverIface);                                                                     \
        QVERIFY((session).fpaxWrapper.isNull());                                                             \
        QVERIFY((session).driverName.isEmpty());                                                             \
        QVERIFY((session).driverVersion.isEmpty());                                                          \
        QVERIFY(!(session).library.isNull());                                                                \
        Json::Value settings(Json::objectValue);                                                             \
        settings["port"] = 1;                                                                                \
        QCOMPARE((session).setIOSettings(settings, LUM::Fpax::Model::Tavr22F, "/"), 1);                      \
        QCOMPARE((session).getIOSettings(settings), 1);                                                      \
        QCOMPARE(settings["port"].asInt(), 1);                                                               \
        QCOMPARE((session).getStatus(), 0);                                                                  \
        QCOMPARE((session).enterModeProgram(), 255);                                                         \
        QCOMPARE((session).releasePort(), 255);                                                              \
        QCOMPARE((session).closeSession(), 255);                                                             \
        QVERIFY(!(session).portOpen);                                                                        \
        QVERIFY(!(session).connected);                                                                       \
    } while (false)

void TestDriverStart::goodDriverIsTaken()
{
    const DriverFolder folder;
    QVERIFY(folder.install("contract_driver"));
    clKRD9IO session;
    QString message = "прежний текст";

    QCOMPARE(session.initDriver(folder.driverPath(), folder.path(), message), 0);

    QCOMPARE(message, QString("прежний текст"));
    QVERIFY(session.driverLoaded);
    QVERIFY(session.driverIface);
    QVERIFY(session.library->isLoaded());
    QCOMPARE(session.fpaxWrapper->driver(), session.driverIface);
    QCOMPARE(session.driverName, QString("text of getDriverName"));
    QCOMPARE(session.driverVersion, QString("text of getDriverVersion"));
    QCOMPARE(contractCalls(*session.library),
             QStringList({"CreateFpaxInterface(13)", "getDriverName(4096)", "getDriverVersion(4096)"}));
}

void TestDriverStart::programDirectoryIsNotUsed()
{
    const DriverFolder folder;
    QVERIFY(folder.install("contract_driver"));
    for (const QString directory : {"", "/no/such/place"}) {
        clKRD9IO session;
        QString message;
        QCOMPARE(session.initDriver(folder.driverPath(), directory, message), 0);
    }
}

void TestDriverStart::driverThatCannotBeLoaded_data()
{
    QTest::addColumn<QString>("library");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no file") << QString() << QByteArray();
    QTest::newRow("empty file") << QString("-") << QByteArray();
    QTest::newRow("text file") << QString("-") << QByteArray("not a library\n");
    QTest::newRow("no release function") << "driver_without_release" << QByteArray();
    QTest::newRow("no create function") << "driver_without_create" << QByteArray();
    QTest::newRow("neither function") << "driver_without_functions" << QByteArray();
}

void TestDriverStart::driverThatCannotBeLoaded()
{
    QFETCH(const QString, library);
    QFETCH(const QByteArray, content);
    const DriverFolder folder;
    if (library == "-")
        QVERIFY(folder.installFile(content));
    else if (!library.isEmpty())
        QVERIFY(folder.install(library));
    clKRD9IO session;
    QString message;

    QCOMPARE(session.initDriver(folder.driverPath(), folder.path(), message), 1);

    QCOMPARE(message, loadErrorOf(session));
    QVERIFY(message.startsWith(kLoadError + folder.driverPath().section(u'/', 0, -2)));
    QVERIFY(!session.library->errorString().isEmpty());
    VERIFY_NO_DRIVER(session);
}

void TestDriverStart::directoryInTheDriversPlace()
{
    const DriverFolder folder;
    QVERIFY(folder.installDirectory());
    clKRD9IO session;
    QString message;

    QCOMPARE(session.initDriver(folder.driverPath(), folder.path(), message), 1);

    QCOMPARE(message, loadErrorOf(session));
    VERIFY_NO_DRIVER(session);
}

void TestDriverStart::placeholdersInTheDirectoryStay()
{
    const DriverFolder folder("папка %2 %1");
    clKRD9IO session;
    QString message;

    QCOMPARE(session.initDriver(folder.driverPath(), folder.path(), message), 1);

    QVERIFY(message.startsWith(kLoadError + folder.path() + "/"));
    QVERIFY(message.endsWith("\n" + session.library->errorString()));
    QCOMPARE(message, loadErrorOf(session));
}

void TestDriverStart::driverWithoutAnInterfaceForUs_data()
{
    QTest::addColumn<QString>("library");
    QTest::newRow("refuses version 13") << "driver_of_other_version";
    QTest::newRow("throws") << "driver_that_throws";
    QTest::newRow("throws a type of its own") << "driver_that_throws_its_own";
}

void TestDriverStart::driverWithoutAnInterfaceForUs()
{
    QFETCH(const QString, library);
    const DriverFolder folder;
    QVERIFY(folder.install(library));
    clKRD9IO session;
    QString message;

    QCOMPARE(session.initDriver(folder.driverPath(), folder.path(), message), 2);

    QCOMPARE(message, QString("\"Программа %1\" не совместим с данной версией драйвера"));
    QVERIFY(session.library->isLoaded());
    VERIFY_NO_DRIVER(session);
}

void TestDriverStart::driverWhoseTextsThrowIsTakenWithoutAName()
{
    const DriverFolder folder;
    QVERIFY(folder.install("speechless_driver"));
    clKRD9IO session;
    QString message;

    QCOMPARE(session.initDriver(folder.driverPath(), folder.path(), message), 0);

    QVERIFY(message.isEmpty());
    QVERIFY(session.driverLoaded);
    QVERIFY(session.driverName.isEmpty());
    QVERIFY(session.driverVersion.isEmpty());
    QCOMPARE(session.fpaxWrapper->setInt(&IFpax::setMode, 1), 20);
}

void TestDriverStart::secondStartTakesTheNewDriver()
{
    const DriverFolder first;
    const DriverFolder second;
    QVERIFY(first.install("contract_driver"));
    QVERIFY(second.install("contract_driver"));
    clKRD9IO session;
    QString message;
    QCOMPARE(session.initDriver(first.driverPath(), first.path(), message), 0);
    const UnloadWatch watch;
    watch.watch(*session.library);

    QCOMPARE(session.initDriver(second.driverPath(), second.path(), message), 0);

    QCOMPARE(UnloadWatch::unloaded(), 1);
    QVERIFY(session.library->fileName().startsWith(second.path()));
    QCOMPARE(session.fpaxWrapper->driver(), session.driverIface);
    forgetContractCalls(*session.library);
    QCOMPARE(session.fpaxWrapper->setInt(&IFpax::setMode, 3), 20);
    QCOMPARE(contractCalls(*session.library), QStringList("setMode(3)"));
}

void TestDriverStart::secondStartOfTheSameFileLoadsItAnew()
{
    const DriverFolder folder;
    QVERIFY(folder.install("contract_driver"));
    clKRD9IO session;
    QString message;
    QCOMPARE(session.initDriver(folder.driverPath(), folder.path(), message), 0);
    const UnloadWatch watch;
    watch.watch(*session.library);

    QCOMPARE(session.initDriver(folder.driverPath(), folder.path(), message), 0);

    QCOMPARE(UnloadWatch::unloaded(), 1);
    QCOMPARE(contractCalls(*session.library),
             QStringList({"CreateFpaxInterface(13)", "getDriverName(4096)", "getDriverVersion(4096)"}));
    QCOMPARE(session.fpaxWrapper->driver(), session.driverIface);
    QCOMPARE(session.fpaxWrapper->execMethod(&IFpax::enterMode), 18);
}

void TestDriverStart::secondStartThatFailsLeavesNothingOfTheFirst_data()
{
    QTest::addColumn<QString>("library");
    QTest::addColumn<int>("result");
    QTest::newRow("no file") << QString() << 1;
    QTest::newRow("no functions") << "driver_without_functions" << 1;
    QTest::newRow("refuses version 13") << "driver_of_other_version" << 2;
    QTest::newRow("throws") << "driver_that_throws" << 2;
}

void TestDriverStart::secondStartThatFailsLeavesNothingOfTheFirst()
{
    QFETCH(const QString, library);
    QFETCH(const int, result);
    const DriverFolder first;
    const DriverFolder second;
    QVERIFY(first.install("contract_driver"));
    QVERIFY(library.isEmpty() || second.install(library));
    clKRD9IO session;
    QString message;
    QCOMPARE(session.initDriver(first.driverPath(), first.path(), message), 0);
    const UnloadWatch watch;
    watch.watch(*session.library);

    QCOMPARE(session.initDriver(second.driverPath(), second.path(), message), result);

    QCOMPARE(UnloadWatch::unloaded(), 1);
    QVERIFY(session.library->fileName().startsWith(second.path()));
    VERIFY_NO_DRIVER(session);
}

void TestDriverStart::goodStartAfterABadOne()
{
    const DriverFolder folder;
    clKRD9IO session;
    QString message;
    QCOMPARE(session.initDriver(folder.driverPath(), folder.path(), message), 1);
    QVERIFY(folder.install("contract_driver"));

    QCOMPARE(session.initDriver(folder.driverPath(), folder.path(), message), 0);

    QVERIFY(session.driverLoaded);
    QCOMPARE(session.driverName, QString("text of getDriverName"));
}

void TestDriverStart::endOfTheSessionUnloadsWithoutReleasing()
{
    const DriverFolder folder;
    QVERIFY(folder.install("contract_driver"));
    const UnloadWatch watch;
    auto session = std::make_unique<clKRD9IO>();
    QString message;
    QCOMPARE(session->initDriver(folder.driverPath(), folder.path(), message), 0);
    watch.watch(*session->library);
    forgetContractCalls(*session->library);

    session.reset();

    QCOMPARE(UnloadWatch::unloaded(), 1);
    QCOMPARE(UnloadWatch::lastCalls(), QStringList());
}

QTEST_APPLESS_MAIN(TestDriverStart)

#include "tst_driver_start.moc"
