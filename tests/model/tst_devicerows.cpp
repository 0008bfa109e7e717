#include "records.h"

#include <QTest>

using records::T20Item;

namespace {

/// The field whose records stand below, byte by byte.
T20Item writtenOutField()
{
    T20Item item;
    item.FA_NEED = true;
    item.BL_MASK = 0x3ff;
    item.Type = 77;
    item.Block = 3;
    item.Font = 5;
    item.X2X = 1;
    item.X2Y = 0;
    item.PoleFlags = 2;
    item.LineGap = 17;
    item.Line = 4;
    item.X = 12;
    item.Size = 40;
    item.DropIfZero = 1;
    item.PressRight = 0;
    item.Expand = 1;
    item.CutToWidth = 1;
    item.MaskMode = 3;
    item.FractFormat = 2;
    item.Brightness = 15;
    item.AlignInPole = 1;
    item.AlignOnTape = 3;
    item.TailChar = 171;
    item.Desc = QStringLiteral("Класс: поле");
    item.DescView = QStringLiteral("К.: поле");
    return item;
}

const QString kParams0106 = QStringLiteral("01000A00010001000802000100"
                                           "03"
                                           "02000A00010001000402000100"
                                           "05"
                                           "03000A00010001000102000100"
                                           "01"
                                           "04000A00010001000102000100"
                                           "00"
                                           "05000A00010001000202000100"
                                           "02"
                                           "06000A00010001000802000100"
                                           "11");
const QString kParams0712 = QStringLiteral("07000A00010001000802000100"
                                           "04"
                                           "08000A00010001000802000100"
                                           "0C"
                                           "09000A00010001000802000100"
                                           "28"
                                           "0A000A00010001000102000100"
                                           "01"
                                           "0B000A00010001000102000100"
                                           "00"
                                           "0C000A00010001000102000100"
                                           "01");
const QString kParams1318 = QStringLiteral("0D000A00010001000102000100"
                                           "01"
                                           "0E000A00010001000202000100"
                                           "03"
                                           "0F000A00010001000202000100"
                                           "02"
                                           "10000A00010001000402000100"
                                           "0F"
                                           "11000A00010001000202000100"
                                           "01"
                                           "12000A00010001000202000100"
                                           "03");
const QString kParams1919 = QStringLiteral("13000A00010001000802000100"
                                           "AB");

/// The parameters 1 to 6 of a field whose numbers are all 0.
const QString kBlank0106 = QStringLiteral("01000A0001000100080200010000"
                                          "02000A0001000100040200010000"
                                          "03000A0001000100010200010000"
                                          "04000A0001000100010200010000"
                                          "05000A0001000100020200010000"
                                          "06000A0001000100080200010000");

QString digitsOf(const Json::Value& record)
{
    return QString::fromStdString(record["v"].asString());
}

Json::Value recordsOf(BD_T20Items& bd, int subTable = 1)
{
    Json::Value out(Json::arrayValue);
    if (bd.SaveAsJsonV01(out, subTable) != 0)
        qFatal("an empty store");
    return out;
}

/// One record in short: "t s r p1-p2".
QString addressOf(const Json::Value& record)
{
    return QStringLiteral("%1 %2 %3 %4-%5")
        .arg(record["t"].asInt())
        .arg(record["s"].asInt())
        .arg(record["r"].asInt())
        .arg(record["p1"].asInt())
        .arg(record["p2"].asInt());
}

QStringList addressesOf(const Json::Value& rows)
{
    QStringList addresses;
    for (const auto& record : rows)
        addresses.append(addressOf(record));
    return addresses;
}

} // namespace

/// What goes to the device's template table: the bytes of a record and the list of records.
class TestDeviceRows : public QObject
{
    Q_OBJECT

private slots:
    void startHasSixBytes_data();
    void startHasSixBytes();
    void paramHasFourteenBytes_data();
    void paramHasFourteenBytes();
    void paramsFollowEachOther();
    void paramsOfAMissingFieldAreBlank();

