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
        bool flushes;  // denormals; only where a test can ask for that
    };

    static std::vector<Mode> modes() {
        std::vector<Mode> all = {{FE_DOWNWARD, false}, {FE_UPWARD, false}, {FE_TOWARDZERO, false}};
#ifdef __SSE2_MATH__
        all.push_back({FE_TONEAREST, true});
        all.push_back({FE_UPWARD, true});
#endif
        return all;
    }

    explicit HostArithmetic(const Mode& mode) {
        std::fesetround(mode.rounding);
        flush(mode.flushes);
    }
    HostArithmetic(const HostArithmetic&) = delete;
    HostArithmetic& operator=(const HostArithmetic&) = delete;
    ~HostArithmetic() {
        std::fesetround(FE_TONEAREST);
        flush(false);
    }

private:
    static void flush([[maybe_unused]] bool denormals) {
#ifdef __SSE2_MATH__
        constexpr unsigned bits = 0x8040;  // of results, of operands
        _mm_setcsr(denormals ? _mm_getcsr() | bits : _mm_getcsr() & ~bits);
#endif
    }
};
