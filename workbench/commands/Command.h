#pragma once

#include <vector>

namespace CLI {
class App;
}

// A subcommand: one row each. The source of a row adds its options, its texts and its action to the
// program; the list of rows stands in CMakeLists.txt. The action throws Failure where the run
// fails, CLI::ParseError where the command line is wrong.
struct Command {
    void (*add)(CLI::App& program);

    static const std::vector<const Command*>& all();
};
