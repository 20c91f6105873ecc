#include "workbench/batch/BatchRun.h"

#include "tests/support/TemporaryFolder.h"
#include "workbench/batch/checkBatch.h"
#include "workbench/module/ModuleLibrary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <tuple>

static constexpr std::array names = {"a.csv", "b.csv", "c.csv"};

static const ModuleLibrary& fendra() {
    static const ModuleLibrary library(ModuleLibrary::standardFile());
    return library;
}

namespace {

// Three files by one kernel.
class ThreeFiles : public testing::Test {
protected:
    ThreeFiles() {
        batch.kernel = folder.write("kernel.txt", "1\n2\n");
        batch.into = folder.path("out");
        batch.settings = "{}";
        for (const char* name : names) {
            batch.items.push_back({folder.write(name, "3\n4\n5\n6\n"), name});
        }
        batch.task = [this](const BatchItem& item, const std::string& kernel) {
            Batch::Task task;
            task.job.first = fileSource(item.signal, {});
            task.job.second = fileSource(kernel, {});
            task.target.name = SourceName::ofOutput(batch.resultFile(item));
            return task;
        };
    }

    BatchProgress run() {
        BatchObserver silent;
        return ::run(batch, fendra(), silent);
    }

    std::array<std::string, 3> results() const {
        std::array<std::string, 3> all;
        std::transform(names.begin(), names.end(), all.begin(), [this](const char* name) {
            return folder.read(std::string("out/") + name);
        });
        return all;
    }

    // What a batch leaves that is killed when so much of its manifest is written.
    void leave(const std::string& manifest, std::size_t length) const {
        folder.write("out/batch.jsonl", manifest.substr(0, length));
        folder.write("out/.batch.begun", "a.csv\nb.csv\nc.csv\n");
        if (length % 2 == 0) {
            std::filesystem::remove(folder.path("out/b.csv"));
        }
    }

    std::int64_t faults() const {
        return checkBatch(batch.into, 1, [](const auto& /*name*/, const auto& /*fault*/) {}).faulty;
    }

    TemporaryFolder folder;
    Batch batch;
};

}  // namespace

// A killed batch leaves a manifest that ends anywhere, the names of what it had begun, and of the
// result under way the old file, the new one, or none.
TEST_F(ThreeFiles, GoOnFromAManifestThatEndsAnywhere) {
    ASSERT_EQ(run().done, 3);
    const auto right = results();
    const std::string manifest = folder.read("out/batch.jsonl");
    for (std::size_t length = 0; length <= manifest.size(); length += 11) {
        leave(manifest, length);
        const BatchProgress progress = run();
        ASSERT_EQ(std::tuple(progress.failed, progress.done + progress.skipped, faults()),
                  std::tuple(0, 3, 0))
            << length;
        ASSERT_EQ(results(), right) << length;
        ASSERT_EQ(folder.read("out/.batch.begun"), "") << length;
    }
}

// Without a line and without its name among those begun, a result is somebody's own.
TEST_F(ThreeFiles, LeaveAloneWhatTheyHaveNotMade) {
    ASSERT_EQ(run().done, 3);
    const auto right = results();
    const std::string manifest = folder.read("out/batch.jsonl");
    folder.write("out/batch.jsonl", manifest.substr(0, manifest.find('\n') + 1));
    folder.write("out/c.csv", "mine");
    BatchProgress progress = run();
    EXPECT_EQ(progress.skipped, 1);
    EXPECT_EQ(progress.failed, 2);
    EXPECT_EQ(folder.read("out/c.csv"), "mine");
    batch.replace = true;
    EXPECT_EQ(run().done, 2);
    EXPECT_EQ(results(), right);
    EXPECT_EQ(faults(), 0);
}

TEST_F(ThreeFiles, GiveTheSameInThreads) {
    ASSERT_EQ(run().done, 3);
    const auto right = results();
    std::filesystem::remove_all(batch.into);
    batch.threads = 8;
    ASSERT_EQ(run().done, 3);
    EXPECT_EQ(results(), right);
    EXPECT_EQ(faults(), 0);
}
