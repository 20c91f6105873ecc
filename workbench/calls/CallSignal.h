#pragma once

#include "workbench/messages/Failure.h"
#include "workbench/signals/Signal.h"
#include "workbench/signals/SignalSource.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

// A signal in the memory of a program. The samples stay the caller's.
struct CallSignal {
    std::string name;  // by which messages and records call it
    const double* interleaved = nullptr;
    std::int64_t samples = 0;  // of each channel
    int channels = 1;
    double rate = 0.0;  // Hz; 0: not known
    std::optional<SignalAxis> axis = {};
};

// A signal that cannot be used as it was given.
class WrongSignal : public Failure {
public:
    using Failure::Failure;
};

// A source that reads it in place. WrongSignal if it has no sample, or NaN or infinity and may not.
SignalSource sourceOf(const CallSignal& signal, bool allowNonfinite);

// A copy, for whoever needs it beyond the call. std::bad_alloc.
std::shared_ptr<const Signal> copyOf(const CallSignal& signal);
