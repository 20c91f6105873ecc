#pragma once

#include <string>

// What a file that can hold several signals has under a name: a signal, or something else.
struct FilePart {
    std::string name;     // as FILE:NAME takes it: "left", "/run 3/voltage"
    std::string what;     // "float64, 48000 x 2"
    std::string refusal;  // why it is no signal, a whole line that names the file; empty: it is one
};
