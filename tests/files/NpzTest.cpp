#include "tests/support/Npy.h"
#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <initializer_list>

// The remainder of the bytes, taken as a polynomial, by that of CRC-32, bit by bit (ISO 3309).
static std::uint32_t checksum(const std::string& bytes) {
    std::uint32_t rest = 0xffffffff;
    for (const char byte : bytes) {
        rest ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            rest = (rest & 1U) != 0 ? rest >> 1U ^ 0xedb88320U : rest >> 1U;
        }
    }
    return ~rest;
}

static std::string number(std::uint64_t value, int length) {
    std::string bytes;
    for (; length > 0; --length, value >>= 8U) {
        bytes += static_cast<char>(value & 0xffU);
    }
    return bytes;
}

namespace {

struct Entry {
    std::string name, bytes;
    unsigned method = 0;
    bool longSizes = false, encrypted = false;
    std::uint64_t moreLength = 0;  // that the directory promises
};

}  // namespace

// What deflate has for bytes that it cannot make fewer: blocks of them as they are (RFC 1951).
static std::string deflated(const std::string& bytes) {
    return '\1' + number(bytes.size(), 2) + number(~bytes.size(), 2) + bytes;
}

static std::string joined(std::initializer_list<std::string> parts) {
    std::string all;
    for (const std::string& part : parts) {
        all += part;
    }
    return all;
}

static void add(const Entry& entry, std::string& file, std::string& directory) {
    const std::string packed = entry.method == 8 ? deflated(entry.bytes) : entry.bytes;
    const std::uint64_t length = entry.bytes.size() + entry.moreLength, head = file.size();
    const auto size = [&](std::uint64_t value) {
        return number(entry.longSizes ? 0xffffffff : value, 4);
    };
    const std::string sizes =
        joined({number(length, 8), number(packed.size(), 8), number(head, 8)});
    const std::string fields = entry.longSizes ? number(1, 2) + number(24, 2) + sizes : "";
    const std::string common =
        joined({number(entry.encrypted ? 1 : 0, 2), number(entry.method, 2), number(0, 4),
                number(checksum(entry.bytes), 4), size(packed.size()), size(length),
                number(entry.name.size(), 2), number(fields.size(), 2)});
    directory += joined({"PK\1\2", number(45, 2), number(45, 2), common, number(0, 10), size(head),
                         entry.name, fields});
    file += joined({"PK\3\4", number(45, 2), common, entry.name, fields, packed});
}

static std::string archive(const std::vector<Entry>& entries, const std::string& comment = "") {
    std::string file, directory;
    for (const Entry& entry : entries) {
        add(entry, file, directory);
    }
    const bool isLong = std::any_of(entries.begin(), entries.end(),
                                    [](const Entry& entry) { return entry.longSizes; });
    const std::uint64_t begin = file.size(), end = begin + directory.size(), count = entries.size();
    file += directory;
    if (isLong) {
        file += joined({"PK\6\6", number(44, 8), number(0, 12), number(count, 8), number(count, 8),
                        number(directory.size(), 8), number(begin, 8), "PK\6\7", number(0, 4),
                        number(end, 8), number(1, 4)});
    }
    return joined({file, "PK\5\6", number(0, 4), number(count, 2), number(count, 2),
                   number(isLong ? 0xffffffff : directory.size(), 4),
                   number(isLong ? 0xffffffff : begin, 4), number(comment.size(), 2), comment});
}

static const std::string three = npy("'|i1'", "(3,)", bytesOf({1, 2, 3}));

static std::vector<double> samplesOf(const std::string& path) {
    return readSamples(*openSignal(SourceName(path), {}));
}

TEST(Npz, ReadsTheOnlySignalHoweverItIsStored) {
    const TemporaryFolder folder;
    const std::vector<Entry> beside = {{"number.npy", npy("'<f8'", "()", "12345678")},
                                       {"text.npy", npy("'<U2'", "(1,)", "12345678"), 8},
                                       {"note.txt", "no array"}};
    for (const unsigned method : {0U, 8U}) {
        for (const bool longSizes : {false, true}) {
            std::vector<Entry> entries = beside;
            entries.insert(entries.begin() + 1, {"s.npy", three, method, longSizes});
            const std::string path = folder.write("s.npz", archive(entries, "PK\5\6 and more"));
            EXPECT_EQ(samplesOf(path), (std::vector<double>{1, 2, 3})) << method << longSizes;
            EXPECT_EQ(openSignal(SourceName(path), {})->info().format, "npy, 8-bit integer");
        }
    }
}

