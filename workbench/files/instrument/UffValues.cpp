#include "workbench/files/instrument/UffValues.h"

#include "workbench/files/array/SampleType.h"
#include "workbench/files/instrument/fields.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/FileHandle.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

UffValues::UffValues(std::FILE* opened, const UffDataset& of, std::string displayName,
                     std::size_t blockLength)
    : file(opened),
      dataset(of),
      name(std::move(displayName)),
      cursor(opened, name, of.values, blockLength) {}

void UffValues::read(double* to, std::size_t count) {
    if (dataset.binary) {
        readBinary(to, count);
    } else {
        readText(to, count);
    }
    position += static_cast<std::int64_t>(count);
    if (!dataset.binary && position == dataset.count) {
        requireEnd();
    }
}

void UffValues::readBinary(double* to, std::size_t count) {
    const auto size = static_cast<std::size_t>(dataset.bytes);
    bytes.resize(std::max(bytes.size(), count * size));
    if (!seekFile(file, dataset.values.position + position * dataset.bytes, SEEK_SET) ||
        std::fread(bytes.data(), size, count, file) < count) {
        throw Failure(fmt::format("{} changed while it was being read; start again", name));
    }
    SampleType::of('f', dataset.bytes, dataset.bigEndian)->decode(bytes.data(), count, to);
}

void UffValues::readText(double* to, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        while (taken == line.size()) {
            readLine();
        }
        to[i] = line[taken++];
    }
}

// Six values of 13 columns, or four of 20.
void UffValues::readLine() {
    const std::size_t width = dataset.bytes == 4 ? 13 : 20;
    std::string_view text;
    if (!cursor.next(text) || UffDataset::isDelimiter(text)) {
        cursor.refuse(
            fmt::format("the dataset ends, though its header declares {} values; copy "
                        "the file again",
                        dataset.count));
    }
    line.clear();
    taken = 0;
    const std::size_t length = text.find_last_not_of(" \t") + 1;
    for (std::size_t begin = 0; begin < length; begin += width) {
        const std::string_view cell = field(text, begin, width);
        const std::optional<double> value = realNumber(cell);
        if (!value) {
            cursor.refuse(fmt::format("\"{}\", in columns {} to {}, is not a number; correct it",
                                      printable(cell), begin + 1, begin + width));
        }
        line.push_back(*value);
    }
}

void UffValues::requireEnd() {
    std::string_view text;
    if (taken < line.size() || !cursor.next(text) || !UffDataset::isDelimiter(text)) {
        cursor.refuse(
            fmt::format("more than the {} values that the header declares; save the file "
                        "again",
                        dataset.count));
    }
}