    void fieldMakesFourRecords();
    void recordHasSixMembers();
    void recordsAreOrderedByKeyAndParam();
    void recordsAreAddedBehindTheOthers();
    void rowCountsFromOneAndInTheBytesFromZero();
    void emptyStoreAddsNothing();
    void fieldThatIsNotPrintedIsSentToo();
    void missingKeyIsInsertedBlank();
    void valueIsCutToItsLowByte_data();
    void valueIsCutToItsLowByte();
    void onlyTheNineteenParamsAreSent();
    void storeStaysAsItIs();
};

void TestDeviceRows::startHasSixBytes_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("start");
    QTest::newRow("first row") << 1 << 6 << 0 << 84 << "010600005400";
    QTest::newRow("last row") << 7 << 12 << 159 << 84 << "070C9F005400";
    QTest::newRow("third group") << 13 << 18 << 2 << 84 << "0D1202005400";
    QTest::newRow("one param") << 19 << 19 << 255 << 14 << "1313FF000E00";
    QTest::newRow("zeros") << 0 << 0 << 0 << 0 << "000000000000";
    QTest::newRow("row beyond a byte") << 1 << 6 << 256 << 84 << "010600005400";
    QTest::newRow("all beyond a byte") << 0x0101 << 0x0206 << 0x0307 << 0x01ff << "01060700FF00";
}

void TestDeviceRows::startHasSixBytes()
{
    QFETCH(const int, first);
    QFETCH(const int, last);
    QFETCH(const int, row);
    QFETCH(const int, length);
    QTEST(BD_T20Items::getStartStr(static_cast<unsigned short>(first), static_cast<unsigned short>(last),
                                   static_cast<unsigned short>(row), static_cast<unsigned short>(length)),
          "start");
}

void TestDeviceRows::paramHasFourteenBytes_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 1 << 8 << 0 << "01000A0001000100080200010000";
    QTest::newRow("highest") << 19 << 8 << 255 << "13000A00010001000802000100FF";
    QTest::newRow("two bits") << 14 << 2 << 3 << "0E000A0001000100020200010003";
    QTest::newRow("beyond its bits") << 16 << 4 << 200 << "10000A00010001000402000100C8";
    QTest::newRow("beyond a byte") << 0x0113 << 0x0108 << 0x01fe << "13000A00010001000802000100FE";
    QTest::newRow("minus one") << 3 << 1 << 0xffff << "03000A00010001000102000100FF";
}

void TestDeviceRows::paramHasFourteenBytes()
{
    QFETCH(const int, tag);
    QFETCH(const int, bits);
    QFETCH(const int, value);
    QTEST(BD_T20Items::getStdParamStr(static_cast<unsigned short>(tag), static_cast<unsigned short>(bits),
                                      static_cast<unsigned short>(value)),
          "text");
}

void TestDeviceRows::paramsFollowEachOther()
{
    BD_T20Items bd = records::storeOf({T20Item(), writtenOutField()});
    QCOMPARE(bd.getParamsStr0106(2), kParams0106);
    QCOMPARE(bd.getParamsStr0712(2), kParams0712);
    QCOMPARE(bd.getParamsStr1318(2), kParams1318);
    QCOMPARE(bd.getParamsStr1919(2), kParams1919);
    QCOMPARE(bd.getParamsStr0106(1), kBlank0106);
    QCOMPARE(bd.items.size(), 2);
}

void TestDeviceRows::paramsOfAMissingFieldAreBlank()
{
    BD_T20Items bd;
    QCOMPARE(bd.getParamsStr0106(4), kBlank0106);
    QCOMPARE(bd.items.keys(), QList<int>{4});
    QVERIFY(records::isBlank(bd.items.value(4)));
    QCOMPARE(bd.getParamsStr1919(5), "13000A0001000100080200010000");
    QCOMPARE(bd.items.keys(), (QList<int>{4, 5}));
}

void TestDeviceRows::fieldMakesFourRecords()
{
    BD_T20Items bd = records::storeOf({T20Item(), T20Item(), writtenOutField()});
    const Json::Value rows = recordsOf(bd, 7);
    QCOMPARE(rows.size(), 12U);
    QCOMPARE(addressesOf(rows).mid(8),
             (QStringList{"20 7 3 1-6", "20 7 3 7-12", "20 7 3 13-18", "20 7 3 19-19"}));
    QCOMPARE(digitsOf(rows[8]), "010602005400" + kParams0106);
    QCOMPARE(digitsOf(rows[9]), "070C02005400" + kParams0712);
    QCOMPARE(digitsOf(rows[10]), "0D1202005400" + kParams1318);
    QCOMPARE(digitsOf(rows[11]), "131302000E00" + kParams1919);
    QCOMPARE(digitsOf(rows[8]).size(), 2 * 90);
    QCOMPARE(digitsOf(rows[11]).size(), 2 * 20);
}

