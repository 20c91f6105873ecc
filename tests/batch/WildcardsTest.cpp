#include "workbench/batch/wildcards.h"

#include <gtest/gtest.h>

#include <fnmatch.h>
#include <random>
#include <string>

static std::string textOf(std::mt19937& random, const std::string& letters, std::size_t longest) {
    std::string text(random() % (longest + 1), ' ');
    for (char& letter : text) {
        letter = letters[random() % letters.size()];
    }
    return text;
}

// The shell's own rules. Of few letters, so that many pairs match, with stars that have to give
// back what they took, sets, ranges, brackets without an end, and names with a dot at the start.
TEST(Wildcards, AreThoseOfTheShell) {
    std::mt19937 random(1);
    int matching = 0;
    for (int i = 0; i < 200000; ++i) {
        const std::string name = textOf(random, "abc.", 6);
        const std::string pattern = textOf(random, "ab.**?[]!-c", 7);
        if (pattern.find("[.") != std::string::npos) {
            continue;  // a collating symbol, which names of files have no use for
        }
        const bool expected =
            fnmatch(pattern.c_str(), name.c_str(), FNM_PERIOD | FNM_NOESCAPE) == 0;
        ASSERT_EQ(matches(name, pattern), expected) << pattern << " on " << name;
        matching += expected ? 1 : 0;
    }
    EXPECT_GT(matching, 2000);
}
