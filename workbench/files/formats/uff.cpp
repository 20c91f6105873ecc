#include "workbench/files/Format.h"
#include "workbench/files/instrument/UffReader.h"
#include "workbench/files/instrument/UffWriter.h"
#include "workbench/files/instrument/fields.h"

#include <algorithm>
#include <utility>

// Takes a line, without its end, from the front.
static std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end);
    text.remove_prefix(text.starts_with("\r\n") ? 2 : text.empty() ? 0 : 1);
    return line;
}

static bool isNumberOfSix(std::string_view line) {
    return wholeNumber(field(line, 0, 6)).has_value() && field(line, 6, 80).empty();
}

// -1 and the number of a dataset, each in six columns. What stands below it is not such a number: a
// column of whole numbers may begin in the same way.
static bool isUff(std::string_view head) {
    const std::string_view first = takeLine(head), second = takeLine(head);
    const bool text = isNumberOfSix(second) && !isNumberOfSix(takeLine(head));
    return UffDataset::isDelimiter(first) && (text || second.starts_with("    58b"));
}

static std::unique_ptr<SignalReader> openUff(FileHandle file, const SourceName& source,
                                             const ReadOptions& options) {
    return std::make_unique<UffReader>(std::move(file), source, options);
}

static std::unique_ptr<SignalWriter> createUff(const SignalTarget& target, const ResultInfo& info) {
    return std::make_unique<UffWriter>(target, info);
}

extern const Format uffFormat = {
    "UFF 58",
    {".uff", ".unv"},
    Format::Kind::measurement,
    {.rate = true, .axis = true, .names = true, .notes = true, .holdsName = UffWriter::holdsName},
    isUff,
    openUff,
    createUff,
    Encoding::float64,
    UffReader::parts};
