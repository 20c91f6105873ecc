#include "workbench/parts/variables/VariableShape.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <limits>

std::string shapeName(const std::vector<std::uint64_t>& lengths) {
    return lengths.empty() ? "scalar" : fmt::format("{}", fmt::join(lengths, " x "));
}

VariableShape VariableShape::of(const std::vector<std::uint64_t>& lengths,
                                const std::string& name) {
    if (lengths.empty()) {
        throw Failure(
            fmt::format("{} holds a single number, of 0 dimensions; save a row of samples", name));
    }
    if (std::find(lengths.begin(), lengths.end(), 0U) != lengths.end()) {
        throw Failure(fmt::format("{} holds no samples; choose another", name));
    }
    if (lengths.size() > 2) {
        throw Failure(
            fmt::format("{} has {} dimensions, {}; save two of them, samples and channels", name,
                        lengths.size(), shapeName(lengths)));
    }
    VariableShape shape{lengths, 0, {}};
    if (lengths.size() == 2) {
        shape.rows = lengths[0] == 1 ? 1 : 0;
        shape.channels = 1 - shape.rows;
        if (lengths[*shape.channels] >
            static_cast<std::uint64_t>(std::numeric_limits<int>::max())) {
            throw Failure(fmt::format("{} has {} columns, which are channels; transpose it", name,
                                      lengths[1]));
        }
    }
    return shape;
}

void VariableShape::describe(SignalInfo& info) const {
    info.samples = static_cast<std::int64_t>(lengths[rows]);
    info.channels = channels ? static_cast<int>(lengths[*channels]) : 1;
    if (info.channels > info.samples) {
        info.remarks.push_back(
            fmt::format("{} has more columns than rows, {}: a row is taken as a sample, a column "
                        "as a channel",
                        info.source.shown, shapeName(lengths)));
    }
}
