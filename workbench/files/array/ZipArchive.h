#pragma once

#include "workbench/files/disk/FileStream.h"

#include <cstdint>
#include <string>
#include <vector>

// A file in a zip archive, as the archive's directory has it.
struct ZipEntry {
    std::string name;
    bool encrypted = false;
    int method = 0;              // 0: stored, 8: deflated
    std::uint32_t checksum = 0;  // CRC-32 of its bytes
    std::int64_t packed = 0;     // its bytes in the archive
    std::int64_t length = 0;     // and as they come out
    std::int64_t head = 0;       // where in the archive its own head begins
};

// The directory of a zip archive, with the sizes of zip64 where they are needed (PKWARE,
// APPNOTE.TXT, .ZIP File Format Specification, version 6.3.10, 2022).
class ZipArchive {
public:
    // The file stays the caller's; the name is for messages. Failure if there is no directory, or
    // it does not fit the file.
    ZipArchive(std::FILE* archive, std::string displayName);

    [[nodiscard]] const std::vector<ZipEntry>& entries() const { return all; }
    [[nodiscard]] std::FILE* stream() const { return file; }

    // Where the bytes of an entry begin. Failure if they are not within the file, or in a form that
    // is not read: encrypted, or packed by another method.
    [[nodiscard]] std::int64_t begin(const ZipEntry& entry) const;

    [[noreturn]] void refuse(const std::string& why) const;

private:
    struct Directory {
        std::int64_t begin = 0, end = 0;
    };
    [[nodiscard]] std::string bytesAt(std::int64_t position, std::int64_t count) const;
    [[nodiscard]] Directory findDirectory() const;
    [[nodiscard]] Directory longDirectory(std::int64_t end) const;
    void readDirectory(const Directory& directory);

    std::FILE* file;
    std::string name;
    std::int64_t fileLength;
    std::vector<ZipEntry> all;
};
