#pragma once

namespace kernels {

// Arithmetic on spectra: arrays of n real and n imaginary parts.

// (re, im) becomes its product with (factorRe, factorIm), element by element.
void multiplySpectra(double* re, double* im, const double* factorRe, const double* factorIm, int n);

// (re, im) becomes (aRe, aIm) times `before`, times (bRe, bIm), times `after`: each element by that
// scale, then the product, then the other scale. bIm counts with this sign, 1.0 or -1.0. The result
// may lie where a does.
void multiplyScaled(const double* aRe, const double* aIm, double before, const double* bRe,
                    const double* bIm, double sign, double after, int n, double* re, double* im);

// Between the Hartley spectra of two real signals, in re and im, and the Fourier spectrum of the
// complex signal that they are the parts of, exponent positive. A Hartley spectrum is the even part
// of the Fourier spectrum plus its odd part over i. So for the mirror pair i, j = n - i the sums A,
// C and differences B, D of the two Hartley spectra make up both elements of the Fourier spectrum;
// elements 0 and n / 2 are their own mirror images. sense 0 or more: the Fourier spectrum from the
// Hartley spectra; below 0: the reverse. n is even, or 1.
void pairSpectra(double* re, double* im, int n, int sense);

namespace plain {
void multiplySpectra(double* re, double* im, const double* factorRe, const double* factorIm, int n);
void multiplyScaled(const double* aRe, const double* aIm, double before, const double* bRe,
                    const double* bIm, double sign, double after, int n, double* re, double* im);
void pairSpectra(double* re, double* im, int n, int sense);
}  // namespace plain

}  // namespace kernels
