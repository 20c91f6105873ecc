#pragma once

#include "workbench/files/text/TextLayout.h"
#include "workbench/signals/SignalReader.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

// What the options of reading say about the columns of a text, counted from 0.
struct ColumnChoice {
    // Failure if a name or a number stands for no column, or for several, or a column is chosen
    // twice.
    ColumnChoice(const ReadOptions& options, const TextLayout& layout, const std::string& fileName);

    bool axisSought = true;           // the numbers decide which column is the axis, if any
    std::optional<std::size_t> axis;  // where they do not: none, or this one
    std::vector<std::size_t> channels;
    bool channelsGiven = false;  // else channels is empty
    std::string remark;          // where the options have no effect
};
