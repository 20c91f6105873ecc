#include "workbench/batch/SlurmBatch.h"

#include "workbench/batch/BatchLine.h"
#include "workbench/batch/Manifest.h"
#include "workbench/batch/SlurmQueue.h"
#include "workbench/batch/resultFolder.h"
#include "workbench/files/disk/OutputFile.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <system_error>
#include <thread>
#include <utility>

namespace fs = std::filesystem;
using Seconds = std::chrono::duration<double>;

// Between two questions to Slurm: short at the start, for batches that are done at once.
static constexpr Seconds firstPause{0.5}, longestPause{10.0};
// Arrays in a row that end without a single file more.
static constexpr int mostInVain = 3;

std::string SlurmBatch::stateFolder() const {
    return nameOf((pathOf(into) / ".slurm").generic_u8string());
}

std::string SlurmBatch::endedFile(const std::string& task) const {
    return stateFolder() + "/ended-" + task;
}

static std::string contentsOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

namespace {

// A batch on a cluster under way.
class SlurmRun {
public:
    SlurmRun(const SlurmBatch& slurmBatch, BatchObserver& batchObserver,
             const std::function<void(const std::string&)>& tellPeople);

    BatchProgress run();

private:
    bool findArray();
    [[nodiscard]] std::optional<int> statusOf(std::int64_t task) const;
    [[nodiscard]] std::vector<std::int64_t> tasksWithout(bool (*holds)(std::optional<int>)) const;
    void submit(const std::vector<std::int64_t>& tasks);
    void follow();
    void observe();
    void redoLost(std::uintmax_t before);
    [[nodiscard]] BatchProgress result() const;
    [[nodiscard]] std::string complaintOf(const std::string& name) const;

    const SlurmBatch& batch;
    BatchObserver& observer;
    const std::function<void(const std::string&)>& tell;
    fs::path folder, state;
    std::vector<std::int64_t> shards;  // those that have files
    std::string array;
    BatchProgress progress;
};

}  // namespace

static bool ended(std::optional<int> status) {
    return status.has_value();
}

static bool endedWell(std::optional<int> status) {
    return status == 0;
}

SlurmRun::SlurmRun(const SlurmBatch& slurmBatch, BatchObserver& batchObserver,
                   const std::function<void(const std::string&)>& tellPeople)
    : batch(slurmBatch),
      observer(batchObserver),
      tell(tellPeople),
      folder(pathOf(batch.into)),
      state(resultFolder(batch.stateFolder())) {
    std::vector<bool> has(static_cast<std::size_t>(batch.tasks));
    for (const BatchItem& item : batch.items) {
        has[static_cast<std::size_t>(Shard::indexOf(item.name, batch.tasks) - 1)] = true;
    }
    for (std::int64_t task = 1; task <= batch.tasks; ++task) {
        if (has[static_cast<std::size_t>(task - 1)]) {
            shards.push_back(task);
        }
    }
    progress.files = std::ssize(batch.items);
}

std::optional<int> SlurmRun::statusOf(std::int64_t task) const {
    std::ifstream stream(pathOf(batch.endedFile(std::to_string(task))));
    int status = 0;
    return stream >> status ? std::optional(status) : std::nullopt;
}

std::vector<std::int64_t> SlurmRun::tasksWithout(bool (*holds)(std::optional<int>)) const {
    std::vector<std::int64_t> tasks;
    std::copy_if(shards.begin(), shards.end(), std::back_inserter(tasks),
                 [&](std::int64_t task) { return !holds(statusOf(task)); });
    return tasks;
}

// Finds the array that was submitted before with this script. Returns whether it is at work.
bool SlurmRun::findArray() {
    const std::string record = contentsOf(state / "array");
    const std::string before = record.substr(0, record.find('\n'));
    if (before.empty()) {
        return false;
    }
    std::string trouble;
    const std::optional<ArrayState> found = stateOfArray(before, trouble);
    if (!found) {
        throw Failure(fmt::format("squeue says nothing of the array {} in {}: {}", before,
                                  printable(batch.into), trouble));
    }
    const bool same = record == before + "\n" + batch.script;
    if (found->active && !same) {
        throw Failure(
            fmt::format("the array {} works in {}, with another command; wait for it, or end it by "
                        "scancel {}",
                        before, printable(batch.into), before));
    }
    array = same ? before : "";
    return found->active;
}

