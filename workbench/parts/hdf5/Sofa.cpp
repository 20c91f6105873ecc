#include "workbench/parts/hdf5/Sofa.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/parts/hdf5/Hdf5Attributes.h"
#include "workbench/parts/hdf5/Hdf5Rows.h"
#include "workbench/parts/variables/VariableReader.h"
#include "workbench/parts/variables/VariableShape.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

static std::string attributeOf(const Hdf5File& file, const char* name) {
    const Hdf5Handle root(H5Gopen2(file.id(), "/", H5P_DEFAULT), H5Gclose);
    return Hdf5Attributes(root.get()).text(name);
}

bool isSofa(const Hdf5File& file) {
    try {
        return attributeOf(file, "Conventions") == "SOFA";
    } catch (const Hdf5Error& error) {
        file.refuse(error);
    }
}

// The dataset of the responses. Failure if the file has none.
static Hdf5Dataset responsesOf(const Hdf5File& file, const std::string& name) {
    const std::string type = attributeOf(file, "DataType");
    if (H5Lexists(file.id(), "Data.IR", H5P_DEFAULT) <= 0) {
        throw Failure(
            fmt::format("{} holds data of the type {}, which are not impulse responses; "
                        "save them as FIR",
                        name, type.empty() ? "\"\"" : printable(type, 100)));
    }
    Hdf5Dataset responses(file, "Data.IR", name);
    if (responses.shape().size() != 3) {
        throw Failure(
            fmt::format("{}: the impulse responses have {} dimensions, {}; save measurements, "
                        "receivers and samples",
                        name, responses.shape().size(), shapeName(responses.shape())));
    }
    if (responses.shape()[0] > 100000 ||
        responses.shape()[1] > static_cast<std::uint64_t>(std::numeric_limits<int>::max())) {
        throw Failure(
            fmt::format("{}: {} are more measurements or receivers than are read; save "
                        "fewer",
                        name, shapeName(responses.shape())));
    }
    return responses;
}

std::vector<FilePart> measurementsOf(const Hdf5File& file, const SourceName& source) {
    try {
        const Hdf5Dataset responses = responsesOf(file, source.shown);
        const std::vector<std::uint64_t>& shape = responses.shape();
        const std::string what =
            fmt::format("{}, {} x {}", responses.type().name, shape[2], shape[1]);
        std::vector<FilePart> parts;
        for (std::uint64_t i = 1; i <= shape[0]; ++i) {
            parts.push_back({fmt::format("{}", i), what, {}});
        }
        return parts;
    } catch (const Hdf5Error& error) {
        file.refuse(error);
    }
}

// The numbers of a small dataset, in the order of C; empty if there is none of that name.
static std::vector<double> numbersOf(const Hdf5File& file, const char* name,
                                     const std::string& shown) {
    constexpr std::size_t most = 1 << 20;
    if (H5Lexists(file.id(), name, H5P_DEFAULT) <= 0) {
        return {};
    }
    const Hdf5Dataset dataset(file, name, fmt::format("{}: {}", shown, name));
    std::size_t count = 1;
    for (const std::uint64_t length : dataset.shape()) {
        count = length > most / count ? most + 1 : count * static_cast<std::size_t>(length);
    }
    std::vector<double> numbers(count > most ? 0 : count);
    if (!numbers.empty()) {
        dataset.read(std::vector<std::uint64_t>(dataset.shape().size(), 0), dataset.shape(),
                     numbers.data());
    }
    return numbers;
}

static double rateOf(const Hdf5File& file, std::size_t measurement, const std::string& name) {
    std::vector<double> rates = numbersOf(file, "Data.SamplingRate", name);
    const double rate =
        rates.empty() ? 0.0
                      : rates[rates.size() == 1 ? 0 : std::min(measurement, rates.size() - 1)];
    if (!std::isfinite(rate) || rate <= 0.0 || !std::isfinite(1.0 / rate)) {
        throw Failure(fmt::format("{}: Data.SamplingRate is not a rate in Hz; save it anew", name));
    }
    return rate;
}

// Delays of all measurements or of each, by receivers.
static bool hasDelay(const Hdf5File& file, std::size_t measurement, std::size_t receivers,
                     const std::string& name) {
    const std::vector<double> delays = numbersOf(file, "Data.Delay", name);
    const std::size_t begin =
        delays.size() >= (measurement + 1) * receivers ? measurement * receivers : 0;
    const std::size_t end = std::min(begin + receivers, delays.size());
    return std::any_of(delays.data() + begin, delays.data() + end,
                       [](double delay) { return delay != 0.0; });
}

static SignalInfo factsOf(const Hdf5File& file, const Hdf5Dataset& responses,
                          std::size_t measurement, const SourceName& source) {
    SignalInfo info;
    info.source = source;
    info.format = fmt::format("SOFA, {}", responses.type().name);
    info.samples = static_cast<std::int64_t>(responses.shape()[2]);
    info.channels = static_cast<int>(responses.shape()[1]);
    info.rate = rateOf(file, measurement, source.shown);
    for (int i = 1; i <= info.channels; ++i) {
        info.names.push_back(fmt::format("receiver_{}", i));
    }
    if (hasDelay(file, measurement, static_cast<std::size_t>(info.channels), source.shown)) {
        info.remarks.push_back(fmt::format(
            "{}: the delays in Data.Delay are not in the samples, and are left out", source.shown));
    }
    return info;
}

std::unique_ptr<SignalReader> openMeasurement(const Hdf5File& file, const std::string& number,
                                              const SourceName& source,
                                              const ReadOptions& options) {
    try {
        Hdf5Dataset responses = responsesOf(file, source.shown);
        std::uint64_t index = 0;
        const auto [end, error] =
            std::from_chars(number.data(), number.data() + number.size(), index);
        if (error != std::errc() || end != number.data() + number.size() || index == 0 ||
            index > responses.shape()[0]) {
            throw Failure(fmt::format("{}: the measurements have the numbers 1 to {}; choose one",
                                      source.shown, responses.shape()[0]));
        }
        SignalInfo info = factsOf(file, responses, static_cast<std::size_t>(index - 1), source);
        return std::make_unique<VariableReader>(
            std::move(info),
            std::make_unique<Hdf5Rows>(std::move(responses),
                                       Hdf5Rows::Directions{2, 1, {index - 1, 0, 0}}),
            Packing{}, options);
    } catch (const Hdf5Error& error) {
        file.refuse(error);
    }
}
