#include "platform/ArithmeticMode.h"

// The register that holds the mode, or what the standard library has in its place.
#if defined(__SSE2_MATH__) || defined(_M_X64)
#include <xmmintrin.h>

// MXCSR. std::fegetround is about the x87 unit on some systems, hence no help.
static constexpr std::uint64_t standardControl = 0x1F80;  // all exceptions masked
static constexpr std::uint64_t flushBits = 0x8040;        // of results, of operands
static constexpr int roundingShift = 13;
static constexpr Rounding roundings[] = {Rounding::toNearest, Rounding::downward, Rounding::upward,
                                         Rounding::towardZero};

static std::uint64_t control() {
    return _mm_getcsr();
}

static void setControl(std::uint64_t value) {
    _mm_setcsr(static_cast<unsigned>(value));
}

#elif defined(__aarch64__)

// FPCR
static constexpr std::uint64_t standardControl = 0;
static constexpr std::uint64_t flushBits = 0x01000001;  // FZ, and FIZ where the processor has it
static constexpr int roundingShift = 22;
static constexpr Rounding roundings[] = {Rounding::toNearest, Rounding::upward, Rounding::downward,
                                         Rounding::towardZero};

static std::uint64_t control() {
    std::uint64_t value = 0;
    asm volatile("mrs %0, fpcr" : "=r"(value));
    return value;
}

static void setControl(std::uint64_t value) {
    asm volatile("msr fpcr, %0" : : "r"(value));
}

#else
#include <algorithm>
#include <cfenv>
#include <iterator>

static constexpr std::uint64_t standardControl = 0;
static constexpr std::uint64_t flushBits = 0;
static constexpr int roundingShift = 0;
static constexpr Rounding roundings[] = {Rounding::toNearest, Rounding::downward, Rounding::upward,
                                         Rounding::towardZero};
static constexpr int libraryRoundings[] = {FE_TONEAREST, FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO};

static std::uint64_t control() {
    const auto* const found =
        std::find(std::begin(libraryRoundings), std::end(libraryRoundings) - 1, std::fegetround());
    return static_cast<std::uint64_t>(found - std::begin(libraryRoundings));
}

static void setControl(std::uint64_t value) {
    std::fesetround(libraryRoundings[value]);
}

#endif

ArithmeticMode ArithmeticMode::current() {
    const std::uint64_t value = control();
    return {roundings[value >> roundingShift & 3], (value & flushBits) != 0};
}

StandardArithmetic::StandardArithmetic() : before(control()) {
    setControl(standardControl);
}

StandardArithmetic::~StandardArithmetic() {
    setControl(before);
}
