#include "workbench/parts/netcdf/Andi.h"

#include "workbench/files/text/ColumnName.h"
#include "workbench/files/text/UnitText.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <cmath>
#include <limits>
#include <netcdf.h>

static constexpr const char* intervalName = "actual_sampling_interval";

bool isChromatogram(const NetcdfFile& file) {
    return file.named(chromatogramName) != nullptr && file.named(intervalName) != nullptr;
}

// A single number, as a double and as the neighbours of the stored one leave it.
struct Stored {
    double value = 0.0, lowest = 0.0, highest = 0.0;
};

static Stored storedNumber(const NetcdfFile& file, const char* name) {
    const NetcdfFile::Variable* const variable = file.named(name);
    double value = 0.0;
    if (variable == nullptr || !variable->lengths.empty() ||
        nc_get_var_double(file.id(), variable->id, &value) != NC_NOERR) {
        return {};
    }
    if (!variable->isNarrow()) {
        return {value, value, value};
    }
    const auto narrow = static_cast<float>(value);
    constexpr float all = std::numeric_limits<float>::infinity();
    return {value, 0.5 * (value + static_cast<double>(std::nextafter(narrow, -all))),
            0.5 * (value + static_cast<double>(std::nextafter(narrow, all)))};
}

// Seconds in the unit of retention times.
static double unitOf(const NetcdfFile& file) {
    const std::string unit = NetcdfAttributes(file).text("retention_unit");
    const ColumnName time(fmt::format("time ({})", unit));
    return unit.empty() || !time.unit ? 1.0 : time.unit->seconds / time.unit->parts;
}

// A whole number of Hz, or of seconds, where the digits that are stored allow it.
static double rateOf(const Stored& seconds) {
    const double rate = 1.0 / seconds.value;
    const double wholeRate = std::nearbyint(rate), tenths = std::nearbyint(10.0 * seconds.value);
    if (1.0 / wholeRate >= seconds.lowest && 1.0 / wholeRate <= seconds.highest) {
        return wholeRate;
    }
    return tenths / 10.0 >= seconds.lowest && tenths / 10.0 <= seconds.highest ? 10.0 / tenths
                                                                               : rate;
}

static void checkEven(const NetcdfFile& file, const std::string& name) {
    const NetcdfAttributes attributes(file, *file.named(chromatogramName));
    const std::string flag = attributes.text("uniform_sampling_flag");
    if (flag.starts_with('N') || flag.starts_with('n')) {
        throw Failure(
            fmt::format("{} is not evenly sampled, as its uniform_sampling_flag says; "
                        "resample it first",
                        name));
    }
}

void describeChromatogram(SignalInfo& info, const NetcdfFile& file) {
    checkEven(file, info.source.shown);
    const std::string unit = NetcdfAttributes(file).text("detector_unit");
    info.names = {withUnit(chromatogramName, unit)};
    const double second = unitOf(file);
    Stored interval = storedNumber(file, intervalName);
    interval = {interval.value * second, interval.lowest * second, interval.highest * second};
    if (!std::isfinite(interval.value) || interval.value <= 0.0) {
        info.remarks.push_back(fmt::format("{}: {} is not above 0: the rate is not known",
                                           info.source.shown, intervalName));
        return;
    }
    info.rate = rateOf(interval);
    const double delay = storedNumber(file, "actual_delay_time").value * second;
    if (std::isfinite(delay) && delay != 0.0) {
        const double step = 1.0 / info.rate;
        info.axis = SignalAxis{"time (s)", delay, step, true, step, step};
    }
}
