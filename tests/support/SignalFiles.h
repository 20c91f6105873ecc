#pragma once

#include "workbench/files/signalFiles.h"
#include "workbench/messages/Failure.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

// All samples of a signal, interleaved, read three at a time.
inline std::vector<double> readSamples(SignalReader& reader) {
    const std::int64_t channels = reader.info().channels;
    std::vector<double> block(static_cast<std::size_t>(3 * channels)), samples;
    while (const std::int64_t got = reader.read(block.data(), 3)) {
        samples.insert(samples.end(), block.data(), block.data() + got * channels);
    }
    EXPECT_EQ(static_cast<std::int64_t>(samples.size()), reader.info().samples * channels);
    return samples;
}

inline bool sameBits(const std::vector<double>& left, const std::vector<double>& right) {
    return left.size() == right.size() &&
           std::memcmp(left.data(), right.data(), left.size() * sizeof(double)) == 0;
}

inline ResultInfo resultInfo(int channels = 1, double rate = 8000) {
    ResultInfo info;
    info.channels = channels;
    info.rate = rate;
    return info;
}

// Writes and finishes a file, replacing one that is there.
inline void writeSignal(const std::string& path, const std::vector<double>& samples,
                        ResultInfo info = resultInfo(), Encoding encoding = Encoding::automatic) {
    info.samples = static_cast<std::int64_t>(samples.size()) / info.channels;
    const auto writer = createSignal({SourceName::ofOutput(path), true, encoding}, info);
    const std::int64_t half = info.samples / 2;
    writer->write(samples.data(), half);
    writer->write(samples.data() + half * info.channels, info.samples - half);
    writer->finish({});
}

// The samples are those that were written, bit for bit, and so are rate, names and start of the
// axis.
inline void expectGivenBack(const SignalInfo& info, const std::vector<double>& interleaved,
                            const std::vector<double>& samples, const ResultInfo& written) {
    EXPECT_TRUE(sameBits(interleaved, samples));
    EXPECT_EQ(info.rate, written.rate);
    EXPECT_EQ(info.names, written.columnNames);
    EXPECT_TRUE(info.axis && info.axis->start == written.axis->start);
}

// What the Failure says that work ends with; empty if it goes through.
template <typename Work>
std::string failureOf(Work work) {
    try {
        work();
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "";
}
