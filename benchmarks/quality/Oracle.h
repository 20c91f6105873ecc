#pragma once

#include "benchmarks/quality/DataSet.h"
#include "workbench/analysis/AnswerCurve.h"
#include "workbench/analysis/Spectrum.h"

#include <vector>

// The least error that a method can reach on a measured signal, with the truth in hand, by the
// closed forms of its answer. Errors are roots of mean squares, relative to the truth.
class Oracle {
public:
    Oracle(const DataSet& dataSet, std::vector<double> measuredSignal);

    [[nodiscard]] double iteration(int oversampling) const;  // with 1 to 20000 steps
    [[nodiscard]] double regularized(int order) const;       // with strengths from 1e-14 to 1e8
    [[nodiscard]] double division() const;
    // Of these, with and without oversampling, of order 2.
    [[nodiscard]] double best() const;

    // Of samples that stand where the truth does.
    [[nodiscard]] double errorOf(const std::vector<double>& samples) const;
    // The answer of regularised division of order 2.
    [[nodiscard]] std::vector<double> regularizedAnswer(double strength) const;

private:
    [[nodiscard]] double errorAt(const AnswerCurve& curve, double parameter) const;

    const DataSet& set;
    std::vector<double> measured, kernel;  // the kernel's zero comes first
    Spectrum x, y, h;
};
