#pragma once

#include "workbench/files/text/EvenAxis.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What a header of dataset 58 says of the evenly spaced abscissa, as it stands there.
struct UffAbscissa {
    static constexpr std::size_t width = 13;  // of a number

    std::string_view start, step;
    std::int64_t type = 0;  // what it is: 17 a time, 18 a frequency; 0 is not known
    std::string_view label, unit;

    // The axis, which is a time if its type or its name says so and its unit is known. The step has
    // as many digits as stand there: of the steps that would be written so, the one that belongs to
    // the roundest rate is taken. Empty if nothing but the index is counted, or a number is not
    // one.
    [[nodiscard]] std::optional<EvenAxis> axis() const;
};

// What a number of a header, the type of an axis or of a function's values, stands for; empty for
// those that say nothing.
std::string_view nameOfUffType(std::int64_t type);
