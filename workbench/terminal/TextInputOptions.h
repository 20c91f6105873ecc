#pragma once

#include "workbench/signals/TextOptions.h"

#include <cstdint>
#include <string>

namespace CLI {
class App;
}

// What is told of texts that are read, as far as it is not to be recognised.
struct TextInputOptions {
    std::string separator;  // a character, "tab" or "space"; empty: recognised
    std::string decimal;    // "." or ","; empty: recognised
    std::int64_t skip = 0;
    std::string comment;  // a character; empty: # and % alone
    std::string missing;  // a word; empty: none beside the usual ones
    std::string gaps;     // "linear"; empty: gaps are refused

    void addTo(CLI::App& command);

    [[nodiscard]] TextOptions reading() const;
    // The options as a command line takes them, each with a blank before it.
    [[nodiscard]] std::string words() const;
};
