// How TextReader reads one line after the other, and what it refuses.
#include "workbench/files/text/TextReader.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <cmath>
#include <limits>

// The search, if there is one, has a look at every cell.
bool TextReader::nextRow(AxisSearch* search) {
    std::string_view line;
    if (!lines.next(line)) {
        return false;
    }
    if (!takeCells(line) && !takeCells(withoutComment(line, options))) {
        refuseLine(withoutComment(line, options));
    }
    for (std::size_t column = 0; search != nullptr && column < row.size(); ++column) {
        search->look(column, cells[column], row[column], lines.number());
    }
    return true;
}

// False if the line does not hold a number for each column that is used; empty cells may follow.
bool TextReader::takeCells(std::string_view line) {
    CellCutter cutter(line, layout.separator);
    missing.assign(filler ? row.size() : 0, false);
    const bool plain = cellReader.decimal() == '.' && options.missing.empty();
    for (std::size_t column = 0; column < row.size(); ++column) {
        if ((!plain || layout.times[column] || !cutter.nextNumber(cells[column], row[column])) &&
            (!cutter.next(cells[column]) || !isTaken(kindOf(cells[column], column), column))) {
            return false;
        }
    }
    std::string_view surplus;
    while (cutter.next(surplus)) {
        if (!surplus.empty()) {
            return false;
        }
    }
    return true;
}

// Where gaps are filled, NaN is one.
bool TextReader::isTaken(CellReader::Kind kind, std::size_t column) {
    using Kind = CellReader::Kind;
    if (kind == Kind::finite || (kind == Kind::nonfinite && allowNonfinite)) {
        return true;
    }
    const bool gap = kind == Kind::missing || (kind == Kind::nonfinite && std::isnan(row[column]));
    if (!filler || !gap || column == mayBeAxis) {
        return false;
    }
    row[column] = std::numeric_limits<double>::quiet_NaN();
    missing[column] = true;
    return true;
}

// Of the row that was read last, and of those before it.
void TextReader::fillGaps() {
    if (!filler) {
        return;
    }
    if (const std::optional<std::size_t> column = filler->add(row, missing)) {
        refuseGap(*column, fmt::format("in line {}", lines.number()));
    }
    while (filler->ready()) {
        filler->take(row);
    }
}

void TextReader::refuseGap(std::size_t column, const std::string& where) const {
    throw Failure(
        fmt::format("{}, {}: the gap {} is not filled: at most {} numbers in a row may be missing, "
                    "with one before and one after them; correct it, or leave out the column with "
                    "--columns",
                    facts.source.shown, columnName(column), where, GapFiller::longest));
}

bool TextReader::nextWholeRow() {
    if (!filler) {
        return nextRow();
    }
    while (!filler->ready()) {
        if (!nextRow() || filler->add(row, missing)) {
            return false;
        }
    }
    filler->take(row);
    return true;
}

CellReader::Kind TextReader::kindOf(std::string_view& cell, std::size_t column) {
    using Kind = CellReader::Kind;
    if (!used[column]) {
        row[column] = std::numeric_limits<double>::quiet_NaN();
        return Kind::finite;
    }
    if (!layout.times[column]) {
        return cellReader.read(cell, row[column]);
    }
    return isMissing(cell, options)                  ? Kind::missing
           : moments[column].read(cell, row[column]) ? Kind::finite
                                                     : Kind::notANumber;
}

// Of a line that takeCells did not take.
void TextReader::refuseLine(std::string_view line) {
    CellCutter cutter(line, layout.separator);
    std::size_t column = 0;
    for (std::string_view cell; column < row.size() && cutter.next(cell); ++column) {
        const std::string shown = printable(withoutQuotes(cell), shownLength);
        const CellReader::Kind kind = kindOf(cell, column);
        if (!isTaken(kind, column)) {
            refuseCell(column, lines.number(), faultOf(kind, shown, column));
        }
    }
    refuse(
        fmt::format("{} column(s), but {} in the first line; correct it, or put # before lines "
                    "that are not data",
                    countCells(line, layout.separator), row.size()));
}

// gapsFilled: in other columns than this one.
static std::string missingText(const std::string& cell, bool gapsFilled) {
    return fmt::format(
        "{}; put a number there, or {}",
        cell.empty() ? "the cell is empty"
                     : fmt::format("\"{}\" stands for a missing number", cell),
        gapsFilled ? "take the column, which may be the axis, as a signal with --axis none: of an "
                     "axis no gaps are filled"
                   : "fill gaps with --gaps linear");
}

std::string TextReader::faultOf(CellReader::Kind kind, const std::string& cell,
                                std::size_t column) const {
    using Kind = CellReader::Kind;
    switch (kind) {
        case Kind::nonfinite:
            return fmt::format("{} is not a finite number; use --allow-nonfinite to let it through",
                               row[column]);
        case Kind::tooLarge:
            return fmt::format("{} is too large for a double; scale the column", cell);
        case Kind::missing:
            return missingText(cell, filler.has_value());
        case Kind::thousands:
            return fmt::format("\"{}\" has separators of thousands; write numbers without them",
                               cell);
        case Kind::otherSign:
            return fmt::format(
                "\"{}\" has a {}, but the decimal sign is a {}; write all numbers alike, without "
                "separators of thousands",
                cell, cellReader.decimal() == '.' ? "comma" : "point",
                cellReader.decimal() == '.' ? "point" : "comma");
        case Kind::finite:
        case Kind::notANumber:
            break;
    }
    if (layout.times[column]) {
        return fmt::format("\"{}\" is not a time as the first one in its column; correct it", cell);
    }
    return fmt::format(
        "\"{}\" is not a number; correct it, {}or put # before lines that are not data", cell,
        row.size() > 1 ? "choose other columns with --columns, " : "");
}
