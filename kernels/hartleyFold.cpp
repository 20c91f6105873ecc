#include "kernels/hartleyFold.h"

#include "kernels/WorkWatch.h"
#include "kernels/hartley.h"
#include "kernels/hartleyButterflies.h"
#include "kernels/hartleyFoldOrder.h"
#include "kernels/hartleyFoldParts.h"
#include "kernels/hartleyTwiddles.h"
#include "kernels/spectra.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace kernels {

void plain::makeFoldSpectrum(double* re, double* im, int n, double* spectrumRe,
                             double* spectrumIm) {
    plain::hartley(re, n, 0);
    plain::hartley(im, n, 0);
    plain::pairSpectra(re, im, n, +1);
    std::copy_n(re, n, spectrumRe);
    std::copy_n(im, n, spectrumIm);
}

void plain::foldWithSpectrum(double* re, double* im, int n, const double* spectrumRe,
                             const double* spectrumIm, Fixed fixed) {
    std::fill(re + n / 2, re + n, 0.0);
    std::fill(im + n / 2, im + n, 0.0);
    plain::hartley(re, n, 0);
    plain::hartley(im, n, 0);
    plain::pairSpectra(re, im, n, +1);
    for (int i = 0; i < n; ++i) {
        const int j = fixed == Fixed::asGiven ? i : (n - i) % n;
        const double factorRe = spectrumRe[j];
        const double factorIm = fixed == Fixed::asGiven ? spectrumIm[j] : -spectrumIm[j];
        plain::multiplySpectra(re + i, im + i, &factorRe, &factorIm, 1);
    }
    plain::pairSpectra(re, im, n, -1);
    plain::hartley(re, n, 0);
    plain::hartley(im, n, 0);
}

static constexpr int shortestFast = 256;

std::int64_t foldTableSize(int n) {
    return n < shortestFast ? 0 : 3 * (std::int64_t{n} / 4) + n / 8;
}

// Elements t of both, of a length that is a power of two, change places with those at t reversed.
static void reverseBits(double* a, double* b, int length) {
    for (int t = 1, reversed = 0; t < length; ++t) {
        int bit = length / 2;
        for (; (reversed & bit) != 0; bit /= 2) {
            reversed ^= bit;
        }
        reversed ^= bit;
        if (t < reversed) {
            std::swap(a[t], a[reversed]);
            std::swap(b[t], b[reversed]);
        }
    }
}

static fold::Parts partsOf(double* re, double* im, int n) {
    return {re, im, log2Of(128 * fold::firstLength(n))};
}

void makeFoldTables(double* tables, int n) {
    if (n < shortestFast) {
        return;
    }
    // The twiddles of the longest transforms that a stage joins, those of length n / 4, in the
    // order of their angles. Those of shorter ones are among them.
    const int last = log2Of(n) - 2, size = n / 8;
    double *sines = tables, *cosines = tables + size;
    const int length = std::min(size, TwiddleRun::longest);
    TwiddleRecursion ends(last - log2Of(length));
    for (int t = 0; t < size; t += length) {
        TwiddleRun twiddles;
        fill<2>(twiddles, last, t, length, ends);
        std::copy_n(twiddles.sines, length, sines + t);
        std::copy_n(twiddles.cosines, length, cosines + t);
    }
    for (int first = fold::firstLength(n), K = first; K < n; K *= 4) {
        double *sinesBack = tables + n / 4 + K / 2, *cosinesBack = tables + n / 2 + K / 2;
        const int angle = n / 4 / K;
        fold::forEachRun(K, first, [=](const fold::Run& run) {
            for (int i = 0; i < fold::Run::length; ++i) {
                const int t = angle * (i == 0 ? run.head : run.next + run.step * (i - 1));
                sinesBack[run.slot + i] = sines[t];
                cosinesBack[run.slot + i] = cosines[t];
            }
        });
    }
    reverseBits(sines, cosines, size);
    fold::findPlaces(tables, partsOf(nullptr, nullptr, n), n);
}

std::int64_t foldRoom(int n) {
    return n < shortestFast ? n : partsOf(nullptr, nullptr, n).distance(n);
}

