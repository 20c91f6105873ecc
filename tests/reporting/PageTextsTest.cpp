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
    return same.count(text) != 0;
}

static std::string placeholders(std::string_view text) {
    std::string found;
    for (const char* const name : {"{0}", "{1}"}) {
        found += text.find(name) == std::string_view::npos ? "" : name;
    }
    return found;
}

TEST(PageTexts, AreThereInAllLanguages) {
    ASSERT_EQ(pageTexts().size(), static_cast<std::size_t>(PageText::last) + 1);
    for (std::size_t i = 0; i < pageTexts().size(); ++i) {
        const PageTextRow& row = pageTexts()[i];
        ASSERT_EQ(row.text, static_cast<PageText>(i)) << row.english;
        const std::string_view english = pageText(row.text, PageLanguage::english);
        ASSERT_FALSE(english.empty()) << i;
        for (const PageLanguage language : {PageLanguage::german, PageLanguage::french}) {
            const std::string_view text = pageText(row.text, language);
            EXPECT_TRUE(!text.empty() && isUtf8(text)) << english;
            EXPECT_TRUE(text != english || mayBeEnglish(row.text)) << english;
            EXPECT_EQ(placeholders(text), placeholders(english)) << english;
        }
    }
}
