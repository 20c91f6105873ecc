#pragma once

#include "matrix/MatrixStore.h"

// General dense matrix. Vector and SquareMatrix restrict its shapes; as an argument each of them
// serves as well. A matrix is m x n with m rows and n columns.
//
// The sums of int matrices wrap modulo 2^32.
template <typename T>
class Matrix : public MatrixStore<T> {
public:
    Matrix() = default;
    // As in MatrixStore: elements without values, errorFlag reports.
    Matrix(int rows, int cols) : MatrixStore<T>(rows, cols) {}

    // As in MatrixStore, and the elements without a predecessor are 0.
    int resizeKeep(int rows, int cols) override;

    virtual void setZero();

    // 1 on the main diagonal, else 0; the matrix may have any shape.
    virtual void setIdentity();

    // The leading elements of diagonal.dataBlock on the main diagonal, else 0. diagonal holds at
    // least min(m, n) elements, not tested, and is not the receiver.
    virtual void setDiagonal(const MatrixStore<T>& diagonal);

    // The receiver plus, or minus, other, which may be the receiver. errorFlag 0: done; 1: another
    // shape, elements unchanged.
    virtual Matrix& addAssign(const Matrix& other);
    virtual Matrix& subAssign(const Matrix& other);

    // The receiver times other, which is n x n and may be the receiver. errorFlag 1: other is of
    // another shape, or memory exhausted; elements unchanged. A flag that is set stays set.
    virtual Matrix& mulAssign(const Matrix& other);

    // The receiver becomes left times right, (m x k)(k x n) -> m x n; it may be either of them.
    // Each element starts as 0 and takes its products in ascending k. No errorFlag is touched. 0:
    // inner dimensions differ, or resize refuses the shape, receiver unchanged; or memory
    // exhausted, receiver unchanged if it is an operand, else empty.
    virtual int multiply(const Matrix& left, const Matrix& right);

    // Unpacks the factors that SquareMatrix::luDecompose leaves: upper becomes the upper triangle
    // with the diagonal, lower the lower one with a diagonal of 1. Either may be the receiver.
    // 0: resize of either gave it.
    virtual int splitTriangular(Matrix& lower, Matrix& upper) const;
};

extern template class Matrix<int>;
extern template class Matrix<double>;
