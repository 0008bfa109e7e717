#pragma once

#include <functional>
#include <limits>
#include <string>
#include <vector>

/// Work that times itself: it prepares, runs what is measured, cleans up, and returns the seconds of the
/// middle part alone.
using TimedWork = std::function<double()>;

/// Seconds that `work` takes by the steady clock.
double secondsOf(const std::function<void()>& work);

/// The value in the middle; `values` must not be empty.
double medianOf(std::vector<double> values);

/// A table of measures, each of them a ratio of two times that were taken in the same run.
class MeasureTable
{
public:
    /// The bound of a measure that only informs.
    static constexpr double kNoBound = std::numeric_limits<double>::infinity();

    /// Prints the head of the table.
    MeasureTable();

    /// Runs `subject` and `floor` in turn for `rounds` rounds, after one round that does not count, and prints
    /// a row with the medians. Both times are divided by their number of units, in nanoseconds. The measure
    /// holds if the first median is at most `bound` times the second.
    void compare(const std::string& name, int rounds, double bound, const TimedWork& subject,
                 double subjectUnits, const TimedWork& floor, double floorUnits);

    /// The same for figures of any unit that have been taken.
    void compare(const std::string& name, double bound, const std::vector<double>& subjectFigures,
                 const std::vector<double>& floorFigures);

    /// Runs `work` as above and prints a row with its median, which has no bound.
    void report(const std::string& name, int rounds, const TimedWork& work, double units);

    /// The same for times in seconds that have been taken.
    void report(const std::string& name, const std::vector<double>& times, double units);

    /// What `main` returns: 0 if all measures held, else 1.
    int exitCode() const { return m_allHeld ? 0 : 1; }

private:
    void printRow(const std::string& name, double bound, double subject, double floor);

    bool m_allHeld = true;
};
