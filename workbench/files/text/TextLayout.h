#pragma once

#include "workbench/files/text/CellCutter.h"
#include "workbench/signals/TextOptions.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Letters of a cell, a name or a line that messages show.
constexpr std::size_t shownLength = 24;

// How the lines of a text file are divided, and where its columns begin.
struct TextLayout {
    char separator = '\0';

    bool header = false;              // the last line before the numbers, or the last but one and
                                      // a line of units, name the columns
    std::vector<std::string> names;   // without quotes, with units; empty without a header
    std::vector<std::string> titles;  // the same without the units of a line of their own
    std::size_t columns = 0;
    std::vector<bool> times;  // which columns hold moments (ClockTime)

    std::size_t linesBefore = 0;  // of data: all that stand before the numbers
    std::size_t passedOver = 0;   // of these, such as name no columns
    std::string firstPassedOver;
};

// Finds the layout of a text. The first line that some separator (tab, semicolon, comma, blanks, or
// the one that is told) divides into data alone is the first of the numbers; one that begins with a
// number is as well, so that a cell that is wrong is found. Of the lines before it the last is the
// header, if it names as many columns; a line of units stands between these two. Others before it
// (a title, pairs of key and value) are passed over. A first line sep=; tells the separator. Where
// two separators would do, the one that divides the header alike is taken, so that a blank in it
// does not make two columns of one.
//   next     moves a line to the next one, false at the end; called no further than the first line
//            of numbers, and if that has quotes, one more
//   returns  nothing if none of the first 1000 lines holds numbers
std::optional<TextLayout> findLayout(const std::function<bool(std::string_view&)>& next,
                                     const TextOptions& options);
