#include "workbench/reporting/html.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

TEST(HtmlText, HoldsNoMarkup) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"a.csv", "a.csv"},
        {"</title><script>alert('x')</script>",
         "&lt;/title&gt;&lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt;"},
        {"\" onerror=\"x", "&quot; onerror=&quot;x"},
        {"R&D &lt;", "R&amp;D &amp;lt;"},
        {"\xc3\xa9\xe2\x82\xac", "\xc3\xa9\xe2\x82\xac"},
        {"a\nb\x1b[0m", "a?b?[0m"},
        {"\xff<", "?&lt;"}};
    for (const auto& [text, html] : rows) {
        EXPECT_EQ(htmlText(text), html);
    }
    for (int byte = 0; byte < 256; ++byte) {
        const std::string html = htmlText(std::string(1, static_cast<char>(byte)));
        EXPECT_EQ(html.find_first_of("<>\"'\n\r\t"), std::string::npos) << byte;
        EXPECT_TRUE(html.size() == 1 || html.back() == ';') << byte;
    }
}

// What stands in the element is what was put there, and nothing in it is seen by whoever reads the
// page around it.
TEST(ScriptData, EndsNoElementAndSaysTheSame) {
    const std::vector<std::string> texts = {
        "plain",        "</script><script>x", "<!-- <script>",   "]]>", "\xe2\x80\xa8\xe2\x80\xa9",
        "a\nb\x01\x7f", "${x}`'\"\\",         "\xf0\x9f\x98\x80"};
    for (const std::string& text : texts) {
        const nlohmann::ordered_json value = {{text, {text, 1.5, nullptr}}};
        const std::string data = scriptData(value);
        EXPECT_EQ(data.find_first_of("<>&"), std::string::npos) << data;
        EXPECT_TRUE(std::all_of(data.begin(), data.end(), [](char letter) {
            return letter >= ' ' && letter <= '~';
        })) << data;
        EXPECT_EQ(nlohmann::ordered_json::parse(data), value);
    }
    EXPECT_EQ(scriptData("\xff"), "\"\\ufffd\"");
}

// The digests of FIPS 180-4's examples, in base 64.
TEST(PolicySource, IsTheDigestOfTheText) {
    EXPECT_EQ(policySource(""), "'sha256-47DEQpj8HBSa+/TImW+5JCeuQeRkm5NMpJWZG3hSuFU='");
    EXPECT_EQ(policySource("abc"), "'sha256-ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0='");
    EXPECT_EQ(policySource("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "'sha256-JI1qYdIGOLjlwCaTDD5gOaM85Flk/yFn9uzt1BnbBsE='");
}
