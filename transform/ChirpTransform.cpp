#include "kernels/WorkWatch.h"
#include "kernels/spectra.h"
#include "kernels/trigonometry.h"
#include "transform/FourierTransform.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <numbers>

static constexpr int longestChirp = 1 << 29;
static constexpr int anglesAtOnce = 256;

namespace {

// The arrays of one transform in one piece of memory: data and conjugate chirp of m elements, then
// the chirp of n. m elements fill whole cache lines, so that each array starts with one.
class WorkArrays {
public:
    double *dataRe, *dataIm, *conjugateRe, *conjugateIm, *chirpRe, *chirpIm;

    WorkArrays(int m, int n) {
        const std::int64_t total = 4 * std::int64_t{m} + 2 * std::int64_t{n} + lineDoubles;
        constexpr std::int64_t most = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(double);
        if (total > most) {
            throw std::bad_alloc();
        }
        std::size_t space = static_cast<std::size_t>(total) * sizeof(double);
        block = std::make_unique_for_overwrite<double[]>(static_cast<std::size_t>(total));
        void* start = block.get();
        std::align(line, space - line, start, space);
        dataRe = static_cast<double*>(start);
        dataIm = dataRe + m;
        conjugateRe = dataIm + m;
        conjugateIm = conjugateRe + m;
        chirpRe = conjugateIm + m;
        chirpIm = chirpRe + n;
    }

private:
    static constexpr std::size_t line = 64;  // bytes
    static constexpr std::int64_t lineDoubles = 8;
    std::unique_ptr<double[]> block;
};

}  // namespace

void FourierTransform::chirpTransform(double* re, double* im, int n, int sign) {
    if (n > longestChirp) {
        throw std::bad_alloc();
    }
    const auto m = static_cast<int>(nextPowerOfTwo(2 * n));
    const WorkArrays work(m, n);
    makeChirp(work.chirpRe, work.chirpIm, n, n, sign);
    kernels::WorkWatch::passed(4.0 * kernels::WorkWatch::element * n);

    std::copy_n(re, n, work.dataRe);
    std::copy_n(im, n, work.dataIm);
    kernels::multiplySpectra(work.dataRe, work.dataIm, work.chirpRe, work.chirpIm, n);
    std::fill(work.dataRe + n, work.dataRe + m, 0.0);
    std::fill(work.dataIm + n, work.dataIm + m, 0.0);

    std::copy_n(work.chirpRe, n, work.conjugateRe);
    std::transform(work.chirpIm, work.chirpIm + n, work.conjugateIm, std::negate());
    extendChirp(work.conjugateRe, work.conjugateIm, n, m);
    kernels::WorkWatch::passed(2.0 * kernels::WorkWatch::element * m);
    circularFold(work.conjugateRe, work.conjugateIm, work.dataRe, work.dataIm,
                 std::countr_zero(nextPowerOfTwo(m)));

    // Sample n + k of the convolution takes the chirp at indices 1 to 2 n - 1 only: no negative
    // index is needed, and nothing wraps round. So the transform is the block that starts at n,
    // where the chirp equals that from 0 on except for its sign.
    if (n % 2 != 0) {
        std::transform(work.chirpRe, work.chirpRe + n, work.chirpRe, std::negate());
        std::transform(work.chirpIm, work.chirpIm + n, work.chirpIm, std::negate());
    }
    std::copy_n(work.dataRe + n, n, re);
    std::copy_n(work.dataIm + n, n, im);
    kernels::multiplySpectra(re, im, work.chirpRe, work.chirpIm, n);
    if (sign > 0) {
        const double scale = 1.0 / n;
        std::for_each_n(re, n, [scale](double& value) { value *= scale; });
        std::for_each_n(im, n, [scale](double& value) { value *= scale; });
    }
}

void FourierTransform::makeChirp(double* chirpRe, double* chirpIm, int n, int m, int sign) {
    const double base = sign * std::numbers::pi / n;
    const auto period = 2 * static_cast<std::uint32_t>(n);
    // q is k^2 mod 2n, kept in integers. As pi k^2 / n the angle would grow to pi n, and its
    // rounding error with it.
    std::uint32_t q = 0;
    for (int first = 0; first < n; first += anglesAtOnce) {
        const int count = std::min(anglesAtOnce, n - first);
        double angles[anglesAtOnce];
        for (int i = 0; i < count; ++i) {
            angles[i] = q * base;
            q += 2 * static_cast<std::uint32_t>(first + i) + 1;
            if (q >= period) {
                q -= period;
            }
        }
        kernels::sinesAndCosines(angles, count, chirpIm + first, chirpRe + first);
    }
    std::fill(chirpRe + n, chirpRe + m, 0.0);
    std::fill(chirpIm + n, chirpIm + m, 0.0);
}

void FourierTransform::extendChirp(double* re, double* im, int n, int m) {
    const bool negate = n % 2 != 0;
    for (int i = n; i < m; ++i) {
        re[i] = negate ? -re[i - n] : re[i - n];
        im[i] = negate ? -im[i - n] : im[i - n];
    }
}

void FourierTransform::hartleyComplexTransform(double* re, double* im, int n, int sense) {
    if (sense >= 0) {
        hartleyTransform.hartley(re, n, 0);
        hartleyTransform.hartley(im, n, 0);
    }
    kernels::pairSpectra(re, im, n, sense);
    if (sense < 0) {
        hartleyTransform.hartley(re, n, 1);
        hartleyTransform.hartley(im, n, 1);
    }
}

void FourierTransform::circularFold(double* fixedRe, double* fixedIm, double* dataRe,
                                    double* dataIm, int logM) {
    const int m = 1 << logM;
    hartleyComplexTransform(fixedRe, fixedIm, m, +1);
    hartleyComplexTransform(dataRe, dataIm, m, +1);
    kernels::multiplySpectra(dataRe, dataIm, fixedRe, fixedIm, m);
    hartleyComplexTransform(dataRe, dataIm, m, -1);
}
