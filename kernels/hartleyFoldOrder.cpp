#include "kernels/hartleyFoldOrder.h"

#include "kernels/hartleyFold.h"
#include "kernels/shuffles.h"
#include "kernels/vectors.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace kernels {

namespace {

// Where a folded transform has its samples 8 i to 8 i + 7: the last seven lie side by side after
// the element `run`, or, if that is negative, the other way round after that of its amount; the
// first one is `head`. The tables hold each in the bytes of a double.
struct Place {
    std::int32_t run, head;
};

struct Pair {
    const double *re, *im;
};

}  // namespace

static std::ptrdiff_t startOfPlaces(int n) {
    return std::ptrdiff_t{n} / 4 * 3;
}

void fold::findPlaces(double* tables, const Parts& d, int n) {
    constexpr int length = Run::length;
    const int half = n / 2;
    double* const places = tables + startOfPlaces(n);
    const auto note = [=](int sample, std::int32_t Place::*which, std::ptrdiff_t value) {
        auto found = std::bit_cast<Place>(places[sample / length]);
        found.*which = static_cast<std::int32_t>(value);
        places[sample / length] = std::bit_cast<double>(found);
    };
    std::fill_n(places, n / length, 0.0);
    forEachRun(n, firstLength(n), [&](const Run& run) {
        const int lowest = run.step > 0 ? run.next - 1 : run.next - (length - 1);
        const int image = run.slot == 0 ? half : n - run.head;
        const std::ptrdiff_t place = d.distance(run.slot);
        const std::ptrdiff_t placeOfImage = d.distance(half + run.slot);
        note(lowest, &Place::run, run.step * place);
        note(n - length - lowest, &Place::run, -run.step * placeOfImage);
        note(run.head, &Place::head, place);
        note(image, &Place::head, placeOfImage);
    });
}

static constexpr int run = fold::Run::length;

// The samples that have this place.
template <int lanes>
[[gnu::always_inline]] static inline void takeRun(Pair folded, const Place& place, double* re,
                                                  double* im) {
    if (place.run >= 0) {
#pragma GCC unroll 4
        for (int i = 0; i < run; i += lanes) {
            *vectorsAt<lanes>(re + i) = *vectorsAt<lanes>(folded.re + place.run + i);
            *vectorsAt<lanes>(im + i) = *vectorsAt<lanes>(folded.im + place.run + i);
        }
    } else {
        // The first vector one sample too late, as nothing may be read after the run.
#pragma GCC unroll 4
        for (int i = 0; i < run; i += lanes) {
            const int late = i == 0 ? 1 : 0;
            const std::ptrdiff_t from = run - late - i - (lanes - 1) - place.run;
            Vector<lanes> a = *vectorsAt<lanes>(folded.re + from);
            Vector<lanes> b = *vectorsAt<lanes>(folded.im + from);
            reverseLanes<lanes>(a);
            reverseLanes<lanes>(b);
            *vectorsAt<lanes>(re + late + i) = a;
            *vectorsAt<lanes>(im + late + i) = b;
        }
    }
    re[0] = folded.re[place.head];
    im[0] = folded.im[place.head];
}

// Runs that begin or end outside are taken as a whole, and the part that is wanted is copied.
template <int lanes>
[[gnu::always_inline]] static inline void takeRuns(Pair folded, const double* places, int first,
                                                   int count, double* re, double* im) {
    constexpr int width = std::min(lanes, 4);
    const auto takePart = [=](int sample, int skipped, int taken) {
        double wholeRe[run], wholeIm[run];
        const auto place = std::bit_cast<Place>(places[sample / run]);
        takeRun<width>(folded, place, wholeRe, wholeIm);
        std::copy_n(wholeRe + skipped, taken, re + (sample - first));
        std::copy_n(wholeIm + skipped, taken, im + (sample - first));
    };
    int sample = first;
    if (first % run != 0) {
        const int taken = std::min(run - first % run, count);
        takePart(sample, first % run, taken);
        sample += taken;
    }
    const int end = first + count;
    for (; sample <= end - run; sample += run) {
        const auto place = std::bit_cast<Place>(places[sample / run]);
        takeRun<width>(folded, place, re + (sample - first), im + (sample - first));
    }
    if (sample < end) {
        takePart(sample, 0, end - sample);
    }
}

FENDRA_VARIANTS(runsVariant, takeRuns)

void unfold(const double* foldedRe, const double* foldedIm, int n, const double* tables, int first,
            int count, double* re, double* im) {
    if (foldTableSize(n) == 0) {
        std::copy_n(foldedRe + first, count, re);
        std::copy_n(foldedIm + first, count, im);
    } else {
        runsVariant(Pair{foldedRe, foldedIm}, tables + startOfPlaces(n), first, count, re, im);
    }
}

}  // namespace kernels
