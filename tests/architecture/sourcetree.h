#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

/// A breach of a rule, and where.
struct Offence
{
    QString file;
    int line = 0;
    QString what;

    /// file:line: what, as compilers write it.
    [[nodiscard]] QString text() const;
};

/// The offences one below another.
QString textOf(const QList<Offence>& offences);

/// An #include line: `name` is what stands between the quotes or the angle brackets.
struct Include
{
    int line = 0;
    QString name;
    bool quoted = false;
};

/// One command of a CMake file with its arguments.
struct CMakeCommand
{
    int line = 0;
    QString name;
    QStringList arguments;
};

/// The text of every source, header and CMake file of the program, by its path from the top folder. The
/// tests, the benchmarks and the fuzz targets are no part of the program.
class SourceTree
{
public:
    SourceTree() = default;
    static SourceTree read(const QString& topFolder);

    void add(const QString& path, const QString& text) { m_texts.insert(path, text); }
    /// Puts one more line at the end of a file that is there and returns its number.
    int appendLine(const QString& path, const QString& line);
    bool replace(const QString& path, const QString& before, const QString& after);

    [[nodiscard]] bool contains(const QString& path) const { return m_texts.contains(path); }
    [[nodiscard]] QString text(const QString& path) const { return m_texts.value(path); }
    /// The .h and .cpp files.
    [[nodiscard]] QStringList sources() const;
    /// The CMakeLists.txt and .cmake files.
    [[nodiscard]] QStringList cmakeLists() const;

private:
    QMap<QString, QString> m_texts;
};

QList<Include> includesOf(const QString& text);
QList<CMakeCommand> cmakeCommandsOf(const QString& text);
