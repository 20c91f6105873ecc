#include "workbench/files/audio/audio.h"
#include "workbench/files/disk/FileStream.h"
#include "workbench/files/signalFiles.h"
#include "workbench/files/text/TextReader.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

// What stands at bytes 0 and 8 of the audio files that are read.
struct AudioMark {
    std::string_view atStart, atEight;
};

static bool looksLikeAudio(std::string_view head) {
    static constexpr std::array marks = {AudioMark{"RIFF", "WAVE"},
                                         AudioMark{"RIFX", "WAVE"},
                                         AudioMark{"RF64", "WAVE"},
                                         AudioMark{"FORM", "AIFF"},
                                         AudioMark{"FORM", "AIFC"},
                                         AudioMark{"fLaC", ""},
                                         AudioMark{"riff\x2e\x91\xcf\x11", "\xa5\xd6\x28\xdb"}};
    return std::any_of(marks.begin(), marks.end(), [head](const AudioMark& mark) {
        return head.starts_with(mark.atStart) &&
               (mark.atEight.empty() ||
                (head.size() >= 12 && head.substr(8).starts_with(mark.atEight)));
    });
}

static bool looksLikeText(std::string_view head) {
    return std::none_of(head.begin(), head.end(), [](char letter) {
        const auto code = static_cast<unsigned char>(letter);
        return code < ' ' && letter != '\t' && letter != '\n' && letter != '\r';
    });
}

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
    if (looksLikeAudio(head)) {
        return openAudio(std::move(file), source, options);
    }
    if (!looksLikeText(head)) {
        throw Failure(
            fmt::format("{} is neither UTF-8 text nor WAV, W64, RF64, AIFF or FLAC audio; "
                        "save it as one of these",
                        source.shown));
    }
    return std::make_unique<TextReader>(std::move(file), source, options);
}

SignalSource fileSource(const std::string& path, const ReadOptions& options) {
    const SourceName source(path);
    return {source, [=] { return openSignal(source, options); }};
}
