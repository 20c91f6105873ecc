#pragma once

#include "benchmarks/Job.h"

#include <complex>
#include <cstddef>
#include <vector>

// Operands laid out as peers want them.

// A direct convolution: for n = 0 .. outputs - 1, over k = 0 .. terms - 1,
//     sums[n] = sum_k w[terms - 1 + n - k] b[k]
// with the periodic signal laid out in w.
class ConvolutionJob : public Job {
public:
    explicit ConvolutionJob(Size size)
        : outputs(size.m), terms(size.n), sums(static_cast<std::size_t>(outputs)) {}

    void load(const Problem& problem) override {
        w.assign(problem.a.end() - terms, problem.a.end());
        w.insert(w.end(), problem.a.begin(), problem.a.end());
        b = problem.b;
        reversed.assign(b.rbegin(), b.rend());
    }
    [[nodiscard]] std::vector<double> result() const override { return sums; }

protected:
    int outputs, terms;
    std::vector<double> w, b, reversed, sums;
};

// The transform of a complex signal, from -i as the sign of its exponent.
class ComplexJob : public Job {
public:
    using Signal = std::vector<std::complex<double>>;

    explicit ComplexJob(Size size) : input(static_cast<std::size_t>(size.n)) {}

    void load(const Problem& problem) override {
        for (std::size_t i = 0; i < input.size(); ++i) {
            input[i] = {problem.a[i], problem.b[i]};
        }
    }

protected:
    // Real parts, then imaginary parts.
    static std::vector<double> partsOf(const Signal& signal) {
        std::vector<double> parts(2 * signal.size());
        for (std::size_t i = 0; i < signal.size(); ++i) {
            parts[i] = signal[i].real();
            parts[signal.size() + i] = signal[i].imag();
        }
        return parts;
    }

    Signal input;
};

// A matrix, m x n, column after column.
class ColumnsJob : public Job {
public:
    explicit ColumnsJob(Size size)
        : m(size.m),
          n(size.n),
          columns(static_cast<std::size_t>(m) * static_cast<std::size_t>(n)) {}

    void load(const Problem& problem) override {
        const auto rows = static_cast<std::size_t>(m), cols = static_cast<std::size_t>(n);
        for (std::size_t i = 0; i < rows; ++i) {
            for (std::size_t j = 0; j < cols; ++j) {
                columns[j * rows + i] = problem.a[i * cols + j];
            }
        }
    }

protected:
    int m, n;
    std::vector<double> columns;
};