void TestDeviceRows::recordHasSixMembers()
{
    BD_T20Items bd = records::storeOf({writtenOutField()});
    const Json::Value rows = recordsOf(bd);
    for (const auto& record : rows) {
        QVERIFY(record.isObject());
        QCOMPARE(record.getMemberNames(), (Json::Value::Members{"p1", "p2", "r", "s", "t", "v"}));
        for (const char* number : {"p1", "p2", "r", "s", "t"})
            QCOMPARE(record[number].type(), Json::intValue);
        QCOMPARE(record["v"].type(), Json::stringValue);
    }

    Json::Value out(Json::arrayValue);
    BD_T20Items::SaveAsJsonV01SaveRecord(out, 20, -1, 300, 19, 18, QString());
    QCOMPARE(addressesOf(out), QStringList{"20 -1 300 19-18"});
    QCOMPARE(out[0]["v"].type(), Json::stringValue);
    QCOMPARE(digitsOf(out[0]), QString());
}

void TestDeviceRows::recordsAreOrderedByKeyAndParam()
{
    BD_T20Items bd = records::storeOf({T20Item(), T20Item(), T20Item()});
    QCOMPARE(addressesOf(recordsOf(bd, 2)),
             (QStringList{"20 2 1 1-6", "20 2 1 7-12", "20 2 1 13-18", "20 2 1 19-19", "20 2 2 1-6",
                          "20 2 2 7-12", "20 2 2 13-18", "20 2 2 19-19", "20 2 3 1-6", "20 2 3 7-12",
                          "20 2 3 13-18", "20 2 3 19-19"}));
}

void TestDeviceRows::recordsAreAddedBehindTheOthers()
{
    BD_T20Items bd = records::storeOf({T20Item()});
    Json::Value out = recordsOf(bd, 1);
    QCOMPARE(bd.SaveAsJsonV01(out, 9), 0);
    QCOMPARE(addressesOf(out), (QStringList{"20 1 1 1-6", "20 1 1 7-12", "20 1 1 13-18", "20 1 1 19-19",
                                            "20 9 1 1-6", "20 9 1 7-12", "20 9 1 13-18", "20 9 1 19-19"}));
}

void TestDeviceRows::rowCountsFromOneAndInTheBytesFromZero()
{
    QList<T20Item> fields(257);
    fields.first() = writtenOutField();
    fields.last() = writtenOutField();
    BD_T20Items bd = records::storeOf(fields);
    const Json::Value rows = recordsOf(bd);
    QCOMPARE(rows.size(), 4U * 257U);
    for (unsigned i = 0; i < rows.size(); ++i) {
        const int key = static_cast<int>(i / 4) + 1;
        QCOMPARE(rows[i]["r"].asInt(), key);
        // Its own digits, not those of the program: the low byte alone, and a zero behind it.
        const QString row = QString::number((key - 1) % 256, 16).rightJustified(2, u'0').toUpper();
        QCOMPARE(digitsOf(rows[i]).mid(4, 4), row + "00");
    }
    QCOMPARE(digitsOf(rows[0]), "010600005400" + kParams0106);
    QCOMPARE(digitsOf(rows[4 * 256]), "010600005400" + kParams0106);
    QCOMPARE(digitsOf(rows[4 * 255]).left(12), "0106FF005400");
}

void TestDeviceRows::emptyStoreAddsNothing()
{
    BD_T20Items bd;
    Json::Value out(Json::arrayValue);
    QCOMPARE(bd.SaveAsJsonV01(out, 1), 1);
    QVERIFY(out.isArray());
    QCOMPARE(out.size(), 0U);
    QVERIFY(bd.items.isEmpty());

    out.append(5);
    QCOMPARE(bd.SaveAsJsonV01(out, 1), 1);
    QCOMPARE(out.size(), 1U);
}

