#include "bench/measure.h"
#include "bench/startreport.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kRounds = 21;
constexpr int kStepRounds = 11;
constexpr double kTimeBound = 1.5;
constexpr double kMemoryBound = 1.3;
const char* const kPeak = "peak KiB";
const char* const kPainted = "painted";

/// What a program has told: each step with its nanoseconds since the process was started, and the memory.
using Told = std::vector<std::pair<std::string, double>>;

Told start(const QString& program, const QStringList& arguments)
{
    QProcess process;
    const qint64 begin = StartReport::now();
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0) {
        std::fprintf(stderr, "%s does not start: %s\n", qPrintable(program),
                     process.readAllStandardError().constData());
        std::exit(2);
    }
    Told told;
    const QList<QByteArray> lines = process.readAllStandardOutput().split('\n');
    for (const QByteArray& line : lines) {
        const qsizetype tab = line.indexOf('\t');
        if (tab < 0)
            continue;
        const std::string name = line.left(tab).toStdString();
        const qint64 figure = line.mid(tab + 1).toLongLong();
        told.emplace_back(name, static_cast<double>(name == kPeak ? figure : figure - begin));
    }
    return told;
}

double figureOf(const Told& told, const std::string& name)
{
    for (const auto& [step, figure] : told) {
        if (step == name)
            return figure;
    }
    std::fprintf(stderr, "a program does not tell: %s\n", name.c_str());
    std::exit(2);
}

/// A program whose starts are measured: it adds its peak memory to a list.
class StartedProgram
{
public:
    StartedProgram(QString program, QStringList arguments)
        : m_program(std::move(program))
        , m_arguments(std::move(arguments))
    {
    }

    double secondsToPaint()
    {
        const Told told = start(m_program, m_arguments);
        m_peaks.push_back(figureOf(told, kPeak));
        return figureOf(told, kPainted) / 1e9;
    }

    /// Of each start but the first.
    std::vector<double> peaks() const { return {m_peaks.begin() + 1, m_peaks.end()}; }

private:
    QString m_program;
    QStringList m_arguments;
    std::vector<double> m_peaks;
};

/// The way of the start step by step, medians.
void reportSteps(const char* title, const QString& program, const QStringList& arguments)
{
    std::vector<Told> rounds;
    for (int i = 0; i < kStepRounds; ++i)
        rounds.push_back(start(program, arguments));
    std::printf("%s:", title);
    const Told& form = rounds.front();
    for (std::size_t step = 0; step < form.size(); ++step) {
        if (form[step].first == kPeak)
            continue;
        std::vector<double> spans;
        for (const Told& told : rounds)
            spans.push_back(told[step].second - (step == 0 ? 0 : told[step - 1].second));
        std::printf(" %s %.1f;", form[step].first.c_str(), medianOf(spans) / 1e6);
    }
    std::printf(" ms\n");
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir folder;
    const QString library = QStringLiteral(FPAX_PATH);
    if (!QFile::copy(library, folder.filePath(QFileInfo(library).fileName()))) {
        std::fprintf(stderr, "the driver's library cannot be copied\n");
        return 2;
    }
    qputenv("FPAX_HOME", QFile::encodeName(folder.path()));

    // Its first start, which writes the settings, is the round that does not count.
    StartedProgram subject(QStringLiteral(START_SUBJECT_PATH), {folder.path()});
    StartedProgram floor(QStringLiteral(START_FLOOR_PATH), {});
    MeasureTable table;
    table.compare(
        "start to the first painted window", kRounds, kTimeBound, [&] { return subject.secondsToPaint(); }, 1,
        [&] { return floor.secondsToPaint(); }, 1);
    table.compare("its peak memory, in KiB", kMemoryBound, subject.peaks(), floor.peaks());
    StartedProgram word(QStringLiteral(START_FLOOR_PATH), {QStringLiteral("word")});
    StartedProgram again(QStringLiteral(START_SUBJECT_PATH), {folder.path()});
    table.compare(
        "the start against a window with one word", kRounds, MeasureTable::kNoBound,
        [&] { return again.secondsToPaint(); }, 1, [&] { return word.secondsToPaint(); }, 1);
    table.compare("its peak memory, in KiB", MeasureTable::kNoBound, again.peaks(), word.peaks());
    reportSteps("the program", QStringLiteral(START_SUBJECT_PATH), {folder.path(), QStringLiteral("steps")});
    reportSteps("the empty window", QStringLiteral(START_FLOOR_PATH), {});
    return table.exitCode();
}
