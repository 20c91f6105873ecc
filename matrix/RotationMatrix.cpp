#include "matrix/RotationMatrix.h"

#include "kernels/arithmetic.h"
#include "kernels/rotations.h"

#include <algorithm>

using kernels::negative, kernels::product, kernels::quotient, kernels::squareRoot, kernels::sum;

template <typename T>
RotationMatrix<T>::RotationMatrix(int n) : SquareMatrix<T>(n) {
    RotationMatrix::setIdentity();
}

// With the radius 0 the element is 0 already, and the identity keeps it so. The test sends NaN to
// the quotients.
template <typename T>
void RotationMatrix<T>::setFromElements(const Matrix<T>& matrix, int row, int column) {
    const T x = matrix.rowTable[column][column], y = matrix.rowTable[row][column];
    const T radius = squareRoot(sum(product(y, y), product(x, x)));
    if (radius == T(0)) {
        setRotation(row, column, T(1), T(0));
    } else {
        setRotation(row, column, quotient(x, radius), quotient(y, radius));
    }
}

// The present rotation is dropped, not reset: its elements have been replaced by those of source.
template <typename T>
RotationMatrix<T>& RotationMatrix<T>::assignMatrix(const MatrixStore<T>& source) {
    this->assign(source);
    p = q = -1;
    c = s = 0;
    return *this;
}

template <typename T>
int RotationMatrix<T>::applyTo(const Matrix<T>& source, Matrix<T>& target) {
    if (source.getRows() != this->getCols()) {
        return 0;
    }
    if (&source != &target && target.assign(source).errorFlag != 0) {
        return 0;
    }
    return applyInPlace(target);
}

template <typename T>
int RotationMatrix<T>::applyInPlace(Matrix<T>& matrix) {
    if (matrix.getRows() != this->getCols()) {
        return 0;
    }
    // Row q first: it takes s times the other row, which is element (q, p), and row p takes -s.
    kernels::rotateRows(matrix.rowTable[q], matrix.rowTable[p], matrix.getCols(),
                        kernels::PlaneRotation<T>{c, s});
    return 1;
}

template <typename T>
void RotationMatrix<T>::setRotation(int first, int second, T cosine, T sine) {
    resetRotation();
    p = first;
    q = second;
    c = cosine;
    s = sine;
    T** a = this->rowTable;
    a[p][q] = negative(s);
    a[q][p] = s;
    a[p][p] = a[q][q] = c;
}

// Since the rotation was set, assign or resize may have given the object another shape, in which
// the indices lie outside.
template <typename T>
void RotationMatrix<T>::resetRotation() {
    if (std::min(p, q) >= 0 && std::max(p, q) < std::min(this->rowCount, this->colCount)) {
        T** a = this->rowTable;
        a[p][q] = a[q][p] = 0;
        a[p][p] = a[q][q] = 1;
    }
    p = q = -1;
    c = s = 0;
}

template class RotationMatrix<int>;
template class RotationMatrix<double>;
