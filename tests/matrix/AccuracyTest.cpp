#include "matrix/SquareMatrix.h"
#include "tests/support/LongMatrix.h"
#include "tests/support/MatrixKinds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

// Residuals of the factorisations and of the pseudo-inverse over the kinds of matrices, in the
// manner of the test ratios that are usual in linear algebra: relative to the norms, the larger
// dimension and the unit roundoff. Prints the worst of each, and those that cannot hold.

namespace {

struct Ratio {
    std::string operation;  // with the residual, or any of its residuals
    int bound;              // below it; for an exception, above
    std::string kind = {};  // of an exception, and the least size that is concerned
    int size = 0;
    const char* reason = "";
    long double worst = 0;
    std::string matrix = {};
};

struct Accuracy : testing::Test {
    // A ratio counts in the first row that it fits.
    std::vector<Ratio> ratios = {
        {"qr", 50, "near overflow", 1, "the plain square root of the rotation overflows"},
        {"qr", 50, "near underflow", 1, "squares under the root vanish, nothing is rotated"},
        {"svd", 50, "near overflow", 1, "the shift is not scaled and overflows"},
        {"svd", 50, "near underflow", 1, "the shift is not scaled and underflows"},
        {"svd", 50, "condition 0.1/eps", 200, "29 sweeps do not find a value"},
        {"svd", 50, "graded", 200, "29 sweeps do not find a value"},
        {"svd", 50, "bidiagonal with a zero", 5, "cancels on behind a negligible element"},
        {"pseudoInvert", 50, "near overflow", 1, "svd fails"},
        {"pseudoInvert", 50, "near underflow", 1, "svd fails; values below 1e-15 count as 0"},
        {"pseudoInvert", 50, "condition 0.1/eps", 200, "svd fails"},
        {"pseudoInvert", 50, "graded", 200, "svd fails"},
        {"pseudoInvert", 50, "bidiagonal with a zero", 5, "the factors of svd are wrong"},
        {"pseudoInvert", 50, "rank deficient, large", 2, "roundings of 0 are not below 1e-15"},
        {"luDecompose   P A - L U", 30},
        {"cholesky      A - L L^T", 30},
        {"qr            A - Q R", 30},
        {"qr            I - Q^T Q", 30},
        {"qr            R below the diagonal", 30},
        {"svd           A - U W V^T", 50},
        {"svd           I - U^T U", 50},
        {"svd           I - V^T V", 50},
        {"pseudoInvert  A X A - A", 30},
        {"pseudoInvert  X A X - X", 30},
        {"pseudoInvert  A X - (A X)^T", 30},
        {"pseudoInvert  X A - (X A)^T", 30},
        {"pseudoInvert  columns for appended rows", 30},
    };
    const long double failed = std::numeric_limits<long double>::infinity();
    MatrixKind kind = matrixKinds[0];
    int m = 0, n = 0;

    // An absolute residual, and what it is relative to beside dimension and roundoff.
    void add(const std::string& operation, long double residual, long double scale) {
        const long double unit = std::ldexp(scale * std::max({1, m, n}), -53);
        const long double ratio = residual == 0 ? 0 : residual / unit;
        const auto row = std::find_if(ratios.begin(), ratios.end(), [&](const Ratio& r) {
            return operation.starts_with(r.operation) &&
                   (r.size == 0 || (kind.name == r.kind && std::max(m, n) >= r.size));
        });
        ASSERT_NE(row, ratios.end()) << operation;
        if (!(ratio <= row->worst)) {
            row->worst = ratio < failed ? ratio : failed;
            row->matrix =
                std::string(kind.name) + ' ' + std::to_string(m) + 'x' + std::to_string(n);
        }
    }
    void addOrthogonality(const char* operation, const LongMatrix& q) {
        Matrix<double> identity(q.cols, q.cols);
        identity.setIdentity();
        add(operation, (LongMatrix(identity) - q.transposed() * q).norm(), 1);
    }

    void measureLu(const Matrix<double>& a, const LongMatrix& A) {
        SquareMatrix<double> factors(0), lower(0), upper(0);
        Vector<int> pivots(n, 0);
        LongMatrix permuted(A);
        if (factors.assignSquare(a).luDecompose(pivots) != 1) {  // a row of zeros
            return add("luDecompose   P A - L U", n == 1 && a.dataBlock[0] == 0 ? 0 : failed, 1);
        }
        factors.splitTriangular(lower, upper);
        for (int e = 0; e < n * n; ++e) {
            permuted.at(e / n, e % n) = A.at(pivots.dataBlock[e / n], e % n);
        }
        const LongMatrix product = LongMatrix(lower) * LongMatrix(upper);
        add("luDecompose   P A - L U", (permuted - product).norm(), permuted.norm());
    }

