#include "bench/measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

constexpr double kNanosecondsPerSecond = 1e9;

} // namespace

double medianOf(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double secondsOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    return elapsed.count();
}

MeasureTable::MeasureTable()
{
    std::printf("%-50s %12s %12s %7s %7s\n", "measure", "subject, ns", "floor, ns", "ratio", "bound");
}

void MeasureTable::compare(const std::string& name, int rounds, double bound, const TimedWork& subject,
                           double subjectUnits, const TimedWork& floor, double floorUnits)
{
    subject();
    floor();
    std::vector<double> subjectTimes;
    std::vector<double> floorTimes;
    for (int round = 0; round < rounds; ++round) {
        subjectTimes.push_back(subject());
        floorTimes.push_back(floor());
    }
    const double subjectTime = medianOf(subjectTimes) / subjectUnits * kNanosecondsPerSecond;
    const double floorTime = medianOf(floorTimes) / floorUnits * kNanosecondsPerSecond;
    printRow(name, bound, subjectTime, floorTime);
}

void MeasureTable::compare(const std::string& name, double bound, const std::vector<double>& subjectFigures,
                           const std::vector<double>& floorFigures)
{
    printRow(name, bound, medianOf(subjectFigures), medianOf(floorFigures));
}

void MeasureTable::printRow(const std::string& name, double bound, double subject, double floor)
{
    const double ratio = subject / floor;
    const bool held = ratio <= bound;
    m_allHeld = m_allHeld && held;
    std::printf("%-50s %12.1f %12.1f %7.3f", name.c_str(), subject, floor, ratio);
    if (bound == kNoBound)
        std::printf(" %7s\n", "none");
    else
        std::printf(" %7.2f%s\n", bound, held ? "" : "  OVER");
    std::fflush(stdout);
}

void MeasureTable::report(const std::string& name, int rounds, const TimedWork& work, double units)
{
    work();
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round)
        times.push_back(work());
    report(name, times, units);
}

void MeasureTable::report(const std::string& name, const std::vector<double>& times, double units)
{
    std::printf("%-50s %12.1f\n", name.c_str(), medianOf(times) / units * kNanosecondsPerSecond);
    std::fflush(stdout);
}
