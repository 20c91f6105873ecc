#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "workbench/files/Format.h"
#include "workbench/files/parts/PartProgram.h"

#include <gtest/gtest.h>

#include <limits>

using Limits = std::numeric_limits<double>;

// Two channels with what a way through digits or a narrower type would change.
static const std::vector<double> hard = {
    1.0 / 3.0,     -0.0,           0x1.fffffffffffffp-1, 5e-324,
    Limits::max(), 0.1 + 0.2,      Limits::min(),        9007199254740993.0,
    -1e22,         1.7976931e-308, 123456.78901,         -2.5e-7};

static bool isThere(const Format& format) {
    return format.program == nullptr ||
           failureOf([&] { return format.program->version(format.name); }).empty();
}

// The endings of all formats that hold doubles and can be written here.
static std::vector<std::string> endingsOfDoubles() {
    std::vector<std::string> endings;
    for (const Format* format : Format::all()) {
        if (format->create != nullptr && format->stored == Encoding::float64 && isThere(*format)) {
            endings.insert(endings.end(), format->endings.begin(), format->endings.end());
        }
    }
    return endings;
}

// All channels of a file; in UFF each is a signal by itself, too.
static std::unique_ptr<SignalReader> channelsOf(const std::string& path) {
    ReadOptions options;
    options.part = path.ends_with(".uff") || path.ends_with(".unv") ? "all" : "";
    return openSignal(SourceName(path), options);
}

// Writes what a file holds into another one.
static std::string rewritten(const TemporaryFolder& folder, const std::string& from,
                             const std::string& name) {
    const auto reader = channelsOf(from);
    writeSignal(folder.path(name), readSamples(*reader), resultInfo(reader->info().channels));
    return folder.path(name);
}

TEST(FormatPairs, KeepEachBitOfADouble) {
    const TemporaryFolder folder;
    for (const std::string& first : endingsOfDoubles()) {
        const std::string from = folder.path("from" + first);
        writeSignal(from, hard, resultInfo(2));
        for (const std::string& second : endingsOfDoubles()) {
            const std::string through = rewritten(folder, from, first.substr(1) + second);
            const auto reader = channelsOf(through);
            EXPECT_EQ(reader->info().channels, 2) << first << " " << second;
            EXPECT_TRUE(sameBits(readSamples(*reader), hard)) << first << " " << second;
        }
    }
}
