#include "fuzz/fuzz.h"
#include "fuzz/signals.h"
#include "workbench/messages/Failure.h"

// An input is an array, or an archive of arrays; of an archive, an array with the name a is read as
// well.

static constexpr std::int64_t mostValues = 1 << 20;  // that are read and written again

static std::unique_ptr<SignalReader> open(const std::string& path, bool lenient) {
    ReadOptions options;
    options.allowNonfinite = options.lossy = lenient;
    try {
        return openSignal(SourceName(path), options);
    } catch (const Failure& refusal) {
        requireShowable(refusal.what());
        return nullptr;
    }
}

static void checkRoundTrip(const SignalInfo& info, const std::vector<double>& samples) {
    ResultInfo result;
    result.channels = info.channels;
    result.samples = info.samples;
    const auto reader = writtenAndOpened(".npy", samples, result, {true, {}, {}});
    require(reader->info().channels == info.channels, "what was written has the same channels");
    require(sameSamples(samplesOf(*reader, true), samples), "and the same samples");
}

static void check(const std::string& path) {
    const auto strict = open(path, false);
    const auto reader = open(path, true);
    require(reader != nullptr || strict == nullptr, "what is exact is let through as well");
    if (reader == nullptr || reader->info().samples > mostValues / reader->info().channels) {
        return;
    }
    const std::vector<double> samples = samplesOf(*reader, true);
    if (strict != nullptr) {
        require(sameSamples(samplesOf(*strict, false), samples), "a file reads the same each time");
    }
    checkRoundTrip(reader->info(), samples);
}

void fuzzOne(Bytes input) {
    const std::string_view bytes = InputReader(input).text(input.size());
    if (!bytes.starts_with("\x93NUMPY") && !bytes.starts_with("PK")) {
        return;  // of another format, if of any
    }
    const MemoryFile file(bytes);
    check(file.path());
    check(file.path() + ":a");
}
