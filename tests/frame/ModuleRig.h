#pragma once

#include "frame/EntryPoints.h"
#include "host/B_BasisModule.h"
#include "tests/support/Archives.h"

struct Settings {
    char executionMode = 0, direction = 0, method = 1;
};

// The stored settings, byte by byte; those that a test does not choose are those of a new module.
inline std::string record(const Settings& settings) {
    using namespace std::string_literals;
    return std::string{settings.executionMode, 0, 0, 0, settings.method, 0, 0, 0} +
           std::string{settings.direction, 0, 0, 0} +
           "\0\0\0\0\0\0\xf0\x3f"              // convergence 1.0
           "\x64\0\0\0"                        // maxIterations 100
           "\0\0\0\0"                          // abortAtError
           "\x7b\x14\xae\x47\xe1\x7a\x84\x3f"  // errorValue 0.01
           "\1\0\0\0"                          // abortAtMinError
           "\4\0\0\0"s;                        // scaling
}

// A stored module.
inline std::string graph(const std::string& version, char outputs, const std::string& settings) {
    std::string bytes = {static_cast<char>(version.size()), 0, 0, 0};
    bytes += version;
    bytes += {outputs, 0, 0, 0};
    return bytes + settings;
}

// A module object, made and destroyed by the exports, with streams on all its ports.
class ModuleRig {
public:
    ModuleRig() {
        module.SetInputStream(0, &first);
        module.SetInputStream(1, &second);
        module.AddOutputStream(0, &output);
    }
    explicit ModuleRig(const Settings& settings, char outputs = 1) : ModuleRig() {
        load(module, graph("V1.91", outputs, record(settings)));
        module.AddOutputStream(1, &firstNumber);
        module.AddOutputStream(2, &secondNumber);
    }
    ModuleRig(const ModuleRig&) = delete;
    ModuleRig& operator=(const ModuleRig&) = delete;
    ~ModuleRig() { DeleteModuleInstance(&module); }

    B_BasisModule& module = *GetModuleInstance();
    BlockStream first, second, output, firstNumber, secondNumber;
};
