#include "kernels/convolution.h"

#include "kernels/MeasuredForm.h"
#include "kernels/WorkWatch.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <cstddef>

namespace kernels {

void plain::convolve(const double* w, const double* b, int L, int S, double* result) {
    for (int n = 0; n < L; ++n) {
        const double* last = w + S - 1 + n;
        double sum = 0.0;
        for (int k = 0; k < S; ++k) {
            sum += last[-k] * b[k];
        }
        result[n] = sum;
    }
}

void plain::convolveCausal(const double* x, const double* y, int N, double* result) {
    for (int n = 0; n < N; ++n) {
        double sum = 0.0;
        for (int k = 0; k <= n; ++k) {
            sum += x[n - k] * y[k];
        }
        result[n] = sum;
    }
}

// Outputs are computed side by side, `lanes` to a vector and as many vectors as the registers hold,
// while k runs. A vector takes one load, one product and one sum a term, and of loads there are two
// a cycle, one where each crosses a cache line. So the samples that a block needs are copied
// `lanes` times, each copy moved by one more sample, which makes every load an aligned one: 64 kB
// with eight lanes, copied in a fifteenth of the time that the terms take.
template <int lanes>
static constexpr int sideBySide = lanes == 8 ? 16 : 12;  // of 32 registers, or 16
template <int lanes>
static constexpr int blockOutputs = lanes == 8 ? 512 : 480;
static constexpr int blockTerms = 512, copyLength = 512 + blockTerms;

namespace {

// The sums of a block while k runs, and the samples for its next terms.
template <int lanes>
struct OutputBlock {
    alignas(64) double sums[std::size_t{blockOutputs<lanes>}] = {};
    alignas(64) double copies[std::size_t{lanes}][copyLength];
    double samples[copyLength];
};

}  // namespace

// samples[1 .. length] come from w; samples[0] is of no use. Copy t holds at p the sample p - t,
// from p = lanes on.
template <int lanes>
[[gnu::always_inline]] static inline void load(OutputBlock<lanes>& block, const double* w,
                                               int length) {
    std::copy_n(w, length, block.samples + 1);
    std::fill(block.samples + 1 + length, block.samples + copyLength, 0.0);
    for (int t = 0; t < lanes; ++t) {
        for (int p = lanes; p <= length; p += lanes) {
            *vectorsAt<lanes>(block.copies[t] + p) = *vectorsAt<lanes>(block.samples + p - t);
        }
    }
}

// Adds the products of `terms` terms, a multiple of lanes, to `vectors` vectors of sums from n on.
template <int lanes, int vectors>
[[gnu::always_inline]] static inline void addTerms(OutputBlock<lanes>& block, const double* b,
                                                   int terms, int n) {
    Vector<lanes> sums[std::size_t{vectors}];
#pragma GCC unroll 16
    for (int j = 0; j < vectors; ++j) {
        sums[j] = vectorsAt<lanes>(block.sums + n)[j];
    }
    for (int k = 0; k < terms; k += lanes) {
        const double* samples = block.copies[0] + terms + n - k;
        for (int t = 0; t < lanes; ++t, samples += copyLength) {
#pragma GCC unroll 16
            for (int j = 0; j < vectors; ++j) {
                sums[j] += vectorsAt<lanes>(samples)[j] * b[k + t];
            }
        }
    }
#pragma GCC unroll 16
    for (int j = 0; j < vectors; ++j) {
        vectorsAt<lanes>(block.sums + n)[j] = sums[j];
    }
}

// Outputs n0 .. n0 + count - 1.
template <int lanes>
[[gnu::always_inline]] static inline void convolveBlock(const double* w, const double* b, int S,
                                                        int count, double* result,
                                                        WorkCount& work) {
    constexpr int vectors = sideBySide<lanes>;
    OutputBlock<lanes> block;
    const int wholeTerms = S - S % lanes;
    for (int k = 0; k < wholeTerms; k += blockTerms) {
        const int terms = std::min(blockTerms, wholeTerms - k);
        load(block, w + S - k - terms, count + terms - 1);
        int n = 0;
        for (; n + vectors * lanes <= count; n += vectors * lanes) {
            addTerms<lanes, vectors>(block, b + k, terms, n);
        }
        for (; n + 4 * lanes <= count; n += 4 * lanes) {
            addTerms<lanes, 4>(block, b + k, terms, n);
        }
        for (; n < count; n += lanes) {
            addTerms<lanes, 1>(block, b + k, terms, n);
        }
        work.add(static_cast<double>(count) * terms);
    }
    for (int k = wholeTerms; k < S; ++k) {
        for (int n = 0; n < count; ++n) {
            block.sums[n] += w[S - 1 + n - k] * b[k];
        }
    }
    std::copy_n(block.sums, count, result);
}

template <int lanes>
[[gnu::always_inline]] static inline void convolveBlocks(const double* w, const double* b, int L,
                                                         int S, double* result) {
    WorkCount work(static_cast<double>(L) * S);
    constexpr int outputs = blockOutputs<lanes>;
    for (int n = 0; n < L; n += outputs) {
        convolveBlock<lanes>(w + n, b, S, std::min(outputs, L - n), result + n, work);
    }
}

FENDRA_FORMS(convolveForm, convolveBlocks)

static void tryForm(InstructionSet set) {
    constexpr int outputs = 480, terms = 256;
    double w[outputs + terms] = {}, b[terms] = {};
    double result[outputs];
    convolveForm(set, w, b, outputs, terms, result);
}

InstructionSet convolutionForm(double multiplyAdds) {
    static MeasuredForm form(tryForm);
    return form.setFor(multiplyAdds);
}

void convolve(const double* w, const double* b, int L, int S, double* result) {
    convolveForm(convolutionForm(static_cast<double>(L) * S), w, b, L, S, result);
}

// The terms after those that all outputs of a block have, k > first, one vector of outputs at a
// time: those that all of its outputs have side by side, then the others.
template <int lanes>
[[gnu::always_inline]] static inline void addLastTerms(const double* x, const double* y, int first,
                                                       int end, double* result) {
    for (int n = first; n < end; n += lanes) {
        int k = first + 1;
        if (n + lanes <= end) {
            Vector<lanes> sums = *vectorsAt<lanes>(result + n);
            for (; k <= n; ++k) {
                sums += *vectorsAt<lanes>(x + n - k) * y[k];
            }
            *vectorsAt<lanes>(result + n) = sums;
        }
        for (int i = n; i < std::min(n + lanes, end); ++i) {
            for (int j = k; j <= i; ++j) {
                result[i] += x[i - j] * y[j];
            }
        }
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void convolveCausalBlocks(const double* x, const double* y,
                                                               int N, double* result) {
    constexpr int blockLength = 128;
    WorkCount work(0.5 * N * N);
    for (int n = 0; n < N; n += blockLength) {
        const int end = std::min(n + blockLength, N);
        convolveBlock<lanes>(x, y, n + 1, end - n, result + n, work);
        addLastTerms<lanes>(x, y, n, end, result);
    }
}

FENDRA_FORMS(convolveCausalForm, convolveCausalBlocks)

void convolveCausal(const double* x, const double* y, int N, double* result) {
    convolveCausalForm(convolutionForm(0.5 * N * N), x, y, N, result);
}

}  // namespace kernels
