// The benchmarks: ./bench runs all tables, ./bench NAME... some of them; ./bench --check [NAME...]
// runs what has to reach something.

#include "benchmarks/Processor.h"
#include "benchmarks/Table.h"
#include "benchmarks/peers.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

static std::vector<Table> chosenTables(const std::vector<std::string>& names) {
    std::vector<Table> all = allTables();
    if (names.empty()) {
        return all;
    }
    std::vector<Table> chosen;
    for (const std::string& name : names) {
        const auto table =
            std::find_if(all.begin(), all.end(), [&](const Table& t) { return t.name == name; });
        if (table == all.end()) {
            std::string message = "no table \"" + name + "\"; there are:";
            for (const Table& t : all) {
                message.append(" ").append(t.name);
            }
            throw std::invalid_argument(message);
        }
        chosen.push_back(*table);
    }
    return chosen;
}

// Those in which something is required, cut down to that.
static std::vector<Table> checkedTables(const std::vector<std::string>& names) {
    std::vector<Table> checked;
    for (const Table& table : chosenTables(names)) {
        if (!table.musts.empty()) {
            checked.push_back(onlyMusts(table));
        } else if (!names.empty()) {
            throw std::invalid_argument("nothing is required of \"" + table.name + "\"");
        }
    }
    return checked;
}

static PeakJob describeMachine() {
    for (const std::string& line : describeProcessor()) {
        fmt::print("{}\n", line);
    }
    const std::optional<PeakJob> separate = PeakJob::fastest(PeakJob::Operations::separate);
    const std::optional<PeakJob> fused = PeakJob::fastest(PeakJob::Operations::fused);
    const double clock = measureClock();
    const auto perCycle = [clock](const PeakJob& job) { return job.rate() / clock; };
    fmt::print("peak of one thread, at {:.2f} GHz: {:.1f} Gflop/s, {:.1f} a cycle ({})\n",
               clock * 1e-9, separate->rate() * 1e-9, perCycle(*separate), separate->arrangement());
    if (fused) {
        fmt::print(
            "with fused multiply-adds: {:.1f} Gflop/s, {:.1f} a cycle ({}), {:.2f} times as "
            "much\n",
            fused->rate() * 1e-9, perCycle(*fused), fused->arrangement(),
            fused->rate() / separate->rate());
    }
    fmt::print("{}, {}, {}, {}\n", eigen::version(), fftw::version(), gsl::version(),
               openBlas::version());
    std::fflush(stdout);
    return *separate;
}

// Whether all that is required is met.
static bool run(const std::vector<Table>& tables) {
    PeakJob peak = describeMachine();
    std::vector<std::string> missed;
    for (const Table& table : tables) {
        const std::vector<std::string> ofTable = print(table, peak);
        missed.insert(missed.end(), ofTable.begin(), ofTable.end());
    }
    if (!missed.empty()) {
        fmt::print("\n* missed:\n");
    }
    for (const std::string& line : missed) {
        fmt::print("  {}\n", line);
    }
    return missed.empty();
}

int main(int argc, char** argv) {
    openBlas::useOneThread();
    try {
        std::vector<std::string> names(argv + 1, argv + argc);
        const bool check = std::erase(names, "--check") > 0;
        const bool met = run(check ? checkedTables(names) : chosenTables(names));
        return check && !met ? 1 : 0;
    } catch (const std::invalid_argument& error) {
        fmt::print(stderr, "bench: {}\n", error.what());
        return 2;
    } catch (const std::exception& error) {
        fmt::print(stderr, "bench: {}\n", error.what());
        return 1;
    }
}
