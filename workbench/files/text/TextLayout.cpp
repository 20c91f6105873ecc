#include "workbench/files/text/TextLayout.h"

#include "workbench/files/text/NumberText.h"

#include <algorithm>

static constexpr std::string_view separators = "\t;, ";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

CellCutter::CellCutter(std::string_view line, char cellSeparator)
    : rest(cellSeparator == '\t' ? line : trimmed(line)), separator(cellSeparator) {}

bool CellCutter::next(std::string_view& cell) {
    if (ended) {
        return false;
    }
    const std::size_t end = cellEnd();
    cell = trimmed(rest.substr(0, end));
    ended = end == std::string_view::npos;
    rest.remove_prefix(ended ? rest.size() : end + 1);
    if (separator == ' ') {
        rest = trimmed(rest);
    }
    return true;
}

std::size_t CellCutter::cellEnd() const {
    std::size_t from = 0;
    const std::size_t open = rest.find_first_not_of(separator == '\t' ? " " : " \t");
    if (open != std::string_view::npos && rest[open] == '"') {
        std::size_t close = rest.find('"', open + 1);
        while (close != std::string_view::npos && rest.substr(close + 1).starts_with('"')) {
            close = rest.find('"', close + 2);  // two quotes are one within the cell
        }
        from = close == std::string_view::npos ? 0 : close;
    }
    if (separator == '\0') {
        return std::string_view::npos;
    }
    return separator == ' ' ? rest.find_first_of(" \t", from) : rest.find(separator, from);
}

std::size_t countCells(std::string_view line, char separator) {
    CellCutter cells(line, separator);
    std::size_t count = 0;
    for (std::string_view cell; cells.next(cell);) {
        ++count;
    }
    return count;
}

static bool allNumbers(std::string_view line, char separator) {
    CellCutter cells(line, separator);
    double ignored = 0.0;
    for (std::string_view cell; cells.next(cell);) {
        if (readNumber(cell, separator != ',', ignored) == NumberKind::notANumber) {
            return false;
        }
    }
    return true;
}

// The first separator that is in the line and divides it into numbers alone.
static std::optional<char> dataSeparator(std::string_view line) {
    for (const char separator : separators) {
        if (countCells(line, separator) > 1 && allNumbers(line, separator)) {
            return separator;
        }
    }
    return allNumbers(line, '\0') ? std::optional('\0') : std::nullopt;
}

static char headerSeparator(std::string_view header, const std::optional<std::string>& data) {
    if (data) {
        for (const char separator : separators) {
            const std::size_t columns = countCells(header, separator);
            if (columns > 1 && columns == countCells(*data, separator)) {
                return separator;
            }
        }
        if (allNumbers(*data, '\0')) {
            return '\0';
        }
    }
    const auto* found =
        std::find_if(separators.begin(), separators.end(),
                     [header](char separator) { return countCells(header, separator) > 1; });
    return found == separators.end() ? '\0' : *found;
}

static std::string unquoted(std::string_view cell) {
    if (cell.size() < 2 || cell.front() != '"' || cell.back() != '"') {
        return std::string(cell);
    }
    std::string text(cell.substr(1, cell.size() - 2));
    for (std::size_t i = 0; (i = text.find("\"\"", i)) != std::string::npos; ++i) {
        text.erase(i, 1);
    }
    return text;
}

TextLayout findLayout(std::string_view first, const std::optional<std::string>& second) {
    TextLayout layout;
    if (const std::optional<char> separator = dataSeparator(first)) {
        layout.separator = *separator;
    } else {
        layout.header = true;
        layout.separator = headerSeparator(first, second);
        CellCutter cells(first, layout.separator);
        for (std::string_view cell; cells.next(cell);) {
            layout.names.push_back(unquoted(cell));
        }
    }
    layout.columns = countCells(first, layout.separator);
    return layout;
}
