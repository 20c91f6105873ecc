#include "workbench/jobs/Comparison.h"

#include "workbench/messages/Failure.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/signals/valueCount.h"

#include <fmt/format.h>

#include <cmath>

Comparison::Comparison(const SignalSource& truth, int resultChannels)
    : reader(truth.open()), width(static_cast<std::size_t>(resultChannels)) {
    const int channels = reader->info().channels;
    if (channels != 1 && channels != resultChannels) {
        throw Failure(
            fmt::format("{} has {} channels and the result has {}; they cannot be compared",
                        truth.name.shown, channels, resultChannels));
    }
}

void Comparison::add(const double* interleaved, std::int64_t samples) {
    const auto channels = static_cast<std::size_t>(reader->info().channels);
    buffer.resize(valueCount(samples, reader->info().channels));
    const std::int64_t read = reader->read(buffer.data(), samples);
    for (std::size_t i = 0; i < static_cast<std::size_t>(read) * width; ++i) {
        const double known = buffer[channels == 1 ? i / width : i];
        differences += (interleaved[i] - known) * (interleaved[i] - known);
        squares += known * known;
    }
    compared += read;
}

TruthError Comparison::error() const {
    const SourceName& name = reader->info().source;
    if (squares == 0.0) {
        throw Failure(fmt::format(
            "{} is zero wherever the result is: no error is relative to that; leave --truth out",
            name.shown));
    }
    return {name, std::sqrt(differences / squares), compared, reader->info().samples};
}
