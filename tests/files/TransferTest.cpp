#include "workbench/signals/Transfer.h"

#include "tests/support/SignalFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

// Everything that a signal can have, with letters that are not of ASCII.
static Transfer fullTransfer() {
    Transfer transfer;
    transfer.info.format = "MAT 5, 64-bit float";
    transfer.info.channels = 2;
    transfer.info.samples = 3;
    transfer.info.rate = 44100.0 / 7.0;
    transfer.info.axis = SignalAxis{"t (\xc2\xb5s)", -0.1, 7.0 / 44100.0, true, 1e-300, 0.5};
    transfer.info.names = {"\"left\"", ""};
    transfer.info.remarks = {"odd\n"};
    transfer.target.encoding = Encoding::float32;
    transfer.target.lossy = true;
    transfer.notes = {"one", "two"};
    return transfer;
}

static const std::vector<double> fullSamples = {0.1, -0.0, 5e-324, std::nan(""), HUGE_VAL, 1e300};

static std::string bytesOf(const Transfer& transfer, const std::vector<double>& samples) {
    const FileHandle file = createUnnamedFile();
    putSamples(file.get(), samples.data(), samples.size());
    putFacts(file.get(), transfer);
    std::string bytes(static_cast<std::size_t>(filePosition(file.get())), '\0');
    std::rewind(file.get());
    EXPECT_EQ(std::fread(bytes.data(), 1, bytes.size(), file.get()), bytes.size());
    return bytes;
}

static std::unique_ptr<TransferReader> opened(std::string_view bytes) {
    FileHandle file = createUnnamedFile();
    std::fwrite(bytes.data(), 1, bytes.size(), file.get());
    return std::make_unique<TransferReader>(std::move(file), SourceName("x.mat"));
}

TEST(Transfer, KeepsSamplesAndFacts) {
    const Transfer given = fullTransfer();
    const auto reader = opened(bytesOf(given, fullSamples));
    const Transfer& got = reader->transfer();
    EXPECT_EQ(reader->info().source.path, "x.mat");
    EXPECT_EQ(reader->info().format, given.info.format);
    EXPECT_EQ(reader->info().rate, given.info.rate);
    EXPECT_EQ(reader->info().names, given.info.names);
    EXPECT_EQ(reader->info().remarks, given.info.remarks);
    ASSERT_TRUE(reader->info().axis);
    EXPECT_EQ(reader->info().axis->name, given.info.axis->name);
    EXPECT_EQ(reader->info().axis->start, given.info.axis->start);
    EXPECT_EQ(reader->info().axis->step, given.info.axis->step);
    EXPECT_EQ(reader->info().axis->lowestStep, given.info.axis->lowestStep);
    EXPECT_EQ(reader->info().axis->highestStep, given.info.axis->highestStep);
    EXPECT_TRUE(reader->info().axis->time);
    EXPECT_EQ(got.target.encoding, Encoding::float32);
    EXPECT_TRUE(got.target.lossy);
    EXPECT_EQ(got.result().notes, given.notes);
    EXPECT_TRUE(sameBits(readSamples(*reader), fullSamples));
}

// A part that ends early leaves a beginning; one that errs, other numbers of samples or names.
TEST(Transfer, IsRefusedUnlessItIsComplete) {
    const std::string whole = bytesOf(fullTransfer(), fullSamples);
    std::vector<std::string> wrong = {bytesOf(fullTransfer(), {1, 2, 3, 4})};
    for (std::size_t length = 0; length < whole.size(); ++length) {
        wrong.push_back(whole.substr(0, length));
    }
    Transfer odd = fullTransfer();
    odd.info.names = {"one"};
    wrong.push_back(bytesOf(odd, fullSamples));
    odd = fullTransfer();
    odd.info.channels = 0;
    wrong.push_back(bytesOf(odd, fullSamples));
    odd.info.channels = -2;
    odd.info.samples = -3;
    wrong.push_back(bytesOf(odd, fullSamples));
    for (const std::string& bytes : wrong) {
        EXPECT_EQ(failureOf([&] { opened(bytes); }),
                  "x.mat: the signal arrived incomplete; try again");
    }
}
