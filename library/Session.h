#pragma once

#include "library/GivenOptions.h"
#include "workbench/calls/FoldCall.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

class ModuleLibrary;

// Samples as a caller gives them, channels side by side.
struct Samples {
    const double* interleaved;
    std::size_t count;  // of each channel
    std::size_t channels;
};

// What stands behind a handle: a module, options, an observer, and the result of the last run.
class Session {
public:
    // file: of the module; null: the installed one. One that cannot be opened refuses options and
    // runs. std::bad_alloc.
    explicit Session(const char* file);

    // Why the module could not be opened; empty if it is open.
    [[nodiscard]] const std::string& refusalOfModule() const { return refusal; }

    // As GivenOptions::set.
    void set(const std::string& name, const char* value);

    // As fendra_observe.
    void observe(int (*teller)(void* with, double share), void* tellerWith);

    // Runs a direction, FendraSettings::convolution or deconvolution. WrongOption, WrongSignal,
    // Stopped if the observer said so, other Failure, std::bad_alloc; there is no result then.
    void run(std::int32_t direction, const Samples& signal, const Samples& kernel);

    // Of the last run; null if there is none.
    [[nodiscard]] const CallResult* result() const { return last ? &*last : nullptr; }
    // WrongSignal if there is none.
    [[nodiscard]] const CallResult& requireResult() const;

    // The record of the result, made when it is first asked for. WrongSignal if there is no result,
    // other Failure, std::bad_alloc.
    const std::string& record();

private:
    void requireModule() const;

    std::shared_ptr<const ModuleLibrary> library;  // null: it could not be opened
    std::string refusal;                           // why; else empty
    GivenOptions options;
    int (*tell)(void* with, double share) = nullptr;
    void* with = nullptr;
    std::optional<FoldCall> convolution, deconvolution;  // with these options, once they ran
    std::optional<CallResult> last;
    std::string lastRecord;  // empty: not made
};
