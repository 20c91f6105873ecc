#pragma once

#include "workbench/analysis/BlockConvolution.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class SignalReader;

// A signal on its way through a linear convolution, in rounds: some blocks are read, convolved side
// by side, and put together in their order. The result is the same whatever the number of blocks
// in a round and of threads.
class BlockRounds {
public:
    using Kernels = std::vector<std::unique_ptr<BlockConvolution>>;
    // Some samples of every channel, interleaved.
    using Deliver = std::function<void(const double* interleaved, std::int64_t samples)>;

    // Samples that are 0: before the signal, and after it.
    struct Room {
        std::int64_t before = 0, after = 0;
    };
    // How many blocks a round has at most, and in how many threads they are convolved.
    struct Width {
        std::int64_t blocks = 1;
        int threads = 1;
    };

    // Signal and kernels, one a channel of the kernel, stay the caller's, and so many blocks fit in
    // memory. Where one of both has a single channel it serves all of the other.
    BlockRounds(SignalReader& signal, const Kernels& kernels, const Room& room, const Width& width);

    // Whether there is a round more. Of a pipe, waits for no more than its blocks. Failure as the
    // reader.
    bool read();
    // Its blocks; only the last of all may be shorter.
    [[nodiscard]] std::int64_t blocks() const;
    // All work is done within calls of around, in any thread: of a block in a channel, or, block
    // -1, of a kernel that is prepared.
    using Around = std::function<void(std::int64_t block, const std::function<void()>& work)>;
    void convolve(const Around& around);
    // A block of it, from 0, each once and in order.
    void deliver(std::int64_t block, const Deliver& deliver);
    // What is left after the last round.
    void finish(const Deliver& deliver);

    // Samples of the signal that were read.
    [[nodiscard]] std::int64_t samples() const { return signalSamples; }

private:
    void keepHistory();
    std::int64_t readPiece(std::int64_t count);
    [[nodiscard]] std::int64_t countOf(std::int64_t block) const;
    void interleave(const std::vector<double>* channelSamples, std::int64_t count,
                    const Deliver& deliver);

    SignalReader& signal;
    const Kernels& kernels;
    Room room;  // still to come
    Width width;
    std::int64_t length, history;              // of a block, and before it
    std::vector<std::vector<double>> windows;  // one a channel of the signal: history and blocks
    std::int64_t filled = 0;                   // of each, after the history
    std::vector<std::vector<double>> pieces;   // that the blocks give, channel by channel
    std::vector<std::vector<double>> tails;    // one a channel of the result: what is to be added
    std::vector<double> interleaved;           // on its way in or out
    std::int64_t signalSamples = 0;
    bool prepared = false;
};
