#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// The two programs of Slurm by which an array of tasks is submitted and followed: sbatch and
// squeue. No task needs the job accounting that not every cluster keeps.

// Submits a script as an array, and gives the number that Slurm knows it by.
//   tasks    their numbers, ascending
//   folder   for what they print: ARRAY_TASK.log
// Failure, with the words of sbatch, if it refuses.
std::string submitArray(const std::string& script, const std::vector<std::int64_t>& tasks,
                        const std::string& folder);

// What squeue says of an array, its finished tasks included as long as Slurm remembers them.
struct ArrayState {
    bool active = false;     // a task waits, works, or will be started again
    bool cancelled = false;  // a task was ended on request
};

// None where squeue got no answer: why is in trouble then. Failure if it cannot be run.
std::optional<ArrayState> stateOfArray(const std::string& array, std::string& trouble);
