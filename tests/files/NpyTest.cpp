#include "tests/support/Npy.h"

#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <utility>

static std::vector<double> samplesOf(const std::string& path, const ReadOptions& options = {}) {
    return readSamples(*openSignal(SourceName(path), options));
}

namespace {

struct TypeCase {
    std::string type, format;
    std::string values;  // three, little-endian
    std::size_t size;    // of a value
    std::vector<double> samples;
};

class NpyTypes : public testing::TestWithParam<TypeCase> {};

}  // namespace

TEST_P(NpyTypes, AreReadInEitherOrderOfBytes) {
    const auto& [type, format, values, size, samples] = GetParam();
    const TemporaryFolder folder;
    const std::string little = folder.write("little.npy", npy("'<" + type + "'", "(3,)", values));
    EXPECT_EQ(openSignal(SourceName(little), {})->info().format, "npy, " + format);
    EXPECT_EQ(samplesOf(little), samples);
    std::string turned = values;
    for (std::size_t i = 0; i < turned.size(); i += size) {
        std::reverse(turned.data() + i, turned.data() + i + size);
    }
    EXPECT_EQ(samplesOf(folder.write("big.npy", npy("'>" + type + "'", "(3,)", turned))), samples);
}
// The values by hand: two's complement, and binary16, 32 and 64 of IEEE 754. 0x3555 is 1365 / 4096,
// 0x0001 2^-24 and 0xfbff -65504.
INSTANTIATE_TEST_SUITE_P(
    All, NpyTypes,
    testing::Values(
        TypeCase{"b1", "truth value", bytesOf({0, 1, 2}), 1, {0, 1, 1}},
        TypeCase{"i1", "8-bit integer", bytesOf({0x80, 0xff, 0x7f}), 1, {-128, -1, 127}},
        TypeCase{"u1", "8-bit integer without sign", bytesOf({0x80, 0xff, 1}), 1, {128, 255, 1}},
        TypeCase{
            "i2", "16-bit integer", bytesOf({0, 0x80, 0xff, 0x7f, 2, 1}), 2, {-32768, 32767, 258}},
        TypeCase{"u2",
                 "16-bit integer without sign",
                 bytesOf({0, 0x80, 0xff, 0xff, 2, 1}),
                 2,
                 {32768, 65535, 258}},
        TypeCase{"i4",
                 "32-bit integer",
                 bytesOf({0, 0, 0, 0x80, 0xff, 0xff, 0xff, 0xff, 4, 3, 2, 1}),
                 4,
                 {-2147483648.0, -1, 16909060}},
        TypeCase{"u4",
                 "32-bit integer without sign",
                 bytesOf({0, 0, 0, 0x80, 0xff, 0xff, 0xff, 0xff, 4, 3, 2, 1}),
                 4,
                 {2147483648.0, 4294967295.0, 16909060}},
        TypeCase{"i8",
                 "64-bit integer",
                 bytesOf({0,    0,    0,    0,    0,    0,    0x20, 0,
                          0,    0,    0,    0,    0,    0,    0xe0, 0xff,  //
                          0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff}),
                 8,
                 {0x1p53, -0x1p53, -1}},
        TypeCase{"u8",
                 "64-bit integer without sign",
                 bytesOf({0, 0, 0, 0, 0, 0, 0x20, 0, 8, 7, 6, 5, 4, 3, 2, 0,  //
                          0, 0, 0, 0, 0, 0, 0,    0}),
                 8,
                 {0x1p53, 0x2030405060708p0, 0}},
        TypeCase{"f2",
                 "16-bit float",
                 bytesOf({0x55, 0x35, 1, 0, 0xff, 0xfb}),
                 2,
                 {1365.0 / 4096, 0x1p-24, -65504}},
        TypeCase{"f4",
                 "32-bit float",
                 bytesOf({0, 0, 0x20, 0x3e, 1, 0, 0, 0, 0, 0, 0x80, 0xbf}),
                 4,
                 {0.15625, 0x1p-149, -1}},
        TypeCase{
            "f8",
            "64-bit float",
            bytesOf({0x18, 0x2d, 0x44, 0x54, 0xfb, 0x21, 0x09, 0x40, 1, 0, 0, 0, 0, 0, 0, 0,  //
                     0,    0,    0,    0,    0,    0,    0xf0, 0xbf}),
            8,
            {3.141592653589793, 0x1p-1074, -1}}));

