#include "workbench/files/array/NpyReader.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

static NpyHeader readHeader(std::FILE* file, std::int64_t begin, std::int64_t available,
                            const std::string& name) {
    seekFile(file, begin, SEEK_SET);
    return NpyHeader::read(
        [file](char* to, std::size_t most) { return std::fread(to, 1, most, file); }, available,
        name);
}

NpyReader::NpyReader(FileHandle opened, std::int64_t begin, std::int64_t available,
                     const SourceName& source, const ReadOptions& options)
    : file(std::move(opened)),
      header(readHeader(file.get(), begin, available, source.shown)),
      type(SampleType::of(header.kind, header.bytes, header.bigEndian)),
      samplesAt(begin + header.length),
      lossy(options.lossy) {
    facts.source = source;
    facts.format = "npy, " + header.typeName();
    facts.samples = header.rows;
    facts.channels = header.channels();
    if (facts.channels > facts.samples) {
        facts.remarks.push_back(fmt::format(
            "{} has more columns than rows, {}: a row is taken as a sample, a column as "
            "a channel",
            source.shown, header.shapeName()));
    }
    if (header.kind == 'f' ? !options.allowNonfinite : header.bytes == 8 && !options.lossy) {
        readThrough(options.allowNonfinite);
    }
}

std::string NpyReader::placeOf(std::int64_t index) const {
    const std::int64_t row = header.byColumns ? index % header.rows : index / header.columns;
    const std::int64_t column = header.byColumns ? index / header.rows : index % header.columns;
    return fmt::format("{}, sample {}, channel {}", facts.source.shown, row + 1, column + 1);
}

// That many values, from the first on in the order of the file.
void NpyReader::readValues(std::int64_t first, std::size_t count, double* to) {
    const auto size = static_cast<std::size_t>(header.bytes);
    bytes.resize(std::max(bytes.size(), count * size));
    if (!seekFile(file.get(), samplesAt + first * header.bytes, SEEK_SET) ||
        std::fread(bytes.data(), size, count, file.get()) < count) {
        throw Failure(
            fmt::format("{} changed while it was being read; start again", facts.source.shown));
    }
    const std::size_t wide = lossy ? count : type->firstWide(bytes.data(), count);
    if (wide < count) {
        throw Failure(
            fmt::format("{}: an integer beyond 2^53, which a 64-bit float may not hold; "
                        "use --lossy to let it be rounded",
                        placeOf(first + static_cast<std::int64_t>(wide))));
    }
    type->decode(bytes.data(), count, to);
}

void NpyReader::fill(std::int64_t first, std::int64_t count, double* to) {
    const auto width = static_cast<std::size_t>(header.columns);
    const auto length = static_cast<std::size_t>(count);
    if (!header.byColumns || width == 1) {
        readValues(first * header.columns, width * length, to);
        return;
    }
    values.resize(length);
    for (std::size_t c = 0; c < width; ++c) {
        readValues(static_cast<std::int64_t>(c) * header.rows + first, length, values.data());
        for (std::size_t i = 0; i < length; ++i) {
            to[i * width + c] = values[i];
        }
    }
}
