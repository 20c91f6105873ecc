#include "workbench/terminal/JobsOption.h"

#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>

void JobsOption::addTo(CLI::App& command, const std::string& parts) {
    constexpr long long most = 1024;
    command
        .add_option("--jobs", threads,
                    parts +
                        " that run at once, each with memory of its own; fewer where memory does "
                        "not suffice. The result is the same with any. Default: as many as there "
                        "are cores")
        ->check(countUpTo(most, "number of jobs"))
        ->type_name("N");
}
