#pragma once

#include "platform/CArchive.h"
#include "platform/CArchiveException.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>

// The cause of the archive exception that work ends with; none if it goes through.
template <typename Work>
CArchiveException::Cause causeOf(Work work) {
    try {
        work();
    } catch (const CArchiveException& exception) {
        return exception.cause;
    }
    return CArchiveException::none;
}

// The bytes that an object stores.
template <typename Object>
std::string stored(Object& object) {
    std::ostringstream stream;
    CArchive archive(stream, CArchive::store);
    object.Serialize(archive);
    return stream.str();
}

// Has an object load such bytes.
template <typename Object>
CArchiveException::Cause load(Object& object, std::streambuf& bytes) {
    std::istream stream(&bytes);
    CArchive archive(stream, CArchive::load);
    return causeOf([&] { object.Serialize(archive); });
}

template <typename Object>
CArchiveException::Cause load(Object& object, const std::string& bytes) {
    std::stringbuf buffer(bytes);
    return load(object, buffer);
}

// Bytes that arrive in pieces, as they do from a pipe.
class Pieces : public std::streambuf {
public:
    Pieces(std::string bytes, std::ptrdiff_t pieceLength)
        : all(std::move(bytes)), length(pieceLength) {
        setg(all.data(), all.data(), all.data());
    }

protected:
    int_type underflow() override {
        const std::ptrdiff_t left = all.data() + all.size() - gptr();
        setg(gptr(), gptr(), gptr() + std::min(left, length));
        return left > 0 ? traits_type::to_int_type(*gptr()) : traits_type::eof();
    }

private:
    std::string all;
    std::ptrdiff_t length;
};
