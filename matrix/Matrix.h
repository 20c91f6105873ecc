#pragma once

#include "matrix/MatrixStore.h"

template <typename T>
class Vector;

// General dense matrix. Vector and SquareMatrix restrict its shapes; as an argument each of them
// serves as well. A matrix is m x n with m rows and n columns.
//
// The sums of int matrices wrap modulo 2^32, quotients are truncated, and one by 0 is 0; the
// decompositions take the same steps there, to little use.
template <typename T>
class Matrix : public MatrixStore<T> {
public:
    Matrix() = default;
    // As in MatrixStore: elements without values, errorFlag reports.
    Matrix(int rows, int cols) : MatrixStore<T>(rows, cols) {}

    // As in MatrixStore, and the elements without a predecessor are 0.
    int resizeKeep(int rows, int cols) override;

    virtual void setZero();

    // 1 on the main diagonal, else 0; the matrix may have any shape.
    virtual void setIdentity();

    // The leading elements of diagonal.dataBlock on the main diagonal, else 0. diagonal holds at
    // least min(m, n) elements, not tested, and is not the receiver.
    virtual void setDiagonal(const MatrixStore<T>& diagonal);

    // The receiver plus, or minus, other, which may be the receiver. errorFlag 0: done; 1: another
    // shape, elements unchanged.
    virtual Matrix& addAssign(const Matrix& other);
    virtual Matrix& subAssign(const Matrix& other);

    // The receiver times other, which is n x n and may be the receiver. errorFlag 1: other is of
    // another shape, or memory exhausted; elements unchanged. A flag that is set stays set.
    virtual Matrix& mulAssign(const Matrix& other);

    // divide(receiver, other, true). errorFlag 0: done; 1: divide gave 0.
    virtual Matrix& divAssign(const Matrix& other);

    // The receiver becomes left times right, (m x k)(k x n) -> m x n; it may be either of them.
    // Each element starts as 0 and takes its products in ascending k. No errorFlag is touched. 0:
    // inner dimensions differ, or resize refuses the shape, receiver unchanged; or memory
    // exhausted, receiver unchanged if it is an operand, else empty.
    virtual int multiply(const Matrix& left, const Matrix& right);

    // The receiver becomes X with X right = left, (m x n)(n x n) -> m x n; it may be either of
    // them. Row by row: the transpose of right is decomposed once, as by SquareMatrix::luDecompose
    // with pivoting or without, and each row of X solved as by luSolve. A singular right gives what
    // luDecompose leaves of it, and 1.
    //   returns   1: done.
    //             0: shapes do not fit, or right is empty and pivot set, or with pivoting a column
    //             of right is zero, receiver unchanged. Or memory exhausted, receiver unchanged or
    //             empty.
    virtual int divide(const Matrix& left, const Matrix& right, bool pivot);

    // Unpacks the factors that SquareMatrix::luDecompose leaves: upper becomes the upper triangle
    // with the diagonal, lower the lower one with a diagonal of 1. Either may be the receiver.
    // 0: resize of either gave it.
    virtual int splitTriangular(Matrix& lower, Matrix& upper) const;

    // Singular value decomposition of the m x n receiver, m >= n: A = U diag(w) V^T, with U m x n
    // of orthonormal columns, V n x n orthogonal and every w[i] >= 0, not sorted. Householder
    // reduction to a bidiagonal form, then implicit QR iteration (G. H. Golub and C. Reinsch,
    // "Singular value decomposition and least squares solutions", Numer. Math. 14 (1970) 403-420).
    //
    // A value is negligible when adding it to the norm of the bidiagonal form does not change that.
    // Not every matrix is served. The shift of the iteration is not scaled: values below 1e-160 or
    // above 1e154 do not converge, nor do NaN and infinity. It is lost where the bidiagonal form
    // falls steeply from top to bottom, and values in clusters come slowly: from about 70 columns
    // on, 29 sweeps may not do. And where that form has a zero on its diagonal and right of it
    // first small elements, then a large one, U diag(w) V^T misses A by as much as the small ones.
    //   u, v      any shape; receive the factors. Either may be the receiver.
    //   w         at least n elements, not tested and not resized; only they are written.
    //   returns   1: done. A receiver without columns leaves v as it is.
    //             0: m < n, nothing touched. Or a value that 29 sweeps have not found, u, w and v
    //             without meaning. Or memory exhausted, u and v unchanged, or u a copy of the
    //             receiver; errorFlag of u may be 1.
    virtual int svd(Matrix& u, MatrixStore<T>& w, Matrix& v) const;

    // A = Q R with Q m x m orthogonal and R m x n upper triangular, by one plane rotation for each
    // element below the diagonal (W. Givens, "Computation of plane unitary rotations transforming a
    // general matrix to triangular form", J. SIAM 6 (1958) 26-50). Elements of r below the diagonal
    // are 0 up to rounding. The radius of a rotation is a plain square root: Q is orthogonal, and
    // R triangular, for elements between 1e-153 and 1e153 only.
    //   q, r      any shape; receive the factors. One of them may be the receiver.
    //   returns   1: done.
    //             0: the receiver has no rows, or q refuses m x m, r a copy of the receiver. Or
    //             memory exhausted, q and r unchanged; or r a copy of the receiver and q empty;
    //             errorFlag of r may be 1.
    virtual int qr(Matrix& q, Matrix& r) const;

    // assign(source), then pseudoInvert, whose result is lost. errorFlag is that of assign; if it
    // is 1, the old elements are inverted.
    virtual void pseudoInverseOf(const MatrixStore<T>& source);

    // The receiver becomes its pseudo-inverse (R. Penrose, "A generalized inverse for matrices",
    // Proc. Camb. Phil. Soc. 51 (1955) 406-413), V diag(1 / w) U^T with the factors of svd. A
    // singular value below 1e-15, whatever the others are, or not a number counts as 0.
    // m x n becomes n x m. With m < n it becomes n x n, whose last n - m columns are zero: rows of
    // zeros are appended to the receiver first.
    //   returns   1: done. A receiver without columns stays as it is.
    //             0: svd gave 0, or the receiver is a row Vector: the old elements, appended rows
    //             included. Or memory exhausted, the same or empty.
    virtual int pseudoInvert();

    // x becomes the pseudo-inverse of the receiver times b, a column of n elements; with m < n the
    // leading m of them count. x may be b. The receiver stays as it is.
    // 0: b is not of length n; or multiply refuses the shapes, which are n x max(m, n) and that of
    // b; or svd gave 0; x unchanged. Or memory exhausted, x unchanged or empty.
    virtual int pseudoSolve(const Vector<T>& b, Matrix& x) const;

    // sqrt(a^2 + b^2), with squares of the quotient of the smaller by the larger only.
    virtual T hypotenuse(T a, T b) const;

    // The two stages of svd before its iteration; u holds the matrix. First u becomes the
    // Householder vectors, column i of it from the diagonal down and row i right of the diagonal;
    // w and superdiagonal become the bidiagonal form, in which superdiagonal[i] stands above w[i]
    // and superdiagonal[0] is 0; *norm becomes the largest |w[i]| + |superdiagonal[i]|. Then u and
    // v become the orthogonal factors. w and superdiagonal have at least n elements and v is n x n;
    // the second stage needs m >= n. None of this is tested.
    virtual void bidiagonalize(Matrix& u, MatrixStore<T>& w, Vector<T>& superdiagonal,
                               T* norm) const;
    virtual void accumulateTransforms(Matrix& u, const MatrixStore<T>& w, Matrix& v,
                                      const Vector<T>& superdiagonal) const;
};

extern template class Matrix<int>;
extern template class Matrix<double>;
