#include "workbench/files/OutputFile.h"

#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <random>
#include <sys/resource.h>

namespace fs = std::filesystem;

TEST(OutputFile, LeavesNothingWithoutCommit) {
    const TemporaryFolder folder;
    OutputFile(folder.path("a.csv"), false).write("lost");
    EXPECT_EQ(folder.count(), 0);
}

TEST(OutputFile, ReplacesOnlyWhenTold) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a.csv", "old");
    fs::permissions(path, fs::perms::owner_read);
    expectFailure([&] { OutputFile(path, false); }, {path + " exists", "--force"});
    OutputFile output(path, true);
    output.write("new");
    EXPECT_EQ(folder.read("a.csv"), "old");
    output.commit();
    EXPECT_EQ(folder.read("a.csv"), "new");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read);
    expectFailure([&] { OutputFile(folder.path(""), true); }, {"is a folder", "name a file"});
}

TEST(OutputFile, LeavesWhatHasComeUpMeanwhile) {
    const TemporaryFolder folder;
    OutputFile late(folder.path("b.csv"), false);
    folder.write("b.csv", "somebody's");
    expectFailure([&] { late.commit(); }, {"b.csv exists"});
    EXPECT_EQ(folder.read("b.csv"), "somebody's");
}

TEST(OutputFile, WritesWhatALinkLeadsTo) {
    const TemporaryFolder folder;
    folder.write("old.csv", "old");
    fs::create_symlink("old.csv", folder.path("link.csv"));
    fs::create_symlink("missing.csv", folder.path("dangling.csv"));
    for (const std::string link : {"link.csv", "dangling.csv"}) {
        OutputFile output(folder.path(link), true);
        output.write("new");
        output.commit();
        EXPECT_TRUE(fs::is_symlink(folder.path(link)));
    }
    EXPECT_EQ(folder.read("old.csv"), "new");
    EXPECT_EQ(folder.read("missing.csv"), "new");
}

TEST(OutputFile, RemovesThePartOnASignal) {
    const TemporaryFolder folder;
    removePartialOutput();  // nothing to do
    OutputFile output(folder.path("a.csv"), false);
    EXPECT_EQ(folder.count(), 1);
    removePartialOutput();
    EXPECT_EQ(folder.count(), 0);
}

// A limit on the size of files stands for the full disk.
TEST(SignalWriter, LeavesTheOldFileWhenTheDiskIsFull) {
    const TemporaryFolder folder;
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before = {};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small = {50000, before.rlim_max};
    const ResultInfo info = resultInfo(1, 8000);
    std::minstd_rand random(7);
    std::vector<double> noise(200000);
    std::generate(noise.begin(), noise.end(), [&random] { return std::ldexp(random(), -31); });
    for (const std::string name : {"a.csv", "a.wav", "a.flac", "a.aiff", "a.w64"}) {
        folder.write(name, "old");
        setrlimit(RLIMIT_FSIZE, &small);
        expectFailure([&] { writeSignal(folder.path(name), noise, info); },
                      {"cannot write", name, "File too large"});
        setrlimit(RLIMIT_FSIZE, &before);
        EXPECT_EQ(folder.read(name), "old");
    }
    EXPECT_EQ(folder.count(), 5);
}

TEST(SignalWriter, WritesDevicesDirectly) {
    const TemporaryFolder folder;
    fs::create_symlink("/dev/full", folder.path("full.wav"));
    const ResultInfo info = resultInfo(1, 8000);
    for (const std::string& path : {std::string("/dev/full"), folder.path("full.wav")}) {
        expectFailure(
            [&] {
                writeSignal(path, {1, 2}, info);
            },
            {"cannot write " + path, "No space left"});
    }
    writeSignal("/dev/null", {1, 2}, info);
}
