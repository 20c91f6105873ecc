#include "host/BlockStream.h"

#include "host/TCTypeInfo.h"

#include <gtest/gtest.h>

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

// How many blocks can be taken.
static int drain(BlockStream& stream) {
    int taken = 0, marker = 0;
    std::vector<double> read;
    while (stream.readBlock(marker, read)) {
        ++taken;
    }
    return taken;
}

TEST(BlockStream, CarriesBlocksAsBytes) {
    BlockStream stream;
    stream.writeBlock(1, samples.data(), -1);  // appends nothing
    stream.writeBlock(2, samples.data(), 3);
    int marker = 0;
    std::vector<double> read;
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), wire);
    EXPECT_TRUE((stream << wire) && stream.readBlock(marker, read));
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
    for (const auto& [bytes, blocks] : cases) {
        BlockStream stream;
        stream << bytes;
        EXPECT_EQ(stream.waitingBlocks(), blocks);
        EXPECT_EQ(drain(stream), blocks);
        stream.discardAll();
        EXPECT_EQ(stream.rdbuf()->in_avail(), -1);
    }
}

TEST(BlockStream, ShowsABlockWithoutTakingIt) {
    BlockStream stream, empty;
    stream.writeBlock(1, samples.data(), 3);
    stream.writeBlock(2, samples.data(), 2);
    std::istringstream other(wire);  // carries bytes, not blocks
    TCTypeInfo typeInfo;
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(typeInfo.Read(stream) + typeInfo.sampleCount, 1 + 3);
        EXPECT_EQ(typeInfo.GetFillSize(stream), 2);
        EXPECT_EQ(typeInfo.Read(i == 0 ? other : static_cast<std::istream&>(empty)), 0);
        EXPECT_EQ(typeInfo.blockMarker + typeInfo.sampleCount, 0);
    }
}

// Against a plain string, with sizes that cross the edges of the buffer's chunks.
TEST(BlockStream, IsFirstInFirstOut) {
    std::mt19937 random(1);
    BlockStream stream;
    std::string written, read;
    for (int round = 0; round < 300; ++round) {
        std::string piece(round % 3 == 0 ? 65536 : random() % 200000, '\0');
        std::iota(piece.begin(), piece.end(), static_cast<char>(round));
        stream.write(piece.data(), static_cast<std::streamsize>(piece.size()));
        written += piece;
        const std::size_t waiting = written.size() - read.size();
        piece.resize(round % 10 == 9 ? waiting : random() % (waiting + 1));
        stream.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        read += piece;
        if (read.size() < written.size()) {
            const int next = stream.peek();
            read += static_cast<char>(stream.get() == next ? next : ~next);
        }
    }
    EXPECT_TRUE(stream.good());
    read.append(std::istreambuf_iterator<char>(stream), {});
    EXPECT_TRUE(read == written);
}
