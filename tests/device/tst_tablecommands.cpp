#include "device/batostring.h"
#include "device/ccommtlv.h"
#include "device/tlvrecord.h"

#include <QTest>

using Bytes = QVector<unsigned char>;

namespace {

/// The head of a row with 19 parameters, cut behind their number.
const Bytes kHead = {0x51, 0x00, 0x00, 0x00, 0xa1, 0xa2, 0xa3, 0xa4, 0xa5,
                     0xa6, 0xa7, 0xa8, 0x03, 0x00, 0x01, 0x00, 0x13};

} // namespace

/// The raw commands for the template table and what is made of bytes.
class TestTableCommands : public QObject
{
    Q_OBJECT

private slots:
    void headIsAskedWithEightBytes_data();
    void headIsAskedWithEightBytes();
    void paramsAreAskedWithEightBytes_data();
    void paramsAreAskedWithEightBytes();
    void commandBeginsWithItsCode();

    void headIsKnownByItsBytes();
    void headTellsTheNumberOfParams();
    void shortAnswerIsNoHead();
    void answerWithAnotherByteIsNoHead_data();
    void answerWithAnotherByteIsNoHead();
    void otherBytesOfAHeadDoNotMatter();

    void bytesBecomeDigits_data();
    void bytesBecomeDigits();
    void everyByteHasTwoDigits();

    void writeCommandIsTheRecordBehindAFixedStart_data();
    void writeCommandIsTheRecordBehindAFixedStart();
};

