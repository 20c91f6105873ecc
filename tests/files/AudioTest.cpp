#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

struct AudioCase {
    std::string ending;
    Encoding encoding;
    std::string format;
    int bits;  // of an integer; 0: floating point of 64 bits; -1: of 32 bits
};

class AudioRoundTrip : public testing::TestWithParam<AudioCase> {
protected:
    // Values that the encoding holds exactly, with both ends of an integer's range.
    static std::vector<double> exactSamples() {
        std::mt19937 random(3);
        const int bits = GetParam().bits;
        const double steps = std::ldexp(1.0, (bits > 0 ? bits : 24) - 1);
        std::vector<double> samples = {-1.0, 1.0 - 1.0 / steps, 0.0, -1.0 / steps};
        while (samples.size() < 60000) {
            samples.push_back(std::floor(std::uniform_real_distribution(-steps, steps)(random)) /
                              steps);
        }
        if (bits <= 0) {
            samples[4] = 0x1p100;
            samples[5] = bits == 0 ? 0.1 : 0.5;
        }
        return samples;
    }
};

TEST_P(AudioRoundTrip, GivesTheSameSamplesBack) {
    const TemporaryFolder folder;
    const std::vector<double> samples = exactSamples();
    const std::string path = folder.path("s" + GetParam().ending);
    writeSignal(path, samples, resultInfo(3, 44100), GetParam().encoding);

    const auto reader = openSignal(path, {});
    EXPECT_EQ(reader->info().format, GetParam().format);
    EXPECT_EQ(reader->info().channels, 3);
    EXPECT_EQ(reader->info().rate, 44100);
    EXPECT_EQ(readSamples(*reader), samples);
    const std::string bytes = folder.read("s" + GetParam().ending);
    EXPECT_EQ(bytes.find("PEAK"), std::string::npos)
        << "a time stamp: equal results, unequal files";

    folder.write("cut" + GetParam().ending, bytes.substr(0, bytes.size() / 2));
    expectFailure([&] { openSignal(folder.path("cut" + GetParam().ending), {}); },
                  {"cut" + GetParam().ending, "is cut off", "copy it again"});
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
    writeSignal(folder.path("s.wav"), {0.5, -0.75, 16384.5 / 32768}, resultInfo(1, 8000),
                Encoding::pcm16);
    const std::string bytes = folder.read("s.wav");
    EXPECT_EQ(bytes.substr(bytes.size() - 6), std::string("\x00\x40\x00\xa0\x00\x40", 6));
}

struct Misfit {
    double value;
    Encoding encoding;
    std::string shown;
};

TEST(Audio, NamesWhatDoesNotFitAndNeverClips) {
    const TemporaryFolder folder;
    std::vector<double> samples(40000, 0.25);
    for (const Misfit& misfit :
         {Misfit{1.0, Encoding::pcm16, "1"}, Misfit{-1.5, Encoding::pcm24, "-1.5"},
          Misfit{std::nan(""), Encoding::pcm32, "nan"}, Misfit{-HUGE_VAL, Encoding::pcm16, "-inf"},
          Misfit{1e39, Encoding::float32, "1e+39"}}) {
        samples[33333] = misfit.value;
        expectFailure(
            [&] {
                writeSignal(folder.path("s.wav"), samples, resultInfo(2, 8000), misfit.encoding);
            },
            {"s.wav, sample 16667, channel 2: " + misfit.shown + " does not fit", "float64"});
        EXPECT_EQ(folder.count(), 0);
    }
}

TEST(Audio, NamesTheFirstNonfiniteSample) {
    const TemporaryFolder folder;
    const ResultInfo info = resultInfo(2, 8000);
    const std::vector<double> samples = {0, 1, 2, HUGE_VAL, 4, 5};
    const std::string path = folder.path("s.aiff");
    writeSignal(path, samples, info);
    expectFailure([&] { openSignal(path, {}); },
                  {"s.aiff, sample 2, channel 2: inf", "--allow-nonfinite"});
    ReadOptions options;
    options.allowNonfinite = true;
    EXPECT_EQ(readSamples(*openSignal(path, options)), samples);
}

