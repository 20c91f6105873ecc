#pragma once

namespace CLI {
class App;
}

// The subcommands. Each adds its options, its texts and its action to the program. The action
// throws Failure where the run fails, CLI::ParseError where the command line is wrong.
void addConvolve(CLI::App& program);
void addDeconvolve(CLI::App& program);
void addCompare(CLI::App& program);
void addSettings(CLI::App& program);
void addReport(CLI::App& program);
void addInfo(CLI::App& program);
void addSelftest(CLI::App& program);
void addCompletion(CLI::App& program);
void addManual(CLI::App& program);
