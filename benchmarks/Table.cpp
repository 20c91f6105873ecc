#include "benchmarks/Table.h"

#include "benchmarks/allocations.h"
#include "benchmarks/timing.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <optional>
#include <stdexcept>

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

// Three digits and a unit.
static std::string shortly(double value, const std::vector<const char*>& units) {
    std::size_t unit = 0;
    for (; value >= 999.5 && unit + 1 < units.size(); ++unit) {
        value /= 1000.0;
    }
    const int decimals = value == std::floor(value) ? 0 : value < 9.995 ? 2 : value < 99.95 ? 1 : 0;
    return fmt::format("{:.{}f} {}", value, decimals, units[unit]);
}

static std::string percent(const Figure& share) {
    return fmt::format("{:.0f}({:.0f}) %", 100.0 * share.value, 100.0 * share.spread);
}

namespace {

// The jobs of a line, the project's first and that of the peak second.
class Line {
public:
    Line(const Table& someTable, Size someSize, PeakJob& peak)
        : table(someTable), size(someSize), problem(table.problem(size)), peakFlops(peak.flops()) {
        const std::vector<double> expected = start(table.project, false);
        timed.push_back({&peak, &problem, false, false, peakFlops / peak.rate()});
        for (const Rival& rival : table.rivals) {
            if (size.n > rival.longest) {
                places.emplace_back();
                continue;
            }
            places.emplace_back(timed.size());
            check(rival, expected, start(rival.make, rival.sameBits));
        }
        if (table.operands == Table::Operands::zeros) {
            std::fill(problem.a.begin(), problem.a.end(), 0.0);
            std::fill(problem.b.begin(), problem.b.end(), 0.0);
        }
    }

    // Returns a text for each must that is missed.
    std::vector<std::string> run() {
        Stopwatch stopwatch(timed);
        stopwatch.repeat();
        judge(stopwatch);
        for (int more = 0; more < 3 && worst == Standing::doubtful; ++more) {
            stopwatch.repeat();
            judge(stopwatch);
        }
        return missed;
    }

    void print() const;

private:
    // A ratio and whether it is one to be marked.
    struct Entry {
        std::optional<Figure> figure;
        bool missed = false;
    };

    // Makes a job, runs it once and gives its result.
    std::vector<double> start(const MakeJob& make, bool plain) {
        Job& job = *jobs.emplace_back(make(size));
        job.load(problem);
        const std::size_t before = allocatedBytes();
        const double begin = processorSeconds();
        job.run();
        const double taken = processorSeconds() - begin;
        if (jobs.size() == 1) {
            allocated = allocatedBytes() - before;
        }
        // A plain loop may take a minute, and nothing is required of its time.
        timed.push_back({&job, &problem, table.operands == Table::Operands::reloaded,
                         plain && taken > 0.3, taken});
        return job.result();
    }

    void check(const Rival& rival, const std::vector<double>& expected,
               const std::vector<double>& found) const {
        const double error = relativeError(expected, found);
        if (rival.sameBits ? !sameBits(expected, found) : !(error <= table.bound(size))) {
            throw std::runtime_error(
                fmt::format("{} {}: the result of {} is another one, relative error {:.2g}, "
                            "allowed {:.2g}",
                            table.name, table.label(size), rival.name, error,
                            rival.sameBits ? 0.0 : table.bound(size)));
        }
    }

    void judge(const Stopwatch& stopwatch) {
        const std::vector<double>& own = stopwatch.secondsOf(0);
        seconds = *std::min_element(own.begin(), own.end());
        worst = Standing::met;
        missed.clear();
        entries.clear();
        Figure share = ratioOf(stopwatch.secondsOf(1), own);
        share.value *= table.flops(size) / peakFlops;
        share.spread *= table.flops(size) / peakFlops;
        enter(Must::peak, share);
        for (std::size_t i = 0; i < table.rivals.size(); ++i) {
            if (places[i]) {
                enter(table.rivals[i].name, ratioOf(stopwatch.secondsOf(*places[i]), own));
            } else {
                entries.emplace_back();
            }
        }
    }

    void enter(const std::string& rival, const Figure& figure) {
        const double least = leastOf(table.musts, rival, size);
        const Standing standing = standingOf(figure, least);
        entries.push_back({figure, standing != Standing::met});
        worst = std::max(worst, standing);
        if (standing != Standing::met) {
            missed.push_back(fmt::format("{} {} against {}: {}, required {:.2f}", table.name,
                                         table.label(size), rival, textOf(figure), least));
        }
    }

    const Table& table;
    Size size;
    Problem problem;
    double peakFlops;
    std::vector<std::unique_ptr<Job>> jobs;
    std::vector<Timed> timed;
    std::vector<std::optional<std::size_t>> places;  // of the rivals among the timed
    std::size_t allocated = 0;

    double seconds = 0.0;
    std::vector<Entry> entries;  // share of the peak, and the rivals
    std::vector<std::string> missed;
    Standing worst = Standing::met;
};

}  // namespace

static constexpr const char* fixedColumns = "{:>13} {:>9} {:>8} {:>9} {:>10}";

static std::size_t widthOf(const Rival& rival) {
    return std::max<std::size_t>(rival.name.size(), 8) + 2;
}

void Line::print() const {
    const auto marked = [](const Entry& entry, const std::string& text) {
        return (entry.missed ? "*" : "") + text;
    };
    const double rate = table.flops(size) / seconds;
    fmt::print(fixedColumns, table.label(size), shortly(seconds * 1e9, {"ns", "us", "ms", "s"}),
               fmt::format("{:.1f}", rate * 1e-9), marked(entries[0], percent(*entries[0].figure)),
               allocated == 0 ? "-" : shortly(static_cast<double>(allocated), {"B", "kB", "MB"}));
    for (std::size_t i = 0; i < table.rivals.size(); ++i) {
        const Entry& entry = entries[i + 1];
        fmt::print("{:>{}}", entry.figure ? marked(entry, textOf(*entry.figure)) : "-",
                   widthOf(table.rivals[i]));
    }
    fmt::print("\n");
    std::fflush(stdout);
}

Table onlyMusts(const Table& table) {
    Table part = table;
    part.rivals.clear();
    std::copy_if(table.rivals.begin(), table.rivals.end(), std::back_inserter(part.rivals),
                 [&table](const Rival& rival) {
                     return std::any_of(
                         table.musts.begin(), table.musts.end(),
                         [&rival](const Must& must) { return must.rival == rival.name; });
                 });
    std::erase_if(part.sizes, [&table](Size size) {
        return std::none_of(table.musts.begin(), table.musts.end(),
                            [size](const Must& must) { return must.holdsAt(size); });
    });
    return part;
}

std::vector<std::string> print(const Table& table, PeakJob& peak) {
    fmt::print("\n{}: {}\n", table.name, table.title);
    fmt::print("{:>53}  times as fast as\n", "");
    fmt::print(fixedColumns, "size", "time", "Gflop/s", "of peak", "allocates");
    for (const Rival& rival : table.rivals) {
        fmt::print("{:>{}}", rival.name, widthOf(rival));
    }
    fmt::print("\n");
    std::vector<std::string> missed;
    for (const Size size : table.sizes) {
        Line line(table, size, peak);
        const std::vector<std::string> ofLine = line.run();
        missed.insert(missed.end(), ofLine.begin(), ofLine.end());
        line.print();
    }
    return missed;
}
