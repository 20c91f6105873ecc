#include "tests/support/Npy.h"
#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/parts.h"

#include <chrono>

namespace {

struct Record {
    std::string data;  // as encoded
    int samples = 0;
    int encoding = 3;
    bool bigEndian = true;
    std::string channel = "BHZ";
    int minute = 0, second = 0, fraction = 0;  // of 0.1 ms
    int rateFactor = 100, rateMultiplier = 1;
    std::string blockettes = {};  // before blockette 1000
    int lengthExponent = 9;
};

}  // namespace

static std::string number(unsigned value, int bytes, bool bigEndian) {
    std::string text;
    for (int i = 0; i < bytes; ++i) {
        const int shift = 8 * (bigEndian ? bytes - 1 - i : i);
        text += static_cast<char>(value >> static_cast<unsigned>(shift) & 0xffU);
    }
    return text;
}

static std::string word(unsigned value, bool bigEndian = true) {
    return number(value, 4, bigEndian);
}

// A record of 512 bytes with a fixed header, further blockettes and blockette 1000; samples from
// byte 128 on.
static std::string recordOf(const Record& r) {
    const auto two = [&r](int value) {
        return number(static_cast<unsigned>(value), 2, r.bigEndian);
    };
    const int length = static_cast<int>(r.blockettes.size());
    std::string bytes = "000001D STATI00" + r.channel + "NW" + two(2024) + two(62);
    bytes += bytesOf({10, r.minute, r.second, 0}) + two(r.fraction) + two(r.samples) +
             two(r.rateFactor) + two(r.rateMultiplier) +
             bytesOf({0, 0, 0, length > 0 ? 2 : 1, 0, 0, 0, 0}) + two(128) + two(48) +
             r.blockettes + two(1000) + two(0) +
             bytesOf({r.encoding, r.bigEndian ? 1 : 0, r.lengthExponent, 0});
    bytes.resize(128, '\0');
    bytes += r.data;
    bytes.resize(512, '\0');
    return bytes;
}

static Record integers(int first, int second) {
    Record record;
    record.data = word(static_cast<unsigned>(first)) + word(static_cast<unsigned>(second));
    record.samples = 2;
    return record;
}

static std::unique_ptr<SignalReader> open(const std::string& path, const std::string& name) {
    ReadOptions options;
    options.part = name;
    return mseedPart.open(path, SourceName("x.mseed"), options);
}

static std::vector<FilePart> partsOf(const TemporaryFolder& folder, const std::string& bytes) {
    return mseedPart.parts(folder.write("x", bytes), SourceName("x.mseed"));
}

// What the file, or its only channel, is refused with.
static std::string refusalOf(const TemporaryFolder& folder, const std::string& bytes) {
    return failureOf([&] {
        partsOf(folder, bytes);
        readSamples(*open(folder.path("x"), "NW.STATI.00.BHZ"));
    });
}

namespace {

struct EncodingCase {
    int encoding;
    bool bigEndian;
    std::string data;
    std::vector<double> samples;
};

class MseedEncodings : public testing::TestWithParam<EncodingCase> {};

}  // namespace

TEST_P(MseedEncodings, AreDecoded) {
    const auto& [encoding, bigEndian, data, samples] = GetParam();
    Record record;
    record.encoding = encoding;
    record.bigEndian = bigEndian;
    record.data = data;
    record.samples = static_cast<int>(samples.size());
    const TemporaryFolder folder;
    const std::string path = folder.write("x", recordOf(record));
    EXPECT_EQ(readSamples(*open(path, "NW.STATI.00.BHZ")), samples);
}
// By hand. A frame of Steim has 16 words: codes of two bits for each word, first sample, last
// sample, differences. Steim-1: 10, +2, -3, 0 in bytes (code 1); +300, -300 in halves (code 2);
// +100000 (code 3). Steim-2: +5, +1, -2, 0, +3, -7, -1 in 4 bits each (code 3, sub-code 2); +100000
// in 30 bits (code 2, sub-code 1).
INSTANTIATE_TEST_SUITE_P(
    All, MseedEncodings,
    testing::Values(
        EncodingCase{1, true, bytesOf({0x80, 0, 0x7f, 0xff, 0xff, 0xfe}), {-32768, 32767, -2}},
        EncodingCase{1, false, bytesOf({0, 0x80, 0xff, 0x7f, 0xfe, 0xff}), {-32768, 32767, -2}},
        EncodingCase{
            3, false, word(0x80000000, false) + word(0x01020304, false), {-2147483648.0, 16909060}},
        EncodingCase{
            4, true, word(0x3e200000) + word(0xbf800000) + word(1), {0.15625, -1, 0x1p-149}},
        EncodingCase{5, true, word(0x400921fb) + word(0x54442d18), {3.141592653589793}},
        EncodingCase{10,
                     true,
                     word(0x01b00000) + word(10) + word(100009) + word(0x0a02fd00) +
                         word(0x012cfed4) + word(0x000186a0),
                     {10, 12, 9, 9, 309, 9, 100009}},
        EncodingCase{11,
                     true,
                     word(0x03800000) + word(5) + word(99999) + word(0x851e039f) + word(0x400186a0),
                     {5, 6, 4, 4, 7, 0, -1, 99999}}));

// Two channels whose records alternate, and two that are no signals.
static std::string network() {
    Record first = integers(1, 2), other = integers(7, 8), second = integers(3, 4);
    other.channel = "BHE";
    other.rateFactor = -10;  // one sample in 10 s
    second.fraction = 200;
    Record events = integers(0, 0);
    events.channel = "EVT";
    events.rateFactor = 0;
    Record text = events;
    text.channel = "LOG";
    text.encoding = 0;
    return recordOf(first) + recordOf(other) + recordOf(second) + recordOf(events) + recordOf(text);
}

