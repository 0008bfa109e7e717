#include "bench/fontediting.h"
#include "bench/measure.h"
#include "bench/windowprobe_bench.h"

#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int kTurns = 100; // of the selection loop, timed as one
constexpr int kTickMs = 50;
constexpr int kStillMs = 3'600'000;

QStringList textsOf(const QListWidget& list)
{
    QStringList texts;
    for (int row = 0; row < list.count(); ++row)
        texts.append(list.item(row)->text());
    return texts;
}

TimedWork turnsOf(const std::function<void()>& turn)
{
    return [turn] {
        return secondsOf([&] {
            for (int i = 0; i < kTurns; ++i)
                turn();
        });
    };
}

/// False if the window and the measure do not draw the same.
bool compareEditing(MeasureTable& table, const WindowProbe& probe)
{
    FontEditing editing(probe);
    editing.change();
    const RecordedPicture picture = editing.shownPicture();
    table.compare(
        "font of a field: " + std::to_string(picture.countOfRects()) + " rects, " +
            std::to_string(picture.countOfLines()) + " lines, " + std::to_string(picture.countOfTexts()) +
            " texts",
        301, 1.5, [&] { return editing.change(); }, 1, [&] { return editing.drawPrimitives(); }, 1);
    table.report("  the commit", editing.commitTimes(), 1);
    table.report("  the turn with its rebuild", editing.turnTimes(), 1);
    table.report("  the painting", editing.paintTimes(), 1);
    return editing.isTrue();
}

void reportTurns(MeasureTable& table, const WindowProbe& probe)
{
    const TimedWork all = turnsOf([&] { probe.timerTick(); });
    const TimedWork query = turnsOf([&] { probe.scene().selectedItems(); });
    const TimedWork arming =
        turnsOf([&] { QTimer::singleShot(kTickMs, &probe.window(), SLOT(timerTick())); });
    constexpr int kRounds = 15;
    table.report("turn of the selection loop, no change", kRounds, all, kTurns);
    table.report("  its query of the selection", kRounds, query, kTurns);
    table.report("  its arming of a single shot", kRounds, arming, kTurns);
}

/// False if the two lists do not show the same.
bool compareFieldList(MeasureTable& table, const WindowProbe& probe)
{
    auto& list = probe.child<QListWidget>("listWidget");
    probe.child<QPushButton>("btnFiltrShowAll").setChecked(true);
    const QStringList texts = textsOf(list);

    QListWidget bareList;
    bareList.resize(list.size());
    bareList.setHorizontalScrollBarPolicy(list.horizontalScrollBarPolicy());
    bareList.show();
    const auto settle = [] { QCoreApplication::processEvents(); };
    const std::string count = std::to_string(texts.size());
    constexpr int kRounds = 301;
    constexpr double kBound = 1.3;
    table.compare(
        "filling the empty field list, " + count + " fields", kRounds, kBound,
        [&] {
            list.clear();
            settle();
            return secondsOf([&] { probe.updateFilterOut(); });
        },
        1,
        [&] {
            bareList.clear();
            settle();
            return secondsOf([&] { bareList.addItems(texts); });
        },
        1);
    table.compare(
        "filling the full field list anew", kRounds, kBound,
        [&] {
            settle();
            return secondsOf([&] { probe.updateFilterOut(); });
        },
        1,
        [&] {
            settle();
            return secondsOf([&] {
                bareList.clear();
                bareList.addItems(texts);
            });
        },
        1);
    return texts.size() == 160 && textsOf(list) == textsOf(bareList);
}

} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);

    MainWindow window;
    const WindowProbe probe(window);
    // Each turn that is called from here arms one timer more. They must not go off.
    probe.setSelectionTick(kStillMs);
    window.show();
    if (!probe.openSample())
        return 2;
    probe.child<QPushButton>("btnScaleX20").click();
    probe.child<QPushButton>("btnScaleX20").click();

    MeasureTable table;
    const bool isEditingTrue = compareEditing(table, probe);
    const bool isListTrue = compareFieldList(table, probe);
    probe.setSelectionTick(kTickMs);
    reportTurns(table, probe);
    if (!isEditingTrue || !isListTrue) {
        std::fprintf(stderr, "subject and floor do not show the same\n");
        return 2;
    }
    return table.exitCode();
}
