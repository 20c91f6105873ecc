#pragma once

#include "workbench/figures/Figure.h"
#include "workbench/jobs/CompareJob.h"
#include "workbench/jobs/FoldJob.h"

#include <memory>
#include <string>
#include <vector>

// What there is to be seen of signals and of what was made of them.

using SharedSignal = std::shared_ptr<const Signal>;

// All channels of all signals in one pane on one axis, and their spectra.
Figure figureOf(const std::vector<SharedSignal>& signals);

// A run: signal and result with its band; the kernel; with a deconvolution the residual, result
// convolved with the kernel less the signal; spectra; and the curve by which a strength was chosen.
// Of an outcome with a band, the result has three columns a channel: value, lower and upper.
Figure figureOf(const SharedSignal& signal, const SharedSignal& kernel, const Outcome& outcome);

// What of its record the caption says, a line each, before what there is to be said of the panes.
std::vector<std::string> captionOf(const RunRecord& record);

// The signal with the results of all methods, their residuals and spectra.
Figure figureOf(const CompareJob& job, const std::vector<MethodOutcome>& outcomes);
