#include "workbench/jobs/LinearConvolution.h"

#include "workbench/jobs/ResultTap.h"
#include "workbench/jobs/StepRelay.h"
#include "workbench/jobs/jobSize.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"
#include "workbench/module/pairing.h"
#include "workbench/signals/Signal.h"
#include "workbench/signals/valueCount.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <utility>

static constexpr std::int64_t longestPiece = 65536;

bool LinearConvolution::does(const FoldJob& job) {
    return job.settings.direction == FendraSettings::convolution &&
           job.settings.method == FendraSettings::frequencyDomain && job.cutting.pad;
}

static void checkKernelSize(const SignalInfo& kernel, int channels, std::int64_t block) {
    if (kernel.samples > OverlapAdd::mostTaps) {
        throw Failure(fmt::format(
            "{} has {} samples, and a kernel has at most {}; cut the shorter of both signals",
            kernel.source.shown, kernel.samples, OverlapAdd::mostTaps));
    }
    const double copies = kernel.channels * static_cast<double>(kernel.samples) * sizeof(double);
    checkKernelMemory(kernel, copies + channels * OverlapAdd::bytes(kernel.samples, block));
}

LinearConvolution::LinearConvolution(const FoldJob& foldJob, std::unique_ptr<SignalReader> first,
                                     std::unique_ptr<SignalReader> second)
    : job(foldJob), used(*Method::selectedBy(job.settings)), signal(std::move(first)) {
    const SignalInfo a = signal->info(), b = second->info();
    checkChannels(a, b);
    if (a.samples < b.samples) {
        std::swap(signal, second);
    }
    const int channels = std::max(a.channels, b.channels);
    checkKernelSize(second->info(), channels, job.cutting.block);
    const Signal kernel = Signal::of(*second);
    taps = kernel.info.samples;
    if (job.treatment.origin.kind == Origin::Kind::none) {
        place.axis = a.axis;
    } else {
        place = {signal->info().axis, zeroOf(kernel, job.treatment.origin), true, used.lag};
    }
    left = place.dropped;
    for (int channel = 0; channel < channels; ++channel) {
        convolutions.emplace_back(channelOf(kernel, channel), job.cutting.block);
    }
    ready.resize(convolutions.size());
}

std::int64_t LinearConvolution::blocks() const {
    return (signal->info().samples - 1) / convolutions[0].block() + 1;
}

JobSize LinearConvolution::size() const {
    JobSize size;
    size.rounds = blocks();
    return size;
}

void LinearConvolution::describe(RunRecord& record) const {
    record.settings = job.settings;
    record.overlapAdd = true;
    record.channels = static_cast<int>(convolutions.size());
    record.samples = signal->info().samples + taps - 1 - place.dropped;
    record.rounds = blocks();
    record.moved = place.movement;
}

// A signal of one channel serves all channels of the kernel.
void LinearConvolution::add(const std::vector<double>& interleaved, std::int64_t samples) {
    const auto width = static_cast<std::size_t>(signal->info().channels);
    std::vector<double> column(static_cast<std::size_t>(samples));
    for (std::size_t c = 0; c < convolutions.size(); ++c) {
        for (std::size_t i = 0; i < column.size(); ++i) {
            column[i] = interleaved[i * width + (width == 1 ? 0 : c)];
        }
        convolutions[c].add(column.data(), samples, ready[c]);
    }
}

void LinearConvolution::deliver(ResultTap& tap) {
    const std::size_t width = ready.size();
    const std::int64_t samples = std::ssize(ready[0]), skipped = std::min(left, samples);
    left -= skipped;
    std::vector<double> interleaved;
    for (std::int64_t i = skipped; i < samples;) {
        const std::int64_t count = std::min(samples - i, longestPiece);
        interleaved.resize(static_cast<std::size_t>(count) * width);
        for (std::size_t c = 0; c < width; ++c) {
            for (std::int64_t j = 0; j < count; ++j) {
                interleaved[static_cast<std::size_t>(j) * width + c] =
                    ready[c][static_cast<std::size_t>(i + j)];
            }
        }
        tap.take(interleaved.data(), count);
        i += count;
    }
    for (std::vector<double>& samplesOfChannel : ready) {
        samplesOfChannel.clear();
    }
}

void LinearConvolution::run(ResultTap& tap, StepRelay& relay, Findings& /*findings*/,
                            RunRecord& /*record*/) {
    const SignalInfo& info = signal->info();
    const std::int64_t block = convolutions[0].block(), piece = std::min(block, longestPiece);
    std::vector<double> interleaved(valueCount(piece, info.channels));
    for (std::int64_t done = 0; done < info.samples;) {
        if (!relay.before(done / block, 0)) {
            throw Failure(fmt::format("stopped after {} of {} blocks; nothing is written",
                                      done / block, blocks()));
        }
        const std::int64_t got =
            signal->read(interleaved.data(), std::min(piece, info.samples - done));
        if (got == 0) {
            throw Failure(fmt::format("{} ended early: it has changed since it was opened",
                                      info.source.shown));
        }
        add(interleaved, got);
        deliver(tap);
        done += got;
    }
    for (std::size_t c = 0; c < convolutions.size(); ++c) {
        convolutions[c].finish(ready[c]);
    }
    deliver(tap);
}
