#include "example/fitLine.h"
#include "matrix/RotationMatrix.h"
#include "tests/support/MatrixKinds.h"
#include "tests/support/PlainMatrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

static constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

static Matrix<double> matrixOf(int m, int n, const std::vector<double>& elements) {
    Matrix<double> a;
    EXPECT_EQ(1, a.assignArray(elements.data(), m, n));
    return a;
}

static bool svdEqualsPlainLoops(const Matrix<double>& a) {
    PlainSvd plain(a.dataBlock, a.rowCount, a.colCount);
    const bool found = plainDecompose(plain);
    Matrix<double> u, v;
    Vector<double> w(a.colCount, 1);
    // Without a result the factors mean nothing.
    return a.svd(u, w, v) == (found ? 1 : 0) &&
           (!found || (holds(u, plain.uBlock) && holds(w, plain.wBlock) && holds(v, plain.vBlock)));
}

static bool pseudoInverseEqualsPlainLoops(const Matrix<double>& a) {
    const std::vector<double> plain = plainPseudoInverse(elementsOf(a), a.rowCount, a.colCount);
    Matrix<double> x;
    x.pseudoInverseOf(a);
    return plain.empty() ? x.getCols() == a.getCols() : x.errorFlag == 0 && holds(x, plain);
}

static bool qrEqualsPlainLoops(const Matrix<double>& a) {
    Matrix<double> identity(a.rowCount, a.rowCount), q, r;
    identity.setIdentity();
    std::vector<double> plainQ = elementsOf(identity), plainR = elementsOf(a);
    plainQr(plainQ.data(), plainR.data(), a.rowCount, a.colCount);
    return a.qr(q, r) == 1 && holds(q, plainQ) && holds(r, plainR);
}

template <typename T>
static bool divideEqualsPlainLoops(const Matrix<T>& left, const Matrix<T>& right, bool pivot) {
    const int n = right.colCount;
    Matrix<T> transposed(right), x(left);
    transposed.transpose();
    std::vector<T> factors = elementsOf(transposed), rows = elementsOf(left);
    std::vector<int> order(static_cast<std::size_t>(pivot ? n : 0));
    bool zeroRow = false;
    for (int i = 0; i < n; ++i) {
        const T* row = factors.data() + i * n;
        zeroRow = zeroRow || std::all_of(row, row + n, [](T element) { return element == 0; });
    }
    if (!pivot || !zeroRow) {
        plainEliminate(factors.data(), n, order);
        for (int i = 0; i < left.rowCount; ++i) {
            plainSolve(factors.data(), n, order, rows.data() + i * n);
        }
    }
    const int result = pivot && zeroRow ? 0 : 1;
    return x.divide(x, right, pivot) == result && holds(x, rows);
}

static bool equalsPlainLoops(const MatrixKind& kind, int m, int n) {
    const Matrix<double> tall = makeMatrix(kind, m, n), wide = makeMatrix(kind, n, m);
    const Matrix<double> square = makeMatrix(kind, n, n);
    Matrix<double> turned(wide);
    turned.transpose();
    return svdEqualsPlainLoops(tall) && svdEqualsPlainLoops(turned) &&
           pseudoInverseEqualsPlainLoops(tall) && pseudoInverseEqualsPlainLoops(wide) &&
           qrEqualsPlainLoops(tall) && qrEqualsPlainLoops(wide) &&
           divideEqualsPlainLoops(tall, square, true) &&
           divideEqualsPlainLoops(tall, square, false);
}

TEST(Decomposition, EqualsThePlainLoopsOnEveryKind) {
    for (const MatrixKind& kind : matrixKinds) {
        for (const int n : {1, 2, 3, 4, 5, 8, 17, 40}) {
            EXPECT_TRUE(equalsPlainLoops(kind, n, n) && equalsPlainLoops(kind, 2 * n + 1, n))
                << kind.name << ' ' << n;
        }
    }
}

