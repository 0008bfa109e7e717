#include "tests/architecture/includerules.h"
#include "tests/architecture/parts.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_Includes : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyPartHasFiles();
    void noFileIncludesWhatItMustNotKnow();
    void filesAreNamedAfterTheirClasses();

    void wrongLineIsFound_data();
    void wrongLineIsFound();
    void rightLineIsNoOffence_data();
    void rightLineIsNoOffence();
    void fileOutsideEveryPartIsFound();
    void wrongNameIsFound_data();
    void wrongNameIsFound();
    void includeIsSeenHoweverItIsLaidOut_data();
    void includeIsSeenHoweverItIsLaidOut();
    void offenceInAFolderIsToldWithFileAndLine();

private:
    SourceTree m_tree;
};

void tst_Includes::initTestCase()
{
    m_tree = SourceTree::read(SOURCE_TREE);
}

void tst_Includes::everyPartHasFiles()
{
    QMap<QString, int> files;
    int includes = 0;
    const QStringList sources = m_tree.sources();
    for (const QString& path : sources) {
        const Part* part = partOf(path);
        QVERIFY2(part != nullptr, qPrintable(path));
        ++files[part->name];
        includes += static_cast<int>(includesOf(m_tree.text(path)).size());
    }
    for (const Part& part : parts()) {
        QVERIFY2(files.value(part.name) > 0, qPrintable(part.name));
        const auto fits = [&](const QString& path) { return partOf(path) == &part; };
        QVERIFY2(std::any_of(sources.begin(), sources.end(), fits), qPrintable(part.files.pattern()));
    }
    QVERIFY2(includes > 2 * sources.size(), "the includes were not read");
}

void tst_Includes::noFileIncludesWhatItMustNotKnow()
{
    const QList<Offence> offences = includeOffences(m_tree);
    QVERIFY2(offences.isEmpty(), qPrintable('\n' + textOf(offences)));
}

void tst_Includes::filesAreNamedAfterTheirClasses()
{
    const QList<Offence> offences = nameOffences(m_tree);
    QVERIFY2(offences.isEmpty(), qPrintable('\n' + textOf(offences)));
}

