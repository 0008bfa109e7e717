#pragma once

#include "device/guarded.h"

#include <QDebug>
#include <QLibrary>
#include <QString>

/// A library with a driver in it: exports the functions "Create" + module + "Interface", which makes an interface
/// `T` of a version, and "Release" + module + "Interface". Unloads what it has loaded when it goes.
template <typename T>
class KRDLibrary : public QLibrary
{
public:
    using CreateFunction = T* (*)(int version);
    using ReleaseFunction = void (*)(T** instance);

    /// Loads nothing yet.
    KRDLibrary(const QString& fileName, const QString& moduleName)
        : QLibrary(fileName)
        , createName("Create" + moduleName + "Interface")
        , releaseName("Release" + moduleName + "Interface")
        , isLoadedElsewhere(isLoaded())
    {
        setLoadHints(QLibrary::ResolveAllSymbolsHint);
    }
    ~KRDLibrary() override
    {
        // A loader that met the library loaded has no share in it: its unload() would take it from the one that has.
        if (!isLoadedElsewhere)
            unload();
    }
    Q_DISABLE_COPY_MOVE(KRDLibrary)

    /// Loads the library and finds the two functions; false unless all of that worked.
    bool load()
    {
        if (!QLibrary::load()) {
            qDebug().noquote() << QLibrary::tr("<%1> load error [%2]").arg(fileName(), errorString());
            return false;
        }
        if (!isLoaded())
            return false;
        // NOLINTBEGIN(cppcoreguidelines-pro-type-reinterpret-cast): a library tells of its functions no type
        create = reinterpret_cast<CreateFunction>(resolve(createName.toLatin1().constData()));
        release = reinterpret_cast<ReleaseFunction>(resolve(releaseName.toLatin1().constData()));
        // NOLINTEND(cppcoreguidelines-pro-type-reinterpret-cast)
        return isUsable();
    }

    /// Loaded, and both functions are there.
    bool isUsable() const { return isLoaded() && create && release; }

    /// Null if the library is not usable or has no interface of this version.
    T* CoCreateInstance(int version) const
    {
        // A library that throws has no interface for us.
        return isUsable() ? guarded<T*>(nullptr, [this, version] { return create(version); }) : nullptr;
    }

    void CoReleaseInstance(T** instance) const
    {
        // One that cannot be released goes with the library.
        if (isUsable())
            guarded([this, instance] { release(instance); });
    }

private:
    CreateFunction create = nullptr;
    ReleaseFunction release = nullptr;
    QString createName;
    QString releaseName;
    bool isLoadedElsewhere;
};
