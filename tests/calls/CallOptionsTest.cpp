#include "workbench/calls/CallOptions.h"

#include "tests/calls/samples.h"
#include "workbench/calls/CompareCall.h"
#include "workbench/calls/FoldCall.h"
#include "workbench/calls/sweepCall.h"
#include "workbench/methods/FendraSettings.h"

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

// What the options of a command are read into.
struct Read {
    std::string text;
    std::int64_t number = 0;
    bool flag = false, acted = false;

    explicit Read(const CallOptions& options) {
        readOptions(
            "command", options,
            [this](CLI::App& command) {
                command.add_option("--text", text);
                command.add_option("--a-number", number);
                command.add_flag("--flag", flag);
            },
            [this] { acted = true; });
    }
};

}  // namespace

TEST(CallOptions, AreReadAsWordsOfTheCommandLine) {
    for (const char* value : {"a b", "--flag", "x=y", "-", "'\"\\", "--", "\xff\n"}) {
        const Read read(CallOptions{{"text", value}, {"a-number", "-5"}});
        EXPECT_TRUE(read.acted && read.text == value && read.number == -5 && !read.flag) << value;
    }
    EXPECT_TRUE(Read(CallOptions{{"flag", ""}}).flag);
}

// What the complaint about options says.
template <typename Call>
static std::string complaintAbout(const Call& call) {
    try {
        call();
    } catch (const WrongOption& error) {
        return error.what();
    }
    return "none";
}

namespace {

struct Wrong {
    const char* command;
    CallOptions options;
    const char* text;
};

}  // namespace

static std::string complaintAbout(const Wrong& wrong) {
    const std::string command = wrong.command;
    return complaintAbout([&] {
        if (command == "compare") {
            const CompareCall call(fendra(), wrong.options);
        } else if (command == "sweep") {
            static_cast<void>(sweepOf(wrong.options));
        } else {
            const FoldCall call(
                fendra(),
                command == "convolve" ? FendraSettings::convolution : FendraSettings::deconvolution,
                wrong.options);
        }
    });
}

class WrongOptions : public testing::TestWithParam<Wrong> {};

TEST_P(WrongOptions, AreRefusedWithASentence) {
    const std::string text = complaintAbout(GetParam());
    EXPECT_NE(text.find(GetParam().text), std::string::npos) << text;
    EXPECT_EQ(text.find('\n'), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    OfEachCommand, WrongOptions,
    testing::Values(
        Wrong{"convolve", {{"", "1"}}, "is not an option"},
        Wrong{"convolve", {{"--pad", ""}}, "without dashes"},
        Wrong{"convolve", {{"pad pad", ""}}, "is not an option"},
        Wrong{"convolve", {{"pad=1", ""}}, "is not an option"},
        Wrong{"convolve", {{"h", ""}}, "is not an option"},
        Wrong{"convolve", {{"help", ""}}, "is not an option"},
        Wrong{"convolve", {{"output", "x.csv"}}, "is not an option"},
        Wrong{"convolve", {{"module", "x.so"}}, "is not an option"},
        Wrong{"convolve", {{"domian", "time"}}, "did you mean --domain?"},
        Wrong{"convolve", {{"rate", "x"}}, "\"x\" is not a sampling rate"},
        Wrong{"convolve", {{"domain", ""}}, "--domain needs a value"},
        Wrong{"convolve", {{"rate", "1"}, {"rate", "2"}}, "given 2 times"},
        Wrong{"convolve", {{"pad", ""}, {"circular", ""}, {"block", "4"}}, "--pad"},
        Wrong{"deconvolve", {{"max-iterations", "7"}}, "it goes with --method van-cittert"},
        Wrong{"deconvolve", {{"jobs", "0"}}, "number of jobs"},
        Wrong{"compare", {{"methods", "spectral,spectrl"}}, "did you mean spectral?"},
        Wrong{"compare", {{"methods", "spectral"}, {"strength", "1"}}, "--method regularized"},
        Wrong{"compare", {{"auto", ""}}, "is not an option of compare"},
        Wrong{"compare", {{"truth", "x.csv"}}, "is not an option of compare"},
        Wrong{"sweep", {{"frequencies", "1:2"}, {"seconds", "1"}}, "--rate"},
        Wrong{"sweep", {{"frequencies", "1:5"}, {"seconds", "1"}, {"rate", "9"}}, "4.5 Hz"},
        Wrong{
            "sweep", {{"frequencies", "1:2"}, {"seconds", "1e9"}, {"rate", "9"}}, "to 2147483647"},
        Wrong{"sweep",
              {{"frequencies", "1:2"}, {"seconds", "1"}, {"rate", "9"}, {"fade", "0.6"}},
              "at most 0.5"}));
