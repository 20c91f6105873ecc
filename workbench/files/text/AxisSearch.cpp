#include "workbench/files/text/AxisSearch.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

AxisSearch::AxisSearch(ColumnChoice columnChoice, const TextLayout& layout)
    : choice(std::move(columnChoice)), columns(layout.columns) {
    for (std::size_t i = 0; i < layout.names.size(); ++i) {
        columns[i].name = ColumnName(layout.names[i]);
    }
    for (std::size_t i = 0; i < layout.times.size(); ++i) {
        if (layout.times[i]) {
            columns[i].name = ColumnName::ofMoments();
        }
    }
}

// A first column that was chosen as a signal is not sought.
bool AxisSearch::isSought() const {
    const auto& chosen = choice.channels;
    return choice.axisSought && std::find(chosen.begin(), chosen.end(), 0U) == chosen.end();
}

void AxisSearch::look(std::size_t column, std::string_view cell, double value, std::int64_t line) {
    points += column == 0 ? 1 : 0;
    Column& found = columns[column];
    if (!found.monotonic || (!isSought() && choice.axis != column)) {
        return;
    }
    const bool firstPoint = found.end.line == 0;
    const int direction = value > found.last ? 1 : value < found.last ? -1 : 0;
    const bool goesOn = firstPoint || (direction != 0 && direction * found.direction >= 0 &&
                                       std::isfinite(value - found.last));
    found.monotonic = std::isfinite(value) && goesOn;
    found.end = {column, line, value};
    found.direction = firstPoint ? 0 : direction;
    found.last = value;
    found.digits.add(cell);
}

bool AxisSearch::needsFit() const {
    const auto isCandidate = [](const Column& column) { return column.monotonic; };
    return choice.axis ? columns[*choice.axis].monotonic
                       : isSought() && std::any_of(columns.begin(), columns.end(), isCandidate);
}

void AxisSearch::fit(const std::vector<double>& row, std::int64_t line) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        Column& column = columns[i];
        if (!column.monotonic || !column.accepted) {
            continue;
        }
        if (!column.fit) {
            column.fit.emplace(column.digits);
        }
        const bool loosely = column.fit->looselyEven();
        column.accepted = column.fit->accept(row[i]);
        if (loosely || !column.accepted) {
            column.end = {i, line, row[i]};
        }
    }
}

// Whether the name of the first column is that of a time or an axis, and no other's is as good.
bool AxisSearch::namedBest(const std::vector<std::size_t>& among) const {
    const ColumnName::Kind kind = columns[0].name.kind;
    return kind != ColumnName::Kind::other &&
           std::all_of(among.begin(), among.end(),
                       [&](std::size_t i) { return i == 0 || columns[i].name.kind < kind; });
}

AxisSearch::Finding AxisSearch::firstColumn() const {
    Finding found;
    found.axis = 0;
    found.byNumbers = columns[0].name.kind == ColumnName::Kind::other;
    return found;
}

AxisSearch::Finding AxisSearch::byStructure() const {
    std::vector<std::size_t> even, monotonic;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].monotonic) {
            monotonic.push_back(i);
            if (columns[i].isEven()) {
                even.push_back(i);
            }
        }
    }
    Finding found;
    if (!even.empty() && even[0] == 0 && (even.size() == 1 || namedBest(even))) {
        return firstColumn();
    }
    if (even.empty() && points >= 8 && monotonic == std::vector<std::size_t>{0}) {
        found.uneven = columns[0].end;
    }
    found.rivals = even;
    return found;
}

// Where nothing was said about the axis.
AxisSearch::Finding AxisSearch::sought() const {
    std::vector<std::size_t> all(columns.size());
    std::iota(all.begin(), all.end(), 0U);
    const Column& first = columns[0];
    const bool named =
        namedBest(all) && (first.name.kind == ColumnName::Kind::time || first.monotonic);
    if (choice.channelsGiven) {
        return first.isEven() && (named || points >= 3) ? firstColumn() : Finding();
    }
    if (named) {
        return firstColumn();
    }
    return points >= 3 ? byStructure() : Finding();
}

AxisSearch::Finding AxisSearch::finding() const {
    Finding found;
    if (isSought()) {
        found = sought();
    } else {
        found.axis = choice.axis;
    }
    if (found.axis && !columns[*found.axis].isEven()) {
        found.uneven = columns[*found.axis].end;
    }
    return found;
}
