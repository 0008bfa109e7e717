#include "device/emulatedsession.h"

#include "device/jsonfile.h"
#include "device/utiljson.h"
#include "support/jsontext.h"
#include "support/recordingdriver.h"
#include "support/takedriver.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using LUM::Fpax::Model;

namespace {

/// A value that settings may hold in a place where another type belongs.
struct Sample
{
    const char* text;
    bool isText;   ///< can be read as a text
    bool isNumber; ///< can be read as an integer
    bool isObject; ///< has members, or can have them
};

constexpr Sample kSamples[] = {
    {"null", true, true, true},
    {"true", true, true, false},
    {"7", true, true, false},
    {"-1", true, true, false},
    {"1.5", true, true, false},
    {"2147483647", true, true, false},
    {"2147483648", true, false, false},
    {"-2147483649", true, false, false},
    {"18446744073709551615", true, false, false},
    {"99999999999999999999", true, false, false},
    {"1e300", true, false, false},
    {R"("x")", true, false, false},
    {R"("7")", true, false, false},
    {R"("")", true, false, false},
    {"[]", false, false, false},
    {"[7]", false, false, false},
    {"{}", false, false, true},
    {R"({"a": 7})", false, false, true},
};

QByteArray deep(int depth)
{
    return QByteArray(depth, '[') + QByteArray(depth, ']');
}

/// Settings with `port` in use and `value` at `path`, whose parts are parted by a point.
Json::Value settingsWith(const char* port, const QByteArray& path, const Json::Value& value)
{
    Json::Value settings = jsonOf(
        R"({"protocol": 3, "com": {"number": 5, "baudrate": 115200},
            "usb": {"vid": "7A31", "pid": "0005"}, "tcpip": {"host": "10.0.0.7", "port": 5555}})");
    settings["port"] = port;
    Json::Value* place = &settings;
    for (const QByteArray& part : path.split('.'))
        place = &(*place)[part.toStdString()];
    *place = value;
    return settings;
}

} // namespace

/// Settings of wrong types in every place are a failure and nothing worse; and the text of new ones.
class TestSessionJson : public QObject
{
    Q_OBJECT

private slots:
    void wrongTypesAreRefused_data();
    void wrongTypesAreRefused();
    void wrongRootIsRefused();
    void wrongTypesAreNotRewritten();
    void longAndStrangeTextsPass();
    void quotesAreNotEscaped();
    void newSettingsAreExact();
    void newSettingsHoldTheDefaults();
    void whatStandsBehindTheSettingsDoesNotMatter();
};

void TestSessionJson::wrongTypesAreRefused_data()
{
    QTest::addColumn<QByteArray>("port");
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("kind");
    const auto row = [](const char* port, const char* path, const char* kind) {
        QTest::addRow("%s: %s", port, path) << QByteArray(port) << QByteArray(path) << QByteArray(kind);
    };
    for (const char* const port : {"com", "usb", "tcpip"}) {
        row(port, "protocol", "number");
        row(port, "port", "port");
        row(port, port, "object");
    }
    row("com", "com.number", "text");
    row("com", "com.baudrate", "text");
    row("com", "usb", "unread");
    row("com", "tcpip.port", "unread");
    row("usb", "usb.vid", "text");
    row("usb", "usb.pid", "text");
    row("usb", "usb.path", "text");
    row("usb", "com.number", "unread");
    row("tcpip", "tcpip.host", "text");
    row("tcpip", "tcpip.port", "text");
    row("tcpip", "com", "unread");
}

void TestSessionJson::wrongTypesAreRefused()
{
    QFETCH(const QByteArray, port);
    QFETCH(const QByteArray, path);
    QFETCH(const QByteArray, kind);
    const auto resultFor = [&](const Sample& sample) {
        if (kind == "number")
            return sample.isNumber ? 0 : 255;
        if (kind == "port")
            return sample.isText ? 13 : 255;
        if (kind == "object")
            return sample.isObject ? 0 : 255;
        if (kind == "text")
            return sample.isText ? 0 : 255;
        return 0;
    };
    const auto check = [&](const QByteArray& text, int result) {
        RecordingDriver driver;
        clKRD9IO session;
        takeDriver(session, driver);
        const Json::Value settings = settingsWith(port.constData(), path, jsonOf(text));
        QVERIFY2(session.setIOSettings(settings, Model::Tavr22F, "/") == result, text.constData());
        QCOMPARE(driver.count("applySingleSettings"), result == 0 ? 1 : 0);
    };
    for (const auto& sample : kSamples) {
        check(sample.text, resultFor(sample));
        if (QTest::currentTestFailed())
            return;
    }
    check(deep(500), kind == "unread" ? 0 : 255);
}

void TestSessionJson::wrongRootIsRefused()
{
    for (const auto& sample : kSamples) {
        RecordingDriver driver;
        clKRD9IO session;
        takeDriver(session, driver);
        // Where nothing stands, the protocol has its default and the port is no known word.
        const int result = session.setIOSettings(jsonOf(sample.text), Model::Tavr22F, "/");
        QVERIFY2(result == (sample.isObject ? 13 : 255), sample.text);
        QCOMPARE(driver.count("applySingleSettings"), 0);
    }
}

