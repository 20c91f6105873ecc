#include "kernels/hartleyFold.h"

#include "kernels/WorkWatch.h"
#include "kernels/hartley.h"
#include "kernels/hartleyButterflies.h"
#include "kernels/hartleyFoldParts.h"
#include "kernels/hartleyTwiddles.h"
#include "kernels/spectra.h"

#include <algorithm>
#include <type_traits>

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
    return n < shortestFast ? 0 : 3 * (std::int64_t{n} / 4);
}

void makeFoldTables(double* tables, int n) {
    if (n < shortestFast) {
        return;
    }
    const int last = log2Of(n) - 2;
    for (int k = isEven(last) ? 4 : 3; k <= last; k += 2) {
        const int half = 1 << (k - 1), length = std::min(half, TwiddleRun::longest);
        TwiddleRecursion ends(k - log2Of(length));
        for (int first = 0; first < half; first += length) {
            TwiddleRun run;
            fill<2>(run, k, first, length, ends);
            std::copy_n(run.sines + 1, length, tables + n / 4 + half + first);
            std::copy_n(run.cosines + 1, length, tables + n / 2 + half + first);
        }
    }
    const double *sines = tables + n / 4 + n / 8, *cosines = tables + n / 2 + n / 8;
    tables[0] = 0.0;
    tables[n / 8] = 1.0;
    int reversed = 0;
    for (int t = 1; t < n / 8; ++t) {
        int bit = n / 16;
        for (; (reversed & bit) != 0; bit /= 2) {
            reversed ^= bit;
        }
        reversed ^= bit;
        tables[reversed] = sines[t - 1];
        tables[n / 8 + reversed] = cosines[t - 1];
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
    const bool inFours = isEven(log2Of(n));
    const int joined = inFours ? 16 : 32;  // the length of the transforms that tiles leave
    WorkCount work(WorkCount::unknown);
    fold::firstStages(d, n, goesBack);
    int size = n / (inFours ? 4 : 8);
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
        for (; K < n; K *= 4) {
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
        transformWith({re, im}, n, fold::Twiddles(tables, n),
                      fold::Keeping{spectrumRe, spectrumIm});
    }
}

void foldWithSpectrum(double* re, double* im, int n, const double* tables, const double* spectrumRe,
                      const double* spectrumIm, Fixed fixed) {
    if (n < shortestFast) {
        plain::foldWithSpectrum(re, im, n, spectrumRe, spectrumIm, fixed);
    } else {
        transformWith({re, im}, n, fold::Twiddles(tables, n),
                      fold::Product{spectrumRe, spectrumIm, fixed == Fixed::conjugate});
    }
}

}  // namespace kernels