// Such rows are worked on in a copy.
TEST(Decomposition, OfRowsWholePagesApartEqualsThePlainLoops) {
    const Matrix<double> left = makeMatrix(matrixKinds[2], 2, 512);
    const Matrix<double> square = makeMatrix(matrixKinds[2], 512, 512);
    EXPECT_TRUE(divideEqualsPlainLoops(left, square, true));
    EXPECT_TRUE(divideEqualsPlainLoops(left, square, false));
}

static Matrix<int> integers(int m, int n, double range, std::mt19937& random) {
    Matrix<int> a(m, n);
    std::generate_n(a.dataBlock, m * n, [&] { return static_cast<int>(range * noiseIn(random)); });
    return a;
}

// None of them traps or fails to end; division has an order to keep.
TEST(Decomposition, IntegersTakeTheSameSteps) {
    std::mt19937 random(1);
    for (int n = 1; n < 9; ++n) {
        const Matrix<int> small = integers(n + 1, n, 3, random), s = integers(n, n, 3, random);
        EXPECT_TRUE(divideEqualsPlainLoops(small, s, true) &&
                    divideEqualsPlainLoops(small, s, false));
        Matrix<int> a = integers(n, n, 2147483647.0, random), u, v;
        Vector<int> w(n, 1);
        EXPECT_TRUE(a.svd(u, w, v) <= 1 && a.qr(u, v) == 1 && u.divAssign(v).errorFlag <= 1 &&
                    a.pseudoSolve(w, u) <= 1 && a.divide(a, a, false) == 1);
    }
    Matrix<int> unit(2, 2), q, r;
    unit.setIdentity();
    EXPECT_TRUE(unit.qr(q, r) == 1 && holds(r, {1, 0, 0, 1}) && unit.hypotenuse(3, -4) == 4);
}

TEST(Svd, HandWorkedFactors) {
    struct {
        int m, n;
        std::vector<double> a, u, w, v;
    } const table[] = {
        {1, 1, {-3}, {-1}, {3}, {1}},
        {2, 2, {0, 0, 0, 0}, {1, 0, 0, 1}, {0, 0}, {1, 0, 0, 1}},
        {2, 2, {1, 0, 0, 2}, {-1, 0, 0, -1}, {1, 2}, {-1, 0, 0, -1}},
        {3, 1, {0, 0, -2}, {0, 0, 1}, {2}, {-1}},
    };
    for (const auto& [m, n, a, u, w, v] : table) {
        Matrix<double> left, right;
        Vector<double> values(n, 0);
        const bool found = matrixOf(m, n, a).svd(left, values, right) == 1;
        // == lets the signs of zeros be.
        EXPECT_TRUE(found && holds(values, w) && elementsOf(left) == u && elementsOf(right) == v)
            << testing::PrintToString(a);
    }
}

TEST(Svd, StagesByThemselves) {
    const Matrix<double> none;
    Matrix<double> wide = matrixOf(1, 2, {3, 4});
    Vector<double> diagonal(2, 0), above(2, 0);
    double norm = -1;
    none.bidiagonalize(wide, diagonal, above, &norm);
    EXPECT_TRUE(holds(diagonal, {-3, 0}) && holds(above, {0, 4}) && norm == 4);
    EXPECT_TRUE(none.hypotenuse(3, 4) == 5 && none.hypotenuse(0, -0.0) == 0);
    EXPECT_DOUBLE_EQ(none.hypotenuse(-1e300, 1e300), std::sqrt(2.0) * 1e300);
}

// Rows that fall by a factor of 0.75: the first element swallows the shift. Of 67 of them the first
// value takes 29 sweeps, of 70 it would take 30.
static Matrix<double> fallingRows(int n) {
    Matrix<double> a(n, n);
    a.setZero();
    double element = 1;
    for (int i = 0; i < n; ++i, element *= 0.75) {
        a.rowTable[i][i] = a.rowTable[i][std::min(i + 1, n - 1)] = element;
    }
    return a;
}

