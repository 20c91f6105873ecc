#include "workbench/files/instrument/SacWriter.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

static SacHeader headerOf(const SignalTarget& target, const ResultInfo& info) {
    const std::string& shown = target.name.shown;
    if (target.dither ||
        (target.encoding != Encoding::automatic && target.encoding != Encoding::float32)) {
        throw Failure(fmt::format("{} is written as 32-bit floats; leave out {}", shown,
                                  target.dither ? "--dither" : "--encoding"));
    }
    if (info.channels != 1) {
        throw Failure(fmt::format(
            "{}: SAC holds one signal, not {} channels; write another format, say .uff or .csv",
            shown, info.channels));
    }
    if (!(info.rate > 0.0)) {
        throw Failure(fmt::format(
            "{}: SAC needs a sample rate; give it by --rate, or write text, say .csv", shown));
    }
    SacHeader header;
    header.step = 1.0 / info.rate;
    header.start = info.axis && info.axis->time && info.axis->step > 0.0 ? info.axis->start : 0.0;
    header.name = info.columnNames.size() == 1 ? info.columnNames[0] : "";
    return header;
}

SacWriter::SacWriter(const SignalTarget& target, const ResultInfo& info)
    : shown(target.name.shown),
      exact(!target.lossy && target.encoding != Encoding::float32),
      header(headerOf(target, info)),
      output(target.name, target.replace) {}

void SacWriter::check(double sample) const {
    const auto narrow = static_cast<float>(sample);
    if (std::isfinite(sample) && !std::isfinite(narrow)) {
        throw Failure(
            fmt::format("{}, sample {}: {} does not fit into a 32-bit float; scale the "
                        "signal, or write another format",
                        shown, header.samples + 1, sample));
    }
    if (exact && static_cast<double>(narrow) != sample && !std::isnan(sample)) {
        throw Failure(
            fmt::format("{}, sample {}: {} would become {} as a 32-bit float; use --lossy "
                        "to let samples change, or write another format",
                        shown, header.samples + 1, sample, narrow));
    }
}

void SacWriter::write(const double* interleaved, std::int64_t count) {
    for (std::int64_t i = 0; i < count; ++i) {
        const double sample = interleaved[i];
        check(sample);
        smallest = std::min(smallest, sample);
        largest = std::max(largest, sample);
        sum += sample;
        ++header.samples;
    }
    store.add(interleaved, static_cast<std::size_t>(count));
}

void SacWriter::finish(const std::vector<std::string>& /*closingNotes*/) {
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    if (header.samples > most) {
        throw Failure(
            fmt::format("{}: SAC holds at most {} samples; write another format", shown, most));
    }
    output.write(
        header.headerBytes({smallest, largest, sum / static_cast<double>(header.samples)}));
    std::vector<float> block;
    while (true) {
        const std::vector<double> samples = store.take(std::size_t{1} << 16);
        if (samples.empty()) {
            break;
        }
        block.resize(samples.size());
        std::transform(samples.begin(), samples.end(), block.begin(),
                       [](double sample) { return static_cast<float>(sample); });
        output.write({reinterpret_cast<const char*>(block.data()), 4 * block.size()});
    }
    output.write(header.footerBytes());
    output.commit();
}
