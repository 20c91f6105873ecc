// The benchmarks: ./bench runs all tables, ./bench NAME... some of them.

#include "benchmarks/Table.h"
#include "benchmarks/peers.h"
#include "kernels/InstructionSet.h"

#include <benchmark/benchmark.h>
#include <fmt/core.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

static std::string processorName() {
    std::ifstream lines("/proc/cpuinfo");
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("model name")) {
            return line.substr(line.find(':') + 2);
        }
    }
    return "unknown processor";
}

static const char* compilerName() {
#if defined(__clang__)
    return __VERSION__;
#else
    return "g++ " __VERSION__;
#endif
}

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

static void run(const std::vector<std::string>& names) {
    const std::vector<Table> tables = chosenTables(names);
    const double peak = measurePeak();
    fmt::print("{}, {}, {}\n", processorName(),
               kernels::instructionSetName(kernels::instructionSet()), compilerName());
    fmt::print("peak of separate multiplications and additions, one thread: {:.0f} Gflop/s\n",
               peak * 1e-9);
    fmt::print("{}, {}, {}, {}\n", eigen::version(), fftw::version(), gsl::version(),
               openBlas::version());
    for (const Table& table : tables) {
        print(table, peak);
    }
}

int main(int argc, char** argv) {
    // Repetitions of different jobs take turns.
    std::vector<std::string> settings = {argv[0], "--benchmark_enable_random_interleaving=true"};
    std::vector<char*> pointers = {settings[0].data(), settings[1].data(), nullptr};
    int count = 2;
    benchmark::Initialize(&count, pointers.data());
    openBlas::useOneThread();
    try {
        run({argv + 1, argv + argc});
    } catch (const std::invalid_argument& error) {
        fmt::print(stderr, "bench: {}\n", error.what());
        return 2;
    } catch (const std::exception& error) {
        fmt::print(stderr, "bench: {}\n", error.what());
        return 1;
    }
    return 0;
}
