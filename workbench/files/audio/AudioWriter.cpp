#include "workbench/files/audio/AudioWriter.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <limits>
#include <string_view>

static constexpr std::size_t blockLength = 16384;

// Sizes in a header of 32 bits reach so far; what is left is for the header itself.
static constexpr std::int64_t longestShortChunk = 0xffffffff - 0xffff;

struct ContainerRow {
    std::string_view name;
    int format;
};
static constexpr std::array containerRows = {  // in the order of AudioContainer
    ContainerRow{"WAV", SF_FORMAT_WAV}, ContainerRow{"W64", SF_FORMAT_W64},
    ContainerRow{"RF64", SF_FORMAT_RF64}, ContainerRow{"AIFF", SF_FORMAT_AIFF},
    ContainerRow{"FLAC", SF_FORMAT_FLAC}};

struct EncodingRow {
    std::string_view name;
    int format;
    int bytes;
    bool integer;
};
static constexpr std::array encodingRows = {  // in the order of Encoding, without automatic
    EncodingRow{"pcm16", SF_FORMAT_PCM_16, 2, true},
    EncodingRow{"pcm24", SF_FORMAT_PCM_24, 3, true},
    EncodingRow{"pcm32", SF_FORMAT_PCM_32, 4, true},
    EncodingRow{"float32", SF_FORMAT_FLOAT, 4, false},
    EncodingRow{"float64", SF_FORMAT_DOUBLE, 8, false}};

static int wholeRate(double rate, const std::string& name) {
    if (rate == 0.0) {
        throw Failure(fmt::format(
            "{}: audio needs a sample rate; give it by --rate, or write text, say .csv", name));
    }
    if (!(rate >= 1.0 && rate <= std::numeric_limits<int>::max()) || rate != std::floor(rate)) {
        throw Failure(fmt::format(
            "{}: audio needs a sample rate of whole Hz, not {}; write text, say .csv", name, rate));
    }
    return static_cast<int>(rate);
}

AudioFormat::AudioFormat(const std::string& name, AudioContainer container, Encoding encoding,
                         const ResultInfo& info) {
    if (encoding == Encoding::automatic) {
        encoding = container == AudioContainer::flac ? Encoding::pcm24 : Encoding::float64;
    }
    const EncodingRow& row = encodingRows[static_cast<std::size_t>(encoding) - 1];
    if (info.samples > longestShortChunk / row.bytes / info.channels) {
        if (container == AudioContainer::aiff) {
            throw Failure(fmt::format(
                "{}: AIFF holds 4 GiB at the most; use the ending .wav, .w64 or .rf64", name));
        }
        if (container == AudioContainer::wav) {
            container = AudioContainer::rf64;
        }
    }
    const ContainerRow& holder = containerRows[static_cast<std::size_t>(container)];
    header.samplerate = wholeRate(info.rate, name);
    header.channels = info.channels;
    header.format = holder.format | row.format;
    if (sf_format_check(&header) == 0) {
        throw Failure(fmt::format(
            "{}: {} cannot hold {} of {} channel(s); use another encoding, or the ending .wav",
            name, holder.name, row.name, info.channels));
    }
    integerBits = row.integer ? 8 * row.bytes : 0;
    narrow = row.format == SF_FORMAT_FLOAT;
}

AudioWriter::AudioWriter(const SourceName& target, bool replace, AudioContainer container,
                         Encoding encoding, const ResultInfo& info)
    : name(target.shown),
      format(name, container, encoding, info),
      fullScale(std::ldexp(1.0, format.integerBits - 1)),
      output(target, replace) {
    if (!output.seekable()) {
        spool = openTemporary();
    }
    errno = 0;
    sound = openSound(spool != nullptr ? spool.get() : output.stream(), SFM_WRITE, format.header);
    checkStream(true);
    if (sound == nullptr) {
        throw Failure(fmt::format("cannot write {}: {} Use another ending, say .wav", name,
                                  printable(sf_strerror(nullptr), 100)));
    }
    // The chunk of peaks has the time of writing in it: equal results are to be equal files.
    sf_command(sound.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
}

bool AudioWriter::fits(double value) const {
    if (format.integerBits != 0) {
        const double scaled = std::nearbyint(value * fullScale);
        return scaled >= -fullScale && scaled < fullScale;  // false for a NaN
    }
    return !format.narrow || !std::isfinite(value) ||
           std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max());
}

void AudioWriter::write(const double* interleaved, std::int64_t count) {
    auto rest = static_cast<std::size_t>(count * format.header.channels);
    const std::size_t block =
        blockLength - blockLength % static_cast<std::size_t>(format.header.channels);
    while (rest > 0) {
        const std::size_t length = std::min(rest, block);
        writeBlock(interleaved, length);
        interleaved += length;
        rest -= length;
    }
}

// libsndfile would scale doubles by one less than the full scale, and clip: the integers are made
// here, so that what was read from integers goes back to the same ones.
void AudioWriter::writeBlock(const double* values, std::size_t count) {
    const double* misfit =
        std::find_if(values, values + count, [this](double value) { return !fits(value); });
    if (misfit != values + count) {
        const std::int64_t index = written + (misfit - values);
        throw Failure(fmt::format(
            "{}, sample {}, channel {}: {} does not fit into the encoding; scale "
            "the signal, or use float64 in a .wav",
            name, index / format.header.channels + 1, index % format.header.channels + 1, *misfit));
    }
    errno = 0;
    const auto items = static_cast<sf_count_t>(count);
    sf_count_t done = 0;
    if (format.integerBits == 0) {
        done = sf_write_double(sound.get(), values, items);
    } else {
        integers.resize(count);
        const double topOfInt = std::ldexp(1.0, 32 - format.integerBits);
        std::transform(values, values + count, integers.begin(), [this, topOfInt](double value) {
            return static_cast<int>(std::nearbyint(value * fullScale) * topOfInt);
        });
        done = sf_write_int(sound.get(), integers.data(), items);
    }
    checkStream(done == items);
    written += items;
}

// The library loses some errors of the stream below it; the stream remembers them.
void AudioWriter::checkStream(bool allDone) {
    if (!allDone || std::ferror(spool != nullptr ? spool.get() : output.stream()) != 0) {
        output.fail();
    }
}

void AudioWriter::finish(const std::vector<std::string>& /*closingNotes*/) {
    errno = 0;
    checkStream(sf_close(sound.release()) == 0);
    if (spool != nullptr) {
        std::rewind(spool.get());
        std::array<char, blockLength> block = {};
        while (const std::size_t length = std::fread(block.data(), 1, block.size(), spool.get())) {
            output.write({block.data(), length});
        }
    }
    output.commit();
}
