#include "workbench/parts/mat/ElementBytes.h"

#include <algorithm>
#include <new>
#include <zlib.h>

struct ElementBytes::Inflation {
    Inflation() {
        if (inflateInit(&stream) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    Inflation(const Inflation&) = delete;
    Inflation& operator=(const Inflation&) = delete;
    ~Inflation() { inflateEnd(&stream); }

    z_stream stream = {};
    bool ended = false;
    std::array<char, 1 << 15> packed = {};
};

ElementBytes::ElementBytes(std::FILE* opened, std::int64_t length, bool packed)
    : file(opened), left(length), inflation(packed ? std::make_unique<Inflation>() : nullptr) {}

ElementBytes::~ElementBytes() = default;

bool ElementBytes::take(char* to, std::size_t count) {
    return inflation == nullptr ? takePlain(to, count) : takeInflated(to, count);
}

bool ElementBytes::skip(std::int64_t count) {
    std::array<char, 1 << 15> block = {};
    while (count > 0) {
        const std::int64_t taken = std::min(count, std::ssize(block));
        if (!take(block.data(), static_cast<std::size_t>(taken))) {
            return false;
        }
        count -= taken;
    }
    return true;
}

bool ElementBytes::endsWell() {
    std::array<char, 1 << 15> block = {};
    while (inflation != nullptr && takeInflated(block.data(), block.size())) {
    }
    return inflation == nullptr || inflation->ended;
}

bool ElementBytes::takePlain(char* to, std::size_t count) {
    if (left < static_cast<std::int64_t>(count) || std::fread(to, 1, count, file) < count) {
        return false;
    }
    left -= static_cast<std::int64_t>(count);
    return true;
}

bool ElementBytes::takeInflated(char* to, std::size_t count) {
    z_stream& stream = inflation->stream;
    stream.next_out = reinterpret_cast<Bytef*>(to);
    stream.avail_out = static_cast<uInt>(count);
    while (stream.avail_out > 0 && !inflation->ended) {
        if (stream.avail_in == 0) {
            char* const packed = inflation->packed.data();
            const std::int64_t length = std::min(left, std::ssize(inflation->packed));
            if (length == 0 || !takePlain(packed, static_cast<std::size_t>(length))) {
                return false;
            }
            stream.next_in = reinterpret_cast<Bytef*>(packed);
            stream.avail_in = static_cast<uInt>(length);
        }
        const int state = inflate(&stream, Z_NO_FLUSH);
        inflation->ended = state == Z_STREAM_END;
        if (!inflation->ended && state != Z_OK) {
            return false;
        }
    }
    return stream.avail_out == 0;
}
