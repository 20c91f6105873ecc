#pragma once

#include "workbench/methods/FendraSettings.h"
#include "workbench/terminal/FoldOptions.h"
#include "workbench/terminal/JobsOption.h"

#include <cstdint>

// The subcommand that a direction stands for.
inline const char* commandOf(std::int32_t direction) {
    return direction == FendraSettings::convolution ? "convolve" : "deconvolve";
}

// What a program may say of a convolution or a deconvolution. It outlives the command that it is
// added to.
struct FoldCallOptions {
    explicit FoldCallOptions(std::int32_t direction) : fold(commandOf(direction), direction) {}

    void addTo(CLI::App& command) {
        fold.addWithoutFilesTo(command);
        jobs.addTo(command, "channels and blocks");
    }

    FoldOptions fold;
    JobsOption jobs;
};
