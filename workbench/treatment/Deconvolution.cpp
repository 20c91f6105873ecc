#include "workbench/treatment/Deconvolution.h"

#include "kernels/WorkWatch.h"
#include "workbench/analysis/Band.h"
#include "workbench/analysis/PowerScale.h"
#include "workbench/analysis/PowerSpectra.h"
#include "workbench/analysis/RegularizedOperands.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>
#include <utility>

static int strongestChannel(const Signal& signal, int exponent) {
    const auto width = static_cast<std::size_t>(signal.info.channels);
    if (width == 1) {
        return 0;
    }
    std::vector<double> energies(width);
    for (std::size_t i = 0; i < signal.interleaved.size(); ++i) {
        const double value = std::ldexp(signal.interleaved[i], -exponent);
        energies[i % width] += value * value;
    }
    return static_cast<int>(std::max_element(energies.begin(), energies.end()) - energies.begin());
}

// Samples on their way, some times.
static void passed(std::size_t samples) {
    kernels::WorkWatch::passed(4.0 * kernels::WorkWatch::element * static_cast<double>(samples));
}

static std::vector<double> quietSamples(const Signal& signal, int channel, const Span& stretch) {
    const SampleRange quiet =
        samplesIn(stretch, signal.info.axis, signal.info.rate, signal.info.samples, "--noise-from");
    const std::vector<double> samples = channelOf(signal, channel);
    return {samples.data() + quiet.first, samples.data() + quiet.last};
}

static Question questionOf(const Signal& signal, const Signal& kernel, int channel,
                           const KernelZero& zero, const KnownNoise& noise) {
    Question question;
    question.signal = channelOf(signal, channel);
    question.kernel = channelOf(kernel, channel);
    question.name = signal.info.source.shown;
    question.rate = signal.info.rate;
    question.kernelZero = zero.sample;
    if (noise.kind == KnownNoise::Kind::stretch) {
        question.quiet = quietSamples(signal, channel, noise.stretch);
    }
    return question;
}

// Where samples are dropped before them, the axis starts later.
static std::optional<SignalAxis> startingAt(std::optional<SignalAxis> axis, double rate,
                                            std::int64_t first) {
    if (!axis && rate > 0.0 && first > 0) {
        axis = SignalAxis{.name = "t_s", .start = 0.0, .step = 1.0 / rate, .time = true};
    }
    if (axis) {
        axis->start += static_cast<double>(first) * axis->step;
    }
    return axis;
}

Deconvolution::Deconvolution(const ModuleLibrary& moduleLibrary, const Signal& measured,
                             const Signal& kernelSignal, const FendraSettings& given,
                             const LeftToData& leftToData, const Treatment& wanted)
    : library(moduleLibrary),
      signal(measured),
      kernel(kernelSignal),
      exponent(PowerScale::of(signal.interleaved).exponent),
      zero(zeroOf(kernel, wanted.origin)) {
    strongest = strongestChannel(signal, exponent);
    passed(signal.interleaved.size());
    chosen.settings = given;
    chosen.treatment = wanted;
    if (wanted.warns || isChosen(given, leftToData, wanted)) {
        chosen = chooseFor(questionOf(signal, kernel, strongest, zero, wanted.noise), given,
                           leftToData, wanted);
    }
    const bool moves = wanted.origin.kind != Origin::Kind::none;
    const std::optional<SignalAxis> whole =
        moves ? resultAxis(signal.info.axis, zero, zero.sample, true) : signal.info.axis;
    const PreparationPlan plan = PreparationPlan::of(chosen.settings, chosen.treatment, 0);
    const bool longer = plan.oversampling == 1 && plan.ends == Ends::periodic;
    kept.last = longer ? std::max(signal.info.samples, kernel.info.samples) : signal.info.samples;
    if (wanted.keep) {
        kept = samplesIn(*wanted.keep, whole, signal.info.rate, kept.last, "--keep");
    }
    const std::size_t length = preparationOf(0, 0).preparedLength();
    lengthOfOperands = static_cast<std::int64_t>(length) * plan.oversampling;
    keptAxis = startingAt(whole, signal.info.rate, kept.first);
}

