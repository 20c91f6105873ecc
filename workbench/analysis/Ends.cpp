#include "workbench/analysis/Ends.h"

#include <algorithm>
#include <cmath>
#include <numbers>

EndRoom roomFor(Ends ends, std::size_t signalLength, std::size_t support) {
    switch (ends) {
        case Ends::zero:
            return {0, support - std::min<std::size_t>(support, 1)};
        case Ends::odd: {
            const std::size_t side = std::min(support, signalLength - 1);
            return {side, side};
        }
        case Ends::bridge:
            return {0, support};
        case Ends::periodic:
            break;
    }
    return {};
}

static void reflect(std::vector<double>& samples, EndRoom room, std::size_t length) {
    const std::size_t first = room.before, last = room.before + length - 1;
    for (std::size_t i = 1; i <= room.before; ++i) {
        samples[first - i] = 2.0 * samples[first] - samples[first + i];
    }
    for (std::size_t i = 1; i <= room.after; ++i) {
        samples[last + i] = 2.0 * samples[last] - samples[last - i];
    }
}

static void bridge(std::vector<double>& samples, std::size_t length) {
    const double first = samples.front(), last = samples[length - 1];
    const auto gap = static_cast<double>(samples.size() - length + 1);
    for (std::size_t i = length; i < samples.size(); ++i) {
        const double angle = std::numbers::pi * static_cast<double>(i - length + 1) / gap;
        samples[i] = last + (first - last) * 0.5 * (1.0 - std::cos(angle));
    }
}

std::vector<double> extended(const std::vector<double>& signal, Ends ends, EndRoom room) {
    std::vector<double> samples(room.before + signal.size() + room.after);
    std::copy(signal.begin(), signal.end(),
              samples.begin() + static_cast<std::ptrdiff_t>(room.before));
    if (ends == Ends::odd) {
        reflect(samples, room, signal.size());
    } else if (ends == Ends::bridge) {
        bridge(samples, signal.size());
    }
    return samples;
}

bool endsDiffer(const std::vector<double>& signal, double sigma) {
    return !signal.empty() && std::abs(signal.front() - signal.back()) > 5.0 * sigma;
}

static double thirdDifference(double a, double b, double c, double d) {
    return d - 3.0 * c + 3.0 * b - a;
}

bool meetsRoughly(const std::vector<double>& signal) {
    const std::size_t n = signal.size();
    constexpr std::size_t order = 3;
    if (n <= order) {
        return false;
    }
    double squares = 0.0;
    for (std::size_t i = 0; i + order < n; ++i) {
        const double inside =
            thirdDifference(signal[i], signal[i + 1], signal[i + 2], signal[i + 3]);
        squares += inside * inside;
    }
    const double where = thirdDifference(signal[n - 2], signal[n - 1], signal[0], signal[1]);
    return std::abs(where) > 5.0 * std::sqrt(squares / static_cast<double>(n - order));
}
