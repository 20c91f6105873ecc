#pragma once

namespace kernels {

// Arithmetic on spectra: arrays of n real and n imaginary parts.

// (re, im) becomes its product with (factorRe, factorIm), element by element.
void multiplySpectra(double* re, double* im, const double* factorRe, const double* factorIm, int n);

// Between the Hartley spectra of two real signals, in re and im, and the Fourier spectrum of the
// complex signal that they are the parts of, exponent positive. A Hartley spectrum is the even part
// of the Fourier spectrum plus its odd part over i. So for the mirror pair i, j = n - i the sums A,
// C and differences B, D of the two Hartley spectra make up both elements of the Fourier spectrum;
// elements 0 and n / 2 are their own mirror images. sense 0 or more: the Fourier spectrum from the
// Hartley spectra; below 0: the reverse. n is even, or 1.
void pairSpectra(double* re, double* im, int n, int sense);

namespace plain {
void multiplySpectra(double* re, double* im, const double* factorRe, const double* factorIm, int n);
void pairSpectra(double* re, double* im, int n, int sense);
}  // namespace plain

}  // namespace kernels
