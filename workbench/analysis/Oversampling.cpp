#include "workbench/analysis/Oversampling.h"

#include "workbench/analysis/Spectrum.h"
#include "workbench/messages/Failure.h"

#include <algorithm>
#include <string>

static void checkLength(std::size_t length, std::size_t factor) {
    constexpr std::size_t longest = std::size_t{1} << 29;
    if (length > longest / factor) {
        throw Failure(std::to_string(length) + " samples interpolated by a factor of " +
                      std::to_string(factor) + " are more than " + std::to_string(longest) +
                      "; give a smaller factor or a shorter signal");
    }
}

// Scaled by the factor, as the inverse transform divides by the larger length.
static Spectrum widened(const Spectrum& narrow, std::size_t factor) {
    const std::size_t n = narrow.re.size(), wide = factor * n;
    Spectrum spectrum{std::vector<double>(wide), std::vector<double>(wide)};
    for (std::size_t j = 0; j < n; ++j) {
        const double scale = static_cast<double>(factor) * (2 * j == n ? 0.5 : 1.0);
        if (2 * j <= n) {
            spectrum.re[j] = scale * narrow.re[j];
            spectrum.im[j] = scale * narrow.im[j];
        }
        if (2 * j >= n) {
            spectrum.re[wide - n + j] = scale * narrow.re[j];
            spectrum.im[wide - n + j] = scale * narrow.im[j];
        }
    }
    return spectrum;
}

std::vector<double> interpolated(const std::vector<double>& samples, int factor) {
    if (factor == 1) {
        return samples;
    }
    const auto times = static_cast<std::size_t>(factor);
    checkLength(samples.size(), times);
    return samplesOf(widened(spectrumOf(samples, samples.size()), times));
}

Operands oversampled(const Operands& operands, int factor) {
    if (factor == 1) {
        return operands;
    }
    Operands fine{interpolated(operands.signal, factor), interpolated(operands.kernel, factor)};
    std::rotate(fine.signal.begin(), fine.signal.end() - 1, fine.signal.end());
    for (double& value : fine.kernel) {
        value /= factor;
    }
    return fine;
}

std::vector<double> everyNth(const std::vector<double>& samples, int factor) {
    std::vector<double> kept;
    for (std::size_t i = 0; i < samples.size(); i += static_cast<std::size_t>(factor)) {
        kept.push_back(samples[i]);
    }
    return kept;
}
