#include "workbench/files/SampleDigest.h"

#include <gtest/gtest.h>

#include <vector>

// The digests of no bytes, and of 1000 times the bytes 00 00 00 00 00 00 f8 bf, from another
// program.
TEST(SampleDigest, IsTheOneOfTheBytesWhateverTheBlocks) {
    SampleDigest digest;
    EXPECT_EQ(digest.hex(), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    const std::vector<double> samples(999, -1.5);
    digest.add(samples.data(), 1);
    digest.add(samples.data(), 999);
    EXPECT_EQ(digest.hex(), "f59a53b7611f3224a756f5a60de5cf90b0eab6724356139d8966a2f8b41c9318");
}
