#include "workbench/files/Format.h"
#include "workbench/files/PartChoice.h"
#include "workbench/files/disk/FileStream.h"
#include "workbench/files/signalFiles.h"
#include "workbench/files/text/LineReader.h"
#include "workbench/files/text/TextReader.h"
#include "workbench/messages/Failure.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

static constexpr std::size_t headLength = 256;  // by which a format is recognised

// By so many lines no column of noise rises or falls all along: none of them is the axis then.
static constexpr int linesOfColumns = 64;

static const Format* recognised(std::string_view head) {
    const auto& formats = Format::all();
    const auto format = std::find_if(formats.begin(), formats.end(),
                                     [head](const Format* row) { return row->recognises(head); });
    return format == formats.end() ? nullptr : *format;
}

// A name FILE:NAME in its parts.
struct PartName {
    SourceName file;
    std::string part;  // empty: the name is that of a file
};

static bool exists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(pathOf(path), ignored);
}

static PartName partName(const SourceName& source) {
    for (std::size_t colon = source.path.rfind(':'); colon != std::string::npos && colon > 0;
         colon = source.path.rfind(':', colon - 1)) {
        const std::string file = source.path.substr(0, colon);
        if (!exists(source.path) && (file == "-" || exists(file))) {
            return {SourceName(file), source.path.substr(colon + 1)};
        }
    }
    return {source, ""};
}

SourceName fileOf(const SourceName& source) {
    return partName(source).file;
}

static std::unique_ptr<SignalReader> openFile(FileHandle file, const SourceName& source,
                                              const ReadOptions& options) {
    std::array<char, headLength> bytes = {};
    const std::string_view head(bytes.data(),
                                std::fread(bytes.data(), 1, bytes.size(), file.get()));
    if (std::ferror(file.get()) != 0 || !seekFile(file.get(), 0, SEEK_SET)) {
        throw Failure(fmt::format("cannot read {}: {}; copy it to another place first",
                                  source.shown, errorText()));
    }
    if (head.empty()) {
        throw Failure(fmt::format("{} is empty; choose another file", source.shown));
    }
    const Format* const format = recognised(head);
    if (format == nullptr) {
        throw Failure(fmt::format("{} is neither {}; save it as one of these", source.shown,
                                  Format::names("nor")));
    }
    ReadOptions ofPart = options;
    if (format->parts != nullptr) {
        ofPart.part = chosenPart(format->parts(file.get(), source), options.part, source).name;
        std::rewind(file.get());
    } else if (!options.part.empty() && format->kind != Format::Kind::text) {
        throw Failure(
            fmt::format("{} is not one signal of several: {} holds one; leave out the name",
                        source.shown, format->name));
    }
    std::string digest;
    if (options.digest) {
        digest = digestOfRest(file.get(), source.shown);
        std::rewind(file.get());
    }
    std::unique_ptr<SignalReader> reader = format->open(std::move(file), source, ofPart);
    reader->setDigest(digest);
    return reader;
}

std::unique_ptr<SignalReader> openSignal(const SourceName& source, const ReadOptions& options) {
    const PartName name = partName(source);
    ReadOptions ofPart = options;
    ofPart.part = name.part;
    return openFile(openInput(name.file), source, ofPart);
}

static bool isText(std::string_view head) {
    const Format* const format = recognised(head.substr(0, headLength));
    return format != nullptr && format->kind == Format::Kind::text;
}

// What a pipe gives up to some line of data, whole lines.
struct Head {
    std::string text;
    int lines = 0;
    std::size_t begin = 0;  // of the line under way
};

// Reads on to that many lines of data. False: they did not come, or are longer than lines of text.
static bool readLines(std::FILE* pipe, int lines, Head& head) {
    constexpr std::size_t longest = std::size_t{1} << 20;
    while (head.lines < lines) {
        const int byte = head.text.size() < longest ? std::getc(pipe) : EOF;
        if (byte == EOF) {
            return false;
        }
        head.text += static_cast<char>(byte);
        if (head.text == LineReader::byteOrderMark) {
            head.begin = head.text.size();
        } else if (byte == '\n') {
            std::string_view line(head.text.data() + head.begin, head.text.size() - head.begin - 1);
            line.remove_suffix(line.ends_with('\r') ? 1 : 0);
            head.lines += LineReader::isData(line) ? 1 : 0;
            head.begin = head.text.size();
        }
    }
    return true;
}

std::unique_ptr<SignalReader> openStream(const SourceName& source, const ReadOptions& options) {
    Pipe pipe(source);
    if (pipe.stream() == nullptr) {
        return openSignal(source, options);
    }
    Head head;
    for (const int lines : {2, linesOfColumns}) {
        if (!readLines(pipe.stream(), lines, head) || !isText(head.text)) {
            break;
        }
        if (TextReader::canStream(head.text, lines, source, options)) {
            return std::make_unique<TextReader>(std::move(pipe), head.text, lines, source, options);
        }
    }
    return openFile(pipe.copy(head.text), source, options);
}

SignalSource fileSource(const std::string& path, const ReadOptions& options) {
    const SourceName source(path);
    return {source, [=] { return openSignal(source, options); },
            [=] { return openStream(source, options); }};
}
