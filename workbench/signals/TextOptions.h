#pragma once

#include <cstdint>
#include <optional>
#include <string>

// What is told of texts whose layout is not to be recognised by their lines.
struct TextOptions {
    std::optional<char> separator;  // of cells; ' ' for runs of blanks and tabs
    std::optional<char> decimal;    // '.' or ','
    std::int64_t skip = 0;          // lines at the beginning that are not read
    char comment = '#';             // begins a comment, as # and % do
    std::string missing;            // stands for a missing number, as an empty cell and NA do
    bool fillGaps = false;          // missing numbers are made from their neighbours: GapFiller
};
