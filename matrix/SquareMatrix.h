#pragma once

#include "matrix/Matrix.h"
#include "matrix/Vector.h"

// Matrix of n rows and n columns: triangular factors, and the linear systems solved with them.
// assign and resizeKeep accept any shape; the numeric operations need a square one, not tested.
//
// A pivot vector chooses how a matrix is decomposed. With n elements, rows are exchanged (scaled
// partial pivoting); empty, they stay. After the decomposition row i of L U is row pivots[i] of the
// input. A matrix does not record that it is decomposed: the caller keeps it and its pivots
// together.
//
// Tests against zero are exact, and a sum is subtracted term by term in the order that the
// operation gives. For int, sums and products wrap modulo 2^32, quotients are truncated, and one by
// 0 is 0; the results are of little use.
template <typename T>
class SquareMatrix : public Matrix<T> {
public:
    // As in Matrix: elements without values, errorFlag reports.
    explicit SquareMatrix(int n) : Matrix<T>(n, n) {}

    // resizeSquare(rows), then that many elements from source; cols is ignored.
    int assignArray(const T* source, int rows, int cols) override;
    // As in Matrix. 0 also for a shape that is not square, matrix unchanged.
    int resize(int rows, int cols) override;
    int reshape(int rows, int cols) override;
    // As in Matrix. 0 also if the product is not square, matrix unchanged.
    int multiply(const Matrix<T>& left, const Matrix<T>& right) override;

    // As assign. errorFlag 1 also if source is not square, matrix unchanged.
    virtual SquareMatrix& assignSquare(const Matrix<T>& source);

    // As resize and reshape to n x n.
    virtual int resizeSquare(int n);
    virtual int reshapeSquare(int n);

    // Crout's elimination, in place: P A = L U, L with a diagonal of 1 that is not stored, U on and
    // above the diagonal (P. D. Crout, "A short method for evaluating determinants and solving
    // systems of linear equations with real or complex coefficients", Trans. AIEE 60 (1941)
    // 1235-1240). Sums run over ascending k.
    // With pivots, the pivot of a column is the largest candidate, each times 1 over the largest
    // magnitude of its row in A; among equal ones the last. A pivot of exactly 0 becomes 1e-20
    // (for int it stays). Without, the quotients below a zero on the diagonal are 1e8.
    //   pivots    n elements, which receive the permutation; or empty.
    //   returns   1: done, singular matrices included.
    //             0: pivots of another length, or memory exhausted. Nothing changed.
    //             -1: a row of zeros, with pivots only. Nothing changed.
    virtual int luDecompose(Vector<int>& pivots);

    // b becomes the solution x of A x = b, with the receiver decomposed from A. With pivots its
    // storage is replaced. The diagonal is not tested for zeros.
    //   b         n elements, not tested, as a row or a column, which it stays.
    //   pivots    those of the decomposition.
    //   returns   1: done.
    //             0: pivots of another length; or memory exhausted, which may set the errorFlag of
    //             b. Elements of b unchanged.
    virtual int luSolve(Vector<T>& b, const Vector<int>& pivots) const;

    // assignSquare(source), then invert(pivot). 0: either failed; errorFlag 1 if it was the first.
    virtual int inverseOf(const Matrix<T>& source, bool pivot);

    // The receiver becomes its inverse, with pivoting or without, and errorFlag 0.
    // 0: a row of zeros, with pivoting only, or memory exhausted; receiver unchanged.
    virtual int invert(bool pivot);

    // x becomes the solution of A x = b with A the receiver, which does not change. x may be b.
    // 0: b is not of length n, x unchanged; or a row of zeros, with pivoting only, x a copy of b;
    // or memory exhausted, x unchanged, with errorFlag 1 perhaps, or a copy of b.
    virtual int solve(const Vector<T>& b, Vector<T>& x, bool pivot) const;

    // The symmetric positive definite receiver becomes its lower factor L, with A = L L^T, and 0
    // above the diagonal (Benoit, "Note sur une methode de resolution des equations normales",
    // Bull. geodesique 2 (1924) 67-77). Sums run over descending k.
    //   returns   1: done.
    //             0: memory exhausted, receiver unchanged.
    //             -1: not positive definite.
    //             -2: not symmetric, which is tested exactly.
    //             After -1 and -2 the strict lower triangle holds L as far as it went, column by
    //             column, and all else the input.
    virtual int cholesky();
};

extern template class SquareMatrix<int>;
extern template class SquareMatrix<double>;
