#include "workbench/jobs/Comparison.h"

#include "workbench/analysis/Alignment.h"
#include "workbench/messages/Failure.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/signals/valueCount.h"

#include <fmt/format.h>

#include <cmath>

static constexpr std::int64_t mostAligned = std::int64_t{1} << 22U;  // values

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
        const double truth = buffer[channels == 1 ? i / width : i];
        differences += (interleaved[i] - truth) * (interleaved[i] - truth);
        squares += truth * truth;
        if (compared * std::ssize(buffer) <= mostAligned) {
            result.push_back(interleaved[i]);
            known.push_back(truth);
        }
    }
    compared += read;
}

// By the first channel: what is late is late in all of them.
void Comparison::findShift(TruthError& found) const {
    std::vector<double> first, second;
    for (std::size_t i = 0; i < result.size(); i += width) {
        first.push_back(result[i]);
        second.push_back(known[i]);
    }
    const Alignment best = bestAlignment(first, second);
    if (best.shift != 0 && best.error <= found.relativeError / 2.0) {
        found.shift = best.shift;
        found.shiftedError = best.error;
    }
}

TruthError Comparison::error() const {
    const SourceName& name = reader->info().source;
    if (squares == 0.0) {
        throw Failure(fmt::format(
            "{} is zero wherever the result is: no error is relative to that; leave --truth out",
            name.shown));
    }
    TruthError found{name, std::sqrt(differences / squares), compared, reader->info().samples};
    if (result.size() == static_cast<std::size_t>(compared) * width) {
        findShift(found);
    }
    return found;
}
