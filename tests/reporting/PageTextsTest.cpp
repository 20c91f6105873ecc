#include "workbench/reporting/PageTexts.h"

#include "workbench/messages/Printable.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>

// Where words are the same in two languages.
static bool mayBeEnglish(PageText text) {
    static const std::set<PageText> same = {PageText::signal,  PageText::format,  PageText::block,
                                            PageText::module,  PageText::channel, PageText::gain,
                                            PageText::quietest};
    return same.contains(text);
}

static std::string placeholders(std::string_view text) {
    std::string found;
    for (const char* const name : {"{0}", "{1}"}) {
        found += text.find(name) == std::string_view::npos ? "" : name;
    }
    return found;
}

static void expectTranslated(const PageTextRow& row, PageLanguage language) {
    const std::string_view text = pageText(row.text, language);
    EXPECT_TRUE(!text.empty() && isUtf8(text)) << row.english;
    EXPECT_TRUE(text != row.english || mayBeEnglish(row.text)) << row.english;
    EXPECT_EQ(placeholders(text), placeholders(row.english)) << row.english;
}

TEST(PageTexts, AreThereInAllLanguages) {
    ASSERT_EQ(pageTexts().size(), static_cast<std::size_t>(PageText::last) + 1);
    for (std::size_t i = 0; i < pageTexts().size(); ++i) {
        const PageTextRow& row = pageTexts()[i];
        ASSERT_EQ(row.text, static_cast<PageText>(i)) << row.english;
        EXPECT_FALSE(pageText(row.text, PageLanguage::english).empty()) << i;
        expectTranslated(row, PageLanguage::german);
        expectTranslated(row, PageLanguage::french);
    }
}
