#include "matrix/Matrix.h"

#include "kernels/arithmetic.h"
#include "kernels/product.h"

#include <algorithm>

using kernels::difference, kernels::sum;

template <typename T>
int Matrix<T>::resizeKeep(int rows, int cols) {
    const int oldRows = this->rowCount;
    const int oldCols = std::min(this->colCount, cols);
    if (MatrixStore<T>::resizeKeep(rows, cols) != 1) {
        return 0;
    }
    for (int i = 0; i < rows; ++i) {
        T* row = this->rowTable[i];
        std::fill(row + (i < oldRows ? oldCols : 0), row + cols, T());
    }
    return 1;
}

template <typename T>
void Matrix<T>::setZero() {
    std::fill_n(this->dataBlock, this->elementCount(), T());
}

template <typename T>
void Matrix<T>::setIdentity() {
    setZero();
    for (int i = 0; i < std::min(this->rowCount, this->colCount); ++i) {
        this->rowTable[i][i] = 1;
    }
}

template <typename T>
void Matrix<T>::setDiagonal(const MatrixStore<T>& diagonal) {
    setZero();
    for (int i = 0; i < std::min(this->rowCount, this->colCount); ++i) {
        this->rowTable[i][i] = diagonal.dataBlock[i];
    }
}

template <typename T>
static bool sameShape(const Matrix<T>& a, const Matrix<T>& b) {
    return a.getCols() == b.getCols() && a.getRows() == b.getRows();
}

template <typename T>
Matrix<T>& Matrix<T>::addAssign(const Matrix& other) {
    this->errorFlag = sameShape(*this, other) ? 0 : 1;
    if (this->errorFlag == 0) {
        T* elements = this->dataBlock;
        std::transform(elements, elements + this->elementCount(), other.dataBlock, elements,
                       [](T a, T b) { return sum(a, b); });
    }
    return *this;
}

template <typename T>
Matrix<T>& Matrix<T>::subAssign(const Matrix& other) {
    this->errorFlag = sameShape(*this, other) ? 0 : 1;
    if (this->errorFlag == 0) {
        T* elements = this->dataBlock;
        std::transform(elements, elements + this->elementCount(), other.dataBlock, elements,
                       [](T a, T b) { return difference(a, b); });
    }
    return *this;
}

template <typename T>
Matrix<T>& Matrix<T>::mulAssign(const Matrix& other) {
    const int n = this->getCols();
    if (other.getCols() != n || other.getRows() != n || multiply(*this, other) != 1) {
        this->errorFlag = 1;
    }
    return *this;
}

// result, left.rowCount x right.colCount, becomes left times right and is neither of them.
template <typename T>
static void multiplyRows(const MatrixStore<T>& left, const MatrixStore<T>& right,
                         MatrixStore<T>& result) {
    kernels::multiply({left.dataBlock, left.colCount}, {right.dataBlock, right.colCount},
                      left.rowCount, left.colCount, right.colCount,
                      {result.dataBlock, result.colCount});
}

template <typename T>
int Matrix<T>::multiply(const Matrix& left, const Matrix& right) {
    if (left.getCols() != right.getRows()) {
        return 0;
    }
    if (this != &left && this != &right) {
        if (this->resize(left.getRows(), right.getCols()) != 1) {
            return 0;
        }
        multiplyRows(left, right, *this);
        return 1;
    }
    Matrix result(left.getRows(), right.getCols());
    if (result.errorFlag != 0) {
        return 0;
    }
    multiplyRows(left, right, result);
    this->exchangeStorage(result);
    return 1;
}

template <typename T>
int Matrix<T>::splitTriangular(Matrix& lower, Matrix& upper) const {
    const int rows = this->getRows(), cols = this->getCols();
    if (lower.resize(rows, cols) != 1 || upper.resize(rows, cols) != 1) {
        return 0;
    }
    for (int i = 0; i < rows; ++i) {
        for (int j = 0; j < cols; ++j) {
            const T packed = this->rowTable[i][j];
            upper.rowTable[i][j] = j >= i ? packed : 0;
            lower.rowTable[i][j] = j < i ? packed : (j == i ? 1 : 0);
        }
    }
    return 1;
}

template class Matrix<int>;
template class Matrix<double>;
