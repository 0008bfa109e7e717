#pragma once

#include <QObject>

#include <functional>
#include <string>
#include <vector>

class QWidget;

/// What a program tells about its start: when it reached each step, by the steady clock, which all processes share,
/// and its peak memory.
class StartReport
{
public:
    /// A step has been reached now.
    void mark(const char* step);
    void mark(const char* step, qint64 ns) { m_marks.push_back({step, ns}); }

    /// Prints a line for each step and one for the memory, and ends the process without cleaning up.
    [[noreturn]] void finish() const;

    static qint64 now();

private:
    struct Mark
    {
        std::string step;
        qint64 ns;
    };
    std::vector<Mark> m_marks;
};

/// Runs `action` when `window` and everything in it has been painted for the first time.
class FirstPaint : public QObject
{
    Q_OBJECT

public:
    FirstPaint(QWidget& window, std::function<void()> action);

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    std::function<void()> m_action;
};
