#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

using Bytes = std::span<const std::uint8_t>;

// What a fuzz target does with one input: whatever the bytes, it comes back, and require holds.
void fuzzOne(Bytes input);

// Ends the run with the input as a finding, unless the claim holds.
void require(bool holds, const char* claim);

// Takes values from the front of an input; zeros and empty texts where it is used up.
class InputReader {
public:
    explicit InputReader(Bytes input) : rest(input) {}

    bool isEmpty() const { return rest.empty(); }
    std::uint8_t byte();
    // Up to count bytes, as many as there are.
    std::string_view text(std::size_t count);

private:
    Bytes rest;
};
