#pragma once

#include <cstddef>
#include <type_traits>

namespace kernels {

// A matrix, or a block of one: element (i, j) is row(i)[j], and rows stand `stride` elements apart.
template <typename T>
struct Block {
    T* first;
    std::ptrdiff_t stride;

    [[nodiscard]] T* row(int i) const { return first + i * stride; }
    // The block from element (i, j) on.
    [[nodiscard]] Block from(int i, int j) const { return {row(i) + j, stride}; }
    // NOLINTNEXTLINE(google-explicit-constructor): as a pointer becomes one to what is constant
    operator Block<const T>() const requires(!std::is_const_v<T>) { return {first, stride}; }
};

}  // namespace kernels
