#include "workbench/files/Format.h"
#include "workbench/files/disk/FileStream.h"
#include "workbench/files/signalFiles.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

std::unique_ptr<SignalReader> openSignal(const SourceName& source, const ReadOptions& options) {
    FileHandle file = openInput(source);
    std::array<char, 256> bytes = {};
    const std::string_view head(bytes.data(),
                                std::fread(bytes.data(), 1, bytes.size(), file.get()));
    if (std::ferror(file.get()) != 0 || !seekFile(file.get(), 0, SEEK_SET)) {
        throw Failure(fmt::format("cannot read {}: {}; copy it to another place first",
                                  source.shown, errorText()));
    }
    if (head.empty()) {
        throw Failure(fmt::format("{} is empty; choose another file", source.shown));
    }
    const auto& formats = Format::all();
    const auto format = std::find_if(formats.begin(), formats.end(),
                                     [head](const Format* row) { return row->recognises(head); });
    if (format == formats.end()) {
        throw Failure(fmt::format("{} is neither {}; save it as one of these", source.shown,
                                  Format::names("nor")));
    }
    return (*format)->open(std::move(file), source, options);
}

SignalSource fileSource(const std::string& path, const ReadOptions& options) {
    const SourceName source(path);
    return {source, [=] { return openSignal(source, options); }};
}
