#include "workbench/terminal/CompareOptions.h"

#include "workbench/methods/Method.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

void CompareOptions::addTo(CLI::App& command) {
    addComparingTo(command);
    input.addTo(command);
}

void CompareOptions::addWithoutFilesTo(CLI::App& command) {
    addComparingTo(command);
    input.addNonfiniteTo(command);
}

void CompareOptions::addComparingTo(CLI::App& command) {
    command.add_option("--methods", methods, "comma-separated list of methods")
        ->delimiter(',')
        ->check(choice(Setting::named("method").wordList()))
        ->type_name("")
        ->default_str("all")
        ->group("Method");
    options.addTo(command, {"method", "per"});
    treatments.addTo(command, TreatmentOptions::Scope::comparison);
    command.add_flag("--pad", pad, "append zeros, so that nothing wraps round")->group("Signals");
    command.add_option("--rate", rate, rateText)
        ->check(positiveNumber("sampling rate"))
        ->type_name("HZ")
        ->group("Signals");
}

CompareJob CompareOptions::job() const {
    CompareJob job;
    job.settings = options.settings();
    job.leftToData = options.leftToData();
    std::vector<FendraSettings> used;
    for (const std::string& word : methods) {
        FendraSettings settings = job.settings;
        Setting::named("method").assign(settings, word);
        used.push_back(settings);
        job.methods.push_back(Method::selectedBy(settings));
    }
    options.refuseIgnored(used);
    treatments.refuseIgnored(used, pad);
    job.treatment = treatments.treatment();
    job.pad = pad;
    job.rate = rate;
    job.allowNonfinite = input.allowNonfinite;
    return job;
}

std::string CompareOptions::words(const CompareJob& job) const {
    return fmt::format(" --methods {}{}{}{}{}{}", fmt::join(methods, ","), options.words(),
                       treatmentWords(job.treatment), pad ? " --pad" : "",
                       rate == 0.0 ? "" : fmt::format(" --rate {}", rate), input.words());
}
