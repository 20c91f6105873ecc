#include "matrix/Vector.h"

#include "matrix/newArray.h"

#include <algorithm>

template <typename T>
Vector<T>::Vector(int length, int column) {
    Vector::setLength(length, column);
}

template <typename T>
int Vector<T>::resize(int rows, int cols) {
    return rows == 1 || cols == 1 ? Matrix<T>::resize(rows, cols) : 0;
}

template <typename T>
int Vector<T>::reshape(int rows, int cols) {
    return rows == 1 || cols == 1 ? Matrix<T>::reshape(rows, cols) : 0;
}

// The shape of a product: the rows of left, the columns of right.
template <typename T>
int Vector<T>::multiply(const Matrix<T>& left, const Matrix<T>& right) {
    return left.getRows() == 1 || right.getCols() == 1 ? Matrix<T>::multiply(left, right) : 0;
}

// The operations of the base: the shape is one of a vector already.
template <typename T>
int Vector<T>::setLength(int length, int column) {
    return column != 0 ? Matrix<T>::resize(length, 1) : Matrix<T>::resize(1, length);
}

template <typename T>
int Vector<T>::reorient(int length, int column) {
    return column != 0 ? Matrix<T>::reshape(length, 1) : Matrix<T>::reshape(1, length);
}

// Not the number of elements: assign leaves any shape, of which several rows are the length.
template <typename T>
int Vector<T>::length() const {
    return this->getRows() == 1 ? this->getCols() : this->getRows();
}

// So that one element alone, and the empty vector, are columns.
template <typename T>
int Vector<T>::isColumn() const {
    return this->getCols() < 2 ? 1 : 0;
}

template <typename T>
T* Vector<T>::toArray() const {
    T* array = newArray<T>(length()).release();
    if (array != nullptr) {
        std::copy_n(this->dataBlock, length(), array);
    }
    return array;
}

template <typename T>
int Vector<T>::copyTo(T* destination, int count) const {
    if (destination == nullptr) {
        return 0;
    }
    std::copy_n(this->dataBlock, std::min(length(), count), destination);
    return 1;
}

template <typename T>
int Vector<T>::copyFrom(const T* source, int count) {
    if (source == nullptr) {
        return 0;
    }
    std::copy_n(source, std::min(length(), count), this->dataBlock);
    return 1;
}

template class Vector<int>;
template class Vector<double>;
