#include "workbench/batch/Manifest.h"

#include "tests/support/TemporaryFolder.h"
#include "workbench/batch/LineLog.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

static std::string lineOf(const std::string& name, const std::string& error, double seconds) {
    BatchLine line;
    line.name = name;
    line.error = error;
    line.seconds = seconds;
    if (error.empty()) {
        line.result = BatchLine::Result{"out/" + name, "", "", 1, 0, 0};
    }
    return line.text();
}

// Of several manifests the one that was written last, and in it the last line, holds. A result that
// was made once stays the batch's, though a later line tells of a failure.
TEST(Manifest, HoldsTheLastLineOfEachName) {
    const TemporaryFolder folder;
    LineLog(folder.path("batch.jsonl")).append(lineOf("a", "", 1.0));
    {
        LineLog part(folder.path("batch-1-of-2.jsonl"));
        part.append(lineOf("a", "", 2.0));
        part.append(lineOf("a", "no", 3.0));
        part.append(lineOf("b", "no", 4.0));
    }
    folder.write(".batch-2-of-2.begun", "c\nd");
    const auto before = std::filesystem::last_write_time(folder.path("batch-1-of-2.jsonl"));
    std::filesystem::last_write_time(folder.path("batch.jsonl"), before - std::chrono::hours(1));

    const Manifest manifest(folder.path(""));
    EXPECT_EQ(manifest.names(), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(manifest.line("a")->seconds, 3.0);
    EXPECT_FALSE(manifest.line("c"));
    EXPECT_TRUE(manifest.made("a"));
    EXPECT_FALSE(manifest.made("b"));
    EXPECT_TRUE(manifest.made("c"));
    EXPECT_FALSE(manifest.made("d"));  // its line is torn

    mergeManifests(folder.path(""));
    EXPECT_EQ(folder.read("batch.jsonl"),
              lineOf("a", "no", 3.0) + "\n" + lineOf("b", "no", 4.0) + "\n");
    EXPECT_FALSE(std::filesystem::exists(folder.path("batch-1-of-2.jsonl")));
}

TEST(LineLog, EndsATornLineAndTakesLinesOfSeveralThreads) {
    const TemporaryFolder folder;
    folder.write("log", "torn");
    {
        LineLog log(folder.path("log"));
        std::vector<std::thread> threads;
        threads.reserve(4);
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&log] {
                for (int k = 0; k < 100; ++k) {
                    log.append(std::string(10000, 'x'));
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
    std::string expected = "torn\n";
    for (int i = 0; i < 400; ++i) {
        expected += std::string(10000, 'x') + "\n";
    }
    EXPECT_EQ(folder.read("log"), expected);
}
