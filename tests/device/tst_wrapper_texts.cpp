#include "support/recordingdriver.h"

#include "device/qlumfpax.h"

#include <QTest>

#include <algorithm>
#include <climits>
#include <string>

using LUM::Fpax::IFpax;
using BaseWrapper = QLumInterface<IFpax>;

namespace {

/// The three ways a text comes from the driver; each takes its own getter.
enum class Way { Buffer, Setting, Mapping };

QString getterOf(Way way)
{
    switch (way) {
    case Way::Buffer:
        return QStringLiteral("getCaption");
    case Way::Setting:
        return QStringLiteral("getSingleSetting");
    case Way::Mapping:
        return QStringLiteral("getSingleMapping");
    }
    return {};
}

QString readBy(Way way, BaseWrapper& wrapper)
{
    switch (way) {
    case Way::Buffer:
        return wrapper.getBuff(&IFpax::getCaption);
    case Way::Setting:
        return wrapper.getSetting("Порт");
    case Way::Mapping:
        return wrapper.getMapping("Порт");
    }
    return {};
}

QString callOf(Way way, int capacity)
{
    const QString name = way == Way::Buffer ? QString() : QStringLiteral("\"Порт\", ");
    return getterOf(way) + u'(' + name + QString::number(capacity) + u')';
}

void addWays()
{
    QTest::addColumn<int>("wayNumber");
    QTest::newRow("getBuff") << static_cast<int>(Way::Buffer);
    QTest::newRow("getSetting") << static_cast<int>(Way::Setting);
    QTest::newRow("getMapping") << static_cast<int>(Way::Mapping);
}

/// A text of this length without two equal neighbours.
QString longText(int length)
{
    QString text;
    text.reserve(length);
    for (int i = 0; i < length; ++i)
        text += QChar(u'а' + i % 32);
    return text;
}

} // namespace

/// Texts between the program and the driver, of any length, also from a driver that does as it likes.
class TestWrapperTexts : public QObject
{
    Q_OBJECT

private slots:
    void textOfAnyLengthComesWhole_data();
    void textOfAnyLengthComesWhole();
    void textOfManyCharactersComesWhole();
    void charactersOutsideTheFirstPlaneComeWhole();
    void textEndsAtItsFirstZero_data() { addWays(); }
    void textEndsAtItsFirstZero();
    void nothingToReadIsEmpty_data();
    void nothingToReadIsEmpty();
    void bufferIsZeroed_data() { addWays(); }
    void bufferIsZeroed();
    void fullBufferWithoutAZeroEndsThere_data() { addWays(); }
    void fullBufferWithoutAZeroEndsThere();
    void secondResultIsIgnored_data();
    void secondResultIsIgnored();
    void secondBufferWithoutAZeroEndsThere_data() { addWays(); }
    void secondBufferWithoutAZeroEndsThere();
    void lengthBeyondAllReasonIsNothing_data();
    void lengthBeyondAllReasonIsNothing();
    void failureIsNotReported_data() { addWays(); }
    void failureIsNotReported();
};

