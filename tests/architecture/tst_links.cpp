#include "tests/architecture/linkrules.h"
#include "tests/architecture/parts.h"

#include <QTest>

class tst_Links : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everySourceIsCompiledByItsPartsTarget();
    void modelAndProtocolLinkQtCoreAndJsonAlone_data();
    void modelAndProtocolLinkQtCoreAndJsonAlone();
    void emulatorLinksNothingOfTheProgram();

    void wrongLinkIsFound_data();
    void wrongLinkIsFound();
    void sourceThatNoTargetNamesIsFound();
    void sourceInAnotherPartsTargetIsFound();
    void libraryForAWholeFolderIsFound();
    void commandsAreReadWithTheirLines();

private:
    SourceTree m_tree;
};

void tst_Links::initTestCase()
{
    m_tree = SourceTree::read(SOURCE_TREE);
    QVERIFY(m_tree.contains("model/CMakeLists.txt"));
}

void tst_Links::everySourceIsCompiledByItsPartsTarget()
{
    const QList<Offence> offences = linkOffences(m_tree);
    QVERIFY2(offences.isEmpty(), qPrintable('\n' + textOf(offences)));
}

void tst_Links::modelAndProtocolLinkQtCoreAndJsonAlone_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QSet<QString>>("libraries");
    const QSet<QString> protocol{"shablonist_options", "Qt6::Core", "JsonCpp::JsonCpp"};
    QSet<QString> above = protocol;
    above.insert("shablonist_protocol");
    QTest::newRow("protocol") << "shablonist_protocol" << protocol;
    QTest::newRow("model") << "shablonist_model" << above;
    QTest::newRow("session") << "shablonist_device" << above;
}

void tst_Links::modelAndProtocolLinkQtCoreAndJsonAlone()
{
    QFETCH(const QString, target);
    QFETCH(const QSet<QString>, libraries);
    QCOMPARE(linkedBy(m_tree, target), libraries);
}

void tst_Links::emulatorLinksNothingOfTheProgram()
{
    const QSet<QString> libraries = linkedBy(m_tree, "fpax");
    QVERIFY(libraries.contains("Qt6::Core"));
    for (const Part& part : parts())
        QVERIFY2(!libraries.contains(part.target), qPrintable(part.target));
}

void tst_Links::wrongLinkIsFound_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("offences");
    const auto row = [](const char* name, const QString& command, const QStringList& offences) {
        QTest::newRow(name) << command << offences;
    };
    row("model: widgets", "target_link_libraries(shablonist_model PRIVATE Qt6::Widgets)",
        {"shablonist_model must not link Qt6::Widgets"});
    row("protocol: gui", "target_link_libraries(shablonist_protocol PUBLIC\n  Qt6::Core\n  Qt6::Gui)",
        {"shablonist_protocol must not link Qt6::Gui"});
    row("session: model", "target_link_libraries(shablonist_device PUBLIC shablonist_model)",
        {"shablonist_device must not link shablonist_model"});
    row("layout: items and what they link",
        "target_link_libraries(shablonist_layout PRIVATE shablonist_items)",
        {"shablonist_layout must not link Qt6::Widgets", "shablonist_layout must not link shablonist_items"});
    row("emulator: protocol", "target_link_libraries(fpax PRIVATE shablonist_protocol)",
        {"fpax must not link JsonCpp::JsonCpp", "fpax must not link shablonist_protocol"});
    row("window: emulator", "target_link_libraries(shablonist_window PUBLIC fpax)",
        {"shablonist_window must not link fpax"});
    row("options: gui", "target_link_libraries(shablonist_options INTERFACE Qt6::Gui)",
        {"shablonist_options must not link Qt6::Gui"});
}

void tst_Links::wrongLinkIsFound()
{
    QFETCH(const QString, command);
    QFETCH(const QStringList, offences);
    SourceTree tree = m_tree;
    tree.add("cmake/more.cmake", "# A planted file.\n" + command + '\n');
    QStringList expected;
    for (const QString& offence : offences)
        expected.append("cmake/more.cmake:2: " + offence);
    QStringList found;
    const QList<Offence> all = linkOffences(tree);
    for (const Offence& offence : all)
        if (offence.file == "cmake/more.cmake")
            found.append(offence.text());
    QCOMPARE(found, expected);
}

void tst_Links::sourceThatNoTargetNamesIsFound()
{
    SourceTree tree = m_tree;
    tree.add("model/forgotten.cpp", "int i;\n");
    QCOMPARE(textOf(linkOffences(tree)), "model/forgotten.cpp:1: no target names this file");
}

void tst_Links::sourceInAnotherPartsTargetIsFound()
{
    SourceTree tree = m_tree;
    const QString list = "device/CMakeLists.txt";
    QVERIFY(tree.replace(list, "  clkrd9io_receipt.cpp\n", ""));
    const int line = tree.appendLine(list, "target_sources(shablonist_window PRIVATE clkrd9io_receipt.cpp)");
    QCOMPARE(textOf(linkOffences(tree)),
             QString("%1:%2: device/clkrd9io_receipt.cpp belongs into shablonist_device, not into "
                     "shablonist_window")
                 .arg(list)
                 .arg(line));
}

void tst_Links::libraryForAWholeFolderIsFound()
{
    SourceTree tree = m_tree;
    const int line = tree.appendLine("CMakeLists.txt", "link_libraries(Qt6::Widgets)");
    QCOMPARE(textOf(linkOffences(tree)),
             QString("CMakeLists.txt:%1: libraries are linked to targets, not to folders")
                 .arg(QString::number(line)));
}

void tst_Links::commandsAreReadWithTheirLines()
{
    const QList<CMakeCommand> commands = cmakeCommandsOf(
        "# target_link_libraries(a b)\nif(X)\n  add_library(\n    a STATIC # why\n    \"a.cpp\"\n    a.h)\n");
    QCOMPARE(commands.size(), 2);
    QCOMPARE(commands.at(0).name, "if");
    QCOMPARE(commands.at(0).line, 2);
    QCOMPARE(commands.at(1).name, "add_library");
    QCOMPARE(commands.at(1).line, 3);
    QCOMPARE(commands.at(1).arguments, (QStringList{"a", "STATIC", "a.cpp", "a.h"}));
}

QTEST_GUILESS_MAIN(tst_Links)
#include "tst_links.moc"
