#include "fuzz/fuzz.h"
#include "fuzz/signals.h"

// An input is an audio file.

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
    const auto read = readBothWays(file.path());
    if (read && read->info.format != "text" && read->info.rate > 0.0) {  // a text may have any rate
        checkRoundTrip(read->info, read->samples);
    }
}
