#include "kernels/arithmetic.h"
#include "matrix/SquareMatrix.h"
#include "matrix/newArray.h"

#include <algorithm>
#include <cstddef>
#include <memory>

using kernels::difference, kernels::product, kernels::quotient, kernels::squareRoot;

// v minus the sum of p[k] q[k] over k < count, from the last one to the first.
template <typename T>
static T reducedDownwards(T v, const T* p, const T* q, int count) {
    for (int k = count - 1; k >= 0; --k) {
        v = difference(v, product(p[k], q[k]));
    }
    return v;
}

// L below the diagonal, and its diagonal apart; on and above the diagonal a keeps the input, from
// which the symmetry is tested. Elements that are not numbers are not symmetric.
template <typename T>
static int factorise(T* const* a, int n, T* diagonal) {
    for (int i = 0; i < n; ++i) {
        const T square = reducedDownwards(a[i][i], a[i], a[i], i);
        if (square <= T(0)) {
            return -1;
        }
        diagonal[i] = squareRoot(square);
        for (int j = i + 1; j < n; ++j) {
            if (a[j][i] != a[i][j]) {
                return -2;
            }
            a[j][i] = quotient(reducedDownwards(a[i][j], a[j], a[i], i), diagonal[i]);
        }
    }
    return 1;
}

template <typename T>
int SquareMatrix<T>::cholesky() {
    const int n = this->getCols();
    T** a = this->rowTable;
    const std::unique_ptr<T[]> diagonal = newArray<T>(n);
    if (diagonal == nullptr) {
        return 0;
    }
    const int result = factorise(a, n, diagonal.get());
    if (result != 1) {
        return result;
    }
    for (int i = 0; i < n; ++i) {
        std::fill(a[i] + i, a[i] + n, T());
        a[i][i] = diagonal[static_cast<std::size_t>(i)];
    }
    return 1;
}

template int SquareMatrix<int>::cholesky();
template int SquareMatrix<double>::cholesky();
