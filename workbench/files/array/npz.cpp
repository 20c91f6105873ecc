#include "workbench/files/array/npz.h"

#include "workbench/files/array/NpyReader.h"
#include "workbench/files/array/ZipArchive.h"
#include "workbench/files/array/ZipEntryReader.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

static constexpr std::string_view arrayEnding = ".npy";

static std::string nameOfArray(const ZipEntry& entry) {
    const std::size_t ending = entry.name.ends_with(arrayEnding) ? arrayEnding.size() : 0;
    return entry.name.substr(0, entry.name.size() - ending);
}

// The first of many.
static std::string listOf(std::vector<std::string> items) {
    constexpr std::size_t shown = 20;
    const std::size_t more = items.size() - std::min(items.size(), shown);
    items.resize(items.size() - more);
    return fmt::format("{}{}", fmt::join(items, ", "),
                       more == 0 ? "" : fmt::format(" and {} more", more));
}

static NpyHeader headerOf(const ZipArchive& archive, const ZipEntry& entry,
                          const std::string& name) {
    ZipEntryReader bytes(archive, entry);
    return NpyHeader::read([&bytes](char* to, std::size_t most) { return bytes.read(to, most); },
                           entry.length, name);
}

static const ZipEntry& namedEntry(const ZipArchive& archive, const std::string& name) {
    std::vector<std::string> names;
    for (const ZipEntry& entry : archive.entries()) {
        if (entry.name == name || nameOfArray(entry) == name) {
            return entry;
        }
        names.push_back(printable(nameOfArray(entry), 100));
    }
    archive.refuse(fmt::format("no array of that name; {}", names.empty()
                                                                ? "the archive is empty"
                                                                : "there are " + listOf(names)));
}

// Numbers and text beside it are no signals. What is wrong with a single array is said as of a
// file.
static const ZipEntry& onlyEntry(const ZipArchive& archive, const SourceName& source) {
    const ZipEntry* only = nullptr;
    std::vector<std::string> signals, reasons;
    for (const ZipEntry& entry : archive.entries()) {
        const std::string name = printable(nameOfArray(entry), 100);
        try {
            const NpyHeader header =
                headerOf(archive, entry, fmt::format("{}:{}", source.shown, name));
            signals.push_back(fmt::format("{} ({})", name, header.shapeName()));
            only = &entry;
        } catch (const Failure& failure) {
            reasons.emplace_back(failure.what());
        }
    }
    if (signals.size() > 1) {
        archive.refuse(fmt::format("several signals, {}; name one of them, as in {}:{}",
                                   listOf(signals), source.shown,
                                   printable(nameOfArray(*only), 100)));
    }
    if (only == nullptr && reasons.size() == 1) {
        throw Failure(reasons.front());
    }
    if (only == nullptr) {
        archive.refuse(reasons.empty()
                           ? "the archive is empty; choose another file"
                           : fmt::format("none of the {} files in the archive is an array "
                                         "of samples; choose another",
                                         reasons.size()));
    }
    return *only;
}

// The array as a file of its own, complete and with the right checksum.
static FileHandle unpacked(const ZipArchive& archive, const ZipEntry& entry,
                           const std::string& name) {
    ZipEntryReader bytes(archive, entry);
    FileHandle copy = openTemporary();
    std::vector<char> block(std::size_t{1} << 16);
    while (const std::size_t length = bytes.read(block.data(), block.size())) {
        if (std::fwrite(block.data(), 1, length, copy.get()) < length) {
            throw Failure(fmt::format(
                "cannot unpack {} into a temporary file: {}; make room for it", name, errorText()));
        }
    }
    if (std::fflush(copy.get()) != 0) {
        throw Failure(fmt::format("cannot unpack {} into a temporary file: {}; make room for it",
                                  name, errorText()));
    }
    return copy;
}

// What is not compressed is read where it is.
static void checkStored(const ZipArchive& archive, const ZipEntry& entry) {
    ZipEntryReader bytes(archive, entry);
    std::vector<char> block(std::size_t{1} << 16);
    while (bytes.read(block.data(), block.size()) > 0) {
    }
}

std::unique_ptr<SignalReader> openNpz(FileHandle file, const SourceName& source,
                                      const ReadOptions& options) {
    const ZipArchive archive(file.get(), source.shown);
    const ZipEntry& entry =
        options.part.empty() ? onlyEntry(archive, source) : namedEntry(archive, options.part);
    headerOf(archive, entry, source.shown);  // before a long entry is unpacked for nothing
    const std::int64_t begin = archive.begin(entry);
    if (entry.method != 0) {
        FileHandle copy = unpacked(archive, entry, source.shown);
        return std::make_unique<NpyReader>(std::move(copy), 0, entry.length, source, options);
    }
    checkStored(archive, entry);
    return std::make_unique<NpyReader>(std::move(file), begin, entry.length, source, options);
}
