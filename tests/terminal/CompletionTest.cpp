#include "workbench/system/offer.h"
#include "workbench/terminal/completionScript.h"
#include "workbench/terminal/help.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

namespace {

using Kind = CompletedValue::Kind;

// A program with an option of each kind, and with what this system might lack.
class Completion : public testing::Test {
protected:
    Completion() {
        one->add_option("SIGNAL", text)->type_name("FILE");
        one->add_flag("--pad", flag, "append zeros; no more");
        one->add_option("-o,--output", text, "write it here")->type_name("FILE");
        one->add_option("--into", text, "keep it there")->type_name("FOLDER");
        one->add_option("--block", text, "of N samples")->type_name("N");
        one->add_option("--domain", text, "time or frequency")
            ->check(choice({"time", "frequency"}))
            ->type_name("");
        one->add_option("--origin", text, "where zero is")
            ->check(settingValue({"auto", "NUMBER"}, true, [](const auto&) { return ""; }))
            ->type_name("");
        one->add_option("--methods", list, "some of them")
            ->delimiter(',')
            ->check(choice({"a", "b"}))
            ->type_name("");
        one->add_option("--hidden-option", text, "not here")->group(groupWhere(false, "Options"));
        program.add_subcommand("hidden-command", "Not here.")->group(groupWhere(false, "Options"));
        one->add_subcommand("below", "Do it\nwith many.");
    }

    [[nodiscard]] CompletedOption option(const std::string& name) const {
        const CompletedCommand command = CompletionTable(program).commands.at(0);
        for (const CompletedOption& each : command.options) {
            if (each.names.back() == name) {
                return each;
            }
        }
        return {};
    }

    CLI::App program{"Sample.", "fendra"};
    CLI::App* one = program.add_subcommand("one", "It's [a]: \\b.\nIn detail.");
    std::string text;
    std::vector<std::string> list;
    bool flag = false;
};

}  // namespace

TEST_F(Completion, TellsWhatAValueIs) {
    struct Expected {
        const char* name;
        Kind kind;
        std::vector<std::string> words;
        bool isList;
    };
    const std::vector<Expected> all = {{"--pad", Kind::none, {}, false},
                                       {"--output", Kind::file, {}, false},
                                       {"--into", Kind::folder, {}, false},
                                       {"--block", Kind::number, {}, false},
                                       {"--domain", Kind::words, {"time", "frequency"}, false},
                                       {"--origin", Kind::words, {"auto"}, false},
                                       {"--methods", Kind::words, {"a", "b"}, true}};
    for (const Expected& expected : all) {
        const CompletedOption found = option(expected.name);
        EXPECT_EQ(std::tie(found.value.kind, found.value.words, found.value.isList),
                  std::tie(expected.kind, expected.words, expected.isList))
            << expected.name;
    }
    EXPECT_EQ(option("--output").names, (std::vector<std::string>{"-o", "--output"}));
    EXPECT_EQ(option("--pad").about, "append zeros");
}

TEST_F(Completion, HoldsCommandsWithThoseBelowThem) {
    const CompletionTable table(program);
    ASSERT_EQ(table.commands.size(), 2U);
    EXPECT_EQ(table.program.commands, std::vector<std::string>{"one"});
    EXPECT_EQ(table.commands[0].commands, std::vector<std::string>{"below"});
    EXPECT_EQ(table.commands[0].arguments.at(0).kind, Kind::file);
    EXPECT_EQ(table.commands[1].name, "one below");
    EXPECT_EQ(table.commands[1].about, "Do it");
}

// Beside a name there is room for some words.
TEST_F(Completion, CutsWhatIsLongBetweenWords) {
    std::string words;
    for (int i = 0; i < 40; ++i) {
        words += "word ";
    }
    one->add_option("--long", text, words);
    const std::string about = option("--long").about;
    EXPECT_LE(about.size(), 64U);
    EXPECT_TRUE(about.ends_with("word ...")) << about;
}

TEST_F(Completion, LeavesOutWhatTheSystemLacks) {
    std::vector<std::string> texts = {Help().make_help(&program, "", CLI::AppFormatMode::Normal),
                                      Help().make_help(one, "", CLI::AppFormatMode::Normal)};
    for (const std::string& word : Shell::words()) {
        texts.push_back(Shell::scriptFor(word, CompletionTable(program)));
    }
    for (const std::string& shown : texts) {
        EXPECT_EQ(shown.find("hidden"), std::string::npos) << shown;
    }
    EXPECT_NE(texts.front().find("one"), std::string::npos);
}

// What a shell would take for its own is protected, in each by its rules.
TEST_F(Completion, ProtectsSignsFromTheShell) {
    const CompletionTable table(program);
    EXPECT_NE(zshCompletion(table).find(R"('one:It'\''s \[a\]\: \\b.')"), std::string::npos);
    EXPECT_NE(fishCompletion(table).find(R"(-a one -d 'It\'s [a]: \\b.')"), std::string::npos);
}

TEST(Shells, HoldTheOneOfThisSystem) {
    const std::vector<std::string> words = Shell::words();
    EXPECT_EQ(std::count(words.begin(), words.end(), Offer::here.shell), 1);
}
