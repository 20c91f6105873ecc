#include "benchmarks/PeakJob.h"

#include "kernels/vectors.h"

#include <cstddef>

static constexpr int steps = 100000;

// As many as leave two registers for the factor and the summand.
static constexpr int chainsOf(int lanes) {
    return lanes == 8 ? 28 : 14;
}

template <int lanes>
[[gnu::always_inline]] static inline void runChains(double factor, double summand, double* sum) {
    constexpr int chains = chainsOf(lanes);
    kernels::Vector<lanes> values[std::size_t{chains}] = {};
#pragma GCC unroll 32
    for (int j = 0; j < chains; ++j) {
        values[j] += static_cast<double>(j);
    }
    for (int i = 0; i < steps; ++i) {
#pragma GCC unroll 32
        for (int j = 0; j < chains; ++j) {
            values[j] = values[j] * factor + summand;
        }
    }
#pragma GCC unroll 32
    for (int j = 0; j < chains; ++j) {
        *sum += values[j][0];
    }
}

FENDRA_VARIANTS(runVariant, runChains)

void PeakJob::load(const Problem& /*problem*/) {}

void PeakJob::run() {
    runVariant(0.5, 1.0, &sum);
}

std::vector<double> PeakJob::result() const {
    return {sum};
}

double PeakJob::flops() const {
    const int lanes = kernels::instructionSet() == kernels::InstructionSet::avx512 ? 8
                      : kernels::instructionSet() == kernels::InstructionSet::avx2 ? 4
                                                                                   : 2;
    return 2.0 * steps * chainsOf(lanes) * lanes;
}
