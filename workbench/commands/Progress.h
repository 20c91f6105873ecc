#pragma once

#include <chrono>
#include <cstdint>

class ModuleRun;

// Says on standard error how long a run of a single round will take, if that is long. Several
// rounds show their progress instead.
void tellEstimate(const ModuleRun& moduleRun);

// A line on the terminal that tells how far a run of several rounds has come; nothing where
// standard error is no terminal.
class Progress {
public:
    Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();  // clears the line

    void show(std::int64_t done, std::int64_t rounds);

private:
    bool terminal, shown = false;
    std::chrono::steady_clock::time_point due;
};
