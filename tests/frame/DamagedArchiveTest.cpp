#include "tests/frame/ModuleRig.h"
#include "tests/support/Person.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>

using Cause = CArchiveException::Cause;

// The ports of a module as text, with what hangs on them.
static std::string portsOf(const B_BasisModule& module) {
    std::ostringstream text;
    text << module.GetNoOutput();
    for (int port = 0; port < 4; ++port) {
        text << std::string(module.GetPortType(inputPort, port))
             << std::string(module.GetPortType(outputPort, port));
    }
    for (const std::istream* stream : module.inportStreams) {
        text << stream;
    }
    for (const auto& streams : module.outportStreams) {
        text << (streams.empty() ? nullptr : streams.front());
    }
    return text.str();
}

// A load goes through, and storing gives the bytes that it read; or it leaves by an archive
// exception and no port is touched.
static Cause outcome(const std::string& bytes, std::ptrdiff_t pieceLength = 1 << 20) {
    const ModuleRig rig({.direction = 1, .method = 3}, 3);
    const std::string before = portsOf(rig.module);
    Pieces source(bytes, pieceLength);
    const Cause cause = load(rig.module, source);
    if (cause == CArchiveException::none) {
        EXPECT_TRUE(bytes.starts_with(stored(rig.module)));
    } else {
        EXPECT_EQ(portsOf(rig.module), before);
    }
    return cause;
}

static const std::string graphs[] = {graph("V1.91", 1, record({})),
                                     graph("V1.91", 3, record({.direction = 1, .method = 2}))};

// Of a graph of the right version, whole.
static Cause expectedCause(const std::string& graph) {
    const auto numberAt = [&graph](std::size_t offset) {
        std::uint32_t number = 0;
        for (std::size_t i = offset + 4; i-- > offset;) {
            number = number << 8U | static_cast<unsigned char>(graph[i]);
        }
        return number;
    };
    const std::uint32_t count = numberAt(9), method = numberAt(17), direction = numberAt(21);
    const bool numbers = direction != 0 && (method == 2 || method == 3);
    return count == (numbers ? 3 : 1) ? CArchiveException::none : CArchiveException::badIndex;
}

TEST(DamagedArchive, LoadsWholeOrNotAtAllInPiecesOfAnyLength) {
    for (const std::string& whole : graphs) {
        for (std::size_t length = 0; length <= whole.size(); ++length) {
            for (const std::ptrdiff_t pieceLength : {1, 2, 3, 5, 7}) {
                EXPECT_EQ(
                    outcome(whole.substr(0, length), pieceLength),
                    length < whole.size() ? CArchiveException::endOfFile : CArchiveException::none);
            }
        }
    }
}

// The byte at offset differs from that of a whole graph. The length of the version comes first:
// all behind it is displaced.
static bool isDue(Cause cause, const std::string& bytes, std::size_t offset) {
    if (offset < 4) {
        return cause != CArchiveException::none;
    }
    return cause == (offset < 9 ? CArchiveException::badSchema : expectedCause(bytes));
}

TEST(DamagedArchive, IsRefusedWhereAChangedByteMakesItAnotherModules) {
    const Person hearsOfConflicts("");
    for (const std::string& whole : graphs) {
        for (std::size_t i = 0; i < whole.size() * 255; ++i) {
            const std::size_t offset = i / 255;
            std::string bytes = whole;
            bytes[offset] = static_cast<char>(bytes[offset] ^ static_cast<char>(i % 255 + 1));
            EXPECT_TRUE(isDue(outcome(bytes), bytes, offset)) << i;
        }
    }
}

TEST(DamagedArchive, MayBeAnyBytes) {
    const Person hearsOfConflicts("");
    for (const unsigned seed : {1U, 2U, 3U}) {
        std::mt19937 random(seed);
        std::string noise(std::size_t{1} << 20, '\0');
        std::generate(noise.begin(), noise.end(),
                      [&random] { return static_cast<char>(random()); });
        EXPECT_NE(outcome(noise, 4093), CArchiveException::none);
        for (std::size_t start = 0; start + 44 <= noise.size(); start += 44) {
            std::string bytes =
                graph("V1.91", static_cast<char>(noise[start] & 3), noise.substr(start, 44));
            bytes[17] = static_cast<char>(bytes[17] & 3);
            std::fill_n(bytes.begin() + 18, 3, '\0');  // methods that there are
            EXPECT_EQ(outcome(bytes), expectedCause(bytes));
        }
    }
}
