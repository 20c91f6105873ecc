#include "workbench/files/array/ZipArchive.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

// Lengths of the records without what follows them at will, and the marks that they begin with.
static constexpr std::int64_t endLength = 22, entryLength = 46, headLength = 30;
static constexpr std::int64_t locatorLength = 20, longEndLength = 56, longestComment = 0xffff;
static constexpr std::string_view endMark = "PK\5\6", entryMark = "PK\1\2", headMark = "PK\3\4";
static constexpr std::string_view locatorMark = "PK\6\7", longEndMark = "PK\6\6";

static constexpr std::uint64_t longSize = 0xffffffff;  // it stands in the field of zip64

// At best, deflate makes 258 bytes from two bits.
static constexpr std::int64_t mostExpansion = std::int64_t{4} * 258;

// The little-endian number of that many bytes; there are as many.
static std::uint64_t number(std::string_view bytes, std::size_t at, std::size_t length) {
    std::uint64_t value = 0;
    for (std::size_t i = length; i-- > 0;) {
        value = value << 8U | static_cast<unsigned char>(bytes[at + i]);
    }
    return value;
}

// As a size or place in a file; one beyond 63 bits is below 0, and fits nowhere.
static std::int64_t place(std::string_view bytes, std::size_t at, std::size_t length) {
    return static_cast<std::int64_t>(number(bytes, at, length));
}

ZipArchive::ZipArchive(std::FILE* archive, std::string displayName)
    : file(archive), name(std::move(displayName)) {
    seekFile(file, 0, SEEK_END);
    fileLength = filePosition(file);
    readDirectory(findDirectory());
}

void ZipArchive::refuse(const std::string& why) const {
    throw Failure(fmt::format("{}: {}", name, why));
}

// Those that are there: fewer, or none, at the end of the file.
std::string ZipArchive::bytesAt(std::int64_t position, std::int64_t count) const {
    count = position < 0 ? 0 : std::clamp<std::int64_t>(fileLength - position, 0, count);
    std::string bytes(static_cast<std::size_t>(count), '\0');
    if (!seekFile(file, std::max<std::int64_t>(position, 0), SEEK_SET)) {
        return "";
    }
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    return bytes;
}

// The end of the directory is the last record, with a comment of the length that it names.
ZipArchive::Directory ZipArchive::findDirectory() const {
    const std::int64_t from = std::max<std::int64_t>(0, fileLength - endLength - longestComment);
    const std::string tail = bytesAt(from, endLength + longestComment);
    for (std::size_t at = tail.rfind(endMark); at != std::string::npos;
         at = at == 0 ? std::string::npos : tail.rfind(endMark, at - 1)) {
        const std::int64_t comment = static_cast<std::int64_t>(tail.size() - at) - endLength;
        if (comment < 0 || place(tail, at + 20, 2) != comment) {
            continue;
        }
        const std::int64_t end = from + static_cast<std::int64_t>(at);
        const std::int64_t length = place(tail, at + 12, 4), begin = place(tail, at + 16, 4);
        const bool isLong = number(tail, at + 10, 2) == 0xffff ||
                            number(tail, at + 12, 4) == longSize ||
                            number(tail, at + 16, 4) == longSize;
        return isLong ? longDirectory(end) : Directory{begin, begin + length};
    }
    refuse("the archive is truncated: it has no directory at its end; copy it again");
}

ZipArchive::Directory ZipArchive::longDirectory(std::int64_t end) const {
    const std::string locator = bytesAt(end - locatorLength, locatorLength);
    if (locator.starts_with(locatorMark)) {
        const std::string record = bytesAt(place(locator, 8, 8), longEndLength);
        if (record.size() == longEndLength && record.starts_with(longEndMark)) {
            const std::int64_t length = place(record, 40, 8), begin = place(record, 48, 8);
            if (begin >= 0 && length >= 0 && length <= fileLength && begin <= fileLength) {
                return {begin, begin + length};
            }
        }
    }
    refuse("the directory of the archive is damaged; copy it again");
}

// Takes from the field of zip64 what the record itself has no room for: length, packed length and
// place, in this order. False: it is not there.
static bool takeLongSizes(ZipEntry& entry, std::string_view fields) {
    constexpr std::uint64_t longField = 1;
    std::string_view sizes;
    while (fields.size() >= 4) {
        const auto length = static_cast<std::size_t>(number(fields, 2, 2));
        if (number(fields, 0, 2) == longField) {
            sizes = fields.substr(4, length);
        }
        fields.remove_prefix(std::min(fields.size(), 4 + length));
    }
    for (std::int64_t* const size : {&entry.length, &entry.packed, &entry.head}) {
        if (static_cast<std::uint64_t>(*size) != longSize) {
            continue;
        }
        if (sizes.size() < 8) {
            return false;
        }
        *size = place(sizes, 0, 8);
        sizes.remove_prefix(8);
    }
    return entry.length >= 0 && entry.packed >= 0 && entry.head >= 0;
}

// As many as there are marks of entries, whatever number of them is declared.
void ZipArchive::readDirectory(const Directory& directory) {
    std::int64_t at = directory.begin;
    while (at < directory.end) {
        const std::string record = bytesAt(at, entryLength);
        if (record.size() < entryLength || !record.starts_with(entryMark)) {
            refuse("the directory of the archive is damaged; copy it again");
        }
        const std::int64_t nameLength = place(record, 28, 2), fieldsLength = place(record, 30, 2);
        const std::string text = bytesAt(at + entryLength, nameLength + fieldsLength);
        ZipEntry entry;
        entry.name = text.substr(0, static_cast<std::size_t>(nameLength));
        entry.encrypted = (number(record, 8, 2) & 1U) != 0;
        entry.method = static_cast<int>(number(record, 10, 2));
        entry.checksum = static_cast<std::uint32_t>(number(record, 16, 4));
        entry.packed = place(record, 20, 4);
        entry.length = place(record, 24, 4);
        entry.head = place(record, 42, 4);
        if (std::ssize(text) < nameLength + fieldsLength ||
            !takeLongSizes(entry, std::string_view(text).substr(entry.name.size()))) {
            refuse("the directory of the archive is damaged; copy it again");
        }
        all.push_back(entry);
        at += entryLength + nameLength + fieldsLength + place(record, 32, 2);
    }
}

std::int64_t ZipArchive::begin(const ZipEntry& entry) const {
    constexpr int stored = 0, deflated = 8;
    const std::string shown = printable(entry.name, 100);
    if (entry.encrypted) {
        refuse(fmt::format("{} is encrypted; save it without a password", shown));
    }
    if (entry.method != stored && entry.method != deflated) {
        refuse(
            fmt::format("{} is compressed by a method that is not read, {}; save it deflated, or "
                        "without compression",
                        shown, entry.method));
    }
    const std::string head = bytesAt(entry.head, headLength);
    if (head.size() < headLength || !head.starts_with(headMark)) {
        refuse(fmt::format("{} is not where the directory has it; copy the archive again", shown));
    }
    const std::int64_t begin = entry.head + headLength + place(head, 26, 2) + place(head, 28, 2);
    const bool isWhole =
        entry.packed <= fileLength - begin &&
        (entry.method == stored ? entry.length == entry.packed
                                : entry.length <= (entry.packed + 1) * mostExpansion);
    if (!isWhole) {
        refuse(
            fmt::format("{} is truncated, or its sizes are wrong; copy the archive again", shown));
    }
    return begin;
}
