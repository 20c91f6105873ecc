#include "workbench/files/Format.h"
#include "workbench/files/disk/FileStream.h"
#include "workbench/files/signalFiles.h"
#include "workbench/files/text/LineReader.h"
#include "workbench/files/text/TextReader.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

static constexpr std::size_t headLength = 256;  // by which a format is recognised

static const Format* recognised(std::string_view head) {
    const auto& formats = Format::all();
    const auto format = std::find_if(formats.begin(), formats.end(),
                                     [head](const Format* row) { return row->recognises(head); });
    return format == formats.end() ? nullptr : *format;
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
    return format->open(std::move(file), source, options);
}

std::unique_ptr<SignalReader> openSignal(const SourceName& source, const ReadOptions& options) {
    return openFile(openInput(source), source, options);
}

static bool isText(std::string_view head) {
    const Format* const format = recognised(head.substr(0, headLength));
    return format != nullptr && format->columns;
}

// What a pipe gives up to its second line of data, whole lines.
static std::string headOf(std::FILE* pipe, bool& streams) {
    constexpr std::size_t longest = std::size_t{1} << 20;
    std::string head;
    int data = 0;
    for (std::size_t begin = 0; data < 2 && head.size() < longest;) {
        const int byte = std::getc(pipe);
        if (byte == EOF) {
            break;
        }
        head += static_cast<char>(byte);
        if (head == LineReader::byteOrderMark) {
            begin = head.size();
        } else if (byte == '\n') {
            std::string_view line(head.data() + begin, head.size() - begin - 1);
            line.remove_suffix(line.ends_with('\r') ? 1 : 0);
            data += LineReader::isData(line) ? 1 : 0;
            begin = head.size();
        }
    }
    streams = data == 2 && isText(head);
    return head;
}

std::unique_ptr<SignalReader> openStream(const SourceName& source, const ReadOptions& options) {
    Pipe pipe(source);
    if (pipe.stream() == nullptr) {
        return openSignal(source, options);
    }
    bool streams = false;
    const std::string head = headOf(pipe.stream(), streams);
    if (streams && TextReader::canStream(head, source, options)) {
        return std::make_unique<TextReader>(std::move(pipe), head, source, options);
    }
    return openFile(pipe.copy(head), source, options);
}

SignalSource fileSource(const std::string& path, const ReadOptions& options) {
    const SourceName source(path);
    return {source, [=] { return openSignal(source, options); },
            [=] { return openStream(source, options); }};
}
