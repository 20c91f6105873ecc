#pragma once

#include "workbench/analysis/PowerSpectra.h"

#include <string>

// Which method to use for a signal and a kernel, and why.
struct MethodAdvice {
    enum class Method { iteration, regularized, division };

    Method method = Method::regularized;
    std::string reason;  // a clause that completes "..., since"
};

// Regularised division, with the strength left to the data, comes within 1.2 of the best linear
// answer nearly everywhere, so it needs a reason to use another method:
//     division    the noise makes less than a tenth of the quotient Y/H, and there is little for
//                 regularised division to do. With noise below 1e-3 of the signal: it would take
//                 off less than half of the noise, or twice as much as the noise. With more: it
//                 would keep more than 95 of 100 degrees of freedom, so what looks like noise is
//                 mostly what a smooth answer cannot follow
//     iteration   a smooth symmetric peak, which leaves at least half of the bins empty, and the
//                 best number of steps within the range that is searched: there it does as well,
//                 and its strength is a plain count
//     iteration   also where noise makes more than a twentieth of the regularised quotient, and
//                 oversampled fourfold the iteration has less than two thirds of that at a
//                 criterion that is not half as large again: a penalty on the second differences
//                 has no hold on low frequencies, and a kernel may leave them weak
// symmetry: correlation of the kernel with its mirror image about its maximum. noise: standard
// deviation of a sample of the original signal.
MethodAdvice adviseMethod(double symmetry, const PowerSpectra& spectra, double noise);
