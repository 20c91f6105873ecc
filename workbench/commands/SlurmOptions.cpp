#include "workbench/commands/SlurmOptions.h"

#include "workbench/system/Program.h"
#include "workbench/system/fileNames.h"
#include "workbench/system/offer.h"
#include "workbench/terminal/OutputOptions.h"
#include "workbench/terminal/help.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <limits>

void SlurmOptions::addTo(CLI::App& command, CLI::Option& shard) {
    app = &command;
    CLI::Option* const slurm =
        command
            .add_option("--slurm", tasks,
                        "submit N parts as an array of tasks to Slurm, follow it to its end, and "
                        "submit again what a lost node took. Program, files and FOLDER are where "
                        "all nodes see them")
            ->check(countUpTo(std::numeric_limits<std::int32_t>::max(), "number of tasks"))
            ->type_name("N")
            ->group(groupWhere(Offer::here.cluster, "Parts"))
            ->excludes(&shard);
    command
        .add_option("--slurm-options", submission,
                    "further options for sbatch in one word, such as '--partition=long --mem=4G "
                    "--cpus-per-task=2'. A task works with as many jobs as it has cores of its "
                    "node, unless --jobs says otherwise")
        ->type_name("OPTIONS")
        ->group(groupWhere(Offer::here.cluster, "Parts"))
        ->needs(slurm);
}

// What is for the program that submits, and no task needs.
static bool staysHere(const CLI::Option& option) {
    return option.check_lname("slurm") || option.check_lname("slurm-options") ||
           option.check_lname("quiet");
}

// All that was given, as the shell takes it. What tasks print is kept, so they print what fails.
std::string SlurmOptions::words() const {
    std::string values, names;
    for (const CLI::Option* option : app->get_options(
             [](const CLI::Option* each) { return each->count() > 0 && !staysHere(*each); })) {
        for (const std::string& value : option->results()) {
            if (option->get_positional()) {
                values += fmt::format(" {}", quoted(value));
            } else if (option->get_items_expected_max() == 0) {
                names += fmt::format(" {}", option->get_name());
            } else {
                names += fmt::format(" {}", quoted(option->get_name() + "=" + value));
            }
        }
    }
    const bool jobs = app->get_option("--jobs")->count() > 0;
    return app->get_name() + values + names + " --quiet" +
           (jobs ? "" : " --jobs \"${SLURM_CPUS_PER_TASK:-1}\"");
}

// A status above 2 is that of a program that did not end by itself.
std::string SlurmOptions::script(const SlurmBatch& batch) const {
    const std::string ended = nameOf(std::filesystem::current_path() / pathOf(batch.endedFile("")));
    return fmt::format(
        "#!/bin/sh\n"
        "#SBATCH --job-name=fendra --requeue --open-mode=append\n"
        "{}"
        "{} batch {} --shard \"$SLURM_ARRAY_TASK_ID/{}\"\n"
        "status=$?\n"
        "[ $status -gt 2 ] || echo $status > {}$SLURM_ARRAY_TASK_ID\n"
        "exit $status\n",
        submission.empty() ? "" : fmt::format("#SBATCH {}\n", submission),
        quoted(nameOf(programFile())), words(), batch.tasks, quoted(ended));
}

SlurmBatch SlurmOptions::batch(const std::vector<BatchItem>& items, const std::string& into) const {
    if (submission.find('\n') != std::string::npos) {
        throw CLI::ValidationError("--slurm-options", "give the options for sbatch in one line");
    }
    SlurmBatch batch{items, into, tasks, ""};
    batch.script = script(batch);
    return batch;
}
