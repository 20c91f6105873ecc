#pragma once

#include <string_view>

// The digits with which the numbers of a column are written: so many places after the point
// (0.003, 10.003), or so many significant ones (0.00277778, 10.0028), whichever is coarser at a
// number. Zeros at the end may be left out, so it is the most of each that counts, and fewer than
// six significant digits say nothing: 10 in a column of tenths.
class ColumnDigits {
public:
    // The text of a number, as CellReader takes it, or of a moment up to its zone.
    void add(std::string_view cell);

    // The distance between neighbouring numbers of that kind, about x.
    [[nodiscard]] double unit(double x) const;

    [[nodiscard]] bool wholeNumbers() const { return places <= 0; }

private:
    static constexpr int most = 400;  // beyond the digits of all doubles
    int places = -most, significant = 6;
};