void tst_Includes::wrongLineIsFound_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("what");
    const auto row = [](const char* name, const QString& file, const QString& line, const QString& what) {
        QTest::newRow(name) << file << line << what;
    };
    row("contract: Qt", "device/ifpax.h", "#include <QString>", "QtCore is nothing of \"contract\"");
    row("contract: own header", "device/ifpax.h", "#include \"device/exception.h\"",
        "\"session\" is nothing of \"contract\"");
    row("contract: JSON", "device/ifpax.h", "#include <json/json.h>", "jsoncpp is nothing of \"contract\"");

    row("protocol: model", "device/tlvrecord.cpp", "#include \"model/bd_t20items.h\"",
        "\"model\" is nothing of \"protocol\"");
    row("protocol: session", "device/ccommtlv.cpp", "#include \"device/clkrd9io.h\"",
        "\"session\" is nothing of \"protocol\"");
    row("protocol: dialog", "device/batostring.cpp", "#include \"device/dlgprintrcp.h\"",
        "\"window\" is nothing of \"protocol\"");
    row("protocol: widget", "device/regularfile.cpp", "#include <QMessageBox>",
        "QtWidgets is nothing of \"protocol\"");
    row("protocol: image", "device/batostring.h", "#include <QImage>", "QtGui is nothing of \"protocol\"");

    row("model: session", "model/bd_t20items_device.cpp", "#include \"device/clkrd9io.h\"",
        "\"session\" is nothing of \"model\"");
    row("model: window", "model/bd_t20items.cpp", "#include \"app/mainwindow.h\"",
        "\"window\" is nothing of \"model\"");
    row("model: settings", "model/bd_t20items.cpp", "#include \"app/csettings.h\"",
        "\"window\" is nothing of \"model\"");
    row("model: geometry", "model/linecolumns.cpp", "#include \"view/guimaket.h\"",
        "\"layout\" is nothing of \"model\"");
    row("model: delegate", "model/linecolumns.cpp", "#include \"editing/celldelegate.h\"",
        "\"window\" is nothing of \"model\"");
    row("model: workflow", "model/templatetext.cpp", "#include \"workflows/dlgdnload.h\"",
        "\"window\" is nothing of \"model\"");
    row("model: form", "model/templatetext.cpp", "#include \"ui_mainwindow.h\"",
        "a form is nothing of \"model\"");
    row("model: widget", "model/bd_t20items.h", "#include <QWidget>", "QtWidgets is nothing of \"model\"");
    row("model: widget by module", "model/bd_t20items.h", "#include <QtWidgets/QWidget>",
        "QtWidgets is nothing of \"model\"");
    row("model: colour", "model/bd_t20items.h", "#include <QColor>", "QtGui is nothing of \"model\"");
    row("model: codec", "model/templatetext.cpp", "#include <QTextCodec>",
        "QtCore5Compat is nothing of \"model\"");

    row("session: model", "device/clkrd9io.cpp", "#include \"model/bd_t20items.h\"",
        "\"model\" is nothing of \"session\"");
    row("session: window", "device/jsonfile.cpp", "#include \"app/mainwindow.h\"",
        "\"window\" is nothing of \"session\"");
    row("session: widget", "device/qlumfpax.h", "#include <QDialog>", "QtWidgets is nothing of \"session\"");

    row("layout: item", "view/guimaket.cpp", "#include \"view/itempole.h\"",
        "\"items\" is nothing of \"layout\"");
    row("layout: font", "view/guimaket.h", "#include <QFont>", "QtGui is nothing of \"layout\"");
    row("layout: window", "view/guimaket.cpp", "#include \"app/mainwindow.h\"",
        "\"window\" is nothing of \"layout\"");

    row("items: geometry", "view/itempole.cpp", "#include \"view/guimaket.h\"",
        "\"layout\" is nothing of \"items\"");
    row("items: window", "view/itempole.cpp", "#include \"app/mainwindow.h\"",
        "\"window\" is nothing of \"items\"");
    row("items: delegate", "view/itemline.h", "#include \"editing/celldelegate.h\"",
        "\"window\" is nothing of \"items\"");
    row("items: settings", "view/itempurepic.cpp", "#include \"app/csettings.h\"",
        "\"window\" is nothing of \"items\"");
    row("items: device", "view/itempole.cpp", "#include \"device/tlvrecord.h\"",
        "\"protocol\" is nothing of \"items\"");

    row("window: emulator", "workflows/mainwindow_models.cpp", "#include \"emulator/emulator.h\"",
        "\"emulator\" is nothing of \"window\"");
    row("program: emulator", "app/main.cpp", "#include \"emulator/exports.h\"",
        "\"emulator\" is nothing of \"program\"");
    row("session: emulator", "device/clkrd9io.cpp", "#include \"emulator/exports.h\"",
        "\"emulator\" is nothing of \"session\"");
    row("emulator: protocol", "emulator/hexbytes.cpp", "#include \"device/batostring.h\"",
        "\"protocol\" is nothing of \"emulator\"");
    row("emulator: model", "emulator/templatetable.cpp", "#include \"model/bd_t20items.h\"",
        "\"model\" is nothing of \"emulator\"");
    row("emulator: window", "emulator/settingsdialog.cpp", "#include \"app/mainwindow.h\"",
        "\"window\" is nothing of \"emulator\"");

    row("members of the window", "view/mainwindow_scene.cpp", "#include \"view/mainwindow_lines.cpp\"",
        "a source is compiled, not included");
    row("source", "editing/celldelegate.cpp", "#include \"editing/propertyrows.cpp\"",
        "a source is compiled, not included");

    row("tests", "console/mainwindow_console.cpp", "#include \"tests/support/session.h\"",
        "knows nothing of its tests");
    row("benchmarks", "app/mainwindow.cpp", "#include \"bench/measure.h\"", "knows nothing of its tests");
    row("fuzz targets", "emulator/emulator.cpp", "#include \"fuzz/fuzzwindow.h\"",
        "knows nothing of its tests");

    row("from its own folder", "view/itempole.cpp", "#include \"itempole.h\"", "no header of the program");
    row("from a folder above", "view/itempole.cpp", "#include \"../view/itempole.h\"",
        "no header of the program");
    row("macro", "view/itempole.cpp", "#include HEADER", "neither standard C++ nor Qt");

    const QString foreign = "neither standard C++ nor Qt nor jsoncpp";
    row("unistd.h", "device/krdlibrary.h", "#include <unistd.h>", foreign);
    row("windows.h", "app/main.cpp", "#include <windows.h>", foreign);
    row("sys", "emulator/statefile.cpp", "#include <sys/stat.h>", foreign);
    row("dlfcn.h", "device/clkrd9io.cpp", "#include <dlfcn.h>", foreign);
    row("C header", "model/linecolumns.cpp", "#include <string.h>", foreign);
    row("private Qt", "editing/celldelegate.cpp", "#include <private/qobject_p.h>", foreign);
    row("Qt for one system", "app/main.cpp", "#include <qt_windows.h>", foreign);
    row("other Qt module", "workflows/mainwindow_connection.cpp", "#include <QTcpSocket>",
        "of no Qt module that the program uses");
    row("test module", "workflows/mainwindow_connection.cpp", "#include <QTest>",
        "of no Qt module that the program uses");
    row("condition of Qt", "app/main.cpp", "#ifdef Q_OS_WIN", "asks for an operating system: Q_OS_WIN");
    row("condition of the compiler", "emulator/paper.cpp", "#if defined(__linux__) && 1",
        "asks for an operating system: __linux__");
}

