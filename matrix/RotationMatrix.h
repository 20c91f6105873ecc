#pragma once

#include "matrix/SquareMatrix.h"

#include <cstdint>

// Plane rotation: the identity except for the elements (p, p) and (q, q), which are c, (q, p),
// which is s, and (p, q), which is -s. From the left it mixes rows p and q of another matrix.
//
// Without a rotation p and q are -1, and c and s are 0. The inherited operations leave these four
// alone; a rotation that was set before one of them is still the one that is applied. Indices are
// not tested, and a rotation is set before it is applied.
template <typename T>
class RotationMatrix : public SquareMatrix<T> {
public:
    std::int32_t p = -1;
    std::int32_t q = -1;
    T c = 0;
    T s = 0;

    // The identity, without a rotation. errorFlag 1, and the object empty: memory exhausted.
    explicit RotationMatrix(int n);

    // Sets the rotation with p = row and q = column that, applied to matrix, makes its element
    // (row, column), y, 0 and the one on the diagonal above, x, the radius sqrt(y^2 + x^2). With
    // the radius 0 it is c = 1, s = 0. The square root is a plain one and overflows from 1e154 on.
    virtual void setFromElements(const Matrix<T>& matrix, int row, int column);

    // As assign, and without a rotation afterwards, even if that failed. The elements are those of
    // source: what later rotations leave of them stays.
    virtual RotationMatrix& assignMatrix(const MatrixStore<T>& source);

    // target becomes the rotation times source, which it may be. 0: source has another number of
    // rows, target unchanged; or memory exhausted, the same, with its errorFlag 1.
    virtual int applyTo(const Matrix<T>& source, Matrix<T>& target);

    // The same in place. Two rows change, at the cost of their elements.
    virtual int applyInPlace(Matrix<T>& matrix);

    // Sets p, q, c and s, in place of the present rotation.
    virtual void setRotation(int first, int second, T cosine, T sine);

    // Takes the rotation away, its elements too where the object still has them.
    virtual void resetRotation();
};

extern template class RotationMatrix<int>;
extern template class RotationMatrix<double>;
