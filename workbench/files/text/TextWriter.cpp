#include "workbench/files/text/TextWriter.h"

#include "workbench/files/text/CellText.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

static constexpr std::size_t blockLength = std::size_t{1} << 16;

// A name as a header cell: in quotes where it could be taken for several cells, data, a comment, a
// byte-order mark or a line about the separator.
static std::string headerCell(const std::string& name) {
    std::string cell = printable(name);
    if (cell.find_first_of("\t;, \"#%") == std::string::npos && !cell.starts_with("\xef\xbb\xbf") &&
        !cell.starts_with("sep=") && !isDatum(cell, {})) {
        return cell;
    }
    for (std::size_t i = 0; (i = cell.find('"', i)) != std::string::npos; i += 2) {
        cell.insert(i, 1, '"');
    }
    return '"' + cell + '"';
}

static std::vector<std::string> columnNames(const ResultInfo& info) {
    std::vector<std::string> names;
    if (info.rate > 0.0) {
        names.emplace_back("t_s");
    } else if (info.axis) {
        names.push_back(info.axis->name);
    }
    if (info.columnNames.size() == static_cast<std::size_t>(info.channels)) {
        names.insert(names.end(), info.columnNames.begin(), info.columnNames.end());
    } else {
        for (int i = 1; i <= info.channels; ++i) {
            names.push_back(info.channels == 1 ? "signal" : fmt::format("signal_{}", i));
        }
    }
    return names;
}

static const SourceName& nameOfText(const SignalTarget& target) {
    if (target.encoding != Encoding::automatic) {
        throw Failure(fmt::format(
            "{} is text, which has no encoding of samples; leave the encoding out, or use the "
            "ending of an audio file",
            target.name.shown));
    }
    if (target.dither) {
        throw Failure(fmt::format(
            "{} is text, which is not rounded to integers: there is nothing to dither; leave out "
            "--dither",
            target.name.shown));
    }
    return target.name;
}

// With a rate, an axis that is not a time has no place in the file.
static SignalAxis axisOf(const ResultInfo& info) {
    return info.axis && (info.axis->time || !(info.rate > 0.0)) ? *info.axis : SignalAxis{};
}

TextWriter::TextWriter(const SignalTarget& target, char columnSeparator, const ResultInfo& info)
    : output(nameOfText(target), target.replace),
      separator(columnSeparator),
      channels(info.channels),
      rate(info.rate),
      start(axisOf(info).start),
      step(axisOf(info).step) {
    writeNotes(info.notes);
    for (const std::string& name : columnNames(info)) {
        text += headerCell(name);
        text += separator;
    }
    text.back() = '\n';
}

void TextWriter::writeNotes(const std::vector<std::string>& notes) {
    for (const std::string& note : notes) {
        text += fmt::format("# {}\n", printable(note));
    }
}

// std::to_chars gives the shortest digits that read back exactly. The sign of a NaN differs between
// processors and means nothing.
void TextWriter::appendNumber(double value) {
    std::array<char, 32> digits = {};
    const std::to_chars_result end =
        std::to_chars(digits.begin(), digits.end(), std::isnan(value) ? std::abs(value) : value);
    text.append(digits.data(), end.ptr);
    text += separator;
}

// A division, since the step is seldom exact: sample 1 at 360 Hz stands at 0.002777777777777778.
void TextWriter::appendAxis() {
    const auto i = static_cast<double>(position);
    if (rate > 0.0) {
        appendNumber(start + (step < 0.0 ? -i : i) / rate);
    } else if (step != 0.0) {
        appendNumber(start + i * step);
    }
}

void TextWriter::write(const double* interleaved, std::int64_t count) {
    for (; count > 0; --count, ++position) {
        appendAxis();
        for (int channel = 0; channel < channels; ++channel) {
            appendNumber(*interleaved++);
        }
        text.back() = '\n';
        if (text.size() >= blockLength) {
            output.write(text);
            text.clear();
        }
    }
}

void TextWriter::flush() {
    output.write(text);
    output.flush();
    text.clear();
}

void TextWriter::finish(const std::vector<std::string>& closingNotes) {
    writeNotes(closingNotes);
    output.write(text);
    output.commit();
}
