#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Divides a line into cells. A quoted cell may hold the separator; it keeps its quotes.
class CellCutter {
public:
    // separator: '\t', ';', ',', ' ' for runs of blanks and tabs, '\0' for one cell a line.
    CellCutter(std::string_view line, char cellSeparator);

    // Moves cell to the next one, without blanks around it; false after the last.
    bool next(std::string_view& cell);

private:
    std::size_t cellEnd() const;

    std::string_view rest;
    char separator;
    bool ended = false;
};

// The text without blanks and tabs at both ends.
std::string_view trimmed(std::string_view text);

std::size_t countCells(std::string_view line, char separator);

// How the lines of a text file are divided.
struct TextLayout {
    char separator = '\0';
    bool decimalComma() const { return separator != ','; }

    bool header = false;             // the first line names the columns
    std::vector<std::string> names;  // without quotes; empty without a header
    std::size_t columns = 0;
};

// Finds the layout by the first two lines (one in a file of one line) of a text.
// The first is a header if no separator divides it into numbers alone. Then the first separator
// (tab, semicolon, comma, blanks) that divides both lines alike is taken, so that a header with a
// blank in it does not make two columns of one.
TextLayout findLayout(std::string_view first, const std::optional<std::string>& second);
