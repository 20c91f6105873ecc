#include "workbench/files/Format.h"
#include "workbench/files/PartChoice.h"
#include "workbench/files/SourcePart.h"
#include "workbench/files/disk/FileStream.h"
#include "workbench/files/signalFiles.h"
#include "workbench/files/text/LineReader.h"
#include "workbench/files/text/TextReader.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
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
#include <vector>

static constexpr std::size_t headLength = 2056;  // by which a format is recognised

// By so many lines no column of noise rises or falls all along: none of them is the axis then.
static constexpr int linesOfColumns = 64;

static const Format* recognised(std::string_view head) {
    const auto& formats = Format::all();
    const auto format = std::find_if(formats.begin(), formats.end(),
                                     [head](const Format* row) { return row->recognises(head); });
    return format == formats.end() ? nullptr : *format;
}

// The format of a file, which is at its start before and after. Failure if it is of none.
static const Format& formatOf(std::FILE* file, const SourceName& source) {
    std::array<char, headLength> bytes = {};
    const std::string_view head(bytes.data(), std::fread(bytes.data(), 1, bytes.size(), file));
    if (std::ferror(file) != 0 || !seekFile(file, 0, SEEK_SET)) {
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
    return *format;
}

static std::unique_ptr<SignalReader> openFile(FileHandle file, const SourceName& source,
                                              const ReadOptions& options) {
    const Format& format = formatOf(file.get(), source);
    ReadOptions ofPart = options;
    if (format.parts != nullptr) {
        const SourceName whole(SourcePart(source.path).file);
        ofPart.part = chosenPart(format.parts(file.get(), whole), options.part, whole).name;
        std::rewind(file.get());
    } else if (!options.part.empty() && format.kind != Format::Kind::text) {
        throw Failure(fmt::format("{}: {} has no names for its channels; leave out \":{}\"",
                                  source.shown, format.name, printable(options.part)));
    }
    std::string digest;
    if (options.digest) {
        digest = digestOfRest(file.get(), source.shown);
        std::rewind(file.get());
    }
    std::unique_ptr<SignalReader> reader = format.open(std::move(file), source, ofPart);
    reader->setDigest(digest);
    return reader;
}

// The options of a file with what its own name says of the part.
static ReadOptions withPart(const ReadOptions& options, const SourcePart& word) {
    ReadOptions own = options;
    own.part = word.part.empty() ? options.part : word.part;
    return own;
}

std::unique_ptr<SignalReader> openSignal(const SourceName& source, const ReadOptions& options) {
    const SourcePart word(source.path);
    return openFile(openInput(word.part.empty() ? source : SourceName(word.file)), source,
                    withPart(options, word));
}

std::vector<FilePart> partsOf(const SourceName& source) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(pathOf(source.path), ignored)) {
        return {};
    }
    const FileHandle file = openInput(source);
    const Format& format = formatOf(file.get(), source);
    return format.parts == nullptr ? std::vector<FilePart>() : format.parts(file.get(), source);
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
static bool readLines(std::FILE* pipe, int lines, const TextOptions& options, Head& head) {
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
            head.lines += LineReader::isData(line, options) ? 1 : 0;
            head.begin = head.text.size();
        }
    }
    return true;
}

std::unique_ptr<SignalReader> openStream(const SourceName& source, const ReadOptions& options) {
    const SourcePart word(source.path);
    Pipe pipe(word.part.empty() ? source : SourceName(word.file));
    if (pipe.stream() == nullptr) {
        return openSignal(source, options);
    }
    const ReadOptions ofPart = withPart(options, word);
    Head head;
    for (const int lines : {2, linesOfColumns}) {
        if (!readLines(pipe.stream(), lines, ofPart.text, head) || !isText(head.text)) {
            break;
        }
        if (TextReader::canStream(head.text, lines, source, ofPart)) {
            return std::make_unique<TextReader>(std::move(pipe), head.text, lines, source, ofPart);
        }
    }
    return openFile(pipe.copy(head.text), source, ofPart);
}

SignalSource fileSource(const std::string& path, const ReadOptions& options) {
    const SourceName source(path);
    return {source, [=] { return openSignal(source, options); },
            [=] { return openStream(source, options); }};
}
