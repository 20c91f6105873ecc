#pragma once

#include "workbench/jobs/JobObserver.h"
#include "workbench/methods/FendraSettings.h"
#include "workbench/signals/SignalReader.h"

#include <cstdint>

class ModuleRun;
struct Method;

// What a run by a method takes in that many threads, at most.
JobSize sizeOf(const Method& method, const FendraSettings& settings, const ModuleRun& moduleRun,
               int threads);

// Of one channel of one round, which one thread runs: length and shorter as in Method.
JobSize sizeOfRun(const Method& method, const FendraSettings& settings, double length,
                  double shorter);

// The work of so many equal parts in that many threads takes so many times that of one part.
double partsInTurn(std::int64_t parts, int threads);

// A part of a job, which one thread runs.
struct JobPart {
    JobSize size;         // of one part
    std::int64_t parts;   // how many there are
    std::int64_t length;  // as in Method
    double values;        // that a thread has in memory, beside what the method needs
};

// How many threads run the parts of a job: no more than there are parts, than are wanted, and than
// free memory has room for, but one in any case; and one where a part takes no longer than passing
// it on.
int threadsFor(int wanted, const Method& method, const JobPart& part);

// What the search of a strength takes, in seconds, for a signal of that many samples.
double secondsToChoose(std::int64_t samples);

// Failure if the method needs more memory than is free for a run at once of that length, with so
// many values of signals and result in memory beside it.
void checkMemory(const Method& method, std::int64_t length, double values);

// The same of a deconvolution of whole signals, before they are read. pads: with room by zeros.
void checkWholeMemory(const Method& method, const SignalInfo& signal, const SignalInfo& kernel,
                      bool pads);

// Failure if a kernel to convolve with needs more bytes than are free.
void checkKernelMemory(const SignalInfo& kernel, double needed);