// Samples one after another move to their pages.
static void spread(fold::Parts d, std::ptrdiff_t samples) {
    for (std::ptrdiff_t first = (samples - 1) / d.page() * d.page(); first > 0; first -= d.page()) {
        const fold::Parts to = d.at(first);
        std::copy_backward(d.re + first, d.re + first + d.page(), to.re + d.page());
        std::copy_backward(d.im + first, d.im + first + d.page(), to.im + d.page());
    }
}

std::int64_t foldSpectrumSize(int n) {
    return n < shortestFast ? n : std::int64_t{n} + 32;
}

// Pieces of this length stay near the core, a mirrored pair of them and their spectrum. Signals up
// to the other length are one piece: with them, short pieces cost more than the first-level cache
// saves.
static constexpr int longestPiece = 1024, longestWhole = 4096;

static void stagesBack(fold::Parts d, int length, int K, int last, const fold::Twiddles& twiddles) {
    for (; 4 * K <= last; K *= 4) {
        fold::joinBack(d, length, K, twiddles);
    }
}

// From the first stages on to the spectrum. On the way back, if there is one, those stages follow
// that stay within pieces; what is left are passes over all of the signal.
template <typename Use>
static void transformWith(fold::Parts d, int n, const fold::Twiddles& twiddles, const Use& use) {
    constexpr bool goesBack = std::is_same_v<Use, fold::Product>;
    const int joined = fold::firstLength(n);
    WorkCount work(WorkCount::unknown);
    fold::firstStages(d, n, goesBack);
    int size = n / (isEven(log2Of(n)) ? 4 : 8);
    for (; size > longestPiece; size /= 4) {
        work.add(2 * WorkWatch::element * n);
        fold::joinGroups(d, n, size, twiddles);
    }
    const int piece = n <= longestWhole ? n : size, head = std::min(n, 2 * piece);
    work.add(4 * WorkWatch::element * head);
    for (int s = size; s > 4; s /= 4) {
        fold::joinGroups(d, head, s, twiddles);
    }
    fold::useGroups(d, head, n, twiddles, use);
    for (int group = head; group < n; group *= 2) {
        for (int i = 0; i < group / 2; i += piece) {
            work.add(4 * WorkWatch::element * piece);
            const int low = group + i, high = 2 * group - i - piece;
            for (int s = size; s > 4; s /= 4) {
                fold::joinBlocks(d, low, high, piece, s, twiddles);
            }
            fold::useBlocks(d, low, high, piece, group, n, twiddles, use);
            if (goesBack) {
                stagesBack(d.at(low), piece, joined, piece, twiddles);
                stagesBack(d.at(high), piece, joined, piece, twiddles);
            }
        }
    }
    if (goesBack) {
        stagesBack(d, head, joined, piece, twiddles);
        int K = joined;
        while (4 * K <= piece) {
            K *= 4;
        }
        for (; 4 * K < n; K *= 16) {
            work.add(2 * WorkWatch::element * n);
            fold::joinBackTwice(d, n, K, twiddles);
        }
        if (K < n) {
            work.add(2 * WorkWatch::element * n);
            fold::joinBack(d, n, K, twiddles);
        }
    }
}

void makeFoldSpectrum(double* re, double* im, int n, const double* tables, double* spectrumRe,
                      double* spectrumIm) {
    if (n < shortestFast) {
        plain::makeFoldSpectrum(re, im, n, spectrumRe, spectrumIm);
    } else {
        const fold::Parts d = partsOf(re, im, n);
        spread(d, n);
        transformWith(d, n, fold::Twiddles(tables, n), fold::Keeping{spectrumRe, spectrumIm});
    }
}

void foldWithSpectrum(double* re, double* im, int n, const double* tables, const double* spectrumRe,
                      const double* spectrumIm, Fixed fixed) {
    if (n < shortestFast) {
        plain::foldWithSpectrum(re, im, n, spectrumRe, spectrumIm, fixed);
    } else {
        const fold::Parts d = partsOf(re, im, n);
        spread(d, n / 2);
        transformWith(d, n, fold::Twiddles(tables, n),
                      fold::Product{spectrumRe, spectrumIm, fixed == Fixed::conjugate});
    }
}

}  // namespace kernels
