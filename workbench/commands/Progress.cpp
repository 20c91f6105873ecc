#include "workbench/commands/Progress.h"

#include <fmt/format.h>

#include <cstdio>
#include <unistd.h>

static constexpr auto beforeFirst = std::chrono::milliseconds(500);
static constexpr auto betweenShows = std::chrono::milliseconds(100);

Progress::Progress()
    : terminal(isatty(STDERR_FILENO) != 0), due(std::chrono::steady_clock::now() + beforeFirst) {}

Progress::~Progress() {
    if (shown) {
        fmt::print(stderr, "\r\x1b[K");
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
