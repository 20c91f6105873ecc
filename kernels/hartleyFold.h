#pragma once

#include <cstdint>

namespace kernels {

// Circular convolution of complex signals with a fixed one, of length n, a power of two from 1 to
// 2^30, by their spectra X[k] = sum_j x[j] exp(+2 pi i j k / n). A spectrum comes from the Hartley
// transforms of the two parts (hartley.h, pairSpectra), and the way back goes through them as well;
// each value has the bits that these give, one after the other.

// The twiddles of both ways, which depend on n alone: foldTableSize(n) doubles.
std::int64_t foldTableSize(int n);
void makeFoldTables(double* tables, int n);

// The spectrum of the fixed signal, in (spectrumRe, spectrumIm), foldSpectrumSize(n) doubles each,
// in an order of its own. The signal is in the first n of foldRoom(n) doubles each, (re, im), of
// which nothing is left.
std::int64_t foldRoom(int n);
std::int64_t foldSpectrumSize(int n);
void makeFoldSpectrum(double* re, double* im, int n, const double* tables, double* spectrumRe,
                      double* spectrumIm);

// Whose spectrum it is that (spectrumRe, spectrumIm) stand for: that of the fixed signal, or that
// of its complex conjugate, S[k] becoming conj(S[-k]).
enum class Fixed { asGiven, conjugate };

// (re, im), foldRoom(n) doubles each, starts with a signal of n / 2, which counts as followed by
// zeros, and becomes n times its convolution with the fixed signal, in an order of its own.
void foldWithSpectrum(double* re, double* im, int n, const double* tables, const double* spectrumRe,
                      const double* spectrumIm, Fixed fixed);

// Of that, samples first to first + count - 1 in their order.
void unfold(const double* foldedRe, const double* foldedIm, int n, const double* tables, int first,
            int count, double* re, double* im);

namespace plain {
// Without tables, and spectrum and result in their natural order.
void makeFoldSpectrum(double* re, double* im, int n, double* spectrumRe, double* spectrumIm);
void foldWithSpectrum(double* re, double* im, int n, const double* spectrumRe,
                      const double* spectrumIm, Fixed fixed);
}  // namespace plain

}  // namespace kernels
