#include "workbench/terminal/SweepOptions.h"

#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdint>
#include <limits>

void SweepOptions::addTo(CLI::App& command) {
    const auto add = [&](const char* name, auto& value, const char* text, const char* type) {
        return command.add_option(name, value, text)->type_name(type);
    };
    add("--frequencies", frequencies, "first and last frequency, in Hz", "FROM:TO")
        ->check(rangeValue("range of frequencies"))
        ->required();
    add("--seconds", seconds, "duration", "S")->check(positiveNumber("time"))->required();
    add("--rate", rate, "sampling rate", "HZ")->check(positiveNumber("sampling rate"))->required();
    add("--fade", fade, "seconds of fading in, and of fading out", "S")
        ->check(zeroOrPositive("time"))
        ->capture_default_str();
}

static void require(bool holds, const char* option, const std::string& complaint) {
    if (!holds) {
        throw CLI::ValidationError(option, complaint);
    }
}

void SweepOptions::check() const {
    const auto [from, to] = rangeOf(frequencies);
    const double samples = seconds * rate, half = seconds / 2.0;
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    require(from > 0.0 && to <= rate / 2.0, "--frequencies",
            fmt::format("\"{}\" must lie above 0 and up to half the sampling rate, {} Hz",
                        frequencies, rate / 2.0));
    require(samples >= 2.0 && samples <= most, "--seconds",
            fmt::format("{} s at {} Hz are not from 2 to {:.0f} samples; give another time",
                        seconds, rate, most));
    require(fade <= half, "--fade",
            fmt::format("{} s is more than half of the sweep; give at most {}", fade, half));
}

std::string SweepOptions::words() const {
    return fmt::format(" --frequencies {} --seconds {} --rate {} --fade {}", frequencies, seconds,
                       rate, fade);
}
