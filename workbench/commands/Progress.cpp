#include "workbench/commands/Progress.h"

#include "kernels/InstructionSet.h"
#include "workbench/module/ModuleRun.h"
#include "workbench/system/Console.h"

#include <fmt/format.h>

#include <cstdio>

static constexpr auto beforeFirst = std::chrono::milliseconds(500);
static constexpr auto betweenShows = std::chrono::milliseconds(100);

// About what a core of 2024 does, at 8, 4 or 2 side by side.
static double multiplyAddsPerSecond() {
    switch (kernels::instructionSet()) {
        case kernels::InstructionSet::avx512:
            return 4e10;
        case kernels::InstructionSet::avx2:
            return 2e10;
        default:
            return 1e10;
    }
}

void tellEstimate(const ModuleRun& moduleRun) {
    constexpr double worthTelling = 10.0;
    const double seconds = moduleRun.work() / multiplyAddsPerSecond();
    if (moduleRun.rounds() == 1 && seconds > worthTelling) {
        fmt::print(stderr, "{:.2g} multiply-adds to do at most, about {:.0f} seconds\n",
                   moduleRun.work(), seconds);
    }
}

Progress::Progress()
    : terminal(Console::isTerminal(stderr)), due(std::chrono::steady_clock::now() + beforeFirst) {}

Progress::~Progress() {
    if (shown) {
        fmt::print(stderr, "\r\x1b[K");
    }
}

void Progress::announce(const std::string& work) {
    if (terminal) {
        fmt::print(stderr, "{}", work);
        std::fflush(stderr);
        shown = true;
    }
}

void Progress::show(std::int64_t done, std::int64_t rounds) {
    const auto now = std::chrono::steady_clock::now();
    if (!terminal || rounds < 2 || now < due) {
        return;
    }
    fmt::print(stderr, "\rblock {} of {}, {} %", done, rounds, 100 * done / rounds);
    std::fflush(stderr);
    shown = true;
    due = now + betweenShows;
}
