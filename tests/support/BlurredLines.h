#pragma once

#include "tests/support/Signal.h"

#include <cstdint>

// Signals for methods that undo a blur, with kernels of their length.

// A peak exp(-(i / width)^2) with the sum 1, wrapped round the front.
Signal peak(int n, double width);

// exp(-i / width) from index 0 on, with the sum 1.
Signal decay(int n, double width);

// Two lines, blurred and late as the time domain makes them, and uniform noise of that height.
Signal blurredLines(const Signal& kernel, double noiseHeight, std::uint64_t seed);
