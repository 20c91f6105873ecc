#pragma once

#include "workbench/signals/SignalReader.h"

#include <cstdint>
#include <string>
#include <vector>

// What two signals have to be like to go together; each operation throws a Failure that names both.
// Rounds are counted from 0.

// Equal numbers of channels, or one of them 1.
void checkChannels(const SignalInfo& a, const SignalInfo& b);

// Equal lengths of a round, for a method that needs them.
void checkLengths(const SignalInfo& a, std::int64_t lengthOfA, const SignalInfo& b,
                  std::int64_t lengthOfB, std::int64_t round);

// A kernel to deconvolve by that is not all zero: the module would divide by zero in every bin and
// report success. name: of its file.
void checkKernel(const std::vector<double>& kernel, std::int64_t round, const std::string& name);
