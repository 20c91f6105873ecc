#include "matrix/SquareMatrix.h"
#include "tests/support/PlainMatrix.h"

#include <gtest/gtest.h>

#include <limits>

static constexpr int most = std::numeric_limits<int>::max(), least = -most - 1;
static const std::vector<int> six = {1, 2, 3, 4, 5, 6};

namespace {

struct MatrixTest : testing::Test {
    Matrix<int> m;           // 2 x 3
    Vector<int> v;           // 1 x 6
    SquareMatrix<int> s{0};  // 2 x 2
    MatrixTest() {
        EXPECT_EQ(1, m.assignArray(six.data(), 2, 3) * v.assignArray(six.data(), 1, 6) *
                         s.assignArray(six.data(), 2, 7));
    }
};

}  // namespace

TEST_F(MatrixTest, RefusesShapesThatDoNotFit) {
    EXPECT_EQ(0, m.resize(0, 5) + m.resize(5, 0) + m.resizeKeep(0, 5) + m.resizeKeep(most, most) +
                     m.reshape(3, 3) + m.reshape(-2, -3) + m.setRow(2, six.data(), 1) +
                     m.setRow(0, nullptr, 1) + m.multiply(m, m));
    EXPECT_EQ(0, v.setLength(0, 0) + v.setLength(-1, 1) + v.resize(2, 2) + v.resize(0, 1) +
                     v.reshape(2, 3) + v.reorient(5, 1) + v.multiply(Matrix<int>(6, 1), v) +
                     v.copyTo(nullptr, 3));
    EXPECT_EQ(0, s.resize(2, 3) + s.reshape(1, 4) + s.reshapeSquare(3) + s.multiply(s, m) +
                     s.inverseOf(m, true) + s.solve(v, v, true) + s.luSolve(v, v));
    EXPECT_TRUE(holds(m, six) && holds(v, six) && holds(s, {1, 2, 3, 4}));
    EXPECT_EQ(2, Matrix<int>(-1, 3).errorFlag + Matrix<int>(0, -1).errorFlag);
}

TEST_F(MatrixTest, TakesTheElementsAlong) {
    Matrix<int> n(m);
    EXPECT_EQ(1, m.resizeKeep(3, 2) * n.transpose() * v.reorient(6, 1) * s.transpose());
    EXPECT_TRUE(holds(m, {1, 2, 4, 5, 0, 0}) && holds(n, {1, 4, 2, 5, 3, 6}));
    EXPECT_TRUE(holds(v, six) && v.rowCount == 6 && holds(s, {1, 3, 2, 4}));
    EXPECT_EQ(1, m.resizeKeep(1, 4) * n.reshape(2, 3) * v.setLength(6, 1) * s.reshapeSquare(2));
    EXPECT_TRUE(holds(m, {1, 2, 0, 0}) && n.rowCount == 2 && holds(v, six));
    EXPECT_EQ(1, n.setRow(1, six.data(), 2) * s.setRow(0, six.data(), 9) * v.copyFrom(&most, 1));
    EXPECT_TRUE(holds(n, {1, 4, 2, 1, 2, 6}) && holds(s, {1, 2, 2, 4}) && v.dataBlock[0] == most);
}

TEST_F(MatrixTest, SetsAndClearsTheFlagAsEachOperationHasIt) {
    Matrix<int> unit(3, 3);
    unit.setIdentity();
    EXPECT_TRUE(m.addAssign(unit).errorFlag == 1 && holds(m, six));
    EXPECT_TRUE(Matrix<int>(m).errorFlag == 0 && m.mulAssign(unit).errorFlag == 1);
    EXPECT_TRUE(m.addAssign(m).errorFlag == 0 && holds(m, {2, 4, 6, 8, 10, 12}));
    EXPECT_TRUE(m.mulAssign(unit).errorFlag == 0 && m.mulAssign(Matrix<int>(3, 2)).errorFlag == 1);
    EXPECT_TRUE(m.assign(m).errorFlag == 0 && holds(m, {2, 4, 6, 8, 10, 12}));
    EXPECT_TRUE(s.assignSquare(m).errorFlag == 1 && s.assignSquare(unit).errorFlag == 0);
    m.setDiagonal(v);
    EXPECT_TRUE(holds(m, {1, 0, 0, 0, 2, 0}) && m.subAssign(s).errorFlag == 1);
}

TEST(Matrix, MultiplyTakesTheReceiverAsOperand) {
    Matrix<double> left, right;
    left.assignArray(std::data({1.0, 2.0, 3.0, 4.0, 5.0, 6.0}), 3, 2);
    right.assignArray(std::data({1.0, -1.0}), 2, 1);
    EXPECT_TRUE(right.multiply(left, right) == 1 && holds(right, {-1, -1, -1}));
    EXPECT_TRUE(left.transpose() == 1 && left.multiply(left, right) == 1 && holds(left, {-9, -12}));
}

TEST_F(MatrixTest, IntegersNeverTrap) {
    for (const auto& [a, b, x] : {std::array{-1, least, least}, {0, 5, 0}, {least, least, 1}}) {
        EXPECT_EQ(1, s.assignArray(&a, 1, 1) * v.assignArray(&b, 1, 1));
        EXPECT_TRUE(s.luSolve(v, {}) == 1 && holds(v, {x}) &&
                    s.luDecompose(v) == (a == 0 ? -1 : 1));
    }
    EXPECT_TRUE(holds(s.addAssign(s), {0}) && s.assignArray(&most, 1, 1) == 1);
    EXPECT_TRUE(holds(s.mulAssign(s), {1}) && holds(s.addAssign(s).subAssign(v), {2}));
}
