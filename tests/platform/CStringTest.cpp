#include "platform/CStringArray.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

TEST(CString, ComparesBytesUpToTheTerminator) {
    EXPECT_TRUE(CString("a\0b", 3) == CString("a") && CString("abc", -1) == CString(nullptr));
    EXPECT_TRUE(CString("V1.91") != CString("v1.91") && "V1.91" != CString("V1.910"));
    EXPECT_GT(CString("\xfc").Compare("z"), 0);  // bytes, not signed characters
}

TEST(CString, FormatsTextsOfAnyLengthAndItself) {
    const std::string longText(5000, 'a');
    CString text;
    text.Format("%s%d", longText.c_str(), 12);
    text.Format("%.3s|%s", static_cast<const char*>(text), static_cast<const char*>(text));
    EXPECT_EQ(text, ("aaa|" + longText + "12").c_str());
}

TEST(CStringArray, ChecksEveryIndex) {
    CStringArray texts;
    EXPECT_EQ(texts.Add("first") + texts.Add("second"), 1);
    EXPECT_THROW(texts[-1], std::out_of_range);
    EXPECT_THROW(texts.GetAt(2), std::out_of_range);
}
