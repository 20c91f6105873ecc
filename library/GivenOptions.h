#pragma once

#include "workbench/calls/CallOptions.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

// Options of a handle, for convolution and for deconvolution: each direction is passed those that
// it has.
class GivenOptions {
public:
    // Sets an option, or with value null takes it back. WrongOption if neither direction has it, or
    // one that has it refuses the value by itself; std::bad_alloc. Nothing has changed then.
    void set(const std::string& name, const char* value);

    // Those of a direction, FendraSettings::convolution or deconvolution.
    [[nodiscard]] CallOptions of(std::int32_t direction) const;

private:
    struct Row {
        CallOption option;
        std::array<bool, 2> isOf;  // by direction
    };
    std::vector<Row> rows;
};
