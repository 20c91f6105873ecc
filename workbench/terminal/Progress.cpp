#include "workbench/terminal/Progress.h"

#include "workbench/system/Console.h"
#include "workbench/system/endings.h"
#include "workbench/terminal/duration.h"

#include <fmt/format.h>

#include <cstdio>
#include <utility>

// Shorter runs show no line, which would only flicker.
static constexpr auto beforeFirst = std::chrono::milliseconds(500);
static constexpr double worthTelling = 10.0;  // seconds that are told of beforehand

Progress::Progress(std::string what, bool quiet) : name(std::move(what)), silent(quiet) {}

void Progress::stopOnInterrupt() {
    stops = true;
    noteFirstInterrupt();
}

Progress::~Progress() {
    end();
}

void Progress::end() {
    if (painter.joinable()) {
        {
            const std::lock_guard lock(guard);
            ended = true;
        }
        ending.notify_one();
        painter.join();
    }
    if (shown) {
        fmt::print(stderr, "\r\x1b[K");
        shown = false;
    }
}

void Progress::chooses(double seconds) {
    if (!silent && seconds > worthTelling) {
        fmt::print(stderr, "choosing from the data takes about {:.0f} seconds\n", seconds);
    }
}

void Progress::begins(const JobSize& jobSize) {
    {
        const std::lock_guard lock(guard);
        size = jobSize;
    }
    if (silent) {
        return;
    }
    if (jobSize.rounds == 1 && jobSize.seconds > worthTelling) {
        fmt::print(stderr, "{:.2g} multiply-adds to do at most, about {:.0f} seconds\n",
                   jobSize.multiplyAdds, jobSize.seconds);
    }
    if (Console::isTerminal(stderr) && !painter.joinable()) {
        painter = std::thread([this] { paint(); });
    }
}

bool Progress::advances(const JobProgress& jobProgress) {
    const std::lock_guard lock(guard);
    progress = jobProgress;
    return !(stops && interrupted());
}

// A thread of its own, since a transform of a long signal reports nothing until it ends.
void Progress::paint() {
    std::unique_lock lock(guard);
    auto wait = beforeFirst;
    while (!ending.wait_for(lock, wait, [this] { return ended; })) {
        fmt::print(stderr, "\r{}\x1b[K", line());
        std::fflush(stderr);
        shown = true;
        wait = betweenPaints;
    }
}

// The time left follows from the share that is done; before the first step, from the estimate.
std::string Progress::line() const {
    const double passed = std::chrono::duration<double>(Clock::now() - start).count();
    std::string text = name.empty() ? "" : name + ": ";
    if (progress.rounds > 1) {
        text += fmt::format("block {} of {}, ", progress.round + 1, progress.rounds);
    }
    if (progress.most > 0) {
        text += fmt::format("step {} of at most {}, ", progress.loop, progress.most);
    }
    if (progress.share > 0.0) {
        return text + fmt::format("{:.0f} %, {} left", 100.0 * progress.share,
                                  duration(passed * (1.0 / progress.share - 1.0)));
    }
    return text + duration(passed) +
           (size.seconds > passed ? fmt::format(", {} left", duration(size.seconds - passed)) : "");
}