// Two rows of three values: rows are samples, whatever the order in the file.
TEST(Npy, GoesByRowsAndByColumns) {
    const TemporaryFolder folder;
    const auto shaped = [&](const std::string& shape, const std::string& values, bool byColumns,
                            int version) {
        const std::string path =
            folder.write("s.npy", npy("'|i1'", shape, values, byColumns, version));
        const auto reader = openSignal(SourceName(path), {});
        return std::pair(reader->info().channels, readSamples(*reader));
    };
    const std::string rows = bytesOf({1, 2, 3, 4, 5, 6}), columns = bytesOf({1, 4, 2, 5, 3, 6});
    using Found = std::pair<int, std::vector<double>>;
    const Found expected{3, {1, 2, 3, 4, 5, 6}}, one{1, {1, 2, 3, 4, 5, 6}};
    EXPECT_EQ(shaped("(2, 3)", rows, false, 1), expected);
    EXPECT_EQ(shaped("(2L,3L)", columns, true, 2), expected);
    for (const char* shape : {"(6,)", "(1, 6)", "(6, 1)"}) {
        EXPECT_EQ(shaped(shape, rows, false, 3), one) << shape;
        EXPECT_EQ(shaped(shape, rows, true, 1), one) << shape;
    }
}

// Longer than the blocks in which it is read, and not a multiple of them.
TEST(Npy, ReadsLongArraysByColumns) {
    constexpr std::size_t rows = 100003, columns = 3;
    std::string values;
    std::vector<double> expected(rows * columns);
    for (std::size_t c = 0; c < columns; ++c) {
        for (std::size_t i = 0; i < rows; ++i) {
            const auto value = static_cast<std::uint16_t>(i * 7 + c * 13);
            values += {static_cast<char>(value & 0xffU), static_cast<char>(value >> 8U)};
            expected[i * columns + c] = value;
        }
    }
    const TemporaryFolder folder;
    EXPECT_EQ(samplesOf(folder.write("s.npy", npy("'<u2'", "(100003, 3)", values, true))),
              expected);
}

TEST(Npy, GivesTheSameBitsBack) {
    std::vector<double> samples = {
        0.1, -0.0, 0x1p-1074, std::numeric_limits<double>::max(), 1.0 / 3, std::nan("7")};
    for (int i = 0; i < 60000; ++i) {
        samples.push_back(std::sin(i));
    }
    const TemporaryFolder folder;
    for (const int channels : {1, 3}) {
        writeSignal(folder.path("s.npy"), samples, resultInfo(channels));
        const auto reader = openSignal(SourceName(folder.path("s.npy")), {true, {}, {}});
        EXPECT_EQ(reader->info().channels, channels);
        EXPECT_TRUE(sameBits(readSamples(*reader), samples));
    }
}

TEST(Npy, IsWrittenWithWhatFitsAlone) {
    const TemporaryFolder folder;
    writeSignal(folder.path("s.npy"), {0.1}, resultInfo(), Encoding::float32);
    EXPECT_EQ(samplesOf(folder.path("s.npy")), std::vector<double>{static_cast<double>(0.1F)});
    EXPECT_NE(failureOf([&] {
                  writeSignal(folder.path("t.npy"), {1, 1e39}, resultInfo(), Encoding::float32);
              }).find("t.npy, sample 2, channel 1: 1e+39 does not fit"),
              std::string::npos);
    EXPECT_NE(failureOf([&] {
                  writeSignal(folder.path("t.npy"), {1, 2}, resultInfo(2));
              }).find("a single row of an array is read as one signal, not as 2 channels"),
              std::string::npos);
    EXPECT_EQ(folder.count(), 1);
}

namespace {

struct RefusedCase {
    std::string file, message;
};

class NpyRefused : public testing::TestWithParam<RefusedCase> {};

}  // namespace

