#include "device/receiptbench.h"

#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QTextDocument>

namespace {

const QStringList kLines{"раз", "два"};

/// What a message box looks like while it is open.
struct SeenReport
{
    QString text;  ///< as the program gave it
    QString shown; ///< as the user reads it
    bool isRed = false;
};

bool isRed(QRgb pixel)
{
    constexpr int bright = 180;
    constexpr int dark = 90;
    return qRed(pixel) > bright && qGreen(pixel) < dark && qBlue(pixel) < dark;
}

/// Whether there is a pixel of the red in which a failure is written.
bool hasRed(QLabel& label)
{
    const QImage image = label.grab().toImage();
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (isRed(image.pixel(x, y)))
                return true;
    return false;
}

SeenReport lookAt(QMessageBox& box)
{
    auto* const label = named<QLabel>(box, "qt_msgbox_label");
    const bool isRich = label->textFormat() == Qt::RichText ||
                        (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(label->text()));
    QTextDocument document;
    if (isRich)
        document.setHtml(label->text());
    else
        document.setPlainText(label->text());
    return {box.text(), document.toPlainText(), hasRed(*label)};
}

/// The program before an upload of both parts, either of which can be made to fail.
struct ReportBench : TransferBench
{
    ReportBench()
        : TransferBench(manyFields(2))
    {
        windowLines() = kLines;
        setDeviceLines({"", ""});
    }

    SeenReport report(bool isTemplateGood, bool isLinesGood)
    {
        QJsonArray rules;
        // Only a driver that breaks its word makes a template fail as a whole.
        if (!isTemplateGood)
            rules.append(QJsonObject{{"operation", "execCommandBuffer"}, {"call", 2}, {"throw", "std"}});
        if (!isLinesGood)
            rules.append(QJsonObject{{"operation", "writeTableField"}, {"code", -1000}});
        device.setFaults(rules);
        SeenReport seen;
        robot.whileBoxIsOpen(
            [&seen] {
                auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                if (box != nullptr)
                    seen = lookAt(*box);
            },
            [] { return true; });
        upload({.isFreeLines = true});
        return seen;
    }
};

} // namespace

/// How the closing report of a command of the device looks to the user.
class TestReceiptReports : public QObject
{
    Q_OBJECT

private slots:
    void failureIsRedWhereverItStands_data();
    void failureIsRedWhereverItStands();
    void nameOfTheDeviceIsNoMark_data();
    void nameOfTheDeviceIsNoMark();
    void receiptIsPrintedWhateverTheDeviceIsCalled();
};

void TestReceiptReports::failureIsRedWhereverItStands_data()
{
    QTest::addColumn<bool>("isTemplateGood");
    QTest::addColumn<bool>("isLinesGood");
    QTest::newRow("none fails") << true << true;
    QTest::newRow("first") << false << true;
    QTest::newRow("second") << true << false;
    QTest::newRow("both") << false << false;
}

void TestReceiptReports::failureIsRedWhereverItStands()
{
    QFETCH(const bool, isTemplateGood);
    QFETCH(const bool, isLinesGood);
    ReportBench b;
    const SeenReport seen = b.report(isTemplateGood, isLinesGood);
    QCOMPARE(seen.text, reportOf(isTemplateGood ? kTemplateDone : kTemplateFailed,
                                 isLinesGood ? kLinesSaved : kLinesNotSaved));
    const QString first =
        isTemplateGood ? "Шаблон успешно загружен." : "При сохранении шаблона возникла ошибка.";
    const QString second =
        isLinesGood ? "Свободные строки сохранены." : "При сохранении свободных строк возникла ошибка.";
    // Each part stands there once, in order, and of the marks nothing is to be read.
    QString rest = seen.shown;
    QVERIFY2(rest.startsWith(first) && rest.endsWith(second), qPrintable(seen.shown));
    rest.remove(first).remove(second);
    QVERIFY2(rest.trimmed().isEmpty(), qPrintable(seen.shown));
    QCOMPARE(seen.isRed, !isTemplateGood || !isLinesGood);
    // Without a mark nothing makes the text rich, and its two lines are two.
    if (isTemplateGood && isLinesGood)
        QCOMPARE(seen.shown, first + '\n' + second);
}

void TestReceiptReports::nameOfTheDeviceIsNoMark_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("bold") << "<b>Тавр</b> & %1";
    QTest::newRow("red") << "<FONT COLOR=red>Тавр</FONT>";
    QTest::newRow("open mark") << "Тавр <FONT COLOR=";
}

void TestReceiptReports::nameOfTheDeviceIsNoMark()
{
    QFETCH(const QString, name);
    ReportBench b;
    b.device.set({{"modelName", name}});
    const SeenReport good = b.report(true, true);
    QCOMPARE(good.text, reportOf(kTemplateDone, kLinesSaved));
    QVERIFY(!good.isRed);
    const SeenReport mixed = b.report(true, false);
    QCOMPARE(mixed.text, reportOf(kTemplateDone, kLinesNotSaved));
    QVERIFY(mixed.isRed);
    QCOMPARE(b.log().filter(name).size(), 2); // literally, once for each exchange
}

void TestReceiptReports::receiptIsPrintedWhateverTheDeviceIsCalled()
{
    EmulatedReceipt b;
    b.device.set({{"modelName", "<FONT COLOR=red>%1</FONT> & <b>"}});
    const QString harm = b.harmOfGoodReceipt({.number = 1});
    QVERIFY2(harm.isEmpty(), qPrintable(harm));
    QCOMPARE(b.log().filter("<FONT COLOR=red>%1</FONT> & <b>").size(), 1);
}

QTEST_MAIN(TestReceiptReports)

#include "tst_receipt_reports.moc"
