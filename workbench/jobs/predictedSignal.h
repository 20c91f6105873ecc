#pragma once

#include "workbench/jobs/RunRecord.h"

#include <vector>

// What the result of a deconvolution predicts for a channel of the signal: convolved with the
// kernel about its zero, in the room that the run had. Where the result stays as the module gives
// it, with the lag that the method takes off. As long as the result. std::bad_alloc.
std::vector<double> predictedSignal(std::vector<double> result, std::vector<double> kernel,
                                    const RunRecord& record);
