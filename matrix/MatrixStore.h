#pragma once

#include <cstddef>
#include <cstdint>

// Storage of a dense matrix: shape, elements and an error flag. Base class only; use Matrix, Vector
// or SquareMatrix. T is int or double.
//
// Element (i, j), counted from 0, is rowTable[i][j]; there are no other accessors. The rows are
// adjacent in dataBlock, so the element is dataBlock[i * colCount + j] as well, and the whole
// matrix is one flat copy. Both blocks belong to the object alone. Elements that no operation has
// written have no defined value.
//
// An operation answers 1 for done or 0 for failed, and leaves errorFlag alone; one that returns the
// object, and a constructor, reports by errorFlag instead. A set flag is a report, not a state: the
// object can still be used. Where memory is exhausted, or a shape is too large for any memory, an
// object may become empty, without rows, columns and blocks. No exception leaves an operation.
//
// The order of the virtual operations is fixed, in this class and in those derived from it.
template <typename T>
class MatrixStore {
public:
    std::uint8_t errorFlag = 0;
    T** rowTable = nullptr;
    T* dataBlock = nullptr;
    std::int32_t rowCount = 0;
    std::int32_t colCount = 0;

    // Empty.
    MatrixStore() = default;
    // errorFlag 1, and the object empty: memory exhausted, or a negative count. A count may be 0.
    MatrixStore(int rows, int cols);
    // Shape and elements of source, not its flag. errorFlag 1, and the object empty: memory
    // exhausted.
    MatrixStore(const MatrixStore& source);
    // assign copies, and reports.
    MatrixStore& operator=(const MatrixStore&) = delete;
    virtual ~MatrixStore();

    // Takes over shape and elements of source, in fresh blocks; source may be the object itself.
    // Rules of a derived class on shapes do not hold here. errorFlag 0: done; 1: memory exhausted,
    // object unchanged.
    virtual MatrixStore& assign(const MatrixStore& source);

    // resize to the shape, then rows times cols elements from source, row after row. 0: resize
    // gave it.
    virtual int assignArray(const T* source, int rows, int cols);

    // A new shape. The elements are kept if it is the present one; otherwise their memory is
    // released first and the new ones have no value. 0: a count below 1, object unchanged; or
    // memory exhausted, object empty.
    virtual int resize(int rows, int cols);

    // A new shape that keeps each element which has a place in it; the others have no value.
    // 0: a count below 1, or memory exhausted; object unchanged.
    virtual int resizeKeep(int rows, int cols);

    // A new shape of as many elements, whose sequence does not change. 0: a count below 1, or
    // another number of elements, object unchanged; or memory exhausted, object empty.
    virtual int reshape(int rows, int cols);

    virtual int getCols() const;
    virtual int getRows() const;

    // Transposes the object, in place if it is square. 0: memory exhausted, object empty.
    virtual int transpose();

    // Copies count elements, at most as many as the row has, to the start of the row. Neither row
    // nor count is negative. 0: source is null, or there is no such row.
    virtual int setRow(int row, const T* source, int count);

protected:
    // rowCount times colCount; it fits, since the elements are in memory.
    std::ptrdiff_t elementCount() const;
    // Shape and elements change places with those of other; the flags stay.
    void exchangeStorage(MatrixStore& other);

private:
    void makeEmpty();
};

extern template class MatrixStore<int>;
extern template class MatrixStore<double>;
