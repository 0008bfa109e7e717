#include "tests/architecture/sourcetree.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

namespace {

const QSet<QString> kOutside{"tests", "bench", "fuzz", "build"};

bool isSource(const QString& path)
{
    return path.endsWith(".h") || path.endsWith(".cpp");
}

bool isCMakeLists(const QString& path)
{
    return path == "CMakeLists.txt" || path.endsWith("/CMakeLists.txt") || path.endsWith(".cmake");
}

} // namespace

QString Offence::text() const
{
    return QString("%1:%2: %3").arg(file, QString::number(line), what);
}

QString textOf(const QList<Offence>& offences)
{
    QStringList lines;
    for (const Offence& offence : offences)
        lines.append(offence.text());
    return lines.join('\n');
}

SourceTree SourceTree::read(const QString& topFolder)
{
    SourceTree tree;
    const QDir top(topFolder);
    const auto readFile = [&](const QString& path) {
        QFile file(top.filePath(path));
        if (file.open(QIODevice::ReadOnly))
            tree.add(path, QString::fromUtf8(file.readAll()));
    };
    readFile("CMakeLists.txt");
    const QStringList folders = top.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& folder : folders) {
        if (kOutside.contains(folder))
            continue;
        QDirIterator it(top.filePath(folder), QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = top.relativeFilePath(it.next());
            if (isSource(path) || isCMakeLists(path))
                readFile(path);
        }
    }
    return tree;
}

int SourceTree::appendLine(const QString& path, const QString& line)
{
    QString& text = m_texts[path];
    if (!text.isEmpty() && !text.endsWith('\n'))
        text.append('\n');
    text.append(line).append('\n');
    return static_cast<int>(text.count('\n'));
}

bool SourceTree::replace(const QString& path, const QString& before, const QString& after)
{
    QString& text = m_texts[path];
    const bool found = text.contains(before);
    text.replace(before, after);
    return found;
}

QStringList SourceTree::sources() const
{
    QStringList found;
    for (auto it = m_texts.keyBegin(); it != m_texts.keyEnd(); ++it)
        if (isSource(*it))
            found.append(*it);
    return found;
}

QStringList SourceTree::cmakeLists() const
{
    QStringList found;
    for (auto it = m_texts.keyBegin(); it != m_texts.keyEnd(); ++it)
        if (isCMakeLists(*it))
            found.append(*it);
    return found;
}

QList<Include> includesOf(const QString& text)
{
    static const QRegularExpression directive(R"(^\s*#\s*(?:include|include_next|import)\b\s*(.*)$)");
    static const QRegularExpression named(R"re(^(?:"([^"]*)"|<([^>]*)>))re");
    QList<Include> found;
    const QStringList lines = text.split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        if (!lines[i].contains('#'))
            continue; // there are many lines, and patterns are slow
        const QRegularExpressionMatch line = directive.match(lines[i]);
        if (!line.hasMatch())
            continue;
        const QRegularExpressionMatch name = named.match(line.captured(1));
        const bool quoted = name.hasCaptured(1);
        // A macro in place of a name is taken for the name: no rule lets it pass.
        const QString what = name.hasMatch() ? name.captured(quoted ? 1 : 2) : line.captured(1);
        found.append({i + 1, what, quoted});
    }
    return found;
}

QList<CMakeCommand> cmakeCommandsOf(const QString& text)
{
    static const QRegularExpression comment("#[^\n]*");
    static const QRegularExpression command(R"((\w+)\s*\(([^()]*)\))");
    static const QRegularExpression blanks(R"([\s"]+)");
    QString bare = text;
    bare.remove(comment);
    QList<CMakeCommand> commands;
    for (auto it = command.globalMatch(bare); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        commands.append({static_cast<int>(bare.left(match.capturedStart()).count('\n')) + 1,
                         match.captured(1), match.captured(2).split(blanks, Qt::SkipEmptyParts)});
    }
    return commands;
}