TEST_P(NpyRefused, IsNamed) {
    const TemporaryFolder folder;
    const std::string path = folder.write("s.npy", GetParam().file);
    const std::string failure = failureOf([&] { openSignal(SourceName(path), {}); });
    EXPECT_EQ(failure.substr(0, path.size()), path);
    EXPECT_NE(failure.find(GetParam().message), std::string::npos) << failure;
}
INSTANTIATE_TEST_SUITE_P(
    Kinds, NpyRefused,
    testing::Values(
        RefusedCase{npy("'<c16'", "(1,)", std::string(16, '\0')), "holds complex numbers"},
        RefusedCase{npy("'<f16'", "(1,)", std::string(16, '\0')), "holds long double numbers"},
        RefusedCase{npy("'|O'", "(1,)", "x"), "holds Python objects"},
        RefusedCase{npy("'<U3'", "(1,)", std::string(12, 'a')), "holds text"},
        RefusedCase{npy("'<M8[ns]'", "(1,)", std::string(8, '\0')), "holds dates or times"},
        RefusedCase{npy("[('a', '<f8'), ('b', '<f8')]", "(1,)", std::string(16, '\0')),
                    "holds structured records"},
        RefusedCase{npy("'<f8'", "()", std::string(8, '\0')), "a single number, of 0 dimensions"},
        RefusedCase{npy("'<f8'", "(0,)", ""), "holds no samples"},
        RefusedCase{npy("'<f8'", "(2, 0)", ""), "holds no samples"},
        RefusedCase{npy("'<f8'", "(2, 1, 1)", std::string(16, '\0')),
                    "has 3 dimensions, 2 x 1 x 1"},
        RefusedCase{
            npy("'<f8'", "(2,)", std::string(8, '\0') + bytesOf({0, 0, 0, 0, 0, 0, 0xf0, 0x7f})),
            ", sample 2, channel 1: inf is not a finite number"},
        RefusedCase{npy("'<f8'", "(2,)", "", false, 4), "is .npy of version 4"},
        RefusedCase{npy("'<f3'", "(2,)", "123456"), "long double"},
        RefusedCase{npy("'<x3'", "(2,)", "123456"), "the header of the array cannot be read"},
        RefusedCase{npy("'<f8', 'more': 1", "(2,)", ""), "the header of the array cannot be read"},
        RefusedCase{npy("'<f8'", "(-2,)", ""), "the header of the array cannot be read"}));

// Integers of either sign, at the first value that 53 bits do not hold.
TEST(Npy, RoundsIntegersBeyond53BitsOnlyWhenAsked) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "s.npy",
        npy("'<i8'", "(1, 2)",
            bytesOf({0, 0, 0, 0, 0, 0, 0x20, 0, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xdf, 0xff})));
    EXPECT_NE(failureOf([&] {
                  openSignal(SourceName(path), {});
              }).find("s.npy, sample 2, channel 1: an integer beyond 2^53"),
              std::string::npos);
    EXPECT_EQ(samplesOf(path, {false, {}, {}, true}), (std::vector<double>{0x1p53, -0x1p53}));
}

TEST(Npy, IsRefusedWhereverItIsCut) {
    const TemporaryFolder folder;
    const std::string whole = npy("'<f8'", "(2, 3)", std::string(48, '\1'));
    ASSERT_EQ(samplesOf(folder.write("s.npy", whole)).size(), 6U);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::string path = folder.write(std::to_string(length), whole.substr(0, length));
        EXPECT_NE(failureOf([&] { openSignal(SourceName(path), {}); }), "") << length;
    }
}

// Whatever a header promises, no memory is taken for it.
TEST(Npy, RefusesAtOnceWhatTheFileDoesNotHold) {
    const TemporaryFolder folder;
    for (const char* shape : {"(1152921504606846976,)", "(4294967296, 4294967296)",
                              "(9999999999999999999999, 2)", "(1, 1152921504606846976)"}) {
        const std::string path = folder.write("s.npy", npy("'<f8'", shape, "12345678"));
        const auto start = std::chrono::steady_clock::now();
        const std::string failure = failureOf([&] { openSignal(SourceName(path), {}); });
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
        EXPECT_NE(failure.find("s.npy is truncated: its header declares "), std::string::npos);
        EXPECT_NE(failure.find("only 8 bytes of samples are present"), std::string::npos);
        EXPECT_LT(passed.count(), 0.5);
    }
}
