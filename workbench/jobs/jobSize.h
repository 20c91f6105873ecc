#pragma once

#include "workbench/jobs/JobObserver.h"
#include "workbench/methods/FendraSettings.h"
#include "workbench/signals/SignalReader.h"

#include <cstdint>

class ModuleRun;
struct Method;

// What a run by a method takes, at most.
JobSize sizeOf(const Method& method, const FendraSettings& settings, const ModuleRun& moduleRun);

// Of one channel of one round: length and shorter as in Method.
JobSize sizeOfRun(const Method& method, const FendraSettings& settings, double length,
                  double shorter);

// What the search of a strength takes, in seconds, for a signal of that many samples.
double secondsToChoose(std::int64_t samples);

// Failure if the method needs more memory than is free for a result of that length.
void checkMemory(const Method& method, std::int64_t length);

// Failure if a kernel to convolve with needs more bytes than are free.
void checkKernelMemory(const SignalInfo& kernel, double needed);