const Method& Deconvolution::method() const {
    return *Method::selectedBy(chosen.settings);
}

std::optional<Movement> Deconvolution::movement() const {
    const PreparationPlan plan =
        PreparationPlan::of(chosen.settings, chosen.treatment, zero.sample);
    const int lag = plan.oversampling == 1 ? plan.lag : 0;
    if (!plan.moves || zero.sample + lag == 0) {
        return std::nullopt;
    }
    return Movement{zero.sample + lag, zero.index, lag, zero.reason};
}

Preparation Deconvolution::preparationOf(int channel, int signalExponent) const {
    return {channelOf(kernel, channel), static_cast<std::size_t>(signal.info.samples),
            signalExponent, PreparationPlan::of(chosen.settings, chosen.treatment, zero.sample)};
}

// Three runs: RegularizedOperands.h.
ModuleAnswer Deconvolution::divided(const Operands& operands) const {
    FendraSettings convolution = chosen.settings;
    convolution.direction = FendraSettings::convolution;
    convolution.method = FendraSettings::frequencyDomain;
    FendraSettings division = chosen.settings;
    division.method = FendraSettings::frequencyDomain;
    const std::vector<double> mirrored = reversed(operands.kernel);
    const double gain = PowerSpectra(operands.signal, operands.kernel).largestGain();
    const std::vector<double> smoothed =
        callModule(library, convolution, operands.signal, mirrored).samples;
    const std::vector<double> correlation =
        callModule(library, convolution, operands.kernel, mirrored).samples;
    return callModule(
        library, division, smoothed,
        regularizedKernel(correlation, chosen.treatment.strength.value_or(1.0), gain,
                          tapsOf(chosen.treatment, signal.info.rate, operands.kernel.size())));
}

ModuleAnswer Deconvolution::answerTo(const Operands& operands,
                                     const FendraSettings& settings) const {
    return settings.method == FendraSettings::regularized
               ? divided(operands)
               : callModule(library, settings, operands.signal, operands.kernel);
}

// The numbers of the filter have no unit; the error of the iteration is a square of the samples.
Deconvolution::Answer Deconvolution::run(int channel,
                                         const std::function<bool(int pass)>& beforePass) const {
    const auto begin = [&](int pass) {
        if (!beforePass(pass)) {
            throw Stopped("stopped; nothing is written");
        }
    };
    begin(0);
    const Preparation preparation = preparationOf(channel, exponent);
    Answer result;
    result.operands = preparation.operands(channelOf(signal, channel));
    passed(result.operands.signal.size());
    result.made = answerTo(result.operands, chosen.settings);
    result.samples = preparation.restored(result.made.samples);
    result.names = result.made.numberNames;
    result.numbers = result.made.numbers;
    std::uint32_t loops = 0;
    if (chosen.settings.method == FendraSettings::vanCittert) {
        loops = static_cast<std::uint32_t>(result.numbers.at(1));
        if (channel == strongest) {
            result.fault = chosen.contradictedBy(result.numbers[0], result.numbers[1]);
        }
        result.numbers[0] = std::ldexp(result.numbers[0], 2 * exponent);
    }
    if (chosen.noise) {
        begin(1);
        addBand(result, channel, loops);
    }
    if (chosen.treatment.frequencies) {
        addResponse(result, channel);
    }
    cut(result.samples);
    return result;
}

void Deconvolution::cut(std::vector<double>& samples) const {
    samples.resize(static_cast<std::size_t>(kept.last));
    samples.erase(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(kept.first));
}

std::vector<double> Deconvolution::resultOf(int channel, const std::vector<double>& made) const {
    std::vector<double> samples = preparationOf(channel, exponent).restored(made);
    cut(samples);
    return samples;
}

double ResponseRecord::decibels() const {
    return 20.0 * std::log10(peak / noise);
}

