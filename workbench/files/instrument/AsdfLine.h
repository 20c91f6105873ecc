#pragma once

#include <string_view>

// The items of a line in ASCII squeezed difference form, or in plain numbers: a digit, a sign or a
// letter begins an item, digits follow.
//     + - . 0 to 9      a number, also with an exponent (E+03)
//     @ A to I, a to i  a number that begins with 0, 1 to 9, -1 to -9
//     % J to R, j to r  the difference to the number before it, likewise
//     S to Z, s         so many times, 1 to 8, 9, the number or the difference before it, that one
//                       included
// (R. S. McDonald, P. A. Wilks, "JCAMP-DX: a standard form for the exchange of infrared spectra in
// computer readable form", Appl. Spectrosc. 42 (1988) 151-162).
class AsdfLine {
public:
    struct Item {
        enum class Kind { end, number, difference, repeat, missing, wrong };
        Kind kind = Kind::end;
        double value = 0.0;
        std::string_view text = {};  // as it stands in the line
    };

    // The line has to last.
    explicit AsdfLine(std::string_view line = {}) : rest(line) {}

    // The next item; end after the last. What stands for no number is missing or wrong.
    Item next();

private:
    std::string_view rest;
};
