#include "matrix/RotationMatrix.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/PlainMatrix.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

// The first four leave m empty, the others every object as it was; x becomes empty or keeps its
// elements, with rows of zeros perhaps.
TEST(ExhaustedMemory, LeavesObjectsEmptyOrAsTheyWere) {
    for (std::size_t index = 0; index < 21; ++index) {
        SCOPED_TRACE(index);
        sweepAllocations([&](const FailingAllocator& memory) {
            const std::vector<double> six = {1, 2, 3, 4, 5, 6}, nine = {4, 1, 0, 1, 5, 2, 0, 2, 6};
            Matrix<double> m;
            SquareMatrix<double> s(0);
            Vector<double> v;
            Vector<int> pivots;
            Matrix<double> x, y;
            Vector<double> w(3, 0);
            RotationMatrix<double> rotation(3);
            const std::function<int()> operations[21] = {
                [&] { return m.resize(4, 2); },
                [&] { return m.reshape(3, 2); },
                [&] { return m.transpose(); },
                [&] { return m.multiply(s, s); },
                [&] { return m.resizeKeep(4, 2); },
                [&] { return 1 - m.assign(s).errorFlag; },
                [&] { return 1 - m.mulAssign(s).errorFlag; },
                [&] { return 1 - Matrix<double>(m).errorFlag; },
                [&] { return std::unique_ptr<double[]>(v.toArray()) ? 1 : 0; },
                [&] { return s.luDecompose(pivots); },
                [&] { return s.luSolve(v, pivots); },
                [&] { return s.inverseOf(s, true); },
                [&] { return s.solve(v, v, true); },
                [&] { return s.cholesky(); },
                [&] { return y.divide(m, s, true); },
                [&] { return s.svd(y, w, x); },
                [&] { return s.qr(x, y); },
                [&] { return x.pseudoInvert(); },
                [&] { return s.pseudoSolve(v, x); },
                [&] { return rotation.applyTo(s, x); },
                [&] { return 1 - rotation.assignMatrix(s).errorFlag; },
            };
            const int zeroes[] = {0, 0, 0};
            m.assignArray(six.data(), 2, 3);
            s.assignArray(nine.data(), 3, 3);
            v.assignArray(six.data(), 3, 1);
            pivots.assignArray(zeroes, 3, 1);
            x.assign(m);
            rotation.setRotation(0, 1, 0, 1);
            memory.arm();
            const int result = operations[index]();
            const bool failed = FailingAllocator::disarm();
            const std::vector<double> left = index < 4 ? std::vector<double>() : six;
            const bool keptX = x.rowCount == 0 || std::equal(six.begin(), six.end(), x.dataBlock);
            const bool kept = holds(m, left) && holds(s, nine) && holds(v, {1, 2, 3}) && keptX;
            EXPECT_TRUE(failed ? result == 0 && kept && holds(pivots, {0, 0, 0}) : result == 1);
        });
    }
}

// U, the singular values and V one after the other; none, if the decomposition has failed.
static std::vector<double> factorsWith(const FailingAllocator& memory) {
    constexpr int rows = 24, cols = 21, sizeOfU = rows * cols, sizeOfV = cols * cols;
    std::vector<double> factors(sizeOfU);
    for (int i = 0; i < sizeOfU; ++i) {
        factors[static_cast<std::size_t>(i)] = i * i % 101 - 50.0;
    }
    Matrix<double> a, u, v;
    Vector<double> w(cols, 0);
    a.assignArray(factors.data(), rows, cols);
    memory.arm();
    const int result = a.svd(u, w, v);
    const bool failed = FailingAllocator::disarm();
    EXPECT_TRUE(failed || result == 1);
    if (result != 1) {
        return {};
    }
    factors.assign(u.dataBlock, u.dataBlock + sizeOfU);
    factors.insert(factors.end(), w.dataBlock, w.dataBlock + cols);
    factors.insert(factors.end(), v.dataBlock, v.dataBlock + sizeOfV);
    return factors;
}

// Beyond some columns the decomposition has memory that it can do without: then it succeeds, with
// the same factors.
TEST(ExhaustedMemory, LeavesSingularValuesOutOrAsTheyAre) {
    std::vector<double> expected(24 * 21 + 21 + 21 * 21);
    int successes = 0;
    sweepAllocations([&](const FailingAllocator& memory) {
        const std::vector<double> factors = factorsWith(memory);
        if (!factors.empty() && successes++ == 0) {
            std::copy(factors.begin(), factors.end(), expected.begin());
        }
        EXPECT_TRUE(factors.empty() || factors == expected);
    });
    EXPECT_EQ(successes, 3);  // the first, which has all memory, that without it, and the last
}
