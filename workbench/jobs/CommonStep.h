#pragma once

#include "workbench/signals/SignalReader.h"

// The step that two signals have in common, and so has what comes of them.
struct CommonStep {
    double rate = 0.0;  // Hz; 0: not known
    double step = 0.0;  // of the axis, in its unit, seconds with a rate; below 0: the axis falls;
                        // 0: neither signal has an axis or a rate
};

// Steps agree if one fits both: those that the digits of an axis leave are a range, those of an
// audio file and of a given rate a single one; a millionth makes no difference. The narrower range
// decides. A signal without axis and rate goes with any, and an axis of step 1 that is not a time
// with an audio file, whose samples it counts.
//   given    rate in Hz, which must fit what the signals have of one, and is theirs then to the
//            last digit; an axis that is not a time gives way to it. 0: none.
//   Failure  two steps, two directions or two kinds of axis; a rate that contradicts a signal.
CommonStep commonStep(const SignalInfo& first, const SignalInfo& second, double given);
