#include "host/BlockStream.h"

#include "host/TCTypeInfo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace std::string_literals;

// Marker 2, three samples: 1.0, -2.0, 0.5.
static const std::string wire =
    "\x02\x00\x00\x00\x03\x00\x00\x00\x00\x00\x00\x00\x00\x00\xf0\x3f"
    "\x00\x00\x00\x00\x00\x00\x00\xc0\x00\x00\x00\x00\x00\x00\xe0\x3f"s;
static const std::vector<double> samples = {1.0, -2.0, 0.5};

TEST(BlockStream, CarriesBlocksAsBytesAndShowsThem) {
    BlockStream stream;
    stream.writeBlock(1, samples.data(), -1);  // appends nothing
    stream.writeBlock(2, samples.data(), 3);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), wire);
    stream << wire << wire;
    std::istringstream bytes(wire);  // not of blocks
    TCTypeInfo typeInfo;
    EXPECT_EQ(typeInfo.Read(stream), 2);
    EXPECT_EQ(typeInfo.sampleCount, 3);
    EXPECT_EQ(typeInfo.Read(bytes) + typeInfo.sampleCount, 0);
    EXPECT_EQ(typeInfo.GetFillSize(stream) + typeInfo.GetFillSize(bytes), 2);
    int marker = 0;
    std::vector<double> read;
    EXPECT_TRUE(stream.readBlock(marker, read));
    EXPECT_EQ(std::pair(marker, read), std::pair(2, samples));
}

TEST(BlockStream, EndsAtWhatIsNoBlock) {
    std::vector<std::pair<std::string, int>> cases = {
        {wire + wire, 2},
        {"\x02\0\0\0\0\0\0\0"s + wire, 2},
        {wire + "\0\0\0\0\xff\xff\xff\xff"s + wire, 1},   // a negative count
        {wire + "\0\0\0\0\xff\xff\xff\x7f"s + wire, 1}};  // fewer bytes than it says
    for (std::size_t length = 0; length < wire.size(); ++length) {
        cases.emplace_back(wire.substr(0, length), 0);
    }
    int marker = 0;
    std::vector<double> read;
    for (const auto& [bytes, blocks] : cases) {
        BlockStream stream;
        stream << bytes;
        EXPECT_EQ(stream.waitingBlocks(), blocks);
        EXPECT_TRUE(stream.readBlock(marker, read) == (blocks > 0) &&
                    stream.waitingBlocks() == std::max(blocks - 1, 0));
        stream.discardAll();
        EXPECT_EQ(stream.rdbuf()->in_avail(), -1);
    }
}

// Beside a stream of the standard library, with sizes that cross the edges of the buffer's chunks.
TEST(BlockStream, IsFirstInFirstOut) {
    std::mt19937 random(1);
    BlockStream stream;
    std::stringstream plain;
    for (int round = 0; round < 300; ++round) {
        std::string piece(round % 3 == 0 ? 65536 : random() % 200000, '\0');
        std::iota(piece.begin(), piece.end(), static_cast<char>(round));
        stream << piece;
        plain << piece;
        piece.resize(round % 10 == 9 ? 10000000 : random() % 200000);
        std::string expected = piece;
        plain.read(expected.data(), static_cast<std::streamsize>(expected.size()));
        stream.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        ASSERT_TRUE(piece == expected && stream.gcount() == plain.gcount());
        stream.clear();
        plain.clear();
        ASSERT_EQ(stream.rdbuf()->sgetc(), plain.rdbuf()->sgetc());
        ASSERT_EQ(stream.rdbuf()->sbumpc(), plain.rdbuf()->sbumpc());
    }
}
