#include "library/GivenOptions.h"

#include "workbench/calls/FoldCallOptions.h"
#include "workbench/messages/Printable.h"
#include "workbench/terminal/suggestion.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <utility>

static constexpr std::array directions = {FendraSettings::convolution,
                                          FendraSettings::deconvolution};

static std::vector<std::string> namesOf(std::int32_t direction) {
    FoldCallOptions offer(direction);
    CLI::App command;
    command.set_help_flag();
    offer.addTo(command);
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options()) {
        const std::vector<std::string>& own = option->get_lnames();
        names.insert(names.end(), own.begin(), own.end());
    }
    return names;
}

// What goes together with an option is seen when all are given.
static void liftBonds(CLI::App& command) {
    for (CLI::Option* option : command.get_options()) {
        for (CLI::Option* needed : option->get_needs()) {
            option->remove_needs(needed);
        }
        for (CLI::Option* excluded : option->get_excludes()) {
            option->remove_excludes(excluded);
        }
    }
}

static void check(std::int32_t direction, const CallOption& option) {
    FoldCallOptions offer(direction);
    readOptions(
        commandOf(direction), {option},
        [&](CLI::App& command) {
            offer.addTo(command);
            liftBonds(command);
        },
        [] {});
}

[[noreturn]] static void refuse(const std::string& name, const std::vector<std::string>& names) {
    throw WrongOption(
        fmt::format("\"{}\" is not an option of convolve or deconvolve{}; give the word of the "
                    "command line without dashes, as in max-iterations",
                    printable(name, 60), suggestion(name, names)));
}

void GivenOptions::set(const std::string& name, const char* value) {
    Row row = {{name, value != nullptr ? value : ""}, {}};
    std::vector<std::string> all;
    for (const std::int32_t direction : directions) {
        const std::vector<std::string> names = namesOf(direction);
        all.insert(all.end(), names.begin(), names.end());
        const bool isOf = std::find(names.begin(), names.end(), name) != names.end();
        row.isOf.at(static_cast<std::size_t>(direction)) = isOf;
        if (isOf && value != nullptr) {
            check(direction, row.option);
        }
    }
    if (std::find(all.begin(), all.end(), name) == all.end()) {
        refuse(name, all);
    }
    std::vector<Row> changed = rows;
    std::erase_if(changed, [&](const Row& before) { return before.option.name == name; });
    if (value != nullptr) {
        changed.push_back(std::move(row));
    }
    rows = std::move(changed);
}

CallOptions GivenOptions::of(std::int32_t direction) const {
    CallOptions some;
    for (const Row& row : rows) {
        if (row.isOf.at(static_cast<std::size_t>(direction))) {
            some.push_back(row.option);
        }
    }
    return some;
}
