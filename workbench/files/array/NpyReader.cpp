#include "workbench/files/array/NpyReader.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

static constexpr std::int64_t blockLength = 1 << 15;  // values, unless a row has more

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
      samplesAt(begin + header.length) {
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
    check(options);
}

// In the order of the file, whatever that is.
void NpyReader::check(const ReadOptions& options) {
    const bool mayBeOdd =
        header.kind == 'f' ? !options.allowNonfinite : header.bytes == 8 && !options.lossy;
    const std::int64_t all = header.rows * header.columns;
    for (std::int64_t first = 0; mayBeOdd && first < all; first += blockLength) {
        const auto count = static_cast<std::size_t>(std::min(blockLength, all - first));
        values.resize(count);
        readValues(first, count, values.data());
        checkValues(first, count, options);
    }
}

void NpyReader::checkValues(std::int64_t first, std::size_t count, const ReadOptions& options) {
    const std::size_t wide = options.lossy ? count : type->firstWide(bytes.data(), count);
    if (wide < count) {
        throw Failure(
            fmt::format("{}: an integer beyond 2^53, which a 64-bit float may not hold; use "
                        "--lossy to let it be rounded",
                        placeOf(first + static_cast<std::int64_t>(wide))));
    }
    const auto odd =
        std::find_if(values.begin(), values.end(), [](double v) { return !std::isfinite(v); });
    if (odd != values.end()) {
        throw Failure(
            fmt::format("{}: {} is not a finite number; use --allow-nonfinite to let it through",
                        placeOf(first + (odd - values.begin())), *odd));
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
    type->decode(bytes.data(), count, to);
}

void NpyReader::fill() {
    const std::int64_t channels = header.columns;
    const std::int64_t rows =
        std::min(std::max<std::int64_t>(1, blockLength / channels), header.rows - position);
    const auto width = static_cast<std::size_t>(channels), length = static_cast<std::size_t>(rows);
    block.resize(width * length);
    if (!header.byColumns || width == 1) {
        readValues(position * channels, block.size(), block.data());
    } else {
        values.resize(length);
        for (std::size_t c = 0; c < width; ++c) {
            readValues(static_cast<std::int64_t>(c) * header.rows + position, length,
                       values.data());
            for (std::size_t i = 0; i < length; ++i) {
                block[i * width + c] = values[i];
            }
        }
    }
    blockBegin = position;
    blockEnd = position + rows;
}

std::int64_t NpyReader::read(double* interleaved, std::int64_t count) {
    std::int64_t got = 0;
    while (got < count && position < header.rows) {
        if (position == blockEnd) {
            fill();
        }
        const std::int64_t taken = std::min(count - got, blockEnd - position);
        std::copy_n(block.data() + (position - blockBegin) * header.columns, taken * header.columns,
                    interleaved + got * header.columns);
        position += taken;
        got += taken;
    }
    return got;
}
