#include "workbench/files/instrument/SacReader.h"

#include "workbench/files/array/SampleType.h"
#include "workbench/files/text/EvenAxis.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

static constexpr std::int64_t samplesPerBlock = 1 << 15;

SacReader::SacReader(FileHandle opened, const SourceName& source, const ReadOptions& options)
    : file(std::move(opened)), header(SacHeader::read(file.get(), source.shown)) {
    facts.source = source;
    facts.format = fmt::format("SAC {}, 32-bit float", header.version);
    facts.samples = header.samples;
    facts.channels = 1;
    if (!header.name.empty()) {
        facts.names = {header.name};
    }
    const EvenAxis even = evenAxis(SignalAxis{"Time (s)", header.start, header.step, false,
                                              header.lowestStep, header.highestStep},
                                   TimeUnit{}, false);
    facts.axis = even.axis;
    facts.rate = even.rate;
    if (!options.allowNonfinite) {
        check();
    }
}

void SacReader::check() {
    std::vector<double> block(static_cast<std::size_t>(samplesPerBlock));
    while (const std::int64_t got = read(block.data(), samplesPerBlock)) {
        const auto end = block.begin() + static_cast<std::ptrdiff_t>(got);
        const auto odd =
            std::find_if(block.begin(), end, [](double v) { return !std::isfinite(v); });
        if (odd != end) {
            throw Failure(fmt::format(
                "{}, sample {}: {} is not a finite number; use --allow-nonfinite to let it through",
                facts.source.shown, position - got + (odd - block.begin()) + 1, *odd));
        }
    }
    position = 0;
}

void SacReader::readBlock(double* to, std::int64_t count) {
    const auto length = static_cast<std::size_t>(count);
    bytes.resize(std::max(bytes.size(), 4 * length));
    if (!seekFile(file.get(), SacHeader::length + 4 * position, SEEK_SET) ||
        std::fread(bytes.data(), 4, length, file.get()) < length) {
        throw Failure(
            fmt::format("{} changed while it was being read; start again", facts.source.shown));
    }
    SampleType::of('f', 4, header.bigEndian)->decode(bytes.data(), length, to);
    position += count;
}

std::int64_t SacReader::read(double* interleaved, std::int64_t count) {
    std::int64_t got = 0;
    while (got < count && position < header.samples) {
        const std::int64_t length =
            std::min({count - got, samplesPerBlock, header.samples - position});
        readBlock(interleaved + got, length);
        got += length;
    }
    return got;
}
