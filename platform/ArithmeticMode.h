#pragma once

#include <cstdint>

// Which of the neighbouring numbers a result becomes.
enum class Rounding { toNearest, downward, upward, towardZero };

// How a thread computes with floating point.
struct ArithmeticMode {
    Rounding rounding = Rounding::toNearest;
    bool flushesDenormals = false;  // denormal operands, results or both count as 0

    // That of the calling thread.
    static ArithmeticMode current();
};

// While it lives, the calling thread computes in the default mode of IEEE 754: to the nearest
// number, ties to even, denormals kept, no traps. Then the thread has its own mode again. Objects
// of one thread end in the reverse order of their making.
//
// On x86 this is the mode of SSE, in which 32-bit builds compute as well; that of the x87 unit
// stays as it is. Processors other than x86 and 64-bit ARM have their rounding set and nothing
// else.
class StandardArithmetic {
public:
    StandardArithmetic();
    StandardArithmetic(const StandardArithmetic&) = delete;
    StandardArithmetic& operator=(const StandardArithmetic&) = delete;
    ~StandardArithmetic();

private:
    std::uint64_t before;
};
