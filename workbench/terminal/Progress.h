#pragma once

#include "workbench/jobs/JobObserver.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

// Lines that are painted anew stand at least as long.
inline constexpr auto betweenPaints = std::chrono::milliseconds(200);

// A line on the terminal that says how far a job has come and how long it will take; nothing where
// standard error is not a terminal. Once a job has taken a moment the line is painted anew every
// now and then, whether the job reports or not.
class Progress final : public JobObserver {
public:
    // what: in front of the line, "spectral"; empty: nothing. quiet: no line, and no estimate.
    explicit Progress(std::string what, bool quiet);
    // Makes the first interrupt from the terminal stop the job instead of the program.
    void stopOnInterrupt();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() override;

    // A single round that will take long is announced, also where there is no terminal.
    void chooses(double seconds) override;
    void begins(const JobSize& jobSize) override;
    bool advances(const JobProgress& jobProgress) override;

    // Clears the line, before something else is printed.
    void end();

private:
    using Clock = std::chrono::steady_clock;

    void paint();
    [[nodiscard]] std::string line() const;

    std::string name;
    bool silent, shown = false, ended = false, stops = false;
    Clock::time_point start = Clock::now();
    std::mutex guard;  // of what follows and of ended
    JobSize size;
    JobProgress progress;
    std::condition_variable ending;
    std::thread painter;
};