// NaN is never negligible, and squares that underflow make one.
TEST(Svd, GivesUpAfter29SweepsAndSoDoesWhatBuildsOnIt) {
    EXPECT_TRUE(svdEqualsPlainLoops(fallingRows(67)) && fallingRows(67).pseudoInvert() == 1);
    for (Matrix<double> a : {fallingRows(70), matrixOf(2, 2, {1, 2, 3, notANumber}),
                             matrixOf(2, 2, {1e-200, 2e-200, 3e-200, 5e-200})}) {
        const int n = a.getCols();
        const std::vector<double> before = elementsOf(a);
        Matrix<double> u, v, x = matrixOf(1, 1, {7});
        Vector<double> w(n, 0), b(n, 1);
        b.setZero();
        EXPECT_TRUE(a.svd(u, w, v) == 0 && a.pseudoSolve(b, x) == 0 && holds(x, {7}));
        EXPECT_TRUE(a.pseudoInvert() == 0 && holds(a, before));
    }
}

namespace {

// Its singular values are those that a test wants.
struct ChosenValues : Matrix<double> {
    std::vector<double> values;
    int svd(Matrix& u, MatrixStore<double>& w, Matrix& v) const override {
        const int n = static_cast<int>(values.size());
        EXPECT_TRUE(u.resize(n, n) == 1 && v.resize(n, n) == 1 && getRows() == n);
        u.setIdentity();
        v.setIdentity();
        std::copy(values.begin(), values.end(), w.dataBlock);
        return 1;
    }
};

}  // namespace

TEST(PseudoInverse, CountsValuesBelowTheThresholdAsZero) {
    ChosenValues a;
    a.values = {2, 1e-15, std::nextafter(1e-15, 0), notANumber, 0, -4};
    a.resize(1, 6);  // rows of zeros make it square
    const int result = a.pseudoInvert();
    Matrix<double> expected(6, 6);
    expected.setDiagonal(matrixOf(1, 6, {0.5, 1 / 1e-15, 0, 0, 0, 0}));
    EXPECT_TRUE(result == 1 && holds(a, elementsOf(expected)));
}

TEST(PseudoInverse, ShapesAndRefusals) {
    Matrix<double> tall = matrixOf(3, 2, {2, 0, 0, 4, 0, 0}), wide(tall), x;
    Vector<double> b(3, 1), row(3, 0), none;
    b.copyFrom(std::data({2.0, 4.0, 9.0}), 3);
    row.assign(b).transpose();
    wide.transpose();
    EXPECT_TRUE(wide.pseudoSolve(b, x) == 1 && x.rowCount == 3 && holds(x, {1, 1, 0}));
    EXPECT_TRUE(wide.pseudoSolve(row, x) == 0 && tall.pseudoSolve(b, x) == 0 &&
                wide.pseudoSolve(none, x) == 0 && holds(x, {1, 1, 0}));
    EXPECT_TRUE(tall.svd(x, b, wide) == 1 && wide.rowCount == 2);
    EXPECT_TRUE(tall.pseudoInvert() == 1 && tall.rowCount == 2);
    EXPECT_TRUE(tall.svd(x, b, wide) == 0 && holds(tall, {0.5, 0, 0, 0, 0.25, 0}));
    EXPECT_TRUE(tall.pseudoInvert() == 1 && tall.rowCount == 3 && tall.colCount == 3);
    EXPECT_TRUE(row.pseudoInvert() == 0 && row.rowCount == 3 && row.colCount == 3);
    EXPECT_TRUE(x.assign(none).errorFlag == 0 && x.pseudoInvert() == 1 && x.svd(x, b, x) == 1);
    EXPECT_TRUE(x.qr(x, wide) == 0);
}

TEST(Division, OperandsShapesAndFailures) {
    Matrix<double> a = matrixOf(1, 2, {4, 12}), x;
    SquareMatrix<double> right(2), zeroColumn(2);
    right.assign(matrixOf(2, 2, {2, 4, 1, 4}));
    zeroColumn.assign(matrixOf(2, 2, {1, 0, 1, 0}));
    EXPECT_TRUE(x.divide(a, right, true) == 1 && holds(x, {1, 2}));
    EXPECT_TRUE(x.divide(right, a, true) == 0 && x.divide(a, matrixOf(1, 1, {1}), true) == 0 &&
                x.divide(a, zeroColumn, true) == 0 && x.divAssign(a).errorFlag == 1);
    EXPECT_TRUE(right.divide(a, right, true) == 0 && holds(right, {2, 4, 1, 4}));  // 1 x 2
    EXPECT_TRUE(holds(x, {1, 2}) && x.divAssign(right).errorFlag == 0 && holds(x, {0.5, -0.0}));
    EXPECT_TRUE(right.divAssign(right).errorFlag == 0 && holds(right, {1, -0.0, 0, 1}));
    EXPECT_TRUE(Matrix<double>().divide({}, {}, true) == 0);
}

