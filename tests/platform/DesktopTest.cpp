#include "platform/Desktop.h"

#include "platform/CWnd.h"
#include "platform/DialogResource.h"

#include <gtest/gtest.h>

TEST(Desktop, IsStandardErrorAsLongAsNoneIsInstalled) {
    EXPECT_EQ(Desktop::install(nullptr), nullptr);
    testing::internal::CaptureStderr();
    EXPECT_EQ(AfxGetMainWnd()->MessageBox("gegenw\xe4rtig", "Fendra", 0x30), IDOK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Fendra: gegenw\u00e4rtig\n");
}
