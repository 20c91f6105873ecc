#include "fuzz/fuzz.h"
#include "fuzz/signals.h"
#include "workbench/messages/Failure.h"
#include "workbench/parts/Part.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <unistd.h>

// An input is a file of one of the formats that are read by a library; its first bytes decide
// which. Library and reader run in this process: what breaks down here breaks a part down.

extern const Part edfPart, hdf5Part, matPart, mseedPart, netcdfPart;

namespace {

struct Laboratory {
    const Part* part;
    bool (*recognises)(std::string_view bytes);
};

}  // namespace

static bool isMat(std::string_view bytes) {
    return bytes.size() >= 128 && (bytes.substr(126, 2) == "IM" || bytes.substr(126, 2) == "MI");
}

static bool isEdf(std::string_view bytes) {
    return bytes.starts_with("0       ") || bytes.starts_with("\377BIOSEMI");
}

// By the quality of the data, which stands before a blank.
static bool isMseed(std::string_view bytes) {
    return bytes.size() >= 48 && std::string_view("DRQM").find(bytes[6]) != std::string_view::npos;
}

static bool isHdf5(std::string_view bytes) {
    return bytes.starts_with("\x89HDF");
}

static bool isNetcdf(std::string_view bytes) {
    return bytes.starts_with("CDF");
}

static constexpr std::array laboratories = {
    Laboratory{&matPart, isMat}, Laboratory{&edfPart, isEdf}, Laboratory{&mseedPart, isMseed},
    Laboratory{&hdf5Part, isHdf5}, Laboratory{&netcdfPart, isNetcdf}};
static constexpr std::int64_t mostValues = 1 << 16;  // that are read and written again
static constexpr std::size_t mostParts = 8;          // of a file

namespace {

// Bytes as a file with a name, which HDF5 asks for, as long as the object lasts.
class NamedFile {
public:
    explicit NamedFile(std::string_view bytes)
        : file(std::filesystem::temp_directory_path() /
               ("fendra-fuzz-" + std::to_string(getpid()) + "-" + std::to_string(count++))) {
        std::ofstream(file, std::ios::binary) << bytes;
    }
    NamedFile(const NamedFile&) = delete;
    NamedFile& operator=(const NamedFile&) = delete;
    ~NamedFile() { std::filesystem::remove(file); }

    std::string path() const { return file.string(); }

private:
    static inline int count = 0;
    std::filesystem::path file;
};

}  // namespace

static std::unique_ptr<SignalReader> open(const Part& part, const std::string& path,
                                          const std::string& name) {
    ReadOptions options;
    options.lossy = options.allowNonfinite = true;
    options.part = name;
    try {
        return part.open(path, SourceName("input"), options);
    } catch (const Failure& refusal) {
        requireShowable(refusal.what());
        return nullptr;
    }
}

// All samples, or none where they turn out to be unreadable.
static std::vector<double> samplesOfPart(SignalReader& reader) {
    try {
        return samplesOf(reader, true);
    } catch (const Failure& refusal) {
        requireShowable(refusal.what());
        return {};
    }
}

static std::vector<FilePart> partsOf(const Part& part, const std::string& path) {
    try {
        return part.parts(path, SourceName("input"));
    } catch (const Failure& refusal) {
        requireShowable(refusal.what());
        return {};
    }
}

// The samples of a signal that is to be written.
class SampleReader final : public SignalReader {
public:
    SampleReader(const SignalInfo& info, const std::vector<double>& values) : samples(values) {
        facts = info;
    }

    std::int64_t read(double* interleaved, std::int64_t count) override {
        const std::int64_t taken = std::min(count, facts.samples - position);
        std::copy_n(samples.data() + position * facts.channels, taken * facts.channels,
                    interleaved);
        position += taken;
        return taken;
    }

private:
    const std::vector<double>& samples;
    std::int64_t position = 0;
};

static void checkRoundTrip(const Part& part, const SignalInfo& info,
                           const std::vector<double>& samples) {
    const NamedFile file("");
    SampleReader reader(info, samples);
    SignalTarget target;
    target.encoding = Encoding::float64;
    part.write(file.path(), reader, target,
               {info.channels, info.samples, info.rate, info.axis, info.names, {"note"}});
    for (const FilePart& each : partsOf(part, file.path())) {
        if (each.refusal.empty()) {
            const auto again = open(part, file.path(), each.name);
            require(again != nullptr && again->info().channels == info.channels &&
                        again->info().rate == info.rate && again->info().names == info.names,
                    "what was written is known again");
            require(sameSamples(samplesOf(*again, true), samples), "and has the same samples");
            return;
        }
    }
    require(false, "what was written has a signal");
}

static void check(const Part& part, const std::string& path) {
    std::size_t count = 0;
    for (const FilePart& each : partsOf(part, path)) {
        if (++count > mostParts) {
            break;
        }
        if (!each.refusal.empty()) {
            requireShowable(each.refusal);
            continue;
        }
        const auto reader = open(part, path, each.name);
        if (reader == nullptr || reader->info().samples > mostValues / reader->info().channels) {
            continue;
        }
        const SignalInfo info = reader->info();
        const std::vector<double> samples = samplesOfPart(*reader);
        if (!samples.empty() && info.samples > 1 && part.write != nullptr) {
            checkRoundTrip(part, info, samples);
        }
    }
}

void fuzzOne(Bytes input) {
    const std::string_view bytes = InputReader(input).text(input.size());
    for (const Laboratory& laboratory : laboratories) {
        if (laboratory.recognises(bytes)) {
            const NamedFile file(bytes);
            check(*laboratory.part, file.path());
            return;
        }
    }
}