TEST(Qr, LeavesTriangularMatricesAndTakesTheReceiver) {
    const std::vector<double> upper = {2, 1, 0, 3, 0, 0}, identity = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    Matrix<double> a = matrixOf(3, 2, upper), q;
    EXPECT_TRUE(a.qr(q, a) == 1 && holds(a, upper) && holds(q, identity) && a.qr(a, q) == 1 &&
                holds(a, identity) && holds(q, upper));
    Vector<double> refusing;
    EXPECT_TRUE(q.qr(refusing, a) == 0 && holds(a, upper));
}

TEST(Rotation, HasOnePlaneAtATime) {
    const Matrix<double> a = matrixOf(3, 2, {3, 1, 5, 6, 4, 2});
    RotationMatrix<double> r(3);
    r.resetRotation();
    EXPECT_TRUE(r.p == -1 && r.c == 0 && holds(r, {1, 0, 0, 0, 1, 0, 0, 0, 1}));
    r.setRotation(0, 2, 0.6, 0.8);
    EXPECT_TRUE(holds(r, {0.6, 0, -0.8, 0, 1, 0, 0.8, 0, 0.6}));
    r.setFromElements(a, 2, 0);
    EXPECT_TRUE(r.p == 2 && r.q == 0 && r.c == 0.6 && r.s == 0.8);
    EXPECT_TRUE(holds(r, {0.6, 0, 0.8, 0, 1, 0, -0.8, 0, 0.6}));
    r.setFromElements(matrixOf(2, 1, {0, 0}), 1, 0);
    EXPECT_TRUE(r.p == 1 && r.c == 1 && r.s == 0 && holds(r, {1, 0, 0, -0.0, 1, 0, 0, 0, 1}));
    EXPECT_TRUE(r.assignMatrix(a).errorFlag == 0 && holds(r, elementsOf(a)) && r.q == -1);
    r.p = 0, r.q = 2;  // a column that it does not have now
    r.resetRotation();
    EXPECT_TRUE(r.q == -1 && holds(r, elementsOf(a)));
}

TEST(Rotation, MultipliesFromTheLeft) {
    Matrix<double> a = matrixOf(3, 2, {3, 1, 7, 7, 4, 2}), x, product;
    RotationMatrix<double> r(3);
    r.setFromElements(a, 2, 0);
    EXPECT_TRUE(product.multiply(r, a) == 1 && r.applyTo(a, x) == 1);
    EXPECT_TRUE(r.applyTo(a, a) == 1 && holds(a, elementsOf(x)) && a.dataBlock[0] == 5);
    for (int e = 0; e < 6; ++e) {
        EXPECT_NEAR(x.dataBlock[e], product.dataBlock[e], 4 * 0x1p-53 * 5);
    }
    Matrix<double> other = matrixOf(1, 2, {1, 2});
    EXPECT_TRUE(r.applyTo(other, x) + r.applyInPlace(other) == 0 && holds(x, elementsOf(a)));
}

TEST(Readme, ExampleFitsALine) {
    const Vector<double> line = fitLine(std::data({0.0, 1.0, 2.0}), std::data({1.0, 2.0, 6.0}), 3);
    ASSERT_EQ(line.length(), 2);
    EXPECT_NEAR(line.dataBlock[0], 0.5, 1e-14);
    EXPECT_NEAR(line.dataBlock[1], 2.5, 1e-14);
    EXPECT_EQ(fitLine(nullptr, nullptr, 0).length(), 0);
}
