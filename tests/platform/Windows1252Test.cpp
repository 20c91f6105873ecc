#include "platform/Windows1252.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

// The 27 characters that it has where Latin-1 has controls, the five controls that are left, and a
// few characters that the two share.
TEST(Windows1252, DiffersFromLatin1Between80And9F) {
    const std::string utf8 =
        "€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ\u0081\u008d\u008f\u0090\u009d äöüßÄÖÜéµ A~";
    const CString bytes(
        "\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8a\x8b\x8c\x8e\x91\x92\x93\x94\x95\x96\x97\x98\x99"
        "\x9a\x9b\x9c\x9e\x9f\x81\x8d\x8f\x90\x9d \xe4\xf6\xfc\xdf\xc4\xd6\xdc\xe9\xb5 A~");
    EXPECT_EQ(fromUtf8(utf8), bytes);
    EXPECT_EQ(toUtf8(bytes), utf8);
}

TEST(Windows1252, HasQuestionMarksForWhatItCannotSay) {
    const std::vector<std::pair<std::string, const char*>> cases = {
        {"\u0100 \u03b1\u2192 \U0001f600", "? ?? ?"},      // not in the character set
        {"\xf0\x9f\x98", "?"},                             // cut off
        {"\xc3(\xe2\x82x", "?(?x"},                        // broken off: the next byte counts anew
        {"\x80\xbf", "??"},                                // continuation without a start
        {"\xc0\xaf\xc1\x81\xe0\x80\xaf", "???"},           // longer than need be
        {"\xed\xa0\x80\xf4\x90\x80\x80\xf7\xff", "????"},  // surrogate, beyond Unicode, no lead
    };
    for (const auto& [utf8, expected] : cases) {
        const std::vector<char> exact(utf8.begin(), utf8.end());  // reads beyond its end show
        EXPECT_STREQ(fromUtf8({exact.data(), exact.size()}), expected);
    }
}
