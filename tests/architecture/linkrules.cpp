#include "tests/architecture/linkrules.h"

#include "tests/architecture/parts.h"

#include <QFileInfo>
#include <QHash>

namespace {

const QSet<QString> kKeywords{"PUBLIC", "PRIVATE", "INTERFACE", "STATIC", "SHARED"};

/// A source or a library that a target names, and where it does.
struct Named
{
    QString target;
    QString name;
    QString file;
    int line = 0;
};

/// What commands of these names tell of their targets.
QList<Named> namedBy(const SourceTree& tree, const QSet<QString>& commandNames)
{
    QList<Named> found;
    const QStringList files = tree.cmakeLists();
    for (const QString& file : files) {
        const QList<CMakeCommand> commands = cmakeCommandsOf(tree.text(file));
        for (const CMakeCommand& command : commands) {
            if (!commandNames.contains(command.name))
                continue;
            for (const QString& argument : command.arguments.mid(1))
                if (!kKeywords.contains(argument))
                    found.append({command.arguments.first(), argument, file, command.line});
        }
    }
    return found;
}

QList<Named> links(const SourceTree& tree)
{
    return namedBy(tree, {"target_link_libraries"});
}

/// Libraries for whole folders would pass by the targets.
void findLinkedFolders(const SourceTree& tree, QList<Offence>& offences)
{
    const QStringList files = tree.cmakeLists();
    for (const QString& file : files) {
        const QList<CMakeCommand> commands = cmakeCommandsOf(tree.text(file));
        for (const CMakeCommand& command : commands)
            if (command.name == "link_libraries")
                offences.append({file, command.line, "libraries are linked to targets, not to folders"});
    }
}

void findStraySources(const SourceTree& tree, QList<Offence>& offences)
{
    QHash<QString, Named> compiled;
    const QList<Named> all = namedBy(tree, {"add_library", "add_executable", "target_sources"});
    for (const Named& source : all) {
        const QString folder = QFileInfo(source.file).path();
        compiled.insert(QString("%1/%2").arg(folder, source.name), source);
    }
    const QStringList sources = tree.sources();
    for (const QString& path : sources) {
        const Part* part = partOf(path);
        if (part == nullptr)
            continue; // told by the rules for includes
        const auto it = compiled.constFind(path);
        if (it == compiled.constEnd())
            offences.append({path, 1, "no target names this file"});
        else if (it->target != part->target)
            offences.append({it->file, it->line,
                             QString("%1 belongs into %2, not into %3").arg(path, part->target, it->target)});
    }
}

/// The libraries that the parts of the target may link, directly or through others.
QSet<QString> allowedFor(const QString& target)
{
    QSet<QString> allowed{"shablonist_options"};
    for (const Part& part : parts()) {
        if (part.target != target)
            continue;
        for (const QString& module : part.qtModules)
            allowed.insert(QString("Qt6::%1").arg(module.mid(2)));
        if (part.usesJsonCpp)
            allowed.insert("JsonCpp::JsonCpp");
        for (const Part& other : parts())
            if (part.knows.contains(other.name) && other.target != target && other.name != "contract")
                allowed.unite(QSet<QString>{other.target}).unite(allowedFor(other.target));
    }
    return allowed;
}

} // namespace

QSet<QString> linkedBy(const SourceTree& tree, const QString& target)
{
    const QList<Named> all = links(tree);
    QSet<QString> reached;
    QStringList open{target};
    while (!open.isEmpty()) {
        const QString current = open.takeLast();
        for (const Named& link : all)
            if (link.target == current && !reached.contains(link.name)) {
                reached.insert(link.name);
                open.append(link.name);
            }
    }
    return reached;
}

QList<Offence> linkOffences(const SourceTree& tree)
{
    QList<Offence> offences;
    findStraySources(tree, offences);
    findLinkedFolders(tree, offences);
    const QList<Named> all = links(tree);
    for (const Named& link : all) {
        const QSet<QString> allowed = allowedFor(link.target);
        QSet<QString> reached = linkedBy(tree, link.name);
        reached.insert(link.name);
        reached.subtract(allowed);
        QStringList wrong = reached.values();
        wrong.sort();
        for (const QString& library : wrong)
            offences.append({link.file, link.line, QString("%1 must not link %2").arg(link.target, library)});
    }
    return offences;
}
