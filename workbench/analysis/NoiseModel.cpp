#include "workbench/analysis/NoiseModel.h"

#include "transform/FourierTransform.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <numbers>
#include <numeric>
#include <utility>

NoiseModel::NoiseModel(std::vector<double> powerPerBin, int length)
    : powers(std::move(powerPerBin)), degrees(length) {}

NoiseModel NoiseModel::white(double sigma, int length) {
    return {std::vector<double>(static_cast<std::size_t>(length / 2 + 1), sigma * sigma), length};
}

static double meanOf(const std::vector<double>& samples) {
    return std::accumulate(samples.begin(), samples.end(), 0.0) /
           static_cast<double>(samples.size());
}

NoiseModel NoiseModel::ofCounts(const std::vector<double>& counts, int length) {
    const double mean = meanOf(counts);
    if (!(mean >= 0.0)) {
        throw Failure(fmt::format(
            "the mean of the signal is {:.4g}, but counts are not negative; give the noise as a "
            "number or by a quiet stretch",
            mean));
    }
    return white(std::sqrt(mean), length);
}

// At the frequencies i / L from 0 to below 1.
static std::vector<double> periodogramOf(std::vector<double> re) {
    const double mean = meanOf(re), count = static_cast<double>(re.size());
    std::transform(re.begin(), re.end(), re.begin(), [mean](double x) { return x - mean; });
    std::vector<double> im(re.size());
    FourierTransform().transform(re.data(), im.data(), static_cast<int>(re.size()), -1);
    std::transform(re.begin(), re.end(), im.begin(), re.begin(),
                   [count](double x, double y) { return (x * x + y * y) / count; });
    return re;
}

// About the frequency i / L, without that of the mean.
static double smoothedAt(const std::vector<double>& periodogram, int i) {
    const auto count = static_cast<int>(periodogram.size());
    const int reach = static_cast<int>(std::lround(0.5 * std::sqrt(count)));
    double sum = 0.0, weights = 0.0;
    for (int k = -reach; k <= reach; ++k) {
        const int place = (i + k + count) % count;
        const double weight = place == 0 ? 0.0 : reach + 1 - std::abs(k);
        sum += weight * periodogram[static_cast<std::size_t>(place)];
        weights += weight;
    }
    return sum / weights;
}

NoiseModel NoiseModel::ofStretch(const std::vector<double>& quiet, int length) {
    constexpr std::size_t fewest = 64;
    if (quiet.size() < fewest) {
        throw Failure(
            fmt::format("the quiet stretch has {} samples, and the noise cannot be measured from "
                        "fewer than {}; give a longer one, or the noise as a number",
                        quiet.size(), fewest));
    }
    const std::vector<double> periodogram = periodogramOf(quiet);
    std::vector<double> power;
    for (int j = 0; j <= length / 2; ++j) {
        const double place = static_cast<double>(quiet.size()) * j / length;
        const int below = static_cast<int>(place);
        const double share = place - below;
        power.push_back((1.0 - share) * smoothedAt(periodogram, below) +
                        share * smoothedAt(periodogram, below + 1));
    }
    return {power, length};
}

double NoiseModel::sigma() const {
    // Bin 0, and half of the rate where N is even, stand for themselves, the others for two.
    double sum = 2.0 * std::accumulate(powers.begin(), powers.end(), 0.0) - powers.front();
    if (degrees % 2 == 0) {
        sum -= powers.back();
    }
    return std::sqrt(sum / degrees);
}
