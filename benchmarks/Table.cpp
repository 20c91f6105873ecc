#include "benchmarks/Table.h"

#include "benchmarks/PeakJob.h"
#include "benchmarks/allocations.h"
#include "benchmarks/timing.h"

#include <fmt/core.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <limits>
#include <stdexcept>

double measurePeak() {
    PeakJob job;
    const Problem nothing;
    return job.flops() / secondsOf({{&job, &nothing, false, 0.0}}).front();
}

static bool sameBits(const std::vector<double>& a, const std::vector<double>& b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

// The largest difference over the largest number of a; infinite if there is no saying.
static double relativeError(const std::vector<double>& a, const std::vector<double>& b) {
    if (a.size() != b.size()) {
        return std::numeric_limits<double>::infinity();
    }
    double difference = 0.0, largest = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!std::isfinite(a[i]) || !std::isfinite(b[i])) {
            return std::numeric_limits<double>::infinity();
        }
        difference = std::max(difference, std::abs(a[i] - b[i]));
        largest = std::max(largest, std::abs(a[i]));
    }
    return difference / largest;
}

namespace {

// The jobs of a line, the project's first.
class Line {
public:
    Line(const Table& someTable, Size someSize)
        : table(someTable), size(someSize), problem(table.problem(size)) {}

    void run() {
        const std::vector<double> expected = start(table.project);
        for (const Rival& rival : table.rivals) {
            const std::vector<double> found = start(rival.make);
            const double error = relativeError(expected, found);
            if (rival.sameBits ? !sameBits(expected, found) : !(error <= table.bound(size))) {
                throw std::runtime_error(fmt::format(
                    "{} {}: the result of {} is another one, relative error {:.2g}, allowed {:.2g}",
                    table.name, table.label(size), rival.name, error,
                    rival.sameBits ? 0.0 : table.bound(size)));
            }
        }
        if (table.operands == Table::Operands::zeros) {
            std::fill(problem.a.begin(), problem.a.end(), 0.0);
            std::fill(problem.b.begin(), problem.b.end(), 0.0);
        }
        seconds = secondsOf(timed);
    }

    void print(double peak) const;

private:
    // Makes a job, runs it once and gives its result.
    std::vector<double> start(const MakeJob& make) {
        using Clock = std::chrono::steady_clock;
        Job& job = *jobs.emplace_back(make(size));
        job.load(problem);
        const std::size_t before = allocatedBytes();
        const Clock::time_point begin = Clock::now();
        job.run();
        const std::chrono::duration<double> taken = Clock::now() - begin;
        if (timed.empty()) {
            allocated = allocatedBytes() - before;
        }
        timed.push_back(
            {&job, &problem, table.operands == Table::Operands::reloaded, taken.count()});
        return job.result();
    }

    const Table& table;
    Size size;
    Problem problem;
    std::vector<std::unique_ptr<Job>> jobs;
    std::vector<Timed> timed;
    std::vector<double> seconds;
    std::size_t allocated = 0;
};

}  // namespace

// Three digits and a unit.
static std::string shortly(double value, const std::vector<const char*>& units) {
    std::size_t unit = 0;
    for (; value >= 999.5 && unit + 1 < units.size(); ++unit) {
        value /= 1000.0;
    }
    const int decimals = value == std::floor(value) ? 0 : value < 9.995 ? 2 : value < 99.95 ? 1 : 0;
    return fmt::format("{:.{}f} {}", value, decimals, units[unit]);
}

static std::string ratio(double value) {
    return fmt::format("{:.{}f}", value, value < 9.995 ? 2 : value < 99.95 ? 1 : 0);
}

static constexpr const char* fixedColumns = "{:>13} {:>9} {:>8} {:>8} {:>10}";

static std::size_t widthOf(const Rival& rival) {
    return std::max<std::size_t>(rival.name.size(), 5) + 2;
}

void Line::print(double peak) const {
    const double rate = table.flops(size) / seconds[0];
    fmt::print(fixedColumns, table.label(size), shortly(seconds[0] * 1e9, {"ns", "us", "ms", "s"}),
               fmt::format("{:.1f}", rate * 1e-9), fmt::format("{:.0f} %", 100.0 * rate / peak),
               allocated == 0 ? "-" : shortly(static_cast<double>(allocated), {"B", "kB", "MB"}));
    for (std::size_t i = 0; i < table.rivals.size(); ++i) {
        fmt::print("{:>{}}", ratio(seconds[i + 1] / seconds[0]), widthOf(table.rivals[i]));
    }
    fmt::print("\n");
    std::fflush(stdout);
}

void print(const Table& table, double peak) {
    fmt::print("\n{}: {}\n", table.name, table.title);
    fmt::print("{:>52}  times as fast as\n", "");
    fmt::print(fixedColumns, "size", "time", "Gflop/s", "of peak", "allocates");
    for (const Rival& rival : table.rivals) {
        fmt::print("{:>{}}", rival.name, widthOf(rival));
    }
    fmt::print("\n");
    for (const Size size : table.sizes) {
        Line line(table, size);
        line.run();
        line.print(peak);
    }
}
