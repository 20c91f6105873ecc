#include "workbench/files/OutputFile.h"

#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

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
