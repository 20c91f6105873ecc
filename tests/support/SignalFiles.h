#pragma once

#include "workbench/Failure.h"
#include "workbench/files/SignalReader.h"
#include "workbench/files/SignalWriter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

// All samples of a signal, interleaved, read three at a time.
inline std::vector<double> readSamples(SignalReader& reader) {
    const auto channels = static_cast<std::size_t>(reader.info().channels);
    std::vector<double> block(3 * channels), samples;
    while (const std::int64_t got = reader.read(block.data(), 3)) {
        samples.insert(samples.end(), block.begin(), block.begin() + got * reader.info().channels);
    }
    EXPECT_EQ(static_cast<std::int64_t>(samples.size()),
              reader.info().samples * reader.info().channels);
    return samples;
}

inline bool sameBits(const std::vector<double>& left, const std::vector<double>& right) {
    return left.size() == right.size() &&
           std::memcmp(left.data(), right.data(), left.size() * sizeof(double)) == 0;
}

inline ResultInfo resultInfo(int channels, double rate) {
    ResultInfo info;
    info.channels = channels;
    info.rate = rate;
    return info;
}

// Writes and finishes a file, replacing one that is there.
inline void writeSignal(const std::string& path, const std::vector<double>& samples,
                        ResultInfo info, Encoding encoding = Encoding::automatic) {
    info.samples = static_cast<std::int64_t>(samples.size()) / info.channels;
    const auto writer = createSignal(path, true, encoding, info);
    const std::int64_t half = info.samples / 2;
    writer->write(samples.data(), half);
    writer->write(samples.data() + half * info.channels, info.samples - half);
    writer->finish({});
}

// Expects that work ends with a Failure, whose one line has all the parts in it, in this order.
template <typename Work>
void expectFailure(Work work, const std::vector<std::string>& parts) {
    try {
        work();
    } catch (const Failure& failure) {
        const std::string text = failure.what();
        EXPECT_EQ(text.find_first_of("\n\r"), std::string::npos) << text;
        std::size_t from = 0;
        for (const std::string& part : parts) {
            from = std::min(text.find(part, from), text.size());
            EXPECT_LT(from, text.size()) << "no '" << part << "' in: " << text;
        }
        return;
    }
    ADD_FAILURE() << "no Failure, but expected: " << parts.front();
}
