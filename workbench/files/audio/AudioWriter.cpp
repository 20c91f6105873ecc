#include "workbench/files/audio/AudioWriter.h"

#include "workbench/files/audio/AudioLabels.h"
#include "workbench/files/audio/ChunkReader.h"
#include "workbench/files/disk/FileStream.h"
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

// The largest size of 32 bits, less room for the header itself.
static constexpr std::int64_t longestShortChunk = 0xffffffff - 0xffff;

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

static int codeOf(const EncodingRow& row) {
    if (!row.integer) {
        return row.bytes == 4 ? SF_FORMAT_FLOAT : SF_FORMAT_DOUBLE;
    }
    return row.bytes == 2 ? SF_FORMAT_PCM_16 : row.bytes == 3 ? SF_FORMAT_PCM_24 : SF_FORMAT_PCM_32;
}

static SF_INFO headerOf(std::string_view container, const EncodingRow& row, int channels,
                        int rate) {
    SF_INFO header = {};
    header.samplerate = rate;
    header.channels = channels;
    header.format = containerCode(container) | codeOf(row);
    return header;
}

static const EncodingRow& encodingFor(const AudioContainer& container, Encoding encoding) {
    if (encoding != Encoding::automatic) {
        return EncodingRow::of(encoding);
    }
    const EncodingRow& floating = EncodingRow::of(Encoding::float64);
    const SF_INFO probe = headerOf(container.name, floating, 1, 1);
    return sf_format_check(&probe) != 0 ? floating : EncodingRow::of(Encoding::pcm24);
}

AudioFormat::AudioFormat(const AudioContainer& container, const SignalTarget& target,
                         const ResultInfo& info) {
    const std::string& name = target.name.shown;
    const int rate = wholeRate(info.rate, name);
    const EncodingRow& row = encodingFor(container, target.encoding);
    const bool isLong =
        container.shortSizes && info.samples > longestShortChunk / row.bytes / info.channels;
    if (isLong && container.longForm.empty()) {
        throw Failure(fmt::format("{}: {} holds at most 4 GiB; use the ending .wav, .w64 or .rf64",
                                  name, container.name));
    }
    header = headerOf(isLong ? container.longForm : container.name, row, info.channels, rate);
    const std::vector<std::string>& speakers = info.labels.speakers;
    if ((header.format & SF_FORMAT_TYPEMASK) == SF_FORMAT_WAV && !speakers.empty() &&
        holdsSpeakers("WAV", speakers)) {
        header.format = SF_FORMAT_WAVEX | codeOf(row);  // WAV that has a channel mask
    }
    if (sf_format_check(&header) == 0) {
        throw Failure(fmt::format(
            "{}: {} cannot hold {} of {} channel(s); use another encoding, or the ending .wav",
            name, container.name, row.word, info.channels));
    }
    if (target.dither && !row.integer) {
        throw Failure(fmt::format(
            "{}: {} is not rounded to integers: there is nothing to dither; leave out --dither, or "
            "give an --encoding of integers, say pcm16",
            name, row.word));
    }
    integerBits = row.integer ? 8 * row.bytes : 0;
    dithered = target.dither;
    narrow = row.encoding == Encoding::float32;
}

AudioWriter::AudioWriter(const AudioContainer& container, const SignalTarget& target,
                         const ResultInfo& info)
    : name(target.name.shown),
      format(container, target, info),
      fullScale(std::ldexp(1.0, format.integerBits - 1)),
      output(target.name, target.replace) {
    if (!output.seekable()) {
        spool = openTemporary();
    }
    errno = 0;
    sound = openSound(stream(), SFM_WRITE, format.header);
    checkStream(true);
    if (sound == nullptr) {
        throw Failure(fmt::format("cannot write {}: {} Use another ending, say .wav", name,
                                  printable(sf_strerror(nullptr), 100)));
    }
    // The chunk of peaks holds the time of writing. It is left out where the library allows that.
    sf_command(sound.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    writeLabels(sound.get(), info.labels);
}

bool AudioWriter::fits(double value) const {
    if (format.integerBits != 0) {
        return value <= 1.0 && std::nearbyint(value * fullScale) >= -fullScale;  // not for a NaN
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

void AudioWriter::refuse(double misfit, std::int64_t index) const {
    throw Failure(fmt::format(
        "{}, sample {}, channel {}: {} does not fit into the encoding; {}use float64 in a .wav",
        name, index / format.header.channels + 1, index % format.header.channels + 1, misfit,
        std::isfinite(misfit) ? "lower it by --gain -X in dB, or by --gain normalize, or " : ""));
}

// libsndfile would scale doubles by one less than the full scale, and clip: the integers are made
// here, so that what was read from integers goes back to the same ones. 1.0, which no integer
// holds, becomes the largest; and so does what dither takes beyond it. The library takes the code
// in the upper bits.
int AudioWriter::integerOf(double value) {
    const double code = std::nearbyint(value * fullScale + (format.dithered ? dither.next() : 0.0));
    return static_cast<int>(std::clamp(code, -fullScale, fullScale - 1.0) *
                            std::ldexp(1.0, 32 - format.integerBits));
}

void AudioWriter::writeBlock(const double* values, std::size_t count) {
    const double* misfit =
        std::find_if(values, values + count, [this](double value) { return !fits(value); });
    if (misfit != values + count) {
        refuse(*misfit, written + (misfit - values));
    }
    errno = 0;
    const auto items = static_cast<sf_count_t>(count);
    sf_count_t done = 0;
    if (format.integerBits == 0) {
        done = sf_write_double(sound.get(), values, items);
    } else {
        integers.resize(count);
        std::transform(values, values + count, integers.begin(),
                       [this](double value) { return integerOf(value); });
        done = sf_write_int(sound.get(), integers.data(), items);
    }
    checkStream(done == items);
    written += items;
}

// The library loses some errors of the stream below it; the stream remembers them.
void AudioWriter::checkStream(bool allDone) {
    if (!allDone || std::ferror(stream()) != 0) {
        output.fail();
    }
}

// Sets the time in the chunk of peaks, after its version, to 0: libsndfile writes one into every
// RF64 of floating point.
static void clearPeakTime(std::FILE* file) {
    ChunkReader chunks(file);
    while (chunks.next()) {
        if (chunks.id() == "PEAK" && seekFile(file, chunks.position() + 4, SEEK_SET)) {
            constexpr std::array<char, 4> never = {};
            std::fwrite(never.data(), 1, never.size(), file);
            return;
        }
    }
}

void AudioWriter::finish(const std::vector<std::string>& /*closingNotes*/) {
    errno = 0;
    checkStream(sf_close(sound.release()) == 0);
    clearPeakTime(stream());
    checkStream(true);
    if (spool != nullptr) {
        std::rewind(spool.get());
        std::array<char, blockLength> block = {};
        while (const std::size_t length = std::fread(block.data(), 1, block.size(), spool.get())) {
            output.write({block.data(), length});
        }
    }
    output.commit();
}
