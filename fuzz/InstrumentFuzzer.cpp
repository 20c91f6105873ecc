#include "fuzz/fuzz.h"
#include "fuzz/signals.h"

#include <algorithm>
#include <array>
#include <bit>

// An input is a file that an instrument writes: universal, seismogram or spectrum. Seismograms are
// longer than most inputs, so one that begins with S is what changes the header of a sound one: a
// number of changes, each the place of a word and its bytes; then what stands after the header.

static constexpr std::size_t headerWords = 158;

static std::string seismogram(InputReader input) {
    std::array<std::int32_t, headerWords> words = {};
    words.fill(0x20202020);
    std::fill(words.begin(), words.begin() + 70, std::bit_cast<std::int32_t>(-12345.0F));
    words[0] = std::bit_cast<std::int32_t>(0.01F);
    words[76] = 7;
    words[79] = 3;
    words[85] = words[105] = 1;
    std::string bytes(reinterpret_cast<const char*>(words.data()), sizeof words);
    for (int changes = input.byte() % 16; changes > 0; --changes) {
        const std::size_t place = 4 * (input.byte() % headerWords);
        const std::string_view word = input.text(4);
        bytes.replace(place, word.size(), word);
    }
    return bytes.append(input.text(1 << 16));
}

static void checkRoundTrip(const SignalInfo& info, const std::vector<double>& samples) {
    ResultInfo result;
    result.channels = info.channels;
    result.columnNames = info.names;
    ReadOptions options;
    options.allowNonfinite = true;
    options.part = info.channels > 1 ? "all" : "";
    const auto again = writtenAndOpened(".uff", samples, result, options);
    require(again->info().channels == info.channels, "what was written has the same channels");
    require(sameSamples(samplesOf(*again, true), samples), "and the same samples");
    if (info.format.starts_with("SAC") && info.rate > 0.0) {
        result.rate = info.rate;
        const auto narrow = writtenAndOpened(".sac", samples, result, options);
        require(narrow->info().names == info.names, "and the same names");
        require(sameSamples(samplesOf(*narrow, true), samples), "and the same floats");
    }
}

static void check(const std::string& path, const char* part) {
    if (const auto read = readBothWays(path, part)) {
        checkRoundTrip(read->info, read->samples);
    }
}

void fuzzOne(Bytes input) {
    InputReader reader(input);
    const bool patched = reader.byte() == 'S';
    const std::string bytes =
        patched ? seismogram(reader) : std::string(InputReader(input).text(input.size()));
    if (!patched && bytes.find("##") == std::string::npos && !bytes.starts_with("    -1")) {
        return;  // of another format, if of any
    }
    const MemoryFile file(bytes);
    for (const char* part : {"", "1", "2", "all", "a"}) {
        check(file.path(), part);
    }
}
