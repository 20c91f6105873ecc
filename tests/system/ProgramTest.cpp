#include "workbench/system/Program.h"

#include "workbench/messages/Failure.h"
#include "workbench/system/FileHandle.h"

#include <gtest/gtest.h>

#include <string>

// Blanks, quotes, patterns and line feeds are those of the word.
TEST(Program, GetsItsWordsAsTheyAre) {
    const std::vector<std::string> words = {"", "a b", "'\"", "$HOME *", "-n", "line\nfeed", "\\"};
    std::vector<std::string> command = {"printf", "%s|"};
    std::string expected;
    for (const std::string& word : words) {
        command.push_back(word);
        expected += word + "|";
    }
    const ProgramEnd end = runProgram(command, "");
    EXPECT_EQ(end.output, expected);
    EXPECT_EQ(end.status, 0);
}

// More than any pipe holds goes in and out at once.
TEST(Program, TakesAndGivesAnyNumberOfBytes) {
    const std::string bytes(std::size_t{1} << 20, 'x');
    const ProgramEnd end = runProgram({"sh", "-c", "tee /dev/stderr"}, bytes);
    EXPECT_TRUE(end.output == bytes);
    EXPECT_TRUE(end.errors == bytes);
}

// Others may have read from the file before; what it had is not appended to.
TEST(Program, WorksOnOpenFiles) {
    const FileHandle input = createUnnamedFile(), output = createUnnamedFile();
    std::fputs("given", input.get());
    std::fflush(input.get());
    const ProgramEnd end =
        runProgram({"sh", "-c", "cat; echo $1 >&2", "sh", "said"}, input.get(), output.get());
    std::string got(6, '\0');
    std::rewind(output.get());
    got.resize(std::fread(got.data(), 1, got.size(), output.get()));
    EXPECT_EQ(got, "given");
    EXPECT_EQ(end.errors, "said\n");
    EXPECT_TRUE(end.output.empty());
    EXPECT_FALSE(hasName(input.get()));
}

TEST(Program, SaysHowItEnded) {
    EXPECT_EQ(runProgram({"sh", "-c", "exit 3"}, "").status, 3);
    EXPECT_EQ(runProgram({"sh", "-c", "kill -9 $$"}, "").status, 128 + 9);
}

TEST(Program, FailsWhereThereIsNone) {
    EXPECT_THROW(runProgram({"/no/such/program"}, ""), Failure);
}
