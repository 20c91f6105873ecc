#include "workbench/signals/BlockSource.h"

#include "workbench/messages/Failure.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/signals/valueCount.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <limits>

static constexpr std::int64_t longestSignal = std::numeric_limits<std::int32_t>::max();
static constexpr std::int64_t pieceLength = 65536;

const std::vector<double>& BlockShare::of(int channel) const {
    return channels[channels.size() == 1 ? 0 : static_cast<std::size_t>(channel)];
}

BlockSource::BlockSource(SignalReader& signalReader, std::int64_t blockLength, bool packet)
    : reader(signalReader) {
    const std::int64_t samples = reader.info().samples;
    block = blockLength == 0 ? samples : std::min(blockLength, samples);
    shareLength = packet ? samples : block;
    roundCount = (samples + shareLength - 1) / shareLength;
    if (shareLength > longestSignal) {
        throw Failure(
            fmt::format("{} has {} samples, and a module takes at most {} at once; convolve "
                        "it with --pad, or cut it with --per block --block N",
                        reader.info().source.shown, samples, longestSignal));
    }
}

int BlockSource::channels() const {
    return reader.info().channels;
}

std::int64_t BlockSource::length(std::int64_t round) const {
    if (roundCount == 1) {
        return shareLength;
    }
    return std::min(shareLength, reader.info().samples - round * shareLength);
}

std::shared_ptr<const BlockShare> BlockSource::next() {
    if (onlyShare) {
        return onlyShare;
    }
    auto share = std::make_shared<const BlockShare>(read(length(position++)));
    onlyShare = roundCount == 1 ? share : nullptr;
    return share;
}

BlockShare BlockSource::read(std::int64_t samples) {
    const auto width = static_cast<std::size_t>(channels());
    BlockShare share;
    share.channels.assign(width, std::vector<double>(static_cast<std::size_t>(samples)));
    std::vector<double> interleaved(valueCount(std::min(samples, pieceLength), channels()));
    for (std::int64_t done = 0; done < samples;) {
        const std::int64_t got =
            reader.read(interleaved.data(), std::min(samples - done, pieceLength));
        if (got == 0) {
            throw Failure(fmt::format("{} ended early: it has changed since it was opened",
                                      reader.info().source.shown));
        }
        for (std::size_t c = 0; c < width; ++c) {
            double* const channel = share.channels[c].data() + done;
            for (std::int64_t i = 0; i < got; ++i) {
                channel[i] = interleaved[static_cast<std::size_t>(i) * width + c];
            }
        }
        done += got;
    }
    return share;
}
