#include "kernels/substitution.h"
#include "matrix/SquareMatrix.h"

#include <algorithm>

template <typename T>
Matrix<T>& Matrix<T>::divAssign(const Matrix& other) {
    this->errorFlag = divide(*this, other, true) == 1 ? 0 : 1;
    return *this;
}

// Rows of left become rows of X, in a panel that has them side by side as columns. Without pivots
// the elements stay in order.
template <typename T>
static void solveRows(const SquareMatrix<T>& factors, const Vector<int>& pivots, T* const* left,
                      int count, Matrix<T>& panel, T** result) {
    const int n = factors.colCount;
    for (int j = 0; j < count; ++j) {
        for (int i = 0; i < n; ++i) {
            panel.rowTable[i][j] = left[j][pivots.colCount == 0 ? i : pivots.dataBlock[i]];
        }
    }
    kernels::substitute(factors.dataBlock, n, {panel.dataBlock, panel.colCount}, count);
    for (int j = 0; j < count; ++j) {
        for (int i = 0; i < n; ++i) {
            result[j][i] = panel.rowTable[i][j];
        }
    }
}

// X right = left means that the transpose of right takes each row of X to the same row of left.
template <typename T>
int Matrix<T>::divide(const Matrix& left, const Matrix& right, bool pivot) {
    const int n = right.getCols();
    if (right.getRows() != n || left.getCols() != n) {
        return 0;
    }
    SquareMatrix<T> factors(n);
    Vector<int> pivots;
    Matrix panel(n, kernels::substitutionWidth);
    if (factors.errorFlag != 0 || (pivot && pivots.resize(1, n) != 1) || panel.errorFlag != 0) {
        return 0;
    }
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            factors.rowTable[i][j] = right.rowTable[j][i];
        }
    }
    if (factors.luDecompose(pivots) != 1) {
        return 0;
    }
    // From here on right is not read; the receiver may be it.
    if (this != &left && this->resize(left.getRows(), n) != 1) {
        return 0;
    }
    for (int i = 0; i < this->rowCount; i += kernels::substitutionWidth) {
        solveRows(factors, pivots, left.rowTable + i,
                  std::min(kernels::substitutionWidth, this->rowCount - i), panel,
                  this->rowTable + i);
    }
    return 1;
}

template Matrix<int>& Matrix<int>::divAssign(const Matrix<int>&);
template Matrix<double>& Matrix<double>::divAssign(const Matrix<double>&);
template int Matrix<int>::divide(const Matrix<int>&, const Matrix<int>&, bool);
template int Matrix<double>::divide(const Matrix<double>&, const Matrix<double>&, bool);
