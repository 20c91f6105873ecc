#include "python/extension/arrays.h"

#include <memory>
#include <utility>

Facts Facts::of(const SignalInfo& info) {
    return {info.source.path, info.rate, info.axis};
}

CallSignal signalOf(const Array& array, const Facts& facts) {
    const int channels = array.ndim() == 2 ? static_cast<int>(array.shape(1)) : 1;
    return {facts.name, array.data(), array.shape(0), channels, facts.rate, facts.axis};
}

Array arrayOf(std::vector<double>&& interleaved, int channels, bool table) {
    using Samples = std::vector<double>;
    auto samples = std::make_unique<Samples>(std::move(interleaved));
    double* const data = samples->data();
    const auto values = static_cast<pybind11::ssize_t>(samples->size());
    const pybind11::capsule owner(samples.get(),
                                  [](void* owned) { delete static_cast<Samples*>(owned); });
    static_cast<void>(samples.release());
    return table || channels > 1
               ? Array({values / channels, pybind11::ssize_t{channels}}, data, owner)
               : Array(values, data, owner);
}
