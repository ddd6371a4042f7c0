// A progress bar on standard error, if that is a terminal.
#pragma once

#include <QString>

#include <chrono>
#include <cstddef>

/// Seconds as 0:07, 12:05 or 3:00:00.
QString DurationText(double seconds);

/// The bar's text for a terminal with this number of columns: done and total, rate, remaining time.
QString ProgressText(size_t done, size_t total, double seconds, int columns);

class Progress
{
public:
    /// total: how much is to be done. Shows nothing unless it is wanted and standard error is a terminal.
    Progress(size_t total_, bool wanted);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Shows how much is done; at most ten times a second.
    void Show(size_t done);

    /// Removes the bar, to make room for a line of text or for good.
    void Hide();

private:
    using Clock = std::chrono::steady_clock;

    const size_t total;
    const bool shows;
    const Clock::time_point start = Clock::now();
    Clock::time_point next = start;
    bool visible = false;
};
