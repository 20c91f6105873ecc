#include "matrix/SquareMatrix.h"

#include <algorithm>

template <typename T>
int SquareMatrix<T>::assignArray(const T* source, int rows, int /*cols*/) {
    if (resizeSquare(rows) != 1) {
        return 0;
    }
    std::copy_n(source, this->elementCount(), this->dataBlock);
    return 1;
}

template <typename T>
int SquareMatrix<T>::resize(int rows, int cols) {
    return rows == cols ? Matrix<T>::resize(rows, cols) : 0;
}

template <typename T>
int SquareMatrix<T>::reshape(int rows, int cols) {
    return rows == cols ? Matrix<T>::reshape(rows, cols) : 0;
}

template <typename T>
int SquareMatrix<T>::multiply(const Matrix<T>& left, const Matrix<T>& right) {
    return left.getRows() == right.getCols() ? Matrix<T>::multiply(left, right) : 0;
}

template <typename T>
SquareMatrix<T>& SquareMatrix<T>::assignSquare(const Matrix<T>& source) {
    if (source.getRows() != source.getCols()) {
        this->errorFlag = 1;
        return *this;
    }
    this->assign(source);
    return *this;
}

template <typename T>
int SquareMatrix<T>::resizeSquare(int n) {
    return resize(n, n);
}

template <typename T>
int SquareMatrix<T>::reshapeSquare(int n) {
    return reshape(n, n);
}

template <typename T>
int SquareMatrix<T>::inverseOf(const Matrix<T>& source, bool pivot) {
    return assignSquare(source).errorFlag == 0 ? invert(pivot) : 0;
}

template class SquareMatrix<int>;
template class SquareMatrix<double>;
