#pragma once

#include "workbench/analysis/AnswerCurve.h"

#include <vector>

// What regularised division does to a signal, for every strength l of the regularisation. With the
// spectra Y of the signal and H of the kernel, m = max |H|^2, and a penalty P per bin, the
// estimate's spectrum is
//     X = Y conj(H) / (|H|^2 + l m P),      phi = |H|^2 / (|H|^2 + l m P):
// it minimises sum |Y - H X|^2 + l m sum P |X|^2 (D. L. Phillips, "A technique for the numerical
// solution of certain integral equations of the first kind", J. ACM 9 (1962) 84-97).
class RegularizedCurve : public AnswerCurve {
public:
    // order 0 penalises the samples of the estimate, P = 1; order 2 their second differences,
    //     P = sin(w/2)^4 + 1e-12 = (6 - 8 cos w + 2 cos 2w) / 16 + 1e-12,
    // whose last term keeps the mean of a signal within reach of any kernel.
    RegularizedCurve(const PowerSpectra& powerSpectra, int order);
    // penalty: P per bin j = 0 .. N/2, above 0.
    RegularizedCurve(PowerSpectra powerSpectra, std::vector<double> penalty);

    // strength: l, above 0.
    [[nodiscard]] std::complex<double> left(std::size_t j, double strength) const override;

private:
    std::vector<double> penalties;  // m P
};
