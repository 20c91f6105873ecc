#pragma once

#include <chrono>
#include <cstdint>
#include <string>

class ModuleRun;

// Says on standard error how long a run of a single round will take, if that is long. Several
// rounds show their progress instead.
void tellEstimate(const ModuleRun& moduleRun);

// A line on the terminal that tells how far a run has come; nothing where standard error is no
// terminal.
class Progress {
public:
    Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();  // clears the line

    // Of a run of several rounds, once it has taken a moment.
    void show(std::int64_t done, std::int64_t rounds);
    // What is being done, at once.
    void announce(const std::string& work);

private:
    bool terminal, shown = false;
    std::chrono::steady_clock::time_point due;
};
