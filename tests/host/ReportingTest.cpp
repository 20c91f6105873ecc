#include "host/LaunchHelp.h"
#include "host/TCError.h"
#include "tests/support/RunWatcher.h"

#include <gtest/gtest.h>

#include <thread>

// Reports go to what the process installed, and to standard error in UTF-8 when that is gone.
TEST(Reporting, GoesToWhatIsInstalledElseToStandardError) {
    CString told;
    TCError::install([&told](const TCError& error) { told = error.source + "|" + error.text; });
    installHelpLauncher(
        [&told](const CString& file, const CString& key) { told = file + "#" + key; });
    const TCError conflict("Fendra3", "Versionskonflikt!", 100);
    EXPECT_STREQ(told, "Fendra3|Versionskonflikt!");
    LaunchHelp("fendra.hlp", "fold");
    EXPECT_STREQ(told, "fendra.hlp#fold");
    EXPECT_TRUE(TCError::install({}) && installHelpLauncher({}));

    testing::internal::CaptureStderr();
    const TCError german("Fendra", "gegenw\xe4rtig", -5), empty(nullptr, nullptr, 0);
    LaunchHelp("fendra.hlp", "fold");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Fendra: gegenw\u00e4rtig (-5)\n:  (0)\nhelp: page \"fold\" of \"fendra.hlp\"\n");
}

// An observer is that of the thread that installed it, and of no other.
TEST(Reporting, OfRunsGoesToTheObserverOfTheThread) {
    RunWatcher watcher;
    std::thread other([] {
        EXPECT_EQ(RunObserver::current(), nullptr);
        RunObserver::reportFailure(RunFailure::refused);  // to nobody
    });
    other.join();
    {
        RunWatcher inner;
        RunObserver::reportFailure(RunFailure::memoryExhausted);
        EXPECT_EQ(inner.failures, "memory ");
    }
    RunObserver::reportFailure(RunFailure::refused);
    EXPECT_EQ(watcher.failures, "refused ");
}
