#include "fuzz/fuzz.h"
#include "fuzz/signals.h"

// An input is an array, or an archive of arrays; of an archive, an array with the name a is read as
// well.

static void checkRoundTrip(const SignalInfo& info, const std::vector<double>& samples) {
    ResultInfo result;
    result.channels = info.channels;
    result.samples = info.samples;
    const auto reader = writtenAndOpened(".npy", samples, result, {true, {}, {}});
    require(reader->info().channels == info.channels, "what was written has the same channels");
    require(sameSamples(samplesOf(*reader, true), samples), "and the same samples");
}

static void check(const std::string& path) {
    const auto read = readBothWays(path);
    if (read && read->info.format.starts_with("npy")) {  // and not a text
        checkRoundTrip(read->info, read->samples);
    }
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
