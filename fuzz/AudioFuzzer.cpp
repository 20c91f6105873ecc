#include "fuzz/fuzz.h"
#include "fuzz/signals.h"
#include "workbench/messages/Failure.h"

// An input is an audio file.

static constexpr std::int64_t mostValues = 1 << 20;  // that are read and written again

static std::unique_ptr<SignalReader> open(const MemoryFile& file, bool allowNonfinite) {
    try {
        return openSignal(SourceName(file.path()), {.allowNonfinite = allowNonfinite});
    } catch (const Failure& refusal) {
        requireShowable(refusal.what());
        return nullptr;
    }
}

static void checkRoundTrip(const SignalInfo& info, const std::vector<double>& samples) {
    ResultInfo result;
    result.channels = info.channels;
    result.samples = info.samples;
    result.rate = info.rate;
    result.labels = info.labels;
    const auto reader = writtenAndOpened(".wav", samples, result, {.allowNonfinite = true});
    require(reader->info().channels == info.channels && reader->info().rate == info.rate,
            "what was written has the same facts");
    require(sameSamples(samplesOf(*reader, true), samples), "and the same samples");
}

void fuzzOne(Bytes input) {
    const MemoryFile file(InputReader(input).text(input.size()));
    const auto strict = open(file, false);
    const auto reader = open(file, true);
    require(reader != nullptr || strict == nullptr, "what is finite is let through as well");
    if (reader == nullptr || reader->info().samples > mostValues / reader->info().channels ||
        reader->info().format == "text") {  // which may have any rate
        return;
    }
    const std::vector<double> samples = samplesOf(*reader, true);
    if (strict != nullptr) {
        require(sameSamples(samplesOf(*strict, false), samples), "a file reads the same each time");
    }
    if (reader->info().rate > 0.0) {
        checkRoundTrip(reader->info(), samples);
    }
}
