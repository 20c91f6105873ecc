#include "workbench/parts/hdf5/Hdf5Rows.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

Hdf5Rows::Hdf5Rows(Hdf5Dataset samples, Directions itsDirections)
    : dataset(std::move(samples)), directions(std::move(itsDirections)) {}

std::size_t Hdf5Rows::read(std::int64_t first, std::int64_t count, double* to) {
    std::vector<std::uint64_t> start = directions.index, lengths(start.size(), 1);
    start[directions.rows] = static_cast<std::uint64_t>(first);
    lengths[directions.rows] = static_cast<std::uint64_t>(count);
    const auto length = static_cast<std::size_t>(count);
    std::size_t channels = 1;
    if (directions.channels) {
        lengths[*directions.channels] = dataset.shape()[*directions.channels];
        channels = static_cast<std::size_t>(lengths[*directions.channels]);
    }
    try {
        if (channels == 1 || *directions.channels > directions.rows) {
            return dataset.read(start, lengths, to);
        }
        turned.resize(channels * length);
        const std::size_t wide = dataset.read(start, lengths, turned.data());
        for (std::size_t i = 0; i < turned.size(); ++i) {
            to[i % length * channels + i / length] = turned[i];
        }
        return wide == turned.size() ? wide : wide % length * channels + wide / length;
    } catch (const Hdf5Error& error) {
        throw Failure(fmt::format("{}: the samples cannot be read ({}); copy the file again",
                                  dataset.shown(), error.what()));
    }
}
