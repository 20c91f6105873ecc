#pragma once

#include "workbench/signals/SignalReader.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// How a variable of one dimension or two is a signal: rows are samples, columns are channels, and
// a single row is one signal.
struct VariableShape {
    // Failure for other dimensions, and where there are no samples or more channels than can be
    // counted; the message begins with name, that of the variable.
    static VariableShape of(const std::vector<std::uint64_t>& lengths, const std::string& name);

    // Sets samples and channels, with a remark where they may be meant the other way round.
    void describe(SignalInfo& info) const;

    std::vector<std::uint64_t> lengths;
    std::size_t rows = 0;  // which dimension they are along
    std::optional<std::size_t> channels;
};

// "1000 x 2"; "scalar" without dimensions.
std::string shapeName(const std::vector<std::uint64_t>& lengths);