TEST(Mseed, ListsChannels) {
    const TemporaryFolder folder;
    std::string listed;
    for (const FilePart& part : partsOf(folder, network())) {
        listed += part.name + ": " + part.what + "; " + part.refusal + "\n";
    }
    EXPECT_EQ(listed,
              "NW.STATI.00.BHE: 32-bit integer, 2, 0.1 Hz; \n"
              "NW.STATI.00.BHZ: 32-bit integer, 4, 100 Hz; \n"
              "NW.STATI.00.EVT: 32-bit integer, 2, 0 Hz; x.mseed:NW.STATI.00.EVT: the channel has "
              "no sampling rate, as one of events; choose another channel\n"
              "NW.STATI.00.LOG: ASCII text, 2, 0 Hz; x.mseed:NW.STATI.00.LOG: text, which is not "
              "a signal; choose another channel\n");
}

TEST(Mseed, ReadsAChannelFromItsRecords) {
    const TemporaryFolder folder;
    const std::string path = folder.write("x", network());
    const auto reader = open(path, "NW.STATI.00.BHZ");
    EXPECT_EQ(reader->info().format, "miniSEED, 32-bit integer");
    EXPECT_EQ(reader->info().rate, 100.0);
    EXPECT_EQ(reader->info().names, std::vector<std::string>{"NW.STATI.00.BHZ"});
    EXPECT_EQ(reader->info().remarks,
              std::vector<std::string>{"x.mseed starts at 2024-03-02T10:00:00.000000 UTC"});
    EXPECT_EQ(readSamples(*reader), (std::vector<double>{1, 2, 3, 4}));
    EXPECT_EQ(readSamples(*open(path, "NW.STATI.00.BHE")), (std::vector<double>{7, 8}));
}

// The rate of blockette 100 is the one that was measured; header times have 0.1 ms, which at a high
// rate is more than half a sample.
TEST(Mseed, TakesTheMeasuredRateAndTimesAsTheyAreResolved) {
    Record first = integers(1, 2), second = integers(3, 4);
    first.blockettes = bytesOf({0, 100, 0, 60}) + word(0x47435000) + bytesOf({0, 0, 0, 0});  // 5e4
    second.blockettes = first.blockettes;
    second.fraction = 1;
    const TemporaryFolder folder;
    const std::string path = folder.write("x", recordOf(first) + recordOf(second));
    EXPECT_EQ(open(path, "NW.STATI.00.BHZ")->info().rate, 50000.0);
    EXPECT_EQ(refusalOf(folder, recordOf(first) + recordOf(second)), "");
}

TEST(Mseed, RefusesWhatIsNotOneContinuousSignal) {
    const TemporaryFolder folder;
    Record late = integers(3, 4), early = late, faster = late, wide = late, steim = late;
    late.second = 2;
    late.fraction = 5200;
    early.fraction = 100;
    faster.fraction = 200;
    faster.rateFactor = 200;
    wide.samples = 97;
    steim.encoding = 10;
    steim.samples = 4;
    steim.data = word(0x01000000) + word(1) + word(5) + word(0x01010101);  // the last one is 4
    Record promise = late;
    promise.lengthExponent = 60;
    Record longer = late;
    longer.lengthExponent = 12;
    const std::string first = recordOf(integers(1, 2));
    struct Case {
        std::string bytes, refusal;
    };
    for (const auto& [bytes, refusal] :
         {Case{first + recordOf(late),
               "x.mseed, record at byte 512: a gap of 2.5 s before "
               "2024-03-02T10:00:02.520000; save what is before and after it as files of their "
               "own"},
          Case{first + recordOf(early),
               "x.mseed, record at byte 512: an overlap of 0.01 s: the record "
               "begins at 2024-03-02T10:00:00.010000, before the one before it ends; keep each "
               "once, in the order of time"},
          Case{first + recordOf(faster),
               "x.mseed, record at byte 512: the rate changes from 100 to 200 Hz; "
               "save the file in two there"},
          Case{first + recordOf(wide),
               "x.mseed, record at byte 512: the record is damaged: 97 samples do not fit its 512 "
               "bytes; copy the file again"},
          Case{first + recordOf(longer),
               "x.mseed, record at byte 512: the file is truncated: the record has 4096 bytes, "
               "but only 512 are present; copy it again"},
          Case{
              first + recordOf(promise),
              "x.mseed, record at byte 512: the file is truncated: the record has 268435456 bytes, "
              "but only 512 are present; copy it again"},
          Case{recordOf(steim),
               "x.mseed, record at byte 0: the samples are damaged: NW_STATI_00_BHZ_D: Warning: "
               "Data integrity check for Steim1 failed, Last sample=4, Xn=5; copy the file "
               "again"}}) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(refusalOf(folder, bytes), refusal);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100));
    }
}

// A file that ends with a record is whole.
TEST(Mseed, RefusesAFileThatIsTruncatedWithinARecord) {
    const TemporaryFolder folder;
    Record second = integers(3, 4);
    second.fraction = 200;
    const std::string whole = recordOf(integers(1, 2)) + recordOf(second);
    for (std::size_t length = 1; length <= whole.size(); ++length) {
        EXPECT_EQ(refusalOf(folder, whole.substr(0, length)).empty(), length % 512 == 0) << length;
    }
}
