#pragma once

#include <cfenv>
#include <vector>

#ifdef __SSE2_MATH__
#include <xmmintrin.h>
#endif

// The arithmetic that a host may leave its thread in; while it lives, that of the test.
class HostArithmetic {
public:
    struct Mode {
        int rounding;
        unsigned flushed;  // denormal results 0x8000, operands 0x40; where a test can ask for that
    };

    static std::vector<Mode> modes() {
        std::vector<Mode> all = {{FE_DOWNWARD, 0}, {FE_UPWARD, 0}, {FE_TOWARDZERO, 0}};
#ifdef __SSE2_MATH__
        all.push_back({FE_TONEAREST, 0x8000});
        all.push_back({FE_TONEAREST, 0x40});
        all.push_back({FE_UPWARD, 0x8040});
#endif
        return all;
    }

    explicit HostArithmetic(const Mode& mode) {
        std::fesetround(mode.rounding);
        flush(mode.flushed);
    }
    HostArithmetic(const HostArithmetic&) = delete;
    HostArithmetic& operator=(const HostArithmetic&) = delete;
    ~HostArithmetic() {
        std::fesetround(FE_TONEAREST);
        flush(0);
    }

private:
    static void flush([[maybe_unused]] unsigned denormals) {
#ifdef __SSE2_MATH__
        _mm_setcsr((_mm_getcsr() & ~0x8040U) | denormals);
#endif
    }
};
