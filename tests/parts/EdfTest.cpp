#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/parts.h"
#include "workbench/parts/edf/EdfScale.h"

#include <chrono>
#include <cmath>

namespace {

struct EdfSignal {
    std::string label = "EEG", unit = "uV", physicalLow = "-3276.8", physicalHigh = "3276.7";
    std::string digitalLow = "-32768", digitalHigh = "32767", perRecord = "2";
    std::vector<int> samples = {-32768, 1, 32767, -1};
};

struct EdfHeader {
    std::string version = "0", reserved, patient = "X X X X", recording = "Startdate X X X X";
    std::string date = "02.03.24", records = "2", duration = "0.3";
};

}  // namespace

static std::string padded(std::string text, std::size_t width) {
    text.resize(width, ' ');
    return text;
}

// A file of two records with these signals, as the format lays it down.
static std::string edf(const std::vector<EdfSignal>& signals, const EdfHeader& header = {}) {
    const bool wide = header.version.front() == '\xff';
    std::string file = padded(header.version, 8) + padded(header.patient, 80) +
                       padded(header.recording, 80) + header.date + "10.20.30" +
                       padded(std::to_string(256 * (signals.size() + 1)), 8) +
                       padded(header.reserved, 44) + padded(header.records, 8) +
                       padded(header.duration, 8) + padded(std::to_string(signals.size()), 4);
    const auto fields = [&](std::size_t width, auto field) {
        for (const EdfSignal& signal : signals) {
            file += padded(field(signal), width);
        }
    };
    const auto blank = [](const EdfSignal&) { return std::string(); };
    fields(16, [](const EdfSignal& s) { return s.label; });
    fields(80, blank);
    fields(8, [](const EdfSignal& s) { return s.unit; });
    fields(8, [](const EdfSignal& s) { return s.physicalLow; });
    fields(8, [](const EdfSignal& s) { return s.physicalHigh; });
    fields(8, [](const EdfSignal& s) { return s.digitalLow; });
    fields(8, [](const EdfSignal& s) { return s.digitalHigh; });
    fields(80, blank);
    fields(8, [](const EdfSignal& s) { return s.perRecord; });
    fields(32, blank);
    for (std::size_t record = 0; record < 2; ++record) {
        for (const EdfSignal& signal : signals) {
            const std::size_t half = signal.samples.size() / 2;
            for (std::size_t i = record * half; i < (record + 1) * half; ++i) {
                const auto bits = static_cast<unsigned>(signal.samples[i]);
                file += {static_cast<char>(bits & 0xffU), static_cast<char>(bits >> 8U & 0xffU)};
                file += wide ? std::string(1, static_cast<char>(bits >> 16U & 0xffU)) : "";
            }
        }
    }
    return file;
}

static std::unique_ptr<SignalReader> open(const std::string& path, const std::string& name) {
    ReadOptions options;
    options.part = name;
    return edfPart.open(path, SourceName("x.edf"), options);
}

static std::string refusalOf(const TemporaryFolder& folder, const std::string& bytes) {
    const std::string path = folder.write("x", bytes);
    return failureOf([&] { edfPart.parts(path, SourceName("x.edf")); });
}

// EDF+ with four signals, three of which have one label or seem to, and annotations.
static std::string recording() {
    EdfSignal slow, nameless, annotations, decoy;
    decoy.label = "EEG#2";
    slow.perRecord = "1";
    slow.samples = {100, -100};
    nameless.label = nameless.unit = "";
    annotations.label = "EDF Annotations";
    annotations.perRecord = "4";  // in each record when it begins: +0, +0.3
    annotations.samples = {0x302b, 0x1414, 0, 0, 0x302b, 0x332e, 0x1414, 0};
    EdfHeader header;
    header.reserved = "EDF+C";
    return edf({EdfSignal(), decoy, annotations, slow, nameless}, header);
}

