#include "fpaxlibrary.h"

#include <QTest>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

/// The next allocation of that many bytes or more fails, and none after it. 0: none fails.
std::atomic<std::size_t> failingSize = 0;

void* allocated(std::size_t size)
{
    std::size_t limit = failingSize;
    if (limit != 0 && size >= limit && failingSize.compare_exchange_strong(limit, 0))
        throw std::bad_alloc();
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

} // namespace

// The library allocates by these, too.
void* operator new(std::size_t size)
{
    return allocated(size);
}

void* operator new[](std::size_t size)
{
    return allocated(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return std::malloc(size == 0 ? 1 : size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

/// Exceptions inside the library: memory gives out in the middle of its work.
class TestEmulatorMemory : public QObject
{
    Q_OBJECT

private slots:
    void getterFailsAndKeepsTheCode();
    void operationIsRefused();
    void objectIsNull();
};

void TestEmulatorMemory::getterFailsAndKeepsTheCode()
{
    constexpr int kLength = 100000;
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    QCOMPARE(driver->setCaption(std::wstring(kLength, L'x').c_str()), 0);
    wchar_t buffer[4] = L"###";
    failingSize = kLength;
    const int status = driver->getCaption(buffer, 4);
    QCOMPARE(failingSize.exchange(0), std::size_t{0});
    QCOMPARE(status, -1);
    QCOMPARE(QString::fromWCharArray(buffer), "###");
    QCOMPARE(codeOf(driver), 0);
    QCOMPARE(driver->getCaption(buffer, 4), kLength);
    QCOMPARE(QString::fromWCharArray(buffer), "xxx");
}

void TestEmulatorMemory::operationIsRefused()
{
    // The first that takes so much is the dialog itself.
    constexpr std::size_t kDialog = 400;
    FpaxLibrary fpax;
    IFpax* driver = connected(fpax);
    const QJsonObject before = fpax.state();
    failingSize = kDialog;
    const int status = driver->ShowProperties();
    QCOMPARE(failingSize.exchange(0), std::size_t{0});
    QVERIFY(status < 0);
    QCOMPARE(codeOf(driver), -4);
    QVERIFY(!textOf(driver, &IFpax::getResultDescription).isEmpty());
    QCOMPARE(fpax.state(), before);
    QCOMPARE(driver->readStatus(), 0);
    QCOMPARE(codeOf(driver), 0);
}

void TestEmulatorMemory::objectIsNull()
{
    // An object is larger; what the search for the function takes is less.
    constexpr std::size_t kObject = 400;
    FpaxLibrary fpax;
    failingSize = kObject;
    IFpax* driver = fpax.create();
    QCOMPARE(failingSize.exchange(0), std::size_t{0});
    QVERIFY(driver == nullptr);
    QCOMPARE(connected(fpax)->readStatus(), 0);
}

QTEST_MAIN(TestEmulatorMemory)
#include "tst_emulator_memory.moc"
