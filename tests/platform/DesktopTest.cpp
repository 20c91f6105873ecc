#include "platform/Desktop.h"

#include "platform/CWnd.h"

#include <gtest/gtest.h>

struct ScriptedDesktop : Desktop {
    int messageBox(const CString& text, const CString& caption, unsigned style) override {
        return caption == "caption" && text == "text" ? static_cast<int>(style) : 0;
    }
};

TEST(Desktop, GetsTheMessagesWhileItIsInstalled) {
    ScriptedDesktop outer, inner;
    EXPECT_EQ(Desktop::install(&outer), nullptr);
    EXPECT_EQ(Desktop::install(&inner), &outer);
    EXPECT_EQ(AfxGetMainWnd()->MessageBox("text", "caption", 48), 48);
    EXPECT_EQ(Desktop::install(nullptr), &inner);
    testing::internal::CaptureStderr();
    EXPECT_EQ(AfxGetMainWnd()->MessageBox("gegenw\xe4rtig", "Fendra", 0x30), IDOK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Fendra: gegenw\u00e4rtig\n");
}
