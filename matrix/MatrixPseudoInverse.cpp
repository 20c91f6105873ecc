#include "kernels/arithmetic.h"
#include "matrix/Matrix.h"
#include "matrix/Vector.h"

using kernels::product, kernels::quotient;

// a becomes its pseudo-inverse, as pseudoInvert has it.
template <typename T>
static int replaceByPseudoInverse(Matrix<T>& a) {
    const int n = a.getCols();
    if (n == 0) {
        return 1;
    }
    Vector<T> w(n, 0);
    Matrix<T> u, v(n, n);
    if (w.length() != n || v.errorFlag != 0) {
        return 0;
    }
    if (a.getRows() < n) {
        a.resizeKeep(n, n);  // after a failure a is wide still, and svd refuses it
    }
    if (a.svd(u, w, v) != 1 || u.transpose() != 1) {
        return 0;
    }
    for (int i = 0; i < n; ++i) {
        const T value = w.dataBlock[i];
        const T inverse = value >= 1e-15 ? quotient(T(1), value) : T(0);  // 0 for NaN
        for (int j = 0; j < u.getCols(); ++j) {
            u.rowTable[i][j] = product(u.rowTable[i][j], inverse);
        }
    }
    return a.multiply(v, u);
}

template <typename T>
void Matrix<T>::pseudoInverseOf(const MatrixStore<T>& source) {
    this->assign(source);
    pseudoInvert();
}

template <typename T>
int Matrix<T>::pseudoInvert() {
    return replaceByPseudoInverse(*this);
}

template <typename T>
int Matrix<T>::pseudoSolve(const Vector<T>& b, Matrix& x) const {
    if (b.length() != this->getCols()) {
        return 0;
    }
    Matrix inverse(*this);
    if (inverse.errorFlag != 0 || replaceByPseudoInverse(inverse) != 1) {
        return 0;
    }
    return x.multiply(inverse, b) != 0 ? 1 : 0;
}

template void Matrix<int>::pseudoInverseOf(const MatrixStore<int>&);
template void Matrix<double>::pseudoInverseOf(const MatrixStore<double>&);
template int Matrix<int>::pseudoInvert();
template int Matrix<double>::pseudoInvert();
template int Matrix<int>::pseudoSolve(const Vector<int>&, Matrix<int>&) const;
template int Matrix<double>::pseudoSolve(const Vector<double>&, Matrix<double>&) const;
