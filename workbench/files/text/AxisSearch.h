#pragma once

#include "workbench/files/text/ColumnChoice.h"
#include "workbench/files/text/ColumnDigits.h"
#include "workbench/files/text/ColumnName.h"
#include "workbench/files/text/EvenSteps.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Finds the axis among the columns of a text, in two passes over its lines and in constant memory:
// first the digits of each column and whether it is strictly monotonic, then whether it is even.
//
// The axis is the first of two columns or more if, over three points or more, it is strictly
// monotonic and evenly spaced and no other column is both. A name says it as well: one of a time or
// an axis, while no other column has one as good, makes the first column the axis beside even ones
// and with two points, too. What plausibly is an axis but is uneven is refused: a column called a
// time; one called an axis, if it is strictly monotonic; any that is so over eight points or more
// as the only one, which signals seldom are.
class AxisSearch {
public:
    AxisSearch(ColumnChoice columnChoice, const TextLayout& layout);

    // The first pass: each cell of each line, as text and as number.
    void look(std::size_t column, std::string_view cell, double value, std::int64_t line);

    // Whether there is something to be found by a second pass over the lines: then all of them.
    [[nodiscard]] bool needsFit() const;
    void fit(const std::vector<double>& row, std::int64_t line);

    // Where a column stops being even.
    struct Break {
        std::size_t column = 0;
        std::int64_t line = 0;
        double value = 0.0;
    };

    // What both passes have shown. Columns count from 0.
    struct Finding {
        std::optional<std::size_t> axis;
        bool byNumbers = false;           // its name does not say so
        std::optional<Break> uneven;      // of a column that is to be, or plausibly is, the axis
        std::vector<std::size_t> rivals;  // even columns, of which none is taken
    };
    [[nodiscard]] Finding finding() const;

    // Of a column that is even.
    [[nodiscard]] const EvenSteps& steps(std::size_t column) const { return *columns[column].fit; }
    [[nodiscard]] const ColumnName& name(std::size_t column) const { return columns[column].name; }

private:
    struct Column {
        ColumnName name;
        ColumnDigits digits;
        double last = 0.0;
        int direction = 0;  // 1 or -1 from the second point on
        bool monotonic = true, accepted = true;
        Break end;                     // of being monotonic, or else even
        std::optional<EvenSteps> fit;  // of a column that is monotonic

        [[nodiscard]] bool isEven() const { return monotonic && accepted && fit && fit->even(); }
    };

    [[nodiscard]] bool isSought() const;
    [[nodiscard]] bool namedBest(const std::vector<std::size_t>& among) const;
    [[nodiscard]] Finding firstColumn() const;
    [[nodiscard]] Finding byStructure() const;
    [[nodiscard]] Finding sought() const;

    ColumnChoice choice;
    std::vector<Column> columns;
    std::int64_t points = 0;
};
