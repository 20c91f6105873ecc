#include "workbench/batch/BatchLine.h"

#include <gtest/gtest.h>

#include <string>

static BatchLine whole() {
    BatchLine line;
    line.name = "a \"b\"/\xc3\xa4.wav";
    line.inputs = {{"in/a.wav", "12"}, {"k.wav", "34"}};
    line.result = BatchLine::Result{
        "out/a.wav", "56", "78", 6, std::int64_t{1} << 40, -(std::int64_t{1} << 62)};
    line.settings = R"({"pad":true,"options":"x"})";
    line.seconds = 0.1;
    line.warnings = {"one", "two"};
    line.rerun = "fendra deconvolve";
    return line;
}

TEST(BatchLine, ComesBackFromItsText) {
    const std::optional<BatchLine> back = BatchLine::of(whole().text());
    ASSERT_TRUE(back);
    EXPECT_EQ(back->text(), whole().text());
    EXPECT_EQ(back->name, whole().name);
    EXPECT_EQ(back->result->modified, whole().result->modified);
    EXPECT_TRUE(back->asksTheSame(whole()));
}

// A program that is killed may leave any part of a line. What is not of the right kind is not a
// line either.
TEST(BatchLine, IsWholeOrNone) {
    const std::string text = whole().text();
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_FALSE(BatchLine::of(text.substr(0, length))) << length;
    }
    for (const char* odd :
         {"[]", "1", "null", "{}", R"({"name":1})", R"({"name":"a","inputs":3})",
          R"({"name":"a","inputs":[{"file":"b"}]})", R"({"name":"a","result":[]})",
          R"({"name":"a","result":{"file":"b","sha256":"c","bytes":"d"}})",
          R"({"name":"a","warnings":"b"})", R"({"name":"a","seconds":"b"})"}) {
        EXPECT_FALSE(BatchLine::of(odd)) << odd;
    }
    EXPECT_FALSE(BatchLine::of(R"({"name":"a","settings":{"b":)" + std::string(200000, '[') +
                               std::string(200000, ']') + "}}"));
}

TEST(BatchLine, AsksTheSameOfTheSameBytesAlone) {
    BatchLine moved = whole(), otherInput = whole(), otherSettings = whole(), oneInput = whole();
    moved.inputs[0].file = "elsewhere.wav";
    otherInput.inputs[1].sha256 = "35";
    otherSettings.settings = R"({"pad":false,"options":"x"})";
    oneInput.inputs.pop_back();
    EXPECT_TRUE(whole().asksTheSame(moved));
    EXPECT_FALSE(whole().asksTheSame(otherInput));
    EXPECT_FALSE(whole().asksTheSame(otherSettings));
    EXPECT_FALSE(whole().asksTheSame(oneInput));
}
