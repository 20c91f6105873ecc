#include "workbench/files/text/TextReader.h"

#include "workbench/files/text/NumberText.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

static constexpr std::size_t mostColumns = 4096;
static constexpr std::size_t shownLength = 24;

TextReader::TextReader(FileHandle text, const SourceName& source, const ReadOptions& options)
    : file(std::move(text)), lines(file.get(), source.shown), allowed(options) {
    facts.source = source;
    facts.format = "text";
    readLayout();
    scan();
    rewind();
}

void TextReader::refuse(const std::string& what) const {
    throw Failure(fmt::format("{}, line {}: {}", facts.source.shown, lines.number(), what));
}

void TextReader::refuseCell(std::size_t column, const std::string& what) const {
    const std::string name =
        layout.header ? fmt::format(" \"{}\"", printable(layout.names[column], shownLength)) : "";
    throw Failure(fmt::format("{}, line {}, column {}{}: {}", facts.source.shown, lines.number(),
                              column + 1, name, what));
}

void TextReader::readLayout() {
    std::string_view line;
    if (!lines.next(line)) {
        throw Failure(
            fmt::format("{}: no data lines; columns of numbers are expected", facts.source.shown));
    }
    const std::string first(line);
    const bool more = lines.next(line);
    layout = findLayout(first, more ? std::optional<std::string>(line) : std::nullopt);
    if (layout.header && !more) {
        throw Failure(fmt::format("{}: no data lines after \"{}\"; columns of numbers are expected",
                                  facts.source.shown, printable(first, shownLength)));
    }
    if (layout.columns > mostColumns) {
        throw Failure(
            fmt::format("{}: {} columns, but at most {} are allowed; write one line per sample",
                        facts.source.shown, layout.columns, mostColumns));
    }
    row.resize(layout.columns);
    if (allowed.axis) {
        axisColumn = findAxisColumn(layout.names);
    }
    const std::ptrdiff_t axes = axisColumn ? 1 : 0;
    facts.channels = static_cast<int>(layout.columns) - static_cast<int>(axes);
    if (layout.header) {
        facts.names.assign(layout.names.begin() + axes, layout.names.end());
    }
}

void TextReader::scan() {
    rewind();
    EvenSteps steps;
    while (nextRow()) {
        if (axisColumn && !steps.accept(row[0])) {
            refuseCell(0, fmt::format("the {} is not evenly spaced here, at {}; use --no-axis to "
                                      "take the column as a signal",
                                      axisColumn->time ? "time" : "axis", row[0]));
        }
        ++facts.samples;
    }
    if (axisColumn && facts.samples > 1) {
        useAxis(steps);
    }
}

// Where the digits of a column allow, the rate is a whole number of Hz.
void TextReader::useAxis(const EvenSteps& steps) {
    SignalAxis axis{layout.names[0], steps.first(), steps.step(), axisColumn->time};
    if (axis.time) {
        const double rate = axisColumn->perSecond / axis.step;
        const double whole = std::nearbyint(rate);
        facts.rate = std::abs(rate - whole) <= 1e-9 * rate ? whole : rate;
        axis.start /= axisColumn->perSecond;
        axis.step = 1.0 / facts.rate;
    }
    facts.axis = std::move(axis);
}

// Puts the first line of data next.
void TextReader::rewind() {
    lines.rewind();
    std::string_view header;
    if (layout.header) {
        lines.next(header);
    }
}

bool TextReader::nextRow() {
    std::string_view line;
    if (!lines.next(line)) {
        return false;
    }
    CellCutter cells(line, layout.separator);
    std::size_t column = 0;
    for (std::string_view cell; column < row.size() && cells.next(cell); ++column) {
        parseCell(cell, column);
    }
    std::string_view surplus;
    if (column < row.size() || cells.next(surplus)) {
        refuse(
            fmt::format("{} column(s), but {} in the first line; correct it, or put # before lines "
                        "that are not data",
                        countCells(line, layout.separator), row.size()));
    }
    return true;
}

void TextReader::parseCell(std::string_view cell, std::size_t column) {
    switch (readNumber(cell, layout.decimalComma(), row[column])) {
        case NumberKind::finite:
            break;
        case NumberKind::nonfinite:
            if (!allowed.allowNonfinite) {
                refuseCell(column,
                           fmt::format("{} is not a finite number; use --allow-nonfinite to "
                                       "let it through",
                                       row[column]));
            }
            break;
        case NumberKind::tooLarge:
            refuseCell(column, fmt::format("{} is too large for a double; scale the column",
                                           printable(cell, shownLength)));
        case NumberKind::notANumber:
            refuseCell(column,
                       cell.empty()
                           ? "the cell is empty; put a number there"
                           : fmt::format("\"{}\" is not a number; correct it, or put # before "
                                         "lines that are not data",
                                         printable(cell, shownLength)));
    }
}

std::int64_t TextReader::read(double* interleaved, std::int64_t count) {
    count = std::min(count, facts.samples - position);
    const std::ptrdiff_t axes = axisColumn ? 1 : 0;
    for (std::int64_t i = 0; i < count; ++i) {
        if (!nextRow()) {
            throw Failure(
                fmt::format("{} changed while it was being read; start again", facts.source.shown));
        }
        interleaved = std::copy(row.begin() + axes, row.end(), interleaved);
    }
    position += count;
    return count;
}
