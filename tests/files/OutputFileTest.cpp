#include "workbench/files/disk/OutputFile.h"

#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "workbench/system/endings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <iterator>
#include <memory>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

TEST(OutputFile, LeavesAloneWhatHasComeUpMeanwhile) {
    const TemporaryFolder folder;
    OutputFile late(SourceName::ofOutput(folder.path("a.csv")), false);
    folder.write("a.csv", "somebody's");
    EXPECT_EQ(failureOf([&] { late.commit(); }),
              folder.path("a.csv") + " exists; choose another name or use --force");
    EXPECT_EQ(folder.read("a.csv"), "somebody's");
    EXPECT_EQ(folder.count(), 2);  // the part goes with its object
}

TEST(OutputFile, ReplacesTheOldFileAtCommit) {
    const TemporaryFolder folder;
    OutputFile output(SourceName::ofOutput(folder.path("a.csv")), true);
    folder.write("a.csv", "old");
    output.write("new");
    EXPECT_EQ(folder.read("a.csv"), "old");
    output.commit();
    EXPECT_EQ(folder.read("a.csv"), "new");
    EXPECT_EQ(folder.count(), 1);
}

// Parts that are being written, in this thread and in others, and none that are finished: a place
// that one has left serves the next.
static void holdPartsAndRaise(const TemporaryFolder& folder, int signal) {
    for (int i = 0; i < 200; ++i) {
        OutputFile(SourceName::ofOutput(folder.path("short-lived.csv")), true).commit();
    }
    std::vector<std::unique_ptr<OutputFile>> outputs(8);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        threads.emplace_back([&, i] {
            const std::string path = folder.path(std::to_string(i) + ".csv");
            outputs[i] = std::make_unique<OutputFile>(SourceName::ofOutput(path), true);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(folder.count(), 9);
    std::raise(signal);
}

TEST(PartialFile, AllAreRemovedWhenASignalEndsTheProcess) {
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU}) {
        const TemporaryFolder folder;
        const pid_t child = fork();
        if (child == 0) {
            std::signal(signal, SIG_DFL);
            const rlimit noCore = {0, 0};
            setrlimit(RLIMIT_CORE, &noCore);
            catchEndings(PartialFile::removeAll);
            holdPartsAndRaise(folder, signal);
            _exit(0);
        }
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        EXPECT_EQ(folder.count(), 1) << signal;
        EXPECT_EQ(folder.read("short-lived.csv"), "");
    }
}

// What another run has left is reported, what one is still writing is not, and nor is what belongs
// to another target.
TEST(PartialFile, OfACutOffRunIsReportedAndKept) {
    const TemporaryFolder folder;
    static std::vector<std::string> reported;
    PartialFile::onLeftover([](const std::string& name) { reported.push_back(name); });
    const SourceName target = SourceName::ofOutput(folder.path("a.csv"));
    for (const char* name :
         {".a.csv.0123abcd.part", ".a.csv.0123abc.part", ".a.csv.0123abcx.part",
          ".a.csv.0123abcd.party", ".b.csv.0123abcd.part", "a.csv.0123abcd.part"}) {
        folder.write(name, "cut off");
    }
    {
        const OutputFile first(target, true);
        const OutputFile second(target, true);
    }
    const std::string left = folder.path(".a.csv.0123abcd.part");
    EXPECT_EQ(reported, (std::vector{left, left}));
    EXPECT_EQ(folder.count(), 6);
    PartialFile::onLeftover(nullptr);
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
