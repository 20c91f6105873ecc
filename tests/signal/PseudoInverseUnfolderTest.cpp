#include "signal/PseudoInverseUnfolder.h"

#include "tests/support/Guarded.h"
#include "tests/support/PlainMatrix.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>

namespace {

struct Outcome {
    Signal result;
    double zeroDeviation, oneDeviation;
};

}  // namespace

static Outcome unfold(const Signal& signal, const Signal& kernel, int kind) {
    PseudoInverseUnfolder unfolder(kind);
    Guarded result(signal.size());
    EXPECT_EQ(1, unfolder.unfold(signal.data(), result.size(), kernel.data(), result.size(),
                                 result.data(), result.size()));
    return {result.values(), unfolder.zeroDeviation, unfolder.oneDeviation};
}

TEST(PseudoInverseUnfolder, HandWorkedValues) {
    struct Row {
        Signal signal, kernel;
        int kind;
        Outcome expected;
    };
    const double third = 1.0 / 3.0, nan = std::numeric_limits<double>::quiet_NaN();
    const Row table[] = {{{3, 5}, {1, 0}, 0, {{3, 5}, 0, 0}},
                         {{3, 5}, {0, 1}, 0, {{5, 3}, 0, 0}},
                         {{3, 5}, {2, 0}, 4, {{3, 5}, 0, -1}},
                         {{3, 5}, {1, 1}, 0, {{8 * third, 8 * third}, third, third}},
                         {{3, 5}, {1, 1}, 1, {{4, 4}, 0.5, 0}},
                         {{3, 5}, {1, 1}, 3, {{2, 2}, 0.25, 0.5}},
                         {{7}, {2}, 0, {{3.5}, nan, 0}}};
    for (const auto& [signal, kernel, kind, expected] : table) {
        const auto [result, zeroDeviation, oneDeviation] = unfold(signal, kernel, kind);
        for (std::size_t i = 0; i < result.size(); ++i) {
            EXPECT_NEAR(result[i], expected.result[i], 4e-15);
        }
        EXPECT_NEAR(oneDeviation, expected.oneDeviation, 1e-15);
        EXPECT_TRUE(std::abs(zeroDeviation - expected.zeroDeviation) < 1e-15 ||
                    (std::isnan(zeroDeviation) && std::isnan(expected.zeroDeviation)));
    }
}

// f convolved with h, terms added in ascending index of h before the centre, of f's end behind it.
static Signal plainIdentity(const Signal& f, const Signal& h) {
    const std::size_t N = f.size();
    Signal c(2 * N - 1);
    for (std::size_t i = 0; i < N; ++i) {
        for (std::size_t k = 0; k <= i; ++k) {
            c[i] += f[i - k] * h[k];
        }
        for (std::size_t m = 0; m <= i && i + 1 < N; ++m) {
            c[2 * N - 2 - i] += h[N - 1 - i + m] * f[N - 1 - m];
        }
    }
    return c;
}

static double plainFactor(int kind, const Signal& f, const Signal& c) {
    double squares = 0.0, magnitudes = 0.0;
    for (const double value : kind == 4 ? f : c) {
        squares += value * value;
        magnitudes += std::abs(value);
    }
    const double norms[] = {1.0, c[f.size() - 1], std::sqrt(squares), magnitudes,
                            std::sqrt(squares)};
    return 1.0 / norms[kind];
}

static Signal plainFilter(const Signal& h) {
    const int N = static_cast<int>(h.size());
    Signal R(h.size() * h.size()), f(h.rbegin(), h.rend());
    std::vector<int> order(h.size());
    for (int e = 0; e < N * N; ++e) {
        const int lag = std::abs(e / N - e % N);
        R[static_cast<std::size_t>(e)] =
            std::inner_product(h.begin(), h.end() - lag, h.begin() + lag, 0.0);
    }
    plainEliminate(R.data(), N, order);
    plainSolve(R.data(), N, order, f.data());
    return f;
}

static Outcome plainUnfold(const Signal& y, const Signal& h, int kind) {
    const std::size_t N = h.size();
    Signal f = plainFilter(h);
    Signal c = plainIdentity(f, h);
    const double factor = plainFactor(kind, f, c);
    if (factor != 1.0) {
        for (double& value : f) {
            value *= factor;
        }
        c = plainIdentity(f, h);
    }
    double zeros = 0.0;
    for (std::size_t i = 0; i + 1 < N; ++i) {
        zeros += c[2 * N - 2 - i] * c[2 * N - 2 - i] + c[i] * c[i];
    }
    return {laggingFold(f, y), std::sqrt(zeros / static_cast<double>(2 * N - 2)), 1.0 - c[N - 1]};
}

TEST(PseudoInverseUnfolder, DoesThePlainLoopsOperations) {
    for (const int N : {2, 3, 8, 40}) {
        const Signal y = noise(N, 1), h = noise(N, 2);
        for (int kind = 0; kind <= 4; ++kind) {
            const Outcome outcome = unfold(y, h, kind), expected = plainUnfold(y, h, kind);
            EXPECT_EQ(bits(outcome.result), bits(expected.result)) << N << ", kind " << kind;
            EXPECT_EQ(bits({outcome.zeroDeviation, outcome.oneDeviation}),
                      bits({expected.zeroDeviation, expected.oneDeviation}));
        }
    }
}

// A refused run would fall over the missing result array if it wrote to it.
TEST(PseudoInverseUnfolder, RefusalsLeaveEverythingAlone) {
    const Signal ones(9, 1.0), zeros(9, 0.0);
    PseudoInverseUnfolder unfolder(1);
    unfolder.zeroDeviation = unfolder.oneDeviation = 7.0;
    EXPECT_EQ(0, unfolder.unfold(ones.data(), 4, ones.data(), 4, nullptr, 5));
    EXPECT_EQ(0, unfolder.unfold(ones.data(), 4, ones.data(), 5, nullptr, 4));
    EXPECT_EQ(0, unfolder.unfold(ones.data(), 4, zeros.data(), 4, nullptr, 4));
    EXPECT_EQ(1, unfolder.unfold(nullptr, 0, nullptr, 0, nullptr, 0));
    EXPECT_TRUE(unfolder.zeroDeviation == 7.0 && unfolder.oneDeviation == 7.0);
}
