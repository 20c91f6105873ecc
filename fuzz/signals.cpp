#include "fuzz/signals.h"

#include "fuzz/fuzz.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <sys/mman.h>
#include <unistd.h>

MemoryFile::MemoryFile(std::string_view bytes) : descriptor(memfd_create("input", 0)) {
    require(write(descriptor, bytes.data(), bytes.size()) == std::ssize(bytes), "memory is there");
}

MemoryFile::~MemoryFile() {
    close(descriptor);
}

std::string MemoryFile::path() const {
    return "/proc/self/fd/" + std::to_string(descriptor);
}

void requireShowable(const std::string& refusal) {
    require(!refusal.empty() && printable(refusal) == refusal, "a refusal is one line of text");
}

static void requireSense(const SignalInfo& info) {
    require(info.channels >= 1 && info.samples >= 1, "a signal has channels and samples");
    require(std::isfinite(info.rate) && info.rate >= 0.0, "the rate is unknown or a frequency");
    require(info.names.empty() || info.names.size() == static_cast<std::size_t>(info.channels),
            "each channel has its name");
    if (info.axis) {
        require(std::isfinite(info.axis->start) && std::isfinite(info.axis->step) &&
                    info.axis->step != 0.0,
                "an axis rises or falls in finite steps");
        require(info.axis->lowestStep <= std::abs(info.axis->step) * (1.0 + 1e-9) &&
                    info.axis->highestStep >= std::abs(info.axis->step) * (1.0 - 1e-9),
                "and its step is one of those that fit");
        require(!info.axis->time || info.rate > 0.0, "a time axis gives a rate");
    }
}

std::vector<double> samplesOf(SignalReader& reader, bool allowNonfinite) {
    const SignalInfo& info = reader.info();
    requireSense(info);
    std::vector<double> samples, block(static_cast<std::size_t>(7 * info.channels));
    while (const std::int64_t got = reader.read(block.data(), 7)) {
        require(got >= 0 && got <= 7, "no more is read than asked for");
        samples.insert(samples.end(), block.begin(), block.begin() + got * info.channels);
    }
    require(static_cast<std::int64_t>(samples.size()) == info.samples * info.channels,
            "all samples can be read");
    require(allowNonfinite || std::all_of(samples.begin(), samples.end(),
                                          [](double sample) { return std::isfinite(sample); }),
            "all samples are finite");
    return samples;
}

static std::unique_ptr<SignalReader> opened(const std::string& path, const std::string& part,
                                            bool lenient) {
    ReadOptions options;
    options.allowNonfinite = options.lossy = lenient;
    options.part = part;
    try {
        return openSignal(SourceName(path), options);
    } catch (const Failure& refusal) {
        requireShowable(refusal.what());
        return nullptr;
    }
}

std::optional<ReadSignal> readBothWays(const std::string& path, const std::string& part) {
    constexpr std::int64_t mostValues = 1 << 18;
    const auto strict = opened(path, part, false), reader = opened(path, part, true);
    require(reader != nullptr || strict == nullptr, "what is exact is let through as well");
    if (reader == nullptr || reader->info().samples > mostValues / reader->info().channels) {
        return std::nullopt;
    }
    ReadSignal read = {reader->info(), samplesOf(*reader, true)};
    if (strict != nullptr) {
        require(sameSamples(samplesOf(*strict, false), read.samples),
                "a file reads the same each time");
    }
    return read;
}

std::unique_ptr<SignalReader> writtenAndOpened(const std::string& ending,
                                               const std::vector<double>& samples,
                                               const ResultInfo& info, const ReadOptions& options) {
    static const std::string scratch =
        (std::filesystem::temp_directory_path() / ("fendra-fuzz-" + std::to_string(getpid())))
            .string();
    const std::string path = scratch + ending;
    const auto writer = createSignal({SourceName::ofOutput(path), true}, info);
    writer->write(samples.data(), static_cast<std::int64_t>(samples.size()) / info.channels);
    writer->finish({});
    auto reader = openSignal(SourceName(path), options);
    std::filesystem::remove(path);  // open, it can still be read
    return reader;
}

bool sameSamples(const std::vector<double>& left, const std::vector<double>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](double a, double b) {
        return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
               (std::isnan(a) && std::isnan(b));
    });
}