TEST(Npz, TakesTheOneThatIsNamed) {
    const TemporaryFolder folder;
    const std::string path =
        folder.write("s.npz", archive({{"a.npy", three},
                                       {"b.npy", npy("'|i1'", "(2, 2)", bytesOf({4, 5, 6, 7})), 8},
                                       {"c.npy", npy("'<c8'", "(1,)", "12345678")}}));
    EXPECT_EQ(samplesOf(path + ":a"), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(samplesOf(path + ":b"), (std::vector<double>{4, 5, 6, 7}));
    const auto failure = [&](const std::string& name) {
        return failureOf([&] { openSignal(SourceName(name), {}); });
    };
    EXPECT_EQ(failure(path),
              path +
                  ": several signals, a (8-bit integer, 3), b (8-bit integer, 2 x 2); name one "
                  "of them, as in " +
                  path + ":b");
    EXPECT_EQ(failure(path + ":d"), path + ": there is no d in the file; there are a, b, c");
    EXPECT_NE(failure(path + ":c").find(path + ":c holds complex numbers"), std::string::npos);
}

TEST(Npz, RefusesWhatItDoesNotRead) {
    const TemporaryFolder folder;
    const auto failure = [&](const Entry& entry) {
        const std::string path = folder.write("s.npz", archive({entry}));
        return failureOf([&] { openSignal(SourceName(path), {}); });
    };
    EXPECT_NE(failure({"s.npy", three, 0, false, true}).find("s.npy is encrypted"),
              std::string::npos);
    EXPECT_NE(failure({"s.npy", three, 12}).find("a method that is not read, 12"),
              std::string::npos);
    EXPECT_NE(failure({"s.npy", npy("'<O'", "(1,)", "1")}).find("s.npz:s holds Python objects"),
              std::string::npos);
    EXPECT_NE(failureOf([&] {
                  openSignal(SourceName(folder.write("e.npz", archive({}))), {});
              }).find("nothing is in the file"),
              std::string::npos);
}

// Neither the directory nor the array within makes anything of sizes that cannot be true.
TEST(Npz, RefusesAtOnceWhatTheFileDoesNotHold) {
    const TemporaryFolder folder;
    const std::string huge = npy("'<f8'", "(1152921504606846976,)", "12345678");
    for (const unsigned method : {0U, 8U}) {
        for (const Entry& entry :
             {Entry{"s.npy", huge, method, true, false, std::uint64_t{1} << 62U},
              Entry{"s.npy", huge, method, true, false, ~std::uint64_t{0}},
              Entry{"s.npy", huge, method}}) {
            const std::string path = folder.write("s.npz", archive({entry}));
            const auto start = std::chrono::steady_clock::now();
            EXPECT_NE(failureOf([&] { openSignal(SourceName(path), {}); }), "");
            const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
            EXPECT_LT(passed.count(), 0.5);
        }
    }
}

// Wherever an archive is cut or a byte of it is wrong, it is refused, or gives the same samples.
TEST(Npz, GivesNoOtherSamplesWhereItIsDamaged) {
    const TemporaryFolder folder;
    for (const unsigned method : {0U, 8U}) {
        const std::string whole = archive({{"s.npy", three, method, method == 8}});
        for (std::size_t at = 0; at < whole.size(); ++at) {
            const std::string name = std::to_string(method) + '-' + std::to_string(at);
            const std::string cut = folder.write(name, whole.substr(0, at));
            EXPECT_NE(failureOf([&] { openSignal(SourceName(cut), {}); }), "") << at;
            for (const int flip : {1, 0x80, 0xff}) {
                std::string wrong = whole;
                wrong[at] = static_cast<char>(wrong[at] ^ flip);
                const std::string path = folder.write(name + '-' + std::to_string(flip), wrong);
                std::vector<double> samples = {1, 2, 3};
                const std::string ignored = failureOf([&] { samples = samplesOf(path); });
                EXPECT_EQ(samples, (std::vector<double>{1, 2, 3})) << at << ignored;
            }
        }
    }
}
