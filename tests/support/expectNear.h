#pragma once

#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <cstddef>

// Each value within a tolerance of the expected one.
inline void expectNear(const Signal& values, const Signal& expected, double tolerance) {
    ASSERT_EQ(values.size(), expected.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_NEAR(values[i], expected[i], tolerance) << i << " of " << values.size();
    }
}
