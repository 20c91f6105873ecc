#include "workbench/files/array/SampleType.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <type_traits>

static_assert(std::endian::native == std::endian::little,
              "values are read as they stand in memory");

namespace {

struct Truth {
    explicit operator double() const { return byte != 0 ? 1.0 : 0.0; }

    std::uint8_t byte;
};

// IEEE 754-2008 binary16: a sign, five bits of exponent biased by 15, ten bits of fraction.
struct Half {
    explicit operator double() const {
        const auto exponent = static_cast<int>(bits >> 10U & 31U);
        const auto fraction = static_cast<int>(bits & 1023U);
        double magnitude = 0.0;
        if (exponent == 31) {
            magnitude = fraction == 0 ? std::numeric_limits<double>::infinity()
                                      : std::numeric_limits<double>::quiet_NaN();
        } else if (exponent == 0) {
            magnitude = std::ldexp(fraction, -24);
        } else {
            magnitude = std::ldexp(1024 + fraction, exponent - 25);
        }
        return (bits & 0x8000U) != 0 ? -magnitude : magnitude;
    }

    std::uint16_t bits;
};

struct Row {
    char kind;
    int bytes;
    SampleType little, big;
};

}  // namespace

template <typename Value, bool bigEndian>
static Value valueAt(const std::uint8_t* bytes) {
    std::array<std::uint8_t, sizeof(Value)> raw = {};
    if constexpr (bigEndian) {
        std::reverse_copy(bytes, bytes + sizeof(Value), raw.begin());
    } else {
        std::copy_n(bytes, sizeof(Value), raw.begin());
    }
    return std::bit_cast<Value>(raw);
}

template <typename Value, bool bigEndian>
static void decode(const std::uint8_t* bytes, std::size_t count, double* samples) {
    for (std::size_t i = 0; i < count; ++i) {
        samples[i] = static_cast<double>(valueAt<Value, bigEndian>(bytes + i * sizeof(Value)));
    }
}

template <typename Value, bool bigEndian>
static std::size_t firstWide([[maybe_unused]] const std::uint8_t* bytes, std::size_t count) {
    if constexpr (std::is_integral_v<Value> && sizeof(Value) == 8) {
        constexpr Value most = Value{1} << 53U;
        for (std::size_t i = 0; i < count; ++i) {
            const auto value = valueAt<Value, bigEndian>(bytes + i * sizeof(Value));
            if (value > most || (std::is_signed_v<Value> && value < Value{0} - most)) {
                return i;
            }
        }
    }
    return count;
}

template <typename Value>
static constexpr Row row(char kind) {
    return {kind,
            sizeof(Value),
            {decode<Value, false>, firstWide<Value, false>},
            {decode<Value, true>, firstWide<Value, true>}};
}

const SampleType* SampleType::of(char kind, int bytes, bool bigEndian) {
    static constexpr std::array rows = {
        row<Truth>('b'),         row<std::int8_t>('i'),   row<std::int16_t>('i'),
        row<std::int32_t>('i'),  row<std::int64_t>('i'),  row<std::uint8_t>('u'),
        row<std::uint16_t>('u'), row<std::uint32_t>('u'), row<std::uint64_t>('u'),
        row<Half>('f'),          row<float>('f'),         row<double>('f')};
    const auto* found = std::find_if(rows.begin(), rows.end(), [&](const Row& each) {
        return each.kind == kind && each.bytes == bytes;
    });
    return found == rows.end() ? nullptr : bigEndian ? &found->big : &found->little;
}
