#include "fpaxlibrary.h"

#include <QJsonDocument>

#include <functional>
#include <vector>

namespace {

constexpr int kUnwritten = -1000000;

QString wholeText(const std::function<int(wchar_t*, int)>& getter)
{
    std::vector<wchar_t> buffer(64, L'?');
    const int needed = getter(buffer.data(), static_cast<int>(buffer.size()));
    if (needed <= 0)
        return {};
    if (needed > static_cast<int>(buffer.size())) {
        buffer.assign(static_cast<std::size_t>(needed) + 1, L'?');
        getter(buffer.data(), static_cast<int>(buffer.size()));
    }
    return QString::fromWCharArray(buffer.data());
}

} // namespace

FpaxLibrary::FpaxLibrary(Start start)
    : m_library(path())
{
    m_library.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    if (!m_library.load())
        qFatal("%s", qPrintable(m_library.errorString()));
    if (start == Start::NewDevice)
        reset();
}

FpaxLibrary::~FpaxLibrary()
{
    m_library.unload();
}

QString FpaxLibrary::path()
{
    return FPAX_PATH;
}

IFpax* FpaxLibrary::create(int version)
{
    const auto function =
        reinterpret_cast<LUM::Fpax::CreateFunction*>(m_library.resolve("CreateFpaxInterface"));
    return function(version);
}

void FpaxLibrary::release(IFpax** instance)
{
    const auto function =
        reinterpret_cast<LUM::Fpax::ReleaseFunction*>(m_library.resolve("ReleaseFpaxInterface"));
    function(instance);
}

QJsonValue FpaxLibrary::control(const QJsonObject& command)
{
    using ControlFunction = const char*(const char*);
    const auto function = reinterpret_cast<ControlFunction*>(m_library.resolve("FpaxEmulatorControl"));
    const QByteArray answer = function(QJsonDocument(command).toJson().constData());
    // A bare number is no document of its own.
    return QJsonDocument::fromJson('[' + answer + ']').array().first();
}

bool FpaxLibrary::setFaults(const QJsonArray& rules)
{
    return control({{"cmd", "faults"}, {"rules", rules}}).toObject().value("ok").toBool();
}

QString textOf(IFpax* driver, TextGetter getter)
{
    return wholeText([=](wchar_t* buffer, int capacity) { return (driver->*getter)(buffer, capacity); });
}

int numberOf(IFpax* driver, NumberGetter getter)
{
    int number = kUnwritten;
    (driver->*getter)(&number);
    return number;
}

QString settingOf(IFpax* driver, const QString& name)
{
    const std::wstring wide = name.toStdWString();
    return wholeText([&](wchar_t* buffer, int capacity) {
        return driver->getSingleSetting(wide.c_str(), buffer, capacity);
    });
}

QString mappingOf(IFpax* driver, const QString& name)
{
    const std::wstring wide = name.toStdWString();
    return wholeText([&](wchar_t* buffer, int capacity) {
        return driver->getSingleMapping(wide.c_str(), buffer, capacity);
    });
}

int setSetting(IFpax* driver, const QString& name, const QString& value)
{
    return driver->setSingleSetting(name.toStdWString().c_str(), value.toStdWString().c_str());
}

IFpax* connected(FpaxLibrary& fpax)
{
    IFpax* driver = fpax.create();
    if (driver->setDeviceEnabled(1) != 0)
        qFatal("the port does not open");
    return driver;
}

int enter(IFpax* driver, int mode)
{
    driver->setMode(mode);
    return driver->enterMode();
}
