#pragma once

#include "workbench/analysis/NoiseModel.h"
#include "workbench/analysis/PowerSpectra.h"

#include <complex>
#include <cstddef>
#include <optional>
#include <utility>

// One strength of a method, and what it makes of the signal; see AnswerCurve.
struct CurvePoint {
    double parameter = 0.0;    // what the strength is of: a number of steps, or a factor
    double error = 0.0;        // E, in squared units of the samples
    double kept = 0.0;         // A, at most N where nothing diverges
    double squares = 0.0;      // B
    double leftSquares = 0.0;  // N - 2 A + B, summed so that nothing cancels
    double noiseKept = 0.0;    // of the criterion, in squared units; 0 where no noise is known
    double criterion = 0.0;    // smallest at the best strength
};

// What a linear method makes of a signal at every strength, from the spectra alone. In the bins of
// PowerSpectra the model of the signal, which is the estimate blurred again by the kernel, has the
// spectrum phi Y, and with N degrees of freedom, r-fold oversampling, and sums over N bins,
//     E = (1 / (r N)) sum |1 - phi|^2 |Y|^2    sum of the squared residuals
//     A = sum Re phi                           trace of the matrix from signal to model: what it
//                                              keeps of the degrees of freedom
//     B = sum |phi|^2                          sum of the squared elements of that matrix
//     N - 2 A + B = sum |1 - phi|^2            what white noise of variance 1 leaves in E, by r
// Where the noise is not known, the criterion is robust generalised cross-validation with g = 0.2,
//     E / (1 - A/N)^2 (g + (1 - g) B/N),
// smallest where noise and loss of detail balance; unlike plain cross-validation, g = 1, it does
// not take coloured noise for detail (M. A. Lukas, "Robust generalized cross-validation for
// choosing the regularization parameter", Inverse Problems 22 (2006) 1883-1902). Where it is known
// by its power S per bin, the criterion is
//     E + r sum S (2 Re phi + |phi|^2):
// with the first term of the sum it would be the expected squared error of the model, apart from a
// constant (C. L. Mallows, "Some comments on C_p", Technometrics 15 (1973) 661-675); the second one
// counts the noise that the model keeps twice, since the kernel's inverse magnifies it.
class AnswerCurve {
public:
    virtual ~AnswerCurve() = default;

    [[nodiscard]] const PowerSpectra& spectra() const { return powers; }

    // noise: of N samples. Infinite or not a number where powers leave the range of doubles; so is
    // the criterion where nothing is left to validate by.
    [[nodiscard]] CurvePoint at(double parameter,
                                const std::optional<NoiseModel>& noise = std::nullopt) const;

    // 1 - phi in bin j.
    [[nodiscard]] virtual std::complex<double> left(std::size_t j, double parameter) const = 0;

protected:
    explicit AnswerCurve(PowerSpectra spectra) : powers(std::move(spectra)) {}
    AnswerCurve(const AnswerCurve&) = default;
    AnswerCurve(AnswerCurve&&) = default;
    AnswerCurve& operator=(const AnswerCurve&) = default;
    AnswerCurve& operator=(AnswerCurve&&) = default;

private:
    PowerSpectra powers;
};
