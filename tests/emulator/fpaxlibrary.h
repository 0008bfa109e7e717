#pragma once

#include "device/ifpax.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QLibrary>
#include <QString>

#include <string>

using LUM::Fpax::IFpax;

/// The emulator's library, loaded from its file; unloaded with this object.
class FpaxLibrary
{
public:
    /// With the device of the files, taken at the first call, or with a new one that touches no file.
    enum class Start { Files, NewDevice };
    explicit FpaxLibrary(Start start = Start::NewDevice);
    ~FpaxLibrary();
    FpaxLibrary(const FpaxLibrary&) = delete;
    FpaxLibrary& operator=(const FpaxLibrary&) = delete;

    static QString path();
    QLibrary& library() { return m_library; }

    IFpax* create(int version = LUM::Fpax::kInterfaceVersion);
    void release(IFpax** instance);

    /// Sends a command to the emulator and gives the parsed answer.
    QJsonValue control(const QJsonObject& command);
    void reset() { control({{"cmd", "reset"}}); }
    void set(const QJsonObject& state) { control({{"cmd", "set"}, {"state", state}}); }
    QJsonObject state() { return control({{"cmd", "get"}}).toObject(); }
    bool setFaults(const QJsonArray& rules);
    int count() { return control({{"cmd", "count"}}).toInt(-1); }

private:
    QLibrary m_library;
};

using TextGetter = int (IFpax::*)(wchar_t*, int);
using NumberGetter = int (IFpax::*)(int*);

/// What a getter gives: the whole text, or -1000000 for a number that was not written.
QString textOf(IFpax* driver, TextGetter getter);
int numberOf(IFpax* driver, NumberGetter getter);
inline int codeOf(IFpax* driver)
{
    return numberOf(driver, &IFpax::getResultCode);
}
QString settingOf(IFpax* driver, const QString& name);
QString mappingOf(IFpax* driver, const QString& name);
int setSetting(IFpax* driver, const QString& name, const QString& value);

/// A driver whose port is open.
IFpax* connected(FpaxLibrary& fpax);
/// setMode and enterMode.
int enter(IFpax* driver, int mode);
