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

namespace {

// What was read of a signal before, and then the signal.
class ContinuedReader final : public SignalReader {
public:
    ContinuedReader(std::unique_ptr<SignalReader> head, std::unique_ptr<SignalReader> following)
        : before(std::move(head)), after(std::move(following)) {
        facts = after->info();
    }

    std::int64_t read(double* interleaved, std::int64_t count) override {
        const std::int64_t got = before->read(interleaved, count);
        return got + after->read(interleaved + got * facts.channels, count - got);
    }

private:
    std::unique_ptr<SignalReader> before, after;
};

}  // namespace

// A signal of unknown length that ends before it is longer than the other one is read to its end.
static void findLength(std::unique_ptr<SignalReader>& reader, const SignalInfo& other) {
    if (reader->info().samples != 0) {
        return;
    }
    Signal head{reader->info(), {}};
    const std::int64_t most = other.samples + 1;
    head.interleaved.resize(valueCount(most, head.info.channels));
    head.info.samples = reader->read(head.interleaved.data(), most);
    const bool ended = head.info.samples < most;
    std::unique_ptr<SignalReader> read = sourceOf(std::make_shared<const Signal>(head)).open();
    reader = ended ? std::move(read)
                   : std::make_unique<ContinuedReader>(std::move(read), std::move(reader));
}

std::unique_ptr<SignalReader> LinearConvolution::findKernel(std::unique_ptr<SignalReader> first,
                                                            std::unique_ptr<SignalReader> second) {
    const SignalInfo a = first->info(), b = second->info();
    checkChannels(a, b);
    findLength(first, b);
    findLength(second, a);
    const std::int64_t lengthOfA = first->info().samples, lengthOfB = second->info().samples;
    const bool swapped = lengthOfB == 0 || (lengthOfA != 0 && lengthOfA < lengthOfB);
    signal = std::move(swapped ? second : first);
    input = swapped ? 1 : 0;
    return std::move(swapped ? first : second);
}

LinearConvolution::LinearConvolution(const FoldJob& foldJob, std::unique_ptr<SignalReader> first,
                                     std::unique_ptr<SignalReader> second)
    : job(foldJob), used(*Method::selectedBy(job.settings)) {
    place.axis = first->info().axis;
    const auto reader = findKernel(std::move(first), std::move(second));
    const int channels = std::max(signal->info().channels, reader->info().channels);
    checkKernelSize(reader->info(), channels, job.cutting.block);
    const Signal kernel = Signal::of(*reader);
    taps = kernel.info.samples;
    if (job.treatment.origin.kind != Origin::Kind::none) {
        place = {signal->info().axis, zeroOf(kernel, job.treatment.origin), true, used.lag};
    }
    for (int channel = 0; channel < channels; ++channel) {
        convolutions.emplace_back(channelOf(kernel, channel), job.cutting.block);
    }
    ready.resize(convolutions.size());
}

// Of that many samples; of 0, an unknown number, one.
std::int64_t LinearConvolution::blocks(std::int64_t samples) const {
    return std::max<std::int64_t>(1, (samples - 1) / convolutions[0].block() + 1);
}

JobSize LinearConvolution::size() const {
    JobSize size;
    size.rounds = blocks(signal->info().samples);
    return size;
}

void LinearConvolution::describe(RunRecord& record) const {
    record.settings = job.settings;
    record.overlapAdd = true;
    record.channels = static_cast<int>(convolutions.size());
    record.moved = place.movement;
    describeLengths(record, signal->info().samples);
}

// samples: of the signal; 0: not known.
void LinearConvolution::describeLengths(RunRecord& record, std::int64_t samples) const {
    record.inputs[input].samples = samples;
    record.inputs[1 - input].samples = taps;
    record.samples = samples == 0 ? 0 : samples + taps - 1;
    record.rounds = blocks(samples);
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
    const std::int64_t samples = std::ssize(ready[0]);
    std::vector<double> interleaved;
    for (std::int64_t i = 0; i < samples;) {
        const std::int64_t count = std::min(samples - i, longestPiece);
        interleaved.resize(static_cast<std::size_t>(count) * width);
        for (std::size_t c = 0; c < width; ++c) {
            for (std::int64_t j = 0; j < count; ++j) {
                interleaved[static_cast<std::size_t>(j) * width + c] =
                    ready[c][static_cast<std::size_t>(i + j)];
            }
        }
        pass(tap, interleaved.data(), count);
        i += count;
    }
    for (std::vector<double>& samplesOfChannel : ready) {
        samplesOfChannel.clear();
    }
}

void LinearConvolution::pass(ResultTap& tap, const double* interleaved, std::int64_t samples) {
    const std::int64_t width = std::ssize(ready);
    const std::int64_t kept = std::min(place.turned - std::ssize(turned) / width, samples);
    turned.insert(turned.end(), interleaved, interleaved + kept * width);
    if (samples > kept) {
        tap.take(interleaved + kept * width, samples - kept);
    }
}

// A stream ends where nothing more comes; another signal where its length says so.
void LinearConvolution::run(ResultTap& tap, StepRelay& relay, Findings& /*findings*/,
                            RunRecord& record) {
    const SignalInfo info = signal->info();
    const bool stream = comesAlong();
    const std::int64_t block = convolutions[0].block(), piece = std::min(block, longestPiece);
    std::vector<double> interleaved(valueCount(piece, info.channels));
    std::int64_t done = 0;
    while (stream || done < info.samples) {
        if (!relay.before(stream ? 0 : done / block, 0)) {
            throw Failure(fmt::format("stopped after {} of {} blocks; nothing is written",
                                      done / block, blocks(info.samples)));
        }
        const std::int64_t got =
            signal->read(interleaved.data(), stream ? piece : std::min(piece, info.samples - done));
        if (got == 0 && stream) {
            break;
        }
        if (got == 0) {
            throw Failure(fmt::format("{} ended early: it has changed since it was opened",
                                      info.source.shown));
        }
        add(interleaved, got);
        deliver(tap);
        if (stream) {
            tap.flush();
        }
        done += got;
    }
    for (std::size_t c = 0; c < convolutions.size(); ++c) {
        convolutions[c].finish(ready[c]);
    }
    deliver(tap);
    tap.take(turned.data(), place.turned);
    describeLengths(record, done);
}
