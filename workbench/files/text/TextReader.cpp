#include "workbench/files/text/TextReader.h"

#include "workbench/files/text/EvenAxis.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

static constexpr std::size_t mostColumns = 4096;
TextReader::TextReader(FileHandle text, const SourceName& source, const ReadOptions& reading)
    : file(std::move(text)),
      lines(file.get(), source.shown, reading.text),
      allowNonfinite(reading.allowNonfinite),
      options(reading.text),
      cellReader(reading.text) {
    facts.source = source;
    facts.format = "text";
    requireLayout();
    scan(chosen(reading));
    rewind();
}

TextReader::TextReader(std::FILE* rest, const std::string& head, const SourceName& source,
                       const ReadOptions& reading)
    : lines(rest, head, source.shown, reading.text),
      allowNonfinite(reading.allowNonfinite),
      options(reading.text),
      cellReader(reading.text) {
    facts.source = source;
    facts.format = "text";
}

TextReader::TextReader(Pipe opened, const std::string& head, int headLines,
                       const SourceName& source, const ReadOptions& reading)
    : TextReader(opened.stream(), head, source, reading) {
    pipe = std::move(opened);
    if (reading.digest) {
        digest = std::make_unique<Sha256>();
        lines.addTo(*digest);
    }
    requireLayout();
    const ColumnChoice choice = chosen(reading);
    assign(choice, searchHead(choice, headLines));
}

// Quotes may take another line to be understood, and lines that are skipped are not in the count.
bool TextReader::canStream(const std::string& head, int headLines, const SourceName& source,
                           const ReadOptions& reading) {
    TextReader reader(nullptr, head, source, reading);
    if (reading.text.skip > 0 || reading.text.fillGaps || head.find('"') != std::string::npos ||
        !reader.readLayout()) {
        return false;
    }
    return !reader.searchHead(reader.chosen(reading), headLines).needsFit();
}

AxisSearch TextReader::searchHead(const ColumnChoice& choice, int headLines) {
    AxisSearch search(choice, layout);
    rewind();
    for (auto line = static_cast<int>(layout.linesBefore); line < headLines; ++line) {
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

bool TextReader::readLayout() {
    const auto next = [this](std::string_view& line) { return lines.next(line); };
    const std::optional<TextLayout> found = findLayout(next, options);
    if (found) {
        layout = *found;
        row.resize(layout.columns);
        cells.resize(layout.columns);
        moments.resize(layout.columns);
    }
    return found.has_value();
}

void TextReader::requireLayout() {
    if (!readLayout()) {
        std::string_view line;
        lines.rewind();
        throw Failure(fmt::format(
            "{}: no data lines{}; columns of numbers are expected", facts.source.shown,
            lines.next(line) ? fmt::format(" after \"{}\"", printable(line, shownLength)) : ""));
    }
    if (layout.columns > mostColumns) {
        throw Failure(
            fmt::format("{}: {} columns, but at most {} are allowed; write one line per sample",
                        facts.source.shown, layout.columns, mostColumns));
    }
}

// Columns that are neither channels nor perhaps the axis are not read, and may hold anything.
ColumnChoice TextReader::chosen(const ReadOptions& reading) {
    ColumnChoice choice(reading, layout, facts.source.shown);
    used.assign(layout.columns, !choice.channelsGiven);
    for (const std::size_t channel : choice.channels) {
        used[channel] = true;
    }
    const bool firstIsSignal =
        choice.channelsGiven && std::count(choice.channels.begin(), choice.channels.end(), 0U) != 0;
    if (choice.axis || (choice.axisSought && !firstIsSignal)) {
        mayBeAxis = choice.axis.value_or(0);
        used[*mayBeAxis] = true;
    }
    return choice;
}

void TextReader::scan(const ColumnChoice& choice) {
    AxisSearch search(choice, layout);
    rewind();
    for (; nextRow(&search); ++facts.samples) {
        fillGaps();
    }
    if (filler && filler->open()) {
        refuseGap(*filler->open(), "at the end of the file");
    }
    filled = filler ? filler->filled() : 0;
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
    facts.text = {layout.separator, cellReader.decimal()};
    if (found.uneven) {
        refuseCell(found.uneven->column, found.uneven->line,
                   fmt::format("the axis is not evenly spaced here, at {}{}; resample the file, "
                               "take the column as a signal with --axis none, or leave it out "
                               "with --columns",
                               found.uneven->value,
                               layout.times[found.uneven->column] ? " s after the first" : ""));
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
        if (layout.times[*found.axis]) {
            facts.axis->start += moments[*found.axis].start();
        }
    }
    if (!choice.remark.empty()) {
        facts.remarks.push_back(choice.remark);
    }
    remarkOnLayout();
    remarkOn(found, search);
}

void TextReader::remark(const std::string& what) {
    facts.remarks.push_back(fmt::format("{}: {}", facts.source.shown, what));
}

void TextReader::remarkOnLayout() {
    if (layout.passedOver > 0) {
        remark(fmt::format("{} line(s) before the numbers passed over, the first \"{}\"",
                           layout.passedOver, printable(layout.firstPassedOver, shownLength)));
    }
    if (filled > 0) {
        remark(fmt::format("{} missing number(s) made from their neighbours, by --gaps linear",
                           filled));
    }
    for (const std::size_t column : channels) {
        if (layout.times[column]) {
            remark(fmt::format("{} is times, taken as seconds since the first, {}",
                               columnName(column), printable(moments[column].startText())));
        }
    }
}

void TextReader::remarkOn(const AxisSearch::Finding& found, const AxisSearch& search) {
    if (facts.axis && found.byNumbers) {
        remark(fmt::format("{} taken as the axis, from {:.6g} by {:.6g}", columnName(*found.axis),
                           facts.axis->start, facts.axis->step));
    }
    if (facts.axis && layout.times[*found.axis] && moments[*found.axis].dated()) {
        const std::string& start = moments[*found.axis].startText();
        remark(fmt::format("{} begins at {} and is taken as seconds since midnight of that day",
                           columnName(*found.axis), printable(start)));
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

// Puts the first line of numbers next.
void TextReader::rewind() {
    lines.rewind();
    if (options.fillGaps) {
        filler.emplace(layout.columns);
    }
    for (MomentColumn& column : moments) {
        column.rewind();
    }
    std::string_view before;
    for (std::size_t i = 0; i < layout.linesBefore; ++i) {
        lines.next(before);
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
        if (!nextWholeRow()) {
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