TEST(Edf, ListsSignalsByTheirLabels) {
    const TemporaryFolder folder;
    std::string listed;
    for (const FilePart& part : edfPart.parts(folder.write("x", recording()), SourceName("x"))) {
        listed += part.name + ": " + part.what + part.refusal + "\n";
    }
    EXPECT_EQ(listed,
              "EEG: 16-bit integer, 4, 6.666666666666667 Hz, uV\n"
              "EEG#2: 16-bit integer, 4, 6.666666666666667 Hz, uV\n"
              "EEG#3: 16-bit integer, 2, 3.3333333333333335 Hz, uV\n"
              "signal 4: 16-bit integer, 4, 6.666666666666667 Hz\n");
}

TEST(Edf, ReadsASignalWithItsUnitAndRate) {
    const TemporaryFolder folder;
    const std::string path = folder.write("x", recording());
    auto reader = open(path, "EEG#3");
    EXPECT_EQ(reader->info().format, "EDF+, 16-bit integer");
    EXPECT_EQ(reader->info().rate, 1.0 / 0.3);
    EXPECT_EQ(reader->info().names, std::vector<std::string>{"EEG#3 (uV)"});
    EXPECT_EQ(reader->info().remarks,
              std::vector<std::string>{"x.edf starts at 2024-03-02T10:20:30"});
    EXPECT_EQ(readSamples(*reader), (std::vector<double>{10, -10}));
    reader.reset();  // the library opens a file once
    EXPECT_EQ(open(path, "signal 4")->info().names, std::vector<std::string>{"signal 4"});
    // Steps of 0.1, with no trace of the rounding of the bounds.
    EXPECT_EQ(readSamples(*open(path, "EEG")), (std::vector<double>{-3276.8, 0.1, 3276.7, -0.1}));
}

TEST(Edf, ReadsSamplesOf24Bits) {
    const TemporaryFolder folder;
    EdfSignal wide;
    wide.physicalLow = "-262144";
    wide.physicalHigh = "262143";
    wide.digitalLow = "-8388608";
    wide.digitalHigh = "8388607";
    wide.samples = {-8388608, 8388607, 0x123456, -2};
    EdfHeader header;
    header.version = "\377BIOSEMI";
    const std::string path = folder.write("x", edf({wide, EdfSignal()}, header));
    const auto reader = open(path, "EEG");
    EXPECT_EQ(reader->info().format, "BDF, 24-bit integer");
    // The defining formula, in long double.
    const auto exact = [](long double d) {
        return static_cast<double>(-262144 +
                                   (d + 8388608) * (262143 + 262144) / (8388607 + 8388608));
    };
    const std::vector<double> samples = readSamples(*reader);
    ASSERT_EQ(samples.size(), 4U);
    EXPECT_EQ(samples[0], -262144.0);
    EXPECT_EQ(samples[1], 262143.0);
    EXPECT_NEAR(samples[2], exact(0x123456), 1e-12);
    EXPECT_NEAR(samples[3], exact(-2), 1e-12);
}

// Against p0 + (d - d0) (p1 - p0) / (d1 - d0) in long double, with bounds as the header has them:
// relative to the value, even near zero.
TEST(EdfScale, IsExactTo1em12) {
    struct Range {
        const char *low, *high;
        int digitalLow, digitalHigh;
    };
    for (const auto& [low, high, digitalLow, digitalHigh] :
         {Range{"-3276.8", "3276.7", -32768, 32767}, Range{"-187.5", "187.5", -2048, 2047},
          Range{"0.1", "-0.3", -32768, 32767}, Range{"-1.23456", "98765.43", -8388608, 8388607},
          Range{"-262144", "262143", -8388608, 8388607}, Range{"1.2E-05", "3.4e+2", 0, 1023},
          Range{".0000001", "99999999", -3, 32767}}) {
        const long double p0 = std::strtold(low, nullptr), p1 = std::strtold(high, nullptr);
        const EdfScale scale(std::strtod(low, nullptr), std::strtod(high, nullptr), digitalLow,
                             digitalHigh);
        for (int d = digitalLow; d <= digitalHigh; d += d < digitalHigh - 257 ? 257 : 1) {
            const long double p = p0 + static_cast<long double>(d - digitalLow) * (p1 - p0) /
                                           static_cast<long double>(digitalHigh - digitalLow);
            EXPECT_LE(std::abs(static_cast<long double>(scale.physical(d)) - p),
                      1e-12L * std::abs(p) + 1e-18L * std::abs(p1 - p0))
                << low << " to " << high << ", " << d;
        }
    }
}