void TestDeviceRows::fieldThatIsNotPrintedIsSentToo()
{
    T20Item item = writtenOutField();
    item.Size = 0;
    BD_T20Items bd = records::storeOf({item});
    const Json::Value rows = recordsOf(bd);
    QCOMPARE(addressesOf(rows), (QStringList{"20 1 1 1-6", "20 1 1 7-12", "20 1 1 13-18", "20 1 1 19-19"}));
    QString params = kParams0712;
    params.replace("09000A0001000100080200010028", "09000A0001000100080200010000");
    QCOMPARE(digitsOf(rows[1]), "070C00005400" + params);
    QCOMPARE(digitsOf(rows[0]), "010600005400" + kParams0106);
}

void TestDeviceRows::missingKeyIsInsertedBlank()
{
    BD_T20Items bd;
    bd.AddPoleToBD(1, writtenOutField());
    bd.AddPoleToBD(3, writtenOutField());
    const Json::Value rows = recordsOf(bd);
    // Two fields are there, so the keys 1 and 2 are sent.
    QCOMPARE(rows.size(), 8U);
    QCOMPARE(digitsOf(rows[0]), "010600005400" + kParams0106);
    QCOMPARE(rows[4]["r"].asInt(), 2);
    QCOMPARE(digitsOf(rows[4]), "010601005400" + kBlank0106);
    QCOMPARE(digitsOf(rows[7]), "131301000E00"
                                "13000A0001000100080200010000");
    QCOMPARE(bd.items.keys(), (QList<int>{1, 2, 3}));
    QVERIFY(records::isBlank(bd.items.value(2)));
}

void TestDeviceRows::valueIsCutToItsLowByte_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("digits");
    QTest::newRow("0") << 0 << "00";
    QTest::newRow("10") << 10 << "0A";
    QTest::newRow("255") << 255 << "FF";
    QTest::newRow("256") << 256 << "00";
    QTest::newRow("300") << 300 << "2C";
    QTest::newRow("-1") << -1 << "FF";
    QTest::newRow("-2") << -2 << "FE";
    QTest::newRow("65536 + 7") << 65543 << "07";
    QTest::newRow("highest") << 2147483647 << "FF";
    QTest::newRow("lowest") << -2147483647 - 1 << "00";
}

void TestDeviceRows::valueIsCutToItsLowByte()
{
    QFETCH(const int, value);
    QFETCH(const QString, digits);
    int number = 0;
    for (const auto& [name, param] : records::kParams) {
        T20Item item = writtenOutField();
        BD_T20Items before = records::storeOf({item});
        item.*param = value;
        BD_T20Items bd = records::storeOf({item});
        const Json::Value rows = recordsOf(bd);
        const Json::Value rowsBefore = recordsOf(before);
        // Six params to a record; the value ends the 28 digits of its param.
        const unsigned changed = static_cast<unsigned>(number / 6);
        const qsizetype at = 12 + 28 * (number % 6) + 26;
        for (unsigned i = 0; i < 4; ++i) {
            QString expected = digitsOf(rowsBefore[i]);
            if (i == changed)
                expected.replace(at, 2, digits);
            QVERIFY2(digitsOf(rows[i]) == expected, name);
        }
        ++number;
    }
}

void TestDeviceRows::onlyTheNineteenParamsAreSent()
{
    T20Item other = writtenOutField();
    other.FA_NEED = false;
    other.BL_MASK = 0;
    other.Type = 5;
    other.Desc = QStringLiteral("Другой: текст");
    other.DescView.clear();
    BD_T20Items bd = records::storeOf({writtenOutField()});
    BD_T20Items otherBd = records::storeOf({other});
    QCOMPARE(recordsOf(otherBd).toStyledString(), recordsOf(bd).toStyledString());
}

void TestDeviceRows::storeStaysAsItIs()
{
    BD_T20Items bd = records::computedStoreOf({writtenOutField(), records::distinctRecord()});
    const BD_T20Items before = bd;
    recordsOf(bd);
    QVERIFY(records::isSame(bd.items, before.items));
    QCOMPARE(bd.blocks.size(), before.blocks.size());
}

QTEST_GUILESS_MAIN(TestDeviceRows)
#include "tst_devicerows.moc"
