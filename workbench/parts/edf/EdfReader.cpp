#include "workbench/parts/edf/EdfReader.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>

static constexpr std::int64_t blockLength = 1 << 15;

static int signalNamed(const EdfFile& file, const std::string& name, const SourceName& source) {
    for (int i = 0; i < file.signals(); ++i) {
        if (file.name(i) == name) {
            return i;
        }
    }
    throw Failure(fmt::format("{}: the file has changed meanwhile; try again", source.shown));
}

static EdfScale scaleOf(const edf_param_struct& signal) {
    return {signal.phys_min, signal.phys_max, signal.dig_min, signal.dig_max};
}

EdfReader::EdfReader(const std::string& path, const SourceName& source, const ReadOptions& options)
    : file(path, source),
      signal(signalNamed(file, options.part, source)),
      scale(scaleOf(file.signal(signal))) {
    const std::string unit = file.unit(signal);
    facts.source = source;
    facts.format = fmt::format("{}, {}", file.formatName(), file.typeName());
    facts.channels = 1;
    facts.samples = file.signal(signal).smp_in_file;
    facts.rate = file.rate(signal);
    facts.names = {unit.empty() ? options.part : fmt::format("{} ({})", options.part, unit)};
    facts.remarks = {fmt::format("{} starts at {}", source.shown, file.startTime())};
}

std::int64_t EdfReader::read(double* interleaved, std::int64_t count) {
    const std::int64_t taken = std::min(count, facts.samples - position);
    for (std::int64_t done = 0; done < taken;) {
        const std::int64_t length = std::min(blockLength, taken - done);
        digital.resize(static_cast<std::size_t>(length));
        if (!file.read(signal, static_cast<int>(length), digital.data())) {
            throw Failure(
                fmt::format("{} changed while it was being read; start again", facts.source.shown));
        }
        std::transform(digital.begin(), digital.end(), interleaved + done,
                       [this](int value) { return scale.physical(value); });
        done += length;
    }
    position += taken;
    return taken;
}
