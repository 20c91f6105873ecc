#include "workbench/parts/mat/MatNumbers.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <type_traits>

template <typename Value>
static void decode(const void* values, std::size_t count, double* samples) {
    const auto* const from = static_cast<const Value*>(values);
    std::transform(from, from + count, samples,
                   [](Value value) { return static_cast<double>(value); });
}

template <typename Value>
static std::size_t firstWide([[maybe_unused]] const void* values, std::size_t count) {
    if constexpr (std::is_integral_v<Value> && sizeof(Value) == 8) {
        constexpr Value most = Value{1} << 53U;
        const auto* const from = static_cast<const Value*>(values);
        return static_cast<std::size_t>(std::find_if(from, from + count,
                                                     [](Value value) {
                                                         return value > most ||
                                                                (std::is_signed_v<Value> &&
                                                                 value < Value{0} - most);
                                                     }) -
                                        from);
    }
    return count;
}

template <typename Value>
static constexpr MatNumbers row(matio_classes id, const char* name) {
    return {id, name, sizeof(Value), decode<Value>, firstWide<Value>};
}

const MatNumbers* MatNumbers::of(matio_classes id) {
    static constexpr std::array rows = {
        row<double>(MAT_C_DOUBLE, "64-bit float"),
        row<float>(MAT_C_SINGLE, "32-bit float"),
        row<std::int8_t>(MAT_C_INT8, "8-bit integer"),
        row<std::uint8_t>(MAT_C_UINT8, "8-bit integer without sign"),
        row<std::int16_t>(MAT_C_INT16, "16-bit integer"),
        row<std::uint16_t>(MAT_C_UINT16, "16-bit integer without sign"),
        row<std::int32_t>(MAT_C_INT32, "32-bit integer"),
        row<std::uint32_t>(MAT_C_UINT32, "32-bit integer without sign"),
        row<std::int64_t>(MAT_C_INT64, "64-bit integer"),
        row<std::uint64_t>(MAT_C_UINT64, "64-bit integer without sign")};
    const auto* const found = std::find_if(rows.begin(), rows.end(),
                                           [id](const MatNumbers& each) { return each.id == id; });
    return found == rows.end() ? nullptr : found;
}
