#include "platform/ResourceChain.h"

#include "tests/support/setVariable.h"

#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

static const std::vector<StringResource> strings = {{1, 1031, "eins \u00fc"},
                                                    {1, 1033, "one"},
                                                    {1, 1036, "un"},
                                                    {2, 1031, "zwei"},
                                                    {3, 1033, "three"}};
static const std::vector<StringResource> laterStrings = {
    {2, 1036, "deux"}, {4, 1041, "yon"}, {4, 1049, "chetyre"}};
static constexpr unsigned char picture[] = {'B', 'M', 0};
static const std::vector<BinaryResource> bitmaps = {{7, 1031, picture, 2}};
static const std::vector<BinaryResource> icons = {{7, 1031, picture, 1}, {7, 1033, picture, 3}};
static const std::vector<DialogResource> dialogs = {{7, 1031, 9, 9, "sieben", "", 8, {}, {}},
                                                    {7, 1033, 9, 9, "seven", "", 8, {}, {}}};
static const std::vector<DialogResource> laterDialogs = {{7, 1036, 9, 9, "sept", "", 8, {}, {}}};

// Strings 1 to 5, the sizes of icon 7 and bitmap 7, the first language of string 2, and the title
// of dialog 7.
static std::string answers() {
    std::ostringstream all;
    for (unsigned id = 1; id <= 5; ++id) {
        all << ResourceChain::string(id) << ',';
    }
    const std::vector<unsigned> languages = ResourceChain::stringLanguages(2);
    all << ResourceChain::icon(7).size() << ResourceChain::bitmap(7).size();
    all << ',' << (languages.empty() ? 0 : languages[0]);
    const DialogResource* const dialog = ResourceChain::dialog(7);
    all << ',' << (dialog == nullptr ? "" : dialog->title);
    return all.str();
}

// The language is that of the first variable that is set.
TEST(ResourceChain, PrefersTheUsersLanguageThenEnglishThenAny) {
    const ResourceLibrary library(strings, bitmaps, icons, dialogs);
    const std::string german = "eins \xfc,zwei,three,,,12,1031,sieben";
    const std::string french = "un,zwei,three,,,32,1031,seven",
                      english = "one,zwei,three,,,32,1031,seven";
    for (const auto& [all, messages, lang, expected] :
         {std::tuple{"", "", "", english}, std::tuple{"", "", "de_DE", german},
          std::tuple{"", "fr", "de", french}, std::tuple{"C", "fr", "de", english},
          std::tuple{"de", "en", "fr", german}}) {
        setVariable("LC_ALL", all);
        setVariable("LC_MESSAGES", messages);
        setVariable("LANG", lang);
        EXPECT_EQ(answers(), expected);
    }
    EXPECT_EQ(ResourceChain::icon(7).data(), picture);
    EXPECT_EQ(ResourceChain::stringLanguages(1), (std::vector<unsigned>{1031, 1033, 1036}));
}

TEST(ResourceChain, AsksTheLibraryLoadedLastAndForgetsItWhenItGoes) {
    setVariable("LC_ALL", "de");
    std::optional<ResourceLibrary> first, second;
    first.emplace(strings, bitmaps, icons, dialogs);
    second.emplace(laterStrings, std::span(icons), std::span(bitmaps), laterDialogs);
    EXPECT_EQ(answers(), "eins \xfc,deux,three,yon,,21,1036,sept");
    first.reset();  // from under the other one
    EXPECT_EQ(answers(), ",deux,,yon,,21,1036,sept");
    second.reset();
    EXPECT_EQ(answers(), ",,,,,00,0,");
}
