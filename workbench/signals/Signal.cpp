#include "workbench/signals/Signal.h"

#include "workbench/signals/MemoryReader.h"
#include "workbench/signals/valueCount.h"

#include <utility>

Signal Signal::of(SignalReader& reader) {
    Signal signal{reader.info(), {}};
    signal.interleaved.resize(valueCount(signal.info.samples, signal.info.channels));
    reader.read(signal.interleaved.data(), signal.info.samples);
    return signal;
}

std::vector<double> channelOf(const Signal& signal, int channel) {
    const auto width = static_cast<std::size_t>(signal.info.channels);
    std::vector<double> samples;
    samples.reserve(signal.interleaved.size() / width);
    for (std::size_t i = width == 1 ? 0 : static_cast<std::size_t>(channel);
         i < signal.interleaved.size(); i += width) {
        samples.push_back(signal.interleaved[i]);
    }
    return samples;
}

SignalSource sourceOf(std::shared_ptr<const Signal> signal) {
    const SourceName name = signal->info.source;
    return {name, [shared = std::move(signal)] {
                return std::make_unique<MemoryReader>(shared->info, shared->interleaved.data(),
                                                      shared);
            }};
}
