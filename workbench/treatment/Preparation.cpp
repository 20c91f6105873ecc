#include "workbench/treatment/Preparation.h"

#include "workbench/analysis/KernelShape.h"
#include "workbench/analysis/PowerScale.h"
#include "workbench/analysis/RegularizedOperands.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"

#include <algorithm>

PreparationPlan PreparationPlan::of(const FendraSettings& settings, const Treatment& treatment,
                                    std::int64_t kernelZero) {
    PreparationPlan plan;
    const bool wantsRoom = treatment.room || treatment.frequencies.has_value();
    plan.ends = treatment.ends.value_or(wantsRoom ? Ends::zero : Ends::periodic);
    const bool iterates = settings.method == FendraSettings::vanCittert;
    plan.oversampling = iterates ? std::max(1, treatment.oversampling) : 1;
    plan.kernelZero = kernelZero;
    plan.lag = Method::selectedBy(settings)->lag;
    plan.moves = treatment.origin.kind != Origin::Kind::none;
    plan.centred = plan.moves && settings.method == FendraSettings::pseudoInverse;
    return plan;
}

std::vector<double> tapsOf(const Treatment& treatment, double rate, std::size_t length) {
    if (!treatment.frequencies) {
        return penaltyTaps(treatment.order, length);
    }
    if (rate == 0.0) {
        throw Failure(
            "--frequencies: the signals have no sampling rate; give it with --rate, or leave "
            "--frequencies out");
    }
    return bandTaps(treatment.frequencies->from, treatment.frequencies->to, rate, length);
}

// Turns samples to later places, by any distance.
static void turn(std::vector<double>& samples, std::int64_t distance) {
    const std::int64_t length = std::ssize(samples);
    const std::int64_t first = ((-distance % length) + length) % length;
    std::rotate(samples.data(), samples.data() + first, samples.data() + length);
}

// Zeros that stand behind a kernel need no room.
static std::size_t lengthWithoutZeros(const std::vector<double>& kernel) {
    const auto last =
        std::find_if(kernel.rbegin(), kernel.rend(), [](double x) { return x != 0.0; });
    return static_cast<std::size_t>(kernel.rend() - last);
}

Preparation::Preparation(const std::vector<double>& kernelSamples, std::size_t length,
                         int scaleOfSignal, const PreparationPlan& preparationPlan)
    : plan(preparationPlan),
      signalLength(length),
      signalExponent(scaleOfSignal),
      kernelExponent(PowerScale::of(kernelSamples).exponent),
      kernel(scaled(kernelSamples, -kernelExponent)),
      room(roomFor(plan.ends, length,
                   plan.ends == Ends::zero ? lengthWithoutZeros(kernel) : supportOf(kernel))),
      extendedLength(std::max(length + room.before + room.after, kernel.size())) {}

Operands Preparation::operands(const std::vector<double>& signal) const {
    Operands prepared{extended(scaled(signal, -signalExponent), plan.ends, room), kernel};
    if (plan.oversampling > 1 || plan.ends != Ends::periodic) {
        prepared.signal.resize(extendedLength);
    }
    prepared.kernel.resize(std::max(prepared.kernel.size(), prepared.signal.size()));
    prepared = oversampled(prepared, plan.oversampling);
    if (plan.centred) {
        turn(prepared.kernel, std::ssize(prepared.kernel) / 2 - plan.kernelZero);
    }
    return prepared;
}

// A result of a kernel with its zero at sample c comes c samples early, or the lag more.
std::vector<double> Preparation::restoredWhole(const std::vector<double>& result) const {
    std::vector<double> samples = everyNth(result, plan.oversampling);
    if (plan.moves) {
        const std::int64_t zero = plan.centred ? std::ssize(samples) / 2 : plan.kernelZero;
        turn(samples, zero + (plan.oversampling == 1 ? plan.lag : 0));
    }
    return scaled(samples, signalExponent - kernelExponent);
}

std::vector<double> Preparation::restored(const std::vector<double>& result) const {
    std::vector<double> samples = restoredWhole(result);
    if (samples.size() > signalLength && plan.ends != Ends::periodic) {
        samples.erase(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(room.before));
        samples.resize(signalLength);
    }
    return samples;
}
