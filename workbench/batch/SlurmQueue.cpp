#include "workbench/batch/SlurmQueue.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/Program.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <sstream>
#include <string_view>

static ProgramEnd runTool(const std::vector<std::string>& words, const std::string& input) {
    try {
        return runProgram(words, input);
    } catch (const Failure& failure) {
        throw Failure(fmt::format(
            "{}; --slurm needs a machine from which Slurm takes jobs: on others, use --shard",
            failure.what()));
    }
}

// One line, whatever the tools make of it.
static std::string firstLine(const std::string& text) {
    return printable(text.substr(0, text.find('\n')), 300);
}

// "1-3,7"
static std::string listOf(const std::vector<std::int64_t>& numbers) {
    std::string text;
    for (std::size_t i = 0; i < numbers.size();) {
        std::size_t last = i;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) {
            ++last;
        }
        text += fmt::format("{}{}", text.empty() ? "" : ",", numbers[i]);
        text += last > i ? fmt::format("-{}", numbers[last]) : "";
        i = last + 1;
    }
    return text;
}

// A name in which Slurm replaces nothing.
static std::string literal(const std::string& name) {
    std::string text;
    for (const char letter : name) {
        text += letter == '%' ? "%%" : std::string(1, letter);
    }
    return text;
}

std::string submitArray(const std::string& script, const std::vector<std::int64_t>& tasks,
                        const std::string& folder) {
    const std::string here = nameOf(std::filesystem::current_path());
    const std::string logs = nameOf(std::filesystem::absolute(pathOf(folder)));
    const ProgramEnd end = runTool({"sbatch", "--parsable", "--array=" + listOf(tasks),
                                    "--chdir=" + here, "--output=" + literal(logs) + "/%A_%a.log"},
                                   script);
    std::string array = end.output.substr(0, end.output.find_first_of(";\n"));
    const bool isNumber =
        !array.empty() && array.find_first_not_of("0123456789") == std::string::npos;
    if (end.status != 0 || !isNumber) {
        throw Failure(fmt::format("sbatch takes no array of tasks {}: {}", listOf(tasks),
                                  firstLine(end.status != 0 ? end.errors : end.output)));
    }
    return array;
}

static bool isOver(std::string_view state) {
    static constexpr std::array<std::string_view, 9> ends = {
        "BOOT_FAIL", "CANCELLED",     "COMPLETED", "DEADLINE", "FAILED",
        "NODE_FAIL", "OUT_OF_MEMORY", "PREEMPTED", "TIMEOUT"};
    return std::find(ends.begin(), ends.end(), state) != ends.end();
}

std::optional<ArrayState> stateOfArray(const std::string& array, std::string& trouble) {
    const ProgramEnd end =
        runTool({"squeue", "--noheader", "--jobs=" + array, "--states=all", "--format=%T"}, "");
    if (end.status != 0 && end.errors.find("Invalid job id") == std::string::npos) {
        trouble = firstLine(end.errors);
        return std::nullopt;
    }
    ArrayState state;  // of an array that Slurm has forgotten, too
    std::istringstream lines(end.status == 0 ? end.output : "");
    for (std::string task; lines >> task;) {
        state.active = state.active || !isOver(task);
        state.cancelled = state.cancelled || task == "CANCELLED";
    }
    return state;
}
