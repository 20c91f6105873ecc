#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

// The bytes of a data element of a MAT file of version 5, one after the other, as they come out of
// it.
class ElementBytes {
public:
    // The file, which stays the caller's, stands at their beginning, and has that many of them.
    // packed: they are a stream of zlib (P. Deutsch, RFC 1950, 1996).
    ElementBytes(std::FILE* opened, std::int64_t length, bool packed);
    ElementBytes(const ElementBytes&) = delete;
    ElementBytes& operator=(const ElementBytes&) = delete;
    ~ElementBytes();

    // The next bytes: all of them, or false.
    bool take(char* to, std::size_t count);
    bool skip(std::int64_t count);

    // Whether a stream ends, in any number of bytes, and its checksum is right; true if there is
    // none.
    bool endsWell();

private:
    struct Inflation;
    bool takePlain(char* to, std::size_t count);
    bool takeInflated(char* to, std::size_t count);

    std::FILE* file;
    std::int64_t left;                     // in the file
    std::unique_ptr<Inflation> inflation;  // null: not packed
};
