#include "workbench/jobs/BlockRounds.h"

#include "workbench/signals/SignalReader.h"
#include "workbench/signals/valueCount.h"
#include "workbench/system/inParallel.h"

#include <algorithm>
#include <cstddef>

static constexpr std::int64_t longestPiece = 65536;

BlockRounds::BlockRounds(SignalReader& signalReader, const Kernels& blockKernels,
                         const Room& zeroRoom, const Width& roundWidth)
    : signal(signalReader),
      kernels(blockKernels),
      room(zeroRoom),
      width(roundWidth),
      length(kernels[0]->block()),
      history(kernels[0]->history()),
      windows(static_cast<std::size_t>(signal.info().channels)),
      tails(std::max(windows.size(), kernels.size())) {
    for (std::vector<double>& window : windows) {
        window.resize(static_cast<std::size_t>(history));
    }
}

std::int64_t BlockRounds::blocks() const {
    return (filled + length - 1) / length;
}

std::int64_t BlockRounds::countOf(std::int64_t block) const {
    return std::min(length, filled - block * length);
}

void BlockRounds::keepHistory() {
    for (std::vector<double>& window : windows) {
        std::copy_n(window.data() + filled, history, window.data());
        window.resize(static_cast<std::size_t>(history));
    }
    filled = 0;
}

// Of what comes next, the room included, into the windows. 0: nothing is left.
std::int64_t BlockRounds::readPiece(std::int64_t count) {
    std::int64_t got = 0;
    const auto takeZeros = [&](std::int64_t& zeros) {
        got = std::min(count, zeros);
        zeros -= got;
        std::fill_n(interleaved.data(), got * std::ssize(windows), 0.0);
    };
    if (room.before > 0) {
        takeZeros(room.before);
    } else if (got = signal.read(interleaved.data(), count); got > 0) {
        signalSamples += got;
    } else {
        takeZeros(room.after);
    }
    for (std::size_t c = 0; c < windows.size(); ++c) {
        for (std::size_t i = c; i < static_cast<std::size_t>(got) * windows.size();
             i += windows.size()) {
            windows[c].push_back(interleaved[i]);
        }
    }
    return got;
}

bool BlockRounds::read() {
    keepHistory();
    const std::int64_t most = width.blocks * length;
    const std::int64_t piece =
        std::min(most, std::max<std::int64_t>(1, longestPiece / std::ssize(windows)));
    interleaved.resize(valueCount(piece, std::ssize(windows)));
    while (filled < most) {
        const std::int64_t got = readPiece(std::min(piece, most - filled));
        if (got == 0) {
            break;
        }
        filled += got;
    }
    return filled > 0;
}

void BlockRounds::convolve(const Around& around) {
    const std::int64_t channels = std::ssize(tails);
    if (!prepared) {
        inParallel(width.threads, std::ssize(kernels), [&](std::int64_t kernel) {
            around(-1, [&] { kernels[static_cast<std::size_t>(kernel)]->prepare(countOf(0)); });
        });
        prepared = true;
    }
    pieces.resize(static_cast<std::size_t>(blocks() * channels));
    inParallel(width.threads, std::ssize(pieces), [&](std::int64_t task) {
        const std::int64_t block = task / channels;
        const auto channel = static_cast<std::size_t>(task % channels);
        const std::vector<double>& window = windows[windows.size() == 1 ? 0 : channel];
        const BlockConvolution& kernel = *kernels[kernels.size() == 1 ? 0 : channel];
        around(block, [&] {
            pieces[static_cast<std::size_t>(task)] =
                kernel.convolve(window.data() + block * length, countOf(block));
        });
    });
}

// Each sample is the sum over its blocks in ascending order.
void BlockRounds::deliver(std::int64_t block, const Deliver& deliver) {
    std::vector<double>* const added = pieces.data() + block * std::ssize(tails);
    const std::int64_t count = countOf(block);
    for (std::size_t c = 0; c < tails.size(); ++c) {
        std::vector<double>& piece = added[c];
        tails[c].resize(piece.size() - static_cast<std::size_t>(count));
        for (std::size_t i = 0; i < tails[c].size(); ++i) {
            piece[i] = tails[c][i] + piece[i];
        }
        std::copy(piece.data() + count, piece.data() + piece.size(), tails[c].begin());
    }
    interleave(added, count, deliver);
}

void BlockRounds::finish(const Deliver& deliver) {
    interleave(tails.data(), std::ssize(tails[0]), deliver);
}

void BlockRounds::interleave(const std::vector<double>* channelSamples, std::int64_t count,
                             const Deliver& deliver) {
    const std::size_t channels = tails.size();
    for (std::int64_t begin = 0; begin < count; begin += longestPiece) {
        const std::int64_t samples = std::min(longestPiece, count - begin);
        if (channels == 1) {
            deliver(channelSamples[0].data() + begin, samples);
            continue;
        }
        interleaved.resize(static_cast<std::size_t>(samples) * channels);
        for (std::size_t c = 0; c < channels; ++c) {
            const double* const source = channelSamples[c].data() + begin;
            for (std::int64_t i = 0; i < samples; ++i) {
                interleaved[static_cast<std::size_t>(i) * channels + c] = source[i];
            }
        }
        deliver(interleaved.data(), samples);
    }
}
