#pragma once

#include "workbench/jobs/CompareJob.h"
#include "workbench/jobs/RunRecord.h"
#include "workbench/reporting/Page.h"

#include <cstdint>
#include <string>
#include <vector>

// What pages say of runs: what was chosen and why, remarks, settings, digests, and the command line
// that gives the same again.

// A deconvolution.
Page pageOf(const RunRecord& record);

// Deconvolutions of one signal by several methods; also of none that gave a result.
//   words   the command line
Page pageOf(const CompareJob& job, const std::vector<MethodOutcome>& outcomes,
            const std::string& words);

// A sweep that was made.
struct SweepRecord {
    std::string words;  // the command line
    SourceName output;
    double from = 0.0, to = 0.0, seconds = 0.0, fade = 0.0, rate = 0.0;  // Hz and s
    std::int64_t samples = 0;
    std::string digest;  // SHA-256 of the samples
};
Page pageOf(const SweepRecord& record);
