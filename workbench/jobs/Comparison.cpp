#include "workbench/jobs/Comparison.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <cmath>
#include <cstddef>

Comparison::Comparison(const std::string& path, const ReadOptions& options, int resultChannels)
    : reader(openSignal(SourceName(path), options)),
      width(static_cast<std::size_t>(resultChannels)) {
    const int channels = reader->info().channels;
    if (channels != 1 && channels != resultChannels) {
        throw Failure(
            fmt::format("{} has {} channels and the result has {}; they cannot be compared",
                        reader->info().source.shown, channels, resultChannels));
    }
}

void Comparison::add(const double* interleaved, std::int64_t samples) {
    const auto channels = static_cast<std::size_t>(reader->info().channels);
    buffer.resize(static_cast<std::size_t>(samples) * channels);
    const auto read = static_cast<std::size_t>(reader->read(buffer.data(), samples));
    for (std::size_t i = 0; i < read * width; ++i) {
        const double known = buffer[channels == 1 ? i / width : i];
        differences += (interleaved[i] - known) * (interleaved[i] - known);
        squares += known * known;
    }
}

double Comparison::relativeError() const {
    return std::sqrt(differences / squares);
}
