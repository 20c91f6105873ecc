#pragma once

#include "workbench/batch/SlurmBatch.h"

#include <cstdint>
#include <string>

namespace CLI {
class App;
class Option;
}  // namespace CLI

// How a command is given to Slurm: as an array of tasks, each of which is the same command on one
// shard.
class SlurmOptions {
public:
    // Adds --slurm and --slurm-options. They exclude shard, the option for one part alone.
    void addTo(CLI::App& command, CLI::Option& shard);

    [[nodiscard]] bool given() const { return tasks > 0; }
    // CLI::ParseError if the options for sbatch are more than one line.
    [[nodiscard]] SlurmBatch batch(const std::vector<BatchItem>& items,
                                   const std::string& into) const;

private:
    [[nodiscard]] std::string script(const SlurmBatch& batch) const;
    [[nodiscard]] std::string words() const;

    const CLI::App* app = nullptr;
    std::int64_t tasks = 0;  // 0: not by Slurm
    std::string submission;  // options for sbatch
};
