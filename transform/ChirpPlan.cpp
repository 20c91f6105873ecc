#include "transform/ChirpPlan.h"

#include "kernels/WorkWatch.h"
#include "kernels/hartleyFold.h"
#include "kernels/spectra.h"
#include "transform/FourierTransform.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <new>

static constexpr int samplesAtOnce = 512;  // in the first-level cache
static constexpr int longestChirp = 1 << 29;

// A power of two, for an n that is not too long.
static int convolutionLength(int n) {
    if (n > longestChirp) {
        throw std::bad_alloc();
    }
    return static_cast<int>(FourierTransform::nextPowerOfTwo(2 * n));
}

namespace {

// Arrays in one piece of memory, each starting with a cache line.
class Memory {
public:
    explicit Memory(std::int64_t doubles) {
        constexpr std::int64_t most = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(double);
        if (doubles > most - line) {
            throw std::bad_alloc();
        }
        std::size_t space = static_cast<std::size_t>(doubles + line) * sizeof(double);
        memory = std::make_unique_for_overwrite<double[]>(static_cast<std::size_t>(doubles + line));
        void* start = memory.get();
        std::align(line * sizeof(double), space - line * sizeof(double), start, space);
        next = static_cast<double*>(start);
    }

    static std::int64_t wholeLines(std::int64_t doubles) {
        return (doubles + line - 1) / line * line;
    }

    double* take(std::int64_t doubles) {
        double* const start = next;
        next += wholeLines(doubles);
        return start;
    }
    std::unique_ptr<double[]> release() { return std::move(memory); }

private:
    static constexpr std::int64_t line = 8;
    std::unique_ptr<double[]> memory;
    double* next;
};

}  // namespace

// Arrays that are worked on together start some lines apart, not at the same place in a page.
static constexpr std::int64_t gap = 32;

ChirpPlan::ChirpPlan(int length) : n(length), m(convolutionLength(length)) {
    const std::int64_t spectrumSize = kernels::foldSpectrumSize(m);
    const std::int64_t room = Memory::wholeLines(kernels::foldRoom(m)) + gap;
    Memory all(2 * (room + Memory::wholeLines(n) + Memory::wholeLines(spectrumSize)) +
               Memory::wholeLines(kernels::foldTableSize(m)));
    work = {all.take(room), all.take(room)};
    chirp = {all.take(n), all.take(n)};
    spectrum = {all.take(spectrumSize), all.take(spectrumSize)};
    tables = all.take(kernels::foldTableSize(m));
    memory = all.release();

    FourierTransform::makeChirp(chirp.re, chirp.im, n, n, -1);
    kernels::makeFoldTables(tables, m);
    kernels::WorkWatch::passed(4.0 * kernels::WorkWatch::element * n);
    makeSpectrum(spectrum, -1);
    const auto hasZero = [=](const double* part) {
        return std::find(part, part + spectrumSize, 0.0) != part + spectrumSize;
    };
    if (hasZero(spectrum.re) || hasZero(spectrum.im)) {
        Memory second(2 * Memory::wholeLines(spectrumSize));
        other = {second.take(spectrumSize), second.take(spectrumSize)};
        memoryOfOther = second.release();
        makeSpectrum(other, +1);
    }
}

// Of the conjugate chirp, continued up to index m - 1.
void ChirpPlan::makeSpectrum(const Arrays& result, int sign) {
    std::copy_n(chirp.re, n, work.re);
    if (sign < 0) {
        std::transform(chirp.im, chirp.im + n, work.im, std::negate());
    } else {
        std::copy_n(chirp.im, n, work.im);
    }
    FourierTransform::extendChirp(work.re, work.im, n, m);
    kernels::WorkWatch::passed(2.0 * kernels::WorkWatch::element * m);
    kernels::makeFoldSpectrum(work.re, work.im, m, tables, result.re, result.im);
}

void ChirpPlan::transform(double* re, double* im, int sign) {
    using kernels::Fixed;
    const double chirpSign = sign < 0 ? 1.0 : -1.0;
    kernels::multiplyScaled(re, im, 1.0, chirp.re, chirp.im, chirpSign, 1.0, n, work.re, work.im);
    std::fill(work.re + n, work.re + m / 2, 0.0);
    std::fill(work.im + n, work.im + m / 2, 0.0);
    kernels::WorkWatch::passed(2.0 * kernels::WorkWatch::element * n);

    const bool usesOther = sign > 0 && other.re != nullptr;
    const Arrays& fixed = usesOther ? other : spectrum;
    kernels::foldWithSpectrum(work.re, work.im, m, tables, fixed.re, fixed.im,
                              sign < 0 || usesOther ? Fixed::asGiven : Fixed::conjugate);

    // Sample n + k of the convolution takes the chirp at indices 1 to 2 n - 1 only: no negative
    // index is needed, and nothing wraps round. So the transform is the block that starts at n,
    // where the chirp equals that from 0 on except for its sign, which goes to the scale.
    const double scale = (n % 2 == 0 ? 1.0 : -1.0) / m;
    for (int first = 0; first < n; first += samplesAtOnce) {
        const int count = std::min(samplesAtOnce, n - first);
        kernels::unfold(work.re, work.im, m, tables, n + first, count, re + first, im + first);
        kernels::multiplyScaled(re + first, im + first, scale, chirp.re + first, chirp.im + first,
                                chirpSign, sign > 0 ? 1.0 / n : 1.0, count, re + first, im + first);
    }
}
