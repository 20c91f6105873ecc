#pragma once

#include "workbench/analysis/AnswerCurve.h"

#include <cstdint>
#include <vector>

// What the modified van Cittert iteration of the module does to a signal, for every number of its
// steps. With the kernel's spectrum H, the convergence c and the frequency w of a bin, a step
// multiplies the residual by
//     q = 1 - c |H|^2 exp(-i w);
// the factor exp(-i w) is the lag of one sample in the time domain. After k steps (the module's
// loop count is k + 1) the estimate's spectrum is Y (1 - q^k) / (H exp(-i w)), so phi = 1 - q^k,
// and E is the module's last error (P. H. van Cittert, Z. Phys. 69 (1931) 298-308, for the
// iteration). E is a sum of exponentials, so convex in k: it falls up to one step, and rises after
// it.
//
// Powers are made of logarithms and angles, so a point costs the same at any k.
class IterationCurve : public AnswerCurve {
public:
    // convergence: c, above 0.
    IterationCurve(PowerSpectra powerSpectra, double convergence);

    // steps: k, whole, 0 or more.
    [[nodiscard]] std::complex<double> left(std::size_t j, double steps) const override;

    // The last step, at most that one, that does not raise the error; 0 if the first one raises it.
    [[nodiscard]] std::int64_t lastFalling(std::int64_t most) const;

    // Whether an error that the module reports after so many steps is the predicted one: within
    // 1e-6 of it, and the rounding of sums as long as the signal, whose energy is at most
    // (length u)^2 that of the signal with the unit roundoff u.
    [[nodiscard]] bool predicts(double reported, std::int64_t steps) const;

private:
    [[nodiscard]] bool falls(std::int64_t step) const;

    std::vector<double> logs, angles;  // of q: ln |q|^2, and its phase
};
