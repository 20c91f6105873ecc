#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace kernels {

// The arithmetic of the elements. For double it is the plain operators. For int it is defined for
// every pair of operands: sums and products wrap modulo 2^32, and no quotient traps.

inline double sum(double a, double b) {
    return a + b;
}
inline double difference(double a, double b) {
    return a - b;
}
inline double product(double a, double b) {
    return a * b;
}
inline double quotient(double a, double b) {
    return a / b;
}
inline double negative(double a) {
    return -a;
}
inline double magnitude(double a) {
    return std::abs(a);
}
inline double squareRoot(double a) {
    return std::sqrt(a);
}

inline int sum(int a, int b) {
    return static_cast<int>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
inline int difference(int a, int b) {
    return static_cast<int>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}
inline int product(int a, int b) {
    return static_cast<int>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}
// Truncated. 0 for the divisor 0; the most negative number divided by -1 is itself.
inline int quotient(int a, int b) {
    if (b == 0) {
        return 0;
    }
    return b == -1 ? difference(0, a) : a / b;
}
inline int negative(int a) {
    return difference(0, a);
}
// The magnitude of the most negative number does not fit; the largest number stands for it, so that
// its row does not count as a row of zeros.
inline int magnitude(int a) {
    return a == std::numeric_limits<int>::min() ? std::numeric_limits<int>::max() : std::abs(a);
}
// Truncated. 0 for a negative number, which a sum of squares can become when it wraps.
inline int squareRoot(int a) {
    return a < 0 ? 0 : static_cast<int>(std::sqrt(static_cast<double>(a)));
}

}  // namespace kernels