TEST(Edf, RefusesWhatIsNotAContinuousRecordingAsAWhole) {
    const TemporaryFolder folder;
    EdfSignal flat, inverted, huge, none;
    flat.physicalHigh = "-3276.80";
    inverted.digitalHigh = "-32769";
    huge.perRecord = "99999999";
    none.perRecord = "0";
    EdfSignal micro;
    micro.unit = "\xb5V";
    const auto with = [](std::string EdfHeader::*field, const std::string& value) {
        EdfHeader header;
        header.*field = value;
        return edf({EdfSignal()}, header);
    };
    EdfHeader promise;
    promise.records = "99999999";
    struct Case {
        std::string bytes, refusal;
    };
    for (const auto& [bytes, refusal] :
         {Case{with(&EdfHeader::reserved, "EDF+D"),
               "x.edf: a discontinuous recording, with gaps; save its stretches as files of their "
               "own"},
          Case{with(&EdfHeader::records, "-1"),
               "x.edf: its header has no number of records, as of a recording that was not ended; "
               "end it in the program that wrote it"},
          Case{with(&EdfHeader::records, "3"),
               "x.edf: the file is truncated: its header declares 3 records of 4 bytes, but 8 "
               "bytes of records are present; copy it again"},
          Case{edf({EdfSignal()}) + "ab",
               "x.edf: the file is too long: its header declares 2 records of 4 bytes, but 10 "
               "bytes of records are present; copy it again"},
          Case{with(&EdfHeader::duration, "1E-1"),
               "x.edf: the duration of a record is not a decimal above 0, \"1E-1    \"; save the "
               "file again"},
          Case{with(&EdfHeader::date, "32.03.24"),
               "x.edf: libedf refuses the header: the date, or in a file of the plus kind what is "
               "said of patient, recording and annotations, is not in the form laid down; save it "
               "again, or as plain EDF or BDF"},
          Case{edf({EdfSignal(), flat}),
               "x.edf, signal 2 \"EEG\": the physical range \"-3276.8\" to \"-3276.80\" is empty, "
               "or not numbers; save the file again"},
          Case{edf({inverted}),
               "x.edf, signal 1 \"EEG\": the digital range \"-32768\" to \"-32769\" is not one of "
               "16 bits; save the file again"},
          Case{edf({none}),
               "x.edf, signal 1 \"EEG\": the number of samples in a record is not one above 0, "
               "\"0\"; save the file again"},
          Case{edf({micro}),
               "x.edf: byte 353 of the header is not a letter of ASCII, as libedf demands; save "
               "the file again, units as uV"},
          Case{edf(std::vector<EdfSignal>(640, huge), promise),
               "x.edf: records of 127999998720 bytes, but libedf reads 10485760 at most; save it "
               "with shorter records"}}) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(refusalOf(folder, bytes), refusal);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100));
    }
}

TEST(Edf, RefusesAFileThatIsTruncatedAnywhere) {
    const TemporaryFolder folder;
    const std::string whole = edf({EdfSignal()});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_NE(refusalOf(folder, whole.substr(0, length)).find("truncated"), std::string::npos)
            << length;
    }
    EXPECT_EQ(refusalOf(folder, whole), "");
}
