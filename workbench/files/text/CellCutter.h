#pragma once

#include "workbench/signals/TextOptions.h"

#include <cstddef>
#include <string_view>

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
