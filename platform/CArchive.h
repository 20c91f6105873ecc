#pragma once

#include "platform/CString.h"

#include <cstddef>
#include <cstdint>
#include <ios>

// Values one after the other on a stream, in one direction: little-endian, doubles as IEEE 754
// binary64, with no tag and no gap. Failures leave by CArchiveException, with the archive's file
// name:
//     endOfFile         the stream ends within a value; the variable is as it was
//     genericException  the stream does not take all bytes
//     readOnly          a write while loading
//     writeOnly         a read while storing
class CArchive {
public:
    enum Mode { store, load };

    // Works on the buffer of the stream, which must outlive the archive and have been opened for
    // that direction; the state flags of the stream are neither looked at nor set. What a file
    // stream still buffers is the caller's to flush and check.
    CArchive(std::ios& stream, Mode mode, CString name = CString());

    bool IsLoading() const { return direction == load; }
    bool IsStoring() const { return direction == store; }

    CArchive& operator<<(std::int32_t value);
    CArchive& operator<<(std::uint32_t value);
    CArchive& operator<<(double value);
    // The length as uint32, then the bytes.
    CArchive& operator<<(const CString& value);

    CArchive& operator>>(std::int32_t& value);
    CArchive& operator>>(std::uint32_t& value);
    CArchive& operator>>(double& value);
    // Takes no more memory than the stream has bytes, whatever length stands there. A length
    // beyond 2^31 - 1 counts as an end of the stream.
    CArchive& operator>>(CString& value);

    // The bytes of the text alone: no length, no terminator.
    void WriteString(const char* text);

private:
    void write(const char* bytes, std::size_t count);
    void read(char* bytes, std::size_t count);

    std::streambuf* buffer;
    Mode direction;
    CString fileName;
};