void TestWrapperTexts::textOfAnyLengthComesWhole_data()
{
    QTest::addColumn<int>("wayNumber");
    QTest::addColumn<bool>("base");
    QTest::addColumn<int>("length");
    for (const Way way : {Way::Buffer, Way::Setting, Way::Mapping}) {
        for (const bool base : {true, false}) {
            const int capacity = base ? 1024 : 4096;
            for (const int length : {0, 1, capacity - 1, capacity, capacity + 1, 100'000}) {
                const QString name = getterOf(way) + (base ? " base " : " fpax ") + QString::number(length);
                QTest::newRow(qPrintable(name)) << static_cast<int>(way) << base << length;
            }
        }
    }
}

void TestWrapperTexts::textOfAnyLengthComesWhole()
{
    QFETCH(const int, wayNumber);
    QFETCH(const bool, base);
    QFETCH(const int, length);
    const Way way = static_cast<Way>(wayNumber);
    const int capacity = base ? 1024 : 4096;
    RecordingDriver driver;
    const QString text = longText(length);
    driver.setText(getterOf(way), text);
    BaseWrapper baseWrapper(&driver);
    QLumFpax fpaxWrapper(&driver);

    QCOMPARE(readBy(way, base ? baseWrapper : fpaxWrapper), text);

    QStringList calls(callOf(way, capacity));
    if (length > capacity)
        calls += callOf(way, length + 1);
    QCOMPARE(driver.calls(), calls);
}

void TestWrapperTexts::textOfManyCharactersComesWhole()
{
    constexpr int length = 1 << 20;
    RecordingDriver driver;
    const QString text = longText(length);
    driver.setText("getCaption", text);
    QLumFpax wrapper(&driver);

    QVERIFY(wrapper.getBuff(&IFpax::getCaption) == text);

    QCOMPARE(driver.calls(), QStringList({"getCaption(4096)", "getCaption(1048577)"}));
}

void TestWrapperTexts::charactersOutsideTheFirstPlaneComeWhole()
{
    const QString text = QStringLiteral("Ж🧾 %1\tё\n");
    RecordingDriver driver;
    driver.setText("getCaption", text);
    driver.mappings.insert(text, text);
    QLumFpax wrapper(&driver);

    QCOMPARE(wrapper.getBuff(&IFpax::getCaption), text);
    QCOMPARE(wrapper.getMapping(text), text);
    wrapper.setSetting(text, text);
    QCOMPARE(driver.settings.value(text), text);
    QCOMPARE(wrapper.getSetting(text), text);
}

void TestWrapperTexts::textEndsAtItsFirstZero()
{
    QFETCH(const int, wayNumber);
    const Way way = static_cast<Way>(wayNumber);
    RecordingDriver driver;
    driver.setTextSource(getterOf(way), [](wchar_t* buffer, int) {
        const std::wstring text(L"до\0после", 8);
        text.copy(buffer, text.size());
        return 8;
    });
    QLumFpax wrapper(&driver);

    QCOMPARE(readBy(way, wrapper), QString("до"));
}

void TestWrapperTexts::nothingToReadIsEmpty_data()
{
    QTest::addColumn<int>("wayNumber");
    QTest::addColumn<int>("status");
    for (const Way way : {Way::Buffer, Way::Setting, Way::Mapping}) {
        for (const int status : {0, -1, -4096, INT_MIN}) {
            const QString name = getterOf(way) + u' ' + QString::number(status);
            QTest::newRow(qPrintable(name)) << static_cast<int>(way) << status;
        }
    }
}

void TestWrapperTexts::nothingToReadIsEmpty()
{
    QFETCH(const int, wayNumber);
    QFETCH(const int, status);
    const Way way = static_cast<Way>(wayNumber);
    RecordingDriver driver;
    // It leaves something in the buffer all the same.
    driver.setTextSource(getterOf(way), [status](wchar_t* buffer, int) {
        buffer[0] = L'?';
        return status;
    });
    QLumFpax wrapper(&driver);

    QCOMPARE(readBy(way, wrapper), QString());

    QCOMPARE(driver.calls(), QStringList(callOf(way, 4096)));
}

void TestWrapperTexts::bufferIsZeroed()
{
    QFETCH(const int, wayNumber);
    const Way way = static_cast<Way>(wayNumber);
    RecordingDriver driver;
    // Says that there is a text, and writes a part of it without a zero behind.
    driver.setTextSource(getterOf(way), [](wchar_t* buffer, int) {
        buffer[0] = L'Ч';
        buffer[1] = L'К';
        return 4096;
    });
    QLumFpax wrapper(&driver);

    QCOMPARE(readBy(way, wrapper), QString("ЧК"));
}

void TestWrapperTexts::fullBufferWithoutAZeroEndsThere()
{
    QFETCH(const int, wayNumber);
    const Way way = static_cast<Way>(wayNumber);
    for (const int length : {1, 4095, 4096}) {
        RecordingDriver driver;
        driver.setTextSource(getterOf(way), [length](wchar_t* buffer, int capacity) {
            std::fill_n(buffer, capacity, L'ю');
            return length;
        });
        QLumFpax wrapper(&driver);

        QCOMPARE(readBy(way, wrapper), QString(4096, u'ю'));

        QCOMPARE(driver.calls(), QStringList(callOf(way, 4096)));
    }
}

void TestWrapperTexts::secondResultIsIgnored_data()
{
    QTest::addColumn<int>("wayNumber");
    QTest::addColumn<int>("second");
    for (const Way way : {Way::Buffer, Way::Setting, Way::Mapping}) {
        for (const int second : {0, -1, 1, 100'000, INT_MAX}) {
            const QString name = getterOf(way) + u' ' + QString::number(second);
            QTest::newRow(qPrintable(name)) << static_cast<int>(way) << second;
        }
    }
}

void TestWrapperTexts::secondResultIsIgnored()
{
    QFETCH(const int, wayNumber);
    QFETCH(const int, second);
    const Way way = static_cast<Way>(wayNumber);
    RecordingDriver driver;
    const QString text = longText(5000);
    driver.setTextSource(getterOf(way), [&](wchar_t* buffer, int capacity) {
        const int length = textSource(text)(buffer, capacity);
        return driver.calls().size() == 1 ? length : second;
    });
    QLumFpax wrapper(&driver);

    QCOMPARE(readBy(way, wrapper), text);

    QCOMPARE(driver.calls(), QStringList({callOf(way, 4096), callOf(way, 5001)}));
}

void TestWrapperTexts::secondBufferWithoutAZeroEndsThere()
{
    QFETCH(const int, wayNumber);
    const Way way = static_cast<Way>(wayNumber);
    RecordingDriver driver;
    driver.setTextSource(getterOf(way), [](wchar_t* buffer, int capacity) {
        std::fill_n(buffer, capacity, L'ю');
        return 5000;
    });
    QLumFpax wrapper(&driver);

    QCOMPARE(readBy(way, wrapper), QString(5001, u'ю'));
}

void TestWrapperTexts::lengthBeyondAllReasonIsNothing_data()
{
    QTest::addColumn<int>("wayNumber");
    QTest::addColumn<int>("length");
    for (const Way way : {Way::Buffer, Way::Setting, Way::Mapping}) {
        for (const int length : {INT_MAX, INT_MAX - 1, INT_MAX / 4, (1 << 24) + 1}) {
            const QString name = getterOf(way) + u' ' + QString::number(length);
            QTest::newRow(qPrintable(name)) << static_cast<int>(way) << length;
        }
    }
}

void TestWrapperTexts::lengthBeyondAllReasonIsNothing()
{
    QFETCH(const int, wayNumber);
    QFETCH(const int, length);
    const Way way = static_cast<Way>(wayNumber);
    RecordingDriver driver;
    driver.setTextSource(getterOf(way), [length](wchar_t*, int) { return length; });
    QLumFpax wrapper(&driver);

    QCOMPARE(readBy(way, wrapper), QString());

    QCOMPARE(driver.calls(), QStringList(callOf(way, 4096)));
}

void TestWrapperTexts::failureIsNotReported()
{
    QFETCH(const int, wayNumber);
    const Way way = static_cast<Way>(wayNumber);
    RecordingDriver driver;
    driver.setText(getterOf(way), "текст");
    driver.answer(getterOf(way), {-1, -3});
    driver.resultCode = -3;
    QLumFpax wrapper(&driver);

    QCOMPARE(readBy(way, wrapper), QString());

    QCOMPARE(driver.calls(), QStringList(callOf(way, 4096)));
}

QTEST_APPLESS_MAIN(TestWrapperTexts)

#include "tst_wrapper_texts.moc"
