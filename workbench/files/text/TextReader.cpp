#include "workbench/files/text/TextReader.h"

#include "workbench/files/text/EvenAxis.h"
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
    : file(std::move(text)),
      lines(file.get(), source.shown),
      allowNonfinite(options.allowNonfinite) {
    facts.source = source;
    facts.format = "text";
    readLayout();
    scan(ColumnChoice(options, layout, source.shown));
    rewind();
}

TextReader::TextReader(std::FILE* rest, const std::string& head, const SourceName& source,
                       const ReadOptions& options)
    : lines(rest, head, source.shown), allowNonfinite(options.allowNonfinite) {
    facts.source = source;
    facts.format = "text";
    readLayout();
}

TextReader::TextReader(Pipe opened, const std::string& head, int headLines,
                       const SourceName& source, const ReadOptions& options)
    : TextReader(opened.stream(), head, source, options) {
    pipe = std::move(opened);
    if (options.digest) {
        digest = std::make_unique<Sha256>();
        lines.addTo(*digest);
    }
    const ColumnChoice choice(options, layout, source.shown);
    assign(choice, searchHead(choice, headLines));
}

bool TextReader::canStream(const std::string& head, int headLines, const SourceName& source,
                           const ReadOptions& options) {
    TextReader reader(nullptr, head, source, options);
    const ColumnChoice choice(options, reader.layout, source.shown);
    return !reader.searchHead(choice, headLines).needsFit();
}

AxisSearch TextReader::searchHead(const ColumnChoice& choice, int headLines) {
    AxisSearch search(choice, layout);
    rewind();
    for (int line = layout.header ? 1 : 0; line < headLines; ++line) {
        nextRow(&search);
    }
    rewind();
    return search;
}

void TextReader::refuse(const std::string& what) const {
    throw Failure(fmt::format("{}, line {}: {}", facts.source.shown, lines.number(), what));
}

// column 2 "mV"
std::string TextReader::columnName(std::size_t column) const {
    return fmt::format("column {}", column + 1) +
           (layout.header ? fmt::format(" \"{}\"", printable(layout.names[column], shownLength))
                          : "");
}

void TextReader::refuseCell(std::size_t column, std::int64_t line, const std::string& what) const {
    throw Failure(
        fmt::format("{}, line {}, {}: {}", facts.source.shown, line, columnName(column), what));
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
}

void TextReader::scan(const ColumnChoice& choice) {
    AxisSearch search(choice, layout);
    rewind();
    while (nextRow(&search)) {
        ++facts.samples;
    }
    if (search.needsFit()) {
        rewind();
        while (nextRow()) {
            search.fit(row, lines.number());
        }
    }
    assign(choice, search);
}

// What each column is.
void TextReader::assign(const ColumnChoice& choice, const AxisSearch& search) {
    const AxisSearch::Finding found = search.finding();
    if (found.uneven) {
        refuseCell(found.uneven->column, found.uneven->line,
                   fmt::format("the axis is not evenly spaced here, at {}; resample the file, take "
                               "the column as a signal with --axis none, or leave it out with "
                               "--columns",
                               found.uneven->value));
    }
    channels = choice.channels;
    for (std::size_t i = 0; i < layout.columns && !choice.channelsGiven; ++i) {
        if (i != found.axis) {
            channels.push_back(i);
        }
    }
    facts.channels = static_cast<int>(channels.size());
    for (const std::size_t channel : channels) {
        if (layout.header) {
            facts.names.push_back(layout.names[channel]);
        }
    }
    if (found.axis && facts.samples > 1) {
        const auto& [axis, rate] = evenAxis(layout.header ? layout.names[*found.axis] : "axis",
                                            search.name(*found.axis), search.steps(*found.axis));
        facts.axis = axis;
        facts.rate = rate;
    }
    if (!choice.remark.empty()) {
        facts.remarks.push_back(choice.remark);
    }
    remarkOn(found, search);
}

void TextReader::remarkOn(const AxisSearch::Finding& found, const AxisSearch& search) {
    const auto remark = [this](const std::string& what) {
        facts.remarks.push_back(fmt::format("{}: {}", facts.source.shown, what));
    };
    if (facts.axis && found.byNumbers) {
        remark(fmt::format("{} taken as the axis, from {:.6g} by {:.6g}", columnName(*found.axis),
                           facts.axis->start, facts.axis->step));
    }
    if (facts.axis && search.name(*found.axis).kind == ColumnName::Kind::time &&
        !facts.axis->time) {
        remark(
            fmt::format("{} taken as an axis without a rate: its unit is not known; --rate "
                        "gives one",
                        columnName(*found.axis)));
    }
    if (found.rivals.size() == 1) {
        remark(fmt::format("{} is evenly spaced and taken as a signal; --axis {} makes it the axis",
                           columnName(found.rivals[0]), found.rivals[0] + 1));
    } else if (!found.rivals.empty()) {
        remark(
            fmt::format("several columns are evenly spaced, {} being the first: taken as "
                        "signals; --axis {} makes that one the axis",
                        columnName(found.rivals[0]), found.rivals[0] + 1));
    }
}

// Puts the first line of data next.
void TextReader::rewind() {
    lines.rewind();
    std::string_view header;
    if (layout.header) {
        lines.next(header);
    }
}

// The search, if there is one, has a look at every cell.
bool TextReader::nextRow(AxisSearch* search) {
    std::string_view line;
    if (!lines.next(line)) {
        return false;
    }
    CellCutter cells(line, layout.separator);
    std::size_t column = 0;
    for (std::string_view cell; column < row.size() && cells.next(cell); ++column) {
        parseCell(cell, column);
        if (search != nullptr) {
            search->look(column, cell, row[column], lines.number());
        }
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
            if (!allowNonfinite) {
                refuseCell(column, lines.number(),
                           fmt::format("{} is not a finite number; use --allow-nonfinite to "
                                       "let it through",
                                       row[column]));
            }
            break;
        case NumberKind::tooLarge:
            refuseCell(column, lines.number(),
                       fmt::format("{} is too large for a double; scale the column",
                                   printable(cell, shownLength)));
        case NumberKind::notANumber:
            refuseCell(column, lines.number(),
                       cell.empty()
                           ? "the cell is empty; put a number there"
                           : fmt::format("\"{}\" is not a number; correct it, or put # before "
                                         "lines that are not data",
                                         printable(cell, shownLength)));
    }
}

// The samples that came last; now it is known how many there were.
std::int64_t TextReader::endOfPipe(std::int64_t count) {
    position += count;
    facts.samples = position;
    facts.sha256 = digest != nullptr ? digest->hex() : "";
    return count;
}

std::int64_t TextReader::read(double* interleaved, std::int64_t count) {
    if (!pipe) {
        count = std::min(count, facts.samples - position);
    }
    for (std::int64_t i = 0; i < count; ++i) {
        if (!nextRow()) {
            if (pipe) {
                return endOfPipe(i);
            }
            throw Failure(
                fmt::format("{} changed while it was being read; start again", facts.source.shown));
        }
        for (const std::size_t channel : channels) {
            *interleaved++ = row[channel];
        }
    }
    position += count;
    return count;
}
