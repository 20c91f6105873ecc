#pragma once

#include "workbench/batch/BatchRun.h"

#include <chrono>
#include <string>

// A line on the terminal that says how far a batch has come, how fast it goes and how long it will
// take; nothing where standard error is not a terminal.
class BatchPainter final : public BatchObserver {
public:
    explicit BatchPainter(bool quiet);

    void begins(const BatchProgress& progress) override;
    void advances(const BatchProgress& progress) override;

    // Clears the line, before something else is printed.
    void end();

private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] std::string line(const BatchProgress& progress, Clock::time_point now) const;

    bool paints, shown = false;
    Clock::time_point start, last;
};
