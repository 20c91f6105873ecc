#include "workbench/commands/MethodOptions.h"

#include "workbench/methods/Setting.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <limits>

const std::vector<std::string>& MethodOptions::methods() {
    return Setting::named("method").words;
}

static std::int32_t placeOf(const std::string& key, const std::string& word) {
    const Setting& setting = Setting::named(key);
    return setting.firstWord + static_cast<std::int32_t>(setting.placeOf(word));
}

void MethodOptions::addMethod(CLI::App& command) {
    command.add_option("--method", method, "how to deconvolve")
        ->check(choice(methods()))
        ->type_name("")
        ->capture_default_str();
}

void MethodOptions::addSettings(CLI::App& command) {
    command.add_option("--convergence", convergence, "van-cittert: factor of a step")
        ->check(finiteNumber("convergence"))
        ->type_name("X")
        ->capture_default_str();
    command
        .add_option("--max-iterations", maxIterations,
                    "van-cittert: bound on the loop count, which is 1 before the first step")
        ->check(countUpTo(std::numeric_limits<std::uint32_t>::max(), "number of iterations"))
        ->type_name("N")
        ->capture_default_str();
    command
        .add_option("--stop-at-error", errorValue,
                    "van-cittert: stop once the sum of squared residuals is at or below V")
        ->check(positiveNumber("error"))
        ->type_name("V");
    command
        .add_flag("--stop-at-minimum,!--no-stop-at-minimum", stopAtMinimum,
                  "van-cittert: stop at the first step that raises the error, and drop it")
        ->default_str("stop");
    command
        .add_option("--scaling", scaling,
                    "pseudo-inverse: what to scale to 1: central element, magnitude or "
                    "manhattan-magnitude of the identity, or magnitude of the filter")
        ->check(choice(Setting::named("scaling").words))
        ->type_name("")
        ->capture_default_str();
}

FendraSettings MethodOptions::settings(const std::string& chosen) const {
    FendraSettings settings;
    settings.direction = FendraSettings::deconvolution;
    settings.method = placeOf("method", chosen);
    settings.convergence = convergence;
    settings.maxIterations = maxIterations;
    settings.abortAtError = errorValue > 0.0 ? 1 : 0;
    settings.errorValue = errorValue > 0.0 ? errorValue : settings.errorValue;
    settings.abortAtMinError = stopAtMinimum ? 1 : 0;
    settings.scaling = placeOf("scaling", scaling);
    return settings;
}

std::string MethodOptions::words() const {
    if (method == "van-cittert") {
        return fmt::format("--method {} --convergence {} --max-iterations {}{}{}", method,
                           convergence, maxIterations,
                           errorValue > 0.0 ? fmt::format(" --stop-at-error {}", errorValue) : "",
                           stopAtMinimum ? "" : " --no-stop-at-minimum");
    }
    const bool scales = method == "pseudo-inverse";
    return fmt::format("--method {}{}", method, scales ? " --scaling " + scaling : "");
}
