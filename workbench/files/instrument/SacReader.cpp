#include "workbench/files/instrument/SacReader.h"

#include "workbench/files/array/SampleType.h"
#include "workbench/files/text/EvenAxis.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

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
        readThrough(false);
    }
}

void SacReader::fill(std::int64_t first, std::int64_t count, double* to) {
    const auto length = static_cast<std::size_t>(count);
    bytes.resize(std::max(bytes.size(), 4 * length));
    if (!seekFile(file.get(), SacHeader::length + 4 * first, SEEK_SET) ||
        std::fread(bytes.data(), 4, length, file.get()) < length) {
        throw Failure(
            fmt::format("{} changed while it was being read; start again", facts.source.shown));
    }
    SampleType::of('f', 4, header.bigEndian)->decode(bytes.data(), length, to);
}
