#include "workbench/files/audio/AudioReader.h"

#include "workbench/files/audio/AudioExtent.h"
#include "workbench/files/audio/AudioLabels.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/signals/requireFinite.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

static std::string formatName(int format) {
    static constexpr std::array encodings = {
        std::pair{SF_FORMAT_PCM_S8, "8-bit PCM"},   std::pair{SF_FORMAT_PCM_U8, "8-bit PCM"},
        std::pair{SF_FORMAT_PCM_16, "16-bit PCM"},  std::pair{SF_FORMAT_PCM_24, "24-bit PCM"},
        std::pair{SF_FORMAT_PCM_32, "32-bit PCM"},  std::pair{SF_FORMAT_FLOAT, "32-bit float"},
        std::pair{SF_FORMAT_DOUBLE, "64-bit float"}};
    const auto* found = std::find_if(encodings.begin(), encodings.end(), [format](const auto& row) {
        return row.first == (format & SF_FORMAT_SUBMASK);
    });
    return fmt::format("{}, {}", containerName(format),
                       found == encodings.end() ? "compressed" : found->second);
}

static bool isPcm(int format) {
    switch (format & SF_FORMAT_SUBMASK) {
        case SF_FORMAT_PCM_S8:
        case SF_FORMAT_PCM_U8:
        case SF_FORMAT_PCM_16:
        case SF_FORMAT_PCM_24:
        case SF_FORMAT_PCM_32:
            return true;
        default:
            return false;
    }
}

AudioReader::AudioReader(FileHandle audio, const SourceName& source, const ReadOptions& options)
    : file(std::move(audio)) {
    facts.source = source;
    const std::optional<AudioExtent> extent = findAudioExtent(file.get());
    const SF_INFO header = openFromStart();
    if (extent && extent->declared > extent->present) {
        throw Failure(
            fmt::format("{} is truncated: its header declares {} bytes of samples, but only {} are "
                        "present; copy it again",
                        source.shown, extent->declared, extent->present));
    }
    facts.format = formatName(header.format);
    facts.channels = header.channels;
    facts.rate = std::max(header.samplerate, 0);
    takeLabels();
    // Integers are finite, and an extent shows that all are present: none has to be looked at.
    if (extent && isPcm(header.format) && header.frames > 0) {
        facts.samples = header.frames;
    } else {
        scan(header.frames, options.allowNonfinite);
    }
}

// WAV files hold, and the library finds in them, no longer tags than these.
void AudioReader::takeLabels() {
    constexpr std::size_t longest = 2000;
    facts.labels = readLabels(sound.get(), facts.channels);
    std::erase_if(facts.labels.tags, [&](const SoundLabels::Tag& tag) {
        if (tag.text.size() > longest) {
            facts.remarks.push_back(
                fmt::format("{}: the tag {} is longer than {} bytes, and left out",
                            facts.source.shown, tag.name, longest));
        }
        return tag.text.size() > longest;
    });
}

// Counts the samples and looks at every value; declared may be SF_COUNT_MAX, for not known.
void AudioReader::scan(std::int64_t declared, bool allowNonfinite) {
    const std::int64_t channels = facts.channels;
    const std::int64_t capacity = std::max<std::int64_t>(1, 16384 / channels);
    std::vector<double> block(static_cast<std::size_t>(capacity * channels));
    while (const std::int64_t got = sf_readf_double(sound.get(), block.data(), capacity)) {
        if (!allowNonfinite) {
            requireFinite(facts, facts.samples, block.data(), got);
        }
        facts.samples += got;
    }
    if (facts.samples < declared && declared != SF_COUNT_MAX) {
        throw Failure(
            fmt::format("{} is truncated: its header declares {} samples, but only {} can be read; "
                        "copy it again",
                        facts.source.shown, declared, facts.samples));
    }
    if (facts.samples == 0) {
        throw Failure(fmt::format("{} holds no samples; choose another file", facts.source.shown));
    }
    openFromStart();
}

// There are encodings in which the library cannot seek, not even to the start.
SF_INFO AudioReader::openFromStart() {
    sound.reset();
    std::rewind(file.get());
    SF_INFO header = {};
    sound = openSound(file.get(), SFM_READ, header);
    if (sound == nullptr) {
        throw Failure(fmt::format("{}: the audio cannot be read ({}); save it again as WAV or FLAC",
                                  facts.source.shown, printable(sf_strerror(nullptr), 100)));
    }
    return header;
}

std::int64_t AudioReader::read(double* interleaved, std::int64_t count) {
    count = std::min(count, facts.samples - position);
    if (sf_readf_double(sound.get(), interleaved, count) != count) {
        throw Failure(
            fmt::format("{} changed while it was being read; start again", facts.source.shown));
    }
    position += count;
    return count;
}
