#pragma once

#include "workbench/signals/SignalReader.h"

// Failure that names the place of the first NaN or infinity among count samples of every channel,
// interleaved, which begin with the sample of the number first of that signal.
void requireFinite(const SignalInfo& info, std::int64_t first, const double* samples,
                   std::int64_t count);
