#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

// The words that the program is started with, and its three streams, alike on all systems: the
// words are UTF-8, and the streams pass bytes on unchanged.
class Console {
public:
    Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    ~Console();  // a terminal gets back what was changed

    // The command line without the program's own name; argc and argv are those of main.
    static std::vector<std::string> words(int argc, char** argv);

    static bool isTerminal(std::FILE* stream);

private:
    struct State;
    std::unique_ptr<State> before;
};