void SlurmRun::submit(const std::vector<std::int64_t>& tasks) {
    std::error_code ignored;
    for (const std::int64_t task : tasks) {
        fs::remove(pathOf(batch.endedFile(std::to_string(task))), ignored);
    }
    array = submitArray(batch.script, tasks, batch.stateFolder());
    OutputFile record(SourceName::ofOutput(nameOf(state / "array")), true);
    record.write(array + "\n" + batch.script);
    record.commit();
    tell(
        fmt::format("array {}, {} task{}: it goes on without this program; the same command "
                    "follows it again, and scancel {} ends it",
                    array, tasks.size(), tasks.size() == 1 ? "" : "s", array));
}

void SlurmRun::observe() {
    const Manifest manifest(folder);
    progress.done =
        std::min<std::int64_t>(progress.files, std::ssize(manifest.names())) - progress.skipped;
    observer.advances(progress);
}

// A question that gets no answer is put again: the machine that Slurm is controlled from may be
// away for a while.
void SlurmRun::follow() {
    std::string trouble, told;
    for (Seconds pause = firstPause;; pause = std::min(1.5 * pause, longestPause)) {
        std::this_thread::sleep_for(pause);
        const std::optional<ArrayState> found = stateOfArray(array, trouble);
        observe();
        if (!found && told != trouble) {
            told = trouble;
            tell(fmt::format("squeue says nothing of the array {}, and is asked again: {}", array,
                             trouble));
        }
        if (found && found->cancelled) {
            throw Failure(fmt::format(
                "the array {} was cancelled after {} of {} files; the same command goes on", array,
                progress.done + progress.skipped, progress.files));
        }
        if (found && !found->active) {
            return;
        }
    }
}

// The last line that the task of a file has printed, in the latest array.
std::string SlurmRun::complaintOf(const std::string& name) const {
    const std::string ending = fmt::format("_{}.log", Shard::indexOf(name, batch.tasks));
    std::vector<std::pair<fs::file_time_type, fs::path>> logs;
    for (const fs::directory_entry& entry : fs::directory_iterator(state)) {
        if (nameOf(entry.path().filename()).ends_with(ending)) {
            logs.emplace_back(entry.last_write_time(), entry.path());
        }
    }
    std::istringstream lines(
        logs.empty() ? "" : contentsOf(std::max_element(logs.begin(), logs.end())->second));
    std::string last;
    for (std::string line; std::getline(lines, line);) {
        last = line.empty() ? last : line;
    }
    return last.empty() ? "its task says nothing" : printable(last, 300);
}

BatchProgress SlurmRun::result() const {
    BatchProgress found;
    found.files = progress.files;
    const Manifest manifest(folder);
    for (const BatchItem& item : batch.items) {
        const std::optional<BatchLine> line = manifest.line(item.name);
        if (!line) {
            throw Failure(fmt::format("{} was not done: {}; all that the tasks say is in {}",
                                      printable(item.name), complaintOf(item.name),
                                      SourceName(batch.stateFolder()).shown));
        }
        found.add(*line);
    }
    return found;
}

static std::uintmax_t bytesOfManifests(const fs::path& folder) {
    std::uintmax_t bytes = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        bytes += entry.path().extension() == ".jsonl" ? entry.file_size() : 0;
    }
    return bytes;
}

// Tasks are lost with their node, or where memory or time that they were given has run out.
void SlurmRun::redoLost(std::uintmax_t before) {
    int inVain = 0;
    for (std::vector<std::int64_t> lost = tasksWithout(ended); !lost.empty();
         lost = tasksWithout(ended)) {
        const std::uintmax_t now = bytesOfManifests(folder);
        inVain = now > before ? 0 : inVain + 1;
        before = now;
        if (inVain == mostInVain) {
            throw Failure(fmt::format(
                "{} task{} lost {} times without a file more; all that they say is in {}",
                lost.size(), lost.size() == 1 ? " was" : "s were", mostInVain,
                SourceName(batch.stateFolder()).shown));
        }
        submit(lost);
        follow();
    }
}

BatchProgress SlurmRun::run() {
    const bool works = findArray();
    const std::vector<std::int64_t> tasks = array.empty() ? shards : tasksWithout(endedWell);
    progress.skipped = std::min<std::int64_t>(progress.files, std::ssize(Manifest(folder).names()));
    observer.begins(progress);
    const std::uintmax_t before = bytesOfManifests(folder);
    if (works) {
        tell(fmt::format("array {} was submitted before, and is followed", array));
    } else if (!tasks.empty()) {
        submit(tasks);
    }
    if (works || !tasks.empty()) {
        follow();
    }
    redoLost(before);
    BatchProgress found = result();
    mergeManifests(folder);
    std::error_code ignored;
    fs::remove_all(state, ignored);
    return found;
}

BatchProgress run(const SlurmBatch& batch, BatchObserver& observer,
                  const std::function<void(const std::string&)>& tell) {
    return SlurmRun(batch, observer, tell).run();
}
