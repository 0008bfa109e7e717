#include "bench/measure.h"
#include "bench/templatefile.h"

#include "model/bd_t20items.h"
#include "model/templatetext.h"
#include "view/guimaket.h"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kSmall = 160;
constexpr int kMiddle = 16000;
constexpr int kLarge = 160000;

/// The decimal columns of a record; column 1, the mask, is hexadecimal.
constexpr int kDecimalColumns[] = {0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22};

void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "the measure would be worthless: %s\n", what);
    std::exit(2);
}

/// From the bytes of a file to a layout ready to be drawn, into models that are new each time.
double readTemplate(const QByteArray& bytes, int count)
{
    BD_T20Items bd;
    GUIMaket maket;
    maket.pBD = &bd;
    maket.setBlockTitleEnabled(true);
    int errors = -1;
    int nothing = 1;
    const double seconds = secondsOf([&] {
        const TemplateText text(bytes);
        QList<int> votes;
        bd.LoadFrom_AnalizeType(text.lines(), votes);
        bd.LoadFromListV04(text.lines());
        QStringList messages;
        errors = bd.CheckBDCorrect(maket.blockCount, messages, false);
        bd.ReComputeBDBlocks();
        nothing = maket.ReComputeBDBlocks(true);
    });
    require(errors == 0 && nothing == 0 && bd.items.size() == count, "the template was not read whole");
    return seconds;
}

/// The same for `times` models, one after the other.
double readTemplates(const QByteArray& bytes, int count, int times)
{
    double seconds = 0;
    for (int i = 0; i < times; ++i)
        seconds += readTemplate(bytes, count);
    return seconds;
}

/// The least that any reader of this toolkit has to do: decode, split once, convert once, keep nothing.
double splitAndConvert(const QByteArray& bytes)
{
    unsigned int sum = 0;
    const double seconds = secondsOf([&] {
        const QString text = QString::fromUtf8(bytes);
        const QStringList lines = text.split(u'\n');
        for (const auto& line : lines) {
            const QStringList columns = line.split(u';');
            if (columns.size() < 26)
                continue;
            sum += columns.at(1).toUInt(nullptr, 16);
            for (const int column : kDecimalColumns)
                sum += static_cast<unsigned int>(columns.at(column).toInt());
        }
    });
    require(sum != 0, "the floor converted nothing");
    return seconds;
}

} // namespace

int main()
{
    const QByteArray small = makeTemplateFile(kSmall);
    const QByteArray middle = makeTemplateFile(kMiddle);
    const QByteArray large = makeTemplateFile(kLarge);

    constexpr int kSmallTimes = kLarge / kSmall; // so that both rounds last about as long
    MeasureTable table;
    table.compare(
        "reading, a record of 16 000", 31, 1.0, [&] { return readTemplate(middle, kMiddle); }, kMiddle,
        [&] { return splitAndConvert(middle); }, kMiddle);
    table.compare(
        "reading, a record of 160 000 / of 160", 15, 1.2, [&] { return readTemplate(large, kLarge); }, kLarge,
        [&] { return readTemplates(small, kSmall, kSmallTimes); }, kSmall * kSmallTimes);
    return table.exitCode();
}
