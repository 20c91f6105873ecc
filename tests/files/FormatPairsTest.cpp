#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "workbench/files/Format.h"

#include <gtest/gtest.h>

#include <limits>

using Limits = std::numeric_limits<double>;

// Two channels with what a way through digits or a narrower type would change.
static const std::vector<double> hard = {
    1.0 / 3.0,     -0.0,           0x1.fffffffffffffp-1, 5e-324,
    Limits::max(), 0.1 + 0.2,      Limits::min(),        9007199254740993.0,
    -1e22,         1.7976931e-308, 123456.78901,         -2.5e-7};

// The endings of all formats that hold doubles.
static std::vector<std::string> endingsOfDoubles() {
    std::vector<std::string> endings;
    for (const Format* format : Format::all()) {
        if (format->create != nullptr && format->stored == Encoding::float64) {
            endings.insert(endings.end(), format->endings.begin(), format->endings.end());
        }
    }
    return endings;
}

// Writes what a file holds into another one.
static std::string rewritten(const TemporaryFolder& folder, const std::string& from,
                             const std::string& name) {
    const auto reader = openSignal(SourceName(from), {});
    writeSignal(folder.path(name), readSamples(*reader),
                resultInfo(reader->info().channels, reader->info().rate));
    return folder.path(name);
}

TEST(FormatPairs, KeepEachBitOfADouble) {
    const TemporaryFolder folder;
    for (const std::string& first : endingsOfDoubles()) {
        const std::string from = folder.path("from" + first);
        writeSignal(from, hard, resultInfo(2));
        for (const std::string& second : endingsOfDoubles()) {
            const std::string through = rewritten(folder, from, first.substr(1) + second);
            const auto reader = openSignal(SourceName(through), {});
            EXPECT_EQ(reader->info().channels, 2) << first << " " << second;
            EXPECT_TRUE(sameBits(readSamples(*reader), hard)) << first << " " << second;
        }
    }
}