    // Of A A^T / |A| + 2^-40 |A| I, rounded.
    void measureCholesky(const LongMatrix& A) {
        const long double norm = A.norm() == 0 ? 1 : A.norm();
        const LongMatrix gram = A * A.transposed();
        SquareMatrix<double> l(n);
        for (int e = 0; e < n * n; ++e) {
            const long double shift = e % (n + 1) == 0 ? norm * 0x1p-40L : 0;
            l.dataBlock[e] = static_cast<double>(gram.at(e / n, e % n) / norm + shift);
        }
        const LongMatrix rounded(l);
        ASSERT_EQ(l.cholesky(), 1);
        const LongMatrix L(l);
        add("cholesky      A - L L^T", (rounded - L * L.transposed()).norm(), rounded.norm());
    }

    void measureQr(const Matrix<double>& a, const LongMatrix& A) {
        Matrix<double> q, r;
        if (a.qr(q, r) != 1) {
            return add("qr            A - Q R", m == 0 ? 0 : failed, 1);
        }
        const LongMatrix Q(q), R(r);
        LongMatrix lower(R);
        for (int e = 0; e < m * n; ++e) {
            lower.at(e / n, e % n) *= e % n < e / n ? 1 : 0;
        }
        add("qr            A - Q R", (A - Q * R).norm(), A.norm());
        add("qr            R below the diagonal", lower.norm(), A.norm());
        addOrthogonality("qr            I - Q^T Q", Q);
    }

    void measureSvd(const Matrix<double>& a, const LongMatrix& A) {
        Matrix<double> u, v;
        Vector<double> w(n, 0);
        if (a.svd(u, w, v) != 1) {
            return add("svd           A - U W V^T", m < n ? 0 : failed, 1);
        }
        Matrix<double> values(n, n);
        values.setDiagonal(w);
        const LongMatrix U(u), V(v), product = U * LongMatrix(values) * V.transposed();
        const bool negative =
            std::any_of(w.dataBlock, w.dataBlock + n, [](double x) { return x < 0; });
        add("svd           A - U W V^T", negative ? failed : (A - product).norm(), A.norm());
        addOrthogonality("svd           I - U^T U", U);
        addOrthogonality("svd           I - V^T V", V);
    }

    void measurePseudoInverse(const Matrix<double>& a, const LongMatrix& A) {
        Matrix<double> x(a);
        if (x.pseudoInvert() != 1) {
            return add("pseudoInvert  A X A - A", failed, 1);
        }
        LongMatrix appended(x);
        for (int e = 0; e < x.rowCount * x.colCount; ++e) {
            appended.at(e / x.colCount, e % x.colCount) *= e % x.colCount < m ? 0 : 1;
        }
        if (x.resizeKeep(n, m) != 1) {
            return;  // empty
        }
        const LongMatrix X(x), AX = A * X, XA = X * A;
        const double known = std::sqrt(std::max(m, n)) / kind.smallest;
        const long double normX = kind.smallest == 0 ? X.norm() : static_cast<long double>(known);
        const long double scale = A.norm() * normX;
        add("pseudoInvert  A X A - A", (AX * A - A).norm(), A.norm() * scale);
        add("pseudoInvert  X A X - X", (XA * X - X).norm(), normX * scale);
        add("pseudoInvert  A X - (A X)^T", (AX - AX.transposed()).norm(), scale);
        add("pseudoInvert  X A - (X A)^T", (XA - XA.transposed()).norm(), scale);
        add("pseudoInvert  columns for appended rows", appended.norm(), normX * scale);
    }

    void measure(int rows, int cols) {
        m = rows;
        n = cols;
        const Matrix<double> a = makeMatrix(kind, m, n);
        const LongMatrix A(a);
        if (m == n) {
            measureLu(a, A);
            measureCholesky(A);
        }
        measureQr(a, A);
        measureSvd(a, A);
        measurePseudoInverse(a, A);
    }
};

}  // namespace

TEST_F(Accuracy, RatiosStayBelowTheirBounds) {
    for (const MatrixKind& each : matrixKinds) {
        kind = each;
        for (const int size : {0, 1, 2, 3, 5, 10, 50, 200}) {
            measure(size, size);
            measure(size, std::min(size / 2, 50));
            measure(std::min(size / 2, 50), size);
        }
    }
    for (const Ratio& r : ratios) {
        std::printf("    %-40s %8.3Lg  %-33s %s\n", r.operation.c_str(), r.worst, r.matrix.c_str(),
                    r.reason);
        EXPECT_TRUE(r.size == 0 ? r.worst < r.bound : r.worst > r.bound) << r.operation;
    }
}