void tst_Includes::wrongLineIsFound()
{
    QFETCH(const QString, file);
    QFETCH(const QString, line);
    QFETCH(const QString, what);
    QVERIFY(m_tree.contains(file));
    SourceTree tree = m_tree;
    const int number = tree.appendLine(file, line);

    const QList<Offence> offences = includeOffences(tree);
    QCOMPARE(offences.size(), 1);
    QCOMPARE(offences.first().file, file);
    QCOMPARE(offences.first().line, number);
    QVERIFY2(offences.first().what.contains(what), qPrintable(offences.first().what));
}

void tst_Includes::rightLineIsNoOffence_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("line");
    const auto row = [](const char* name, const QString& file, const QString& line) {
        QTest::newRow(name) << file << line;
    };
    row("contract: standard", "device/ifpax.h", "#include <cstddef>");
    row("protocol: JSON", "device/tlvrecord.cpp", "#include <json/value.h>");
    row("model: protocol", "model/bd_t20items.cpp", "#include \"device/ccommtlv.h\"");
    row("session: protocol", "device/utiljson.cpp", "#include \"device/tlvrecord.h\"");
    row("layout: model", "view/guimaket.h", "#include \"model/bd_t20items.h\"");
    row("items: widgets", "view/itempole.cpp", "#include <QtWidgets/QGraphicsScene>");
    row("window: all", "device/mainwindow_json.cpp", "#include \"workflows/dlgdnload.h\"");
    row("emulator: contract", "emulator/paper.cpp", "#include \"device/ifpax.h\"");
    row("comment", "model/bd_t20items.cpp", "// #include <QWidget>");
    row("other condition", "app/main.cpp", "#if QT_VERSION < 0");
}

void tst_Includes::rightLineIsNoOffence()
{
    QFETCH(const QString, file);
    QFETCH(const QString, line);
    QVERIFY(m_tree.contains(file));
    SourceTree tree = m_tree;
    tree.appendLine(file, line);
    const QList<Offence> offences = includeOffences(tree);
    QVERIFY2(offences.isEmpty(), qPrintable(textOf(offences)));
}

