#include "signal/PseudoInverseUnfolder.h"

#include "kernels/WorkWatch.h"
#include "kernels/convolution.h"
#include "matrix/SquareMatrix.h"
#include "matrix/Vector.h"
#include "signal/FoldEngine.h"
#include "signal/watched.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <new>
#include <vector>

// Row 0: the autocorrelation of the kernel h, without wrapping round, which is what h and h
// backwards fold to, from the last sample to the first. Every further row is the one above it,
// moved by one place.
static void fillAutocorrelation(SquareMatrix<double>& R, const double* h, const double* backwards,
                                int N) {
    double* lags = R.rowTable[0];
    kernels::convolveCausal(backwards, h, N, lags);
    std::reverse(lags, lags + N);
    kernels::WorkCount work(kernels::WorkCount::unknown);
    for (int i = 1; i < N; ++i) {
        work.add(kernels::WorkWatch::element * N);
        R.rowTable[i][0] = lags[i];
        std::copy_n(R.rowTable[i - 1], N - 1, R.rowTable[i] + 1);
    }
}

// c = f convolved with h: its first N samples, and the others from the last one inwards.
static void makePseudoIdentity(const double* f, const double* h, int N, std::vector<double>& c) {
    const std::vector<double> fBackwards(std::reverse_iterator(f + N), std::reverse_iterator(f));
    const std::vector<double> hBackwards(std::reverse_iterator(h + N), std::reverse_iterator(h));
    kernels::convolveCausal(f, h, N, c.data());
    kernels::convolveCausal(hBackwards.data(), fBackwards.data(), N - 1, c.data() + N);
    std::reverse(c.begin() + N, c.end());
}

static double sumOfSquares(const double* values, std::size_t count) {
    double sum = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        sum += values[i] * values[i];
    }
    return sum;
}

static double scalingFactor(std::int32_t kind, const double* f, int N,
                            const std::vector<double>& c) {
    const auto length = static_cast<std::size_t>(N);
    switch (kind) {
        case 1:
            return 1.0 / c[length - 1];
        case 2:
            return 1.0 / std::sqrt(sumOfSquares(c.data(), c.size()));
        case 3: {
            double sum = 0.0;
            for (const double value : c) {
                sum += std::abs(value);
            }
            return 1.0 / sum;
        }
        case 4:
            return 1.0 / std::sqrt(sumOfSquares(f, length));
        default:
            return 1.0;
    }
}

// From the outside in.
static double deviationOfZeros(const std::vector<double>& c, int N) {
    double sum = 0.0;
    for (std::size_t i = 0; i + 1 < static_cast<std::size_t>(N); ++i) {
        const double behind = c[c.size() - 1 - i];
        sum += behind * behind + c[i] * c[i];
    }
    return std::sqrt(sum / (2.0 * N - 2.0));
}

// f becomes the solution of the normal equations. false: no memory, or a kernel without any energy.
// Nearly all of the work of a run is in the elimination, so its share is that of the run.
static bool solveNormalEquations(const double* h, int N, Vector<double>& f) {
    SquareMatrix<double> R(N);
    Vector<int> pivots;
    if (R.errorFlag != 0 || f.setLength(N, 0) != 1 || pivots.setLength(N, 0) != 1) {
        return false;
    }
    std::reverse_copy(h, h + N, f.dataBlock);
    {
        const kernels::WorkPart before(0.0, 0.0);
        fillAutocorrelation(R, h, f.dataBlock, N);
    }
    if (R.luDecompose(pivots) != 1) {
        return false;
    }
    const kernels::WorkPart after(1.0, 1.0);
    return R.luSolve(f, pivots) == 1;
}

int PseudoInverseUnfolder::unfold(const double* signal, int signalLength, const double* kernel,
                                  int kernelLength, double* result, int resultLength) {
    const int N = signalLength;
    if (N != kernelLength || N != resultLength) {
        return 0;
    }
    if (N == 0) {
        return 1;
    }
    bool solved = false;
    const int done = watched(within, [&] {
        std::vector<double> c(2 * static_cast<std::size_t>(N) - 1);
        Vector<double> f;
        solved = solveNormalEquations(kernel, N, f);
        if (!solved) {
            return;
        }
        const kernels::WorkPart after(1.0, 1.0);
        makePseudoIdentity(f.dataBlock, kernel, N, c);
        const double factor = scalingFactor(scalingKind, f.dataBlock, N, c);
        if (factor != 1.0) {
            std::for_each_n(f.dataBlock, N, [factor](double& value) { value *= factor; });
            makePseudoIdentity(f.dataBlock, kernel, N, c);
        }
        if (FoldEngine().fold(f.dataBlock, N, signal, N, result, N, 0) != 1) {
            throw std::bad_alloc();
        }
        zeroDeviation = deviationOfZeros(c, N);
        oneDeviation = 1.0 - c[static_cast<std::size_t>(N) - 1];
    });
    return done == 1 && solved ? 1 : 0;
}
