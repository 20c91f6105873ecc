#pragma once

#include "workbench/signals/TextOptions.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Divides a line into cells. A quoted cell may hold the separator; it keeps its quotes.
class CellCutter {
public:
    // separator: '\t', ';', ',' and others, ' ' for runs of blanks and tabs, '\0' for one cell a
    // line.
    CellCutter(std::string_view line, char cellSeparator);

    // Moves cell to the next one, without blanks around it; false after the last.
    bool next(std::string_view& cell);

    // The same where the next cell is a plain finite number without blanks around it, and reads
    // it; else false, and nothing has moved. For speed: the end of the cell is found by reading.
    bool nextNumber(std::string_view& cell, double& value);

private:
    std::size_t cellEnd() const;

    std::string_view rest;
    char separator;
    bool ended = false;
};

// The text without blanks and tabs at both ends.
std::string_view trimmed(std::string_view text);

// A cell without the quotes at both its ends, and without blanks within them.
std::string_view withoutQuotes(std::string_view cell);

// A line without a comment at its end, after # or what the options name.
std::string_view withoutComment(std::string_view line, const TextOptions& options);

std::size_t countCells(std::string_view line, char separator);

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
