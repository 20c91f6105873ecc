#include "workbench/files/text/CellCutter.h"

#include <charconv>
#include <cmath>
#include <system_error>

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string_view withoutQuotes(std::string_view cell) {
    const bool quoted = cell.size() >= 2 && cell.front() == '"' && cell.back() == '"';
    return quoted ? trimmed(cell.substr(1, cell.size() - 2)) : cell;
}

std::string_view withoutComment(std::string_view line, const TextOptions& options) {
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        quoted = quoted != (line[i] == '"');
        if (!quoted && (line[i] == '#' || line[i] == options.comment)) {
            return line.substr(0, i);
        }
    }
    return line;
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

bool CellCutter::nextNumber(std::string_view& cell, double& value) {
    const char* const begin = rest.data();
    const char* const end = begin + rest.size();
    if (ended) {
        return false;
    }
    const auto [stop, error] = std::from_chars(begin, end, value);
    if (error != std::errc() || (stop != end && (*stop != separator || separator == ' ')) ||
        !std::isfinite(value)) {
        return false;
    }
    const auto length = static_cast<std::size_t>(stop - begin);
    cell = rest.substr(0, length);
    ended = stop == end;
    rest.remove_prefix(ended ? length : length + 1);
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
