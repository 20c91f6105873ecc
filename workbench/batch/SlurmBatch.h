#pragma once

#include "workbench/batch/BatchRun.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// A batch whose shards are the tasks of an array of Slurm.
struct SlurmBatch {
    std::vector<BatchItem> items;
    std::string into;        // folder of the results, on disks that all nodes share
    std::int64_t tasks = 1;  // as many as shards
    // Does the shard SLURM_ARRAY_TASK_ID of tasks, and writes the exit status of the program, as
    // far as that ended by itself, to endedFile.
    std::string script;

    // Where array, exit status and output of the tasks are kept until the batch is done.
    [[nodiscard]] std::string stateFolder() const;
    [[nodiscard]] std::string endedFile(const std::string& task) const;
};

// Submits the array, or goes on with one of the same script that was submitted before, and follows
// it to its end. What is missing then, since a node was lost and Slurm has not started its tasks
// again, is submitted once more. Manifests are merged at last. The array goes on where this program
// is ended.
//   tell      takes what people should know meanwhile, a line each
//   returns   what the manifests say of the files; those that were done before count as done
//   Failure   Slurm cannot be reached or refuses the array, another one works in the folder, the
//             array was cancelled, a task cannot begin, or it is lost several times and nothing
//             comes of it
BatchProgress run(const SlurmBatch& batch, BatchObserver& observer,
                  const std::function<void(const std::string&)>& tell);
