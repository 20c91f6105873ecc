#include "workbench/jobs/CommonStep.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace {

// What is known of the step of a signal, as a magnitude.
struct Spacing {
    const SignalInfo* info = nullptr;
    double step = 0.0, lowest = 0.0, highest = 0.0;  // 0: not known
    double rate = 0.0;                               // 0: not a time
    bool falls = false;

    [[nodiscard]] bool known() const { return step > 0.0; }
    [[nodiscard]] double width() const { return (highest - lowest) / step; }
    // An axis by 1 that is not a time may count samples.
    [[nodiscard]] bool counts() const { return rate == 0.0 && step == 1.0; }
};

}  // namespace

static Spacing spacingOf(const SignalInfo& info) {
    if (info.axis) {
        const SignalAxis& axis = *info.axis;
        return {&info,
                std::abs(axis.step),
                axis.lowestStep,
                axis.highestStep,
                axis.time ? info.rate : 0.0,
                axis.step < 0.0};
    }
    const double step = info.rate > 0.0 ? 1.0 / info.rate : 0.0;
    return {&info, step, step, step, info.rate, false};
}

static std::string where(const Spacing& spacing) {
    return spacing.rate > 0.0 ? fmt::format("at {} Hz", spacing.rate)
                              : fmt::format("by {}", spacing.step);
}

static bool agree(const Spacing& a, const Spacing& b) {
    constexpr double tolerance = 1e-6;
    return a.lowest <= b.highest * (1.0 + tolerance) && b.lowest <= a.highest * (1.0 + tolerance);
}

static void requireAgreement(const Spacing& a, const Spacing& b) {
    const std::string &first = a.info->source.shown, &second = b.info->source.shown;
    const bool timed = a.rate > 0.0;
    const std::string start =
        fmt::format("{} is {} {} and {}", first, timed ? "sampled" : "spaced", where(a), second);
    if (timed != (b.rate > 0.0)) {
        throw Failure(
            fmt::format("{} is {} {}: only one of these is a time; --rate gives both a "
                        "rate",
                        start, timed ? "spaced" : "sampled", where(b)));
    }
    if (!agree(a, b)) {
        throw Failure(fmt::format("{} {}; resample one of them first", start, where(b)));
    }
    if (a.falls != b.falls) {
        throw Failure(
            fmt::format("the axis of {} falls and that of {} rises; reverse one of them "
                        "first",
                        a.falls ? first : second, a.falls ? second : first));
    }
}

// Of two that agree, the better known one; where that does not fit the other, the next that does.
static CommonStep joined(const Spacing& a, const Spacing& b) {
    const Spacing& better = b.width() < a.width() ? b : a;
    const double lowest = std::max(a.lowest, b.lowest), highest = std::min(a.highest, b.highest);
    const bool fits = lowest > highest || (better.step >= lowest && better.step <= highest);
    const double step = fits ? better.step : std::clamp(better.step, lowest, highest);
    const double rate = fits || better.rate == 0.0 ? better.rate : 1.0 / step;
    return {rate, better.falls ? -step : step};
}

static CommonStep givenStep(const Spacing& a, const Spacing& b, double rate) {
    const Spacing wanted{nullptr, 1.0 / rate, 1.0 / rate, 1.0 / rate, rate, false};
    for (const Spacing* spacing : {&a, &b}) {
        if (spacing->rate > 0.0 && !agree(*spacing, wanted)) {
            throw Failure(fmt::format("--rate {} contradicts {} Hz in {}; leave it out", rate,
                                      spacing->rate, spacing->info->source.shown));
        }
    }
    return {rate, a.falls || b.falls ? -wanted.step : wanted.step};
}

CommonStep commonStep(const SignalInfo& first, const SignalInfo& second, double given) {
    const Spacing a = spacingOf(first), b = spacingOf(second);
    const bool counted = (a.counts() && !second.axis) || (b.counts() && !first.axis);
    if (a.known() && b.known() && !counted && !(given > 0.0 && (a.rate > 0.0) != (b.rate > 0.0))) {
        requireAgreement(a, b);
    }
    if (given > 0.0) {
        return givenStep(a, b, given);
    }
    if (a.known() && b.known() && !counted) {
        return joined(a, b);
    }
    const Spacing& only = a.known() && b.rate == 0.0 ? a : b;
    return {only.rate, only.falls ? -only.step : only.step};
}