void TestSessionJson::wrongTypesAreNotRewritten()
{
    RecordingDriver driver;
    driver.settings.insert("Port", "8");
    clKRD9IO session;
    takeDriver(session, driver);
    for (const auto& sample : kSamples) {
        const struct
        {
            Json::Value settings;
            int result;
        } places[] = {
            {settingsWith("com", "com.number", jsonOf(sample.text)), sample.isNumber ? -1 : 255},
            {settingsWith("com", "com", jsonOf(sample.text)), sample.isObject ? -1 : 255},
            {settingsWith("com", "usb", jsonOf(sample.text)), -1},
            {jsonOf(sample.text), sample.isObject ? -1 : 255},
        };
        for (const auto& place : places) {
            const bool isNull = place.settings.isNull();
            Json::Value settings = place.settings;
            QVERIFY2(session.getIOSettings(settings) == (isNull ? 2 : place.result), sample.text);
            if (isNull || place.result != -1)
                QVERIFY2(settings == place.settings, sample.text);
            else
                QVERIFY2(settings["com"]["number"] == 8, sample.text);
        }
    }
}

void TestSessionJson::longAndStrangeTextsPass()
{
    RecordingDriver driver;
    clKRD9IO session;
    takeDriver(session, driver);
    const QString longHost(100000, u'ж');
    Json::Value settings = settingsWith("tcpip", "tcpip.host", longHost.toStdString());
    QCOMPARE(session.setIOSettings(settings, Model::Tavr22F, "/"), 0);
    QCOMPARE(driver.settings.value("IPAddress"), longHost);

    settings = settingsWith("tcpip", "tcpip.host", "\xff\xfe\xc0 касса");
    QCOMPARE(session.setIOSettings(settings, Model::Tavr22F, "/"), 0);
    QVERIFY(driver.settings.value("IPAddress").endsWith(" касса"));

    settings = settingsWith("tcpip", "tcpip.host", "\xf0\x9f\xa7\xbe %1 <b>");
    QCOMPARE(session.setIOSettings(settings, Model::Tavr22F, "/"), 0);
    QCOMPARE(driver.settings.value("IPAddress"), QString("🧾 %1 <b>"));
}

void TestSessionJson::quotesAreNotEscaped()
{
    QCOMPARE(UtilJson::strQQ("текст"), QString("\"текст\""));
    QCOMPARE(UtilJson::strQQ(""), QString("\"\""));
    QCOMPARE(UtilJson::strQQ("a\"b\\c\n%1"), QString("\"a\"b\\c\n%1\""));
}

void TestSessionJson::newSettingsAreExact()
{
    const QString text = UtilJson::SetSettingsJson();
    const QStringList lines = text.split(u'\n');
    // The address is a free choice, so that line stands by itself.
    const QStringList expected{"{",
                               "\t\"protocol\": 3,",
                               "\t\"port\": \"com\",",
                               "\t\"com\": {",
                               "\t\t\"number\": 5,",
                               "\t\t\"baudrate\": 115200",
                               "\t},",
                               "\t\"usb\": {",
                               "\t\t\"vid\" : \"7A31\",",
                               "\t\t\"pid\" : \"0005\"",
                               "\t},",
                               "\t\"tcpip\": {",
                               lines.value(12),
                               "\t\t\"port\": 5555",
                               "\t}",
                               "}",
                               ""};
    QCOMPARE(lines, expected);
    QVERIFY(
        QRegularExpression(R"(^\t\t"host": "(10|172|192)(\.\d{1,3}){3}",$)").match(lines.at(12)).hasMatch());
}

void TestSessionJson::newSettingsHoldTheDefaults()
{
    EmulatedSession s;
    const Json::Value settings = jsonOf(UtilJson::SetSettingsJson().toUtf8());
    QCOMPARE(s.session.setIOSettings(settings, Model::Tavr22F, "/"), 0);
    QCOMPARE(s.device.takeCalls(),
             QStringList({R"(setSingleSetting("Model", "63"))", R"(setSingleSetting("SearchDir", "/"))",
                          R"(setSingleSetting("Protocol", "3"))", R"(setSingleSetting("Port", "5"))",
                          R"(setSingleSetting("BaudRate", "115200"))", "applySingleSettings()"}));
}

void TestSessionJson::whatStandsBehindTheSettingsDoesNotMatter()
{
    // Settings that cannot be parsed would be replaced by new ones.
    const QTemporaryDir dir;
    QFile file(dir.filePath("settings.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("{\"port\": \"usb\"} }");
    file.close();
    Json::Value root;
    QString errors;
    QCOMPARE(JsonFile::read(file.fileName(), root, errors), JsonFile::Read);
    QCOMPARE(root["port"].asString(), "usb");
    QCOMPARE(errors, QString());
}

QTEST_GUILESS_MAIN(TestSessionJson)

#include "tst_session_json.moc"
