#include "kernels/arithmetic.h"
#include "kernels/elimination.h"
#include "kernels/substitution.h"
#include "matrix/SquareMatrix.h"
#include "matrix/newArray.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>

template <typename T>
int SquareMatrix<T>::luDecompose(Vector<int>& pivots) {
    const int n = this->getCols();
    const int length = pivots.length();
    if (length == 0) {
        kernels::eliminate(this->dataBlock, n);
        return 1;
    }
    if (length != n) {
        return 0;
    }
    const std::unique_ptr<T[]> work = newArray<T>((1 + std::int64_t{kernels::panelWidth}) * n);
    if (work == nullptr) {
        return 0;
    }
    T* scales = work.get();
    if (!kernels::findScales(this->dataBlock, n, scales)) {
        return -1;
    }
    kernels::eliminate(this->dataBlock, n, scales, pivots.dataBlock, scales + n);
    return 1;
}

template <typename T>
int SquareMatrix<T>::luSolve(Vector<T>& b, const Vector<int>& pivots) const {
    const int n = this->getCols();
    const int length = pivots.length();
    if (length != 0 && length != n) {
        return 0;
    }
    if (length == n) {
        Vector<T> reordered(n, b.isColumn());
        if (reordered.length() != n) {
            return 0;
        }
        for (int i = 0; i < n; ++i) {
            reordered.dataBlock[i] = b.dataBlock[pivots.dataBlock[i]];
        }
        if (b.assign(reordered).errorFlag != 0) {
            return 0;
        }
    }
    kernels::substitute(this->dataBlock, n, {b.dataBlock, 1}, 1);
    return 1;
}

// All memory is there before the receiver is touched. The unit vectors are solved in the order of
// the rows of L U, panel by panel of a working matrix, and go where the pivots send them.
template <typename T>
int SquareMatrix<T>::invert(bool pivot) {
    const int n = this->getCols();
    const int pivotCount = pivot ? n : 0;
    SquareMatrix solutions(n);
    Vector<int> pivots(pivotCount, 0);
    if (solutions.errorFlag != 0 || pivots.length() != pivotCount || luDecompose(pivots) != 1) {
        return 0;
    }
    const auto panelAt = [&solutions, n](int first) {
        T* panel = solutions.dataBlock + std::ptrdiff_t{n} * first;
        return kernels::Block<T>{panel, std::min(kernels::substitutionWidth, n - first)};
    };
    solutions.setZero();
    for (int first = 0; first < n; first += kernels::substitutionWidth) {
        const kernels::Block<T> panel = panelAt(first);
        const int count = static_cast<int>(panel.stride);
        for (int j = 0; j < count; ++j) {
            panel.row(first + j)[j] = 1;
        }
        kernels::substitute(this->dataBlock, n, panel, count);
    }
    // The factors have served.
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            const int panel = j - j % kernels::substitutionWidth;
            this->rowTable[i][pivot ? pivots.dataBlock[j] : j] = panelAt(panel).row(i)[j - panel];
        }
    }
    this->errorFlag = 0;
    return 1;
}

template <typename T>
int SquareMatrix<T>::solve(const Vector<T>& b, Vector<T>& x, bool pivot) const {
    const int n = this->getCols();
    if (b.length() != n) {
        return 0;
    }
    const int pivotCount = pivot ? n : 0;
    SquareMatrix factors(*this);
    Vector<int> pivots(pivotCount, 0);
    if (factors.errorFlag != 0 || pivots.length() != pivotCount || x.assign(b).errorFlag != 0) {
        return 0;
    }
    return factors.luDecompose(pivots) == 1 ? factors.luSolve(x, pivots) : 0;
}

template int SquareMatrix<int>::luDecompose(Vector<int>&);
template int SquareMatrix<double>::luDecompose(Vector<int>&);
template int SquareMatrix<int>::luSolve(Vector<int>&, const Vector<int>&) const;
template int SquareMatrix<double>::luSolve(Vector<double>&, const Vector<int>&) const;
template int SquareMatrix<int>::invert(bool);
template int SquareMatrix<double>::invert(bool);
template int SquareMatrix<int>::solve(const Vector<int>&, Vector<int>&, bool) const;
template int SquareMatrix<double>::solve(const Vector<double>&, Vector<double>&, bool) const;
