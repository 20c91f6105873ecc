#include "workbench/files/array/NpyWriter.h"

#include "workbench/files/array/NpyHeader.h"
#include "workbench/files/disk/FileStream.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <array>
#include <bit>
#include <cerrno>
#include <cmath>
#include <limits>

static_assert(std::endian::native == std::endian::little,
              "values are written as they are in memory");

static constexpr std::size_t headerLength = 128;  // a multiple of 64, with room for any shape
static constexpr std::size_t blockBytes = std::size_t{1} << 16;

static bool isNarrow(const SignalTarget& target) {
    if (EncodingRow::of(target.encoding).integer || target.dither) {
        throw Failure(
            fmt::format("{} is an array of floating-point samples; leave out {}", target.name.shown,
                        target.dither ? "--dither" : "the encoding, or take float64 or float32"));
    }
    return target.encoding == Encoding::float32;
}

NpyWriter::NpyWriter(const SignalTarget& target, const ResultInfo& info)
    : narrow(isNarrow(target)),
      name(target.name.shown),
      channels(info.channels),
      output(target.name, target.replace) {
    if (!output.seekable()) {
        spool = openTemporary();
    }
    bytes = header();
}

// As long for any number of samples, so that it can be written again when that is known.
std::string NpyWriter::header() const {
    const std::string text = fmt::format(
        "{{'descr': '{}', 'fortran_order': False, 'shape': ({},{}), }}", narrow ? "<f4" : "<f8",
        samples, channels == 1 ? "" : fmt::format(" {}", channels));
    constexpr std::size_t before = 10;
    constexpr std::size_t length = headerLength - before;
    std::string all(NpyHeader::mark);
    all += {1, 0, static_cast<char>(length), 0};
    all += text;
    all.resize(headerLength - 1, ' ');
    return all + '\n';
}

void NpyWriter::put(std::string_view given) {
    errno = 0;
    if (spool == nullptr) {
        output.write(given);
    } else if (std::fwrite(given.data(), 1, given.size(), spool.get()) < given.size()) {
        output.fail();
    }
}

void NpyWriter::flush() {
    put(bytes);
    bytes.clear();
}

template <typename Value>
static void append(std::string& bytes, Value value) {
    const auto raw = std::bit_cast<std::array<char, sizeof(Value)>>(value);
    bytes.append(raw.data(), raw.size());
}

void NpyWriter::write(const double* interleaved, std::int64_t count) {
    constexpr auto mostNarrow = static_cast<double>(std::numeric_limits<float>::max());
    for (std::int64_t i = 0; i < count * channels; ++i) {
        const double value = interleaved[i];
        if (!narrow) {
            append(bytes, value);
        } else if (std::isfinite(value) && std::abs(value) > mostNarrow) {
            throw Failure(
                fmt::format("{}, sample {}, channel {}: {} does not fit into the "
                            "encoding; leave out --encoding",
                            name, samples + i / channels + 1, i % channels + 1, value));
        } else {
            append(bytes, static_cast<float>(value));
        }
        if (bytes.size() >= blockBytes) {
            flush();
        }
    }
    samples += count;
}

void NpyWriter::finish(const std::vector<std::string>& /*closingNotes*/) {
    if (samples == 1 && channels > 1) {
        throw Failure(
            fmt::format("{}: a single row of an array is read as one signal, not as {} "
                        "channels; write text, as with -o FILE.csv",
                        name, channels));
    }
    flush();
    std::FILE* const file = spool != nullptr ? spool.get() : output.stream();
    if (std::fflush(file) != 0 || !seekFile(file, 0, SEEK_SET)) {
        output.fail();
    }
    put(header());
    if (spool != nullptr) {
        output.copy(spool.get());
    }
    output.commit();
}
