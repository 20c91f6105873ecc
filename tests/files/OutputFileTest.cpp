#include "workbench/files/OutputFile.h"

#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <iterator>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

TEST(OutputFile, LeavesAloneWhatHasComeUpMeanwhile) {
    const TemporaryFolder folder;
    OutputFile late(folder.path("a.csv"), false);
    folder.write("a.csv", "somebody's");
    EXPECT_EQ(failureOf([&] { late.commit(); }),
              folder.path("a.csv") + " exists; choose another name or use --force");
    EXPECT_EQ(folder.read("a.csv"), "somebody's");
    EXPECT_EQ(folder.count(), 2);  // the part goes with its object
}

TEST(OutputFile, ReplacesTheOldFileAtCommitAndRemovesThePartOnASignal) {
    const TemporaryFolder folder;
    removePartialOutput();  // nothing to do
    OutputFile output(folder.path("a.csv"), true), interrupted(folder.path("b.csv"), true);
    EXPECT_EQ(folder.count(), 2);
    removePartialOutput();
    EXPECT_EQ(folder.count(), 1);
    folder.write("a.csv", "old");
    output.write("new");
    EXPECT_EQ(folder.read("a.csv"), "old");
    output.commit();
    EXPECT_EQ(folder.read("a.csv"), "new");
    EXPECT_EQ(folder.count(), 1);
}

// What work ends with in a process whose files cannot grow beyond limit bytes, as on a full disk.
template <typename Work>
static std::string failureWithin(std::size_t limit, Work work) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit length = {limit, limit};
        setrlimit(RLIMIT_FSIZE, &length);
        const std::string text = failureOf(work);
        _exit(write(ends[1], text.data(), text.size()) == std::ssize(text) ? 0 : 1);
    }
    close(ends[1]);
    std::string text(4096, '\0');
    text.resize(
        static_cast<std::size_t>(std::max<ssize_t>(0, read(ends[0], text.data(), text.size()))));
    close(ends[0]);
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    return text;
}

namespace {

class FullDisk : public testing::TestWithParam<const char*> {};

}  // namespace

// Wherever in the file the disk is full, in the last bytes that closing writes too.
TEST_P(FullDisk, LeavesTheOldFileAndNothingBesideIt) {
    const TemporaryFolder folder;
    const std::string name = std::string("s") + GetParam(), path = folder.path(name);
    const std::vector<double> samples(30000, 0.1);
    writeSignal(path, samples);
    const std::string whole = folder.read(name);
    for (const std::size_t limit : {std::size_t{0}, std::size_t{1}, std::size_t{100},
                                    whole.size() / 2, whole.size() - 1, whole.size()}) {
        folder.write(name, "old");
        const bool enough = limit == whole.size();
        EXPECT_EQ(
            failureWithin(limit, [&] { writeSignal(path, samples); }),
            enough ? ""
                   : "cannot write " + path + ": File too large; make room or choose another place")
            << limit;
        EXPECT_TRUE(folder.read(name) == (enough ? whole : "old")) << limit;
        EXPECT_EQ(folder.count(), 1) << limit;
    }
}
INSTANTIATE_TEST_SUITE_P(Formats, FullDisk,
                         testing::Values(".csv", ".wav", ".w64", ".rf64", ".aiff", ".flac"));
