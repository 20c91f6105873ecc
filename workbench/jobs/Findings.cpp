#include "workbench/jobs/Findings.h"

#include "transform/FourierTransform.h"
#include "workbench/analysis/NoiseEstimate.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <numeric>

// A file of thousands of blocks would have as many remarks; ten show what is wrong.
static constexpr std::size_t mostRemarks = 10;

KernelGain kernelGain(const std::vector<double>& kernel, std::size_t length) {
    KernelGain gain;
    try {
        std::vector<double> re(kernel), im(std::max(length, kernel.size()));
        re.resize(im.size());
        FourierTransform().transform(re.data(), im.data(), static_cast<int>(re.size()), -1);
        std::transform(re.begin(), re.end(), im.begin(), re.begin(),
                       [](double x, double y) { return std::hypot(x, y); });
        const auto [smallest, largest] = std::minmax_element(re.begin(), re.end());
        constexpr double low = 1e-3;
        gain.lowBins = std::count_if(re.begin(), re.end(),
                                     [&, most = *largest](double x) { return x < low * most; });
        gain.bins = std::ssize(re);
        gain.largest = *largest;
        gain.deepest = *smallest / *largest;
    } catch (const std::bad_alloc&) {
        return {};
    }
    return gain;
}

Findings::Findings(const Method& runMethod, const FendraSettings& runSettings, const Run& run)
    : method(runMethod),
      settings(runSettings),
      severalRounds(run.rounds > 1),
      severalChannels(run.channels > 1),
      kernelStays(run.kernelServesAll),
      judged(run.judged),
      gains(static_cast<std::size_t>(run.kernelChannels)) {}

// A kernel that serves all rounds is transformed once, at the length of the first.
const KernelGain& Findings::gainOf(const ModuleRun::Channel& channel) {
    const std::size_t row = gains.size() == 1 ? 0 : static_cast<std::size_t>(channel.channel);
    std::optional<KernelGain>& gain = gains[row];
    if (!gain || (!kernelStays && (channel.channel == 0 || gains.size() > 1))) {
        gain = kernelGain(channel.second, channel.result.size());
    }
    return *gain;
}

static double energyOf(const std::vector<double>& samples) {
    return std::inner_product(samples.begin(), samples.end(), samples.begin(), 0.0);
}

// Of the noise in the result of a division. None where the kernel leaves no bins to tell it by, or
// squares leave the range of numbers.
static std::optional<double> noiseEnergyOf(const ModuleRun::Channel& channel) {
    try {
        const std::optional<double> noise =
            noiseOfQuotient(PowerSpectra(channel.first, channel.second));
        return noise ? std::optional(*noise * *noise * static_cast<double>(channel.result.size()))
                     : std::nullopt;
    } catch (const Failure&) {
        return std::nullopt;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

// A convolution loses nothing that could be remarked on.
void Findings::add(const ModuleRun::Channel& channel) {
    if (settings.direction == FendraSettings::convolution) {
        return;
    }
    signalSeen = signalSeen || std::any_of(channel.first.begin(), channel.first.end(),
                                           [](double x) { return x != 0.0; });
    if (judged) {
        judge(channel);
    }
}

void Findings::judge(const ModuleRun::Channel& channel) {
    Evidence evidence{.settings = settings,
                      .kernel = gainOf(channel),
                      .signalEnergy = energyOf(channel.first),
                      .resultEnergy = energyOf(channel.result)};
    const bool divides = settings.method == FendraSettings::frequencyDomain;
    if (divides && evidence.kernel.lowBins >= std::int64_t{fewestEmptyBins}) {
        evidence.noiseEnergy = noiseEnergyOf(channel);
    }
    std::copy_n(channel.numbers.begin(), std::min(channel.numbers.size(), evidence.numbers.size()),
                evidence.numbers.begin());
    const std::string place =
        (severalRounds ? fmt::format("block {}: ", channel.round + 1) : "") +
        (severalChannels ? fmt::format("channel {}: ", channel.channel + 1) : "");
    for (const std::string& remark : method.remarks(evidence)) {
        if (found.size() < mostRemarks) {
            found.push_back(place + remark);
        } else {
            ++left;
        }
    }
}

std::vector<std::string> Findings::remarks() const {
    std::vector<std::string> all = found;
    if (left > 0) {
        all.push_back(fmt::format("{} more of these remarks, on other blocks and channels", left));
    }
    return all;
}
