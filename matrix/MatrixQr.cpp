#include "matrix/Matrix.h"
#include "matrix/RotationMatrix.h"

#include <algorithm>

template <typename T>
int Matrix<T>::qr(Matrix& q, Matrix& r) const {
    const int m = this->getRows();
    RotationMatrix<T> rotation(m);
    if (rotation.errorFlag != 0 || r.assign(*this).errorFlag != 0 || q.resize(m, m) != 1) {
        return 0;
    }
    q.setIdentity();
    for (int i = 0; i < m; ++i) {
        for (int j = 0; j < std::min(i, r.getCols()); ++j) {
            rotation.setFromElements(r, i, j);
            if (rotation.applyInPlace(q) != 1 || rotation.applyInPlace(r) != 1) {
                return 0;
            }
        }
    }
    return q.transpose();  // the product of the rotations takes A to R: it is Q^T
}

template int Matrix<int>::qr(Matrix<int>&, Matrix<int>&) const;
template int Matrix<double>::qr(Matrix<double>&, Matrix<double>&) const;