// A response decays, and what is left of it in its quietest part is noise.
void Deconvolution::addResponse(Answer& answer, int channel) const {
    constexpr std::int64_t parts = 16;
    const std::vector<double>& samples = answer.samples;
    const std::int64_t length = std::max<std::int64_t>(1, std::ssize(samples) / parts);
    ResponseRecord response{.channel = channel, .noise = std::numeric_limits<double>::infinity()};
    for (std::int64_t first = 0; first + length <= std::ssize(samples); first += length) {
        const double* const part = samples.data() + first;
        const double squares = std::inner_product(part, part + length, part, 0.0);
        response.noise = std::min(response.noise, std::sqrt(squares / static_cast<double>(length)));
    }
    for (std::int64_t i = kept.first; i < kept.last; ++i) {
        const double magnitude = std::abs(samples[static_cast<std::size_t>(i)]);
        if (magnitude > response.peak) {
            response.peak = magnitude;
            response.peakSample = i - kept.first;
        }
    }
    answer.response = response;
}

// The answer to an impulse in the middle of the signal, on the whole circle that the module runs
// on. Zeros beyond the ends bring no noise.
void Deconvolution::addBand(Answer& answer, int channel, std::uint32_t loops) const {
    FendraSettings fixed = chosen.settings;
    if (loops > 0) {
        fixed.maxIterations = loops;
        fixed.abortAtError = fixed.abortAtMinError = 0;
    }
    const Preparation preparation = preparationOf(channel, 0);
    std::vector<double> impulse(static_cast<std::size_t>(signal.info.samples));
    const std::size_t middle = impulse.size() / 2, before = preparation.samplesBefore();
    impulse[middle] = 1.0;
    const std::vector<double> response =
        preparation.restoredWhole(answerTo(preparation.operands(impulse), fixed).samples);
    std::vector<double> taps = channelOf(kernel, channel);
    taps.resize(std::min(taps.size(), response.size()));
    answer.resolution = resolutionOf(response, taps);
    const std::vector<double> band = bandOf(response, before, middle, answer.samples, channel);
    const double* const first = band.data() + before;
    answer.halfWidths.assign(first + kept.first, first + kept.last);
}

std::vector<double> Deconvolution::bandOf(const std::vector<double>& response, std::size_t before,
                                          std::size_t middle, const std::vector<double>& result,
                                          int channel) const {
    const KnownNoise& noise = chosen.treatment.noise;
    const Ends ends = PreparationPlan::of(chosen.settings, chosen.treatment, zero.sample).ends;
    const bool counts = noise.kind == KnownNoise::Kind::counts;
    std::vector<double> band(response.size());
    if (noise.kind == KnownNoise::Kind::stretch) {
        const NoiseModel model = NoiseModel::ofStretch(quietSamples(signal, channel, noise.stretch),
                                                       static_cast<int>(response.size()));
        std::fill(band.begin(), band.end(), bandOfNoise(response, model.power()));
        return band;
    }
    if (!counts && ends != Ends::zero) {
        std::fill(band.begin(), band.end(), bandHalfWidth(response, *chosen.noise));
        return band;
    }
    const double variance = *chosen.noise * *chosen.noise;
    std::vector<double> variances(response.size(), ends == Ends::zero ? 0.0 : variance);
    const std::vector<double> model =
        counts ? modelOf(result, channel)
               : std::vector<double>(static_cast<std::size_t>(signal.info.samples), variance);
    std::copy_n(model.begin(), std::min(model.size(), variances.size() - before),
                variances.begin() + static_cast<std::ptrdiff_t>(before));
    return bandOfVariances(response, before + middle, variances);
}

// What a result predicts for the signal: convolved by the kernel again, about its zero.
std::vector<double> Deconvolution::modelOf(const std::vector<double>& result, int channel) const {
    FendraSettings convolution = chosen.settings;
    convolution.direction = FendraSettings::convolution;
    convolution.method = FendraSettings::frequencyDomain;
    std::vector<double> model =
        callModule(library, convolution, result, channelOf(kernel, channel)).samples;
    const bool moves = chosen.treatment.origin.kind != Origin::Kind::none;
    const std::int64_t distance = moves ? zero.sample % std::ssize(model) : 0;
    std::rotate(model.data(), model.data() + distance, model.data() + model.size());
    return model;
}
