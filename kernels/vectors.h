#pragma once

#include "kernels/InstructionSet.h"

namespace kernels {

// `lanes` doubles side by side, with the operators of one; one lane is a double. They are meant for
// registers; in memory they need the alignment of a double only.
//
// Vectors are local variables or lie in memory, never parameters or results of a function: its
// binary interface would depend on the instruction set.
template <int lanes>
struct VectorOf {
    using type [[gnu::vector_size(lanes * sizeof(double))]] = double;
    using inMemory [[gnu::vector_size(lanes * sizeof(double)), gnu::aligned(alignof(double)),
                     gnu::may_alias]] = double;
};
template <>
struct VectorOf<1> {
    using type = double;
    using inMemory = double;
};
template <int lanes>
using Vector = typename VectorOf<lanes>::type;
template <int lanes>
using VectorInMemory = typename VectorOf<lanes>::inMemory;

// The elements from p on, as vectors. A pointer, since clang++ takes what a reference refers to for
// aligned like a local vector.
template <int lanes>
[[gnu::always_inline]] inline const VectorInMemory<lanes>* vectorsAt(const double* p) {
    return reinterpret_cast<const VectorInMemory<lanes>*>(p);
}
template <int lanes>
[[gnu::always_inline]] inline VectorInMemory<lanes>* vectorsAt(double* p) {
    return reinterpret_cast<VectorInMemory<lanes>*>(p);
}

}  // namespace kernels

// Defines the static function `kernel`, which runs body<lanes>(arguments...) on an instruction set,
// its first argument, translated for each of them. It is called, not inlined, so that all forms
// cost their caller the same. `body` is a template over the number of lanes and forced inline, as
// is all that it calls with vectors. An analyser of the source sees one form of each: they are the
// same source.
// NOLINTBEGIN(bugprone-macro-parentheses): names, which parentheses would spoil
#if (defined(__x86_64__) || defined(__i386__)) && !defined(__clang_analyzer__)
#define FENDRA_FORMS(kernel, body)                                                              \
    template <typename... Arguments>                                                            \
    [[gnu::target("avx512f")]] static void kernel##Avx512(Arguments... arguments) {             \
        body<8>(arguments...);                                                                  \
    }                                                                                           \
    template <typename... Arguments>                                                            \
    [[gnu::target("avx2")]] static void kernel##Avx2(Arguments... arguments) {                  \
        body<4>(arguments...);                                                                  \
    }                                                                                           \
    template <typename... Arguments>                                                            \
    [[gnu::noinline]] static void kernel(kernels::InstructionSet set, Arguments... arguments) { \
        switch (set) {                                                                          \
            case kernels::InstructionSet::avx512:                                               \
                return kernel##Avx512(arguments...);                                            \
            case kernels::InstructionSet::avx2:                                                 \
                return kernel##Avx2(arguments...);                                              \
            default:                                                                            \
                return body<2>(arguments...);                                                   \
        }                                                                                       \
    }
#else
#define FENDRA_FORMS(kernel, body)                                                \
    template <typename... Arguments>                                              \
    static void kernel(kernels::InstructionSet /*set*/, Arguments... arguments) { \
        body<2>(arguments...);                                                    \
    }
#endif

// The same without that argument, on the instruction set in use.
#define FENDRA_VARIANTS(kernel, body)                               \
    FENDRA_FORMS(kernel##On, body)                                  \
    template <typename... Arguments>                                \
    static void kernel(Arguments... arguments) {                    \
        return kernel##On(kernels::instructionSet(), arguments...); \
    }
// NOLINTEND(bugprone-macro-parentheses)
