#include "kernels/arithmetic.h"
#include "matrix/BidiagonalIteration.h"
#include "matrix/Matrix.h"
#include "matrix/Vector.h"

using kernels::magnitude, kernels::negative, kernels::product, kernels::quotient,
    kernels::squareRoot, kernels::sum;

// A negative value changes its sign, and so does its column of V, which is n x n.
template <typename T>
static void makeNonNegative(T* values, T* const* v, int n, int first) {
    for (int k = first; k < n; ++k) {
        if (values[k] < T(0)) {
            values[k] = negative(values[k]);
            for (int r = 0; r < n; ++r) {
                v[r][k] = negative(v[r][k]);
            }
        }
    }
}

template <typename T>
int Matrix<T>::svd(Matrix& u, MatrixStore<T>& w, Matrix& v) const {
    const int n = this->getCols();
    if (this->getRows() < n) {
        return 0;
    }
    Vector<T> superdiagonal(n, 0);
    RotationQueue<T> left(u), right(v);
    if (superdiagonal.length() != n || !left.allocate(n) || !right.allocate(n) ||
        u.assign(*this).errorFlag != 0 || (n > 0 && v.resizeKeep(n, n) != 1)) {
        return 0;
    }
    T norm = 0;
    bidiagonalize(u, w, superdiagonal, &norm);
    accumulateTransforms(u, w, v, superdiagonal);
    T* const values = w.dataBlock;
    BidiagonalIteration<T> iteration{*this, left, right, values, superdiagonal.dataBlock, norm};
    int found = n;  // the first of the values that are found
    while (found > 0 && iteration.findValue(found - 1)) {
        --found;
    }
    left.apply();
    right.apply();
    makeNonNegative(values, v.rowTable, n, found);
    return found == 0 ? 1 : 0;
}

template <typename T>
T Matrix<T>::hypotenuse(T a, T b) const {
    const T sideA = magnitude(a), sideB = magnitude(b);
    if (sideB < sideA) {
        const T ratio = quotient(sideB, sideA);
        return product(sideA, squareRoot(sum(T(1), product(ratio, ratio))));
    }
    if (sideB == T(0)) {
        return 0;
    }
    const T ratio = quotient(sideA, sideB);
    return product(sideB, squareRoot(sum(T(1), product(ratio, ratio))));
}

template int Matrix<int>::svd(Matrix<int>&, MatrixStore<int>&, Matrix<int>&) const;
template int Matrix<double>::svd(Matrix<double>&, MatrixStore<double>&, Matrix<double>&) const;
template int Matrix<int>::hypotenuse(int, int) const;
template double Matrix<double>::hypotenuse(double, double) const;
