#include "workbench/files/array/ZipEntryReader.h"

#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <new>
#include <zlib.h>

// Deflate without the frame of zlib around it, as in archives (P. Deutsch, RFC 1951, 1996).
struct ZipEntryReader::Inflation {
    Inflation() {
        if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    Inflation(const Inflation&) = delete;
    Inflation& operator=(const Inflation&) = delete;
    ~Inflation() { inflateEnd(&stream); }

    z_stream stream = {};
    std::array<char, 1 << 15> packed = {};
};

ZipEntryReader::ZipEntryReader(const ZipArchive& zipArchive, const ZipEntry& zipEntry)
    : archive(zipArchive),
      entry(zipEntry),
      position(archive.begin(entry)),
      packedLeft(entry.packed),
      left(entry.length),
      inflation(entry.method == 0 ? nullptr : std::make_unique<Inflation>()) {}

ZipEntryReader::~ZipEntryReader() = default;

void ZipEntryReader::refuse() const {
    archive.refuse(
        fmt::format("{} is damaged; copy the archive again", printable(entry.name, 100)));
}

// Others may have read from the file in between.
std::size_t ZipEntryReader::readPacked(char* to, std::size_t most) {
    const auto count =
        static_cast<std::size_t>(std::min(packedLeft, static_cast<std::int64_t>(most)));
    if (!seekFile(archive.stream(), position, SEEK_SET) ||
        std::fread(to, 1, count, archive.stream()) < count) {
        refuse();
    }
    position += static_cast<std::int64_t>(count);
    packedLeft -= static_cast<std::int64_t>(count);
    return count;
}

std::size_t ZipEntryReader::inflate(char* to, std::size_t most) {
    z_stream& stream = inflation->stream;
    stream.next_out = reinterpret_cast<Bytef*>(to);
    stream.avail_out = static_cast<uInt>(most);
    while (stream.avail_out > 0) {
        if (stream.avail_in == 0) {
            stream.next_in = reinterpret_cast<Bytef*>(inflation->packed.data());
            stream.avail_in =
                static_cast<uInt>(readPacked(inflation->packed.data(), inflation->packed.size()));
        }
        const int state = ::inflate(&stream, Z_NO_FLUSH);
        if (state == Z_STREAM_END) {
            break;
        }
        if (state != Z_OK) {
            refuse();
        }
    }
    return most - stream.avail_out;
}

std::size_t ZipEntryReader::read(char* to, std::size_t most) {
    constexpr std::size_t longest = std::size_t{1} << 30;  // the library counts in 32 bits
    const auto count = static_cast<std::size_t>(
        std::min(left, static_cast<std::int64_t>(std::min(most, longest))));
    if (count == 0) {
        return 0;
    }
    const std::size_t got = inflation == nullptr ? readPacked(to, count) : inflate(to, count);
    checksum = static_cast<std::uint32_t>(
        crc32(checksum, reinterpret_cast<const Bytef*>(to), static_cast<uInt>(got)));
    left -= static_cast<std::int64_t>(got);
    if (got < count || (left == 0 && checksum != entry.checksum)) {
        refuse();
    }
    return got;
}
