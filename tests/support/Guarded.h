#pragma once

#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <cstddef>

// A result array between sentinels, which are checked when it goes. Its samples start as a value
// that no test expects, so one that was not written shows.
class Guarded {
public:
    static constexpr double untouched = -12345.678;

    explicit Guarded(std::size_t n) : block(n + 2 * margin, untouched), length(n) {}
    Guarded(const Guarded&) = delete;
    Guarded& operator=(const Guarded&) = delete;
    ~Guarded() {
        for (std::size_t i = 0; i < margin; ++i) {
            EXPECT_EQ(block[i], untouched) << "written before the result";
            EXPECT_EQ(block[margin + length + i], untouched) << "written behind the result";
        }
    }

    double* data() { return block.data() + margin; }
    [[nodiscard]] int size() const { return static_cast<int>(length); }
    [[nodiscard]] Signal values() const {
        const auto first = block.begin() + margin;
        return {first, first + static_cast<std::ptrdiff_t>(length)};
    }

private:
    static constexpr int margin = 4;
    Signal block;
    std::size_t length;
};
