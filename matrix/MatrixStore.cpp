#include "matrix/MatrixStore.h"

#include "matrix/newArray.h"

#include <algorithm>
#include <utility>

// The row table of a block, or null.
template <typename T>
static T** makeRowTable(T* dataBlock, int rows, int cols) {
    T** table = newArray<T*>(rows).release();
    for (int i = 0; table != nullptr && i < rows; ++i) {
        table[i] = dataBlock + static_cast<std::ptrdiff_t>(i) * cols;
    }
    return table;
}

template <typename T>
MatrixStore<T>::MatrixStore(int rows, int cols) {
    if (rows >= 0 && cols >= 0) {
        dataBlock = newArray<T>(static_cast<std::int64_t>(rows) * cols).release();
    }
    if (dataBlock != nullptr) {
        rowTable = makeRowTable(dataBlock, rows, cols);
    }
    if (rowTable == nullptr) {
        delete[] dataBlock;
        dataBlock = nullptr;
        errorFlag = 1;
        return;
    }
    rowCount = rows;
    colCount = cols;
}

template <typename T>
MatrixStore<T>::MatrixStore(const MatrixStore& source)
    : MatrixStore(source.rowCount, source.colCount) {
    std::copy_n(source.dataBlock, elementCount(), dataBlock);  // none after a failure
}

template <typename T>
MatrixStore<T>::~MatrixStore() {
    delete[] dataBlock;
    delete[] rowTable;
}

// New storage is made in an object of its own, which then takes the old one with it. So a failure
// leaves the receiver alone, and it may be the source.
template <typename T>
MatrixStore<T>& MatrixStore<T>::assign(const MatrixStore& source) {
    MatrixStore copy(source);
    errorFlag = copy.errorFlag;
    if (errorFlag == 0) {
        exchangeStorage(copy);
    }
    return *this;
}

template <typename T>
int MatrixStore<T>::assignArray(const T* source, int rows, int cols) {
    if (resize(rows, cols) != 1) {
        return 0;
    }
    std::copy_n(source, elementCount(), dataBlock);
    return 1;
}

template <typename T>
int MatrixStore<T>::resize(int rows, int cols) {
    if (rows < 1 || cols < 1) {
        return 0;
    }
    if (rows == rowCount && cols == colCount) {
        return 1;
    }
    makeEmpty();
    MatrixStore fresh(rows, cols);
    exchangeStorage(fresh);
    return fresh.errorFlag == 0 ? 1 : 0;
}

template <typename T>
int MatrixStore<T>::resizeKeep(int rows, int cols) {
    if (rows < 1 || cols < 1) {
        return 0;
    }
    if (rows == rowCount && cols == colCount) {
        return 1;
    }
    MatrixStore fresh(rows, cols);
    if (fresh.errorFlag != 0) {
        return 0;
    }
    for (int i = 0; i < std::min(rows, rowCount); ++i) {
        std::copy_n(rowTable[i], std::min(cols, colCount), fresh.rowTable[i]);
    }
    exchangeStorage(fresh);
    return 1;
}

template <typename T>
int MatrixStore<T>::reshape(int rows, int cols) {
    if (rows < 1 || cols < 1 || static_cast<std::int64_t>(rows) * cols != elementCount()) {
        return 0;
    }
    if (rows == rowCount) {
        return 1;
    }
    T** table = makeRowTable(dataBlock, rows, cols);
    if (table == nullptr) {
        makeEmpty();
        return 0;
    }
    delete[] rowTable;
    rowTable = table;
    rowCount = rows;
    colCount = cols;
    return 1;
}

template <typename T>
int MatrixStore<T>::getCols() const {
    return colCount;
}

template <typename T>
int MatrixStore<T>::getRows() const {
    return rowCount;
}

template <typename T>
int MatrixStore<T>::transpose() {
    if (rowCount == colCount) {
        for (int i = 1; i < rowCount; ++i) {
            for (int j = 0; j < i; ++j) {
                std::swap(rowTable[i][j], rowTable[j][i]);
            }
        }
        return 1;
    }
    MatrixStore transposed(colCount, rowCount);
    if (transposed.errorFlag != 0) {
        makeEmpty();
        return 0;
    }
    for (int i = 0; i < rowCount; ++i) {
        for (int j = 0; j < colCount; ++j) {
            transposed.rowTable[j][i] = rowTable[i][j];
        }
    }
    exchangeStorage(transposed);
    return 1;
}

template <typename T>
int MatrixStore<T>::setRow(int row, const T* source, int count) {
    if (source == nullptr || row >= getRows()) {
        return 0;
    }
    std::copy_n(source, std::min(count, getCols()), rowTable[row]);
    return 1;
}

template <typename T>
std::ptrdiff_t MatrixStore<T>::elementCount() const {
    return static_cast<std::ptrdiff_t>(rowCount) * colCount;
}

template <typename T>
void MatrixStore<T>::exchangeStorage(MatrixStore& other) {
    std::swap(rowTable, other.rowTable);
    std::swap(dataBlock, other.dataBlock);
    std::swap(rowCount, other.rowCount);
    std::swap(colCount, other.colCount);
}

template <typename T>
void MatrixStore<T>::makeEmpty() {
    MatrixStore empty;
    exchangeStorage(empty);
}

template class MatrixStore<int>;
template class MatrixStore<double>;
