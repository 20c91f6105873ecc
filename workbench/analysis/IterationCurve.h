#pragma once

#include "workbench/analysis/PowerSpectra.h"

#include <cstdint>
#include <vector>

// What the modified van Cittert iteration of the module does to a signal, for every number of its
// steps, from the spectra alone. With N samples, the signal's spectrum Y, the kernel's H, the
// convergence c and w = 2 pi j / N, a step multiplies the residual in each bin by
//     q = 1 - c |H|^2 exp(-i w);
// the factor exp(-i w) is the lag of one sample in the time domain. After k steps (the module's
// loop count is k + 1) the estimate's spectrum is Y (1 - q^k) / (H exp(-i w)), and
//     E_k = (1/N) sum |Y|^2 |q|^(2k)   sum of the squared residuals: the module's last error
//     A_k = sum Re(1 - q^k)            trace of the matrix from signal to model: freedom kept
//     B_k = sum |1 - q^k|^2            sum of its squared elements
// over all N bins (P. H. van Cittert, Z. Phys. 69 (1931) 298-308, for the iteration). E is a sum of
// exponentials, so convex in k: it falls up to one step, and rises after it.
//
// Powers are made of logarithms and angles, so a point costs the same at any k.
class IterationCurve {
public:
    struct Point {
        std::int64_t steps = 0;  // k
        double error = 0.0;      // E, in squared units of the samples
        double kept = 0.0;       // A, at most N where nothing diverges
        double squares = 0.0;    // B
    };

    // convergence: c, above 0.
    IterationCurve(PowerSpectra powerSpectra, double convergence);

    [[nodiscard]] const PowerSpectra& spectra() const { return powers; }
    // steps: 0 or more. Infinite or not a number where powers leave the range of doubles.
    [[nodiscard]] Point at(std::int64_t steps) const;
    // The last step, at most that one, that does not raise the error; 0 if the first one raises it.
    [[nodiscard]] std::int64_t lastFalling(std::int64_t most) const;

    // Robust generalised cross-validation with g = 0.2,
    //     E / (1 - A/N)^2 (g + (1 - g) B/N),
    // smallest where noise and loss of detail balance; unlike plain cross-validation, g = 1, it
    // does not take coloured noise for detail (M. A. Lukas, "Robust generalized cross-validation
    // for choosing the regularization parameter", Inverse Problems 22 (2006) 1883-1902). Not a
    // number where nothing is left to validate by.
    [[nodiscard]] double robustGcv(const Point& point) const;

    // Whether an error that the module reports after so many steps is the predicted one: within
    // 1e-6 of it, and the rounding of N-term sums, whose energy is at most (N u)^2 that of the
    // signal with the unit roundoff u.
    [[nodiscard]] bool predicts(double reported, std::int64_t steps) const;

private:
    [[nodiscard]] bool falls(std::int64_t step) const;

    PowerSpectra powers;
    std::vector<double> logs, angles;  // of q: ln |q|^2, and its phase
};
