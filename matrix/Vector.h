#pragma once

#include "matrix/Matrix.h"

// Matrix of one row or one column. Element i is dataBlock[i] in either orientation, which follows
// from the shape: 1 x n is a row, n x 1 a column; one element alone, and the empty vector, count as
// columns. assign and resizeKeep accept any shape; length then gives the number of rows.
//
// Vector<int> holds the pivots of SquareMatrix. column is 0 for a row, anything else for a column.
template <typename T>
class Vector : public Matrix<T> {
public:
    Vector() = default;
    // setLength of an empty vector. A failure shows by the length 0 only, never by errorFlag.
    Vector(int length, int column);

    // As in Matrix. 0 also if neither count is 1, vector unchanged.
    int resize(int rows, int cols) override;
    int reshape(int rows, int cols) override;
    // As in Matrix. 0 also if the product has several rows and several columns, vector unchanged.
    int multiply(const Matrix<T>& left, const Matrix<T>& right) override;

    // A new length and orientation. The elements are kept if both are the present ones; otherwise
    // they have no value. 0: length below 1, vector unchanged; or memory exhausted, vector empty.
    virtual int setLength(int length, int column);

    // A new orientation, with all elements. length is the present one. 0: another length, vector
    // unchanged; or memory exhausted, vector empty.
    virtual int reorient(int length, int column);

    virtual int length() const;

    // 1 or 0.
    virtual int isColumn() const;

    // A copy of the elements, which the caller releases by delete[]. Null: memory exhausted.
    virtual T* toArray() const;

    // Copies the leading elements to, or from, a caller's array: count of them, at most as many as
    // the vector has. count is not negative. 0: no array.
    virtual int copyTo(T* destination, int count) const;
    virtual int copyFrom(const T* source, int count);
};

extern template class Vector<int>;
extern template class Vector<double>;
