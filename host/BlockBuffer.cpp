#include "host/BlockBuffer.h"

#include <algorithm>
#include <cstring>

// Small beside a long signal, so that one being read soon gives memory back; large beside the cost
// of an allocation.
static constexpr std::uint64_t chunkSize = 16384;

std::uint64_t BlockBuffer::capacity() const {
    return chunks.size() * chunkSize;
}

char* BlockBuffer::at(std::uint64_t position) const {
    return chunks[static_cast<std::size_t>(position / chunkSize)].get() + position % chunkSize;
}

// Frees the chunks that lie wholly after the bytes.
void BlockBuffer::releaseSpareChunks() {
    while (capacity() >= writePosition + chunkSize) {
        chunks.pop_back();
    }
}

void BlockBuffer::reserve(std::uint64_t count) {
    try {
        while (capacity() < writePosition + count) {
            chunks.push_back(std::make_unique_for_overwrite<char[]>(chunkSize));
        }
    } catch (...) {
        releaseSpareChunks();
        throw;
    }
}

// Calls work(position, run) for each run of bytes that lies in one chunk.
template <typename Work>
static void forEachRun(std::uint64_t position, std::uint64_t count, Work work) {
    while (count > 0) {
        const std::uint64_t run = std::min(count, chunkSize - position % chunkSize);
        work(position, static_cast<std::size_t>(run));
        position += run;
        count -= run;
    }
}

void BlockBuffer::append(const void* bytes, std::uint64_t count) {
    reserve(count);
    const char* source = static_cast<const char*>(bytes);
    forEachRun(writePosition, count, [&](std::uint64_t position, std::size_t run) {
        std::memcpy(at(position), source, run);
        source += run;
    });
    writePosition += count;
}

void BlockBuffer::copy(std::uint64_t offset, void* bytes, std::uint64_t count) const {
    char* target = static_cast<char*>(bytes);
    forEachRun(readPosition + offset, count, [&](std::uint64_t position, std::size_t run) {
        std::memcpy(target, at(position), run);
        target += run;
    });
}

void BlockBuffer::drop(std::uint64_t count) {
    readPosition += count;
    while (readPosition >= chunkSize) {
        chunks.pop_front();
        readPosition -= chunkSize;
        writePosition -= chunkSize;
    }
    if (readPosition == writePosition) {
        readPosition = writePosition = 0;
        releaseSpareChunks();
    }
}

BlockBuffer::int_type BlockBuffer::underflow() {
    return size() > 0 ? traits_type::to_int_type(*at(readPosition)) : traits_type::eof();
}

BlockBuffer::int_type BlockBuffer::uflow() {
    const int_type next = underflow();
    if (size() > 0) {
        drop(1);
    }
    return next;
}

std::streamsize BlockBuffer::showmanyc() {
    return size() > 0 ? static_cast<std::streamsize>(size()) : -1;
}

std::streamsize BlockBuffer::xsgetn(char* bytes, std::streamsize count) {
    const auto wanted = static_cast<std::uint64_t>(std::max<std::streamsize>(count, 0));
    const std::uint64_t taken = std::min(wanted, size());
    copy(0, bytes, taken);
    drop(taken);
    return static_cast<std::streamsize>(taken);
}

BlockBuffer::int_type BlockBuffer::overflow(int_type byte) {
    if (!traits_type::eq_int_type(byte, traits_type::eof())) {
        const char value = traits_type::to_char_type(byte);
        append(&value, 1);
    }
    return traits_type::not_eof(byte);
}

std::streamsize BlockBuffer::xsputn(const char* bytes, std::streamsize count) {
    append(bytes, static_cast<std::uint64_t>(std::max<std::streamsize>(count, 0)));
    return count;
}
