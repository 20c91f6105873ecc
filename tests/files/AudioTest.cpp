#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

struct AudioCase {
    std::string ending;
    Encoding encoding;
    std::string format;
    int bits;  // of an integer; 0: floating point of 64 bits; -1: of 32 bits
};

class AudioRoundTrip : public testing::TestWithParam<AudioCase> {};

}  // namespace

// Values that the encoding holds exactly, with both ends of an integer's range.
static std::vector<double> exactSamples(int bits) {
    std::mt19937 random(3);
    const double steps = std::ldexp(1.0, (bits > 0 ? bits : 24) - 1);
    std::uniform_real_distribution position(-steps, steps);
    std::vector<double> samples = {-1.0, 1.0 - 1.0 / steps, 0.0, -1.0 / steps};
    while (samples.size() < 60000) {
        samples.push_back(std::floor(position(random)) / steps);
    }
    if (bits <= 0) {
        samples[4] = 0x1p100;
        samples[5] = bits == 0 ? 0.1 : 0.5;
    }
    return samples;
}

TEST_P(AudioRoundTrip, GivesTheSameSamplesBack) {
    const auto& [ending, encoding, format, bits] = GetParam();
    const TemporaryFolder folder;
    const std::vector<double> samples = exactSamples(bits);
    writeSignal(folder.path("s" + ending), samples, resultInfo(3, 44100), encoding);

    const auto reader = openSignal(folder.path("s" + ending), {});
    EXPECT_EQ(reader->info().format, format);
    EXPECT_EQ(reader->info().channels, 3);
    EXPECT_EQ(reader->info().rate, 44100);
    EXPECT_EQ(readSamples(*reader), samples);
    const std::string bytes = folder.read("s" + ending);
    EXPECT_EQ(bytes.find("PEAK"), std::string::npos)
        << "a time stamp: equal results, unequal files";

    const std::string cut = folder.write("cut" + ending, bytes.substr(0, bytes.size() / 2));
    EXPECT_EQ(failureOf([&] { openSignal(cut, {}); }).find(cut + " is cut off: "), 0U);
}
INSTANTIATE_TEST_SUITE_P(
    Formats, AudioRoundTrip,
    testing::Values(AudioCase{".wav", Encoding::automatic, "WAV, 64-bit float", 0},
                    AudioCase{".wav", Encoding::pcm16, "WAV, 16-bit PCM", 16},
                    AudioCase{".WAV", Encoding::pcm24, "WAV, 24-bit PCM", 24},
                    AudioCase{".wav", Encoding::pcm32, "WAV, 32-bit PCM", 32},
                    AudioCase{".wav", Encoding::float32, "WAV, 32-bit float", -1},
                    AudioCase{".w64", Encoding::automatic, "W64, 64-bit float", 0},
                    AudioCase{".rf64", Encoding::pcm24, "RF64, 24-bit PCM", 24},
                    AudioCase{".aif", Encoding::automatic, "AIFF, 64-bit float", 0},
                    AudioCase{".aiff", Encoding::pcm16, "AIFF, 16-bit PCM", 16},
                    AudioCase{".flac", Encoding::automatic, "FLAC, 24-bit PCM", 24},
                    AudioCase{".flac", Encoding::pcm16, "FLAC, 16-bit PCM", 16}));

// A half is 0x4000, minus three quarters 0xa000, and 16384.5 of 32768 rounds to even.
TEST(Audio, ScalesIntegersByTheirFullScale) {
    const TemporaryFolder folder;
    const std::vector<double> samples = {0.5, -0.75, 16384.5 / 32768};
    writeSignal(folder.path("s.wav"), samples, resultInfo(), Encoding::pcm16);
    const std::string bytes = folder.read("s.wav");
    EXPECT_EQ(bytes.substr(bytes.size() - 6), std::string("\x00\x40\x00\xa0\x00\x40", 6));
}

TEST(Audio, IsWrittenLongerThanFourGigabytes) {
    const TemporaryFolder folder;
    ResultInfo info = resultInfo();
    info.samples = std::int64_t{1} << 29;
    createSignal(folder.path("s.wav"), false, Encoding::automatic, info)->finish({});
    EXPECT_EQ(folder.read("s.wav").substr(0, 4), "RF64");
    const std::string path = folder.path("s.aif");
    EXPECT_EQ(failureOf([&] { createSignal(path, false, Encoding::automatic, info); }),
              path + ": AIFF holds 4 GiB at the most; use the ending .wav, .w64 or .rf64");
}
