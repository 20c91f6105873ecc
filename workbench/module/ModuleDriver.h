#pragma once

#include "host/BlockStream.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class B_BasisModule;

// Drives a module as any host does: asks it for its ports and their types, connects a stream to
// each, feeds the inputs, and drains the outputs after a step. The first output has to be a signal
// ("DOUBLE[]"); what the others give is a number each ("DOUBLE"), or is not looked at.
class ModuleDriver {
public:
    // Failure if the module, as it is set now, does not take two signals and give one.
    explicit ModuleDriver(B_BasisModule& driven);
    ModuleDriver(const ModuleDriver&) = delete;
    ModuleDriver& operator=(const ModuleDriver&) = delete;
    ~ModuleDriver();  // ends all connections

    // Appends a block to an input; last: no further one follows.
    void feed(int input, const double* samples, std::int64_t count, bool last);

    // One step on what waits. Failure, with the reason as far as it is known: exhausted memory,
    // refused by the method. Stopped, if the observer of the thread stopped it without a result.
    void step();

    // The next block of the signal. Failure if it is not of this length.
    std::vector<double> takeSignal(std::int64_t length);
    // The next number of each output that gives one. Failure if there is none.
    std::vector<double> takeNumbers();

    // Names of the outputs that give numbers, in the user's language and UTF-8.
    [[nodiscard]] std::vector<std::string> numberNames() const;

private:
    void connect();

    B_BasisModule& module;
    std::vector<std::unique_ptr<BlockStream>> inputs, outputs;
    std::vector<int> numberPorts;
};
