#include "workbench/files/instrument/UffDataset.h"

#include "workbench/files/instrument/UffAbscissa.h"
#include "workbench/files/instrument/fields.h"
#include "workbench/files/text/CellCutter.h"
#include "workbench/files/text/UnitText.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/FileHandle.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

static constexpr std::size_t headLines = 11;

namespace {

using Lines = std::array<std::string, headLines>;

// The line with which a dataset begins.
struct Head {
    std::int64_t number = 0;
    bool binary = false;
    std::int64_t byteOrder = 0, floats = 0, lines = 0, bytes = 0;  // of a binary one
};

// Goes through the datasets of a file.
class UffScan {
public:
    UffScan(std::FILE* opened, const std::string& fileName)
        : file(opened), name(fileName), cursor(opened, fileName, {}) {
        seekFile(file, 0, SEEK_END);
        length = filePosition(file);
    }

    // Reads the next dataset; false after the last. One that is not a 58 is left out.
    bool next(std::vector<UffDataset>& datasets);

private:
    std::string_view line();
    void readFunction(const Head& head, UffDataset& dataset);
    void pass(const Head& head);
    void passBinary(const Head& head);

    std::FILE* file;
    const std::string& name;
    LineCursor cursor;
    std::int64_t length = 0;
};

}  // namespace

bool UffDataset::isDelimiter(std::string_view line) {
    return line.starts_with("    -1") && trimmed(line.substr(6)).empty();
}

static std::int64_t numberIn(std::string_view line, std::size_t begin, std::size_t width) {
    return wholeNumber(field(line, begin, width)).value_or(0);
}

static Head headOf(std::string_view line) {
    Head head{numberIn(line, 0, 6), field(line, 6, 1) == "b"};
    if (head.binary) {
        head.byteOrder = numberIn(line, 7, 6);
        head.floats = numberIn(line, 13, 6);
        head.lines = numberIn(line, 19, 12);
        head.bytes = numberIn(line, 31, 12);
    }
    return head;
}

// A label or a unit that is left open is NONE.
static std::string_view textIn(std::string_view line, std::size_t begin, std::size_t width) {
    const std::string_view text = field(line, begin, width);
    return text == "NONE" || text == "none" ? std::string_view() : text;
}

static constexpr std::size_t labelAt = 26, unitAt = 47, labelWidth = 20;

// A label that fills its place goes on in the first line of identification, if that begins so.
static std::string ordinateName(const Lines& lines) {
    const std::string_view line = lines[8], whole = textIn(lines[0], 0, 80);
    const std::string_view label = textIn(line, labelAt, labelWidth);
    if (label.size() + 3 >= labelWidth && whole.size() > label.size() && whole.starts_with(label)) {
        return std::string(whole);
    }
    const std::string_view type = nameOfUffType(numberIn(line, 0, 10));
    const std::string_view unit = textIn(line, unitAt, labelWidth);
    const std::string_view named = label.empty() ? type : label;
    if (named.empty() && unit.empty()) {
        return std::string(whole);
    }
    return withUnit(named.empty() ? "signal" : std::string(named), unit);
}

static void setAxis(UffDataset& dataset, const Lines& lines) {
    const std::string_view numbers = lines[6], names = lines[7];
    const UffAbscissa abscissa{field(numbers, 30, UffAbscissa::width),
                               field(numbers, 30 + UffAbscissa::width, UffAbscissa::width),
                               numberIn(names, 0, 10), textIn(names, labelAt, labelWidth),
                               textIn(names, unitAt, labelWidth)};
    if (const std::optional<EvenAxis> even = abscissa.axis()) {
        dataset.axis = even->axis;
        dataset.rate = even->rate;
    }
}

static std::string refusalOf(std::int64_t type, std::int64_t spacing, std::int64_t count) {
    if (type == 5 || type == 6) {
        return "holds complex numbers, which are not samples; save the real part, the imaginary "
               "part or the magnitude";
    }
    if (type != 2 && type != 4) {
        return fmt::format("holds values of type {}, which is not known; save real numbers", type);
    }
    if (spacing != 1) {
        return "is not evenly spaced; resample it";
    }
    return count < 1 ? "holds no samples; choose another" : "";
}

// The next line, within a dataset.
std::string_view UffScan::line() {
    std::string_view text;
    if (!cursor.next(text)) {
        throw Failure(
            fmt::format("{} is truncated: it ends within a dataset; copy it again", name));
    }
    return text;
}

void UffScan::readFunction(const Head& head, UffDataset& dataset) {
    Lines lines;
    for (std::string& each : lines) {
        each = line();
    }
    for (std::int64_t i = headLines; head.binary && i < head.lines; ++i) {
        line();
    }
    const std::int64_t type = numberIn(lines[6], 0, 10);
    dataset.count = numberIn(lines[6], 10, 10);
    dataset.refusal = refusalOf(type, numberIn(lines[6], 20, 10), dataset.count);
    dataset.bytes = type == 2 ? 4 : 8;
    dataset.name = ordinateName(lines);
    dataset.values = cursor.place();
    dataset.binary = head.binary;
    dataset.bigEndian = head.byteOrder == 2;
    setAxis(dataset, lines);
    if (head.binary && (head.floats != 2 || head.byteOrder < 1 || head.byteOrder > 2)) {
        dataset.refusal = "holds numbers that are not those of IEEE 754; save it as text";
    }
}

// Over its values, to the line after the one that ends it.
void UffScan::pass(const Head& head) {
    if (head.binary) {
        passBinary(head);
        return;
    }
    while (!UffDataset::isDelimiter(line())) {
    }
}

void UffScan::passBinary(const Head& head) {
    const LineCursor::Place begin = cursor.place();
    if (head.bytes < 0 || head.bytes > length - begin.position) {
        throw Failure(
            fmt::format("{} is truncated: a dataset declares {} bytes of values, but only {} are "
                        "present; copy it again",
                        name, head.bytes, length - begin.position));
    }
    cursor = LineCursor(file, name, {begin.position + head.bytes, begin.line});
    std::string_view end = line();
    if (end.empty()) {
        end = line();
    }
    if (!UffDataset::isDelimiter(end)) {
        throw Failure(
            fmt::format("{}: a dataset does not end where its header says; save it again", name));
    }
}

bool UffScan::next(std::vector<UffDataset>& datasets) {
    std::string_view text;
    do {
        if (!cursor.next(text)) {
            return false;
        }
    } while (trimmed(text).empty());
    if (!UffDataset::isDelimiter(text)) {
        cursor.refuse("-1 is expected, at the beginning of a dataset; save the file again");
    }
    const Head head = headOf(line());
    if (head.number != 58) {
        for (std::int64_t i = 0; head.binary && i < head.lines; ++i) {
            line();
        }
        pass(head);
        return true;
    }
    UffDataset& dataset = datasets.emplace_back();
    readFunction(head, dataset);
    pass(head);
    if (head.binary && dataset.refusal.empty() && dataset.count > head.bytes / dataset.bytes) {
        dataset.refusal =
            fmt::format("declares {} values, but only {} bytes of them; save it again",
                        dataset.count, head.bytes);
    }
    return true;
}

std::vector<UffDataset> UffDataset::allOf(std::FILE* file, const std::string& name) {
    std::vector<UffDataset> datasets;
    UffScan scan(file, name);
    while (scan.next(datasets)) {
    }
    return datasets;
}
