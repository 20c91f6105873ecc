#include "workbench/signals/MemorySignal.h"

#include "workbench/signals/valueCount.h"

#include <algorithm>
#include <utility>

MemorySignal::MemorySignal(SignalReader& source) {
    facts = source.info();
    values.resize(valueCount(facts.samples, facts.channels));
    source.read(values.data(), facts.samples);
}

MemorySignal::MemorySignal(const SignalInfo& info, std::vector<double> interleaved)
    : values(std::move(interleaved)) {
    facts = info;
    facts.samples = std::ssize(values) / facts.channels;
}

std::int64_t MemorySignal::read(double* interleaved, std::int64_t count) {
    const std::int64_t got = std::min(count, facts.samples - position);
    std::copy_n(values.data() + position * facts.channels, got * facts.channels, interleaved);
    position += got;
    return got;
}

void MemorySignal::pad(std::int64_t samples) {
    facts.samples = std::max(facts.samples, samples);
    values.resize(valueCount(facts.samples, facts.channels));
}