// A stream's header leaves the length open; the samples go to the end of the file.
TEST(Audio, ReadsAStreamOfOpenLength) {
    const TemporaryFolder folder;
    const std::vector<double> samples = {0.25, 0.5, -0.5};
    writeSignal(folder.path("s.wav"), samples, resultInfo(1, 8000));
    std::string bytes = folder.read("s.wav");
    bytes.replace(bytes.find("data") + 4, 4, "\xff\xff\xff\xff");
    EXPECT_EQ(readSamples(*openSignal(folder.write("s.wav", bytes), {})), samples);
}

TEST(Audio, RejectsWhatTheLibraryRefusesAndWhatIsEmpty) {
    const TemporaryFolder folder;
    std::string junk = "RIFF\x10\x10\x10\x10WAVEfmt " + std::string(99, '\x7f');
    expectFailure([&] { openSignal(folder.write("j.wav", junk), {}); },
                  {"j.wav: the audio cannot be read (", "save it anew"});
    writeSignal(folder.path("e.wav"), {}, resultInfo(1, 8000));
    expectFailure([&] { openSignal(folder.path("e.wav"), {}); }, {"no samples"});
}

TEST(Audio, IsWrittenLongerThanFourGigabytes) {
    const TemporaryFolder folder;
    ResultInfo info = resultInfo(1, 8000);
    info.samples = std::int64_t{1} << 29;
    createSignal(folder.path("s.wav"), false, Encoding::automatic, info)->finish({});
    EXPECT_EQ(folder.read("s.wav").substr(0, 4), "RF64");
    expectFailure([&] { createSignal(folder.path("s.aif"), false, Encoding::automatic, info); },
                  {"s.aif", "4 GiB", ".w64"});
}

struct Refusal {
    std::string name;
    Encoding encoding;
    double rate;
    int channels;
    std::vector<std::string> parts;
};

TEST(CreateSignal, SaysWhatToUseInstead) {
    const TemporaryFolder folder;
    const Encoding plain = Encoding::automatic;
    for (const Refusal& refusal :
         {Refusal{"s.mp3", plain, 8000, 1, {"s.mp3", "ending", ".wav .w64", ".csv"}},
          Refusal{"s", plain, 8000, 1, {"ending", ".wav"}},
          Refusal{"s.flac", Encoding::float64, 8000, 1, {"FLAC cannot hold float64", ".wav"}},
          Refusal{"s.flac", plain, 8000, 9, {"s.flac", "9", ".wav"}},
          Refusal{"s.wav", plain, 0, 1, {"s.wav", "sample rate", "--rate", ".csv"}},
          Refusal{"s.wav", plain, 0.5, 1, {"whole Hz, not 0.5", ".csv"}},
          Refusal{"no/a.csv", plain, 8000, 1, {"cannot write", "no/a.csv", "No such", "check"}},
          Refusal{"s.csv", Encoding::pcm16, 8000, 1, {"s.csv is text", "ending"}}}) {
        const ResultInfo info = resultInfo(refusal.channels, refusal.rate);
        const std::string path = folder.path(refusal.name);
        expectFailure([&] { createSignal(path, false, refusal.encoding, info); }, refusal.parts);
        EXPECT_EQ(folder.count(), 0);
    }
}

// Damaged files of every kind: whatever comes out, nothing crashes, and a refusal is a Failure.
TEST(OpenSignal, WithstandsDamagedFiles) {
    const TemporaryFolder folder;
    std::mt19937 random(11);
    for (const std::string ending : {".wav", ".w64", ".rf64", ".aiff", ".flac", ".csv", ".txt"}) {
        writeSignal(folder.path("s" + ending), std::vector<double>(300, 0.25), resultInfo(1, 8000));
        const std::string bytes = folder.read("s" + ending);
        for (std::size_t i = 0; i < 100; ++i) {
            std::string damaged = bytes.substr(0, bytes.size() * (4 - i % 4) / 4);
            for (int k = 0; k < 3; ++k) {
                damaged[random() % std::min<std::size_t>(damaged.size(), 120)] =
                    static_cast<char>(random());
            }
            const std::string path = folder.write("d" + ending, damaged);
            try {
                readSamples(*openSignal(path, {}));
            } catch (const Failure& failure) {
                EXPECT_EQ(std::strchr(failure.what(), '\n'), nullptr);
            }
        }
    }
}
