#include "kernels/contract/trial.h"
#include "workbench/commands/Command.h"
#include "workbench/messages/Failure.h"
#include "workbench/signals/SampleDigest.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <vector>

using Json = nlohmann::ordered_json;

namespace {

struct Selftest {
    std::string instructions;
    bool json = false;

    void run() const;
};

}  // namespace

// Some of the sizes, each an eighth above the one before: the large ones take the time.
static std::vector<int> thinned(const std::vector<int>& sizes) {
    std::vector<int> some;
    for (const int size : sizes) {
        if (some.empty() || size > some.back() + some.back() / 8) {
            some.push_back(size);
        }
    }
    return some;
}

// The bits of a NaN are open, so that for digests each is the same one.
static std::vector<double> withOneNan(std::span<const double> results) {
    std::vector<double> values(results.begin(), results.end());
    std::replace_if(
        values.begin(), values.end(), [](double value) { return std::isnan(value); },
        std::numeric_limits<double>::quiet_NaN());
    return values;
}

// As much of a digest as two people compare by eye.
static std::string digits(const SampleDigest& digest) {
    return digest.hex().substr(0, 16);
}

static kernels::InstructionSet setNamed(const std::string& name) {
    const std::vector<kernels::InstructionSet> sets = kernels::availableInstructionSets();
    const auto named = std::find_if(sets.begin(), sets.end(), [&](kernels::InstructionSet set) {
        return name == kernels::instructionSetName(set);
    });
    if (named == sets.end()) {
        throw Failure(
            fmt::format("--instructions: this processor has no {}; the widest it has is {}", name,
                        kernels::instructionSetName(sets.back())));
    }
    return *named;
}

static void print(const Json& facts, bool asJson) {
    if (asJson) {
        fmt::print("{}\n", facts.dump(2));
        return;
    }
    for (const auto& [name, digest] : facts["kernels"].items()) {
        fmt::print("{:<24}{}\n", name, digest.get<std::string>());
    }
    fmt::print("{:<24}{}\n", "all", facts["all"].get<std::string>());
}

void Selftest::run() const {
    const kernels::InstructionSet set =
        instructions.empty() ? kernels::instructionSet() : setNamed(instructions);
    Json facts = {{"instructions", kernels::instructionSetName(set)}};
    SampleDigest all;
    std::string differences;
    for (const kernels::KernelCase& kernel : kernels::kernelCases()) {
        SampleDigest digest;
        const auto take = [&](std::span<const double> results) {
            const std::vector<double> values = withOneNan(results);
            digest.add(values.data(), values.size());
            all.add(values.data(), values.size());
        };
        const std::string difference =
            kernels::differenceOfForms(kernel, thinned(kernel.sizes), {set}, take);
        facts["kernels"][kernel.name] = digits(digest);
        if (!difference.empty()) {
            differences += fmt::format("; {} at {}", kernel.name, difference);
        }
    }
    facts["all"] = digits(all);
    print(facts, json);
    if (!differences.empty()) {
        throw Failure(
            "do not trust results of this machine, kernels differ from their plain loops" +
            differences);
    }
}

static void addSelftest(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "selftest",
        "Test the arithmetic on this machine, and print digests of its results.\n"
        "Every inner loop runs on fixed input, once as it is written down and once in its fast "
        "form, which have to agree in every bit. The digests are the same on every machine, with "
        "every instruction set and compiler; a NaN counts as any other.");
    command.footer(
        "  fendra selftest                            on the widest instructions there are\n"
        "  fendra selftest --instructions baseline    and as an older processor computes\n");
    const auto selftest = std::make_shared<Selftest>();
    command
        .add_option("--instructions", selftest->instructions,
                    "the instruction set to run on, instead of the widest there is")
        ->check(choice({"baseline", "avx2", "avx512"}))
        ->type_name("");
    command.add_flag("--json", selftest->json, "print JSON");
    command.callback([selftest] { selftest->run(); });
}

extern const Command selftestCommand = {addSelftest};
