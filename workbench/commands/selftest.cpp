#include "workbench/jobs/Selftest.h"

#include "workbench/commands/Command.h"
#include "workbench/messages/Failure.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <array>
#include <memory>
#include <string>

// "to nearest, denormals kept": what the thread was set to, before the trial.
static std::string describe(const ArithmeticMode& mode) {
    constexpr std::array roundings = {"to nearest", "downward", "upward", "toward zero"};
    return fmt::format("{}, denormals {}", roundings.at(static_cast<std::size_t>(mode.rounding)),
                       mode.flushesDenormals ? "flushed to zero" : "kept");
}

// "avx512; product avx2": the set that kernels run on, and those that run on another one.
static std::string describeForms(const SelftestResult& result) {
    std::string forms = result.instructions;
    for (const auto& [kernel, set] : result.forms) {
        forms += fmt::format("; {} {}", kernel, set);
    }
    return forms;
}

static void print(const SelftestResult& result, bool asJson) {
    if (asJson) {
        nlohmann::ordered_json facts = {{"instructions", result.instructions},
                                        {"arithmetic", describe(result.mode)}};
        for (const auto& [name, digest] : result.digests) {
            facts["kernels"][name] = digest;
        }
        facts["all"] = result.all;
        for (const auto& [kernel, set] : result.forms) {
            facts["forms"][kernel] = set;
        }
        fmt::print("{}\n", facts.dump(2));
        return;
    }
    for (const auto& [name, digest] : result.digests) {
        fmt::print("{:<24}{}\n", name, digest);
    }
    fmt::print("{:<24}{}\n", "instructions", describeForms(result));
    fmt::print("{:<24}{}\n", "all", result.all);
    fmt::print("{:<24}{}\n", "arithmetic", describe(result.mode));
}

static void runAndPrint(const std::string& instructions, bool asJson) {
    const SelftestResult result = runSelftest(instructions);
    print(result, asJson);
    if (!result.differences.empty()) {
        throw Failure(
            fmt::format("do not trust results of this machine, kernels differ from their "
                        "plain loops: {}",
                        fmt::join(result.differences, "; ")));
    }
}

static void addSelftest(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "selftest",
        "Test the arithmetic on this machine, and print digests of its results.\n"
        "Every inner loop runs on fixed input, once as it is written down and once in its fast "
        "form, which have to agree in every bit. The digests are the same on every machine, with "
        "every instruction set and compiler; all NaNs are treated as equal. The kernels are those "
        "that the module computes with. Behind them stands the instruction set that they run on, "
        "the widest there is, and those kernels that choose, each with the set that a short trial "
        "has found to be the fastest; then the digest of all, and the mode of the arithmetic that "
        "was met: the module itself always computes to nearest, with denormals.");
    command.footer(
        "  fendra selftest                            on the instructions that the module runs on\n"
        "  fendra selftest --instructions baseline    and as an older processor computes\n");
    struct Options {
        std::string instructions;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    command
        .add_option("--instructions", options->instructions,
                    "the instruction set to run all kernels on, instead of the module's choice")
        ->check(choice({"baseline", "avx2", "avx512"}))
        ->type_name("");
    command.add_flag("--json", options->json, "print JSON");
    command.callback([options] { runAndPrint(options->instructions, options->json); });
}

extern const Command selftestCommand = {addSelftest};
