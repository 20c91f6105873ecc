#pragma once

#include "workbench/jobs/FoldJob.h"

#include <string>

// Writes the result of a job that was run in memory to a file, as the job would have written it
// there: the same samples, axis, names and comments, with these words as its command line. Of a
// result with a band, a format without columns takes the values alone.
//   returns   what of the result has no place in the format; empty: all has
//   Failure   as createSignal; a file that was there stays as it was
std::string saveOutcome(const Outcome& outcome, const std::string& words,
                        const SignalTarget& target);
