#include "workbench/batch/BatchRun.h"

#include "workbench/batch/LineLog.h"
#include "workbench/batch/Manifest.h"
#include "workbench/batch/fileDigest.h"
#include "workbench/batch/resultFault.h"
#include "workbench/batch/resultFolder.h"
#include "workbench/files/disk/PartialFile.h"
#include "workbench/files/signalFiles.h"
#include "workbench/messages/Failure.h"
#include "workbench/system/fileNames.h"
#include "workbench/system/inParallel.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <exception>
#include <filesystem>
#include <mutex>
#include <new>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

std::string Batch::resultFile(const BatchItem& item) const {
    return nameOf((pathOf(into) / pathOf(item.name)).generic_u8string());
}

std::shared_ptr<const Signal> commonKernel(const Batch& batch) {
    if (isKernelPattern(batch.kernel)) {
        return nullptr;
    }
    return std::make_shared<const Signal>(
        Signal::of(*openSignal(SourceName(batch.kernel), batch.reading)));
}

void BatchProgress::add(const BatchLine& line) {
    constexpr std::size_t most = 5;
    warned += line.warnings.empty() ? 0 : 1;
    if (line.error.empty()) {
        ++done;
        return;
    }
    ++failed;
    std::string failure = fmt::format("{}: {}", line.name, line.error);
    failures.insert(std::upper_bound(failures.begin(), failures.end(), failure),
                    std::move(failure));
    failures.resize(std::min(failures.size(), most));
}

namespace {

// A batch under way.
class BatchRun {
public:
    BatchRun(const Batch& givenBatch, const ModuleLibrary& moduleLibrary,
             BatchObserver& batchObserver);

    BatchProgress run();

private:
    void doItem(const BatchItem& item);
    bool attempt(const BatchItem& item, BatchLine& line);
    void readInputs(const BatchItem& item, const std::string& kernelFile, BatchLine& line) const;
    [[nodiscard]] bool isDone(const BatchLine& line) const;
    void refuseForeign(const BatchItem& item) const;
    void fold(const BatchItem& item, const std::string& kernelFile, BatchLine& line);

    const Batch& batch;
    const ModuleLibrary& library;
    BatchObserver& observer;
    std::shared_ptr<const Signal> kernel;  // of all; null: each has its own
    std::string kernelDigest;
    std::vector<const BatchItem*> items;  // of the part
    fs::path folder;
    Manifest before;
    LineLog manifest;
    std::optional<LineLog> begun;
    std::mutex mutex;  // of progress
    BatchProgress progress;
};

}  // namespace

BatchRun::BatchRun(const Batch& givenBatch, const ModuleLibrary& moduleLibrary,
                   BatchObserver& batchObserver)
    : batch(givenBatch),
      library(moduleLibrary),
      observer(batchObserver),
      kernel(commonKernel(batch)),
      kernelDigest(kernel == nullptr ? "" : fileDigest(batch.kernel)),
      items(batch.shard.select(batch.items)),
      folder(resultFolder(batch.into)),
      before(folder),
      manifest(folder / batch.shard.manifestName()),
      begun(std::in_place, begunBeside(folder / batch.shard.manifestName())) {
    progress.files = std::ssize(items);
}

// Few files leave cores for the channels and blocks of each.
BatchProgress BatchRun::run() {
    PartialFile::onLeftover(nullptr);
    PartialFile::removeLeftovers(folder, [this](const fs::path& target) {
        return batch.shard.has(nameOf(target.lexically_relative(folder).generic_u8string()));
    });
    observer.begins(progress);
    inParallel(batch.threads, progress.files,
               [this](std::int64_t i) { doItem(*items[static_cast<std::size_t>(i)]); });
    begun.reset();
    if (progress.failed == 0) {  // a file that failed may have been begun before
        std::error_code ignored;
        fs::remove(begunBeside(folder / batch.shard.manifestName()), ignored);
    }
    return progress;
}

void BatchRun::doItem(const BatchItem& item) {
    const auto start = std::chrono::steady_clock::now();
    BatchLine line;
    line.name = item.name;
    line.settings = batch.settings;
    bool doneBefore = false;
    try {
        doneBefore = !attempt(item, line);
    } catch (const std::bad_alloc&) {
        line.error = fmt::format("{}, or give fewer --jobs", noMemoryLeft);
    } catch (const std::length_error&) {  // a size beyond what vectors hold
        line.error = noMemoryLeft;
    } catch (const std::exception& error) {
        line.error = error.what();
    }
    if (!doneBefore) {
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
        line.seconds = passed.count();
        manifest.append(line.text());
    }
    const std::lock_guard lock(mutex);
    if (doneBefore) {
        ++progress.skipped;
    } else {
        progress.add(line);
    }
    observer.advances(progress);
}

// Returns whether there was anything to do.
bool BatchRun::attempt(const BatchItem& item, BatchLine& line) {
    const std::string kernelFile = kernelOf(batch.kernel, item);
    readInputs(item, kernelFile, line);
    if (isDone(line)) {
        return false;
    }
    refuseForeign(item);
    fold(item, kernelFile, line);
    return true;
}

void BatchRun::readInputs(const BatchItem& item, const std::string& kernelFile,
                          BatchLine& line) const {
    line.inputs.push_back({item.signal, fileDigest(item.signal)});
    line.inputs.push_back({kernelFile, kernel ? kernelDigest : fileDigest(kernelFile)});
}

bool BatchRun::isDone(const BatchLine& line) const {
    const std::optional<BatchLine> last = before.line(line.name);
    return last && last->result && last->error.empty() && last->asksTheSame(line) &&
           (isUntouched(folder, *last) || resultFault(folder, *last).empty());
}

void BatchRun::refuseForeign(const BatchItem& item) const {
    std::error_code ignored;
    if (!batch.replace && !before.made(item.name) &&
        fs::exists(folder / pathOf(item.name), ignored)) {
        throw Failure(fmt::format("{} exists, and no batch has made it; use --force to replace it",
                                  SourceName(batch.resultFile(item)).shown));
    }
}

// Whatever the encoding leaves out of the samples, the file is known by its bytes.
static bool needsStored(const Batch::Task& task) {
    return task.job.allowNonfinite || storedEncoding(task.target) != Encoding::float64;
}

void BatchRun::fold(const BatchItem& item, const std::string& kernelFile, BatchLine& line) {
    Batch::Task task = batch.task(item, kernelFile);
    if (kernel != nullptr) {
        task.job.second = sourceOf(kernel);
    }
    task.job.first.sha256 = line.inputs[0].sha256;
    task.job.second.sha256 = line.inputs[1].sha256;
    task.job.threads = std::max(1, static_cast<int>(batch.threads / progress.files));
    task.target.replace = batch.replace || before.made(item.name);
    const std::string file = batch.resultFile(item);
    resultFolder(nameOf(pathOf(file).parent_path()));
    begun->append(item.name);
    JobObserver silent;
    const RunRecord record = ::run(task.job, library, task.target, silent);
    BatchLine::Result result{file, record.digest, "", record.channels, 0, 0};
    result.columns *= record.uncertainty ? 3 : 1;
    result.stored = needsStored(task) ? fileDigest(file) : "";
    noteState(pathOf(file), result);
    line.result = result;
    line.warnings = record.remarks;
    line.rerun = record.choice ? record.choice->rerun : "";
}

BatchProgress run(const Batch& batch, const ModuleLibrary& library, BatchObserver& observer) {
    return BatchRun(batch, library, observer).run();
}
