#include "tests/architecture/includerules.h"

#include "tests/architecture/parts.h"

#include <QFile>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QRegularExpression>

namespace {

/// The Qt module that the header belongs to, as its folder is called; empty if the program uses no such module.
QString qtModuleOf(const QString& header)
{
    static const QStringList modules{"QtCore", "QtGui", "QtWidgets", "QtConcurrent", "QtCore5Compat"};
    static const QString headers = QLibraryInfo::path(QLibraryInfo::HeadersPath);
    for (const QString& module : modules)
        if (QFile::exists(QString("%1/%2/%3").arg(headers, module, header)) ||
            (header.startsWith(module + '/') && QFile::exists(QString("%1/%2").arg(headers, header))))
            return module;
    return {};
}

/// What is wrong about an include of a header that is not the program's own; empty if nothing is.
QString foreignFault(const Part& part, const QString& header)
{
    static const QRegularExpression standard("^[a-z_]+$");
    static const QRegularExpression qt("^Q\\w+(/Q\\w+)?$");
    if (standard.match(header).hasMatch())
        return {};
    if (header.startsWith("json/"))
        return part.usesJsonCpp ? QString() : QString("jsoncpp is nothing of \"%1\"").arg(part.name);
    if (!qt.match(header).hasMatch())
        return "neither standard C++ nor Qt nor jsoncpp";
    const QString module = qtModuleOf(header);
    if (module.isEmpty())
        return "of no Qt module that the program uses";
    if (!part.qtModules.contains(module))
        return QString("%1 is nothing of \"%2\"").arg(module, part.name);
    return {};
}

/// What is wrong about an include of one of the program's own headers; empty if nothing is.
QString ownFault(const SourceTree& tree, const Part& part, const QString& header)
{
    static const QRegularExpression outside("^(tests|bench|fuzz)/");
    static const QRegularExpression form("^ui_\\w+\\.h$");
    if (outside.match(header).hasMatch())
        return "the program knows nothing of its tests, benchmarks and fuzz targets";
    if (!header.endsWith(".h"))
        return "a source is compiled, not included";
    if (form.match(header).hasMatch())
        return part.name == "window" ? QString() : QString("a form is nothing of \"%1\"").arg(part.name);
    if (!tree.contains(header))
        return "no header of the program, as seen from its top folder";
    const Part* owner = partOf(header);
    if (owner == nullptr || (owner->name != part.name && !part.knows.contains(owner->name)))
        return QString("\"%1\" is nothing of \"%2\"")
            .arg(owner == nullptr ? QString() : owner->name, part.name);
    return {};
}

/// Conditional compilation for one operating system.
void findSystemQuestions(const QString& path, const QString& text, QList<Offence>& offences)
{
    static const QRegularExpression question(
        R"(^\s*#\s*(?:if|ifdef|ifndef|elif)\b.*\b(Q_OS_\w+|_?WIN(?:32|64)|__linux__|__unix__|__APPLE__)\b)");
    const QStringList lines = text.split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        if (!lines[i].contains('#'))
            continue;
        if (const auto match = question.match(lines[i]); match.hasMatch())
            offences.append(
                {path, i + 1, QString("asks for an operating system: %1").arg(match.captured(1))});
    }
}

/// The classes, not the plain records, that the header defines outside of others.
QStringList classesOf(const QString& text)
{
    static const QRegularExpression definition(R"(^class (\w+)(?: final)?(?: : [^;]*)?$)",
                                               QRegularExpression::MultilineOption);
    QStringList classes;
    for (auto it = definition.globalMatch(text); it.hasNext();)
        classes.append(it.next().captured(1));
    return classes;
}

} // namespace

QList<Offence> includeOffences(const SourceTree& tree)
{
    QList<Offence> offences;
    const QStringList sources = tree.sources();
    for (const QString& path : sources) {
        const Part* part = partOf(path);
        if (part == nullptr) {
            offences.append({path, 1, "belongs to no part of the program"});
            continue;
        }
        const QString text = tree.text(path);
        const QList<Include> includes = includesOf(text);
        for (const Include& include : includes) {
            const QString fault =
                include.quoted ? ownFault(tree, *part, include.name) : foreignFault(*part, include.name);
            if (!fault.isEmpty())
                offences.append({path, include.line, QString("%1: %2").arg(include.name, fault)});
        }
        findSystemQuestions(path, text, offences);
    }
    return offences;
}

QList<Offence> nameOffences(const SourceTree& tree)
{
    QList<Offence> offences;
    const QStringList sources = tree.sources();
    for (const QString& path : sources) {
        const QFileInfo info(path);
        const QString name = info.completeBaseName();
        if (info.fileName() != info.fileName().toLower())
            offences.append({path, 1, "a file's name is in lower case"});
        if (info.suffix() == "h") {
            const QStringList classes = classesOf(tree.text(path));
            if (!classes.isEmpty() && !classes.contains(name, Qt::CaseInsensitive))
                offences.append({path, 1, QString("is not named after its class %1").arg(classes.first())});
        } else if (path != "app/main.cpp") {
            // mainwindow_files.cpp has the members of MainWindow for one theme.
            const QString owner = name.section('_', 0, 0);
            const QString header = name.startsWith("mainwindow_")
                                       ? QString("app/mainwindow.h")
                                       : QString("%1/%2.h").arg(info.path(), owner);
            const QString longer = QString("%1/%2.h").arg(info.path(), name.section('_', 0, 1));
            if (!tree.contains(header) && !tree.contains(longer))
                offences.append({path, 1, "is named after no header"});
        }
    }
    return offences;
}
