#include "workbench/jobs/Conversion.h"

#include "workbench/files/signalFiles.h"
#include "workbench/jobs/RunRecord.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

static void setRate(SignalInfo& info, double rate) {
    if (rate == 0.0) {
        return;
    }
    if (info.rate > 0.0) {
        throw Failure(fmt::format("{} has a rate of its own, {} Hz; leave out --rate",
                                  info.source.shown, info.rate));
    }
    if (info.axis) {
        throw Failure(
            fmt::format("{} has an axis, {}, which is not a time; leave out --rate, or "
                        "add --no-axis",
                        info.source.shown, printable(info.axis->name)));
    }
    info.rate = rate;
}

// Lets through what the encoding gives back as it is.
static void requireExact(const Conversion& conversion, const EncodingRow& encoding,
                         const SignalInfo& info, const double* samples, std::int64_t first,
                         std::int64_t count) {
    const double* const end = samples + count * info.channels;
    const double* const changed = std::find_if(samples, end, [&encoding](double sample) {
        return encoding.stored(sample) != sample && !std::isnan(sample);
    });
    if (changed != end) {
        const std::int64_t index = changed - samples;
        throw Failure(fmt::format(
            "{}, sample {}, channel {}: {} would become {} as {}; use --lossy to let samples "
            "change, or another encoding or format",
            conversion.target.name.shown, first + index / info.channels + 1,
            index % info.channels + 1, *changed, encoding.stored(*changed), encoding.word));
    }
}

static void copy(const Conversion& conversion, SignalReader& reader, SignalWriter& writer) {
    const SignalInfo& info = reader.info();
    const EncodingRow& encoding = EncodingRow::of(storedEncoding(conversion.target));
    const bool exact = conversion.target.lossy || encoding.encoding == Encoding::float64;
    const std::int64_t most = std::max<std::int64_t>(1, 65536 / info.channels);
    std::vector<double> block(static_cast<std::size_t>(most * info.channels));
    std::int64_t done = 0;
    while (const std::int64_t got = reader.read(block.data(), most)) {
        if (!exact) {
            requireExact(conversion, encoding, info, block.data(), done, got);
        }
        writer.write(block.data(), got);
        done += got;
    }
}

ConversionRecord run(const Conversion& conversion) {
    const SignalTarget& target = conversion.target;
    if (target.dither && !target.lossy) {
        throw Failure("--dither changes samples; add --lossy to let them change");
    }
    const std::unique_ptr<SignalReader> reader = conversion.source.open();
    ConversionRecord record{reader->info(), reader->info().remarks};
    SignalInfo& signal = record.signal;
    setRate(signal, conversion.rate);
    const ResultInfo info{
        signal.channels,
        signal.samples,
        signal.rate,
        signal.axis,
        signal.names,
        {conversion.words, fmt::format("{}: {}", signal.source.shown,
                                       describe(signal.channels, signal.samples, signal.rate))},
        signal.labels};
    if (const std::string lost = withoutPlace(target, info); !lost.empty()) {
        record.remarks.push_back(fmt::format("{} has no place for {}", target.name.shown, lost));
    }
    const std::unique_ptr<SignalWriter> writer = createSignal(target, info);
    copy(conversion, *reader, *writer);
    writer->finish({});
    return record;
}
