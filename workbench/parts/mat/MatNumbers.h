#pragma once

#include <cstddef>
#include <matio.h>

// The real numbers of a class of variables, as the library gives them.
struct MatNumbers {
    matio_classes id;
    const char* name;  // "64-bit float"
    std::size_t bytes;

    // The doubles that are the values; integers beyond 2^53 are rounded.
    void (*decode)(const void* values, std::size_t count, double* samples);
    // The index of the first integer whose magnitude is above 2^53; count if there is none.
    std::size_t (*firstWide)(const void* values, std::size_t count);

    // Null if the class is not one of numbers.
    static const MatNumbers* of(matio_classes id);
};
