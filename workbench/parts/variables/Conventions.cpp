#include "workbench/parts/variables/Conventions.h"

#include "workbench/files/text/UnitText.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>

static constexpr auto rateWords = std::to_array<std::string_view>(
    {"rate", "fs", "sr", "samplingrate", "samplerate", "samplingfrequency", "samplefrequency"});

double Packing::unpacked(double value) const {
    return isMissing(value) ? std::numeric_limits<double>::quiet_NaN() : value * scale + offset;
}

bool Packing::isPlain() const {
    return scale == 1.0 && offset == 0.0 && !missing && !fill;
}

static std::optional<double> numberOf(const Attributes& attributes, const char* name) {
    const std::vector<double> numbers = attributes.numbers(name);
    return numbers.size() == 1 ? std::optional(numbers.front()) : std::nullopt;
}

Packing packingOf(const Attributes& attributes) {
    return {numberOf(attributes, "scale_factor").value_or(1.0),
            numberOf(attributes, "add_offset").value_or(0.0), numberOf(attributes, "missing_value"),
            numberOf(attributes, "_FillValue")};
}

std::string leafOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

static bool isRateWord(std::string_view name) {
    std::string plain;
    for (const char letter : name) {
        if (letter != '_' && letter != ' ') {
            plain += letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
        }
    }
    return std::find(rateWords.begin(), rateWords.end(), plain) != rateWords.end();
}

static void setRate(SignalInfo& info, const Attributes& attributes) {
    for (const std::string& name : attributes.names()) {
        if (!isRateWord(name)) {
            continue;
        }
        const double rate = numberOf(attributes, name.c_str()).value_or(0.0);
        if (std::isfinite(rate) && rate > 0.0 && std::isfinite(1.0 / rate)) {
            info.rate = rate;
            return;
        }
        info.remarks.push_back(fmt::format("{}: the attribute {} is not a rate in Hz: left out",
                                           info.source.shown, printable(name, 100)));
    }
}

static void setAxis(SignalInfo& info, const Attributes& attributes) {
    const std::optional<double> start = numberOf(attributes, "axis_start"),
                                step = numberOf(attributes, "axis_step");
    if (!start || !step || !std::isfinite(*start) || !std::isfinite(*step) || *step == 0.0) {
        return;
    }
    const bool time = info.rate > 0.0;
    const double magnitude = time ? 1.0 / info.rate : std::abs(*step);
    const std::string name = attributes.text("axis");
    info.axis = SignalAxis{name.empty() ? "axis" : name,
                           *start,
                           std::copysign(magnitude, *step),
                           time,
                           magnitude,
                           magnitude};
}

void describe(SignalInfo& info, const Attributes& attributes, const std::string& variable) {
    setRate(info, attributes);
    setAxis(info, attributes);
    const auto channels = static_cast<std::size_t>(info.channels);
    info.names = attributes.texts("names");
    std::vector<std::string> units = attributes.texts("units");
    units.resize(units.size() == channels ? channels : std::min<std::size_t>(1, units.size()));
    if (info.names.size() != channels) {
        info.names.clear();
        for (std::size_t i = 1; (channels == 1 || !units.empty()) && i <= channels; ++i) {
            info.names.push_back(channels == 1 ? leafOf(variable)
                                               : fmt::format("{}_{}", leafOf(variable), i));
        }
    }
    for (std::size_t i = 0; !units.empty() && i < info.names.size(); ++i) {
        info.names[i] = withUnit(info.names[i], units[units.size() == 1 ? 0 : i]);
    }
}
