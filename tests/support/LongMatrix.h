#pragma once

#include "matrix/MatrixStore.h"

#include <cmath>
#include <cstddef>
#include <vector>

// A matrix in long double, for residuals: its rounding is a two-thousandth of that of a double, and
// it neither overflows nor underflows where doubles do.
struct LongMatrix {
    int rows, cols;
    std::vector<long double> elements;

    LongMatrix(int m, int n) : rows(m), cols(n), elements(static_cast<std::size_t>(m * n)) {}
    explicit LongMatrix(const MatrixStore<double>& a) : LongMatrix(a.rowCount, a.colCount) {
        elements.assign(a.dataBlock, a.dataBlock + rows * cols);
    }
    long double& at(int i, int j) { return elements.data()[i * cols + j]; }
    const long double& at(int i, int j) const { return elements.data()[i * cols + j]; }

    LongMatrix transposed() const {
        LongMatrix result(cols, rows);
        for (int e = 0; e < rows * cols; ++e) {
            result.at(e % cols, e / cols) = elements.data()[e];
        }
        return result;
    }
    // The largest sum of magnitudes in a column, NaN if one is.
    long double norm() const {
        long double largest = 0;
        for (int j = 0; j < cols; ++j) {
            long double sum = 0;
            for (int i = 0; i < rows; ++i) {
                sum += std::abs(at(i, j));
            }
            largest = sum <= largest || std::isnan(largest) ? largest : sum;
        }
        return largest;
    }
};

inline LongMatrix operator-(LongMatrix a, const LongMatrix& b) {
    for (std::size_t e = 0; e < a.elements.size(); ++e) {
        a.elements[e] -= b.elements[e];
    }
    return a;
}

inline LongMatrix operator*(const LongMatrix& a, const LongMatrix& b) {
    const LongMatrix columns = b.transposed();
    LongMatrix result(a.rows, b.cols);
    for (int i = 0; i < a.rows; ++i) {
        for (int j = 0; j < b.cols; ++j) {
            long double sum = 0;
            for (int k = 0; k < a.cols; ++k) {
                sum += a.at(i, k) * columns.at(j, k);
            }
            result.at(i, j) = sum;
        }
    }
    return result;
}
