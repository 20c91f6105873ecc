#pragma once

#include "workbench/messages/Failure.h"

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

// An option as a program gives it: a word of the command line without its dashes, and its value,
// empty for one that takes none.
struct CallOption {
    std::string name, value;
};
using CallOptions = std::vector<CallOption>;

// An option that there is not, that does not go together with others, or whose value is refused.
class WrongOption : public Failure {
public:
    using Failure::Failure;
};

// Reads options as those of a subcommand of the command line.
//   add   adds its options to the subcommand
//   act   what is done with them; CLI::ParseError where they do not go together
//   WrongOption, in the words of the command line
void readOptions(const std::string& command, const CallOptions& options,
                 const std::function<void(CLI::App& command)>& add,
                 const std::function<void()>& act);
