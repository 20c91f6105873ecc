#include "workbench/jobs/Selftest.h"

#include "kernels/MeasuredForm.h"
#include "kernels/contract/trial.h"
#include "workbench/messages/Failure.h"
#include "workbench/signals/SampleDigest.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <string_view>

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

namespace {

// The sets that kernels run on.
class Sets {
public:
    explicit Sets(const std::string& instructions)
        : common(instructions.empty() ? kernels::instructionSet() : setNamed(instructions)) {
        if (instructions.empty()) {
            forms = kernels::formsInUse();
        }
    }

    [[nodiscard]] kernels::InstructionSet of(std::string_view kernel) const {
        const auto form = std::find_if(
            forms.begin(), forms.end(),
            [&](const kernels::FormInUse& candidate) { return candidate.kernel == kernel; });
        return form == forms.end() ? common : form->set;
    }

    kernels::InstructionSet common;
    std::vector<kernels::FormInUse> forms;  // of kernels that choose for themselves
};

}  // namespace

SelftestResult runSelftest(const std::string& instructions) {
    const Sets sets(instructions);
    SelftestResult result;
    result.instructions = kernels::instructionSetName(sets.common);
    for (const auto& [kernel, set] : sets.forms) {
        result.forms.emplace_back(kernel, kernels::instructionSetName(set));
    }
    result.mode = ArithmeticMode::current();
    const StandardArithmetic standard;
    SampleDigest all;
    for (const kernels::KernelCase& kernel : kernels::kernelCases()) {
        SampleDigest digest;
        const auto take = [&](std::span<const double> results) {
            const std::vector<double> values = withOneNan(results);
            digest.add(values.data(), values.size());
            all.add(values.data(), values.size());
        };
        const std::string difference =
            kernels::differenceOfForms(kernel, thinned(kernel.sizes), {sets.of(kernel.name)}, take);
        result.digests.emplace_back(kernel.name, digits(digest));
        if (!difference.empty()) {
            result.differences.push_back(fmt::format("{} at {}", kernel.name, difference));
        }
    }
    result.all = digits(all);
    return result;
}
