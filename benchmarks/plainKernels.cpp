// Every kernel as its plain loop: what the layers above are linked with in the plain build.

#include "kernels/convolution.h"
#include "kernels/elimination.h"
#include "kernels/hartley.h"
#include "kernels/hartleyFold.h"
#include "kernels/product.h"
#include "kernels/radix2.h"
#include "kernels/reflection.h"
#include "kernels/rotations.h"
#include "kernels/spectra.h"
#include "kernels/substitution.h"
#include "kernels/trigonometry.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace kernels {

void convolve(const double* w, const double* b, int L, int S, double* result) {
    plain::convolve(w, b, L, S, result);
}
void convolveCausal(const double* x, const double* y, int N, double* result) {
    plain::convolveCausal(x, y, N, result);
}

void radix2(double* re, double* im, int n, double sign) {
    plain::radix2(re, im, n, sign);
}
void sinesAndCosines(const double* angles, int count, double* sines, double* cosines) {
    plain::sinesAndCosines(angles, count, sines, cosines);
}
void hartley(double* f, int n, int normalise) {
    plain::hartley(f, n, normalise);
}
void multiplySpectra(double* re, double* im, const double* factorRe, const double* factorIm,
                     int n) {
    plain::multiplySpectra(re, im, factorRe, factorIm, n);
}
void multiplyScaled(const double* aRe, const double* aIm, double before, const double* bRe,
                    const double* bIm, double sign, double after, int n, double* re, double* im) {
    plain::multiplyScaled(aRe, aIm, before, bRe, bIm, sign, after, n, re, im);
}
void pairSpectra(double* re, double* im, int n, int sense) {
    plain::pairSpectra(re, im, n, sense);
}
std::int64_t foldTableSize(int /*n*/) {
    return 0;
}
void makeFoldTables(double* /*tables*/, int /*n*/) {}
std::int64_t foldRoom(int n) {
    return n;
}
std::int64_t foldSpectrumSize(int n) {
    return n;
}
void makeFoldSpectrum(double* re, double* im, int n, const double* /*tables*/, double* spectrumRe,
                      double* spectrumIm) {
    plain::makeFoldSpectrum(re, im, n, spectrumRe, spectrumIm);
}
void foldWithSpectrum(double* re, double* im, int n, const double* /*tables*/,
                      const double* spectrumRe, const double* spectrumIm, Fixed fixed) {
    plain::foldWithSpectrum(re, im, n, spectrumRe, spectrumIm, fixed);
}
void unfold(const double* foldedRe, const double* foldedIm, int /*n*/, const double* /*tables*/,
            int first, int count, double* re, double* im) {
    std::copy_n(foldedRe + first, count, re);
    std::copy_n(foldedIm + first, count, im);
}

void multiply(Block<const double> a, Block<const double> b, int rows, int depth, int cols,
              Block<double> c) {
    plain::multiply(a, b, rows, depth, cols, c);
}
void subtractProduct(Block<const double> a, Block<const double> b, int rows, int depth, int cols,
                     Block<double> c, ProductRoom& /*room*/) {
    plain::subtractProduct(a, b, rows, depth, cols, c);
}
bool findScales(const double* a, int n, double* scales) {
    return plain::findScales(a, n, scales);
}
void eliminate(double* a, int n, double* scales, int* pivots, double* /*panel*/) {
    plain::eliminate(a, n, scales, pivots);
}
void eliminate(double* a, int n) {
    plain::eliminate(a, n);
}
void substitute(const double* a, int n, Block<double> b, int count) {
    plain::substitute(a, n, b, count);
}

void columnSums(const double* x, std::ptrdiff_t step, const double* a, std::ptrdiff_t stride,
                int rows, int cols, double* sums) {
    plain::columnSums(x, step, a, stride, rows, cols, sums);
}
void rowSums(const double* a, std::ptrdiff_t stride, int rows, int cols, const double* y,
             double* sums) {
    plain::rowSums(a, stride, rows, cols, y, sums);
}
void addOuterProduct(const double* x, std::ptrdiff_t step, const double* y, double* a,
                     std::ptrdiff_t stride, int rows, int cols) {
    plain::addOuterProduct(x, step, y, a, stride, rows, cols);
}
void addOuterProductAndSumRows(const double* x, std::ptrdiff_t step, const double* y, double* a,
                               std::ptrdiff_t stride, int rows, int cols, const double* z,
                               double* sums) {
    plain::addOuterProductAndSumRows(x, step, y, a, stride, rows, cols, z, sums);
}
void reflectColumns(const ReflectionSequence<double>& s, double* a, std::ptrdiff_t stride, int rows,
                    int cols, double* panel) {
    plain::reflectColumns(s, a, stride, rows, cols, panel);
}
void rotateRows(double* x, double* y, int length, PlaneRotation<double> rotation) {
    plain::rotateRows(x, y, length, rotation);
}
void rotateColumns(double* a, int rows, int cols, const RotationRun* runs, int runCount,
                   const PlaneRotation<double>* rotations, double* panel) {
    plain::rotateColumns(a, rows, cols, runs, runCount, rotations, panel);
}

}  // namespace kernels
