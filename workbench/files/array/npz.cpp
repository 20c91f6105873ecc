#include "workbench/files/array/npz.h"

#include "workbench/files/array/NpyReader.h"
#include "workbench/files/array/ZipArchive.h"
#include "workbench/files/array/ZipEntryReader.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

static constexpr std::string_view arrayEnding = ".npy";

static std::string nameOfArray(const ZipEntry& entry) {
    const std::size_t ending = entry.name.ends_with(arrayEnding) ? arrayEnding.size() : 0;
    return entry.name.substr(0, entry.name.size() - ending);
}

static NpyHeader headerOf(const ZipArchive& archive, const ZipEntry& entry,
                          const std::string& name) {
    ZipEntryReader bytes(archive, entry);
    return NpyHeader::read([&bytes](char* to, std::size_t most) { return bytes.read(to, most); },
                           entry.length, name);
}

std::vector<FilePart> partsOfNpz(std::FILE* file, const SourceName& source) {
    const ZipArchive archive(file, source.shown);
    std::vector<FilePart> parts;
    for (const ZipEntry& entry : archive.entries()) {
        FilePart part{nameOfArray(entry), {}, {}};
        try {
            const NpyHeader header = headerOf(
                archive, entry, fmt::format("{}:{}", source.shown, printable(part.name, 100)));
            part.what = fmt::format("{}, {}", header.typeName(), header.shapeName());
        } catch (const Failure& failure) {
            part.refusal = failure.what();
        }
        parts.push_back(part);
    }
    return parts;
}

static const ZipEntry& entryOf(const ZipArchive& archive, const std::string& part) {
    const auto& entries = archive.entries();
    const auto entry = std::find_if(entries.begin(), entries.end(), [&part](const ZipEntry& each) {
        return nameOfArray(each) == part;
    });
    if (entry == entries.end()) {
        archive.refuse("the file has changed meanwhile; try again");
    }
    return *entry;
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
    const ZipEntry& entry = entryOf(archive, options.part);
    headerOf(archive, entry, source.shown);  // before a long entry is unpacked for nothing
    const std::int64_t begin = archive.begin(entry);
    if (entry.method != 0) {
        FileHandle copy = unpacked(archive, entry, source.shown);
        return std::make_unique<NpyReader>(std::move(copy), 0, entry.length, source, options);
    }
    checkStored(archive, entry);
    return std::make_unique<NpyReader>(std::move(file), begin, entry.length, source, options);
}
