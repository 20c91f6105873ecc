#pragma once

#include "workbench/batch/BatchLine.h"
#include "workbench/batch/Shard.h"
#include "workbench/batch/signalList.h"
#include "workbench/jobs/FoldJob.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class ModuleLibrary;

// Many files, each folded with a kernel in the same way, as a value.
struct Batch {
    std::vector<BatchItem> items;  // of the whole batch, in the order of their names
    Shard shard;                   // whose part is done
    std::string kernel;            // a file, or a pattern for kernelOf
    std::string into;              // folder of the results, made where it is missing
    bool replace = false;          // files that no batch has made may be replaced
    int threads = 1;
    ReadOptions reading;   // of a kernel that serves all
    std::string settings;  // a JSON object: all that a result depends on, except its inputs

    // The job of one file. May be called from several threads.
    struct Task {
        FoldJob job;
        SignalTarget target;
    };
    std::function<Task(const BatchItem& item, const std::string& kernel)> task;

    [[nodiscard]] std::string resultFile(const BatchItem& item) const;
};

// How far a batch has come.
struct BatchProgress {
    std::int64_t files = 0, done = 0, skipped = 0, failed = 0, warned = 0;
    std::vector<std::string> failures;  // "NAME: reason", the first five by name

    // Counts a file that was done, or failed, by its line.
    void add(const BatchLine& line);
};

// Watches a batch; calls come one at a time, from the threads that do the files.
class BatchObserver {
public:
    virtual ~BatchObserver() = default;
    virtual void begins(const BatchProgress& /*progress*/) {}
    virtual void advances(const BatchProgress& /*progress*/) {}
};

// The kernel of a batch in memory, if one serves all. Failure if it cannot be read.
std::shared_ptr<const Signal> commonKernel(const Batch& batch);

// Does what is not done yet, and writes a line to the manifest in the folder for each file as it
// ends. Done is a file whose last line tells of the same inputs and settings, and of a result that
// is there as it was written. Where a batch was killed, at whatever moment, another goes on: a
// result takes its place whole, and before that its name is noted beside the manifest.
//
// A file that fails does not stop the others.
//   Failure   the folder or the manifest cannot be written, or a kernel for all not be read.
BatchProgress run(const Batch& batch, const ModuleLibrary& library, BatchObserver& observer);
