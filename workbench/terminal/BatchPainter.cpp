#include "workbench/terminal/BatchPainter.h"

#include "workbench/system/Console.h"
#include "workbench/terminal/Progress.h"
#include "workbench/terminal/duration.h"

#include <fmt/format.h>

#include <cstdint>
#include <cstdio>

BatchPainter::BatchPainter(bool quiet) : paints(!quiet && Console::isTerminal(stderr)) {}

void BatchPainter::begins(const BatchProgress& /*progress*/) {
    start = last = Clock::now();
}

void BatchPainter::advances(const BatchProgress& progress) {
    const Clock::time_point now = Clock::now();
    if (paints && now - last >= betweenPaints) {
        fmt::print(stderr, "\r{}\x1b[K", line(progress, now));
        std::fflush(stderr);
        shown = true;
        last = now;
    }
}

void BatchPainter::end() {
    if (shown) {
        fmt::print(stderr, "\r\x1b[K");
        shown = false;
    }
}

// What was done before costs next to nothing, and says nothing of the rest.
std::string BatchPainter::line(const BatchProgress& progress, Clock::time_point now) const {
    const double passed = std::chrono::duration<double>(now - start).count();
    const std::int64_t done = progress.done + progress.failed, ended = done + progress.skipped;
    std::string text = fmt::format("{} of {} files", ended, progress.files);
    if (done > 0) {
        const double rate = static_cast<double>(done) / passed;
        text += fmt::format(", {:.3g} a second, {} left", rate,
                            duration(static_cast<double>(progress.files - ended) / rate));
    }
    return progress.failed > 0 ? text + fmt::format(", {} failed", progress.failed) : text;
}
