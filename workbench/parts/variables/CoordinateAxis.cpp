#include "workbench/parts/variables/CoordinateAxis.h"

#include "workbench/files/text/EvenAxis.h"
#include "workbench/files/text/UnitText.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <vector>

static constexpr std::int64_t pointsPerBlock = 1 << 15;

// A number in the fewest digits that give it back in its width.
static std::string_view digitsOf(double value, bool narrow, std::array<char, 32>& room) {
    const std::to_chars_result end =
        narrow ? std::to_chars(room.begin(), room.end(), static_cast<float>(value))
               : std::to_chars(room.begin(), room.end(), value);
    return {room.data(), static_cast<std::size_t>(end.ptr - room.data())};
}

template <typename Use>
static void forEachPoint(SampleRows& points, std::int64_t count, Use use) {
    std::vector<double> block(static_cast<std::size_t>(std::min(count, pointsPerBlock)));
    for (std::int64_t first = 0; first < count; first += pointsPerBlock) {
        const std::int64_t length = std::min(pointsPerBlock, count - first);
        points.read(first, length, block.data());
        std::for_each(block.data(), block.data() + length, use);
    }
}

// "hours since 2020-01-01" counts hours.
static ColumnName nameOf(const std::string& name, std::string_view unit) {
    if (unit.empty()) {
        return ColumnName(name);
    }
    ColumnName time(fmt::format("time ({})", unit.substr(0, unit.find(" since "))));
    return time.unit ? time : ColumnName();
}

void setAxis(SignalInfo& info, const std::string& name, const std::string& unit, SampleRows& points,
             bool narrow) {
    if (info.samples < 2) {
        return;
    }
    std::array<char, 32> room = {};
    ColumnDigits digits;
    forEachPoint(points, info.samples,
                 [&](double point) { digits.add(digitsOf(point, narrow, room)); });
    EvenSteps steps(digits);
    bool accepted = true;
    forEachPoint(points, info.samples, [&](double point) {
        const std::string_view text = digitsOf(point, narrow, room);
        double meant = point;
        std::from_chars(text.data(), text.data() + text.size(), meant);
        accepted = accepted && steps.accept(meant);
    });
    const std::string shown = withUnit(name, unit);
    if (!accepted || !steps.even()) {
        info.remarks.push_back(fmt::format("{}: the axis {} is not evenly spaced: left out",
                                           info.source.shown, printable(shown, 100)));
        return;
    }
    const EvenAxis found = evenAxis(shown, nameOf(name, unit), steps);
    info.axis = found.axis;
    info.rate = found.rate;
}