void tst_Includes::fileOutsideEveryPartIsFound()
{
    SourceTree tree = m_tree;
    tree.add("network/socket.cpp", "#include <QString>\n");
    QCOMPARE(textOf(includeOffences(tree)), "network/socket.cpp:1: belongs to no part of the program");
}

void tst_Includes::wrongNameIsFound_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("what");
    QTest::newRow("header named after nothing in it") << "view/tape.h"
                                                      << "class ItemTape : public QGraphicsItem\n{\n};\n"
                                                      << "is not named after its class ItemTape";
    QTest::newRow("final class") << "emulator/tape.h"
                                 << "class Roll final\n{\n};\n"
                                 << "is not named after its class Roll";
    QTest::newRow("capitals") << "view/ItemTape.h"
                              << "class ItemTape\n{\n};\n"
                              << "a file's name is in lower case";
    QTest::newRow("source without a header") << "model/tape.cpp"
                                             << "int i;\n"
                                             << "is named after no header";
    QTest::newRow("theme of a class that is elsewhere") << "editing/bd_t20items_editing.cpp"
                                                        << "int i;\n"
                                                        << "is named after no header";
}

void tst_Includes::wrongNameIsFound()
{
    QFETCH(const QString, file);
    QFETCH(const QString, text);
    QFETCH(const QString, what);
    SourceTree tree = m_tree;
    tree.add(file, text);
    QCOMPARE(textOf(nameOffences(tree)), QString("%1:1: %2").arg(file, what));
}

void tst_Includes::includeIsSeenHoweverItIsLaidOut_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("line");
    QTest::newRow("plain") << "#include <QString>\n"
                           << "QString" << 1;
    QTest::newRow("indented") << "\n  #  include\t<QString>\n"
                              << "QString" << 2;
    QTest::newRow("without a blank") << "\n\n#include\"a/b.h\"\n"
                                     << "a/b.h" << 3;
    QTest::newRow("comment behind") << "#include <QString> // why\n"
                                    << "QString" << 1;
    QTest::newRow("carriage return") << "#include \"a/b.h\"\r\n"
                                     << "a/b.h" << 1;
    QTest::newRow("no line feed") << "#include <QString>"
                                  << "QString" << 1;
    QTest::newRow("import") << "#import <QString>"
                            << "QString" << 1;
}

void tst_Includes::includeIsSeenHoweverItIsLaidOut()
{
    QFETCH(const QString, text);
    QFETCH(const QString, name);
    QFETCH(const int, line);
    const QList<Include> includes = includesOf(text);
    QCOMPARE(includes.size(), 1);
    QCOMPARE(includes.first().name, name);
    QCOMPARE(includes.first().line, line);
}

void tst_Includes::offenceInAFolderIsToldWithFileAndLine()
{
    const QTemporaryDir folder;
    QVERIFY(folder.isValid());
    const QDir top(folder.path());
    const auto write = [&](const QString& path, const QByteArray& text) {
        QFile file(top.filePath(path));
        return top.mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly) &&
               file.write(text) == text.size();
    };
    QVERIFY(write("app/mainwindow.h", "#pragma once\n"));
    QVERIFY(write("model/bd_t20items.cpp", "#include <QString>\n\n#include \"app/mainwindow.h\"\n"));
    // What is not the program's does not count.
    QVERIFY(write("tests/model/tst_record.cpp", "#include <unistd.h>\n"));
    QVERIFY(write("build/dev/app/moc.cpp", "#include <unistd.h>\n"));
    QVERIFY(write(".git/hook.cpp", "#include <unistd.h>\n"));

    QCOMPARE(textOf(includeOffences(SourceTree::read(folder.path()))),
             "model/bd_t20items.cpp:3: app/mainwindow.h: \"window\" is nothing of \"model\"");
}

QTEST_GUILESS_MAIN(tst_Includes)
#include "tst_includes.moc"
