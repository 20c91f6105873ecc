#include "workbench/system/Console.h"

#include <unistd.h>

struct Console::State {};

Console::Console() = default;

Console::~Console() = default;

std::vector<std::string> Console::words(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

bool Console::isTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) != 0;
}
