#pragma once

#include <string>

// Lines 1 to 11 of a dataset 58, with those that say what its values are.
inline std::string uffLines(const std::string& line7,
                            const std::string& abscissa =
                                "        17    0    0    0 Time"
                                "                 s                   ",
                            const std::string& ordinate =
                                "        12    0    0    0 NONE"
                                "                 g                   ") {
    const std::string none =
        "         0    0    0    0 NONE                 NONE                \n";
    return "Hammer on the beam\nNONE\n26-Nov-26 12:00:00\nNONE\nNONE\n"
           "    1         1    0         0 NONE              12   3 NONE               0   0\n" +
           line7 + "\n" + abscissa + "\n" + ordinate + "\n" + none + none;
}

// Line 7: type and number of the values, spacing, start and step.
inline std::string uffValues(int type, int count, int spacing = 1,
                             const std::string& start = "  0.00000E+00",
                             const std::string& step = "  2.50000E-01") {
    const auto wide = [](int number) {
        const std::string digits = std::to_string(number);
        return std::string(10 - digits.size(), ' ') + digits;
    };
    return wide(type) + wide(count) + wide(spacing) + start + step + "  0.00000E+00";
}

inline std::string uffDataset(const std::string& number, const std::string& content) {
    return "    -1\n" + number + "\n" + content + "    -1\n";
}

// The first line of a 58b: order of the bytes (1 little-endian), kind of numbers, bytes of values.
inline std::string uffBinary(int order, int floats, int bytes) {
    const std::string count = std::to_string(bytes);
    return "    58b     " + std::to_string(order) + "     " + std::to_string(floats) +
           "          11" + std::string(12 - count.size(), ' ') + count +
           "     0     0           0           0";
}
