#include "matrix/SquareMatrix.h"

template <typename T>
Matrix<T>& Matrix<T>::divAssign(const Matrix& other) {
    this->errorFlag = divide(*this, other, true) == 1 ? 0 : 1;
    return *this;
}

// X right = left says that the transpose of right takes each row of X to that row of left.
template <typename T>
int Matrix<T>::divide(const Matrix& left, const Matrix& right, bool pivot) {
    const int n = right.getCols();
    if (right.getRows() != n || left.getCols() != n) {
        return 0;
    }
    SquareMatrix<T> factors(n);
    Vector<int> pivots;
    Vector<T> row(n, 0);
    if (factors.errorFlag != 0 || (pivot && pivots.resize(1, n) != 1) || row.length() != n) {
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
    for (int i = 0; i < this->rowCount; ++i) {
        row.copyFrom(left.rowTable[i], n);
        if (factors.luSolve(row, pivots) != 1) {
            return 0;
        }
        row.copyTo(this->rowTable[i], n);
    }
    return 1;
}

template Matrix<int>& Matrix<int>::divAssign(const Matrix<int>&);
template Matrix<double>& Matrix<double>::divAssign(const Matrix<double>&);
template int Matrix<int>::divide(const Matrix<int>&, const Matrix<int>&, bool);
template int Matrix<double>::divide(const Matrix<double>&, const Matrix<double>&, bool);
