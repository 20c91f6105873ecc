#pragma once

#include "workbench/files/array/ZipArchive.h"

#include <cstddef>
#include <cstdint>
#include <memory>

// The bytes of an entry, one after the other, as they come out of the archive.
class ZipEntryReader {
public:
    // Archive and entry outlive it. Failure as ZipArchive::begin.
    ZipEntryReader(const ZipArchive& zipArchive, const ZipEntry& zipEntry);
    ZipEntryReader(const ZipEntryReader&) = delete;
    ZipEntryReader& operator=(const ZipEntryReader&) = delete;
    ~ZipEntryReader();

    // The next bytes, up to so many; fewer only at the end of the entry. Failure where they cannot
    // be had, and at the end, if they are not those that the checksum was made of.
    std::size_t read(char* to, std::size_t most);

private:
    struct Inflation;
    std::size_t readPacked(char* to, std::size_t most);
    std::size_t inflate(char* to, std::size_t most);
    [[noreturn]] void refuse() const;

    const ZipArchive& archive;
    const ZipEntry& entry;
    std::int64_t position;  // in the file, of the next packed byte
    std::int64_t packedLeft;
    std::int64_t left;                     // of the bytes that come out
    std::uint32_t checksum = 0;            // of those that have come
    std::unique_ptr<Inflation> inflation;  // null: stored
};