void TestTableCommands::headIsAskedWithEightBytes_data()
{
    QTest::addColumn<int>("table");
    QTest::addColumn<int>("subTable");
    QTest::addColumn<int>("row");
    QTest::addColumn<Bytes>("command");
    QTest::newRow("first row") << 20 << 1 << 1 << Bytes{0x51, 0x00, 0x14, 0x01, 0x01, 0x00, 0x00, 0x00};
    QTest::newRow("two bytes of row")
        << 20 << 1 << 0x0102 << Bytes{0x51, 0x00, 0x14, 0x01, 0x02, 0x01, 0x00, 0x00};
    QTest::newRow("last row") << 20 << 255 << 0xff00 << Bytes{0x51, 0x00, 0x14, 0xff, 0x00, 0xff, 0x00, 0x00};
    QTest::newRow("zeros") << 0 << 0 << 0 << Bytes{0x51, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
    QTest::newRow("cut") << 0x114 << 0x203 << 0x34567
                         << Bytes{0x51, 0x00, 0x14, 0x03, 0x67, 0x45, 0x00, 0x00};
    QTest::newRow("negative") << -1 << -2 << -3 << Bytes{0x51, 0x00, 0xff, 0xfe, 0xfd, 0xff, 0x00, 0x00};
}

void TestTableCommands::headIsAskedWithEightBytes()
{
    QFETCH(const int, table);
    QFETCH(const int, subTable);
    QFETCH(const int, row);
    Bytes command(20, 0x77);
    cCommTLV().GetCmdAskRow00(command, table, subTable, row);
    QTEST(command, "command");
}

void TestTableCommands::paramsAreAskedWithEightBytes_data()
{
    QTest::addColumn<int>("subTable");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<Bytes>("command");
    QTest::newRow("one group") << 2 << 5 << 7 << 12 << Bytes{0x51, 0x00, 0x14, 0x02, 0x05, 0x00, 0x07, 0x0c};
    QTest::newRow("all") << 1 << 160 << 1 << 19 << Bytes{0x51, 0x00, 0x14, 0x01, 0xa0, 0x00, 0x01, 0x13};
    QTest::newRow("none") << 1 << 256 << 1 << 0 << Bytes{0x51, 0x00, 0x14, 0x01, 0x00, 0x01, 0x01, 0x00};
    QTest::newRow("the head's") << 1 << 1 << 0 << 0 << Bytes{0x51, 0x00, 0x14, 0x01, 0x01, 0x00, 0x00, 0x00};
    QTest::newRow("cut") << 1 << 1 << 256 << 511 << Bytes{0x51, 0x00, 0x14, 0x01, 0x01, 0x00, 0x00, 0xff};
    QTest::newRow("negative") << 1 << 1 << -1 << -2 << Bytes{0x51, 0x00, 0x14, 0x01, 0x01, 0x00, 0xff, 0xfe};
}

void TestTableCommands::paramsAreAskedWithEightBytes()
{
    QFETCH(const int, subTable);
    QFETCH(const int, row);
    QFETCH(const int, first);
    QFETCH(const int, last);
    Bytes command = {1, 2, 3};
    cCommTLV().GetCmdAskRowFT(command, 20, subTable, row, first, last);
    QTEST(command, "command");
}

void TestTableCommands::commandBeginsWithItsCode()
{
    Bytes command;
    const cCommTLV other(0x8f);
    other.GetCmdAskRow00(command, 20, 1, 1);
    QCOMPARE(command, (Bytes{0x8f, 0x00, 0x14, 0x01, 0x01, 0x00, 0x00, 0x00}));
    other.GetCmdAskRowFT(command, 20, 1, 1, 3, 4);
    QCOMPARE(command, (Bytes{0x8f, 0x00, 0x14, 0x01, 0x01, 0x00, 0x03, 0x04}));
}

void TestTableCommands::headIsKnownByItsBytes()
{
    int count = 99;
    QVERIFY(cCommTLV::CheckAnswerForRow00(kHead, count));
    QCOMPARE(count, 19);

    Bytes longer = kHead;
    longer += {0x04, 0x00, 0x01, 0x00, 0xc0, 0x05, 0x00, 0x02, 0x00, 0xff, 0x03};
    count = 99;
    QVERIFY(cCommTLV::CheckAnswerForRow00(longer, count));
    QCOMPARE(count, 19);
}

void TestTableCommands::headTellsTheNumberOfParams()
{
    for (int byte = 0; byte < 256; ++byte) {
        Bytes head = kHead;
        head[16] = static_cast<unsigned char>(byte);
        int count = 99;
        QVERIFY(cCommTLV::CheckAnswerForRow00(head, count));
        QCOMPARE(count, byte);
    }
}

void TestTableCommands::shortAnswerIsNoHead()
{
    for (int size = 0; size <= 16; ++size) {
        int count = 99;
        QVERIFY(!cCommTLV::CheckAnswerForRow00(kHead.first(size), count));
        QCOMPARE(count, 0);
    }
}

void TestTableCommands::answerWithAnotherByteIsNoHead_data()
{
    QTest::addColumn<int>("offset");
    for (const int offset : {1, 2, 3, 12, 13, 14, 15})
        QTest::addRow("byte %d", offset) << offset;
}

void TestTableCommands::answerWithAnotherByteIsNoHead()
{
    QFETCH(const int, offset);
    for (int byte = 0; byte < 256; ++byte) {
        Bytes head = kHead;
        const bool isRight = head[offset] == byte;
        head[offset] = static_cast<unsigned char>(byte);
        int count = 99;
        QCOMPARE(cCommTLV::CheckAnswerForRow00(head, count), isRight);
        QCOMPARE(count, isRight ? 19 : 0);
    }
}

void TestTableCommands::otherBytesOfAHeadDoNotMatter()
{
    for (const int offset : {0, 4, 5, 6, 7, 8, 9, 10, 11}) {
        for (const auto byte : Bytes{0x00, 0x01, 0xff}) {
            Bytes head = kHead;
            head[offset] = byte;
            int count = 99;
            QVERIFY(cCommTLV::CheckAnswerForRow00(head, count));
            QCOMPARE(count, 19);
        }
    }
}

void TestTableCommands::bytesBecomeDigits_data()
{
    QTest::addColumn<Bytes>("bytes");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << Bytes() << ""
                             << "";
    QTest::newRow("nothing, separator") << Bytes() << ", "
                                        << "";
    QTest::newRow("one") << Bytes{0x07} << ""
                         << "07";
    QTest::newRow("one, separator") << Bytes{0x07} << ", "
                                    << "07";
    QTest::newRow("two") << Bytes{0x0a, 0xff} << ""
                         << "0AFF";
    QTest::newRow("blank") << Bytes{0x0a, 0xff, 0x00} << " "
                           << "0A FF 00";
    QTest::newRow("long separator") << Bytes{0x51, 0x0a} << ", 0x"
                                    << "51, 0X0A";
    QTest::newRow("separator that looks like a byte") << Bytes{0xab, 0xab} << "ab"
                                                      << "ABABAB";
    QTest::newRow("placeholder") << Bytes{0x01, 0x02} << "%1"
                                 << "01%102";
    QTest::newRow("Cyrillic") << Bytes{0x01, 0x02} << "и"
                              << "01И02";
}

void TestTableCommands::bytesBecomeDigits()
{
    QFETCH(const Bytes, bytes);
    QFETCH(const QString, separator);
    QTEST(baToString(bytes, separator), "text");
}

void TestTableCommands::everyByteHasTwoDigits()
{
    const QString digits = QStringLiteral("0123456789ABCDEF");
    Bytes all;
    QString expected;
    for (int byte = 0; byte < 256; ++byte) {
        all.append(static_cast<unsigned char>(byte));
        expected += digits[byte / 16];
        expected += digits[byte % 16];
    }
    QCOMPARE(baToString(all, QString()), expected);
}

void TestTableCommands::writeCommandIsTheRecordBehindAFixedStart_data()
{
    QTest::addColumn<int>("table");
    QTest::addColumn<int>("subTable");
    QTest::addColumn<QString>("bytes");
    QTest::addColumn<QString>("command");
    QTest::newRow("first template") << 20 << 1 << "131302000E00"
                                    << "510114010000131302000E00";
    QTest::newRow("no bytes") << 20 << 7 << ""
                              << "510114070000";
    QTest::newRow("another table") << 5 << 0 << "AA"
                                   << "510105000000AA";
    // The whole text becomes upper-case on its way to the driver.
    QTest::newRow("lower case") << 20 << 10 << "ab"
                                << "5101140a0000ab";
    QTest::newRow("highest") << 255 << 255 << "01"
                             << "5101ffff000001";
    // Two digits are the least.
    QTest::newRow("beyond a byte") << 20 << 300 << "01"
                                   << "51011412c000001";
    QTest::newRow("negative") << 20 << -1 << "01"
                              << "510114-1000001";
}

void TestTableCommands::writeCommandIsTheRecordBehindAFixedStart()
{
    QFETCH(const int, table);
    QFETCH(const int, subTable);
    QFETCH(const QString, bytes);
    // The row travels within the bytes.
    const TlvRecord record{table, subTable, 258, 7, 12, bytes};
    QTEST(QString::fromStdString(record.writeCommand()), "command");
}

QTEST_GUILESS_MAIN(TestTableCommands)

#include "tst_tablecommands.moc"
