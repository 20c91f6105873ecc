#pragma once

#include "library/fendra.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

struct HandleCloser {
    void operator()(fendra* handle) const { fendra_close(handle); }
};
using Handle = std::unique_ptr<fendra, HandleCloser>;

using Options = std::vector<std::pair<std::string, std::string>>;

// A handle of the module in the build, with these options.
inline Handle openHandle(const Options& options = {}) {
    Handle handle(fendra_open(nullptr));
    EXPECT_STREQ(fendra_message(handle.get()), "");
    for (const auto& [option, value] : options) {
        EXPECT_EQ(FENDRA_OK, fendra_set(handle.get(), option.c_str(), value.c_str()))
            << option << ": " << fendra_message(handle.get());
    }
    return handle;
}

enum class Direction { convolve, deconvolve };

inline int run(const Handle& handle, Direction direction, const Signal& signal,
               const Signal& kernel) {
    return (direction == Direction::convolve ? fendra_convolve : fendra_deconvolve)(
        handle.get(), signal.data(), signal.size(), kernel.data(), kernel.size());
}

// All values of the result.
inline Signal resultOf(const Handle& handle) {
    const double* const values = fendra_result(handle.get());
    return {values, values + fendra_length(handle.get()) * fendra_channels(handle.get())};
}

inline Signal convolved(const Handle& handle, const Signal& signal, const Signal& kernel) {
    EXPECT_EQ(FENDRA_OK, run(handle, Direction::convolve, signal, kernel))
        << fendra_message(handle.get());
    return resultOf(handle);
}

// Lines of a spectrum, and a smooth peak that blurs them.
inline Signal lines() {
    Signal signal(64, 0.0);
    signal[20] = 3.0;
    signal[27] = 1.0;
    signal[45] = 2.0;
    return signal;
}
inline Signal peak() {
    Signal kernel = {0.1, 0.2, 0.4, 0.2, 0.1};  // gains from 0.1 to 1
    kernel.resize(64, 0.0);                     // as van Cittert's method needs it
    return kernel;
}
// These, blurred, with some noise.
inline Signal measured() {
    Signal signal = periodicFold(lines(), peak());
    const Signal errors = noise(64, 7);
    for (std::size_t i = 0; i < signal.size(); ++i) {
        signal[i] += 0.02 * errors[i];
    }
    return signal;
}
