// Compiled with contraction: what has to stay apart is kept apart by `hidden`.

#include "benchmarks/PeakJob.h"

#include "benchmarks/timing.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <cstddef>

using Arrangement = PeakJob::Arrangement;
using Operations = PeakJob::Operations;

static constexpr int steps = 20000;

// The compiler takes the value for another one from here on, and leaves such places in their order.
template <typename T>
[[gnu::always_inline]] static inline void hidden(T& value) {
#if defined(__clang__)  // which asks for the registers before it inlines, where there are none
    asm volatile("" : "+m"(value));
#elif defined(__x86_64__) || defined(__i386__)
    asm volatile("" : "+v"(value));
#else
    asm volatile("" : "+w"(value));
#endif
}

template <int lanes, int chains, int group, bool nops>
[[gnu::always_inline]] static inline double separateWork() {
    kernels::Vector<lanes> a = {}, b = {}, sums[std::size_t{chains}] = {};
    for (int i = 0; i < steps; ++i) {
#pragma GCC unroll 16
        for (int j = 0; j < chains; j += group) {
            kernels::Vector<lanes> products[std::size_t{group}];
#pragma GCC unroll 16
            for (int g = 0; g < group; ++g) {
                hidden(a);
                products[g] = a * b;
                hidden(products[g]);
            }
#pragma GCC unroll 16
            for (int g = 0; g < group; ++g) {
                sums[j + g] += products[g];
                hidden(sums[j + g]);
            }
            if constexpr (nops) {
                asm volatile("nop");
            }
        }
    }
    return sums[0][0];
}

template <int lanes, int chains>
[[gnu::always_inline]] static inline double fusedWork() {
    kernels::Vector<lanes> a = {}, b = {}, sums[std::size_t{chains}] = {};
    for (int i = 0; i < steps; ++i) {
        hidden(a);
#pragma GCC unroll 16
        for (int j = 0; j < chains; ++j) {
            sums[j] += a * b;
            hidden(sums[j]);
        }
    }
    return sums[0][0];
}

// One instruction set: its arrangements of vectors of so many lanes.
// NOLINTBEGIN(bugprone-macro-parentheses): attributes
#define FENDRA_PEAK(set, attribute)                                                          \
    template <int lanes, int chains, int group, bool nops>                                   \
    attribute static double separate##set() {                                                \
        return separateWork<lanes, chains, group, nops>();                                   \
    }                                                                                        \
    template <int lanes, int chains>                                                         \
    attribute static double fused##set() {                                                   \
        return fusedWork<lanes, chains>();                                                   \
    }                                                                                        \
    template <int lanes, int chains, int group>                                              \
    static void addSeparate##set(std::vector<Arrangement>& all) {                            \
        all.push_back({Operations::separate, lanes, chains, group, false,                    \
                       separate##set<lanes, chains, group, false>});                         \
        all.push_back({Operations::separate, lanes, chains, group, true,                     \
                       separate##set<lanes, chains, group, true>});                          \
    }                                                                                        \
    template <int lanes>                                                                     \
    static void add##set(std::vector<Arrangement>& all, bool fused) {                        \
        addSeparate##set<lanes, 8, 1>(all);                                                  \
        addSeparate##set<lanes, 8, 2>(all);                                                  \
        addSeparate##set<lanes, 8, 4>(all);                                                  \
        addSeparate##set<lanes, 12, 1>(all);                                                 \
        if (fused) {                                                                         \
            all.push_back({Operations::fused, lanes, 12, 12, false, fused##set<lanes, 12>}); \
        }                                                                                    \
    }
#if defined(__x86_64__) || defined(__i386__)
FENDRA_PEAK(Avx512, [[gnu::target("avx512f")]])
FENDRA_PEAK(Avx2, [[gnu::target("avx2,fma")]])
#endif
FENDRA_PEAK(Baseline, )
// NOLINTEND(bugprone-macro-parentheses)

static std::vector<Arrangement> allArrangements() {
    std::vector<Arrangement> all;
#if defined(__x86_64__) || defined(__i386__)
    const kernels::InstructionSet widest = kernels::widestInstructionSet();
    if (widest == kernels::InstructionSet::avx512) {
        addAvx512<8>(all, true);
    }
    if (widest != kernels::InstructionSet::baseline && __builtin_cpu_supports("fma")) {
        addAvx2<4>(all, true);
        addAvx2<2>(all, true);
    }
    addBaseline<2>(all, false);
#else
    addBaseline<2>(all, true);
#endif
    return all;
}

std::optional<PeakJob> PeakJob::fastest(Operations operations) {
    static const std::vector<Arrangement> all = allArrangements();
    std::vector<PeakJob> jobs;
    for (const Arrangement& arrangement : all) {
        if (arrangement.operations == operations) {
            jobs.push_back(PeakJob(arrangement));
        }
    }
    for (int turn = 0; turn < 60; ++turn) {
        for (PeakJob& job : jobs) {
            const double begin = processorSeconds();
            job.run();
            job.measured = std::max(job.measured, job.flops() / (processorSeconds() - begin));
        }
    }
    const auto best = std::max_element(
        jobs.begin(), jobs.end(),
        [](const PeakJob& a, const PeakJob& b) { return a.measured < b.measured; });
    return best == jobs.end() ? std::nullopt : std::optional<PeakJob>(*best);
}

void PeakJob::load(const Problem& /*problem*/) {}

void PeakJob::run() {
    sum = chosen->work();
}

std::vector<double> PeakJob::result() const {
    return {sum};
}

double PeakJob::flops() const {
    return 2.0 * steps * chosen->chains * chosen->lanes;
}

std::string PeakJob::arrangement() const {
    std::string text = std::to_string(64 * chosen->lanes) + " bits";
    if (chosen->operations == Operations::separate) {
        const std::string count = std::to_string(chosen->group);
        text += chosen->group == 1 ? ", products and sums by turns"
                                   : ", " + count + " products and then " + count + " sums";
    }
    return text + (chosen->nops ? ", NOPs between them" : "");
}

double measureClock() {
    constexpr int rounds = 20000, chain = 16;
    double shortest = 1.0;
    unsigned long value = 1;
    for (int repetition = 0; repetition < 30; ++repetition) {
        const double begin = processorSeconds();
        unsigned long summand = 3;
        for (int i = 0; i < rounds; ++i) {
#pragma GCC unroll 16
            for (int j = 0; j < chain; ++j) {
                value += summand;
                asm volatile("" : "+r"(value), "+r"(summand));
            }
        }
        shortest = std::min(shortest, processorSeconds() - begin);
    }
    return static_cast<double>(rounds) * chain / shortest;
}
