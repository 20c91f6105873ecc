#include "platform/CArchive.h"

#include "platform/CArchiveException.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <streambuf>
#include <string>
#include <utility>

// The bytes of a value, lowest first.
template <typename Unsigned>
static std::array<char, sizeof(Unsigned)> toBytes(Unsigned value) {
    std::array<char, sizeof(Unsigned)> bytes{};
    for (char& byte : bytes) {
        byte = static_cast<char>(value & 0xFF);
        value >>= 8;
    }
    return bytes;
}

template <typename Unsigned>
static Unsigned fromBytes(const std::array<char, sizeof(Unsigned)>& bytes) {
    Unsigned value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return value;
}

CArchive::CArchive(std::ios& stream, Mode mode, CString name)
    : buffer(stream.rdbuf()), direction(mode), fileName(std::move(name)) {}

void CArchive::write(const char* bytes, std::size_t count) {
    if (!IsStoring()) {
        AfxThrowArchiveException(CArchiveException::readOnly, fileName);
    }
    const auto size = static_cast<std::streamsize>(count);
    if (buffer->sputn(bytes, size) != size) {
        AfxThrowArchiveException(CArchiveException::genericException, fileName);
    }
}

void CArchive::read(char* bytes, std::size_t count) {
    if (!IsLoading()) {
        AfxThrowArchiveException(CArchiveException::writeOnly, fileName);
    }
    const auto size = static_cast<std::streamsize>(count);
    if (buffer->sgetn(bytes, size) != size) {
        AfxThrowArchiveException(CArchiveException::endOfFile, fileName);
    }
}

CArchive& CArchive::operator<<(std::uint32_t value) {
    const auto bytes = toBytes(value);
    write(bytes.data(), bytes.size());
    return *this;
}

CArchive& CArchive::operator<<(std::int32_t value) {
    return *this << static_cast<std::uint32_t>(value);
}

CArchive& CArchive::operator<<(double value) {
    const auto bytes = toBytes(std::bit_cast<std::uint64_t>(value));
    write(bytes.data(), bytes.size());
    return *this;
}

CArchive& CArchive::operator<<(const CString& value) {
    const auto length = static_cast<std::uint32_t>(value.GetLength());
    *this << length;
    write(value, length);
    return *this;
}

CArchive& CArchive::operator>>(std::uint32_t& value) {
    std::array<char, sizeof value> bytes{};
    read(bytes.data(), bytes.size());
    value = fromBytes<std::uint32_t>(bytes);
    return *this;
}

CArchive& CArchive::operator>>(std::int32_t& value) {
    std::uint32_t bits = 0;
    *this >> bits;
    value = static_cast<std::int32_t>(bits);
    return *this;
}

CArchive& CArchive::operator>>(double& value) {
    std::array<char, sizeof value> bytes{};
    read(bytes.data(), bytes.size());
    value = std::bit_cast<double>(fromBytes<std::uint64_t>(bytes));
    return *this;
}

CArchive& CArchive::operator>>(CString& value) {
    static constexpr std::size_t pieceSize = 65536;
    std::uint32_t length = 0;
    *this >> length;
    if (length > std::numeric_limits<std::int32_t>::max()) {
        AfxThrowArchiveException(CArchiveException::endOfFile, fileName);
    }
    std::string bytes;
    while (bytes.size() < length) {
        const std::size_t start = bytes.size();
        bytes.resize(std::min<std::size_t>(length, start + pieceSize));
        read(bytes.data() + start, bytes.size() - start);
    }
    value = CString(bytes.data(), static_cast<int>(length));
    return *this;
}

void CArchive::WriteString(const char* text) {
    write(text, std::strlen(text));
}
